#include "model/json/RecordTables.h"

#include <functional>

#include "model/FileNameGuard.h"

namespace orlenta::model::json {
namespace {

enum OlderSlot : size_t { OlderStripe = 0, OlderWord = 0, OlderAlias = 1, OlderPhonemes = 2, OlderIsEnabled = 3 };

template <typename Record, auto Access>
bool readValue(void *record, const Scalar &value, ReadingContext &) {
    return assign(std::invoke(Access, *static_cast<Record *>(record)), value);
}

// One of the few words that repeat in every line and take. They share one string.
template <typename Record, auto Access>
bool readWord(void *record, const Scalar &value, ReadingContext &context) {
    if (value.kind != Scalar::Kind::Text)
        return false;
    std::invoke(Access, *static_cast<Record *>(record)) = context.words.word(value.text);
    return true;
}

template <typename Record, auto Access>
bool readFileName(void *record, const Scalar &value, ReadingContext &) {
    QString &name = std::invoke(Access, *static_cast<Record *>(record));
    if (!assign(name, value))
        return false;
    name = guardedFileName(name);
    return true;
}

template <typename Record, auto Access>
bool readElement(void *record, const Scalar &value, ReadingContext &) {
    auto &list = std::invoke(Access, *static_cast<Record *>(record));
    typename std::remove_reference_t<decltype(list)>::value_type element;
    if (!assign(element, value))
        return false;
    list.append(element);
    return true;
}

template <size_t Slot>
bool keepOlder(void *, const Scalar &value, ReadingContext &context) {
    OlderValue &older = context.older[Slot];
    older.kind = value.kind;
    older.boolean = value.boolean;
    older.text = decodedText(value.text);
    return true;
}

template <typename Record, auto Access>
void *openMember(void *record) {
    return &std::invoke(Access, *static_cast<Record *>(record));
}

template <typename Record, auto Access>
void *openOptional(void *record) {
    return &std::invoke(Access, *static_cast<Record *>(record)).emplace();
}

template <typename Record, auto Access>
void *openElement(void *record) {
    return &std::invoke(Access, *static_cast<Record *>(record)).emplace_back();
}

void *openLine(void *draft) {
    return static_cast<ProjectDraft *>(draft)->lines.emplace_back(std::make_shared<LineDraft>()).get();
}

template <typename Record, auto Access>
void dropOptional(void *record) {
    std::invoke(Access, *static_cast<Record *>(record)).reset();
}

template <typename Record, auto Access>
constexpr Field value(std::string_view key, Presence presence = Presence::Required) {
    return {key, presence, Field::Shape::Scalar, &readValue<Record, Access>};
}

template <typename Record, auto Access>
constexpr Field word(std::string_view key) {
    return {key, Presence::Required, Field::Shape::Scalar, &readWord<Record, Access>};
}

template <typename Record, auto Access>
constexpr Field fileName(std::string_view key) {
    return {key, Presence::Required, Field::Shape::Scalar, &readFileName<Record, Access>};
}

template <size_t Slot>
constexpr Field older(std::string_view key) {
    return {key, Presence::Older, Field::Shape::Scalar, &keepOlder<Slot>};
}

template <typename Record, auto Access>
constexpr Field ids(std::string_view key) {
    return {key, Presence::Required, Field::Shape::ScalarArray, &readElement<Record, Access>};
}

template <typename Record, auto Access>
constexpr Field records(std::string_view key, Presence presence, const Schema &schema) {
    return {key, presence, Field::Shape::ObjectArray, nullptr, &openElement<Record, Access>, nullptr, &schema};
}

template <typename Record, auto Access>
constexpr Field nested(std::string_view key, Presence presence, const Schema &schema) {
    return {key, presence, Field::Shape::Object, nullptr, &openMember<Record, Access>, nullptr, &schema};
}

template <typename Record, auto Access>
constexpr Field nestedOptional(std::string_view key, Presence presence, const Schema &schema) {
    return {
        key,    presence, Field::Shape::Object, nullptr, &openOptional<Record, Access>, &dropOptional<Record, Access>,
        &schema};
}

constexpr QLatin1String defaultVoiceName("Voice");

template <typename Voice>
void nameVoice(Voice &voice, const SeenKeys &seen) {
    if (!seen.contains("display_name"))
        voice.displayName = defaultVoiceName;
    if (!seen.contains("cast_name"))
        voice.castName = voice.displayName;
}

QString olderKeyProblem(QLatin1String key) {
    return QStringLiteral("the key \"%1\" has a value of the wrong type").arg(key);
}

// Takes the older key's text, if any. Returns false if it isn't text.
bool takeOlderText(QString &target, const OlderValue &older) {
    if (older.kind == Scalar::Kind::Text)
        target = older.text;
    return older.kind == Scalar::Kind::Text || older.kind == Scalar::Kind::Null;
}

QString finishVoice(void *record, const SeenKeys &seen, ReadingContext &context) {
    auto &voice = *static_cast<ProjectVoice *>(record);
    const auto older = std::exchange(context.older, {});
    nameVoice(voice, seen);
    if (seen.contains("color_stripe_hex"))
        return {};
    voice.colorStripeHex = defaultStripeColor();
    return takeOlderText(voice.colorStripeHex, older[OlderStripe]) ? QString()
                                                                   : olderKeyProblem(QLatin1String("color_stripe"));
}

QString finishPresetVoice(void *record, const SeenKeys &seen, ReadingContext &) {
    auto &voice = *static_cast<ProjectPresetVoice *>(record);
    nameVoice(voice, seen);
    if (!seen.contains("color_stripe_hex"))
        voice.colorStripeHex = defaultStripeColor();
    return voice.elevenLabsVoiceId.isEmpty() ? QStringLiteral("Preset voice has an empty ElevenLabs voice ID")
                                             : QString();
}

QString finishPronunciation(void *record, const SeenKeys &seen, ReadingContext &context) {
    auto &entry = *static_cast<PronunciationEntry *>(record);
    const auto older = std::exchange(context.older, {});
    if (!seen.contains("id"))
        entry.id = PronunciationId::create();
    if (!seen.contains("created_at"))
        entry.createdAt = context.now;
    if (!seen.contains("spelling") && !takeOlderText(entry.spelling, older[OlderWord]))
        return olderKeyProblem(QLatin1String("word"));
    const bool isAdvanced = entry.mode == PronunciationMode::Advanced;
    if (!seen.contains("phonetic_override") &&
        !takeOlderText(entry.phoneticOverride, older[isAdvanced ? OlderPhonemes : OlderAlias]))
        return olderKeyProblem(isAdvanced ? QLatin1String("phonemes") : QLatin1String("alias"));
    const OlderValue &isEnabled = older[OlderIsEnabled];
    if (seen.contains("is_enabled") || isEnabled.kind == Scalar::Kind::Null)
        return {};
    entry.isEnabled = isEnabled.boolean;
    return isEnabled.kind == Scalar::Kind::Boolean ? QString() : olderKeyProblem(QLatin1String("isEnabled"));
}

QString finishCustomTag(void *record, const SeenKeys &seen, ReadingContext &) {
    auto &tag = *static_cast<CustomTag *>(record);
    if (!seen.contains("id"))
        tag.id = CustomTagId::create();
    return {};
}

constexpr Presence required = Presence::Required;
constexpr Presence optional = Presence::Optional;

using Settings = ProjectLineSettings;
constexpr Field settingsFields[] = {
    value<Settings, &Settings::directionMode>("direction_mode"),
    word<Settings, &Settings::mode>("mode"),
    word<Settings, &Settings::model>("model"),
    value<Settings, &Settings::similarityBoost>("similarity_boost"),
    value<Settings, &Settings::speed>("speed"),
    value<Settings, &Settings::stability>("stability"),
    value<Settings, &Settings::style>("style"),
};
constexpr Schema settingsSchema(settingsFields);

constexpr Field takeFields[] = {
    value<Take, &Take::characterCount>("character_count"),
    fileName<Take, &Take::filename>("filename"),
    value<Take, &Take::generatedAt>("generated_at"),
    value<Take, &Take::id>("id"),
    value<Take, &Take::presetId>("preset_id", optional),
    nested<Take, &Take::settingsSnapshot>("settings_snapshot", required, settingsSchema),
    value<Take, &Take::voiceId>("voice_id"),
};
constexpr Schema takeSchema(takeFields);

constexpr Field recordingFields[] = {
    value<SourceRecording, &SourceRecording::durationSeconds>("duration_seconds"),
    fileName<SourceRecording, &SourceRecording::filename>("filename"),
    value<SourceRecording, &SourceRecording::id>("id"),
    value<SourceRecording, &SourceRecording::recordedAt>("recorded_at"),
};
constexpr Schema recordingSchema(recordingFields);

using Line = LineDraft;
constexpr Field lineFields[] = {
    value<Line, &Line::activeSourceId>("active_source_id", optional),
    value<Line, &Line::activeTakeId>("active_take_id", optional),
    value<Line, &Line::lineId>("line_id"),
    value<Line, &Line::notes>("notes"),
    value<Line, &Line::order>("order"),
    value<Line, &Line::presetId>("preset_id", optional),
    nestedOptional<Line, &Line::settings>("settings", optional, settingsSchema),
    records<Line, &Line::sourceRecordings>("source_recordings", required, recordingSchema),
    records<Line, &Line::takes>("takes", required, takeSchema),
    value<Line, &Line::text>("text"),
    value<Line, &Line::voiceId>("voice_id", optional),
};
constexpr Schema lineSchema(lineFields);

constexpr Field voiceFields[] = {
    value<ProjectVoice, &ProjectVoice::castName>("cast_name", optional),
    older<OlderStripe>("color_stripe"),
    value<ProjectVoice, &ProjectVoice::colorStripeHex>("color_stripe_hex", optional),
    value<ProjectVoice, &ProjectVoice::displayName>("display_name", optional),
    value<ProjectVoice, &ProjectVoice::elevenLabsVoiceId>("elevenlabs_voice_id", optional),
    value<ProjectVoice, &ProjectVoice::id>("id"),
};
constexpr Schema voiceSchema(voiceFields, &finishVoice);

using PresetVoice = ProjectPresetVoice;
constexpr Field presetVoiceFields[] = {
    value<PresetVoice, &PresetVoice::castName>("cast_name", optional),
    value<PresetVoice, &PresetVoice::colorStripeHex>("color_stripe_hex", optional),
    value<PresetVoice, &PresetVoice::displayName>("display_name", optional),
    value<PresetVoice, &PresetVoice::elevenLabsVoiceId>("elevenlabs_voice_id"),
};
constexpr Schema presetVoiceSchema(presetVoiceFields, &finishPresetVoice);

// A preset's settings are stored among its own keys.
template <auto Member>
constexpr auto presetSetting = [](ProjectPreset &preset) -> auto & {
    return preset.settings.*Member;
};

using Preset = ProjectPreset;
constexpr Field presetFields[] = {
    value<Preset, presetSetting<&Settings::directionMode>>("direction_mode"),
    value<Preset, &Preset::id>("id"),
    word<Preset, presetSetting<&Settings::mode>>("mode"),
    word<Preset, presetSetting<&Settings::model>>("model"),
    value<Preset, &Preset::name>("name"),
    value<Preset, presetSetting<&Settings::similarityBoost>>("similarity_boost"),
    value<Preset, presetSetting<&Settings::speed>>("speed"),
    value<Preset, presetSetting<&Settings::stability>>("stability"),
    value<Preset, presetSetting<&Settings::style>>("style"),
    nestedOptional<Preset, &Preset::voice>("voice", Presence::Tolerated, presetVoiceSchema),
};
constexpr Schema presetSchema(presetFields);

constexpr Field tabFields[] = {
    value<ProjectTab, &ProjectTab::id>("id"),
    ids<ProjectTab, &ProjectTab::lineIds>("line_ids"),
    value<ProjectTab, &ProjectTab::name>("name"),
};
constexpr Schema tabSchema(tabFields);

constexpr Field selectionFields[] = {
    value<SelectionState, &SelectionState::activeLineId>("active_line_id", optional),
    ids<SelectionState, &SelectionState::selectedLineIds>("selected_line_ids"),
};
constexpr Schema selectionSchema(selectionFields);

constexpr Field audioSettingsFields[] = {
    value<AudioSettings, &AudioSettings::bitDepth>("bit_depth"),
    value<AudioSettings, &AudioSettings::format>("format"),
    value<AudioSettings, &AudioSettings::sampleRate>("sample_rate"),
};
constexpr Schema audioSettingsSchema(audioSettingsFields);

using Entry = PronunciationEntry;
constexpr Field pronunciationFields[] = {
    older<OlderAlias>("alias"),
    value<Entry, &Entry::alphabet>("alphabet", optional),
    value<Entry, &Entry::createdAt>("created_at", optional),
    value<Entry, &Entry::id>("id", optional),
    older<OlderIsEnabled>("isEnabled"),
    value<Entry, &Entry::isEnabled>("is_enabled", optional),
    value<Entry, &Entry::mode>("mode", optional),
    value<Entry, &Entry::notes>("notes", optional),
    older<OlderPhonemes>("phonemes"),
    value<Entry, &Entry::phoneticOverride>("phonetic_override", optional),
    value<Entry, &Entry::spelling>("spelling", optional),
    older<OlderWord>("word"),
};
constexpr Schema pronunciationSchema(pronunciationFields, &finishPronunciation);

template <auto Member>
constexpr auto projectPart = [](ProjectDraft &draft) -> auto & {
    return draft.project.*Member;
};

using Draft = ProjectDraft;
constexpr Field projectFields[] = {
    value<Draft, projectPart<&Project::activeTabId>>("active_tab_id", optional),
    nested<Draft, projectPart<&Project::audioSettings>>("audio_settings", required, audioSettingsSchema),
    value<Draft, projectPart<&Project::createdAt>>("created_at"),
    {"lines", optional, Field::Shape::ObjectArray, nullptr, &openLine, nullptr, &lineSchema},
    value<Draft, projectPart<&Project::modifiedAt>>("modified_at"),
    records<Draft, projectPart<&Project::presets>>("presets", optional, presetSchema),
    value<Draft, projectPart<&Project::projectId>>("project_id"),
    value<Draft, projectPart<&Project::projectName>>("project_name"),
    records<Draft, projectPart<&Project::pronunciations>>("pronunciations", optional, pronunciationSchema),
    value<Draft, projectPart<&Project::schemaVersion>>("schema_version"),
    nested<Draft, projectPart<&Project::selection>>("selection", optional, selectionSchema),
    records<Draft, projectPart<&Project::tabs>>("tabs", optional, tabSchema),
    records<Draft, projectPart<&Project::voices>>("voices", optional, voiceSchema),
};
constexpr Schema projectSchema(projectFields);

constexpr Field linePayloadFields[] = {
    records<LinePayloadDraft, &LinePayloadDraft::lines>("lines", required, lineSchema),
    value<LinePayloadDraft, &LinePayloadDraft::projectId>("projectId"),
    value<LinePayloadDraft, &LinePayloadDraft::version>("version"),
};
constexpr Schema linePayloadSchema(linePayloadFields);

constexpr Field customTagFields[] = {
    value<CustomTag, &CustomTag::category>("category", optional),
    value<CustomTag, &CustomTag::id>("id", optional),
    value<CustomTag, &CustomTag::isEnabled>("isEnabled", optional),
    value<CustomTag, &CustomTag::label>("label", optional),
    value<CustomTag, &CustomTag::wasClassifiedByLLM>("was_classified_by_llm", optional),
};
constexpr Schema customTagSchema(customTagFields, &finishCustomTag);

constexpr Field colorFields[] = {
    value<CodableColor, &CodableColor::blue>("blue"),
    value<CodableColor, &CodableColor::green>("green"),
    value<CodableColor, &CodableColor::red>("red"),
};
constexpr Schema colorSchema(colorFields);

constexpr Field scriptLineFields[] = {
    value<ScriptLine, &ScriptLine::castName>("castName"),
    nested<ScriptLine, &ScriptLine::codableColor>("codableColor", required, colorSchema),
    value<ScriptLine, &ScriptLine::directionAudioFilename>("directionAudioFilename", optional),
    value<ScriptLine, &ScriptLine::directionMode>("directionMode"),
    value<ScriptLine, &ScriptLine::generatedAudioFilename>("generatedAudioFilename", optional),
    value<ScriptLine, &ScriptLine::id>("id"),
    word<ScriptLine, &ScriptLine::mode>("mode"),
    word<ScriptLine, &ScriptLine::model>("model"),
    value<ScriptLine, &ScriptLine::presetName>("presetName"),
    value<ScriptLine, &ScriptLine::similarityBoost>("similarityBoost"),
    value<ScriptLine, &ScriptLine::speed>("speed"),
    value<ScriptLine, &ScriptLine::stability>("stability"),
    value<ScriptLine, &ScriptLine::style>("style"),
    value<ScriptLine, &ScriptLine::text>("text"),
    value<ScriptLine, &ScriptLine::voiceId>("voiceId", optional),
};
constexpr Schema scriptLineSchema(scriptLineFields);

constexpr Field scriptTabFields[] = {
    value<ScriptTab, &ScriptTab::id>("id"),
    records<ScriptTab, &ScriptTab::lines>("lines", required, scriptLineSchema),
    value<ScriptTab, &ScriptTab::name>("name"),
};
constexpr Schema scriptTabSchema(scriptTabFields);

} // namespace

const Field &projectDocument() {
    static constexpr Field document = nested<ProjectDraft, std::identity{}>({}, required, projectSchema);
    return document;
}

const Field &linePayloadDocument() {
    static constexpr Field document = nested<LinePayloadDraft, std::identity{}>({}, required, linePayloadSchema);
    return document;
}

const Field &customTagsDocument() {
    static constexpr Field document = records<QList<CustomTag>, std::identity{}>({}, required, customTagSchema);
    return document;
}

const Field &scriptTabsDocument() {
    static constexpr Field document = records<QList<ScriptTab>, std::identity{}>({}, required, scriptTabSchema);
    return document;
}

const Field &scriptLinesDocument() {
    static constexpr Field document = records<QList<ScriptLine>, std::identity{}>({}, required, scriptLineSchema);
    return document;
}

} // namespace orlenta::model::json
