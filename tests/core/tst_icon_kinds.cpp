// The picture kinds icon, bitIcon and gif: records worked out by hand, what
// they put into the variable image, the limits at its end, and their lines.

#include "CoreTestSupport.h"
#include "widgets/IconKinds.h"
#include "widgets/WriteAddress.h"

using namespace core;

namespace {

// Run 0005..0010 mapped to 100..105, shown first: 0007 (7 - 5 + 100 = 102).
const char *const kIcon = "icon_2:0x0300,2,0x1000,2,100,50,40,30,0005_a.png,0010_b.png,RGB565,0007_x.png,100,105,"
                          "lamp,Enable,0x0009,1;";
const char *const kBitIcon = "bitIcon_0:0x0400,0x1001,15,10,20,30,40,,0002_on.png,Disable,door,0xFFFF,1;";
const char *const kGif = "gif_1:0x0500,2,0x1002,2,200,100,64,48,10,100,1,5,0003_fire.gif,aRGB4444,Disappear,flame,11,"
                         "0x1100,0x0001,0x1101,0x0002,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,"
                         "0xFFFF,0xFFFF,0xFFFF,0xFFFF,Enable,0x0004,1;";
// The gif's 32 bytes of write pairs: 0x1100 = 1, 0x1101 = 2, six unused.
const QByteArray kGifPairs = hex("0011 0100 0111 0200") + QByteArray(24, '\xFF');

} // namespace

class TestIconKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        addColumns<QString, int, bool, QByteArray>("line", "rotation", "vice", "bytes");
        // type 3; parameters 0x0300; 16 with the overlap bit (90); address 0x1000; X 100, Y 50;
        // icons 5 and 10; 100 and 105; tail 9
        QTest::newRow("icon") << kIcon << 0 << false << hex("03 00 0003 90 0010 6400 3200 0500 0A00 6400 6900 0900");
        // 90 degrees on 800 x 480: PW 480, X' = 480 - 50 - 30 = 400 (190), Y' = X = 100
        QTest::newRow("icon turned") << kIcon << 1 << false << hex("03 00 0003 90 0010 9001 6400 0500 0A00 6400 6900 0900");
        QTest::newRow("icon Vice") << kIcon << 0 << true << hex("0900 03 01 0003 90 0010 6400 3200 0500 0A00 6400 6900");
        // type 15, 14 (0E) follow; bit 15 in one byte; no off picture; the zero byte; no tail
        QTest::newRow("bitIcon") << kBitIcon << 0 << false << hex("0F 00 0004 0E 0110 0A00 1400 0F FFFF 0200 00 FFFF");
        // PW 480: X' = 480 - 20 - 40 = 420 (1A4), Y' = 10
        QTest::newRow("bitIcon turned") << kBitIcon << 1 << false << hex("0F 00 0004 0E 0110 A401 0A00 0F FFFF 0200 00 FFFF");
        QTest::newRow("bitIcon Vice") << kBitIcon << 0 << true << hex("FFFF 0F 01 0004 0E 0110 0A00 1400 0F FFFF 0200 00");
        // type 5; 55 (37) with the effects bit: B7; corners 200,100 and 263,147; gif 3; play at
        // start 1; 5 x 10 ms; codes 10 and 100; aRGB4444 is 2; once 11; pairs; tail 4
        QTest::newRow("gif") << kGif << 0 << false
                             << hex("05 00 0005 B7 0210 C800 6400 0701 9300 0300 01 05 0A00 6400 02 0B00") + kGifPairs
                                    + hex("0400");
        // X' = 480 - 100 - 48 = 332 (14C), Y' = 200, W' 48, H' 64: far corner 379 (17B), 263 (107)
        QTest::newRow("gif turned") << kGif << 1 << false
                                    << hex("05 00 0005 B7 0210 4C01 C800 7B01 0701 0300 01 05 0A00 6400 02 0B00")
                                           + kGifPairs + hex("0400");
        // no gif file, an empty picture format (32), no overlay
        QTest::newRow("gif bare") << "gif_0:0xFFFF,2,0x0000,2,0,0,1,1,10,100,0,5,,,Run,g,11;" << 0 << false
                                  << hex("05 00 FFFF 37 0000 0000 0000 0000 0000 FFFF 00 05 0A00 6400 20 0B00")
                                         + QByteArray(32, '\xFF') + hex("FFFF");
    }
    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(QByteArray, bytes);
        RecordBuild b(false, rotation);
        QCOMPARE((vice ? b.writeVice(line) : b.write(line)).toHex(' '), bytes.toHex(' '));
        QCOMPARE(b.errors, QString());
    }

    // The parameter blocks: the count byte and the P bytes of the record
    // after it, at 2 x parameterAddr.
    void variables()
    {
        RecordBuild b;
        b.write(kIcon);
        QCOMPARE(b.at(0x600, 16).toHex(' '), hex("90 0010 6400 3200 0500 0A00 6400 6900 00").toHex(' '));
        b.write(kBitIcon);
        QCOMPARE(b.at(0x800, 14).toHex(' '), hex("0E 0110 0A00 1400 0F FFFF 0200 00 00").toHex(' '));
        b.write(kGif);
        const QByteArray block = hex("B7 0210 C800 6400 0701 9300 0300 01 05 0A00 6400 02 0B00") + kGifPairs + hex("00");
        QCOMPARE(b.at(0xA00, 55).toHex(' '), block.toHex(' '));
        QCOMPARE(b.errors, QString());
    }

    // The first value, read back from the variable image (-1: nothing stored).
    void initialValues_data()
    {
        addColumns<QString, int>("line", "value");
        // the run 0005..0010 maps to 100..105; outside it: 105 + 1
        const QString icon = "icon_1:0xFFFF,2,0x0010,2,0,0,8,8,0005_a.png,0010_b.png,,%1,100,105,n,Disable,0xFFFF,1;";
        QTest::newRow("inside the run") << icon.arg("0007_x.png") << 102;
        QTest::newRow("last of the run") << icon.arg("0010_y.png") << 105;
        QTest::newRow("after the run") << icon.arg("0011_x.png") << 106;
        QTest::newRow("before the run") << icon.arg("0004_x.png") << 106;
        QTest::newRow("no four digits") << icon.arg("7.png") << 106;
        QTest::newRow("a number") << icon.arg("42") << 42;
        QTest::newRow("a leading dot is no name") << icon.arg(".5") << 5;
        QTest::newRow("empty") << icon.arg("") << -1;
        const QString gif = "gif_1:0xFFFF,2,0x0010,2,0,0,8,8,%1,100,0,5,,,%2,n,11;";
        QTest::newRow("Run") << gif.arg("10", "Run") << 10;
        QTest::newRow("Stop") << gif.arg("10", "Stop") << 100;
        QTest::newRow("RunOnce") << gif.arg("10", "RunOnce") << 11;
        QTest::newRow("Disappear") << gif.arg("10", "Disappear") << 55;
        QTest::newRow("Disappear truncates") << gif.arg("3", "Disappear") << 51; // (3 + 100) / 2
        QTest::newRow("unknown word") << gif.arg("10", "run") << 55;
    }
    void initialValues()
    {
        QFETCH(QString, line);
        QFETCH(int, value);
        RecordBuild b;
        b.write(line);
        const QByteArray word = b.at(0x20, 2);
        QCOMPARE(int(quint8(word[0])) << 8 | quint8(word[1]), qMax(value, 0));
        EditBuffer w;
        quint16 v = 0;
        if (WidgetLine::parse(line, w) == ParseStatus::Ok && w.kind() == WidgetKind::Icon)
            QCOMPARE(IconKinds::iconInitialValue(w, &v), value >= 0); // an empty text stores nothing
    }

    void limits_data()
    {
        addColumns<QString, bool, QString>("line", "master", "message");
        const QString icon = "icon_1:%1,2,%2,2,0,0,8,8,,,,%3,0,0,lamp,Disable,0xFFFF,1;";
        const QString bit = "bitIcon_1:%1,0x0010,3,0,0,8,8,,,Disable,door,0xFFFF,1;";
        const QString gif = "gif_1:%1,2,%2,2,0,0,8,8,10,100,0,5,,,Run,flame,11;";
        const QString over = " parameterAddr + datas are more than Max value\n";
        const QString address = ": write address is more than Max value\n";
        // 2 x 32760 + 14 = 65534; 2 x 32761 + 14 = 65536
        QTest::newRow("icon block fits") << icon.arg("0x7FF8", "0x0010", "1") << false << "";
        QTest::newRow("icon block over") << icon.arg("0x7FF9", "0x0010", "1") << false << "lamp: Icon" + over;
        // 2 x 0x8000 + 1 = 65537; master: 2 x 0x6000 + 1 = 49153
        QTest::newRow("icon value over") << icon.arg("0xFFFF", "0x8000", "1") << false << "lamp" + address;
        QTest::newRow("master mode") << icon.arg("0xFFFF", "0x6000", "1") << true << "lamp" + address;
        QTest::newRow("no value, no address") << icon.arg("0xFFFF", "0xFFFF", "") << false << "";
        // 2 x 32761 + 12 = 65534; 2 x 32762 + 12 = 65536
        QTest::newRow("bitIcon fits") << bit.arg("0x7FF9") << false << "";
        QTest::newRow("bitIcon over") << bit.arg("0x7FFA") << false << "door: bitIcon" + over;
        // 2 x 32741 + 53 = 65535; 2 x 32742 + 53 = 65537
        QTest::newRow("gif fits") << gif.arg("0x7FE5", "0x0010") << false << "";
        QTest::newRow("gif over") << gif.arg("0x7FE6", "0x0010") << false << "flame: Gif" + over;
        QTest::newRow("gif without address") << gif.arg("0xFFFF", "0xFFFF") << false << "flame" + address;
    }
    void limits()
    {
        QFETCH(QString, line);
        QFETCH(bool, master);
        RecordBuild b(master);
        QVERIFY(!b.write(line).startsWith("<count>"));
        QTEST(b.errors, "message");
    }

    void lines_data()
    {
        addColumns<QString, QString>("in", "out");
        QTest::newRow("icon") << kIcon << kIcon;
        QTest::newRow("bitIcon") << kBitIcon << kBitIcon;
        QTest::newRow("gif") << kGif << kGif;
        // a cut-off line keeps every later field's default
        QTest::newRow("short icon") << "icon_9:0x0001;" << "icon_9:0x0001,2,0x0000,2,0,0,0,0,,,,,0,0,icon_9,Disable,0xFFFF,1;";
        QTest::newRow("short gif") << "gif_3:0x0001,7;"
                                   << "gif_3:0x0001,7,0x0000,2,0,0,0,0,10,100,0,5,,,Run,gif_3,11,"
                                      "0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,"
                                      "0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,Disable,0xFFFF,1;";
        // garbage: the bit number keeps its digits, the address without "x" reads 0
        QTest::newRow("bitIcon garbage") << "bitIcon_5:zz,0x12,b-3,1,2,3,4,a,b,On,n,0x0001,2;"
                                         << "bitIcon_5:0x0000,0x0012,3,1,2,3,4,a,b,Disable,n,0x0001,2;";
    }
    void lines()
    {
        QFETCH(QString, in);
        QTEST(rewritten(in), "out");
    }

    // What the designer does: drop (address and step), rows, edits, the
    // address scan.
    void designer()
    {
        quint32 next = 0x0040;
        EditBuffer icon = WidgetLine::createNew(WidgetKind::Icon, 4, QRect(10, 20, 30, 40));
        QCOMPARE(WriteAddress::assign(icon, next), 1);
        QCOMPARE(WidgetLine::write(icon), QString("icon_4:0xFFFF,2,0x0040,2,10,20,30,40,,,,,0,0,icon_4,Disable,0xFFFF,1;"));
        for (WidgetKind k : {WidgetKind::Icon, WidgetKind::BitIcon, WidgetKind::Gif})
            QCOMPARE(WriteAddress::dropStep(k), 1);

        // the gif's rows: the switch kept as 0/1 shows as a word; the pairs' labels
        EditBuffer gif = WidgetLine::createNew(WidgetKind::Gif, 2, QRect(0, 0, 64, 48));
        const QVector<TableRow> rows = WidgetLine::tableRows(gif, 1);
        QCOMPARE(rows[10], TableRow("暂停后重新播放", "Disable"));
        QCOMPARE(rows[16], TableRow("操作变量地址", "0xFFFF"));
        QCOMPARE(WidgetLine::tableRows(gif, 0)[31], TableRow("writeAddr_value", "0xFFFF"));
        QStringList cells = cellsOf(gif);
        cells[10] = "Enable";
        cells[16] = "0x2000";
        QVERIFY(WidgetLine::applyEdit(gif, cells, QSize(800, 480)));
        QVERIFY(WidgetLine::write(gif).contains(",10,100,1,5,,,Run,gif_2,11,0x2000,0xFFFF,"));

        // the scan counts the gif's own address, not the addresses its pairs write to
        next = 0;
        WriteAddress::scan({kGif}, next);
        QCOMPARE(next, 0x1003u);

        // a last icon at or before the first is dropped
        QStringList ic = cellsOf(icon);
        ic[8] = "0010_a.png";
        for (const char *last : {"0012_b.png", "0010_c.png", "0003_d.png"}) {
            ic[9] = last;
            QVERIFY(WidgetLine::applyEdit(icon, ic, QSize(800, 480)));
            QCOMPARE(icon.text("lastIcon"), QString("0012_b.png"));
        }
    }
};

QTEST_GUILESS_MAIN(TestIconKinds)
#include "tst_icon_kinds.moc"
