#pragma once
// One tab of the object library view. Standard pages have fixed numbers
// that are also bits of a part's library mask; a page of an additional
// library file shares one bit, and the user's own pages are told apart by
// their unique names, which survive renames.

#include "CVxStringW.h"

class CVxLibraryPage
{
public:
    // The number of the standard pages, ids 0 to 14.
    static constexpr int standardPageCount = 15;
    // The mask bit of every page that comes from an additional file.
    static constexpr int additionalPageId = 30;

    CVxLibraryPage() = default;
    CVxLibraryPage(int pageId, const CVxStringW& unique, const CVxStringW& local)
        : id(pageId), uniqueName(unique), localName(local)
    {
    }

    // A name no other page has, for a page that the user makes.
    static CVxStringW GenerateUniqueName();

    // The standard pages: the name in files and the display name of a page
    // number. An unknown number gives the user library's names.
    static CVxStringW LibNameFromID(int id);
    static int LibIDFromName(const CVxStringW& name);
    // The display name in the current language.
    static CVxStringW LibLocalNameFromID(int id);
    // The English display name.
    static CVxStringW LibEnglishNameFromID(int id);

    int id = 0;
    CVxStringW uniqueName;
    bool isUserPage = false;
    bool addDimensions = true;
    bool hide3DThumbs = false;
    CVxStringW localName;
    CVxStringW parentPage;
    CVxStringW libraryName;
};
