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

/// Whether requests may order faults for themselves and others.
enum class FaultOrders { Refused, Accepted };

struct ServerSettings {
    /// The one key that is let in.
    QByteArray key;
    /// The program that is started for each piece of work, and what tells it so.
    QString workerProgram;
    QStringList workerArguments;
    int workersAtOnce = 2;
    qint64 characterLimit = 1'000'000'000;
    FaultOrders faultOrders = FaultOrders::Refused;
    FaultScript faults;
};

/// The speech service's five endpoints on this machine's loopback address. Main thread; listens from `start` until it
/// is destroyed.
///
/// Where faults are accepted, POST /local/faults with a script as its body takes the place of what is left of the
/// script before, and the header x-local-fault orders one fault for its own request.
class LocalVoicesServer final : public QObject {
    Q_OBJECT

public:
    /// The largest recording that is converted, in bytes.
    static constexpr qint64 largestRecording = 50 * 1024 * 1024;

    explicit LocalVoicesServer(ServerSettings settings, QObject *parent = nullptr);

    /// Listens on a port that the system chooses, and returns it; 0 when that fails.
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
    /// The credits that audio costs.
    using Costing = std::function<qint64(const QByteArray &)>;
    void runJob(const SpeechJob &job, const Costing &costOf, const Delivery &delivery, const Answered &answered);

    ServerSettings m_settings;
    QTcpServer m_listener;
    AccountBook m_account;
    DictionaryShelf m_dictionaries;
    WorkerPool m_workers;
    QString m_origin;
    /// Stands in the addresses of the previews, which are fetched without the key.
    QString m_previewToken;
    std::map<QString, HttpAnswer> m_previews;
};

} // namespace orlenta::localvoices
