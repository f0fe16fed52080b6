#include "CVxUserLibrary.h"

#include "CVxCompressedFileReader.h"
#include "CVxExternalLibraries.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxPartVectorGrouper.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxCodePages.h"
#include "VxSafeSave.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>

const wchar_t* const CVxUserLibrary::innerFileName = L"usrlbxpt.pvl";
const wchar_t* const CVxUserLibrary::standardFileName = L"Library.pvl";
const wchar_t* const CVxUserLibrary::standardPackedFileName = L"Library.pvlz";
const wchar_t* const CVxUserLibrary::userFileName = L"UserLib.pvl";

// The "LibSetup" head of a library file: version, name, unit and pages.
class CVxLibSetupReader : public IVxReadIniClient
{
public:
    struct SVxPageDecl
    {
        CVxStringW name;
        CVxStringW uniqueName;
        CVxStringW parentPage;
    };

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override
    {
        if (key == "FileVersion") {
            fileVersion = CVxIniFileReader::ToIntInRange(value, 0, 0, 1000000, "FileVersion");
        } else if (key == "Encoding") {
            reader->ChangeCodePage(VX_EncodingToCodePage(value.c_str()));
        } else if (key == "LibName") {
            libName = value;
        } else if (key == "LibVersion") {
            libVersion = CVxIniFileReader::ToIntInRange(value, 0, 0, 1 << 30, "LibVersion");
        } else if (key == "Compression") {
            compressed = value == CVxStringW(L"zlib");
        } else if (key == "Unit") {
            unit = CVxUnits::GetUnitEngTextIdx(VX_StringToUTF8(value));
        } else if (key == "WrlFile") {
            wrlFile = value;
        } else if (key == "ObjAddDimensions") {
            addDimensions = CVxIniFileReader::ToBool(value, true) ? 1 : 0;
        } else if (key == "Hide3DThumbs") {
            hide3DThumbs = CVxIniFileReader::ToBool(value, false) ? 1 : 0;
        } else if (int n = 0; Numbered(key, "UniquePageName", n)) {
            pages[n].uniqueName = value;
        } else if (Numbered(key, "ParentPage", n)) {
            pages[n].parentPage = value;
        } else if (Numbered(key, "Page", n)) {
            pages[n].name = value;
        }
    }

    int fileVersion = 0;
    CVxStringW libName;
    int libVersion = 0;
    bool compressed = false;
    int unit = CVxUnits::UNIT_CM;
    CVxStringW wrlFile;
    int addDimensions = -1;
    int hide3DThumbs = -1;
    std::map<int, SVxPageDecl> pages;

private:
    // "<prefix><n>" with n a page number in range; other keys of the prefix
    // are ignored, so a file can't make more page rows than there are.
    static bool Numbered(const CVxStringA& key, const char* prefix, int& n)
    {
        const CVxStringA head(prefix);
        if (!key.StartsWith(head) || key.GetLength() == head.GetLength() ||
            key.GetLength() > head.GetLength() + 3)
            return false;
        int value = 0;
        for (int i = head.GetLength(); i < key.GetLength(); ++i) {
            const char c = key.GetAt(i);
            if (c < '0' || c > '9')
                return false;
            value = value * 10 + (c - '0');
        }
        if (value > CVxUserLibrary::maxPageIndex)
            return false;
        n = value;
        return true;
    }
};

