#include "audio/files/AudioFileReader.h"

#include <array>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <QtCore/QFile>

#include "audio/AudioTestFiles.h"
#include "audio/files/Mp3Tag.h"

namespace orlenta::audio::test {
namespace {

struct EncodedCase {
    const char *name;
    const char *program;
    const char *arguments;
    const char *file;
    int bitDepth;
};

// In every case the source is 100003 frames at 44100 Hz with an impulse at 50000.
constexpr std::array encodedCases{
    EncodedCase{"16-bit AIFF", "sox", "in.wav out.aiff", "out.aiff", 16},
    EncodedCase{"24-bit AIFF", "sox", "in.wav -b 24 out.aif", "out.aif", 24},
    EncodedCase{"float WAV", "sox", "in.wav -e floating-point -b 32 out.wav", "out.wav", 32},
    EncodedCase{"double WAV", "sox", "in.wav -e floating-point -b 64 out.wav", "out.wav", 64},
    EncodedCase{"8-bit WAV", "sox", "-D in.wav -b 8 -e unsigned-integer out.wav", "out.wav", 8},
    EncodedCase{"extensible WAV", "ffmpeg", "-i in.wav -c:a pcm_s24le -y out.wav", "out.wav", 24},
    EncodedCase{"FLAC", "sox", "in.wav out.flac", "out.flac", 0},
    EncodedCase{"MP3 of constant rate", "lame", "--quiet -b 192 in.wav out.mp3", "out.mp3", 0},
    EncodedCase{"MP3 of variable rate", "lame", "--quiet -V 2 in.wav out.mp3", "out.mp3", 0},
    EncodedCase{"MP3 with a title", "lame", "--quiet --id3v2-only --tt Take in.wav out.mp3", "out.mp3", 0},
    EncodedCase{"MP3 by ffmpeg", "ffmpeg", "-i in.wav -b:a 128k -y out.mp3", "out.mp3", 0},
    EncodedCase{"AAC", "ffmpeg", "-i in.wav -c:a aac -b:a 128k -y out.m4a", "out.m4a", 0},
    EncodedCase{"AAC with its index in front", "ffmpeg", "-i in.wav -c:a aac -movflags +faststart -y out.m4a",
                "out.m4a", 0},
    EncodedCase{"Apple Lossless", "ffmpeg", "-i in.wav -c:a alac -y out.m4a", "out.m4a", 0},
    EncodedCase{"AAC under a wrong name", "ffmpeg", "-i in.wav -c:a aac -f ipod -y out.wav", "out.wav", 0},
};

TEST(AudioFileReader, FilesOfOtherEncodersKeepTheirLengthAndTheirPlaces) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), impulse(100003, 50000), {44100, 1, wav16});
    for (const EncodedCase &encoded : encodedCases) {
        SCOPED_TRACE(encoded.name);
        folder.run(QString::fromLatin1(encoded.program), QString::fromLatin1(encoded.arguments));
        const QString path = folder.path(QString::fromLatin1(encoded.file));
        auto reader = AudioFileReader::open(path);
        ASSERT_TRUE(reader) << reader.error().description().toStdString();
        EXPECT_EQ(reader.value().frames(), 100003);
        EXPECT_EQ(reader->sampleRate(), 44100.0);
        EXPECT_EQ(reader->channelCount(), 1);
        EXPECT_EQ(reader->format().bitDepth, encoded.bitDepth);
        const auto samples = readAll(path);
        EXPECT_EQ(samples.size(), 100003U);
        EXPECT_EQ(loudestAt(samples), 50000U);
    }
}

TEST(AudioFileReader, LengthsOfM4AFilesAreExactAroundTheFrameSize) {
    const AudioTestFolder folder;
    for (const size_t frames : {size_t{1}, size_t{1023}, size_t{1024}, size_t{1025}, size_t{55555}}) {
        for (const auto *arguments : {"-i in.wav -c:a aac -y out.m4a", "-i in.wav -c:a alac -y out.m4a"}) {
            folder.write(QStringLiteral("in.wav"), tone(440, 48000, frames), {48000, 1, wav16});
            folder.run(QStringLiteral("ffmpeg"), QString::fromLatin1(arguments));
            EXPECT_EQ(readAll(folder.path(QStringLiteral("out.m4a"))).size(), frames) << arguments;
        }
    }
}

