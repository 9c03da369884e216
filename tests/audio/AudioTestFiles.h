#pragma once

#include <vector>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

namespace orlenta::audio::test {

/// How libsndfile, which is not the writer under test, stores a test file.
struct StoredAs {
    int rate = 44100;
    int channels = 1;
    /// SF_FORMAT_...: container and coding.
    int format = 0;
};

/// WAV, AIFF and CAF in libsndfile's numbers, so that tests need not include its header.
inline constexpr int wav16 = 0x010002;
inline constexpr int wav24 = 0x010003;
inline constexpr int aiff24 = 0x020003;
inline constexpr int caf24 = 0x180003;
inline constexpr int wavFloat = 0x010006;
inline constexpr int wavDouble = 0x010007;

/// A folder of one test's own and ways to put audio into it.
class AudioTestFolder final {
public:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    /// The names of all files below the folder, sorted.
    [[nodiscard]] QStringList names() const;

    QString write(const QString &name, const std::vector<double> &samples, const StoredAs &stored) const;
    QString writeBytes(const QString &name, const QByteArray &bytes) const;
    /// Runs an encoder in the folder and gives what it printed; arguments are separated by blanks.
    QByteArray run(const QString &program, const QString &arguments) const;

private:
    QTemporaryDir m_folder;
};

/// A sine of the given peak.
[[nodiscard]] std::vector<double> tone(double frequency, double rate, size_t frames, double peak = 0.5);
/// Silence but for one full impulse, which shows where an encoder put things.
[[nodiscard]] std::vector<double> impulse(size_t frames, size_t at);
/// Noise on the grid of `bitDepth` bits, the same for the same seed, so that PCM files keep it exactly.
[[nodiscard]] std::vector<double> noise(size_t samples, int bitDepth, unsigned seed = 1);

/// All samples of a file, interleaved, through the reader under test; fails the test when it can't be read.
[[nodiscard]] std::vector<double> readAll(const QString &path);
[[nodiscard]] QByteArray bytesOf(const QString &path);
/// The bytes with a big-endian number in the place of four of them.
[[nodiscard]] QByteArray withNumber(QByteArray bytes, qsizetype at, quint32 number);
/// An M4A file of ffmpeg's with one more tag, iTunSMPB, in its last box.
[[nodiscard]] QByteArray withEncoderDelay(QByteArray m4a, int priming, int padding, qint64 frames);
[[nodiscard]] size_t loudestAt(const std::vector<double> &samples);

} // namespace orlenta::audio::test