namespace {

IVxAppHelperCallback* Host()
{
    return VX_GetAppHelper();
}

std::string Utf8(const CVxStringW& text)
{
    return VX_StringToUTF8(text).Std();
}

// A plain writer that can tell whether every byte reached the file.
class CVxCheckedLibWriter : public CVxIniWriter
{
public:
    using CVxIniWriter::CVxIniWriter;
    bool Close()
    {
        if (!m_file)
            return false;
        bool ok = fflush(m_file) == 0 && !ferror(m_file);
        ok = (fclose(m_file) == 0) && ok;
        m_file = nullptr;
        return ok;
    }
};

// Writes one library object through the file's writer and adds the keys
// that only a library keeps: the pages of the object, and the turn of a
// door, which says which way it opens. They belong to the object's own
// section, so they go in before the first member's section begins.
class CVxLibraryPartWriter : public CVxIniWriter
{
public:
    CVxLibraryPartWriter(CVxIniWriter* target, const CVxPart& part) : m_target(target), m_part(part) {}
    void Write(const CVxStringA& section)
    {
        m_part.SaveToFile(this, section, true, nullptr);
        WriteLibraryKeys();
    }
    bool IsOpened() override { return m_target->IsOpened(); }
    void Finalize() override {}
    void StartSection(CVxStringA name) override
    {
        if (m_sections++ == 1)
            WriteLibraryKeys();
        m_target->StartSection(name);
    }
    void WriteInteger(const char* key, int value) override { m_target->WriteInteger(key, value); }
    void WriteInteger64(const char* key, long value) override { m_target->WriteInteger64(key, value); }
    void WriteString(const char* key, const CVxStringW& value) override { m_target->WriteString(key, value); }
    void WriteDouble(const char* key, double value) override { m_target->WriteDouble(key, value); }
    void WriteBool(const char* key, bool value) override { m_target->WriteBool(key, value); }
    CVxStringW MakeRelativePath(CVxStringW& path) override { return m_target->MakeRelativePath(path); }
    CVxStringW MakeRelativePathAs(CVxStringW& path, EVxFileRole role) override
    {
        return m_target->MakeRelativePathAs(path, role);
    }

private:
    void WriteLibraryKeys()
    {
        if (m_done)
            return;
        m_done = true;
        if (!m_part.library.IsEmpty())
            m_target->WriteString("Library", m_part.library);
        if (m_part.HasCap(capHandle) && std::fabs(m_part.rotation) >= 1e-7)
            m_target->WriteDouble("Rotation", m_part.rotation);
    }

    CVxIniWriter* m_target;
    const CVxPart& m_part;
    int m_sections = 0;
    bool m_done = false;
};

// A length read from a file: damage reads as the default.
void SaneLength(double& value, double def)
{
    if (!std::isfinite(value) || std::fabs(value) > CVxUserLibrary::maxLength)
        value = def;
}

bool IsInsideProjectsTemp(const CVxStringW& path)
{
    const CVxStringW clean = path.FromWinPath();
    if (clean.Contains(CVxStringW(L"/../")) || clean.Contains(CVxStringW(L"/./")))
        return false;
    return CVxUtils::ContainsPath(clean, CVxUtils::GetProjectsTempPath());
}

} // namespace

CVxUserLibrary::~CVxUserLibrary() = default;

void CVxUserLibrary::Reset()
{
    m_objects.clear();
    m_firstUserObject = 0;
    m_libAppearance.clear();
    m_fileName.Empty();
    m_compressed = false;
}

bool CVxUserLibrary::LoadFromFile(const CVxStringW& path, int flags, int page)
{
    return LoadFromFileAt(path, flags, page, false);
}

