// The trace log of a run.

#include "VxTestEnv.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <string>

namespace {
QByteArray ReadAll(const CVxStringW& path)
{
    QFile file(path.ToQString());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

TEST(Trace, OffUntilALogIsSet)
{
    CVxLogFile::Close();
    EXPECT_FALSE(CVxLogFile::IsLogged());
    VxTrace("nothing %d\n", 1); // must not crash or write anywhere
}

TEST(Trace, LinesCarryTheTimeAndAnOldLogIsKept)
{
    const CVxStringW path = VxTestTempFolder() + L"pverrlog.txt";
    ASSERT_TRUE(CVxLogFile::SetLogFile(path));
    VxTrace("Init - language dir: %s\n", "/opt/plaveno/Language");
    ASSERT_TRUE(CVxLogFile::SetLogFile(path)); // a second run
    VxTrace("StartTimer\n");
    const std::string tooLong(5000, 'x');
    VxTrace("%s", tooLong.c_str());
    CVxLogFile::Close();

    const QByteArray old = ReadAll(VxTestTempFolder() + L"pverrlog.old.txt");
    EXPECT_TRUE(QRegularExpression(
                    QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\| Init - language dir: "
                                   "/opt/plaveno/Language\\n$"))
                    .match(QString::fromUtf8(old))
                    .hasMatch())
        << old.toStdString();
    const QByteArray log = ReadAll(path);
    EXPECT_TRUE(log.contains(" | StartTimer\n"));
    EXPECT_TRUE(log.endsWith(" ---debug message too long--- \n"));
    EXPECT_LT(log.size(), 4200);
}
