#include "controller/document/Notices.h"

#include <algorithm>

namespace orlenta::controller {

std::optional<Notice> Notices::current() const {
    return m_notices.isEmpty() ? std::nullopt : std::optional(m_notices.last());
}

std::optional<Notice> Notices::find(Notice::Kind kind) const {
    const auto found =
        std::find_if(m_notices.begin(), m_notices.end(), [kind](const Notice &n) { return n.kind == kind; });
    return found == m_notices.end() ? std::nullopt : std::optional(*found);
}

void Notices::post(const Notice &notice) {
    if (current() == notice)
        return;
    m_notices.removeIf([&notice](const Notice &other) { return other.kind == notice.kind; });
    m_notices.append(notice);
    Q_EMIT changed();
}

void Notices::withdraw(Notice::Kind kind) {
    if (m_notices.removeIf([kind](const Notice &notice) { return notice.kind == kind; }) > 0)
        Q_EMIT changed();
}

} // namespace orlenta::controller
