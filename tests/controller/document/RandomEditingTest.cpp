#include <random>

#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/generation/Pronunciations.h"
#include "controller/script/LineClipboard.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::controller {
namespace {

using test::expectSound;
using test::ScriptProject;

/// What undo must restore: the records without dates and selection, and the audio in use.
struct Records {
    model::Project project;
    QHash<model::LineId, QUrl> audio;

    friend bool operator==(const Records &, const Records &) = default;
};

/// What undoing a step must restore: a whole state, or for typing, one line's text in the live state.
struct ExpectedStep {
    Records state;
    std::optional<model::LineId> typedLine;
    QString text;
};

/// Runs random operations and keeps its own stacks of what each undo and redo must restore.
class RandomEditing final {
public:
    explicit RandomEditing(unsigned seed)
        : m_random(seed), m_project({{QStringLiteral("Hello there. Dear friend."), QStringLiteral("Two. Three."), {}},
                                     {QStringLiteral("Other tab.")}}),
          m_changed(&m_project->undoManager(), &UndoManager::stateChanged) {}

    void step() {
        m_project->typing().commit();
        switch (pick(10)) {
        case 0:
        case 1:
            undo();
            break;
        case 2:
            redo();
            break;
        case 3:
            type();
            break;
        default:
            edit();
        }
        expectSound(*m_project);
    }

    void undoEverything() {
        while (m_project->undoManager().canUndo())
            undo();
        EXPECT_TRUE(m_undo.empty());
    }

private:
    [[nodiscard]] qsizetype pick(qsizetype count) {
        return std::uniform_int_distribution<qsizetype>(0, count - 1)(m_random);
    }
    [[nodiscard]] model::LineId someLine() { return m_project.id(pick(m_project->scriptLineIds().size())); }
    [[nodiscard]] model::TabId someTab() {
        const auto &tabs = m_project->project().tabs;
        return tabs.at(pick(tabs.size())).id;
    }
    [[nodiscard]] QString word() { return QStringLiteral("w%1").arg(pick(1000)); }

    [[nodiscard]] Records records() const {
        Records now{m_project->project(), {}};
        now.project.modifiedAt = {};
        now.project.selection = {};
        now.project.lines.forEach([&](const model::ProjectLine &line) {
            now.audio.insert(line.lineId, m_project->runtime().state(line.lineId).generatedAudioURL);
        });
        return now;
    }

    /// Records whether `operation` made a step, and what undoing it must restore.
    template <typename Operation>
    void expectStep(ExpectedStep expected, Operation operation) {
        m_changed.clear();
        operation();
        if (m_changed.isEmpty())
            return;
        m_undo.push_back(std::move(expected));
        m_redo.clear();
    }

    void type() {
        const model::LineId id = someLine();
        const QString before = m_project->lines().find(id)->text;
        m_project->typing().beginEditing(id);
        for (qsizetype keys = pick(4); keys > 0; --keys)
            m_project->typing().type(id, m_project->lines().find(id)->text + u' ' + word() + u'.');
        expectStep({{}, id, before}, [&] { m_project->typing().commit(); });
    }

    /// No step includes notes.
    static void keepNotes(const Records &present, Records &expected) {
        present.project.lines.forEach([&expected](const model::ProjectLine &noted) {
            expected.project.lines.update(noted.lineId,
                                          [&noted](model::ProjectLine &line) { line.notes = noted.notes; });
        });
    }

    void undo() {
        travel(m_undo, m_redo, [this] { m_project->undoManager().undo(); });
    }
    void redo() {
        travel(m_redo, m_undo, [this] { m_project->undoManager().redo(); });
    }

    template <typename Move>
    void travel(std::vector<ExpectedStep> &from, std::vector<ExpectedStep> &onto, Move move) {
        const Records before = records();
        const QSet<model::LineId> generating = generatingLines();
        move();
        EXPECT_EQ(generatingLines(), generating);
        if (from.empty()) {
            EXPECT_EQ(records(), before);
            return;
        }
        ExpectedStep step = std::move(from.back());
        from.pop_back();
        if (!step.typedLine) {
            keepNotes(before, step.state);
            EXPECT_EQ(records(), step.state);
            onto.push_back({before, std::nullopt, {}});
            return;
        }
        onto.push_back({{}, step.typedLine, before.project.lines.find(*step.typedLine)->text});
        Records expected = before;
        expected.project.lines.update(*step.typedLine, [&step](model::ProjectLine &line) { line.text = step.text; });
        EXPECT_EQ(records(), expected);
    }

    [[nodiscard]] QSet<model::LineId> generatingLines() const {
        QSet<model::LineId> found;
        m_project->state().lineRuntime.forEach([&](const model::LineId &id, const LineRuntimeState &state) {
            if (state.isGenerating)
                found.insert(id);
        });
        return found;
    }

    void edit() {
        expectStep({records(), std::nullopt, {}}, [this] {
            switch (pick(4)) {
            case 0:
                editLines();
                break;
            case 1:
                editTabs();
                break;
            case 2:
                editTakes();
                break;
            default:
                editSettings();
            }
        });
    }

    void editLines() {
        LineEditing &lines = m_project->lines();
        moveSelection();
        const bool isCrowded = m_project->project().lines.size() > 60;
        switch (isCrowded ? 3 : pick(12)) {
        case 8:
            return lines.deleteLines(m_project->selection().selectedLinesInScript(), LineEditing::Removal::Delete);
        case 9:
            return lines.moveLine(someLine(), pick(10));
        case 10:
            return lines.copyLineToTab(someLine(), someTab());
        case 11:
            if (const auto copied = m_project->clipboard().copiedLines())
                m_project->clipboard().pasteLines(*copied);
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

    void moveSelection() {
        Selection &selection = m_project->selection();
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

    void editTabs() {
        TabEditing &tabs = m_project->tabs();
        const bool isCrowded = m_project->project().tabs.size() > 6;
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

    void editTakes() {
        TakeEditing &takes = m_project->takes();
        const model::LineId id = someLine();
        const model::ProjectLine line = *m_project->lines().find(id);
        switch (pick(5)) {
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

    void editSettings() {
        PresetEditing &presets = m_project->presets();
        const auto &known = m_project->project().presets;
        const model::PresetId preset = known.at(pick(known.size())).id;
        model::ProjectLineSettings settings = *m_project->lines().find(someLine())->settings;
        settings.style = static_cast<double>(pick(10)) / 10;
        switch (pick(7)) {
        case 0:
            return m_project->voices().assignVoice({someLine(), someLine()}, {word().left(2), word()});
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

    void editPronunciations() {
        Pronunciations &words = m_project->pronunciations();
        if (!words.entries().isEmpty() && pick(2) == 0)
            return words.deletePronunciationEntry(words.entries().at(pick(words.entries().size())).id);
        model::PronunciationEntry entry;
        entry.id = model::PronunciationId::create();
        entry.spelling = word();
        words.addPronunciationEntry(entry);
    }

    std::mt19937 m_random;
    ScriptProject m_project;
    QSignalSpy m_changed;
    std::vector<ExpectedStep> m_undo;
    std::vector<ExpectedStep> m_redo;
};

} // namespace

TEST(RandomEditing, UndoAndRedoRestoreEveryStateThatOperationsPassedThrough) {
    for (const unsigned seed : {1U, 20U, 300U, 4000U}) {
        SCOPED_TRACE(seed);
        RandomEditing editing(seed);
        for (int i = 0; i < 1500 && !::testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE(i);
            editing.step();
        }
        editing.undoEverything();
        if (::testing::Test::HasFailure())
            return;
    }
}

} // namespace orlenta::controller
