#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Codec { Mp3, Pcm, Wav, MuLaw, ALaw };

/// The audio format of an answer, named by the query parameter `output_format`: "mp3_44100_128", "pcm_48000". Mono.
struct OutputFormat {
    Codec codec = Codec::Mp3;
    /// Hertz.
    int rate = 44100;
    /// Kilobits per second; MP3 only.
    int kilobits = 128;

    [[nodiscard]] QByteArray contentType() const;
};

/// Looks up a format by name. None for unknown names and for Opus, which isn't supported here.
[[nodiscard]] std::optional<OutputFormat> findOutputFormat(const QString &name);

/// Whether this is one of the service's Opus formats.
[[nodiscard]] bool isOpusFormat(const QString &name);

/// All supported names, in the service's order.
[[nodiscard]] QStringList outputFormatNames();

} // namespace orlenta::localvoices
