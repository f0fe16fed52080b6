#include "CVxUtils.h"

namespace {

// Texture paths in projects start with this mark instead of the folder of the
// built-in texture library, so that projects survive a moved installation.
const wchar_t* const s_builtInMark = L"{$BT}";

CVxStringW& BuiltInTextureFolder()
{
    static CVxStringW folder;
    return folder;
}

// A URL such as "http://..." is never a file of ours; the position above 0
// keeps a path that merely starts with "://" a path.
bool IsUrl(const CVxStringW& path)
{
    return path.Find(L"://") > 0;
}

} // namespace

CVxStringW CVxUtils::MakeRelativePath(const CVxStringW& path, const CVxStringW& folder)
{
    if (path.IsEmpty() || IsUrl(path))
        return path;
    const CVxStringW& textures = GetBuiltInTextureFolder();
    if (ContainsPath(path, textures))
        return CVxStringW(s_builtInMark) + path.Mid(textures.GetLength());
    if (ContainsPath(path, folder))
        return path.Mid(folder.GetLength());
    return path;
}

CVxStringW CVxUtils::MakeFullPath(const CVxStringW& path, const CVxStringW& base)
{
    if (path.IsEmpty() || IsUrl(path))
        return path;
    const CVxStringW result = path.FromWinPath();
    const CVxStringW mark(s_builtInMark);
    const CVxStringW& textures = GetBuiltInTextureFolder();
    if (!textures.IsEmpty() && result.StartsWith(mark))
        return textures + result.Mid(mark.GetLength());
    if (result.GetLength() >= 3 && result[0] == L'/')
        return result;
    return base + result;
}

bool CVxUtils::ContainsPath(const CVxStringW& path, const CVxStringW& folder)
{
    return path.GetLength() >= 2 && folder.GetLength() >= 2 && folder.GetLength() < path.GetLength() &&
           path.StartsWith(folder);
}

void CVxUtils::SetBuiltInTextureFolder(const CVxStringW& folder)
{
    CVxStringW& stored = BuiltInTextureFolder();
    stored = folder;
    if (!stored.IsEmpty() && !stored.EndsWith(CVxStringW(L"/")))
        stored += L'/';
}

const CVxStringW& CVxUtils::GetBuiltInTextureFolder()
{
    return BuiltInTextureFolder();
}
