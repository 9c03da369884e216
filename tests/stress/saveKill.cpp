// Kills a program that saves a project over and over, at random moments, and looks at what it left: the project must
// load, hold the last acknowledged state or the one that was on its way, and one load must clear every temporary file.
//
// save_kill [kills = 30] [seed = 1]

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <random>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "model/ProjectStore.h"

extern char **environ;

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

constexpr int acknowledgements = 3;
constexpr base::Timestamp savingTime{std::chrono::seconds(1'700'000'000)};

Project bulkyProject() {
    Project project = Project::makeNew(u"Stress"_s, savingTime);
    for (int i = 1; i < 500; ++i) {
        ProjectLine line = ProjectLine::makeNew();
        line.text = u"A line of some length, so that a save takes its time. "_s.repeated(10);
        project.appendLine(line);
    }
    return project;
}

Project numbered(Project project, qint64 number) {
    project.lines.update(project.tabs.first().lineIds.first(),
                         [number](ProjectLine &line) { line.notes = QString::number(number); });
    return project;
}

int saveForEver(const QString &folder, qint64 number) {
    const Project project = bulkyProject();
    for (;; ++number) {
        if (!ProjectStore::save({numbered(project, number), folder, {}}, savingTime))
            return EXIT_FAILURE;
        if (::write(acknowledgements, &number, sizeof number) != sizeof number)
            return EXIT_FAILURE;
    }
}

class Saver final {
public:
    Saver(const QString &folder, qint64 first) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            std::abort();
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], acknowledgements);
        std::string program = "/proc/self/exe";
        std::string mode = "--save";
        std::string where = QFile::encodeName(folder).toStdString();
        std::string from = std::to_string(first);
        char *arguments[] = {program.data(), mode.data(), where.data(), from.data(), nullptr};
        if (::posix_spawn(&m_process, program.c_str(), &actions, nullptr, arguments, environ) != 0)
            std::abort();
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        m_pipe = ends[0];
    }
    ~Saver() { ::close(m_pipe); }
    Saver(const Saver &) = delete;
    Saver &operator=(const Saver &) = delete;

    /// Follows the acknowledgements for that long; gives whether one came.
    bool follow(std::chrono::microseconds span) {
        const auto end = std::chrono::steady_clock::now() + span;
        const qint64 before = m_last;
        for (;;) {
            const auto left =
                std::chrono::duration_cast<std::chrono::nanoseconds>(end - std::chrono::steady_clock::now());
            if (left.count() <= 0)
                return m_last != before;
            const timespec wait{static_cast<time_t>(left.count() / 1'000'000'000), left.count() % 1'000'000'000};
            pollfd waiting{m_pipe, POLLIN, 0};
            if (::ppoll(&waiting, 1, &wait, nullptr) > 0 && !readOne())
                return m_last != before;
        }
    }
    bool waitForFirst() { return readOne(); }
    void kill() {
        ::kill(m_process, SIGKILL);
        int status = 0;
        while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
        }
        while (readOne()) {
        }
    }
    [[nodiscard]] qint64 last() const { return m_last; }

private:
    bool readOne() {
        qint64 number = 0;
        if (::read(m_pipe, &number, sizeof number) != sizeof number)
            return false;
        m_last = number;
        return true;
    }

    pid_t m_process = -1;
    int m_pipe = -1;
    qint64 m_last = -1;
};

int temporaryFilesIn(const QString &folder) {
    int count = 0;
    QDirIterator items(folder, {u"*.tmp"_s}, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    for (; items.hasNext(); items.next())
        ++count;
    return count;
}

struct Tally {
    int unreadable = 0;
    int lost = 0;
    int invented = 0;
    int leftAfterLoad = 0;
    int killedMidWrite = 0;

    [[nodiscard]] bool isClean() const { return unreadable + lost + invented + leftAfterLoad == 0; }
};

// Gives the number that the folder now holds.
qint64 judge(const QString &folder, qint64 acknowledged, Tally &tally) {
    tally.killedMidWrite += temporaryFilesIn(folder) > 0 ? 1 : 0;
    const auto loaded = ProjectStore::load(folder, savingTime);
    tally.leftAfterLoad += temporaryFilesIn(folder);
    if (!loaded) {
        std::printf("unreadable after %lld: %s\n", acknowledged, qPrintable(loaded.error().description()));
        ++tally.unreadable;
        return acknowledged;
    }
    const qint64 number = loaded->project.linesInOrder().front()->notes.toLongLong();
    tally.lost += number < acknowledged ? 1 : 0;
    tally.invented += number > acknowledged + 1 || loaded->project.lines.size() != 500 ? 1 : 0;
    return number;
}

int killOften(int kills, unsigned seed) {
    const QTemporaryDir root;
    const QString folder = root.filePath(u"Stress"_s);
    if (!ProjectStore::create(folder, u"Stress"_s, numbered(bulkyProject(), 0), savingTime))
        return EXIT_FAILURE;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> microseconds(0, 40'000);
    Tally tally;
    qint64 number = 0;
    for (int i = 0; i < kills; ++i) {
        Saver saver(folder, number + 1);
        if (!saver.waitForFirst()) {
            std::printf("the saver ended by itself\n");
            saver.kill();
            return EXIT_FAILURE;
        }
        saver.follow(std::chrono::microseconds(microseconds(random)));
        saver.kill();
        number = judge(folder, saver.last(), tally);
    }
    std::printf("%d kills (seed %u), %d in the middle of a write, %lld saves: %d acknowledged saves lost, "
                "%d unreadable files, %d states never saved, %d temporary files left after one load\n",
                kills, seed, tally.killedMidWrite, number, tally.lost, tally.unreadable, tally.invented,
                tally.leftAfterLoad);
    return tally.isClean() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace orlenta::model

int main(int argc, char **argv) {
    const std::string first = argc > 1 ? argv[1] : "30";
    if (first == "--save" && argc == 4)
        return orlenta::model::saveForEver(QFile::decodeName(argv[2]), std::atoll(argv[3]));
    return orlenta::model::killOften(std::atoi(first.c_str()),
                                     argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1);
}
