#pragma once

#include <cstdint>
#include <variant>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Clock.h"
#include "base/Result.h"
#include "model/Project.h"

namespace orlenta::model {

/// The file was written by a later version of the program; its records were not looked at further.
struct NewerSchema {
    std::int64_t version = 0;
};
/// The bytes are no project; `detail` says where and why.
struct DecodingError {
    QString detail;
};

/// Writes the document: UTF-8, indented, keys in ascending order, slashes escaped, nothing null. Any thread.
[[nodiscard]] QByteArray encodeProject(const Project &project);

/// Reads and repairs a document in one pass over the bytes. `now` dates pronunciation entries that carry no date.
/// The bytes are parsed in place: handed over with std::move they aren't copied.
/// A schema version of 2 or more wins over any decoding error, so that a newer file is told apart from a broken one.
/// Any thread.
[[nodiscard]] base::Result<Project, std::variant<NewerSchema, DecodingError>> decodeProject(QByteArray bytes,
                                                                                            base::Timestamp now);

} // namespace orlenta::model
