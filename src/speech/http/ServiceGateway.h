#pragma once

#include <chrono>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>

#include "base/Result.h"
#include "speech/http/Completion.h"
#include "speech/http/HttpClient.h"
#include "speech/http/ServiceAccess.h"
#include "speech/http/SpeechTiming.h"

namespace orlenta::speech {

/// The only way to the service. Knows the current endpoint and key, interprets replies, and retries while the service
/// is busy. Main thread.
class ServiceGateway final : public QObject {
    Q_OBJECT
public:
    explicit ServiceGateway(const SpeechTiming &timing);
    ~ServiceGateway() override;

    /// What a new request uses.
    [[nodiscard]] const ServiceAccess &access() const { return m_access; }
    /// Changes endpoint and key together. Requests with an earlier access aren't sent any more.
    void setAccess(const QUrl &endpoint, const QString &apiKey);

    /// The reply to a request that the service accepted. A status of 429 is retried up to three times, after 1, 2 and 4
    /// seconds or the delay that the service asks for, at most 10. A request is cancelled instead of sent, or sent
    /// again, once its access isn't the current one. A request without a key is never sent.
    QCoro::Task<base::Result<HttpReply, SpeechError>> send(HttpRequest request);
    QCoro::Task<base::Result<QByteArray, SpeechError>> get(ServiceAccess access, QString path,
                                                           CancellationPtr cancellation = nullptr);
    /// Cancels running requests and refuses new ones.
    void close();

private:
    /// False if it was cancelled.
    QCoro::Task<bool> pause(std::chrono::milliseconds delay, CancellationPtr cancellation);

    SpeechTiming m_timing;
    ServiceAccess m_access;
    HttpClient m_http;
    QList<Completion<bool>> m_pauses;
};

} // namespace orlenta::speech
