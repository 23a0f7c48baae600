#pragma once
// The "VC" container of the compressed formats: the packed 16-bit words are
// cut into at most 255 segments of at most 256 colours each; every segment
// carries its palette and stores one index byte a pixel, run-length coded
// where that is shorter.
//
// Container, multi-byte fields little-endian:
//   0  2  "VC" (0x56 0x43)
//   2  2  width in pixels          4  2  height in pixels
//   6  1  segment count n, 1..255  7  1  format code (3, 4 or 5)
//   8  4  container size: 12 + 516 n + data
//  12  516 n  segment headers: data size (3), run-length flag (1),
//             palette of 256 words (512, unused entries 0)
//  then the data of each segment: raw index bytes, or (count - 1, index) pairs.

#include <QByteArray>
#include <QtGlobal>

namespace vantile {

namespace ImageZip {

constexpr int kHeaderSize = 12;
constexpr int kSegmentHeaderSize = 516;
constexpr int kMaxSegments = 255;
constexpr int kPaletteSize = 256;
constexpr int kMaxRun = 256;

// Compresses `count` words stored low byte first at `words`. Returns the
// container, not yet rounded to an even length; an empty array when the
// data needs more than 255 segments or the coded data (without header and
// palettes) is not below 7/10 of the pixel count.
QByteArray compress(const uchar *words, qint64 count, int width, int height, int format);

} // namespace ImageZip

} // namespace vantile
