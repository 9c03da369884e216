#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::controller {

/// Everything that the user can do by a menu, a button or a key.
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
    AddLine,
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
    LeaveLines,
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
};

/// Where a command stands: in a menu, whose keys count in the whole window, or at one place, where its keys count.
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
    TabBar
};

/// Whether a menu draws a line above the command.
enum class Section { Same, New };

struct Command {
    CommandId id;
    CommandGroup group;
    /// As menus show it.
    QString title;
    /// In portable text, as "Ctrl+G"; the first is the one that menus and tool tips show.
    QStringList keys;
    /// What it does, for tool tips; empty where it has no button.
    QString tip = {};
    /// The icon's name, or empty.
    QString icon = {};
    Section section = Section::Same;
};

} // namespace orlenta::controller
