#pragma once
// Small types that travel between the core and its host.

#include "CVxStringW.h"

#include <cstdint>

// Buttons of a message box, as in the flag word of MsgBox.
enum EVxMsgButton : unsigned
{
    VX_MB_NONE = 0,
    VX_MB_YES = 256,
    VX_MB_NO = 512,
    VX_MB_OK = 1024,
    VX_MB_CANCEL = 2048,
    VX_MB_SAVE = 4096
};

// Icons in the low nibble of the MsgBox flags; the highest bit wins.
enum EVxMsgIcon : unsigned
{
    VX_MB_ICON_INFORMATION = 1,
    VX_MB_ICON_QUESTION = 2,
    VX_MB_ICON_WARNING = 4,
    VX_MB_ICON_CRITICAL = 8
};

// What MsgBox returns.
enum EVxMsgResult : int
{
    VX_MBR_OTHER = 0,
    VX_MBR_CANCEL = 1,
    VX_MBR_YES = 2, // also Save
    VX_MBR_NO = 3
};

enum EVxOpenFileMode
{
    VX_OPEN_READ = 0,
    VX_OPEN_WRITE = 1
};

// Keys by character code, and these for the rest.
enum EVxKey : unsigned
{
    VX_KEY_LEFT = 4096,
    VX_KEY_RIGHT = 4097,
    VX_KEY_UP = 4098,
    VX_KEY_DOWN = 4099,
    VX_KEY_ESC = 4100,
    VX_KEY_ENTER = 4101,
    VX_KEY_DELETE = 4102,
    VX_KEY_SHIFT = 4103,
    VX_KEY_CTRL = 4104,
    VX_KEY_PGUP = 4106,
    VX_KEY_PGDN = 4107,
    VX_KEY_LBUTTON = 4108,
    VX_KEY_MBUTTONS = 4109,
    VX_KEY_F1 = 4110,
    VX_KEY_F8 = 4117,
    VX_KEY_F12 = 4121
};

enum EVxMouseCursor : int
{
    VX_CURSOR_ARROW = 0,
    VX_CURSOR_CROSS,
    VX_CURSOR_HAND,
    VX_CURSOR_SIZE_ALL,
    VX_CURSOR_SIZE_HOR,
    VX_CURSOR_SIZE_VER,
    VX_CURSOR_SIZE_FDIAG,
    VX_CURSOR_SIZE_BDIAG,
    VX_CURSOR_ROTATE,
    VX_CURSOR_WAIT,
    VX_CURSOR_FORBIDDEN,
    // Ctrl held: a press adds to the selection.
    VX_CURSOR_ADD,
    VX_CURSOR_PAINTER
};

enum EVxEditorCode : int
{
    VX_EDITOR_NONE = 0,
    VX_EDITOR_SIDE = 1,
    VX_EDITOR_WALL = 2,
    VX_EDITOR_POLYGON = 3,
    VX_EDITOR_PAGE_LAYOUT = 4,
    VX_EDITOR_ATTACHMENT = 5,
    VX_EDITOR_ANNOTATIONS = 6,
    VX_EDITOR_VIEWPOINTS = 7,
    VX_EDITOR_TERRAIN = 8
};

// The number of every user command; the numbers are stable and listed with
// the command table.
enum EVxMainToolbarButtonCode : int
{
    VX_TB_SEPARATOR = 0,
    VX_TB_NEW_PROJECT = 1,
    VX_TB_OPEN = 2,
    VX_TB_REVERT = 4,
    VX_TB_SAVE = 5,
    VX_TB_SAVE_AS = 6,
    VX_TB_ACCEPT_CLOSE = 15,
    VX_TB_DISCARD_CLOSE = 16,
    VX_TB_UNDO = 18,
    VX_TB_REDO = 19,
    VX_TB_FORMAT_PAINTER = 20,
    VX_TB_TOUCH_MODE = 38,
    VX_TB_NEW_WALL = 40,
    VX_TB_BLACK_WHITE = 108,
    VX_TB_SHOW_ANNOTATIONS = 109,
    VX_TB_ABOUT = 124,
    VX_TB_EXIT = 125
};

// One entry of a directory listing.
struct SVxSearchRec
{
    CVxStringW name;     // file or folder name, without the folder
    CVxStringW fullPath; // folder of the search plus the name
    bool isFolder = false;
    int64_t size = 0;
    int64_t modified = 0;   // seconds since the epoch
    void* handle = nullptr; // host's listing state, freed by FileFindClose
};
