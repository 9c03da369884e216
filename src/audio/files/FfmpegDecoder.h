#pragma once

#include <memory>

#include "audio/files/AudioDecoder.h"

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;

namespace orlenta::audio {

/// Reads M4A files (AAC and Apple Lossless), and MP3 files that don't tell their length, through FFmpeg.
class FfmpegDecoder final : public AudioDecoder {
public:
    enum class Container {
        Mp4,
        Mp3,
    };

    [[nodiscard]] static base::Result<std::unique_ptr<AudioDecoder>, AudioFileError> open(const QString &path,
                                                                                          Container container);
    ~FfmpegDecoder() override;

    [[nodiscard]] const AudioFileFormat &format() const override;
    [[nodiscard]] std::optional<qint64> frames() const override;
    ReadResult read(std::span<double> samples) override;
    ReadResult read(std::span<float> samples) override;
    [[nodiscard]] bool seek(qint64 frame) override;

private:
    enum class Step { GotFrame, Ended };

    FfmpegDecoder(QString path, Container container);
    base::Result<void, AudioFileError> openStreams();
    /// Decides whether the edit list is followed, and sets the length.
    void chooseMp4Input();
    base::Result<void, AudioFileError> openCodec();
    template <typename Sample>
    ReadResult readSamples(std::span<Sample> samples);
    base::Result<Step, AudioFileError> decodeFrame();
    base::Result<void, AudioFileError> feedPacket();
    [[nodiscard]] AudioFileError errorOf(AudioFileError::Kind kind, int code) const;

    QString m_path;
    Container m_container;
    AVFormatContext *m_input = nullptr;
    AVCodecContext *m_codec = nullptr;
    AVPacket *m_packet = nullptr;
    AVFrame *m_frame = nullptr;
    int m_stream = -1;
    AudioFileFormat m_format;
    std::optional<qint64> m_lengthTicks;
    std::optional<qint64> m_frames;
    qint64 m_position = 0;
    int m_frameOffset = 0;
    bool m_isDrained = false;
};

} // namespace orlenta::audio
