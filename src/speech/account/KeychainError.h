#pragma once

#include <QtCore/QString>

namespace orlenta::speech {

/// A failed keyring operation.
struct KeychainError {
    enum class Operation { SaveUpdate, SaveAdd, Read, Delete };

    Operation operation = Operation::Read;
    /// The keyring library's error number, never 0.
    int status = 0;

    [[nodiscard]] QString description() const;

    friend bool operator==(const KeychainError &, const KeychainError &) = default;
};

/// "save.update", "save.add", "read" or "delete".
[[nodiscard]] QString rawValue(KeychainError::Operation operation);

} // namespace orlenta::speech
