#pragma once

#include "shell/controls/PlainLabel.h"

namespace orlenta::shell {

/// A wrapping error message. Screen readers announce it as soon as it appears.
class NoticeLabel final : public PlainLabel {
    Q_OBJECT
public:
    explicit NoticeLabel(QWidget *parent = nullptr);

    /// `subject` names what the text is about if only its place shows that, such as "Recording problem on line 1".
    /// Screen readers say it before the text. It may be empty. The caller shows and hides the label.
    void setNotice(const QString &subject, const QString &text);
};

} // namespace orlenta::shell
