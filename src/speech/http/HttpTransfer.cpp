#include "speech/http/HttpTransfer.h"

#include <utility>

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkRequest>

namespace orlenta::speech {

namespace {

constexpr qsizetype memoryLimit = qsizetype{8} * 1024 * 1024;
// Over three hours of uncompressed speech: four times as long as the longest text that a model accepts.
constexpr qint64 fileLimit = qint64{1024} * 1024 * 1024;
// If a server writes faster than this thread reads, Qt reports nothing to read while its buffer grows; a bounded buffer
// makes the server wait instead.
constexpr qint64 readBuffer = qint64{1024} * 1024;
// A reply to a file may exceed the time limit as long as it brings at least this much in each such period.
constexpr qint64 slowestPace = qint64{1024} * 1024;

QNetworkRequest networkRequestFor(const HttpRequest &request) {
    QNetworkRequest network(request.url);
    network.setRawHeader("xi-api-key", request.access.apiKey.toUtf8());
    if (!request.contentType.isEmpty())
        network.setRawHeader("Content-Type", request.contentType);
    // The default policy would send the key to other hosts.
    network.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    network.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    network.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    network.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return network;
}

/// Whether the server answered, as opposed to a failure of the network.
bool cameFromServer(const QNetworkReply &reply) {
    switch (reply.error()) {
    case QNetworkReply::UnknownNetworkError:
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolFailure:
        return false;
    default:
        // Smaller values are network and proxy errors; Qt derives the larger ones from the HTTP status.
        return reply.error() == QNetworkReply::NoError || reply.error() > QNetworkReply::UnknownProxyError;
    }
}

} // namespace

HttpTransfer::HttpTransfer(QNetworkAccessManager &network, const HttpRequest &request, const SpeechTiming &timing,
                           QObject *parent)
    : QObject(parent), m_file(request.replyFile) {
    const QNetworkRequest networkRequest = networkRequestFor(request);
    m_reply = request.method == HttpRequest::Method::Post ? network.post(networkRequest, request.body)
                                                          : network.get(networkRequest);
    m_reply->setReadBufferSize(readBuffer);
    m_stallTimer.setSingleShot(true);
    m_stallTimer.setInterval(timing.stallTimeout);
    m_exchangeTimer.setSingleShot(true);
    m_exchangeTimer.setInterval(timing.exchangeTimeout);
    const auto moved = [this] { m_stallTimer.start(); };
    connect(m_reply, &QNetworkReply::uploadProgress, this, moved);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, moved);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpTransfer::collect);
    connect(m_reply, &QNetworkReply::finished, this, &HttpTransfer::replyFinished);
    connect(&m_stallTimer, &QTimer::timeout, this, [this] { finish(base::fail(SpeechError::timedOut())); });
    connect(&m_exchangeTimer, &QTimer::timeout, this, &HttpTransfer::checkPace);
    if (request.cancellation)
        connect(request.cancellation.get(), &Cancellation::cancelled, this, &HttpTransfer::cancel);
    m_stallTimer.start();
    m_exchangeTimer.start();
}

HttpTransfer::~HttpTransfer() {
    cancel();
}

void HttpTransfer::cancel() {
    finish(base::fail(SpeechError::cancelled()));
}

int HttpTransfer::status() const {
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void HttpTransfer::collect() {
    m_stallTimer.start();
    const auto kept = keep(m_reply->readAll());
    if (!kept)
        finish(base::fail(kept.error()));
}

base::Result<void, SpeechError> HttpTransfer::keep(const QByteArray &bytes) {
    // The bodies of refusals and redirects are never the audio.
    if (m_file && status() >= 200 && status() <= 299)
        return keepInFile(bytes);
    m_body += bytes;
    if (m_body.size() > memoryLimit)
        return base::fail(SpeechError::replyTooLarge());
    return {};
}

base::Result<void, SpeechError> HttpTransfer::keepInFile(const QByteArray &bytes) {
    base::Result<void, base::FileError> written;
    if (!std::exchange(m_fileHasBegun, true))
        written = m_file->begin();
    if (written)
        written = m_file->append(bytes);
    if (!written)
        return base::fail(SpeechError::cannotWrite(written.error().reason));
    if (m_file->size() > fileLimit)
        return base::fail(SpeechError::replyTooLarge());
    return {};
}

void HttpTransfer::checkPace() {
    const qint64 size = m_fileHasBegun ? m_file->size() : 0;
    if (size - std::exchange(m_sizeAtLastPaceCheck, size) < slowestPace)
        finish(base::fail(SpeechError::timedOut()));
    else
        m_exchangeTimer.start();
}

void HttpTransfer::replyFinished() {
    collect();
    if (m_finished)
        return;
    if (!cameFromServer(*m_reply)) {
        finish(base::fail(SpeechError::transport(m_reply->errorString())));
        return;
    }
    if (status() == 0) {
        finish(base::fail(SpeechError(ElevenLabsError::invalidResponse())));
        return;
    }
    HttpReply reply;
    reply.status = status();
    reply.retryAfter = m_reply->rawHeader("Retry-After");
    reply.location = m_reply->rawHeader("Location");
    reply.contentType = m_reply->rawHeader("Content-Type");
    reply.body = m_body;
    finish(reply);
}

void HttpTransfer::finish(const Outcome &outcome) {
    if (m_finished)
        return;
    m_finished = true;
    m_stallTimer.stop();
    m_exchangeTimer.stop();
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
    m_file.reset();
    deleteLater();
    // Last: the waiting coroutine resumes inside this call and may destroy this object.
    const Completion<Outcome> completion = m_completion;
    completion.resolve(outcome);
}

} // namespace orlenta::speech
