// The command table. Codes 9 to 11, 56 to 58, 121 and 122 have no text of
// their own; 121 and 122 are no commands at all.

#include "VxCommandTable.h"

#include <array>

namespace {

// Indexed by the code; entry 0 is the separator of button lists.
const std::array<SVxCommandFacts, VX_TB_LAST + 1> s_commands = {{
    {nullptr, nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 0
    {L"Start New Project", "tbFileNew", 2, 'N', 2, 'N', 3, false, false, true},                      // 1
    {L"Open", "tbFileOpen", 2, 'O', 2, 'O', 3, false, true, true},                                   // 2
    {L"Start New Project", "tbFileOpen", 0, 0, 0, 0, 12, false, true, true},                         // 3
    {L"Revert to Saved", nullptr, 0, 0, 0, 0, 255, false, false, false},                             // 4
    {L"Save", "tbFileSave", 2, 'S', 2, 'S', 255, false, false, true},                                // 5
    {L"Save As...", nullptr, 0, 4121, 3, 'S', 255, false, false, false},                             // 6
    {L"Print", "tbPrint", 2, 'P', 2, 'P', 3, false, false, true},                                    // 7
    {L"Recent File", nullptr, 0, 0, 0, 0, 255, false, false, false},                                 // 8
    {nullptr, nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 9
    {nullptr, nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 10
    {nullptr, nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 11
    {L"Comments", nullptr, 0, 0, 0, 0, 255, false, false, false},                                    // 12
    {L"Attachments", nullptr, 0, 0, 0, 0, 255, false, false, false},                                 // 13
    {L"Annotations", "tbAnnotations", 0, 0, 0, 0, 255, false, false, true},                          // 14
    {L"Accept Changes and Close", "tbOk", 2, 4101, 2, 4101, 255, false, false, false},               // 15
    {L"Discard Changes and Close", "tbCancel", 0, 4100, 0, 4100, 255, false, false, false},          // 16
    {L"Select the side", "tbSideview", 0, 0, 0, 0, 255, false, false, true},                         // 17
    {L"Undo", "tbUndo", 2, 'Z', 2, 'Z', 255, false, true, true},                                     // 18
    {L"Redo", "tbRedo", 2, 'Y', 2, 'Y', 255, false, true, true},                                     // 19
    {L"Copy Properties", "tbPaintFormat", 0, 0, 0, 0, 3, true, false, true},                         // 20
    {L"Project Properties", "tbProjProperties", 2, 'T', 2, 'T', 255, false, true, true},             // 21
    {L"Edit Walls", "tbWallEdit", 0, 4117, 2, '2', 255, false, false, true},                         // 22
    {L"Rooms in the Project", "tbRooms", 0, 4116, 2, '3', 12, false, false, true},                   // 23
    {L"Terrain Editor", nullptr, 0, 0, 0, 0, 255, false, false, false},                              // 24
    {L"Add Object", "tbAddObject", 0, 0, 0, 0, 12, false, false, true},                              // 25
    {L"Group / Create Complex Object", "tbGroup", 2, 'G', 2, 'G', 3, false, false, true},            // 26
    {L"Edit from Side", "tbSideview", 2, 'K', 2, 'K', 3, false, false, true},                        // 27
    {L"New Measurement", "tbMeasure", 0, 'M', 0, 'M', 3, false, false, true},                        // 28
    {L"Select More Objects", "tbMultiSelect", 0, 0, 0, 0, 12, false, false, true},                   // 29
    {L"Best Fit", "tbZoomFit", 0, '*', 0, '*', 3, false, false, true},                               // 30
    {L"Zoom 100%", nullptr, 0, '/', 0, '/', 255, false, false, false},                               // 31
    {L"Zoom In", "tbZoomIn", 0, '+', 0, '+', 3, false, false, true},                                 // 32
    {L"Zoom Out", "tbZoomOut", 0, '-', 0, '-', 3, false, false, true},                               // 33
    {L"Zoom to Selected Objects", nullptr, 2, '+', 2, '+', 255, false, false, false},                // 34
    {L"Layers", "tbLayers", 0, 0, 0, 0, 12, false, false, true},                                     // 35
    {L"Export", "tbExport", 0, 0, 0, 0, 12, false, true, true},                                      // 36
    {L"More Functions", "tbOtherFn", 0, 0, 0, 0, 12, false, false, true},                            // 37
    {L"Touch Mode", "tbTouchMode", 0, 0, 0, 0, 6, true, false, true},                                // 38
    {L"Selection Tool", "tbPointer", 0, 'A', 0, 'A', 255, true, false, true},                        // 39
    {L"New Wall", "tbWall", 0, 'W', 0, 'W', 255, true, false, true},                                 // 40
    {L"New Wall Polygon", "tbWalls", 0, 'E', 0, 'E', 255, true, false, true},                        // 41
    {L"New Floor Opening", "tbStairsRect", 0, 0, 0, 0, 255, true, false, true},                      // 42
    {L"New Elliptical Floor Opening", "tbStairsCirc", 0, 0, 0, 0, 255, true, false, true},           // 43
    {L"New Polygonal Floor Opening", "tbStairsPoly", 0, 0, 0, 0, 255, true, false, true},            // 44
    {L"Transformations", "tbTransform", 0, 0, 0, 0, 3, false, false, true},                          // 45
    {L"Numerical Editor", nullptr, 0, 0, 0, 0, 255, false, false, false},                            // 46
    {L"Horizontally", "tbFlipV", 0, 0, 0, 0, 255, false, false, true},                               // 47
    {L"Vertically", "tbFlipH", 0, 0, 0, 0, 255, false, false, true},                                 // 48
    {L"Rotate 90 Degrees Left", "arrowOrangeRotL", 0, 0, 0, 0, 255, false, false, false},            // 49
    {L"Rotate 90 Degrees Right", "arrowOrangeRotR", 0, 0, 0, 0, 255, false, false, false},           // 50
    {L"Add Attachment", "tbPlus", 0, 'T', 0, 'T', 255, true, false, true},                           // 51
    {L"Remove", "tbMinus", 0, 0, 0, 0, 255, false, false, true},                                     // 52
    {L"Build on Image with Floor Plan", "tbWallsDraw", 0, 0, 0, 0, 255, true, false, true},          // 53
    {L"Build on Image with Floor Plan", "tbWallsDraw", 0, 0, 0, 0, 255, false, false, true},         // 54
    {L"Show Objects", "tbViewObjects", 0, 0, 0, 0, 255, true, false, true},                          // 55
    {nullptr, "tbAnnotPenRed", 0, 0, 0, 0, 255, true, false, false},                                 // 56
    {nullptr, "tbAnnotPenBlue", 0, 0, 0, 0, 255, true, false, false},                                // 57
    {nullptr, "tbAnnotPenBlack", 0, 0, 0, 0, 255, true, false, true},                                // 58
    {L"Highlighter", "tbAnnotHltr", 0, 0, 0, 0, 255, true, false, false},                            // 59
    {L"Eraser", "tbAnnotEraser", 0, 0, 0, 0, 255, true, false, true},                                // 60
    {L"Clear", "tbClear", 0, 0, 0, 0, 255, false, false, true},                                      // 61
    {L"Show Library Window", "tbLibraryWnd", 2, 'B', 2, 'B', 3, true, false, true},                  // 62
    {L"Show Object Listing", "tbObjectListing", 0, 4118, 3, 'L', 3, true, false, true},              // 63
    {L"Local Coordinates", nullptr, 0, 'L', 0, 'L', 255, false, false, false},                       // 64
    {L"Show Layers Window", nullptr, 2, 'I', 2, 'I', 255, true, false, false},                       // 65
    {L"Show Alignment Palette", nullptr, 0, 4120, 3, 'A', 255, true, false, false},                  // 66
    {L"Shopping Cart", "tbCart", 0, 0, 0, 0, 255, false, false, true},                               // 67
    {L"Explore in 3D", "tbView3D", 0, 4114, 0, 4114, 255, false, false, true},                       // 68
    {L"Explore in 3D - Setup", "tbView3DGear", 3, 'W', 3, 'W', 3, false, false, true},               // 69
    {L"Options", "tbSettings2", 0, 0, 0, 0, 12, false, false, true},                                 // 70
    {L"Help", "tbInfo", 0, 0, 0, 0, 255, false, false, true},                                        // 71
    {L"Floor", nullptr, 0, 0, 0, 0, 255, false, false, false},                                       // 72
    {L"Add New Floor", nullptr, 0, 0, 0, 0, 255, false, false, false},                               // 73
    {L"Remove Floor...", nullptr, 0, 0, 0, 0, 255, false, false, false},                             // 74
    {L"Swap with Higher Floor", nullptr, 0, 0, 0, 0, 255, false, false, false},                      // 75
    {L"Swap with Lower Floor", nullptr, 0, 0, 0, 0, 255, false, false, false},                       // 76
    {L"Go Up One Floor", nullptr, 0, 4106, 0, 4106, 255, false, false, false},                       // 77
    {L"Go Down One Floor", nullptr, 0, 4107, 0, 4107, 255, false, false, false},                     // 78
    {L"Transformations", nullptr, 0, 0, 0, 0, 255, false, false, false},                             // 79
    {L"Browse...", nullptr, 2, 'J', 2, 'J', 255, false, false, false},                               // 80
    {L"New Window", nullptr, 0, 0, 0, 0, 255, false, false, false},                                  // 81
    {L"Object Listing", nullptr, 0, 0, 0, 0, 255, false, false, false},                              // 82
    {L"Save as Image...", nullptr, 0, 0, 0, 0, 255, false, false, false},                            // 83
    {L"Copy to Clipboard", nullptr, 0, 0, 0, 0, 255, false, false, false},                           // 84
    {L"Copy Object Listing to Clipboard...", nullptr, 0, 0, 0, 0, 255, false, false, false},         // 85
    {L"Export more statistics to clipboard", nullptr, 0, 0, 0, 0, 255, false, false, false},         // 86
    {L"Web Page with 3D...", nullptr, 0, 0, 0, 0, 255, false, false, false},                         // 87
    {L"Send as E-mail...", nullptr, 0, 0, 0, 0, 255, false, false, false},                           // 88
    {L"Merge Projects...", nullptr, 0, 0, 0, 0, 255, false, false, false},                           // 89
    {L"Samples1", nullptr, 0, 0, 0, 0, 255, false, false, false},                                    // 90
    {L"Samples2", nullptr, 0, 0, 0, 0, 255, false, false, false},                                    // 91
    {L"Samples3", nullptr, 0, 0, 0, 0, 255, false, false, false},                                    // 92
    {L"Cut", nullptr, 2, 'X', 2, 'X', 255, false, false, false},                                     // 93
    {L"Copy", nullptr, 2, 'C', 2, 'C', 255, false, false, false},                                    // 94
    {L"Paste", nullptr, 2, 'V', 2, 'V', 255, false, false, false},                                   // 95
    {L"Select All", nullptr, 2, 'A', 2, 'A', 255, false, false, false},                              // 96
    {L"Deselect", nullptr, 2, 'D', 2, 'D', 255, false, false, false},                                // 97
    {L"Add Label...", nullptr, 2, 'E', 2, 'E', 255, false, false, false},                            // 98
    {L"Add Line", nullptr, 2, 'H', 2, 'H', 255, false, false, false},                                // 99
    {L"Add Dimension Line", nullptr, 2, 'M', 2, 'M', 255, false, false, false},                      // 100
    {L"Insert Areas to Project", nullptr, 0, 0, 0, 0, 255, false, false, false},                     // 101
    {L"Dimension All Walls", nullptr, 0, 0, 0, 0, 255, false, false, false},                         // 102
    {L"Move Labels to New Layer", nullptr, 0, 0, 0, 0, 255, false, false, false},                    // 103
    {L"Remove All Objects", nullptr, 0, 0, 0, 0, 255, false, false, false},                          // 104
    {L"Remove All Labels", nullptr, 0, 0, 0, 0, 255, false, false, false},                           // 105
    {L"Remove All Dimension Lines", nullptr, 0, 0, 0, 0, 255, false, false, false},                  // 106
    {L"Browse User Library...", nullptr, 0, 0, 0, 0, 255, false, false, false},                      // 107
    {L"Draw in Black & White", nullptr, 0, 0, 0, 0, 255, true, false, false},                        // 108
    {L"Show Annotations", nullptr, 0, 0, 0, 0, 255, true, false, false},                             // 109
    {L"Draw Floor Textures", nullptr, 0, 0, 0, 0, 255, true, false, false},                          // 110
    {L"Show Grid", nullptr, 0, 0, 0, 0, 255, true, false, false},                                    // 111
    {L"Show Grid Labels", nullptr, 0, 0, 0, 0, 255, true, false, false},                             // 112
    {L"Show Captions", nullptr, 0, 0, 0, 0, 255, true, false, false},                                // 113
    {L"Language...", nullptr, 0, 0, 0, 0, 255, false, false, false},                                 // 114
    {L"Additional Libraries...", nullptr, 0, 0, 0, 0, 255, false, false, false},                     // 115
    {L"View Help File...", nullptr, 0, 4110, 2, '?', 255, false, false, false},                      // 116
    {L"What's New", nullptr, 0, 0, 0, 0, 255, false, false, false},                                  // 117
    {L"Visit Web Site", nullptr, 0, 0, 0, 0, 255, false, false, false},                              // 118
    {L"Wiki", nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 119
    {L"Check for New Version", nullptr, 0, 0, 0, 0, 255, false, false, false},                       // 120
    {nullptr, nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 121
    {nullptr, nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 122
    {L"Report App Crash", nullptr, 0, 0, 0, 0, 255, false, false, false},                            // 123
    {L"About...", nullptr, 0, 0, 0, 0, 255, false, false, false},                                    // 124
    {L"Exit", nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 125
    {L"Show", nullptr, 0, 0, 0, 0, 255, false, false, false},                                        // 126
    {L"Select Image", nullptr, 0, 0, 0, 0, 255, false, false, false},                                // 127
    {L"Set Image Size and Position", nullptr, 0, 0, 0, 0, 255, false, false, false},                 // 128
    {L"Remove", nullptr, 0, 0, 0, 0, 255, false, false, false},                                      // 129
    {L"Remove", "ctxDelete", 0, 4102, 0, 4102, 255, false, false, true},                             // 130
    {L"Group / Create Complex Object", "tbGroup", 2, 'G', 2, 'G', 255, false, false, true},          // 131
    {L"Ungroup", "tbUngroup", 2, 'U', 2, 'U', 3, false, false, true},                                // 132
    {L"Edit from Side", "tbSideview", 2, 'K', 2, 'K', 255, false, false, true},                      // 133
    {L"Relocate", "ctxMover", 0, 0, 0, 0, 255, false, false, true},                                  // 134
    {L"Copy Properties", "tbPaintFormat", 0, 0, 0, 0, 255, true, false, true},                       // 135
    {L"Properties...         DblClick", "ctxProperties", 4, 4101, 4, 4101, 255, false, false, true}, // 136
    {L"Lock", "ctxLock", 0, 0, 0, 0, 255, true, false, true},                                        // 137
    {L"Lock Size", "ctxLockSize", 0, 0, 0, 0, 255, true, false, true},                               // 138
    {L"Unlock", nullptr, 0, 0, 0, 0, 255, false, false, false},                                      // 139
    {L"Copy", "ctxCopy", 0, 0, 0, 0, 255, false, false, true},                                       // 140
    {L"Duplicate Object", "ctxDuplicate", 1, 'D', 1, 'D', 255, false, false, true},                  // 141
    {L"Align or Distribute", "ctxAlignHCenter", 0, 0, 0, 0, 255, false, false, true},                // 142
    {L"Place to Layer", "ctxPlaceToLayer", 0, 0, 0, 0, 255, false, false, true},                     // 143
    {L"Edit Polygon Points", "ctxEditPoints", 0, 0, 0, 0, 255, false, false, true},                  // 144
    {L"Straight Segment", "ctxSegmentStr", 0, 0, 0, 0, 255, false, false, true},                     // 145
    {L"Curved Segment", "ctxSegmentCur", 0, 0, 0, 0, 255, false, false, true},                       // 146
    {L"Add Control Point", "ctxAddPoint", 0, 0, 0, 0, 255, false, false, true},                      // 147
    {L"Dimension This Wall", "tbMeasure", 0, 0, 0, 0, 255, false, false, true},                      // 148
    {L"Dimension Object", "tbMeasure", 0, 0, 0, 0, 255, false, false, true},                         // 149
    {L"Select Image", "ctxSelectImage", 0, 0, 0, 0, 255, false, false, true},                        // 150
    {L"Follow the Link", nullptr, 0, 0, 0, 0, 255, false, false, false},                             // 151
    {L"Rotate 90 Degrees Left", nullptr, 2, 'L', 2, 'L', 255, false, false, false},                  // 152
    {L"Rotate 90 Degrees Right", nullptr, 2, 'R', 2, 'R', 255, false, false, false},                 // 153
    {L"Rotate 180 Degrees", nullptr, 0, 0, 0, 0, 255, false, false, false},                          // 154
    {L"Horizontally", "tbFlipV", 0, 0, 0, 0, 255, false, false, true},                               // 155
    {L"Vertically", "tbFlipH", 0, 0, 0, 0, 255, false, false, true},                                 // 156
    {L"Objects with Same Color", nullptr, 0, 0, 0, 0, 255, false, false, false},                     // 157
    {L"Objects with Same Type", nullptr, 0, 0, 0, 0, 255, false, false, false},                      // 158
    {L"Add Label Here...", nullptr, 0, 0, 0, 0, 255, false, false, false},                           // 159
    {L"Rooms in the Project", "tbRooms", 0, 0, 0, 0, 255, false, false, true},                       // 160
    {L"Floor color:", nullptr, 0, 0, 0, 0, 255, false, false, false},                                // 161
    {L"Bring Forward", nullptr, 0, 0, 0, 0, 255, false, false, false},                               // 162
    {L"Send Backward", nullptr, 0, 0, 0, 0, 255, false, false, false},                               // 163
    {L"Set Z to Terrain Level", nullptr, 0, 0, 0, 0, 255, false, false, false},                      // 164
    {L"Close", "tbCancel", 0, 0, 0, 0, 255, false, false, false},                                    // 165
    {L"Relative to Project", "ctxAlignRespect", 0, 0, 0, 0, 255, true, false, true},                 // 166
    {L"Relative to Entire Drawing", "ctxAlignRespDrawing", 0, 0, 0, 0, 255, true, false, true},      // 167
    {L"Align Left", "ctxAlignLeft", 4, 4096, 4, 4096, 255, false, false, true},                      // 168
    {L"Align Horizontal Center", "ctxAlignHCenter", 0, 0, 0, 0, 255, false, false, true},            // 169
    {L"Align Right", "ctxAlignRight", 4, 4097, 4, 4097, 255, false, false, true},                    // 170
    {L"Align Top", "ctxAlignTop", 4, 4098, 4, 4098, 255, false, false, true},                        // 171
    {L"Align Vertical Center", "ctxAlignVCenter", 0, 0, 0, 0, 255, false, false, true},              // 172
    {L"Align Bottom", "ctxAlignBottom", 4, 4099, 4, 4099, 255, false, false, true},                  // 173
    {L"Distribute Horizontally", "ctxDistrHorz", 0, 0, 0, 0, 255, false, false, true},               // 174
    {L"Distribute Vertically", "ctxDistrVert", 0, 0, 0, 0, 255, false, false, true},                 // 175
    {L"Snap Horizontally", "ctxDistrSnapHorz", 0, 0, 0, 0, 255, false, false, true},                 // 176
    {L"Snap Vertically", "ctxDistrSnapVert", 0, 0, 0, 0, 255, false, false, true},                   // 177
    {L"Bring to Front", "ctxZOrderFront", 0, 0, 0, 0, 255, false, false, true},                      // 178
    {L"Bring Forward", "ctxZOrderUp", 0, 0, 0, 0, 255, false, false, true},                          // 179
    {L"Send Backward", "ctxZOrderBack", 0, 0, 0, 0, 255, false, false, true},                        // 180
    {L"Send to Back", "ctxZOrderBottom", 0, 0, 0, 0, 255, false, false, true},                       // 181
    {L"Order by Z-position", "ctxZOrderZPos", 0, 0, 0, 0, 255, false, false, true},                  // 182
}};

} // namespace

const SVxCommandFacts* VX_GetCommandFacts(int code)
{
    if (code <= 0 || code > VX_TB_LAST)
        return nullptr;
    return &s_commands[static_cast<size_t>(code)];
}
