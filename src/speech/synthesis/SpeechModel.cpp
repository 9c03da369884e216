#include "speech/synthesis/SpeechModel.h"

#include <algorithm>

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

template <typename Predicate>
const SpeechModel *findModel(Predicate matches) {
    const QList<SpeechModel> &models = SpeechModel::all();
    const auto found = std::find_if(models.begin(), models.end(), matches);
    return found == models.end() ? nullptr : &*found;
}

} // namespace

const QList<SpeechModel> &SpeechModel::all() {
    // Limits as the service's own documentation gave them in 2026.
    static const QList<SpeechModel> models{
        {.key = u"v3"_s,
         .id = u"eleven_v3"_s,
         .understandsTags = true,
         .takesDictionary = true,
         .usesV3Settings = true,
         .characterLimit = 5'000},
        {.key = u"v2"_s, .id = u"eleven_multilingual_v2"_s, .takesPreviousText = true, .characterLimit = 10'000},
        {.key = u"Flash"_s,
         .id = u"eleven_flash_v2_5"_s,
         .takesPreviousText = true,
         .characterLimit = 40'000,
         .creditsPerCharacter = 0.5},
    };
    return models;
}

const SpeechModel &SpeechModel::v3() {
    return all().at(0);
}

const SpeechModel &SpeechModel::v2() {
    return all().at(1);
}

const SpeechModel &SpeechModel::flash() {
    return all().at(2);
}

const SpeechModel *SpeechModel::findByKey(const QString &key) {
    return findModel([&key](const SpeechModel &model) { return model.key == key; });
}

const SpeechModel *SpeechModel::findById(const QString &id) {
    return findModel([&id](const SpeechModel &model) { return model.id == id; });
}

const SpeechModel &SpeechModel::forKey(const QString &key) {
    const SpeechModel *known = findByKey(key);
    return known != nullptr ? *known : v3();
}

} // namespace orlenta::speech
