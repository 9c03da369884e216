#include "localvoices/workers/SpeechWorker.h"

#include <clocale>
#include <cstdio>
#include <optional>

#include <QtCore/QFile>

#include "localvoices/engines/AudioEncoder.h"
#include "localvoices/engines/EspeakEngine.h"
#include "localvoices/engines/RecordingDecoder.h"
#include "localvoices/voices/LineSpeaker.h"
#include "localvoices/voices/SpeechJob.h"
#include "localvoices/voices/VoiceCatalogue.h"
#include "localvoices/voices/VoiceShifter.h"
#include "localvoices/workers/Confinement.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

base::Result<Sound, JobFailure> convertedRecording(const SpeechJob &job) {
    const base::Result<Sound, QString> speech =
        job.recordingForm == InputForm::Pcm16 ? decodedPcm16(job.recording) : decodedFile(job.recording);
    if (!speech)
        return base::fail(JobFailure{JobFailure::Cause::Input, speech.error()});
    const std::optional<VoiceProfile> voice = findVoice(job.voiceId);
    if (!voice)
        return base::fail(JobFailure{JobFailure::Cause::Engine, u"There is no voice %1."_s.arg(job.voiceId)});
    return spokenAs(*voice, speech.value());
}

WorkerExit complain(WorkerExit how, const QString &sentence) {
    std::fputs(sentence.toUtf8().constData(), stdout);
    std::fflush(stdout);
    return how;
}

} // namespace

WorkerExit runSpeechWorker() {
    // espeak-ng sets this locale later, when its file can no longer be opened.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    // Before reading any untrusted input.
    confineProcess(EspeakEngine::dataFolder());
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return complain(WorkerExit::Failed, u"The job could not be read."_s);
    const std::optional<SpeechJob> job = SpeechJob::fromBytes(input.readAll());
    if (!job)
        return complain(WorkerExit::Failed, u"The job could not be understood."_s);
    const std::optional<OutputFormat> format = findOutputFormat(job->outputFormat);
    if (!format)
        return complain(WorkerExit::Failed, u"The output format is not supported."_s);

    const base::Result<Sound, JobFailure> sound =
        job->kind == JobKind::Speak ? spokenLine(*job) : convertedRecording(*job);
    if (!sound)
        return complain(sound.error().cause == JobFailure::Cause::Input ? WorkerExit::UnusableInput
                                                                        : WorkerExit::Failed,
                        sound.error().sentence);
    const std::optional<QByteArray> bytes = encoded(sound.value(), *format);
    if (!bytes)
        return complain(WorkerExit::Failed, u"The audio could not be encoded."_s);
    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly) || output.write(*bytes) != bytes->size() || !output.flush())
        return complain(WorkerExit::Failed, u"The audio could not be written."_s);
    return WorkerExit::Done;
}

} // namespace orlenta::localvoices
