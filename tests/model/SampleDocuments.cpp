#include "model/SampleDocuments.h"

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

ProjectLineSettings sampleSettings() {
    return {0.1, 0.2, 0.30000000000000004, 1.1, u"v3"_s, u"Creative"_s, DirectionMode::Voice};
}

ProjectLine fullLine() {
    ProjectLine line = ProjectLine::makeNew();
    line.text = u"[whispers] \"Grüße\" / C:\\x\n\t\u0001 日本 \U0001F600"_s;
    line.notes = u"note"_s;
    line.voiceId = VoiceId(sampleUuid(1));
    line.presetId = PresetId(sampleUuid(2));
    line.settings = sampleSettings();
    for (int i = 0; i < 2; ++i) {
        line.takes.append({TakeId::create(), u"take %1.wav"_s.arg(i), sampleMoment(), VoiceId(sampleUuid(1)),
                           i == 0 ? std::optional(PresetId(sampleUuid(2))) : std::nullopt, sampleSettings(), 42});
        line.sourceRecordings.append({RecordingId::create(), u"source %1.wav"_s.arg(i), sampleMoment(), 1.25 + i});
    }
    line.activeTakeId = line.takes.first().id;
    line.activeSourceId = line.sourceRecordings.last().id;
    return line;
}

} // namespace

base::Timestamp sampleMoment() {
    using namespace std::chrono;
    return sys_days{2024y / May / 31} + 12h + 34min + 56s;
}

QUuid sampleUuid(int number) {
    return QUuid(u"00000000-0000-0000-0000-%1"_s.arg(number, 12, 10, QChar(u'0')));
}

Project fullProject() {
    Project project = Project::makeNew(u"Full / Project"_s, sampleMoment());
    project.voices = {{VoiceId(sampleUuid(1)), u"service-1"_s, u"Anna"_s, u"ANNA"_s, u"#112233"_s},
                      {VoiceId(sampleUuid(3)), u"service-2"_s, u"Ben"_s, u"BEN"_s, u"#ABCDEF"_s}};
    project.presets = {ProjectPreset::processDefault(),
                       {PresetId(sampleUuid(2)), u"Loud"_s, sampleSettings(),
                        ProjectPresetVoice{u"service-1"_s, u"Anna"_s, u"A"_s, u"#445566"_s}}};
    project.tabs.append({TabId::create(), u"Two"_s, {}});
    project.appendLine(fullLine());
    project.appendLine(fullLine());
    const LineIdList &added = project.tabs.last().lineIds;
    project.selection = {added.toList(), added.first()};
    project.pronunciations = {{PronunciationId::create(),
                               u"Orlenta"_s,
                               PronunciationMode::Simple,
                               u"or lenta"_s,
                               u"n"_s,
                               sampleMoment(),
                               {},
                               false},
                              {PronunciationId::create(),
                               u"Ei"_s,
                               PronunciationMode::Advanced,
                               u"aɪ"_s,
                               {},
                               sampleMoment(),
                               PhonemeAlphabet::Ipa,
                               true}};
    project.activeTabId = project.tabs.last().id;
    return project;
}

QByteArray documentWith(const QByteArray &members) {
    return R"({"schema_version":1,"project_id":"00000000-0000-0000-0000-000000000009","project_name":"P",)"
           R"("created_at":"2024-05-31T12:34:56Z","modified_at":"2024-05-31T12:34:56Z",)"
           R"("audio_settings":{"sample_rate":48000,"bit_depth":24,"format":"wav"})" +
           members + "}";
}

QByteArray lineText(int id, int order, const QByteArray &members) {
    return R"({"line_id":")" + sampleUuid(id).toByteArray(QUuid::WithoutBraces) +
           R"(","text":"t","notes":"","takes":[],"source_recordings":[],"order":)" + QByteArray::number(order) +
           members + "}";
}

QByteArray presetText(const QByteArray &members) {
    return R"({"id":"00000000-0000-0000-0000-000000000005","name":"N","direction_mode":"text","model":"v2",)"
           R"("mode":"Natural","stability":1,"similarity_boost":0,"style":0.5,"speed":1)" +
           members + "}";
}

} // namespace orlenta::model
