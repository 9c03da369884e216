// Loses the output in mid-playback over and over, and prints how far from the lost place playback went on and how soon.
//
//   device_loss pulseaudio|pipewire [losses]
//
// The file played is a ramp whose every sample tells its own frame, so what the two outputs' monitors heard tells the
// last frame before a loss and the first one after it exactly. Fails when playback doesn't go on, ends wrongly, or
// leaves a hole longer than the limit.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include "audio/devices/SoundServer.h"
#include "audio/playback/RoutedAudioPlayer.h"
#include "support/Ramp.h"
#include "support/SoundServerSession.h"

namespace {

using orlenta::audio::RoutedAudioPlayer;
using orlenta::audio::SoundServer;
using orlenta::testing::Ramp;
using orlenta::testing::SoundServerSession;

constexpr int patience = 10000;
/// The farthest that playback may go on from the place where it was lost.
constexpr double limitMs = 50.0;

struct Loss {
    double placeErrorMs = 0.0;
    double recoveryMs = 0.0;
};

class Rig final {
public:
    explicit Rig(SoundServerSession::Kind kind) : m_session(kind), m_server(m_session.address()) {
        m_player.setCompletionHandler([this] { ++m_completions; });
        m_player.setFailureHandler([this](const auto &) { ++m_failures; });
        m_ramp = Ramp::write(m_folder.filePath(QStringLiteral("ramp.wav")), 5 * Ramp::rate);
    }

    [[nodiscard]] std::optional<Loss> loseOnce() {
        const QString name = QStringLiteral("victim");
        const QString module = m_session.addOutput(name);
        if (!wait([&] { return m_server.devices().findOutput(name) != nullptr; }))
            return {};
        const auto table = m_server.devices();
        if (!m_player.load(m_ramp) || !m_player.setOutputDeviceID(table.findOutput(name)->info.deviceID))
            return {};
        SoundServerSession::Recording lost = m_session.record(name, Ramp::rate);
        SoundServerSession::Recording kept = m_session.record(QStringLiteral("spk_a"), Ramp::rate);
        if (!m_player.play() || !wait([&] { return m_player.currentTime() > 0.25; }))
            return {};
        QElapsedTimer recovery;
        recovery.start();
        m_session.remove(module);
        if (!wait([&] { return !m_player.outputDeviceID(); }))
            return {};
        const double resumedAt = m_player.currentTime();
        if (!wait([&] { return m_player.currentTime() > resumedAt; }))
            return {};
        const double recoveryMs = static_cast<double>(recovery.elapsed());
        if (!wait([&] { return m_player.currentTime() > resumedAt + 0.2; }))
            return {};
        m_player.stop();
        const Ramp::Stretch before = Ramp::firstStretch(lost.stop());
        const Ramp::Stretch after = Ramp::firstStretch(kept.stop());
        if (!before.last || !after.first || m_completions != 0 || m_failures != 0)
            return {};
        return Loss{(*after.first - *before.last - 1) * 1000.0 / Ramp::rate, recoveryMs};
    }

    [[nodiscard]] bool isReady() {
        return m_session.failure().isEmpty() && !m_ramp.isEmpty() &&
               wait([&] { return m_server.state() == SoundServer::State::Ready; });
    }

private:
    template <typename Condition>
    static bool wait(Condition isSo) {
        return QTest::qWaitFor(isSo, patience);
    }

    QTemporaryDir m_folder;
    SoundServerSession m_session;
    SoundServer m_server;
    RoutedAudioPlayer m_player{m_server};
    QUrl m_ramp;
    int m_completions = 0;
    int m_failures = 0;
};

void print(const char *what, std::vector<double> values) {
    std::sort(values.begin(), values.end());
    std::printf("  %-18s min %8.2f  median %8.2f  max %8.2f ms\n", what, values.front(), values[values.size() / 2],
                values.back());
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const bool isPipeWire = argc > 1 && qstrcmp(argv[1], "pipewire") == 0;
    const int losses = argc > 2 ? std::atoi(argv[2]) : 100;
    Rig rig(isPipeWire ? SoundServerSession::Kind::PipeWire : SoundServerSession::Kind::PulseAudio);
    if (!rig.isReady()) {
        std::fprintf(stderr, "the sound server did not start\n");
        return 1;
    }
    std::vector<double> places;
    std::vector<double> recoveries;
    int astray = 0;
    for (int i = 0; i < losses; ++i) {
        const std::optional<Loss> loss = rig.loseOnce();
        if (!loss) {
            std::fprintf(stderr, "loss %d: playback did not go on\n", i + 1);
            return 1;
        }
        astray += std::abs(loss->placeErrorMs) > limitMs ? 1 : 0;
        places.push_back(loss->placeErrorMs);
        recoveries.push_back(loss->recoveryMs);
    }
    std::printf("%s: %d losses (a place below 0 is heard twice, above 0 is skipped)\n",
                isPipeWire ? "PipeWire" : "PulseAudio", losses);
    print("place", places);
    print("sound again after", recoveries);
    std::printf("  %d more than %.0f ms off\n", astray, limitMs);
    return astray * 10 <= losses ? 0 : 1;
}
