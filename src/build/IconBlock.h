#pragma once
// The icon block: every small picture that widgets name by number, one
// table entry per number, the frames of the needle animations behind them,
// and a full table again for each further language.
//
//   Icon/icon_all.bin
//     [0xFF ...]    VC530 only: the gap up to 0x7D80000 when the tables
//                   would cross that address
//     12 x C x L    L tables of C entries, language 0 first
//     data          the encoded pictures in table order, each on VC530 with
//                   a run of 0xFF in front when it would cross 0x7D80000
//
//   C = C1 + C2: C1 = highest number in Icon/ + 1, C2 = frames in Needle/.
//   Entries have the picture block's form (PictureBlock::Entry).
//
// Only pictures some widget uses are stored (the mode table of the icon use
// check); an unused number keeps its entry with length 0. A language's
// table takes its pictures from Icon/NNNN/ (NNNN = the language from 0001)
// and falls back to language 0's entry for a number its folder lacks, or
// for the whole table when the folder does not exist.
//
// The needle animation step renders the frames of the needles that draw a
// picture (styles "PNGdrawing" and "Animation") into Needle/ before the
// pages are built: one animation per distinct needleIcon, startAngle,
// finalAngle and step.

#include "build/BuildContext.h"
#include "build/PictureBlock.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>

namespace vantile {

namespace IconBlock {

// L: lineEdit_LangueNum, at least 1.
int languageCount(const ProjectSettings &settings);
// The folders of languages 1 to L - 1 ("0001", ...) that exist under Icon/.
QStringList languageFolders(const QString &projectDir, int languages);
// The picture files of a folder, by name, with the folder scanner's
// extensions (*.jpeg, *.jpg, *.bmp, *.png).
QStringList pictureFiles(const QString &dirPath);
// The file of each number: the first name in `files` whose four leading
// digits give it. Index = number; an empty name where there is none.
QStringList filesByNumber(const QStringList &files);

// Builds Icon/icon_all.bin with a given mode table (one byte per number,
// bit 7 set for a used picture, the format in the low 7 bits).
void build(BuildContext &ctx, const QByteArray &modes);

} // namespace IconBlock

namespace NeedleAnimation {

// What makes two needles share their frames.
struct Definition {
    QString icon;       // needleIcon, a file of Icon/
    int startAngle = 0;
    int finalAngle = 0;
    int step = 0;

    bool operator==(const Definition &o) const
    {
        return icon == o.icon && startAngle == o.startAngle && finalAngle == o.finalAngle && step == o.step;
    }
};

struct Animation {
    Definition definition;
    int number = 0;       // in order of first use
    int firstFrame = 0;   // index of its first frame among the frames of Needle/
    int frames = 0;
    int firstEntry = 0;   // its first frame's entry in the icon table: C1 + firstFrame
};

// The angles of a needle: startAngle, startAngle + step, ... up to
// finalAngle; one frame when the step is not positive or the range empty.
QList<int> angles(int startAngle, int finalAngle, int step);

// The needles of all pages that draw a picture, in page and line order,
// with their animation; complaints for lines that can't be read.
QList<Animation> plan(BuildContext &ctx, int *needleCount = nullptr);

// The place a needle's record stores: the icon table entry of the first
// frame of its animation; 0xFFFFFFFF when no animation matches.
quint32 place(const QList<Animation> &animations, const Definition &definition);

// One frame: the needle picture (tip up, its lower edge's middle on the
// pivot) turned to `angle` (0 tip down, clockwise) and, for the panel's
// rotation, by a further quarter turn for each step; trimmed to what is
// drawn. *offset gets the frame's top left relative to the pivot.
QImage frame(const QImage &needle, int angle, int rotation, QPoint *offset);

// "AAAA_0FFFF_dx_dy.png": the animation, the frame and its offset from the
// pivot, so that the listing of Needle/ keeps animation and frame order.
QString frameFileName(int animation, int frame, const QPoint &offset);

// The build step: clears Needle/ (*.bin, *.png), renders every animation.
void run(BuildContext &ctx);

} // namespace NeedleAnimation

// Icon/icon_all.bin for every controller; on VC530 (chip 3) with the
// 0x7D80000 rule.
class IconBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Icon; }
    void build(BuildContext &ctx) override;
};

} // namespace vantile
