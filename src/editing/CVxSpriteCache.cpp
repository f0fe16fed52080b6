#include "CVxSpriteCache.h"

#include "CVxQtDC.h"
#include "CVxRecordingDC.h"

#include <QHashFunctions>

bool CVxSpriteCache::Draw(CVxQtDC& target, const std::function<void(CVxDC&)>& draw)
{
    if (!target.CanTakeSprites())
        return false;
    CVxRecordingDC record(target, target.IsSmoothingEnabled());
    draw(record);
    if (!record.IsReplayable())
        return false;
    const VxRECT bounds = record.GetBounds();
    const int width = bounds.right - bounds.left;
    const int height = bounds.bottom - bounds.top;
    if (width <= 0 || height <= 0) {
        target.RestoreAfterReplay(record.GetBkMode(), record.GetBkColor(), record.IsSmoothing());
        return true;
    }
    std::vector<int32_t> ops = record.Normalized(bounds.left, bounds.top);
    if (width > maxSide || height > maxSide) {
        CVxRecordingDC::Replay(ops, target, bounds.left, bounds.top);
        return true;
    }
    const size_t key =
        qHashBits(ops.data(), ops.size() * sizeof(int32_t), static_cast<size_t>(width * 65536 + height));
    std::vector<SEntry>& bucket = m_entries[key];
    for (const SEntry& entry : bucket) {
        if (entry.ops == ops) {
            target.DrawSprite(entry.image, bounds.left, bounds.top);
            target.RestoreAfterReplay(record.GetBkMode(), record.GetBkColor(), record.IsSmoothing());
            return true;
        }
    }
    QImage image;
    {
        CVxQtDC sprite(width, height, target.IsHighQuality());
        CVxRecordingDC::Replay(ops, sprite, 0, 0);
        image = *sprite.GetImage();
    }
    const auto bytes = static_cast<size_t>(image.sizeInBytes());
    if (m_bytes + bytes > maxBytes) {
        Clear();
        target.DrawSprite(image, bounds.left, bounds.top);
        m_entries[key].push_back(SEntry{std::move(ops), image});
    } else {
        target.DrawSprite(image, bounds.left, bounds.top);
        bucket.push_back(SEntry{std::move(ops), image});
    }
    m_bytes += bytes;
    ++m_count;
    target.RestoreAfterReplay(record.GetBkMode(), record.GetBkColor(), record.IsSmoothing());
    return true;
}

void CVxSpriteCache::Clear()
{
    m_entries.clear();
    m_bytes = 0;
    m_count = 0;
}
