#include "controller/document/TypingSession.h"

#include <algorithm>
#include <utility>

#include "controller/document/UndoManager.h"

namespace orlenta::controller {

TypingSession::TypingSession(Document &document, UndoManager &undoManager, QObject *parent)
    : QObject(parent), m_document(document), m_undoManager(undoManager) {}

void TypingSession::beginEditing(const model::LineId &id) {
    if (const model::ProjectLine *line = m_document.findLine(id))
        m_typingBaselines.insert(id, line->text);
}

void TypingSession::type(const model::LineId &id, const QString &text) {
    const model::ProjectLine *line = m_document.findLine(id);
    if (line == nullptr || line->text == text)
        return;
    m_document.updateLine(
        id, [&](model::ProjectLine &typed) { typed.text = text; }, EditKey());
}

void TypingSession::commit() {
    if (m_undoManager.isUndoing() || m_undoManager.isRedoing())
        return;
    std::vector<const model::ProjectLine *> typed;
    for (auto baseline = m_typingBaselines.cbegin(); baseline != m_typingBaselines.cend(); ++baseline) {
        const model::ProjectLine *line = m_document.findLine(baseline.key());
        if (line != nullptr && line->text != baseline.value())
            typed.push_back(line);
    }
    if (typed.empty())
        return;
    std::sort(typed.begin(), typed.end(), [](const auto *a, const auto *b) { return a->order < b->order; });
    for (const model::ProjectLine *line : typed)
        registerTextStep(line->lineId, std::exchange(m_typingBaselines[line->lineId], line->text), line->text);
    m_document.bumpTypingFlushVersion(EditKey());
}

void TypingSession::refreshBaselines(Flush flush) {
    for (auto baseline = m_typingBaselines.begin(); baseline != m_typingBaselines.end(); ++baseline)
        if (const model::ProjectLine *line = m_document.findLine(baseline.key()))
            baseline.value() = line->text;
    if (flush == Flush::Yes)
        m_document.bumpTypingFlushVersion(EditKey());
}

void TypingSession::registerTextStep(const model::LineId &id, const QString &text, const QString &opposite) {
    const bool alone = m_undoManager.groupingLevel() == 0;
    if (alone)
        m_undoManager.beginUndoGrouping();
    m_undoManager.registerUndo([this, id, text, opposite] { applyText(id, text, opposite); });
    m_undoManager.setActionName(QStringLiteral("Typing"));
    if (alone)
        m_undoManager.endUndoGrouping();
}

void TypingSession::applyText(const model::LineId &id, const QString &text, const QString &opposite) {
    const Document::Change change(m_document);
    m_document.updateLine(
        id, [&](model::ProjectLine &line) { line.text = text; }, EditKey());
    m_typingBaselines.insert(id, text);
    m_document.bumpTypingFlushVersion(EditKey());
    registerTextStep(id, opposite, text);
}

} // namespace orlenta::controller
