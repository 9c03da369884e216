#pragma once

#include <QtCore/QByteArray>

#include "model/Project.h"

namespace orlenta::model {

/// 2024-05-31T12:34:56Z.
[[nodiscard]] base::Timestamp sampleMoment();

/// "00000000-0000-0000-0000-" and the number in twelve digits.
[[nodiscard]] QUuid sampleUuid(int number);

/// A project with a value in every field of every record, twice where there is a list.
[[nodiscard]] Project fullProject();

/// A document of the required keys alone, with `members` (each beginning with a comma) added at its end.
[[nodiscard]] QByteArray documentWith(const QByteArray &members);

/// A line of the required keys alone.
[[nodiscard]] QByteArray lineText(int id, int order, const QByteArray &members = {});

/// A preset of the required keys alone.
[[nodiscard]] QByteArray presetText(const QByteArray &members = {});

} // namespace orlenta::model
