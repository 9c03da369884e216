#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include "base/Result.h"
#include "controller/generation/GenerationRequestContext.h"
#include "controller/ProjectController.h"
#include "speech/http/ServiceAccess.h"
#include "speech/http/SpeechError.h"
#include "speech/LineGenerationQueue.h"
#include "speech/synthesis/GeneratedAudio.h"
#include "speech/synthesis/TTSRequest.h"
#include "speech/synthesis/VoiceSettings.h"

namespace orlenta::speech {
class ElevenLabsService;
struct SpeechModel;
} // namespace orlenta::speech

namespace orlenta::controller {

/// Takes a line to a new take: picks the speech path, prepares text and settings, waits for the service, and installs
/// what comes back. One request at a time, through its queue. Main thread.
class LineGenerator final : public QObject {
    Q_OBJECT
public:
    LineGenerator(ProjectController &controller, speech::ElevenLabsService &service, QObject *parent = nullptr);
    ~LineGenerator() override;

    [[nodiscard]] speech::LineGenerationQueue &queue() { return m_queue; }
    [[nodiscard]] QString generateErrorTitle() const { return m_generateErrorTitle; }
    /// Why the last generation failed; none when there is nothing to tell.
    [[nodiscard]] std::optional<QString> generateError() const { return m_generateError; }

    void dismissError();
    void enqueue(const QList<model::LineId> &lines, speech::LineGenerationQueue::Priority priority);
    /// The menu command: one selected line goes first, several go as planForSelection() tells, none do nothing.
    void generateSelectedLines();
    /// One generation, outside the queue's order. Never fails: it reports through generateError().
    QCoro::Task<void> generate(model::LineId id);

Q_SIGNALS:
    void generateErrorChanged();

private:
    /// One request, captured when it starts.
    struct Job {
        speech::ServiceAccess access;
        model::LineId lineId;
        QString text;
        QString elevenLabsVoiceId;
        std::optional<GenerationRequestContext> context;
        speech::VoiceSettings settings;
        const speech::SpeechModel *model = nullptr;
        /// The recording to speak from; empty for text-to-speech.
        QString directionPath;
    };
    struct Dictionary {
        std::optional<QString> id;
        std::optional<QString> versionId;
    };
    /// None when the line has gone meanwhile.
    using Outcome = base::Result<std::optional<speech::GeneratedAudio>, speech::SpeechError>;

    [[nodiscard]] std::optional<Job> begin(const model::LineId &id);
    QCoro::Task<Outcome> speak(const Job &job);
    QCoro::Task<Outcome> speakRecording(Job job);
    QCoro::Task<Outcome> speakText(Job job);
    QCoro::Task<Dictionary> currentDictionary(Job job);
    QCoro::Task<void> install(speech::GeneratedAudio audio, Job job);
    [[nodiscard]] speech::TTSRequest ttsRequest(const Job &job, const Dictionary &dictionary) const;
    [[nodiscard]] std::optional<QString> previousLineText(const model::LineId &id) const;
    void report(const Job &job, const speech::SpeechError &error);

    ProjectController &m_controller;
    speech::ElevenLabsService &m_service;
    speech::LineGenerationQueue m_queue;
    QString m_generateErrorTitle = QStringLiteral("Generation Failed");
    std::optional<QString> m_generateError;
};

} // namespace orlenta::controller
