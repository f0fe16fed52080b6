#pragma once
// Reads the record format from text in memory, the clipboard's text above
// all. The whole text is the one buffer; there is nothing to refill.

#include "CVxIniFileReader.h"

class CVxStringReader : public CVxIniFileReader
{
public:
    CVxStringReader(CVxStringA text, unsigned codePage);

    bool ReadNewBuffer() override { return false; }
    bool IsOpened() override { return true; }

private:
    CVxStringA m_text;
};
