#pragma once

#include <optional>
#include <vector>

#include <QtCore/QHash>
#include <QtCore/QVariantAnimation>
#include <QtWidgets/QAbstractScrollArea>

#include "model/ProjectTab.h"
#include "shell/editor/list/HeightIndex.h"
#include "shell/editor/row/LineRow.h"

namespace orlenta::shell {

class ScriptListSource;

/// Shows the lines of a tab as rows. Only the visible rows exist: a pool of row widgets is reused while scrolling, so a
/// tab of ten thousand lines costs no more than its visible part. Heights are estimates until a row has been visible.
/// Visible rows never jump when an estimate is corrected. A row with the focus stays with its line even when scrolled
/// away.
class ScriptListView final : public QAbstractScrollArea {
    Q_OBJECT
public:
    /// The source outlives the list.
    ScriptListView(ScriptListSource &source, ScriptTextField::Factory makeTextField, QWidget *parent = nullptr);

    /// Call it when the source has other lines, or another order.
    void reload();
    /// Updates the visible rows from their lines.
    void refreshRows();
    void refreshRow(const model::LineId &id);
    /// Call it when the source has another density. The current row, or else the first, keeps its place on screen.
    void changeDensity();
    /// Scrolls just enough to make the line visible.
    void ensureVisible(const model::LineId &id);
    /// Moves the line to a third of the height, from where the lines after it can be read. Glides if it is visible.
    void showAtThird(const model::LineId &id);
    void scrollToTop();
    [[nodiscard]] bool isInView(const model::LineId &id) const;

    /// The line's row, or null if it isn't visible.
    [[nodiscard]] LineRow *rowFor(const model::LineId &id) const { return m_rows.value(id); }
    /// The current line's row, or null if it isn't visible.
    [[nodiscard]] LineRow *currentRow() const;
    [[nodiscard]] QList<LineRow *> rows() const { return m_rows.values(); }
    /// The number of existing rows, visible or free.
    [[nodiscard]] qsizetype poolSize() const { return m_rows.size() + static_cast<qsizetype>(m_free.size()); }
    [[nodiscard]] const HeightIndex &heights() const { return m_heights; }

Q_SIGNALS:
    /// Emitted once per row widget. The row lives as long as the list.
    void rowCreated(orlenta::shell::LineRow *row);
    /// Tab or Shift+Tab while the list itself has the focus.
    void stepRequested(bool forward);
    void backgroundClicked();
    /// The user has scrolled.
    void scrolled();

protected:
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    /// A row with a fixed position in the viewport; the other rows are laid out around it.
    struct Anchor {
        qsizetype index = 0;
        int y = 0;
    };
    struct Span {
        qsizetype first = 0;
        qsizetype last = -1;
        int top = 0;
    };

    void readLines();
    void rebuildHeights();
    void layOutRows();
    void remeasure();
    void layOutFrom(Anchor anchor);
    [[nodiscard]] std::optional<Anchor> visibleAnchor(int shift) const;
    [[nodiscard]] Anchor anchorAt(int scroll) const;
    [[nodiscard]] std::optional<Anchor> anchorAtEye() const;
    [[nodiscard]] Span spanFrom(const Anchor &anchor);
    void place(const Span &span);
    void updateScrollBar(int scroll);
    int measure(qsizetype index);
    LineRow *realise(qsizetype index);
    LineRow *takeRow();
    void release(const model::LineId &id);
    void releaseOutside(const Span &span);
    void showFocusOnRows();
    void announceFocusLater();
    void announceFocus();
    [[nodiscard]] int margin() const;
    [[nodiscard]] int clampedScroll(qint64 scroll) const;

    ScriptListSource &m_source;
    ScriptTextField::Factory m_makeTextField;
    /// The lines at the last reload. The source may have changed since.
    model::LineIdList m_ids;
    HeightIndex m_heights;
    QHash<model::LineId, qsizetype> m_indexes;
    QHash<model::LineId, int> m_measured;
    QHash<model::LineId, LineRow *> m_rows;
    std::vector<LineRow *> m_free;
    int m_layoutWidth = -1;
    int m_scroll = 0;
    bool m_isLayingOut = false;
    QVariantAnimation m_glide;
    /// The line that glides.
    model::LineId m_glidingId;
    /// The line last announced to assistive technology as focused.
    std::optional<model::LineId> m_announcedLine;
    bool m_isAnnouncingFocus = false;
};

} // namespace orlenta::shell