bool CVxUserLibrary::LoadFromFileAt(const CVxStringW& path, int flags, int page, bool inner)
{
    IVxAppHelperCallback* host = Host();
    if (!host || path.IsEmpty() || !host->FileExists(path)) {
        VxTrace("Error opening file for reading: %s\n", Utf8(path).c_str());
        return false;
    }
    CVxIniFileReader reader(path, 0);
    if (!reader.IsOpened()) {
        VxTrace("Error opening file for reading: %s\n", Utf8(path).c_str());
        return false;
    }
    if (!(flags & LIB_LOAD_ADD) && !inner)
        Reset();
    reader.SetReaderKind((flags & LIB_LOAD_STANDARD) ? CVxIniFileReader::VX_READER_STANDARD_LIBRARY
                                                     : CVxIniFileReader::VX_READER_LIBRARY);
    reader.Start();

    CVxLibSetupReader setup;
    bool haveSetup = false;
    const size_t firstNew = m_objects.size();
    int partsRead = 0;
    bool traced = false;
    {
        CVxPartVectorGrouper grouper(m_objects);
        while (!reader.GetSectionName().IsEmpty()) {
            const CVxStringA section = reader.GetSectionName();
            if (section == "LibSetup" && !haveSetup) {
                reader.ReadSection(&setup);
                haveSetup = true;
                // A container's head comes first; one behind objects is a
                // lie, and the objects already read stay what the file is.
                if (setup.compressed && partsRead == 0) {
                    // The text inside a container is plain by definition; one
                    // that claims otherwise would unpack itself without end.
                    if (inner)
                        return false;
                    m_compressed = true;
                    m_fileName = path;
                    return LoadFromCompressedFile(&reader, flags, page);
                }
                reader.SetProjectVersion(setup.fileVersion > 0 ? setup.fileVersion : 1);
                reader.SetUnit(setup.unit);
                if (setup.fileVersion > fileVersion) {
                    // Read all the same: unknown keys are passed over.
                    VxTrace("The file was created using a higher version of Plaveno: %s\n",
                            Utf8(path).c_str());
                    const CVxLocalize* loc = VX_GetLoc();
                    const CVxStringW text(L"The file was created using a higher version of Plaveno.");
                    host->MsgBox((loc ? loc->LocalizeMessage(302, text) : text) + L"\n" + path,
                                 loc ? loc->LocalizeMessage(33, CVxStringW(L"Warning"))
                                     : CVxStringW(L"Warning"),
                                 static_cast<unsigned>(VX_MB_OK) | VX_MB_ICON_WARNING);
                }
                AddFilePages(setup, flags);
            } else if (section.Left(4) == "Part") {
                if (partsRead >= maxObjectsPerFile || m_objects.size() >= static_cast<size_t>(maxObjects)) {
                    if (!traced)
                        VxTrace("Too many library objects, the rest are left out: %s\n", Utf8(path).c_str());
                    traced = true;
                    reader.ReadSection(nullptr);
                    continue;
                }
                ++partsRead;
                CVxPart part;
                part.LoadFromSection(&reader);
                grouper.Add(std::move(part), reader.GetProjectVersion());
            } else {
                // "Room" and whatever a newer program writes.
                reader.ReadSection(nullptr);
            }
        }
        grouper.Finalize();
    }
    if (!inner) {
        m_fileName = path;
        m_compressed = false;
    }
    if (haveSetup) {
        m_libName = setup.libName;
        LibVersion = setup.libVersion;
    }
    const CVxStringW title = path.ExtractFileTitleWithoutExt();
    int runningNumber = 1;
    for (size_t i = firstNew; i < m_objects.size(); ++i)
        PrepareLoadedObject(m_objects[i], setup.unit, flags, page, title, runningNumber);
    return haveSetup || partsRead > 0;
}

bool CVxUserLibrary::LoadFromCompressedFile(CVxIniFileReader* reader, int flags, int page)
{
    IVxAppHelperCallback* host = Host();
    const CVxStringW root = CVxUtils::GetProjectsTempPath();
    if (!host || !reader || root.IsEmpty())
        return false;
    CVxStringW folder =
        CVxUtils::GetUniqueFolderName(root + L"Lib_" + reader->GetPath().ExtractFileTitleWithoutExt());
    if (!host->CreateFolder(folder))
        return false;
    m_tempFolders.push_back(folder);
    folder += L'/';
    reader->SetUnpackBudget(CVxCompressedFileReader::UnpackBudgetFor(host->FileSize(reader->GetPath())));
    CVxStringW mainFile;
    while (!reader->GetSectionName().IsEmpty()) {
        if (reader->GetSectionName() == "File") {
            CVxCompressedFileReader entry(folder, CVxStringW(L".pvl"));
            reader->ReadSection(&entry);
            if (!entry.GetMainFile().IsEmpty() && !entry.IsDamaged())
                mainFile = entry.GetMainFile();
        } else {
            reader->ReadSection(nullptr);
        }
    }
    if (mainFile.IsEmpty())
        return false;
    return LoadFromFileAt(mainFile, flags, page, true);
}

