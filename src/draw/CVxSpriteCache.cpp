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
    std::vector<SEntry>* bucket = &m_entries[key];
    SEntry* found = nullptr;
    for (SEntry& entry : *bucket) {
        if (entry.ops == ops) {
            found = &entry;
            break;
        }
    }
    if (!found) {
        // A drawing seen once is only remembered: most drawings that come
        // once in a repaint come once in the next, and making a picture
        // costs more than painting.
        const size_t bytes = ops.size() * sizeof(int32_t);
        if (m_bytes + bytes > maxBytes) {
            Clear();
            bucket = &m_entries[key];
        }
        m_bytes += bytes;
        bucket->push_back(SEntry{std::move(ops), QImage()});
        CVxRecordingDC::Replay(bucket->back().ops, target, bounds.left, bounds.top);
        return true;
    }
    if (found->image.isNull()) {
        CVxQtDC sprite(width, height, target.IsHighQuality());
        CVxRecordingDC::Replay(found->ops, sprite, 0, 0);
        QImage image = *sprite.GetImage();
        const auto bytes = static_cast<size_t>(image.sizeInBytes());
        if (m_bytes + bytes > maxBytes) {
            // Everything goes; this one is painted as it is.
            const std::vector<int32_t> kept = std::move(found->ops);
            Clear();
            CVxRecordingDC::Replay(kept, target, bounds.left, bounds.top);
            return true;
        }
        found->image = std::move(image);
        m_bytes += bytes;
        ++m_count;
    }
    target.DrawSprite(found->image, bounds.left, bounds.top);
    target.RestoreAfterReplay(record.GetBkMode(), record.GetBkColor(), record.IsSmoothing());
    return true;
}

void CVxSpriteCache::Clear()
{
    m_entries.clear();
    m_bytes = 0;
    m_count = 0;
}
