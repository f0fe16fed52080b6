#pragma once
// Helpers of the record format tests: files in the test's temporary folder,
// and clients that show what a reader delivered as readable text.

#include "CVxIniFileReader.h"
#include "IVxReadIniClient.h"
#include "VxTestEnv.h"
#include "VxUtf8.h"

#include <QFile>

#include <functional>
#include <string>
#include <utility>

inline CVxStringW VxTempPath(const wchar_t* name)
{
    return VxTestTempFolder() + name;
}

inline CVxStringW VxWriteTempFile(const wchar_t* name, const std::string& bytes)
{
    const CVxStringW path = VxTempPath(name);
    QFile file(path.ToQString());
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return path;
}

inline std::string VxReadWholeFile(const CVxStringW& path)
{
    QFile file(path.ToQString());
    if (!file.open(QIODevice::ReadOnly))
        return "<missing>";
    return file.readAll().toStdString();
}

// A client that hands each key to a function, for tests that read data blocks.
class CVxFunctionClient : public IVxReadIniClient
{
public:
    using Handler = std::function<void(const CVxStringA&, const CVxStringW&, CVxIniFileReader*)>;
    explicit CVxFunctionClient(Handler handler) : m_handler(std::move(handler)) {}
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override
    {
        m_handler(key, value, reader);
    }

private:
    Handler m_handler;
};

// What a test does with a key before it is recorded; true when it took the
// key, a data block say, and it should not be listed.
using VxKeyHook = std::function<bool(const CVxStringA&, const CVxStringW&, CVxIniFileReader*)>;

// Reads every section and lists what arrived, one line each: "[Room]",
// "Width=5".
inline std::string VxDumpRecords(CVxIniFileReader& reader, const VxKeyHook& hook = nullptr)
{
    std::string dump;
    CVxFunctionClient recorder([&](const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* r) {
        if (!hook || !hook(key, value, r))
            dump += key.Std() + "=" + VX_StringToUTF8(value).Std() + "\n";
    });
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        dump += "[" + reader.GetSectionName().Std() + "]\n";
        reader.ReadSection(&recorder);
    }
    return dump;
}

inline std::string VxDumpText(const std::string& text, unsigned codePage = 0)
{
    const CVxStringW path = VxWriteTempFile(L"dump.ini", text);
    CVxIniFileReader reader(path, codePage);
    return VxDumpRecords(reader);
}
