#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Codec { Mp3, Pcm, Wav, MuLaw, ALaw };

/// An answer's audio form, as the query key `output_format` names it: "mp3_44100_128", "pcm_48000". Always mono.
struct OutputFormat {
    Codec codec = Codec::Mp3;
    /// Frames a second.
    int rate = 44100;
    /// Thousands of bits a second; MP3 only.
    int kilobits = 128;

    [[nodiscard]] QByteArray contentType() const;
};

/// The format of a name. None for a name that the service doesn't know, and for the Opus ones, which aren't made here.
[[nodiscard]] std::optional<OutputFormat> findOutputFormat(const QString &name);

/// Whether the service knows the name although it isn't made here.
[[nodiscard]] bool isOpusFormat(const QString &name);

/// All names that `findOutputFormat` knows, in the service's order.
[[nodiscard]] QStringList outputFormatNames();

} // namespace orlenta::localvoices
