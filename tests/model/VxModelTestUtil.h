#pragma once
// Helpers of the document model tests: writing a section into clipboard text
// and reading it back, and a tolerant comparison of plan points that prints
// them on failure.

#include "CVxDPoint.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "IVxReadIniClient.h"
#include "VxEps.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

// A path below the test program's temporary folder, its folders made.
inline CVxStringW TempPath(const QString& name)
{
    const CVxStringW path = VxTestTempFolder() + CVxStringW(name);
    QDir().mkpath(path.ExtractFileFolder().ToQString());
    return path;
}

inline CVxStringW WriteFile(const QString& name, const std::string& bytes)
{
    const CVxStringW path = TempPath(name);
    QFile file(path.ToQString());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return path;
}

inline std::string ReadFile(const CVxStringW& path)
{
    QFile file(path.ToQString());
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "<missing>";
}

// Reads the section `name` of record text into `client`; false when the text
// has no such section.
inline bool VxReadSection(const CVxStringA& text, const char* name, IVxReadIniClient* client)
{
    CVxStringReader reader(text, 0);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName() == name) {
            reader.ReadSection(client);
            return true;
        }
        reader.ReadSection(nullptr);
    }
    return false;
}

// The lines of the section `name`, each ended by "\n", without the head.
inline std::string VxSectionText(const CVxStringA& text, const char* name)
{
    const std::string all = text.Std();
    const std::string head = std::string("[") + name + "]\r\n";
    size_t start = all.find(head);
    if (start == std::string::npos)
        return "<no section>";
    start += head.size();
    std::string lines;
    for (size_t pos = start; pos < all.size();) {
        size_t end = all.find("\r\n", pos);
        if (end == std::string::npos)
            end = all.size();
        const std::string line = all.substr(pos, end - pos);
        if (line.empty() || line[0] == '[')
            break;
        lines += line + "\n";
        pos = end + 2;
    }
    return lines;
}

inline ::testing::AssertionResult VxPointNear(const char* actualText, const char* expectedText,
                                              const CVxDPoint& actual, const CVxDPoint& expected)
{
    if (std::fabs(actual.x - expected.x) < 1e-6 && std::fabs(actual.y - expected.y) < 1e-6)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actualText << " is (" << actual.x << ", " << actual.y << "), " << expectedText << " is ("
           << expected.x << ", " << expected.y << ")";
}

#define EXPECT_POINT_NEAR(actual, expected) EXPECT_PRED_FORMAT2(VxPointNear, actual, expected)
