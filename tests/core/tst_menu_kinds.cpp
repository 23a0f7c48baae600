// The menu kinds and the trend curve: records and parameter blocks worked out
// by hand, the direction byte of every word in both rotation groups, slmenu's
// first value and its limit, the curve's scale and an edit that would empty
// its range.

#include "CoreTestSupport.h"
#include "widgets/CurveKinds.h"

using namespace core;

namespace {

// writeAddr 0x0120; 100,50 200 x 40; L1 10, L2 20; Vertical; icons 5, 6; 1 to 9, first 3, step 2.
const char *const kSlMenu = "slmenu_3:menu,0x0120,100,50,200,40,10,20,Vertical,0005_fg.png,0006_bg.png,1,9,3,2,"
                            "Enable,1;";
// 20,30 300 x 100; writeAddr 0x0200; shows page 1 (600 x 200); background 4; stop; frames
// from the page's picture; icons 8, 9; gaps 5 (V) and 6 (H).
const char *const kPro = "slidemenuPro_0:carousel,20,30,300,100,0x0200,7,Page0001,0004_bg.png,Horizontal-Loop,"
                         "Enable,0,0,0008_s.png,0009_e.png,5,6,Disable,1;";

// Parameters at 0x0300; 10,20 200 x 100; reference line at 119 for the value 50; a stale
// scale 0; colour FF8040; channel 3; points 4 apart, 2 wide; L_to_R; 100 to 356.
const char *const kCurve = "curve_2:0x0300,10,20,200,100,119,50,0,0xFF8040,3,4,2,L_to_R,356,100,trend,1;";

// Page pictures 800 x 480, the Vice page's 400 x 300; page 1's 600 x 200.
QByteArray write(const QString &line, int rotation, bool vice = false, RecordBuild *into = nullptr)
{
    RecordBuild own;
    RecordBuild &b = into ? *into : own;
    b.ctx.pagePictureSize = [](int page) { return page == 1 ? QSize(600, 200) : QSize(); };
    b.ctx.rotation = rotation;
    b.ctx.viceFlag = vice;
    return b.write(line);
}

} // namespace

class TestMenuKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        addColumns<QString, int, bool, QByteArray>("line", "rotation", "vice", "bytes");
        // type 6, C0, 25 follow; 0x120; 100,50 to 100 + 200 = 300 (12C), 90 (5A), no minus 1;
        // 10, 20; Vertical 80; 5, 6; 1, 9, 2
        QTest::newRow("slmenu") << kSlMenu << 0 << false
                                << hex("06C019 2001 6400 3200 2C01 5A00 0A00 1400 80 0500 0600 0100 0900 0200");
        // the Vice picture 400 x 300 turns with PW 300: X' = 300 - 50 - 40 = 210 (D2), Y' = 100,
        // 40 x 200 to 250 (FA), 300; Vertical turns sideways, 81; byte 1 gets no Vice bit
        QTest::newRow("slmenu 90, Vice") << kSlMenu << 1 << true
                                         << hex("06C019 2001 D200 6400 FA00 2C01 0A00 1400 81 0500 0600 0100 0900"
                                                "0200");
        // type 15, 80, 27 follow; 0x200; 20,30 to 319 (13F), 129 (81); page 1; 4; loop 81;
        // stop 1; frames 600 (258) x 200 (C8); 8, 9; 5, 6
        QTest::newRow("slidemenuPro") << kPro << 0 << false
                                      << hex("0F801B 0002 1400 1E00 3F01 8100 01 0400 81 01 5802 C800 0800 0900"
                                             "0500 0600");
        // PW 480: X' = 480 - 30 - 100 = 350 (15E), Y' = 20, to 449 (1C1), 319 (13F); upright 80
        QTest::newRow("slidemenuPro 90") << kPro << 1 << false
                                         << hex("0F801B 0002 5E01 1400 C101 3F01 01 0400 80 01 5802 C800 0800 0900"
                                                "0500 0600");
        // no page: FF, frame width as the row holds it (120 = 78) and 0; report C0
        QTest::newRow("slidemenuPro without page")
            << withField(withField(withField(kPro, 7, ""), 11, "120"), 17, "Enable") << 0 << false
            << hex("0FC01B 0002 1400 1E00 3F01 8100 FF 0400 81 01 7800 0000 0800 0900 0500 0600");
        // cut after Y: "zz" has no x (0), "-5" keeps 5, "abc" is 0; then the defaults:
        // Vertical-Loop 00, 0 to 100 by 1
        QTest::newRow("slmenu, damaged") << "slmenu_2:x,zz,-5,abc;" << 0 << false
                                         << hex("068019 0000 0500 0000 0500 0000 0000 0000 00 FFFF FFFF 0000 6400"
                                                "0100");
    }

    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(QByteArray, bytes);
        QCOMPARE(write(line, rotation, vice).toHex(' '), bytes.toHex(' '));
    }

    // slmenu's byte at 17, slidemenuPro's at 16: bit 0 sideways on the panel, bit 7
    // "no loop" for the one, "loop" for the other.
    void directionWords_data()
    {
        addColumns<QString, int, int, int>("word", "rotation", "slMenuByte", "proByte");
        QTest::newRow("Vertical-Loop 0") << "Vertical-Loop" << 0 << 0x00 << 0x80;
        QTest::newRow("Vertical-Loop 270") << "Vertical-Loop" << 3 << 0x01 << 0x81;
        QTest::newRow("Vertical 180") << "Vertical" << 2 << 0x80 << 0x00;
        QTest::newRow("Vertical 90") << "Vertical" << 1 << 0x81 << 0x01;
        QTest::newRow("Horizontal-Loop 0") << "Horizontal-Loop" << 0 << 0x01 << 0x81;
        QTest::newRow("Horizontal-Loop 90") << "Horizontal-Loop" << 1 << 0x00 << 0x80;
        QTest::newRow("other word 180") << "vertical" << 2 << 0x81 << 0x01;
        QTest::newRow("empty 270") << "" << 3 << 0x80 << 0x00;
    }

    void directionWords()
    {
        QFETCH(QString, word);
        QFETCH(int, rotation);
        QTEST(int(quint8(write(withField(kSlMenu, 8, word), rotation).at(17))), "slMenuByte");
        QTEST(int(quint8(write(withField(kPro, 9, word), rotation).at(16))), "proByte");
    }

    // slmenu's first value 772 (0x0304) at its address, high byte first, while 2A + 1 is
    // inside: 0x7FFF gives 65535 (fits), 0x8000 65537 (refused); slidemenuPro stores nothing.
    void firstValueAndLines()
    {
        for (const char *address : {"0x7FFF", "0x8000"}) {
            RecordBuild b;
            write(withField(withField(kSlMenu, 1, address), 13, "772"), 0, false, &b);
            write(kPro, 0, false, &b);
            const bool fits = address == QLatin1String("0x7FFF");
            QByteArray expected(65536, '\0');
            if (fits)
                expected.replace(0xFFFE, 2, "\x03\x04");
            QVERIFY(b.image.bytes() == expected);
            QCOMPARE(b.errors, fits ? QString() : QString("menu: write address is more than Max value\n"));
        }
        for (const char *line : {kSlMenu, kPro})
            QCOMPARE(rewritten(line), QString(line));
        QCOMPARE(WidgetKinds::loadIndexError(WidgetKind::SlideMenuPro, 1), QString("Error edit index:1"));
    }

    void curveRecords_data()
    {
        addColumns<QString, int, bool, bool, QByteArray, QString>(
            "line", "rotation", "vice", "colour24", "bytes", "errors");
        // type 13, parameters 0x300, 20 follow; 10,20 to 209 (D1), 119 (77); 119; 50; range 256:
        // t = 100 x 2560 / 256 = 1000, scale 100 (64); FF8040 as RGB565 F800 | 0400 | 0008;
        // channel 3 + 80 for L_to_R; 4; 2
        QTest::newRow("plain") << kCurve << 0 << false << false
                               << hex("0D00 0003 14 0A00 1400 D100 7700 7700 3200 6400 08FC00 83 04 02") << "";
        QTest::newRow("24-bit: B, G, R") << kCurve << 0 << false << true
                                         << hex("0D00 0003 14 0A00 1400 D100 7700 7700 3200 6400 4080FF 83 04 02")
                                         << "";
        // PW 480: X' = 480 - 20 - 100 = 360 (168), Y' = 10, 100 x 200 to 459 (1CB), 209 (D1)
        QTest::newRow("90") << kCurve << 1 << false << false
                            << hex("0D00 0003 14 6801 0A00 CB01 D100 7700 3200 6400 08FC00 83 04 02") << "";
        // the Vice picture 400 x 300: PW 300, X' = 180 (B4), right 279 (117); flag 01; R_to_L: 03
        QTest::newRow("90, Vice, R_to_L") << withField(kCurve, 12, "R_to_L") << 1 << true << false
                                          << hex("0D01 0003 14 B400 0A00 1701 D100 7700 3200 6400 08FC00 03 04 02")
                                          << "";
        // an empty range (a damaged file) keeps the line's scale 77 (4D)
        QTest::newRow("empty range") << withField(withField(kCurve, 13, "100"), 7, "77") << 0 << false << false
                                     << hex("0D00 0003 14 0A00 1400 D100 7700 7700 3200 4D00 08FC00 83 04 02") << "";
        // 2 x 0x7FF6 + 20 = 65536 is past the variable memory: no block
        QTest::newRow("block too far") << withField(kCurve, 0, "0x7FF6") << 0 << false << false
                                       << hex("0D00 F67F 14 0A00 1400 D100 7700 7700 3200 6400 08FC00 83 04 02")
                                       << "trend: Curve parameterAddr + datas are more than Max value\n";
        // cut after Y: "zz" reads 0, W and H 0; the defaults: 00FF00 (07E0), L_to_R, 2, 1
        QTest::newRow("damaged") << "curve_1:zz,5,6;" << 0 << false << false
                                 << hex("0D00 0000 14 0500 0600 0400 0500 0000 0000 0000 E00700 80 02 01") << "";
    }

    void curveRecords()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(bool, colour24);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, errors);
        RecordBuild b(false, rotation);
        b.ctx.viceFlag = vice;
        b.ctx.colour24 = colour24;
        const QByteArray record = b.write(line);
        QCOMPARE(record.toHex(' '), bytes.toHex(' '));
        QCOMPARE(b.errors, errors);
        // the block: 20, then the record from its byte 5, at twice the parameter address
        const int at = 2 * int(quint8(record[2]) | quint8(record[3]) << 8);
        if (errors.isEmpty())
            QCOMPARE(b.at(at, 21), QByteArray(1, 20) + record.mid(5));
    }

    void curveScale_data()
    {
        addColumns<int, QString, QString, int>("height", "maxData", "minData", "expected");
        QTest::newRow("853: remainder 3") << 100 << "300" << "0" << 85; // 256000 / 300
        QTest::newRow("365: remainder 5 stays") << 100 << "700" << "0" << 36;
        QTest::newRow("568: remainder 8 rounds up") << 100 << "450" << "0" << 57;
        QTest::newRow("1228800 cut to 49152") << 480 << "1" << "0" << 4915;
        QTest::newRow("negative minimum") << 100 << "50" << "-50" << 256; // 2560
        QTest::newRow("reversed: -1000 is 64536") << 100 << "0" << "256" << 6454;
        QTest::newRow("empty range") << 100 << "7" << "7" << 0;
    }

    void curveScale()
    {
        QFETCH(int, height);
        QFETCH(QString, maxData);
        QFETCH(QString, minData);
        QTEST(int(CurveKinds::scale(height, CurveKinds::dataValue(maxData), CurveKinds::dataValue(minData))), "expected");
    }

    void curveEditsAndDrop()
    {
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(kCurve, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), QString(kCurve));
        QStringList cells = cellsOf(b);
        // H 50: the scale follows, 50 x 2560 / 256 = 500, 50; a maximum equal to the
        // minimum is taken back while the channel edit stays
        cells[5] = "50";
        cells[13] = "100";
        cells[9] = "5";
        QVERIFY(WidgetLine::applyEdit(b, cells, QSize(800, 480)));
        QCOMPARE(WidgetLine::write(b), QString("curve_2:0x0300,10,20,200,50,119,50,50,0xFF8040,5,4,2,L_to_R,356,100,"
                                               "trend,1;"));
        // a new curve: 0 to 256, the reference line on its bottom row, the scale for 100 rows
        const EditBuffer drop = WidgetLine::createNew(WidgetKind::Curve, 4, QRect(10, 20, 200, 100));
        QCOMPARE(QStringList({drop.text("maxData"), drop.text("minData")}), QStringList({"256", "0"}));
        QCOMPARE(QVector<qint64>({drop.number("y_ReferenceLine"), drop.number("scale")}), QVector<qint64>({119, 100}));
    }
};

QTEST_GUILESS_MAIN(TestMenuKinds)
#include "tst_menu_kinds.moc"
