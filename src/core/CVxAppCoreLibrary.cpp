// The object library as the core serves it: loading at start, the names
// table by library number, new objects from library objects, the user's own
// library and its single-object files, thumbnails.

#include "CVxAppCore.h"

#include "CVxDC.h"
#include "CVxIniFileReader.h"
#include "CVxLibrary3DImage.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxPicBuf.h"
#include "CVxProjectFileCheck.h"
#include "CVxUnits.h"
#include "CVxUserLibrary.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <algorithm>
#include <cmath>
#include <utility>

// What a part asks of the library, answered by the core's library.
class CVxCorePartLibrary : public IVxPartLibrary
{
public:
    explicit CVxCorePartLibrary(CVxAppCore* core) : m_core(core) {}
    ~CVxCorePartLibrary() override
    {
        if (CVxPart::GetLibrary() == this)
            CVxPart::SetLibrary(nullptr);
    }
    CVxStringW GetLibObjName(int libId) const override { return m_core->GetLibObjName(libId); }
    double GetLibObjZHeight(int libId) const override { return m_core->GetLibObjZHeight(libId); }
    CVxStringW GetLibObjWrlFile(int libId) const override { return m_core->GetLibObjWrlFile(libId); }
    int GetLibIDFromName(const CVxStringW& name) const override
    {
        int id = 0;
        m_core->GetLibIDFromName(name, &id);
        return id;
    }
    void SetNewLibraryPropsToLegacyPart(int version, CVxPart* part) const override
    {
        m_core->GetUserLibrary().SetNewLibraryPropsToLegacyPart(version, part);
    }

private:
    CVxAppCore* m_core;
};

namespace {

CVxStringW Msg(int row, const wchar_t* english)
{
    const CVxLocalize* loc = VX_GetLoc();
    return loc ? loc->LocalizeMessage(row, english) : CVxStringW(english);
}

CVxStringW WithSlash(CVxStringW folder)
{
    if (!folder.IsEmpty() && !folder.EndsWith(CVxStringW(L"/")))
        folder += L'/';
    return folder;
}

// Library values are centimetres. Basic objects keep their numbers, which
// make sense in any unit; others take the project's unit, rounded up to
// whole units where a unit is small enough for that to stay true to size.
void ToProjectUnits(CVxPart& part, int unit)
{
    if ((part.libraryMask & 2u) != 0 || !CVxUnits::IsValid(unit) || unit == CVxUnits::UNIT_CM)
        return;
    const double cal = CVxUnits::dUnitCal[unit];
    for (double* value : {&part.width, &part.height, &part.zHeight, &part.z}) {
        if (cal <= 10)
            *value = std::ceil(*value / cal - 1e-6);
        else
            *value = std::round(*value / cal * 100) / 100;
    }
}

// A part of a project in `unit` as a library object: centimetres, no place.
void ToLibraryUnits(CVxPart& part, int unit)
{
    if (CVxUnits::IsValid(unit) && unit != CVxUnits::UNIT_CM) {
        const double cal = CVxUnits::dUnitCal[unit];
        for (double* value : {&part.width, &part.height, &part.zHeight, &part.z, &part.thickness})
            *value *= cal;
    }
    part.x = 0;
    part.y = 0;
    part.selected = false;
    part.snapToWall = false;
    part.snapWall = -1;
    part.snapRegion = -1;
    part.layer = 0;
    part.inUse = true;
    if (!part.HasCap(capHandle))
        part.rotation = 0;
    part.InvalidateCache();
}

// "@12 large": base 12, suffix " large". False for a caption that is no
// reference.
bool ParseNameReference(const CVxStringW& caption, int& base, CVxStringW& suffix)
{
    if (caption.GetAt(0) != L'@')
        return false;
    int value = 0;
    int i = 1;
    for (; i < caption.GetLength() && i <= 7; ++i) {
        const wchar_t c = caption.GetAt(i);
        if (c < L'0' || c > L'9')
            break;
        value = value * 10 + static_cast<int>(c - L'0');
    }
    if (i == 1 || value <= 0 || value > CVxUserLibrary::maxLibObjID)
        return false;
    base = value;
    suffix = caption.Mid(i);
    return true;
}

} // namespace

CVxUserLibrary& CVxAppCore::GetUserLibrary()
{
    if (!m_userLibrary)
        m_userLibrary = std::make_shared<CVxUserLibrary>();
    return *m_userLibrary;
}

