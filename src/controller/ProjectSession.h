#pragma once

#include <functional>
#include <vector>

#include <QtCore/QObject>

#include "audio/playback/PlaybackController.h"
#include "controller/direction/DirectionRecordings.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/SharedServices.h"
#include "model/ProjectStore.h"
#include "speech/account/ElevenLabsService.h"

namespace orlenta::controller {

/// One open project without its window: document, speech service, player, generator and recorders. Knows whether audio
/// is still on its way into the project. Main thread; the shared services outlive it.
class ProjectSession final : public QObject {
    Q_OBJECT
public:
    ProjectSession(const SharedServices &services, const model::StoredProject &stored, QObject *parent = nullptr);
    ~ProjectSession() override;

    [[nodiscard]] ProjectController &controller() { return m_controller; }
    [[nodiscard]] speech::ElevenLabsService &service() { return m_service; }
    [[nodiscard]] audio::PlaybackController &playback() { return m_playback; }
    [[nodiscard]] LineGenerator &generator() { return m_generator; }
    [[nodiscard]] DirectionRecordings &recordings() { return m_recordings; }
    [[nodiscard]] const SharedServices &services() const { return m_services; }

    /// No recording is running, and every finished recording, imported file and generated take is on its line. Pending
    /// requests to the speech service don't count: they end with the session.
    [[nodiscard]] bool isSettled() const;
    /// Stops running recordings, prevents new ones, and calls `settled` once isSettled(). Never calls it synchronously.
    void settle(std::function<void()> settled);

private:
    void tellIfSettled();

    SharedServices m_services;
    speech::ElevenLabsService m_service;
    ProjectController m_controller;
    audio::PlaybackController m_playback;
    LineGenerator m_generator;
    DirectionRecordings m_recordings;
    std::vector<std::function<void()>> m_awaitingSettled;
};

} // namespace orlenta::controller
