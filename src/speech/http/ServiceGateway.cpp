#include "speech/http/ServiceGateway.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QtCore/QPointer>

#include "base/LogCategories.h"
#include "speech/account/ServiceAddresses.h"
#include "speech/http/ResponseCheck.h"

namespace orlenta::speech {

namespace {

constexpr std::array retryBackoffs{1.0, 2.0, 4.0};
constexpr double longestRetryDelay = 10.0;

QString secondsText(double seconds) {
    const bool isWhole = seconds == std::floor(seconds);
    return isWhole ? QString::number(static_cast<int>(seconds)) : QString::asprintf("%.1f", seconds);
}

} // namespace

ServiceGateway::ServiceGateway(const SpeechTiming &timing)
    : m_timing(timing), m_access{defaultEndpoint(), {}, 0}, m_http(timing) {}

ServiceGateway::~ServiceGateway() {
    close();
}

void ServiceGateway::setAccess(const QUrl &endpoint, const QString &apiKey) {
    if (m_access.endpoint == endpoint && m_access.apiKey == apiKey)
        return;
    m_access = {endpoint, apiKey, m_access.accountEpoch + 1};
}

QCoro::Task<base::Result<HttpReply, SpeechError>> ServiceGateway::send(HttpRequest request) {
    if (request.access.apiKey.isEmpty())
        co_return base::fail(SpeechError::notConnected());
    const QPointer<ServiceGateway> self(this);
    for (std::size_t attempt = 0;; ++attempt) {
        if (request.access != m_access)
            co_return base::fail(SpeechError::cancelled());
        auto exchanged = co_await m_http.perform(request);
        if (!self)
            co_return base::fail(SpeechError::cancelled());
        if (!exchanged)
            co_return exchanged;
        const auto refusal = checkResponse(*exchanged, m_timing.clock());
        if (!refusal && !request.replyFile && exchanged->contentType.toLower().startsWith("text/html"))
            co_return base::fail(SpeechError::intercepted());
        if (!refusal) {
            if (attempt > 0)
                qCInfo(base::log::rateLimit).noquote() << "retry succeeded";
            co_return exchanged;
        }
        if (refusal->kind() != ElevenLabsError::Kind::RateLimited || attempt == retryBackoffs.size())
            co_return base::fail(SpeechError(*refusal));
        const double delay =
            std::min(longestRetryDelay, std::max(retryBackoffs.at(attempt), refusal->retryAfter().value_or(0.0)));
        qCInfo(base::log::rateLimit).noquote()
            << QStringLiteral("429 received, retrying in %1s (attempt %2/3)").arg(secondsText(delay)).arg(attempt + 1);
        const auto wait = std::chrono::milliseconds(std::lround(delay * 1000.0));
        const bool ranOut = co_await pause(wait, request.cancellation);
        if (!self || !ranOut)
            co_return base::fail(SpeechError::cancelled());
    }
}

QCoro::Task<base::Result<QByteArray, SpeechError>> ServiceGateway::get(ServiceAccess access, QString path,
                                                                       CancellationPtr cancellation) {
    HttpRequest request = HttpRequest::get(access, path);
    request.cancellation = cancellation;
    auto reply = co_await send(request);
    if (!reply)
        co_return base::fail(reply.error());
    co_return reply->body;
}

QCoro::Task<bool> ServiceGateway::pause(std::chrono::milliseconds delay, CancellationPtr cancellation) {
    const QPointer<ServiceGateway> self(this);
    const Completion<bool> ended;
    if (cancellation && cancellation->isCancelled())
        co_return false;
    m_timing.callLater(delay, [ended] { ended.resolve(true); });
    QMetaObject::Connection connection;
    if (cancellation)
        connection = connect(cancellation.get(), &Cancellation::cancelled, this, [ended] { ended.resolve(false); });
    m_pauses.append(ended);
    const bool ran = co_await ended;
    disconnect(connection);
    if (self)
        m_pauses.removeIf([&ended](const Completion<bool> &pause) { return pause.isSameAs(ended); });
    co_return ran;
}

void ServiceGateway::close() {
    m_http.close();
    for (const Completion<bool> &ended : QList(m_pauses))
        ended.resolve(false);
}

} // namespace orlenta::speech
