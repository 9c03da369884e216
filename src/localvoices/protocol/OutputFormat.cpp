#include "localvoices/protocol/OutputFormat.h"

#include <algorithm>
#include <array>

#include <QtCore/QStringList>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

struct FormatRow {
    const char *name;
    OutputFormat format;
};

constexpr std::array formatRows = std::to_array<FormatRow>({
    {"mp3_22050_32", {Codec::Mp3, 22050, 32}},   {"mp3_24000_48", {Codec::Mp3, 24000, 48}},
    {"mp3_44100_32", {Codec::Mp3, 44100, 32}},   {"mp3_44100_64", {Codec::Mp3, 44100, 64}},
    {"mp3_44100_96", {Codec::Mp3, 44100, 96}},   {"mp3_44100_128", {Codec::Mp3, 44100, 128}},
    {"mp3_44100_192", {Codec::Mp3, 44100, 192}}, {"pcm_8000", {Codec::Pcm, 8000, 0}},
    {"pcm_16000", {Codec::Pcm, 16000, 0}},       {"pcm_22050", {Codec::Pcm, 22050, 0}},
    {"pcm_24000", {Codec::Pcm, 24000, 0}},       {"pcm_32000", {Codec::Pcm, 32000, 0}},
    {"pcm_44100", {Codec::Pcm, 44100, 0}},       {"pcm_48000", {Codec::Pcm, 48000, 0}},
    {"wav_8000", {Codec::Wav, 8000, 0}},         {"wav_16000", {Codec::Wav, 16000, 0}},
    {"wav_22050", {Codec::Wav, 22050, 0}},       {"wav_24000", {Codec::Wav, 24000, 0}},
    {"wav_32000", {Codec::Wav, 32000, 0}},       {"wav_44100", {Codec::Wav, 44100, 0}},
    {"wav_48000", {Codec::Wav, 48000, 0}},       {"ulaw_8000", {Codec::MuLaw, 8000, 0}},
    {"alaw_8000", {Codec::ALaw, 8000, 0}},
});

} // namespace

QByteArray OutputFormat::contentType() const {
    switch (codec) {
    case Codec::Mp3:
        return "audio/mpeg";
    case Codec::Pcm:
        return "audio/pcm";
    case Codec::Wav:
        return "audio/wav";
    case Codec::MuLaw:
        return "audio/ulaw";
    case Codec::ALaw:
        return "audio/alaw";
    }
    return {};
}

std::optional<OutputFormat> findOutputFormat(const QString &name) {
    const auto found = std::find_if(formatRows.begin(), formatRows.end(),
                                    [&name](const FormatRow &r) { return name == QLatin1String(r.name); });
    return found == formatRows.end() ? std::nullopt : std::optional(found->format);
}

bool isOpusFormat(const QString &name) {
    static const QStringList names{u"opus_48000_32"_s, u"opus_48000_64"_s, u"opus_48000_96"_s, u"opus_48000_128"_s,
                                   u"opus_48000_192"_s};
    return names.contains(name);
}

QStringList outputFormatNames() {
    QStringList names;
    for (const FormatRow &row : formatRows)
        names << QLatin1String(row.name);
    return names;
}

} // namespace orlenta::localvoices
