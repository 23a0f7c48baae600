#pragma once
// The gif block: every animated GIF a widget uses, each frame encoded as a
// panel image of its own.
//
//   Gif/gif_all.bin
//     [0xFF]        one byte when the running address is odd
//     8 x G         for each gif id 0 to G - 1: address of its frame table,
//                   frame count (0 and 0 for a gif with no data)
//     data          the part of each gif that has data, in id order
//
//   each gif's part (written straight into the block, frame by frame)
//     16 x n        frame table: address 4, x 2 (0), y 2 (0), width 2,
//                   height 2, byte length 3, format 1
//     frames        the encoded frames in order; on VC530 a frame that would
//                   cross 0x7D80000 starts at it, with 0xFF in front
//
// G is the highest number in Gif/ + 1. Directory 0x28 holds the table's
// address (even), 0x2C holds G.

#include "build/BuildContext.h"
#include "build/ImageEncoder.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace vantile {

namespace GifBlock {

constexpr int kEntrySize = 8;
constexpr int kFrameEntrySize = 16;

// What encoding one gif gave.
struct Encoded {
    int frames = 0;     // frames in the table; 0 when the gif has no usable frame
    qint64 length = 0;  // bytes of the gif's part: frame table and frames
    QString error;      // why the gif could not be read
};

// The format a gif's frames take: a request above 9 looks at frame 0 only
// (transparency gives 2, else 0); VC650 with 24-bit colour takes 6 always.
int frameFormat(int requested, bool firstFrameTransparent, const EncodeOptions &options);

// Encodes the gif file `path` into `out` at its current position, its frame
// table starting at image address `base`; a gif without data leaves `out`
// as it was. The frames come from the image library's GIF reader, each
// with the frames before it composed in.
Encoded encodeGif(qint64 base, const QString &path, QFile &out, int requestedFormat,
                  const EncodeOptions &options, bool vc530, const QSize &panel);

// Builds Gif/gif_all.bin with a given mode table (one byte per gif id, bit
// 7 for a used gif, the format in the low 7 bits).
void build(BuildContext &ctx, const QByteArray &modes);

} // namespace GifBlock

// Gif/gif_all.bin for every controller; on VC530 (chip 3) with the
// 0x7D80000 rule for frames.
class GifBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Gif; }
    void build(BuildContext &ctx) override;
};

} // namespace vantile
