#include "localvoices/protocol/Refusal.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>
#include <QtCore/QUuid>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String authentication("authentication_error");
constexpr QLatin1String authorization("authorization_error");
constexpr QLatin1String validation("validation_error");
constexpr QLatin1String rateLimit("rate_limit_error");

QList<Refusal> wellKnownRefusals() {
    return {
        invalidApiKey(),
        missingApiKey(),
        quotaExceeded(10'000, 55, 284),
        {401,
         authentication,
         u"unauthorized"_s,
         u"missing_permissions"_s,
         u"The API key you used is missing the permission text_to_speech to execute this operation."_s,
         {}},
        {401,
         authentication,
         u"detected_unusual_activity"_s,
         u"detected_unusual_activity"_s,
         u"Unusual activity detected. Free Tier usage disabled."_s,
         {}},
        {402,
         u"payment_required"_s,
         u"paid_plan_required"_s,
         u"payment_required"_s,
         u"Free users cannot use library voices via the API. Please upgrade your subscription to use this voice."_s,
         {}},
        {403, authorization, u"subscription_required"_s, u"output_format_not_allowed"_s,
         u"Output format 'pcm_44100' is only available on the Pro tier and above"_s, u"output_format"_s},
        {404, u"not_found"_s, u"voice_not_found"_s, u"voice_not_found"_s, u"A voice with the voice_id was not found."_s,
         u"voice_id"_s},
        {429,
         rateLimit,
         u"concurrent_limit_exceeded"_s,
         u"too_many_concurrent_requests"_s,
         u"Too many concurrent requests. Your current subscription is associated with a maximum of 2 concurrent "
         u"requests (running in parallel)."_s,
         {}},
        {429,
         rateLimit,
         u"system_busy"_s,
         u"system_busy"_s,
         u"We are currently experiencing heavy traffic. Please try again later."_s,
         {}},
        {429, rateLimit, u"rate_limit_exceeded"_s, u"rate_limit_exceeded"_s, u"Rate limit exceeded."_s, {}},
        {500,
         u"internal_error"_s,
         u"internal_server_error"_s,
         u"internal_server_error"_s,
         u"Internal server error"_s,
         {}},
    };
}

HttpAnswer jsonAnswer(int status, const QJsonValue &detail) {
    HttpAnswer answer;
    answer.status = status;
    answer.body = QJsonDocument(QJsonObject{{u"detail"_s, detail}}).toJson(QJsonDocument::Compact);
    return answer;
}

} // namespace

HttpAnswer Refusal::answer() const {
    QJsonObject detail{{u"type"_s, type},
                       {u"code"_s, code},
                       {u"message"_s, message},
                       {u"status"_s, legacyStatus},
                       {u"request_id"_s, QUuid::createUuid().toString(QUuid::Id128)}};
    if (!param.isEmpty())
        detail.insert(u"param"_s, param);
    return jsonAnswer(status, detail);
}

std::optional<Refusal> findRefusal(const QString &legacyStatus) {
    for (const Refusal &error : wellKnownRefusals())
        if (error.legacyStatus == legacyStatus)
            return error;
    return std::nullopt;
}

Refusal usualRefusal(int httpStatus) {
    for (const Refusal &error : wellKnownRefusals())
        if (error.status == httpStatus)
            return error;
    return {httpStatus, u"internal_error"_s, u"unexpected"_s, u"unexpected"_s, u"Something went wrong."_s, {}};
}

Refusal invalidApiKey() {
    return {401, authentication, u"invalid_api_key"_s, u"invalid_api_key"_s, u"Invalid API key"_s, {}};
}

Refusal missingApiKey() {
    return {401,
            authentication,
            u"missing_api_key"_s,
            u"needs_authorization"_s,
            u"Neither authorization header nor xi-api-key received, please provide one."_s,
            {}};
}

Refusal voiceNotFound(const QString &voiceId) {
    return {404,
            u"not_found"_s,
            u"voice_not_found"_s,
            u"voice_not_found"_s,
            u"A voice with the voice_id %1 was not found."_s.arg(voiceId),
            u"voice_id"_s};
}

