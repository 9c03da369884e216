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

/// The one way to the service: who is signed in and where, what a reply means, and the retry when the service is busy.
/// Main thread.
class ServiceGateway final : public QObject {
    Q_OBJECT
public:
    explicit ServiceGateway(const SpeechTiming &timing);
    ~ServiceGateway() override;

    /// What a request made now would use.
    [[nodiscard]] const ServiceAccess &access() const { return m_access; }
    /// Changes endpoint and key together; requests of an earlier access aren't sent again.
    void setAccess(const QUrl &endpoint, const QString &apiKey);

    /// The reply to a request that the service accepted. A status of 429 is retried up to three times, after 1, 2 and 4
    /// seconds or as long as the service asks, but never after more than 10. A request whose access is no longer the
    /// current one ends as cancelled instead of going out, the first time or again; one without a key isn't sent.
    QCoro::Task<base::Result<HttpReply, SpeechError>> send(HttpRequest request);
    QCoro::Task<base::Result<QByteArray, SpeechError>> get(ServiceAccess access, QString path,
                                                           CancellationPtr cancellation = nullptr);
    /// Cancels what is under way and refuses what comes.
    void close();

private:
    /// Whether the pause ran to its end.
    QCoro::Task<bool> pause(std::chrono::milliseconds delay, CancellationPtr cancellation);

    SpeechTiming m_timing;
    ServiceAccess m_access;
    HttpClient m_http;
    QList<Completion<bool>> m_pauses;
};

} // namespace orlenta::speech
