// Prints tables of the speed and accuracy of Orlenta's audio files, next to sox and ffmpeg on the same machine in the
// same run. Times are the best of several runs, wall clock, for whole files in and out; the peers' times include
// starting their process.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <limits>
#include <malloc.h>
#include <unistd.h>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/AudioImporter.h"
#include "audio/files/Concatenation.h"
#include "audio/files/WavConversion.h"
#include "audio/files/Waveform.h"
#include "audio/ToneMeasurement.h"

namespace orlenta::audio::benchmark {
namespace {

using test::AudioTestFolder;

constexpr int repetitions = 7;
// 1 dB below full scale, where 24 bits allow 145.2 dB.
constexpr double tonePeak = 0.89125;

void require(bool isFine, const char *what) {
    if (isFine)
        return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

double bestMilliseconds(const std::function<void()> &work) {
    double best = std::numeric_limits<double>::infinity();
    for (int i = 0; i < repetitions; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
        best = std::min(best, spent.count());
    }
    return best;
}

void runPeer(const AudioTestFolder &folder, const char *program, const QString &arguments) {
    QProcess process;
    process.setWorkingDirectory(folder.folder());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QString::fromLatin1(program), arguments.split(u' ', Qt::SkipEmptyParts));
    require(process.waitForFinished(120000) && process.exitCode() == 0, program);
}

// Uses the kernel's high-water mark, reset before `work` so that earlier peaks don't hide its use.
long kilobytesTakenBy(const std::function<void()> &work) {
    const auto statusOf = [](const QByteArray &key) {
        const QByteArray status = test::bytesOf(QStringLiteral("/proc/self/status"));
        return status.mid(status.indexOf(key) + key.size()).trimmed().split(' ').first().toLong();
    };
    ::malloc_trim(0);
    QFile reset(QStringLiteral("/proc/self/clear_refs"));
    require(reset.open(QIODevice::WriteOnly) && reset.write("5") == 1, "resetting the high-water mark");
    reset.close();
    const long before = statusOf("VmRSS:");
    work();
    return statusOf("VmHWM:") - before;
}

std::vector<double> middleOf(const QString &path, int rate) {
    const auto samples = test::readAll(path);
    const auto edge = static_cast<std::ptrdiff_t>(rate / 2);
    return {samples.begin() + edge, samples.begin() + edge + 4 * rate};
}

void printFidelity() {
    std::printf("\n## A tone through the sample rate converter, 24-bit files (dB; 24 bits allow about 145.2)\n"
                "A tone whose period divides the rate repeats its own rounding, which flatters or spoils it by chance: "
                "19997 Hz tells what 20000 Hz can't.\n\n"
                "| tone | rates | Orlenta SINAD | Orlenta level | sox rate -v SINAD | sox level "
                "|\n|---|---|---|---|---|---|\n");
    for (const auto &[from, to] : {std::pair(44100, 48000), std::pair(48000, 44100)}) {
        for (const double frequency : {997.0, 10000.0, 19997.0, 20000.0}) {
            const AudioTestFolder folder;
            const auto tone = test::tone(frequency, from, static_cast<size_t>(6 * from), tonePeak);
            const QString source = folder.write(QStringLiteral("in.wav"), tone, {from, 1, test::wavDouble});
            const auto ours = convertToWAV(source, QStringLiteral("tts"), to, 24, folder.folder());
            require(ours.hasValue(), "conversion");
            // Without -D, sox would add dither.
            runPeer(folder, "sox", QStringLiteral("-D in.wav -b 24 sox.wav rate -v %1").arg(to));
            const auto mine = test::measureTone(middleOf(*ours, to), frequency, to);
            const auto theirs = test::measureTone(middleOf(folder.path(QStringLiteral("sox.wav")), to), frequency, to);
            std::printf("| %.0f Hz | %d -> %d | %.1f | %+.5f | %.1f | %+.5f |\n", frequency, from, to, mine.sinad,
                        20 * std::log10(mine.peak / tonePeak), theirs.sinad, 20 * std::log10(theirs.peak / tonePeak));
        }
    }
}

void printResampling(const AudioTestFolder &folder) {
    folder.write(QStringLiteral("ten.wav"), test::noise(600 * 44100, 16), {44100, 1, test::wav16});
    const QUrl source = QUrl::fromLocalFile(folder.path(QStringLiteral("ten.wav")));
    const QUrl target = QUrl::fromLocalFile(folder.path(QStringLiteral("ours.wav")));
    const double ours = bestMilliseconds(
        [&] { require(AudioImporter::convertToStandardDirectionWAV(source, target).hasValue(), "import"); });
    const double sox =
        bestMilliseconds([&] { runPeer(folder, "sox", QStringLiteral("-D ten.wav -b 24 sox.wav rate -v 48000")); });
    const double ffmpeg = bestMilliseconds([&] {
        runPeer(
            folder, "ffmpeg",
            QStringLiteral("-nostdin -v error -threads 1 -i ten.wav -af aresample=48000:resampler=soxr:precision=28 "
                           "-c:a pcm_s24le -y ffmpeg.wav"));
    });
    std::printf("\n## Ten minutes, mono, 44.1 kHz 16 bit to 48 kHz 24 bit (ms; Orlenta's file is flushed to disk)\n\n"
                "| Orlenta | sox rate -v | ffmpeg soxr 28 bit |\n|---|---|---|\n| %.0f | %.0f | %.0f |\n",
                ours, sox, ffmpeg);
}

// Concatenates files the plain way, without knowing anything about audio.
void copyPlainly(const QList<QUrl> &urls, const QString &target) {
    const int out = ::open(QFile::encodeName(target).constData(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0644);
    std::vector<char> block(256 * 1024);
    for (const QUrl &url : urls) {
        const int in = ::open(QFile::encodeName(url.toLocalFile()).constData(), O_RDONLY | O_CLOEXEC);
        for (ssize_t got = ::read(in, block.data(), block.size()); got > 0;
             got = ::read(in, block.data(), block.size()))
            require(::write(out, block.data(), static_cast<size_t>(got)) == got, "copy");
        ::close(in);
    }
    ::close(out);
}

void printJoining(const AudioTestFolder &folder) {
    QList<QUrl> takes;
    for (unsigned i = 0; i < 100; ++i) {
        const auto samples = test::noise(5 * 48000, 24, i + 1);
        takes.append(
            QUrl::fromLocalFile(folder.write(QStringLiteral("take%1.wav").arg(i), samples, {48000, 1, test::wav24})));
    }
    const QString target = folder.path(QStringLiteral("joined.wav"));
    const auto join = [&] {
        QFile::remove(target);
        require(concatenateAudio(takes, QUrl::fromLocalFile(target)).hasValue(), "joining");
    };
    const long taken = kilobytesTakenBy(join);
    const double joined = bestMilliseconds(join);
    const double copied = bestMilliseconds([&] {
        QFile::remove(target);
        copyPlainly(takes, target);
    });
    std::printf("\n## Joining 100 takes of 5 s, 48 kHz 24 bit mono, 72 MB (ms)\n\n"
                "| Orlenta | plain byte copy | ratio | memory taken by joining |\n|---|---|---|---|\n"
                "| %.1f | %.1f | %.2f | %ld KiB |\n",
                joined, copied, joined / copied, taken);
}

void printMixedJoining(const AudioTestFolder &folder) {
    const QUrl ten = QUrl::fromLocalFile(folder.path(QStringLiteral("ten.wav")));
    const QUrl other = QUrl::fromLocalFile(folder.path(QStringLiteral("take0.wav")));
    const QUrl target = QUrl::fromLocalFile(folder.path(QStringLiteral("mixed.wav")));
    const auto taken = [&](const QList<QUrl> &urls) {
        return kilobytesTakenBy([&] { require(concatenateAudio(urls, target).hasValue(), "mixed joining"); });
    };
    const long one = taken({other, ten});
    const long six = taken({other, ten, ten, ten, ten, ten, ten});
    std::printf("\n## Memory taken by joining with conversion to 48 kHz\n\n| 10 minutes | 60 minutes |\n|---|---|\n"
                "| %ld KiB | %ld KiB |\n",
                one, six);
}

void printWaveform(const AudioTestFolder &folder) {
    const QUrl ten = QUrl::fromLocalFile(folder.path(QStringLiteral("ten.wav")));
    const double ours = bestMilliseconds([&] { require(extractWaveform(ten).size() == 200, "waveform"); });
    const double ffmpeg =
        bestMilliseconds([&] { runPeer(folder, "ffmpeg", QStringLiteral("-nostdin -v error -i ten.wav -f null -")); });
    std::printf("\n## Waveform of a ten-minute WAV, mono 44.1 kHz 16 bit (ms)\n\n"
                "| Orlenta, 200 peaks | ffmpeg, decoding to nothing |\n|---|---|\n| %.1f | %.1f |\n",
                ours, ffmpeg);
}

} // namespace
} // namespace orlenta::audio::benchmark

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    namespace benchmark = orlenta::audio::benchmark;
    const orlenta::audio::test::AudioTestFolder folder;
    benchmark::printFidelity();
    benchmark::printResampling(folder);
    benchmark::printJoining(folder);
    benchmark::printMixedJoining(folder);
    benchmark::printWaveform(folder);
    return 0;
}
