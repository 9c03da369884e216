// The cost of a tab of ten thousand lines in the script list, compared with the plain way: one row widget per line in a
// scroll area. Run it on a real or virtual X display; it prints wall-clock time and resident memory of this process.
#include <algorithm>
#include <cstdio>
#include <vector>

#include <malloc.h>
#include <unistd.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/Selection.h"
#include "shell/editor/list/RowDensities.h"
#include "shell/editor/list/ScriptLines.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/list/TakeTimeScale.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/ScriptCommands.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "shell/windows/ProjectWindow.h"

namespace orlenta::shell {
namespace {

constexpr int lineCount = 10000;
constexpr QSize windowSize(1000, 700);

model::Project longProject() {
    model::Project project = model::Project::makeNew(QStringLiteral("Long"), base::Timestamp{});
    project.voices.append({model::VoiceId::create(), QStringLiteral("voice"), QStringLiteral("Narrator"),
                           QStringLiteral("Narrator"), QStringLiteral("#3FA7D6")});
    const QString words =
        QStringLiteral("The harbour lights went out one by one, and nobody on the quay said a word. ");
    for (int index = 0; index < lineCount; ++index) {
        model::ProjectLine line = model::ProjectLine::makeNew();
        line.text = words.repeated(1 + index % 4).left(20 + (index * 37) % 280);
        line.voiceId = project.voices.first().id;
        // Some lines have voice direction or notes, so their rows show more.
        if (index % 3 == 0)
            line.settings->directionMode = model::DirectionMode::Voice;
        if (index % 5 == 0)
            line.notes = QStringLiteral("Quieter than the line before.");
        project.appendLine(line);
    }
    return project;
}

double residentMegabytes() {
    ::malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0.0;
    const double pages = file.readAll().split(' ').at(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

struct Cost {
    double openMilliseconds = 0.0;
    double megabytes = 0.0;
    double medianFrame = 0.0;
    double worstFrame = 0.0;
    double jumpFrame = 0.0;
};

double milliseconds(const QElapsedTimer &timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double frame(QAbstractScrollArea &area, int value) {
    QElapsedTimer timer;
    timer.start();
    area.verticalScrollBar()->setValue(value);
    area.viewport()->repaint();
    QCoreApplication::processEvents();
    return milliseconds(timer);
}

void scroll(QAbstractScrollArea &area, Cost &cost) {
    std::vector<double> frames;
    for (int step = 0; step < 300; ++step)
        frames.push_back(frame(area, area.verticalScrollBar()->value() + 60));
    std::sort(frames.begin(), frames.end());
    cost.medianFrame = frames[frames.size() / 2];
    cost.worstFrame = frames.back();
    const int end = area.verticalScrollBar()->maximum();
    for (int jump = 1; jump <= 40 && end > 0; ++jump)
        cost.jumpFrame = std::max(cost.jumpFrame, frame(area, static_cast<int>((qint64(jump) * 7919 * 131) % end)));
}

Cost measureList(controller::ProjectSession &session) {
    Cost cost;
    const double before = residentMegabytes();
    QElapsedTimer timer;
    timer.start();
    ScriptEditor editor(session);
    editor.resize(windowSize);
    editor.show();
    editor.list().viewport()->repaint();
    QCoreApplication::processEvents();
    cost.openMilliseconds = milliseconds(timer);
    cost.megabytes = residentMegabytes() - before;
    scroll(editor.list(), cost);
    return cost;
}

Cost measurePeer(controller::ProjectSession &session) {
    Cost cost;
    const double before = residentMegabytes();
    QElapsedTimer timer;
    timer.start();
    const RowDensities densities(session.controller(), session.services().defaults);
    TakeTimeScale timeScale;
    const ScriptLines source(session, densities, timeScale);
    QScrollArea area;
    auto *column = new QWidget;
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const int width = windowSize.width() - 20;
    const model::LineIdList &ids = source.lineIds();
    for (qsizetype index = 0; index < ids.size(); ++index) {
        auto *row = new LineRow([](QWidget *parent) { return new ScriptTextField(parent); }, column);
        row->setContent(source.content(ids.at(index), index));
        row->setFixedHeight(row->heightForWidth(width));
        layout->addWidget(row);
    }
    area.setWidget(column);
    area.setWidgetResizable(true);
    area.resize(windowSize);
    area.show();
    area.viewport()->repaint();
    QCoreApplication::processEvents();
    cost.openMilliseconds = milliseconds(timer);
    cost.megabytes = residentMegabytes() - before;
    scroll(area, cost);
    return cost;
}

/// The middle and the worst time from a key typed into a line until the whole window has been drawn, in milliseconds.
std::pair<double, double> measureTyping(testing::ShellSession &shell, controller::ProjectSession &session) {
    ProjectWindow window(shell.context, session);
    window.resize(windowSize);
    window.show();
    session.controller().selection().selectAll();
    ScriptEditor &editor = window.editor();
    const model::LineId id = session.controller().scriptLineIds().first();
    editor.commands().edit(id);
    session.controller().selection().selectAll();
    editor.list().ensureVisible(id);
    QCoreApplication::processEvents();
    ScriptTextField &text = editor.list().rowFor(id)->textField();
    std::vector<double> keys;
    for (int press = 0; press < 300; ++press) {
        QElapsedTimer timer;
        timer.start();
        text.insertPlainText(QStringLiteral("x"));
        QCoreApplication::processEvents();
        keys.push_back(milliseconds(timer));
    }
    std::sort(keys.begin(), keys.end());
    return {keys[keys.size() / 2], keys.back()};
}

void print(const char *name, const Cost &cost) {
    std::printf("%-28s %10.1f %10.1f %14.2f %13.2f %13.2f\n", name, cost.openMilliseconds, cost.megabytes,
                cost.medianFrame, cost.worstFrame, cost.jumpFrame);
}

int run() {
    testing::ShellSession shell;
    {
        // Loads fonts, style and icons, once per process, so that no measurement includes them.
        measureList(*shell.openOffline(
            shell.store(QStringLiteral("Short"), model::Project::makeNew(QStringLiteral("Short"), base::Timestamp{}))));
    }
    const auto session = shell.openOffline(shell.store(QStringLiteral("Long"), longProject()));
    std::printf("%-28s %10s %10s %14s %13s %13s\n", "10,000 lines", "open ms", "MB", "frame ms, mid", "worst",
                "worst jump");
    const Cost list = measureList(*session);
    print("script list", list);
    print("a widget for each line", measurePeer(*session));
    const auto [key, worstKey] = measureTyping(shell, *session);
    std::printf("%-28s %10.2f ms, worst %.2f\n", "a key, all lines selected", key, worstKey);
    const bool holds = list.openMilliseconds < 100.0 && list.megabytes < 20.0 && list.worstFrame < 16.0 &&
                       list.jumpFrame < 16.0 && key < 4.0;
    std::printf(
        "%s: a script list opens below 100 ms and 20 MB, scrolls below 16 ms a frame, and shows a key below 4 ms\n",
        holds ? "holds" : "MISSED");
    return holds ? 0 : 1;
}

} // namespace
} // namespace orlenta::shell

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    orlenta::shell::Theme::apply(orlenta::shell::Appearance::Light);
    return orlenta::shell::run();
}
