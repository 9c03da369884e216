#pragma once

#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "shell/editor/LineRowContent.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace orlenta::shell {

class NoticeLabel;
class WaveformBarsView;

/// A line's spoken direction below its text: recording it, playing it, taking it from a file and taking it off. It
/// holds nothing of its own and only tells what the user wants.
class DirectionStrip final : public QWidget {
    Q_OBJECT
public:
    explicit DirectionStrip(QWidget *parent = nullptr);

    void setContent(const DirectionContent &content);
    /// Moves the playhead of what plays to that share of it, 0 to 1.
    void setProgress(double progress);
    /// The controls that take the keyboard, in their order; some may be hidden.
    [[nodiscard]] QList<QWidget *> controls() const;
    [[nodiscard]] WaveformBarsView &waveform() const { return *m_waveform; }

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void wished(orlenta::controller::CommandId wish);
    void seekRequested(double fraction);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void makeControls();
    void layOut();
    void showRecording();
    void showAudio();
    void showNames();
    void showReadings();
    void applyMeasures();
    void fitWords();

    DirectionContent m_content;
    QLabel *m_icon = nullptr;
    QLabel *m_title = nullptr;
    QToolButton *m_play = nullptr;
    WaveformBarsView *m_waveform = nullptr;
    QLabel *m_duration = nullptr;
    QPushButton *m_record = nullptr;
    QLabel *m_recordingTime = nullptr;
    QPushButton *m_import = nullptr;
    QLabel *m_hint = nullptr;
    QToolButton *m_delete = nullptr;
    NoticeLabel *m_error = nullptr;
};

} // namespace orlenta::shell
