#include "localvoices/voices/SpeechJob.h"

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>
#include <QtCore/QCborValue>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

QCborArray rulesToCbor(const std::vector<PronunciationRule> &rules) {
    QCborArray array;
    for (const PronunciationRule &rule : rules) {
        QCborArray phones;
        for (const Phone &phone : rule.phones) {
            phones.append(QString::fromLatin1(phone.name));
            phones.append(static_cast<int>(phone.stress));
        }
        array.append(QCborArray{rule.word, rule.alias, phones});
    }
    return array;
}

std::vector<PronunciationRule> rulesFromCbor(const QCborArray &array) {
    std::vector<PronunciationRule> rules;
    for (const QCborValue &value : array) {
        const QCborArray fields = value.toArray();
        PronunciationRule rule{fields.at(0).toString(), fields.at(1).toString(), {}};
        const QCborArray phones = fields.at(2).toArray();
        for (qsizetype i = 0; i + 1 < phones.size(); i += 2)
            rule.phones.push_back(
                {phones.at(i).toString().toLatin1(), static_cast<Stress>(phones.at(i + 1).toInteger())});
        rules.push_back(std::move(rule));
    }
    return rules;
}

} // namespace

QByteArray SpeechJob::toBytes() const {
    const QCborMap map{
        {u"kind"_s, static_cast<int>(kind)},
        {u"voice"_s, voiceId},
        {u"format"_s, outputFormat},
        {u"stability"_s, settings.stability},
        {u"style"_s, settings.style},
        {u"speed"_s, settings.speed},
        {u"seed"_s, static_cast<qint64>(settings.seed)},
        {u"text"_s, text},
        {u"language"_s, languageCode},
        {u"rules"_s, rulesToCbor(rules)},
        {u"phonemes"_s, static_cast<int>(phonemeRules)},
        {u"recording"_s, recording},
        {u"recordingForm"_s, static_cast<int>(recordingForm)},
    };
    return map.toCborValue().toCbor();
}

std::optional<SpeechJob> SpeechJob::fromBytes(const QByteArray &bytes) {
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(bytes, &error);
    if (error.error != QCborError::NoError || !value.isMap())
        return std::nullopt;
    const QCborMap map = value.toMap();
    SpeechJob job;
    job.kind = static_cast<JobKind>(map.value(u"kind"_s).toInteger());
    job.voiceId = map.value(u"voice"_s).toString();
    job.outputFormat = map.value(u"format"_s).toString();
    job.settings.stability = map.value(u"stability"_s).toDouble();
    job.settings.style = map.value(u"style"_s).toDouble();
    job.settings.speed = map.value(u"speed"_s).toDouble(1.0);
    job.settings.seed = static_cast<std::uint32_t>(map.value(u"seed"_s).toInteger());
    job.text = map.value(u"text"_s).toString();
    job.languageCode = map.value(u"language"_s).toString();
    job.rules = rulesFromCbor(map.value(u"rules"_s).toArray());
    job.phonemeRules = static_cast<PhonemeRules>(map.value(u"phonemes"_s).toInteger());
    job.recording = map.value(u"recording"_s).toByteArray();
    job.recordingForm = static_cast<InputForm>(map.value(u"recordingForm"_s).toInteger());
    return job;
}

} // namespace orlenta::localvoices
