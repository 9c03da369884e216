#include "localvoices/server/LocalVoicesServer.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QUuid>
#include <QtNetwork/QHostAddress>

#include "localvoices/protocol/MultipartForm.h"
#include "localvoices/protocol/OutputFormat.h"
#include "localvoices/protocol/Refusal.h"
#include "localvoices/protocol/VoiceJson.h"
#include "localvoices/voices/VoiceCatalogue.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds workerTimeLimit{180'000};
constexpr qsizetype mostConnections = 128;
constexpr qint64 longestFaultOrder = 64 * 1024;

HttpAnswer objectAnswer(const QJsonObject &object) {
    HttpAnswer answer;
    answer.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return answer;
}

/// The endpoint's name in fault scripts; empty for unknown paths.
QString endpointOf(const IncomingRequest &request) {
    const QString &path = request.path;
    if (request.method == "GET")
        return path == u"/v1/user"_s ? u"user"_s : path == u"/v1/voices"_s ? u"voices"_s : QString();
    if (request.method != "POST")
        return {};
    if (path == u"/v1/pronunciation-dictionaries/add-from-file"_s)
        return u"lexicon"_s;
    const QStringList parts = path.split(u'/');
    if (parts.size() != 4 || parts.at(1) != u"v1"_s || parts.at(3).isEmpty())
        return {};
    if (parts.at(2) == u"text-to-speech"_s)
        return u"tts"_s;
    return parts.at(2) == u"speech-to-speech"_s ? u"sts"_s : QString();
}

bool isPreview(const IncomingRequest &request) {
    return request.method == "GET" && request.path.startsWith(u"/previews/"_s);
}

/// The body limit of an endpoint, in bytes.
qint64 longestBody(const QString &endpoint) {
    if (endpoint == u"tts"_s)
        return 1024 * 1024;
    if (endpoint == u"lexicon"_s)
        return 4 * 1024 * 1024;
    return endpoint == u"sts"_s ? LocalVoicesServer::largestRecording + 1024 * 1024 : 0;
}

/// The answer to a malformed or oversized request.
HttpAnswer transportRefusal(int status) {
    switch (status) {
    case 411:
        return plainDetailAnswer(status, u"The request needs a Content-Length."_s);
    case 413:
        return plainDetailAnswer(status, u"The request's body is too large."_s);
    case 431:
        return plainDetailAnswer(status, u"The request's headers are too large."_s);
    default:
        return plainDetailAnswer(status, u"The request is malformed."_s);
    }
}

} // namespace

LocalVoicesServer::LocalVoicesServer(ServerSettings settings, QObject *parent)
    : QObject(parent), m_settings(std::move(settings)), m_account(m_settings.characterLimit),
      m_workers(m_settings.workerProgram, m_settings.workerArguments, m_settings.workersAtOnce, workerTimeLimit),
      m_previewToken(QUuid::createUuid().toString(QUuid::Id128)) {
    connect(&m_listener, &QTcpServer::newConnection, this, &LocalVoicesServer::acceptConnections);
}

quint16 LocalVoicesServer::start() {
    if (!m_listener.listen(QHostAddress::LocalHost))
        return 0;
    m_origin = u"http://127.0.0.1:%1"_s.arg(m_listener.serverPort());
    return m_listener.serverPort();
}

void LocalVoicesServer::acceptConnections() {
    const HttpConnection::Receiver receiver{
        [this](const IncomingRequest &request) { return admit(request); },
        [this](const IncomingRequest &request, QTcpSocket *client) { route(request, client); }, transportRefusal};
    while (QTcpSocket *socket = m_listener.nextPendingConnection()) {
        new HttpConnection(socket, receiver);
        endLongestSilentConnection();
    }
}

// Any user of this machine can connect. Idle connections mustn't lock out the one with the key.
void LocalVoicesServer::endLongestSilentConnection() {
    const QList<HttpConnection *> connections = m_listener.findChildren<HttpConnection *>();
    if (connections.size() <= mostConnections)
        return;
    const auto silent = std::find_if(connections.begin(), connections.end(),
                                     [](const HttpConnection *each) { return each->isWaitingForHead(); });
    (silent == connections.end() ? connections.back() : *silent)->abort();
}

HttpConnection::Admission LocalVoicesServer::admit(const IncomingRequest &request) const {
    if (isPreview(request))
        return 0;
    const QByteArray key = request.header("xi-api-key");
    if (!isKey(key))
        return (key.isEmpty() ? missingApiKey() : invalidApiKey()).answer();
    if (isFaultOrder(request))
        return longestFaultOrder;
    const QString endpoint = endpointOf(request);
    if (endpoint.isEmpty())
        return plainDetailAnswer(404, u"Not Found"_s);
    return longestBody(endpoint);
}

