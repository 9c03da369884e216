#pragma once

#include <memory>

#include "audio/files/AudioDecoder.h"
#include "audio/files/Mp4Timing.h"

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;

namespace orlenta::audio {

/// Reads M4A files (AAC and Apple Lossless), and MP3 files that don't tell their length, through FFmpeg. The first file
/// opened sets for the whole process that FFmpeg logs nothing and allocates at most 256 MiB at a time.
class FfmpegDecoder final : public AudioDecoder {
public:
    enum class Container {
        Mp4,
        Mp3,
    };

    /// The file is read from `firstByte` on, which is 0 but in an MP3 file with junk before its first frame.
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
    /// Decides whether the edit list is followed, and sets the length.
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
    /// Reading ends here at the latest.
    std::optional<qint64> m_frames;
    /// Packets lie past the end of the file, so that only decoding tells how many frames there are.
    bool m_isCutOff = false;
    qint64 m_position = 0;
    int m_frameOffset = 0;
    bool m_isDrained = false;
    /// Told once the frames before it have been given, so that how many these are doesn't hang on the block's size.
    std::optional<AudioFileError> m_failure;
};

} // namespace orlenta::audio
