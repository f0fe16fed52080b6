#include "CVx3dSceneSwitches.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace {
// Two digits in the names: no scene has more floors or layers.
constexpr int kMaxIndex = 99;
constexpr size_t kMaxLayersPerFloor = 100;
// A line longer than this is not one of the export's switch lines.
constexpr qint64 kMaxLineLength = 64 * 1024;
} // namespace

SVxFloorVis* CVx3dSceneSwitches::FindFloor(int floor)
{
    for (SVxFloorVis& entry : floors)
        if (entry.floor == floor)
            return &entry;
    return nullptr;
}

int CVx3dSceneSwitches::WallChoice(size_t k, bool upper) const
{
    if (wallsMode == 1)
        return -1;
    if (wallsMode == 2 && upper) {
        const bool visibleAbove = k + 1 < floors.size() && floors[k + 1].visible;
        return visibleAbove ? 0 : -1;
    }
    return 0;
}

QString CVx3dSceneSwitches::FloorNodeName(int floor)
{
    return QString::fromLatin1(SVx3DExportPars::FloorNodeName(floor).c_str());
}

QString CVx3dSceneSwitches::LayerNodeName(int floor, int layer)
{
    return QString::fromLatin1(SVx3DExportPars::LayerNodeName(floor, layer).c_str());
}

QString CVx3dSceneSwitches::WallNodeName(int floor, bool upper)
{
    return QString::fromLatin1(SVx3DExportPars::WallNodeName(floor, upper).c_str());
}

bool CVx3dSceneSwitches::ScanSceneFile(const QString& path)
{
    floors.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    static const QRegularExpression floorSwitch(
        QStringLiteral("DEF\\s+VX_FLOOR_(\\d\\d)\\s+Switch\\s*\\{\\s*whichChoice\\s+(-?\\d+)"));
    static const QRegularExpression layerSwitch(
        QStringLiteral("DEF\\s+VX_LAYER_F(\\d\\d)L(\\d\\d)\\s+Switch\\s*\\{\\s*whichChoice\\s+(-?\\d+)"));
    while (!file.atEnd()) {
        const QByteArray raw = file.readLine(kMaxLineLength);
        if (!raw.contains("DEF"))
            continue;
        const QString line = QString::fromLatin1(raw);
        QRegularExpressionMatch match = floorSwitch.match(line);
        if (match.hasMatch()) {
            const int floor = match.captured(1).toInt();
            if (floor <= kMaxIndex && !FindFloor(floor) && floors.size() <= static_cast<size_t>(kMaxIndex))
                floors.push_back({floor, match.captured(2).toInt() >= 0, {}});
            continue;
        }
        match = layerSwitch.match(line);
        if (match.hasMatch()) {
            SVxFloorVis* entry = FindFloor(match.captured(1).toInt());
            const int layer = match.captured(2).toInt();
            if (!entry || entry->layers.size() >= kMaxLayersPerFloor)
                continue;
            const bool known = std::any_of(entry->layers.begin(), entry->layers.end(),
                                           [layer](const SVxLayerVis& s) { return s.layer == layer; });
            if (!known)
                entry->layers.push_back({layer, match.captured(3).toInt() >= 0});
        }
    }
    return true;
}
