#include "speech/synthesis/AllowedStabilities.h"

#include <algorithm>
#include <cmath>

#include <QtCore/QRegularExpression>

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

QList<double> valuesIn(const QString &list) {
    QList<double> values;
    for (const QString &word : list.split(u',')) {
        bool isNumber = false;
        const double value = word.trimmed().toDouble(&isNumber);
        if (isNumber && value >= 0.0 && value <= 1.0)
            values.append(value);
    }
    return values;
}

} // namespace

std::optional<QList<double>> AllowedStabilities::namedBy(const SpeechError &error) {
    const auto &refusal = error.service();
    if (!refusal || refusal->kind() != ElevenLabsError::Kind::HttpError || refusal->status() != 400)
        return std::nullopt;
    static const QRegularExpression listed(u"stability[^\\[]*\\[([0-9., ]+)\\]"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    const QList<double> values = valuesIn(listed.match(refusal->text()).captured(1));
    if (!values.isEmpty())
        return values;
    if (refusal->code() == u"invalid_ttd_stability")
        return QList<double>{0.0, 0.5, 1.0};
    return std::nullopt;
}

void AllowedStabilities::remember(const QUrl &endpoint, const QString &modelId, const QList<double> &allowed) {
    m_allowed.insert({endpoint, modelId}, allowed);
}

bool AllowedStabilities::apply(const QUrl &endpoint, TTSRequest &request) const {
    const QList<double> allowed = m_allowed.value({endpoint, request.modelId});
    const std::optional<double> wanted = request.stability();
    if (allowed.isEmpty() || !wanted)
        return false;
    const auto nearest = std::min_element(allowed.begin(), allowed.end(), [wanted](double a, double b) {
        return std::abs(a - *wanted) < std::abs(b - *wanted);
    });
    request.setStability(*nearest);
    return *nearest != *wanted;
}

} // namespace orlenta::speech
