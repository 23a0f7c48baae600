// The icon and gif blocks and the needle animation step on small projects.
// Expected bytes are worked out by hand: table entries are address 4,
// width 2, height 2, length 3, format 1 (little-endian); gif entries are
// address 4, frame count 4; frame entries address 4, x 2, y 2, width 2,
// height 2, length 3, format 1. Pictures are 1 x 1 unless told: red packs
// as RGB565 00F8, green E007, blue 1F00; opaque white aRGB4444 FFFF.

#include "CoreTestSupport.h"
#include "build/GifBlock.h"
#include "build/IconBlock.h"
#include "build/OrderedWork.h"

#include <atomic>

using namespace core;

namespace {

// A button that shows `picture` unpressed.
QString button(int n, const QString &picture)
{
    return QStringLiteral("button_%1:0,0,10,10,0x0021,%2,,,b%1,Disable,Disable,0x0000,0xFFFF,1;").arg(n).arg(picture);
}

// A needle line in the order of its fields.
QString needle(int n, const QString &type, const QString &icon, int start, int final, int step)
{
    return QStringLiteral("needle_%1:0xFFFF,0x1000,10,10,100,100,,50,50,%2,%3,%4,0,Disable,,%5,10,60,0x969696,9,"
                          "0xB4B4B4,%6,Disable,0xFFFF,0,short,0,0,,,Left,Disable,3,0,n%1;")
        .arg(n).arg(start).arg(final).arg(step).arg(type, icon);
}

// A GIF of 2 x 1 frames by hand: palette red, green, blue, black; each
// frame's two indices LZW-coded with 3-bit codes: clear 4, a, b, end 5.
QByteArray gif(const QVector<QPair<int, int>> &frames)
{
    QByteArray g("GIF89a");
    g += hex("0200 0100 81 00 00") + hex("FF0000 00FF00 0000FF 000000");
    for (const auto &[a, b] : frames) {
        const int codes = 4 | (a << 3) | (b << 6) | (5 << 9);
        g += hex("21F9 04 00 0A00 00 00") + hex("2C 0000 0000 0200 0100 00") + hex("02 02");
        g.append(char(codes & 0xFF)).append(char(codes >> 8)).append('\0');
    }
    return g + char(0x3B);
}

// Chip 1 (or as given) on a 480 x 272 Nor panel (no row padding), one blank page.
struct Project : BuildDir {
    explicit Project(int chip = 1, int languages = 1)
        : BuildDir({"Plugin", "Icon", "Gif"})
    {
        ctx.settings.xsize = "480", ctx.settings.ysize = "272", ctx.settings.languageNum = QString::number(languages);
        ctx.settings.panelType = chip, ctx.settings.flashTypeIndex = 1;
        ctx.flags = BuildFlags::of(ctx.settings);
        blankPages(1);
    }
    // A picture of one colour in Icon/ (or a folder under it).
    void icon(const QString &relative, QRgb colour, int w = 1, int h = 1) { solid(ctx.path(relative), {w, h}, colour); }
    QByteArray iconBlock(qint64 start)
    {
        ctx.runningAddress = start;
        IconBlockBuilder().build(ctx);
        return block(Block::Icon);
    }
};

const char *kEmpty1048 = "48100000 0000 0000 000000 00"; // unused entry, data address 0x1048

QByteArray repeat(const char *entry, int n) { return hex(entry).repeated(n); }

} // namespace

