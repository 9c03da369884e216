#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "model/ProjectLine.h"

namespace orlenta::model {

/// Lines on the clipboard. They refer to audio in their project's folder, so they carry the project's id.
struct LinePayload {
    static constexpr std::int64_t currentVersion = 1;

    ProjectId projectId;
    QList<ProjectLine> lines;

    friend bool operator==(const LinePayload &, const LinePayload &) = default;
};

/// JSON with the keys "version", "projectId" and "lines". Lines are encoded as in a project file. Any thread.
[[nodiscard]] QByteArray encodeLinePayload(const LinePayload &payload);
/// None if the bytes aren't a payload of the current version. Any thread.
[[nodiscard]] std::optional<LinePayload> decodeLinePayload(const QByteArray &bytes);

} // namespace orlenta::model
