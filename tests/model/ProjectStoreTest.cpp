#include "model/ProjectStore.h"

#include <sys/stat.h>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include "base/files/RegularFile.h"
#include "model/ProjectJson.h"
#include "model/SampleDocuments.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

class ProjectStoreIn : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_root.filePath(name); }
    void put(const QString &name, const QByteArray &data) const {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path(name)).absolutePath()));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(data), data.size());
    }
    [[nodiscard]] static QByteArray projectText(const QString &name) {
        return encodeProject(Project::makeNew(name, sampleMoment()));
    }
    // The name of the loaded project, or the error's main text.
    [[nodiscard]] QString loaded(const QString &name) const {
        const auto result = ProjectStore::load(path(name), sampleMoment());
        return result ? result->project.projectName : result.error().description();
    }
    [[nodiscard]] QString nameForWriting(const QString &folder, const QString &project) const {
        return QDir(path(folder)).relativeFilePath(ProjectStore::projectFileForWriting(path(folder), project));
    }

    QTemporaryDir m_root;
};

TEST_F(ProjectStoreIn, LocationsNameTheirFolder) {
    ASSERT_TRUE(QDir(m_root.path()).mkdir(u"folder"_s));
    const std::pair<QString, std::optional<QString>> cases[] = {
        {u"folder"_s, path(u"folder"_s)},
        {u"folder/"_s, path(u"folder"_s)},
        {u"none/P.orl"_s, path(u"none"_s)},
        {u"none/project.json"_s, path(u"none"_s)},
        {u"none/x.orl.json"_s, path(u"none"_s)},
        {u"none/x.json"_s, std::nullopt},
        {u"none/x.txt"_s, std::nullopt},
        {u"none/.orl"_s, std::nullopt},
        {u"none"_s, std::nullopt},
    };
    for (const auto &[location, folder] : cases)
        EXPECT_EQ(ProjectStore::projectFolderForLocation(path(location)), folder) << location.toStdString();
}

TEST_F(ProjectStoreIn, CreatingMakesTheWholeFolder) {
    const auto created = ProjectStore::create(path(u"deep/My.Project"_s), u"My.Project"_s,
                                              Project::makeNew(u"other"_s, {}), sampleMoment());
    ASSERT_TRUE(created) << created.error().description().toStdString();
    EXPECT_EQ(created->project.projectName, u"My.Project"_s);
    EXPECT_EQ(created->project.modifiedAt, sampleMoment());
    EXPECT_EQ(created->folder, path(u"deep/My.Project"_s));
    for (const QString &name : {u"Generated"_s, u"Recordings"_s, u"Imports"_s, u"Exports"_s}) {
        const QFileInfo keep(created->folder + u"/Audio Files/"_s + name + u"/.gitkeep"_s);
        EXPECT_TRUE(keep.isFile() && keep.size() == 0) << name.toStdString();
    }
    const auto index = base::readWholeFile(created->folder + u"/.orlenta/cache-index.json"_s);
    ASSERT_TRUE(index);
    EXPECT_EQ(*index, R"({"schema_version":1,"entries":[]})");
    const auto read = ProjectStore::load(created->folder, sampleMoment());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->project, created->project);
    EXPECT_EQ(read->folder, created->folder);
}

TEST_F(ProjectStoreIn, CreatingOverAFileFails) {
    put(u"file"_s, "x");
    const auto created = ProjectStore::create(path(u"file/P"_s), u"P"_s, Project::makeNew(u"P"_s, {}), sampleMoment());
    ASSERT_FALSE(created);
    EXPECT_FALSE(created.error().description().isEmpty());
}

TEST_F(ProjectStoreIn, ReadingPrefersTheFilesInThisOrder) {
    const QString order[] = {u"P/P.orl"_s, u"P/Other.orl"_s, u"P/project.json"_s, u"P/P.orl.json"_s,
                             u"P/.z.orl.json"_s};
    for (const QString &name : order)
        put(name, projectText(name));
    put(u"P/notes.txt"_s, "x");
    ASSERT_TRUE(QDir(path(u"P"_s)).mkdir(u"folder.orl"_s));
    for (const QString &name : order) {
        EXPECT_EQ(loaded(u"P"_s), name);
        ASSERT_TRUE(QFile::remove(path(name)));
    }
    EXPECT_EQ(loaded(u"P"_s), u"This doesn't appear to be a Orlenta project."_s);
}

TEST_F(ProjectStoreIn, APackageContainsItsOwnKindsOfFile) {
    const QString order[] = {u"P.orl/project.json"_s, u"P.orl/P.orl.json"_s, u"P.orl/x.orl.json"_s};
    put(u"P.orl/P.orl"_s, projectText(u"not this"_s));
    for (const QString &name : order)
        put(name, projectText(name));
    for (const QString &name : order) {
        EXPECT_EQ(loaded(u"P.orl"_s), name);
        EXPECT_EQ(nameForWriting(u"P.orl"_s, u"Renamed"_s), QFileInfo(name).fileName());
        ASSERT_TRUE(QFile::remove(path(name)));
    }
    EXPECT_FALSE(ProjectStore::load(path(u"P.orl"_s), sampleMoment()));
    EXPECT_EQ(nameForWriting(u"P.orl"_s, u"P"_s), u"project.json"_s);
}

