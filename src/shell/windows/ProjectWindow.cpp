#include "shell/windows/ProjectWindow.h"

#include <algorithm>

#include <QtGui/QAction>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include "audio/playback/PlaybackController.h"
#include "base/UserDefaults.h"
#include "controller/document/Notices.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "shell/account/AccountDialog.h"
#include "shell/application/AppCommands.h"
#include "shell/controls/Separator.h"
#include "shell/controls/ShownText.h"
#include "shell/editor/DirectionActions.h"
#include "shell/editor/list/RowDensities.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/list/TakeTimeScale.h"
#include "shell/editor/NoticeBar.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptToolbar.h"
#include "shell/inspector/Inspector.h"
#include "shell/menus/AppActions.h"
#include "shell/menus/MenuBar.h"
#include "shell/menus/ProjectActions.h"
#include "shell/windows/AreaCycle.h"
#include "shell/windows/ErrorAlerts.h"
#include "shell/windows/ExportFlow.h"
#include "shell/windows/ProjectToolbar.h"
#include "shell/windows/StatusLine.h"
#include "speech/LocalVoices.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr QSize contentSize(1000, 700);
constexpr QSize smallestSize(600, 400);

} // namespace

ProjectWindow::ProjectWindow(AppContext &context, controller::ProjectSession &session)
    : m_context(context), m_session(session), m_actions(new ProjectActions(session, this)),
      m_alerts(new ErrorAlerts(*this)), m_export(new ExportFlow(session, *this)),
      m_editor(new ScriptEditor(session, this)),
      m_toolbar(new ProjectToolbar({session.service(), context.localVoices, context.services.defaults, *m_actions,
                                    new ScriptToolbar(session, m_editor->commands())})),
      m_inspector(new Inspector(session.controller(), session.service())), m_serviceNotice(new NoticeBar),
      m_splitter(new QSplitter(Qt::Horizontal)) {
    fillMenuBar(*menuBar(), *new AppActions(context.commands, this), *m_actions, m_editor->directionActions());
    layOut();
    connectCommands();
    connectView();
    connectAlerts();
    connectLocalVoices();
    syncTitle();
    resize(contentSize);
    fitMinimumSize();
    m_editor->list().setFocus();
}

void ProjectWindow::layOut() {
    m_splitter->addWidget(m_editor);
    m_splitter->addWidget(m_inspector);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    const int inspectorWidth = std::max(contentSize.width() * 3 / 10, m_inspector->minimumWidth());
    m_splitter->setSizes({contentSize.width() - inspectorWidth, inspectorWidth});

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_toolbar);
    column->addWidget(new Separator(Qt::Horizontal));
    column->addWidget(m_splitter, 1);
    column->addWidget(m_serviceNotice);
    column->addWidget(new Separator(Qt::Horizontal));
    auto *status = new StatusLine(m_session, *m_editor);
    connect(status, &StatusLine::lineRequested, m_editor, &ScriptEditor::showLine);
    column->addWidget(status);
    m_areas =
        new AreaCycle(QList<QWidget *>{m_toolbar} + m_editor->areas() + QList<QWidget *>{m_inspector, status}, this);
    setCentralWidget(content);
}

void ProjectWindow::connectCommands() {
    m_actions->onTriggered(CommandId::CloseWindow, [this] { close(); });
    m_actions->onTriggered(CommandId::SaveProject, [this] { Q_EMIT saveRequested(); });
    m_actions->onTriggered(CommandId::ExportAudio, [this] { m_export->exportSelectedAudio(m_toolbar->outputMode()); });
    m_actions->onTriggered(CommandId::Account, [this] { showAccount(); });
    ScriptCommands &commands = m_editor->commands();
    m_actions->onTriggered(CommandId::Play, [&commands] { commands.togglePlayback(); });
    m_actions->onTriggered(CommandId::PlayAll, [&commands] { commands.playWholeTab(); });
    m_actions->onTriggered(CommandId::ChooseVoice, [this] {
        if (!m_inspector->isVisible())
            toggleInspector();
        m_inspector->focusVoiceSearch();
    });
    m_actions->onTriggered(CommandId::ToggleInspector, [this] { toggleInspector(); });
    m_actions->onTriggered(CommandId::NextArea, [this] { m_areas->step(true); });
    m_actions->onTriggered(CommandId::PreviousArea, [this] { m_areas->step(false); });
    connect(m_editor, &ScriptEditor::microphoneSettingsWanted, &m_context.commands,
            &AppCommands::openMicrophoneSettings);
    connect(m_inspector, &Inspector::linesRequested, &m_editor->list(), [this] { m_editor->list().setFocus(); });
    connect(m_inspector, &Inspector::accountRequested, this, &ProjectWindow::showAccount);
    connect(m_inspector, &Inspector::localVoicesRequested, &m_context.localVoices, &speech::LocalVoices::switchOn);
    controller::onAnyChange<controller::TitleChanged, controller::UnsavedChangesChanged>(m_session.controller(), this,
                                                                                         [this] { syncTitle(); });
}

