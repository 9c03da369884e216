#include "speech/account/UsageTracker.h"

#include <array>

#include <QtCore/QPointer>

#include "base/LogCategories.h"

namespace orlenta::speech {

using namespace std::chrono_literals;

namespace {

constexpr std::array<std::chrono::milliseconds, 5> usageWaits{0ms, 1500ms, 3500ms, 10000ms, 15000ms};
constexpr auto estimateLifetime = 20s;

} // namespace

UsageTracker::UsageTracker(SpeechTiming timing, Refresh refresh)
    : m_timing(std::move(timing)), m_refresh(std::move(refresh)) {}

UsageTracker::~UsageTracker() {
    endSeries();
}

std::optional<ElevenLabsUser> UsageTracker::estimate(const std::optional<ElevenLabsUser> &user, int characters,
                                                     const QString &context) {
    if (characters < 1 || !user)
        return std::nullopt;
    ElevenLabsUser estimated = *user;
    estimated.subscription.characterCount += characters;
    m_optimisticUsageReconciliationDeadline = m_timing.clock() + estimateLifetime;
    qCInfo(base::log::usage).noquote()
        << QStringLiteral("Applied local ElevenLabs usage estimate after %1: +%2").arg(context).arg(characters);
    return estimated;
}

ElevenLabsUser UsageTracker::reconcile(const std::optional<ElevenLabsUser> &current, ElevenLabsUser fetched) {
    const bool standsStill = current && m_optimisticUsageReconciliationDeadline &&
                             m_timing.clock() < *m_optimisticUsageReconciliationDeadline;
    if (standsStill && fetched.subscription.characterCount < current->subscription.characterCount)
        fetched.subscription.characterCount = current->subscription.characterCount;
    else
        m_optimisticUsageReconciliationDeadline.reset();
    return fetched;
}

void UsageTracker::startSeries(const QString &context) {
    endSeries();
    m_usageRefreshTask = std::make_shared<Cancellation>();
    runStep(context, 0, m_usageRefreshTask);
}

void UsageTracker::reset() {
    endSeries();
    m_optimisticUsageReconciliationDeadline.reset();
}

void UsageTracker::endSeries() {
    if (const CancellationPtr series = std::exchange(m_usageRefreshTask, nullptr))
        series->cancel();
}

QCoro::Task<void> UsageTracker::runStep(QString context, std::size_t index, CancellationPtr series) {
    const QPointer<UsageTracker> self(this);
    const QString label = index == 0 ? context : QStringLiteral("%1 follow-up %2").arg(context).arg(index);
    co_await m_refresh(label, series);
    if (!self || series->isCancelled())
        co_return;
    const std::size_t next = index + 1;
    if (next == usageWaits.size()) {
        m_usageRefreshTask.reset();
        co_return;
    }
    m_timing.callLater(usageWaits.at(next), [self, context, next, series] {
        if (self && !series->isCancelled())
            self->runStep(context, next, series);
    });
}

} // namespace orlenta::speech
