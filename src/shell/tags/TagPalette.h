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

/// The tag toolbar. Inserts tags into the selected line's text, from one menu per category or, when expanded, one row
/// of chips per category. Also toggles the stress of the selected text. Enabled while exactly one line is selected.
class TagPalette final : public QWidget {
    Q_OBJECT
public:
    using Insert = std::function<void(const tags::TagItem &)>;

    /// `insert` inserts the item of a chip, menu entry or shortcut.
    TagPalette(controller::ProjectController &controller, Insert insert, QWidget *parent = nullptr);

    /// Sets the maximum height of the rows of chips, in pixels. Taller rows scroll.
    void setRowsLimit(int height);
    /// Large enough for both the menus and the rows at their narrowest.
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
