#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include "base/Result.h"
#include "speech/http/SpeechError.h"

/// The service's records as sent. A required key that is missing, or a key whose value has another type, fails the
/// decoding with a SpeechError of kind Decoding that names the key; unknown keys are ignored. Texts that people read
/// are cut at a sensible length.
namespace orlenta::speech {

struct Subscription {
    QString tier;
    qint64 characterCount = 0;
    qint64 characterLimit = 0;
    QString status;

    /// The tier as people say it: "local_pro" is "Local Pro".
    [[nodiscard]] QString planName() const;

    friend bool operator==(const Subscription &, const Subscription &) = default;
};

struct ElevenLabsUser {
    QString userId;
    std::optional<QString> firstName;
    Subscription subscription;

    [[nodiscard]] static base::Result<ElevenLabsUser, SpeechError> fromJson(const QByteArray &json);
    /// "<count> credits".
    [[nodiscard]] QString creditsText() const;

    friend bool operator==(const ElevenLabsUser &, const ElevenLabsUser &) = default;
};

struct Voice {
    QString voiceId;
    QString name;
    std::optional<QString> category;
    std::optional<QHash<QString, QString>> labels;
    std::optional<QString> previewUrl;
    std::optional<QString> description;
    std::optional<QStringList> highQualityBaseModelIds;

    friend bool operator==(const Voice &, const Voice &) = default;
};

struct VoicesResponse {
    QList<Voice> voices;
    /// Decoded but not used: the list ends with the first reply.
    std::optional<bool> hasMore;

    [[nodiscard]] static base::Result<VoicesResponse, SpeechError> fromJson(const QByteArray &json);
};

} // namespace orlenta::speech
