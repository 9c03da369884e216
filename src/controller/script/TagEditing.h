#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>

#include "controller/script/TextRange.h"
#include "tags/RenderedTagCategories.h"
#include "tags/TagItem.h"

namespace orlenta::controller {

class ProjectController;

/// The tag palette's work on the script, and what the document knows of the tags shown in it. Main thread.
class TagEditing final : public QObject {
    Q_OBJECT
public:
    explicit TagEditing(ProjectController &controller, QObject *parent = nullptr)
        : QObject(parent), m_controller(controller) {}

    /// The palette's row of a category.
    [[nodiscard]] QList<tags::TagItem> tagItems(tags::TagCategory category) const;
    /// Puts the item into the selected line's text, or toggles the stress of its selected text: one undo step. Does
    /// nothing unless exactly one line is selected. `liveSelection` is that of the text view that has the keyboard; it
    /// comes before the stored ones.
    void insertTag(const tags::TagItem &item, const std::optional<TextRange> &liveSelection = std::nullopt);

    /// The category each tag is shown in, for as long as the document is open.
    [[nodiscard]] tags::RenderedTagCategories &renderedTagCategories() { return m_renderedTagCategories; }

    /// The form of the tag toolbar: rows of chips, or menus. View state: neither saved nor undoable.
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
