// Fonts and sounds in the image: font files written here byte by byte, the
// font scan's rules, the Font_all.bin and Wav_all.bin tables (address 4, size
// 4, little-endian, the data behind the table), bad files, and a build.

#include "CoreTestSupport.h"
#include "build/FontBlock.h"
#include "build/FontFile.h"
#include "build/MakeBin.h"
#include "project/TextFiles.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace core;

namespace {

// A font file by hand: tag, width, height, first and last code (low byte
// first), depth, 95 width-table bytes (all 0, or `asciiA` for 'A'), records.
QByteArray font(const char *tag, int w, int h, int first, int last, int depth, const QByteArray &records = {},
                int asciiA = 0)
{
    QByteArray b(tag, 2);
    for (int v : {w, h, first & 0xFF, first >> 8, last & 0xFF, last >> 8, depth})
        b += char(v);
    QByteArray widths(95, '\0');
    widths[0x41 - 0x20] = char(asciiA);
    return b + widths + records;
}

FontFile::Header header(const char *tag, int w, int h, int first, int last, int depth)
{
    FontFile::Header r;
    r.tag = tag;
    r.width = w, r.height = h, r.firstCode = first, r.lastCode = last, r.depth = depth;
    return r;
}

struct Project : BuildDir {
    QStringList notices;

    Project()
        : BuildDir(QStringList())
    {
        ctx.notifier = [this](const QString &t, const QString &m) { notices << t + QLatin1Char('|') + m; };
    }
    // The Font block with these ids marked used; returns Font_all.bin.
    QByteArray buildFonts(qint64 start, const QByteArray &used)
    {
        ctx.runningAddress = start;
        FontBlock::buildFonts(ctx, [used](BuildContext &, int) { return used; });
        return block(Block::Font);
    }
};

// 3 x 2 glyph: full, empty, full / empty, 2/3, 1/3.
const QByteArray kGlyph3x2("\xFF\x00\xFF\x00\xAA\x55", 6);

} // namespace

class TestFontBlocks : public QObject
{
    Q_OBJECT

private slots:
    void headersAndCodes()
    {
        // tag and depth -> encoding, bits a pixel, bytes of a 5 x 3 record: 3 rows of
        // ceil(5 x bits / 8), and for "un" and "SS" one advance byte in front
        const struct { const char *tag; int depth, encoding, bits, recordBytes; } cases[] = {
            {"GB", 0, 0, 1, 3}, {"GK", 1, 1, 2, 6}, {"BG", 2, 2, 4, 9}, {"UN", 3, 3, 8, 15}, {"AS", 4, 4, 16, 30},
            {"un", 0, 6, 1, 4}, {"SS", 2, 9, 4, 10}, {"GT", 0, 7, 1, 3}, {"TF", 0, 8, 1, 3}, {"gb", 7, 5, 1, 3}};
        for (const auto &c : cases) {
            FontFile::Header h;
            QVERIFY(FontFile::Header::parse(font(c.tag, 5, 3, 0x20, 0x7E, c.depth), &h));
            QCOMPARE(QString("%1: %2 %3 %4").arg(c.tag).arg(h.encoding()).arg(h.bits()).arg(h.recordBytes()),
                     QString("%1: %2 %3 %4").arg(c.tag).arg(c.encoding).arg(c.bits).arg(c.recordBytes));
        }
        // "GK", 16 x 24, codes 0x8140..0xFEFE, 2 bits, 'A' 9 wide.
        const QByteArray bytes = hex("474B 10 18 4081 FEFE 01") + QByteArray(33, '\0') + char(9) + QByteArray(61, '\0');
        FontFile::Header h;
        QVERIFY(!FontFile::Header::parse(bytes.left(103), &h) && FontFile::Header::parse(bytes, &h));
        QCOMPARE(QVector<int>({h.width, h.height, h.firstCode, h.lastCode, h.depth, h.widths[33]}),
                 QVector<int>({16, 24, 0x8140, 0xFEFE, 1, 9}));
        // ceil(16 x 2 / 8) = 4 bytes a row, 96 a record; 0xFEFE - 0x8140 + 1 = 32191 records.
        QCOMPARE(QVector<qint64>({h.recordCount(), h.fileSize(), h.recordOffset(0x8141)}),
                 QVector<qint64>({32191, 104 + 32191 * 96, 104 + 96}));
        QCOMPARE(h.bytes(), bytes);
        // The codes of a text: "中" is GBK D6 D0, BIG5 A4 A4, UTF-16 4E2D; 'A' is 0x41 everywhere.
        const QString text = QStringLiteral("A\u4E2D");
        QCOMPARE(FontFile::codesOf(text, 1) + FontFile::codesOf(text, 2) + FontFile::codesOf(text, 6),
                 QVector<int>({0x41, 0xD6D0, 0x41, 0xA4A4, 0x41, 0x4E2D}));
    }

