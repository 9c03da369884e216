#pragma once

#include <memory>

#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "audio/files/AudioFileError.h"
#include "audio/recording/InputStream.h"
#include "base/Result.h"

namespace orlenta::audio {

class RecordingWriter;
class SoundServer;

/// Records one source to one file, once. Main thread; a background thread writes the file.
class FileRecorder final : public QObject {
    Q_OBJECT
public:
    enum class Refusal { Unavailable, Unanswered, Forbidden };

    /// Creates the file. Doesn't record yet.
    [[nodiscard]] static base::Result<std::unique_ptr<FileRecorder>, AudioFileError>
    create(SoundServer &server, const InputStream::Source &source, const QString &path);
    /// Keeps the file if it contains any samples, otherwise removes it.
    ~FileRecorder() override;

    [[nodiscard]] QUrl url() const;
    /// The source is open and the take is running.
    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// Seconds recorded so far, or the file's length once it is finished.
    [[nodiscard]] double currentTime() const;
    /// A message for the user about how the take ended, or empty.
    [[nodiscard]] const QString &complaint() const { return m_complaint; }

    /// Opens the source; started() or refused() follows. Fails with the server's message if the request can't be sent.
    base::Result<void, QString> record();
    /// Ends the take now; finished() follows when the final samples have arrived.
    void stop();
    /// Makes the destructor remove the file, whatever it contains.
    void discard() { m_isDiscarded = true; }

Q_SIGNALS:
    void started();
    void refused(orlenta::audio::FileRecorder::Refusal why, const QString &reason);
    /// The file is complete. Not successful if it is empty. Also emitted when the source disappears.
    void finished(bool isSuccessful);
    /// Writing failed. The file keeps what was written before. The description doesn't name the file.
    void encodeErrorOccurred(const QString &description);

private:
    FileRecorder(SoundServer &server, InputStream::Source source, const QString &path);

    void handleEnded(InputStream::End end, const QString &reason);
    void handleWritten(qint64 frames);
    void handleWriteError(const AudioFileError &error);

    SoundServer &m_server;
    InputStream::Source m_source;
    QString m_path;
    std::unique_ptr<RecordingWriter> m_writer;
    std::unique_ptr<InputStream> m_stream;
    double m_currentTime = 0.0;
    QString m_complaint;
    bool m_isRecording = false;
    bool m_isDiscarded = false;
};

} // namespace orlenta::audio
