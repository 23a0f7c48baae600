// The picture block builder on small projects: the table and data layout
// with an odd start address, colour entries, reuse of a picture by name,
// VC530 without reuse and with its 0x7D80000 boundary, the choice of format,
// and unreadable pictures. Entries are address 4, width 2, height 2, length
// 3, format 1, little-endian. "a.png" is 2 x 1 red, blue: RGB565 00F8 1F00;
// "b.png" 1 x 1 green: E007.

#include "CoreTestSupport.h"
#include "build/PictureBlock.h"

#include <QImage>

using namespace core;

namespace {

// A page line whose background is a picture file or an "RGBColor(r,g,b)".
QString pageLine(int row, const QString &background)
{
    return QStringLiteral("Page%1:%2;%2;RGBColor(0,0,0);").arg(row, 4, 10, QLatin1Char('0')).arg(background);
}

// A project folder with the test pictures in Picture/ and a context on it.
struct Project {
    QTemporaryDir dir;
    BuildContext ctx;
    BlockDirectory directory;

    Project()
    {
        QDir(dir.path()).mkpath(QStringLiteral("Picture"));
        const QList<QPair<const char *, QVector<QRgb>>> pictures = {
            {"a.png", {qRgb(255, 0, 0), qRgb(0, 0, 255)}}, {"b.png", {qRgb(0, 255, 0)}},
            {"soft.png", {qRgba(255, 0, 0, 128)}}};
        for (const auto &[name, px] : pictures)
            QVERIFY(QImage(reinterpret_cast<const uchar *>(px.data()), px.size(), 1, QImage::Format_ARGB32)
                        .save(picture(name), "PNG"));
        writeFile(picture(QStringLiteral("bad.png")), "this is no picture at all");
    }

    QString picture(const QString &name) const { return dir.path() + "/Picture/" + name; }

    // Builds the block from `start` on a 480 x 272 Nor panel (no row padding)
    // and returns the block file's bytes.
    QByteArray build(int chip, const QStringList &lines, qint64 start, int depth = 0, int rotation = 0,
                     bool zip = false)
    {
        ctx = BuildContext();
        directory.clear();
        ctx.projectDir = dir.path() + QLatin1Char('/');
        ctx.settings.panelType = chip, ctx.settings.colorDepth = depth, ctx.settings.rotate = rotation;
        ctx.settings.pageImageZip = zip, ctx.settings.flashTypeIndex = 1;
        ctx.settings.xsize = "480", ctx.settings.ysize = "272";
        ctx.pageLines = lines;
        for (const QString &line : lines)
            ctx.pages << PageInfo::parse(line);
        ctx.totalPages = ctx.pages.size();
        ctx.flags = BuildFlags::of(ctx.settings);
        ctx.directory = &directory;
        ctx.runningAddress = start;
        QFile::remove(ctx.blockPath(Block::Picture));
        PictureBlockBuilder().build(ctx);
        return readAll(ctx.blockPath(Block::Picture));
    }

    // The table address and count in the directory, and the running address.
    QVector<qint64> placed() const
    {
        return {directory.value(BlockDirectory::PictureAddress), directory.value(BlockDirectory::PictureCount),
                ctx.runningAddress};
    }
};

using Placed = QVector<qint64>;

} // namespace

class TestPictureBlock : public QObject
{
    Q_OBJECT

private slots:
    void entryBytes()
    {
        PictureBlock::Entry entry; // all 24 bits of the length
        entry.address = 0x12345678, entry.width = 0x1E0, entry.height = 0x110, entry.length = 0xABCDEF, entry.format = 0x10;
        QCOMPARE(entry.bytes(), hex("78563412 E001 1001 EFCDAB 10"));
    }

