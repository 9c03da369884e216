#include "audio/files/Mp4Timing.h"

#include <array>

extern "C" {
#include <libavutil/mathematics.h>
}

#include <QtCore/QFile>
#include <QtCore/QtEndian>

namespace orlenta::audio {
namespace {

// Sane muxers write only a handful of boxes before and inside the movie box.
constexpr int mostBoxes = 4096;
constexpr qint64 boxHeaderBytes = 8;
constexpr qint64 longBoxHeaderBytes = 16;

/// The location of a box's content in the file.
struct BoxSpan {
    qint64 start = 0;
    qint64 end = 0;
};

QByteArray mp4BytesAt(QFile &file, qint64 at, qint64 count) {
    return file.seek(at) ? file.read(count) : QByteArray();
}

std::optional<BoxSpan> findBox(QFile &file, BoxSpan within, const char *type) {
    qint64 at = within.start;
    for (int box = 0; box < mostBoxes && at + boxHeaderBytes <= within.end; ++box) {
        const QByteArray head = mp4BytesAt(file, at, longBoxHeaderBytes);
        if (head.size() < boxHeaderBytes)
            return std::nullopt;
        qint64 headBytes = boxHeaderBytes;
        qint64 bytes = qFromBigEndian<quint32>(head.constData());
        if (bytes == 0)
            bytes = within.end - at;
        if (bytes == 1 && head.size() == longBoxHeaderBytes) {
            headBytes = longBoxHeaderBytes;
            bytes = qFromBigEndian<qint64>(head.constData() + boxHeaderBytes);
        }
        if (bytes < headBytes || bytes > within.end - at)
            return std::nullopt;
        if (head.sliced(4, 4) == type)
            return BoxSpan{at + headBytes, at + bytes};
        at += bytes;
    }
    return std::nullopt;
}

} // namespace

std::optional<EncoderDelay> EncoderDelay::parse(QByteArrayView tag) {
    const auto fields = tag.toByteArray().simplified().split(' ');
    if (fields.size() < 4)
        return std::nullopt;
    std::array<qint64, 3> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers[i] = fields[static_cast<qsizetype>(i) + 1].toLongLong(&isNumber, 16);
        if (!isNumber || numbers[i] < 0)
            return std::nullopt;
    }
    constexpr qint64 longest = qint64{1} << 48;
    if (numbers[0] > longest || numbers[1] > longest || numbers[2] > longest || numbers[2] == 0)
        return std::nullopt;
    return EncoderDelay{numbers[0], numbers[1], numbers[2]};
}

std::optional<qint64> movieTicksPerSecond(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    const auto movie = findBox(file, {0, file.size()}, "moov");
    const auto header = movie ? findBox(file, *movie, "mvhd") : std::nullopt;
    if (!header)
        return std::nullopt;
    // Version and flags, two dates (of 8 bytes each in version 1, else 4), then the clock.
    const QByteArray content = mp4BytesAt(file, header->start, std::min<qint64>(header->end - header->start, 24));
    const qsizetype at = content.startsWith('\1') ? 20 : 12;
    if (content.size() < at + 4)
        return std::nullopt;
    const auto ticks = qFromBigEndian<quint32>(content.constData() + at);
    return ticks > 0 ? std::optional<qint64>(ticks) : std::nullopt;
}

// Some muxers round down to the movie's clock, others up.
bool TrackTiming::isRoundedTo(qint64 ticks) const {
    if (!movieTicksPerSecond)
        return ticks == *editedTicks;
    const auto inMovieTicks = [this](qint64 exact, AVRounding rounding) {
        return av_rescale_rnd(exact, *movieTicksPerSecond, ticksPerSecond, rounding);
    };
    const qint64 told = inMovieTicks(*editedTicks, AV_ROUND_NEAR_INF);
    return told == inMovieTicks(ticks, AV_ROUND_DOWN) || told == inMovieTicks(ticks, AV_ROUND_UP);
}

// An editor may have kept the tag of another file while cutting or joining audio.
bool TrackTiming::isOfThisTrack(const EncoderDelay &delay) const {
    const qint64 withoutPadding = delay.priming + delay.frames;
    return withoutPadding <= *trackTicks && *trackTicks <= withoutPadding + delay.padding;
}

std::optional<TrackTiming::Length> TrackTiming::length() const {
    if (!editedTicks || !trackTicks)
        return editedTicks ? std::optional(Length{*editedTicks, EditList::Applied}) : std::nullopt;
    const bool hasEditList = delayTicks != 0 || *editedTicks != *trackTicks;
    if (encoderDelay && isOfThisTrack(*encoderDelay)) {
        const bool isConfirmed = encoderDelay->priming == delayTicks && isRoundedTo(encoderDelay->frames);
        if (!hasEditList || isConfirmed)
            return Length{encoderDelay->frames, EditList::Ignored};
    }
    // If edit list and track agree except for rounding, the list only declares the encoder delay, and the track's exact
    // length is right.
    const qint64 withoutDelay = *trackTicks - delayTicks;
    if (withoutDelay > 0 && isRoundedTo(withoutDelay))
        return Length{withoutDelay, EditList::Ignored};
    return Length{*editedTicks, EditList::Applied};
}

} // namespace orlenta::audio
