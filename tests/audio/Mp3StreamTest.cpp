#include "audio/files/Mp3Stream.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>
#include <QtCore/QtEndian>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/Mp3FrameHeader.h"

namespace orlenta::audio::test {
namespace {

constexpr size_t sourceFrames = 100003;
constexpr size_t impulsePlace = 50000;

/// An MP3 file with an impulse in it, by each of the encoders.
std::vector<std::pair<const char *, QByteArray>> taggedFiles(const AudioTestFolder &folder) {
    folder.write(QStringLiteral("in.wav"), impulse(sourceFrames, impulsePlace), {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -b 192 in.wav cbr.mp3"));
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -V 2 in.wav vbr.mp3"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -b:a 128k -id3v2_version 0 -y ffmpeg.mp3"));
    std::vector<std::pair<const char *, QByteArray>> files;
    for (const char *name : {"cbr.mp3", "vbr.mp3", "ffmpeg.mp3"})
        files.emplace_back(name, bytesOf(folder.path(QString::fromLatin1(name))));
    return files;
}

QByteArray id3v1() {
    return QByteArray("TAG").leftJustified(128, ' ');
}

QByteArray ape(quint32 itemBytes) {
    const auto end = [itemBytes](quint32 flags) {
        QByteArray bytes(32, '\0');
        bytes.replace(0, 8, "APETAGEX");
        qToLittleEndian<quint32>(2000, bytes.data() + 8);
        qToLittleEndian<quint32>(itemBytes + 32, bytes.data() + 12);
        qToLittleEndian<quint32>(1, bytes.data() + 16);
        qToLittleEndian<quint32>(flags, bytes.data() + 20);
        return bytes;
    };
    return end(0xA0000000) + QByteArray(itemBytes, 'i') + end(0x80000000);
}

QByteArray lyrics3() {
    return "LYRICSBEGININD00003110" + QByteArray(2000, 'l') + "002022LYRICS200";
}

QByteArray randomBytes(qsizetype count) {
    QByteArray bytes;
    for (const double sample : noise(static_cast<size_t>(count), 8, 7))
        bytes.append(static_cast<char>(std::lround(sample * 128.0)));
    return bytes;
}

TEST(Mp3Stream, JunkInFrontIsNoSoundWhateverTheFilesName) {
    const AudioTestFolder folder;
    const QByteArray id3("ID3\x04\0\0\0\0\0\x0AOrlentaTag", 20);
    const std::array junks{QByteArray(300, '\0'), randomBytes(5000), id3 + QByteArray(417, '\0'),
                           QByteArray("\xFF\xFB\x90\xC0", 4), ape(3000)};
    for (const auto &[name, bytes] : taggedFiles(folder)) {
        for (size_t junk = 0; junk < junks.size(); ++junk) {
            for (const char *file : {"junk.mp3", "junk.wav"}) {
                SCOPED_TRACE(std::string(name) + " after junk " + std::to_string(junk) + " as " + file);
                const QString path = folder.writeBytes(QString::fromLatin1(file), junks[junk] + bytes);
                const auto samples = readAll(path);
                EXPECT_EQ(samples.size(), sourceFrames);
                EXPECT_EQ(loudestAt(samples), impulsePlace);
                auto reader = AudioFileReader::open(path);
                ASSERT_TRUE(reader);
                EXPECT_EQ(reader.value().frames(), static_cast<qint64>(sourceFrames));
            }
        }
    }
}

TEST(Mp3Stream, TagsAndJunkAtTheEndLeaveTheLengthTold) {
    const AudioTestFolder folder;
    const std::array ends{QByteArray(),           id3v1(),          ape(60000), lyrics3() + id3v1(), ape(500) + id3v1(),
                          QByteArray(5000, '\0'), randomBytes(9000)};
    for (const auto &[name, bytes] : taggedFiles(folder)) {
        for (size_t end = 0; end < ends.size(); ++end) {
            SCOPED_TRACE(std::string(name) + " before end " + std::to_string(end));
            const QString path = folder.writeBytes(QStringLiteral("end.mp3"), bytes + ends[end]);
            const auto stream = Mp3Stream::find(path);
            ASSERT_TRUE(stream);
            EXPECT_TRUE(stream->tellsLength);
            EXPECT_EQ(stream->junkBytes, 0);
            EXPECT_EQ(readAll(path).size(), sourceFrames);
        }
    }
}

TEST(Mp3Stream, JoinedFilesAreReadToTheEndOfTheLast) {
    const AudioTestFolder folder;
    const std::array between{QByteArray(), id3v1(), ape(70000), QByteArray(1000, '\0')};
    for (const auto &[name, bytes] : taggedFiles(folder)) {
        for (size_t joint = 0; joint < between.size(); ++joint) {
            SCOPED_TRACE(std::string(name) + " with joint " + std::to_string(joint));
            const QString path =
                folder.writeBytes(QStringLiteral("joined.mp3"), bytes + between[joint] + bytes + id3v1());
            const auto samples = readAll(path);
            EXPECT_NEAR(static_cast<double>(samples.size()), 2.0 * sourceFrames, 4 * 1152);
            const std::vector<double> second(samples.begin() + sourceFrames, samples.end());
            EXPECT_NEAR(static_cast<double>(loudestAt(second)), static_cast<double>(impulsePlace), 4 * 1152);
            auto reader = AudioFileReader::open(path);
            ASSERT_TRUE(reader);
            EXPECT_EQ(reader.value().frames(), static_cast<qint64>(samples.size()));
        }
    }
}

TEST(Mp3Stream, ATagWhoseFramesDontFitItsBytesIsNotBelieved) {
    const AudioTestFolder folder;
    for (const auto &[name, bytes] : taggedFiles(folder)) {
        const qsizetype tag = std::max(bytes.indexOf("Xing"), bytes.indexOf("Info"));
        ASSERT_GT(tag, 0) << name;
        for (const quint32 frames : {3U, 1000000U, 0xFFFFFFF0U, 0xFFFFFFFFU}) {
            SCOPED_TRACE(std::string(name) + " with " + std::to_string(frames) + " frames");
            QByteArray lying = bytes;
            qToBigEndian<quint32>(frames, lying.data() + tag + 8);
            for (const QByteArray &junk : {QByteArray(), QByteArray(300, '\0')}) {
                const QString path = folder.writeBytes(QStringLiteral("lying.mp3"), junk + lying);
                const auto stream = Mp3Stream::find(path);
                ASSERT_TRUE(stream);
                EXPECT_FALSE(stream->tellsLength);
                const auto samples = readAll(path);
                EXPECT_GE(samples.size(), sourceFrames);
                EXPECT_LT(samples.size(), sourceFrames + 4 * 1152);
                EXPECT_NEAR(static_cast<double>(loudestAt(samples)), static_cast<double>(impulsePlace), 2 * 1152);
                auto reader = AudioFileReader::open(path);
                ASSERT_TRUE(reader);
                EXPECT_EQ(reader.value().frames(), static_cast<qint64>(samples.size()));
            }
        }
    }
}

TEST(Mp3Stream, GoodTagsAreBelievedAtEveryBitRate) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("noise.wav"), noise(sourceFrames, 16), {44100, 1, wav16});
    folder.write(QStringLiteral("silence.wav"), std::vector<double>(sourceFrames), {44100, 1, wav16});
    struct Encoding {
        const char *program;
        const char *arguments;
    };
    const std::vector<Encoding> encodings{{"lame", "--quiet -b 320 %1 out.mp3"},
                                          {"lame", "--quiet -b 64 %1 out.mp3"},
                                          {"lame", "--quiet -V 0 %1 out.mp3"},
                                          {"lame", "--quiet -V 9 %1 out.mp3"},
                                          {"lame", "--quiet --abr 150 %1 out.mp3"},
                                          {"lame", "--quiet --resample 48 -b 320 %1 out.mp3"},
                                          {"lame", "--quiet --resample 22.05 -b 160 %1 out.mp3"},
                                          {"lame", "--quiet --resample 24 -V 9 %1 out.mp3"},
                                          {"lame", "--quiet --resample 8 -b 32 %1 out.mp3"},
                                          {"lame", "--quiet --resample 8 -V 9 %1 out.mp3"},
                                          {"lame", "--quiet --freeformat -b 400 %1 out.mp3"},
                                          {"ffmpeg", "-i %1 -b:a 320k -y out.mp3"},
                                          {"ffmpeg", "-i %1 -b:a 32k -y out.mp3"},
                                          {"ffmpeg", "-i %1 -q:a 0 -y out.mp3"},
                                          {"ffmpeg", "-i %1 -q:a 9 -y out.mp3"},
                                          {"ffmpeg", "-i %1 -ar 8000 -b:a 8k -y out.mp3"},
                                          {"ffmpeg", "-i %1 -ar 16000 -q:a 9 -y out.mp3"}};
    for (const char *input : {"noise.wav", "silence.wav"}) {
        for (const auto &[program, arguments] : encodings) {
            SCOPED_TRACE(std::string(program) + ' ' + arguments + ' ' + input);
            const QString command = QString::fromLatin1(arguments).arg(QString::fromLatin1(input));
            folder.run(QString::fromLatin1(program), command);
            const auto stream = Mp3Stream::find(folder.path(QStringLiteral("out.mp3")));
            ASSERT_TRUE(stream);
            EXPECT_TRUE(stream->tellsLength);
            EXPECT_EQ(stream->junkBytes, 0);
        }
    }
}

