#include "audio/files/Mp4Timing.h"

#include <array>

#include <gtest/gtest.h>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"

namespace orlenta::audio::test {
namespace {

QByteArray encodedM4A(const AudioTestFolder &folder, const char *arguments) {
    folder.run(QStringLiteral("ffmpeg"),
               QStringLiteral("-i in.wav ") + QString::fromLatin1(arguments) + QStringLiteral(" -y out.m4a"));
    return bytesOf(folder.path(QStringLiteral("out.m4a")));
}

TEST(Mp4Timing, AnEditListCountsAsRoundedToTheMoviesClockOnly) {
    using EditList = TrackTiming::EditList;
    struct TimingCase {
        const char *name;
        qint64 edited;
        qint64 track;
        qint64 delay;
        std::optional<qint64> movieClock;
        TrackTiming::Length length;
    };
    for (const auto &[name, edited, track, delay, movieClock, length] :
         {TimingCase{"rounded down to a millisecond", 99975, 101027, 1024, 1000, {100003, EditList::Ignored}},
          TimingCase{"rounded up to a millisecond", 100019, 101027, 1024, 1000, {100003, EditList::Ignored}},
          TimingCase{"a millisecond of padding", 99975, 101070, 1024, 1000, {99975, EditList::Applied}},
          TimingCase{"rounded to the 600th of a second", 99960, 101027, 1024, 600, {100003, EditList::Ignored}},
          TimingCase{"exact, one frame of padding", 99327, 100352, 1024, 44100, {99327, EditList::Applied}},
          TimingCase{"exact, no padding", 100003, 101027, 1024, 44100, {100003, EditList::Ignored}},
          TimingCase{"a clock finer than the track's", 99327, 100352, 1024, 90000, {99327, EditList::Applied}},
          TimingCase{"no movie header", 99975, 101027, 1024, std::nullopt, {99975, EditList::Applied}},
          TimingCase{"no edit list", 101027, 101027, 0, 1000, {101027, EditList::Ignored}}}) {
        const TrackTiming timing{44100, edited, track, delay, movieClock, std::nullopt};
        EXPECT_EQ(timing.length(), length) << name;
    }
}

TEST(Mp4Timing, AFileWithAnExactEditListLosesAllItsPadding) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), impulse(97 * 1024, 50000), {44100, 1, wav16});
    const QByteArray whole = encodedM4A(folder, "-c:a aac -movie_timescale 44100");
    const qsizetype durationAt = whole.indexOf("elst") + 12;
    for (const quint32 padding : {0U, 1U, 17U, 46U}) {
        const quint32 frames = 97 * 1024 - padding;
        const QString path = folder.writeBytes(QStringLiteral("padded.m4a"), withNumber(whole, durationAt, frames));
        EXPECT_EQ(readAll(path).size(), frames);
        auto reader = AudioFileReader::open(path);
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader.value().frames(), frames);
    }
}

TEST(Mp4Timing, TheMoviesClockIsFoundInEveryVersionOfItsHeader) {
    const AudioTestFolder folder;
    const QByteArray type("\0\0\0\x0C"
                          "ftypM4A ",
                          12);
    const QByteArray shortHeader = QByteArray("\0\0\0\x20mvhd", 8) + QByteArray(12, '\0') +
                                   QByteArray("\0\0\x02\x58\0\0\0\1", 8) + QByteArray(4, '\0');
    const QByteArray longHeader =
        QByteArray("\0\0\0\x24mvhd\1", 9) + QByteArray(19, '\0') + QByteArray("\0\0\xAC\x44\0\0\0\1", 8);
    const auto movie = [](const QByteArray &content) {
        return withNumber(QByteArray(4, '\0'), 0, static_cast<quint32>(8 + content.size())) + "moov" + content;
    };
    const QByteArray largeData = QByteArray("\0\0\0\1mdat\0\0\0\0\0\0\0\x18", 16) + "12345678";
    const std::vector<std::pair<QByteArray, std::optional<qint64>>> files{
        {type + movie(shortHeader), 600},
        {type + largeData + movie(longHeader), 44100},
        {type + movie(QByteArray("\0\0\0\x08"
                                 "free",
                                 8) +
                      shortHeader),
         600},
        {type + largeData, std::nullopt},
        {type + movie(shortHeader).first(30), std::nullopt},
        {type + movie(withNumber(shortHeader, 20, 0)), std::nullopt},
        {type +
             QByteArray("\0\0\0\x04"
                        "free",
                        8) +
             movie(shortHeader),
         std::nullopt},
        {type + QByteArray("\0\0\0\1mdat\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xF0", 16) + movie(shortHeader), std::nullopt}};
    for (size_t i = 0; i < files.size(); ++i)
        EXPECT_EQ(movieTicksPerSecond(folder.writeBytes(QStringLiteral("clock.m4a"), files[i].first)), files[i].second)
            << i;
}

