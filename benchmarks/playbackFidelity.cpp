// Prints how many frames of a 48000 Hz file arrive unaltered at the monitor of a 48000 Hz output, next to paplay on the
// same private server, for PulseAudio and PipeWire.

#include <cstdio>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>
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

constexpr int frames = 3 * Ramp::rate;
constexpr int patience = 20000;

int exactFrames(const std::vector<float> &recording) {
    const Ramp::Stretch stretch = Ramp::firstStretch(recording);
    return stretch.first ? *stretch.last - *stretch.first + 1 : 0;
}

int playHere(SoundServerSession &session, const QUrl &file) {
    SoundServer server(session.address());
    RoutedAudioPlayer player(server);
    bool isOver = false;
    player.setCompletionHandler([&] { isOver = true; });
    if (!QTest::qWaitFor([&] { return server.state() == SoundServer::State::Ready; }, patience) || !player.load(file))
        return 0;
    auto recording = session.record(QStringLiteral("spk_a"), Ramp::rate);
    if (!player.play() || !QTest::qWaitFor([&] { return isOver; }, patience))
        return 0;
    return exactFrames(recording.stop());
}

int playByPeer(SoundServerSession &session, const QUrl &file) {
    auto recording = session.record(QStringLiteral("spk_a"), Ramp::rate);
    session.run(QStringLiteral("paplay"), {file.toLocalFile()});
    return exactFrames(recording.stop());
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("TCCTrace=false"));
    const QTemporaryDir folder;
    const QUrl file = Ramp::write(folder.filePath(QStringLiteral("ramp.wav")), frames);
    std::printf("Frames of %d that arrive bit-exact at a 48000 Hz output's monitor\n", frames);
    std::printf("  %-12s %10s %10s\n", "server", "Orlenta", "paplay");
    for (const auto kind : {SoundServerSession::Kind::PulseAudio, SoundServerSession::Kind::PipeWire}) {
        SoundServerSession session(kind);
        if (!session.failure().isEmpty()) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(session.failure()));
            return 1;
        }
        // The first stream of a fresh server may have a gap in its recording.
        playByPeer(session, file);
        const int here = playHere(session, file);
        const int peer = playByPeer(session, file);
        std::printf("  %-12s %10d %10d\n", kind == SoundServerSession::Kind::PulseAudio ? "PulseAudio" : "PipeWire",
                    here, peer);
    }
    return 0;
}
