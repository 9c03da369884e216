#pragma once

#include <functional>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QSet>

#include "controller/document/Document.h"
#include "controller/takes/LineRuntimeMap.h"
#include "controller/takes/LineRuntimeSignal.h"

namespace orlenta::controller {

/// The runtime states of the lines and their per-line signals. Main thread.
class LineRuntime final : public QObject {
    Q_OBJECT
public:
    explicit LineRuntime(Document &document, QObject *parent = nullptr);

    [[nodiscard]] LineRuntimeState state(const model::LineId &id) const { return m_states.value(id); }
    [[nodiscard]] const LineRuntimeMap &states() const { return m_states; }
    /// The line has a generated audio file in use.
    [[nodiscard]] bool hasGeneratedAudio(const model::LineId &id) const;
    /// The line's signal, made when first asked for; it lives as long as this object.
    [[nodiscard]] LineRuntimeSignal *signalFor(const model::LineId &id);

    /// Changes one line's state, creating its entry if needed, and bumps its signal.
    void update(const model::LineId &id, const std::function<void(LineRuntimeState &)> &mutation, EditKey);
    /// Gives a copied line the state of its source, except that the copy isn't generating.
    void copyState(const model::LineId &from, const model::LineId &to, EditKey);
    void remove(const model::LineId &id, EditKey);
    /// Puts another map in place and bumps the signals of the lines that differ.
    void replaceAll(const LineRuntimeMap &states, EditKey);

Q_SIGNALS:
    /// The state of some line has changed. For what depends on several lines, as a toolbar does.
    void statesChanged();

private:
    void noteChanged(const model::LineId &id);
    void emitChanged();

    Document &m_document;
    LineRuntimeMap m_states;
    QSet<model::LineId> m_changed;
    QHash<model::LineId, LineRuntimeSignal *> m_signals;
};

} // namespace orlenta::controller
