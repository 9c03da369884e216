#pragma once

#include <memory>

#include <QtCore/QObject>

#include "base/Clock.h"
#include "base/Result.h"
#include "controller/document/ProjectChange.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/document/ProjectState.h"

namespace orlenta::model {
struct StoredProject;
}

namespace orlenta::controller {

class AudioInstaller;
class DirectionAudio;
class Exporting;
class LineClipboard;
class LineEditing;
class LineRuntime;
class LineWaveforms;
class MediaFiles;
class Notices;
class PresetEditing;
class Pronunciations;
class Selection;
class TabEditing;
class TagEditing;
class TakeEditing;
class TypingSession;
class UndoManager;
class VoiceCasting;

/// The document object of one open project. Holds the state and saves it. Each subject (lines, tabs, takes, ...) is a
/// class of its own, owned here. Subjects change the state through an Edit, and nothing else changes it. Main thread.
class ProjectController final : public QObject {
    Q_OBJECT
public:
    /// `projectURL` is the project folder, or empty for a project without one. Repairs what a reader may leave
    /// incomplete (presets, lines, tabs, the active tab); the repair doesn't make the project dirty.
    ProjectController(model::Project project, const QUrl &projectURL, base::Clock clock = base::systemClock(),
                      QObject *parent = nullptr);
    /// Saves to the file that was opened.
    explicit ProjectController(const model::StoredProject &stored, base::Clock clock = base::systemClock(),
                               QObject *parent = nullptr);
    ~ProjectController() override;

    [[nodiscard]] const ProjectState &state() const { return m_state; }
    [[nodiscard]] const model::Project &project() const { return m_state.project; }
    [[nodiscard]] QUrl projectURL() const { return m_state.projectURL; }
    [[nodiscard]] bool hasUnsavedChanges() const { return m_state.hasUnsavedChanges; }
    /// The active tab, or null.
    [[nodiscard]] const model::ProjectTab *activeTab() const { return m_state.activeTab(); }
    /// The ids of the active tab's lines in display order.
    [[nodiscard]] const model::LineIdList &scriptLineIds() const { return m_state.scriptLineIds(); }
    [[nodiscard]] base::Timestamp now() const { return base::wholeSeconds(m_clock); }

    /// Writes the project file; on success the project is clean.
    base::Result<void, ProjectControllerError> save();
    /// Call when the user chooses not to save. Marks the project as clean.
    void discardChanges();
    /// Shows a message that audio couldn't be imported or exported. An empty message withdraws it.
    void setSpotError(const QString &message);
    [[nodiscard]] QString spotError() const;

    [[nodiscard]] UndoManager &undoManager() const;
    [[nodiscard]] Selection &selection() const;
    [[nodiscard]] TypingSession &typing() const;
    [[nodiscard]] LineEditing &lines() const;
    [[nodiscard]] LineClipboard &clipboard() const;
    [[nodiscard]] TabEditing &tabs() const;
    [[nodiscard]] TagEditing &tagEditing() const;
    [[nodiscard]] TakeEditing &takes() const;
    [[nodiscard]] DirectionAudio &directionAudio() const;
    [[nodiscard]] AudioInstaller &audioInstaller() const;
    [[nodiscard]] MediaFiles &media() const;
    [[nodiscard]] LineRuntime &runtime() const;
    [[nodiscard]] LineWaveforms &waveforms() const;
    [[nodiscard]] VoiceCasting &voices() const;
    [[nodiscard]] PresetEditing &presets() const;
    [[nodiscard]] Pronunciations &pronunciations() const;
    [[nodiscard]] Exporting &exporting() const;
    [[nodiscard]] Notices &notices() const;

Q_SIGNALS:
    /// Emitted when an edit ends, once for each kind of change. Connect with onChange().
    void changed(const orlenta::controller::ProjectChange &change);

private:
    friend class Edit;
    struct Subjects;

    void announce(const ProjectChange &change) { Q_EMIT changed(change); }

    base::Clock m_clock;
    ProjectState m_state;
    /// Empty until the first save if the project wasn't opened from a file.
    QString m_projectFile;
    int m_openEdits = 0;
    std::unique_ptr<Subjects> m_subjects;
};

/// Calls slot(change) for each change of one kind, as long as the receiver lives.
template <typename Change, typename Slot>
QMetaObject::Connection onChange(const ProjectController &controller, const QObject *receiver, Slot slot) {
    return QObject::connect(&controller, &ProjectController::changed, receiver, [slot](const ProjectChange &change) {
        if (const auto *wanted = std::get_if<Change>(&change))
            slot(*wanted);
    });
}

/// Calls slot() for each change of any of these kinds, as long as the receiver lives.
template <typename... Changes, typename Slot>
QMetaObject::Connection onAnyChange(const ProjectController &controller, const QObject *receiver, Slot slot) {
    return QObject::connect(&controller, &ProjectController::changed, receiver, [slot](const ProjectChange &change) {
        if ((std::holds_alternative<Changes>(change) || ...))
            slot();
    });
}

} // namespace orlenta::controller
