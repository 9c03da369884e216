#pragma once

#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "controller/takes/AudioKind.h"
#include "shell/editor/row/LineRowContent.h"

class QToolButton;

namespace orlenta::shell {

class AudioPlayer;

/// Plays the active take and lets the user choose another.
class TakeStrip final : public QWidget {
    Q_OBJECT
public:
    explicit TakeStrip(QWidget *parent);

    /// `number` is the line's position in its tab. Hides if there are neither audio nor takes.
    void setContent(qsizetype number, const TakesContent &content);
    void setDensity(RowDensity density);
    [[nodiscard]] AudioPlayer &player() const { return *m_player; }
    /// The focusable controls in tab order; some may be hidden.
    [[nodiscard]] QList<QWidget *> controls() const;

Q_SIGNALS:
    /// The user wants the list of takes at this position.
    void menuRequested(const QPoint &globalPosition);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showTakes();
    void applyMeasures();

    qsizetype m_number = 0;
    TakesContent m_content;
    RowDensity m_density = RowDensity::Comfortable;
    AudioPlayer *m_player;
    QToolButton *m_takes;
};

} // namespace orlenta::shell
