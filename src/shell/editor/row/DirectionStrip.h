#pragma once

#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "shell/editor/row/LineRowContent.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace orlenta::shell {

class AudioPlayer;
class NoticeLabel;

/// A line's spoken direction, shown below its text, with buttons to record, play, import and delete it. Stateless:
/// shows the given content and emits what the user requests.
class DirectionStrip final : public QWidget {
    Q_OBJECT
public:
    explicit DirectionStrip(QWidget *parent = nullptr);

    /// `number` is the line's position in its tab.
    void setContent(qsizetype number, const DirectionContent &content);
    [[nodiscard]] AudioPlayer &player() const { return *m_player; }
    /// The focusable controls in tab order; some may be hidden.
    [[nodiscard]] QList<QWidget *> controls() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void commandRequested(orlenta::controller::CommandId command);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void makeControls();
    void layOut();
    void showRecording();
    void showNames();
    void showRecordingNames();
    void applyMeasures();
    void fitWords();

    qsizetype m_number = 0;
    DirectionContent m_content;
    QLabel *m_icon = nullptr;
    QLabel *m_title = nullptr;
    AudioPlayer *m_player = nullptr;
    QPushButton *m_record = nullptr;
    QLabel *m_recordingTime = nullptr;
    QPushButton *m_import = nullptr;
    QLabel *m_hint = nullptr;
    QToolButton *m_delete = nullptr;
    NoticeLabel *m_error = nullptr;
};

} // namespace orlenta::shell
