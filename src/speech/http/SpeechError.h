#pragma once

#include <optional>

#include <QtCore/QString>

#include "speech/http/ElevenLabsError.h"

namespace orlenta::speech {

/// Why a request to the service failed, from the wire to the file on disk.
class SpeechError final {
public:
    enum class Kind {
        /// The service refused; service() says how.
        Service,
        /// The network failed; the message is the network layer's.
        Transport,
        /// The service stopped answering, or took too long in all.
        TimedOut,
        /// The reply is larger than a reply of its kind may be.
        ReplyTooLarge,
        /// The reply doesn't have the form that the service documents.
        Decoding,
        /// A file couldn't be read, written or converted; the message is the file or audio layer's.
        File,
        /// The reply to a request for audio can't be read as audio.
        NotAudio,
        /// Something on the way answered in the service's place.
        Intercepted,
        /// The text is longer than its model takes; nothing was sent.
        TextTooLong,
        /// There is no key to send a request with.
        NotConnected,
        /// Somebody cancelled the request, or its account has gone: nothing to tell the user.
        Cancelled
    };

    SpeechError(ElevenLabsError error); // NOLINT(google-explicit-constructor): every service error is one
    [[nodiscard]] static SpeechError transport(const QString &text);
    [[nodiscard]] static SpeechError timedOut();
    [[nodiscard]] static SpeechError replyTooLarge();
    [[nodiscard]] static SpeechError decoding(const QString &text);
    [[nodiscard]] static SpeechError file(const QString &text);
    /// Generated audio couldn't be written; `reason` is the system's.
    [[nodiscard]] static SpeechError cannotWrite(const QString &reason);
    [[nodiscard]] static SpeechError notAudio();
    [[nodiscard]] static SpeechError intercepted();
    /// Both in user-perceived characters.
    [[nodiscard]] static SpeechError textTooLong(int count, int limit);
    [[nodiscard]] static SpeechError notConnected();
    [[nodiscard]] static SpeechError cancelled();

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const std::optional<ElevenLabsError> &service() const { return m_service; }
    [[nodiscard]] bool isRateLimited() const;
    [[nodiscard]] bool isCancelled() const { return m_kind == Kind::Cancelled; }

    /// The message shown to the user.
    [[nodiscard]] QString description() const;

    friend bool operator==(const SpeechError &, const SpeechError &) = default;

private:
    SpeechError(Kind kind, const QString &text) : m_kind(kind), m_text(text) {}

    Kind m_kind;
    QString m_text;
    std::optional<ElevenLabsError> m_service;
};

} // namespace orlenta::speech
