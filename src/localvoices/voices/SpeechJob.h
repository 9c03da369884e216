#pragma once

#include <optional>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "localvoices/lexicon/Lexicon.h"
#include "localvoices/protocol/SpeechSettings.h"

namespace orlenta::localvoices {

enum class JobKind { Speak, Convert };

/// The form of a recording to convert: an audio file or headerless samples.
enum class InputForm { File, Pcm16 };

/// Why a job failed.
struct JobFailure {
    enum class Cause { Input, Engine };

    Cause cause = Cause::Engine;
    /// For the client if the input is at fault, else for the log.
    QString sentence;
};

/// One job for a worker process.
struct SpeechJob {
    JobKind kind = JobKind::Speak;
    QString voiceId;
    QString outputFormat;
    SpeechSettings settings;

    /// To speak: the line as received, its language (ISO 639-1, may be empty), and the rules of all lexicons.
    QString text;
    QString languageCode;
    std::vector<PronunciationRule> rules;
    PhonemeRules phonemeRules = PhonemeRules::Skipped;

    /// To convert: the recording.
    QByteArray recording;
    InputForm recordingForm = InputForm::File;

    /// Serialises the job as CBOR, and back. None if the bytes aren't a job.
    [[nodiscard]] QByteArray toBytes() const;
    [[nodiscard]] static std::optional<SpeechJob> fromBytes(const QByteArray &bytes);
};

} // namespace orlenta::localvoices
