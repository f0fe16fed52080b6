// compress-protos: the 3D prototype library in the form that the built-in
// viewer's scene takes it, one zlib stream whose inflated text is the plain
// library. The scene export inflates it straight into the scene file.

#include "VxCli.h"

#include <QFile>
#include <QFileInfo>

#include <zlib.h>

#include <cstring>

namespace {

// A library is a few hundred kilobytes of text; anything far larger is not
// one, and is refused before it is read into memory.
constexpr qint64 kMaxLibrarySize = 64 * 1024 * 1024;
constexpr char kVrmlHead[] = "#VRML V2.0 utf8";

bool Deflate(const QByteArray& text, QByteArray& packed)
{
    z_stream stream;
    memset(&stream, 0, sizeof(stream));
    if (deflateInit(&stream, Z_BEST_COMPRESSION) != Z_OK)
        return false;
    packed.resize(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(text.size()))));
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.constData()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    return result == Z_STREAM_END;
}

// Inflates at most `limit` bytes; false for a damaged stream or one that
// holds more.
bool Inflate(const QByteArray& packed, qint64 limit, QByteArray& text)
{
    z_stream stream;
    memset(&stream, 0, sizeof(stream));
    if (inflateInit(&stream) != Z_OK)
        return false;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    stream.avail_in = static_cast<uInt>(packed.size());
    char chunk[16384];
    int result = Z_OK;
    text.clear();
    while (result == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(chunk);
        stream.avail_out = sizeof(chunk);
        result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END)
            break;
        text.append(chunk, static_cast<qsizetype>(sizeof(chunk) - stream.avail_out));
        if (text.size() > limit) {
            result = Z_MEM_ERROR;
            break;
        }
    }
    inflateEnd(&stream);
    return result == Z_STREAM_END;
}

} // namespace

int VxCliCompressProtos(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {}, {}, error))
        return VxCliUsageError("compress-protos", error);
    if (parsed.Positional().size() != 2)
        return VxCliUsageError("compress-protos", "expects a prototype library and an output file");
    const QString input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    const QString output = QString::fromLocal8Bit(parsed.Positional()[1].c_str());
    const QFileInfo info(input);
    if (!info.isFile())
        return VxCliFail(input, QStringLiteral("no such file"));
    if (info.size() > kMaxLibrarySize)
        return VxCliFail(input, QStringLiteral("too large for a prototype library"));
    if (!VxCliCheckOutput(output))
        return kVxCliFailed;
    QFile in(input);
    if (!in.open(QIODevice::ReadOnly))
        return VxCliFail(input, QStringLiteral("can't be read"));
    const QByteArray text = in.read(kMaxLibrarySize + 1);
    if (text.size() > kMaxLibrarySize)
        return VxCliFail(input, QStringLiteral("too large for a prototype library"));
    if (!text.startsWith(kVrmlHead) || !text.contains("PROTO "))
        return VxCliFail(input, QStringLiteral("not a VRML 2.0 prototype library"));
    QByteArray packed;
    if (!Deflate(text, packed))
        return VxCliFail(input, QStringLiteral("could not be compressed"));
    // What ships must inflate to the very text it was made from.
    QByteArray check;
    if (!Inflate(packed, kMaxLibrarySize, check) || check != text)
        return VxCliFail(output, QStringLiteral("does not inflate to its source"));
    CVxCliOutput out(output);
    QFile file(out.TempPath());
    if (out.TempPath().isEmpty() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(packed) != packed.size() || !file.flush())
        return VxCliFail(output, QStringLiteral("could not be written"));
    file.close();
    return out.Commit() ? kVxCliOk : kVxCliFailed;
}
