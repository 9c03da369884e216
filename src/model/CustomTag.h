#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::model {

/// A direction tag of the user's own; kept outside any project, so that it serves all of them.
struct CustomTag {
    CustomTagId id;
    QString label;
    /// A tag category word.
    QString category = QStringLiteral("Emotion");
    bool isEnabled = true;
    bool wasClassifiedByLLM = false;

    friend bool operator==(const CustomTag &, const CustomTag &) = default;
};

} // namespace orlenta::model
