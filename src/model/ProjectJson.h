#pragma once

#include <cstdint>
#include <variant>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Clock.h"
#include "base/Result.h"
#include "model/Project.h"

namespace orlenta::model {

/// The file was written by a newer version of the program. Its records weren't read.
struct NewerSchema {
    std::int64_t version = 0;
};
/// The bytes aren't a valid project. `detail` says where and why.
struct DecodingError {
    QString detail;
};

/// Encodes the document: UTF-8, indented, keys in ascending order, slashes escaped, no null values. Any thread.
[[nodiscard]] QByteArray encodeProject(const Project &project);

/// Decodes and repairs a document in one pass. `now` dates pronunciation entries without a date. Parses in place, so
/// pass the bytes with std::move to avoid a copy. A newer schema version takes precedence over any decoding error, so
/// that a newer file isn't reported as broken. Any thread.
[[nodiscard]] base::Result<Project, std::variant<NewerSchema, DecodingError>> decodeProject(QByteArray bytes,
                                                                                            base::Timestamp now);

} // namespace orlenta::model
