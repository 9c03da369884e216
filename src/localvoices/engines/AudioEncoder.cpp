#include "localvoices/engines/AudioEncoder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include <lame/lame.h>
#include <QtCore/QtEndian>

#include "audio/files/WavHeader.h"

namespace orlenta::localvoices {

namespace {

std::int16_t sampleOf(float value) {
    return static_cast<std::int16_t>(std::lround(std::clamp(value, -1.0F, 1.0F) * 32767.0F));
}

QByteArray pcmOf(const Sound &sound) {
    QByteArray bytes(static_cast<qsizetype>(sound.frames.size() * 2), Qt::Uninitialized);
    char *at = bytes.data();
    for (const float frame : sound.frames) {
        qToLittleEndian(sampleOf(frame), at);
        at += 2;
    }
    return bytes;
}

QByteArray wavOf(const Sound &sound) {
    const QByteArray data = pcmOf(sound);
    return audio::wavHeader(static_cast<quint32>(data.size()), static_cast<quint32>(sound.rate), 1, 16) + data;
}

/// ITU-T G.711, mu-law: 14 bits with a bias of 33, a sign, three bits of segment and four of mantissa, all inverted.
std::uint8_t muLawOf(std::int16_t sample) {
    const int magnitude = std::min(std::abs(static_cast<int>(sample)), 32635) + 132;
    int segment = 7;
    while (segment > 0 && (magnitude & (0x80 << segment)) == 0)
        --segment;
    const int mantissa = (magnitude >> (segment + 3)) & 0x0F;
    return static_cast<std::uint8_t>(~((sample < 0 ? 0x80 : 0) | (segment << 4) | mantissa));
}

/// ITU-T G.711, A-law: 13 bits, with every second bit inverted.
std::uint8_t aLawOf(std::int16_t sample) {
    const int magnitude = sample >= 0 ? sample : -static_cast<int>(sample) - 1;
    int segment = 7;
    while (segment > 0 && (magnitude & (0x80 << segment)) == 0)
        --segment;
    const int mantissa = (magnitude >> (segment == 0 ? 4 : segment + 3)) & 0x0F;
    return static_cast<std::uint8_t>(((sample >= 0 ? 0x80 : 0) | (segment << 4) | mantissa) ^ 0x55);
}

QByteArray telephoneOf(const Sound &sound, std::uint8_t (*law)(std::int16_t)) {
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(sound.frames.size()));
    for (const float frame : sound.frames)
        bytes += static_cast<char>(law(sampleOf(frame)));
    return bytes;
}

using Lame = std::unique_ptr<lame_global_flags, int (*)(lame_global_flags *)>;

Lame lameFor(const OutputFormat &format) {
    Lame lame(lame_init(), lame_close);
    if (lame == nullptr)
        return lame;
    lame_set_in_samplerate(lame.get(), format.rate);
    lame_set_out_samplerate(lame.get(), format.rate);
    lame_set_num_channels(lame.get(), 1);
    lame_set_mode(lame.get(), MONO);
    lame_set_brate(lame.get(), format.kilobits);
    lame_set_quality(lame.get(), 4);
    lame_set_bWriteVbrTag(lame.get(), 1);
    if (lame_init_params(lame.get()) < 0)
        lame.reset();
    return lame;
}

std::optional<QByteArray> mp3Of(const Sound &sound, const OutputFormat &format) {
    const Lame lame = lameFor(format);
    if (lame == nullptr)
        return std::nullopt;
    constexpr std::size_t block = 1152 * 64;
    // The worst case for one call as given in lame.h, which also covers the flush.
    QByteArray buffer(static_cast<qsizetype>(block * 5 / 4 + 7200), Qt::Uninitialized);
    auto *out = reinterpret_cast<unsigned char *>(buffer.data());
    const int room = static_cast<int>(buffer.size());
    QByteArray bytes;
    for (std::size_t from = 0; from < sound.frames.size(); from += block) {
        const int count = static_cast<int>(std::min(block, sound.frames.size() - from));
        const int made =
            lame_encode_buffer_ieee_float(lame.get(), sound.frames.data() + from, nullptr, count, out, room);
        if (made < 0)
            return std::nullopt;
        bytes.append(buffer.constData(), made);
    }
    const int made = lame_encode_flush(lame.get(), out, room);
    if (made < 0)
        return std::nullopt;
    bytes.append(buffer.constData(), made);
    // Replace the placeholder frame at the start with the tag, whose values are known only now.
    const std::size_t tag = lame_get_lametag_frame(lame.get(), out, static_cast<std::size_t>(room));
    if (tag > 0 && tag <= static_cast<std::size_t>(std::min<qsizetype>(room, bytes.size())))
        bytes.replace(qsizetype{0}, static_cast<qsizetype>(tag), buffer.first(static_cast<qsizetype>(tag)));
    return bytes;
}

} // namespace

std::optional<QByteArray> encoded(const Sound &sound, const OutputFormat &format) {
    const std::optional<Sound> inRate = sound.atRate(format.rate);
    if (!inRate)
        return std::nullopt;
    switch (format.codec) {
    case Codec::Mp3:
        return mp3Of(*inRate, format);
    case Codec::Pcm:
        return pcmOf(*inRate);
    case Codec::Wav:
        return wavOf(*inRate);
    case Codec::MuLaw:
        return telephoneOf(*inRate, muLawOf);
    case Codec::ALaw:
        return telephoneOf(*inRate, aLawOf);
    }
    return std::nullopt;
}

} // namespace orlenta::localvoices
