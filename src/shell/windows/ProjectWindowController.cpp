#include "shell/windows/ProjectWindowController.h"

#include <utility>

#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include "base/LogCategories.h"
#include "controller/script/LineEditing.h"
#include "shell/controls/MessageBox.h"
#include "shell/controls/ShownText.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/windows/ErrorAlerts.h"
#include "shell/windows/ProjectWindow.h"
#include "speech/LocalVoices.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

ProjectWindowController::ProjectWindowController(AppContext &context, const model::StoredProject &stored,
                                                 QObject *parent)
    : QObject(parent), m_context(context), m_folder(stored.folder), m_session(context.services, stored),
      m_window(std::make_unique<ProjectWindow>(context, m_session)) {
    m_window->setCloseGuard([this] { return windowShouldClose(); });
    connect(m_window.get(), &ProjectWindow::saveRequested, this, [this] { saveCurrentAndSyncTitle(); });
    connect(m_window.get(), &ProjectWindow::closed, this, &ProjectWindowController::windowWillClose);
    context.localVoices.attach(m_session.service());
}

ProjectWindowController::~ProjectWindowController() = default;

void ProjectWindowController::showProjectWindow() {
    if (m_window->isMinimized())
        m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    qCInfo(base::log::project).noquote().nospace()
        << "[ProjectWindowController] Project window shown for: " << m_folder << " visible=" << m_window->isVisible()
        << " key=" << m_window->isActiveWindow() << " appWindows=" << QApplication::topLevelWidgets().size();
}

bool ProjectWindowController::saveCurrentAndSyncTitle() {
    const auto saved = m_session.controller().save();
    m_window->syncTitle();
    if (saved)
        return true;
    m_window->alerts().show(
        {AlertSource::Save, saved.error().description(), saved.error().failureReason().value_or(QString()), {}});
    return false;
}

bool ProjectWindowController::windowShouldClose() {
    if (m_closingAfterConfirmation)
        return true;
    if (!m_session.isSettled()) {
        if (!std::exchange(m_closingWhenSettled, true))
            m_session.settle([this] {
                m_closingWhenSettled = false;
                m_window->close();
            });
        return false;
    }
    if (!m_session.controller().hasUnsavedChanges())
        return true;
    if (!closeConfirmationPresented())
        presentCloseConfirmation([this](CloseOutcome outcome) {
            if (outcome == CloseOutcome::Proceed)
                closeAfterConfirmation();
        });
    return false;
}

void ProjectWindowController::presentCloseConfirmation(const CloseCompletion &completion) {
    Q_ASSERT(m_confirmation == nullptr);
    const QString title = QStringLiteral("Save changes to \"%1\" before closing?")
                              .arg(shownName(m_session.controller().project().projectName));
    auto *box = new MessageBox(QMessageBox::Warning, m_window.get());
    box->setMessage(title, u"Your changes will be lost if you don't save them."_s);
    box->addButton(u"Save"_s, QMessageBox::AcceptRole)->setToolTip(u"Save the project, then close it"_s);
    box->addButton(u"Don't Save"_s, QMessageBox::DestructiveRole)->setToolTip(u"Close without saving the changes"_s);
    QPushButton *cancel = box->addButton(u"Cancel"_s, QMessageBox::RejectRole);
    cancel->setToolTip(u"Keep the project open"_s);
    box->setDefaultButton(qobject_cast<QPushButton *>(box->buttons().constFirst()));
    box->setEscapeButton(cancel);
    m_confirmation = box;
    connect(box, &QMessageBox::finished, this, [this, box, completion] {
        m_confirmation = nullptr;
        completion(resolveConfirmation(*box));
    });
    box->open();
}

ProjectWindowController::CloseOutcome ProjectWindowController::resolveConfirmation(const QMessageBox &box) {
    switch (box.clickedButton() == nullptr ? QMessageBox::RejectRole : box.buttonRole(box.clickedButton())) {
    case QMessageBox::AcceptRole:
        return saveCurrentAndSyncTitle() ? CloseOutcome::Proceed : CloseOutcome::Cancelled;
    case QMessageBox::DestructiveRole:
        m_session.controller().discardChanges();
        return CloseOutcome::Proceed;
    default:
        m_window->syncTitle();
        return CloseOutcome::Cancelled;
    }
}

void ProjectWindowController::closeAfterConfirmation() {
    m_closingAfterConfirmation = true;
    m_window->close();
    m_closingAfterConfirmation = false;
}

void ProjectWindowController::windowWillClose() {
    m_session.playback().stop(audio::PlayheadReset::Reset);
    Q_EMIT closed();
}

} // namespace orlenta::shell