void CVxAppCore::LibInitObjectLibrary()
{
    CVxUserLibrary& library = GetUserLibrary();
    library.Reset();
    library.GetPages().clear();
    m_libLocObjNames.clear();
    m_lib3DImages.clear();
    for (int id = 0; id < CVxLibraryPage::standardPageCount; ++id)
        library.GetPages().emplace_back(id, CVxLibraryPage::LibNameFromID(id),
                                        CVxLibraryPage::LibLocalNameFromID(id));
    if (!m_partLibrary)
        m_partLibrary = std::make_shared<CVxCorePartLibrary>(this);
    CVxPart::SetLibrary(m_partLibrary.get());
    m_libraryInitialized = true;

    LibLoadObjectLibraryFiles();
    library.ReloadUserLibrary();
    BuildLibNames();
    LocalizeLibrary();
    VxTrace("Init - library: %d objects on %d pages\n", library.GetObjectCount(),
            static_cast<int>(library.GetPages().size()));
}

void CVxAppCore::LibLoadObjectLibraryFiles()
{
    CVxUserLibrary& library = GetUserLibrary();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    library.SetProgramFolder(m_appFolder);
    if (!m_appFolder.IsEmpty())
        CVxUtils::SetBuiltInTextureFolder(m_appFolder + L"textures/");
    if (host) {
        const CVxStringW docs = WithSlash(host->GetUserDocsPath());
        CVxStringW userFile;
        if (!docs.IsEmpty()) {
            userFile = docs + CVxUserLibrary::userFileName;
            if (!host->FileExists(userFile)) {
                // Older versions kept the user's objects elsewhere; the first
                // start after an upgrade moves them.
                const CVxStringW appData = WithSlash(host->GetUserAppDataPath());
                std::vector<CVxStringW> older;
                if (!appData.IsEmpty())
                    older.push_back(appData + CVxUserLibrary::userFileName);
                if (!m_appFolder.IsEmpty()) {
                    older.push_back(m_appFolder + CVxUserLibrary::userFileName);
                    older.push_back(m_appFolder + L"catalog.msk");
                    older.push_back(m_appFolder + L"Katalog.msk");
                }
                for (const CVxStringW& candidate : older) {
                    if (host->FileExists(candidate) && host->FileRename(candidate, userFile)) {
                        VxTrace("Moved the user library from %s\n", VX_StringToUTF8(candidate).c_str());
                        break;
                    }
                }
            }
        }
        library.SetUserLibraryFile(userFile);
    }
    library.RemoveTempFiles();
    library.LoadAllStandardLibraries();
}

void CVxAppCore::BuildLibNames()
{
    const CVxUserLibrary& library = GetUserLibrary();
    int highest = 0;
    for (const CVxPart& part : library.GetObjects())
        if (part.inUse && part.libObjID > highest && part.libObjID <= CVxUserLibrary::maxLibObjID)
            highest = part.libObjID;
    m_libLocObjNames.assign(highest > 0 ? static_cast<size_t>(highest) + 10 : 0, CVxLibLocObjName());
    for (const CVxPart& part : library.GetObjects()) {
        if (!part.inUse || part.libObjID <= 0 || part.libObjID > highest)
            continue;
        CVxLibLocObjName& row = m_libLocObjNames[static_cast<size_t>(part.libObjID)];
        if (!row.englishName.IsEmpty() || row.baseNumber != 0)
            continue;
        row.englishName = part.caption;
        ParseNameReference(part.caption, row.baseNumber, row.suffix);
    }
}

void CVxAppCore::LocalizeLibrary()
{
    const CVxLocalize* loc = VX_GetLoc();
    const int rows = static_cast<int>(m_libLocObjNames.size());
    for (int i = 0; i < rows; ++i) {
        CVxLibLocObjName& row = m_libLocObjNames[static_cast<size_t>(i)];
        if (row.baseNumber == 0)
            row.name = loc ? loc->LocalizeLibItem(i, row.englishName) : row.englishName;
    }
    // References follow their chain to a row with a name of its own; a
    // chain that leaves the table or turns in a circle shows the caption as
    // it stands in the file.
    for (int i = 0; i < rows; ++i) {
        CVxLibLocObjName& row = m_libLocObjNames[static_cast<size_t>(i)];
        if (row.baseNumber == 0)
            continue;
        CVxStringW text = row.suffix;
        int current = row.baseNumber;
        bool resolved = false;
        for (int depth = 0; depth < maxLibNameReferenceDepth; ++depth) {
            if (current <= 0 || current >= rows || current == i)
                break;
            const CVxLibLocObjName& base = m_libLocObjNames[static_cast<size_t>(current)];
            if (base.baseNumber == 0) {
                if (!base.name.IsEmpty()) {
                    text = base.name + text;
                    resolved = true;
                }
                break;
            }
            text = base.suffix + text;
            current = base.baseNumber;
        }
        row.name = resolved ? text : row.englishName;
    }
    for (CVxPart& part : GetUserLibrary().GetObjects())
        if (part.inUse)
            part.LibSetCaption();
    for (CVxLibraryPage& page : GetUserLibrary().GetPages())
        if (!page.isUserPage && page.libraryName.IsEmpty() && page.id < CVxLibraryPage::standardPageCount &&
            page.uniqueName == CVxLibraryPage::LibNameFromID(page.id))
            page.localName = CVxLibraryPage::LibLocalNameFromID(page.id);
}

