#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>

#include "controller/takes/LineRuntimeMap.h"
#include "controller/takes/LineRuntimeSignal.h"

namespace orlenta::controller {

class ProjectController;

/// The lines' runtime states, and a change signal for each line's row. Main thread.
class LineRuntime final : public QObject {
    Q_OBJECT
public:
    explicit LineRuntime(const ProjectController &controller);

    [[nodiscard]] LineRuntimeState state(const model::LineId &id) const;
    /// Whether a generated audio file is in use on the line.
    [[nodiscard]] bool hasGeneratedAudio(const model::LineId &id) const;
    /// The line's signal, created on demand. It lives as long as this object.
    [[nodiscard]] LineRuntimeSignal *signalFor(const model::LineId &id);

private:
    const ProjectController &m_controller;
    QHash<model::LineId, LineRuntimeSignal *> m_signals;
};

} // namespace orlenta::controller
