#include "controller/takes/MediaFiles.h"

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "support/TestTone.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

model::Take takeNamed(const QString &name) {
    model::Take take;
    take.filename = name;
    return take;
}

} // namespace

TEST(MediaFiles, ANameNeverLeadsOutOfTheFolder) {
    const ScriptProject project({{QStringLiteral("a")}}, ScriptProject::Folder::OnDisk);
    const MediaFiles &media = project->media();
    const QString generated = project.folder() + QStringLiteral("/Audio Files/Generated");
    EXPECT_EQ(media.takeURL(takeNamed(QStringLiteral("a b.wav"))).toLocalFile(),
              generated + QStringLiteral("/a b.wav"));
    for (const char *name : {"", ".", "..", "../a.wav", "../../secret.wav", "/etc/passwd", "sub/a.wav", "a/.."})
        EXPECT_TRUE(media.takeURL(takeNamed(QString::fromLatin1(name))).isEmpty()) << name;
    testing::writeTone(project.folder() + QStringLiteral("/inside.wav"), 0.01);
    QFile::link(QStringLiteral("/etc/hostname"), generated + QStringLiteral("/out.wav"));
    QFile::link(project.folder() + QStringLiteral("/inside.wav"), generated + QStringLiteral("/in.wav"));
    EXPECT_TRUE(media.takeURL(takeNamed(QStringLiteral("out.wav"))).isEmpty());
    EXPECT_FALSE(media.takeURL(takeNamed(QStringLiteral("in.wav"))).isEmpty());
}

TEST(MediaFiles, AFolderThatIsALinkOutOfTheProjectResolvesNothingAndTakesNoFiles) {
    const ScriptProject project({{QStringLiteral("a")}}, ScriptProject::Folder::OnDisk);
    const QString generated = project.folder() + QStringLiteral("/Audio Files/Generated");
    QDir(generated).removeRecursively();
    const QTemporaryDir elsewhere;
    QFile::link(elsewhere.path(), generated);
    testing::writeTone(elsewhere.filePath(QStringLiteral("a.wav")), 0.01);
    EXPECT_TRUE(project->media().takeURL(takeNamed(QStringLiteral("a.wav"))).isEmpty());
    const auto folder = project->media().audioFolder(AudioKind::Generated);
    ASSERT_FALSE(folder);
    EXPECT_TRUE(std::holds_alternative<ProjectControllerError::MediaFolderLinked>(folder.error().kind()));
    QFile::remove(generated);
    ASSERT_TRUE(project->media().audioFolder(AudioKind::Generated));
    EXPECT_TRUE(QDir(generated).exists());
}

TEST(MediaFiles, OpeningFindsTheActiveTakesThatExist) {
    ScriptProject project({{QStringLiteral("a"), QStringLiteral("b")}}, ScriptProject::Folder::OnDisk);
    project.addTake(0);
    project.addTake(1);
    ASSERT_TRUE(project->save());
    QFile::remove(project->media().audioURL(project.line(1)).toLocalFile());
    project.reopen();
    EXPECT_TRUE(project->runtime().hasGeneratedAudio(project.id(0)));
    EXPECT_FALSE(project->runtime().hasGeneratedAudio(project.id(1)));
    EXPECT_TRUE(project->media().audioURL(project.line(1)).isEmpty());
    EXPECT_FALSE(project->hasUnsavedChanges());
}

TEST(MediaFiles, WithoutAFolderNothingResolves) {
    const ScriptProject project({{QStringLiteral("a")}});
    EXPECT_TRUE(project->media().takeURL(takeNamed(QStringLiteral("a.wav"))).isEmpty());
    EXPECT_FALSE(project->media().audioFolder(AudioKind::SourceRecording));
}

} // namespace orlenta::controller
