#include "speech/http/HttpClient.h"

#include <algorithm>

#include <QtCore/QPointer>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkProxy>

#include "speech/http/HttpTransfer.h"

namespace orlenta::speech {

namespace {

constexpr int redirectLimit = 5;

bool isSendable(const HttpRequest &request) {
    const QString scheme = request.url.scheme();
    return request.url.isValid() && !request.url.host().isEmpty() &&
           (scheme == QLatin1String("https") || scheme == QLatin1String("http"));
}

/// A key with a line break in it would add headers.
bool fitsHeader(const QString &key) {
    return std::all_of(key.begin(), key.end(), [](QChar c) { return c.unicode() >= 0x20 && c.unicode() != 0x7F; });
}

bool isSameOrigin(const QUrl &a, const QUrl &b) {
    const auto port = [](const QUrl &url) { return url.port(url.scheme() == QLatin1String("https") ? 443 : 80); };
    return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

/// Where to send the request next; empty if the reply is final.
QUrl redirectTarget(const HttpRequest &request, const HttpReply &reply) {
    const bool keepsMethod = reply.status == 307 || reply.status == 308;
    const bool redirects = keepsMethod || reply.status == 301 || reply.status == 302 || reply.status == 303;
    if (!redirects || reply.location.isEmpty() || (request.method == HttpRequest::Method::Post && !keepsMethod))
        return {};
    const QUrl target = request.url.resolved(QUrl::fromEncoded(reply.location));
    return isSameOrigin(request.url, target) ? target : QUrl();
}

bool isLoopback(const QUrl &url) {
    return url.host() == QLatin1String("localhost") || QHostAddress(url.host()).isLoopback();
}

} // namespace

HttpClient::HttpClient(SpeechTiming timing) : m_timing(std::move(timing)) {}

HttpClient::~HttpClient() {
    close();
}

QCoro::Task<base::Result<HttpReply, SpeechError>> HttpClient::perform(HttpRequest request) {
    if (!isSendable(request))
        co_return base::fail(SpeechError(ElevenLabsError::invalidURL()));
    if (!fitsHeader(request.access.apiKey))
        co_return base::fail(SpeechError(ElevenLabsError::unauthorized()));
    const QPointer<HttpClient> self(this);
    for (int redirects = 0;; ++redirects) {
        if (!self || m_closed || (request.cancellation && request.cancellation->isCancelled()))
            co_return base::fail(SpeechError::cancelled());
        // A proxy can't reach the local voices on this computer.
        m_network.setProxy(
            QNetworkProxy(isLoopback(request.url) ? QNetworkProxy::NoProxy : QNetworkProxy::DefaultProxy));
        auto *transfer = new HttpTransfer(m_network, request, m_timing, this);
        const Completion<HttpTransfer::Outcome> completion = transfer->completion();
        HttpTransfer::Outcome outcome = co_await completion;
        if (!outcome)
            co_return outcome;
        const QUrl target = redirectTarget(request, *outcome);
        if (target.isEmpty() || redirects == redirectLimit)
            co_return outcome;
        request.url = target;
    }
}

void HttpClient::close() {
    m_closed = true;
    for (HttpTransfer *transfer : findChildren<HttpTransfer *>(QString(), Qt::FindDirectChildrenOnly))
        transfer->cancel();
}

} // namespace orlenta::speech