TEST(AudioFileReader, ChannelsStayInTheirOrder) {
    const AudioTestFolder folder;
    std::vector<double> samples(2 * 30000);
    for (size_t i = 0; i < 30000; ++i)
        samples[2 * i] = 0.5;
    folder.write(QStringLiteral("in.wav"), samples, {44100, 2, wav16});
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a alac -y out.m4a"));
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -m s -b 320 in.wav out.mp3"));
    for (const char *name : {"in.wav", "out.m4a", "out.mp3"}) {
        const auto read = readAll(folder.path(QString::fromLatin1(name)));
        ASSERT_EQ(read.size(), samples.size()) << name;
        EXPECT_NEAR(read[30000], 0.5, 0.1) << name;
        EXPECT_NEAR(read[30001], 0.0, 0.01) << name;
    }
}

TEST(AudioFileReader, AFileThatIsDeletedMeanwhileCanBeReadAgainFromItsStart) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), std::vector<double>(30000, 0.5), {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -m s -b 320 in.wav out.mp3"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a alac -y out.m4a"));
    for (const char *name : {"in.wav", "out.m4a", "out.mp3"}) {
        auto opened = AudioFileReader::open(folder.path(QString::fromLatin1(name)));
        ASSERT_TRUE(opened) << name;
        AudioFileReader reader = std::move(opened).value();
        ASSERT_TRUE(reader.seek(20000)) << name;
        ASSERT_TRUE(QFile::remove(reader.path())) << name;
        ASSERT_TRUE(reader.seek(100)) << name;
        std::vector<double> samples(64);
        const auto read = reader.readFrames(std::span(samples));
        ASSERT_TRUE(read) << name;
        EXPECT_EQ(*read, 64) << name;
    }
}

TEST(AudioFileReader, AnMp3WithoutALengthIsReadToItsEnd) {
    const AudioTestFolder folder;
    // Loud, then silent: from the first frames' size one would guess a far shorter file.
    auto samples = noise(44100, 16);
    samples.resize(10 * 44100);
    folder.write(QStringLiteral("in.wav"), samples, {44100, 1, wav16});
    // A header that could not be gone back to, as in a stream, is the same to a reader as none.
    for (const char *arguments : {"-i in.wav -q:a 4 -write_xing 0 -y out.mp3", "-i in.wav -q:a 4 -f mp3 -y pipe:1"}) {
        SCOPED_TRACE(arguments);
        const QByteArray piped = folder.run(QStringLiteral("ffmpeg"), QString::fromLatin1(arguments));
        const QString path = piped.isEmpty() ? folder.path(QStringLiteral("out.mp3"))
                                             : folder.writeBytes(QStringLiteral("piped.mp3"), piped);
        const auto read = readAll(path);
        EXPECT_GE(read.size(), samples.size());
        EXPECT_LT(read.size(), samples.size() + 4 * 1152);
        auto reader = AudioFileReader::open(path);
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader.value().frames(), static_cast<qint64>(read.size()));
    }
}

TEST(AudioFileReader, ACutMp3TellsWhatIsLeftOfIt) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), tone(440, 44100, 441000), {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet in.wav out.mp3"));
    const QByteArray whole = bytesOf(folder.path(QStringLiteral("out.mp3")));
    const QString path = folder.writeBytes(QStringLiteral("cut.mp3"), whole.first(whole.size() / 2));
    auto reader = AudioFileReader::open(path);
    ASSERT_TRUE(reader);
    EXPECT_NEAR(static_cast<double>(reader.value().frames()), 220500, 3000);
    EXPECT_EQ(reader.value().frames(), static_cast<qint64>(readAll(path).size()));
}

TEST(AudioFileReader, SeekingLandsOnTheFrameInEveryKindOfFile) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), noise(60000, 16), {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -V 2 in.wav out.mp3"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a aac -y out.m4a"));
    for (const char *name : {"in.wav", "out.mp3", "out.m4a"}) {
        SCOPED_TRACE(name);
        const QString path = folder.path(QString::fromLatin1(name));
        const auto samples = readAll(path);
        auto reader = AudioFileReader::open(path);
        ASSERT_TRUE(reader);
        for (const qint64 frame : {40000, 10000, 10000, 59999, 0}) {
            ASSERT_TRUE(reader.value().seek(frame));
            EXPECT_EQ(reader->framePosition(), frame);
            std::array<double, 1> next{};
            const auto read = reader.value().readFrames(next);
            ASSERT_TRUE(read);
            ASSERT_EQ(*read, 1);
            EXPECT_EQ(next[0], samples[static_cast<size_t>(frame)]);
        }
    }
}

