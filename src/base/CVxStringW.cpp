#include "CVxStringW.h"

#include "CVxStringA.h"
#include "VxNumberText.h"

#include <QLocale>
#include <QString>

#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cwchar>
#include <stdexcept>

CVxStringW::CVxStringW(const QString& text) : CVxStringBase(text.toStdWString()) {}

CVxStringW::CVxStringW(double value) : CVxStringW(FromDoubleUsingLocale(value, -1)) {}

CVxStringW::CVxStringW(const CVxStringA& narrow)
{
    if (narrow.IsEmpty())
        return;
    std::wstring out(static_cast<size_t>(narrow.GetLength()) + 1, L'\0');
    size_t n = mbstowcs(out.data(), narrow.c_str(), out.size());
    if (n == static_cast<size_t>(-1))
        return;
    out.resize(n);
    m_s = std::move(out);
}

CVxStringW::operator QString() const
{
    return ToQString();
}

QString CVxStringW::ToQString() const
{
    return QString::fromStdWString(m_s);
}

CVxStringW& CVxStringW::sprintf(const wchar_t* format, ...)
{
    // vswprintf does not report the length it needs, so the buffer grows until
    // the text fits; 512 units cover almost every call.
    size_t size = 512;
    for (;;) {
        std::wstring buffer(size, L'\0');
        va_list args;
        va_start(args, format);
        int n = vswprintf(buffer.data(), size, format, args);
        va_end(args);
        if (n >= 0) {
            buffer.resize(static_cast<size_t>(n));
            m_s = std::move(buffer);
            return *this;
        }
        if (size >= (1u << 24)) {
            m_s.clear();
            return *this;
        }
        size *= 4;
    }
}

QLocale VX_NumberLocale()
{
    QLocale locale;
    // One language of the Qt enumeration formats numbers in a way that the
    // number edits can't read back; English stands in for it.
    if (static_cast<int>(locale.language()) == 289)
        locale = QLocale(QLocale::English);
    return locale;
}

double CVxStringW::ToDouble() const
{
    bool ok = false;
    double value = VX_NumberLocale().toDouble(ToQString(), &ok);
    if (!ok)
        throw std::invalid_argument("bad_cast");
    return value;
}

CVxStringW CVxStringW::FromDoubleUsingLocale(double value, int precision)
{
    QLocale locale = VX_NumberLocale();
    if (precision < 0) {
        locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
        return CVxStringW(locale.toString(value, 'g', precision));
    }
    return CVxStringW(locale.toString(value, 'f', precision));
}

CVxNumberText::CVxNumberText() : m_locale(VX_NumberLocale())
{
    m_locale.setNumberOptions(m_locale.numberOptions() | QLocale::OmitGroupSeparator);
}

CVxStringW CVxNumberText::operator()(double value) const
{
    return CVxStringW(m_locale.toString(value, 'g', -1));
}

CVxStringW CVxStringW::IntToHex(unsigned value, int digits, bool prefix)
{
    // Digits and "0x" only: widened without the locale's conversion.
    const std::string narrow = CVxStringA::IntToHex(value, digits, prefix).Std();
    return CVxStringW(std::wstring(narrow.begin(), narrow.end()));
}

CVxStringW CVxStringW::ExtractFileFolder() const
{
    int slash = ReverseFind(L'/');
    return slash < 0 ? CVxStringW() : Left(slash + 1);
}

CVxStringW CVxStringW::ExtractFileTitle() const
{
    return Mid(ReverseFind(L'/') + 1);
}

CVxStringW CVxStringW::ExtractFileTitleWithoutExt() const
{
    CVxStringW title = ExtractFileTitle();
    int dot = title.ReverseFind(L'.');
    return dot < 0 ? title : title.Left(dot);
}

CVxStringW CVxStringW::ExtractFileExt() const
{
    CVxStringW title = ExtractFileTitle();
    int dot = title.ReverseFind(L'.');
    return dot < 0 ? CVxStringW() : title.Mid(dot);
}

CVxStringW CVxStringW::FromWinPath() const
{
    CVxStringW result(m_s);
    for (wchar_t& c : result.m_s)
        if (c == L'\\')
            c = L'/';
    return result;
}
