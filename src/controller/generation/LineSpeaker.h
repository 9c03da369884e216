#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "base/Result.h"
#include "controller/generation/LineJob.h"
#include "controller/ProjectController.h"
#include "speech/http/SpeechError.h"
#include "speech/synthesis/GeneratedAudio.h"
#include "speech/synthesis/TTSRequest.h"

namespace orlenta::speech {
class SpeechApi;
}

namespace orlenta::controller {

/// Turns a line into speech: chooses between text and recording, prepares the text for its model, and uploads the
/// pronunciation dictionary when needed. Main thread; project and service outlive it.
class LineSpeaker final : public QObject {
    Q_OBJECT
public:
    /// Neither audio nor error if the line was deleted meanwhile.
    using Outcome = base::Result<std::optional<speech::GeneratedAudio>, speech::SpeechError>;

    LineSpeaker(ProjectController &controller, speech::SpeechApi &speech);

    [[nodiscard]] QCoro::Task<Outcome> speak(const LineJob &job);

private:
    struct Dictionary {
        std::optional<QString> id;
        std::optional<QString> versionId;
    };

    QCoro::Task<Outcome> speakRecording(LineJob job);
    QCoro::Task<Outcome> speakText(LineJob job);
    QCoro::Task<Dictionary> currentDictionary(LineJob job);
    [[nodiscard]] speech::TTSRequest ttsRequest(const LineJob &job, const Dictionary &dictionary) const;
    [[nodiscard]] std::optional<QString> previousLineText(const model::LineId &id) const;

    ProjectController &m_controller;
    speech::SpeechApi &m_speech;
};

} // namespace orlenta::controller