    void glyph3x2AtOneAndTwoBits()
    {
        // 1 bit: 255 0 255 -> 1010 0000; 0 170 85 -> 0 1 0 -> 0100 0000; read back as 1 and 0.
        // 2 bits: 3 0 3 -> 11 00 11 00; 0 2 1 -> 00 10 01 00; read back as 2/3 and 1/3.
        // 'A' drawn, 'B' left empty; 'A' advances 2 pixels (width table byte 42).
        const struct { int depth; const char *record; double middle, right; } cases[] = {
            {0, "A040", 1.0, 0.0}, {1, "CC24", 2.0 / 3, 1.0 / 3}};
        for (const auto &c : cases) {
            const FontFile::Glyph a{kGlyph3x2, {}, 2};
            const QByteArray file = FontFile::write(header("AS", 3, 2, 0x41, 0x42, c.depth), {{0x41, a}});
            QCOMPARE(file, font("AS", 3, 2, 0x41, 0x42, c.depth, hex(c.record) + hex("0000"), 2));
            FontFile::Font f;
            QVERIFY(f.load(file));
            QCOMPARE(f.record(0x41), hex(c.record));
            QCOMPARE(f.coverage(0x41, 0, 0), 1.0);
            QCOMPARE(f.coverage(0x41, 1, 1), c.middle);
            QCOMPARE(f.coverage(0x41, 2, 1), c.right);
            // (1, 0) is empty, and so are pixels outside the glyph and the empty 'B'
            QCOMPARE(f.coverage(0x41, 1, 0) + f.coverage(0x41, 3, 0) + f.coverage(0x41, 0, -1) + f.coverage(0x42, 0, 0), 0.0);
            // Advances: the table for 'A', full width for 'B' (table 0) and for codes outside.
            QCOMPARE(QVector<int>({f.advance(0x41), f.advance(0x42), f.advance(0x4E2D)}), QVector<int>({2, 3, 3}));
            QVERIFY(!f.hasGlyph(0x43) && f.record(0x40).isEmpty());
        }
    }

    void advanceInRecordAndColourFonts()
    {
        // "un": the advance byte leads the record; the family in bytes 9.., the style
        // (bold 1 | underline 4) at 73 instead of the width table.
        FontFile::Header h = header("un", 3, 2, 0x4E2D, 0x4E2D, 1);
        h.family = QStringLiteral("Noto Sans");
        h.style = FontFile::Bold | FontFile::Underline;
        FontFile::Glyph g{kGlyph3x2, {}, 4};
        QByteArray expected = font("un", 3, 2, 0x4E2D, 0x4E2D, 1, hex("04 CC 24"));
        expected.replace(9, 10, QByteArray("Noto Sans\0", 10));
        expected[73] = 0x05;
        const QByteArray file = FontFile::write(h, {{0x4E2D, g}});
        QCOMPARE(file, expected);
        FontFile::Font f;
        QVERIFY(f.load(file));
        QCOMPARE(f.header().family + QString::number(f.header().style), QStringLiteral("Noto Sans5"));
        QCOMPARE(f.advance(0x4E2D), 4);
        // 16 bits: RGB565 pixels low byte first.
        g.rgb = {0xF81F};
        QVERIFY(f.load(FontFile::write(header("AS", 1, 1, 0x30, 0x30, 4), {{0x30, g}})));
        QCOMPARE(f.record(0x30), hex("1F F8"));
        QCOMPARE(f.pixel(0x30, 0, 0), 0xF81F);
    }

