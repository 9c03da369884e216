#pragma once

#include <variant>

#include <QtCore/QByteArray>
#include <QtCore/QJsonArray>
#include <QtCore/QString>

#include "localvoices/http/IncomingRequest.h"
#include "localvoices/protocol/SpeechSettings.h"

namespace orlenta::localvoices {

/// The body of a speech-to-speech request, checked against its schema.
struct SpeechToSpeechRequest {
    QByteArray audio;
    QString modelId;
    SpeechSettings settings;
    bool isPcm16 = false;

    /// The request, or the list of faults for a 422.
    [[nodiscard]] static std::variant<SpeechToSpeechRequest, QJsonArray> read(const IncomingRequest &request);
};

} // namespace orlenta::localvoices
