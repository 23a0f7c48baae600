// Binary widget records, expected bytes worked out by hand (little-endian):
// headers, rotation, colours, button, popbox, kbkey, the variable image.

#include "CoreTestSupport.h"
#include "widgets/WidgetKinds.h"

using namespace core;

class TestWidgetRecords : public QObject
{
    Q_OBJECT
private slots:
    void headers()
    {
        // touch: type, 0x80 + 0x40 report + 0x01 Vice, length
        const auto touch = [](bool report, bool vice) {
            QByteArray out;
            Records::appendTouchHeader(out, 7, report, vice, 20);
            return out;
        };
        QCOMPARE(touch(true, false), hex("07 C0 14"));
        QCOMPARE(touch(false, true), hex("07 81 14"));
        // display: type, Vice, parameter address, count with overlay in bit 7
        QByteArray out;
        Records::appendDisplayHeader(out, 3, true, 0x1234, 14, true);
        Records::appendDisplayHeader(out, 1, false, 0xFFFF, 29, false);
        QCOMPARE(out, hex("03 01 34 12 8E  01 00 FF FF 1D"));
    }

    void rotation()
    {
        const auto rotated = [](int rotation, const QSize &picture, int x, int y, int w, int h) {
            RecordContext ctx;
            ctx.rotation = rotation;
            ctx.pagePicture = picture;
            const Rect16 r = ctx.rotate(x, y, w, h);
            return QRect(r.x, r.y, r.w, r.h);
        };
        // X 10, Y 20, W 30, H 40 on a picture of 800 by 480
        const QSize picture(800, 480);
        // PW is the height, 480: X' = 480 - 20 - 40, Y' = X, sizes swap
        QCOMPARE(rotated(1, picture, 10, 20, 30, 40), QRect(420, 10, 40, 30));
        // X' = 800 - 10 - 30, Y' = 480 - 20 - 40
        QCOMPARE(rotated(2, picture, 10, 20, 30, 40), QRect(760, 420, 30, 40));
        // PH is the width, 800: X' = Y, Y' = 800 - 10 - 30
        QCOMPARE(rotated(3, picture, 10, 20, 30, 40), QRect(20, 760, 40, 30));
        // 16-bit arithmetic: 100 - 90 - 20 = -10 = 0xFFF6
        QCOMPARE(rotated(2, QSize(100, 100), 90, 0, 20, 10), QRect(0xFFF6, 90, 20, 10));

        // points, with PW and PH as given
        const auto point = [](int rot, int x, int y, int pw, int ph) {
            const Point16 q = Records::rotatePoint(rot, x, y, pw, ph);
            return QPoint(q.x, q.y);
        };
        QCOMPARE(point(1, 10, 20, 480, 800), QPoint(460, 10));
        QCOMPARE(point(2, 10, 20, 800, 480), QPoint(790, 460));
        QCOMPARE(point(3, 10, 20, 480, 800), QPoint(20, 790));

        // the Vice flag turns rectangles with the Vice page's picture
        RecordContext ctx;
        ctx.rotation = 1;
        ctx.pagePicture = picture;
        ctx.vicePicture = QSize(600, 300);
        ctx.viceFlag = true;
        QCOMPARE(int(ctx.rotate(10, 20, 30, 40).x), 240); // PW = 300: X' = 300 - 20 - 40
        ctx.viceFlag = false;
        QCOMPARE(int(ctx.rotate(10, 20, 30, 40).x), 420);
    }

    void colours()
    {
        QCOMPARE(Records::rgb565(0xFFFFFF), quint16(0xFFFF));
        QCOMPARE(Records::rgb565(0xFF8040), quint16(0xFC08)); // 31 << 11 | 32 << 5 | 8
        QCOMPARE(Records::rgb565(0x123456), quint16(0x11AA)); // 2 << 11 | 13 << 5 | 10
        QCOMPARE(Records::rgb565(0x070307), quint16(0x0000)); // low bits dropped
        QCOMPARE(Records::rgb565(0x080408), quint16(0x0821)); // lowest kept bits
        // three bytes: B, G, R on a 24-bit panel, else the RGB565 word and 0
        QByteArray out;
        Records::appendColour3(out, 0x123456, true);
        Records::appendColour3(out, 0x123456, false);
        QCOMPARE(out, hex("56 34 12  AA 11 00"));
    }

