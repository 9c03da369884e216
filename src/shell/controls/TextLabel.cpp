#include "shell/controls/TextLabel.h"

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>

#include "shell/theme/FontChanges.h"
#include "shell/theme/ThemeColors.h"

namespace orlenta::shell {
namespace {

double sizeFactor(TextLabel::Style style) {
    switch (style) {
    case TextLabel::Style::Title:
        return 1.9;
    case TextLabel::Style::Heading:
        return 1.2;
    case TextLabel::Style::Body:
    case TextLabel::Style::Danger:
        return 1.0;
    // Any smaller, and a common font would fall below 11 pixels.
    case TextLabel::Style::Section:
    case TextLabel::Style::Caption:
        return 0.92;
    }
    Q_UNREACHABLE();
}

bool isStrong(TextLabel::Style style) {
    return style == TextLabel::Style::Title || style == TextLabel::Style::Heading || style == TextLabel::Style::Section;
}

QColor labelColor(TextLabel::Style style) {
    const QPalette palette = QApplication::palette();
    const ThemeColors &colors = ThemeColors::of(palette);
    switch (style) {
    case TextLabel::Style::Title:
    case TextLabel::Style::Heading:
    case TextLabel::Style::Body:
        return colors.text;
    case TextLabel::Style::Section:
    case TextLabel::Style::Caption:
        return colors.textMuted;
    case TextLabel::Style::Danger:
        return colors.danger;
    }
    Q_UNREACHABLE();
}

} // namespace

TextLabel::TextLabel(const QString &text, Style style, QWidget *parent) : PlainLabel(text, parent), m_style(style) {
    if (style == Style::Caption || style == Style::Body || style == Style::Danger)
        setWordWrap(true);
    connect(&FontChanges::notifier(), &FontChanges::fontChanged, this, &TextLabel::applyFont);
    applyFont();
    applyColor();
}

void TextLabel::changeEvent(QEvent *event) {
    PlainLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
        applyColor();
}

void TextLabel::applyFont() {
    QFont font = QApplication::font();
    if (font.pointSizeF() > 0.0)
        font.setPointSizeF(font.pointSizeF() * sizeFactor(m_style));
    else
        font.setPixelSize(qRound(font.pixelSize() * sizeFactor(m_style)));
    if (isStrong(m_style))
        font.setWeight(QFont::DemiBold);
    if (m_style == Style::Section)
        font.setLetterSpacing(QFont::PercentageSpacing, 106);
    setFont(font);
}

void TextLabel::applyColor() {
    // Setting the palette causes another palette change event.
    const QColor color = labelColor(m_style);
    if (palette().color(QPalette::Active, QPalette::WindowText) == color)
        return;
    QPalette own;
    own.setColor(QPalette::Active, QPalette::WindowText, color);
    own.setColor(QPalette::Inactive, QPalette::WindowText, color);
    setPalette(own);
}

} // namespace orlenta::shell
