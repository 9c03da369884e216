#pragma once

#include <functional>
#include <map>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtNetwork/QTcpServer>

#include "localvoices/http/HttpConnection.h"
#include "localvoices/lexicon/DictionaryShelf.h"
#include "localvoices/protocol/SpeechModel.h"
#include "localvoices/server/AccountBook.h"
#include "localvoices/server/Delivery.h"
#include "localvoices/server/FaultScript.h"
#include "localvoices/workers/WorkerPool.h"

namespace orlenta::localvoices {

struct TextToSpeechRequest;
struct SpeechToSpeechRequest;

/// Whether clients may order faults.
enum class FaultOrders { Refused, Accepted };

struct ServerSettings {
    /// The only key that is accepted.
    QByteArray key;
    /// The worker program, started once per job, and its arguments.
    QString workerProgram;
    QStringList workerArguments;
    int workersAtOnce = 2;
    qint64 characterLimit = 1'000'000'000;
    FaultOrders faultOrders = FaultOrders::Refused;
    FaultScript faults;
};

/// Serves the speech service's five endpoints on the loopback address. Main thread; listens from `start` until it is
/// destroyed.
///
/// When fault orders are accepted, POST /local/faults replaces the current fault script with its body, and the header
/// x-local-fault orders a fault for its own request.
class LocalVoicesServer final : public QObject {
    Q_OBJECT

public:
    /// Limit for the recording in a speech-to-speech request, in bytes.
    static constexpr qint64 largestRecording = 50 * 1024 * 1024;

    explicit LocalVoicesServer(ServerSettings settings, QObject *parent = nullptr);

    /// Starts listening and returns the port, which the system chooses; 0 on failure.
    [[nodiscard]] quint16 start();

private:
    void acceptConnections();
    void endLongestSilentConnection();
    [[nodiscard]] HttpConnection::Admission admit(const IncomingRequest &request) const;
    void route(const IncomingRequest &request, QTcpSocket *socket);
    void routeSpeech(const IncomingRequest &request, const Delivery &delivery);
    [[nodiscard]] bool isFaultOrder(const IncomingRequest &request) const;
    [[nodiscard]] Fault faultFor(const IncomingRequest &request, const QString &endpoint);
    [[nodiscard]] bool isKey(const QByteArray &key) const;

    [[nodiscard]] HttpAnswer voicesAnswer() const;
    [[nodiscard]] HttpAnswer orderFaults(const IncomingRequest &request);
    [[nodiscard]] HttpAnswer addDictionary(const IncomingRequest &request);
    void sendPreview(const IncomingRequest &request, const Delivery &delivery);
    void speak(const TextToSpeechRequest &request, SpeechJob job, const Delivery &delivery);
    void convert(const SpeechToSpeechRequest &request, SpeechJob job, const Delivery &delivery);

    using Answered = std::function<void(const HttpAnswer &)>;
    /// Returns the credits to charge for the audio.
    using Costing = std::function<qint64(const QByteArray &)>;
    void runJob(const SpeechJob &job, const Costing &costOf, const Delivery &delivery, const Answered &answered);

    ServerSettings m_settings;
    QTcpServer m_listener;
    AccountBook m_account;
    DictionaryShelf m_dictionaries;
    WorkerPool m_workers;
    QString m_origin;
    /// Part of each preview URL, because players fetch previews without the key.
    QString m_previewToken;
    std::map<QString, HttpAnswer> m_previews;
};

} // namespace orlenta::localvoices
