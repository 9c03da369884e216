#pragma once

#include <functional>
#include <memory>

#include <QtCore/QObject>

#include "audio/playback/PlaybackController.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "model/ProjectStore.h"
#include "shell/application/AppContext.h"
#include "speech/account/ElevenLabsService.h"

class QMessageBox;

namespace orlenta::shell {

class ProjectWindow;

/// One open project: its document, its service, its player, its generations and its window. It decides whether the
/// window may close. Main thread; the context outlives it.
class ProjectWindowController final : public QObject {
    Q_OBJECT
public:
    enum class CloseOutcome { Proceed, Cancelled };
    using CloseCompletion = std::function<void(CloseOutcome)>;

    ProjectWindowController(AppContext &context, const model::StoredProject &stored, QObject *parent = nullptr);
    ~ProjectWindowController() override;

    [[nodiscard]] controller::ProjectController &controller() { return m_controller; }
    [[nodiscard]] speech::ElevenLabsService &elevenLabsService() { return m_elevenLabsService; }
    [[nodiscard]] audio::PlaybackController &playbackController() { return m_playbackController; }
    [[nodiscard]] controller::LineGenerator &generator() { return m_generator; }
    [[nodiscard]] ProjectWindow &window() const { return *m_window; }
    [[nodiscard]] const QString &folder() const { return m_folder; }
    [[nodiscard]] bool closeConfirmationPresented() const { return m_confirmation != nullptr; }
    /// Whether nothing is still on its way into the project from a microphone or a file.
    [[nodiscard]] bool isSettled() const;
    /// Ends what records and calls `settled` when nothing is on its way any more, so that what is unsaved is known.
    void settle(const std::function<void()> &settled);

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
    speech::ElevenLabsService m_elevenLabsService;
    controller::ProjectController m_controller;
    audio::PlaybackController m_playbackController;
    controller::LineGenerator m_generator;
    std::unique_ptr<ProjectWindow> m_window;
    QMessageBox *m_confirmation = nullptr;
    bool m_closingAfterConfirmation = false;
    bool m_closingWhenSettled = false;
};

} // namespace orlenta::shell
