// library: the object library as the program loads it, listed page by page
// and object by object, so that a catalogue can be checked without a window.
// compress-library: the catalogue in the compressed form that ships beside
// the program.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxUserLibrary.h"
#include "VxNumbers.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

CVxStringW PagesOf(const CVxPart& part)
{
    return part.library.IsEmpty() ? CVxLibraryPage::LibNameFromID(0) : part.library;
}

int CountOnPage(const CVxUserLibrary& library, const CVxLibraryPage& page)
{
    int count = 0;
    for (const CVxPart& part : library.GetObjects())
        if (part.inUse && page.id >= 0 && page.id < 32 && (part.libraryMask & (1u << page.id)) != 0)
            ++count;
    return count;
}

void PrintJson(const CVxUserLibrary& library)
{
    QJsonObject root;
    root.insert(QStringLiteral("name"), library.m_libName.ToQString());
    root.insert(QStringLiteral("version"), library.LibVersion);
    root.insert(QStringLiteral("objects"), library.GetObjectCount());
    QJsonArray pages;
    for (const CVxLibraryPage& page : library.GetPages()) {
        QJsonObject item;
        item.insert(QStringLiteral("id"), page.id);
        item.insert(QStringLiteral("name"), page.uniqueName.ToQString());
        item.insert(QStringLiteral("title"), page.localName.ToQString());
        item.insert(QStringLiteral("objects"), CountOnPage(library, page));
        pages.append(item);
    }
    root.insert(QStringLiteral("pages"), pages);
    QJsonArray items;
    for (const CVxPart& part : library.GetObjects()) {
        if (!part.inUse)
            continue;
        QJsonObject item;
        item.insert(QStringLiteral("number"), part.libObjID);
        item.insert(QStringLiteral("name"), part.caption.ToQString());
        item.insert(QStringLiteral("page"), PagesOf(part).ToQString());
        item.insert(QStringLiteral("width"), part.width);
        item.insert(QStringLiteral("depth"), part.height);
        item.insert(QStringLiteral("height"), part.zHeight);
        items.append(item);
    }
    root.insert(QStringLiteral("items"), items);
    fputs(QJsonDocument(root).toJson(QJsonDocument::Indented).constData(), stdout);
}

void PrintLibrary(const CVxUserLibrary& library, bool json)
{
    if (json) {
        PrintJson(library);
        return;
    }
    const std::vector<CVxLibraryPage>& pages = library.GetPages();
    printf("Library %s, version %d: %d objects on %d pages\n\nPages:\n",
           library.m_libName.ToQString().toUtf8().constData(), library.LibVersion, library.GetObjectCount(),
           static_cast<int>(pages.size()));
    for (const CVxLibraryPage& page : pages)
        printf("  %2d  %-12s %-22s %4d objects\n", page.id, page.uniqueName.ToQString().toUtf8().constData(),
               page.localName.ToQString().toUtf8().constData(), CountOnPage(library, page));
    printf("\nObjects:\n     #  number  %-32s %-24s size (cm)\n", "name", "page");
    int shown = 0;
    for (const CVxPart& part : library.GetObjects()) {
        if (!part.inUse)
            continue;
        printf("  %4d  %6d  %-32s %-24s %s x %s x %s\n", ++shown, part.libObjID,
               part.caption.ToQString().toUtf8().constData(), PagesOf(part).ToQString().toUtf8().constData(),
               DblSave(part.width).c_str(), DblSave(part.height).c_str(), DblSave(part.zHeight).c_str());
    }
}

} // namespace

int VxCliLibrary(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {}, {"--json"}, error))
        return VxCliUsageError("library", error);
    if (parsed.Positional().size() > 1)
        return VxCliUsageError("library", "expects at most one library file");
    if (parsed.Positional().empty()) {
        CVxAppCore* core = VX_GetCore();
        if (!core->IsLibraryInitialized())
            core->LibInitObjectLibrary();
        const CVxUserLibrary& library = core->GetUserLibrary();
        if (library.GetObjectCount() == 0)
            return VxCliFail(QStringLiteral("Library.pvl"), QStringLiteral("the catalogue holds no objects"));
        PrintLibrary(library, parsed.Has("--json"));
        return kVxCliOk;
    }
    const QString input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    if (!QFileInfo(input).isFile())
        return VxCliFail(input, QStringLiteral("no such file"));
    CVxUserLibrary library;
    if (!library.LoadFromFile(CVxStringW(input), CVxUserLibrary::LIB_LOAD_USER_PAGES, -1))
        return VxCliFail(input, QStringLiteral("not an object library"));
    PrintLibrary(library, parsed.Has("--json"));
    library.RemoveTempFiles();
    return kVxCliOk;
}

int VxCliCompressLibrary(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {}, {}, error))
        return VxCliUsageError("compress-library", error);
    if (parsed.Positional().size() != 2)
        return VxCliUsageError("compress-library", "expects a library file and an output file");
    const QString input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    const QString output = QString::fromLocal8Bit(parsed.Positional()[1].c_str());
    if (!QFileInfo(input).isFile())
        return VxCliFail(input, QStringLiteral("no such file"));
    if (!VxCliCheckOutput(output))
        return kVxCliFailed;
    const int flags = CVxUserLibrary::LIB_LOAD_USER_PAGES | CVxUserLibrary::LIB_LOAD_STANDARD;
    CVxUserLibrary library;
    if (!library.LoadFromFile(CVxStringW(input), flags, -1) || library.GetObjectCount() == 0)
        return VxCliFail(input, QStringLiteral("not an object library or no objects in it"));
    if (!library.SaveToFile(CVxStringW(output), -1, true))
        return VxCliFail(output, QStringLiteral("could not be written"));
    // What ships must read back whole.
    CVxUserLibrary check;
    const bool reread = check.LoadFromFile(CVxStringW(output), flags, -1);
    check.RemoveTempFiles();
    library.RemoveTempFiles();
    if (!reread || check.GetObjectCount() != library.GetObjectCount() ||
        check.GetPages().size() != library.GetPages().size())
        return VxCliFail(output, QStringLiteral("does not read back as written"));
    return kVxCliOk;
}