class TestIconBlocks : public QObject
{
    Q_OBJECT

private slots:
    void iconTables_data()
    {
        // pictures: red in Icon/, blue in Icon/0001/; expected: the block from 0x1000
        addColumns<QStringList, int, QByteArray, bool>("pictures", "languages", "expected", "languageScanned");

        // Only 5 used: C1 = 6, entries 0-4 empty at the data address 0x1048.
        const QByteArray one = repeat(kEmpty1048, 5) + hex("48100000 0100 0100 020000 00") + hex("00F8");
        QTest::newRow("only icon 5") << QStringList{"Icon/0005_a.png"} << 1 << one << false;
        QTest::newRow("unused icon 2 left out") << QStringList{"Icon/0002_b.png", "Icon/0005_a.png"} << 1 << one
                                               << false;
        QTest::newRow("L = 1 ignores Icon/0001") << QStringList{"Icon/0005_a.png", "Icon/0001/0005_a.png"} << 1
                                                 << one << false;
        // Two tables (144 bytes): data from 0x1090; language 1 has its own
        // picture 5 at 0x1092 and shares the empty entries of language 0.
        const char *empty = "90100000 0000 0000 000000 00";
        QTest::newRow("second language")
            << QStringList{"Icon/0005_a.png", "Icon/0001/0005_a.png"} << 2
            << repeat(empty, 5) + hex("90100000 0100 0100 020000 00") + repeat(empty, 5)
                   + hex("92100000 0100 0100 020000 00") + hex("00F8 1F00")
            << true;
        // Language 1 without a folder repeats the table of language 0.
        QTest::newRow("language without folder")
            << QStringList{"Icon/0005_a.png"} << 2
            << repeat(empty, 5) + hex("90100000 0100 0100 020000 00") + repeat(empty, 5)
                   + hex("90100000 0100 0100 020000 00") + hex("00F8")
            << false;
    }
    void iconTables()
    {
        QFETCH(QStringList, pictures);
        QFETCH(int, languages);
        Project p(1, languages);
        for (const QString &pic : pictures)
            p.icon(pic, pic.contains("/0001/") ? qRgb(0, 0, 255) : qRgb(255, 0, 0));
        QFETCH(QByteArray, expected);
        p.page(0, {button(0, "0005_a.png")});
        QCOMPARE(p.iconBlock(0x1000), expected);
        QCOMPARE(p.directory.value(BlockDirectory::IconAddress), 0x1000u);
        QCOMPARE(p.directory.value(BlockDirectory::IconCount), 6u);
        QCOMPARE(p.ctx.runningAddress, 0x1000 + expected.size());
        QTEST(!p.ctx.buildLog.filter("Scan Icon dir0001").isEmpty(), "languageScanned");
        QVERIFY(p.ctx.errorText.isEmpty());
    }

    // Every stored icon read back by hand gives its source picture, turned
    // for the panel: stored (x, y) shows the source pixel at `from`.
    void iconRoundTrip_data()
    {
        QTest::addColumn<int>("rotation");
        QTest::newRow("upright") << 0;
        QTest::newRow("clockwise") << 1;
        QTest::newRow("half turn") << 2;
        QTest::newRow("counter-clockwise") << 3;
    }
    void iconRoundTrip()
    {
        QFETCH(int, rotation);
        const int w = 3, h = 2;
        QImage source(w, h, QImage::Format_ARGB32);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                source.setPixel(x, y, qRgba(83 * x + 7, 200 - 150 * y, 61 * (x + y) + 13, 255 - 70 * x - 40 * y));
        Project p;
        p.ctx.settings.rotate = rotation;
        for (const char *name : {"Icon/0000_565.png", "Icon/0001_4444.png", "Icon/0002_8565.png"})
            QVERIFY(source.save(p.ctx.projectDir + name, "PNG"));
        p.ctx.runningAddress = 0x1000;
        IconBlock::build(p.ctx, hex("80 82 88")); // RGB565, aRGB4444, aRGB8565
        const QByteArray block = p.block(Block::Icon);
        const bool turned = rotation % 2 == 1;
        auto from = [&](int x, int y) {
            switch (rotation) {
            case 1: return QPoint(y, h - 1 - x);
            case 2: return QPoint(w - 1 - x, h - 1 - y);
            case 3: return QPoint(w - 1 - y, x);
            default: return QPoint(x, y);
            }
        };
        auto u = [&](int at) { return int(quint8(block.at(at))); };
        for (int icon = 0; icon < 3; ++icon) {
            const int e = 12 * icon, format = u(e + 11), bpp = format == 8 ? 3 : 2;
            const int sw = u(e + 4) | u(e + 5) << 8, sh = u(e + 6) | u(e + 7) << 8;
            QCOMPARE(QSize(sw, sh), turned ? QSize(h, w) : QSize(w, h));
            QCOMPARE(format, (QVector<int>{0, 2, 8}).at(icon));
            QCOMPARE(u(e + 8) | u(e + 9) << 8 | u(e + 10) << 16, sw * sh * bpp);
            const int data = (u(e) | u(e + 1) << 8 | u(e + 2) << 16 | u(e + 3) << 24) - 0x1000;
            for (int y = 0; y < sh; ++y) {
                for (int x = 0; x < sw; ++x) {
                    const int at = data + (y * sw + x) * bpp, word = u(at) | u(at + 1) << 8;
                    const QRgb s = source.pixel(from(x, y));
                    const QRgb got = format == 2
                        ? qRgba((word >> 8 & 15) << 4, (word >> 4 & 15) << 4, (word & 15) << 4, (word >> 12) << 4)
                        : qRgba((word >> 11) << 3, (word >> 5 & 63) << 2, (word & 31) << 3, format == 8 ? u(at + 2) : 255);
                    const QRgb want = format == 2 ? s & 0xF0F0F0F0u : (s & 0x00F8FCF8u) | (format == 8 ? s & 0xFF000000u : 0xFF000000u);
                    QVERIFY2(got == want, qPrintable(QStringLiteral("icon %1 at %2,%3: %4, source %5").arg(icon).arg(x).arg(y)
                                                         .arg(got, 8, 16).arg(s, 8, 16)));
                }
            }
        }
    }

