#include "speech/http/ResponseCheck.h"

#include <algorithm>

#include <QtCore/QDateTime>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>

#include "base/CutText.h"
#include "speech/http/ServiceText.h"

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

QJsonValue detailOf(const QByteArray &body) {
    return QJsonDocument::fromJson(body).object().value(u"detail"_s);
}

ElevenLabsError refusalOfKey(const QByteArray &body) {
    const QJsonObject detail = detailOf(body).toObject();
    const QString status = detail.value(u"status"_s).toString();
    const QJsonValue message = detail.value(u"message"_s);
    if (status == u"quota_exceeded" && message.isString())
        return ElevenLabsError::quotaExceeded(base::cutText(message.toString(), longestServiceMessage));
    if (status == u"missing_permissions")
        return ElevenLabsError::missingPermissions(permissionName(message.toString()));
    return ElevenLabsError::unauthorized();
}

QString statusSuffix(const QByteArray &body) {
    const QJsonValue detail = detailOf(body);
    const QJsonValue words = detail.isObject() ? detail.toObject().value(u"message"_s) : detail;
    return words.isString() ? u": "_s + base::cutText(words.toString(), longestServiceMessage) : QString();
}

/// Newer replies name the refusal in "code", older ones in "status".
QString refusalCode(const QByteArray &body) {
    const QJsonObject detail = detailOf(body).toObject();
    const QString code = detail.value(u"code"_s).toString();
    return base::cutText(code.isEmpty() ? detail.value(u"status"_s).toString() : code, longestServiceName);
}

} // namespace

std::optional<ElevenLabsError> checkResponse(const HttpReply &reply, std::chrono::system_clock::time_point now) {
    if (reply.isAccepted())
        return std::nullopt;
    if (reply.status == 429)
        return ElevenLabsError::rateLimited(parseRetryAfter(reply.retryAfter, now));
    if (reply.status == 401)
        return refusalOfKey(reply.body);
    return ElevenLabsError::httpError(reply.status, statusSuffix(reply.body), refusalCode(reply.body));
}

std::optional<double> parseRetryAfter(const QByteArray &header, std::chrono::system_clock::time_point now) {
    const QString text = QString::fromLatin1(header).trimmed();
    if (text.isEmpty())
        return std::nullopt;
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (isNumber)
        return std::max(0.0, seconds);
    // Qt's formats can't parse a zone name such as "GMT". Date and time are parsed separately: together they would
    // be local time, and one hour of that doesn't exist on the night when the clocks go forward.
    const QStringList parts = text.split(u' ');
    if (parts.size() != 6 || (parts.at(5) != u"GMT" && parts.at(5) != u"UTC" && parts.at(5) != u"Z"))
        return std::nullopt;
    const QDate day = QLocale::c().toDate(parts.first(4).join(u' '), u"ddd, dd MMM yyyy"_s);
    const QTime time = QLocale::c().toTime(parts.at(4), u"HH:mm:ss"_s);
    if (!day.isValid() || !time.isValid())
        return std::nullopt;
    const QDateTime date(day, time, QTimeZone::utc());
    const double until =
        static_cast<double>(date.toSecsSinceEpoch()) - std::chrono::duration<double>(now.time_since_epoch()).count();
    return std::max(0.0, until);
}

std::optional<QString> permissionName(const QString &message) {
    static const QString phrase = u"missing the permission "_s;
    const qsizetype at = message.indexOf(phrase, 0, Qt::CaseSensitive);
    if (at < 0)
        return std::nullopt;
    QString name;
    for (qsizetype i = at + phrase.size(); i < message.size(); ++i) {
        const QChar c = message.at(i);
        if (!c.isLetterOrNumber() && c != u'_')
            break;
        name.append(c);
    }
    return name.isEmpty() ? std::nullopt : std::optional(base::cutText(name, longestServiceName));
}

} // namespace orlenta::speech
