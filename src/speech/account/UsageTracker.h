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

/// Whether a request's expected cost shows at once.
enum class UsageEstimate { Apply, Skip };

/// Bridges the time until the service's count follows what was just spent: a local estimate that a lower count must not
/// overwrite for 20 seconds, and a series of five looks at the service's count. Main thread.
class UsageTracker final : public QObject {
    Q_OBJECT
public:
    /// Fetches the account once more; `label` names the look in the log.
    using Refresh = std::function<QCoro::Task<void>(QString label, CancellationPtr cancellation)>;

    UsageTracker(SpeechTiming timing, Refresh refresh);
    ~UsageTracker() override;

    /// `user` with `characters` counted as spent; none when nothing was.
    [[nodiscard]] std::optional<ElevenLabsUser> estimate(const std::optional<ElevenLabsUser> &user, int characters,
                                                         const QString &context);
    /// What to show after `fetched` came in: it, or it with the count of `current` while the estimate still stands.
    [[nodiscard]] ElevenLabsUser reconcile(const std::optional<ElevenLabsUser> &current, ElevenLabsUser fetched);

    /// Starts the series anew, ending the one that runs.
    void startSeries(const QString &context);
    /// Ends the series and forgets the estimate.
    void reset();

private:
    void endSeries();
    QCoro::Task<void> runStep(QString context, std::size_t index, CancellationPtr series);

    SpeechTiming m_timing;
    Refresh m_refresh;
    /// Until when the estimate stands.
    std::optional<std::chrono::system_clock::time_point> m_optimisticUsageReconciliationDeadline;
    CancellationPtr m_usageRefreshTask;
};

} // namespace orlenta::speech
