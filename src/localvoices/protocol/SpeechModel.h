#pragma once

#include <optional>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

enum class ModelTask { TextToSpeech, SpeechToSpeech };
enum class LineContext { Accepted, Refused };
enum class StabilityScale { Continuous, ThreeSteps };

/// What a model of the service takes and costs. All of them are spoken by the same voices here.
struct SpeechModel {
    QString id;
    ModelTask task = ModelTask::TextToSpeech;
    /// The longest text of a request in characters.
    qsizetype longestText = 10'000;
    /// Credits for a character.
    double characterCost = 1.0;
    PhonemeRules phonemeRules = PhonemeRules::Skipped;
    /// Whether the text of neighbouring lines may be sent.
    LineContext context = LineContext::Accepted;
    StabilityScale stability = StabilityScale::Continuous;
};

/// The model of a task, if the service has it.
[[nodiscard]] std::optional<SpeechModel> findSpeechModel(const QString &id, ModelTask task);
/// All models of text-to-speech.
[[nodiscard]] QStringList speakingModelIds();

} // namespace orlenta::localvoices