TEST_F(ProjectStoreIn, AGivenFileIsOpenedWhateverElseExists) {
    put(u"P/P.orl"_s, projectText(u"named"_s));
    put(u"P/project.json"_s, projectText(u"package file"_s));
    const auto result = ProjectStore::load(path(u"P/project.json"_s), sampleMoment());
    ASSERT_TRUE(result);
    EXPECT_EQ(result->project.projectName, u"package file"_s);
    EXPECT_EQ(result->folder, path(u"P"_s));
}

TEST_F(ProjectStoreIn, AReplacementIsReadInPlaceOfTheProjectFile) {
    put(u"P/P.orl"_s, "broken");
    put(u"P/.orlenta/recovery.snapshot"_s, projectText(u"rescued"_s));
    const auto result = ProjectStore::load(path(u"P"_s), sampleMoment(), path(u"P/.orlenta/recovery.snapshot"_s));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->project.projectName, u"rescued"_s);
    EXPECT_EQ(result->folder, path(u"P"_s));
    EXPECT_FALSE(ProjectStore::load(path(u"P"_s), sampleMoment(), path(u"P/missing"_s)));
}

TEST_F(ProjectStoreIn, AnythingButAProjectFailsWithoutADetail) {
    put(u"a.txt"_s, "{}");
    ASSERT_TRUE(QDir(m_root.path()).mkdir(u"empty"_s));
    for (const QString &name : {u"a.txt"_s, u"empty"_s, u"missing"_s, u"missing.orl"_s}) {
        const auto result = ProjectStore::load(path(name), sampleMoment());
        ASSERT_FALSE(result) << name.toStdString();
        EXPECT_EQ(result.error().description(), u"This doesn't appear to be a Orlenta project."_s);
        EXPECT_EQ(result.error().failureReason(), std::nullopt);
    }
}

TEST_F(ProjectStoreIn, BrokenAndNewerFilesGiveDifferentErrors) {
    put(u"newer.orl"_s, R"({"schema_version":2,"lines":"garbage"})");
    put(u"broken.orl"_s, R"({"schema_version":"2"})");
    const auto newer = ProjectStore::load(path(u"newer.orl"_s), sampleMoment());
    ASSERT_FALSE(newer);
    EXPECT_EQ(newer.error().description(), u"This project was created with a newer version of Orlenta."_s);
    EXPECT_EQ(newer.error().failureReason(), u"Project schema version 2 is newer than this app supports."_s);
    const auto broken = ProjectStore::load(path(u"broken.orl"_s), sampleMoment());
    ASSERT_FALSE(broken);
    EXPECT_EQ(broken.error().description(), u"Couldn't open this project. The file may be corrupted."_s);
    EXPECT_EQ(broken.error().failureReason(), u"schema_version: the value has the wrong type"_s);
}

TEST_F(ProjectStoreIn, AFileOverTheLimitIsRefusedUnread) {
    put(u"P.orl"_s, projectText(u"large"_s));
    QFile file(path(u"P.orl"_s));
    ASSERT_TRUE(file.resize(ProjectStore::largestProjectFile + 1));
    const auto result = ProjectStore::load(path(u"P.orl"_s), sampleMoment());
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().failureReason(), u"project file is unreasonably large (67108865 bytes)"_s);
}

TEST_F(ProjectStoreIn, AFileOfExactlyTheLimitIsRead) {
    const QByteArray text = projectText(u"padded"_s);
    put(u"P.orl"_s, text + QByteArray(ProjectStore::largestProjectFile - text.size(), ' '));
    EXPECT_EQ(loaded(u"P.orl"_s), u"padded"_s);
}

TEST_F(ProjectStoreIn, APipeInsteadOfAProjectFileFailsWithoutBlocking) {
    ASSERT_TRUE(QDir(m_root.path()).mkdir(u"P"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"P/P.orl"_s)).constData(), 0600), 0);
    EXPECT_FALSE(ProjectStore::load(path(u"P"_s), sampleMoment()));
}

TEST_F(ProjectStoreIn, SavingKeepsTheNameOfAnExistingFile) {
    put(u"P/Old name.orl"_s, projectText(u"Old name"_s));
    const auto saved = ProjectStore::save({Project::makeNew(u"New name"_s, {}), path(u"P"_s), {}}, sampleMoment());
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->project.modifiedAt, sampleMoment());
    EXPECT_EQ(saved->file, path(u"P/Old name.orl"_s));
    EXPECT_EQ(loaded(u"P"_s), u"New name"_s);
    EXPECT_EQ(QDir(path(u"P"_s)).entryList(QDir::Files), QStringList{u"Old name.orl"_s});
}

