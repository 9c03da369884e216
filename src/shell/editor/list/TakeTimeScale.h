#pragma once

#include <array>

#include <QtCore/QHash>
#include <QtCore/QObject>

#include "model/Ids.h"
#include "model/ProjectTab.h"

namespace orlenta::shell {

/// The time that the lanes of a tab stand for: the smallest of a few steps that holds nine tenths of the takes whose
/// length is known. So waveforms can be compared by their length. Main thread.
class TakeTimeScale final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The length of a line's take; 0 if it isn't known.
    void setSeconds(const model::LineId &id, double seconds);
    /// Forgets all other lines.
    void keepOnly(const model::LineIdList &lines);
    /// Without a common scale, each take fills its lane.
    void setShared(bool isShared);

    /// In seconds; 0 without a common scale or a known take.
    [[nodiscard]] double laneSeconds() const { return m_isShared ? m_laneSeconds : 0.0; }

Q_SIGNALS:
    void laneSecondsChanged();

private:
    void count(double seconds, int change);
    void fit();

    static constexpr std::array<double, 5> steps{5.0, 10.0, 20.0, 30.0, 60.0};

    QHash<model::LineId, double> m_seconds;
    /// How many takes fit into each step and not into the one before; the last counts the longer ones.
    std::array<qsizetype, steps.size() + 1> m_counts{};
    double m_laneSeconds = 0.0;
    bool m_isShared = true;
};

} // namespace orlenta::shell
