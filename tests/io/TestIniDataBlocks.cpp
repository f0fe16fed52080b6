// Binary blocks behind key lines, raw and deflated, as the project container
// stores its pictures.

#include "CVxIniFileReader.h"
#include "CVxStringReader.h"
#include "VxIniTestUtil.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <vector>

namespace {

// Bytes that look like record text as well: line ends, heads, "=".
std::string SampleBytes(size_t size)
{
    std::string bytes(size, '\0');
    const char alphabet[] = "\r\n[]=ab\0\xFF";
    for (size_t i = 0; i < size; ++i)
        bytes[i] = alphabet[(i * 7 + i / 13) % (sizeof(alphabet) - 1)];
    return bytes;
}

std::string Deflate(const std::string& data)
{
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string out(size, '\0');
    compress2(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
              static_cast<uLong>(data.size()), 1);
    out.resize(size);
    return out;
}

// One entry as the container writes it, with the section after it.
std::string Entry(const std::string& name, const std::string& data, size_t uncompressedSize = 0)
{
    std::string text = "[File]\r\nName=" + name + "\r\n";
    if (uncompressedSize > 0)
        text += "UncpSize=" + std::to_string(uncompressedSize) + "\r\n";
    return text + "DataSize=" + std::to_string(data.size()) + "\r\n" + data + "\r\n\r\n";
}

const std::string s_tail = "[Next]\r\nKey=Value\r\n";

// Reads `text` from a file, handing each "DataSize" to `onData`.
std::string DumpWithData(const std::string& text,
                         const std::function<void(unsigned size, CVxIniFileReader*)>& onData)
{
    CVxIniFileReader reader(VxWriteTempFile(L"blocks.pvp", text), 0);
    return VxDumpRecords(reader, [&](const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* r) {
        if (key != "DataSize")
            return false;
        onData(static_cast<unsigned>(value.ToIntDef(0)), r);
        return true;
    });
}

} // namespace

TEST(IniDataBlockRaw, ReadSkipAndCopyLeaveTheReaderAtTheNextLine)
{
    // Larger than the buffer, and starting at an odd place in it; the large
    // one is read in big pieces past the buffer, with a tail of no full piece.
    for (const size_t size : {size_t{5000}, size_t{300001}}) {
        SCOPED_TRACE(size);
        const std::string data = SampleBytes(size);
        const std::string text = "[Room]\r\nPad=xyz\r\n" + Entry("a.bin", data) + s_tail;
        const std::string expected = "[Room]\nPad=xyz\n[File]\nName=a.bin\n[Next]\nKey=Value\n";

        std::vector<char> buffer;
        EXPECT_EQ(DumpWithData(text,
                               [&](unsigned count, CVxIniFileReader* r) {
                                   buffer.resize(count);
                                   EXPECT_TRUE(r->ReadDataBlock(count, buffer.data()));
                               }),
                  expected);
        EXPECT_TRUE(std::string(buffer.begin(), buffer.end()) == data);

        EXPECT_EQ(DumpWithData(text, [](unsigned count,
                                        CVxIniFileReader* r) { EXPECT_TRUE(r->SkipDataBlock(count)); }),
                  expected);

        const CVxStringW copy = VxTempPath(L"a.bin");
        EXPECT_EQ(DumpWithData(text,
                               [&](unsigned count, CVxIniFileReader* r) {
                                   EXPECT_TRUE(r->ReadDataBlockToFile(count, copy));
                               }),
                  expected);
        EXPECT_TRUE(VxReadWholeFile(copy) == data);
    }
}

TEST(IniDataBlockRaw, StringReaderReadsBlocksFromItsText)
{
    const std::string data = SampleBytes(300);
    CVxStringReader reader(CVxStringA(Entry("b.bin", data) + s_tail), 0);
    std::string got;
    EXPECT_EQ(VxDumpRecords(reader,
                            [&](const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* r) {
                                if (key != "DataSize")
                                    return false;
                                got.resize(static_cast<size_t>(value.ToIntDef(0)));
                                EXPECT_TRUE(r->ReadDataBlock(static_cast<unsigned>(got.size()), got.data()));
                                return true;
                            }),
              "[File]\nName=b.bin\n[Next]\nKey=Value\n");
    EXPECT_TRUE(got == data);
}

TEST(IniDataBlockRaw, TruncatedBlockEndsTheData)
{
    for (const size_t size : {size_t{3000}, size_t{300000}}) {
        SCOPED_TRACE(size);
        const std::string data = SampleBytes(size);
        const size_t kept = size * 5 / 6;
        std::string text = Entry("c.bin", data) + s_tail;
        text.resize(text.find(data) + kept);
        const CVxStringW copy = VxTempPath(L"c.bin");
        EXPECT_EQ(DumpWithData(text,
                               [&](unsigned count, CVxIniFileReader* r) {
                                   EXPECT_FALSE(r->ReadDataBlockToFile(count, copy));
                               }),
                  "[File]\nName=c.bin\n");
        EXPECT_TRUE(VxReadWholeFile(copy) == data.substr(0, kept));

        EXPECT_EQ(DumpWithData(text, [](unsigned count,
                                        CVxIniFileReader* r) { EXPECT_FALSE(r->SkipDataBlock(count)); }),
                  "[File]\nName=c.bin\n");
    }
}

