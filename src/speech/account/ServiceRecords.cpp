#include "speech/account/ServiceRecords.h"

#include <cmath>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "base/CutText.h"
#include "speech/http/ServiceText.h"

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

/// Reads values from one JSON object and remembers the first that has the wrong form.
class RecordReader {
public:
    RecordReader(const QJsonObject &object, QString &problem) : m_object(object), m_problem(problem) {}

    QString text(const QString &key) {
        const QJsonValue value = required(key);
        if (!value.isString())
            note(u"\"%1\" is not a text"_s.arg(key));
        return value.toString();
    }

    /// A text that people read. Unlike an id or an address, it may be cut.
    QString words(const QString &key, qsizetype limit = longestServiceName) { return base::cutText(text(key), limit); }

    qint64 integer(const QString &key) {
        const QJsonValue value = required(key);
        const double number = value.toDouble(0.5);
        if (number != std::floor(number) || std::abs(number) > 9.0e15)
            note(u"\"%1\" is not a whole number"_s.arg(key));
        return value.toInteger();
    }

    std::optional<QString> optionalText(const QString &key) {
        if (isAbsent(key))
            return std::nullopt;
        return text(key);
    }

    std::optional<QString> optionalWords(const QString &key, qsizetype limit = longestServiceName) {
        if (isAbsent(key))
            return std::nullopt;
        return words(key, limit);
    }

    std::optional<bool> optionalBool(const QString &key) {
        if (isAbsent(key))
            return std::nullopt;
        const QJsonValue value = m_object.value(key);
        if (!value.isBool())
            note(u"\"%1\" is neither true nor false"_s.arg(key));
        return value.toBool();
    }

    std::optional<QStringList> optionalTexts(const QString &key) {
        if (isAbsent(key))
            return std::nullopt;
        QStringList texts;
        for (const QJsonValue element : array(key)) {
            if (!element.isString())
                note(u"\"%1\" holds something that is not a text"_s.arg(key));
            texts.append(element.toString());
        }
        return texts;
    }

    std::optional<QHash<QString, QString>> optionalTextMap(const QString &key) {
        if (isAbsent(key))
            return std::nullopt;
        const QJsonObject map = object(key);
        QHash<QString, QString> texts;
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            // The service sends null for a label without a value.
            if (entry.value().isNull())
                continue;
            if (!entry.value().isString())
                note(u"\"%1\" holds something that is not a text"_s.arg(key));
            texts.insert(base::cutText(entry.key(), longestServiceName),
                         base::cutText(entry.value().toString(), longestServiceName));
        }
        return texts;
    }

    QJsonObject object(const QString &key) {
        const QJsonValue value = required(key);
        if (!value.isObject())
            note(u"\"%1\" is not an object"_s.arg(key));
        return value.toObject();
    }

    QJsonArray array(const QString &key) {
        const QJsonValue value = required(key);
        if (!value.isArray())
            note(u"\"%1\" is not a list"_s.arg(key));
        return value.toArray();
    }

private:
    bool isAbsent(const QString &key) const {
        return m_object.value(key).isUndefined() || m_object.value(key).isNull();
    }

    QJsonValue required(const QString &key) {
        if (isAbsent(key))
            note(u"\"%1\" is missing"_s.arg(key));
        return m_object.value(key);
    }

    void note(const QString &problem) {
        if (m_problem.isEmpty())
            m_problem = problem;
    }

    QJsonObject m_object;
    QString &m_problem;
};

base::Failure<SpeechError> unreadable(const QString &problem) {
    return base::fail(SpeechError::decoding(u"The server's reply couldn't be read: %1."_s.arg(problem)));
}

base::Result<QJsonObject, SpeechError> parseRecord(const QByteArray &json) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return unreadable(error.errorString());
    if (!document.isObject())
        return unreadable(u"it is not an object"_s);
    return document.object();
}

Voice readVoice(const QJsonObject &object, QString &problem) {
    RecordReader reader(object, problem);
    Voice voice;
    voice.voiceId = reader.text(u"voice_id"_s);
    voice.name = reader.words(u"name"_s);
    voice.category = reader.optionalWords(u"category"_s);
    voice.labels = reader.optionalTextMap(u"labels"_s);
    voice.previewUrl = reader.optionalText(u"preview_url"_s);
    voice.description = reader.optionalWords(u"description"_s, longestServiceDescription);
    voice.highQualityBaseModelIds = reader.optionalTexts(u"high_quality_base_model_ids"_s);
    return voice;
}

} // namespace

base::Result<ElevenLabsUser, SpeechError> ElevenLabsUser::fromJson(const QByteArray &json) {
    const auto object = parseRecord(json);
    if (!object)
        return base::fail(object.error());
    QString problem;
    RecordReader reader(*object, problem);
    ElevenLabsUser user;
    user.userId = reader.text(u"user_id"_s);
    user.firstName = reader.optionalWords(u"first_name"_s);
    RecordReader subscription(reader.object(u"subscription"_s), problem);
    user.subscription.tier = subscription.words(u"tier"_s);
    user.subscription.characterCount = subscription.integer(u"character_count"_s);
    user.subscription.characterLimit = subscription.integer(u"character_limit"_s);
    user.subscription.status = subscription.words(u"status"_s);
    if (!problem.isEmpty())
        return unreadable(problem);
    return user;
}

QString Subscription::planName() const {
    QStringList words = QString(tier).replace(u'_', u' ').split(u' ', Qt::SkipEmptyParts);
    for (QString &word : words)
        word[0] = word[0].toUpper();
    return words.join(u' ');
}

QString ElevenLabsUser::creditsText() const {
    return u"%1 credits"_s.arg(subscription.characterCount);
}

base::Result<VoicesResponse, SpeechError> VoicesResponse::fromJson(const QByteArray &json) {
    const auto object = parseRecord(json);
    if (!object)
        return base::fail(object.error());
    QString problem;
    RecordReader reader(*object, problem);
    VoicesResponse response;
    for (const QJsonValue element : reader.array(u"voices"_s)) {
        if (!element.isObject() && problem.isEmpty())
            problem = u"\"voices\" holds something that is not an object"_s;
        response.voices.append(readVoice(element.toObject(), problem));
    }
    response.hasMore = reader.optionalBool(u"has_more"_s);
    if (!problem.isEmpty())
        return unreadable(problem);
    return response;
}

} // namespace orlenta::speech
