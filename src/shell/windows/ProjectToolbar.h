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
class ScriptToolbar;

/// The toolbar at the top of a project window: save, undo and redo, the script's buttons, account, and export with its
/// output mode. In a narrow window, some buttons show their icons only.
class ProjectToolbar final : public QWidget {
    Q_OBJECT
public:
    struct Parts {
        const speech::ElevenLabsService &service;
        const speech::LocalVoices &localVoices;
        base::UserDefaults &defaults;
        const ProjectActions &actions;
        /// Becomes a child of the toolbar.
        ScriptToolbar *script = nullptr;
    };

    explicit ProjectToolbar(const Parts &parts, QWidget *parent = nullptr);

    [[nodiscard]] controller::MultiLineOutput outputMode() const;
    [[nodiscard]] ScriptToolbar &script() const { return *m_parts.script; }
    [[nodiscard]] QToolButton *exportButton() const { return m_export; }
    [[nodiscard]] QToolButton *undoButton() const { return m_undo; }
    [[nodiscard]] QToolButton *redoButton() const { return m_redo; }
    [[nodiscard]] QComboBox *outputModePicker() const { return m_outputMode; }
    [[nodiscard]] QPushButton *accountButton() const { return m_account; }

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QToolButton *actionButton(QAction *action);
    void applyMeasures();
    void fitWords();

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
