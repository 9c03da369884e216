#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>

#include "controller/takes/LineRuntimeMap.h"
#include "controller/takes/LineRuntimeSignal.h"

namespace orlenta::controller {

class ProjectController;

/// What the lines have at run time, and the signal by which each line's row hears of it. Main thread.
class LineRuntime final : public QObject {
    Q_OBJECT
public:
    explicit LineRuntime(const ProjectController &controller);

    [[nodiscard]] LineRuntimeState state(const model::LineId &id) const;
    /// The line has a generated audio file in use.
    [[nodiscard]] bool hasGeneratedAudio(const model::LineId &id) const;
    /// The line's signal, made when first asked for; it lives as long as this object.
    [[nodiscard]] LineRuntimeSignal *signalFor(const model::LineId &id);

private:
    const ProjectController &m_controller;
    QHash<model::LineId, LineRuntimeSignal *> m_signals;
};

} // namespace orlenta::controller
