#pragma once
// What the shared test main offers to every core test.

#include "CVxStringW.h"

#include <QString>

#include <ostream>

// A fresh temporary folder for this test program, ending in "/".
CVxStringW VxTestTempFolder();
// tests/data/, ending in "/".
CVxStringW VxTestDataFolder();

// Wide strings print as UTF-8 in failure messages.
inline void PrintTo(const CVxStringW& text, std::ostream* os)
{
    *os << '"' << text.ToQString().toStdString() << '"';
}
