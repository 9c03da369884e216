#pragma once

#include <functional>
#include <memory>

#include <QtCore/QObject>

#include "audio/playback/PlaybackController.h"
#include "controller/ProjectSession.h"
#include "model/ProjectStore.h"
#include "shell/application/AppContext.h"
#include "speech/account/ElevenLabsService.h"

class QMessageBox;

namespace orlenta::shell {

class ProjectWindow;

/// One open project in its window: the session behind it and whether the window may close. Main thread; the context
/// outlives it.
class ProjectWindowController final : public QObject {
    Q_OBJECT
public:
    enum class CloseOutcome { Proceed, Cancelled };
    using CloseCompletion = std::function<void(CloseOutcome)>;

    ProjectWindowController(AppContext &context, const model::StoredProject &stored, QObject *parent = nullptr);
    ~ProjectWindowController() override;

    [[nodiscard]] controller::ProjectSession &session() { return m_session; }
    [[nodiscard]] controller::ProjectController &controller() { return m_session.controller(); }
    [[nodiscard]] speech::ElevenLabsService &elevenLabsService() { return m_session.service(); }
    [[nodiscard]] audio::PlaybackController &playbackController() { return m_session.playback(); }
    [[nodiscard]] ProjectWindow &window() const { return *m_window; }
    [[nodiscard]] const QString &folder() const { return m_folder; }
    [[nodiscard]] bool closeConfirmationPresented() const { return m_confirmation != nullptr; }

    void showProjectWindow();
    /// Saves the project and brings the title in step; a failure is told in the window. False on a failure.
    bool saveCurrentAndSyncTitle();
    /// Asks whether to save, and saves or discards as told. The window stays open whatever the answer; the completion
    /// tells whether it may go. Must not be called while a confirmation is on screen.
    void presentCloseConfirmation(const CloseCompletion &completion);

Q_SIGNALS:
    /// The window has closed; this object is no longer of use.
    void closed();

private:
    [[nodiscard]] bool windowShouldClose();
    void windowWillClose();
    void closeAfterConfirmation();
    [[nodiscard]] CloseOutcome resolveConfirmation(const QMessageBox &box);

    AppContext &m_context;
    QString m_folder;
    controller::ProjectSession m_session;
    std::unique_ptr<ProjectWindow> m_window;
    QMessageBox *m_confirmation = nullptr;
    bool m_closingAfterConfirmation = false;
    bool m_closingWhenSettled = false;
};

} // namespace orlenta::shell
