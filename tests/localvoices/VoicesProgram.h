#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>

namespace orlenta::localvoices::test {

/// What came back for one request.
struct Reply {
    int status = 0;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QByteArray contentType;
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers;

    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// A field of a form: its name, the name of its file or nothing, and what it holds.
struct Field {
    QByteArray name;
    QByteArray fileName;
    QByteArray content;
};

/// The real program in a process of its own, on a port of its own, with a client of it. Ended by its standard input.
class VoicesProgram final {
public:
    explicit VoicesProgram(const QStringList &arguments = {QStringLiteral("--faults"), QString()});
    ~VoicesProgram();
    VoicesProgram(const VoicesProgram &) = delete;
    VoicesProgram &operator=(const VoicesProgram &) = delete;

    static constexpr char key[] = "a key of the tests' own";

    [[nodiscard]] QString address() const { return m_address; }
    [[nodiscard]] QProcess &process() { return m_process; }

    /// Each sends with the key and waits for the end of the answer.
    [[nodiscard]] Reply get(const QString &path);
    [[nodiscard]] Reply post(const QString &path, const QByteArray &contentType, const QByteArray &body);
    [[nodiscard]] Reply postForm(const QString &path, const QList<Field> &fields);
    [[nodiscard]] Reply send(const QByteArray &method, const QNetworkRequest &request, const QByteArray &body = {});
    /// Sends and returns at once; the reply belongs to this object.
    QNetworkReply *begin(const QByteArray &method, const QNetworkRequest &request, const QByteArray &body = {});
    [[nodiscard]] static Reply waitFor(QNetworkReply *reply);

    [[nodiscard]] QNetworkRequest request(const QString &path) const;
    /// A text-to-speech request's answer in pcm_16000 with other fields of the body as JSON, such as `,"seed":1`.
    [[nodiscard]] Reply speak(const QString &voiceId, const QString &text, const QString &more = {});

private:
    QProcess m_process;
    QString m_address;
    QNetworkAccessManager m_client;
};

} // namespace orlenta::localvoices::test
