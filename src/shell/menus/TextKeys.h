#pragma once

#include <QtCore/QObject>

namespace orlenta::shell {

/// Leaves every text field its own keys: while a field of any window has the focus, a key that types, erases, selects,
/// moves the caret or uses the clipboard reaches the field, even if it is also the key of a menu command. Only Paste
/// goes to the menu if the field can't use what is on the clipboard. Main thread.
class TextKeys final : public QObject {
    Q_OBJECT
public:
    /// Watches the fields of the whole application. Further calls do nothing.
    static void install();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};

} // namespace orlenta::shell
