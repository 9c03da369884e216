#include "shell/controls/TextLabel.h"

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>

#include "shell/theme/ThemeColors.h"

namespace orlenta::shell {
namespace {

double sizeFactor(TextLabel::Style style) {
    switch (style) {
    case TextLabel::Style::Title:
        return 1.9;
    case TextLabel::Style::Heading:
        return 1.2;
    case TextLabel::Style::Section:
        return 0.85;
    case TextLabel::Style::Body:
        return 1.0;
    case TextLabel::Style::Caption:
        return 0.9;
    }
    Q_UNREACHABLE();
}

bool isStrong(TextLabel::Style style) {
    return style == TextLabel::Style::Title || style == TextLabel::Style::Heading || style == TextLabel::Style::Section;
}

bool isQuiet(TextLabel::Style style) {
    return style == TextLabel::Style::Section || style == TextLabel::Style::Caption;
}

} // namespace

TextLabel::TextLabel(const QString &text, Style style, QWidget *parent) : QLabel(text, parent), m_style(style) {
    setTextFormat(Qt::PlainText);
    if (style == Style::Caption || style == Style::Body)
        setWordWrap(true);
    restyle();
}

void TextLabel::changeEvent(QEvent *event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::ApplicationPaletteChange)
        restyle();
}

void TextLabel::restyle() {
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
    if (!isQuiet(m_style))
        return;
    QPalette quiet;
    quiet.setColor(QPalette::WindowText, ThemeColors::of(QApplication::palette()).textMuted);
    setPalette(quiet);
}

} // namespace orlenta::shell
