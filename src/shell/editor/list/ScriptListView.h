#pragma once

#include <optional>
#include <vector>

#include <QtCore/QHash>
#include <QtWidgets/QAbstractScrollArea>

#include "model/ProjectTab.h"
#include "shell/editor/list/HeightIndex.h"
#include "shell/editor/row/LineRow.h"

namespace orlenta::shell {

class ScriptListSource;

/// The lines of a tab as rows, of which only those in view exist: a pool of real row widgets is handed along as the
/// list scrolls, so that a tab of ten thousand lines costs what its visible part costs. Heights are estimates until a
/// row has been in view; the rows in view never jump when an estimate is corrected. A row that holds the focus stays
/// with its line even out of view.
class ScriptListView final : public QAbstractScrollArea {
    Q_OBJECT
public:
    /// The source outlives the list.
    ScriptListView(ScriptListSource &source, ScriptTextField::Factory makeTextField, QWidget *parent = nullptr);

    /// The source has other lines, or another order.
    void reload();
    /// Rows in view read their lines again.
    void refreshRows();
    void refreshRow(const model::LineId &id);
    /// Scrolls as little as it takes to have the line in view.
    void ensureVisible(const model::LineId &id);
    void scrollToTop();
    [[nodiscard]] bool isInView(const model::LineId &id) const;

    /// The row that shows the line, or null when it is out of view.
    [[nodiscard]] LineRow *rowFor(const model::LineId &id) const { return m_rows.value(id); }
    /// The row of the line on which the keyboard acts, or null when it is out of view.
    [[nodiscard]] LineRow *currentRow() const;
    [[nodiscard]] QList<LineRow *> rows() const { return m_rows.values(); }
    /// Rows that exist, in view or waiting in the pool.
    [[nodiscard]] qsizetype poolSize() const { return m_rows.size() + static_cast<qsizetype>(m_free.size()); }
    [[nodiscard]] const HeightIndex &heights() const { return m_heights; }

Q_SIGNALS:
    /// A row widget was made; it is told once, and lives as long as the list.
    void rowCreated(orlenta::shell::LineRow *row);
    /// Tab or Shift+Tab while the list itself has the focus.
    void stepRequested(bool forward);
    void backgroundClicked();

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
    /// A line's row at a place in the viewport, from which the others are laid out.
    struct Anchor {
        qsizetype index = 0;
        int y = 0;
    };
    struct Span {
        qsizetype first = 0;
        qsizetype last = -1;
        int top = 0;
    };

    void takeOverLines();
    void rebuildHeights();
    void layOutRows();
    void measureAnew();
    void layOutFrom(Anchor anchor);
    [[nodiscard]] std::optional<Anchor> visibleAnchor(int shift) const;
    [[nodiscard]] Anchor anchorAt(int scroll) const;
    [[nodiscard]] Span spanFrom(const Anchor &anchor);
    void place(const Span &span);
    void updateScrollBar(int scroll);
    int measure(qsizetype index);
    LineRow *realise(qsizetype index);
    LineRow *takeRow();
    void release(const model::LineId &id);
    void releaseOutside(const Span &span);
    void showFocusOnRows();
    void tellFocusLater();
    void tellFocus();
    [[nodiscard]] int margin() const;
    [[nodiscard]] int clampedScroll(qint64 scroll) const;

    ScriptListSource &m_source;
    ScriptTextField::Factory m_makeTextField;
    /// The lines as of the last reload; the source may be ahead until it has told so.
    model::LineIdList m_ids;
    HeightIndex m_heights;
    QHash<model::LineId, qsizetype> m_indexes;
    QHash<model::LineId, int> m_measured;
    QHash<model::LineId, LineRow *> m_rows;
    std::vector<LineRow *> m_free;
    int m_layoutWidth = -1;
    int m_scroll = 0;
    bool m_isLayingOut = false;
    /// The line last told to assistive technology as the one with the keyboard.
    std::optional<model::LineId> m_toldLine;
    bool m_isTellingFocus = false;
};

} // namespace orlenta::shell
