#include "base/CrashReport.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <execinfo.h>
#include <fcntl.h>
#include <mutex>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFile>

namespace orlenta::base {
namespace {

constexpr size_t keptBreadcrumbs = 32;
constexpr size_t longestBreadcrumb = 501;

/// Preallocated text: a crashing process can't allocate.
template <size_t Size>
struct ReadyText {
    std::array<char, Size> characters{};
    size_t length = 0;

    void set(const QByteArray &text) {
        length = std::min(Size, static_cast<size_t>(text.size()));
        std::memcpy(characters.data(), text.constData(), length);
    }
};

// Everything the handler touches. Plain memory, never freed.
std::mutex breadcrumbMutex;
std::array<ReadyText<longestBreadcrumb>, keptBreadcrumbs> breadcrumbRing;
size_t breadcrumbsEver = 0;
ReadyText<256> programLine;
std::array<char, 4096> reportPath;
std::array<char, 64 * 1024> handlerStack;

QString levelWord(CrashReport::Level level) {
    switch (level) {
    case CrashReport::Level::Info:
        return QStringLiteral("info");
    case CrashReport::Level::Warning:
        return QStringLiteral("warning");
    case CrashReport::Level::Error:
        return QStringLiteral("error");
    }
    Q_UNREACHABLE();
}

void writeReady(int descriptor, const char *text, size_t length) {
    while (length > 0) {
        const ssize_t written = ::write(descriptor, text, length);
        if (written <= 0)
            return;
        text += written;
        length -= static_cast<size_t>(written);
    }
}

// Only async-signal-safe calls. No lock: the crashed thread may hold it, and a torn line does no harm.
void writeReport(int signal) {
    const int descriptor = ::open(reportPath.data(), O_CREAT | O_TRUNC | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (descriptor >= 0) {
        writeReady(descriptor, programLine.characters.data(), programLine.length);
        std::array<char, 11> number{'s', 'i', 'g', 'n', 'a', 'l', ' ', '0', '0', '\n'};
        number[7] = static_cast<char>('0' + signal / 10 % 10);
        number[8] = static_cast<char>('0' + signal % 10);
        writeReady(descriptor, number.data(), 10);
        const size_t first = breadcrumbsEver > keptBreadcrumbs ? breadcrumbsEver - keptBreadcrumbs : 0;
        for (size_t i = first; i < breadcrumbsEver; ++i) {
            const auto &line = breadcrumbRing[i % keptBreadcrumbs];
            writeReady(descriptor, line.characters.data(), line.length);
        }
        std::array<void *, 64> frames{};
        ::backtrace_symbols_fd(frames.data(), ::backtrace(frames.data(), static_cast<int>(frames.size())), descriptor);
        ::close(descriptor);
    }
    // The handler was reset (SA_RESETHAND), so this raise is fatal and the system can still write a core dump.
    ::raise(signal);
}

} // namespace

void CrashReport::install(const QString &folder) {
    const QByteArray path = QFile::encodeName(folder + QStringLiteral("/crash-report.txt"));
    if (static_cast<size_t>(path.size()) >= reportPath.size())
        return;
    std::copy_n(path.constData(), path.size() + 1, reportPath.begin());
    programLine.set(QStringLiteral("%1 %2\n")
                        .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion())
                        .toUtf8());
    // The first call loads a library, which isn't allowed inside a handler.
    std::array<void *, 1> frame{};
    ::backtrace(frame.data(), 1);
    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    // Without an alternate stack the handler still works, except after a stack overflow.
    const int onStack = ::sigaltstack(&stack, nullptr) == 0 ? SA_ONSTACK : 0;
    struct sigaction action {};
    action.sa_handler = &writeReport;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | onStack;
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT})
        ::sigaction(signal, &action, nullptr);
}

void CrashReport::addBreadcrumb(const QString &category, Level level, const QString &message, const QVariantMap &data) {
    QString line = QDateTime::currentDateTimeUtc().toString(Qt::ISODate) +
                   QStringLiteral(" %1 %2: %3").arg(category, levelWord(level), message);
    for (auto entry = data.begin(); entry != data.end(); ++entry)
        line += QStringLiteral(" %1=%2").arg(entry.key(), entry.value().toString());
    QByteArray text = line.toUtf8().left(longestBreadcrumb - 1);
    text.replace('\n', ' ').append('\n');
    const std::scoped_lock lock(breadcrumbMutex);
    breadcrumbRing[breadcrumbsEver % keptBreadcrumbs].set(text);
    ++breadcrumbsEver;
}

} // namespace orlenta::base
