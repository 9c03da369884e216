#include "localvoices/protocol/VoiceJson.h"

#include <QtCore/QJsonArray>

#include "localvoices/protocol/SpeechModel.h"
#include "localvoices/voices/VoiceCatalogue.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

QJsonObject voiceJson(const VoiceProfile &voice, const QString &previewUrl) {
    const QJsonObject labels{{u"gender"_s, voice.gender},    {u"age"_s, voice.age},
                             {u"accent"_s, voice.accent},    {u"language"_s, voice.language},
                             {u"use_case"_s, voice.useCase}, {u"descriptive"_s, voice.descriptive}};
    const QJsonObject language{{u"language"_s, voice.language},
                               {u"model_id"_s, u"eleven_multilingual_v2"_s},
                               {u"accent"_s, voice.accent},
                               {u"preview_url"_s, previewUrl}};
    const QJsonObject settings{{u"stability"_s, 0.5},
                               {u"similarity_boost"_s, 0.75},
                               {u"style"_s, 0.0},
                               {u"speed"_s, 1.0},
                               {u"use_speaker_boost"_s, false}};
    return {
        {u"voice_id"_s, voice.id},
        {u"name"_s, voice.name},
        {u"category"_s, u"premade"_s},
        {u"labels"_s, labels},
        {u"description"_s, voice.description},
        {u"preview_url"_s, previewUrl},
        {u"available_for_tiers"_s, QJsonArray()},
        {u"settings"_s, settings},
        {u"sharing"_s, QJsonValue::Null},
        {u"high_quality_base_model_ids"_s, QJsonArray::fromStringList(speakingModelIds())},
        {u"verified_languages"_s, QJsonArray{language}},
        {u"is_owner"_s, false},
        {u"is_legacy"_s, false},
        {u"is_mixed"_s, false},
    };
}

} // namespace

QJsonObject voicesJson(const QString &previewFolder) {
    QJsonArray voices;
    for (const VoiceProfile &voice : voiceCatalogue())
        voices.append(voiceJson(voice, previewFolder + u'/' + voice.id + u".mp3"_s));
    return {{u"voices"_s, voices}};
}

} // namespace orlenta::localvoices
