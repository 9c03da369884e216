#pragma once

#include <QtWidgets/QPushButton>

#include "tags/TagCategory.h"

namespace orlenta::shell {

/// The colours of a category's chips.
struct TagChipColors {
    QColor fill;
    QColor text;
    QColor line;

    /// The colours for the palette's appearance. The text is readable on the fill.
    [[nodiscard]] static TagChipColors of(tags::TagCategory category, const QPalette &palette);
};

/// A small round button in the colours of a tag category. A click doesn't take the focus, so a text field keeps its
/// caret and selection. The keyboard reaches it with Tab and presses it with Space or Return.
class TagChip final : public QPushButton {
    Q_OBJECT
public:
    TagChip(const QString &label, tags::TagCategory category, QWidget *parent = nullptr);

    /// Sets muted text after the label, such as the shortcut.
    void setHint(const QString &hint);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QFont hintFont() const;
    [[nodiscard]] int markWidth() const;
    [[nodiscard]] QColor fillColor(const TagChipColors &colors) const;

    QString m_label;
    QString m_hint;
    tags::TagCategory m_category;
};

} // namespace orlenta::shell