    void scanRules()
    {
        Project p;
        // id 64 is the last file: F is 65, cut to 64 after the warning.
        p.put("FontBin/00_Font.bin", font("GB", 16, 16, 0xA1A1, 0xA1A1, 0, QByteArray(32, '\0')));
        p.put("FontBin/64_Font.bin", font("AS", 8, 16, 0x41, 0x41, 0, QByteArray(16, '\0')));
        // Two files with id 3: the first in name order counts.
        p.put("FontBin/03_aFont.bin", font("AS", 8, 12, 0x41, 0x41, 0, QByteArray(12, '\0')));
        p.put("FontBin/03_bFont.bin", font("UN", 24, 24, 0x41, 0x41, 0, QByteArray(72, '\0')));
        p.put("FontBin/Font_all.bin", QByteArray(200, 'x')); // "Font" at the start: no font
        FontBlock::scanFonts(p.ctx);
        FontBlock::scanFonts(p.ctx); // the text blocks scan again: nothing is told twice
        const FontTable &t = p.ctx.fonts;
        QCOMPARE(t.count, 64);
        QCOMPARE(p.notices, QStringList{"Warning|Too much fontxx.bin in the FontBin folder"});
        QCOMPARE(p.ctx.errorText, QString("03_bFont.bin has the same id as 03_aFont.bin and is left out\n"
                                          "64_Font.bin id is over 64\n"));
        // id 0 "GB" 16 x 16, id 3 "AS" 8 x 12, id 1 untouched: 0, 0, 5.
        QCOMPARE(QVector<int>({t.width[0], t.height[0], t.encoding[0], t.width[3], t.height[3], t.encoding[3],
                               t.width[1], t.height[1], t.encoding[1]}),
                 QVector<int>({16, 16, 0, 8, 12, 4, 0, 0, 5}));
    }

    void fontBlockTable()
    {
        Project p;
        // ids 0, 2 and 5 of 105, 106 and 107 bytes; 2 is not used, 1 a pipe or nothing, 3, 4 nothing.
        const QByteArray f0 = font("AS", 1, 1, 0x41, 0x41, 0, hex("80"));
        const QByteArray f5 = font("AS", 1, 1, 0x41, 0x43, 0, hex("80 80 80"));
        p.put("FontBin/00_Font.bin", f0);
        p.put("FontBin/02_Font16.bin", font("AS", 1, 1, 0x41, 0x42, 0, hex("80 00")));
        p.put("FontBin/05_Font.bin", f5);
#ifdef Q_OS_UNIX // a pipe is refused by name and never opened (it would block the build)
        QCOMPARE(::mkfifo(QFile::encodeName(p.ctx.path("FontBin/01_Font.bin")).constData(), 0600), 0);
#endif
        // Six entries at 0x20001, data from 0x20031: 0 -> 0x20031 (0x69 bytes); 1 to 4
        // -> 0x2009A, 0 bytes; 5 -> 0x2009A (0x6B bytes). Marks on ids without a file change nothing.
        QCOMPARE(p.buildFonts(0x20001, hex("01 01 00 01 01 01")),
                 hex("31000200 69000000") + hex("9A000200 00000000").repeated(4) + hex("9A000200 6B000000") + f0 + f5);
        QCOMPARE(QVector<qint64>({p.directory.value(BlockDirectory::FontAddress), p.directory.value(BlockDirectory::FontCount),
                                  p.ctx.runningAddress}), QVector<qint64>({0x20001, 6, 0x20001 + 48 + 105 + 107}));
#ifdef Q_OS_UNIX
        QCOMPARE(p.ctx.errorText, QString("01_Font.bin is invalid: Not a regular file\n"));
#endif

        // No font file: the address is set, the count 0, no file, the address stays.
        QDir(p.ctx.path("FontBin")).removeRecursively();
        QVERIFY(p.buildFonts(0x30000, hex("01")).isEmpty() && !QFile::exists(p.ctx.blockPath(Block::Font)));
        QCOMPARE(QVector<qint64>({p.directory.value(BlockDirectory::FontAddress), p.directory.value(BlockDirectory::FontCount),
                                  p.ctx.runningAddress}), QVector<qint64>({0x30000, 0, 0x30000}));
    }

    void badFontFiles()
    {
        // Each is logged; all but the one too short for its characters are complaints. The block is built with
        // every id marked used (a file left out takes no flash), and the reader refuses what the
        // scan refuses and never reads past the bytes.
        const QByteArray record(32, '\0');
        const struct { const char *name; QByteArray bytes; QString message; bool complaint; int block; bool read; } cases[] = {
            {"03_Font.bin", {}, "03_Font.bin is invalid", true, 4 * 8, false},
            {"03_Font.bin", font("GB", 0, 16, 0, 0, 0, record), "03_Font.bin is invalid: the character size is 0 x 16",
             true, 4 * 8, false},
            // all 0xFF: tag 5, 255 x 255 at 1 bit (depth 0xFF counts as 0), code 0xFFFF alone: one
            // record of 255 x 32 bytes, 104 + 8160 = 8264, and the file holds 200; carried as it stands
            {"03_Font.bin", QByteArray(200, char(0xFF)), "03_Font.bin holds 200 bytes, its characters need 8264", false,
             4 * 8 + 200, true},
            {"70_Font.bin", font("GB", 16, 16, 0, 0, 0, record), "70_Font.bin id is over 64", true, 64 * 8, true}};
        for (const auto &c : cases) {
            Project p;
            p.put(QLatin1String("FontBin/") + c.name, c.bytes);
            FontBlock::scanFonts(p.ctx);
            QVERIFY2(p.ctx.buildLog.contains(c.message), qPrintable(p.ctx.buildLog.join('|')));
            QCOMPARE(p.ctx.errorText == c.message + "\n", c.complaint);
            QCOMPARE(p.buildFonts(0x1000, QByteArray(64, '\1')).size(), c.block);
            FontFile::Font f;
            QCOMPARE(f.load(c.bytes), c.read);
            QCOMPARE(f.coverage(0xFFFF, 254, 254) + f.coverage(0, 0, 0) + f.pixel(0xFFFF, 0, 0), 0.0);
        }
    }

