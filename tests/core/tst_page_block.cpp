// The page block and the Vice page block (indexes, touch records, merged
// pages) and the checks before them: overlap groups, page range, icon use.
// Expected bytes are worked out by hand from the record tables, little-endian.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "build/PageBlock.h"
#include "build/PageChecks.h"
#include "project/PageAttributes.h"
#include "project/SealedFile.h"

using namespace core;

namespace {

// A page line with every attribute at its default, and its 24-byte touch
// record: type 0, flags 0x80, 0x15; four slide targets (no page 0xFFFF,
// code 0); slide off, rows 0 to 0.
const char *const kPlainPageLine = "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);P;Disable;0;0;Disable;";
const char *const kPlainPageRecord = "00 80 15  FFFF 0000  FFFF 0000  FFFF 0000  FFFF 0000  00  0000  0000";

// A button with code 0x0021, no pictures, no page.
QString buttonLine(const QString &name, int x, int y, int w, int h, const QString &report = "Disable",
                   const QString &tail = "0xFFFF")
{
    return QStringLiteral("button_0:%1,%2,%3,%4,0x0021,,,,%5,%6,Disable,0x0000,%7,1;")
        .arg(x).arg(y).arg(w).arg(h).arg(name, report, tail);
}

// A build context on an 800 x 480 project of `pages` plain pages.
struct Project : BuildDir {
    explicit Project(int pages, int chip = 3)
    {
        ctx.settings.xsize = "800", ctx.settings.ysize = "480", ctx.settings.panelType = chip;
        ctx.flags = BuildFlags::of(ctx.settings);
        blankPages(pages);
    }
    // Builds the page block from `start`; the block file's bytes.
    QByteArray pageBlock(qint64 start)
    {
        ctx.runningAddress = start;
        PageBlock::PageBuilder().build(ctx);
        return block(Block::Page);
    }
};

} // namespace

class TstPageBlock : public QObject
{
    Q_OBJECT

private slots:
    void indexesAndPageRecord()
    {
        // Block at 0x10180, three pages: the index takes 36 = 0x24 bytes.
        // Page 0: display 0x101A4 (10), touch 0x101AE (4).
        // Page 1: display 0x101B2 (0), touch 0x101B2 (0).
        // Page 2: display 0x101B2 (6), touch 0x101B8 (2).
        QCOMPARE(PageBlock::pageIndex(0x10180, {{10, 4}, {0, 0}, {6, 2}}),
                 hex("A4 01 01 00 0A 00  AE 01 01 00 04 00"
                     "B2 01 01 00 00 00  B2 01 01 00 00 00"
                     "B2 01 01 00 06 00  B8 01 01 00 02 00"));
        QVERIFY(PageBlock::pageIndex(0x10180, {}).isEmpty());
        // A page's touch record. Left Page0002 / 0x0011, top Page0010 /
        // 0x0123, slide on over rows 40 to 300 (0x012C), report to host on:
        // flags 0x80 + 0x40. (The defaults and the Vice flag 0x81 show below.)
        PageAttributes page;
        page.parse("Page:Page0002,0x0011,,0x0000,Page0010,0x0123,,0x0000,;RGBColor(0,0,0);P;Enable;40;300;Enable;");
        QCOMPARE(PageBlock::pageTouchRecord(page, false),
                 hex("00 C0 15  0200 1100  FFFF 0000  0A00 2301  FFFF 0000  01  2800  2C01"));
    }

    void pageWithOneButton()
    {
        // The page record (pass 2) comes before the buttons (pass 4) whatever
        // the file order.
        Project p(1);
        p.page(0, {buttonLine("b0", 10, 20, 100, 50, "Enable"), kPlainPageLine});
        // Display 0 bytes, touch 24 + 21 = 45 (0x2D), both at 0x1018C.
        // Button: type 1, flags 0xC0, 18; left 10, top 20, right 109 (0x6D),
        // bottom 69 (0x45), code 0x0021, no pictures, no page, tail 0xFFFF.
        const QByteArray touch = hex(kPlainPageRecord) + hex("01 C0 12  0A00 1400 6D00 4500  2100  FFFFFFFFFFFF  FFFF");
        QCOMPARE(p.pageBlock(0x10180), hex("8C 01 01 00 00 00  8C 01 01 00 2D 00") + touch);
        QCOMPARE(readAll(p.ctx.path("Plugin/Page0000.bin")), touch);
        QCOMPARE(p.ctx.runningAddress, qint64(0x10180 + 12 + 45));
    }

