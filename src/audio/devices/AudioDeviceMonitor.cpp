#include "audio/devices/AudioDeviceMonitor.h"

#include <algorithm>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/SoundServer.h"
#include "base/UserDefaults.h"

namespace orlenta::audio {

namespace {

bool listsUID(const QList<AudioDeviceInfo> &devices, const QString &uid) {
    return std::any_of(devices.cbegin(), devices.cend(), [&](const AudioDeviceInfo &each) { return each.uid == uid; });
}

} // namespace

AudioDeviceMonitor::AudioDeviceMonitor(const SoundServer &server, const base::UserDefaults &defaults, QObject *parent)
    : QObject(parent), m_server(server), m_defaults(defaults), m_enumerator(server) {
    m_debounce.setSingleShot(true);
    m_debounce.setInterval(debounce);
    connect(&m_debounce, &QTimer::timeout, this, [this] { refresh(QStringLiteral("Core Audio device list changed")); });
    refresh(QStringLiteral("AudioDeviceMonitor.init"));
    connect(&server, &SoundServer::devicesChanged, this, [this] {
        AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor device list change fired"));
        m_debounce.start();
    });
    AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor installed listener"));
}

AudioDeviceMonitor::~AudioDeviceMonitor() {
    AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor removed listener"));
}

bool AudioDeviceMonitor::isInputAvailable(const QString &uid) const {
    return listsUID(m_inputDevices, uid);
}

bool AudioDeviceMonitor::isOutputAvailable(const QString &uid) const {
    return listsUID(m_outputDevices, uid);
}

std::optional<std::uint32_t> AudioDeviceMonitor::deviceID(const QString &uid) const {
    const auto joined = m_inputDevices + m_outputDevices;
    const auto cached = std::find_if(joined.cbegin(), joined.cend(), [&](const auto &each) { return each.uid == uid; });
    if (cached != joined.cend()) {
        if (m_enumerator.isDeviceAlive(cached->deviceID))
            return cached->deviceID;
        AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor cached deviceID was not alive; uid=%1, deviceID=%2")
                                  .arg(uid)
                                  .arg(cached->deviceID));
    }
    const std::optional<std::uint32_t> fresh = m_enumerator.deviceID(uid);
    if (!fresh || m_enumerator.isDeviceAlive(*fresh))
        return fresh;
    AudioDebugLogger::log(
        QStringLiteral("AudioDeviceMonitor fresh deviceID was not alive; uid=%1, deviceID=%2").arg(uid).arg(*fresh));
    return {};
}

void AudioDeviceMonitor::refresh(const QString &reason) {
    AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor refresh started reason=%1").arg(reason));
    const auto inputs = m_enumerator.getAudioDevices(DeviceDirection::Input);
    const auto outputs = m_enumerator.getAudioDevices(DeviceDirection::Output);
    const bool inputsDiffer = std::exchange(m_inputDevices, inputs) != inputs;
    const bool outputsDiffer = std::exchange(m_outputDevices, outputs) != outputs;
    if (inputsDiffer)
        Q_EMIT inputDevicesChanged();
    if (outputsDiffer)
        Q_EMIT outputDevicesChanged();
    refreshSelectedInputAvailability(reason);
    refreshSelectedOutputAvailability(reason);
    Q_EMIT refreshed(reason);
    AudioDebugLogger::log(QStringLiteral("AudioDeviceMonitor refresh complete: inputs=%1, outputs=%2")
                              .arg(m_inputDevices.size())
                              .arg(m_outputDevices.size()));
}

void AudioDeviceMonitor::refreshSelectedInputAvailability(const QString &reason) {
    const QString uid = m_defaults.inputDeviceUID();
    update(m_lastInput, uid, uid.isEmpty() || isInputAvailable(uid), reason,
           {QStringLiteral("AudioDeviceMonitor selected input became available uid=%1"),
            QStringLiteral("AudioDeviceMonitor selected input became unavailable uid=%1")});
}

void AudioDeviceMonitor::refreshSelectedOutputAvailability(const QString &reason) {
    const QString uid = m_defaults.outputDeviceUID();
    update(m_lastOutput, uid, uid.isEmpty() || isOutputAvailable(uid), reason,
           {QStringLiteral("AudioDeviceMonitor selected output became available uid=%1"),
            QStringLiteral("AudioDeviceMonitor selected output became unavailable uid=%1")});
}

void AudioDeviceMonitor::update(Availability &last, const QString &uid, bool isAvailable, const QString &reason,
                                const ChangeLines &lines) const {
    // Until the server has listed its devices, we don't know whether this one is available.
    if (!last.isAvailable && m_server.state() != SoundServer::State::Ready)
        return;
    if (!uid.isEmpty() && last.uid == uid && last.isAvailable && *last.isAvailable != isAvailable)
        AudioDebugLogger::log((isAvailable ? lines.becameAvailable : lines.becameUnavailable).arg(uid) + u' ' + reason);
    last = {uid, isAvailable};
}

} // namespace orlenta::audio
