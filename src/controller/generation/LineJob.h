#pragma once

#include <optional>

#include <QtCore/QString>

#include "controller/generation/GenerationRequestContext.h"
#include "model/Ids.h"
#include "speech/http/ServiceAccess.h"
#include "speech/synthesis/SpeechModel.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::controller {

/// One generation, captured when it starts so that a later edit of the line can't change it.
struct LineJob {
    /// Who pays, as of the moment the line was asked for.
    speech::ServiceAccess access;
    model::LineId lineId;
    QString text;
    QString elevenLabsVoiceId;
    std::optional<GenerationRequestContext> context;
    speech::VoiceSettings settings;
    const speech::SpeechModel *model = nullptr;
    /// The recording to speak from; empty for text-to-speech.
    QString directionPath;

    [[nodiscard]] bool isSpeechToSpeech() const { return !directionPath.isEmpty(); }
};

} // namespace orlenta::controller