void CVxUserLibrary::AddFilePages(const CVxLibSetupReader& setup, int flags)
{
    const size_t firstNew = m_pages.size();
    for (const auto& [n, decl] : setup.pages) {
        if (m_pages.size() >= static_cast<size_t>(maxPages))
            break;
        CVxStringW unique = decl.uniqueName;
        if (unique.IsEmpty())
            unique = n < CVxLibraryPage::standardPageCount ? CVxLibraryPage::LibNameFromID(n)
                                                           : CVxLibraryPage::GenerateUniqueName();
        CVxLibraryPage page;
        page.uniqueName = unique;
        page.localName = decl.name;
        page.parentPage = decl.parentPage;
        if (flags & LIB_LOAD_ADDITIONAL) {
            page.id = CVxLibraryPage::additionalPageId;
            page.libraryName = setup.libName;
        } else {
            page.id = n;
            page.isUserPage = (flags & LIB_LOAD_USER_PAGES) != 0;
        }
        const int existing = FindPageByUniqueName(unique);
        if (existing >= 0) {
            // The program's pages keep their names in the user's language.
            CVxLibraryPage& known = m_pages[static_cast<size_t>(existing)];
            if (known.isUserPage && !decl.name.IsEmpty())
                known.localName = decl.name;
            continue;
        }
        if (page.localName.IsEmpty())
            page.localName =
                n < CVxLibraryPage::standardPageCount ? CVxLibraryPage::LibLocalNameFromID(n) : unique;
        m_pages.push_back(page);
    }
    for (size_t i = firstNew; i < m_pages.size(); ++i) {
        if (setup.addDimensions >= 0)
            m_pages[i].addDimensions = setup.addDimensions != 0;
        if (setup.hide3DThumbs >= 0)
            m_pages[i].hide3DThumbs = setup.hide3DThumbs != 0;
    }
}

void CVxUserLibrary::PrepareLoadedObject(CVxPart& part, int unit, int flags, int page,
                                         const CVxStringW& title, int& runningNumber)
{
    SaneLength(part.x, 0);
    SaneLength(part.y, 0);
    SaneLength(part.z, 0);
    SaneLength(part.width, 100);
    SaneLength(part.height, 100);
    SaneLength(part.zHeight, 100);
    SaneLength(part.thickness, 0);
    if (!std::isfinite(part.rotation))
        part.rotation = 0;
    if (unit != CVxUnits::UNIT_CM && CVxUnits::IsValid(unit)) {
        const double cal = CVxUnits::dUnitCal[unit];
        for (double* value :
             {&part.x, &part.y, &part.z, &part.width, &part.height, &part.zHeight, &part.thickness})
            *value *= cal;
        SaneLength(part.z, 0);
        SaneLength(part.width, 100);
        SaneLength(part.height, 100);
        SaneLength(part.zHeight, 100);
        SaneLength(part.thickness, 0);
    }
    // Library objects have no place; only a door's turn says which way it
    // opens.
    part.x = 0;
    part.y = 0;
    if (!part.HasCap(capHandle))
        part.rotation = 0;
    part.selected = false;
    part.inUse = true;
    if (part.libObjID < 0 || part.libObjID > maxLibObjID)
        part.libObjID = 0;
    if ((flags & LIB_LOAD_CAPTION_FROM_TITLE) && part.caption.IsEmpty()) {
        part.caption = title;
        part.caption += L' ';
        part.caption += CVxStringW(std::to_wstring(runningNumber++));
    }
    if (flags & LIB_LOAD_ADDITIONAL)
        part.libraryMask |= 1u << CVxLibraryPage::additionalPageId;
    if (flags & LIB_LOAD_USER_PAGES) {
        if (page >= 0 && part.userLibID == 0)
            part.userLibID = page;
        bool known = part.userLibID == 0;
        for (const CVxLibraryPage& candidate : m_pages)
            known = known || (candidate.isUserPage && candidate.id == part.userLibID);
        if (!known)
            part.userLibID = 0;
    }
    if ((flags & LIB_LOAD_STANDARD) && part.libObjID > 0) {
        const size_t row = static_cast<size_t>(part.libObjID);
        if (m_libAppearance.size() <= row)
            m_libAppearance.resize(row + 1);
        SVxLibAppearance& entry = m_libAppearance[row];
        if (!entry.set) {
            entry.fillColor = part.GetFillColor();
            entry.frontColor = part.appearFront.main.color;
            entry.specular = part.specular;
            entry.shininess = part.shininess;
            entry.set = true;
        }
    }
}

