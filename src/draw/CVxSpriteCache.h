#pragma once
// Pictures of small drawings kept for the next time the same drawing comes
// along. A plan holds many copies of the same chair and the same door, and
// each repaint asks for all of them again; for objects a few pixels wide the
// painter's cost per shape far outweighs the pixels. A drawing is recorded
// first; a record equal to one seen before, wherever on the surface it was,
// is answered by putting the kept picture down at whole-pixel offset, which
// gives the same pixels as painting it again. A drawing seen for the first
// time is painted from its record and only remembered; the picture is made
// when it comes again.

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

class CVxDC;
class CVxQtDC;

class CVxSpriteCache
{
public:
    // Draws onto target what draw paints. False when the drawing used what a
    // record can't hold (text, pictures, clipping, hatches) or the target
    // isn't a plain raster surface: the caller then draws directly.
    bool Draw(CVxQtDC& target, const std::function<void(CVxDC&)>& draw);
    void Clear();
    size_t GetBytes() const { return m_bytes; }
    // The pictures kept; a drawing gets one the second time it comes.
    int GetCount() const { return m_count; }

    // Larger drawings are played back onto the target without a picture.
    static constexpr int maxSide = 160;
    // When the pictures pass this, they are all let go.
    static constexpr size_t maxBytes = size_t{64} << 20;

private:
    struct SEntry
    {
        std::vector<int32_t> ops;
        // Null until the drawing came a second time.
        QImage image;
    };
    std::unordered_map<size_t, std::vector<SEntry>> m_entries;
    size_t m_bytes = 0;
    int m_count = 0;
};
