// The picture block builder on small projects: the table and data layout
// with an odd start address, colour entries in both colour depths and
// rotations, reuse of a picture by name, VC530 without reuse and with its
// 0x7D80000 boundary, the choice of format, and unreadable pictures.
//
// Every expected byte string below is worked out by hand from the entry
// layout (address 4, width 2, height 2, length 3, format 1, little-endian)
// and the RGB565 packing word = (R >> 3) << 11 | (G >> 2) << 5 | (B >> 3):
//   red   (255,0,0)  -> 0xF800 -> 00 F8
//   blue  (0,0,255)  -> 0x001F -> 1F 00
//   green (0,255,0)  -> 0x07E0 -> E0 07
// "a.png" is 2 x 1 (red, blue): 4 bytes 00 F8 1F 00.
// "b.png" is 1 x 1 (green): 2 bytes E0 07.

#include "build/BuildContext.h"
#include "build/FlashLayout.h"
#include "build/MakeBin.h"
#include "build/PictureBlock.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

// A page line whose background is a picture file or an "RGBColor(r,g,b)".
QString pageLine(int row, const QString &background)
{
    return QStringLiteral("Page%1:%2;%2;RGBColor(0,0,0);").arg(row, 4, 10, QLatin1Char('0')).arg(background);
}

ProjectSettings settingsFor(int chip, int colourDepth = 0, int rotation = 0, bool zip = false)
{
    ProjectSettings s;
    s.panelType = chip;
    s.colorDepth = colourDepth;
    s.rotate = rotation;
    s.pageImageZip = zip;
    s.flashTypeIndex = 1; // Nor: no row padding
    s.xsize = QStringLiteral("480");
    s.ysize = QStringLiteral("272");
    return s;
}

// A project folder with the test pictures in Picture/ and a context on it.
class Project
{
public:
    Project()
    {
        QDir(m_dir.path()).mkpath(QStringLiteral("Picture"));
        auto save = [this](const char *name, std::initializer_list<QRgb> pixels) {
            QImage img(int(pixels.size()), 1, QImage::Format_ARGB32);
            int x = 0;
            for (QRgb p : pixels)
                img.setPixel(x++, 0, p);
            QVERIFY(img.save(picture(name), "PNG"));
        };
        save("a.png", {qRgb(255, 0, 0), qRgb(0, 0, 255)});
        save("b.png", {qRgb(0, 255, 0)});
        save("soft.png", {qRgba(255, 0, 0, 128)});
        QFile bad(picture(QStringLiteral("bad.png")));
        bad.open(QIODevice::WriteOnly);
        bad.write("this is no picture at all");
    }

    QString picture(const QString &name) const { return m_dir.path() + QStringLiteral("/Picture/") + name; }

    // Builds the block from `start` and returns the block file's bytes.
    QByteArray build(const ProjectSettings &settings, const QStringList &lines, qint64 start)
    {
        ctx = BuildContext();
        directory.clear();
        ctx.projectDir = m_dir.path() + QLatin1Char('/');
        ctx.settings = settings;
        ctx.pageLines = lines;
        for (const QString &line : lines)
            ctx.pages << PageInfo::parse(line);
        ctx.totalPages = ctx.pages.size();
        ctx.flags = BuildFlags::of(settings);
        ctx.directory = &directory;
        ctx.runningAddress = start;
        QFile::remove(ctx.blockPath(Block::Picture));
        PictureBlockBuilder().build(ctx);
        QFile f(ctx.blockPath(Block::Picture));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    BuildContext ctx;
    BlockDirectory directory;

private:
    QTemporaryDir m_dir;
};

} // namespace

class TestPictureBlock : public QObject
{
    Q_OBJECT

private slots:
    void entryBytesAndStandardBuild()
    {
        // All 24 bits of the length; (7,3,7) is below one step of RGB565.
        PictureBlock::Entry entry;
        entry.address = 0x12345678;
        entry.width = 0x1E0;
        entry.height = 0x110;
        entry.length = 0xABCDEF;
        entry.format = 0x10;
        QCOMPARE(entry.bytes(), hex("78563412 E001 1001 EFCDAB 10"));
        QCOMPARE(PictureBlock::colourValue(7, 3, 7, false), 0x0000u);
        MakeBin driver;
        QVERIFY(!driver.hasBuilder(Block::Picture));
        installStandardBuild(driver);
        QVERIFY(driver.hasBuilder(Block::Picture));
    }

