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

/// An open project: its session, its window, and whether the window may close. Main thread; the context outlives it.
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
    /// Saves the project and updates the title. On failure, shows an alert and returns false.
    bool saveCurrentAndSyncTitle();
    /// Asks whether to save, then saves or discards the changes. Doesn't close the window; the completion says whether
    /// it may close. Must not be called while a confirmation is on screen.
    void presentCloseConfirmation(const CloseCompletion &completion);

Q_SIGNALS:
    /// The window has closed; delete this object.
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
