#pragma once

#include <optional>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "speech/http/SpeechError.h"
#include "speech/synthesis/TTSRequest.h"

namespace orlenta::speech {

/// Remembers which stabilities a service allows, by endpoint and model, after it has refused another one.
class AllowedStabilities final {
public:
    /// The allowed values if the error refuses a stability; none for any other error.
    [[nodiscard]] static std::optional<QList<double>> namedBy(const SpeechError &error);

    void remember(const QUrl &endpoint, const QString &modelId, const QList<double> &allowed);
    /// Sets the request's stability to the nearest allowed value, if any are known. True if that changed it.
    bool apply(const QUrl &endpoint, TTSRequest &request) const;

private:
    QHash<std::pair<QUrl, QString>, QList<double>> m_allowed;
};

} // namespace orlenta::speech
