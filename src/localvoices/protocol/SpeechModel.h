#pragma once

#include <optional>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

enum class ModelTask { TextToSpeech, SpeechToSpeech };
enum class LineContext { Accepted, Refused };
enum class StabilityScale { Continuous, ThreeSteps };

/// What one of the service's models accepts and costs. Here all models use the same voices.
struct SpeechModel {
    QString id;
    ModelTask task = ModelTask::TextToSpeech;
    /// The text limit of a request in characters.
    qsizetype longestText = 10'000;
    /// Credits per character.
    double characterCost = 1.0;
    PhonemeRules phonemeRules = PhonemeRules::Skipped;
    /// Whether the model accepts the text of neighbouring lines.
    LineContext context = LineContext::Accepted;
    StabilityScale stability = StabilityScale::Continuous;
};

/// Looks up a model by id; none if the service has no such model for this task.
[[nodiscard]] std::optional<SpeechModel> findSpeechModel(const QString &id, ModelTask task);
/// The ids of all text-to-speech models.
[[nodiscard]] QStringList speakingModelIds();

} // namespace orlenta::localvoices
