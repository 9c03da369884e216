#include "controller/commands/CommandTable.h"

#include <algorithm>

#include <QtCore/QHash>

namespace orlenta::controller {

using namespace Qt::StringLiterals;

const QList<Command> &CommandTable::all() {
    using Id = CommandId;
    using Group = CommandGroup;
    static const QList<Command> commands{
        {Id::NewProject, Group::File, u"New Project"_s, {u"Ctrl+N"_s}, u"Make a new project"_s, u"plus"_s},
        {Id::OpenProject, Group::File, u"Open Project..."_s, {u"Ctrl+O"_s}, u"Open a project folder"_s, u"folder"_s},
        {Id::OpenSample, Group::File, u"Open Sample Project"_s, {}, u"Open a copy of the sample project"_s},
        {Id::CloseWindow, Group::File, u"Close Window"_s, {u"Ctrl+W"_s}, u"Close this project"_s, {}, Section::New},
        {Id::SaveProject, Group::File, u"Save Project"_s, {u"Ctrl+S"_s}, u"Save this project"_s, u"save"_s},
        {Id::ExportAudio,
         Group::File,
         u"Export Audio..."_s,
         {u"Ctrl+Shift+E"_s},
         u"Export the selected lines' audio"_s,
         u"export"_s,
         Section::New},
        {Id::Account,
         Group::File,
         u"Account…"_s,
         {},
         u"Connect an account or use local voices"_s,
         u"account"_s,
         Section::New},
        {Id::Settings, Group::File, u"Settings…"_s, {u"Ctrl+,"_s}, u"Change the preferences"_s, u"gear"_s},
        {Id::Quit, Group::File, u"Quit Orlenta"_s, {u"Ctrl+Q"_s}, u"Close all projects and quit"_s, {}, Section::New},

        {Id::Undo, Group::Edit, u"Undo"_s, {u"Ctrl+Z"_s}, u"Undo"_s, u"undo"_s},
        {Id::Redo, Group::Edit, u"Redo"_s, {u"Ctrl+Shift+Z"_s}, u"Redo"_s, u"redo"_s},
        {Id::Cut, Group::Edit, u"Cut"_s, {u"Ctrl+X"_s}, u"Cut the selected text or lines"_s, {}, Section::New},
        {Id::Copy, Group::Edit, u"Copy"_s, {u"Ctrl+C"_s}, u"Copy the selected text or lines"_s},
        {Id::Paste, Group::Edit, u"Paste"_s, {u"Ctrl+V"_s}, u"Paste text or lines"_s},
        {Id::SelectAll, Group::Edit, u"Select All"_s, {u"Ctrl+A"_s}, u"Select all text, or all lines of the tab"_s},

        {Id::ChooseVoice,
         Group::Script,
         u"Choose Voice..."_s,
         {u"Ctrl+Shift+B"_s},
         u"Search for a voice"_s,
         u"voice"_s},
        {Id::Generate,
         Group::Script,
         u"Generate"_s,
         {u"Ctrl+G"_s},
         u"Generate speech for the selected lines"_s,
         u"waveform"_s},
        {Id::StopGenerating,
         Group::Script,
         u"Stop Generating"_s,
         {u"Ctrl+Shift+G"_s},
         u"Finish the line that is being generated and leave out those that wait"_s,
         u"stop"_s},
        // Ctrl+Alt+L locks the screen on several desktops.
        {Id::AddLine,
         Group::Script,
         u"Add Line"_s,
         {u"Ctrl+Alt+L"_s, u"Ctrl+Shift+L"_s},
         u"Add a line at the end of the tab"_s,
         u"plus"_s,
         Section::New},
        {Id::InsertLine,
         Group::Script,
         u"Insert Line Below"_s,
         {u"Ctrl+Return"_s, u"Ctrl+Enter"_s},
         u"Insert a line below the selected one"_s,
         u"plus"_s},
        {Id::DuplicateLine,
         Group::Script,
         u"Duplicate Line"_s,
         {u"Ctrl+D"_s},
         u"Duplicate the selected line"_s,
         u"duplicate"_s},
        {Id::SplitLine,
         Group::Script,
         u"Split into Sentences"_s,
         {u"Ctrl+Shift+Return"_s},
         u"Make one line of each sentence"_s,
         u"split"_s},
        {Id::DeleteLine,
         Group::Script,
         u"Delete Line"_s,
         {u"Ctrl+Backspace"_s},
         u"Delete the selected lines"_s,
         u"trash"_s},
        // Ctrl+Alt with an arrow switches workspaces on several desktops.
        {Id::MoveLineUp,
         Group::Script,
         u"Move Line Up"_s,
         {u"Ctrl+Alt+Up"_s, u"Alt+Shift+Up"_s},
         u"Move the selected line up"_s,
         u"chevron-up"_s,
         Section::New},
        {Id::MoveLineDown,
         Group::Script,
         u"Move Line Down"_s,
         {u"Ctrl+Alt+Down"_s, u"Alt+Shift+Down"_s},
         u"Move the selected line down"_s,
         u"chevron-down"_s},
        {Id::DeleteTake, Group::Script, u"Delete Generated Audio"_s, {}, u"Take this take off the line"_s, u"trash"_s},
        {Id::ToggleTagToolbar,
         Group::Script,
         u"Expand Tag Toolbar"_s,
         {u"Ctrl+Shift+T"_s},
         u"Show the performance tags as rows or as menus"_s,
         {},
         Section::New},

        {Id::Record,
         Group::Direction,
         u"Record Direction"_s,
         {u"Ctrl+R"_s},
         u"Record the direction with the microphone"_s,
         u"record"_s},
        {Id::PlayDirection,
         Group::Direction,
         u"Play Direction"_s,
         {u"Ctrl+Alt+P"_s},
         u"Play the direction"_s,
         u"play"_s},
        {Id::ImportDirection,
         Group::Direction,
         u"Import Direction Audio..."_s,
         {u"Ctrl+I"_s},
         u"Use an audio file as this line's direction"_s,
         u"import"_s},
        {Id::DeleteDirection,
         Group::Direction,
         u"Delete Direction Audio"_s,
         {u"Ctrl+Shift+Del"_s},
         u"Delete Direction Audio"_s,
         u"trash"_s},
        {Id::SwitchDirectionMode,
         Group::Direction,
         u"Direct by Voice"_s,
         {u"Ctrl+M"_s},
         u"Directed by text; switch to voice"_s,
         u"microphone"_s},
        {Id::EditNotes, Group::Direction, u"Edit Notes"_s, {u"Ctrl+Shift+N"_s}, u"Notes on this line"_s, u"note"_s},

        {Id::NewTab, Group::Tabs, u"New Tab"_s, {u"Ctrl+T"_s}, u"New Tab"_s, u"plus"_s},
        {Id::CloseTab, Group::Tabs, u"Close Tab"_s, {u"Ctrl+Shift+W"_s}, u"Close Tab"_s, u"close"_s},
        // US keyboards send the shifted character, others the plain one.
        {Id::NextTab,
         Group::Tabs,
         u"Next Tab"_s,
         {u"Ctrl+Shift+]"_s, u"Ctrl+}"_s, u"Ctrl+PgDown"_s},
         u"Show the next tab"_s,
         {},
         Section::New},
        {Id::PreviousTab,
         Group::Tabs,
         u"Previous Tab"_s,
         {u"Ctrl+Shift+["_s, u"Ctrl+{"_s, u"Ctrl+PgUp"_s},
         u"Show the previous tab"_s},

        {Id::Play, Group::Playback, u"Play"_s, {u"Ctrl+P"_s}, u"Play the selected lines"_s, u"play"_s},
        {Id::PlayAll,
         Group::Playback,
         u"Play All"_s,
         {u"Ctrl+Shift+P"_s},
         u"Play all lines of this tab"_s,
         u"play-all"_s},

        {Id::ToggleInspector,
         Group::View,
         u"Hide Inspector"_s,
         {u"Ctrl+Alt+I"_s},
         u"Show or hide the inspector"_s,
         u"inspector"_s},
        {Id::CompactRows,
         Group::View,
         u"Compact Rows"_s,
         {u"Ctrl+Alt+C"_s},
         u"Show each line of this tab in one row of columns"_s,
         {},
         Section::New},
        {Id::SameTimeScale,
         Group::View,
         u"Same Time Scale"_s,
         {},
         u"Make a take's waveform as long as its time, beside the others of the tab"_s},
        {Id::NextArea,
         Group::View,
         u"Next Area"_s,
         {u"F6"_s},
         u"Move the keyboard to the next part of the window"_s,
         {},
         Section::New},
        {Id::PreviousArea,
         Group::View,
         u"Previous Area"_s,
         {u"Shift+F6"_s},
         u"Move the keyboard to the previous part of the window"_s},
        {Id::ZoomIn,
         Group::View,
         u"Zoom In"_s,
         {u"Ctrl+="_s, u"Ctrl++"_s},
         u"Make text and controls larger"_s,
         {},
         Section::New},
        {Id::ZoomOut, Group::View, u"Zoom Out"_s, {u"Ctrl+-"_s}, u"Make text and controls smaller"_s},
        {Id::ActualSize, Group::View, u"Actual Size"_s, {u"Ctrl+0"_s}, u"Show text and controls at size 1"_s},

        {Id::KeyboardShortcuts, Group::Help, u"Keyboard Shortcuts"_s, {u"F1"_s}, u"Show all keys of this window"_s},
        {Id::About, Group::Help, u"About Orlenta"_s, {}, u"Version and licence"_s, {}, Section::New},

        {Id::NextLine, Group::ScriptLines, u"Next line"_s, {u"Down"_s, u"Tab"_s}},
        {Id::PreviousLine, Group::ScriptLines, u"Previous line"_s, {u"Up"_s, u"Shift+Tab"_s}},
        {Id::ExtendDown, Group::ScriptLines, u"Extend the selection down"_s, {u"Shift+Down"_s}},
        {Id::ExtendUp, Group::ScriptLines, u"Extend the selection up"_s, {u"Shift+Up"_s}},
        {Id::EditLine, Group::ScriptLines, u"Edit the text of the line"_s, {u"Return"_s, u"Enter"_s}},
        {Id::PlaySelection,
         Group::ScriptLines,
         u"Play the selected lines, or stop"_s,
         {u"Space"_s},
         u"Play the selected lines"_s,
         u"play"_s},
        {Id::EnterControls, Group::ScriptLines, u"Go to the controls of the line"_s, {u"Right"_s}},
        {Id::LineMenu, Group::ScriptLines, u"Commands of the line"_s, {u"Menu"_s, u"Shift+F10"_s}},
        {Id::Scroll, Group::ScriptLines, u"Scroll"_s, {u"PgUp"_s, u"PgDown"_s, u"Home"_s, u"End"_s}},
        {Id::DismissNotice, Group::ScriptLines, u"Dismiss the message below the lines"_s, {u"Esc"_s}, u"Dismiss"_s},

        {Id::NextControl, Group::LineControls, u"Next control"_s, {u"Tab"_s, u"Right"_s}},
        {Id::PreviousControl, Group::LineControls, u"Previous control"_s, {u"Shift+Tab"_s, u"Left"_s}},
        {Id::PressControl, Group::LineControls, u"Press the control"_s, {u"Return"_s, u"Enter"_s, u"Space"_s}},
        {Id::MovePlayhead,
         Group::LineControls,
         u"Play from elsewhere, in a waveform"_s,
         {u"Left"_s, u"Right"_s, u"PgUp"_s, u"PgDown"_s, u"Home"_s, u"End"_s}},
        {Id::LeaveControls, Group::LineControls, u"Go back to the lines"_s, {u"Esc"_s}},

        {Id::EditNextLine, Group::LineText, u"Edit the next line"_s, {u"Tab"_s}},
        {Id::EditPreviousLine, Group::LineText, u"Edit the previous line"_s, {u"Shift+Tab"_s}},
        {Id::Stress,
         Group::LineText,
         u"Stress the selected text"_s,
         {u"Alt+Shift+S"_s},
         u"Capitalize selected text for emphasis"_s},
        {Id::LeaveText, Group::LineText, u"Go back to the lines"_s, {u"Esc"_s}},

        {Id::ChooseTab, Group::TabBar, u"Choose a tab"_s, {u"Left"_s, u"Right"_s}},
        {Id::MoveTab, Group::TabBar, u"Move the tab"_s, {u"Ctrl+Shift+Left"_s, u"Ctrl+Shift+Right"_s}},
        {Id::RenameTab, Group::TabBar, u"Rename the tab"_s, {u"F2"_s}},
        {Id::CloseThisTab, Group::TabBar, u"Close the tab"_s, {u"Del"_s}},

        {Id::GoToVoices, Group::VoiceSearch, u"Go to the voices"_s, {u"Down"_s}},
        {Id::CastFoundVoice, Group::VoiceSearch, u"Cast the first voice found"_s, {u"Return"_s, u"Enter"_s}},
        {Id::LeaveVoiceSearch, Group::VoiceSearch, u"Clear the search, or go back to the lines"_s, {u"Esc"_s}},
    };
    return commands;
}

const Command &CommandTable::command(CommandId id) {
    const auto found = std::find_if(all().begin(), all().end(), [id](const Command &c) { return c.id == id; });
    Q_ASSERT(found != all().end());
    return *found;
}

QString CommandTable::groupTitle(CommandGroup group) {
    switch (group) {
    case CommandGroup::File:
        return u"File"_s;
    case CommandGroup::Edit:
        return u"Edit"_s;
    case CommandGroup::Script:
        return u"Script"_s;
    case CommandGroup::Direction:
        return u"Direction"_s;
    case CommandGroup::Tabs:
        return u"Tabs"_s;
    case CommandGroup::Playback:
        return u"Playback"_s;
    case CommandGroup::View:
        return u"View"_s;
    case CommandGroup::Help:
        return u"Help"_s;
    case CommandGroup::ScriptLines:
        return u"Script Lines"_s;
    case CommandGroup::LineControls:
        return u"Controls of a Line"_s;
    case CommandGroup::LineText:
        return u"Text of a Line"_s;
    case CommandGroup::TabBar:
        return u"Bar of Tabs"_s;
    case CommandGroup::VoiceSearch:
        return u"Voice Search"_s;
    }
    Q_UNREACHABLE();
}

QString CommandTable::requirement(CommandId id) {
    using Id = CommandId;
    static const QHash<CommandId, QString> requirements{
        {Id::ExportAudio, u"Select lines that all have audio to export it."_s},
        {Id::Undo, u"There is nothing to undo."_s},
        {Id::Redo, u"There is nothing to redo."_s},
        {Id::Cut, u"Select text or lines to cut."_s},
        {Id::Copy, u"Select text or lines to copy."_s},
        {Id::Paste, u"There is nothing to paste here."_s},
        {Id::SelectAll, u"There is nothing to select."_s},
        {Id::ChooseVoice, u"Select exactly one line to choose its voice."_s},
        {Id::Generate, u"Select the lines to generate."_s},
        {Id::InsertLine, u"Select the line to insert below."_s},
        {Id::DuplicateLine, u"Select exactly one line to duplicate."_s},
        {Id::SplitLine, u"Select one line of several sentences to split."_s},
        {Id::DeleteLine, u"Select the lines to delete."_s},
        {Id::MoveLineUp, u"Select a line below the first one to move it up."_s},
        {Id::MoveLineDown, u"Select a line above the last one to move it down."_s},
        {Id::Record, u"Select the line to record a direction for."_s},
        {Id::PlayDirection, u"Select a line that shows direction audio to play it."_s},
        {Id::ImportDirection, u"Select the line to import direction audio for."_s},
        {Id::DeleteDirection, u"Select a line that shows direction audio to delete it."_s},
        {Id::SwitchDirectionMode, u"Select the line to direct."_s},
        {Id::EditNotes, u"Select the line to write notes on."_s},
        {Id::CloseTab, u"A project keeps at least one tab."_s},
        {Id::NextTab, u"There is no other tab."_s},
        {Id::PreviousTab, u"There is no other tab."_s},
        {Id::Play, u"Select a line with audio to play it."_s},
        {Id::PlayAll, u"No line of this tab has audio to play."_s},
        {Id::EditLine, u"Select exactly one line to edit its text."_s},
        {Id::PlaySelection, u"Select a line with audio to play it."_s},
        {Id::Stress, u"Select exactly one line to direct it with tags."_s},
        {Id::CloseThisTab, u"A project keeps at least one tab."_s},
        {Id::CastFoundVoice, u"Type the name of a voice to cast the lines to."_s},
    };
    return requirements.value(id);
}

} // namespace orlenta::controller
