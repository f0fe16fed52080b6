// The 3D prototype library beside the catalogue: every prototype that the
// scene export instantiates, with the interface it instantiates it by, and
// a LibraryObject prototype for every catalogue object that has a 3D form.

#include "CVxPart.h"
#include "CVxUserLibrary.h"
#include "VxLibraryTestUtil.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

// Prototype name to its fields as "type name", in declaration order.
using ProtoFields = std::map<QString, QStringList>;

// The interface of each PROTO up to its matching bracket: default values
// such as "[]" of an MFNode field nest inside it.
ProtoFields ReadProtos(const QString& path, QStringList& repeated)
{
    QFile file(path);
    ProtoFields protos;
    if (!file.open(QIODevice::ReadOnly))
        return protos;
    const QString text = QString::fromUtf8(file.readAll());
    const QRegularExpression head(QStringLiteral(R"(^PROTO\s+(\w+)\s*\[)"),
                                  QRegularExpression::MultilineOption);
    const QRegularExpression field(QStringLiteral(R"((?:field|exposedField)\s+(\w+)\s+(\w+))"));
    for (auto it = head.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch proto = it.next();
        qsizetype end = proto.capturedEnd();
        for (int depth = 1; end < text.size() && depth > 0; ++end)
            depth += text[end] == QLatin1Char('[') ? 1 : text[end] == QLatin1Char(']') ? -1 : 0;
        QStringList fields;
        const QString interface = text.mid(proto.capturedEnd(), end - proto.capturedEnd());
        for (auto f = field.globalMatch(interface); f.hasNext();) {
            const QRegularExpressionMatch one = f.next();
            fields << one.captured(1) + QLatin1Char(' ') + one.captured(2);
        }
        if (protos.count(proto.captured(1)) != 0)
            repeated << proto.captured(1);
        protos[proto.captured(1)] = fields;
    }
    return protos;
}

QStringList Fields(std::initializer_list<const char*> list)
{
    QStringList fields;
    for (const char* f : list)
        fields << QString::fromLatin1(f);
    return fields;
}

} // namespace

TEST(ProtoLibrary, HoldsEveryPrototypeOfTheSceneWithItsFields)
{
    QStringList repeated;
    const ProtoFields protos = ReadProtos(QStringLiteral(PLAVENO_SOURCE_DIR "/data/library.wrl"), repeated);
    ASSERT_FALSE(protos.empty());
    EXPECT_TRUE(repeated.isEmpty()) << repeated.join(' ').toStdString();

    const QStringList appearance = Fields({"SFNode appearance"});
    std::map<QString, QStringList> fixed;
    for (const char* name :
         {"Rectangle", "Circle", "Ellipse", "Triangle", "Hexagon", "Octagon", "Door", "Window", "Arrow",
          "Ellipse_LowPoly", "CornerSofaBackL", "CornerSofaCornerL", "CornerSofaExtensionL",
          "CornerSofaBackR", "CornerSofaCornerR", "CornerSofaExtensionR"})
        fixed[QString::fromLatin1(name)] = appearance;
    for (int handle = 0; handle < CVxPart::GetHandleTypeCount(ptDoor, 0); ++handle)
        fixed[QStringLiteral("DoorHandleModel%1").arg(handle)] = appearance;
    for (const char* name : {"UserPicLibraryObject93", "UserPicLibraryObject171", "UserPicLibraryObject172",
                             "UserPicLibraryObject267", "UserPicLibraryObject276"})
        fixed[QString::fromLatin1(name)] = Fields({"SFNode texture"});
    fixed[QStringLiteral("OverlayLibraryObject267")] = Fields({"SFNode appearance", "SFNode texture"});
    fixed[QStringLiteral("BBoxRect")] = Fields({"SFNode geom"});
    fixed[QStringLiteral("TriWall")] =
        Fields({"SFNode appearL", "SFNode appearR", "MFVec3f points", "MFVec2f texPoints"});
    const QStringList door = Fields({"SFRotation OpenRot", "SFFloat ClosedRot", "SFVec3f scale",
                                     "MFNode doormodel", "MFNode handlemodel"});
    fixed[QStringLiteral("OpenDoorST")] = door;
    fixed[QStringLiteral("SlidingDoorST")] = Fields(
        {"SFVec3f OpenRot", "SFFloat ClosedRot", "SFVec3f scale", "MFNode doormodel", "MFNode handlemodel"});
    for (const char* name : {"FoldingDoorST", "FoldingDoorST3", "FoldingDoorST4"})
        fixed[QString::fromLatin1(name)] =
            Fields({"SFRotation OpenRot", "SFFloat ClosedRot", "SFVec3f scale", "SFRotation OpenRot2",
                    "SFVec3f shift2", "MFNode doormodel", "MFNode handlemodel"});
    fixed[QStringLiteral("GarageDoor")] =
        Fields({"SFRotation OpenRot", "SFFloat ClosedRot", "SFVec3f scale", "SFNode appearance"});
    for (const char* name : {"GarageDoor1", "GarageDoor2"})
        fixed[QString::fromLatin1(name)] = Fields({"SFRotation OpenRot", "SFFloat ClosedRot", "SFVec3f scale",
                                                   "SFVec3f shift2", "SFNode appearance"});
    fixed[QStringLiteral("WindowSub0")] = Fields({"SFNode appearance", "SFColor colorW"});
    for (const auto& [name, fields] : fixed) {
        const auto found = protos.find(name);
        ASSERT_NE(found, protos.end()) << name.toStdString();
        EXPECT_EQ(found->second.join(", ").toStdString(), fields.join(", ").toStdString())
            << name.toStdString();
    }

    // Each object of the catalogue with a 3D form, by its library number;
    // objects with a front colour are written with a second appearance.
    CVxUserLibrary catalogue;
    ASSERT_TRUE(
        catalogue.LoadFromFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/data/Library.pvl")),
                               CVxUserLibrary::LIB_LOAD_USER_PAGES | CVxUserLibrary::LIB_LOAD_STANDARD, -1));
    std::set<int> numbers;
    for (const CVxPart& part : catalogue.GetObjects()) {
        if (!part.inUse || part.libObjID <= 0 || part.libObjID > 1199 || !part.HasCap(capHas3D))
            continue;
        numbers.insert(part.libObjID);
        const QString name = QStringLiteral("LibraryObject%1").arg(part.libObjID);
        const auto found = protos.find(name);
        ASSERT_NE(found, protos.end()) << name.toStdString() << " " << part.caption.ToQString().toStdString();
        const QStringList expected =
            part.HasCap(capFrontColor) ? Fields({"SFNode appearance", "SFNode appearanceFront"}) : appearance;
        EXPECT_EQ(found->second.join(", ").toStdString(), expected.join(", ").toStdString())
            << name.toStdString();
    }
    catalogue.RemoveTempFiles();
    EXPECT_GT(numbers.size(), 250u);
    // A plan symbol without a 3D form has no model.
    EXPECT_EQ(protos.count(QStringLiteral("LibraryObject226")), 0u);
}
