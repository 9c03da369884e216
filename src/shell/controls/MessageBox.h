#pragma once

#include <QtWidgets/QMessageBox>

namespace orlenta::shell {

/// A message box that shows its texts as they are, never as markup, and always fits the screen: of a long text it shows
/// the start and how long it is, and "Show All" opens a window with all of it.
class MessageBox final : public QMessageBox {
    Q_OBJECT
public:
    /// The buttons are added by the caller. Deletes itself when closed.
    explicit MessageBox(Icon icon, QWidget *parent = nullptr);

    /// `text` says what happened, `detail` why; `detail` may be empty.
    void setMessage(const QString &text, const QString &detail);

private:
    void showWholeText();

    QString m_text;
    QString m_detail;
    QPushButton *m_showAll = nullptr;
};

} // namespace orlenta::shell
