#pragma once

#include <variant>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "localvoices/http/HttpAnswer.h"
#include "localvoices/http/IncomingRequest.h"
#include "localvoices/protocol/SpeechSettings.h"

namespace orlenta::localvoices {

/// The body of a speech-to-speech request, checked against its schema.
struct SpeechToSpeechRequest {
    QByteArray audio;
    QString modelId;
    SpeechSettings settings;
    bool isPcm16 = false;

    /// The request, or the answer that refuses it.
    [[nodiscard]] static std::variant<SpeechToSpeechRequest, HttpAnswer> read(const IncomingRequest &request);
};

} // namespace orlenta::localvoices
