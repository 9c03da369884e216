#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>

namespace orlenta::localvoices::test {

/// The reply to one request.
struct Reply {
    int status = 0;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QByteArray contentType;
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers;

    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// A form field. `fileName` is empty unless the field is a file.
struct Field {
    QByteArray name;
    QByteArray fileName;
    QByteArray content;
};

/// Runs the real program in its own process, and a client for it. Closing standard input ends it.
class VoicesProgram final {
public:
    explicit VoicesProgram(const QStringList &arguments = {QStringLiteral("--faults"), QString()});
    ~VoicesProgram();
    VoicesProgram(const VoicesProgram &) = delete;
    VoicesProgram &operator=(const VoicesProgram &) = delete;

    static constexpr char key[] = "a key of the tests' own";

    [[nodiscard]] QString address() const { return m_address; }
    [[nodiscard]] QProcess &process() { return m_process; }

    /// Each sends the key and waits for the complete reply.
    [[nodiscard]] Reply get(const QString &path);
    [[nodiscard]] Reply post(const QString &path, const QByteArray &contentType, const QByteArray &body);
    [[nodiscard]] Reply postForm(const QString &path, const QList<Field> &fields);
    [[nodiscard]] Reply send(const QByteArray &method, const QNetworkRequest &request, const QByteArray &body = {});
    /// Sends without waiting. This object owns the reply.
    QNetworkReply *begin(const QByteArray &method, const QNetworkRequest &request, const QByteArray &body = {});
    [[nodiscard]] static Reply waitFor(QNetworkReply *reply);

    [[nodiscard]] QNetworkRequest request(const QString &path) const;
    /// Requests speech as pcm_16000. `more` adds JSON fields to the body, such as `,"seed":1`.
    [[nodiscard]] Reply speak(const QString &voiceId, const QString &text, const QString &more = {});

private:
    QProcess m_process;
    QString m_address;
    QNetworkAccessManager m_client;
};

} // namespace orlenta::localvoices::test
