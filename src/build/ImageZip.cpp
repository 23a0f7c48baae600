#include "build/ImageZip.h"

#include <array>
#include <cstring>
#include <vector>

namespace vantile {

namespace ImageZip {

namespace {

inline quint16 wordAt(const uchar *words, qint64 i)
{
    return quint16(words[2 * i] | words[2 * i + 1] << 8);
}

struct Segment {
    qint64 start = 0;
    qint64 count = 0;
    int paletteSize = 0;
    std::array<quint16, kPaletteSize> palette{};
    qint64 dataSize = 0;
    bool runLength = false;
};

// Palette index of each word for the segment being walked: a stamp of the
// call and the segment's number (1 to 255) above the index, so moving on
// to the next segment, or the next picture, needs no clearing. The table
// (256 KB) is made once per thread: small icons would otherwise pay more
// for clearing it than for their own pixels.
class IndexTable
{
public:
    IndexTable()
    {
        static thread_local std::vector<quint32> entries;
        static thread_local quint32 lastBase = 0;
        if (entries.empty() || lastBase >= kLastBase) {
            entries.assign(65536, 0);
            lastBase = 0;
        }
        lastBase += 256;
        m_base = lastBase;
        m_entry = entries.data();
    }

    bool contains(quint16 w, int segmentMark) const { return m_entry[w] >> 8 == m_base + quint32(segmentMark); }
    quint8 index(quint16 w) const { return quint8(m_entry[w]); }
    void set(quint16 w, int segmentMark, int index)
    {
        m_entry[w] = (m_base + quint32(segmentMark)) << 8 | quint32(index);
    }
    void load(const Segment &s, int segmentMark)
    {
        for (int i = 0; i < s.paletteSize; ++i)
            set(s.palette[size_t(i)], segmentMark, i);
    }

private:
    static constexpr quint32 kLastBase = (1u << 24) - 512; // stamps stay in 24 bits
    quint32 m_base = 0;
    quint32 *m_entry = nullptr;
};

void put16(uchar *p, quint32 v)
{
    p[0] = uchar(v);
    p[1] = uchar(v >> 8);
}

} // namespace

QByteArray compress(const uchar *words, qint64 count, int width, int height, int format)
{
    if (count <= 0)
        return QByteArray();

    // Segmentation, and the coded size of each segment on the way: runs of
    // equal words (cut at 256) are runs of equal indices. A segment whose
    // runs take no fewer bytes than its pixels is stored raw. The data must
    // stay below 7/10 of the pixel count, so the walk stops as soon as the
    // finished segments pass that.
    const qint64 limit = count * 7 / 10;
    std::vector<Segment> segments;
    segments.reserve(kMaxSegments);
    IndexTable table;
    qint64 dataSize = 0;
    qint64 runs = 1;
    int runLength = 1;
    auto open = [&](qint64 start, quint16 first) {
        segments.emplace_back();
        Segment &s = segments.back();
        s.start = start;
        s.palette[0] = first;
        s.paletteSize = 1;
        table.set(first, int(segments.size()), 0);
        runs = 1;
        runLength = 1;
    };
    auto finish = [&](qint64 end) {
        Segment &s = segments.back();
        s.count = end - s.start;
        const qint64 coded = 2 * runs;
        s.runLength = coded < s.count;
        s.dataSize = s.runLength ? coded : s.count;
        dataSize += s.dataSize;
    };
    quint16 previous = wordAt(words, 0);
    open(0, previous);
    for (qint64 i = 1; i < count; ++i) {
        const quint16 w = wordAt(words, i);
        if (w == previous) {
            if (++runLength > kMaxRun) {
                ++runs;
                runLength = 1;
            }
            continue;
        }
        previous = w;
        const int mark = int(segments.size());
        if (!table.contains(w, mark)) {
            Segment &s = segments.back();
            s.palette[size_t(s.paletteSize)] = w;
            table.set(w, mark, s.paletteSize);
            if (++s.paletteSize == kPaletteSize) {
                // The palette is full: this pixel opens the next segment, the
                // ended one keeps the full palette.
                finish(i);
                if (dataSize >= limit || mark == kMaxSegments)
                    return QByteArray();
                open(i, w);
                continue;
            }
        }
        ++runs;
        runLength = 1;
    }
    finish(count);
    if (dataSize >= limit)
        return QByteArray();

    // The container.
    const int n = int(segments.size());
    const qint64 total = kHeaderSize + qint64(kSegmentHeaderSize) * n + dataSize;
    QByteArray out(int(total), Qt::Uninitialized);
    uchar *p = reinterpret_cast<uchar *>(out.data());
    p[0] = 'V';
    p[1] = 'C';
    put16(p + 2, quint32(width));
    put16(p + 4, quint32(height));
    p[6] = uchar(n);
    p[7] = uchar(format);
    put16(p + 8, quint32(total));
    put16(p + 10, quint32(total) >> 16);

    uchar *header = p + kHeaderSize;
    uchar *data = header + qint64(kSegmentHeaderSize) * n;
    for (int k = 0; k < n; ++k, header += kSegmentHeaderSize) {
        const Segment &s = segments[size_t(k)];
        header[0] = uchar(s.dataSize);
        header[1] = uchar(s.dataSize >> 8);
        header[2] = uchar(s.dataSize >> 16);
        header[3] = s.runLength ? 1 : 0;
        std::memset(header + 4, 0, 2 * kPaletteSize);
        for (int i = 0; i < s.paletteSize; ++i)
            put16(header + 4 + 2 * i, s.palette[size_t(i)]);

        table.load(s, k + 1);
        const qint64 end = s.start + s.count;
        if (!s.runLength) {
            for (qint64 i = s.start; i < end; ++i)
                *data++ = table.index(wordAt(words, i));
            continue;
        }
        qint64 i = s.start;
        while (i < end) {
            const quint16 w = wordAt(words, i);
            qint64 j = i + 1;
            while (j < end && j - i < kMaxRun && wordAt(words, j) == w)
                ++j;
            *data++ = uchar(j - i - 1);
            *data++ = table.index(w);
            i = j;
        }
    }
    return out;
}

} // namespace ImageZip

} // namespace vantile
