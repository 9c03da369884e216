#include "shell/editor/list/TakeTimeScale.h"

#include <algorithm>
#include <utility>

#include <QtCore/QSet>

namespace orlenta::shell {

void TakeTimeScale::setSeconds(const model::LineId &id, double seconds) {
    const double before = m_seconds.value(id, 0.0);
    if (before == seconds)
        return;
    count(before, -1);
    count(seconds, 1);
    if (seconds > 0.0)
        m_seconds.insert(id, seconds);
    else
        m_seconds.remove(id);
    fit();
}

void TakeTimeScale::keepOnly(const model::LineIdList &lines) {
    if (m_seconds.isEmpty())
        return;
    const QSet<model::LineId> kept(lines.begin(), lines.end());
    for (auto take = m_seconds.begin(); take != m_seconds.end();) {
        if (kept.contains(take.key())) {
            ++take;
            continue;
        }
        count(take.value(), -1);
        take = m_seconds.erase(take);
    }
    fit();
}

void TakeTimeScale::setShared(bool isShared) {
    if (std::exchange(m_isShared, isShared) != isShared)
        Q_EMIT laneSecondsChanged();
}

void TakeTimeScale::count(double seconds, int change) {
    if (seconds <= 0.0)
        return;
    const auto step = std::lower_bound(steps.begin(), steps.end(), seconds) - steps.begin();
    m_counts[static_cast<size_t>(step)] += change;
}

void TakeTimeScale::fit() {
    double lane = m_seconds.isEmpty() ? 0.0 : steps.back();
    qsizetype held = 0;
    for (size_t step = 0; step < steps.size() && !m_seconds.isEmpty(); ++step) {
        held += m_counts[step];
        if (held * 10 >= m_seconds.size() * 9) {
            lane = steps[step];
            break;
        }
    }
    if (std::exchange(m_laneSeconds, lane) != lane && m_isShared)
        Q_EMIT laneSecondsChanged();
}

} // namespace orlenta::shell
