// Fonts and sounds in the image: the font file header and records (written
// here byte by byte), the font writer and reader, the font scan's rules,
// the Font_all.bin and Wav_all.bin tables (address 4, size 4, little-endian,
// the data behind the table), bad font files, and a build that carries both.

#include "build/FontBlock.h"
#include "build/FontFile.h"
#include "build/MakeBin.h"
#include "project/ProjectSettings.h"
#include "project/TextFiles.h"
#include "widgets/KindRegistry.h"
#include "widgets/WidgetLine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace vantile;

namespace {

QByteArray hex(const char *spaced) { return QByteArray::fromHex(spaced); } // blanks are skipped

// A font file by hand: tag, width, height, first and last code (low byte
// first), depth, 95 width-table bytes (all 0, or `asciiA` for 'A'), records.
QByteArray font(const char *tag, int w, int h, int first, int last, int depth, const QByteArray &records = {},
                int asciiA = 0)
{
    QByteArray b;
    b += tag[0];
    b += tag[1];
    for (int v : {w, h, first & 0xFF, first >> 8, last & 0xFF, last >> 8, depth})
        b += char(v);
    QByteArray widths(95, '\0');
    widths[0x41 - 0x20] = char(asciiA);
    return b + widths + records;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A project folder and a build context on it.
struct Project {
    QTemporaryDir dir;
    BuildContext ctx;
    BlockDirectory directory;
    QStringList notices;

    Project()
    {
        ctx.projectDir = dir.path() + QLatin1Char('/');
        ctx.directory = &directory;
        ctx.notifier = [this](const QString &t, const QString &m) { notices << t + QLatin1Char('|') + m; };
    }
    void put(const QString &relative, const QByteArray &bytes) { QVERIFY(writeFile(ctx.path(relative), bytes)); }
    // The Font block with these ids marked used; returns Font_all.bin.
    QByteArray buildFonts(qint64 start, const QByteArray &used)
    {
        ctx.runningAddress = start;
        FontBlock::buildFonts(ctx, [used](BuildContext &, int) { return used; });
        return readAll(ctx.blockPath(Block::Font));
    }
};

// A one-page project in `root` whose page holds `widgets`; the driver gets
// the Font and Wav blocks and the font scan.
BuildInput makeProject(const QString &root, const QStringList &widgets, MakeBin &driver)
{
    ProjectSettings s;
    s.xsize = "800";
    s.ysize = "480";
    s.flashSize = 0;
    writeFile(root + "p.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
    writeFile(root + "p.ini", s.toIni());
    writeFile(root + "Plugin/Page0000.cfg", TextFiles::encodePlain(widgets));
    driver.setBuilder(std::make_unique<FontBlockBuilder>());
    driver.setBuilder(std::make_unique<WavBlockBuilder>());
    driver.setStep(BuildStep::FontScan, FontBlock::scanFonts);
    return loadProject(root + "p.uiprj").input;
}

// 3 x 2 glyph: full, empty, full / empty, 2/3, 1/3.
const QByteArray kGlyph3x2("\xFF\x00\xFF\x00\xAA\x55", 6);

} // namespace

class TestFontBlocks : public QObject
{
    Q_OBJECT

private slots:
    void headerRule_data()
    {
        QTest::addColumn<QByteArray>("tag");
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("encoding");
        QTest::addColumn<int>("bits");
        QTest::addColumn<int>("recordBytes"); // 5 x 3 pixels
        QTest::newRow("GB 1 bit") << QByteArray("GB") << 0 << 0 << 1 << 3;        // 3 x 1
        QTest::newRow("GK 2 bits") << QByteArray("GK") << 1 << 1 << 2 << 6;       // 3 x ceil(10/8)
        QTest::newRow("BG 4 bits") << QByteArray("BG") << 2 << 2 << 4 << 9;       // 3 x ceil(20/8)
        QTest::newRow("UN 8 bits") << QByteArray("UN") << 3 << 3 << 8 << 15;
        QTest::newRow("AS 16 bits") << QByteArray("AS") << 4 << 4 << 16 << 30;    // 5 x 3 x 2
        QTest::newRow("un + advance") << QByteArray("un") << 0 << 6 << 1 << 4;
        QTest::newRow("SS + advance") << QByteArray("SS") << 2 << 9 << 4 << 10;
        QTest::newRow("GT") << QByteArray("GT") << 0 << 7 << 1 << 3;
        QTest::newRow("TF") << QByteArray("TF") << 0 << 8 << 1 << 3;
        QTest::newRow("other tag, depth 7") << QByteArray("gb") << 7 << 5 << 1 << 3;
    }
    void headerRule()
    {
        QFETCH(QByteArray, tag);
        QFETCH(int, depth);
        FontFile::Header h;
        QVERIFY(FontFile::Header::parse(font(tag.constData(), 5, 3, 0x20, 0x7E, depth), &h));
        QTEST(h.encoding(), "encoding");
        QTEST(h.bits(), "bits");
        QTEST(h.recordBytes(), "recordBytes");
    }

    void headerFields()
    {
        // "GK", 16 x 24, codes 0x8140..0xFEFE, 2 bits, 'A' 9 wide.
        const QByteArray bytes = hex("474B 10 18 4081 FEFE 01") + QByteArray(33, '\0') + char(9) + QByteArray(61, '\0');
        FontFile::Header h;
        QVERIFY(!FontFile::Header::parse(bytes.left(103), &h));
        QVERIFY(FontFile::Header::parse(bytes, &h));
        QCOMPARE(QVector<int>({h.width, h.height, h.firstCode, h.lastCode, h.depth, h.widths[33]}),
                 QVector<int>({16, 24, 0x8140, 0xFEFE, 1, 9}));
        // ceil(16 x 2 / 8) = 4 bytes a row, 96 a record; 0xFEFE - 0x8140 + 1 = 32191 records.
        QCOMPARE(h.recordCount(), qint64(32191));
        QCOMPARE(h.fileSize(), qint64(104 + 32191 * 96));
        QCOMPARE(h.recordOffset(0x8141), qint64(104 + 96));
        QCOMPARE(h.bytes(), bytes);
    }

    void writerAndReader_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<double>("middle"); // coverage at (1, 1)
        QTest::addColumn<double>("right");  // coverage at (2, 1)
        // 1 bit: 255 0 255 -> 101 -> 1010 0000; 0 170 85 -> 0 1 0 -> 0100 0000.
        QTest::newRow("1 bit") << 0 << hex("A0 40") << 1.0 << 0.0;
        // 2 bits: 3 0 3 -> 11 00 11 00; 0 2 1 -> 00 10 01 00.
        QTest::newRow("2 bits") << 1 << hex("CC 24") << 2.0 / 3 << 1.0 / 3;
    }
    void writerAndReader()
    {
        QFETCH(int, depth);
        QFETCH(QByteArray, record);
        FontFile::Header h;
        h.tag = "AS";
        h.width = 3;
        h.height = 2;
        h.firstCode = 0x41;
        h.lastCode = 0x42;
        h.depth = depth;
        FontFile::Glyph a;
        a.coverage = kGlyph3x2;
        a.advance = 2;
        // 'A' drawn, 'B' left empty; 'A' advances 2 pixels (width table byte 42).
        const QByteArray file = FontFile::write(h, {{0x41, a}});
        QCOMPARE(file, font("AS", 3, 2, 0x41, 0x42, depth, record + hex("0000"), 2));

        FontFile::Font f;
        QVERIFY(f.load(file));
        QCOMPARE(f.record(0x41), record);
        QCOMPARE(f.coverage(0x41, 0, 0), 1.0);
        QCOMPARE(f.coverage(0x41, 1, 0), 0.0);
        QTEST(f.coverage(0x41, 1, 1), "middle");
        QTEST(f.coverage(0x41, 2, 1), "right");
        QCOMPARE(f.coverage(0x41, 3, 0) + f.coverage(0x41, 0, -1) + f.coverage(0x42, 0, 0), 0.0);
        // Advances: the table for 'A', full width for 'B' (table 0) and for codes outside.
        QCOMPARE(QVector<int>({f.advance(0x41), f.advance(0x42), f.advance(0x4E2D)}), QVector<int>({2, 3, 3}));
        QVERIFY(!f.hasGlyph(0x43) && f.record(0x40).isEmpty());
    }

    void wideColourAndOutlineFonts()
    {
        // "un": the advance byte leads the record, the width table is not used.
        FontFile::Header h;
        h.tag = "un";
        h.width = 3;
        h.height = 2;
        h.firstCode = h.lastCode = 0x4E2D;
        h.depth = 1;
        h.family = QStringLiteral("Noto Sans");
        h.style = FontFile::Bold | FontFile::Underline;
        FontFile::Glyph g;
        g.coverage = kGlyph3x2;
        g.advance = 4;
        const QByteArray file = FontFile::write(h, {{0x4E2D, g}});
        QByteArray header = font("un", 3, 2, 0x4E2D, 0x4E2D, 1);
        header.replace(9, 10, QByteArray("Noto Sans\0", 10));
        header[73] = 0x05;
        QCOMPARE(file, header + hex("04 CC 24"));
        FontFile::Font f;
        QVERIFY(f.load(file));
        QCOMPARE(f.header().family + QString::number(f.header().style), QStringLiteral("Noto Sans5"));
        QCOMPARE(f.advance(0x4E2D), 4);
        // 16 bits: RGB565 pixels low byte first.
        h.tag = "AS";
        h.width = 1;
        h.height = 1;
        h.firstCode = h.lastCode = 0x30;
        h.depth = 4;
        g.rgb = {0xF81F};
        QVERIFY(f.load(FontFile::write(h, {{0x30, g}})));
        QCOMPARE(f.record(0x30), hex("1F F8"));
        QCOMPARE(f.pixel(0x30, 0, 0), 0xF81F);
    }

    void characterCodes()
    {
        // "中": GBK D6 D0, BIG5 A4 A4, UTF-16 4E2D; 'A' is 0x41 everywhere.
        const QString text = QStringLiteral("A\u4E2D");
        QCOMPARE(FontFile::codesOf(text, 1), QVector<int>({0x41, 0xD6D0}));
        QCOMPARE(FontFile::codesOf(text, 2), QVector<int>({0x41, 0xA4A4}));
        QCOMPARE(FontFile::codesOf(text, 6), QVector<int>({0x41, 0x4E2D}));
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
        // ids 0, 2 and 5 of 105, 106 and 107 bytes; 2 is not used, 1, 3, 4 have no file.
        const QByteArray f0 = font("AS", 1, 1, 0x41, 0x41, 0, hex("80"));
        const QByteArray f2 = font("AS", 1, 1, 0x41, 0x42, 0, hex("80 00"));
        const QByteArray f5 = font("AS", 1, 1, 0x41, 0x43, 0, hex("80 80 80"));
        p.put("FontBin/00_Font.bin", f0);
        p.put("FontBin/02_Font16.bin", f2);
        p.put("FontBin/05_Font.bin", f5);
        // Six entries at 0x20001, data from 0x20031: 0 -> 0x20031 (0x69 bytes); 1 to 4
        // -> 0x2009A, 0 bytes; 5 -> 0x2009A (0x6B bytes).
        // Marks on ids without a file change nothing.
        const QByteArray block = p.buildFonts(0x20001, hex("01 01 00 01 01 01"));
        QCOMPARE(block, hex("31000200 69000000") + hex("9A000200 00000000").repeated(4) + hex("9A000200 6B000000")
                            + f0 + f5);
        QCOMPARE(p.directory.value(BlockDirectory::FontAddress), 0x20001u);
        QCOMPARE(p.directory.value(BlockDirectory::FontCount), 6u);
        QCOMPARE(p.ctx.runningAddress, qint64(0x20001 + 48 + 105 + 107));
        QCOMPARE(p.ctx.buildLog, QStringList({"", "Font_Number:6", "Scan fontbin:00_Font.bin...",
                                              "Scan fontbin:05_Font.bin...", "Make Font_all.bin"}));

        // No font file: the address is set, the count 0, no file, the address stays.
        QDir(p.ctx.path("FontBin")).removeRecursively();
        QVERIFY(p.buildFonts(0x30000, hex("01")).isEmpty());
        QVERIFY(!QFile::exists(p.ctx.blockPath(Block::Font)));
        QCOMPARE(QVector<quint32>({p.directory.value(BlockDirectory::FontAddress),
                                   p.directory.value(BlockDirectory::FontCount)}),
                 QVector<quint32>({0x30000, 0}));
        QCOMPARE(p.ctx.runningAddress, qint64(0x30000));
    }

    void badFontFiles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("complaint"); // else only logged
        QTest::addColumn<int>("blockSize");  // Font_all.bin with every id marked used
        QTest::addColumn<bool>("readable");  // by the glyph reader
        const QByteArray record(32, '\0');
        QTest::newRow("empty") << "03_Font.bin" << QByteArray() << "03_Font.bin is invalid" << true << 4 * 8
                               << false;
        QTest::newRow("header only") << "03_Font.bin" << font("GB", 16, 16, 0, 0, 0) << "03_Font.bin is invalid"
                                     << true << 4 * 8 << false;
        QTest::newRow("no pixels") << "03_Font.bin" << font("GB", 0, 16, 0, 0, 0, record)
                                   << "03_Font.bin is invalid: the character size is 0 x 16" << true << 4 * 8
                                   << false;
        QTest::newRow("codes reversed")
            << "03_Font.bin" << font("GB", 16, 16, 0x50, 0x40, 0, record)
            << "03_Font.bin is invalid: the last code 0x0040 is below the first 0x0050" << true << 4 * 8 << false;
        // All 0xFF: tag 5, 255 x 255 at 1 bit (depth 0xFF counts as 0), code
        // 0xFFFF alone: one record of 255 x 32 bytes, 104 + 8160 = 8264, and
        // the file holds 200. It is carried as it stands.
        QTest::newRow("garbage") << "03_Font.bin" << QByteArray(200, char(0xFF))
                                 << "03_Font.bin holds 200 bytes, its characters need 8264" << false << 4 * 8 + 200
                                 << true;
        // 64 entries, all empty.
        QTest::newRow("id over 63") << "70_Font.bin" << font("GB", 16, 16, 0, 0, 0, record)
                                    << "70_Font.bin id is over 64" << true << 64 * 8 << true;
    }
    void badFontFiles()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, message);
        Project p;
        p.put("FontBin/" + name, bytes);
        FontBlock::scanFonts(p.ctx);
        QVERIFY2(p.ctx.buildLog.contains(message), qPrintable(p.ctx.buildLog.join('|')));
        QTEST(p.ctx.errorText == message + "\n", "complaint");
        // The block is still built; a file left out takes no flash although "used".
        QTEST(int(p.buildFonts(0x1000, QByteArray(64, '\1')).size()), "blockSize");
        // The reader refuses what the scan refuses and never reads past the bytes.
        FontFile::Font f;
        QTEST(f.load(bytes), "readable");
        QCOMPARE(f.coverage(0xFFFF, 254, 254) + f.coverage(0, 0, 0) + f.pixel(0xFFFF, 0, 0), 0.0);
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
        QCOMPARE(readAll(p.ctx.blockPath(Block::Wav)),
                 hex("19000400 03000000 1C000400 00000000 1C000400 02000000") + "abcde");
        QCOMPARE(p.directory.value(BlockDirectory::WavAddress), 0x40001u);
        QCOMPARE(p.directory.value(BlockDirectory::WavCount), 3u);
        QCOMPARE(p.ctx.runningAddress, qint64(0x40001 + 24 + 5));
        QCOMPARE(p.ctx.buildLog,
                 QStringList({"", "wav_count:3", "Scan wav:0000_Wav.bin...", "Scan wav:0002_doorWav.bin...",
                              "Len:3", "wav0bin_Addr:00040019", "Len:0", "wav1bin_Addr:0004001C", "Len:2",
                              "wav2bin_Addr:0004001C", "Make Wav_all.bin"}));
    }

