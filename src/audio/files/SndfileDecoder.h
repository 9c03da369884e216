#pragma once

#include <memory>

#include "audio/files/AudioDecoder.h"

struct sf_private_tag;

namespace orlenta::audio {

/// Reads WAV, AIFF, CAF, FLAC and tagged MP3 files through libsndfile.
class SndfileDecoder final : public AudioDecoder {
public:
    /// `path` must be a regular file.
    [[nodiscard]] static base::Result<std::unique_ptr<SndfileDecoder>, AudioFileError> open(const QString &path);
    ~SndfileDecoder() override;

    [[nodiscard]] bool isMp3() const;
    [[nodiscard]] const AudioFileFormat &format() const override;
    [[nodiscard]] std::optional<qint64> frames() const override;
    [[nodiscard]] double readShare(qint64 position) const override;
    ReadResult read(std::span<double> samples) override;
    ReadResult read(std::span<float> samples) override;
    [[nodiscard]] bool seek(qint64 frame) override;

private:
    SndfileDecoder(QString path, sf_private_tag *file);
    [[nodiscard]] ReadResult finished(qint64 framesRead) const;

    QString m_path;
    sf_private_tag *m_file;
    AudioFileFormat m_format;
    qint64 m_frames = 0;
    bool m_isMp3 = false;
    bool m_isFloatingPoint = false;
};

} // namespace orlenta::audio
