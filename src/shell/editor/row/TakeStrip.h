#pragma once

#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "controller/takes/AudioKind.h"
#include "shell/editor/row/LineRowContent.h"

class QToolButton;

namespace orlenta::shell {

class AudioPlayer;

/// The take in use and the picker of takes.
class TakeStrip final : public QWidget {
    Q_OBJECT
public:
    explicit TakeStrip(QWidget *parent);

    /// `number` is the line's place in its tab. Without audio and takes the strip hides.
    void setContent(qsizetype number, const TakesContent &content);
    [[nodiscard]] AudioPlayer &player() const { return *m_player; }
    /// What takes the keyboard, in its order; some may be hidden.
    [[nodiscard]] QList<QWidget *> controls() const;

Q_SIGNALS:
    /// The list of takes is wanted at that place of the screen.
    void menuRequested(const QPoint &globalPosition);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showTakes();
    void applyMeasures();

    qsizetype m_number = 0;
    TakesContent m_content;
    AudioPlayer *m_player;
    QToolButton *m_takes;
};

} // namespace orlenta::shell