void CVxUserLibrary::WriteCompressedFileHeader(FILE* file) const
{
    if (!file)
        return;
    fprintf(file, "[LibSetup]\r\nFileVersion=%d\r\nEncoding=utf-8\r\n", fileVersion);
    CVxIniWriter::FileWriteString(file, "LibName", m_libName);
    CVxIniWriter::FileWriteInteger(file, "LibVersion", LibVersion);
    fputs("Compression=zlib\r\n", file);
    for (const CVxLibraryPage* page : PagesToSave()) {
        char key[40];
        snprintf(key, sizeof(key), "Page%d", page->id);
        CVxIniWriter::FileWriteString(file, key, page->localName);
    }
}

std::vector<const CVxLibraryPage*> CVxUserLibrary::PagesToSave() const
{
    std::vector<const CVxLibraryPage*> pages;
    for (const CVxLibraryPage& page : m_pages)
        if (page.isUserPage && page.id >= 0 && page.id <= maxPageIndex)
            pages.push_back(&page);
    return pages;
}

bool CVxUserLibrary::SaveToFile(const CVxStringW& path, int pageId, bool compressed)
{
    IVxAppHelperCallback* host = Host();
    if (path.IsEmpty() || !host)
        return false;
    const CVxStringW temp = VX_SafeSaveTempPath(path);
    if (!VX_SafeSaveCreateTemp(path)) {
        VxTrace("Error opening file for writing: %s\n", Utf8(path).c_str());
        return false;
    }
    CVxStringW textPath;
    std::unique_ptr<CVxIniWriter> writer;
    CVxCompressIniWriter* container = nullptr;
    CVxCheckedLibWriter* plain = nullptr;
    if (compressed) {
        const CVxStringW projectsTemp = CVxUtils::GetProjectsTempPath();
        if (projectsTemp.IsEmpty()) {
            VX_SafeSaveAbandon(temp);
            return false;
        }
        textPath = CVxUtils::GetUniqueFileName(projectsTemp + innerFileName);
        auto owned = std::make_unique<CVxCompressIniWriter>(temp, textPath, this);
        container = owned.get();
        writer = std::move(owned);
    } else {
        auto owned = std::make_unique<CVxCheckedLibWriter>(temp);
        plain = owned.get();
        writer = std::move(owned);
    }
    auto cleanUp = [&]() {
        writer.reset();
        if (!textPath.IsEmpty())
            host->FileDelete(textPath);
    };
    if (!writer->IsOpened()) {
        VxTrace("Error opening file for writing: %s\n", Utf8(path).c_str());
        cleanUp();
        VX_SafeSaveAbandon(temp);
        return false;
    }

    writer->StartSection("LibSetup");
    writer->WriteInteger("FileVersion", fileVersion);
    writer->WriteString("Encoding", CVxStringW(L"utf-8"));
    writer->WriteString("LibName", m_libName);
    writer->WriteInteger("LibVersion", LibVersion);
    const std::vector<const CVxLibraryPage*> pages = PagesToSave();
    char key[48];
    for (const CVxLibraryPage* page : pages) {
        snprintf(key, sizeof(key), "Page%d", page->id);
        writer->WriteString(key, page->localName);
        snprintf(key, sizeof(key), "UniquePageName%d", page->id);
        writer->WriteString(key, page->uniqueName);
        if (!page->parentPage.IsEmpty()) {
            snprintf(key, sizeof(key), "ParentPage%d", page->id);
            writer->WriteString(key, page->parentPage);
        }
    }
    writer->WriteBool("ObjAddDimensions", pages.empty() || pages.front()->addDimensions);
    writer->WriteBool("Hide3DThumbs", !pages.empty() && pages.front()->hide3DThumbs);

    int number = 1;
    for (size_t i = static_cast<size_t>(m_firstUserObject); i < m_objects.size(); ++i) {
        const CVxPart& part = m_objects[i];
        if (!part.inUse || (pageId != -1 && part.userLibID != pageId))
            continue;
        snprintf(key, sizeof(key), "Part%d", number++);
        CVxLibraryPartWriter(writer.get(), part).Write(key);
    }
    writer->Finalize();
    const bool written = container ? container->Succeeded() : plain->Close();
    cleanUp();
    if (!written) {
        VxTrace("Error writing file: %s\n", Utf8(path).c_str());
        VX_SafeSaveAbandon(temp);
        return false;
    }
    if (!VX_SafeSaveCommit(temp, path)) {
        VxTrace("Error replacing file: %s\n", Utf8(path).c_str());
        return false;
    }
    return true;
}

