#include "CVxLibraryPage.h"

#include "CVxLocalize.h"
#include "IVxAppHelperCallback.h"

#include <QUuid>

#include <iterator>

namespace {

struct SVxStandardPage
{
    const wchar_t* fileName;
    const wchar_t* displayName;
};

const SVxStandardPage s_pages[CVxLibraryPage::standardPageCount] = {
    {L"UserDef", L"User Library"},
    {L"Basic", L"Basic Objects"},
    {L"Doors", L"Doors and Windows"},
    {L"Cabinets", L"Cabinets"},
    {L"Chairs", L"Chairs"},
    {L"Tables", L"Tables"},
    {L"Bathroom", L"Bathroom"},
    {L"Bedroom", L"Bedroom"},
    {L"Kitchen", L"Kitchen"},
    {L"Accessories", L"Accessories"},
    {L"Stairs", L"Stairs"},
    {L"Garden", L"Garden"},
    {L"Other", L"Other"},
    {L"Shapes3D", L"Additional 3D Shapes"},
    {L"Symbols", L"Symbols"},
};

// Page names are translated in a table of their own, row id + 1, so that
// they never collide with the object numbers of the "Library" table.
const char* const s_pageTable = "LibraryPages";

int SafeId(int id)
{
    return id >= 0 && id < CVxLibraryPage::standardPageCount ? id : 0;
}

} // namespace

CVxStringW CVxLibraryPage::GenerateUniqueName()
{
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        const CVxStringW uuid = host->GenerateUuid();
        if (!uuid.IsEmpty())
            return uuid;
    }
    return CVxStringW(QUuid::createUuid().toString(QUuid::WithoutBraces));
}

CVxStringW CVxLibraryPage::LibNameFromID(int id)
{
    return s_pages[SafeId(id)].fileName;
}

int CVxLibraryPage::LibIDFromName(const CVxStringW& name)
{
    for (int id = 0; id < standardPageCount; ++id)
        if (name == s_pages[id].fileName)
            return id;
    return 0;
}

CVxStringW CVxLibraryPage::LibEnglishNameFromID(int id)
{
    return s_pages[SafeId(id)].displayName;
}

CVxStringW CVxLibraryPage::LibLocalNameFromID(int id)
{
    const CVxStringW english = LibEnglishNameFromID(id);
    const CVxLocalize* loc = VX_GetLoc();
    if (!loc)
        return english;
    return loc->LocalizeDlgString(loc->GetDlgIndex(s_pageTable), SafeId(id) + 1, english);
}
