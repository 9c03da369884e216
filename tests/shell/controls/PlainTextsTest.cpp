#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtGui/QHelpEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolTip>

#include "controller/ProjectController.h"
#include "controller/script/TabEditing.h"
#include "shell/controls/MessageBox.h"
#include "shell/controls/PlainLabel.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptTabBar.h"
#include "shell/ShellSession.h"
#include "shell/windows/ErrorAlerts.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

/// A file that nobody may open. Whoever shows `markup()` as HTML reads it: from a pipe, that waits for ever.
class Bait final {
public:
    Bait() { EXPECT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0); }
    [[nodiscard]] QString markup() const { return u"Script <img src='file://%1'>"_s.arg(path()); }
    /// Whether a reader has the pipe open now. It would have no writer, and so stay there.
    [[nodiscard]] bool isRead() const {
        const int writer = ::open(QFile::encodeName(path()).constData(), O_WRONLY | O_NONBLOCK);
        if (writer >= 0)
            ::close(writer);
        return writer >= 0;
    }

private:
    [[nodiscard]] QString path() const { return m_folder.filePath(u"bait.png"_s); }

    QTemporaryDir m_folder;
};

/// The text and format of the tool tip on screen.
const QLabel *toolTip() {
    for (const QWidget *widget : QApplication::topLevelWidgets())
        if (widget->inherits("QTipLabel") && widget->isVisible())
            return qobject_cast<const QLabel *>(widget);
    return nullptr;
}

void askForToolTip(QWidget &widget, const QPoint &position) {
    QHelpEvent event(QEvent::ToolTip, position, widget.mapToGlobal(position));
    QCoreApplication::sendEvent(&widget, &event);
}

TEST(PlainTexts, ATabNamedAsMarkupIsShownAsItIs) {
    const Bait bait;
    testing::ShellSession shell;
    ProjectWindows windows(shell.context);
    ASSERT_TRUE(windows.openProject(shell.makeProject(u"Markup"_s, {u"One."_s}).folder));
    ProjectWindowController &project = *windows.open().front();
    const model::TabId tab(project.controller().project().tabs.first().id);
    project.controller().tabs().renameTab(tab, bait.markup());
    QTabBar &bar = project.window().editor().tabBar().bar();
    askForToolTip(bar, bar.tabRect(0).center());
    ASSERT_TRUE(testing::waitUntil([] { return toolTip() != nullptr; }));
    EXPECT_EQ(toolTip()->text(), bait.markup());
    EXPECT_EQ(toolTip()->textFormat(), Qt::PlainText);
    EXPECT_FALSE(bait.isRead());
    QToolTip::hideText();
    project.controller().discardChanges();
}

TEST(PlainTexts, AnAlertShowsMarkupAsItIs) {
    const Bait bait;
    QWidget window;
    window.show();
    ErrorAlerts alerts(window);
    alerts.show({AlertSource::Generation, bait.markup(), bait.markup(), {}});
    ASSERT_NE(alerts.box(), nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(alerts.box()->informativeText(), bait.markup());
    int texts = 0;
    for (const QLabel *label : alerts.box()->findChildren<QLabel *>()) {
        if (!label->text().isEmpty())
            ++texts;
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_FALSE(label->openExternalLinks());
    }
    EXPECT_EQ(texts, 2);
    alerts.show({AlertSource::Generation, u"Again"_s, u"<a href='https://example.org'>Look</a>"_s, {}});
    for (const QLabel *label : alerts.box()->findChildren<QLabel *>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_FALSE(bait.isRead());
    alerts.box()->accept();
}

TEST(PlainTexts, QtsOwnMessagesShowMarkupAsItIs) {
    const Bait bait;
    // As a file dialog asks before it replaces a file.
    QMessageBox box(QMessageBox::Warning, u"Replace"_s, bait.markup());
    box.open();
    QCoreApplication::processEvents();
    EXPECT_FALSE(bait.isRead());
    const auto *label = box.findChild<QLabel *>(u"qt_msgbox_label"_s);
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

} // namespace
} // namespace orlenta::shell
