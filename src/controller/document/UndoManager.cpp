#include "controller/document/UndoManager.h"

#include <utility>

namespace orlenta::controller {

bool UndoManager::canUndo() const {
    return !m_undo.empty();
}

bool UndoManager::canRedo() const {
    return !m_redo.empty();
}

bool UndoManager::isUndoing() const {
    return m_phase == Phase::Undoing;
}

bool UndoManager::isRedoing() const {
    return m_phase == Phase::Redoing;
}

QString UndoManager::undoActionName() const {
    return m_undo.empty() ? QString() : m_undo.back().name;
}

QString UndoManager::redoActionName() const {
    return m_redo.empty() ? QString() : m_redo.back().name;
}

int UndoManager::groupingLevel() const {
    return m_level;
}

void UndoManager::beginUndoGrouping() {
    if (m_level++ == 0)
        target().push_back({});
}

void UndoManager::endUndoGrouping() {
    Q_ASSERT(m_level > 0);
    if (--m_level > 0)
        return;
    if (target().back().handlers.empty())
        target().pop_back();
    if (m_phase == Phase::Idle)
        Q_EMIT stateChanged();
}

void UndoManager::registerUndo(Handler handler) {
    ++m_revision;
    if (m_phase == Phase::Idle)
        m_redo.clear();
    const bool alone = m_level == 0;
    if (alone)
        beginUndoGrouping();
    target().back().handlers.push_back(std::move(handler));
    if (alone)
        endUndoGrouping();
}

void UndoManager::setActionName(const QString &name) {
    if (target().empty())
        return;
    target().back().name = name;
    if (m_level == 0 && m_phase == Phase::Idle)
        Q_EMIT stateChanged();
}

void UndoManager::undo() {
    run(m_undo, Phase::Undoing);
}

void UndoManager::redo() {
    run(m_redo, Phase::Redoing);
}

// Handlers registered during an undo go to the redo stack; during a redo, to the undo stack.
std::vector<UndoManager::Group> &UndoManager::target() {
    return m_phase == Phase::Undoing ? m_redo : m_undo;
}

void UndoManager::run(std::vector<Group> &from, Phase phase) {
    if (from.empty() || m_level > 0 || m_phase != Phase::Idle)
        return;
    ++m_revision;
    const Group group = std::move(from.back());
    from.pop_back();
    m_phase = phase;
    beginUndoGrouping();
    target().back().name = group.name;
    for (auto handler = group.handlers.rbegin(); handler != group.handlers.rend(); ++handler)
        (*handler)();
    endUndoGrouping();
    m_phase = Phase::Idle;
    Q_EMIT stateChanged();
}

} // namespace orlenta::controller
