#pragma once

namespace orlenta::controller {

/// The right to change a project's records. Only the controller and its subjects can make one, so whoever holds a
/// reference to the document can read it, and nobody else can write it.
class EditKey final {
    friend class DirectionAudio;
    friend class LineClipboard;
    friend class LineEditing;
    friend class LineRuntime;
    friend class LineWaveforms;
    friend class MediaFiles;
    friend class PresetEditing;
    friend class ProjectController;
    friend class Pronunciations;
    friend class ScriptStructure;
    friend class Selection;
    friend class TabEditing;
    friend class TagEditing;
    friend class TakeEditing;
    friend class TypingSession;
    friend class UndoHistory;
    friend class VoiceCasting;

    EditKey() {}
};

} // namespace orlenta::controller
