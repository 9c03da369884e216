#include "controller/export/Exporting.h"

#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "base/files/PendingFile.h"
#include "base/files/RegularFile.h"
#include "controller/script/Selection.h"
#include "controller/ScriptProject.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

QByteArray bytesOf(const QString &path) {
    const auto bytes = base::readWholeFile(path);
    return bytes ? bytes.value() : QByteArray();
}

constexpr int deadline = 20'000;

/// A file that another writer holds, which blocks anyone who wants to replace it until release.
class HeldFile final {
public:
    explicit HeldFile(const QString &path) {
        auto file = base::PendingFile::create(path);
        EXPECT_TRUE(file);
        m_file = std::make_unique<base::PendingFile>(std::move(file).value());
    }
    void letGo() { m_file.reset(); }

private:
    std::unique_ptr<base::PendingFile> m_file;
};

/// Collects the log of exports during its lifetime, from any thread. Only one at a time: the message handler is global.
class ExportLog final {
public:
    ExportLog() : m_before(qInstallMessageHandler(&ExportLog::keep)) {
        const std::scoped_lock guard(lock);
        lines.clear();
    }
    ~ExportLog() { qInstallMessageHandler(m_before); }
    ExportLog(const ExportLog &) = delete;
    ExportLog &operator=(const ExportLog &) = delete;
    [[nodiscard]] static QStringList logged() {
        const std::scoped_lock guard(lock);
        return lines;
    }

private:
    static void keep(QtMsgType, const QMessageLogContext &, const QString &message) {
        const std::scoped_lock guard(lock);
        if (message.startsWith(QStringLiteral("[Exporting]")))
            lines.append(message);
    }

    static inline std::mutex lock;
    static inline QStringList lines;
    QtMessageHandler m_before;
};

