#include <cstdlib>

#include <gtest/gtest.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

// The main function of tests without widgets: a Qt event loop, and a temporary home so that no test touches the user's
// files.
int main(int argc, char **argv) {
    const QTemporaryDir home;
    for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        ::setenv(variable, home.path().toLocal8Bit().constData(), 1);
    ::setenv("TMPDIR", home.path().toLocal8Bit().constData(), 1);
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
