#include "CVxExternalLibraries.h"

#include "CVxOptions.h"
#include "IVxAppHelperCallback.h"

#include <algorithm>

void CVxExternalLibraries::RegisterLibrary(const CVxStringW& path)
{
    if (!m_options || path.IsEmpty())
        return;
    std::vector<CVxStringW>& paths = m_options->m_libAddLib;
    if (std::find(paths.begin(), paths.end(), path) != paths.end() || paths.size() >= maxEntries)
        return;
    m_options->m_extLibOpt.resize(paths.size());
    paths.push_back(path);
    m_options->m_extLibOpt.push_back(CVxStringW(std::to_wstring(VX_EXTLIB_OBJECTS)));
}

void CVxExternalLibraries::RemoveNonPresentItems()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!m_options || !host)
        return;
    std::vector<CVxStringW>& paths = m_options->m_libAddLib;
    std::vector<CVxStringW>& options = m_options->m_extLibOpt;
    options.resize(paths.size());
    for (size_t i = paths.size(); i-- > 0;) {
        if (!host->FileExists(paths[i]) || i >= maxEntries) {
            paths.erase(paths.begin() + static_cast<std::ptrdiff_t>(i));
            options.erase(options.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
}

int CVxExternalLibraries::GetCount() const
{
    return m_options ? static_cast<int>(std::min(m_options->m_libAddLib.size(), maxEntries)) : 0;
}

CVxStringW CVxExternalLibraries::GetPath(int index) const
{
    if (index < 0 || index >= GetCount())
        return CVxStringW();
    return m_options->m_libAddLib[static_cast<size_t>(index)];
}

unsigned CVxExternalLibraries::GetOptions(int index) const
{
    if (index < 0 || index >= GetCount() || static_cast<size_t>(index) >= m_options->m_extLibOpt.size())
        return VX_EXTLIB_OBJECTS;
    const int value = m_options->m_extLibOpt[static_cast<size_t>(index)].ToIntDef(-1);
    return value < 0 ? static_cast<unsigned>(VX_EXTLIB_OBJECTS) : static_cast<unsigned>(value);
}

bool CVxExternalLibraries::CanBeLoadedForType(int index, int type) const
{
    const unsigned options = GetOptions(index);
    if (options & VX_EXTLIB_DISABLED)
        return false;
    return type == typeObjects ? (options & VX_EXTLIB_OBJECTS) != 0 : (options & VX_EXTLIB_TEXTURES) != 0;
}

void CVxExternalLibraries::SetEnabled(int index, bool enabled)
{
    if (index < 0 || index >= GetCount())
        return;
    m_options->m_extLibOpt.resize(m_options->m_libAddLib.size());
    const unsigned options = GetOptions(index);
    const unsigned changed = enabled ? options & ~unsigned(VX_EXTLIB_DISABLED) : options | VX_EXTLIB_DISABLED;
    m_options->m_extLibOpt[static_cast<size_t>(index)] = CVxStringW(std::to_wstring(changed));
}

void CVxExternalLibraries::Remove(int index)
{
    if (index < 0 || index >= GetCount())
        return;
    m_options->m_extLibOpt.resize(m_options->m_libAddLib.size());
    m_options->m_libAddLib.erase(m_options->m_libAddLib.begin() + index);
    m_options->m_extLibOpt.erase(m_options->m_extLibOpt.begin() + index);
}