class ExportingTest : public ::testing::Test {
protected:
    ScriptProject project{{{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")}},
                          ScriptProject::Folder::OnDisk};
    Exporting &exporting = project->exporting();
    QTemporaryDir target;

    [[nodiscard]] QString audio(qsizetype index) const {
        return project->media().audioURL(project.line(index)).toLocalFile();
    }
    [[nodiscard]] QStringList exported() const {
        return QDir(target.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QString sourceOf(const QByteArray &bytes) {
        QFile file(source.filePath(QStringLiteral("source.wav")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    QTemporaryDir source;
    Exporting::Plan plan(MultiLineOutput output) { return QCoro::waitFor(exporting.plan(output)); }
};

} // namespace

TEST_F(ExportingTest, OneLineIsOneFileUnderItsClipName) {
    project.addTake(1);
    project->selection().selectAlone(project.id(1));
    const Exporting::Plan planned = plan(MultiLineOutput::Continuous);
    const auto *single = std::get_if<Exporting::SingleFile>(&planned);
    ASSERT_NE(single, nullptr);
    EXPECT_EQ(single->suggestedName, QStringLiteral("Voice - Two.02.wav"));
    const QString destination = target.filePath(QStringLiteral("out.wav"));
    QFile old(destination);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("what was there");
    old.close();
    QCoro::waitFor(exporting.exportTo(*single, destination));
    EXPECT_EQ(bytesOf(destination), bytesOf(audio(1)));
    EXPECT_EQ(project->spotError(), QString());
}

TEST_F(ExportingTest, ATakeExportedOntoItselfSurvives) {
    project.addTake(0);
    project->selection().selectAlone(project.id(0));
    const QByteArray before = bytesOf(audio(0));
    QCoro::waitFor(exporting.exportTo({audio(0), QStringLiteral("x.wav")}, audio(0)));
    EXPECT_EQ(bytesOf(audio(0)), before);
}

TEST_F(ExportingTest, ALineWithoutAudioMeansNothingToExport) {
    project.addTake(0);
    project->selection().selectAll();
    EXPECT_TRUE(std::holds_alternative<Exporting::NothingToExport>(plan(MultiLineOutput::Individual)));
    project.clearSelection();
    EXPECT_TRUE(std::holds_alternative<Exporting::NothingToExport>(plan(MultiLineOutput::Continuous)));
}

TEST_F(ExportingTest, SeveralLinesAreJoinedInScriptOrder) {
    for (const qsizetype index : {2, 0, 1})
        project.addTake(index);
    project->selection().selectAlone(project.id(2));
    project->selection().toggle(project.id(0));
    const Exporting::Plan planned = plan(MultiLineOutput::Continuous);
    const auto *single = std::get_if<Exporting::SingleFile>(&planned);
    ASSERT_NE(single, nullptr);
    EXPECT_EQ(single->suggestedName, QStringLiteral("Script 1 - Lines 1-3.wav"));
    const qint64 header = 44;
    EXPECT_EQ(bytesOf(single->path).size() - header,
              bytesOf(audio(0)).size() - header + bytesOf(audio(2)).size() - header);
}

TEST_F(ExportingTest, AFileThatCannotBeJoinedIsReported) {
    project.addTake(0);
    project.addTake(1);
    QFile broken(audio(1));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("no audio");
    broken.close();
    project->selection().selectAlone(project.id(0));
    project->selection().extendDown();
    EXPECT_TRUE(std::holds_alternative<Exporting::NothingToExport>(plan(MultiLineOutput::Continuous)));
    EXPECT_TRUE(project->spotError().startsWith(QStringLiteral("Could not prepare export audio: ")));
}

TEST_F(ExportingTest, ClipsWithTheSameNameAreNumberedIgnoringCase) {
    for (const qsizetype index : {0, 1, 2})
        project.addTake(index);
    Exporting::Folder folder;
    for (const char *name : {"A.01", "a.01", "B.01"})
        folder.clips.append({project.id(0), audio(0), QString::fromLatin1(name)});
    folder.clips.append({project.id(0), QStringLiteral("/nowhere/take.aif"), QStringLiteral("C.01")});
    QFile taken(target.filePath(QStringLiteral("B.01.wav")));
    ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
    taken.close();
    QCoro::waitFor(exporting.exportToFolder(folder, target.path()));
    EXPECT_EQ(exported(), (QStringList{QStringLiteral("A.01.wav"), QStringLiteral("B.01 2.wav"),
                                       QStringLiteral("B.01.wav"), QStringLiteral("a.01 2.wav")}));
    EXPECT_EQ(project->spotError(), QStringLiteral("Export failed for: C.01.aif"));
}

TEST_F(ExportingTest, AJoinedFileLivesAsLongAsItsPlan) {
    for (const qsizetype index : {0, 1})
        project.addTake(index);
    project->selection().selectAlone(project.id(0));
    project->selection().extendDown();
    QString path;
    {
        const Exporting::Plan first = plan(MultiLineOutput::Continuous);
        const Exporting::Plan second = plan(MultiLineOutput::Continuous);
        path = std::get<Exporting::SingleFile>(first).path;
        EXPECT_TRUE(QFile::exists(path));
    }
    // The worker's result arrives with the next turn of the event loop.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(path); }, deadline));
}

TEST_F(ExportingTest, AWorkerCopiesAndTheExportIsBusyMeanwhile) {
    HeldFile held(target.filePath(QStringLiteral("A.wav")));
    const ExportLog log;
    const QSignalSpy changes(&exporting, &Exporting::isBusyChanged);
    const Exporting::Folder clips{{{project.id(0), sourceOf("a"), QStringLiteral("A")},
                                   {project.id(1), sourceOf("b"), QStringLiteral("B")},
                                   {project.id(2), QStringLiteral("/nowhere/take.aif"), QStringLiteral("C")}}};
    exporting.exportToFolder(clips, target.path());
    EXPECT_TRUE(exporting.isBusy());
    EXPECT_FALSE(QFile::exists(target.filePath(QStringLiteral("B.wav"))));
    held.letGo();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !exporting.isBusy(); }, deadline));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(exported(), (QStringList{QStringLiteral("A.wav"), QStringLiteral("B.wav")}));
    EXPECT_EQ(project->spotError(), QStringLiteral("Export failed for: C.aif"));
    EXPECT_EQ(ExportLog::logged(), QStringList{QStringLiteral("[Exporting] Export failed for: C.aif")});
}

TEST_F(ExportingTest, AFileThatCannotBeCopiedIsReportedAndLoggedOnce) {
    const ExportLog log;
    QCoro::waitFor(exporting.exportTo({QStringLiteral("/nowhere/take.wav"), QStringLiteral("x.wav")},
                                      target.filePath(QStringLiteral("x.wav"))));
    EXPECT_TRUE(project->spotError().startsWith(QStringLiteral("Export failed: ")));
    EXPECT_EQ(ExportLog::logged(), QStringList{QStringLiteral("[Exporting] ") + project->spotError()});
}

TEST_F(ExportingTest, AnExportContinuesWhenItsProjectCloses) {
    HeldFile held(target.filePath(QStringLiteral("A.wav")));
    const ExportLog log;
    {
        const ScriptProject other({{QStringLiteral("One")}});
        const Exporting::Folder clips{{{other.id(0), sourceOf("a"), QStringLiteral("A")},
                                       {other.id(0), QStringLiteral("/nowhere/take.aif"), QStringLiteral("B")},
                                       {other.id(0), sourceOf("c"), QStringLiteral("C")}}};
        other->exporting().exportToFolder(clips, target.path());
    }
    held.letGo();
    const QStringList failure{QStringLiteral("[Exporting] Export failed for: B.aif")};
    ASSERT_TRUE(QTest::qWaitFor([&] { return ExportLog::logged() == failure; }, deadline));
    EXPECT_EQ(bytesOf(target.filePath(QStringLiteral("C.wav"))), "c");
    EXPECT_EQ(project->spotError(), QString());
}

TEST_F(ExportingTest, QuittingWaitsForTheExportAndLogsItsFailure) {
    HeldFile held(target.filePath(QStringLiteral("A.wav")));
    const ExportLog log;
    Exporting::Folder clips{{{project.id(0), sourceOf("a"), QStringLiteral("A")}}};
    for (int clip = 0; clip < 50; ++clip)
        clips.clips.append({project.id(0), sourceOf("b"), QStringLiteral("B%1").arg(clip)});
    clips.clips.append({project.id(0), QStringLiteral("/nowhere/take.aif"), QStringLiteral("C")});
    exporting.exportToFolder(clips, target.path());
    std::jthread slowDisk;
    QTimer::singleShot(0, QCoreApplication::instance(), [&] {
        slowDisk = std::jthread([&] { held.letGo(); });
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    EXPECT_EQ(ExportLog::logged(), QStringList{QStringLiteral("[Exporting] Export failed for: C.aif")});
    EXPECT_EQ(exported().size(), 51);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !exporting.isBusy(); }, deadline));
}

TEST_F(ExportingTest, WaitingExportsDontBlockOtherWork) {
    std::deque<HeldFile> held;
    for (int number = 0; number < QThreadPool::globalInstance()->maxThreadCount(); ++number) {
        const QString name = QString::number(number);
        held.emplace_back(target.filePath(name + QStringLiteral(".wav")));
        exporting.exportToFolder({{{project.id(0), sourceOf("a"), name}}}, target.path());
    }
    const QFuture<void> other = QtConcurrent::run([] {});
    EXPECT_TRUE(QTest::qWaitFor([&] { return other.isFinished(); }, deadline));
    for (HeldFile &file : held)
        file.letGo();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !exporting.isBusy(); }, deadline));
    EXPECT_EQ(exported().size(), QThreadPool::globalInstance()->maxThreadCount());
}

TEST_F(ExportingTest, TwoExportsToOneFolderUseDifferentNames) {
    HeldFile held(target.filePath(QStringLiteral("A.wav")));
    const ScriptProject other({{QStringLiteral("One")}});
    const Exporting::Folder first{{{project.id(0), sourceOf("a"), QStringLiteral("A")}}};
    const Exporting::Folder second{{{other.id(0), sourceOf("b"), QStringLiteral("A")}}};
    exporting.exportToFolder(first, target.path());
    other->exporting().exportToFolder(second, target.path());
    held.letGo();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !exporting.isBusy() && !other->exporting().isBusy(); }, deadline));
    EXPECT_EQ(exported(), (QStringList{QStringLiteral("A 2.wav"), QStringLiteral("A.wav")}));
}

} // namespace orlenta::controller
