#pragma once

#include "controller/casting/ServiceVoice.h"
#include "model/Project.h"

namespace orlenta::controller {

class ProjectController;

/// Which service voices the project casts, and on which lines. Main thread.
class VoiceCasting final {
public:
    explicit VoiceCasting(ProjectController &controller) : m_controller(controller) {}

    /// The voice cast on the line, or null. The pointer holds until the next change of the project.
    [[nodiscard]] const model::ProjectVoice *projectVoiceFor(const model::LineId &id) const;

    /// The palette's next colour as "#RRGGBB"; the one after it is next from now on.
    QString nextCastColor();
    /// The project's voice of that service id, unchanged, or a new one of that colour; an empty colour takes the next
    /// cast colour. No undo step of its own.
    model::ProjectVoice ensureProjectVoice(const QString &elevenLabsVoiceId, const QString &displayName,
                                           const QString &castName, const QString &colorHex);
    /// Casts the voice on the lines that exist; one "Change Voice" step.
    void assignVoice(const QList<model::LineId> &lines, const ServiceVoice &voice);

private:
    [[nodiscard]] const model::ProjectVoice *findByServiceId(const QString &elevenLabsVoiceId) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