bool CVxUserLibrary::SaveUserLibrary()
{
    if (m_userLibraryFile.IsEmpty())
        return false;
    return SaveToFile(m_userLibraryFile, -1, m_userLibraryCompressed);
}

bool CVxUserLibrary::ReloadUserLibrary()
{
    RemoveLastObjects(GetSlotCount() - m_firstUserObject);
    m_pages.erase(std::remove_if(m_pages.begin(), m_pages.end(),
                                 [](const CVxLibraryPage& page) { return page.isUserPage; }),
                  m_pages.end());
    StartUserObjects();
    IVxAppHelperCallback* host = Host();
    if (m_userLibraryFile.IsEmpty() || !host || !host->FileExists(m_userLibraryFile))
        return false;
    const bool loaded =
        LoadFromFile(m_userLibraryFile, LIB_LOAD_USER_PAGES | LIB_LOAD_ADD | LIB_LOAD_CAPTION_FROM_TITLE, -1);
    if (loaded)
        m_userLibraryCompressed = m_compressed;
    return loaded;
}

CVxStringW CVxUserLibrary::GetAdditionalLibraryFolder()
{
    IVxAppHelperCallback* host = Host();
    return host ? host->GetUserAppDataPath() + L"Libraries/" : CVxStringW();
}

bool CVxUserLibrary::LoadAllStandardLibraries()
{
    IVxAppHelperCallback* host = Host();
    if (!host)
        return false;
    const CVxStringW packed = m_programFolder + standardPackedFileName;
    const CVxStringW plainFile = m_programFolder + standardFileName;
    bool loaded = host->FileExists(packed) && LoadFromFile(packed, LIB_LOAD_STANDARD, -1);
    if (!loaded) {
        loaded = LoadFromFile(plainFile, LIB_LOAD_STANDARD, -1);
        if (!loaded)
            VxTrace("Error loading standard library file: %s\n", Utf8(plainFile).c_str());
    }

    CVxExternalLibraries external(VX_GetOptions());
    for (const CVxStringW& folder : {m_programFolder, GetAdditionalLibraryFolder()}) {
        if (folder.IsEmpty())
            continue;
        SVxSearchRec rec;
        for (bool found = host->FileFindFirst(folder + L"*.pvl", false, &rec); found;
             found = host->FileFindNext(false, &rec)) {
            if (rec.name == CVxStringW(standardFileName) || rec.name == CVxStringW(userFileName))
                continue;
            external.RegisterLibrary(rec.fullPath);
        }
        host->FileFindClose(&rec);
    }
    external.RemoveNonPresentItems();
    for (int i = 0; i < external.GetCount(); ++i)
        if (external.CanBeLoadedForType(i, CVxExternalLibraries::typeObjects))
            LoadFromFile(external.GetPath(i), LIB_LOAD_ADD | LIB_LOAD_ADDITIONAL, -1);
    // What follows is the user's.
    StartUserObjects();
    return loaded;
}

