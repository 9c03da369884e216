#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::model {

/// A user-defined tag. Stored outside the projects and available in all of them.
struct CustomTag {
    CustomTagId id;
    QString label;
    /// The raw value of a tag category.
    QString category = QStringLiteral("Emotion");
    bool isEnabled = true;
    bool wasClassifiedByLLM = false;

    friend bool operator==(const CustomTag &, const CustomTag &) = default;
};

} // namespace orlenta::model
