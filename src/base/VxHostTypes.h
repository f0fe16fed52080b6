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

// The move that an arrow key asks for, `step` long; false for other keys.
inline bool VX_ArrowKeyOffset(unsigned key, double step, double& dx, double& dy)
{
    dx = key == VX_KEY_LEFT ? -step : key == VX_KEY_RIGHT ? step : 0.0;
    dy = key == VX_KEY_UP ? -step : key == VX_KEY_DOWN ? step : 0.0;
    return key >= VX_KEY_LEFT && key <= VX_KEY_DOWN;
}

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

// The number of every user command; the numbers are stable and stored
// nowhere but in the program. 9 to 11, 121 and 122 have no command of their
// own.
enum EVxMainToolbarButtonCode : int
{
    VX_TB_SEPARATOR = 0,
    VX_TB_NEW_PROJECT = 1,
    VX_TB_OPEN = 2,
    VX_TB_NEW_PROJECT_TOUCH = 3,
    VX_TB_REVERT = 4,
    VX_TB_SAVE = 5,
    VX_TB_SAVE_AS = 6,
    VX_TB_PRINT = 7,
    VX_TB_RECENT_FILE = 8,
    VX_TB_RESERVED_9 = 9,
    VX_TB_RESERVED_10 = 10,
    VX_TB_RESERVED_11 = 11,
    VX_TB_COMMENTS = 12,
    VX_TB_ATTACHMENTS = 13,
    VX_TB_ANNOTATIONS = 14,
    VX_TB_ACCEPT_CLOSE = 15,
    VX_TB_DISCARD_CLOSE = 16,
    VX_TB_SELECT_SIDE = 17,
    VX_TB_UNDO = 18,
    VX_TB_REDO = 19,
    VX_TB_FORMAT_PAINTER = 20,
    VX_TB_PROJECT_PROPERTIES = 21,
    VX_TB_EDIT_WALLS = 22,
    VX_TB_ROOMS = 23,
    VX_TB_TERRAIN_EDITOR = 24,
    VX_TB_ADD_OBJECT = 25,
    VX_TB_GROUP = 26,
    VX_TB_EDIT_FROM_SIDE = 27,
    VX_TB_NEW_MEASUREMENT = 28,
    VX_TB_MULTI_SELECT = 29,
    VX_TB_ZOOM_BEST_FIT = 30,
    VX_TB_ZOOM_100 = 31,
    VX_TB_ZOOM_IN = 32,
    VX_TB_ZOOM_OUT = 33,
    VX_TB_ZOOM_SELECTED = 34,
    VX_TB_LAYERS = 35,
    VX_TB_EXPORT = 36,
    VX_TB_MORE_FUNCTIONS = 37,
    VX_TB_TOUCH_MODE = 38,
    VX_TB_SELECTION_TOOL = 39,
    VX_TB_NEW_WALL = 40,
    VX_TB_NEW_WALL_POLYGON = 41,
    VX_TB_NEW_FLOOR_OPENING = 42,
    VX_TB_NEW_ELLIPTIC_OPENING = 43,
    VX_TB_NEW_POLYGON_OPENING = 44,
    VX_TB_TRANSFORMATIONS = 45,
    VX_TB_NUMERICAL_EDITOR = 46,
    VX_TB_FLIP_HORIZONTALLY = 47,
    VX_TB_FLIP_VERTICALLY = 48,
    VX_TB_ROTATE_LEFT = 49,
    VX_TB_ROTATE_RIGHT = 50,
    VX_TB_ADD_ATTACHMENT = 51,
    VX_TB_REMOVE_ITEM = 52,
    VX_TB_BUILD_ON_IMAGE = 53,
    VX_TB_BUILD_ON_IMAGE_TOUCH = 54,
    VX_TB_SHOW_OBJECTS = 55,
    VX_TB_PEN_RED = 56,
    VX_TB_PEN_BLUE = 57,
    VX_TB_PEN_BLACK = 58,
    VX_TB_HIGHLIGHTER = 59,
    VX_TB_ERASER = 60,
    VX_TB_CLEAR_ANNOTATIONS = 61,
    VX_TB_SHOW_LIBRARY = 62,
    VX_TB_SHOW_LISTING = 63,
    VX_TB_LOCAL_COORDINATES = 64,
    VX_TB_SHOW_LAYERS = 65,
    VX_TB_SHOW_ALIGN_PALETTE = 66,
    VX_TB_SHOPPING_CART = 67,
    VX_TB_EXPLORE_3D = 68,
    VX_TB_EXPLORE_3D_SETUP = 69,
    VX_TB_OPTIONS = 70,
    VX_TB_HELP = 71,
    VX_TB_FLOOR = 72,
    VX_TB_ADD_FLOOR = 73,
    VX_TB_REMOVE_FLOOR = 74,
    VX_TB_SWAP_HIGHER_FLOOR = 75,
    VX_TB_SWAP_LOWER_FLOOR = 76,
    VX_TB_FLOOR_UP = 77,
    VX_TB_FLOOR_DOWN = 78,
    VX_TB_TRANSFORM_PROJECT = 79,
    VX_TB_BROWSE = 80,
    VX_TB_NEW_WINDOW = 81,
    VX_TB_OBJECT_LISTING = 82,
    VX_TB_SAVE_AS_IMAGE = 83,
    VX_TB_COPY_IMAGE = 84,
    VX_TB_COPY_LISTING = 85,
    VX_TB_EXPORT_STATISTICS = 86,
    VX_TB_WEB_PAGE_3D = 87,
    VX_TB_SEND_EMAIL = 88,
    VX_TB_MERGE_PROJECTS = 89,
    VX_TB_SAMPLES1 = 90,
    VX_TB_SAMPLES2 = 91,
    VX_TB_SAMPLES3 = 92,
    VX_TB_CUT = 93,
    VX_TB_COPY = 94,
    VX_TB_PASTE = 95,
    VX_TB_SELECT_ALL = 96,
    VX_TB_DESELECT = 97,
    VX_TB_ADD_LABEL = 98,
    VX_TB_ADD_LINE = 99,
    VX_TB_ADD_DIMENSION_LINE = 100,
    VX_TB_INSERT_AREAS = 101,
    VX_TB_DIMENSION_ALL_WALLS = 102,
    VX_TB_LABELS_TO_NEW_LAYER = 103,
    VX_TB_REMOVE_ALL_OBJECTS = 104,
    VX_TB_REMOVE_ALL_LABELS = 105,
    VX_TB_REMOVE_ALL_DIMENSIONS = 106,
    VX_TB_BROWSE_USER_LIBRARY = 107,
    VX_TB_BLACK_WHITE = 108,
    VX_TB_SHOW_ANNOTATIONS = 109,
    VX_TB_FLOOR_TEXTURES = 110,
    VX_TB_SHOW_GRID = 111,
    VX_TB_SHOW_GRID_LABELS = 112,
    VX_TB_SHOW_CAPTIONS = 113,
    VX_TB_LANGUAGE = 114,
    VX_TB_ADDITIONAL_LIBRARIES = 115,
    VX_TB_HELP_FILE = 116,
    VX_TB_WHATS_NEW = 117,
    VX_TB_WEB_SITE = 118,
    VX_TB_WIKI = 119,
    VX_TB_CHECK_VERSION = 120,
    VX_TB_REPORT_CRASH = 123,
    VX_TB_ABOUT = 124,
    VX_TB_EXIT = 125,
    VX_TB_SCAN_SHOW = 126,
    VX_TB_SCAN_SELECT_IMAGE = 127,
    VX_TB_SCAN_SIZE_POSITION = 128,
    VX_TB_SCAN_REMOVE = 129,
    VX_TB_CTX_REMOVE = 130,
    VX_TB_CTX_GROUP = 131,
    VX_TB_CTX_UNGROUP = 132,
    VX_TB_CTX_EDIT_FROM_SIDE = 133,
    VX_TB_CTX_RELOCATE = 134,
    VX_TB_CTX_FORMAT_PAINTER = 135,
    VX_TB_CTX_PROPERTIES = 136,
    VX_TB_CTX_LOCK = 137,
    VX_TB_CTX_LOCK_SIZE = 138,
    VX_TB_CTX_UNLOCK = 139,
    VX_TB_CTX_COPY = 140,
    VX_TB_CTX_DUPLICATE = 141,
    VX_TB_CTX_ALIGN = 142,
    VX_TB_CTX_PLACE_TO_LAYER = 143,
    VX_TB_CTX_EDIT_POINTS = 144,
    VX_TB_CTX_SEGMENT_STRAIGHT = 145,
    VX_TB_CTX_SEGMENT_CURVED = 146,
    VX_TB_CTX_ADD_POINT = 147,
    VX_TB_CTX_DIMENSION_WALL = 148,
    VX_TB_CTX_DIMENSION_OBJECT = 149,
    VX_TB_CTX_SELECT_IMAGE = 150,
    VX_TB_CTX_FOLLOW_LINK = 151,
    VX_TB_CTX_ROTATE_LEFT = 152,
    VX_TB_CTX_ROTATE_RIGHT = 153,
    VX_TB_CTX_ROTATE_180 = 154,
    VX_TB_CTX_FLIP_HORIZONTALLY = 155,
    VX_TB_CTX_FLIP_VERTICALLY = 156,
    VX_TB_SELECT_SAME_COLOR = 157,
    VX_TB_SELECT_SAME_TYPE = 158,
    VX_TB_ADD_LABEL_HERE = 159,
    VX_TB_CTX_ROOMS = 160,
    VX_TB_FLOOR_COLOR = 161,
    VX_TB_BRING_FORWARD = 162,
    VX_TB_SEND_BACKWARD = 163,
    VX_TB_Z_TO_TERRAIN = 164,
    VX_TB_ALIGN_CLOSE = 165,
    VX_TB_ALIGN_TO_PROJECT = 166,
    VX_TB_ALIGN_TO_DRAWING = 167,
    VX_TB_ALIGN_LEFT = 168,
    VX_TB_ALIGN_HCENTER = 169,
    VX_TB_ALIGN_RIGHT = 170,
    VX_TB_ALIGN_TOP = 171,
    VX_TB_ALIGN_VCENTER = 172,
    VX_TB_ALIGN_BOTTOM = 173,
    VX_TB_DISTRIBUTE_HORIZONTALLY = 174,
    VX_TB_DISTRIBUTE_VERTICALLY = 175,
    VX_TB_SNAP_HORIZONTALLY = 176,
    VX_TB_SNAP_VERTICALLY = 177,
    VX_TB_ZORDER_FRONT = 178,
    VX_TB_ZORDER_FORWARD = 179,
    VX_TB_ZORDER_BACKWARD = 180,
    VX_TB_ZORDER_BACK = 181,
    VX_TB_ZORDER_BY_Z = 182,
    VX_TB_LAST = 182
};

// The interfaces a command is shown in, as bits of its presence mask.
enum EVxInterface : unsigned
{
    VX_IF_DESKTOP = 1,
    VX_IF_DESKTOP_WITH_TOUCH = 2,
    VX_IF_TOUCH = 4,
    VX_IF_TOUCH_ONLY = 8
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