void CVxUserLibrary::RemoveTempFiles()
{
    IVxAppHelperCallback* host = Host();
    if (!host)
        return;
    for (const CVxStringW& folder : m_tempFolders)
        if (IsInsideProjectsTemp(folder))
            host->DeleteDirectory(folder);
    m_tempFolders.clear();
}

CVxPart* CVxUserLibrary::GetNewObject(int* index, bool append)
{
    if (m_objects.size() >= static_cast<size_t>(maxObjects) && append)
        return nullptr;
    return CVxPart::GetNewObject(m_objects, index, append);
}

CVxPart* CVxUserLibrary::SafeGetPart(int index)
{
    return CVxPart::SafeGetPart(m_objects, index);
}

const CVxPart* CVxUserLibrary::SafeGetPart(int index) const
{
    if (index < 0 || index >= GetSlotCount())
        return nullptr;
    return &m_objects[static_cast<size_t>(index)];
}

int CVxUserLibrary::GetObjectCount() const
{
    return static_cast<int>(
        std::count_if(m_objects.begin(), m_objects.end(), [](const CVxPart& part) { return part.inUse; }));
}

int CVxUserLibrary::FindPartWithLibObjID(int libObjID, bool userOnly) const
{
    for (int i = userOnly ? m_firstUserObject : 0; i < GetSlotCount(); ++i) {
        const CVxPart& part = m_objects[static_cast<size_t>(i)];
        if (part.inUse && part.libObjID == libObjID)
            return i;
    }
    return -1;
}

int CVxUserLibrary::GetObject(const CVxStringW& name, int page) const
{
    for (int i = 0; i < GetSlotCount(); ++i) {
        const CVxPart& part = m_objects[static_cast<size_t>(i)];
        if (!part.inUse || part.caption != name)
            continue;
        if (page == -1 || (IsUserObject(i) && part.userLibID == page))
            return i;
    }
    return -1;
}

void CVxUserLibrary::RemoveLastObjects(int count)
{
    count = std::clamp(count, 0, GetSlotCount());
    m_objects.resize(m_objects.size() - static_cast<size_t>(count));
    m_firstUserObject = std::min(m_firstUserObject, GetSlotCount());
}

int CVxUserLibrary::GetNumberOfObjectsInUserPage(int page) const
{
    int count = 0;
    for (int i = m_firstUserObject; i < GetSlotCount(); ++i) {
        const CVxPart& part = m_objects[static_cast<size_t>(i)];
        if (part.inUse && part.userLibID == page)
            ++count;
    }
    return count;
}

int CVxUserLibrary::FindLibPartPage(int mask, const CVxStringW& name) const
{
    for (size_t i = 0; i < m_pages.size(); ++i) {
        const CVxLibraryPage& page = m_pages[i];
        if (page.id < 0 || page.id > 31)
            continue;
        if ((static_cast<unsigned>(mask) & (1u << page.id)) != 0 && page.localName == name)
            return static_cast<int>(i);
    }
    return -1;
}

int CVxUserLibrary::FindPageByUniqueName(const CVxStringW& uniqueName) const
{
    for (size_t i = 0; i < m_pages.size(); ++i)
        if (m_pages[i].uniqueName == uniqueName)
            return static_cast<int>(i);
    return -1;
}

int CVxUserLibrary::GetLibIDFromName(const CVxStringW& name) const
{
    for (int id = 0; id < CVxLibraryPage::standardPageCount; ++id)
        if (name == CVxLibraryPage::LibNameFromID(id))
            return id;
    const int page = FindPageByUniqueName(name);
    return page >= 0 ? m_pages[static_cast<size_t>(page)].id : 0;
}

void CVxUserLibrary::SetNewLibraryPropsToLegacyPart(int version, CVxPart* part) const
{
    if (!part || version >= 830 || part->libObjID <= 0 ||
        static_cast<size_t>(part->libObjID) >= m_libAppearance.size())
        return;
    const SVxLibAppearance& entry = m_libAppearance[static_cast<size_t>(part->libObjID)];
    if (!entry.set || part->specular != 0 || part->shininess != 20)
        return;
    part->specular = entry.specular;
    part->shininess = entry.shininess;
}