    void oddAddressWithColourPage()
    {
        // Start 0x20001 (odd): one 0xFF, table at 0x20002 (2 x 12 bytes), data
        // at 0x2001A. Entry 1 is the colour (255,128,0) in RGB565: 0xF800 |
        // 0x0400 | 0 = 0xFC00, its address the data address after a.png:
        // 0x2001E; size 480 x 272 = E0 01, 10 01.
        Project p;
        QCOMPARE(p.build(8, {pageLine(0, "a.png"), pageLine(1, "RGBColor(255,128,0)")}, 0x20001),
                 hex("FF" "1A000200 0200 0100 040000 00" "1E000200 E001 1001 00FC00 10" "00F8 1F00"));
        QCOMPARE(p.placed(), (Placed{0x20002, 2, 0x20001 + 29}));
        QVERIFY(p.ctx.errorText.isEmpty());
        // The log names the picture, its size, length and format, and both data addresses.
        for (const char *line : {"Page_Number:2", "Scan image:a.png...", "W&H:2,1", "Len&F:4,0",
                                 "image0bin_Addr:0002001A", "image1bin_Addr:0002001E"})
            QVERIFY2(p.ctx.buildLog.contains(QLatin1String(line)), line);
        QCOMPARE(p.ctx.buildLog.last(), QStringLiteral("Make Picture_all.bin"));
    }

    void reuseByName()
    {
        // Start 0x1000: table 3 x 12 = 36 bytes, data at 0x1024. Page 2 names
        // a.png again and copies entry 0: only two images are stored. VC530
        // stores every page: page 2 is encoded again at 0x102A.
        const QStringList lines{pageLine(0, "a.png"), pageLine(1, "b.png"), pageLine(2, "a.png")};
        const QByteArray front = hex("24100000 0200 0100 040000 00" "28100000 0100 0100 020000 00");
        Project p;
        QCOMPARE(p.build(8, lines, 0x1000), front + hex("24100000 0200 0100 040000 00" "00F81F00 E007"));
        QCOMPARE(p.placed(), (Placed{0x1000, 3, 0x1000 + 42}));
        QVERIFY(QFile::exists(p.picture("Page0000_img.bin")) && QFile::exists(p.picture("Page0001_img.bin")));
        QVERIFY(!QFile::exists(p.picture("Page0002_img.bin")));
        QCOMPARE(p.build(3, lines, 0x1000), front + hex("2A100000 0200 0100 040000 00" "00F81F00 E007 00F81F00"));
        QCOMPARE(p.ctx.runningAddress, qint64(0x1000 + 46));
        QVERIFY(QFile::exists(p.picture("Page0002_img.bin")));
    }

    void vc530Boundary()
    {
        // One page, a.png (4 bytes); the boundary is 0x7D80000.
        const struct { int chip; qint64 start, table; QByteArray expected; } cases[] = {
            // Table 0x7D7FFF2..0x7D7FFFE; data at 0x7D7FFFE would end at
            // 0x7D80002: two 0xFF in front, the image at 0x7D80000. Not on other chips.
            {3, 0x7D7FFF2, 0x7D7FFF2, hex("0000D807 0200 0100 040000 00" "FFFF" "00F81F00")},
            {8, 0x7D7FFF2, 0x7D7FFF2, hex("FEFFD707 0200 0100 040000 00" "00F81F00")},
            // Data at 0x7D7FFFC ends exactly on the boundary: nothing moves.
            {3, 0x7D7FFF0, 0x7D7FFF0, hex("FCFFD707 0200 0100 040000 00" "00F81F00")},
            // Odd start 0x7D7FFF9: the table would be 0x7D7FFFA..0x7D80006. It
            // goes to 0x7D80000, seven 0xFF before it, data at 0x7D8000C.
            {3, 0x7D7FFF9, 0x7D80000, hex("FFFFFFFFFFFFFF" "0C00D807 0200 0100 040000 00" "00F81F00")},
        };
        for (const auto &k : cases) {
            Project p;
            QCOMPARE(p.build(k.chip, {pageLine(0, "a.png")}, k.start), k.expected);
            QCOMPARE(p.placed(), (Placed{k.table, 1, k.start + k.expected.size()}));
        }
    }

