#include <cstdio>

#include <qcoro/qcorotask.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include "base/UserDefaults.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/KeychainHelper.h"

// A process can use only one session bus, so each keyring state is tested in a process of its own: this one. Arguments:
// the service's address, the keyring time-out in milliseconds, and the user's actions. Prints a line of JSON for each.
namespace {

using orlenta::speech::ElevenLabsService;

QCoro::Task<void> act(ElevenLabsService *service, QString action) {
    if (action == QLatin1String("start")) {
        co_await service->connectStoredAccount();
    } else if (action == QLatin1String("sign-out")) {
        co_await service->disconnectAccount();
    } else {
        service->setApiKey(QStringLiteral("key-\u00e9-1"));
        co_await service->connectAccount(action == QLatin1String("connect") ? ElevenLabsService::KeychainErrors::Show
                                                                            : ElevenLabsService::KeychainErrors::Hide);
    }
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QTemporaryDir folder;
    orlenta::base::UserDefaults defaults(folder.filePath(QStringLiteral("defaults.ini")));
    orlenta::speech::SpeechTiming timing;
    timing.keyringTimeout = std::chrono::milliseconds(arguments.at(2).toInt());
    orlenta::speech::KeychainHelper credentials(nullptr, timing);
    QStringList breadcrumbs;
    QObject::connect(&credentials, &orlenta::speech::KeychainHelper::breadcrumb, &credentials,
                     [&breadcrumbs](const QString &message) { breadcrumbs.append(message); });
    ElevenLabsService service(defaults, credentials);
    service.useEndpoint(QUrl(arguments.at(1)), ElevenLabsService::KeyKeeping::Keyring);
    for (const QString &action : arguments.mid(3)) {
        QCoro::waitFor(act(&service, action));
        const QJsonObject seen{{QStringLiteral("key"), service.apiKey()},
                               {QStringLiteral("connected"), service.isAuthenticated()},
                               {QStringLiteral("error"), service.errorMessage()},
                               {QStringLiteral("breadcrumbs"), breadcrumbs.join(QLatin1Char(','))}};
        std::printf("%s\n", QJsonDocument(seen).toJson(QJsonDocument::Compact).constData());
        breadcrumbs.clear();
    }
    return 0;
}
