#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>
#include <QtCore/QThread>
#include <unistd.h>

#include "localvoices/server/LocalVoicesServer.h"
#include "localvoices/workers/Confinement.h"
#include "localvoices/workers/SpeechWorker.h"

using namespace Qt::StringLiterals;
using orlenta::localvoices::FaultOrders;
using orlenta::localvoices::FaultScript;
using orlenta::localvoices::LocalVoicesServer;
using orlenta::localvoices::runSpeechWorker;
using orlenta::localvoices::ServerSettings;
using orlenta::localvoices::WorkerExit;

namespace {

constexpr QLatin1String workerArgument("--speak-one-job");

int complain(const QString &sentence) {
    std::fputs((sentence + u'\n').toUtf8().constData(), stderr);
    return EXIT_FAILURE;
}

/// Quits when the parent process closes our standard input, which also happens when it dies.
void endWithParent(QCoreApplication &application) {
    auto *notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, [notifier] {
        std::array<char, 256> ignored{};
        if (::read(STDIN_FILENO, ignored.data(), ignored.size()) > 0)
            return;
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

int serve(QCoreApplication &application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Serves local voices. Prints the address of the service and quits when standard input is closed.\n"
        u"Clients must send the key in the environment variable ORLENTA_LOCAL_VOICES_KEY."_s);
    const QCommandLineOption faults(
        u"faults"_s, u"Makes requests fail as the script says, and lets clients order faults."_s, u"script"_s);
    const QCommandLineOption limit(u"character-limit"_s, u"Total number of credits."_s, u"number"_s, u"1000000000"_s);
    parser.addHelpOption();
    parser.addOptions({faults, limit});
    parser.process(application);

    ServerSettings settings;
    settings.key = qgetenv("ORLENTA_LOCAL_VOICES_KEY");
    if (settings.key.isEmpty())
        return complain(u"ORLENTA_LOCAL_VOICES_KEY is not set."_s);
    settings.workerProgram = QCoreApplication::applicationFilePath();
    settings.workerArguments = {workerArgument};
    settings.workersAtOnce = std::clamp(QThread::idealThreadCount(), 2, 8);
    settings.characterLimit = parser.value(limit).toLongLong();
    const bool fromEnvironment = qEnvironmentVariableIsSet("ORLENTA_LOCAL_VOICES_FAULTS");
    if (parser.isSet(faults) || fromEnvironment) {
        const QString text =
            parser.isSet(faults) ? parser.value(faults) : qEnvironmentVariable("ORLENTA_LOCAL_VOICES_FAULTS");
        orlenta::base::Result<FaultScript, QString> script = FaultScript::parse(text);
        if (!script)
            return complain(script.error());
        settings.faults = std::move(script).value();
        settings.faultOrders = FaultOrders::Accepted;
    }

    for (const QString &gap : orlenta::localvoices::confinementGaps())
        complain(gap);
    LocalVoicesServer server(std::move(settings));
    const quint16 port = server.start();
    if (port == 0)
        return complain(u"Could not listen on the loopback address."_s);
    std::printf("http://127.0.0.1:%d\n", static_cast<int>(port));
    std::fflush(stdout);
    endWithParent(application);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    if (argc > 1 && QLatin1String(argv[1]) == workerArgument) {
        const WorkerExit exit = runSpeechWorker();
        // The engines never free their tables; exiting does.
        std::_Exit(static_cast<int>(exit));
    }
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"orlenta-local-voices"_s);
    return serve(application);
}
