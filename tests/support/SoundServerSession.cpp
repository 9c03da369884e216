#include "support/SoundServerSession.h"

#include <chrono>
#include <csignal>
#include <cstring>

#include <sys/prctl.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>

namespace orlenta::testing {

namespace {

constexpr auto startDeadline = std::chrono::seconds(20);

void writeFile(const QString &path, const QByteArray &text) {
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    if (file.open(QFile::WriteOnly))
        file.write(text);
}

} // namespace

SoundServerSession::SoundServerSession(Kind kind) : m_kind(kind) {
    restart();
}

void SoundServerSession::restart() {
    QDir().mkpath(m_folder.filePath(QStringLiteral("home")));
    switch (m_kind) {
    case Kind::PulseAudio:
        startPulseAudio();
        break;
    case Kind::PipeWire:
        startPipeWire();
        break;
    }
}

SoundServerSession::~SoundServerSession() {
    kill();
}

QString SoundServerSession::address() const {
    return QStringLiteral("unix:") +
           m_folder.filePath(m_kind == Kind::PulseAudio ? QStringLiteral("native") : QStringLiteral("pulse/native"));
}

QProcessEnvironment SoundServerSession::environment() const {
    QProcessEnvironment values;
    values.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    values.insert(QStringLiteral("HOME"), m_folder.filePath(QStringLiteral("home")));
    values.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    values.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    values.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
    values.insert(QStringLiteral("XDG_STATE_HOME"), m_folder.filePath(QStringLiteral("state")));
    values.insert(QStringLiteral("XDG_CACHE_HOME"), m_folder.filePath(QStringLiteral("cache")));
    values.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent"));
    values.insert(QStringLiteral("PULSE_SERVER"), address());
    values.insert(QStringLiteral("PULSE_COOKIE"), m_folder.filePath(QStringLiteral("cookie")));
    if (m_kind == Kind::PulseAudio) {
        values.insert(QStringLiteral("PULSE_RUNTIME_PATH"), m_folder.filePath(QStringLiteral("pulse")));
        values.insert(QStringLiteral("PULSE_STATE_PATH"), m_folder.filePath(QStringLiteral("state")));
    }
    return values;
}

void SoundServerSession::prepare(QProcess &process) const {
    process.setProcessEnvironment(environment());
    // End with the test, even if it crashes.
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

QProcess &SoundServerSession::start(const QString &program, const QStringList &arguments) {
    auto process = std::make_unique<QProcess>();
    prepare(*process);
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->setStandardOutputFile(m_folder.filePath(program + QStringLiteral(".log")));
    process->start(program, arguments);
    process->waitForStarted();
    m_processes.push_back(std::move(process));
    return *m_processes.back();
}

bool SoundServerSession::waitFor(const std::function<bool()> &isSo) {
    QElapsedTimer waited;
    waited.start();
    while (!isSo()) {
        if (std::chrono::milliseconds(waited.elapsed()) > startDeadline) {
            m_failure = QStringLiteral("the sound server did not start; is it installed?");
            return false;
        }
    }
    return true;
}

void SoundServerSession::startPulseAudio() {
    const QString script = m_folder.filePath(QStringLiteral("session.pa"));
    // Without norewinds an idle null sink renders up to two seconds ahead, so sound starts at a random time.
    writeFile(script, QStringLiteral(R"(.fail
load-module module-native-protocol-unix socket=%1/native auth-anonymous=1
load-module module-null-sink sink_name=spk_a rate=48000 format=float32le channels=2 norewinds=1 sink_properties=device.description=Output-spk_a
load-module module-null-sink sink_name=spk_b rate=44100 format=float32le channels=2 norewinds=1 sink_properties=device.description=Output-spk_b
load-module module-null-sink sink_name=mic_feed rate=44100 format=s16le channels=1 norewinds=1 sink_properties=device.description=MicFeed
load-module module-remap-source source_name=mic_a master=mic_feed.monitor source_properties=device.description=MicA
set-default-sink spk_a
set-default-source mic_a
)")
                          .arg(m_folder.path())
                          .toUtf8());
    start(QStringLiteral("pulseaudio"),
          {QStringLiteral("-n"), QStringLiteral("-F"), script, QStringLiteral("--daemonize=no"),
           QStringLiteral("--use-pid-file=no"), QStringLiteral("--exit-idle-time=-1"),
           QStringLiteral("--disable-shm=yes"), QStringLiteral("--realtime=no"), QStringLiteral("--high-priority=no"),
           QStringLiteral("--log-target=stderr"), QStringLiteral("--log-level=notice")});
    waitFor([this] { return pactl({QStringLiteral("get-default-sink")}) == QStringLiteral("spk_a"); });
}

void SoundServerSession::startPipeWire() {
    const QString config = m_folder.filePath(QStringLiteral("config/"));
    // Hide the machine's real devices. WirePlumber 0.4 is configured in Lua, 0.5 with .conf files.
    writeFile(config + QStringLiteral("wireplumber/main.lua.d/51-session.lua"),
              "alsa_monitor.enabled = false\nv4l2_monitor.enabled = false\nlibcamera_monitor.enabled = false\n"
              "default_access.properties[\"enable-flatpak-portal\"] = false\n"
              "alsa_monitor.properties[\"alsa.reserve\"] = false\n");
    writeFile(config + QStringLiteral("wireplumber/bluetooth.lua.d/51-session.lua"), "bluez_monitor.enabled = false\n");
    writeFile(config + QStringLiteral("wireplumber/wireplumber.conf.d/51-session.conf"),
              "wireplumber.profiles = { main = { hardware.audio = disabled hardware.bluetooth = disabled "
              "hardware.video-capture = disabled support.portal-permissionstore = disabled "
              "support.reserve-device = disabled support.logind = disabled } }\n");
    writeFile(config + QStringLiteral("pipewire/pipewire.conf.d/session.conf"),
              "context.properties = { default.clock.allowed-rates = [ 44100 48000 ] }\n");
    start(QStringLiteral("pipewire"), {});
    if (!waitFor([this] { return QFile::exists(m_folder.filePath(QStringLiteral("pipewire-0"))); }))
        return;
    start(QStringLiteral("wireplumber"), {});
    start(QStringLiteral("pipewire-pulse"), {});
    if (!waitFor([this] { return !pactl({QStringLiteral("info")}).isEmpty(); }))
        return;
    addOutput(QStringLiteral("spk_a"));
    addOutput(QStringLiteral("spk_b"), 44100);
    pactl({QStringLiteral("load-module"), QStringLiteral("module-null-sink"), QStringLiteral("sink_name=mic_feed"),
           QStringLiteral("rate=44100"), QStringLiteral("channels=1"), QStringLiteral("channel_map=mono")});
    pactl({QStringLiteral("load-module"), QStringLiteral("module-remap-source"), QStringLiteral("source_name=mic_a"),
           QStringLiteral("master=mic_feed.monitor"), QStringLiteral("channels=1"), QStringLiteral("channel_map=mono"),
           QStringLiteral("master_channel_map=mono"), QStringLiteral("rate=44100"), QStringLiteral("remix=no")});
    // The session manager takes a moment to adopt new nodes and forgets a default that was set earlier.
    waitFor([this] {
        pactl({QStringLiteral("set-default-sink"), QStringLiteral("spk_a")});
        pactl({QStringLiteral("set-default-source"), QStringLiteral("mic_a")});
        return pactl({QStringLiteral("get-default-sink")}) == QStringLiteral("spk_a") &&
               pactl({QStringLiteral("get-default-source")}) == QStringLiteral("mic_a");
    });
}

QString SoundServerSession::addOutput(const QString &name, int rate) {
    QStringList arguments{
        QStringLiteral("load-module"),       QStringLiteral("module-null-sink"),
        QStringLiteral("sink_name=") + name, QStringLiteral("rate=%1").arg(rate),
        QStringLiteral("channels=2"),        QStringLiteral("sink_properties=device.description=Output-") + name};
    if (m_kind == Kind::PulseAudio)
        arguments << QStringLiteral("norewinds=1") << QStringLiteral("format=float32le");
    return pactl(arguments);
}

void SoundServerSession::remove(const QString &module) {
    pactl({QStringLiteral("unload-module"), module});
}

QString SoundServerSession::pactl(const QStringList &arguments) {
    return run(QStringLiteral("pactl"), arguments);
}

QString SoundServerSession::run(const QString &program, const QStringList &arguments) {
    QProcess process;
    prepare(process);
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

SoundServerSession::Recording SoundServerSession::record(const QString &output, int rate) {
    auto process = std::make_unique<QProcess>();
    prepare(*process);
    process->start(QStringLiteral("parec"),
                   {QStringLiteral("-d"), output + QStringLiteral(".monitor"), QStringLiteral("--rate=%1").arg(rate),
                    QStringLiteral("--channels=2"), QStringLiteral("--format=float32le"), QStringLiteral("--raw"),
                    QStringLiteral("--latency-msec=20")});
    process->waitForReadyRead();
    return Recording(std::move(process));
}

SoundServerSession::Recording::Recording(std::unique_ptr<QProcess> process) : m_process(std::move(process)) {}

SoundServerSession::Recording::~Recording() {
    if (m_process)
        m_process->kill();
}

std::vector<float> SoundServerSession::Recording::stop() {
    m_process->terminate();
    m_process->waitForFinished();
    const QByteArray bytes = m_process->readAllStandardOutput();
    m_process.reset();
    std::vector<float> samples(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

void SoundServerSession::suspend() {
    signalAll(SIGSTOP);
}

void SoundServerSession::resume() {
    signalAll(SIGCONT);
}

void SoundServerSession::signalAll(int signal) {
    for (const auto &process : m_processes)
        ::kill(static_cast<pid_t>(process->processId()), signal);
}

void SoundServerSession::kill() {
    // Later processes depend on earlier ones.
    for (auto process = m_processes.rbegin(); process != m_processes.rend(); ++process) {
        (*process)->kill();
        (*process)->waitForFinished();
    }
    m_processes.clear();
}

} // namespace orlenta::testing
