#include <gtest/gtest.h>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include "shell/account/AccountDialog.h"
#include "shell/inspector/DeliveryTipsDialog.h"
#include "shell/settings/SettingsDialog.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "shell/windows/NewProjectDialog.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "shell/windows/WelcomeWindow.h"

namespace orlenta {
namespace {

using shell::Theme;
using testing::ShellSession;

/// All windows of the application, on screen.
struct AllWindows {
    AllWindows()
        : projects(session.context), service(session.defaults, session.credentials),
          account(service, session.localVoices), settings(session.context), newProject({}), welcome(session.commands) {
        const auto stored = session.makeProject(
            QStringLiteral("Layout"), {QStringLiteral("Clara: Good morning."), QStringLiteral("Nobody says this.")});
        EXPECT_TRUE(projects.openProject(stored.folder));
        all = {&projects.open().front()->window(), &account, &settings, &newProject, &welcome, &tips};
        for (QWidget *window : all)
            window->show();
    }

    ShellSession session;
    shell::ProjectWindows projects;
    speech::ElevenLabsService service;
    shell::AccountDialog account;
    shell::SettingsDialog settings;
    shell::NewProjectDialog newProject;
    shell::WelcomeWindow welcome;
    shell::DeliveryTipsDialog tips;
    QList<QWidget *> all;
};

TEST(WindowLayout, EveryControlHasAnAccessibleNameAndATooltip) {
    AllWindows windows;
    for (const QWidget *window : windows.all) {
        const QStringList unnamed = testing::unnamedControls(*window);
        EXPECT_TRUE(unnamed.isEmpty()) << window->windowTitle().toStdString() << ": "
                                       << unnamed.join(QStringLiteral("; ")).toStdString();
    }
}

TEST(WindowLayout, TheProjectWindowCanBeMadeAsSmallAs600By400) {
    AllWindows windows;
    EXPECT_EQ(windows.all.first()->minimumSize(), QSize(600, 400));
}

TEST(WindowLayout, NoTextIsClippedAtAnyScale) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        Theme::setUiScale(scale);
        AllWindows windows;
        for (QWidget *window : windows.all) {
            ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
            // The window's minimum size is the hardest.
            window->resize(window->minimumSize());
            QCoreApplication::processEvents();
            const QStringList clipped = testing::clippedTexts(*window);
            EXPECT_TRUE(clipped.isEmpty()) << "scale " << scale << ", " << window->windowTitle().toStdString() << ": "
                                           << clipped.join(QStringLiteral("; ")).toStdString();
        }
    }
    Theme::setUiScale(1.0);
}

/// What the scale determines of each text in the windows: the height of its letters, and of a field or box its own.
QStringList scaledMeasures(const AllWindows &windows) {
    QStringList measures;
    for (const QWidget *window : windows.all)
        for (const QWidget *widget : window->findChildren<QWidget *>()) {
            const bool isField = widget->inherits("QComboBox") || widget->inherits("QLineEdit");
            if (!widget->isVisible() || !(isField || widget->inherits("QLabel") || widget->inherits("QAbstractButton")))
                continue;
            const int height = isField ? widget->height() : 0;
            measures.append(QStringLiteral("%1 %2 in %3: letters %4, height %5")
                                .arg(QLatin1String(widget->metaObject()->className()), widget->accessibleName(),
                                     window->windowTitle(), QString::number(widget->fontMetrics().height()),
                                     QString::number(height)));
        }
    return measures;
}

TEST(WindowLayout, AChangedScaleShowsWhatARestartWouldShow) {
    AllWindows changed;
    QHash<const QLabel *, int> before;
    for (const QWidget *window : changed.all)
        for (const QLabel *label : window->findChildren<QLabel *>())
            before.insert(label, label->fontMetrics().height());
    Theme::setUiScale(1.5);
    AllWindows restarted;
    for (const AllWindows *windows : {&changed, &restarted})
        for (QWidget *window : windows->all)
            window->resize(window->minimumSize().expandedTo(QSize(1100, 800)));
    QCoreApplication::processEvents();
    for (auto label = before.cbegin(); label != before.cend(); ++label)
        EXPECT_NEAR(label.key()->fontMetrics().height(), label.value() * 1.5, 1.0) << label.key()->text().toStdString();
    EXPECT_EQ(scaledMeasures(changed), scaledMeasures(restarted));
    Theme::setUiScale(1.0);
}

TEST(WindowLayout, AppearanceChangesReachEveryLabel) {
    AllWindows windows;
    for (const shell::Appearance appearance : {shell::Appearance::Dark, shell::Appearance::Light}) {
        Theme::apply(appearance);
        QCoreApplication::processEvents();
        for (const QWidget *window : windows.all) {
            for (const QLabel *label : window->findChildren<QLabel *>()) {
                if (!label->isVisible() || !label->isEnabled() || label->text().isEmpty())
                    continue;
                const QPalette palette = label->palette();
                const double contrast = shell::contrastRatio(palette.color(QPalette::Active, label->foregroundRole()),
                                                             window->palette().color(QPalette::Window));
                EXPECT_GE(contrast, 4.5) << window->windowTitle().toStdString() << ": " << label->text().toStdString();
            }
        }
    }
}

TEST(WindowLayout, ScaleChangesReachOpenWindows) {
    AllWindows windows;
    Theme::setUiScale(1.5);
    QCoreApplication::processEvents();
    for (QWidget *window : windows.all) {
        window->resize(window->minimumSize().expandedTo(window->size()));
        QCoreApplication::processEvents();
        const QStringList clipped = testing::clippedTexts(*window);
        EXPECT_TRUE(clipped.isEmpty()) << window->windowTitle().toStdString() << ": "
                                       << clipped.join(QStringLiteral("; ")).toStdString();
    }
    Theme::setUiScale(1.0);
}

} // namespace
} // namespace orlenta