Refusal unknownOutputFormat(const QString &name, const QStringList &known) {
    return {403,
            validation,
            u"invalid_output_format"_s,
            u"invalid_output_format"_s,
            u"Invalid output_format '%1'. Must be one of: %2"_s.arg(name, known.join(u", "_s)),
            u"output_format"_s};
}

Refusal outputFormatNotAllowed(const QString &name) {
    return {403,
            authorization,
            u"subscription_required"_s,
            u"output_format_not_allowed"_s,
            u"Output format '%1' is not available with local voices"_s.arg(name),
            u"output_format"_s};
}

Refusal unknownModel(const QString &modelId) {
    return {400,
            validation,
            u"model_not_found"_s,
            u"model_not_found"_s,
            u"A model with model ID %1 does not exist."_s.arg(modelId),
            u"model_id"_s};
}

Refusal textTooLong(qsizetype characters, qsizetype limit) {
    return {400,
            validation,
            u"text_too_long"_s,
            u"max_character_limit_exceeded"_s,
            u"This request's text has %1 characters and exceeds the character limit of %2 characters."_s.arg(characters)
                .arg(limit),
            u"text"_s};
}

Refusal quotaExceeded(qint64 limit, qint64 remaining, qint64 required) {
    return {401,
            u"invalid_request"_s,
            u"quota_exceeded"_s,
            u"quota_exceeded"_s,
            u"This request exceeds your quota of %1. You have %2 credits remaining, while %3 credits are required for "
            u"this request."_s.arg(limit)
                .arg(remaining)
                .arg(required),
            {}};
}

Refusal contextNotSupported(const QString &modelId) {
    return {400,
            validation,
            u"unsupported_model"_s,
            u"unsupported_model"_s,
            u"Providing previous_text or next_text is not yet supported with the '%1' model."_s.arg(modelId),
            u"previous_text"_s};
}

Refusal invalidStability() {
    return {400,
            validation,
            u"invalid_ttd_stability"_s,
            u"invalid_ttd_stability"_s,
            u"Invalid TTD stability value. Must be one of: [0.0, 0.5, 1.0] (0.0 = Creative, 0.5 = Natural, 1.0 = "
            u"Robust)"_s,
            u"stability"_s};
}

Refusal unknownDictionary(const QString &id) {
    return {404,
            u"not_found"_s,
            u"pronunciation_dictionary_not_found"_s,
            u"pronunciation_dictionary_not_found"_s,
            u"A pronunciation dictionary with the ID %1 was not found."_s.arg(id),
            u"pronunciation_dictionary_locators"_s};
}

Refusal unreadableLexicon() {
    return {400,
            validation,
            u"invalid_parameters"_s,
            u"Unable to parse lexicon file"_s,
            u"Unable to parse lexicon file. Lexicon file formatted incorrectly"_s,
            u"file"_s};
}

Refusal speechTooLong(const QString &complaint) {
    return {400, validation, u"text_too_long"_s, u"max_character_limit_exceeded"_s, complaint, u"text"_s};
}

Refusal unusableAudio(const QString &complaint) {
    return {400, validation, u"invalid_audio"_s, u"invalid_audio"_s, complaint, u"audio"_s};
}

Refusal internalError(const QString &message) {
    return {500, u"internal_error"_s, u"internal_server_error"_s, u"internal_server_error"_s, message, {}};
}

HttpAnswer validationAnswer(const QJsonArray &faults) {
    return jsonAnswer(422, faults);
}

QJsonObject validationFault(const QJsonArray &location, const QString &message, const QString &type) {
    return {{u"loc"_s, location}, {u"msg"_s, message}, {u"type"_s, type}};
}

HttpAnswer missingField(const QString &key) {
    return validationAnswer({validationFault({u"body"_s, key}, u"Field required"_s, u"missing"_s)});
}

HttpAnswer tooManyParts(std::size_t most) {
    return plainDetailAnswer(400, u"Too many fields. Maximum number of fields is %1."_s.arg(most));
}

HttpAnswer plainDetailAnswer(int status, const QString &detail) {
    return jsonAnswer(status, detail);
}

} // namespace orlenta::localvoices