    void missingAndBrokenIcons()
    {
        // 3 has no file, 2 is no picture: both format 0xFF, 5 still stored.
        Project p;
        p.icon("Icon/0005_a.png", qRgb(255, 0, 0));
        p.put("Icon/0002_bad.png", "this is no picture");
        p.page(0, {button(0, "0005_a.png"), button(1, "0003_x.png"), button(2, "0002_bad.png")});
        const char *bad = "48100000 0000 0000 000000 FF";
        QCOMPARE(p.iconBlock(0x1000), repeat(kEmpty1048, 2) + repeat(bad, 2) + hex(kEmpty1048)
                                          + hex("48100000 0100 0100 020000 00 00F8"));
        QVERIFY(p.ctx.errorText.contains("The icon3does not exist!\n"));
        QVERIFY(p.ctx.errorText.contains("The icon cannot be opened: Icon/0002_bad.png"));
        QVERIFY(p.ctx.buildLog.contains("Make icon_all.bin"));
        QCOMPARE(p.directory.value(BlockDirectory::IconCount), 6u);
        QCOMPARE(p.ctx.runningAddress, 0x1000 + 74);
    }

    void modeChoosesFormat()
    {
        // Icon 7 in "softpng" (0x81): opaque black packs as 0x0821.
        Project p;
        p.icon("Icon/0007_k.png", qRgb(0, 0, 0));
        QByteArray modes(8, '\0');
        modes[7] = char(0x81);
        p.ctx.runningAddress = 0x1000;
        IconBlock::build(p.ctx, modes);
        const QByteArray block = p.block(Block::Icon);
        QCOMPARE(block.mid(7 * 12), hex("60100000 0100 0100 020000 01 2108"));
    }

    void vc530Boundary_data()
    {
        addColumns<qint64, quint32, QByteArray>("start", "tableAddress", "expected");
        const qint64 b = 0x7D80000;
        // Tables end 4 bytes short of it; the 8-byte icon moves onto it.
        QTest::newRow("icon moved") << b - 76 << quint32(b - 76)
                                    << repeat("FCFFD707 0000 0000 000000 00", 5)
                                           + hex("0000D807 0400 0100 080000 00 FFFFFFFF 00F800F800F800F8");
        // Tables would cross: 10 bytes of 0xFF, tables from the boundary.
        QTest::newRow("table moved") << b - 10 << quint32(b)
                                     << hex("FFFFFFFFFFFFFFFFFFFF") + repeat("4800D807 0000 0000 000000 00", 5)
                                            + hex("4800D807 0400 0100 080000 00 00F800F800F800F8");
    }
    void vc530Boundary()
    {
        Project p(3);
        p.icon("Icon/0005_a.png", qRgb(255, 0, 0), 4, 1);
        p.page(0, {button(0, "0005_a.png")});
        QFETCH(qint64, start);
        QFETCH(QByteArray, expected);
        QCOMPARE(p.iconBlock(start), expected);
        QTEST(p.directory.value(BlockDirectory::IconAddress), "tableAddress");
        QCOMPARE(p.ctx.runningAddress, start + expected.size());
    }

