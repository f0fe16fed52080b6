#pragma once
// Writes a compressed project: a plain head, then one "[File]" entry per file
// that the project refers to, and last the project's own text as an entry.
//
// The text goes through the base writer into a temporary file. Every file
// path that the text mentions passes through MakeRelativePath, which embeds
// the file once, in the order of first mention, and leaves its bare name in
// the text. Finalize appends the text itself.
//
// An entry:
//     [File]
//     Name=<bare name>
//     UncpSize=<bytes>               only for a deflated file
//     DataSize=<bytes>               padded to 12 characters when deflated
//     <data>
//     <CR LF CR LF>

#include "CVxIniWriter.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

// What a container is written for: a project, or an object library, which
// has its own head. The records sit below the documents, so the writer knows
// its owner by this interface alone.
class IVxCompressedFileOwner
{
public:
    virtual ~IVxCompressedFileOwner() = default;
    // The head lines of the container, ahead of the first entry.
    virtual void WriteCompressedFileHeader(FILE* file) const = 0;
    // The path of the owner's own copy of a file it refers to; the copy is
    // what gets embedded.
    virtual CVxStringW AddFileToProject(const CVxStringW& path) = 0;
    // Whether the file may become part of the container at all; a file
    // that the owner's text named outside its folders may not.
    virtual bool MayEmbed(const CVxStringW& /*path*/) const { return true; }
};

class CVxCompressIniWriter : public CVxIniWriter
{
public:
    // Opens the text at `tempPath` as a plain writer would, and the container
    // at `outputPath`, into which it writes the owner's head and an empty
    // line. Without an owner files are embedded as they are.
    CVxCompressIniWriter(const CVxStringW& outputPath, const CVxStringW& tempPath,
                         IVxCompressedFileOwner* owner);
    ~CVxCompressIniWriter() override;

    bool IsOpened() override;
    // Appends the text as the last entry and closes both files.
    void Finalize() override;
    // Embeds the file and returns its bare name. A file that can't be read
    // keeps its reference, relative to the container's folder.
    CVxStringW MakeRelativePath(CVxStringW& path) override;
    // Embeds the file only when it is a plain file whose content fits
    // `role`; MakeRelativePath takes the role from the file's extension.
    // Anything else keeps its reference and is not embedded.
    CVxStringW MakeRelativePathAs(CVxStringW& path, EVxFileRole role) override;

    // Writes one entry from `source`, deflated or raw by the extension of
    // `path`. False when the container could not take it.
    bool AppendFileToOutput(FILE* source, const CVxStringW& path);

    // True when every byte reached the container and it was closed cleanly;
    // only then may it replace a project file.
    bool Succeeded() const { return m_finalized && !m_failed; }

    // Whether files of this extension (with its dot, any case) are deflated.
    static bool IsCompressedExtension(const CVxStringW& ext);

private:
    // MakeRelativePath for a path met for the first time in this save.
    CVxStringW ResolveAndEmbed(const CVxStringW& path, EVxFileRole role);
    bool CompressFile(FILE* source, uint64_t& written);
    bool CopyRaw(FILE* source, int64_t size);

    FILE* m_output = nullptr;
    std::vector<CVxStringW> m_embedded;
    // What each path given to MakeRelativePath came out as. Thousands of
    // objects may wear the same texture; the owner checks its copy of a file
    // byte by byte, which is needed once per save, not once per mention.
    std::unordered_map<std::wstring, CVxStringW> m_resolved;
    // The copy buffer of raw entries.
    std::vector<char> m_piece;
    IVxCompressedFileOwner* m_owner = nullptr;
    CVxStringW m_outputFolder;
    bool m_finalized = false;
    bool m_failed = false;
};
