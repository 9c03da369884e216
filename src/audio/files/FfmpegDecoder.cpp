#include "audio/files/FfmpegDecoder.h"

#include <algorithm>
#include <limits>
#include <mutex>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QScopeGuard>

#include "audio/files/SampleCleaning.h"

namespace orlenta::audio {
namespace {

// The longest packet is Apple Lossless's, with 4096 frames. A file can't contain more frames than that per byte.
constexpr qint64 mostFramesPerByte = 4096;
// The demuxer allocates memory for as many packets as the file claims to have, without checking. This is enough for 60
// hours.
constexpr size_t mostBytesPerAllocation = 256 * 1024 * 1024;
// libavformat ignores an iTunSMPB tag with a larger delay.
constexpr qint64 mostTakenOffPriming = 16384;

bool isReadCodec(AVCodecID codec) {
    return codec == AV_CODEC_ID_AAC || codec == AV_CODEC_ID_ALAC || codec == AV_CODEC_ID_MP3;
}

// Both settings are process-wide.
void setUpFfmpegOnce() {
    static std::once_flag isSetUp;
    std::call_once(isSetUp, [] {
        av_log_set_level(AV_LOG_QUIET);
        av_max_alloc(mostBytesPerAllocation);
    });
}

int findAudioStream(const AVFormatContext *input) {
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        if (input->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            return static_cast<int>(i);
    }
    return -1;
}

bool isUsableTime(qint64 time) {
    constexpr qint64 limit = std::numeric_limits<qint64>::max() / 4;
    return time > -limit && time < limit;
}

// Unknown values are negative.
std::optional<qint64> knownDuration(const AVStream *stream) {
    const bool isTold = stream->duration >= 0 && isUsableTime(stream->duration);
    return isTold ? std::optional<qint64>(stream->duration) : std::nullopt;
}

std::optional<EncoderDelay> encoderDelay(const AVFormatContext *input, const AVStream *stream) {
    const AVDictionaryEntry *tag = av_dict_get(input->metadata, "iTunSMPB", nullptr, 0);
    const auto delay = tag != nullptr ? EncoderDelay::parse(tag->value) : std::nullopt;
    // The demuxer removes only these delays.
    const bool isTakenOff = delay && (delay->priming == 0 || (stream->codecpar->codec_id == AV_CODEC_ID_AAC &&
                                                              delay->priming < mostTakenOffPriming));
    return isTakenOff ? delay : std::nullopt;
}

// `stream` must come from a demuxer that ignores the edit list; otherwise it omits packets.
TrackTiming timingOf(const AVFormatContext *input, AVStream *stream, std::optional<qint64> editedTicks) {
    TrackTiming timing;
    timing.ticksPerSecond = stream->time_base.den;
    timing.editedTicks = editedTicks;
    timing.encoderDelay = encoderDelay(input, stream);
    const AVIndexEntry *first = avformat_index_get_entry(stream, 0);
    if (first == nullptr || stream->duration <= 0 || !isUsableTime(first->timestamp))
        return timing;
    timing.trackTicks = knownDuration(stream);
    timing.delayTicks = -first->timestamp;
    return timing;
}

bool isCutOff(AVStream *stream, qint64 fileBytes) {
    const int packets = avformat_index_get_entries_count(stream);
    for (int i = 0; i < packets; ++i) {
        const AVIndexEntry *packet = avformat_index_get_entry(stream, i);
        if (packet->pos > fileBytes - packet->size)
            return true;
    }
    return false;
}

double scaledSample(const AVFrame *frame, int channel, int index, int channels) {
    const auto format = static_cast<AVSampleFormat>(frame->format);
    const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
    const uint8_t *data = frame->extended_data[isPlanar ? channel : 0];
    const int at = isPlanar ? index : index * channels + channel;
    switch (av_get_packed_sample_fmt(format)) {
    case AV_SAMPLE_FMT_S16:
        return reinterpret_cast<const int16_t *>(data)[at] / 32768.0;
    case AV_SAMPLE_FMT_S32:
        return reinterpret_cast<const int32_t *>(data)[at] / 2147483648.0;
    case AV_SAMPLE_FMT_FLT:
        return static_cast<double>(reinterpret_cast<const float *>(data)[at]);
    case AV_SAMPLE_FMT_DBL:
        return reinterpret_cast<const double *>(data)[at];
    default:
        return 0.0;
    }
}

} // namespace

FfmpegDecoder::FfmpegDecoder(QString path, Container container, qint64 firstByte)
    : m_path(std::move(path)), m_container(container), m_firstByte(firstByte), m_packet(av_packet_alloc()),
      m_frame(av_frame_alloc()) {}

FfmpegDecoder::~FfmpegDecoder() {
    av_frame_free(&m_frame);
    av_packet_free(&m_packet);
    avcodec_free_context(&m_codec);
    avformat_close_input(&m_input);
}

base::Result<std::unique_ptr<AudioDecoder>, AudioFileError> FfmpegDecoder::open(const QString &path,
                                                                                Container container, qint64 firstByte) {
    setUpFfmpegOnce();
    auto decoder = std::unique_ptr<FfmpegDecoder>(new FfmpegDecoder(path, container, firstByte));
    if (decoder->m_packet == nullptr || decoder->m_frame == nullptr)
        return base::fail(AudioFileError{AudioFileError::Kind::OutOfMemory, path, {}});
    if (const auto opened = decoder->openStreams(); !opened)
        return base::fail(opened.error());
    if (const auto opened = decoder->openCodec(); !opened)
        return base::fail(opened.error());
    return std::unique_ptr<AudioDecoder>(std::move(decoder));
}

AudioFileError FfmpegDecoder::errorOf(AudioFileError::Kind kind, int code) const {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> words{};
    av_strerror(code, words.data(), words.size());
    return {kind, m_path, QString::fromUtf8(words.data())};
}

AVFormatContext *FfmpegDecoder::openInput(TrackTiming::EditList editList, int &code) const {
    // Fix the demuxer and allow only the file protocol, so that a malicious file can't make FFmpeg open anything else.
    const AVInputFormat *demuxer = av_find_input_format(m_container == Container::Mp4 ? "mov" : "mp3");
    AVDictionary *options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    av_dict_set_int(&options, "skip_initial_bytes", m_firstByte, 0);
    if (editList == TrackTiming::EditList::Ignored)
        av_dict_set(&options, "advanced_editlist", "0", 0);
    AVFormatContext *input = nullptr;
    code = avformat_open_input(&input, ("file:" + QFile::encodeName(m_path)).constData(), demuxer, &options);
    av_dict_free(&options);
    return code == 0 ? input : nullptr;
}

base::Result<void, AudioFileError> FfmpegDecoder::openStreams() {
    int code = 0;
    m_input = openInput(TrackTiming::EditList::Applied, code);
    if (m_input == nullptr)
        return base::fail(errorOf(AudioFileError::Kind::UnsupportedFormat, code));
    if (m_container == Container::Mp4) {
        if (const auto chosen = chooseMp4Input(); !chosen)
            return chosen;
    }
    code = avformat_find_stream_info(m_input, nullptr);
    if (code < 0)
        return base::fail(errorOf(AudioFileError::Kind::UnsupportedFormat, code));
    m_stream = findAudioStream(m_input);
    if (m_stream < 0 || !isReadCodec(m_input->streams[m_stream]->codecpar->codec_id))
        return base::fail(AudioFileError{AudioFileError::Kind::UnsupportedFormat, m_path, {}});
    for (unsigned i = 0; i < m_input->nb_streams; ++i) {
        if (static_cast<int>(i) != m_stream)
            m_input->streams[i]->discard = AVDISCARD_ALL;
    }
    return {};
}

base::Result<void, AudioFileError> FfmpegDecoder::chooseMp4Input() {
    int code = 0;
    AVFormatContext *whole = openInput(TrackTiming::EditList::Ignored, code);
    const auto closing = qScopeGuard([&whole] { avformat_close_input(&whole); });
    const int stream = findAudioStream(m_input);
    if (stream < 0 || whole == nullptr || findAudioStream(whole) != stream)
        return {};
    AVStream *track = whole->streams[stream];
    // If the packet list doesn't fit in memory, the demuxer carries on without it.
    if (track->nb_frames > 0 && avformat_index_get_entries_count(track) == 0)
        return base::fail(AudioFileError{AudioFileError::Kind::OutOfMemory, m_path,
                                         QStringLiteral("it claims to hold %1 packets").arg(track->nb_frames)});
    m_isCutOff = isCutOff(track, QFileInfo(m_path).size());
    TrackTiming timing = timingOf(whole, track, knownDuration(m_input->streams[stream]));
    timing.movieTicksPerSecond = movieTicksPerSecond(m_path);
    const auto length = timing.length();
    if (!length)
        return {};
    m_lengthTicks = length->ticks;
    if (length->editList == TrackTiming::EditList::Ignored)
        std::swap(m_input, whole);
    return {};
}

base::Result<void, AudioFileError> FfmpegDecoder::openCodec() {
    const AVStream *stream = m_input->streams[m_stream];
    const AVCodec *codec = avcodec_find_decoder(stream->codecpar->codec_id);
    m_codec = avcodec_alloc_context3(codec);
    if (codec == nullptr || m_codec == nullptr)
        return base::fail(AudioFileError{AudioFileError::Kind::UnsupportedFormat, m_path, {}});
    int code = avcodec_parameters_to_context(m_codec, stream->codecpar);
    m_codec->pkt_timebase = stream->time_base;
    if (code >= 0)
        code = avcodec_open2(m_codec, codec, nullptr);
    if (code < 0)
        return base::fail(errorOf(AudioFileError::Kind::UnsupportedFormat, code));
    const int rate = m_codec->sample_rate;
    const int channels = m_codec->ch_layout.nb_channels;
    if (!isUsableFormat(rate, channels))
        return base::fail(AudioFileError{AudioFileError::Kind::UnsupportedFormat, m_path, {}});
    m_format = {static_cast<double>(rate), channels, AudioFileFormat::Coding::Compressed, 0,
                AudioFileFormat::Container::Other};
    if (m_lengthTicks && *m_lengthTicks > 0) {
        const qint64 frames = av_rescale_q(*m_lengthTicks, stream->time_base, AVRational{1, rate});
        if (frames > 0 && frames / mostFramesPerByte <= QFileInfo(m_path).size())
            m_frames = frames;
    }
    return {};
}

const AudioFileFormat &FfmpegDecoder::format() const {
    return m_format;
}

std::optional<qint64> FfmpegDecoder::frames() const {
    return m_isCutOff ? std::nullopt : m_frames;
}

double FfmpegDecoder::readShare(qint64 position) const {
    const qint64 done = m_frames ? position : avio_tell(m_input->pb);
    const qint64 all = m_frames ? *m_frames : avio_size(m_input->pb);
    return all > 0 ? std::clamp(static_cast<double>(done) / static_cast<double>(all), 0.0, 1.0) : 0.0;
}

bool FfmpegDecoder::seek(qint64 frame) {
    return frame == m_position;
}

base::Result<void, AudioFileError> FfmpegDecoder::feedPacket() {
    int code = av_read_frame(m_input, m_packet);
    if (code < 0) {
        // A truncated file ends early; keep what it contains.
        avcodec_send_packet(m_codec, nullptr);
        return {};
    }
    if (m_packet->stream_index == m_stream)
        code = avcodec_send_packet(m_codec, m_packet);
    av_packet_unref(m_packet);
    // Stray bytes between MP3 frames are common (tags, joined files). In an M4A file, a bad packet means damage.
    if (code < 0 && m_container == Container::Mp4)
        return base::fail(errorOf(AudioFileError::Kind::Damaged, code));
    return {};
}

base::Result<FfmpegDecoder::Step, AudioFileError> FfmpegDecoder::decodeFrame() {
    while (!m_isDrained) {
        const int code = avcodec_receive_frame(m_codec, m_frame);
        if (code == AVERROR(EAGAIN)) {
            if (const auto fed = feedPacket(); !fed)
                return base::fail(fed.error());
            continue;
        }
        if (code == AVERROR_EOF) {
            m_isDrained = true;
            break;
        }
        if (code < 0 && m_container == Container::Mp3)
            continue;
        if (code < 0)
            return base::fail(errorOf(AudioFileError::Kind::Damaged, code));
        if (m_frame->sample_rate != static_cast<int>(m_format.sampleRate) ||
            m_frame->ch_layout.nb_channels != m_format.channelCount)
            return base::fail(AudioFileError{AudioFileError::Kind::Damaged, m_path,
                                             QStringLiteral("its rate or its channels change on the way")});
        m_frameOffset = 0;
        return Step::GotFrame;
    }
    return Step::Ended;
}

template <typename Sample>
AudioDecoder::ReadResult FfmpegDecoder::readSamples(std::span<Sample> samples) {
    const int channels = m_format.channelCount;
    auto wanted = static_cast<qint64>(samples.size()) / channels;
    if (m_frames)
        wanted = std::min(wanted, *m_frames - m_position);
    qint64 done = 0;
    while (done < wanted && !m_failure) {
        if (m_frameOffset >= m_frame->nb_samples) {
            const auto step = decodeFrame();
            if (step && *step == Step::Ended)
                break;
            if (!step) {
                m_failure = step.error();
                break;
            }
        }
        const auto count = static_cast<int>(std::min<qint64>(wanted - done, m_frame->nb_samples - m_frameOffset));
        for (int i = 0; i < count; ++i) {
            for (int channel = 0; channel < channels; ++channel) {
                const double sample = scaledSample(m_frame, channel, m_frameOffset + i, channels);
                samples[static_cast<size_t>((done + i) * channels + channel)] =
                    isSound(sample) ? static_cast<Sample>(sample) : Sample{};
            }
        }
        m_frameOffset += count;
        done += count;
    }
    m_position += done;
    if (m_failure && done == 0 && wanted > 0)
        return base::fail(*m_failure);
    return static_cast<qsizetype>(done);
}

AudioDecoder::ReadResult FfmpegDecoder::read(std::span<double> samples) {
    return readSamples(samples);
}

AudioDecoder::ReadResult FfmpegDecoder::read(std::span<float> samples) {
    return readSamples(samples);
}

} // namespace orlenta::audio