TEST(IniDataBlockRaw, WriteDataToFileWritesAllPieces)
{
    const std::string data = SampleBytes(4100);
    const CVxStringW path = VxTempPath(L"pieces.bin");
    ASSERT_TRUE(CVxIniFileReader::WriteDataToFile(data.data(), static_cast<unsigned>(data.size()), path));
    EXPECT_TRUE(VxReadWholeFile(path) == data);
}

TEST(IniDataBlockCompressed, InflatesToTheFileAndReadsOn)
{
    const std::string data = SampleBytes(100000);
    const std::string packed = Deflate(data);
    const CVxStringW out = VxTempPath(L"big.bmp");
    EXPECT_EQ(DumpWithData(Entry("big.bmp", packed, data.size()) + s_tail,
                           [&](unsigned size, CVxIniFileReader* r) {
                               EXPECT_TRUE(r->UncompressDataBlockToFile(size, out, 100000));
                           }),
              "[File]\nName=big.bmp\nUncpSize=100000\n[Next]\nKey=Value\n");
    EXPECT_TRUE(VxReadWholeFile(out) == data);
}

TEST(IniDataBlockCompressed, BlockToTheEndOfTheFile)
{
    const std::string data = SampleBytes(5000);
    const CVxStringW out = VxTempPath(L"rest.txt");
    EXPECT_EQ(DumpWithData("[File]\r\nDataSize=1\r\n" + Deflate(data),
                           [&](unsigned, CVxIniFileReader* r) {
                               EXPECT_TRUE(r->UncompressDataBlockToFile(CVxIniFileReader::VX_INI_DATA_TO_END,
                                                                        out, 5000));
                           }),
              "[File]\n");
    EXPECT_TRUE(VxReadWholeFile(out) == data);
}

TEST(IniDataBlockCompressed, CorruptStreamStopsButTheReaderGoesOn)
{
    const std::string data = SampleBytes(50000);
    std::string packed = Deflate(data);
    for (size_t i = packed.size() / 2; i < packed.size() / 2 + 64; ++i)
        packed[i] = static_cast<char>(packed[i] ^ 0x5A);
    const CVxStringW out = VxTempPath(L"corrupt.wrl");
    EXPECT_EQ(DumpWithData(Entry("corrupt.wrl", packed, data.size()) + s_tail,
                           [&](unsigned size, CVxIniFileReader* r) {
                               EXPECT_FALSE(r->UncompressDataBlockToFile(size, out, 50000));
                           }),
              "[File]\nName=corrupt.wrl\nUncpSize=50000\n[Next]\nKey=Value\n");
    // Damage is found only some way behind it, so what was written may end
    // in garbage; it never runs past the stated size.
    EXPECT_LE(VxReadWholeFile(out).size(), data.size());
}

TEST(IniDataBlockCompressed, OutputIsCappedAtTheStatedSize)
{
    const std::string data(1000000, 'z');
    const CVxStringW out = VxTempPath(L"bomb.txt");
    EXPECT_EQ(DumpWithData(Entry("bomb.txt", Deflate(data), 1000) + s_tail,
                           [&](unsigned size, CVxIniFileReader* r) {
                               EXPECT_FALSE(r->UncompressDataBlockToFile(size, out, 1000));
                           }),
              "[File]\nName=bomb.txt\nUncpSize=1000\n[Next]\nKey=Value\n");
    EXPECT_EQ(VxReadWholeFile(out), std::string(1000, 'z'));
}

TEST(IniDataBlockCompressed, TruncatedStreamEndsTheData)
{
    const std::string data = SampleBytes(40000);
    const std::string packed = Deflate(data);
    std::string text = Entry("cut.pvp", packed, data.size()) + s_tail;
    text.resize(text.find(packed) + packed.size() / 2);
    const CVxStringW out = VxTempPath(L"cut.pvp");
    EXPECT_EQ(DumpWithData(text,
                           [&](unsigned size, CVxIniFileReader* r) {
                               EXPECT_FALSE(r->UncompressDataBlockToFile(size, out, 40000));
                           }),
              "[File]\nName=cut.pvp\nUncpSize=40000\n");
    const std::string written = VxReadWholeFile(out);
    EXPECT_LT(written.size(), data.size());
    EXPECT_TRUE(data.compare(0, written.size(), written) == 0);
}

TEST(IniDataBlockCompressed, UnwritableTargetSkipsTheBlock)
{
    const std::string packed = Deflate(SampleBytes(3000));
    EXPECT_EQ(DumpWithData(Entry("x.txt", packed, 3000) + s_tail,
                           [&](unsigned size, CVxIniFileReader* r) {
                               EXPECT_FALSE(
                                   r->UncompressDataBlockToFile(size, VxTempPath(L"none/x.txt"), 3000));
                           }),
              "[File]\nName=x.txt\nUncpSize=3000\n[Next]\nKey=Value\n");
}
