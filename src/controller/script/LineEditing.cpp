#include "controller/script/LineEditing.h"

#include <algorithm>
#include <utility>

#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/Edit.h"
#include "controller/ProjectController.h"
#include "controller/script/FreshLineCopy.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "tags/SentenceSplitter.h"

namespace orlenta::controller {

const model::ProjectLine *LineEditing::find(const model::LineId &id) const {
    return m_controller.state().findLine(id);
}

qsizetype LineEditing::indexInScript(const model::LineId &id) const {
    return m_controller.scriptLineIds().indexOf(id);
}

bool LineEditing::canSplitLine() const {
    return sentencesOfSelectedLine().size() >= 2;
}

bool LineEditing::canMoveUp() const {
    return canMove(Direction::Up);
}

bool LineEditing::canMoveDown() const {
    return canMove(Direction::Down);
}

void LineEditing::setNewLineVoiceProvider(NewLineVoiceProvider provider) {
    m_newLineVoice = std::move(provider);
}

void LineEditing::addLine() {
    if (m_controller.activeTab() != nullptr)
        addLineAt(m_controller.scriptLineIds().size(), referenceLine(), QStringLiteral("Add Line"));
}

void LineEditing::insertLineBelow() {
    const QList<model::LineId> selected = m_controller.selection().selectedLinesInScript();
    if (!selected.isEmpty())
        addLineAt(indexInScript(selected.last()) + 1, selected.last(), QStringLiteral("Insert Line"));
}

void LineEditing::addLineAt(qsizetype index, const std::optional<model::LineId> &reference, const QString &undoName) {
    const Edit edit(m_controller, undoName);
    model::ProjectLine line = newLine();
    if (const model::ProjectLine *lender = reference ? edit->findLine(*reference) : nullptr) {
        line.voiceId = lender->voiceId;
        line.settings = edit->project.effectiveSettings(*lender);
    } else if (const auto voice = m_newLineVoice ? m_newLineVoice() : std::nullopt) {
        line.voiceId =
            m_controller.voices().ensureProjectVoice(voice->elevenLabsVoiceId, voice->name, voice->name, {}).id;
    }
    ScriptStructure::insertLines(edit, edit->activeTab()->id, index, {line});
    m_controller.selection().place(edit, line.lineId, Selection::Editing::Yes);
}

void LineEditing::duplicateLine(const model::LineId &id) {
    const qsizetype index = indexInScript(id);
    if (index < 0)
        return;
    const Edit edit(m_controller, QStringLiteral("Duplicate Line"));
    model::ProjectLine copy = *edit->findLine(id);
    copy.lineId = model::LineId::create();
    ScriptStructure::insertLines(edit, edit->activeTab()->id, index + 1, {copy});
    edit.copyRuntime(id, copy.lineId);
    m_controller.selection().place(edit, copy.lineId, Selection::Editing::Yes);
}

void LineEditing::deleteLine(const model::LineId &id) {
    const qsizetype index = indexInScript(id);
    if (index < 0)
        return;
    const Edit edit(m_controller, QStringLiteral("Delete Line"));
    // By default the selection would move to the tab's first line; choose the neighbour instead.
    const QSet<model::LineId> &selected = edit->selection.selectedLineIds;
    const bool leavesNothing = selected.isEmpty() || m_controller.selection().singleSelectedLineId() == id;
    removeFromScript(edit, {id});
    if (leavesNothing) {
        const model::LineIdList &left = edit->scriptLineIds();
        m_controller.selection().place(edit, left.at(std::min(index, left.size() - 1)), Selection::Editing::No);
    }
}

void LineEditing::deleteLines(const QList<model::LineId> &ids, Removal removal) {
    QSet<model::LineId> removed;
    qsizetype first = m_controller.scriptLineIds().size();
    for (const model::LineId &id : ids)
        if (const qsizetype index = indexInScript(id); index >= 0) {
            removed.insert(id);
            first = std::min(first, index);
        }
    if (removed.isEmpty())
        return;
    const Edit edit(m_controller,
                    removal == Removal::Cut ? QStringLiteral("Cut Lines") : QStringLiteral("Delete Lines"));
    removeFromScript(edit, removed);
    const model::LineIdList &left = edit->scriptLineIds();
    m_controller.selection().place(edit, left.at(std::min(first, left.size() - 1)), Selection::Editing::No);
}

void LineEditing::removeFromScript(const Edit &edit, const QSet<model::LineId> &ids) {
    const model::TabId tab = edit->activeTab()->id;
    if (ids.size() == edit->scriptLineIds().size())
        ScriptStructure::insertLines(edit, tab, 0, {newLine()});
    ScriptStructure::removeLines(edit, tab, ids);
}

void LineEditing::splitLine() {
    const QStringList sentences = sentencesOfSelectedLine();
    if (sentences.size() < 2)
        return;
    const model::LineId id = *m_controller.selection().singleSelectedLineId();
    const Edit edit(m_controller, QStringLiteral("Split Line"));
    const model::ProjectLine source = *edit->findLine(id);
    const model::ProjectLineSettings settings = edit->project.effectiveSettings(source);
    std::vector<model::ProjectLine> lines;
    for (const QString &sentence : sentences) {
        model::ProjectLine line = model::ProjectLine::makeNew();
        line.text = sentence;
        line.voiceId = source.voiceId;
        line.presetId = source.presetId;
        line.settings = settings;
        line.notes = source.notes;
        lines.push_back(line);
    }
    const model::TabId tab = edit->activeTab()->id;
    ScriptStructure::insertLines(edit, tab, indexInScript(id), lines);
    ScriptStructure::removeLines(edit, tab, {id});
    m_controller.selection().place(edit, lines.front().lineId, Selection::Editing::No);
}

void LineEditing::moveLineUp() {
    move(Direction::Up);
}

void LineEditing::moveLineDown() {
    move(Direction::Down);
}

void LineEditing::moveLine(const model::LineId &id, qsizetype insertionIndex) {
    const model::ProjectTab *tab = m_controller.project().tabOf(id);
    if (tab == nullptr)
        return;
    const qsizetype index = tab->lineIds.indexOf(id);
    const qsizetype before = std::clamp<qsizetype>(insertionIndex, 0, tab->lineIds.size());
    if (before == index || before == index + 1)
        return;
    const Edit edit(m_controller, QStringLiteral("Move Line"));
    ScriptStructure::moveLine(edit, model::TabId(tab->id), index, before > index ? before - 1 : before);
}

void LineEditing::copyLineToTab(const model::LineId &id, const model::TabId &target,
                                std::optional<qsizetype> insertionIndex) {
    const model::ProjectTab *tab = m_controller.project().findTab(target);
    if (find(id) == nullptr || tab == nullptr)
        return;
    const qsizetype size = tab->lineIds.size();
    const Edit edit(m_controller, QStringLiteral("Copy Line"));
    const model::ProjectLine copy = freshLineCopy(*edit->findLine(id));
    ScriptStructure::insertLines(edit, target, std::clamp<qsizetype>(insertionIndex.value_or(size), 0, size), {copy});
    edit.copyRuntime(id, copy.lineId);
}

void LineEditing::setNotes(const model::LineId &id, const QString &notes) {
    const model::ProjectLine *line = find(id);
    if (line == nullptr || line->notes == notes)
        return;
    const Edit edit(m_controller);
    edit.updateLine(id, [&notes](model::ProjectLine &noted) { noted.notes = notes; });
}

std::optional<model::LineId> LineEditing::referenceLine() const {
    if (const auto selected = m_controller.selection().singleSelectedLineId(); selected && find(*selected) != nullptr)
        return selected;
    const model::LineIdList &ids = m_controller.scriptLineIds();
    return ids.isEmpty() ? std::nullopt : std::optional(ids.last());
}

model::ProjectLine LineEditing::newLine() const {
    model::ProjectLine line = model::ProjectLine::makeNew();
    line.presetId = m_controller.presets().defaultPreset().id;
    return line;
}

QStringList LineEditing::sentencesOfSelectedLine() const {
    const auto id = m_controller.selection().singleSelectedLineId();
    if (!id || indexInScript(*id) < 0)
        return {};
    const QString text = find(*id)->text.trimmed();
    return text.isEmpty() ? QStringList() : tags::splitSentences(text);
}

bool LineEditing::canMove(Direction direction) const {
    const QSet<model::LineId> &selected = m_controller.selection().selectedLineIds();
    const model::LineIdList &script = m_controller.scriptLineIds();
    const qsizetype last = script.size() - 1;
    qsizetype atEdge = 0;
    while (atEdge <= last && selected.contains(script.at(direction == Direction::Up ? atEdge : last - atEdge)))
        ++atEdge;
    // A line beyond the lines that are already at the edge has room.
    return selected.size() > atEdge;
}

void LineEditing::move(Direction direction) {
    if (!canMove(direction))
        return;
    const Edit edit(m_controller, QStringLiteral("Move Line"));
    const model::TabId tab = edit->activeTab()->id;
    const QSet<model::LineId> selected = edit->selection.selectedLineIds;
    const qsizetype size = edit->scriptLineIds().size();
    const qsizetype step = direction == Direction::Up ? 1 : -1;
    // The line that a block of selected lines meets goes to the block's other end.
    std::optional<qsizetype> passed;
    for (qsizetype i = step > 0 ? 0 : size - 1; i >= 0 && i < size; i += step) {
        const qsizetype next = i + step;
        const bool isSelected = selected.contains(edit->scriptLineIds().at(i));
        if (!isSelected)
            passed = i;
        const bool endsBlock = next < 0 || next >= size || !selected.contains(edit->scriptLineIds().at(next));
        if (isSelected && passed && endsBlock) {
            ScriptStructure::moveLine(edit, tab, *passed, i);
            passed.reset();
        }
    }
}

} // namespace orlenta::controller
