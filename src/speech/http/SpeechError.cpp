#include "speech/http/SpeechError.h"

namespace orlenta::speech {

SpeechError::SpeechError(ElevenLabsError error) : m_kind(Kind::Service), m_service(std::move(error)) {}

SpeechError SpeechError::transport(const QString &text) {
    return {Kind::Transport, text};
}

SpeechError SpeechError::timedOut() {
    return {Kind::TimedOut, QStringLiteral("The request timed out.")};
}

SpeechError SpeechError::replyTooLarge() {
    return {Kind::ReplyTooLarge, QStringLiteral("The service sent an unexpectedly large reply.")};
}

SpeechError SpeechError::decoding(const QString &text) {
    return {Kind::Decoding, text};
}

SpeechError SpeechError::file(const QString &text) {
    return {Kind::File, text};
}

SpeechError SpeechError::cannotWrite(const QString &reason) {
    return {Kind::File, reason.isEmpty() ? QStringLiteral("The generated audio couldn't be written.")
                                         : QStringLiteral("The generated audio couldn't be written: %1.").arg(reason)};
}

SpeechError SpeechError::notAudio() {
    return {Kind::NotAudio, QStringLiteral("The service's reply can't be read as audio.")};
}

SpeechError SpeechError::intercepted() {
    return {Kind::Intercepted,
            QStringLiteral("A web page arrived instead of the service's reply. The network may want you to sign in: "
                           "open any page in a browser, then try again.")};
}

SpeechError SpeechError::textTooLong(int count, int limit) {
    return {Kind::TextTooLong, QStringLiteral("The line has %1 characters, but its model takes %2 at most. Shorten or "
                                              "split the line.")
                                   .arg(count)
                                   .arg(limit)};
}

SpeechError SpeechError::notConnected() {
    return {Kind::NotConnected, QStringLiteral("Connect your ElevenLabs account in the account panel, or turn on local "
                                               "voices there, then generate again.")};
}

SpeechError SpeechError::cancelled() {
    return {Kind::Cancelled, QStringLiteral("The request was cancelled.")};
}

bool SpeechError::isRateLimited() const {
    return m_service && m_service->kind() == ElevenLabsError::Kind::RateLimited;
}

QString SpeechError::description() const {
    return m_service ? m_service->description() : m_text;
}

} // namespace orlenta::speech
