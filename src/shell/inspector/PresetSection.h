#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

class QAction;
class QComboBox;
class QMenu;
class QLabel;
class QToolButton;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

class InspectedLines;

/// Applies, saves and deletes the project's presets for the inspected lines.
class PresetSection final : public QWidget {
    Q_OBJECT
public:
    PresetSection(controller::ProjectController &controller, const speech::ElevenLabsService &service,
                  InspectedLines &lines, QWidget *parent = nullptr);

    [[nodiscard]] QComboBox *picker() const { return m_picker; }
    /// With Save, Save As and Delete.
    [[nodiscard]] QMenu *menu() const { return m_menu; }
    /// Opens the menu.
    [[nodiscard]] QToolButton *menuButton() const { return m_menuButton; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void reload();
    void showState();
    void apply(int row);
    void save();
    void saveAs();
    void remove();
    void makeMenu();
    void showSaved();
    void applyMeasures();

    controller::ProjectController &m_controller;
    const speech::ElevenLabsService &m_service;
    InspectedLines &m_lines;
    QComboBox *m_picker;
    QToolButton *m_menuButton;
    QMenu *m_menu;
    QAction *m_save;
    QAction *m_saveAs;
    QAction *m_delete;
    QLabel *m_notice;
    QTimer m_savedFeedback;
};

} // namespace orlenta::shell