    void viceFormMovesTail()
    {
        QCOMPARE(Records::tailToFront(hex("01 02 03 04 05 06 07"), 3), hex("04 05 01 02 03 06 07"));
        QCOMPARE(Records::tailToFront(hex("01 02 03 EE FF"), 3), hex("EE FF 01 02 03"));
        QCOMPARE(Records::tailToFront(hex("01 02"), 3), hex("01 02"));
    }

    void records_data()
    {
        addColumns<QString, int, bool, QSize, QByteArray>("line", "rotation", "vice", "pagePicture", "bytes");
        const QSize plain(800, 480), tall(400, 600);
        // button: right 100 + 120 - 1 = 219 (DB), bottom 50 + 40 - 1 = 89 (59)
        QTest::newRow("button")
            << "button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0,Disable,Disable,0x0000,0xFFFF,1;"
            << 0 << false << plain << hex("01 80 12  6400 3200 DB00 5900  2000  0100 0200 0200  FFFF");
        // host control: no touch area, the trigger value at 5; "12_a.png"
        // doesn't begin with four digits; empty page; report and Vice flags
        QTest::newRow("button, host control")
            << "button_1:100,50,120,40,0x0031,12_a.png,0002_b.png,,button_1,Enable,Enable,0x1234,0x0005,1;"
            << 0 << true << plain << hex("01 C1 12  FFFF 3412 DB00 5900  3100  FFFF 0200 FFFF  0500");
        // rotation 1 on 800 x 480: X' 420 (1A4), Y' 10, W' 40, H' 30,
        // right 459 (1CB), bottom 39 (27)
        QTest::newRow("button, rotation 1")
            << "button_2:10,20,30,40,0x0001,,,Page0004,b,Disable,Disable,0x0000,0x0002,1;"
            << 1 << false << plain << hex("01 80 12  A401 0A00 CB01 2700  0100  FFFF FFFF 0400  0200");

        // popbox: 100 x 50 at 10, 20: right 110 (6E) and bottom 70 (46), no
        // minus 1 as on the button; box 30, 40 unturned; "dim" is on, clear
        // is on: flags 3
        QTest::newRow("popbox")
            << "popbox_3:10,20,100,50,0x0005,0001_a.png,,,30,40,dim,popbox_3,Enable,Enable,Disable,0x0000,Page0001,1;"
            << 0 << false << plain << hex("08 C0 15  0A00 1400 6E00 4600  0500  0100 FFFF FFFF  1E00 2800  03");
        QTest::newRow("popbox, host control")
            << "popbox_4:10,20,100,50,0x0000,,,,0,0,Disable,p,Disable,Disable,Enable,0x00AB,,1;"
            << 0 << false << plain << hex("08 80 15  FFFF AB00 6E00 4600  0000  FFFF FFFF FFFF  0000 0000  00");
        // rotation 1, page picture 400 x 600: PW 600, so X' = 600 - 20 - 50
        // = 530 (212), Y' 10, W' 50, H' 100: right 580 (244), bottom 110.
        // The box turns with the panel (PW 800) and the target page's
        // picture, 300 x 200: BX = 800 - 40 - 200 = 560 (230), BY = 30.
        QTest::newRow("popbox, rotation 1, target page")
            << "popbox_5:10,20,100,50,0x0000,,,Page0002,30,40,Disable,p,Disable,Disable,Disable,0x0000,,1;"
            << 1 << false << tall << hex("08 80 15  1202 0A00 4402 6E00  0000  FFFF FFFF 0200  3002 1E00  00");
        // No page: the box has the panel's size, BX = 800 - 40 - 480 = 280 (118)
        QTest::newRow("popbox, rotation 1, no page")
            << "popbox_6:10,20,100,50,0x0000,,,,30,40,normal,p,Disable,Enable,Disable,0x0000,,1;"
            << 1 << false << tall << hex("08 80 15  1202 0A00 4402 6E00  0000  FFFF FFFF FFFF  1801 1E00  02");
        // A page the list doesn't have: its number, and the panel's size
        QTest::newRow("popbox, rotation 1, unknown page")
            << "popbox_7:10,20,100,50,0x0000,,,Page0009,30,40,Enable,p,Disable,Disable,Disable,0x0000,,1;"
            << 1 << false << tall << hex("08 80 15  1202 0A00 4402 6E00  0000  FFFF FFFF 0900  1801 1E00  01");

        // kbkey: right 5 + 40 - 1 = 44 (2C), bottom 6 + 30 - 1 = 35 (23)
        QTest::newRow("kbkey") << "kbkey_7:5,6,40,30,0x0041,Page0003,kbkey_7,Disable,1;" << 0 << false << plain
                               << hex("05 80 0C  0500 0600 2C00 2300  4100  0300");
        QTest::newRow("kbkey, switch without row on") << "kbkey_8:5,6,40,30,0x0008,,kbkey_8,Enable,1;" << 0 << false
                                                      << plain << hex("05 C0 0C  0500 0600 2C00 2300  0800  FFFF");
    }
    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(QSize, pagePicture);
        QFETCH(QByteArray, bytes);
        RecordBuild b(false, rotation);
        b.ctx.viceFlag = vice;
        b.ctx.pagePicture = b.ctx.vicePicture = pagePicture;
        b.ctx.pagePictureSize = [](int page) { return page == 2 ? QSize(300, 200) : QSize(); };
        QCOMPARE(b.write(line).toHex(' '), bytes.toHex(' '));
    }

    void linesWithoutRecordWriter()
    {
        QByteArray out("x");
        const RecordContext ctx = RecordBuild().ctx;
        QCOMPARE(KindRegistry::writeRecord(out, "Page:,0x0000;", ctx), 0);
        QCOMPARE(KindRegistry::writeViceRecord(out, "button_0:1,2,3,4;", ctx), 0);
        QCOMPARE(out, QByteArray("x"));
    }

    void initialValueBounds()
    {
        // 65536 bytes, 49152 in Modbus master mode: word A at 2A and 2A + 1
        for (const auto &[master, writeAddr, stored] : {std::tuple<bool, int, bool>{false, 0x7FFF, true}, // 65535
                                                        {false, 0x8000, false}, // 65537
                                                        {true, 0x5FFF, true},   // 49151
                                                        {true, 0x6000, false}}) {
            VariableImage image(master);
            QCOMPARE(image.bytes(), QByteArray(master ? 49152 : 65536, '\0'));
            QString errors;
            QCOMPARE(image.storeWord("num_1", quint16(writeAddr), 0xABCD, &errors), stored);
            if (stored)
                QCOMPARE(image.bytes().mid(2 * writeAddr, 2), hex("AB CD")); // high byte first
            else
                QCOMPARE(image.bytes(), QByteArray(image.limit(), '\0'));
            QCOMPARE(errors, stored ? QString() : QString("num_1: write address is more than Max value\n"));
        }
    }

    void parameterBlock()
    {
        VariableImage image;
        QString errors;
        // no address: nothing, no message
        QVERIFY(image.storeParameterBlock("icon_0", "Icon", 0xFFFF, 14, QByteArray(14, '\x01'), &errors));
        QCOMPARE(errors, QString());
        QCOMPARE(image.bytes(), QByteArray(65536, '\0'));

        // a display record: header 5 bytes, count byte 0x8E (overlay, 14)
        QByteArray rec = hex("03 00 0001 8E");
        for (int i = 1; i <= 14; ++i)
            rec.append(char(i));
        rec.append('\x77'); // beyond P
        QVERIFY(image.storeRecordBlock("icon_0", "Icon", 0x0100, rec, 14, &errors));
        QCOMPARE(image.bytes().mid(0x1FF, 17), hex("00 8E 0102030405060708090A0B0C0D0E 00"));

        // 2 x 32760 + 14 = 65534 fits; 2 x 32761 + 14 = 65536 doesn't
        QVERIFY(image.storeParameterBlock("icon_1", "Icon", 32760, 14, QByteArray(14, '\x05'), &errors));
        QCOMPARE(errors, QString());
        QVERIFY(!image.storeParameterBlock("icon_2", "Icon", 32761, 14, QByteArray(14, '\x66'), &errors));
        QCOMPARE(errors, QString("icon_2: Icon parameterAddr + datas are more than Max value\n"));
        QVERIFY(!image.bytes().contains('\x66'));
        // a kind's own word in the message, or the kind word when it has none
        QCOMPARE(VariableImage::parameterMessage("q", WidgetKinds::parameterWord(WidgetKind::QRCode)),
                 QString("q: PRCode parameterAddr + datas are more than Max value\n"));
        QCOMPARE(WidgetKinds::parameterWord(WidgetKind::Statictext), QString("label"));
    }
};

QTEST_GUILESS_MAIN(TestWidgetRecords)
#include "tst_widget_records.moc"
