#include "speech/account/KeychainError.h"

namespace orlenta::speech {

QString KeychainError::description() const {
    return QStringLiteral("Keychain %1 failed with OSStatus %2").arg(rawValue(operation)).arg(status);
}

QString rawValue(KeychainError::Operation operation) {
    switch (operation) {
    case KeychainError::Operation::SaveUpdate:
        return QStringLiteral("save.update");
    case KeychainError::Operation::SaveAdd:
        return QStringLiteral("save.add");
    case KeychainError::Operation::Read:
        return QStringLiteral("read");
    case KeychainError::Operation::Delete:
        return QStringLiteral("delete");
    }
    Q_UNREACHABLE();
}

} // namespace orlenta::speech