TEST_F(ProjectStoreIn, SavingWritesTheFileThatWasOpened) {
    const std::pair<QString, QString> cases[] = {{u"P/K backup.orl"_s, u"P/K backup.orl"_s},
                                                 {u"P/project.json"_s, u"P/project.json"_s},
                                                 // The folder opens the file of its own name.
                                                 {u"P"_s, u"P/P.orl"_s}};
    for (const auto &[opened, written] : cases) {
        for (const QString &name : {u"P/K.orl"_s, u"P/K backup.orl"_s, u"P/P.orl"_s, u"P/project.json"_s})
            put(name, projectText(u"K"_s));
        auto stored = ProjectStore::load(path(opened), sampleMoment());
        ASSERT_TRUE(stored);
        stored.value().project.pronunciations.append(PronunciationEntry{});
        ASSERT_TRUE(ProjectStore::save(stored.value(), sampleMoment()));
        for (const QString &name : {u"P/K.orl"_s, u"P/K backup.orl"_s, u"P/P.orl"_s, u"P/project.json"_s}) {
            const auto now = ProjectStore::load(path(name), sampleMoment());
            ASSERT_TRUE(now);
            EXPECT_EQ(now->project.pronunciations.size(), name == written ? 1 : 0)
                << opened.toStdString() << " " << name.toStdString();
        }
    }
}

TEST_F(ProjectStoreIn, AProjectNamedLikeAProjectFileCanBeReopened) {
    for (const QString &name : {u"Foo.orl"_s, u" Foo.orl.orl "_s, u"Foo"_s}) {
        for (const QString &folder : {u"Foo"_s, u"Bar.orl"_s}) {
            const auto created = ProjectStore::create(path(folder), name, Project::makeNew(name, {}), sampleMoment());
            ASSERT_TRUE(created);
            EXPECT_EQ(created->project.projectName, u"Foo"_s);
            const auto reopened = ProjectStore::load(path(folder), sampleMoment());
            ASSERT_TRUE(reopened) << folder.toStdString();
            EXPECT_EQ(reopened->file, created->file);
            EXPECT_EQ(ProjectStore::projectFileForWriting(path(folder), u"Foo"_s), created->file);
            ASSERT_TRUE(QDir(path(folder)).removeRecursively());
        }
    }
    EXPECT_EQ(ProjectStore::nameWithoutExtension(u".orl"_s), u".orl"_s);
}

TEST_F(ProjectStoreIn, ARelativePathBecomesAbsolute) {
    put(u"P/P.orl"_s, projectText(u"P"_s));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_root.path()));
    const auto folder = ProjectStore::load(u"P"_s, sampleMoment());
    const auto file = ProjectStore::load(u"./P/P.orl"_s, sampleMoment());
    const auto created = ProjectStore::create(u"New"_s, u"New"_s, Project::makeNew({}, {}), sampleMoment());
    ASSERT_TRUE(QDir::setCurrent(before));
    const QString root = QFileInfo(m_root.path()).canonicalFilePath();
    for (const auto &[stored, name] : {std::pair(&folder, u"P"_s), {&file, u"P"_s}, {&created, u"New"_s}}) {
        ASSERT_TRUE(*stored);
        EXPECT_EQ((*stored)->folder, root + u'/' + name);
        EXPECT_EQ((*stored)->file, root + u'/' + name + u'/' + name + u".orl"_s);
    }
}

TEST_F(ProjectStoreIn, NamesForWritingStayInsideTheFolder) {
    ASSERT_TRUE(QDir(m_root.path()).mkdir(u"Folder.x"_s));
    const std::pair<QString, QString> cases[] = {
        {u"Name"_s, u"Name.orl"_s}, {u"a/b"_s, u"b.orl"_s},       {u"../../x"_s, u"x.orl"_s},
        {u".."_s, u"Folder.orl"_s}, {QString(), u"Folder.orl"_s}, {u"/"_s, u"Folder.orl"_s},
    };
    for (const auto &[project, file] : cases)
        EXPECT_EQ(nameForWriting(u"Folder.x"_s, project), file) << project.toStdString();
}

TEST_F(ProjectStoreIn, OpeningRemovesWhatAKilledSaveLeft) {
    put(u"P/P.orl"_s, projectText(u"P"_s));
    put(u"P/P.orl.tmp"_s, "half a pro");
    put(u"P/.orlenta/cache-index.json.tmp"_s, "{");
    EXPECT_EQ(loaded(u"P"_s), u"P"_s);
    EXPECT_FALSE(QFileInfo::exists(path(u"P/P.orl.tmp"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"P/.orlenta/cache-index.json.tmp"_s)));
}

} // namespace
} // namespace orlenta::model
