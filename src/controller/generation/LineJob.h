#pragma once

#include <optional>

#include <QtCore/QString>

#include "controller/generation/GenerationRequestContext.h"
#include "model/Ids.h"
#include "speech/http/ServiceAccess.h"
#include "speech/synthesis/SpeechModel.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::controller {

/// One generation, captured when it starts so that later edits of the line don't affect it.
struct LineJob {
    /// Captured when the line was requested.
    speech::ServiceAccess access;
    model::LineId lineId;
    QString text;
    QString elevenLabsVoiceId;
    std::optional<GenerationRequestContext> context;
    speech::VoiceSettings settings;
    const speech::SpeechModel *model = nullptr;
    /// The recording for speech-to-speech; empty for text-to-speech.
    QString directionPath;

    [[nodiscard]] bool isSpeechToSpeech() const { return !directionPath.isEmpty(); }
};

} // namespace orlenta::controller
