#pragma once

#include <QtWidgets/QWidget>

class QComboBox;
class QPushButton;
class QToolButton;

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::controller {
enum class MultiLineOutput;
} // namespace orlenta::controller

namespace orlenta::speech {
class ElevenLabsService;
class LocalVoices;
} // namespace orlenta::speech

namespace orlenta::shell {

class ProjectActions;

/// The toolbar at the top of a project window: save, undo and redo, account, and export with its output mode.
class ProjectToolbar final : public QWidget {
    Q_OBJECT
public:
    struct Parts {
        const speech::ElevenLabsService &service;
        const speech::LocalVoices &localVoices;
        base::UserDefaults &defaults;
        const ProjectActions &actions;
    };

    explicit ProjectToolbar(const Parts &parts, QWidget *parent = nullptr);

    [[nodiscard]] controller::MultiLineOutput outputMode() const;
    [[nodiscard]] QToolButton *exportButton() const { return m_export; }
    [[nodiscard]] QToolButton *undoButton() const { return m_undo; }
    [[nodiscard]] QToolButton *redoButton() const { return m_redo; }
    [[nodiscard]] QComboBox *outputModePicker() const { return m_outputMode; }
    [[nodiscard]] QPushButton *accountButton() const { return m_account; }

protected:
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QToolButton *actionButton(QAction *action);
    void fitIcons();

    Parts m_parts;
    QToolButton *m_save;
    QToolButton *m_undo;
    QToolButton *m_redo;
    QToolButton *m_export;
    QToolButton *m_inspector;
    QComboBox *m_outputMode;
    QPushButton *m_account;
};

} // namespace orlenta::shell
