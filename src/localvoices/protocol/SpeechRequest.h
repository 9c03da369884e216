#pragma once

#include <optional>
#include <variant>
#include <vector>

#include <QtCore/QJsonArray>
#include <QtCore/QString>

#include "localvoices/protocol/MultipartForm.h"
#include "localvoices/protocol/SpeechSettings.h"
#include "localvoices/server/HttpExchange.h"

namespace orlenta::localvoices {

struct DictionaryLocator {
    QString dictionaryId;
    std::optional<QString> versionId;
};

/// The body of a text-to-speech request, checked against its schema.
struct TextToSpeechRequest {
    QString text;
    QString modelId;
    QString languageCode;
    SpeechSettings settings;
    std::vector<DictionaryLocator> locators;
    bool hasContext = false;
};

/// The body of a speech-to-speech request, checked against its schema.
struct SpeechToSpeechRequest {
    QByteArray audio;
    QString modelId;
    SpeechSettings settings;
    bool isPcm16 = false;
};

/// The request, or the list of faults for a 422.
[[nodiscard]] std::variant<TextToSpeechRequest, QJsonArray> readTextToSpeech(const QByteArray &body);
[[nodiscard]] std::variant<SpeechToSpeechRequest, QJsonArray> readSpeechToSpeech(const HttpRequest &request);

} // namespace orlenta::localvoices
