#pragma once

#include "shell/controls/PlainLabel.h"

namespace orlenta::shell {

/// Text in one of the application's styles. Follows the application font, and so the interface scale, and the palette.
class TextLabel final : public PlainLabel {
    Q_OBJECT
public:
    enum class Style {
        Title,
        Heading,
        /// The name of a group, in spaced capitals.
        Section,
        Body,
        /// Small and muted, for explanations.
        Caption,
        /// For errors.
        Danger
    };

    TextLabel(const QString &text, Style style, QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyFont();
    void applyColor();

    Style m_style;
};

} // namespace orlenta::shell
