#pragma once

#include <cmath>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QtEndian>
#include <sndfile.h>

#include "base/files/PrivateFolders.h"
#include "speech/account/ServiceUnderTest.h"
#include "speech/synthesis/SpeechApi.h"

namespace orlenta::speech {

inline constexpr int secondOfFrames = 44100;

/// A second of a tone as raw samples: 44.1 kHz, mono, 16 bit, little-endian.
[[nodiscard]] inline QByteArray tonePcm() {
    QByteArray pcm;
    for (int i = 0; i < secondOfFrames; ++i) {
        const auto sample = qToLittleEndian(static_cast<qint16>(8000.0 * std::sin(i * 0.05)));
        pcm.append(reinterpret_cast<const char *>(&sample), sizeof sample);
    }
    return pcm;
}

/// The same second as MP3.
[[nodiscard]] inline QByteArray toneMp3(const QTemporaryDir &folder) {
    const QString path = folder.filePath(QStringLiteral("tone.mp3"));
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    const QByteArray pcm = tonePcm();
    sf_write_short(file, reinterpret_cast<const short *>(pcm.constData()), secondOfFrames);
    sf_close(file);
    QFile written(path);
    return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
}

[[nodiscard]] inline QByteArray audioReply(const QByteArray &audio) {
    return test::LoopbackServer::reply(200, audio, "application/octet-stream");
}

[[nodiscard]] inline QByteArray refusal(int status, const QByteArray &code = "output_format_not_allowed") {
    return test::LoopbackServer::reply(status, R"({"detail":{"status":")" + code + R"(","message":"no"}})");
}

[[nodiscard]] inline TTSRequest helloRequest() {
    TTSRequest request;
    request.text = QStringLiteral("Hello");
    request.modelId = QStringLiteral("eleven_v3");
    return request;
}

[[nodiscard]] inline SpeechApi::AudioResult requestSpeech(ServiceUnderTest &under, const char *audioFormat) {
    under.defaults.setAudioFormat(QString::fromLatin1(audioFormat));
    ElevenLabsService &service = under.service();
    return resultOf(service.speech().textToSpeech(service.access(), QStringLiteral("v 1/2"), helloRequest()));
}

[[nodiscard]] inline QStringList cachedFiles() {
    return QDir(base::PrivateFolders::caches()).entryList(QDir::Files);
}

[[nodiscard]] inline QList<QByteArray> formatsAsked(const ServiceUnderTest &under) {
    QList<QByteArray> formats;
    for (const test::LoopbackRequest &request : under.server.requests("/v1/text-to-speech"))
        formats.append(request.target.mid(request.target.indexOf('=') + 1));
    return formats;
}

} // namespace orlenta::speech