    void colourEntries()
    {
        // One colour page at 0x400: the entry's address is the data address
        // 0x40C; panel 480 x 272 (E0 01, 10 01), turned for rotation 1.
        // (18,52,86) in RGB565: 0x1000 | 0x1A0 | 0xA = 0x11AA; in RGB888
        // 0x123456, red in the top byte. Black stays 0: no transparent key.
        const struct { int depth, rotation; const char *colour; QByteArray entry; } cases[] = {
            {0, 0, "RGBColor(18,52,86)", hex("0C040000 E001 1001 AA1100 10")},
            {1, 1, "RGBColor(18,52,86)", hex("0C040000 1001 E001 563412 10")},
            {0, 0, "RGBColor(0,0,0)", hex("0C040000 E001 1001 000000 10")},
        };
        for (const auto &k : cases) {
            Project p;
            QCOMPARE(p.build(8, {pageLine(0, k.colour)}, 0x400, k.depth, k.rotation), k.entry);
            QCOMPARE(p.placed(), (Placed{0x400, 1, 0x400 + 12}));
            QVERIFY(QDir(p.dir.path() + "/Picture").entryList({"*_img.bin"}, QDir::Files).isEmpty());
        }
    }

    void formatChoice()
    {
        // One page at 0x400, data at 0x40C. a.png as "RGB565_zip" cannot pay
        // for a container (12 + 516 bytes for 4), so its words stay plain
        // with code 3; on chips 4, 6 and 7 only, with the option on.
        auto entry = [](const char *picture, int chip, bool zip, int rotation = 0) {
            Project p;
            const QByteArray b = p.build(chip, {pageLine(0, picture)}, 0x400, 0, rotation, zip);
            return p.ctx.errorText.isEmpty() ? b : QByteArray("error");
        };
        for (int chip : {0, 3, 4, 6, 7, 8}) {
            const QByteArray code = chip == 4 || chip == 6 || chip == 7 ? hex("03") : hex("00");
            QCOMPARE(entry("a.png", chip, true), hex("0C040000 0200 0100 040000") + code + hex("00F81F00"));
            // soft.png: one red pixel with alpha 128, kept: 0xF800 "softpng", also with zip on.
            QCOMPARE(entry("soft.png", chip, true), hex("0C040000 0100 0100 020000 01" "00F8"));
        }
        QCOMPARE(entry("a.png", 4, false), hex("0C040000 0200 0100 040000 00" "00F81F00"));
        // Rotation 1 turns a.png into one column, red on top, size 1 x 2.
        QCOMPARE(entry("a.png", 8, false, 1), hex("0C040000 0100 0200 040000 00" "00F8 1F00"));
    }

    void unreadablePictures()
    {
        // A missing file and a file that is no picture: entries at the data
        // address 0x1024 with 0 x 0, length 0, format 0xFF; the page after
        // them is built as usual, on VC530 as on the others.
        const QStringList lines{pageLine(0, "missing.png"), pageLine(1, "bad.png"), pageLine(2, "b.png")};
        for (int chip : {8, 3}) {
            Project p;
            QCOMPARE(p.build(chip, lines, 0x1000), hex("24100000 0000 0000 000000 FF"
                                                       "24100000 0000 0000 000000 FF"
                                                       "24100000 0100 0100 020000 00" "E007"));
            QCOMPARE(p.placed(), (Placed{0x1000, 3, 0x1000 + 38}));
            const QStringList complaints = p.ctx.errorText.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
            QCOMPARE(complaints.size(), 2);
            QVERIFY(complaints[0].startsWith("The image does not exist or cannot be opened")
                    && complaints[0].contains("missing.png") && complaints[1].contains("bad.png"));
            QVERIFY(p.ctx.buildLog.contains(complaints[0]) && p.ctx.buildLog.contains(complaints[1]));
        }
    }
};

QTEST_GUILESS_MAIN(TestPictureBlock)
#include "tst_picture_block.moc"
