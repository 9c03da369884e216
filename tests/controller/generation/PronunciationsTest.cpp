#include "controller/generation/Pronunciations.h"

#include <gtest/gtest.h>

#include "controller/document/UndoManager.h"
#include "controller/ScriptProject.h"

namespace orlenta::controller {

TEST(Pronunciations, EveryChangeIsAStepAndRaisesTheRevisionAsItsUndoDoes) {
    const test::ScriptProject project({{QStringLiteral("a gif")}});
    Pronunciations &words = project->pronunciations();
    UndoManager &undo = project->undoManager();
    model::PronunciationEntry entry;
    entry.id = model::PronunciationId::create();
    entry.spelling = QStringLiteral("gif");
    entry.phoneticOverride = QStringLiteral("jif");
    words.addPronunciationEntry(entry);
    EXPECT_EQ(words.applyingLocalPronunciation(QStringLiteral("Gif and gif")), QStringLiteral("jif and jif"));
    entry.phoneticOverride = QStringLiteral("ghif");
    words.updatePronunciationEntry(entry);
    words.setPronunciationEntryEnabled(entry.id, Pronunciations::Enabled::No);
    words.setPronunciationEntryEnabled(entry.id, Pronunciations::Enabled::No);
    EXPECT_EQ(words.applyingLocalPronunciation(QStringLiteral("gif")), QStringLiteral("gif"));
    words.setPronunciationEntryEnabled(entry.id, Pronunciations::Enabled::Yes);
    words.deletePronunciationEntry(entry.id);
    words.deletePronunciationEntry(entry.id);
    EXPECT_EQ(words.pronunciationRevision(), 5);
    QStringList names;
    while (undo.canUndo()) {
        names.append(undo.undoActionName());
        undo.undo();
    }
    EXPECT_EQ(names, (QStringList{QStringLiteral("Delete Pronunciation"), QStringLiteral("Enable Pronunciation"),
                                  QStringLiteral("Disable Pronunciation"), QStringLiteral("Edit Pronunciation"),
                                  QStringLiteral("Add Pronunciation")}));
    EXPECT_EQ(words.pronunciationRevision(), 10);
    EXPECT_TRUE(words.entries().isEmpty());
}

} // namespace orlenta::controller
