#include "VxLocTestFiles.h"

#include "VxTestEnv.h"
#include "VxUtf8.h"

#include <QDir>

#include <cstdio>

CVxStringW VxLocTestFolder(const char* name)
{
    const CVxStringW folder = VxTestTempFolder() + CVxStringW(QString::fromUtf8(name)) + L"/";
    QDir dir(folder.ToQString());
    dir.removeRecursively();
    QDir().mkpath(folder.ToQString());
    return folder;
}

bool VxLocWriteFile(const CVxStringW& path, const std::string& bytes)
{
    FILE* file = fopen(VX_StringToUTF8(path).c_str(), "wb");
    if (!file)
        return false;
    const bool ok = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return fclose(file) == 0 && ok;
}

namespace {
std::string WithCrLf(const std::string& text)
{
    std::string out;
    for (char c : text) {
        if (c == '\n')
            out += "\r\n";
        else
            out += c;
    }
    return out;
}
} // namespace

std::string VxLocLanguageFile(const std::string& language, const std::string& languageId,
                              const std::string& tables, const std::string& extraMain)
{
    std::string text = "[Main]\nLanguage=" + language + "\nLanguageID=" + languageId + "\nEncoding=utf-8\n" +
                       extraMain + "\n" + tables;
    return "\xEF\xBB\xBF\r\n" + WithCrLf(text);
}