TEST(Mp3FrameHeader, TellsTheDistanceToTheNext) {
    struct HeaderCase {
        QByteArray bytes;
        qsizetype frameBytes;
        int sampleRate;
        qsizetype sideInformationBytes;
    };
    const std::vector<HeaderCase> headers{
        {"\xFF\xFB\x90\x64", 417, 44100, 32}, {"\xFF\xFB\x92\xC4", 418, 44100, 17},
        {"\xFF\xFB\xE4\x64", 960, 48000, 32}, {"\xFF\xF3\x80\xC4", 208, 22050, 9},
        {"\xFF\xE3\x48\x64", 288, 8000, 17},  {QByteArray("\xFF\xFB\0\x64", 4), 0, 44100, 32}};
    for (const auto &[bytes, frameBytes, sampleRate, sideInformationBytes] : headers) {
        const auto header = Mp3FrameHeader::parse(bytes);
        ASSERT_TRUE(header) << bytes.toHex().toStdString();
        EXPECT_EQ(header->frameBytes, frameBytes) << bytes.toHex().toStdString();
        EXPECT_EQ(header->sampleRate, sampleRate) << bytes.toHex().toStdString();
        EXPECT_EQ(header->sideInformationBytes(), sideInformationBytes) << bytes.toHex().toStdString();
    }
    for (const char *bytes : {"\xFF\xFB\x90", "\xFE\xFB\x90\x64", "\xFF\xEB\x90\x64", "\xFF\xFD\x90\x64",
                              "\xFF\xFB\xF0\x64", "\xFF\xFB\x9C\x64"})
        EXPECT_FALSE(Mp3FrameHeader::parse(bytes)) << QByteArray(bytes).toHex().toStdString();
}

} // namespace
} // namespace orlenta::audio::test
