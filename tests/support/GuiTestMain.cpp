#include <cstdlib>

#include <gtest/gtest.h>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "shell/theme/Theme.h"

// One main for the programs that show widgets. They run without a screen unless a platform was asked for, in the
// application's own look, with a home of the run's own and without a bus to a keyring, so that no test reads or writes
// what is the user's.
int main(int argc, char **argv) {
    const QTemporaryDir home;
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        ::setenv(variable, home.path().toLocal8Bit().constData(), 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + home.path().toLocal8Bit() + "/no-bus").constData(), 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    orlenta::shell::Theme::apply(orlenta::shell::Appearance::Light);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
