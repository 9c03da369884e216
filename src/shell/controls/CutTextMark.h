#pragma once

#include <QtCore/QString>
#include <QtWidgets/QWidget>

class QLabel;

namespace orlenta::shell {

/// Lets a field show only the start of a text that is too long to lay out at once. Then it is visible at the foot of
/// the field, tells how much is shown, and has a button for the rest.
class CutTextMark final : public QWidget {
    Q_OBJECT
public:
    explicit CutTextMark(QWidget *field);

    /// Returns what the field is to show of the text.
    [[nodiscard]] QString fit(const QString &text);
    [[nodiscard]] bool isCut() const { return !m_whole.isNull(); }
    /// The text if only its start is shown; null otherwise.
    [[nodiscard]] const QString &wholeText() const { return m_whole; }
    /// The height that the field has to leave at its foot, in pixels; 0 if it shows its whole text.
    [[nodiscard]] int takenHeight() const { return isCut() ? sizeHint().height() : 0; }
    /// How many UTF-16 units of a text of this many a field shows, at most.
    [[nodiscard]] static qsizetype shownUnits(qsizetype units);
    /// Whether a text of this many UTF-16 units is too long for a field, however few lines it has.
    [[nodiscard]] static bool isTooLong(qsizetype units);

Q_SIGNALS:
    void wholeTextRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QLabel *m_part;
    QString m_whole;
};

} // namespace orlenta::shell
