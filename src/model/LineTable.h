#pragma once

#include <memory>

#include "base/SharedMap.h"
#include "model/ProjectLine.h"

namespace orlenta::model {

/// The lines of a project by id. Their order is in the tabs. A value type: copies share their data, so keeping a copy
/// while one line changes costs that line and its bucket. Not thread-safe, not even for concurrent reads of one value;
/// copies may go to different threads.
class LineTable final {
public:
    [[nodiscard]] qsizetype size() const { return m_lines.size(); }
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    /// The line with that id, or null. Valid until the next change.
    [[nodiscard]] const ProjectLine *find(const LineId &id) const;
    [[nodiscard]] bool contains(const LineId &id) const { return m_lines.contains(id); }

    /// Adds the line, or replaces the one with the same id.
    void insert(ProjectLine line) { insert(std::make_shared<const ProjectLine>(std::move(line))); }
    /// Without copying the line. It must not be null, and must not change from now on.
    void insert(std::shared_ptr<const ProjectLine> line);
    void remove(const LineId &id) { m_lines.remove(id); }
    /// Replaces the line with a copy changed by mutate(line), which must not change the id. Does nothing if the line
    /// doesn't exist.
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
    /// Calls visit(id, mine, theirs) for each line that differs; a missing line is null.
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