CVxStringW CVxAppCore::GetLibObjName(int libObjID) const
{
    if (libObjID <= 0 || static_cast<size_t>(libObjID) >= m_libLocObjNames.size())
        return CVxStringW();
    return m_libLocObjNames[static_cast<size_t>(libObjID)].name;
}

double CVxAppCore::GetLibObjZHeight(int libObjID) const
{
    if (!m_userLibrary || libObjID == 0)
        return -1;
    const int index = m_userLibrary->FindPartWithLibObjID(libObjID, false);
    return index >= 0 ? m_userLibrary->SafeGetPart(index)->zHeight : -1;
}

CVxStringW CVxAppCore::GetLibObjWrlFile(int libObjID) const
{
    if (!m_userLibrary || libObjID == 0)
        return CVxStringW();
    const int index = m_userLibrary->FindPartWithLibObjID(libObjID, false);
    return index >= 0 ? m_userLibrary->SafeGetPart(index)->wrlProto : CVxStringW();
}

bool CVxAppCore::GetLibIDFromName(const CVxStringW& name, int* id) const
{
    for (int page = 0; page < CVxLibraryPage::standardPageCount; ++page) {
        if (name == CVxLibraryPage::LibNameFromID(page)) {
            if (id)
                *id = page;
            return true;
        }
    }
    const int index = m_userLibrary ? m_userLibrary->FindPageByUniqueName(name) : -1;
    if (id)
        *id = index >= 0 ? m_userLibrary->GetPages()[static_cast<size_t>(index)].id : 0;
    return index >= 0;
}

int CVxAppCore::FindLibPartPage(int mask, const CVxStringW& name) const
{
    return m_userLibrary ? m_userLibrary->FindLibPartPage(mask, name) : -1;
}

bool CVxAppCore::LibWriteToPart(CVxPart* part, int index) const
{
    const CVxPart* source = m_userLibrary ? m_userLibrary->SafeGetPart(index) : nullptr;
    if (!part || !source || !source->inUse)
        return false;
    *part = *source;
    part->selected = false;
    part->inUse = true;
    const CVxOptions* options = VX_GetOptions();
    const bool standardPage = (part->libraryMask & 0x7FFFu) != 0;
    if (part->libObjID < 800 &&
        (standardPage || part->libraryMask == CVxPart::libMaskPrivate || part->type == ptComplexObject)) {
        if (options && !options->m_showCaptions)
            part->textColor = (part->textColor & 0xFFFFFFu) | 0xEF000000u;
    } else if (part->type != ptLabel) {
        part->caption.Empty();
    }
    if (part->type == ptMeasLine || part->type == ptAngle)
        part->caption = L"~";
    else if (part->type == ptEnergyLabel)
        part->caption = L"A;<B;C;D;E;F;G";
    ToProjectUnits(*part, m_project.m_unit);
    part->InvalidateCache();
    return true;
}

CVxStringW CVxAppCore::LibGetPartViewCaption(const CVxPart* part, bool addDimensions, bool twoLines) const
{
    if (!part)
        return CVxStringW();
    CVxStringW text = part->caption;
    if (text.IsEmpty())
        text = CVxPart::TypeLocalNameFromID(part->type, part->libObjID);
    if (!addDimensions)
        return text;
    CVxPart sized;
    sized.width = part->width;
    sized.height = part->height;
    sized.zHeight = part->zHeight;
    sized.libraryMask = part->libraryMask;
    ToProjectUnits(sized, m_project.m_unit);
    text += twoLines ? CVxStringW(L"\n") : CVxStringW(L" ");
    text += DblSaveW(sized.width);
    text += L" x ";
    text += DblSaveW(sized.height);
    text += L" x ";
    text += DblSaveW(sized.zHeight);
    text += L' ';
    text += CVxUnits::GetUnitText(m_project.m_unit);
    return text;
}

