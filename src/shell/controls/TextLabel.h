#pragma once

#include <QtWidgets/QLabel>

namespace orlenta::shell {

/// A line or paragraph of text in one of the window's few styles. Its size follows the application font, and with it
/// the interface scale; its colour follows the palette.
class TextLabel final : public QLabel {
    Q_OBJECT
public:
    enum class Style {
        Title,
        Heading,
        /// A group's name in spaced capitals.
        Section,
        Body,
        /// Small and quiet, for explanations.
        Caption,
        /// What went wrong.
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
