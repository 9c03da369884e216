#pragma once

#include <optional>

#include <QtCore/QUrl>

#include "controller/takes/AudioKind.h"
#include "model/ProjectLine.h"

#include "shell/editor/list/ScriptListSource.h"

namespace orlenta::audio {
class PlaybackController;
}
namespace orlenta::controller {
class DirectionRecordings;
class LineGenerator;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class RowDensities;
class TakeTimeScale;

/// The lines of a project's active tab, as the list shows them.
class ScriptLines final : public ScriptListSource {
public:
    /// All outlive these lines. The lengths of shown takes go into the time scale.
    ScriptLines(controller::ProjectSession &session, const RowDensities &densities, TakeTimeScale &timeScale);

    [[nodiscard]] const model::LineIdList &lineIds() const override;
    [[nodiscard]] RowDensity density() const override;
    [[nodiscard]] LineOutline outline(const model::LineId &id) const override;
    /// Also requests missing waveforms and durations; the row is notified when they arrive.
    [[nodiscard]] LineRowContent content(const model::LineId &id, qsizetype index) const override;
    /// The file that the playhead is in. A line whose active file is another one shows no progress.
    void setPlayheadAudio(const QUrl &file) { m_playheadAudio = file; }
    [[nodiscard]] const QUrl &playheadAudio() const { return m_playheadAudio; }
    QMetaObject::Connection watch(const model::LineId &id, QObject *row, const std::function<void()> &changed) override;

private:
    [[nodiscard]] LineHeaderContent header(const model::ProjectLine &line) const;
    [[nodiscard]] TakesContent takes(const model::ProjectLine &line) const;
    void addStatus(LineRowContent &content, const model::ProjectLine &line) const;
    void addSelection(LineRowContent &content, qsizetype index) const;
    [[nodiscard]] std::optional<DirectionContent> direction(const model::ProjectLine &line) const;
    [[nodiscard]] AudioContent audio(const model::LineId &id, controller::AudioKind kind, const QUrl &file,
                                     const QList<float> &peaks) const;

    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    const controller::DirectionRecordings &m_recordings;
    const controller::LineGenerator &m_generator;
    const RowDensities &m_densities;
    TakeTimeScale &m_timeScale;
    QUrl m_playheadAudio;
};

} // namespace orlenta::shell
