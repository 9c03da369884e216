#include "shell/menus/MenuBar.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include "shell/editor/DirectionActions.h"
#include "shell/menus/AppActions.h"
#include "shell/menus/ProjectActions.h"
#include "shell/menus/ShortcutsDialog.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

void addHelpMenu(QMenuBar &bar, const AppActions &app) {
    QMenu *help = bar.addMenu(u"&Help"_s);
    help->addAction(app.keyboardShortcuts);
    help->addSeparator();
    help->addAction(app.about);
    QObject::connect(app.keyboardShortcuts, &QAction::triggered, &bar, [&bar] { ShortcutsDialog::showFor(bar); });
}

void addViewMenu(QMenuBar &bar, const AppActions &app, QAction *toggleInspector) {
    QMenu *view = bar.addMenu(u"&View"_s);
    if (toggleInspector != nullptr) {
        view->addAction(toggleInspector);
        view->addSeparator();
    }
    view->addActions({app.zoomIn, app.zoomOut, app.actualSize});
}

} // namespace

void fillMenuBar(QMenuBar &bar, const AppActions &app, const ProjectActions &project,
                 const DirectionActions &direction) {
    QMenu *file = bar.addMenu(u"&File"_s);
    file->addActions({app.newProject, app.openProject, app.openSample});
    file->addSeparator();
    file->addActions({project.closeWindow, project.save});
    file->addSeparator();
    file->addAction(project.exportAudio);
    file->addSeparator();
    file->addActions({project.account, app.settings});
    file->addSeparator();
    file->addAction(app.quit);

    QMenu *edit = bar.addMenu(u"&Edit"_s);
    edit->addActions({project.undo, project.redo});
    edit->addSeparator();
    edit->addActions({project.cut, project.copy, project.paste, project.selectAll});

    QMenu *script = bar.addMenu(u"&Script"_s);
    script->addActions({project.chooseVoice, project.generate});
    script->addSeparator();
    script->addActions({project.addLine, project.duplicateLine, project.splitLine, project.deleteLine});
    script->addSeparator();
    script->addActions({project.moveLineUp, project.moveLineDown});
    script->addSeparator();
    script->addAction(project.toggleTagToolbar);

    bar.addMenu(u"&Direction"_s)->addActions(direction.all());

    QMenu *tabs = bar.addMenu(u"&Tabs"_s);
    tabs->addActions({project.newTab, project.closeTab});
    tabs->addSeparator();
    tabs->addActions({project.nextTab, project.previousTab});

    QMenu *playback = bar.addMenu(u"&Playback"_s);
    playback->addActions({project.play, project.playAll});

    addViewMenu(bar, app, project.toggleInspector);
    addHelpMenu(bar, app);
}

void fillMenuBar(QMenuBar &bar, const AppActions &app) {
    QMenu *file = bar.addMenu(u"&File"_s);
    file->addActions({app.newProject, app.openProject, app.openSample});
    file->addSeparator();
    file->addAction(app.settings);
    file->addSeparator();
    file->addAction(app.quit);
    addViewMenu(bar, app, nullptr);
    addHelpMenu(bar, app);
}

} // namespace orlenta::shell
