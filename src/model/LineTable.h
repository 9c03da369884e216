#pragma once

#include <memory>

#include "base/SharedMap.h"
#include "model/ProjectLine.h"

namespace orlenta::model {

/// The lines of a project by their ids. Where a line stands is its tab's knowledge. A value whose copies share
/// everything until one of them changes: keeping a copy while a line changes costs that line and its bucket. Not
/// thread-safe, not even for reading one and the same value; copies may go to different threads.
class LineTable final {
public:
    [[nodiscard]] qsizetype size() const { return m_lines.size(); }
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    /// The line of that id, or null. The pointer holds until the next change.
    [[nodiscard]] const ProjectLine *find(const LineId &id) const;
    [[nodiscard]] bool contains(const LineId &id) const { return m_lines.contains(id); }

    /// Adds the line or puts it in place of the one that has its id.
    void insert(ProjectLine line) { insert(std::make_shared<const ProjectLine>(std::move(line))); }
    /// The same without a copy; not null, and nobody changes the line from here on.
    void insert(std::shared_ptr<const ProjectLine> line);
    void remove(const LineId &id) { m_lines.remove(id); }
    /// Puts a changed copy of the line in its place; mutate(line) leaves the id alone. Nothing where there is none.
    template <typename Mutate>
    void update(const LineId &id, Mutate mutate) {
        const ProjectLine *present = find(id);
        if (present == nullptr)
            return;
        ProjectLine line = *present;
        mutate(line);
        Q_ASSERT(line.lineId == id);
        insert(std::move(line));
    }

    /// Calls visit(line) for each line, in no particular order.
    template <typename Visit>
    void forEach(Visit visit) const {
        m_lines.forEach([&visit](const LineId &, const Shared &shared) { visit(*shared.line); });
    }
    /// Calls visit(id, mine, theirs) for each id whose lines differ; a missing one is null.
    template <typename Visit>
    void forEachDifference(const LineTable &other, Visit visit) const {
        m_lines.forEachDifference(other.m_lines, [&visit](const LineId &id, const Shared *mine, const Shared *theirs) {
            visit(id, mine != nullptr ? mine->line.get() : nullptr, theirs != nullptr ? theirs->line.get() : nullptr);
        });
    }

    friend bool operator==(const LineTable &, const LineTable &) = default;

private:
    struct Shared {
        std::shared_ptr<const ProjectLine> line;

        friend bool operator==(const Shared &a, const Shared &b) { return a.line == b.line || *a.line == *b.line; }
    };

    base::SharedMap<LineId, Shared> m_lines;
};

} // namespace orlenta::model
