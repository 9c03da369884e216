#include "controller/script/TagEditing.h"

#include <gtest/gtest.h>

#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/script/Selection.h"
#include "controller/ScriptProject.h"
#include "tags/TagInsertion.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

const QString insertTagName = QStringLiteral("Insert Tag");

class TagEditingTest : public ::testing::Test {
protected:
    TagEditingTest() { selection.selectAlone(project.id(0)); }

    [[nodiscard]] QString text(qsizetype index = 0) const { return project.line(index).text; }
    [[nodiscard]] tags::TagItem item(tags::TagCategory category, const QString &label) const {
        for (const tags::TagItem &candidate : editing.tagItems(category))
            if (candidate.label == label)
                return candidate;
        ADD_FAILURE() << "no such item: " << label.toStdString();
        return {};
    }
    [[nodiscard]] tags::TagItem sighs() const { return item(tags::TagCategory::Vocal, QStringLiteral("sighs")); }

    ScriptProject project{{{QStringLiteral("Hello World again"), QStringLiteral("Second")}}};
    Selection &selection = project->selection();
    UndoManager &undo = project->undoManager();
    TagEditing &editing = project->tagEditing();
};

TEST_F(TagEditingTest, ATagGoesInAtTheCaretAsOneStepThatUndoTakesBackWithTheCaret) {
    selection.setTextSelectionRange(TextRange{6, 5});
    selection.setTextSelectionRange(TextRange{5, 0});
    editing.insertTag(sighs());
    EXPECT_EQ(text(), QStringLiteral("Hello [sighs] World again"));
    EXPECT_EQ(selection.textSelectionRange(), (TextRange{13, 0}));
    EXPECT_FALSE(selection.lastNonEmptySelection());
    EXPECT_TRUE(project->hasUnsavedChanges());
    EXPECT_EQ(undo.undoActionName(), insertTagName);
    undo.undo();
    EXPECT_EQ(text(), QStringLiteral("Hello World again"));
    EXPECT_EQ(selection.textSelectionRange(), (TextRange{5, 0}));
    EXPECT_EQ(selection.lastNonEmptySelection(), (TextRange{6, 5}));
    EXPECT_EQ(undo.redoActionName(), insertTagName);
    undo.redo();
    EXPECT_EQ(text(), QStringLiteral("Hello [sighs] World again"));
}

TEST_F(TagEditingTest, TheMostRecentSelectionDecides) {
    struct Case {
        std::optional<TextRange> live;
        std::optional<TextRange> stored;
        bool hasEarlierSelection;
        const char *result;
    };
    for (const Case &c : {Case{TextRange{0, 0}, TextRange{5, 0}, true, "[sighs] Hello World again"},
                          Case{TextRange{6, 5}, TextRange{5, 0}, true, "Hello [sighs] World again"},
                          Case{std::nullopt, TextRange{17, 0}, true, "Hello World again [sighs]"},
                          Case{std::nullopt, std::nullopt, true, "Hello World [sighs] again"},
                          Case{std::nullopt, std::nullopt, false, "Hello World again [sighs]"},
                          Case{TextRange{900, 0}, std::nullopt, false, "Hello World again [sighs]"}}) {
        const ScriptProject fresh({{QStringLiteral("Hello World again")}});
        if (c.hasEarlierSelection)
            fresh->selection().setTextSelectionRange(TextRange{12, 5});
        fresh->selection().setTextSelectionRange(c.stored);
        fresh->tagEditing().insertTag(sighs(), c.live);
        EXPECT_EQ(fresh.line(0).text.toStdString(), c.result);
    }
}

TEST_F(TagEditingTest, WithoutExactlyOneSelectedLineNothingHappens) {
    selection.selectAll();
    editing.insertTag(sighs());
    editing.insertTag(tags::stressTagItem(), TextRange{0, 5});
    project.clearSelection();
    editing.insertTag(sighs());
    EXPECT_EQ(project.texts(), QStringList({QStringLiteral("Hello World again"), QStringLiteral("Second")}));
    EXPECT_FALSE(undo.canUndo());
    EXPECT_FALSE(project->hasUnsavedChanges());
}

TEST_F(TagEditingTest, StressTogglesTheSelectedTextAndKeepsItSelected) {
    selection.setTextSelectionRange(TextRange{6, 5});
    editing.insertTag(tags::stressTagItem());
    EXPECT_EQ(text(), QStringLiteral("Hello WORLD again"));
    EXPECT_EQ(selection.textSelectionRange(), (TextRange{6, 5}));
    EXPECT_FALSE(selection.lastNonEmptySelection());
    EXPECT_EQ(undo.undoActionName(), insertTagName);
    editing.insertTag(tags::stressTagItem());
    EXPECT_EQ(text(), QStringLiteral("Hello world again"));
    undo.undo();
    undo.undo();
    EXPECT_EQ(text(), QStringLiteral("Hello World again"));
}

TEST_F(TagEditingTest, StressWithoutAFittingTextSelectionMakesNoStep) {
    selection.setTextSelectionRange(TextRange{6, 0});
    editing.insertTag(tags::stressTagItem());
    editing.insertTag(tags::stressTagItem(), TextRange{10, 100});
    EXPECT_EQ(text(), QStringLiteral("Hello World again"));
    EXPECT_FALSE(undo.canUndo());
    EXPECT_FALSE(project->hasUnsavedChanges());
}

TEST_F(TagEditingTest, EarlierTypingIsAStepOfItsOwn) {
    project->typing().beginEditing(project.id(0));
    selection.setEditingLineId(project.id(0));
    project->typing().type(project.id(0), QStringLiteral("Hello"));
    editing.insertTag(sighs(), TextRange{5, 0});
    EXPECT_EQ(text(), QStringLiteral("Hello [sighs]"));
    undo.undo();
    EXPECT_EQ(text(), QStringLiteral("Hello"));
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Typing"));
    undo.undo();
    EXPECT_EQ(text(), QStringLiteral("Hello World again"));
    EXPECT_EQ(selection.editingLineId(), project.id(0));
}

TEST_F(TagEditingTest, TheDocumentRemembersATagsCategory) {
    tags::RenderedTagCategories &shown = editing.renderedTagCategories();
    EXPECT_EQ(shown.categoryForTag(QStringLiteral("[Whispers]")), tags::TagCategory::Vocal);
    EXPECT_EQ(shown.categoryForTag(QStringLiteral("[flibbers]")), std::nullopt);
    shown.store(QStringLiteral("flibbers"), tags::TagCategory::Vocal);
    EXPECT_EQ(editing.renderedTagCategories().categoryForTag(QStringLiteral("[Flibbers]")), tags::TagCategory::Vocal);
    EXPECT_EQ(
        ScriptProject({{QString()}})->tagEditing().renderedTagCategories().categoryForTag(QStringLiteral("flibbers")),
        std::nullopt);
}

} // namespace
} // namespace orlenta::controller
