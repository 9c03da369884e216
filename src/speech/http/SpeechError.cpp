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
    return {Kind::ReplyTooLarge, QStringLiteral("The server's reply is larger than such a reply can be.")};
}

SpeechError SpeechError::decoding(const QString &text) {
    return {Kind::Decoding, text};
}

SpeechError SpeechError::file(const QString &text) {
    return {Kind::File, text};
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
