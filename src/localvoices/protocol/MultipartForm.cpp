#include "localvoices/protocol/MultipartForm.h"

#include <QtCore/QRegularExpression>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestPartHead = 4096;

/// A parameter of a header such as `form-data; name="audio"; filename="a.wav"`.
std::optional<QString> headerParameter(const QString &header, const QString &name) {
    const QRegularExpression pattern(uR"re((?:^|;)\s*%1\s*=\s*(?:"((?:[^"\\]|\\.)*)"|([^\s;]+)))re"_s.arg(name),
                                     QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(header);
    if (!match.hasMatch())
        return std::nullopt;
    QString value = match.hasCaptured(1) ? match.captured(1) : match.captured(2);
    return value.replace(u"\\\""_s, u"\""_s);
}

std::optional<FormPart> readFormPart(const QByteArray &bytes) {
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0 || headEnd > longestPartHead)
        return std::nullopt;
    for (const QByteArray &line : bytes.left(headEnd).split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon < 0 || line.left(colon).trimmed().toLower() != "content-disposition")
            continue;
        const QString value = QString::fromUtf8(line.mid(colon + 1)).trimmed();
        const std::optional<QString> name = headerParameter(value, u"name"_s);
        if (name)
            return FormPart{*name, headerParameter(value, u"filename"_s), bytes.mid(headEnd + 4)};
    }
    return std::nullopt;
}

} // namespace

base::Result<MultipartForm, FormFault> MultipartForm::parse(const QByteArray &contentType, const QByteArray &body) {
    const QString type = QString::fromLatin1(contentType);
    const std::optional<QString> boundary = headerParameter(type, u"boundary"_s);
    if (!type.startsWith(u"multipart/form-data"_s, Qt::CaseInsensitive) || !boundary || boundary->isEmpty())
        return base::fail(FormFault::Unreadable);
    const QByteArray opening = "--" + boundary->toLatin1();
    const QByteArray delimiter = "\r\n" + opening;
    MultipartForm form;
    // Skip the preamble.
    qsizetype at = body.startsWith(opening) ? opening.size() : body.indexOf(delimiter);
    if (at < 0)
        return base::fail(FormFault::Unreadable);
    if (!body.startsWith(opening))
        at += delimiter.size();
    while (body.mid(at, 2) != "--") {
        if (form.m_parts.size() == mostParts)
            return base::fail(FormFault::TooManyParts);
        const qsizetype lineEnd = body.indexOf("\r\n", at);
        const qsizetype next = lineEnd < 0 ? -1 : body.indexOf(delimiter, lineEnd);
        if (next < 0)
            return base::fail(FormFault::Unreadable);
        // The line break after an empty part is also the start of the next delimiter.
        const qsizetype from = lineEnd + 2;
        std::optional<FormPart> part = readFormPart(from <= next ? body.mid(from, next - from) : QByteArray());
        if (!part)
            return base::fail(FormFault::Unreadable);
        form.m_parts.push_back(std::move(*part));
        at = next + delimiter.size();
    }
    return form;
}

const FormPart *MultipartForm::findPart(const QString &name) const {
    for (const FormPart &part : m_parts)
        if (part.name == name)
            return &part;
    return nullptr;
}

std::optional<QString> MultipartForm::text(const QString &name) const {
    const FormPart *part = findPart(name);
    return part == nullptr ? std::nullopt : std::optional(QString::fromUtf8(part->content));
}

} // namespace orlenta::localvoices
