#pragma once

#include <QtCore/QUrl>

#include "shell/editor/ScriptListSource.h"

class QUrl;

namespace orlenta::audio {
class PlaybackController;
}
namespace orlenta::controller {
class DirectionRecordings;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

/// The lines of a project's active tab, as the list shows them.
class ScriptLines final : public ScriptListSource {
public:
    explicit ScriptLines(controller::ProjectSession &session);

    [[nodiscard]] const model::LineIdList &lineIds() const override;
    [[nodiscard]] Outline outline(const model::LineId &id) const override;
    /// Asks for the line's waveforms and durations, too, where they are missing; its row is told when they arrive.
    [[nodiscard]] LineRowContent content(const model::LineId &id, qsizetype index) const override;
    /// The file that the playhead is in. A line that has come to another one shows nothing of its progress.
    void setHeardAudio(const QUrl &file) { m_heard = file; }
    [[nodiscard]] const QUrl &heardAudio() const { return m_heard; }
    QMetaObject::Connection watch(const model::LineId &id, LineRow *row) override;

private:
    void fillAudio(LineRowContent &content) const;
    void fillTakes(LineRowContent &content) const;
    void fillDirection(LineRowContent &content) const;
    void fillPlayback(LineRowContent &content) const;
    [[nodiscard]] QString durationText(const model::LineId &id, const QUrl &file, const QString &context) const;

    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    const controller::DirectionRecordings &m_recordings;
    QUrl m_heard;
};

} // namespace orlenta::shell
