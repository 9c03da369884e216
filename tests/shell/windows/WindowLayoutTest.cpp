#include <algorithm>

#include <gtest/gtest.h>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
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

int letterHeight(const QWidget &widget) {
    return widget.fontMetrics().tightBoundingRect(QStringLiteral("H")).height();
}

/// The least height that a layout gives each combo box.
QList<int> comboHeights(const AllWindows &windows) {
    QList<int> heights;
    for (const QWidget *window : windows.all)
        for (const QComboBox *combo : window->findChildren<QComboBox *>())
            heights.append(std::max(combo->sizeHint().height(), combo->minimumSizeHint().height()));
    return heights;
}

TEST(WindowLayout, AChangedScaleReachesEveryTextAndBoxAndGoesBack) {
    AllWindows windows;
    QHash<const QLabel *, int> letters;
    for (const QWidget *window : windows.all)
        for (const QLabel *label : window->findChildren<QLabel *>())
            letters.insert(label, letterHeight(*label));
    const QList<int> combos = comboHeights(windows);
    Theme::setUiScale(1.5);
    QCoreApplication::processEvents();
    // Both heights are rounded to pixels.
    for (auto label = letters.cbegin(); label != letters.cend(); ++label)
        EXPECT_NEAR(letterHeight(*label.key()), label.value() * 1.5, 1.5) << label.key()->text().toStdString();
    EXPECT_NE(comboHeights(windows), combos);
    Theme::setUiScale(1.0);
    QCoreApplication::processEvents();
    EXPECT_EQ(comboHeights(windows), combos);
    for (auto label = letters.cbegin(); label != letters.cend(); ++label)
        EXPECT_EQ(letterHeight(*label.key()), label.value()) << label.key()->text().toStdString();
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
