#include "localvoices/VoicesProgram.h"

#include <gtest/gtest.h>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>

namespace orlenta::localvoices::test {

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMilliseconds = 60'000;

} // namespace

QByteArray Reply::header(const QByteArray &name) const {
    for (const auto &[key, value] : headers)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

VoicesProgram::VoicesProgram(const QStringList &arguments) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ORLENTA_LOCAL_VOICES_KEY"_s, QString::fromLatin1(key));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(ORLENTA_LOCAL_VOICES_PROGRAM), arguments);
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patienceMilliseconds)) {
    }
    m_address = QString::fromLatin1(m_process.readLine()).chopped(1);
    EXPECT_TRUE(m_address.startsWith(u"http://127.0.0.1:"_s)) << m_address.toStdString();
}

VoicesProgram::~VoicesProgram() {
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(patienceMilliseconds))
        ADD_FAILURE() << "The program goes on without its standard input.";
}

QNetworkRequest VoicesProgram::request(const QString &path) const {
    QNetworkRequest request(QUrl(m_address + path));
    request.setRawHeader("xi-api-key", key);
    return request;
}

QNetworkReply *VoicesProgram::begin(const QByteArray &method, const QNetworkRequest &request, const QByteArray &body) {
    return m_client.sendCustomRequest(request, method, body);
}

Reply VoicesProgram::waitFor(QNetworkReply *reply) {
    if (!reply->isFinished()) {
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(patienceMilliseconds, reply, &QNetworkReply::abort);
        loop.exec();
    }
    // Aborted replies are closed.
    const QByteArray body = reply->isOpen() ? reply->readAll() : QByteArray();
    const Reply result{reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->error(),
                       reply->rawHeader("Content-Type"), body, reply->rawHeaderPairs()};
    reply->deleteLater();
    return result;
}

Reply VoicesProgram::send(const QByteArray &method, const QNetworkRequest &request, const QByteArray &body) {
    return waitFor(begin(method, request, body));
}

Reply VoicesProgram::get(const QString &path) {
    return send("GET", request(path));
}

Reply VoicesProgram::post(const QString &path, const QByteArray &contentType, const QByteArray &body) {
    QNetworkRequest posted = request(path);
    posted.setRawHeader("Content-Type", contentType);
    return send("POST", posted, body);
}

Reply VoicesProgram::postForm(const QString &path, const QList<Field> &fields) {
    QByteArray body;
    for (const Field &field : fields) {
        body += "--a boundary\r\nContent-Disposition: form-data; name=\"" + field.name + '"';
        if (!field.fileName.isEmpty())
            body += "; filename=\"" + field.fileName + '"';
        body += "\r\n\r\n" + field.content + "\r\n";
    }
    return post(path, "multipart/form-data; boundary=\"a boundary\"", body + "--a boundary--\r\n");
}

Reply VoicesProgram::speak(const QString &voiceId, const QString &text, const QString &more) {
    const QByteArray quoted = QJsonDocument(QJsonObject{{u"text"_s, text}}).toJson(QJsonDocument::Compact);
    return post(u"/v1/text-to-speech/%1?output_format=pcm_16000"_s.arg(voiceId), "application/json",
                quoted.chopped(1) + more.toUtf8() + '}');
}

} // namespace orlenta::localvoices::test
