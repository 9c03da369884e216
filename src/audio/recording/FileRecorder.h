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

/// Records one source into one file, once. Main thread; writing runs on a thread of its own.
class FileRecorder final : public QObject {
    Q_OBJECT
public:
    enum class Refusal { Unavailable, Unanswered, Forbidden };

    /// Makes the file; nothing is recorded yet.
    [[nodiscard]] static base::Result<std::unique_ptr<FileRecorder>, AudioFileError>
    create(SoundServer &server, const InputStream::Source &source, const QString &path);
    /// What has come by now stays in the file; a file with nothing in it goes.
    ~FileRecorder() override;

    [[nodiscard]] QUrl url() const;
    /// Sound is being taken in.
    [[nodiscard]] bool isRecording() const { return m_isRecording; }
    /// Seconds recorded so far; of the whole file when it is finished.
    [[nodiscard]] double currentTime() const;
    /// What the user has to be told of how the take ended; empty where nothing went wrong.
    [[nodiscard]] const QString &complaint() const { return m_complaint; }

    /// Asks for the source; started() or refused() follows. Fails with the server's words when it can't be asked.
    base::Result<void, QString> record();
    /// Ends the take now; finished() follows when the samples that were on their way have come.
    void stop();
    /// Whatever has come by now, the file goes with this object.
    void discard() { m_isDiscarded = true; }

Q_SIGNALS:
    void started();
    void refused(orlenta::audio::FileRecorder::Refusal why, const QString &reason);
    /// The file is complete; not successful when there is no sound in it. Comes by itself when the source goes.
    void finished(bool isSuccessful);
    /// The file could not be written on. What went before stays in it. The description names no file.
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
