#include "audio/devices/SharedMicrophone.h"

#include <utility>

namespace orlenta::audio {

void SharedMicrophone::take(QObject *holder, std::function<void()> giveUp) {
    if (m_holder == holder)
        return;
    const bool wasInUse = isInUse();
    const auto endOther = std::exchange(m_giveUp, std::move(giveUp));
    m_holder = holder;
    disconnect(m_watching);
    m_watching = connect(holder, &QObject::destroyed, this, [this, holder] { giveBack(holder); });
    if (wasInUse)
        endOther();
    else
        Q_EMIT isInUseChanged();
    Q_EMIT taken();
}

void SharedMicrophone::giveBack(const QObject *holder) {
    if (m_holder != holder || holder == nullptr)
        return;
    disconnect(m_watching);
    m_holder = nullptr;
    m_giveUp = nullptr;
    Q_EMIT isInUseChanged();
}

} // namespace orlenta::audio