#ifdef Q_OS_UNIX
    void mediaThatIsNoFile()
    {
        // A pipe or a link to a device is refused by name, takes no flash,
        // and is never opened (a pipe would block the build).
        Project p;
        QVERIFY(QDir().mkpath(p.ctx.path("FontBin")) && QDir().mkpath(p.ctx.path("WavBin")));
        QCOMPARE(::mkfifo(QFile::encodeName(p.ctx.path("FontBin/01_Font.bin")).constData(), 0600), 0);
        QVERIFY(QFile::link("/dev/zero", p.ctx.path("WavBin/0001_Wav.bin")));
        p.put("WavBin/0000_Wav.bin", "abc");
        QCOMPARE(p.buildFonts(0x100, hex("01 01")), hex("10010000 00000000 10010000 00000000"));
        p.ctx.runningAddress = 0x200;
        FontBlock::buildWavs(p.ctx);
        QCOMPARE(readAll(p.ctx.blockPath(Block::Wav)), hex("10020000 03000000 13020000 00000000") + "abc");
        QCOMPARE(p.ctx.errorText, QString("01_Font.bin is invalid: Not a regular file\n"
                                          "0001_Wav.bin is invalid: Not a regular file\n"));
    }
#endif

    void buildCarriesUsedFontsAndSounds()
    {
        // Two widgets of a kind with a font field: one on font 2, one on font 7, which has no file.
        WidgetKind kind = WidgetKind::None;
        int field = -1;
        for (WidgetKind k : {WidgetKind::Label, WidgetKind::Number}) {
            const KindDef *def = KindRegistry::definition(k);
            for (int i = 0; def && i < def->fieldCount && field < 0; ++i)
                if (def->fields[i].codec == Codec::FontRef)
                    kind = k, field = i;
        }
        if (field < 0)
            QSKIP("no widget kind with a font field is described yet");
        QStringList lines;
        QString missingName;
        for (int id : {2, 7}) {
            EditBuffer b = WidgetLine::createNew(kind, quint32(lines.size()), QRect(0, 0, 40, 20));
            FieldValue v = b.value(field);
            v.number = id;
            b.setValue(field, v);
            lines << WidgetLine::write(b);
            missingName = b.name();
        }
        QTemporaryDir dir;
        const QString root = dir.path() + "/";
        MakeBin driver;
        const BuildInput in = makeProject(root, lines, driver);
        const QByteArray f2 = font("AS", 1, 1, 0x41, 0x42, 0, hex("80 00"));
        QVERIFY(writeFile(root + "FontBin/00_Font24.bin", font("GK", 24, 24, 0x41, 0x41, 0, QByteArray(72, '\0'))));
        QVERIFY(writeFile(root + "FontBin/02_Font.bin", f2));
        QVERIFY(writeFile(root + "WavBin/0000_Wav.bin", "abc"));
        FontTable seen; // the table as the page blocks find it
        driver.setStep(BuildStep::PreBuildChecks, [&seen](BuildContext &ctx) { seen = ctx.fonts; });
        const BuildResult r = driver.run(in);
        QCOMPARE(QVector<int>({seen.count, seen.width[0], seen.height[0], seen.encoding[0], seen.encoding[2]}),
                 QVector<int>({3, 24, 24, 1, 4}));
        // Font at 0x10180, three entries, data from 0x10198: only font 2 (0x6A bytes)
        // is carried. Wav at 0x10180 + 24 + 106 = 0x10202, its data at 0x1020A.
        const QByteArray image = readAll(r.imagePath);
        QCOMPARE(image.mid(0x10, 16), hex("80010100 03000000 02020100 01000000"));
        QCOMPARE(image.mid(0x10180), hex("98010100 00000000 98010100 00000000 98010100 6A000000") + f2
                                         + hex("0A020100 03000000") + "abc");
        QCOMPARE(r.complaints(), QStringList{"Page0: " + missingName + "07_Fontxxx isn't in the FontBin folder"});
        QVERIFY(!QFile::exists(root + "FontBin/Font_all.bin") && !QFile::exists(root + "WavBin/Wav_all.bin"));
    }
};

QTEST_GUILESS_MAIN(TestFontBlocks)
#include "tst_font_blocks.moc"
