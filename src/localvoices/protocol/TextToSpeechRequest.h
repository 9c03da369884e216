#pragma once

#include <optional>
#include <variant>
#include <vector>

#include <QtCore/QString>

#include "localvoices/http/HttpAnswer.h"
#include "localvoices/protocol/SpeechSettings.h"

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

    /// The request, or the answer that refuses it.
    [[nodiscard]] static std::variant<TextToSpeechRequest, HttpAnswer> read(const QByteArray &body);
};

} // namespace orlenta::localvoices
