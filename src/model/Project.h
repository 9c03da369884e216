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

/// The selection as last saved.
struct SelectionState {
    QList<LineId> selectedLineIds;
    std::optional<LineId> activeLineId;

    friend bool operator==(const SelectionState &, const SelectionState &) = default;
};

/// The document. A value: copies are independent, and cheap, since their parts are shared until changed.
struct Project {
    /// The version this program writes; files of a later one are refused.
    static constexpr std::int64_t currentSchemaVersion = 1;

    std::int64_t schemaVersion = currentSchemaVersion;
    ProjectId projectId;
    QString projectName;
    base::Timestamp createdAt{};
    base::Timestamp modifiedAt{};
    AudioSettings audioSettings;
    QList<ProjectVoice> voices;
    QList<ProjectPreset> presets;
    /// Each stands in exactly one tab, once a reader or a controller has repaired the project.
    LineTable lines;
    SelectionState selection;
    QList<PronunciationEntry> pronunciations;
    QList<ProjectTab> tabs;
    std::optional<TabId> activeTabId;

    /// A new project: one empty line in one tab, "Script 1".
    [[nodiscard]] static Project makeNew(const QString &name, base::Timestamp now);

    [[nodiscard]] const ProjectVoice *findVoice(const VoiceId &id) const;
    [[nodiscard]] const ProjectPreset *findPreset(const PresetId &id) const;
    [[nodiscard]] const ProjectTab *findTab(const TabId &id) const;
    /// The tab that the line stands in, or null.
    [[nodiscard]] const ProjectTab *tabOf(const LineId &id) const;
    /// All lines, tab by tab. The pointers hold until the next change.
    [[nodiscard]] std::vector<const ProjectLine *> linesInOrder() const;
    /// The voice cast on a line, or null.
    [[nodiscard]] const ProjectVoice *voiceOf(const ProjectLine &line) const;
    /// The line's own settings, or else its preset's, or else the fall-back.
    [[nodiscard]] ProjectLineSettings effectiveSettings(const ProjectLine &line) const;

    /// Puts the line at the end of the last tab, making "Script 1" where there is none.
    void appendLine(const ProjectLine &line);

    friend bool operator==(const Project &, const Project &) = default;
};

} // namespace orlenta::model
