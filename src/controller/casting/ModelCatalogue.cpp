#include "controller/casting/ModelCatalogue.h"

#include <algorithm>

#include "speech/synthesis/SpeechModel.h"

namespace orlenta::controller {
namespace {

QString v3Key() {
    return speech::SpeechModel::v3().key;
}

QString v2Key() {
    return speech::SpeechModel::v2().key;
}

QString flashKey() {
    return speech::SpeechModel::flash().key;
}

QStringList allModelKeys() {
    return {v3Key(), v2Key(), flashKey()};
}

SettingsControl stabilityControl() {
    return {
        SettingsControlKind::Stability,
        QStringLiteral("Stability"),
        0.0,
        1.0,
        0.5,
        {QStringLiteral("Controls voice consistency vs. expressiveness. Lower values produce more emotional, dynamic "
                        "delivery; higher values produce steadier, more predictable output.")},
        {v2Key(), flashKey()}};
}

SettingsControl similarityControl() {
    return {
        SettingsControlKind::Similarity,
        QStringLiteral("Similarity"),
        0.0,
        1.0,
        0.75,
        {QStringLiteral("Controls how closely the AI matches the original voice. Higher values increase fidelity, but "
                        "may reproduce artifacts if the source audio is low quality.")},
        allModelKeys()};
}

SettingsControl styleControl() {
    return {SettingsControlKind::Style,
            QStringLiteral("Style"),
            0.0,
            1.0,
            0.0,
            {QStringLiteral("Amplifies the stylistic characteristics of the original speaker. Higher values exaggerate "
                            "the voice's natural speaking style.")},
            allModelKeys()};
}

SettingsControl speedControl() {
    return {
        SettingsControlKind::Speed,
        QStringLiteral("Speed"),
        0.7,
        1.2,
        1.0,
        {QStringLiteral("Adjusts the pace of generated speech. Values below 1.0 slow the voice down; values above 1.0 "
                        "speed it up. Extreme values may reduce quality.")},
        {v2Key(), flashKey()}};
}

SettingsControl modeControl() {
    return {SettingsControlKind::Mode,
            QString(),
            0.0,
            0.0,
            0.0,
            {QStringLiteral("Stability is controlled by three modes instead of a slider:"),
             QStringLiteral("Creative: most expressive and emotional, but can hallucinate"),
             QStringLiteral("Natural: balanced, closest to the reference voice"),
             QStringLiteral("Robust: most consistent, but less responsive to direction")},
            {v3Key()}};
}

} // namespace

const QList<ModelDescription> &ModelCatalogue::models() {
    static const QList<ModelDescription> models{
        {v3Key(),
         QStringLiteral("Expressive"),
         QStringLiteral("Eleven v3 · alpha"),
         QStringLiteral("For emotional, character-driven performances. Supports direction tags."),
         {QStringLiteral("Eleven v3 (alpha) is ElevenLabs' most expressive model, supporting direction tags like "
                         "[whispers], [laughs], [excited], and emphasis via capitalization. It's less consistent than "
                         "v2, so you may need to regenerate to get the take you want."),
          QStringLiteral(
              "Speaker Boost and the Speed slider are not supported. Pacing is controlled through punctuation "
              "and tags instead.")}},
        {v2Key(),
         QStringLiteral("Standard"),
         QStringLiteral("Multilingual v2"),
         QStringLiteral("Reliable, natural voice."),
         {QStringLiteral("Eleven Multilingual v2 is ElevenLabs' reliable production model. Stable, consistent output "
                         "across 29 languages. No direction tags, but excellent for straightforward voiceover work.")}},
        {flashKey(),
         QStringLiteral("Draft"),
         QStringLiteral("Flash v2.5"),
         QStringLiteral("Half the credits. Good for experimenting before a final take."),
         {QStringLiteral("Eleven Flash v2.5 is ElevenLabs' fastest model and uses half the credits. Good for testing "
                         "scripts and experimenting before committing to a final take with Expressive or Standard. 32 "
                         "languages, ultra-low latency.")}},
    };
    return models;
}

const ModelDescription &ModelCatalogue::model(const QString &key) {
    const auto found =
        std::find_if(models().begin(), models().end(), [&](const ModelDescription &model) { return model.key == key; });
    return found == models().end() ? models().first() : *found;
}

const QStringList &ModelCatalogue::modes() {
    static const QStringList modes{QStringLiteral("Creative"), QStringLiteral("Natural"), QStringLiteral("Robust")};
    return modes;
}

const QList<SettingsControl> &ModelCatalogue::controls() {
    static const QList<SettingsControl> controls{modeControl(), stabilityControl(), similarityControl(), styleControl(),
                                                 speedControl()};
    return controls;
}

QList<SettingsControl> ModelCatalogue::controlsFor(const QString &modelKey) {
    QList<SettingsControl> shown = controls();
    const QString key = model(modelKey).key;
    shown.removeIf([&](const SettingsControl &control) { return !control.models.contains(key); });
    return shown;
}

QString ModelCatalogue::tipsTitle() {
    return QStringLiteral("Delivery tips");
}

QString ModelCatalogue::tipsLead() {
    return QStringLiteral("How you write your script shapes how it sounds.");
}

QString ModelCatalogue::commonTipsHeading() {
    return QStringLiteral("WORKS ON ALL MODELS");
}

QString ModelCatalogue::modelTipsHeading(const QStringList &models) {
    QStringList titles;
    for (const QString &key : models)
        titles.append(model(key).title);
    return QStringLiteral("%1 ONLY").arg(titles.join(QStringLiteral(" AND ")));
}

const QList<DeliveryTip> &ModelCatalogue::tips() {
    static const QList<DeliveryTip> tips{
        {QStringLiteral("ALL CAPS."), QStringLiteral("One or two key words, never whole sentences."), {}},
        {QStringLiteral("Punctuation."),
         QStringLiteral(
             "Commas (,) pause briefly. Periods (.) stop fully. Em-dashes (—) break elegantly. Ellipses (...) "
             "add hesitation."),
         {}},
        {QStringLiteral("Stack punctuation."),
         QStringLiteral("Chain em-dashes (—— ——) or extra periods (. . . .) to stretch a pause."),
         {}},
        {QStringLiteral("Narration cues."),
         QStringLiteral("\"She said quietly\" nudges delivery. Trim from the rendered audio."),
         {}},
        {QStringLiteral("Voice choice."), QStringLiteral("Pick a voice whose range includes what you need."), {}},
        {QStringLiteral("Audio tags."),
         QStringLiteral("Inline directives like `[whispers]`, `[laughs]`, `[sighs]` direct the performance."),
         {v3Key()}},
        {QStringLiteral("Phoneme rules."),
         QStringLiteral("For exact pronunciation of tricky words, add Advanced entries in the Pronunciation editor."),
         {v3Key()}},
        {QStringLiteral("Longer prompts."),
         QStringLiteral("Under 250 characters can be inconsistent. Add context if a line feels off."),
         {v3Key()}},
        {QStringLiteral("Expect to regenerate."),
         QStringLiteral("Alpha model. Generate a few takes and pick your favorite."),
         {v3Key()}},
        {QString(),
         QStringLiteral("`<break time=\"2s\" />` for an exact pause up to 3 seconds."),
         {v2Key(), flashKey()}},
    };
    return tips;
}

} // namespace orlenta::controller
