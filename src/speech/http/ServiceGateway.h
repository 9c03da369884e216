#pragma once

#include <chrono>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "base/Result.h"
#include "speech/http/Completion.h"
#include "speech/http/HttpClient.h"
#include "speech/http/SpeechTiming.h"

namespace orlenta::speech {

/// The one way to the service: its address, the meaning of its replies, and the retry when
/// it is busy. Main thread.
class ServiceGateway final : public QObject {
    Q_OBJECT
public:
    explicit ServiceGateway(const SpeechTiming &timing);
    ~ServiceGateway() override;

    [[nodiscard]] QUrl baseURL() const { return m_baseURL; }
    void setBaseURL(const QUrl &url) { m_baseURL = url; }
    /// The endpoint followed by `path`, which may end in a query. Invalid when the two make no address.
    [[nodiscard]] QUrl address(const QString &path) const;

    /// The reply of a request that the service accepted. A status of 429 is tried again up to three times, after 1, 2
    /// and 4 seconds or as long as the service asks, but never after more than 10.
    QCoro::Task<base::Result<HttpReply, SpeechError>> send(HttpRequest request);
    QCoro::Task<base::Result<QByteArray, SpeechError>> get(QString path, QString apiKey,
                                                           CancellationPtr cancellation = nullptr);
    /// Calls off what is under way and refuses what comes.
    void close();

private:
    /// Whether the pause ran to its end.
    QCoro::Task<bool> pause(std::chrono::milliseconds delay, CancellationPtr cancellation);

    SpeechTiming m_timing;
    QUrl m_baseURL;
    HttpClient m_http;
    QList<Completion<bool>> m_pauses;
};

} // namespace orlenta::speech
