#pragma once

#include <optional>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "localvoices/lexicon/Lexicon.h"
#include "localvoices/protocol/SpeechSettings.h"

namespace orlenta::localvoices {

enum class JobKind { Speak, Convert };

/// What a recording that is to be converted is: a file of some kind, or bare samples.
enum class InputForm { File, Pcm16 };

/// Why a job came to nothing.
struct JobFailure {
    enum class Cause { Input, Engine };

    Cause cause = Cause::Engine;
    /// For whoever sent the input, or for the log.
    QString sentence;
};

/// One piece of work for a worker process.
struct SpeechJob {
    JobKind kind = JobKind::Speak;
    QString voiceId;
    QString outputFormat;
    SpeechSettings settings;

    /// To speak: the line as it came, ISO 639-1 or empty, and what the lexicons say.
    QString text;
    QString languageCode;
    std::vector<PronunciationRule> rules;
    PhonemeRules phonemeRules = PhonemeRules::Skipped;

    /// To convert: the recording.
    QByteArray recording;
    InputForm recordingForm = InputForm::File;

    /// The job as CBOR, the form in which it reaches a worker, and back; none for what isn't a job.
    [[nodiscard]] QByteArray toBytes() const;
    [[nodiscard]] static std::optional<SpeechJob> fromBytes(const QByteArray &bytes);
};

} // namespace orlenta::localvoices
