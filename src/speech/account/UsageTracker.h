#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>

#include "speech/account/ServiceRecords.h"
#include "speech/http/Cancellation.h"
#include "speech/http/SpeechTiming.h"

namespace orlenta::speech {

/// Whether a request's expected cost is shown at once.
enum class UsageEstimate { Apply, Skip };

/// Bridges the delay until the service counts what was just spent: an estimate that no lower count replaces for 20
/// seconds, and a series of five refreshes. Main thread.
class UsageTracker final : public QObject {
    Q_OBJECT
public:
    /// Fetches the account again; `label` names the refresh in the log.
    using Refresh = std::function<QCoro::Task<void>(QString label, CancellationPtr cancellation)>;

    UsageTracker(SpeechTiming timing, Refresh refresh);
    ~UsageTracker() override;

    /// `user` with `characters` added to the count; none if there is nothing to add.
    [[nodiscard]] std::optional<ElevenLabsUser> estimate(const std::optional<ElevenLabsUser> &user, int characters,
                                                         const QString &context);
    /// The record to show: `fetched`, but with the count of `current` while the estimate is valid and higher.
    [[nodiscard]] ElevenLabsUser reconcile(const std::optional<ElevenLabsUser> &current, ElevenLabsUser fetched);

    /// Starts a new series and ends the running one.
    void startSeries(const QString &context);
    /// Ends the series and drops the estimate.
    void reset();

private:
    void endSeries();
    QCoro::Task<void> runStep(QString context, std::size_t index, CancellationPtr series);

    SpeechTiming m_timing;
    Refresh m_refresh;
    /// The estimate is valid until then.
    std::optional<std::chrono::system_clock::time_point> m_optimisticUsageReconciliationDeadline;
    CancellationPtr m_usageRefreshTask;
};

} // namespace orlenta::speech
