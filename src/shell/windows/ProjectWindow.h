#pragma once

#include <functional>

#include <QtWidgets/QMainWindow>

#include "shell/application/AppContext.h"
#include "shell/windows/ErrorAlerts.h"

class QSplitter;

namespace orlenta::audio {
class PlaybackController;
}

namespace orlenta::controller {
class ElevenLabsService;
class ProjectSession;
} // namespace orlenta::controller
namespace orlenta::speech {}

namespace orlenta::shell {

class AccountDialog;
class ExportFlow;
class Inspector;
class ProjectActions;
class ProjectToolbar;
class ScriptEditor;

/// The window of an open project: toolbar, script, inspector and alerts. Main thread; the context and the session
/// outlive it.
class ProjectWindow final : public QMainWindow {
    Q_OBJECT
public:
    /// Called before the window closes. False keeps it open.
    using CloseGuard = std::function<bool()>;

    ProjectWindow(AppContext &context, controller::ProjectSession &session);

    void setCloseGuard(const CloseGuard &guard) { m_closeGuard = guard; }
    [[nodiscard]] ProjectToolbar &toolbar() const { return *m_toolbar; }
    [[nodiscard]] Inspector &inspector() const { return *m_inspector; }
    [[nodiscard]] ScriptEditor &editor() const { return *m_editor; }
    [[nodiscard]] ErrorAlerts &alerts() const { return *m_alerts; }
    [[nodiscard]] ProjectActions &actions() const { return *m_actions; }
    [[nodiscard]] ExportFlow &exportFlow() const { return *m_export; }
    /// Updates the title and the edited mark from the project.
    void syncTitle();
    /// Opens and returns the account panel of this window's service.
    AccountDialog *showAccount();

Q_SIGNALS:
    void saveRequested();
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void connectCommands();
    void connectAlerts();
    [[nodiscard]] QList<ErrorAlerts::Action> waysToConnect();
    void toggleInspector();
    void fitMinimumSize();

    AppContext &m_context;
    controller::ProjectSession &m_session;
    CloseGuard m_closeGuard;
    ProjectActions *m_actions;
    ErrorAlerts *m_alerts;
    ExportFlow *m_export;
    ProjectToolbar *m_toolbar;
    ScriptEditor *m_editor;
    Inspector *m_inspector;
    QSplitter *m_splitter;
};

} // namespace orlenta::shell