TEST(AudioFileReader, AFileThatTurnsOutDamagedAfterASeekIsToldByItsName) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), noise(48000, 16), {48000, 1, wav16});
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a alac -y damaged.m4a"));
    QByteArray bytes = bytesOf(folder.path(QStringLiteral("damaged.m4a")));
    bytes.replace(bytes.size() / 2, 8192, QByteArray(8192, '\0'));
    auto reader = AudioFileReader::open(folder.writeBytes(QStringLiteral("damaged.m4a"), bytes));
    ASSERT_TRUE(reader);
    ASSERT_TRUE(reader.value().seek(1000));
    ASSERT_TRUE(reader.value().seek(0)); // which opens it anew
    std::vector<float> block(4096);
    auto read = reader.value().readFrames(std::span(block));
    while (read && *read > 0)
        read = reader.value().readFrames(std::span(block));
    ASSERT_FALSE(read);
    EXPECT_TRUE(read.error().description().startsWith(QStringLiteral("“damaged.m4a” is damaged")))
        << read.error().description().toStdString();
}

TEST(AudioFileReader, WhatIsNoAudioFileIsRefusedWithItsName) {
    const AudioTestFolder folder;
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.path(QStringLiteral("pipe.wav"))).constData(), 0600), 0);
    folder.writeBytes(QStringLiteral("empty.wav"), {});
    folder.writeBytes(QStringLiteral("text.mp3"), "Not a sound in here, whatever the name says.");
    folder.writeBytes(QStringLiteral("head.m4a"), QByteArray("\0\0\0\x20"
                                                             "ftypM4A ",
                                                             12));
    using Kind = AudioFileError::Kind;
    const std::vector<std::pair<QString, Kind>> refused{{QStringLiteral("missing.wav"), Kind::CannotOpen},
                                                        {QStringLiteral("pipe.wav"), Kind::CannotOpen},
                                                        {QStringLiteral("."), Kind::CannotOpen},
                                                        {QStringLiteral("empty.wav"), Kind::UnsupportedFormat},
                                                        {QStringLiteral("text.mp3"), Kind::UnsupportedFormat},
                                                        {QStringLiteral("head.m4a"), Kind::UnsupportedFormat}};
    for (const auto &[name, kind] : refused) {
        const auto reader = AudioFileReader::open(folder.path(name));
        ASSERT_FALSE(reader) << name.toStdString();
        EXPECT_EQ(reader.error().kind, kind) << name.toStdString();
        EXPECT_TRUE(reader.error().description().endsWith(u'.'));
        // The library's word for what is no MP3, whether the file is there or not.
        EXPECT_FALSE(reader.error().description().contains(QStringLiteral("does not exist"))) << name.toStdString();
    }
}

TEST(Mp3Tag, NeedsBothFramesAndBytes) {
    QByteArray frame(64, '\0');
    frame.replace(0, 4, QByteArray("\xFF\xFB\x90\xC0", 4));
    frame.replace(21, 16, QByteArray("Info\0\0\0\x03\0\0\0\x07\0\0\x10\0", 16));
    const auto tag = Mp3Tag::parse(frame);
    ASSERT_TRUE(tag);
    EXPECT_EQ(tag->mpegFrames, 7U);
    EXPECT_EQ(tag->streamBytes, 4096U);
    frame[28] = 1;
    EXPECT_FALSE(Mp3Tag::parse(frame));
    for (qsizetype length = 0; length < 37; ++length)
        EXPECT_FALSE(Mp3Tag::parse(QByteArrayView(frame).first(length)));
    EXPECT_EQ(Mp3Tag::id3Size(QByteArrayView("ID3\x04\0\0\0\0\x02\x01", 10)), 257 + 10);
}

} // namespace
} // namespace orlenta::audio::test
