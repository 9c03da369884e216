#include "localvoices/server/FaultScript.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

std::optional<FaultKind> findFaultKind(const QString &word) {
    static const QHash<QString, FaultKind> kinds{
        {u"ok"_s, FaultKind::None},       {u"slow"_s, FaultKind::Slow},
        {u"cut"_s, FaultKind::Cut},       {u"reset"_s, FaultKind::Reset},
        {u"stall"_s, FaultKind::Stall},   {u"huge"_s, FaultKind::Huge},
        {u"empty"_s, FaultKind::Empty},   {u"garbage"_s, FaultKind::Garbage},
        {u"portal"_s, FaultKind::Portal}, {u"stability"_s, FaultKind::Stability}};
    const auto found = kinds.constFind(word);
    return found == kinds.constEnd() ? std::nullopt : std::optional(found.value());
}

} // namespace

std::optional<FaultScript::Entry> FaultScript::parseEntry(const QString &text) {
    static const QRegularExpression pattern(
        uR"(^(?:(user|voices|tts|sts|lexicon):)?([a-z]+|[45][0-9]{2})(?:=([^*]*))?(?:\*([0-9]{1,6}))?$)"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    Entry entry;
    entry.endpoint = match.captured(1);
    entry.fault.argument = match.captured(3);
    entry.count = match.captured(4).isEmpty() ? 1 : match.captured(4).toInt();
    const QString word = match.captured(2);
    if (word.front().isDigit()) {
        entry.fault.kind = FaultKind::Status;
        entry.fault.status = word.toInt();
        return entry;
    }
    const std::optional<FaultKind> kind = findFaultKind(word);
    if (!kind)
        return std::nullopt;
    entry.fault.kind = *kind;
    bool isNumber = false;
    entry.fault.amount = entry.fault.argument.toLongLong(&isNumber);
    const bool needsNumber = *kind == FaultKind::Slow || *kind == FaultKind::Huge;
    return needsNumber && (!isNumber || entry.fault.amount < 0) ? std::nullopt : std::optional(entry);
}

base::Result<FaultScript, QString> FaultScript::parse(const QString &text) {
    FaultScript script;
    for (const QString &piece : text.split(u',', Qt::SkipEmptyParts)) {
        const std::optional<Entry> entry = parseEntry(piece.trimmed());
        if (!entry)
            return base::fail(u"The fault \"%1\" can't be read."_s.arg(piece.trimmed()));
        script.m_entries.append(*entry);
    }
    return script;
}

Fault FaultScript::take(const QString &endpoint) {
    for (qsizetype i = 0; i < m_entries.size(); ++i) {
        Entry &entry = m_entries[i];
        if (!entry.endpoint.isEmpty() && entry.endpoint != endpoint)
            continue;
        const Fault fault = entry.fault;
        if (--entry.count <= 0)
            m_entries.removeAt(i);
        return fault;
    }
    return {};
}

} // namespace orlenta::localvoices