void ProjectWindow::connectView() {
    QAction *compact = (*m_actions)[CommandId::CompactRows];
    RowDensities &densities = m_editor->densities();
    const auto showDensity = [compact, &densities] { compact->setChecked(densities.current() == RowDensity::Compact); };
    compact->setCheckable(true);
    connect(&densities, &RowDensities::currentChanged, compact, showDensity);
    m_actions->onTriggered(CommandId::CompactRows, [&densities] { densities.toggle(); });
    showDensity();

    QAction *sameScale = (*m_actions)[CommandId::SameTimeScale];
    sameScale->setCheckable(true);
    sameScale->setChecked(m_context.services.defaults.sameTimeScale());
    m_editor->timeScale().setShared(sameScale->isChecked());
    connect(sameScale, &QAction::toggled, this, [this](bool isShared) {
        m_context.services.defaults.setSameTimeScale(isShared);
        m_editor->timeScale().setShared(isShared);
    });
}

void ProjectWindow::connectAlerts() {
    controller::LineGenerator &generator = m_session.generator();
    connect(&generator, &controller::LineGenerator::generateErrorChanged, this, [this, &generator] {
        if (const auto message = generator.generateError())
            m_alerts->show({AlertSource::Generation, generator.generateErrorTitle(), *message,
                            [&generator] { generator.dismissError(); },
                            generator.generateErrorRemedy() == controller::LineGenerator::Remedy::Connect
                                ? waysToConnect()
                                : QList<ErrorAlerts::Action>()});
        else
            m_alerts->withdraw(AlertSource::Generation);
    });
    connect(&m_session.playback(), &audio::PlaybackController::playbackFailed, this,
            [this](const QString &description) {
                m_alerts->show({AlertSource::Playback, u"Playback Failed"_s, description, {}});
            });
}

// Voices that end hold up no work, so they are reported beside it.
void ProjectWindow::connectLocalVoices() {
    speech::LocalVoices &localVoices = m_context.localVoices;
    connect(m_serviceNotice, &NoticeBar::dismissed, this, [this] { m_serviceNotice->setMessage({}); });
    connect(&localVoices, &speech::LocalVoices::stateChanged, this, [this, &localVoices] {
        // If the account panel is open, it reports the failure itself.
        const bool isTold = findChild<AccountDialog *>() != nullptr;
        const bool hasFailed = localVoices.state() == speech::LocalVoices::State::Failed && !isTold;
        if (hasFailed)
            m_serviceNotice->setMessage(
                u"Local voices aren't available. "_s + localVoices.failureReason(), NoticeBar::Tone::Warning,
                {{u"Start Again"_s, u"Start the local voices again"_s, [&localVoices] { localVoices.switchOn(); }}});
        else
            m_serviceNotice->setMessage({});
    });
}

QList<ErrorAlerts::Action> ProjectWindow::waysToConnect() {
    QList<ErrorAlerts::Action> ways{
        {u"Open Account Panel"_s, u"Connect an account, or see why it isn't connected"_s, [this] { showAccount(); }}};
    speech::LocalVoices &localVoices = m_context.localVoices;
    using State = speech::LocalVoices::State;
    if (localVoices.state() == State::Off || localVoices.state() == State::Failed)
        ways.append({u"Use Local Voices"_s, u"Speak with voices on this computer; no account needed"_s,
                     [&localVoices] { localVoices.switchOn(); }});
    return ways;
}

void ProjectWindow::syncTitle() {
    // Qt replaces "[*]" with the edited mark; doubling escapes it.
    QString name = shownName(m_session.controller().project().projectName);
    const QString title = name.replace(u"[*]"_s, u"[*][*]"_s) + u"[*]"_s;
    if (windowTitle() != title)
        setWindowTitle(title);
    const QString path = m_session.controller().projectURL().toLocalFile();
    if (windowFilePath() != path)
        setWindowFilePath(path);
    setWindowModified(m_session.controller().hasUnsavedChanges());
}

AccountDialog *ProjectWindow::showAccount() {
    if (auto *open = findChild<AccountDialog *>(); open != nullptr) {
        open->raise();
        open->activateWindow();
        return open;
    }
    auto *dialog = new AccountDialog(m_session.service(), m_context.localVoices, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    return dialog;
}

void ProjectWindow::closeEvent(QCloseEvent *event) {
    if (m_closeGuard && !m_closeGuard()) {
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT closed();
}

void ProjectWindow::keyPressEvent(QKeyEvent *event) {
    // Keys arrive here if neither a control nor an enabled command has used them.
    for (const CommandActions *set : {static_cast<const CommandActions *>(m_actions),
                                      static_cast<const CommandActions *>(&m_editor->directionActions())})
        if (const QString refusal = set->refusalOf(*event); !refusal.isEmpty())
            return m_session.controller().notices().refuse(refusal);
    QMainWindow::keyPressEvent(event);
}

void ProjectWindow::changeEvent(QEvent *event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        QMetaObject::invokeMethod(this, &ProjectWindow::fitMinimumSize, Qt::QueuedConnection);
}

void ProjectWindow::toggleInspector() {
    m_inspector->setVisible(!m_inspector->isVisible());
    (*m_actions)[CommandId::ToggleInspector]->setText(m_inspector->isVisible() ? u"Hide Inspector"_s
                                                                               : u"Show Inspector"_s);
}

void ProjectWindow::fitMinimumSize() {
    // An explicit minimum overrides the layout's, which would cut off a large interface.
    const QSize content = centralWidget()->minimumSizeHint();
    setMinimumSize(smallestSize.expandedTo(content + QSize(0, menuBar()->sizeHint().height())));
}

} // namespace orlenta::shell
