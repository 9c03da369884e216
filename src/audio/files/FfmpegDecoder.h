#pragma once

#include <memory>

#include "audio/files/AudioDecoder.h"
#include "audio/files/Mp4Timing.h"

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;

namespace orlenta::audio {

/// Reads M4A files (AAC and Apple Lossless), and MP3 files that don't declare their length, through FFmpeg. Opening the
/// first file configures FFmpeg for the whole process: no logging, and at most 256 MiB per allocation.
class FfmpegDecoder final : public AudioDecoder {
public:
    enum class Container {
        Mp4,
        Mp3,
    };

    /// Reads from `firstByte`, which is 0 except for MP3 files with junk before the first frame.
    [[nodiscard]] static base::Result<std::unique_ptr<AudioDecoder>, AudioFileError>
    open(const QString &path, Container container, qint64 firstByte = 0);
    ~FfmpegDecoder() override;

    [[nodiscard]] const AudioFileFormat &format() const override;
    [[nodiscard]] std::optional<qint64> frames() const override;
    [[nodiscard]] double readShare(qint64 position) const override;
    ReadResult read(std::span<double> samples) override;
    ReadResult read(std::span<float> samples) override;
    [[nodiscard]] bool seek(qint64 frame) override;

private:
    enum class Step { GotFrame, Ended };

    FfmpegDecoder(QString path, Container container, qint64 firstByte);
    [[nodiscard]] AVFormatContext *openInput(TrackTiming::EditList editList, int &code) const;
    base::Result<void, AudioFileError> openStreams();
    /// Decides whether to apply the edit list, and sets the length.
    base::Result<void, AudioFileError> chooseMp4Input();
    base::Result<void, AudioFileError> openCodec();
    template <typename Sample>
    ReadResult readSamples(std::span<Sample> samples);
    base::Result<Step, AudioFileError> decodeFrame();
    base::Result<void, AudioFileError> feedPacket();
    [[nodiscard]] AudioFileError errorOf(AudioFileError::Kind kind, int code) const;

    QString m_path;
    Container m_container;
    qint64 m_firstByte;
    AVFormatContext *m_input = nullptr;
    AVCodecContext *m_codec = nullptr;
    AVPacket *m_packet = nullptr;
    AVFrame *m_frame = nullptr;
    int m_stream = -1;
    AudioFileFormat m_format;
    std::optional<qint64> m_lengthTicks;
    /// Reading stops here.
    std::optional<qint64> m_frames;
    /// The file is truncated: the index lists packets past its end, so only decoding can tell the number of frames.
    bool m_isCutOff = false;
    qint64 m_position = 0;
    int m_frameOffset = 0;
    bool m_isDrained = false;
    /// Reported after the frames before it have been returned, so that their number doesn't depend on the block size.
    std::optional<AudioFileError> m_failure;
};

} // namespace orlenta::audio
