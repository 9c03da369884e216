#pragma once

#include <optional>

#include <QtCore/QString>

#include "speech/http/ElevenLabsError.h"

namespace orlenta::speech {

/// Whatever can end an exchange with the service, from the wire to the file on disk.
class SpeechError final {
public:
    enum class Kind {
        /// The service refused; service() tells how.
        Service,
        /// The network failed; the words are the network layer's own.
        Transport,
        /// The service fell silent, or didn't come to an end in time.
        TimedOut,
        /// The reply went past the size that is accepted for its kind.
        ReplyTooLarge,
        /// The reply is not what its description says.
        Decoding,
        /// A file could not be read, written or converted; the words are the file or audio layer's own.
        File,
        /// Somebody called the exchange off: nothing to tell the user.
        Cancelled
    };

    SpeechError(ElevenLabsError error); // NOLINT(google-explicit-constructor): every service error is one
    [[nodiscard]] static SpeechError transport(const QString &text);
    [[nodiscard]] static SpeechError timedOut();
    [[nodiscard]] static SpeechError replyTooLarge();
    [[nodiscard]] static SpeechError decoding(const QString &text);
    [[nodiscard]] static SpeechError file(const QString &text);
    [[nodiscard]] static SpeechError cancelled();

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const std::optional<ElevenLabsError> &service() const { return m_service; }
    [[nodiscard]] bool isRateLimited() const;
    [[nodiscard]] bool isCancelled() const { return m_kind == Kind::Cancelled; }

    /// The sentence that the user reads.
    [[nodiscard]] QString description() const;

    friend bool operator==(const SpeechError &, const SpeechError &) = default;

private:
    SpeechError(Kind kind, const QString &text) : m_kind(kind), m_text(text) {}

    Kind m_kind;
    QString m_text;
    std::optional<ElevenLabsError> m_service;
};

} // namespace orlenta::speech
