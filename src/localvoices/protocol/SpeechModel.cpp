#include "localvoices/protocol/SpeechModel.h"

#include <QtCore/QList>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

const QList<SpeechModel> &speechModels() {
    constexpr auto speak = ModelTask::TextToSpeech;
    constexpr auto convert = ModelTask::SpeechToSpeech;
    constexpr auto followed = PhonemeRules::Followed;
    constexpr auto skipped = PhonemeRules::Skipped;
    constexpr auto accepted = LineContext::Accepted;
    static const QList<SpeechModel> models{
        {u"eleven_v3"_s, speak, 5'000, 1.0, followed, LineContext::Refused, StabilityScale::ThreeSteps},
        {u"eleven_multilingual_v2"_s, speak, 10'000, 1.0, skipped, accepted},
        {u"eleven_flash_v2_5"_s, speak, 40'000, 0.5, skipped, accepted},
        {u"eleven_turbo_v2_5"_s, speak, 40'000, 0.5, skipped, accepted},
        {u"eleven_flash_v2"_s, speak, 30'000, 0.5, followed, accepted},
        {u"eleven_turbo_v2"_s, speak, 30'000, 0.5, followed, accepted},
        {u"eleven_monolingual_v1"_s, speak, 10'000, 1.0, followed, accepted},
        {u"eleven_multilingual_v1"_s, speak, 10'000, 1.0, skipped, accepted},
        {u"eleven_english_sts_v2"_s, convert, 0, 0.0, skipped, accepted},
        {u"eleven_multilingual_sts_v2"_s, convert, 0, 0.0, skipped, accepted},
    };
    return models;
}

} // namespace

std::optional<SpeechModel> findSpeechModel(const QString &id, ModelTask task) {
    for (const SpeechModel &model : speechModels())
        if (model.id == id && model.task == task)
            return model;
    return std::nullopt;
}

QStringList speakingModelIds() {
    QStringList ids;
    for (const SpeechModel &model : speechModels())
        if (model.task == ModelTask::TextToSpeech)
            ids << model.id;
    return ids;
}

} // namespace orlenta::localvoices
