#include "model/LineList.h"

#include <algorithm>

namespace orlenta::model {

LineList::LineList(std::vector<ProjectLine> lines) : m_lines(std::make_shared<Pointers>()) {
    m_lines->reserve(lines.size());
    for (ProjectLine &line : lines)
        m_lines->push_back(std::make_shared<const ProjectLine>(std::move(line)));
}

LineList::LineList(Pointers lines) : m_lines(std::make_shared<Pointers>(std::move(lines))) {}

qsizetype LineList::size() const {
    return m_lines ? static_cast<qsizetype>(m_lines->size()) : 0;
}

const ProjectLine &LineList::at(qsizetype index) const {
    Q_ASSERT(index >= 0 && index < size());
    return *(*m_lines)[static_cast<size_t>(index)];
}

const ProjectLine *LineList::find(const LineId &id) const {
    const qsizetype index = indexOf(id);
    return index >= 0 ? &at(index) : nullptr;
}

qsizetype LineList::indexOf(const LineId &id) const {
    if (!m_lines)
        return -1;
    if (!m_index)
        m_index = builtIndex();
    return m_index->value(id, -1);
}

void LineList::replace(qsizetype index, ProjectLine line) {
    if (line.lineId != at(index).lineId)
        m_index.reset();
    detached()[static_cast<size_t>(index)] = std::make_shared<const ProjectLine>(std::move(line));
}

void LineList::append(ProjectLine line) {
    if (m_index && m_index.use_count() > 1)
        m_index = std::make_shared<Index>(*m_index);
    if (m_index && !m_index->contains(line.lineId))
        m_index->insert(line.lineId, size());
    detached().push_back(std::make_shared<const ProjectLine>(std::move(line)));
}

void LineList::rearrange(const std::vector<qsizetype> &positions) {
    auto lines = std::make_shared<Pointers>();
    lines->reserve(positions.size());
    for (const qsizetype position : positions) {
        Q_ASSERT(position >= 0 && position < size());
        lines->push_back((*m_lines)[static_cast<size_t>(position)]);
    }
    renumber(*lines);
    m_lines = std::move(lines);
    m_index.reset();
}

void LineList::renumberByOrder() {
    qsizetype inPlace = 0;
    while (inPlace < size() && at(inPlace).order == inPlace)
        ++inPlace;
    if (inPlace == size())
        return;
    Pointers &lines = detached();
    std::stable_sort(lines.begin(), lines.end(), [](const auto &a, const auto &b) { return a->order < b->order; });
    renumber(lines);
    m_index.reset();
}

bool operator==(const LineList &a, const LineList &b) {
    if (a.m_lines == b.m_lines)
        return true;
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const ProjectLine &left = a.at(i);
        const ProjectLine &right = b.at(i);
        if (&left != &right && left != right)
            return false;
    }
    return true;
}

LineList::Pointers &LineList::detached() {
    if (!m_lines)
        m_lines = std::make_shared<Pointers>();
    else if (m_lines.use_count() > 1)
        m_lines = std::make_shared<Pointers>(*m_lines);
    return *m_lines;
}

std::shared_ptr<LineList::Index> LineList::builtIndex() const {
    auto index = std::make_shared<Index>();
    index->reserve(size());
    // Backwards, so that the first of several lines with one id is the one that stays.
    for (qsizetype i = size() - 1; i >= 0; --i)
        index->insert(at(i).lineId, i);
    return index;
}

void LineList::renumber(Pointers &lines) {
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto order = static_cast<std::int64_t>(i);
        if (lines[i]->order == order)
            continue;
        ProjectLine moved = *lines[i];
        moved.order = order;
        lines[i] = std::make_shared<const ProjectLine>(std::move(moved));
    }
}

} // namespace orlenta::model
