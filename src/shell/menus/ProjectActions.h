#pragma once

#include <QtCore/QObject>

class QAction;

namespace orlenta::controller {
class LineGenerator;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::audio {
class PlaybackController;
}

namespace orlenta::controller {
class LineGenerator;
class ProjectController;
} // namespace orlenta::controller

namespace orlenta::shell {

/// The commands of one project window, for its menus and its toolbar alike, with their titles, keys and whether they
/// can be used at the moment. What concerns the window's own parts, playing among it, is the window's to carry out.
/// Main thread; what it acts on outlives it.
class ProjectActions final : public QObject {
    Q_OBJECT
public:
    explicit ProjectActions(controller::ProjectSession &session, QObject *parent = nullptr);

    QAction *closeWindow;
    QAction *save;
    QAction *exportAudio;
    QAction *account;
    QAction *undo;
    QAction *redo;
    QAction *cut;
    QAction *copy;
    QAction *paste;
    QAction *selectAll;
    QAction *chooseVoice;
    QAction *generate;
    QAction *addLine;
    QAction *duplicateLine;
    QAction *splitLine;
    QAction *deleteLine;
    QAction *moveLineUp;
    QAction *moveLineDown;
    QAction *newTab;
    QAction *closeTab;
    QAction *nextTab;
    QAction *previousTab;
    QAction *toggleTagToolbar;
    QAction *play;
    QAction *playAll;
    QAction *toggleInspector;

private:
    void connectEditing();
    void connectLines();
    void connectTabs();
    void deleteSelectedLines();
    void selectEverything();
    void refresh();
    void refreshUndo();
    void refreshTagToolbar();

    controller::ProjectController &m_controller;
    const audio::PlaybackController &m_playback;
    controller::LineGenerator &m_generator;
};

} // namespace orlenta::shell
