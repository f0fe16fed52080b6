#pragma once
// The settings that the user changes in the options dialogue, page by page:
// which member of CVxOptions each field edits, of which kind, within which
// bounds, and under which text (table "OptionsDlg", English at hand). The
// dialogue builds its fields from this list; the rest of CVxOptions holds
// window states and bookkeeping that the program keeps by itself.

#include "CVxOptions.h"

#include <vector>

enum class EVxSettingKind
{
    Bool,
    Int,
    Double,
    // A length kept in centimetres, typed in any unit.
    LengthCm,
    // A unit's name in files ("cm", "ft", ...).
    Unit,
    // The same, or empty for the unit that belongs to the project's unit.
    UnitOrAuto,
    Color,
    // An int from a short list of values.
    Choice
};

struct SVxSettingChoice
{
    int value;
    int row;
    const wchar_t* english;
};

struct SVxSettingItem
{
    int page = 0;
    int row = 0;
    const wchar_t* english = L"";
    EVxSettingKind kind = EVxSettingKind::Bool;
    const char* key = "";
    bool CVxOptions::*boolValue = nullptr;
    int CVxOptions::*intValue = nullptr;
    double CVxOptions::*doubleValue = nullptr;
    CVxStringW CVxOptions::*textValue = nullptr;
    unsigned CVxOptions::*colorValue = nullptr;
    double minimum = 0;
    double maximum = 0;
    std::vector<SVxSettingChoice> choices;
};

struct SVxSettingPage
{
    int row;
    const wchar_t* english;
};

const std::vector<SVxSettingPage>& VX_GetSettingPages();
const std::vector<SVxSettingItem>& VX_GetSettingItems();