    void streamOverThePanelBufferIsReported()
    {
        // 24 + 2339 x 21 = 49143 bytes fit in 49152; 24 + 2340 x 21 = 49164 don't.
        for (int buttons : {2339, 2340}) {
            Project p(1);
            QStringList lines{kPlainPageLine};
            for (int i = 0; i < buttons; ++i)
                lines << buttonLine("b", 0, 0, 1, 1);
            p.page(0, lines);
            p.pageBlock(0);
            QCOMPARE(readAll(p.ctx.path("Plugin/Page0000.bin")).size(), 24 + buttons * 21);
            QCOMPARE(p.ctx.errorText.contains("Page0: the touch records take 49164 bytes, more than 49152\n"),
                     buttons == 2340);
        }
    }

    void driverPlacesBothBlocks()
    {
        // Through the standard build: page 0 has an empty file, page 1 only
        // its Page: line. Page block at 0x180 + 0x10000, index 24 bytes:
        // everything starts at 0x10198, page 1 has 24 touch bytes. The Vice
        // block follows at 0x101B0; its two empty entries point behind it.
        Project p(2);
        p.page(0, {});
        p.page(1, {kPlainPageLine});
        MakeBin driver;
        installStandardBuild(driver);
        BuildInput in;
        in.projectDir = p.ctx.projectDir;
        in.settings = p.ctx.settings;
        in.pageLines = p.ctx.pageLines;
        const BuildResult r = driver.run(in);
        QVERIFY(r.imageWritten);
        QCOMPARE(readAll(r.imagePath).mid(0x10180, 48 + 12),
                 hex("98 01 01 00 00 00  98 01 01 00 00 00  98 01 01 00 00 00  98 01 01 00 18 00")
                     + hex(kPlainPageRecord) + hex("BC 01 01 00 00 00  BC 01 01 00 00 00"));
        using D = BlockDirectory;
        QCOMPARE(QVector<quint32>({r.directory.value(D::PageBlockAddress), r.directory.value(D::PageCount),
                                   r.directory.value(D::VicePageAddress), r.directory.value(D::VicePageCount)}),
                 QVector<quint32>({0x10180, 2, 0x101B0, 2}));
        QVERIFY(r.errorText.contains("Page0:\n") && r.errorText.contains("Page1:\n"));
    }

    void hostPageTakesItsVicePage()
    {
        // Chip 10: page 0 hosts page 1. The host's touch stream holds its own
        // page record and button, then page 1's page record and button with
        // the Vice flag (0x81); page 1 itself has two lengths of 0.
        Project p(2, 10);
        p.page(0, {kPlainPageLine, buttonLine("b0", 10, 20, 100, 50)});
        p.page(1, {kPlainPageLine, buttonLine("b1", 0, 0, 10, 10)});
        p.ctx.vicePages = {1};
        p.ctx.mergeMap.insert(0, {1});
        PageBlock::writeMergedFiles(p.ctx);
        // Index 24 bytes; page 0 touch 24 + 21 + 24 + 21 = 90 (0x5A) at
        // 0x10198; page 1 at 0x10198 + 0x5A = 0x101F2 with nothing.
        QCOMPARE(p.pageBlock(0x10180),
                 hex("98 01 01 00 00 00  98 01 01 00 5A 00"
                     "F2 01 01 00 00 00  F2 01 01 00 00 00")
                     + hex(kPlainPageRecord)
                     + hex("01 80 12  0A00 1400 6D00 4500  2100  FFFFFFFFFFFF  FFFF"
                           "00 81 15  FFFF 0000  FFFF 0000  FFFF 0000  FFFF 0000  00  0000  0000"
                           "01 81 12  0000 0000 0900 0900  2100  FFFFFFFFFFFF  FFFF"));
        QCOMPARE(p.ctx.runningAddress, qint64(0x10180 + 24 + 90));

        // The Vice block: a button has no Vice record, so both entries are
        // empty and point behind the 12-byte index.
        p.ctx.runningAddress = 0x10200;
        PageBlock::VicePageBuilder().build(p.ctx);
        QCOMPARE(p.block(Block::VicePage), hex("0C 02 01 00 00 00  0C 02 01 00 00 00"));
    }

