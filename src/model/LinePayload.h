#pragma once

#include <cstdint>
#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "model/ProjectLine.h"

namespace orlenta::model {

/// Lines on the clipboard. They name audio of their project's folder, so the project's id goes with them.
struct LinePayload {
    static constexpr std::int64_t currentVersion = 1;

    ProjectId projectId;
    QList<ProjectLine> lines;

    friend bool operator==(const LinePayload &, const LinePayload &) = default;
};

/// JSON with the keys "version", "projectId" and "lines"; lines stand as in a project file. Any thread.
[[nodiscard]] QByteArray encodeLinePayload(const LinePayload &payload);
/// Nothing if the bytes are no payload of the current version. Any thread.
[[nodiscard]] std::optional<LinePayload> decodeLinePayload(const QByteArray &bytes);

} // namespace orlenta::model
