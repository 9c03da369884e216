#include <cstdlib>

#include <gtest/gtest.h>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "shell/controls/ControlAccessibility.h"
#include "shell/theme/Theme.h"

// The main function of tests with widgets: offscreen unless another platform is requested, with the application's look,
// and with a temporary home and no session bus, so that no test touches the user's files or keyring.
int main(int argc, char **argv) {
    const QTemporaryDir home;
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        ::setenv(variable, home.path().toLocal8Bit().constData(), 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + home.path().toLocal8Bit() + "/no-bus").constData(), 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    orlenta::shell::installControlAccessibility();
    orlenta::shell::Theme::apply(orlenta::shell::Appearance::Light);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
