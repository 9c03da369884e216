#pragma once

#include <QtCore/QByteArray>

#include "model/Project.h"

namespace orlenta::model {

/// 2024-05-31T12:34:56Z.
[[nodiscard]] base::Timestamp sampleMoment();

/// "00000000-0000-0000-0000-" followed by the number in twelve digits.
[[nodiscard]] QUuid sampleUuid(int number);

/// A project with a value in every field of every record, and two elements in every list.
[[nodiscard]] Project fullProject();

/// A document with only the required keys, and `members` (each starting with a comma) at its end.
[[nodiscard]] QByteArray documentWith(const QByteArray &members);

/// A line with only the required keys.
[[nodiscard]] QByteArray lineText(int id, int order, const QByteArray &members = {});

/// A preset with only the required keys.
[[nodiscard]] QByteArray presetText(const QByteArray &members = {});

} // namespace orlenta::model
