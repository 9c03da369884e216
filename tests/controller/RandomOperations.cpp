#include "controller/RandomOperations.h"

#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/TypingSession.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineClipboard.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::test {

using controller::GenerationState;
using controller::LineEditing;
using controller::PresetEditing;
using controller::Pronunciations;
using controller::Selection;
using controller::TabEditing;
using controller::TakeEditing;

qsizetype RandomOperations::pick(qsizetype count) {
    return std::uniform_int_distribution<qsizetype>(0, count - 1)(m_random);
}

model::LineId RandomOperations::someLine() {
    // A tab of a damaged file may be empty.
    const model::LineIdList &script = m_project.scriptLineIds();
    return script.isEmpty() ? m_project.project().linesInOrder().front()->lineId : script.at(pick(script.size()));
}

model::TabId RandomOperations::someTab() {
    const auto &tabs = m_project.project().tabs;
    return tabs.at(pick(tabs.size())).id;
}

QString RandomOperations::word() {
    return QStringLiteral("w%1").arg(pick(1000));
}

void RandomOperations::edit() {
    switch (pick(4)) {
    case 0:
        return editLines();
    case 1:
        return editTabs();
    case 2:
        return editTakes();
    default:
        return editSettings();
    }
}

void RandomOperations::type(const model::LineId &id) {
    // As a text field does before it edits a line: a new baseline would forget what was typed since the last one.
    m_project.typing().commit();
    m_project.typing().beginEditing(id);
    for (qsizetype keys = pick(4); keys > 0; --keys)
        m_project.typing().type(id, m_project.lines().find(id)->text + u' ' + word() + u'.');
}

void RandomOperations::editLines() {
    LineEditing &lines = m_project.lines();
    moveSelection();
    const bool isCrowded = m_project.project().lines.size() > 60;
    switch (isCrowded ? 3 : pick(12)) {
    case 8:
        return lines.deleteLines(m_project.selection().selectedLinesInScript(), LineEditing::Removal::Delete);
    case 9:
        return lines.moveLine(someLine(), pick(10));
    case 10:
        return lines.copyLineToTab(someLine(), someTab());
    case 11:
        if (const auto copied = m_project.clipboard().copiedLines())
            m_project.clipboard().pasteLines(*copied);
        return;
    case 0:
        return lines.addLine();
    case 1:
        return lines.duplicateLine(someLine());
    case 2:
        return lines.splitLine();
    case 3:
    case 4:
        return lines.deleteLine(someLine());
    case 5:
        return lines.moveLineUp();
    case 6:
        return lines.moveLineDown();
    default:
        return lines.setNotes(someLine(), word());
    }
}

void RandomOperations::moveSelection() {
    if (m_project.scriptLineIds().isEmpty())
        return;
    Selection &selection = m_project.selection();
    switch (pick(8)) {
    case 0:
        return selection.toggle(someLine());
    case 1:
        return selection.selectAll();
    case 2:
        return selection.extendDown();
    case 3:
        return selection.selectNext();
    case 4:
        return selection.setEditingLineId(someLine());
    default:
        return selection.selectAlone(someLine());
    }
}

void RandomOperations::editTabs() {
    TabEditing &tabs = m_project.tabs();
    const bool isCrowded = m_project.project().tabs.size() > 6;
    switch (isCrowded ? 0 : pick(8)) {
    case 0:
        return tabs.closeTab(someTab());
    case 1:
        return tabs.addTab();
    case 2:
        return tabs.duplicateTab(someTab());
    case 3:
        return tabs.moveTab(someTab(), pick(8) - 1);
    case 4:
        return tabs.renameTab(someTab(), word());
    case 5:
        return tabs.selectNextTab();
    case 6:
        return tabs.setActiveTab(someTab());
    default:
        return tabs.selectPreviousTab();
    }
}

void RandomOperations::editTakes() {
    TakeEditing &takes = m_project.takes();
    const model::LineId id = someLine();
    const model::ProjectLine line = *m_project.lines().find(id);
    switch (pick(6)) {
    case 5:
        return takes.deleteDirectionAudio(id);
    case 0:
        return takes.setGenerating(pick(2) == 0 ? GenerationState::Idle : GenerationState::Generating, id);
    case 1:
        return takes.deleteGeneratedAudio(id);
    case 2:
        if (!line.takes.isEmpty())
            takes.switchTake(id, line.takes.at(pick(line.takes.size())).id);
        return;
    default:
        // Without a project folder this finishes at once.
        takes.installGeneratedAudio(u'/' + word() + QStringLiteral(".wav"), id, takes.generationContext(line));
    }
}

void RandomOperations::editSettings() {
    PresetEditing &presets = m_project.presets();
    const auto &known = m_project.project().presets;
    const model::PresetId preset = known.at(pick(known.size())).id;
    model::ProjectLineSettings settings = m_project.project().effectiveSettings(*m_project.lines().find(someLine()));
    settings.style = static_cast<double>(pick(10)) / 10;
    switch (pick(7)) {
    case 0:
        return m_project.voices().assignVoice({someLine(), someLine()}, {word().left(2), word()});
    case 1:
        return presets.updateSettings({someLine(), someLine()}, settings);
    case 2:
        (void)presets.applyPreset(preset, {someLine()}, std::nullopt);
        return;
    case 3:
        return presets.savePresetAs(word(), someLine());
    case 4:
        return presets.savePreset(someLine());
    case 5:
        return presets.deletePreset(preset);
    default:
        return editPronunciations();
    }
}

void RandomOperations::editPronunciations() {
    Pronunciations &words = m_project.pronunciations();
    if (!words.entries().isEmpty() && pick(2) == 0)
        return words.deletePronunciationEntry(words.entries().at(pick(words.entries().size())).id);
    model::PronunciationEntry entry;
    entry.id = model::PronunciationId::create();
    entry.spelling = word();
    words.addPronunciationEntry(entry);
}

} // namespace orlenta::test
