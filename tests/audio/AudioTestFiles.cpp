#include "audio/AudioTestFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QtEndian>
#include <sndfile.h>

#include "audio/files/AudioFileReader.h"

namespace orlenta::audio::test {

QStringList AudioTestFolder::names() const {
    QStringList found;
    QDirIterator files(m_folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        found.append(QDir(m_folder.path()).relativeFilePath(files.next()));
    found.sort();
    return found;
}

QString AudioTestFolder::write(const QString &name, const std::vector<double> &samples, const StoredAs &stored) const {
    SF_INFO info{};
    info.samplerate = stored.rate;
    info.channels = stored.channels;
    info.format = stored.format;
    SNDFILE *file = sf_open(QFile::encodeName(path(name)).constData(), SFM_WRITE, &info);
    EXPECT_NE(file, nullptr) << sf_strerror(nullptr);
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const auto frames = static_cast<sf_count_t>(samples.size()) / stored.channels;
    EXPECT_EQ(sf_writef_double(file, samples.data(), frames), frames);
    sf_close(file);
    return path(name);
}

QString AudioTestFolder::writeBytes(const QString &name, const QByteArray &bytes) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path(name);
}

QByteArray AudioTestFolder::run(const QString &program, const QString &arguments) const {
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.start(program, arguments.split(u' ', Qt::SkipEmptyParts));
    EXPECT_TRUE(process.waitForFinished(60000)) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

std::vector<double> tone(double frequency, double rate, size_t frames, double peak) {
    std::vector<double> samples(frames);
    for (size_t i = 0; i < frames; ++i)
        samples[i] = peak * std::sin(2.0 * std::numbers::pi * frequency * static_cast<double>(i) / rate);
    return samples;
}

std::vector<double> impulse(size_t frames, size_t at) {
    std::vector<double> samples(frames);
    samples.at(at) = 0.9;
    return samples;
}

std::vector<double> noise(size_t samples, int bitDepth, unsigned seed) {
    std::mt19937 random(seed);
    const double fullScale = std::ldexp(1.0, bitDepth - 1);
    std::uniform_int_distribution<qint64> steps(-static_cast<qint64>(fullScale), static_cast<qint64>(fullScale) - 1);
    std::vector<double> made(samples);
    std::ranges::generate(made, [&] { return static_cast<double>(steps(random)) / fullScale; });
    return made;
}

std::vector<double> readAll(const QString &path) {
    auto reader = AudioFileReader::open(path);
    EXPECT_TRUE(reader) << (reader ? std::string() : reader.error().description().toStdString());
    std::vector<double> samples;
    if (!reader)
        return samples;
    // An odd size, so that blocks never fall together with those of the code.
    const auto channels = static_cast<size_t>(reader->channelCount());
    std::vector<double> block(1237 * channels);
    for (auto read = reader.value().readFrames(block); read && *read > 0; read = reader.value().readFrames(block))
        samples.insert(samples.end(), block.begin(), block.begin() + *read * static_cast<qsizetype>(channels));
    return samples;
}

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QByteArray withNumber(QByteArray bytes, qsizetype at, quint32 number) {
    std::array<char, 4> encoded{};
    qToBigEndian(number, encoded.data());
    return bytes.replace(at, 4, encoded.data(), 4);
}

QByteArray withEncoderDelay(QByteArray m4a, int priming, int padding, qint64 frames) {
    const auto box = [](const char *type, const QByteArray &content) {
        return withNumber(QByteArray(4, '\0'), 0, static_cast<quint32>(8 + content.size())) + type + content;
    };
    const QByteArray value = QString::asprintf(" 00000000 %08X %08X %016llX 00000000", static_cast<unsigned>(priming),
                                               static_cast<unsigned>(padding), static_cast<unsigned long long>(frames))
                                 .toLatin1();
    const QByteArray zeros(4, '\0');
    const QByteArray tag = box("----", box("mean", zeros + "com.apple.iTunes") + box("name", zeros + "iTunSMPB") +
                                           box("data", QByteArray("\0\0\0\1", 4) + zeros + value));
    qsizetype at = 0;
    for (const char *type : {"moov", "udta", "meta", "ilst"}) {
        at = m4a.indexOf(type, at);
        EXPECT_GT(at, 0) << type;
        const auto bytes = qFromBigEndian<quint32>(m4a.constData() + at - 4);
        EXPECT_EQ(at - 4 + bytes, m4a.size()) << type;
        m4a = withNumber(m4a, at - 4, bytes + static_cast<quint32>(tag.size()));
    }
    return m4a + tag;
}

size_t loudestAt(const std::vector<double> &samples) {
    const auto louder = [](double a, double b) { return std::abs(a) < std::abs(b); };
    return static_cast<size_t>(std::ranges::max_element(samples, louder) - samples.begin());
}

} // namespace orlenta::audio::test
