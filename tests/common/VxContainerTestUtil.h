#pragma once
// Container entries built by hand, as the project container lays them down,
// for tests that compare written bytes or feed damaged containers.

#include <zlib.h>

#include <string>

inline const std::string& VxContainerHead()
{
    static const std::string head = "[Room]\r\nFileVersion=1020\r\nEncoding=utf-8\r\nCompression=zlib\r\n";
    return head;
}

inline std::string VxDeflate(const std::string& data, int level = 1)
{
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string out(size, '\0');
    compress2(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
              static_cast<uLong>(data.size()), level);
    out.resize(size);
    return out;
}

inline std::string VxRawEntry(const std::string& name, const std::string& data)
{
    return "[File]\r\nName=" + name + "\r\nDataSize=" + std::to_string(data.size()) + "\r\n" + data +
           "\r\n\r\n";
}

// With the size over a twelve-character field, as the writer patches it in.
inline std::string VxDeflatedEntry(const std::string& name, const std::string& data)
{
    const std::string packed = VxDeflate(data);
    std::string size = std::to_string(packed.size());
    size.resize(12, ' ');
    return "[File]\r\nName=" + name + "\r\nUncpSize=" + std::to_string(data.size()) + "\r\nDataSize=" + size +
           "\r\n" + packed + "\r\n\r\n";
}
