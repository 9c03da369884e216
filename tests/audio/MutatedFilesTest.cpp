#include <random>

#include <gtest/gtest.h>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/AudioImporter.h"
#include "audio/files/WavConversion.h"
#include "audio/files/Waveform.h"

namespace orlenta::audio::test {
namespace {

constexpr int mutationsPerFile = 500;
// Far more than the originals hold; a reader that goes on past it would never end.
constexpr qint64 mostFramesPerMutation = 50'000'000;

/// Flips, overwrites, inserts and removes bytes, mostly near the front where the structure stands.
QByteArray mutated(QByteArray bytes, std::mt19937 &random) {
    const auto below = [&random](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<quint32>(std::max<qsizetype>(limit, 1)));
    };
    for (qsizetype change = 1 + below(6); change > 0; --change) {
        const qsizetype reach = random() % 4 == 0 ? bytes.size() : std::min<qsizetype>(bytes.size(), 256);
        const qsizetype at = below(reach);
        switch (random() % 6) {
        case 0:
            bytes.truncate(at);
            break;
        case 1:
            bytes.remove(at, 1 + below(16));
            break;
        case 2:
            bytes.insert(at, QByteArray(1 + below(16), static_cast<char>(random())));
            break;
        case 3:
            bytes.replace(at, 4, QByteArray(4, random() % 2 == 0 ? '\xFF' : '\0'));
            break;
        default:
            if (at < bytes.size())
                bytes[at] = static_cast<char>(random());
            break;
        }
    }
    return bytes;
}

// Whatever stands in the file: an error or an end, and the same count as promised by the reader.
void readToTheEnd(const QString &path) {
    auto reader = AudioFileReader::open(path);
    if (!reader) {
        EXPECT_FALSE(reader.error().description().isEmpty());
        return;
    }
    std::vector<float> block(static_cast<size_t>(4096 * reader->channelCount()));
    for (auto read = reader.value().readFrames(block); read && *read > 0; read = reader.value().readFrames(block))
        ASSERT_LT(reader->framePosition(), mostFramesPerMutation);
    EXPECT_GE(reader.value().frames(), 0);
}

TEST(MutatedFiles, NeverCrashOrHangAReader) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("a.wav"), tone(440, 44100, 3000), {44100, 1, wav16});
    folder.write(QStringLiteral("b.wav"), tone(440, 44100, 3000), {48000, 2, wavFloat});
    folder.run(QStringLiteral("sox"), QStringLiteral("a.wav -b 24 c.aiff"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i a.wav -c:a pcm_s24le -y d.wav"));
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -V 4 a.wav e.mp3"));
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -t a.wav f.mp3"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i a.wav -c:a aac -y g.m4a"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i a.wav -c:a alac -movflags +faststart -y h.m4a"));
    const QByteArray mp3 = bytesOf(folder.path(QStringLiteral("e.mp3")));
    folder.writeBytes(QStringLiteral("i.mp3"), QByteArray(100, '\0') + mp3 + mp3);
    folder.writeBytes(QStringLiteral("j.m4a"),
                      withEncoderDelay(bytesOf(folder.path(QStringLiteral("g.m4a"))), 1024, 72, 3000));
    for (const QString &name : folder.names()) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray original = bytesOf(folder.path(name));
        std::mt19937 random(20);
        for (int i = 0; i < mutationsPerFile; ++i)
            readToTheEnd(folder.writeBytes(QStringLiteral("mutated"), mutated(original, random)));
        QFile::remove(folder.path(QStringLiteral("mutated")));
    }
}

TEST(MutatedFiles, AreConvertedOrRefusedWithoutLeftovers) {
    const AudioTestFolder input;
    const AudioTestFolder output;
    input.write(QStringLiteral("a.wav"), tone(440, 44100, 3000), {44100, 1, wav16});
    input.run(QStringLiteral("lame"), QStringLiteral("--quiet a.wav e.mp3"));
    for (const QString &name : input.names()) {
        const QByteArray original = bytesOf(input.path(name));
        std::mt19937 random(44);
        for (int i = 0; i < 100; ++i) {
            const QString source = input.writeBytes(QStringLiteral("mutated"), mutated(original, random));
            const auto path = convertToWAV(source, QStringLiteral("tts"), 48000.0, 24, output.folder());
            const qsizetype expected = path ? 1 : 0;
            ASSERT_EQ(output.names().size(), expected);
            if (path)
                QFile::remove(*path);
        }
    }
}

} // namespace
} // namespace orlenta::audio::test
