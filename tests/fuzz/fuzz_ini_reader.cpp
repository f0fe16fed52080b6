// Feeds arbitrary bytes to the record reader, from memory and from a file,
// through every section, with a client that takes data blocks behind keys as
// the project container does.

#include "CVxIniFileReader.h"
#include "CVxStringReader.h"
#include "IVxAppHelperCallback.h"
#include "IVxReadIniClient.h"

#include <QFile>

#include <algorithm>
#include <cstdint>
#include <vector>

CVxStringW VxFuzzTempFolder();

namespace {

// Limits of what the client lets a size in the input cost: memory for blocks
// read into a buffer, disk for inflated ones.
constexpr unsigned s_maxBuffer = 1u << 20;
constexpr unsigned s_maxInflated = 1u << 20;

class CVxFuzzClient : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override
    {
        const unsigned size = static_cast<unsigned>(value.ToIntDef(0));
        if (key == "UncpSize") {
            m_uncompressedSize = std::min(size, s_maxInflated);
        } else if (key == "DataSize") {
            if (m_uncompressedSize > 0)
                reader->UncompressDataBlockToFile(size, VxFuzzTempFolder() + L"inflated.bin",
                                                  m_uncompressedSize);
            else
                reader->ReadDataBlockToFile(size, VxFuzzTempFolder() + L"raw.bin");
            m_uncompressedSize = 0;
        } else if (key == "RestSize") {
            reader->UncompressDataBlockToFile(CVxIniFileReader::VX_INI_DATA_TO_END,
                                              VxFuzzTempFolder() + L"rest.bin",
                                              std::min(size, s_maxInflated));
        } else if (key == "SkipSize") {
            reader->SkipDataBlock(size);
        } else if (key == "ReadSize") {
            if (size <= s_maxBuffer) {
                std::vector<char> buffer(size);
                reader->ReadDataBlock(size, buffer.data());
            } else {
                reader->SkipDataBlock(size);
            }
        } else if (key == "Line") {
            bool eof = false;
            reader->ReadLineFromFile(eof);
        } else if (key == "Path") {
            reader->MakeAbsolutePath(value);
        }
    }

private:
    unsigned m_uncompressedSize = 0;
};

void ReadAll(CVxIniFileReader& reader)
{
    CVxFuzzClient client;
    reader.SetPathTransformer(&client);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty())
        reader.ReadSection(&client);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const char* bytes = reinterpret_cast<const char*>(data);
    {
        CVxStringReader reader(CVxStringA(bytes, static_cast<int>(size)), 65001);
        ReadAll(reader);
    }
    const CVxStringW path = VxFuzzTempFolder() + L"input.pvp";
    // A new file each time: truncating one makes ext4 flush it on close,
    // which would slow the fuzzer down tenfold.
    QFile::remove(path.ToQString());
    QFile file(path.ToQString());
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(bytes, static_cast<qint64>(size));
    file.close();
    {
        CVxIniFileReader reader(path, 0);
        ReadAll(reader);
    }
    return 0;
}