int CVxAppCore::LibAddObjectToUserLibrary(const CVxPart& part, int page)
{
    CVxUserLibrary& library = GetUserLibrary();
    CVxPart copy = part;
    ToLibraryUnits(copy, m_project.m_unit);
    copy.userLibID = page > 0 ? page : 0;
    int index = -1;
    CVxPart* slot = library.GetNewObject(&index, true);
    if (!slot)
        return -1;
    *slot = std::move(copy);
    slot->inUse = true;
    library.SaveUserLibrary();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->LibRebuildOnUserLibChange(false);
    return index;
}

bool CVxAppCore::LibExportObject(int index, const CVxStringW& path)
{
    const CVxPart* source = GetUserLibrary().SafeGetPart(index);
    if (!source || !source->inUse || path.IsEmpty())
        return false;
    CVxStringW target = path;
    if (target.ExtractFileExt().ToQString().toLower() != QStringLiteral(".pvo"))
        target += L".pvo";
    CVxProject project;
    project.Reset();
    project.m_unit = CVxUnits::UNIT_CM;
    project.m_width = 500;
    project.m_height = 500;
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.SetAsBasicRect(500, 500, floor->m_defWallThickness, floor->m_defWallHeight);
    int slot = -1;
    CVxPart* part = CVxPart::GetNewObject(floor->m_objects, &slot, true);
    *part = *source;
    part->inUse = true;
    part->selected = false;
    part->layer = 0;
    part->x = (500 - part->width) / 2;
    part->y = (500 - part->height) / 2;
    part->InvalidateCache();
    floor->m_objectCount = floor->CountUsedObjects();
    const bool saved = project.SaveToFile(target, true, nullptr);
    project.RemoveTempFiles();
    return saved;
}

int CVxAppCore::LibImportObject(const CVxStringW& path, int page)
{
    // A single-object file is an ordinary project; anything else is refused
    // before it is read.
    const CVxProjectFileCheck check = CVxProjectFileCheck::Check(path);
    if (check.GetVerdict() != CVxProjectFileCheck::VX_FILE_GOOD)
        return -1;
    CVxProject project;
    if (!project.LoadFromFile(path, nullptr, nullptr, false,
                              CVxIniFileReader::VX_READ_NO_NEWER_VERSION_WARNING) ||
        project.WasDamagedOnLoad()) {
        project.RemoveTempFiles();
        return -1;
    }
    const CVxPart* found = nullptr;
    for (CVxFloor* floor : project.m_floors) {
        for (const CVxPart& part : floor->m_objects) {
            if (part.inUse) {
                found = &part;
                break;
            }
        }
        if (found)
            break;
    }
    if (!found) {
        project.RemoveTempFiles();
        return -1;
    }
    CVxPart copy = *found;
    ToLibraryUnits(copy, project.m_unit);
    copy.userLibID = page > 0 ? page : 0;
    if (copy.caption.IsEmpty())
        copy.caption = path.ExtractFileTitleWithoutExt();
    CVxUserLibrary& library = GetUserLibrary();
    int index = -1;
    CVxPart* slot = library.GetNewObject(&index, true);
    if (!slot) {
        project.RemoveTempFiles();
        return -1;
    }
    *slot = std::move(copy);
    slot->inUse = true;
    // The object's files live in the project's unpack folder until the
    // library has taken them into its own file; read back, it refers to
    // the library's copies.
    const bool saved = library.SaveUserLibrary();
    project.RemoveTempFiles();
    if (saved) {
        library.ReloadUserLibrary();
        index = library.GetSlotCount() - 1;
    }
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->LibRebuildOnUserLibChange(false);
    return index;
}

bool CVxAppCore::LibRemoveObject(int index)
{
    CVxUserLibrary& library = GetUserLibrary();
    CVxPart* part = library.SafeGetPart(index);
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!part || !part->inUse || !library.IsUserObject(index) || !host)
        return false;
    if (host->MsgBox(Msg(300, L"Are you sure to remove this object?"), Msg(33, L"Warning"),
                     VX_MB_YES | VX_MB_NO | VX_MB_ICON_QUESTION, nullptr, VX_MB_NO) != VX_MBR_YES)
        return false;
    part->inUse = false;
    library.SaveUserLibrary();
    host->LibRebuildOnUserLibChange(true);
    return true;
}

