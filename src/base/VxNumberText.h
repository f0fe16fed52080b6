#pragma once
// Many numbers as the screen writes them, for tables of figures: the same
// text as CVxStringW(double), with the locale looked up once instead of for
// every number.

#include "CVxStringW.h"

#include <QLocale>

// The locale of number texts on screen.
QLocale VX_NumberLocale();

class CVxNumberText
{
public:
    CVxNumberText();
    CVxStringW operator()(double value) const;

private:
    QLocale m_locale;
};
