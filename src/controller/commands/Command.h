#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::controller {

/// Every command in a menu, on a button or on a key.
enum class CommandId {
    // File
    NewProject,
    OpenProject,
    OpenSample,
    CloseWindow,
    SaveProject,
    ExportAudio,
    Account,
    Settings,
    Quit,
    // Edit
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    SelectAll,
    // Script
    ChooseVoice,
    Generate,
    StopGenerating,
    AddLine,
    InsertLine,
    DuplicateLine,
    SplitLine,
    DeleteLine,
    MoveLineUp,
    MoveLineDown,
    DeleteTake,
    ToggleTagToolbar,
    // Direction
    Record,
    PlayDirection,
    ImportDirection,
    DeleteDirection,
    SwitchDirectionMode,
    EditNotes,
    // Tabs
    NewTab,
    CloseTab,
    NextTab,
    PreviousTab,
    // Playback
    Play,
    PlayAll,
    // View
    ToggleInspector,
    CompactRows,
    SameTimeScale,
    NextArea,
    PreviousArea,
    ZoomIn,
    ZoomOut,
    ActualSize,
    // Help
    KeyboardShortcuts,
    About,
    // While the list of lines has the keyboard
    NextLine,
    PreviousLine,
    ExtendDown,
    ExtendUp,
    EditLine,
    PlaySelection,
    EnterControls,
    LineMenu,
    Scroll,
    DismissNotice,
    // In a control of a line
    NextControl,
    PreviousControl,
    PressControl,
    MovePlayhead,
    LeaveControls,
    // In the text of a line
    EditNextLine,
    EditPreviousLine,
    Stress,
    LeaveText,
    // In the bar of tabs
    ChooseTab,
    MoveTab,
    RenameTab,
    CloseThisTab,
    // In the voice search
    GoToVoices,
    CastFoundVoice,
    LeaveVoiceSearch,
};

/// Where a command belongs: a menu, whose keys work in the whole window, or a place, where only its keys work.
enum class CommandGroup {
    File,
    Edit,
    Script,
    Direction,
    Tabs,
    Playback,
    View,
    Help,
    ScriptLines,
    LineControls,
    LineText,
    TabBar,
    VoiceSearch
};

/// Whether a menu shows a separator above the command.
enum class Section { Same, New };

struct Command {
    CommandId id;
    CommandGroup group;
    /// As shown in menus.
    QString title;
    /// In portable text, such as "Ctrl+G". Menus and tool tips show the first one.
    QStringList keys;
    /// The tool tip; empty if the command has no button.
    QString tip = {};
    /// The icon's name, or empty.
    QString icon = {};
    Section section = Section::Same;
};

} // namespace orlenta::controller