bool CVxAppCore::LibRenameObject(int index, const CVxStringW& name)
{
    CVxUserLibrary& library = GetUserLibrary();
    CVxPart* part = library.SafeGetPart(index);
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!part || !part->inUse || !library.IsUserObject(index) || !host || name.IsEmpty())
        return false;
    for (int other = library.GetFirstUserObject(); other < library.GetSlotCount(); ++other) {
        CVxPart* namesake = library.SafeGetPart(other);
        if (other == index || !namesake->inUse || namesake->caption != name)
            continue;
        if (host->MsgBox(
                Msg(301, L"There is already an object with this name.\nDo you want to overwrite it?"),
                Msg(33, L"Warning"), VX_MB_YES | VX_MB_NO | VX_MB_ICON_QUESTION, nullptr,
                VX_MB_NO) != VX_MBR_YES)
            return false;
        namesake->inUse = false;
    }
    part = library.SafeGetPart(index);
    part->caption = name;
    library.SaveUserLibrary();
    return true;
}

bool CVxAppCore::LibReorderObjectToPos(int from, int to, bool after)
{
    CVxUserLibrary& library = GetUserLibrary();
    if (!library.IsUserObject(from) || !library.IsUserObject(to))
        return false;
    int target = after ? to + 1 : to;
    if (from < target)
        --target;
    target = std::clamp(target, library.GetFirstUserObject(), library.GetSlotCount() - 1);
    if (target == from)
        return false;
    std::vector<CVxPart>& objects = library.GetObjects();
    if (from < target)
        for (int i = from; i < target; ++i)
            std::swap(objects[static_cast<size_t>(i)], objects[static_cast<size_t>(i) + 1]);
    else
        for (int i = from; i > target; --i)
            std::swap(objects[static_cast<size_t>(i)], objects[static_cast<size_t>(i) - 1]);
    library.SaveUserLibrary();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->LibRebuildOnUserLibChange(false);
    return true;
}

void CVxAppCore::LibDrawObjectThumb(CVxDC* dc, CVxPart* part, bool show3D, int x, int y, int width,
                                    int height)
{
    if (!dc || !part || width <= 0 || height <= 0)
        return;
    if (show3D && part->type != ptDoor && part->type != ptWindow && part->HasCap(capVisibleIn3D)) {
        const CVxLibrary3DImage* image = FindLib3DImage(part->lib3DImgPng);
        CVxPicBuf* picture = image ? image->GetPicture() : nullptr;
        if (picture && picture->GetWidth() > 0 && picture->GetHeight() > 0) {
            const double fit = std::min(static_cast<double>(width) / picture->GetWidth(),
                                        static_cast<double>(height) / picture->GetHeight());
            const int w = std::max(1, static_cast<int>(picture->GetWidth() * fit));
            const int h = std::max(1, static_cast<int>(picture->GetHeight() * fit));
            dc->DrawPicture(x + (width - w) / 2, y + (height - h) / 2, w, h, 0, picture, true);
            return;
        }
    }
    CVxPart copy = *part;
    copy.x = 0;
    copy.y = 0;
    copy.InvalidateCache();
    CVxDRect box;
    copy.GetBoundingRect(&box, 1.0);
    const double margin = std::min(4, std::min(width, height) / 8);
    if (!(box.Width() > 0) || !(box.Height() > 0))
        return;
    const double scale = std::min((width - 2 * margin) / box.Width(), (height - 2 * margin) / box.Height());
    if (!(scale > 0) || !std::isfinite(scale))
        return;
    const double originX = x + (width - box.Width() * scale) / 2 - box.left * scale;
    const double originY = y + (height - box.Height() * scale) / 2 - box.top * scale;
    copy.DrawToHdc(dc, nullptr, CVxUnits::UNIT_CM, originX, originY, scale, VX_DRAW_CAPTIONS, 0, 1.0);
}

const CVxLibrary3DImage* CVxAppCore::FindLib3DImage(const CVxStringW& name)
{
    if (name.IsEmpty())
        return nullptr;
    for (const auto& image : m_lib3DImages)
        if (image->GetName() == name)
            return image->GetPicture() ? image.get() : nullptr;
    if (m_lib3DImages.size() >= static_cast<size_t>(CVxUserLibrary::maxLibObjID))
        return nullptr;
    auto image = std::make_shared<CVxLibrary3DImage>();
    const bool loaded = image->LoadPngImage(name);
    // A picture that is not there is not looked for again.
    m_lib3DImages.push_back(image);
    return loaded ? image.get() : nullptr;
}

void CVxAppCore::LibRemoveTempFiles()
{
    if (m_userLibrary)
        m_userLibrary->RemoveTempFiles();
}