bool LocalVoicesServer::isKey(const QByteArray &key) const {
    // Comparing whole digests takes the same time however much of the key is right.
    const QByteArray given = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    const QByteArray known = QCryptographicHash::hash(m_settings.key, QCryptographicHash::Sha256);
    int difference = 0;
    for (qsizetype i = 0; i < known.size(); ++i)
        difference |= given.at(i) ^ known.at(i);
    return difference == 0;
}

bool LocalVoicesServer::isFaultOrder(const IncomingRequest &request) const {
    return m_settings.faultOrders == FaultOrders::Accepted && request.path == u"/local/faults"_s;
}

Fault LocalVoicesServer::faultFor(const IncomingRequest &request, const QString &endpoint) {
    const QByteArray ordered = request.header("x-local-fault");
    if (m_settings.faultOrders == FaultOrders::Accepted && !ordered.isEmpty()) {
        base::Result<FaultScript, QString> script = FaultScript::parse(QString::fromLatin1(ordered));
        return script ? script.value().take(endpoint) : Fault{FaultKind::Status, 400, script.error(), 0};
    }
    return m_settings.faults.take(endpoint);
}

void LocalVoicesServer::route(const IncomingRequest &request, QTcpSocket *socket) {
    const Delivery plain(socket, {});
    if (isPreview(request)) {
        sendPreview(request, plain);
        return;
    }
    if (isFaultOrder(request)) {
        plain.send(orderFaults(request));
        return;
    }
    const QString endpoint = endpointOf(request);
    const Delivery delivery(socket, faultFor(request, endpoint));
    if (delivery.answerByFault())
        return;
    if (endpoint == u"user"_s)
        delivery.send(objectAnswer(m_account.userJson()));
    else if (endpoint == u"voices"_s)
        delivery.send(voicesAnswer());
    else if (endpoint == u"lexicon"_s)
        delivery.send(addDictionary(request));
    else
        routeSpeech(request, delivery);
}

HttpAnswer LocalVoicesServer::voicesAnswer() const {
    return objectAnswer(voicesJson(m_origin + u"/previews/"_s + m_previewToken));
}

HttpAnswer LocalVoicesServer::orderFaults(const IncomingRequest &request) {
    base::Result<FaultScript, QString> script = FaultScript::parse(QString::fromUtf8(request.body));
    if (!script)
        return plainDetailAnswer(400, script.error());
    m_settings.faults = std::move(script).value();
    return objectAnswer({});
}

HttpAnswer LocalVoicesServer::addDictionary(const IncomingRequest &request) {
    const auto form = MultipartForm::parse(request.header("content-type"), request.body);
    if (!form && form.error() == FormFault::TooManyParts)
        return tooManyParts(MultipartForm::mostParts);
    const std::optional<QString> name = form ? form->text(u"name"_s) : std::nullopt;
    if (!name)
        return missingField(u"name"_s);
    const FormPart *file = form->findPart(u"file"_s);
    if (file == nullptr)
        return missingField(u"file"_s);
    base::Result<std::vector<PronunciationRule>, QString> rules = readLexicon(file->content);
    if (!rules)
        return unreadableLexicon().answer();
    return objectAnswer(m_dictionaries.add(*name, form->text(u"description"_s), std::move(rules).value()));
}

void LocalVoicesServer::sendPreview(const IncomingRequest &request, const Delivery &delivery) {
    const QStringList parts = request.path.split(u'/');
    const QString id = parts.value(3).section(u'.', 0, 0);
    const std::optional<VoiceProfile> voice = findVoice(id);
    if (parts.size() != 4 || parts.at(2) != m_previewToken || !voice) {
        delivery.send(plainDetailAnswer(404, u"Not Found"_s));
        return;
    }
    if (const auto made = m_previews.find(id); made != m_previews.end()) {
        delivery.send(made->second);
        return;
    }
    SpeechJob job;
    job.voiceId = id;
    job.outputFormat = u"mp3_44100_128"_s;
    job.text = introductionOf(*voice);
    const auto free = [](const QByteArray &) { return qint64{0}; };
    runJob(job, free, delivery, [this, id, delivery](const HttpAnswer &answer) {
        if (answer.status == 200)
            m_previews.insert_or_assign(id, answer);
        delivery.send(answer);
    });
}

} // namespace orlenta::localvoices
