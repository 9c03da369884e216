#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace orlenta::shell {

/// A running task in the status line: what it does, how far it is, and a button that ends it. Hidden while nothing
/// runs.
class ProgressMark final : public QWidget {
    Q_OBJECT
public:
    struct Words {
        /// The bar's name for screen readers, and its tool tip.
        QString progressName;
        QString progressTip;
        /// The button's text, its name for screen readers, and its tool tip.
        QString stop;
        QString stopName;
        QString stopTip;
    };

    explicit ProgressMark(const Words &words, QWidget *parent = nullptr);

    /// `done` of `total` steps are finished.
    void setProgress(const QString &text, int done, int total);
    /// Whether there is anything left to stop.
    void setStoppable(bool isStoppable);

Q_SIGNALS:
    void stopRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyMeasures();

    QLabel *m_text;
    QProgressBar *m_progress;
    QPushButton *m_stop;
};

} // namespace orlenta::shell
