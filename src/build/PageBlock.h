#pragma once
// The page block (Plugin/Page_para_all.bin) and the Vice page block
// (Plugin/VicePage_para_all.bin): for every page its display and touch
// records behind an index of addresses and lengths.

#include "build/BuildContext.h"

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QStringList>

namespace vantile {

struct PageAttributes;
struct RecordContext;

namespace PageBlock {

// The size of each of a page's two record buffers on the panel.
constexpr int kStreamLimit = 49152;
constexpr int kIndexEntrySize = 12;
constexpr int kViceEntrySize = 6;

// The line that parts a host page's own lines from its Vice pages' lines
// in a .cfc file.
extern const char *const kMergeBoundary; // "Mergerboundaryline"

struct Streams {
    QByteArray display;
    QByteArray touch;
};

struct Lengths {
    int display = 0;
    int touch = 0;
};

// The 24-byte touch record of a page's "Page:" line, in the page's own
// orientation.
QByteArray pageTouchRecord(const PageAttributes &page, bool viceFlag);

// The two streams of a page's lines, in the ten passes; `merged` lines
// (a host's Vice pages) follow with the Vice flag set.
Streams buildStreams(const QStringList &lines, const RecordContext &ctx,
                     const QStringList &merged = {}, const RecordContext *mergedCtx = nullptr);

// The one stream of a Vice page in the Vice block: the Vice forms of its
// label, number, icon, bitIcon, pngNumber and RTC widgets (the ViceFlag
// comes from ctx), in the order of the display passes, groups included.
QByteArray viceStream(const QStringList &lines, const RecordContext &ctx);

// The index of the page block at `blockAddress`: 12 bytes per page.
QByteArray pageIndex(quint32 blockAddress, const QList<Lengths> &pages);
// The index of the Vice block: 6 bytes per page.
QByteArray viceIndex(quint32 blockAddress, const QList<int> &lengths);

// The picture size of a page row: its picture in Picture/, or the canvas
// for a plain page (and for a picture that can't be read).
QSize pagePictureSize(const BuildContext &ctx, int row);
// The record context of a page row.
RecordContext recordContext(BuildContext &ctx, int row);

// The merge steps of chip index 10, run before the checks. The Vice pages
// are the pages named by the `pageGoto` of the `slidemenuPro` widgets, each
// listed once; the merge map takes each host's in file order. A page that
// isn't in the page list, or the host itself, is a complaint and is left out.
void collectVicePages(BuildContext &ctx);
// For each host of ctx.mergeMap, Plugin/PageNNNN.cfc: the host's lines, the
// boundary line, then the lines of its Vice pages, all with their groups.
void writeMergedFiles(BuildContext &ctx);
// Both, as the build's slide menu step.
void slideMenuMerge(BuildContext &ctx);

class PageBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Page; }
    void build(BuildContext &ctx) override;
};

class VicePageBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::VicePage; }
    void build(BuildContext &ctx) override;
};

} // namespace PageBlock

} // namespace vantile
