#include "base/CrashReport.h"

#include <csignal>
#include <cstdlib>

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace orlenta::base {
namespace {

void addNumbered(int number) {
    CrashReport::addBreadcrumb(
        QStringLiteral("keychain"), CrashReport::Level::Error, QStringLiteral("Keychain read failed"),
        {{QStringLiteral("status"), number}, {QStringLiteral("operation"), QStringLiteral("read\nnow")}});
}

[[noreturn]] void crashAfter(int breadcrumbs, int signal, const QString &folder) {
    CrashReport::install(folder);
    for (int i = 1; i <= breadcrumbs; ++i)
        addNumbered(i);
    std::raise(signal);
    std::_Exit(0);
}

QList<QByteArray> reportIn(const QTemporaryDir &folder) {
    QFile report(folder.filePath(QStringLiteral("crash-report.txt")));
    return report.open(QIODevice::ReadOnly) ? report.readAll().split('\n') : QList<QByteArray>();
}

} // namespace

TEST(CrashReport, ACrashLeavesTheLastBreadcrumbsAndStillEndsTheProcessAsACrash) {
    for (const int signal : {SIGABRT, SIGSEGV}) {
        const QTemporaryDir folder;
        EXPECT_EXIT(crashAfter(40, signal, folder.path()), ::testing::KilledBySignal(signal), "");
        const QList<QByteArray> lines = reportIn(folder);
        ASSERT_GT(lines.size(), 34);
        EXPECT_EQ(lines.at(1), "signal " + QByteArray::number(signal).rightJustified(2, '0'));
        EXPECT_TRUE(lines.at(2).endsWith(" keychain error: Keychain read failed operation=read now status=9"));
        EXPECT_TRUE(lines.at(33).endsWith(" status=40"));
        EXPECT_FALSE(lines.at(34).isEmpty()) << "the stack follows";
    }
}

} // namespace orlenta::base
