#pragma once

#include <optional>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "speech/http/SpeechError.h"
#include "speech/synthesis/TTSRequest.h"

namespace orlenta::speech {

/// The stabilities that a service refused all others for, by endpoint and model, as long as this object lives.
class AllowedStabilities final {
public:
    /// The values that a refusal of a stability allows; none for any other error.
    [[nodiscard]] static std::optional<QList<double>> namedBy(const SpeechError &error);

    void remember(const QUrl &endpoint, const QString &modelId, const QList<double> &allowed);
    /// Sets the request's stability to the nearest allowed one, if any are known. Whether that changed it.
    bool apply(const QUrl &endpoint, TTSRequest &request) const;

private:
    QHash<std::pair<QUrl, QString>, QList<double>> m_allowed;
};

} // namespace orlenta::speech
