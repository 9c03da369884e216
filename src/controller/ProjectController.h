#pragma once

#include <memory>

#include <QtCore/QObject>

#include "base/Clock.h"
#include "base/Result.h"
#include "controller/document/ProjectChange.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/document/ProjectState.h"

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

/// The document object of one open project: the one writer of its records. It holds the state and saves it; each
/// subject's operations stand in a class of its own that it owns, and only those change the state, through an Edit.
/// Main thread.
class ProjectController final : public QObject {
    Q_OBJECT
public:
    /// `projectURL` is the project folder; empty for a project that has none yet. Repairs what a reader leaves open
    /// (presets, lines, tabs, active tab); that doesn't make the project dirty.
    ProjectController(model::Project project, const QUrl &projectURL, base::Clock clock = base::systemClock(),
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
    /// The user's choice not to save: the project counts as clean.
    void discardChanges();
    /// Tells why audio couldn't be taken in or handed on; the empty text takes that back.
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
    /// An edit has ended; once for each thing that it changed. Use onChange().
    void changed(const orlenta::controller::ProjectChange &change);

private:
    friend class Edit;
    struct Subjects;

    void announce(const ProjectChange &change) { Q_EMIT changed(change); }

    base::Clock m_clock;
    ProjectState m_state;
    int m_openEdits = 0;
    std::unique_ptr<Subjects> m_subjects;
};

/// Calls slot(change) for each change of that kind for as long as the receiver lives.
template <typename Change, typename Slot>
QMetaObject::Connection onChange(const ProjectController &controller, const QObject *receiver, Slot slot) {
    return QObject::connect(&controller, &ProjectController::changed, receiver, [slot](const ProjectChange &change) {
        if (const auto *wanted = std::get_if<Change>(&change))
            slot(*wanted);
    });
}

/// Calls slot() for each change of one of those kinds for as long as the receiver lives.
template <typename... Changes, typename Slot>
QMetaObject::Connection onAnyChange(const ProjectController &controller, const QObject *receiver, Slot slot) {
    return QObject::connect(&controller, &ProjectController::changed, receiver, [slot](const ProjectChange &change) {
        if ((std::holds_alternative<Changes>(change) || ...))
            slot();
    });
}

} // namespace orlenta::controller
