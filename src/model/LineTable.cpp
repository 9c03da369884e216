#include "model/LineTable.h"

namespace orlenta::model {

const ProjectLine *LineTable::find(const LineId &id) const {
    const Shared *found = m_lines.find(id);
    return found != nullptr ? found->line.get() : nullptr;
}

void LineTable::insert(std::shared_ptr<const ProjectLine> line) {
    const LineId id = line->lineId;
    m_lines.insert(id, {std::move(line)});
}

} // namespace orlenta::model
