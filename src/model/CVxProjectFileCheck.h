#pragma once
// A look at a file before it is loaded: is it a project (or a library) at
// all, and did it reach us whole? Anything without the head of the record
// format would load as a new default project, and a file that lost its end
// would load as a smaller one without a word; saving either back would
// destroy the user's file. Opening, merging, recovery, reloading, the
// command-line tool and the library loader all ask here first.
//
// The look is cheap: the head is read, and the run of sections is walked
// without building anything; the blocks of a container are skipped, not
// unpacked. What only unpacking can show (a broken stream, a size that
// disagrees) is reported by the loader itself, see CVxProject::WasDamagedOnLoad.

#include "CVxStringW.h"

class CVxProjectFileCheck
{
public:
    // What the file is expected to hold.
    enum EKind
    {
        VX_EXPECT_PROJECT,
        VX_EXPECT_LIBRARY,
    };
    enum EVerdict
    {
        // Whole, as far as a look can tell.
        VX_FILE_GOOD,
        // The right kind of file, but cut short: what it holds may be read.
        VX_FILE_DAMAGED,
        // Nothing that could be opened as the expected kind.
        VX_FILE_REFUSED,
    };
    enum EReason
    {
        VX_REASON_NONE,
        VX_REASON_MISSING,
        VX_REASON_FOLDER,
        VX_REASON_SPECIAL,
        VX_REASON_UNREADABLE,
        VX_REASON_EMPTY,
        VX_REASON_NOT_PROJECT,
        VX_REASON_LIBRARY,
        VX_REASON_NOT_LIBRARY,
        VX_REASON_CUT_SHORT,
        VX_REASON_CORRUPT,
    };

    static CVxProjectFileCheck Check(const CVxStringW& path, EKind kind = VX_EXPECT_PROJECT);

    EVerdict GetVerdict() const { return m_verdict; }
    EReason GetReason() const { return m_reason; }
    bool IsRefused() const { return m_verdict == VX_FILE_REFUSED; }
    bool IsDamaged() const { return m_verdict == VX_FILE_DAMAGED; }
    // The "FileVersion" of the head, 0 when there was none.
    int GetFileVersion() const { return m_fileVersion; }
    bool IsCompressed() const { return m_compressed; }

    // The reason in English, as the command-line tool prints it.
    static const wchar_t* ReasonText(EReason reason);
    // The reason in the user's language, for message boxes.
    static CVxStringW LocalizedReason(EReason reason);

private:
    CVxProjectFileCheck(EVerdict verdict, EReason reason) : m_verdict(verdict), m_reason(reason) {}

    EVerdict m_verdict = VX_FILE_GOOD;
    EReason m_reason = VX_REASON_NONE;
    int m_fileVersion = 0;
    bool m_compressed = false;
};
