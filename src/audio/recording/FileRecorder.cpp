#include "audio/recording/FileRecorder.h"

#include <QtCore/QFile>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/recording/RecordingWriter.h"

namespace orlenta::audio {

base::Result<std::unique_ptr<FileRecorder>, AudioFileError>
FileRecorder::create(SoundServer &server, const InputStream::Source &source, const QString &path) {
    std::unique_ptr<FileRecorder> recorder(new FileRecorder(server, source, path));
    FileRecorder *self = recorder.get();
    auto writer = RecordingWriter::create(path, source.sampleRate,
                                          {self, [self](qint64 frames) { self->handleWritten(frames); },
                                           [self](const AudioFileError &error) { self->handleWriteError(error); }});
    if (!writer)
        return base::fail(writer.error());
    recorder->m_writer = std::move(writer).value();
    return recorder;
}

FileRecorder::FileRecorder(SoundServer &server, InputStream::Source source, const QString &path)
    : m_server(server), m_source(std::move(source)), m_path(path) {}

FileRecorder::~FileRecorder() {
    const bool isEmpty = currentTime() == 0.0;
    m_stream.reset();
    const bool hasFile = m_writer != nullptr;
    m_writer.reset();
    if (hasFile && (isEmpty || m_isDiscarded))
        QFile::remove(m_path);
}

QUrl FileRecorder::url() const {
    return QUrl::fromLocalFile(m_path);
}

double FileRecorder::currentTime() const {
    return m_stream ? m_stream->capturedTime().count() : m_currentTime;
}

base::Result<void, QString> FileRecorder::record() {
    auto stream =
        InputStream::open(m_server, m_source, *m_writer,
                          {this,
                           [this] {
                               m_isRecording = true;
                               Q_EMIT started();
                           },
                           [this](InputStream::End end, const QString &reason) { handleEnded(end, reason); }});
    if (!stream)
        return base::fail(stream.error());
    m_stream = std::move(stream).value();
    return {};
}

void FileRecorder::stop() {
    if (m_stream)
        m_stream->stop();
}

void FileRecorder::handleEnded(InputStream::End end, const QString &reason) {
    m_currentTime = currentTime();
    m_stream.reset();
    m_isRecording = false;
    switch (end) {
    case InputStream::End::Lost:
        AudioDebugLogger::log(QStringLiteral("FileRecorder source lost: %1").arg(reason));
        m_writer->finish();
        break;
    case InputStream::End::Stalled:
        AudioDebugLogger::log(QStringLiteral("FileRecorder source stalled: %1").arg(reason));
        m_complaint = reason;
        m_writer->finish();
        break;
    case InputStream::End::Stopped:
        m_writer->finish();
        break;
    case InputStream::End::Refused:
        Q_EMIT refused(Refusal::Unavailable, reason);
        break;
    case InputStream::End::Unanswered:
        Q_EMIT refused(Refusal::Unanswered, reason);
        break;
    case InputStream::End::Forbidden:
        Q_EMIT refused(Refusal::Forbidden, reason);
        break;
    }
}

void FileRecorder::handleWritten(qint64 frames) {
    m_currentTime = static_cast<double>(frames) / RecordingWriter::format.sampleRate;
    Q_EMIT finished(frames > 0);
}

void FileRecorder::handleWriteError(const AudioFileError &error) {
    m_currentTime = currentTime();
    m_stream.reset();
    m_isRecording = false;
    Q_EMIT encodeErrorOccurred(error.withoutName().description());
}

} // namespace orlenta::audio
