#include "controller/ProjectSession.h"

#include <utility>

#include "controller/direction/DirectionAudio.h"
#include "controller/document/Notices.h"
#include "controller/generation/TakeStorage.h"
#include "controller/script/LineEditing.h"
#include "controller/takes/AudioInstaller.h"

namespace orlenta::controller {

ProjectSession::ProjectSession(const SharedServices &services, const model::StoredProject &stored, QObject *parent)
    : QObject(parent), m_services(services), m_service(services.defaults, services.credentials), m_controller(stored),
      m_playback(services.sound, services.defaults, services.devices, services.routing),
      m_generator(m_controller, m_service),
      m_recordings(m_controller, {services.sound, services.defaults, services.inputRoutes, services.microphone}) {
    m_controller.lines().setNewLineVoiceProvider([this]() -> std::optional<ServiceVoice> {
        const speech::VoiceSelection &selection = m_service.voiceSelection();
        if (selection.selectedVoiceId().isEmpty())
            return std::nullopt;
        return ServiceVoice{selection.selectedVoiceId(), selection.selectedVoiceName()};
    });
    if (!stored.folder.isEmpty() && isReadOnlyFolder(stored.folder))
        m_controller.notices().post(
            {Notice::Kind::ReadOnlyProject,
             QStringLiteral("This project's folder can't be written to, so changes and new takes can't be saved here. "
                            "To work on the project, copy its folder to another place and open the copy.")});
    // Queued, since a waiting callback may delete this object.
    connect(&m_recordings, &DirectionRecordings::isFinishedChanged, this, &ProjectSession::tellIfSettled,
            Qt::QueuedConnection);
    connect(&m_controller.directionAudio(), &DirectionAudio::isBusyChanged, this, &ProjectSession::tellIfSettled,
            Qt::QueuedConnection);
    connect(&m_controller.audioInstaller(), &AudioInstaller::isBusyChanged, this, &ProjectSession::tellIfSettled,
            Qt::QueuedConnection);
}

ProjectSession::~ProjectSession() = default;

bool ProjectSession::isSettled() const {
    return m_recordings.isFinished() && !m_controller.directionAudio().isBusy() &&
           !m_controller.audioInstaller().isBusy();
}

void ProjectSession::settle(std::function<void()> settled) {
    m_awaitingSettled.push_back(std::move(settled));
    m_recordings.finish();
    QMetaObject::invokeMethod(this, &ProjectSession::tellIfSettled, Qt::QueuedConnection);
}

void ProjectSession::tellIfSettled() {
    if (!isSettled() || m_awaitingSettled.empty())
        return;
    m_recordings.allow();
    for (const auto &settled : std::exchange(m_awaitingSettled, {}))
        settled();
}

} // namespace orlenta::controller
