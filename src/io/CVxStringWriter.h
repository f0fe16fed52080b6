#pragma once
// The record format built in memory, for the clipboard. The text opens with
// the "[Plaveno Clipboard]" section, empty, by which a paste recognises it.
// There is no file, so 64-bit integers are not written.

#include "CVxIniWriter.h"

class CVxStringWriter : public CVxIniWriter
{
public:
    CVxStringWriter();

    bool IsOpened() override { return true; }
    void StartSection(CVxStringA name) override;
    void WriteInteger(const char* key, int value) override;
    void WriteString(const char* key, const CVxStringW& value) override;
    void WriteDouble(const char* key, double value) override;

    const CVxStringA& GetString() const { return m_text; }

private:
    CVxStringA m_text;
};
