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

/// A visible, active editor for a real project in its own folder.
class ScriptEditorFixture : public ::testing::Test {
protected:
    /// Has no sound server unless an address is given.
    explicit ScriptEditorFixture(const QString &soundServer = {})
        : shell(QStringLiteral(ORLENTA_LOCAL_VOICES), soundServer) {}

    static model::Project projectWith(const QStringList &texts, const QStringList &cast = {QStringLiteral("Narrator")});

    void open(model::Project project, const QSize &size = {760, 600});
    [[nodiscard]] model::LineId idAt(qsizetype index) const { return controller->scriptLineIds().at(index); }
    [[nodiscard]] LineRow *rowAt(qsizetype index) const { return editor->list().rowFor(idAt(index)); }
    [[nodiscard]] QString textAt(qsizetype index) const { return controller->lines().find(idAt(index))->text; }
    /// Runs the event loop until the line's text has the caret.
    [[nodiscard]] bool hasCaret(qsizetype index) const;
    /// Adds a take to the line: a tone of one second.
    void addTake(qsizetype index);
    void focusList();
    [[nodiscard]] QList<qsizetype> selectedIndexes() const;

    testing::ShellSession shell;
    std::unique_ptr<controller::ProjectSession> session;
    /// Owned by the session.
    controller::ProjectController *controller = nullptr;
    audio::PlaybackController *playback = nullptr;
    std::unique_ptr<ScriptEditor> editor;
};

} // namespace orlenta::shell
