#pragma once

#include <AppDefs.h>

/// The codes of all messages that windows, panes and operations send each other, one name each.
///
/// A number may serve two receivers that never meet (kFocusPane and the overwrite answers); within
/// one receiver each has one meaning.
namespace norvane {

// What the main window is told to do, by menus and by panes.
enum WindowCommand : uint32 {
    kOpen = 100,
    kCalculateSpace = 102,
    kAbout = 105,
    kNewFolder = 106,
    kRename = 107,
    kEmptyTrash = 108,
    kUpALevel = 110,
    kOpenInLeftPane = 111,
    kOpenInRightPane = 112,
    kDownALevel = 113,
    kAddPane = 120,
    kRemovePane = 121,
    kRevertToDefault = 122,
    kQuery = 123,
    kFtpConnections = 124,
    kDisconnectFtp = 125,
    kOpenTracker = 130,
    kOpenTerminal = 131,
    kTestOverwrite = 132, // in no menu
    kGoTo = 134,
    kPreferences = 135,
    kHelp = 140,
    kStopOperation = 'StOp',  // in no menu: asks whether the newest operation is to stop
    kShowProperties = 'Prop', // of what the focused pane has marked, else selected
    // In no menu: shows names that begin with a dot, or no longer; with int32 "status": how keeping
    // that went.
    kShowHidden = 'Hidn',
    kFocusPane = 1000, // to 1009: the pane's place is added
};

// What the main window is told of what happened elsewhere.
enum WindowNotice : uint32 {
    kFolderNamed = 512,           // string "text": the name of a new folder
    kFolderToGoTyped = 514,       // string "text"
    kColumnResized = 600,         // decimal strings "ColumnIndex" and "ColumnWidth"
    kQueryResults = 601,          // the first field of refs: the hits; string "QueryString"
    kSessionChosen = 602,         // string "session": the file of the connection to be made
    kRunAddOn = 613,              // pointer "source": the item of the menu
    kPreferencesSaved = 614,      // int32 "status" where nobody has told of it yet
    kTellMissingFolders = 'Miss', // to itself: folders could not be shown, say so
    kVolumeFound = 'VolF', // to itself: int32 "shown" is that of string "path", "device" is gone
    // string "name", int32 "status"; where no program is set: "refs", strings "type" and "kind",
    // and of each program strings "signature" and "program"
    kNotOpened = 'NoOp',
    kAddOnEnded = 'AddE',     // string "name", bool "unselected", string "reason" of a failure
    kAddOnsFound = 'AddF',    // strings "name"
    kFoldersMoved = 'FMov',   // folders went or were renamed: any pane may show one below them
    kTakeActivation = 'TakA', // an operation that had the activation gives it back
};

// What a pane and its list are told.
enum PaneNotice : uint32 {
    MSG_FTP_DISCONNECT = 208,
    MSG_PANE_INFO = 500,
    MSG_FTP_STATUS = 603, // string "status": a line for the log of the connection
    kNewNameTyped = 513,  // the main window: string "text"; a list: the open rename field's, "pos"
    kRenameCancelled = 605,
    MSG_PROGRESS_START = 607,
    MSG_PROGRESS_STOP = 608,
    MSG_PROGRESS_STEP = 609, // int32 "steps": how many it stands for, 1 when missing
    MSG_PROGRESS_MAX = 610,  // int32 "maxvalue"
    kSourceNews = 'SNew',    // there is news of what the place shown began
    kPasswordGiven = 'Pass', // string "text", unless the person gave none
    kListingNews = 'News',   // the rows of the place being opened, or some of them, are there
    kLinkAnswered = 'Link',  // what a link leads to: LinkAnswer reads it
    kIconFound = 'Icon',     // FoundIcon reads it
    kLookForFolder = 'Look', // to itself: the folder shown was removed, is it there again?
    kFolderIsBack = 'Back',  // it is: string "path"
    kLookAgain = 'Agai',     // to itself: nobody tells of changes, so look for them
    kFolderChecked = 'Chek', // where the folder shown is: string "path", empty: as before
    kSpaceFound = 'SpcF',    // int64 "device"; where it is known: "free", "size", "kind", "name"
    kAskForSpace = 'SpcA',   // to itself: it is time to look again how much room there is
    kTellOfMissingWatch = 'NoWa', // to itself: nobody tells of changes, say so
    kDragScroll = 'Drag',         // to itself: something is dragged near an edge
    kRowMenuChosen = 'RMnu',      // int32 "command": a RowCommand, int32 "menu": which menu's
    kEntriesToPaste = 'Past',     // what the clipboard holds: "refs" when that is entries
    kPatternTyped = 'Ptrn',       // string "text": of names; bool "marks", else it unmarks
    kFilterTyped = 'Filt',        // to itself: what a filter's field holds changed
    kFolderMade = 'Made',         // string "name", int32 "status"
    kEntryRenamed = 'Rena',       // int32 "status", string "row": its old name, "refs": its new one
    kFolderMeasured = 615,        // int64 "device", "node" and "bytes", string "name" of the row
};

// Entries that are carried from one place to another.
enum EntryMessage : uint32 {
    kLocalEntries = B_SIMPLE_DATA, // "refs", string "From"
    kRemoteEntries = 604,          // of a server
};

// What an operation is asked to do besides carrying entries, and what it tells.
enum OperationMessage : uint32 {
    kOperationDone = 511,   // pointer "WindowHandle", to compare only
    kDeleteRequest = 606,   // "refs"; bool kForGood, else for good when the path is a Trash
    kEmptyRequest = 'Empt', // all that lies in the operation's path, for good
    kStartLate = 'Late',    // to itself: no activation came
    kAskToStop = 'AskS',    // asks the person whether it is to stop
};

// Of a kDeleteRequest: what the person agreed to, for good or into the Trash.
inline constexpr char kForGood[] = "ForGood";

// Of a kLocalEntries, as the person chose; both missing: false. Plain copies keep times, modes and
// links; moves within a volume rename.
inline constexpr char kKeepsAll[] = "KeepsAll";
inline constexpr char kByRenaming[] = "ByRenaming";

// The answers to the overwrite question; also the codes of its buttons' messages.
enum OverwriteAnswer : uint32 {
    kAnswerNone = 0,
    kAnswerOverwrite = 1000,
    kAnswerOverwriteAll = 1001,
    kAnswerOverwriteOlder = 1002,
    kAnswerSkip = 1003,
    kAnswerSkipAll = 1004,
    kAnswerCancel = 1005,
};

// What the windows of saved connections are told, by their buttons and by what they had done.
enum SessionMessage : uint32 {
    kSessionAccepted = 203, // the list's "Connect", the editor's "OK"
    kSessionCancelled = 204,
    kSessionNew = 205,
    kSessionEdit = 206,
    kSessionDelete = 207,
    kSessionsListed = 'SesL',  // strings "name"; int32 "watch" and "status", of both
    kSessionsChanged = 'SesC', // to the list: look again
    kSessionRead = 'SesR',     // int32 "status", the session
    kSessionSaved = 'SesS',    // int32 "status"; bool "exists": nothing was done
    kSessionDeleted = 'SesD',  // string "name", int32 "status"
};

// What the application is told of add-ons that are at work when it is to quit.
enum ProgramMessage : uint32 {
    kAddOnsEnded = 'AddN',
    kQuitAnswered = 'QAns', // int32 "which": the button
    kAskAboutAddOns = 'QAsk',
};

// What the window is told that lists programs.
enum OpenWithMessage : uint32 {
    kProgramChosen = 'Prog',
};

// What the query window is told, besides its menus' choices.
enum QueryMessage : uint32 {
    kStartQuery = 2057,
    kQueryHelp = 2059,
    kDateChoice = 2095,    // pointer "source": the check box that changed, to compare only
    kVolumesChoice = 3000, // int32 "Volumes"
    kSearchEnded = 'SrcE', // int32 "search": which one
    kTellCounts = 'SrcC',  // to itself: how far is the search?
};

// What the preferences window is told, by its controls and by what it had done.
enum PreferencesMessage : uint32 {
    kPreferencesAccepted = 3500,
    kPreferencesHelp = 3501,
    kDateFormatChosen = 3502,  // string "Date Format"
    kPreferencesRead = 'PrfR', // the preferences; the main window gets it, too
};

// What a properties window is told, by its controls and by what it has done elsewhere.
enum PropertiesMessage : uint32 {
    kPropertiesNews = 'PrpN', // there is more to show
    kModeTouched = 'PrpM',    // a check box changed
    kPropertiesAccepted = 'PrpO',
    kPropertiesCancelled = 'PrpC', // or stopped, while it changes permissions
};

// What a viewer is told by its menus, what it has done elsewhere, and what it asks of the program.
enum ViewerMessage : uint32 {
    kOpenPanel = 'open',
    kStretchToFit = 'tfit',
    kScaleImage = 'scal', // float "scale", int32 "scale_mode"
    kWrapText = 'wrap',
    kWrapToEdge = 'edge',
    kZoomImage = 'zoom', // float "factor", point "where": of the view, stays where it is
    kAskToFind = 'find',
    kTextToFind = 'tfnd',   // string "text", bool "expression"
    kPatternFound = 'pfnd', // int32 "status", int64 "start" and "end", int32 "search"
    kStopFinding = 'stop',  // lets go of a search that goes on
    kFindNext = 'fnxt',
    kFindPrevious = 'fprv',
    kAskForLine = 'line',
    kLineToGoTo = 'tlin',     // string "text"
    kShowHex = 'hexa',        // shows the bytes, or again what was shown before
    kOffsetToGoTo = 'toff',   // string "text"
    kFilePartRead = 'Part',   // the bytes that were asked for are there
    kFollowFile = 'foll',     // or no longer
    kChooseEncoding = 'enco', // int32 "encoding"
    kFileNews = 'FNew',       // there is news of the file that is being loaded
    kOpenViewers = 'OpVw',    // to the application: strings "path", in their order
};

// What a question is told.
enum QuestionMessage : uint32 {
    kButtonPressed = 200,    // and the two codes behind it: a prompt's buttons
    kAnswerForQuit = 'AnsQ', // the program is about to quit: the answer is Cancel
};

} // namespace norvane
