#pragma once

#include <memory>

#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "base/Clock.h"
#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/script/TextRange.h"
#include "model/Project.h"

namespace orlenta::controller {

class DirectionAudio;
class Exporting;
class LineClipboard;
class LineEditing;
class LineRuntime;
class LineWaveforms;
class MediaFiles;
class PresetEditing;
class Pronunciations;
class Selection;
class TabEditing;
class TagEditing;
class TakeEditing;
class TypingSession;
class UndoManager;
class VoiceCasting;

/// The document object of one open project: the one writer of its records. It owns the state, the dirty mark and the
/// save; each subject's operations stand in a class of its own that it owns. Main thread.
class ProjectController final : public QObject {
    Q_OBJECT
public:
    /// `projectURL` is the project folder; empty for a project that has none yet. Repairs what a reader leaves open
    /// (presets, lines, tabs, active tab); that doesn't make the project dirty.
    ProjectController(model::Project project, const QUrl &projectURL, base::Clock clock = base::systemClock(),
                      QObject *parent = nullptr);
    ~ProjectController() override;

    [[nodiscard]] const model::Project &project() const;
    [[nodiscard]] QUrl projectURL() const;
    [[nodiscard]] bool hasUnsavedChanges() const;
    /// The active tab, or null.
    [[nodiscard]] const model::ProjectTab *activeTab() const;
    /// The ids of the active tab's lines that exist, in display order.
    [[nodiscard]] const QList<model::LineId> &scriptLineIds() const;
    /// Why the last hand-over of audio failed, for the user; empty when nothing did.
    [[nodiscard]] QString spotError() const;
    void setSpotError(const QString &message);
    /// Bumped to make text views drop their pending text and read the line again.
    [[nodiscard]] int typingFlushVersion() const;

    /// Writes the project file; on success the project is clean.
    base::Result<void, ProjectControllerError> save();
    /// The user's choice not to save: the project counts as clean.
    void discardChanges();

    [[nodiscard]] UndoManager &undoManager() const;
    [[nodiscard]] Selection &selection() const;
    [[nodiscard]] TypingSession &typing() const;
    [[nodiscard]] LineEditing &lines() const;
    [[nodiscard]] LineClipboard &clipboard() const;
    [[nodiscard]] TabEditing &tabs() const;
    [[nodiscard]] TagEditing &tagEditing() const;
    [[nodiscard]] TakeEditing &takes() const;
    [[nodiscard]] DirectionAudio &directionAudio() const;
    [[nodiscard]] MediaFiles &media() const;
    [[nodiscard]] LineRuntime &runtime() const;
    [[nodiscard]] LineWaveforms &waveforms() const;
    [[nodiscard]] VoiceCasting &voices() const;
    [[nodiscard]] PresetEditing &presets() const;
    [[nodiscard]] Pronunciations &pronunciations() const;
    [[nodiscard]] Exporting &exporting() const;

Q_SIGNALS:
    /// Any part of the document has changed.
    void projectChanged();
    /// The active tab's list of lines has changed: lines came, went or moved, or another tab is active.
    void scriptLinesChanged();
    void tabsChanged();
    void activeTabIdChanged();
    void hasUnsavedChangesChanged();
    void spotErrorChanged();
    void typingFlushVersionChanged();

private:
    struct Subjects;

    std::unique_ptr<Subjects> m_subjects;
};

} // namespace orlenta::controller