    void oddAddressWithColourPage()
    {
        // Start 0x20001 (odd): one 0xFF, table at 0x20002 (2 x 12 bytes), data
        // at 0x2001A. Entry 1 is the colour (255,128,0) in RGB565:
        // 0xF800 | 0x0400 | 0 = 0xFC00, its address the data address after
        // a.png: 0x2001E; size 480 x 272 = E0 01, 10 01.
        Project p;
        const QByteArray file = p.build(settingsFor(8), {pageLine(0, "a.png"), pageLine(1, "RGBColor(255,128,0)")},
                                        0x20001);
        QCOMPARE(file, hex("FF"
                           "1A000200 0200 0100 040000 00"
                           "1E000200 E001 1001 00FC00 10"
                           "00F8 1F00"));
        QCOMPARE(p.directory.value(BlockDirectory::PictureAddress), 0x20002u);
        QCOMPARE(p.directory.value(BlockDirectory::PictureCount), 2u);
        QCOMPARE(p.ctx.runningAddress, qint64(0x20001 + 29));
        QVERIFY(p.ctx.errorText.isEmpty());
        // The log names the picture, its size, length and format, and both data addresses.
        const QStringList log = p.ctx.buildLog;
        QCOMPARE(log.first(), QString());
        QCOMPARE(log.count(QStringLiteral("Picture list----")), 2);
        for (const char *line : {"Page_Number:2", "Scan image:a.png...", "W&H:2,1", "Len&F:4,0",
                                 "image0bin_Addr:0002001A", "image1bin_Addr:0002001E"})
            QVERIFY2(log.contains(QLatin1String(line)), line);
        QCOMPARE(log.last(), QStringLiteral("Make Picture_all.bin"));
    }

    void reuseByName()
    {
        // Start 0x1000: table 3 x 12 = 36 bytes, data at 0x1024. Page 2 names
        // a.png again and copies entry 0: only two images are stored. VC530
        // stores every page: page 2 is encoded again at 0x102A.
        const QStringList lines{pageLine(0, "a.png"), pageLine(1, "b.png"), pageLine(2, "a.png")};
        const QByteArray front = hex("24100000 0200 0100 040000 00"
                                     "28100000 0100 0100 020000 00");
        Project p;
        QCOMPARE(p.build(settingsFor(8), lines, 0x1000), front + hex("24100000 0200 0100 040000 00" "00F81F00 E007"));
        QCOMPARE(p.directory.value(BlockDirectory::PictureAddress), 0x1000u);
        QCOMPARE(p.directory.value(BlockDirectory::PictureCount), 3u);
        QCOMPARE(p.ctx.runningAddress, qint64(0x1000 + 42));
        QVERIFY(QFile::exists(p.picture("Page0000_img.bin")) && QFile::exists(p.picture("Page0001_img.bin")));
        QVERIFY(!QFile::exists(p.picture("Page0002_img.bin")));

        QCOMPARE(p.build(settingsFor(3), lines, 0x1000),
                 front + hex("2A100000 0200 0100 040000 00" "00F81F00 E007 00F81F00"));
        QCOMPARE(p.ctx.runningAddress, qint64(0x1000 + 46));
        QVERIFY(QFile::exists(p.picture("Page0002_img.bin")));

        // One background on 100 pages: 100 entries, all at 0x1000 + 1200 = 0x14B0, one image.
        QStringList many;
        for (int i = 0; i < 100; ++i)
            many << pageLine(i, "a.png");
        QCOMPARE(p.build(settingsFor(8), many, 0x1000),
                 hex("B0140000 0200 0100 040000 00").repeated(100) + hex("00F81F00"));
    }

