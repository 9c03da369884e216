#pragma once

#include <memory>
#include <vector>

#include <QtCore/QHash>

#include "model/ProjectLine.h"

namespace orlenta::model {

/// The lines of a project as a value whose copies share everything until one of them changes. Copying costs a
/// reference count; changing one line of a shared list copies the list of pointers and that one line. A position by id
/// is found through an index that is built at the first search and shared by copies as long as no line is added,
/// removed or moved. Not thread-safe, not even for reading one and the same value; copies may go to different threads.
class LineList final {
public:
    using Pointers = std::vector<std::shared_ptr<const ProjectLine>>;

    LineList() = default;
    explicit LineList(std::vector<ProjectLine> lines);
    /// None of the pointers is null, and nobody changes a line from here on.
    explicit LineList(Pointers lines);

    [[nodiscard]] qsizetype size() const;
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    [[nodiscard]] const ProjectLine &at(qsizetype index) const;
    /// The line of that id, or null.
    [[nodiscard]] const ProjectLine *find(const LineId &id) const;
    /// Position of the first line of that id, or -1.
    [[nodiscard]] qsizetype indexOf(const LineId &id) const;
    [[nodiscard]] bool contains(const LineId &id) const { return indexOf(id) >= 0; }

    /// Puts a line in the place of the one at `index`.
    void replace(qsizetype index, ProjectLine line);
    void append(ProjectLine line);
    /// Builds the list anew as the lines at these positions of the present one, in this order. Unchanged lines stay
    /// shared. Each `order` becomes the line's new index.
    void rearrange(const std::vector<qsizetype> &positions);
    /// Sorts by `order`, stable, and sets each `order` to its index. Costs one scan when nothing is out of place.
    void renumberByOrder();

    friend bool operator==(const LineList &a, const LineList &b);

private:
    using Index = QHash<LineId, qsizetype>;

    Pointers &detached();
    [[nodiscard]] std::shared_ptr<Index> builtIndex() const;
    static void renumber(Pointers &lines);

    std::shared_ptr<Pointers> m_lines;
    mutable std::shared_ptr<Index> m_index;
};

} // namespace orlenta::model
