#pragma once

#include <functional>

#include <QtWidgets/QWidget>

#include "tags/TagItem.h"

class QBoxLayout;
class QGridLayout;
class QHBoxLayout;
class QMenu;
class QScrollArea;
class QToolButton;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

class FlowLayout;
class TagChip;

/// The tag toolbar: the tags of each category to put into the selected line's text, as a menu for each category or,
/// expanded, as a row of chips for each; and the stress of the selected text. It can be used while exactly one line is
/// selected.
class TagPalette final : public QWidget {
    Q_OBJECT
public:
    using Insert = std::function<void(const tags::TagItem &)>;

    /// `insert` does what a chip, a menu entry or the key stands for.
    TagPalette(controller::ProjectController &controller, Insert insert, QWidget *parent = nullptr);

    /// The most that the rows of chips may take, in pixels; beyond it they scroll.
    void setRowsLimit(int height);
    /// Enough for either form at its narrowest.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void makeHeader();
    void makeMenus();
    void makeRows();
    void fillMenu(QMenu *menu, tags::TagCategory category);
    TagChip *makeChip(const tags::TagItem &item, QWidget *parent);
    void showForm();
    void followSelection();
    void arrange();
    void placeMenus();
    void fitRows();
    void applyMeasures();

    controller::ProjectController &m_controller;
    Insert m_insert;
    QWidget *m_title = nullptr;
    TagChip *m_stress = nullptr;
    QToolButton *m_toggle = nullptr;
    QWidget *m_menus = nullptr;
    QWidget *m_rows = nullptr;
    QScrollArea *m_rowsArea = nullptr;
    QBoxLayout *m_column = nullptr;
    QHBoxLayout *m_header = nullptr;
    QGridLayout *m_grid = nullptr;
    QList<FlowLayout *> m_flows;
    QList<QWidget *> m_rowTitles;
    int m_rowsLimit = 0;
};

} // namespace orlenta::shell
