// How long the window stands still for projects that are legal but extreme: thousands of tabs, words without an end,
// megabytes in one field. Beside each, the same for a plain project of one short line. Run it on a real or virtual X
// display; the numbers are wall-clock time until the event loop is idle again.
#include <cstdio>
#include <functional>

#include <QtCore/QElapsedTimer>
#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/Selection.h"
#include "shell/controls/WholeTextDialog.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/ScriptCommands.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "shell/windows/ProjectWindow.h"

namespace orlenta::shell {
namespace {

constexpr double longestStill = 100.0;
constexpr qsizetype megabyte = 1'000'000;

double milliseconds(const std::function<void()> &act) {
    QElapsedTimer timer;
    timer.start();
    act();
    QCoreApplication::processEvents();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

model::Project projectWith(const QString &text) {
    model::Project project = model::Project::makeNew(QStringLiteral("Extreme"), base::Timestamp{});
    project.voices.append({model::VoiceId::create(), QStringLiteral("voice"), QStringLiteral("Narrator"),
                           QStringLiteral("Narrator"), QStringLiteral("#3FA7D6")});
    project.lines = {};
    project.tabs.first().lineIds = {};
    model::ProjectLine line = model::ProjectLine::makeNew();
    line.text = text;
    line.voiceId = project.voices.first().id;
    project.appendLine(line);
    return project;
}

model::Project projectWithNotes(const QString &notes) {
    model::Project project = projectWith(QStringLiteral("Short."));
    model::ProjectLine line = *project.linesInOrder().front();
    line.notes = notes;
    project.lines.insert(line);
    return project;
}

model::Project projectWithCastName(const QString &name) {
    model::Project project = projectWith(QStringLiteral("Short."));
    project.voices.first().castName = name;
    return project;
}

model::Project projectWithTabs(int count) {
    model::Project project = projectWith(QStringLiteral("Short."));
    while (project.tabs.size() < count) {
        model::ProjectTab tab = project.tabs.first();
        tab.id = model::TabId::create();
        tab.name = QStringLiteral("Script %1").arg(project.tabs.size() + 1);
        tab.lineIds = {};
        project.tabs.append(tab);
    }
    return project;
}

QString spaced(qsizetype units) {
    return QStringLiteral("The harbour lights went out one by one. ").repeated(units / 40);
}

class Still {
public:
    explicit Still(testing::ShellSession &shell) : m_shell(shell) {}

    void open(const char *name, const model::Project &project) {
        const auto session = m_shell.openOffline(m_shell.store(QStringLiteral("P%1").arg(m_count++), project));
        std::unique_ptr<ProjectWindow> window;
        report(name, milliseconds([&] {
                   window = std::make_unique<ProjectWindow>(m_shell.context, *session);
                   window->resize(1000, 700);
                   window->show();
               }));
    }
    /// A megabyte pasted into a short line, and a key typed after it.
    void paste(const char *name, const QString &text) {
        const auto session =
            m_shell.openOffline(m_shell.store(QStringLiteral("P%1").arg(m_count++), projectWith(QStringLiteral("A"))));
        ProjectWindow window(m_shell.context, *session);
        window.resize(1000, 700);
        window.show();
        const model::LineId id = session->controller().scriptLineIds().first();
        window.editor().commands().edit(id);
        QCoreApplication::processEvents();
        QApplication::clipboard()->setText(text);
        report(name, milliseconds([&] { window.editor().list().rowFor(id)->textField().paste(); }));
        QCoreApplication::processEvents();
        auto *whole = window.findChild<WholeTextDialog *>();
        report("  a key after it", milliseconds([&] {
                   if (whole != nullptr)
                       whole->field().insertPlainText(QStringLiteral("x"));
                   else
                       window.editor().list().rowFor(id)->textField().insertPlainText(QStringLiteral("x"));
               }));
    }
    [[nodiscard]] bool holds() const { return m_holds; }

private:
    void report(const char *name, double took) {
        std::printf("%-44s %10.1f ms\n", name, took);
        std::fflush(stdout);
        m_holds = m_holds && took < longestStill;
    }

    testing::ShellSession &m_shell;
    int m_count = 0;
    bool m_holds = true;
};

int run() {
    testing::ShellSession shell;
    // Fonts, style and icons are loaded once for the process; a first window pays for them.
    Still(shell).open("(first window)", projectWith(QStringLiteral("Short.")));
    Still still(shell);
    still.open("one short line", projectWith(QStringLiteral("Short.")));
    still.open("2,000 tabs", projectWithTabs(2000));
    still.open("a word of 40,000 letters", projectWith(QString(40'000, u'a')));
    still.open("a word of 100,000 letters", projectWith(QString(100'000, u'a')));
    still.open("200,000 line breaks", projectWith(QString(200'000, u'\n')));
    still.open("a line of 1 MB", projectWith(spaced(megabyte)));
    still.open("notes of 1 MB without a blank", projectWithNotes(QString(megabyte, u'n')));
    still.open("a cast name of 1 MB without a blank", projectWithCastName(QString(megabyte, u'c')));
    still.paste("1 MB pasted into a line", spaced(megabyte));
    std::printf("%s: nothing holds the window for 100 ms\n", still.holds() ? "holds" : "MISSED");
    return still.holds() ? 0 : 1;
}

} // namespace
} // namespace orlenta::shell

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    orlenta::shell::Theme::apply(orlenta::shell::Appearance::Light);
    return orlenta::shell::run();
}
