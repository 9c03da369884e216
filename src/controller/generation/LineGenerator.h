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

/// Generates takes, one line at a time through its queue: checks that the line can be spoken and its take stored, gets
/// the speech, and installs it. Main thread; project and service outlive it.
class LineGenerator final : public QObject {
    Q_OBJECT
public:
    /// What the user can do about a failure.
    enum class Remedy {
        None,
        /// Connect to a service: none is connected, or it can't be reached.
        Connect
    };

    LineGenerator(ProjectController &controller, speech::ElevenLabsService &service, QObject *parent = nullptr);
    ~LineGenerator() override;

    /// For progress and stop.
    [[nodiscard]] speech::LineGenerationQueue &queue() { return m_queue; }
    [[nodiscard]] const speech::LineGenerationQueue &queue() const { return m_queue; }
    /// Generated audio that couldn't be stored in the project.
    [[nodiscard]] UnstoredTakes &unstoredTakes() { return m_unstored; }
    [[nodiscard]] QString generateErrorTitle() const { return m_generateErrorTitle; }
    /// Why the last generation failed; none if there is nothing to show.
    [[nodiscard]] std::optional<QString> generateError() const { return m_generateError; }

    [[nodiscard]] Remedy generateErrorRemedy() const { return m_generateErrorRemedy; }

    void dismissError();
    /// Lines with normal priority form a batch; requesting a batch again while it runs repeats no line. Without a key
    /// nothing is queued, and the error says what to do.
    void enqueue(const QList<model::LineId> &lines, speech::LineGenerationQueue::Priority priority);
    /// The menu command. A single selected line is prioritized; several follow planForSelection().
    void generateSelectedLines();
    /// Generates one line, bypassing the queue. Failures are reported through generateError().
    QCoro::Task<void> generate(model::LineId id);

Q_SIGNALS:
    void generateErrorChanged();

private:
    enum class Origin { Line, Batch };
    /// How a line was requested.
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
    void setError(const QString &title, const QString &message, Remedy remedy = Remedy::None);

    ProjectController &m_controller;
    speech::ElevenLabsService &m_service;
    LineSpeaker m_speaker;
    UnstoredTakes m_unstored;
    speech::LineGenerationQueue m_queue;
    /// Lines requested by batches since the queue became active, and those of them whose new take has arrived.
    QSet<model::LineId> m_batchLines;
    QSet<model::LineId> m_batchTakes;
    SkippedLines m_skipped;
    QString m_generateErrorTitle = QStringLiteral("Generation Failed");
    std::optional<QString> m_generateError;
    Remedy m_generateErrorRemedy = Remedy::None;
};

} // namespace orlenta::controller
