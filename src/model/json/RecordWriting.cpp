#include "model/json/RecordWriting.h"

namespace orlenta::model::json {
namespace {

template <typename Tag>
void writeId(JsonWriter &writer, std::string_view key, const base::TypedId<Tag> &id) {
    writer.key(key);
    writer.id(id.uuid());
}

template <typename Tag>
void writeId(JsonWriter &writer, std::string_view key, const std::optional<base::TypedId<Tag>> &id) {
    if (id)
        writeId(writer, key, *id);
}

void writeText(JsonWriter &writer, std::string_view key, const QString &text) {
    writer.key(key);
    writer.text(text);
}

void writeDate(JsonWriter &writer, std::string_view key, base::Timestamp date) {
    writer.key(key);
    writer.date(date);
}

void writeNumber(JsonWriter &writer, std::string_view key, double number) {
    writer.key(key);
    writer.number(number);
}

void writeInteger(JsonWriter &writer, std::string_view key, std::int64_t integer) {
    writer.key(key);
    writer.integer(integer);
}

void writeBoolean(JsonWriter &writer, std::string_view key, bool value) {
    writer.key(key);
    writer.boolean(value);
}

void writeText(JsonWriter &writer, std::string_view key, const std::optional<QString> &text) {
    if (text)
        writeText(writer, key, *text);
}

void writeDirectionMode(JsonWriter &writer, std::string_view key, DirectionMode mode) {
    writer.key(key);
    writer.plain(mode == DirectionMode::Text ? "text" : "voice");
}

template <typename Ids>
void writeIds(JsonWriter &writer, std::string_view key, const Ids &ids) {
    writer.key(key);
    writer.beginArray();
    for (const auto &id : ids) {
        writer.element();
        writer.id(id.uuid());
    }
    writer.endArray();
}

template <typename List, typename WriteOne>
void writeRecords(JsonWriter &writer, std::string_view key, const List &records, WriteOne writeOne) {
    writer.key(key);
    writer.beginArray();
    for (const auto &record : records) {
        writer.element();
        writeOne(writer, record);
    }
    writer.endArray();
}

void writeSettings(JsonWriter &writer, std::string_view key, const ProjectLineSettings &settings) {
    writer.key(key);
    writer.beginObject();
    writeDirectionMode(writer, "direction_mode", settings.directionMode);
    writeText(writer, "mode", settings.mode);
    writeText(writer, "model", settings.model);
    writeNumber(writer, "similarity_boost", settings.similarityBoost);
    writeNumber(writer, "speed", settings.speed);
    writeNumber(writer, "stability", settings.stability);
    writeNumber(writer, "style", settings.style);
    writer.endObject();
}

void writeTake(JsonWriter &writer, const Take &take) {
    writer.beginObject();
    writeInteger(writer, "character_count", take.characterCount);
    writeText(writer, "filename", take.filename);
    writeDate(writer, "generated_at", take.generatedAt);
    writeId(writer, "id", take.id);
    writeId(writer, "preset_id", take.presetId);
    writeSettings(writer, "settings_snapshot", take.settingsSnapshot);
    writeId(writer, "voice_id", take.voiceId);
    writer.endObject();
}

void writeRecording(JsonWriter &writer, const SourceRecording &recording) {
    writer.beginObject();
    writeNumber(writer, "duration_seconds", recording.durationSeconds);
    writeText(writer, "filename", recording.filename);
    writeId(writer, "id", recording.id);
    writeDate(writer, "recorded_at", recording.recordedAt);
    writer.endObject();
}

void writeVoice(JsonWriter &writer, const ProjectVoice &voice) {
    writer.beginObject();
    writeText(writer, "cast_name", voice.castName);
    writeText(writer, "color_stripe_hex", voice.colorStripeHex);
    writeText(writer, "display_name", voice.displayName);
    writeText(writer, "elevenlabs_voice_id", voice.elevenLabsVoiceId);
    writeId(writer, "id", voice.id);
    writer.endObject();
}

void writePresetVoice(JsonWriter &writer, const ProjectPresetVoice &voice) {
    writer.key("voice");
    writer.beginObject();
    writeText(writer, "cast_name", voice.castName);
    writeText(writer, "color_stripe_hex", voice.colorStripeHex);
    writeText(writer, "display_name", voice.displayName);
    writeText(writer, "elevenlabs_voice_id", voice.elevenLabsVoiceId);
    writer.endObject();
}

void writePreset(JsonWriter &writer, const ProjectPreset &preset) {
    writer.beginObject();
    writeDirectionMode(writer, "direction_mode", preset.settings.directionMode);
    writeId(writer, "id", preset.id);
    writeText(writer, "mode", preset.settings.mode);
    writeText(writer, "model", preset.settings.model);
    writeText(writer, "name", preset.name);
    writeNumber(writer, "similarity_boost", preset.settings.similarityBoost);
    writeNumber(writer, "speed", preset.settings.speed);
    writeNumber(writer, "stability", preset.settings.stability);
    writeNumber(writer, "style", preset.settings.style);
    if (preset.voice)
        writePresetVoice(writer, *preset.voice);
    writer.endObject();
}

void writePronunciation(JsonWriter &writer, const PronunciationEntry &entry) {
    writer.beginObject();
    if (entry.alphabet) {
        writer.key("alphabet");
        writer.plain(*entry.alphabet == PhonemeAlphabet::Cmu ? "cmu" : "ipa");
    }
    writeDate(writer, "created_at", entry.createdAt);
    writeId(writer, "id", entry.id);
    writeBoolean(writer, "is_enabled", entry.isEnabled);
    writer.key("mode");
    writer.plain(entry.mode == PronunciationMode::Simple ? "simple" : "advanced");
    writeText(writer, "notes", entry.notes);
    writeText(writer, "phonetic_override", entry.phoneticOverride);
    writeText(writer, "spelling", entry.spelling);
    writer.endObject();
}

void writeTab(JsonWriter &writer, const ProjectTab &tab) {
    writer.beginObject();
    writeId(writer, "id", tab.id);
    writeIds(writer, "line_ids", tab.lineIds);
    writeText(writer, "name", tab.name);
    writer.endObject();
}

void writeAudioSettings(JsonWriter &writer, const AudioSettings &settings) {
    writer.key("audio_settings");
    writer.beginObject();
    writeInteger(writer, "bit_depth", settings.bitDepth);
    writeText(writer, "format", settings.format);
    writeInteger(writer, "sample_rate", settings.sampleRate);
    writer.endObject();
}

void writeSelection(JsonWriter &writer, const SelectionState &selection) {
    writer.key("selection");
    writer.beginObject();
    writeId(writer, "active_line_id", selection.activeLineId);
    writeIds(writer, "selected_line_ids", selection.selectedLineIds);
    writer.endObject();
}

void writeColor(JsonWriter &writer, std::string_view key, const CodableColor &color) {
    writer.key(key);
    writer.beginObject();
    writeNumber(writer, "blue", color.blue);
    writeNumber(writer, "green", color.green);
    writeNumber(writer, "red", color.red);
    writer.endObject();
}

void writeLines(JsonWriter &writer, const std::vector<const ProjectLine *> &lines) {
    writer.key("lines");
    writer.beginArray();
    std::int64_t order = 0;
    for (const ProjectLine *line : lines) {
        writer.element();
        write(writer, *line, order++);
    }
    writer.endArray();
}

} // namespace

void write(JsonWriter &writer, const ProjectLine &line, std::int64_t order) {
    writer.beginObject();
    writeId(writer, "active_source_id", line.activeSourceId);
    writeId(writer, "active_take_id", line.activeTakeId);
    writeId(writer, "line_id", line.lineId);
    writeText(writer, "notes", line.notes);
    writeInteger(writer, "order", order);
    writeId(writer, "preset_id", line.presetId);
    if (line.settings)
        writeSettings(writer, "settings", *line.settings);
    writeRecords(writer, "source_recordings", line.sourceRecordings, &writeRecording);
    writeRecords(writer, "takes", line.takes, &writeTake);
    writeText(writer, "text", line.text);
    writeId(writer, "voice_id", line.voiceId);
    writer.endObject();
}

void write(JsonWriter &writer, const Project &project, const std::vector<const ProjectLine *> &lines) {
    writer.beginObject();
    writeId(writer, "active_tab_id", project.activeTabId);
    writeAudioSettings(writer, project.audioSettings);
    writeDate(writer, "created_at", project.createdAt);
    writeLines(writer, lines);
    writeDate(writer, "modified_at", project.modifiedAt);
    writeRecords(writer, "presets", project.presets, &writePreset);
    writeId(writer, "project_id", project.projectId);
    writeText(writer, "project_name", project.projectName);
    writeRecords(writer, "pronunciations", project.pronunciations, &writePronunciation);
    writeInteger(writer, "schema_version", project.schemaVersion);
    writeSelection(writer, project.selection);
    writeRecords(writer, "tabs", project.tabs, &writeTab);
    writeRecords(writer, "voices", project.voices, &writeVoice);
    writer.endObject();
}

void write(JsonWriter &writer, const CustomTag &tag) {
    writer.beginObject();
    writeText(writer, "category", tag.category);
    writeId(writer, "id", tag.id);
    writeBoolean(writer, "isEnabled", tag.isEnabled);
    writeText(writer, "label", tag.label);
    writeBoolean(writer, "was_classified_by_llm", tag.wasClassifiedByLLM);
    writer.endObject();
}

void write(JsonWriter &writer, const ScriptLine &line) {
    writer.beginObject();
    writeText(writer, "castName", line.castName);
    writeColor(writer, "codableColor", line.codableColor);
    writeText(writer, "directionAudioFilename", line.directionAudioFilename);
    writeDirectionMode(writer, "directionMode", line.directionMode);
    writeText(writer, "generatedAudioFilename", line.generatedAudioFilename);
    writeId(writer, "id", line.id);
    writeText(writer, "mode", line.mode);
    writeText(writer, "model", line.model);
    writeText(writer, "presetName", line.presetName);
    writeNumber(writer, "similarityBoost", line.similarityBoost);
    writeNumber(writer, "speed", line.speed);
    writeNumber(writer, "stability", line.stability);
    writeNumber(writer, "style", line.style);
    writeText(writer, "text", line.text);
    writeText(writer, "voiceId", line.voiceId);
    writer.endObject();
}

void write(JsonWriter &writer, const ScriptTab &tab) {
    writer.beginObject();
    writeId(writer, "id", tab.id);
    writeRecords(writer, "lines", tab.lines, [](JsonWriter &inner, const ScriptLine &line) { write(inner, line); });
    writeText(writer, "name", tab.name);
    writer.endObject();
}

} // namespace orlenta::model::json
