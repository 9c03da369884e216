#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>

#include "controller/script/TextRange.h"
#include "tags/RenderedTagCategories.h"
#include "tags/TagItem.h"

namespace orlenta::controller {

class ProjectController;

/// Applies the tag palette to the script, and remembers each tag's category. Main thread.
class TagEditing final : public QObject {
    Q_OBJECT
public:
    explicit TagEditing(ProjectController &controller, QObject *parent = nullptr)
        : QObject(parent), m_controller(controller) {}

    /// One row of the palette.
    [[nodiscard]] QList<tags::TagItem> tagItems(tags::TagCategory category) const;
    /// Inserts the item into the selected line's text, or toggles stress on its selected text, as one undo step. Does
    /// nothing unless exactly one line is selected. `liveSelection`, from the focused text view, takes precedence over
    /// the stored selection.
    void insertTag(const tags::TagItem &item, const std::optional<TextRange> &liveSelection = std::nullopt);

    /// The category each tag is shown in, while the document is open.
    [[nodiscard]] tags::RenderedTagCategories &renderedTagCategories() { return m_renderedTagCategories; }

    /// Whether the tag toolbar shows rows of chips rather than menus. View state: neither saved nor undoable.
    [[nodiscard]] bool tagToolbarExpanded() const { return m_tagToolbarExpanded; }
    void toggleTagToolbarExpanded();

Q_SIGNALS:
    void tagToolbarExpandedChanged();

private:
    ProjectController &m_controller;
    tags::RenderedTagCategories m_renderedTagCategories;
    bool m_tagToolbarExpanded = false;
};

} // namespace orlenta::controller