    void groupsOnPageLines()
    {
        // A button parent at (100, 50), 64 x 32; icon_0 exactly its size,
        // icon_1 one pixel to the left. Icons are parents too, after the
        // buttons: icon_1 holds the 1 x 1 icon_2 and makes group 2.
        const QStringList lines = {
            kPlainPageLine,
            buttonLine("b0", 100, 50, 64, 32, "Disable", "0x0007"),
            "icon_0:0xFFFF,2,0x0000,2,100,50,64,32,0001_a.png,,,,0,0,icon_0,Disable,0xFFFF,1;",
            "icon_1:0xFFFF,2,0x0000,2,99,50,64,32,0001_a.png,,,,0,0,icon_1,Disable,0x0003,1;",
            "icon_2:0xFFFF,2,0x0000,2,99,50,1,1,0001_a.png,,,,0,0,icon_2,Disable,0xFFFF,1;",
        };
        const QStringList chip3 = PageChecks::assignGroups(lines, 3);
        QCOMPARE(chip3[2], QString("icon_0:0xFFFF,2,0x0000,2,100,50,64,32,0001_a.png,,,,0,0,icon_0,Disable,0x0001,1;"));
        QVector<quint16> groups;
        for (const QString &line : chip3)
            groups << PageChecks::lineGroup(line);
        QCOMPARE(groups, (QVector<quint16>{0xFFFF, 1, 1, 2, 2}));
        QCOMPARE(PageChecks::groupParents(chip3), (QVector<int>{-1, -1, 1, -1, 3}));
        // The build step rewrites the page file the same way.
        Project p(1, 3);
        p.page(0, lines);
        PageChecks::overlapGroupStep(p.ctx);
        QCOMPARE(PageChecks::readPage(p.ctx.path("Plugin/Page0000.cfg"), SealedFile::kBuiltInKey), chip3);

        // Without icon_2, icon_1 is in no group: its old number is cleared.
        QCOMPARE(PageChecks::lineGroup(PageChecks::assignGroups(lines.mid(0, 4), 3)[3]), quint16(0xFFFF));
        // Chip index 0: no groups, and old numbers are cleared.
        for (const QString &line : PageChecks::assignGroups(lines, 0))
            QCOMPARE(PageChecks::lineGroup(line), quint16(0xFFFF));
    }

    void pageRangeAndIconUse()
    {
        Project p(2);
        p.page(0, {kPlainPageLine, buttonLine("whole", 0, 0, 800, 480), buttonLine("edge", 790, 10, 20, 20)});
        p.page(1, {kPlainPageLine, buttonLine("low", 5, 470, 10, 11)});
        QCOMPARE(PageChecks::pageRangeCheck(p.ctx.projectDir, p.ctx.pageLines, p.ctx.settings),
                 QString("Out of page range!\n"
                         "Page0,widget_Name:edge, X:790 Y:10\n"
                         "Page1,widget_Name:low, X:5 Y:470\n"));
        // Icon use: ids 0 to 3 exist, the button's pressed picture is icon 4.
        p.ctx.hasIcons = true;
        p.ctx.highestIcon = 3;
        p.page(0, {kPlainPageLine, "button_0:0,0,10,10,0x0021,0003_a.png,0004_b.png,,b0,Disable,Disable,0x0000,0xFFFF,1;"});
        QByteArray modes;
        PageChecks::iconUseCheck(p.ctx, modes);
        QCOMPARE(p.ctx.errorText, QString("Page0: b0, eImage is over the max Icon's id\n"));
        QCOMPARE(modes, hex("00 00 00 90"));
    }
};

QTEST_GUILESS_MAIN(TstPageBlock)
#include "tst_page_block.moc"