    void gifBlock_data()
    {
        addColumns<qint64, QByteArray>("start", "expected");
        // Gif 0 is broken (empty entry), gif 1 has three 2 x 1 frames. Odd
        // start 0x2001: 0xFF, table at 0x2002 (2 x 8), gif 1 at 0x2012 with
        // its 48-byte frame table, frames of 4 bytes from 0x2042.
        QTest::newRow("odd start") << qint64(0x2001)
                                   << hex("FF 00000000 00000000 12200000 03000000"
                                          "42200000 0000 0000 0200 0100 040000 00"
                                          "46200000 0000 0000 0200 0100 040000 00"
                                          "4A200000 0000 0000 0200 0100 040000 00"
                                          "00F8E007 1F0000F8 E0071F00");
        QTest::newRow("even start") << qint64(0x2000)
                                    << hex("00000000 00000000 10200000 03000000"
                                           "40200000 0000 0000 0200 0100 040000 00"
                                           "44200000 0000 0000 0200 0100 040000 00"
                                           "48200000 0000 0000 0200 0100 040000 00"
                                           "00F8E007 1F0000F8 E0071F00");
    }
    void gifBlock()
    {
        QFETCH(qint64, start);
        QFETCH(QByteArray, expected);
        Project p;
        p.put("Gif/0001_anim.gif", gif({{0, 1}, {2, 0}, {1, 2}}));
        p.put("Gif/0000_bad.gif", "GIF89a but nothing after it");
        p.ctx.runningAddress = start;
        GifBlock::build(p.ctx, hex("80 80"));
        QCOMPARE(p.block(Block::Gif), expected);
        QCOMPARE(p.directory.value(BlockDirectory::GifAddress), quint32(start + (start & 1)));
        QCOMPARE(p.directory.value(BlockDirectory::GifCount), 2u);
        QCOMPARE(p.ctx.runningAddress, start + expected.size());
        QVERIFY(p.ctx.errorText.contains("The gif does not exist or cannot be opened: Gif/0000_bad.gif"));
        QVERIFY(p.ctx.buildLog.contains("Make Gif_all.bin"));
    }

    // A gif whose data ends inside its third frame keeps the two frames
    // before, in a table of two: red green / blue red as RGB565 from 0x2028.
    void gifThatBreaksOff()
    {
        Project p;
        QByteArray g = gif({{0, 1}, {2, 0}, {1, 2}});
        g.chop(4); // the third frame's codes, its block end and the trailer
        p.put("Gif/0000_cut.gif", g);
        p.ctx.runningAddress = 0x2000;
        GifBlock::build(p.ctx, hex("80"));
        QCOMPARE(p.block(Block::Gif),
                 hex("08200000 02000000"
                     "28200000 0000 0000 0200 0100 040000 00"
                     "2C200000 0000 0000 0200 0100 040000 00"
                     "00F8E007 1F0000F8"));
    }

