#pragma once

#include <functional>

#include <QtWidgets/QMainWindow>

#include "shell/application/AppContext.h"
#include "shell/windows/ErrorAlerts.h"

class QSplitter;

namespace orlenta::controller {
class ProjectSession;
}

namespace orlenta::shell {

class AccountDialog;
class AreaCycle;
class ExportFlow;
class Inspector;
class NoticeBar;
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
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void connectCommands();
    void connectView();
    void connectAlerts();
    void connectLocalVoices();
    [[nodiscard]] QList<ErrorAlerts::Action> waysToConnect();
    void toggleInspector();
    void fitMinimumSize();

    AppContext &m_context;
    controller::ProjectSession &m_session;
    CloseGuard m_closeGuard;
    ProjectActions *m_actions;
    ErrorAlerts *m_alerts;
    ExportFlow *m_export;
    ScriptEditor *m_editor;
    ProjectToolbar *m_toolbar;
    Inspector *m_inspector;
    NoticeBar *m_serviceNotice;
    QSplitter *m_splitter;
    AreaCycle *m_areas = nullptr;
};

} // namespace orlenta::shell
