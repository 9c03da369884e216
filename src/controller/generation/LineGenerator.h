#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QString>

#include "controller/generation/LineJob.h"
#include "controller/generation/LineSpeaker.h"
#include "controller/generation/SkippedLines.h"
#include "controller/generation/UnstoredTakes.h"
#include "controller/ProjectController.h"
#include "speech/http/ServiceAccess.h"
#include "speech/http/SpeechError.h"
#include "speech/LineGenerationQueue.h"
#include "speech/synthesis/GeneratedAudio.h"

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::controller {

/// Takes lines to new takes, one request at a time through its queue: checks that a line can be spoken and its take be
/// stored, has it spoken, and installs the audio. Main thread; project and service outlive it.
class LineGenerator final : public QObject {
    Q_OBJECT
public:
    LineGenerator(ProjectController &controller, speech::ElevenLabsService &service, QObject *parent = nullptr);
    ~LineGenerator() override;

    /// Its progress and its stop are for the window to show.
    [[nodiscard]] speech::LineGenerationQueue &queue() { return m_queue; }
    /// Audio that was generated and couldn't be stored in the project.
    [[nodiscard]] UnstoredTakes &unstoredTakes() { return m_unstored; }
    [[nodiscard]] QString generateErrorTitle() const { return m_generateErrorTitle; }
    /// Why the last generation failed; none when there is nothing to tell.
    [[nodiscard]] std::optional<QString> generateError() const { return m_generateError; }

    void dismissError();
    /// Lines of normal priority are a batch: asking for the same batch again while it runs repeats nothing of it.
    /// Without a key nothing is queued, and the error says what to do.
    void enqueue(const QList<model::LineId> &lines, speech::LineGenerationQueue::Priority priority);
    /// The menu command: one selected line goes first, several go as planForSelection() tells, none do nothing.
    void generateSelectedLines();
    /// One generation, outside the queue's order. Never fails: it reports through generateError().
    QCoro::Task<void> generate(model::LineId id);

Q_SIGNALS:
    void generateErrorChanged();

private:
    enum class Origin { Line, Batch };
    /// What a line was asked for with.
    struct Order {
        speech::ServiceAccess access;
        Origin origin = Origin::Line;
    };

    [[nodiscard]] QList<model::LineId> withoutRepeats(const QList<model::LineId> &lines) const;
    QCoro::Task<void> perform(model::LineId id, Order order);
    [[nodiscard]] std::optional<LineJob> begin(const model::LineId &id, const Order &order);
    QCoro::Task<void> generateJob(LineJob job, Origin origin);
    QCoro::Task<void> store(speech::GeneratedAudio audio, LineJob job);
    void skip(SkipReason reason);
    void tellSkipped();
    void report(const LineJob &job, const speech::SpeechError &error);
    void setError(const QString &title, const QString &message);

    ProjectController &m_controller;
    speech::ElevenLabsService &m_service;
    LineSpeaker m_speaker;
    UnstoredTakes m_unstored;
    speech::LineGenerationQueue m_queue;
    /// The lines that batches asked for, and those of them whose take has arrived, since the queue became active.
    QSet<model::LineId> m_batchLines;
    QSet<model::LineId> m_batchTakes;
    SkippedLines m_skipped;
    QString m_generateErrorTitle = QStringLiteral("Generation Failed");
    std::optional<QString> m_generateError;
};

} // namespace orlenta::controller