    // Forty icons, made on workers and written in order: entry k at
    // 0x1000 + 12 x 40 + 2k holds red 8(k % 32), blue 8(k / 32), packed as
    // RGB565 (r >> 3) << 11 | b >> 3. Icon 13 is missing, 27 is no picture:
    // length 0, format 255, at the address the next one takes.
    void manyIconsKeepTheirOrder()
    {
        Project p;
        const int n = 40;
        for (int k = 0; k < n; ++k) {
            if (k == 27)
                p.put("Icon/0027_bad.png", "not a picture");
            else if (k != 13)
                p.icon(QStringLiteral("Icon/%1_i.png").arg(k, 4, 10, QLatin1Char('0')), qRgb(8 * (k % 32), 0, 8 * (k / 32)));
        }
        QByteArray expectedTable, expectedData;
        quint32 address = 0x1000 + 12 * n;
        for (int k = 0; k < n; ++k) {
            QByteArray entry(12, '\0');
            qToLittleEndian<quint32>(address, entry.data());
            if (k == 13 || k == 27) {
                entry[11] = char(0xFF);
            } else {
                entry.replace(4, 5, hex("0100 0100 02")); // 1 x 1, 2 bytes
                const quint16 word = quint16((k % 32) << 11 | (k / 32));
                expectedData.append(char(word & 0xFF)).append(char(word >> 8));
                address += 2;
            }
            expectedTable += entry;
        }
        p.ctx.runningAddress = 0x1000;
        IconBlock::build(p.ctx, QByteArray(n, char(0x80)));
        QCOMPARE(p.block(Block::Icon), expectedTable + expectedData);
        QVERIFY(p.ctx.errorText.contains("The icon13does not exist!"));
        QVERIFY(p.ctx.errorText.contains("The icon cannot be opened: Icon/0027_bad.png"));
        const QStringList scanned = p.ctx.buildLog.filter("Scan icon:");
        QCOMPARE(scanned.size(), n - 1);
        QCOMPARE(scanned.first(), QStringLiteral("Scan icon:0000_i.png..."));
        QCOMPARE(scanned.last(), QStringLiteral("Scan icon:0039_i.png..."));
    }

    // Items are taken in number order, never more than `window` made ahead
    // of the one taken, and a stop ends the making.
    void orderedWork_data()
    {
        // stopAt -1: take all
        addColumns<int, int, int>("workers", "window", "stopAt");
        QTest::newRow("one worker") << 1 << 3 << -1;
        QTest::newRow("two workers") << 2 << 4 << -1;
        QTest::newRow("four workers, narrow window") << 4 << 4 << -1;
        QTest::newRow("stop at 17") << 3 << 6 << 17;
    }
    void orderedWork()
    {
        QFETCH(int, workers);
        QFETCH(int, window);
        QFETCH(int, stopAt);
        const int count = 200;
        std::atomic<int> made{0}, taken{0}, mostAhead{0};
        QVector<int> order;
        int wrong = 0;
        const std::function<int(int)> make = [&](int i) {
            const int ahead = ++made - taken;
            int seen = mostAhead;
            while (ahead > seen && !mostAhead.compare_exchange_weak(seen, ahead)) {
            }
            return i * i;
        };
        const std::function<bool(int, int &)> take = [&](int i, int &square) {
            wrong += square != i * i;
            order << i;
            ++taken;
            return i != stopAt;
        };
        OrderedWork::run<int>(count, workers, window, make, take);
        const int last = stopAt < 0 ? count - 1 : stopAt;
        QCOMPARE(wrong, 0);
        QCOMPARE(order.size(), last + 1);
        for (int i = 0; i <= last; ++i)
            QCOMPARE(order[i], i);
        QVERIFY2(mostAhead <= window, qPrintable(QString::number(mostAhead)));
        if (stopAt >= 0)
            QVERIFY(made <= stopAt + 1 + window);
    }

    void unusedGifsAndEmptyFolder()
    {
        Project p;
        p.ctx.runningAddress = 0x3001;
        GifBlock::build(p.ctx, QByteArray());
        QVERIFY(!QFile::exists(p.ctx.blockPath(Block::Gif)));
        QCOMPARE(p.ctx.runningAddress, 0x3001);
        QCOMPARE(p.directory.value(BlockDirectory::GifCount), 0u);
        // Gif 4 alone and unused: 5 empty entries, no frames.
        p.put("Gif/0004_a.gif", gif({{0, 0}}));
        GifBlock::build(p.ctx, QByteArray());
        QCOMPARE(p.block(Block::Gif), hex("FF") + QByteArray(40, '\0'));
    }

    void needleFrames_data()
    {
        addColumns<int, int, QSize, QPoint>("angle", "rotation", "size", "offset");
        // A 2 x 4 needle drawn tip up over its pivot at angle 180.
        QTest::newRow("180: upright") << 180 << 0 << QSize(2, 4) << QPoint(-1, -4);
        QTest::newRow("0: tip down") << 0 << 0 << QSize(2, 4) << QPoint(-1, 0);
        QTest::newRow("90: tip left") << 90 << 0 << QSize(4, 2) << QPoint(-4, -1);
        QTest::newRow("180 on a panel turned clockwise") << 180 << 1 << QSize(4, 2) << QPoint(0, -1);
    }
    void needleFrames()
    {
        QFETCH(int, angle);
        QFETCH(int, rotation);
        QImage n(2, 4, QImage::Format_ARGB32_Premultiplied);
        n.fill(Qt::white);
        QFETCH(QSize, size);
        QPoint found;
        const QImage f = NeedleAnimation::frame(n, angle, rotation, &found);
        QCOMPARE(f.size(), size);
        QTEST(found, "offset");
        QCOMPARE(qAlpha(f.pixel(0, 0)), 255); // an upright quarter turn stays sharp
    }

