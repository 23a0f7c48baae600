#pragma once
// Fonts and sounds in the image.
//
//   FontBin/Font_all.bin              WavBin/Wav_all.bin
//     8 x F  table: address 4, size 4   8 x W  the same table
//     data   the used font files,       data   every wav file, in id order,
//            in id order, as they stand        as it stands
//
// F is the id of the last font file + 1 (at most 64), W the number of the
// last wav file + 1. The first address is the block's address + 8 x count;
// each next one is the address before + the size before, so an id without
// data has the next id's address and size 0. A font that no widget uses
// takes no flash. Directory 0x10/0x14 hold the Font block's address and F,
// 0x18/0x1C the Wav block's address and W.
//
// Font files are "NN_...Font....bin": two digits, then "_" or more text,
// and "Font" behind the first character. Wav files are "NNNN_...Wav....bin".
// Of several files with one id the first valid one in name order counts.

#include "build/BuildContext.h"
#include "build/FontFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <functional>
#include <iterator>

namespace vantile {

namespace FontBlock {

constexpr int kMaxFonts = FontTable::kMaxFonts;
constexpr int kEntrySize = 8;

// The font files of FontBin/ and what their headers say.
struct FontListing {
    struct File {
        QString name;
        int id = -1;
        qint64 size = 0;
        FontFile::HeaderRead header;
    };
    QList<File> files;           // *.bin with a font id and "Font", in name order
    QStringList nameless;        // *.bin with "Font" but no two-digit id
    int count = 0;               // F, at most 64
    bool tooMany = false;        // the last id was 64 or more
    int chosen[kMaxFonts];       // index in files of each id's file, -1 for none
    FontTable table;             // width, height and encoding of each id

    FontListing() { std::fill(std::begin(chosen), std::end(chosen), -1); }
    const File *fileOf(int id) const
    {
        return id >= 0 && id < kMaxFonts && chosen[id] >= 0 ? &files[chosen[id]] : nullptr;
    }
};

// Lists FontBin/ of a project and reads the headers; says nothing.
FontListing listFonts(const QString &projectDir);

// The listing's messages, each told once in a build: the "Warning" box for
// too many fonts, " id is over 64", " is invalid" and the like.
void report(BuildContext &ctx, const FontListing &listing);

// The font scan step: ctx.fonts from the headers, with the messages.
void scanFonts(BuildContext &ctx);

// The (address, size) table of a block at `blockAddress` with one entry
// per size.
QByteArray table(qint64 blockAddress, const QVector<qint64> &sizes);

// The Font block: writes Font_all.bin and the directory fields and moves
// the running address. `usedMarks` gives, for F fonts, one byte per id,
// non-zero when a widget uses the font.
using UsedMarks = std::function<QByteArray(BuildContext &ctx, int count)>;
void buildFonts(BuildContext &ctx, const UsedMarks &usedMarks);

// The Wav block: every wav file counts.
void buildWavs(BuildContext &ctx);

// Number of a wav file: four digits among the first five characters, up
// to a "_"; -1 when there are not exactly four.
int wavNumber(const QString &name);

} // namespace FontBlock

// Marks the used fonts (the font use check) and builds the Font block.
class FontBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Font; }
    void build(BuildContext &ctx) override;
};

class WavBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Wav; }
    void build(BuildContext &ctx) override { FontBlock::buildWavs(ctx); }
};

} // namespace vantile