    void vc530Boundary_data()
    {
        QTest::addColumn<int>("chip");
        QTest::addColumn<qint64>("start");
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<quint32>("tableAddress");

        // One page, a.png (4 bytes); the boundary is 0x7D80000.
        // Table 0x7D7FFF2..0x7D7FFFE; data at 0x7D7FFFE would end at
        // 0x7D80002: two 0xFF in front, the image at 0x7D80000.
        QTest::newRow("image crosses, VC530") << 3 << qint64(0x7D7FFF2)
            << hex("0000D807 0200 0100 040000 00" "FFFF" "00F81F00") << 0x7D7FFF2u;
        QTest::newRow("image crosses, other chip") << 8 << qint64(0x7D7FFF2)
            << hex("FEFFD707 0200 0100 040000 00" "00F81F00") << 0x7D7FFF2u;
        // Data at 0x7D7FFFC ends exactly on the boundary: nothing moves.
        QTest::newRow("image ends on it, VC530") << 3 << qint64(0x7D7FFF0)
            << hex("FCFFD707 0200 0100 040000 00" "00F81F00") << 0x7D7FFF0u;
        // Odd start 0x7D7FFF9: the table would be 0x7D7FFFA..0x7D80006. It goes
        // to 0x7D80000, seven 0xFF before it, data at 0x7D8000C.
        QTest::newRow("table crosses, VC530") << 3 << qint64(0x7D7FFF9)
            << hex("FFFFFFFFFFFFFF" "0C00D807 0200 0100 040000 00" "00F81F00") << 0x7D80000u;
        QTest::newRow("table crosses, other chip") << 8 << qint64(0x7D7FFF9)
            << hex("FF" "0600D807 0200 0100 040000 00" "00F81F00") << 0x7D7FFFAu;
        QTest::newRow("table starts on it, VC530") << 3 << qint64(0x7D80000)
            << hex("0C00D807 0200 0100 040000 00" "00F81F00") << 0x7D80000u;
    }

    void vc530Boundary()
    {
        QFETCH(int, chip);
        QFETCH(qint64, start);
        QFETCH(QByteArray, expected);
        QFETCH(quint32, tableAddress);
        Project p;
        QCOMPARE(p.build(settingsFor(chip), {pageLine(0, "a.png")}, start), expected);
        QCOMPARE(p.directory.value(BlockDirectory::PictureAddress), tableAddress);
        QCOMPARE(p.directory.value(BlockDirectory::PictureCount), 1u);
        QCOMPARE(p.ctx.runningAddress, start + expected.size());
    }

    void colourEntries_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QString>("colour");
        QTest::addColumn<QByteArray>("entry");

