#include "support/ProjectGenerator.h"

#include <array>
#include <random>

namespace orlenta::benchmarks {
namespace {

using namespace Qt::StringLiterals;
using model::Project;
using model::ProjectLine;
using model::ProjectPreset;
using model::RecordingId;
using model::TabId;
using model::Take;
using model::TakeId;
using model::VoiceId;

constexpr int voiceCount = 12;
constexpr int linesPerTab = 500;
constexpr base::Timestamp firstDay{std::chrono::seconds(1'700'000'000)};

const std::array<QString, 16> &vocabulary() {
    static const std::array<QString, 16> words{
        u"the"_s, u"harbour"_s, u"café"_s,   u"never"_s,      u"we"_s,    u"[whispers]"_s, u"morning,"_s, u"again"_s,
        u"I'd"_s, u"über"_s,    u"and/or"_s, u"\"quoted\""_s, u"light"_s, u"[laughs]"_s,   u"door."_s,    u"before"_s};
    return words;
}

QString sentence(std::mt19937 &random) {
    const int length = std::uniform_int_distribution<int>(20, 200)(random);
    QString text;
    while (text.size() < length)
        text += vocabulary()[random() % vocabulary().size()] + u' ';
    return text;
}

Take generatedTake(const Project &project, const ProjectLine &line, const QString &filename, std::mt19937 &random) {
    Take take;
    take.id = TakeId::create();
    take.filename = filename;
    take.generatedAt = firstDay + std::chrono::seconds(random() % 10'000'000);
    take.voiceId = *line.voiceId;
    if (random() % 2 == 0)
        take.presetId = project.presets.first().id;
    take.settingsSnapshot = project.effectiveSettings(line);
    take.settingsSnapshot.stability = static_cast<double>(random() % 100) / 100.0;
    take.characterCount = line.text.size();
    return take;
}

ProjectLine generatedLine(const Project &project, int order, int takes, std::mt19937 &random) {
    ProjectLine line = ProjectLine::makeNew();
    line.text = sentence(random);
    line.voiceId = project.voices.at(order % voiceCount).id;
    for (int i = 0; i < takes; ++i)
        line.takes.append(
            generatedTake(project, line, u"Scene %1 ANNA Take %2.wav"_s.arg(order + 1).arg(i + 1), random));
    if (takes > 0)
        line.activeTakeId = line.takes.last().id;
    if (order % 10 == 0)
        line.sourceRecordings.append({RecordingId::create(), u"Direction %1.wav"_s.arg(order + 1), firstDay,
                                      static_cast<double>(random() % 100'000) / 1000.0});
    return line;
}

} // namespace

Project generateProject(int lines, int takesPerLine) {
    std::mt19937 random(20240531);
    Project project = Project::makeNew(u"Long production"_s, firstDay);
    project.presets.append(ProjectPreset::processDefault());
    for (int i = 0; i < voiceCount; ++i) {
        const QString name = u"Voice %1"_s.arg(i + 1);
        project.voices.append(
            {VoiceId::create(), u"service-voice-%1"_s.arg(i), name, name.toUpper(), model::defaultStripeColor()});
    }
    project.lines = {};
    project.tabs.clear();
    for (int i = 0; i < lines; ++i) {
        if (i % linesPerTab == 0)
            project.tabs.append({TabId::create(), u"Scene %1"_s.arg(i / linesPerTab + 1), {}});
        project.appendLine(generatedLine(project, i, takesPerLine, random));
    }
    project.activeTabId = project.tabs.isEmpty() ? std::nullopt : std::optional(project.tabs.first().id);
    return project;
}

} // namespace orlenta::benchmarks