    void needlesShareAnimations()
    {
        Project p;
        p.icon("Icon/0000_n.png", qRgb(255, 255, 255), 2, 4);
        p.page(0, {needle(0, "PNGdrawing", "0000_n.png", 0, 90, 45), needle(1, "PNGdrawing", "0000_n.png", 0, 90, 45),
                needle(2, "Animation", "0000_n.png", 0, 90, 90), needle(3, "2Ddrawing", "0000_n.png", 0, 90, 10)});
        int counted = 0;
        const QList<NeedleAnimation::Animation> plan = NeedleAnimation::plan(p.ctx, &counted);
        QCOMPARE(counted, 3);
        QCOMPARE(plan.size(), 2);
        // C1 = 1: the first animation's frames are entries 1-3, the second's 4-5.
        QCOMPARE(NeedleAnimation::place(plan, {"0000_n.png", 0, 90, 45}), 1u);
        QCOMPARE(NeedleAnimation::place(plan, {"0000_n.png", 0, 90, 90}), 4u);
        QCOMPARE(NeedleAnimation::place(plan, {"0000_n.png", 0, 180, 90}), 0xFFFFFFFFu);

        NeedleAnimation::run(p.ctx);
        // Animation, frame and offset in the names; the 45 degree frame's
        // offset depends on the smoothing, the others are exact.
        QStringList frames = IconBlock::pictureFiles(p.ctx.path("Needle"));
        QCOMPARE(frames.size(), 5);
        QVERIFY(frames[1].startsWith("0000_00001_-"));
        frames.removeAt(1);
        QCOMPARE(frames, (QStringList{"0000_00000_-1_0.png", "0000_00002_-4_-1.png", "0001_00000_-1_0.png",
                                      "0001_00001_-4_-1.png"}));
        QCOMPARE(p.ctx.buildLog.filter("Needle_Ani_Number:"), QStringList{"Needle_Ani_Number:2"});

        // The icon block: icon 0 unused, five frames in aRGB4444; frame 0
        // (2 x 4 opaque white) is 16 bytes of FF right behind 6 entries.
        p.ctx.runningAddress = 0x1000;
        IconBlock::build(p.ctx, QByteArray());
        const QByteArray block = p.block(Block::Icon);
        QCOMPARE(p.directory.value(BlockDirectory::IconCount), 6u);
        QCOMPARE(block.mid(12, 12), hex("48100000 0200 0400 100000 02"));
        QCOMPARE(block.mid(72, 16), QByteArray(16, char(0xFF)));

        // The needle's record names the place of its frames (offset 58): the
        // "Animation" needle's first frame is entry 4, the upright 2 x 4 frame
        // of animation 1; a needle drawn by lines names none.
        RecordContext rc;
        rc.pagePicture = rc.panel = QSize(480, 272);
        rc.needleFrames = p.ctx.needleFrames;
        const QString lines[] = {needle(2, "Animation", "0000_n.png", 0, 90, 90),
                                 needle(3, "2Ddrawing", "0000_n.png", 0, 90, 10)};
        const quint32 places[] = {4u, 0xFFFFFFFFu};
        for (int i = 0; i < 2; ++i) {
            QByteArray record;
            QCOMPARE(KindRegistry::writeRecord(record, lines[i], rc), 64);
            QCOMPARE(qFromLittleEndian<quint32>(record.constData() + 58), places[i]);
        }
        QCOMPARE(block.mid(4 * 12 + 4, 4), hex("0200 0400"));
    }
};

QTEST_GUILESS_MAIN(TestIconBlocks)
#include "tst_icon_blocks.moc"
