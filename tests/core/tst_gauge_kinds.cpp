// The bar and gauge kinds: records worked out by hand, what they leave in
// the variable image, their lines, and what a drop gives.

#include "CoreTestSupport.h"
#include "widgets/GaugeKinds.h"
#include "widgets/WriteAddress.h"

using namespace core;

namespace {

const char *const kSlider = "slider_2:100,50,200,40,105,55,190,30,0x0123,0,100,30,110,60,0005_bar.png,0006_knob.png,"
                            "0004_bg.png,L_to_R,vol,Enable,0xFFFF,1;";
const char *const kProgress = "progress_0:0x0200,0x0300,20,30,150,20,22,32,0,1000,250,D_to_U,0008_fill.png,"
                              "0007_frame.png,load,0xFFFF,1;";
const char *const kRing = "rProgress_1:0x0400,0x0010,300,100,120,120,0010_ring.png,0011_full.png,0,100,40,30,330,340,"
                          "150,3,1,Middle,1,0xFF8040,0020_d0.png,0029_d9.png,FontNum,ring,0x0007,1;";
const char *const kDial = "rtouch_4:0x0020,200,100,160,160,0012_fg.png,0013_bg.png,0014_knob.png,300,300,0,360,90,0,"
                          "270,60,70,3,0,Right,0,0x00FF00,,,IconNum,dial,Disable,1,0xFFFF,1;";
const char *const kNeedle = "needle_3:0x0500,0x0030,100,80,200,160,0030_dial.png,100,120,0,270,10,135,Enable,"
                            "0031_hub.png,PNGdrawing,20,96,0xFF0000,24,0x0000FF,0032_hand.png,Enable,0x0040,-1.5,"
                            "int,90,130,0040_n0.png,0049_n9.png,Middle,Enable,3,2,gauge,0xFFFF,1;";

// A page picture of 800 x 480 on a panel of 1024 x 600 with two fonts: at
// 90 degrees the page's rectangles turn with PW 480, the needle's pivot
// with PW 600.
struct Build : RecordBuild {
    explicit Build(bool master = false)
        : RecordBuild(master)
    {
        fonts.count = 2;
        ctx.panel = QSize(1024, 600);
        ctx.fonts = &fonts;
    }
};

} // namespace

class TestGaugeKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        addColumns<QString, int, bool, QByteArray>("line", "rotation", "vice", "bytes");
        // type 4, report to host C0, 29 follow; X, Y; background 4; address; touch area
        // 105,55 to 294,84; knob 6; L_to_R; max 100, min 0; bar 110,60; bar icon 5
        QTest::newRow("slider") << kSlider << 0 << false
                                << hex("04 C0 1D  6400 3200  0400  2301  6900 3700 2601 5400  0600  00  6400 0000"
                                       "  6E00 3C00  0500");
        // X' = 480 - 50 - 40 = 390, Y' = 100; touch 480 - 55 - 30 = 395, 105, 30 x 190 to 424, 294;
        // L_to_R turns to U_to_D; bar point 480 - 60 = 420, 110
        QTest::newRow("slider 90") << kSlider << 1 << false
                                   << hex("04 C0 1D  8601 6400  0400  2301  8B01 6900 A801 2601  0600  02  6400 0000"
                                          "  A401 6E00  0500");
        QTest::newRow("slider on a Vice page") << kSlider << 0 << true
                                               << hex("04 C1 1D  6400 3200  0400  2301  6900 3700 2601 5400  0600  00"
                                                      "  6400 0000  6E00 3C00  0500");
        // type 11, parameters 0x300, 19 follow; address 0x200; 20,30; frame 7; D_to_U 3;
        // max 1000, min 0; bar 22,32; fill 8
        QTest::newRow("progress") << kProgress << 0 << false
                                  << hex("0B 00 0003 13  0002  1400 1E00  0700  03  E803 0000  1600 2000  0800");
        // X' = 480 - 30 - 20 = 430; the direction stays 3; bar 480 - 32 = 448, 22
        QTest::newRow("progress 90") << kProgress << 1 << false
                                     << hex("0B 00 0003 13  0002  AE01 1400  0700  03  E803 0000  C001 1600  0800");
        // the Vice page's picture 400 x 300 turns with PW 300: 250 and 268
        QTest::newRow("progress 90, Vice") << kProgress << 1 << true
                                           << hex("0B 01 0003 13  0002  FA00 1400  0700  03  E803 0000  0C01 1600"
                                                  "  0800");
        // garbage: "zz" has no "x" (0), "-5" keeps its digits, "x" reads 0, an unknown
        // direction is L_to_R, a picture without four leading digits is none
        QTest::newRow("progress, garbage") << "progress_9:zz,0xFFFF,-5,abc,10,10,1,1,0,x,7,up,bad.png,0007;" << 0
                                           << false
                                           << hex("0B 00 FFFF 13  0000  0500 0000  0700  00  0000 0000  0100 0100"
                                                  "  FFFF");
        // type 12, 36 follow; 300,100; icons 10, 11; min 0, max 100; 30 to 330 degrees;
        // digits at 340,150; 3.1 digits, Middle, font 1; FF8040 as RGB565 FC08; 20 to 29;
        // FontNum 1; tail 7
        QTest::newRow("rProgress") << kRing << 0 << false
                                   << hex("0C 00 0004 24  1000  2C01 6400  0A00 0B00  0000 6400  1E00 4A01  5401 9600"
                                          "  03 01 01 01  08FC00  1400 1D00  01  0700");
        // X' = 480 - 100 - 120 = 260, Y' = 300; digits 480 - 150 = 330, 340
        QTest::newRow("rProgress 90") << kRing << 1 << false
                                      << hex("0C 00 0004 24  1000  0401 2C01  0A00 0B00  0000 6400  1E00 4A01  4A01"
                                             "  5401  03 01 01 01  08FC00  1400 1D00  01  0700");
        // type 7, 42 follow; slide radius 300, touch radius only its low byte 2C; max 360;
        // 0 to 270; digits at 200 + 60, 100 + 70; Right 2; 00FF00 as 07E0; no pictures; IconNum
        QTest::newRow("rtouch") << kDial << 0 << false
                                << hex("07 80 2A  2000  C800 6400  0C00 0D00 0E00  2C01 2C  0000 6801  0000 0E01"
                                       "  0401 AA00  03 00 02 00  E00700  FFFF FFFF  02  01  FFFF");
        // X' = 480 - 100 - 160 = 220, Y' = 200; digits 480 - 170 = 310, 260
        QTest::newRow("rtouch 90") << kDial << 1 << false
                                   << hex("07 80 2A  2000  DC00 C800  0C00 0D00 0E00  2C01 2C  0000 6801  0000 0E01"
                                          "  3601 0401  03 00 02 00  E00700  FFFF FFFF  02  01  FFFF");
        // type 18, 59 follow; dial 30; rectangle 100,80 200 x 160; pivot 100,120; 0 to 270 by 10;
        // swing; hub 31; number on at 0x40, int 130, at 90,130, pictures 40 to 49, Middle with
        // leading zeros 81, 3.2 digits; PNGdrawing 2; 20 wide, 96 and 24 long, red F800 and
        // blue 001F; no frames; hand 32
        QTest::newRow("needle") << kNeedle << 0 << false
                                << hex("12 00 0005 3B  3000  1E00  6400 5000 C800 A000  6400 7800  0000 0E01 0A00  01"
                                       "  1F00  01 4000 82  5A00 8200  2800 3100  81 03 02  02  1400 6000 00F800"
                                       "  1800 1F0000  FFFFFFFF  2000");
        // rectangle 480 - 80 - 160 = 240, 100, 160 x 200; pivot on the panel 600 - 120 = 480,
        // 100; the number's place 480 - 130 = 350, 90
        QTest::newRow("needle 90") << kNeedle << 1 << false
                                   << hex("12 00 0005 3B  3000  1E00  F000 6400 A000 C800  E001 6400  0000 0E01 0A00"
                                          "  01  1F00  01 4000 82  5E01 5A00  2800 3100  81 03 02  02  1400 6000"
                                          "  00F800  1800 1F0000  FFFFFFFF  2000");
    }

    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(QByteArray, bytes);
        Build b;
        b.ctx.rotation = rotation;
        b.ctx.viceFlag = vice;
        QCOMPARE(b.write(line).toHex(' '), bytes.toHex(' '));
        QCOMPARE(b.errors, QString());
    }

    // The animation step's table gives the needle its frames' place, found by
    // picture, start and final angle and step; no match keeps none.
    void needleFramePlace()
    {
        Build b;
        b.ctx.needleFrames = [](const QString &icon, int start, int final, int step) {
            return icon == "0032_hand.png" && start == 0 && final == 270 && step == 10 ? 0x00012345u : 0xFFFFFFFFu;
        };
        QCOMPARE(b.write(kNeedle).mid(58, 4), hex("45230100"));
        QCOMPARE(b.write(withField(kNeedle, 11, "20")).mid(58, 4), hex("FFFFFFFF")); // another step
    }

    void sliderDirectionTurns_data()
    {
        addColumns<QString, int, int, int>("word", "rotation", "sliderByte", "progressByte");
        // a clockwise quarter turn: right goes down, down goes left, left up, up right
        QTest::newRow("L_to_R 90") << "L_to_R" << 1 << 2 << 0;
        QTest::newRow("U_to_D 90") << "U_to_D" << 1 << 1 << 2;
        QTest::newRow("R_to_L 90") << "R_to_L" << 1 << 3 << 1;
        QTest::newRow("D_to_U 90") << "D_to_U" << 1 << 0 << 3;
        QTest::newRow("L_to_R 180") << "L_to_R" << 2 << 1 << 0;
        QTest::newRow("U_to_D 180") << "U_to_D" << 2 << 3 << 2;
        QTest::newRow("L_to_R 270") << "L_to_R" << 3 << 3 << 0;
        QTest::newRow("U_to_D 270") << "U_to_D" << 3 << 0 << 2;
        QTest::newRow("D_to_U unturned") << "D_to_U" << 0 << 3 << 3;
        QTest::newRow("unknown word reads as L_to_R") << "sideways" << 1 << 2 << 0;
    }

    void sliderDirectionTurns()
    {
        QFETCH(QString, word);
        QFETCH(int, rotation);
        Build b;
        b.ctx.rotation = rotation;
        QTEST(int(quint8(b.write(withField(kSlider, 17, word)).at(21))), "sliderByte");
        // the progress bar keeps its word's number whatever the rotation
        QTEST(int(quint8(b.write(withField(kProgress, 11, word)).at(13))), "progressByte");
    }

    // Parameter blocks (count byte, then the record from offset 5; rProgress
    // without its tail) and initial values, high byte first.
    void variableImage()
    {
        Build b;
        for (const char *line : {kSlider, kProgress, kRing, kDial, kNeedle})
            QVERIFY(!b.write(line).isEmpty());
        QCOMPARE(b.errors, QString());
        const QByteArray &m = b.image.bytes();
        QCOMPARE(m.mid(2 * 0x123, 2), hex("001E"));         // slider 30
        QCOMPARE(m.mid(2 * 0x200, 2), hex("00FA"));         // progress 250
        QCOMPARE(m.mid(2 * 0x10, 2), hex("0028"));          // rProgress 40
        QCOMPARE(m.mid(2 * 0x20, 2), hex("005A"));          // rtouch 90
        QCOMPARE(m.mid(2 * 0x30, 2), hex("0087"));          // needle 135 degrees
        QCOMPARE(m.mid(2 * 0x40, 5), hex("FFFFFF6A 00"));   // "-1.5" with 2 decimals: -150 as int
        QCOMPARE(m.mid(2 * 0x300, 21).toHex(' '),
                 hex("13  0002 1400 1E00 0700 03 E803 0000 1600 2000 0800  00").toHex(' '));
        QCOMPARE(m.mid(2 * 0x400, 36).toHex(' '),
                 hex("24  1000 2C01 6400 0A00 0B00 0000 6400 1E00 4A01 5401 9600 03 01 01 01 08FC00 1400 1D00 01"
                     "  00").toHex(' '));
        Build again;
        const QByteArray needle = again.write(kNeedle);
        QCOMPARE(again.image.bytes().mid(2 * 0x500, 61), needle.mid(4) + hex("00"));
    }

    void needleNumber_data()
    {
        addColumns<QString, int, qint64>("text", "decimals", "value");
        QTest::newRow("one place short") << "1.5" << 3 << qint64(1500);
        QTest::newRow("no point") << "-2" << 1 << qint64(-20);
        QTest::newRow("more places than shown") << "1.25" << 1 << qint64(125);
        QTest::newRow("empty") << "" << 2 << qint64(0);
    }

    void needleNumber()
    {
        QFETCH(QString, text);
        QFETCH(int, decimals);
        QTEST(GaugeKinds::needleNumber(text, decimals), "value");
    }

    void limits_data()
    {
        addColumns<QString, bool, QString>("line", "master", "errors");
        const QString progressMsg = "load: Progress parameterAddr + datas are more than Max value\n";
        const QString needleMsg = "gauge: Needle parameterAddr + datas are more than Max value\n";
        // progress and needle test the address plus the record's length; what runs over
        // the end is cut off, a block that starts beyond it is refused
        QTest::newRow("progress 0x7FF8 runs over") << withField(kProgress, 1, "0x7FF8") << false << "";
        QTest::newRow("progress 0x8000 beyond") << withField(kProgress, 1, "0x8000") << false << progressMsg;
        QTest::newRow("progress master 0x5FF8 runs over") << withField(kProgress, 1, "0x5FF8") << true << "";
        QTest::newRow("progress master 0x6000") << withField(kProgress, 1, "0x6000") << true << progressMsg;
        QTest::newRow("needle 0x7FF0 runs over") << withField(kNeedle, 0, "0x7FF0") << false << "";
        QTest::newRow("needle 0x8000 beyond") << withField(kNeedle, 0, "0x8000") << false << needleMsg;
        QTest::newRow("needle write address")
            << withField(kNeedle, 1, "0x8000") << false << "gauge writeAddr:  more than Max value\n";
        // int at word 0x7FFF needs bytes 65534 to 65537; a short ends at 65535
        QTest::newRow("needle number as int")
            << withField(kNeedle, 23, "0x7FFF") << false << "gauge showNumber_numberAddr:  more than Max value\n";
        QTest::newRow("needle number as short") << withField(withField(kNeedle, 23, "0x7FFF"), 25, "short") << false
                                                << "";
        // rProgress: 2 x address + 34 must stay below the end
        QTest::newRow("rProgress 0x7FEE") << withField(kRing, 0, "0x7FEE") << false << "";
        QTest::newRow("rProgress 0x7FEF")
            << withField(kRing, 0, "0x7FEF") << false << "ring: rProgress parameterAddr + datas are more than Max value\n";
        QTest::newRow("slider write address")
            << withField(kSlider, 8, "0x8000") << false << "vol: write address is more than Max value\n";
        // digits drawn with a font need the font; pictures or none don't
        QTest::newRow("rProgress font 2 of 2") << withField(kRing, 18, "2") << false
                                               << "ring: fontlib id is more than max value\n";
        QTest::newRow("rtouch font 5, IconNum") << withField(kDial, 20, "5") << false << "";
        QTest::newRow("rtouch font 5, FontNum") << withField(withField(kDial, 20, "5"), 24, "FontNum") << false
                                                << "dial: fontlib id is more than max value\n";
    }

    void limits()
    {
        QFETCH(QString, line);
        QFETCH(bool, master);
        QFETCH(QString, errors);
        Build b(master);
        const QByteArray record = b.write(line);
        QVERIFY(record.size() > 20);
        QCOMPARE(b.errors, errors);
        if (QByteArray(QTest::currentDataTag()).endsWith("runs over")) {
            // the count byte and what fits of the block up to the last byte
            const int at = 2 * int(quint8(record[2]) | quint8(record[3]) << 8);
            QCOMPARE(b.image.bytes().mid(at), record.mid(4, b.image.limit() - at));
        }
    }

    void lines_data()
    {
        addColumns<QString, QString>("line", "written");
        for (const char *l : {kSlider, kProgress, kRing, kDial, kNeedle})
            QTest::newRow(QByteArray(l).left(12)) << l << l;
        // an earlier, shorter line: every later field its default
        QTest::newRow("short slider") << "slider_0:1,2,3,4;"
                                      << "slider_0:1,2,3,4,5,5,0,0,0x0000,0,100,0,0,0,,,,L_to_R,slider_0,Disable,"
                                         "0xFFFF,1;";
        QTest::newRow("short rtouch") << "rtouch_1:0x0005;"
                                      << "rtouch_1:0x0005,0,0,0,0,,,,50,50,0,100,0,0,360,0,0,3,0,Left,0,0x000000,,,"
                                         "NULL,rtouch_1,Disable,1,0xFFFF,1;";
        // a number address without "x" means none
        QTest::newRow("needle number address") << withField(kNeedle, 23, "64") << withField(kNeedle, 23, "0xFFFF");
    }

    void lines()
    {
        QFETCH(QString, line);
        QFETCH(QString, written);
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), written);
        EditBuffer again;
        WidgetLine::parse(written, again);
        QVERIFY(again == b);
    }

    // What the designer does: drop (defaults that follow the rectangle, the next
    // free address, one address a drop), rows, an edit.
    void dropAndEdit()
    {
        EditBuffer s = WidgetLine::createNew(WidgetKind::Slider, 1, QRect(10, 20, 200, 40));
        quint32 next = 0x0040;
        QCOMPARE(WriteAddress::assign(s, next), 1);
        QCOMPARE(WidgetLine::write(s), QString("slider_1:10,20,200,40,5,5,200,40,0x0040,0,100,0,0,0,,,,L_to_R,"
                                               "slider_1,Disable,0xFFFF,1;"));
        // pivot 150 / 2, 3 x 101 / 4; width 150 / 10; 303 down to 300, / 5; 303 / 20
        EditBuffer n = WidgetLine::createNew(WidgetKind::Needle, 0, QRect(10, 20, 150, 101));
        QCOMPARE(WriteAddress::assign(n, next), 1); // the number's address stays none
        QCOMPARE(WidgetLine::write(n), QString("needle_0:0xFFFF,0x0041,10,20,150,101,,75,75,0,180,5,90,Disable,,"
                                               "2Ddrawing,15,60,0x969696,15,0xB4B4B4,,Disable,0xFFFF,0,short,0,0,,,"
                                               "Left,Disable,0,0,needle_0,0xFFFF,1;"));
        for (WidgetKind k : {WidgetKind::Slider, WidgetKind::Progress, WidgetKind::RProgress, WidgetKind::RTouch,
                             WidgetKind::Needle})
            QCOMPARE(WriteAddress::dropStep(k), 1);

        EditBuffer r;
        WidgetLine::parse(kRing, r);
        const QVector<TableRow> rows = WidgetLine::tableRows(r, 1);
        QCOMPARE(rows.size(), 24);
        QCOMPARE(rows[2], TableRow("控制地址", "0x0010"));
        QCOMPARE(rows[23], TableRow("数字显示模式", "FontNum"));
        QStringList cells = cellsOf(r, 1);
        cells[22] = "0015_x.png"; // a last picture before the first (20) is dropped
        cells[18] = "B-Right";
        QVERIFY(WidgetLine::applyEdit(r, cells, QSize(800, 480)));
        QCOMPARE(r.text("lastIcon"), QString("0029_d9.png"));
        QCOMPARE(r.text("alignment"), QString("B-Right"));
    }
};

QTEST_GUILESS_MAIN(TestGaugeKinds)
#include "tst_gauge_kinds.moc"
