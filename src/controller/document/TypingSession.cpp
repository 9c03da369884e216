#include "controller/document/TypingSession.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "controller/document/Edit.h"
#include "controller/document/UndoManager.h"
#include "controller/ProjectController.h"

namespace orlenta::controller {
namespace {

// Usually only one line was typed in since the last commit.
void sortByPlace(std::vector<const model::ProjectLine *> &lines, const model::Project &project) {
    if (lines.size() < 2)
        return;
    const std::vector<const model::ProjectLine *> all = project.linesInOrder();
    const auto place = [&all](const model::ProjectLine *line) { return std::find(all.begin(), all.end(), line); };
    std::sort(lines.begin(), lines.end(), [&place](const auto *a, const auto *b) { return place(a) < place(b); });
}

} // namespace

void TypingSession::beginEditing(const model::LineId &id) {
    const Edit edit(m_controller);
    if (const model::ProjectLine *line = edit->findLine(id))
        edit->typingBaselines.insert(id, line->text);
}

void TypingSession::type(const model::LineId &id, const QString &text) {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr || line->text == text)
        return;
    const Edit edit(m_controller);
    edit.updateLine(id, [&text](model::ProjectLine &typed) { typed.text = text; });
}

void TypingSession::commit() {
    const UndoManager &manager = m_controller.undoManager();
    if (manager.isUndoing() || manager.isRedoing())
        return;
    const ProjectState &state = m_controller.state();
    std::vector<const model::ProjectLine *> typed;
    for (auto baseline = state.typingBaselines.cbegin(); baseline != state.typingBaselines.cend(); ++baseline) {
        const model::ProjectLine *line = state.findLine(baseline.key());
        if (line != nullptr && line->text != baseline.value())
            typed.push_back(line);
    }
    if (typed.empty())
        return;
    sortByPlace(typed, state.project);
    const Edit edit(m_controller);
    for (const model::ProjectLine *line : typed)
        registerTextStep(line->lineId, std::exchange(edit->typingBaselines[line->lineId], line->text), line->text);
    ++edit->typingFlushVersion;
}

void TypingSession::refreshBaselines() {
    const Edit edit(m_controller);
    for (auto baseline = edit->typingBaselines.begin(); baseline != edit->typingBaselines.end(); ++baseline)
        if (const model::ProjectLine *line = edit->findLine(baseline.key()))
            baseline.value() = line->text;
}

void TypingSession::registerTextStep(const model::LineId &id, const QString &text, const QString &opposite) {
    UndoManager &manager = m_controller.undoManager();
    const bool isAlone = manager.groupingLevel() == 0;
    if (isAlone)
        manager.beginUndoGrouping();
    manager.registerUndo([this, id, text, opposite] { applyText(id, text, opposite); });
    manager.setActionName(QStringLiteral("Typing"));
    if (isAlone)
        manager.endUndoGrouping();
}

void TypingSession::applyText(const model::LineId &id, const QString &text, const QString &opposite) {
    const Edit edit(m_controller);
    edit.updateLine(id, [&text](model::ProjectLine &line) { line.text = text; });
    edit->typingBaselines.insert(id, text);
    ++edit->typingFlushVersion;
    registerTextStep(id, opposite, text);
}

} // namespace orlenta::controller
