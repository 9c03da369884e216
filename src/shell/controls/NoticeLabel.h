#pragma once

#include <QtWidgets/QLabel>

namespace orlenta::shell {

/// A text that tells what went wrong, in as many lines as it takes. Screen readers say it as soon as it appears.
class NoticeLabel final : public QLabel {
    Q_OBJECT
public:
    explicit NoticeLabel(QWidget *parent = nullptr);

    /// `subject` is what the text is about where that is seen from its place only, such as "Recording problem of
    /// line 1"; it is spoken before it, and may be empty. Whether the label shows is up to whoever holds it.
    void setNotice(const QString &subject, const QString &text);
};

} // namespace orlenta::shell