TEST(Mp4Timing, TheTagOfAppleEncodersTellsDelayAndLength) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), impulse(100003, 50000), {44100, 1, wav16});
    const QByteArray tagOnly = encodedM4A(folder, "-c:a aac -use_editlist 0");
    const QByteArray edited = encodedM4A(folder, "-c:a aac");
    struct TagCase {
        const char *name;
        QByteArray bytes;
        size_t frames;
        size_t impulseAt;
    };
    // The padding reaches to the end of the last packet, but the track's own length leaves it out.
    const std::vector<TagCase> files{
        {"no edit list", withEncoderDelay(tagOnly, 1024, 349, 100003), 100003, 50000},
        {"no edit list, more padding", withEncoderDelay(tagOnly, 1024, 1352, 99000), 99000, 50000},
        {"an edit list that agrees", withEncoderDelay(edited, 1024, 352, 100000), 100000, 50000},
        {"an edit list that does not agree", withEncoderDelay(edited, 1024, 1352, 99000), 100003, 50000}};
    for (const auto &[name, bytes, frames, impulseAt] : files) {
        SCOPED_TRACE(name);
        const QString path = folder.writeBytes(QStringLiteral("tagged.m4a"), bytes);
        const auto samples = readAll(path);
        EXPECT_EQ(samples.size(), frames);
        EXPECT_EQ(loudestAt(samples), impulseAt);
        auto reader = AudioFileReader::open(path);
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader.value().frames(), static_cast<qint64>(frames));
    }
    // A tag of another file is not believed, but no sound may be lost.
    const auto samples =
        readAll(folder.writeBytes(QStringLiteral("other.m4a"), withEncoderDelay(tagOnly, 1024, 100, 5000)));
    EXPECT_GE(samples.size(), 100003U);
}

TEST(Mp4Timing, TheTagIsReadOrRefusedAsAWhole) {
    const auto delay = EncoderDelay::parse(" 00000000 00000840 000001CA 00000000003F31F6 00000000 00000000");
    ASSERT_TRUE(delay);
    EXPECT_EQ(delay->priming, 2112);
    EXPECT_EQ(delay->padding, 458);
    EXPECT_EQ(delay->frames, 4141558);
    for (const char *tag : {"", "00000000 00000840 000001CA", "0 840 1CA 0", "0 840 x 10", "0 -840 1CA 10",
                            "0 840 1CA 7FFFFFFFFFFFFFFF", "0 840 1CA FFFFFFFFFFFFFFFF"})
        EXPECT_FALSE(EncoderDelay::parse(tag)) << tag;
}

TEST(Mp4Timing, ACutFileTellsWhatReadingGives) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), noise(220500, 16), {44100, 1, wav16});
    for (const char *codec : {"-c:a aac -movflags +faststart", "-c:a alac -movflags +faststart"}) {
        const QByteArray whole = encodedM4A(folder, codec);
        for (const qsizetype left : {whole.size() / 2, whole.size() * 3 / 4, whole.size() - 1}) {
            SCOPED_TRACE(std::string(codec) + " cut to " + std::to_string(left));
            const QString path = folder.writeBytes(QStringLiteral("cut.m4a"), whole.first(left));
            const auto samples = readAll(path);
            EXPECT_LT(samples.size(), 220500U);
            EXPECT_GT(samples.size(), 80000U);
            auto reader = AudioFileReader::open(path);
            ASSERT_TRUE(reader);
            EXPECT_EQ(reader.value().frames(), static_cast<qint64>(samples.size()));
        }
    }
}

TEST(Mp4Timing, ATableOfMorePacketsThanThereIsRoomForIsRefused) {
    constexpr quint32 packets = 80'000'000;
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), tone(440, 44100, 44100), {44100, 1, wav16});
    QByteArray bytes = encodedM4A(folder, "-c:a aac");
    // One byte each, in one chunk, of one length.
    bytes = withNumber(withNumber(bytes, bytes.indexOf("stsz") + 8, 1), bytes.indexOf("stsz") + 12, packets);
    bytes = withNumber(bytes, bytes.indexOf("stsc") + 16, packets);
    bytes = withNumber(bytes, bytes.indexOf("stts") + 12, packets - 1);
    const auto reader = AudioFileReader::open(folder.writeBytes(QStringLiteral("huge.m4a"), bytes));
    ASSERT_FALSE(reader);
    EXPECT_EQ(reader.error().kind, AudioFileError::Kind::OutOfMemory);
    EXPECT_EQ(reader.error().description(), QStringLiteral("There is not enough memory for the audio of “huge.m4a”: "
                                                           "it claims to hold 80000000 packets."));
}

} // namespace
} // namespace orlenta::audio::test