        // One colour page at 0x400: the entry's address is the data address
        // 0x40C; panel 480 x 272 (E0 01, 10 01), turned for rotation 1 and 3.
        // (18,52,86) in RGB565: 0x1200 & 0xF800 = 0x1000, 0x1A0 & 0x7E0 = 0x1A0,
        // 86 >> 3 = 0xA: 0x11AA. In RGB888: 0x123456, red in the top byte.
        QTest::newRow("565") << 0 << 0 << "RGBColor(18,52,86)" << hex("0C040000 E001 1001 AA1100 10");
        QTest::newRow("888") << 1 << 0 << "RGBColor(18,52,86)" << hex("0C040000 E001 1001 563412 10");
        QTest::newRow("888 turned") << 1 << 1 << "RGBColor(18,52,86)" << hex("0C040000 1001 E001 563412 10");
        QTest::newRow("565 turned back") << 0 << 3 << "RGBColor(18,52,86)" << hex("0C040000 1001 E001 AA1100 10");
        QTest::newRow("565 half turn") << 0 << 2 << "RGBColor(18,52,86)" << hex("0C040000 E001 1001 AA1100 10");
        QTest::newRow("565 white") << 0 << 0 << "RGBColor(255,255,255)" << hex("0C040000 E001 1001 FFFF00 10");
        // black stays 0: a colour page has no transparent key
        QTest::newRow("565 black") << 0 << 0 << "RGBColor(0,0,0)" << hex("0C040000 E001 1001 000000 10");
    }

    void colourEntries()
    {
        QFETCH(int, depth);
        QFETCH(int, rotation);
        QFETCH(QString, colour);
        QFETCH(QByteArray, entry);
        Project p;
        QCOMPARE(p.build(settingsFor(8, depth, rotation), {pageLine(0, colour)}, 0x400), entry);
        QCOMPARE(p.ctx.runningAddress, qint64(0x400 + 12));
        QCOMPARE(p.directory.value(BlockDirectory::PictureAddress), 0x400u);
        QCOMPARE(p.directory.value(BlockDirectory::PictureCount), 1u);
        QVERIFY(QDir(QFileInfo(p.picture("x")).path()).entryList({"*_img.bin"}, QDir::Files).isEmpty());
    }

    void formatChoice_data()
    {
        QTest::addColumn<int>("chip");
        QTest::addColumn<bool>("zip");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QByteArray>("expected");

        // One page at 0x400, data at 0x40C. a.png as "RGB565_zip" cannot pay
        // for a container (12 + 516 header bytes for 4 bytes of words), so its
        // words stay plain with code 3.
        const QByteArray plain = hex("0C040000 0200 0100 040000 00" "00F81F00");
        const QByteArray zip = hex("0C040000 0200 0100 040000 03" "00F81F00");
        // soft.png: one red pixel with alpha 128 -> kept, 0xF800, "softpng".
        const QByteArray soft = hex("0C040000 0100 0100 020000 01" "00F8");
        QTest::newRow("VC540 zip") << 4 << true << 0 << "a.png" << zip;
        QTest::newRow("VC110A zip") << 6 << true << 0 << "a.png" << zip;
        QTest::newRow("VC110B(MCU) zip") << 7 << true << 0 << "a.png" << zip;
        QTest::newRow("VC540 no zip") << 4 << false << 0 << "a.png" << plain;
        QTest::newRow("VC530 zip") << 3 << true << 0 << "a.png" << plain;
        QTest::newRow("VC110B(RGB) zip") << 8 << true << 0 << "a.png" << plain;
        QTest::newRow("VC210 zip") << 0 << true << 0 << "a.png" << plain;
        QTest::newRow("transparent") << 8 << false << 0 << "soft.png" << soft;
        QTest::newRow("transparent VC540 zip") << 4 << true << 0 << "soft.png" << soft;
        QTest::newRow("transparent VC530") << 3 << false << 0 << "soft.png" << soft;
        // Rotation 1 turns a.png clockwise into one column, red on top: the
        // entry holds the turned size 1 x 2.
        QTest::newRow("turned") << 8 << false << 1 << "a.png" << hex("0C040000 0100 0200 040000 00" "00F8 1F00");
    }

    void formatChoice()
    {
        QFETCH(int, chip);
        QFETCH(bool, zip);
        QFETCH(int, rotation);
        QFETCH(QString, picture);
        QFETCH(QByteArray, expected);
        Project p;
        QCOMPARE(p.build(settingsFor(chip, 0, rotation, zip), {pageLine(0, picture)}, 0x400), expected);
        QVERIFY(p.ctx.errorText.isEmpty());
    }

    void unreadablePictures()
    {
        // A missing file and a file that is no picture: entries at the data
        // address 0x1024 with 0 x 0, length 0, format 0xFF; the page after them
        // is built as usual, on VC530 as on the others.
        const QStringList lines{pageLine(0, "missing.png"), pageLine(1, "bad.png"), pageLine(2, "b.png")};
        for (int chip : {8, 3}) {
            Project p;
            QCOMPARE(p.build(settingsFor(chip), lines, 0x1000), hex("24100000 0000 0000 000000 FF"
                                                                    "24100000 0000 0000 000000 FF"
                                                                    "24100000 0100 0100 020000 00"
                                                                    "E007"));
            QCOMPARE(p.directory.value(BlockDirectory::PictureCount), 3u);
            QCOMPARE(p.ctx.runningAddress, qint64(0x1000 + 38));

            const QStringList complaints = p.ctx.errorText.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
            QCOMPARE(complaints.size(), 2);
            QVERIFY(complaints.at(0).startsWith(QStringLiteral("The image does not exist or cannot be opened")));
            QVERIFY(complaints.at(0).contains(QStringLiteral("missing.png")));
            QVERIFY(complaints.at(1).contains(QStringLiteral("bad.png")));
            for (const QString &c : complaints)
                QVERIFY(p.ctx.buildLog.contains(c));
            QCOMPARE(p.ctx.buildLog.last(), QStringLiteral("Make Picture_all.bin"));
        }
    }

    void noPages()
    {
        // No page: no file, the running address stays, count 0. Stale
        // intermediates in Picture/ are removed, the pictures themselves stay.
        Project p;
        QFile stale(p.picture("Page0009_img.bin"));
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.close();
        QVERIFY(p.build(settingsFor(8), {}, 0x3001).isEmpty());
        QVERIFY(!QFile::exists(p.ctx.blockPath(Block::Picture)));
        QCOMPARE(p.ctx.runningAddress, qint64(0x3001));
        QCOMPARE(p.directory.value(BlockDirectory::PictureAddress), 0x3001u);
        QCOMPARE(p.directory.value(BlockDirectory::PictureCount), 0u);
        QVERIFY(!QFile::exists(p.picture("Page0009_img.bin")));
        QVERIFY(QFile::exists(p.picture("a.png")));
    }
};

QTEST_GUILESS_MAIN(TestPictureBlock)
#include "tst_picture_block.moc"