    void wavBlock()
    {
        Project p;
        p.put("WavBin/0000_Wav.bin", "abc");
        p.put("WavBin/0002_doorWav.bin", "de");
        p.put("WavBin/0001_beep.bin", "no word"); // no "Wav": not a sound file
        p.put("WavBin/Wav_old.bin", "no number");
        p.ctx.runningAddress = 0x40001;
        FontBlock::buildWavs(p.ctx);
        // Three entries at 0x40001, data from 0x40019: 0 -> 3 bytes, 1 -> 0x4001C, 0; 2 -> 0x4001C, 2.
        QCOMPARE(p.block(Block::Wav),
                 hex("19000400 03000000 1C000400 00000000 1C000400 02000000") + "abcde");
        QCOMPARE(QVector<qint64>({p.directory.value(BlockDirectory::WavAddress), p.directory.value(BlockDirectory::WavCount),
                                  p.ctx.runningAddress}), QVector<qint64>({0x40001, 3, 0x40001 + 24 + 5}));
        QVERIFY(p.ctx.buildLog.contains("wav1bin_Addr:0004001C"));
    }

    void buildCarriesUsedFontsAndSounds()
    {
        // A page with two labels: one on font 2, one on font 7, which has no file.
        const QString label = "%1:0xFFFF,20,0,0,40,20,32,32,%2,0,0,0,0xD3D3D3,0x000000,*Hex:41,0xFFFF,%1,Disable,0,0,0,"
                              "0xFFFF,1;";
        QTemporaryDir dir;
        const QString root = dir.path() + "/";
        ProjectSettings s;
        s.xsize = "800", s.ysize = "480", s.flashSize = 0;
        const QByteArray f2 = font("AS", 1, 1, 0x41, 0x42, 0, hex("80 00"));
        writeFile(root + "p.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
        writeFile(root + "p.ini", s.toIni());
        writeFile(root + "Plugin/Page0000.cfg",
                  TextFiles::encodePlain({label.arg("label_0").arg(2), label.arg("label_1").arg(7)}));
        writeFile(root + "FontBin/00_Font24.bin", font("GK", 24, 24, 0x41, 0x41, 0, QByteArray(72, '\0')));
        writeFile(root + "FontBin/02_Font.bin", f2);
        writeFile(root + "WavBin/0000_Wav.bin", "abc");
        MakeBin driver; // the Font and Wav blocks and the font scan
        driver.setBuilder(std::make_unique<FontBlockBuilder>());
        driver.setBuilder(std::make_unique<WavBlockBuilder>());
        driver.setStep(BuildStep::FontScan, FontBlock::scanFonts);
        const BuildResult r = driver.run(loadProject(root + "p.uiprj").input);
        // Font at 0x10180, three entries, data from 0x10198: only font 2 (0x6A bytes)
        // is carried. Wav at 0x10180 + 24 + 106 = 0x10202, its data at 0x1020A.
        const QByteArray image = readAll(r.imagePath);
        QCOMPARE(image.mid(0x10, 16), hex("80010100 03000000 02020100 01000000"));
        QCOMPARE(image.mid(0x10180), hex("98010100 00000000 98010100 00000000 98010100 6A000000") + f2
                                         + hex("0A020100 03000000") + "abc");
        QCOMPARE(r.complaints(), QStringList{"Page0: label_107_Fontxxx isn't in the FontBin folder"});
        QVERIFY(!QFile::exists(root + "FontBin/Font_all.bin") && !QFile::exists(root + "WavBin/Wav_all.bin"));
    }
};

QTEST_GUILESS_MAIN(TestFontBlocks)
#include "tst_font_blocks.moc"
