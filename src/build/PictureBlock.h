#pragma once
// The picture block: the background of every page, one table entry per
// page in page order, then the encoded images.
//
//   Picture/picture_all.bin
//     [0xFF]        one byte when the running address is odd
//     [0xFF ...]    VC530 only: the gap up to 0x7D80000 when the table
//                   would cross that address
//     12 x N        the table, one entry per page
//     data          the encoded images in page order, each on VC530 with a
//                   run of 0xFF in front when it would cross 0x7D80000
//
//   entry (little-endian):
//     0  4  address of the data (for a colour: the data address at that point)
//     4  2  width          6  2  height
//     8  3  byte length, or for a colour the colour value (RGB565 / RGB888)
//     11 1  format code of the encoder, 0x10 for a colour, 0xFF unreadable
//
// Directory 0x20 holds the table's address (always even), 0x24 the number
// of entries. A page whose picture name equals an earlier page's shares
// that entry's data (not on VC530, which stores every page by itself).
// An unreadable picture is a complaint; its entry is 0 x 0, length 0,
// format 0xFF, and the build goes on.

#include "build/BuildContext.h"

#include <QByteArray>
#include <QString>

namespace vantile {

namespace PictureBlock {

constexpr int kEntrySize = 12;
constexpr int kColourFormat = 0x10;
constexpr int kUnreadableFormat = 0xFF;
// On VC530 no table and no image may run across this address.
constexpr qint64 kVc530Boundary = 0x7D80000;
constexpr int kVc530Controller = 3;

struct Entry {
    quint32 address = 0;
    int width = 0;
    int height = 0;
    quint32 length = 0;   // 24 bits; the colour value for a colour entry
    int format = kUnreadableFormat;

    QByteArray bytes() const; // the 12 bytes of the table
};

// The value stored in the length field of a colour entry:
// RGB565 (rgb888 false) or R << 16 | G << 8 | B.
quint32 colourValue(int red, int green, int blue, bool rgb888);

// "Page0003_img.bin": the file of the image of entry `index` in Picture/.
QString imageFileName(int index);

// The format asked of the encoder for a background: 1 with transparency;
// else 3 when "Page Image Zip" is checked on VC540, VC110A or VC110B(MCU)
// (chip 4, 6, 7); else 0.
int requestedFormat(bool transparent, int chipIndex, bool pageImageZip);

// True when a piece of `size` bytes at `address` starts below the VC530
// boundary and ends beyond it.
bool crossesVc530Boundary(qint64 address, qint64 size);

} // namespace PictureBlock

// Builds Picture/picture_all.bin for every controller; on VC530 (chip 3)
// with no reuse, no "Page Image Zip" and the 0x7D80000 rule.
class PictureBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Picture; }
    void build(BuildContext &ctx) override;
};

} // namespace vantile
