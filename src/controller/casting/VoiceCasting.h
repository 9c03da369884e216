#pragma once

#include "controller/casting/ServiceVoice.h"
#include "model/Project.h"

namespace orlenta::controller {

class ProjectController;

/// The project's cast: service voices and the lines they speak. Main thread.
class VoiceCasting final {
public:
    explicit VoiceCasting(ProjectController &controller) : m_controller(controller) {}

    /// The line's voice, or null. Valid until the project's next change.
    [[nodiscard]] const model::ProjectVoice *projectVoiceFor(const model::LineId &id) const;

    /// Returns the palette's next colour as "#RRGGBB" and advances.
    QString nextCastColor();
    /// The project's existing voice with that service id, unchanged, or a new one with that colour. An empty colour
    /// takes the next cast colour. Not an undo step of its own.
    model::ProjectVoice ensureProjectVoice(const QString &elevenLabsVoiceId, const QString &displayName,
                                           const QString &castName, const QString &colorHex);
    /// Casts the voice on the given lines, ignoring unknown ones, as one "Change Voice" step.
    void assignVoice(const QList<model::LineId> &lines, const ServiceVoice &voice);

private:
    [[nodiscard]] const model::ProjectVoice *findByServiceId(const QString &elevenLabsVoiceId) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
