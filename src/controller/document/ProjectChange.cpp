#include "controller/document/ProjectChange.h"

#include <algorithm>

#include "controller/document/ProjectState.h"

namespace orlenta::controller {
namespace {

LineFields differingFields(const model::ProjectLine &a, const model::ProjectLine &b) {
    LineFields fields;
    fields.setFlag(LineField::Text, a.text != b.text);
    fields.setFlag(LineField::Notes, a.notes != b.notes);
    fields.setFlag(LineField::Voice, a.voiceId != b.voiceId);
    fields.setFlag(LineField::Settings, a.settings != b.settings || a.presetId != b.presetId);
    fields.setFlag(LineField::Takes, a.takes != b.takes || a.activeTakeId != b.activeTakeId);
    fields.setFlag(LineField::Recordings,
                   a.sourceRecordings != b.sourceRecordings || a.activeSourceId != b.activeSourceId);
    return fields;
}

LinesChanged changedLines(const model::LineTable &before, const model::LineTable &after) {
    LinesChanged changed;
    after.forEachDifference(before, [&](const model::LineId &id, const auto *present, const auto *past) {
        if (present != nullptr && past != nullptr)
            changed.lines.insert(id, differingFields(*past, *present));
    });
    return changed;
}

RuntimeChanged changedRuntime(const LineRuntimeMap &before, const LineRuntimeMap &after) {
    RuntimeChanged changed;
    static const LineRuntimeState empty;
    after.forEachDifference(before, [&](const model::LineId &id, const auto *present, const auto *past) {
        if ((present != nullptr ? *present : empty) != (past != nullptr ? *past : empty))
            changed.lines.insert(id);
    });
    return changed;
}

bool sameTabBar(const QList<model::ProjectTab> &a, const QList<model::ProjectTab> &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto &left, const auto &right) {
        return left.id == right.id && left.name == right.name;
    });
}

} // namespace

LineFields LinesChanged::fields() const {
    LineFields all;
    for (const LineFields line : lines)
        all |= line;
    return all;
}

QList<ProjectChange> changesBetween(const ProjectState &before, const ProjectState &after) {
    QList<ProjectChange> changes;
    const auto addIf = [&changes](bool hasChanged, ProjectChange change) {
        if (hasChanged)
            changes.append(std::move(change));
    };
    const model::Project &old = before.project;
    const model::Project &now = after.project;
    addIf(!sameTabBar(old.tabs, now.tabs), TabsChanged());
    const bool isOtherTab = old.activeTabId != now.activeTabId;
    addIf(isOtherTab, ActiveTabChanged());
    addIf(isOtherTab || before.scriptLineIds() != after.scriptLineIds(), ScriptLinesChanged());
    if (RuntimeChanged runtime = changedRuntime(before.lineRuntime, after.lineRuntime); !runtime.lines.isEmpty())
        changes.append(std::move(runtime));
    addIf(before.typingFlushVersion != after.typingFlushVersion, TypingFlushed());
    addIf(old.voices != now.voices, VoicesChanged());
    addIf(old.presets != now.presets, PresetsChanged());
    addIf(old.pronunciations != now.pronunciations, PronunciationsChanged());
    if (LinesChanged lines = changedLines(old.lines, now.lines); !lines.lines.isEmpty())
        changes.append(std::move(lines));
    addIf(old.projectName != now.projectName || before.projectURL != after.projectURL, TitleChanged());
    addIf(!before.selection.hasSameLines(after.selection), SelectionChanged());
    addIf(before.selection.textSelectionRange != after.selection.textSelectionRange ||
              before.selection.lastNonEmptySelection != after.selection.lastNonEmptySelection,
          TextSelectionChanged());
    addIf(before.selection.editingLineId != after.selection.editingLineId, EditingLineChanged());
    addIf(before.hasUnsavedChanges != after.hasUnsavedChanges, UnsavedChangesChanged());
    return changes;
}

bool recordsDiffer(const model::Project &a, const model::Project &b) {
    model::Project other = b;
    other.modifiedAt = a.modifiedAt;
    other.selection = a.selection;
    return a != other;
}

} // namespace orlenta::controller
