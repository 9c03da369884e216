#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/RandomOperations.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"

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
        : m_project({{QStringLiteral("Hello there. Dear friend."), QStringLiteral("Two. Three."), {}},
                     {QStringLiteral("Other tab.")}}),
          m_operations(*m_project, seed), m_changed(&m_project->undoManager(), &UndoManager::stateChanged) {}

    void step() {
        m_project->typing().commit();
        switch (m_operations.pick(10)) {
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
        const model::LineId id = m_operations.someLine();
        const QString before = m_project->lines().find(id)->text;
        m_operations.type(id);
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
        expectStep({records(), std::nullopt, {}}, [this] { m_operations.edit(); });
    }

    ScriptProject m_project;
    test::RandomOperations m_operations;
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
