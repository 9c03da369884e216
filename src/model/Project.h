#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QtCore/QList>
#include <QtCore/QString>

#include "base/Clock.h"
#include "model/Ids.h"
#include "model/LineTable.h"
#include "model/ProjectPreset.h"
#include "model/ProjectTab.h"
#include "model/ProjectVoice.h"
#include "model/PronunciationEntry.h"

namespace orlenta::model {

/// The project's audio format.
struct AudioSettings {
    /// Hertz.
    std::int64_t sampleRate = 48000;
    /// Bits per sample.
    std::int64_t bitDepth = 24;
    QString format = QStringLiteral("wav");

    friend bool operator==(const AudioSettings &, const AudioSettings &) = default;
};

/// The selection when the project was saved.
struct SelectionState {
    QList<LineId> selectedLineIds;
    std::optional<LineId> activeLineId;

    friend bool operator==(const SelectionState &, const SelectionState &) = default;
};

/// The document. A value type: copies are independent, and cheap because they share their data until changed.
struct Project {
    /// The version this program writes. Newer files are refused.
    static constexpr std::int64_t currentSchemaVersion = 1;

    std::int64_t schemaVersion = currentSchemaVersion;
    ProjectId projectId;
    QString projectName;
    base::Timestamp createdAt{};
    base::Timestamp modifiedAt{};
    AudioSettings audioSettings;
    QList<ProjectVoice> voices;
    QList<ProjectPreset> presets;
    /// Once the project is repaired, each line is in exactly one tab.
    LineTable lines;
    SelectionState selection;
    QList<PronunciationEntry> pronunciations;
    QList<ProjectTab> tabs;
    std::optional<TabId> activeTabId;

    /// A new project with one empty line in one tab, "Script 1".
    [[nodiscard]] static Project makeNew(const QString &name, base::Timestamp now);

    [[nodiscard]] const ProjectVoice *findVoice(const VoiceId &id) const;
    [[nodiscard]] const ProjectPreset *findPreset(const PresetId &id) const;
    [[nodiscard]] const ProjectTab *findTab(const TabId &id) const;
    /// The line's tab, or null.
    [[nodiscard]] const ProjectTab *tabOf(const LineId &id) const;
    /// All lines, tab by tab. Valid until the next change.
    [[nodiscard]] std::vector<const ProjectLine *> linesInOrder() const;
    /// The voice cast on the line, or null.
    [[nodiscard]] const ProjectVoice *voiceOf(const ProjectLine &line) const;
    /// The line's own settings, otherwise its preset's, otherwise ProjectLineSettings::fallback().
    [[nodiscard]] ProjectLineSettings effectiveSettings(const ProjectLine &line) const;

    /// Adds the line at the end of the last tab. Creates the tab "Script 1" if there is none.
    void appendLine(const ProjectLine &line);

    friend bool operator==(const Project &, const Project &) = default;
};

} // namespace orlenta::model
