// The keyboard kinds: touch records worked out by hand, lines read and
// written back, the rows the designer shows.

#include "CoreTestSupport.h"
#include "widgets/WriteAddress.h"

using namespace core;

namespace {

// Every field set; the keyboard is page 1, whose picture is 300 x 200.
const char *const kKeypad = "keypad_3:0x1200,4,100,50,60,40,200,100,20,30,5000,10,4,1,16,true,Right,White,2,int,"
                            "Page0001,spare,0x102030,pin,Enable,Page0000,Disable,0x0041,1;";
const char *const kENKeyB = "enkeyB_1:mail,0x1300,20,10,20,100,30,3,12,24,Black,0xFF0000,15,25,Page0001,50,60,"
                            "Modify,Star,Disable,,Enable,0x0042,1;";
const char *const kCNKeyB = "cnkeyB_0:chat,0x1400,32,0,400,200,80,4,24,24,5,12,24,White,0x00FF00,10,20,0x0000FF,"
                            "30,40,50,60,Page0001,70,80,New,3,Enable,Page0000,Disable,0x0000,2;";

} // namespace

class TestKeyboardKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        addColumns<QString, int, QByteArray>("line", "rotation", "bytes");
        // type 2, report (C0), 39 follow; 100,50 to 159,89; 0x1200; int 130 (82); 4, 1 digits;
        // window 200,100; input 20,30; font 2, width 16; White 1; page 1; limit on;
        // 5000 (1388), 10; Right 2; 0x102030 in RGB565: 2<<11 | 8<<5 | 6 = 0x1106
        QTest::newRow("keypad") << kKeypad << 0
                                << hex("02 C0 27 6400 3200 9F00 5900 0012 82 04 01 C800 6400 1400 1E00 02 10 01 0100 01"
                                       "88130000 0A000000 02 061100");
        // turned: PW 480, X' = 480 - 50 - 40 = 390 (186), Y' = 100, W' 40, H' 60: corner 429 (1AD), 159;
        // window on the 480 x 800 panel: 480 - 100 - 200 = 180 (B4), 200 (C8);
        // input in the keyboard page turned to 200 x 300: 200 - 30 = 170 (AA), 20
        QTest::newRow("keypad turned") << kKeypad << 1
                                       << hex("02 C0 27 8601 6400 AD01 9F00 0012 82 04 01 B400 C800 AA00 1400 02 10 01"
                                              "0100 01 88130000 0A000000 02 061100");
        // type 9, 31 follow; host control: FFFF and 0x0042, corner 109,49; 0x1300; 20 words;
        // Modify 1; font 3, 12 x 24; Black 0; red F800; entry 15,25; page 1; window 50,60; Star 1
        QTest::newRow("enkeyB") << kENKeyB << 0
                                << hex("09 80 1F FFFF 4200 6D00 3100 0013 1400 01 03 0C 18 00 00F800 0F00 1900 0100"
                                       "3200 3C00 01");
        // corner: X' = 480 - 20 - 30 = 430, + 30 - 1 = 459 (1CB), Y' 10 + 100 - 1 = 109;
        // entry 200 - 25 = 175 (AF), 15; window 480 - 60 - 200 = 220 (DC), 50
        QTest::newRow("enkeyB turned") << kENKeyB << 1
                                       << hex("09 80 1F FFFF 4200 CB01 6D00 0013 1400 01 03 0C 18 00 00F800 AF00 0F00"
                                              "0100 DC00 3200 01");
        // type 10, report, 45 follow; 0,400 to 199,479 (1DF); 0x1400; 32 words; New 0;
        // fonts 4 (24 x 24) and 5 (12 x 24); White 1; green 07E0; input 10,20; blue 001F;
        // pinyin 30,40; hanzi 50,60; spacing 3; page 1; window 70,80
        QTest::newRow("cnkeyB") << kCNKeyB << 0
                                << hex("0A C0 2D 0000 9001 C700 DF01 0014 2000 00 04 18 18 05 0C 18 01 E00700"
                                       "0A00 1400 1F0000 1E00 2800 3200 3C00 03 0100 4600 5000");
        // 480 - 400 - 80 = 0, Y' 0, W' 80, H' 200: corner 79 (4F), 199 (C7); points in 200 x 300:
        // (180, 10), (160, 30), (140, 50); window 480 - 80 - 200 = 200 (C8), 70 (46)
        QTest::newRow("cnkeyB turned") << kCNKeyB << 1
                                       << hex("0A C0 2D 0000 0000 4F00 C700 0014 2000 00 04 18 18 05 0C 18 01 E00700"
                                              "B400 0A00 1F0000 A000 1E00 8C00 3200 03 0100 C800 4600");
        // unknown words: no limit 0, alignment 0, cursor 1 (not Black), data type 1
        QTest::newRow("keypad, unknown words")
            << QString(kKeypad).replace("true,Right,White,2,int", "yes,T-Left,Red,2,float") << 0
            << hex("02 C0 27 6400 3200 9F00 5900 0012 01 04 01 C800 6400 1400 1E00 02 10 01 0100 00 88130000 0A000000"
                   "00 061100");
    }
    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(QByteArray, bytes);
        // pages 800 x 480 as designed, the keyboard page 1's 300 x 200; turned, the panel is 480 x 800
        RecordBuild b(false, rotation);
        b.ctx.panel = rotation == 1 ? QSize(480, 800) : QSize(800, 480);
        b.ctx.pagePictureSize = [](int page) { return page == 1 ? QSize(300, 200) : page == 0 ? QSize(800, 480) : QSize(); };
        QCOMPARE(b.write(line).toHex(' '), bytes.toHex(' '));
        QCOMPARE(rewritten(line), line); // and the line reads and writes back unchanged
    }

    // Damaged: no "x" reads 0, letters read 0, the sign is dropped; the
    // fields the line doesn't reach keep their defaults.
    void damagedLine()
    {
        QCOMPARE(rewritten("keypad_5:zz,abc,-7,8;"), QString("keypad_5:0x0000,0,7,8,0,0,0,0,0,0,9999,0,4,0,12,false,Left,Black,0,short,"
                                               ",,0x000000,keypad_5,Disable,,Disable,0x0000,1;"));
    }

    // The designer: a menu choice reaches the line; the address scan on
    // opening counts the keyboards' variables.
    void designer()
    {
        EditBuffer pad = WidgetLine::createNew(WidgetKind::Keypad, 0, QRect(10, 20, 30, 40));
        QStringList cells = cellsOf(pad, 1);
        cells[16] = "true";
        cells[21] = "Page0002";
        QVERIFY(WidgetLine::applyEdit(pad, cells, QSize(800, 480)));
        QVERIFY(WidgetLine::write(pad).contains(",4,0,12,true,Left,Black,0,short,Page0002,,0x000000,keypad_0,"));
        quint32 next = 0;
        WriteAddress::scan({kKeypad, kENKeyB, kCNKeyB}, next);
        QCOMPARE(next, 0x1401u);
    }
};

QTEST_MAIN(TestKeyboardKinds)
#include "tst_keyboard_kinds.moc"
