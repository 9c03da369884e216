#pragma once

#include <optional>

#include <QtCore/QString>

#include "base/Clock.h"
#include "model/Ids.h"

namespace orlenta::model {

enum class PronunciationMode { Simple, Advanced };
enum class PhonemeAlphabet { Cmu, Ipa };

/// A pronunciation rule of a project.
struct PronunciationEntry {
    PronunciationId id;
    /// The word or phrase.
    QString spelling;
    PronunciationMode mode = PronunciationMode::Simple;
    /// An alias in simple mode, a phoneme string in advanced mode.
    QString phoneticOverride;
    QString notes;
    base::Timestamp createdAt{};
    std::optional<PhonemeAlphabet> alphabet;
    bool isEnabled = true;

    /// The override of a simple entry, unless it is empty.
    [[nodiscard]] std::optional<QString> alias() const;
    /// The override of an advanced entry, unless it is empty.
    [[nodiscard]] std::optional<QString> phonemes() const;

    friend bool operator==(const PronunciationEntry &, const PronunciationEntry &) = default;
};

} // namespace orlenta::model
