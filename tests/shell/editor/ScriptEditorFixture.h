#pragma once

#include <memory>

#include <gtest/gtest.h>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "model/Project.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"

namespace orlenta::shell {

/// An editor on a real project in a folder of the test's own, shown and active.
class ScriptEditorFixture : public ::testing::Test {
protected:
    /// Makes no sound unless the address of a sound server is given.
    explicit ScriptEditorFixture(const QString &soundServer = {})
        : shell(QStringLiteral(ORLENTA_LOCAL_VOICES), soundServer) {}

    static model::Project projectWith(const QStringList &texts, const QStringList &cast = {QStringLiteral("Narrator")});

    void open(model::Project project, const QSize &size = {760, 600});
    [[nodiscard]] model::LineId idAt(qsizetype index) const { return controller->scriptLineIds().at(index); }
    [[nodiscard]] LineRow *rowAt(qsizetype index) const { return editor->list().rowFor(idAt(index)); }
    [[nodiscard]] QString textAt(qsizetype index) const { return controller->lines().find(idAt(index))->text; }
    /// Lets events run until the line's text has the caret.
    [[nodiscard]] bool hasCaret(qsizetype index) const;
    /// Gives the line a take: a second of a tone.
    void addTake(qsizetype index);
    void focusList();
    [[nodiscard]] QList<qsizetype> selectedIndexes() const;

    testing::ShellSession shell;
    std::unique_ptr<controller::ProjectSession> session;
    /// The session's own.
    controller::ProjectController *controller = nullptr;
    audio::PlaybackController *playback = nullptr;
    std::unique_ptr<ScriptEditor> editor;
};

} // namespace orlenta::shell
