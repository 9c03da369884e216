#include "controller/script/LineEditing.h"

#include <algorithm>
#include <utility>

#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/UndoHistory.h"
#include "controller/script/FreshLineCopy.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "tags/SentenceSplitter.h"

namespace orlenta::controller {

const model::ProjectLine *LineEditing::find(const model::LineId &id) const {
    return m_parts.document.findLine(id);
}

qsizetype LineEditing::indexInScript(const model::LineId &id) const {
    return m_parts.document.scriptIndexOf(id);
}

bool LineEditing::canSplitLine() const {
    return sentencesOfSelectedLine().size() >= 2;
}

bool LineEditing::canMoveUp() const {
    return movableIndex(Direction::Up) >= 0;
}

bool LineEditing::canMoveDown() const {
    return movableIndex(Direction::Down) >= 0;
}

void LineEditing::setNewLineVoiceProvider(NewLineVoiceProvider provider) {
    m_newLineVoice = std::move(provider);
}

void LineEditing::addLine() {
    Document &document = m_parts.document;
    if (document.activeTab() == nullptr)
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    model::ProjectLine line = newLine();
    if (const model::ProjectLine *reference = referenceLine()) {
        line.voiceId = reference->voiceId;
        line.settings = document.project().effectiveSettings(*reference);
    } else if (const auto voice = m_newLineVoice ? m_newLineVoice() : std::nullopt) {
        line.voiceId = m_parts.voices.castInNextColor(voice->elevenLabsVoiceId, voice->name, voice->name).id;
    }
    m_parts.structure.addLines({line}, EditKey());
    document.restructure(EditKey()).lines.renumberByOrder();
    const model::ProjectTab &tab = *document.activeTab();
    m_parts.structure.setLineIds(tab.id, tab.lineIds + QList{line.lineId}, EditKey());
    m_parts.selection.place(line.lineId, Selection::Editing::Yes, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Add Line"));
}

void LineEditing::duplicateLine(const model::LineId &id) {
    const qsizetype index = indexInScript(id);
    if (index < 0)
        return;
    Document &document = m_parts.document;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    model::ProjectLine copy = *find(id);
    copy.lineId = model::LineId::create();
    QList<model::LineId> ids = document.scriptLineIds();
    ids.insert(index + 1, copy.lineId);
    m_parts.structure.replaceActiveTabLines(ids, {copy}, EditKey());
    m_parts.runtime.copyState(id, copy.lineId, EditKey());
    m_parts.selection.place(copy.lineId, Selection::Editing::Yes, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Duplicate Line"));
}

void LineEditing::deleteLine(const model::LineId &id) {
    const qsizetype index = indexInScript(id);
    if (index < 0)
        return;
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    if (m_parts.document.scriptLineIds().size() > 1)
        removeFromScript(id, index);
    else
        replaceOnlyLine();
    m_parts.history.registerUndo(before, QStringLiteral("Delete Line"));
}

void LineEditing::removeFromScript(const model::LineId &id, qsizetype index) {
    QSet<model::LineId> selected = m_parts.selection.selectedLineIds();
    if (selected.remove(id))
        m_parts.selection.setSelectedLineIds(selected);
    QList<model::LineId> ids = m_parts.document.scriptLineIds();
    ids.removeAt(index);
    // Renumbering selects the tab's first line where nothing is selected; here the neighbour is wanted.
    const bool nothingLeft = selected.isEmpty();
    m_parts.structure.replaceActiveTabLines(ids, {}, EditKey());
    if (nothingLeft)
        m_parts.selection.place(ids.at(std::min(index, ids.size() - 1)), Selection::Editing::No, EditKey());
}

void LineEditing::replaceOnlyLine() {
    const model::ProjectLine line = newLine();
    m_parts.structure.replaceActiveTabLines({line.lineId}, {line}, EditKey());
    m_parts.selection.place(line.lineId, Selection::Editing::No, EditKey());
}

void LineEditing::deleteLines(const QList<model::LineId> &ids, Removal removal) {
    const QSet<model::LineId> removed(ids.begin(), ids.end());
    const QList<model::LineId> before = m_parts.document.scriptLineIds();
    QList<model::LineId> kept;
    qsizetype firstRemoved = -1;
    for (const model::LineId &id : before) {
        if (!removed.contains(id))
            kept.append(id);
        else if (firstRemoved < 0)
            firstRemoved = kept.size();
    }
    if (firstRemoved < 0)
        return;
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot snapshot = m_parts.history.takeSnapshot();
    std::vector<model::ProjectLine> replacement;
    if (kept.isEmpty()) {
        replacement.push_back(newLine());
        kept.append(replacement.front().lineId);
    }
    m_parts.structure.replaceActiveTabLines(kept, replacement, EditKey());
    m_parts.selection.place(kept.at(std::min(firstRemoved, kept.size() - 1)), Selection::Editing::No, EditKey());
    m_parts.history.registerUndo(snapshot, removal == Removal::Cut ? QStringLiteral("Cut Lines")
                                                                   : QStringLiteral("Delete Lines"));
}

void LineEditing::splitLine() {
    const QStringList sentences = sentencesOfSelectedLine();
    if (sentences.size() < 2)
        return;
    Document &document = m_parts.document;
    const model::LineId id = *m_parts.selection.singleSelectedLineId();
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    const model::ProjectLine source = *find(id);
    const model::ProjectLineSettings settings = document.project().effectiveSettings(source);
    std::vector<model::ProjectLine> lines;
    QList<model::LineId> ids = document.scriptLineIds();
    qsizetype position = ids.indexOf(id);
    ids.removeAt(position);
    for (const QString &sentence : sentences) {
        model::ProjectLine line = model::ProjectLine::makeNew(source.order);
        line.text = sentence;
        line.voiceId = source.voiceId;
        line.presetId = source.presetId;
        line.settings = settings;
        line.notes = source.notes;
        ids.insert(position++, line.lineId);
        lines.push_back(line);
    }
    m_parts.structure.replaceActiveTabLines(ids, lines, EditKey());
    m_parts.selection.place(lines.front().lineId, Selection::Editing::No, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Split Line"));
}

void LineEditing::moveLineUp() {
    move(Direction::Up);
}

void LineEditing::moveLineDown() {
    move(Direction::Down);
}

void LineEditing::moveLine(const model::LineId &id, qsizetype insertionIndex) {
    const model::ProjectTab *tab = tabOf(id);
    if (tab == nullptr)
        return;
    QList<model::LineId> ids = tab->lineIds;
    const model::TabId tabId = tab->id;
    const qsizetype index = ids.indexOf(id);
    const qsizetype before = std::clamp<qsizetype>(insertionIndex, 0, ids.size());
    if (before == index || before == index + 1)
        return;
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot snapshot = m_parts.history.takeSnapshot();
    ids.move(index, before > index ? before - 1 : before);
    m_parts.structure.setLineIds(tabId, ids, EditKey());
    m_parts.structure.renumberFromTabs(EditKey());
    m_parts.history.registerUndo(snapshot, QStringLiteral("Move Line"));
}

void LineEditing::copyLineToTab(const model::LineId &id, const model::TabId &target,
                                std::optional<qsizetype> insertionIndex) {
    const qsizetype tabIndex = m_parts.document.tabIndex(target);
    if (find(id) == nullptr || tabIndex < 0)
        return;
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot snapshot = m_parts.history.takeSnapshot();
    const model::ProjectLine copy = freshLineCopy(*find(id));
    QList<model::LineId> ids = m_parts.document.project().tabs.at(tabIndex).lineIds;
    ids.insert(std::clamp<qsizetype>(insertionIndex.value_or(ids.size()), 0, ids.size()), copy.lineId);
    m_parts.structure.addLines({copy}, EditKey());
    m_parts.structure.setLineIds(target, ids, EditKey());
    m_parts.structure.renumberFromTabs(EditKey());
    m_parts.runtime.copyState(id, copy.lineId, EditKey());
    m_parts.history.registerUndo(snapshot, QStringLiteral("Copy Line"));
}

void LineEditing::setNotes(const model::LineId &id, const QString &notes) {
    const model::ProjectLine *line = find(id);
    if (line == nullptr || line->notes == notes)
        return;
    m_parts.document.updateLine(
        id, [&](model::ProjectLine &noted) { noted.notes = notes; }, EditKey());
}

const model::ProjectLine *LineEditing::referenceLine() const {
    if (const auto selected = m_parts.selection.singleSelectedLineId())
        if (const model::ProjectLine *line = find(*selected))
            return line;
    const QList<model::LineId> &ids = m_parts.document.scriptLineIds();
    return ids.isEmpty() ? nullptr : find(ids.last());
}

model::ProjectLine LineEditing::newLine() const {
    model::ProjectLine line = model::ProjectLine::makeNew(m_parts.document.project().lines.size());
    line.presetId = m_parts.presets.defaultPreset().id;
    return line;
}

QStringList LineEditing::sentencesOfSelectedLine() const {
    const auto id = m_parts.selection.singleSelectedLineId();
    if (!id || indexInScript(*id) < 0)
        return {};
    const QString text = find(*id)->text.trimmed();
    return text.isEmpty() ? QStringList() : tags::splitSentences(text);
}

qsizetype LineEditing::movableIndex(Direction direction) const {
    const QList<model::LineId> selected = m_parts.selection.selectedLinesInScript();
    if (selected.isEmpty())
        return -1;
    const qsizetype last = m_parts.document.scriptLineIds().size() - 1;
    const qsizetype index = indexInScript(direction == Direction::Up ? selected.first() : selected.last());
    const bool movable = direction == Direction::Up ? index >= 1 : index < last;
    return movable ? index : -1;
}

const model::ProjectTab *LineEditing::tabOf(const model::LineId &id) const {
    const QList<model::ProjectTab> &tabs = m_parts.document.project().tabs;
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [&](const model::ProjectTab &tab) { return tab.lineIds.contains(id); });
    return found == tabs.end() ? nullptr : &*found;
}

void LineEditing::move(Direction direction) {
    const qsizetype index = movableIndex(direction);
    if (index < 0)
        return;
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    QList<model::LineId> ids = m_parts.document.scriptLineIds();
    ids.swapItemsAt(index, direction == Direction::Up ? index - 1 : index + 1);
    m_parts.structure.replaceActiveTabLines(ids, {}, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Move Line"));
}

} // namespace orlenta::controller
