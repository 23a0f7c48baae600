// The number kinds: number and pngNumber records and their Vice forms, the
// anchor point, the value of defaultNumber and how each data type puts it
// into the variable image, the limits at the end of the space, and lines
// read and written back. Expected bytes are worked out by hand.

#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/NumberKinds.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetLine.h"
#include "widgets/WriteAddress.h"

#include <QtTest>

using namespace vantile;

namespace {

QByteArray hex(const char *spaced)
{
    return QByteArray::fromHex(QByteArray(spaced).replace(' ', ""));
}

// Middle of X 100, W 51: 125 (7D). 12.3 with one decimal: 123 (7B).
const char *const kNumber = "number_3:0x1234,2,100,50,51,30,24,1,4,1,2,1,short,2,0xFF8040,mA,12.3,0x0100,speed,Enable,"
                            "0x0005,1;";
// Right: X + W = 130 (82). Icons 12 and 21.
const char *const kPng = "pngNumber_7:0x0200,0x0300,2,40,60,90,20,3,0,ushort,Right,0012_d0.png,0021_d9.png,100,temp,"
                         "Disable,0x0102,1;";

struct Build {
    VariableImage image;
    FontTable fonts;
    QString errors;
    RecordContext ctx;
    Build()
    {
        fonts.count = 2;
        ctx.pagePicture = ctx.vicePicture = ctx.panel = QSize(800, 480);
        ctx.variables = &image;
        ctx.fonts = &fonts;
        ctx.errorText = &errors;
    }
    QByteArray write(const QString &line, bool vice = false)
    {
        QByteArray out("\xAA", 1);
        const int n = vice ? KindRegistry::writeViceRecord(out, line, ctx) : KindRegistry::writeRecord(out, line, ctx);
        return n == out.size() - 1 ? out.mid(1) : QByteArray("<count>");
    }
};

} // namespace

class TestNumberKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<bool>("vice");
        QTest::addColumn<QByteArray>("bytes");
        // type 2, Vice 0, parameters 0x0100, 18 + 2; address; anchor 125, 50;
        // colour FF8040 as RGB565 FC08 and 0; font 1, width 24; Middle 1 with
        // the leading-zero bit; 2 and 1 digits; short 129; U 2, "mA"; tail 5
        QTest::newRow("number") << kNumber << 0 << false
                                << hex("02 00 0001 14  3412  7D00 3200  08FC00  01 18 81 02 01 81 02 6D41  0500");
        // Vice page: flag 1 and tail first, everything else two bytes later
        QTest::newRow("number, Vice") << kNumber << 0 << true
                                      << hex("0500  02 01 0001 14  3412  7D00 3200  08FC00  01 18 81 02 01 81 02 6D41");
        // type 4, 16 bytes follow; ushort 1; anchor 130, 60; Right 2 without
        // the bit; icons 12 and 21; tail 0x0102
        QTest::newRow("pngNumber") << kPng << 0 << false
                                   << hex("04 00 0002 10  0003  01  8200 3C00  03 00 02  0C00 1500  0201");
        // 90 degrees on 800 x 480: PW 480, X' = 480 - 60 = 420 (1A4), Y' = 130
        QTest::newRow("pngNumber, rotation 1") << kPng << 1 << false
                                               << hex("04 00 0002 10  0003  01  A401 8200  03 00 02  0C00 1500  0201");
        // the Vice picture (600 x 300) turns the anchor: X' = 300 - 60 = 240
        QTest::newRow("pngNumber, Vice, rotation 1")
            << kPng << 1 << true << hex("0201  04 01 0002 10  0003  01  F000 8200  03 00 02  0C00 1500");
        // a line cut after the rectangle: defaults, Left, anchor X; no icons,
        // short, 4 digits; no parameter block
        QTest::newRow("pngNumber, short line") << "pngNumber_1:0x0010,0x0020,2,5,6,70,30;" << 0 << false
                                               << hex("04 00 1000 10  2000  81  0500 0600  04 00 00  FFFF FFFF  FFFF");
        // garbage: "zz" has no "x" (0), "-7" keeps its digits, the unknown
        // type is 1; a unit shorter than U is padded with zeros
        QTest::newRow("number, garbage fields")
            << "number_1:zz,2,abc,-7,10,10,8,0,4,2,1,0,word?,3,0xFFFFFF,m,x,0xFFFF,n,Disable,0xFFFF,1;" << 0 << false
            << hex("02 00 FFFF 15  0000  0A00 0700  FFFF00  00 08 02 01 00 01 03 6D0000  FFFF");
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
        if (vice)
            b.ctx.vicePicture = QSize(600, 300);
        QCOMPARE(b.write(line, vice).toHex(' '), bytes.toHex(' '));
        QCOMPARE(b.errors, QString());
    }

    // The variable image after a record: the parameter block (count, then the
    // record from offset 5 without tail) and the initial value.
    void variablesOfARecord()
    {
        for (bool vice : {false, true}) {
            Build b;
            b.write(kNumber, vice);
            // U + 16 = 18 (12) at 2 x 0x100
            QCOMPARE(b.image.bytes().mid(0x200, 20).toHex(' '),
                     hex("12  3412 7D00 3200 08FC00 01 18 81 02 01 81 02 6D41  00").toHex(' '));
            QCOMPARE(b.image.bytes().mid(0x2468, 2), hex("007B"));
            b.write(kPng, vice);
            QCOMPARE(b.image.bytes().mid(0x400, 16).toHex(' '),
                     hex("0E  0003 01 8200 3C00 03 00 02 0C00 1500  00").toHex(' '));
            QCOMPARE(b.image.bytes().mid(0x600, 2), hex("0064"));
            QCOMPARE(b.errors, QString());
        }
    }

    void defaultValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<qint64>("value");
        QTest::newRow("12.3, 2") << "12.3" << 2 << qint64(1230);
        QTest::newRow("-1.5, 1") << "-1.5" << 1 << qint64(-15);
        QTest::newRow(".5 has no dot, 1") << ".5" << 1 << qint64(50);
        QTest::newRow("negative integer") << "-15" << 0 << qint64(-15);
        QTest::newRow("fraction cut") << "3.14159" << 2 << qint64(314);
        QTest::newRow("fraction padded") << "-0.25" << 3 << qint64(-250);
        QTest::newRow("no integer part") << "-.5" << 2 << qint64(-50);
        QTest::newRow("empty") << "" << 2 << qint64(0);
    }
    void defaultValue()
    {
        QFETCH(QString, text);
        QFETCH(int, decimals);
        QFETCH(qint64, value);
        QCOMPARE(NumberKinds::defaultValue(text, decimals), value);
    }

    // Each width at word 0x10 (byte 0x20) of an image whose bytes there were AA.
    void storedForms_data()
    {
        QTest::addColumn<int>("dataType");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("short -15") << 129 << qint64(-15) << hex("FFF1 AAAA AAAA AAAA");
        QTest::newRow("uchar: low byte only") << 0 << qint64(0x1FF) << hex("AAFF AAAA AAAA AAAA");
        QTest::newRow("char -15") << 128 << qint64(-15) << hex("AAF1 AAAA AAAA AAAA");
        QTest::newRow("uchar_H8: high byte only") << 4 << qint64(0x5A) << hex("5AAA AAAA AAAA AAAA");
        QTest::newRow("char_H8 -2") << 132 << qint64(-2) << hex("FEAA AAAA AAAA AAAA");
        QTest::newRow("int -15") << 130 << qint64(-15) << hex("FFFF FFF1 AAAA AAAA");
        QTest::newRow("longlong") << 131 << qint64(0x0102030405060708) << hex("0102 0304 0506 0708");
        QTest::newRow("longlong -2") << 131 << qint64(-2) << hex("FFFF FFFF FFFF FFFE");
        QTest::newRow("bit5: the word") << 69 << qint64(1) << hex("0001 AAAA AAAA AAAA");
    }
    void storedForms()
    {
        QFETCH(int, dataType);
        QFETCH(qint64, value);
        QFETCH(QByteArray, bytes);
        VariableImage image;
        QString errors;
        QVERIFY(image.storeValue("n", 0x10, QByteArray(8, '\xAA'), &errors));
        QVERIFY(NumberKinds::storeValue(image, "n", 0x10, dataType, value, &errors));
        QCOMPARE(image.bytes().mid(0x1F, 10).toHex(' '), (hex("00") + bytes + hex("00")).toHex(' '));
        QCOMPARE(errors, QString());
    }

    // The last byte of each form against the end: 65536, or 49152 in master mode.
    // A refused value leaves the image as it was.
    void valueAtTheEnd_data()
    {
        QTest::addColumn<bool>("master");
        QTest::addColumn<int>("dataType");
        QTest::addColumn<int>("writeAddr");
        QTest::addColumn<bool>("stored");
        QTest::newRow("ushort at 65535") << false << 1 << 0x7FFF << true;
        QTest::newRow("uint to 65535") << false << 2 << 0x7FFE << true;
        QTest::newRow("uint to 65537") << false << 2 << 0x7FFF << false;
        QTest::newRow("longlong to 65535") << false << 131 << 0x7FFC << true;
        QTest::newRow("longlong to 65537") << false << 131 << 0x7FFD << false;
        QTest::newRow("no address") << false << 1 << 0xFFFF << false;
        QTest::newRow("master, short to 49151") << true << 129 << 0x5FFF << true;
        QTest::newRow("master, short to 49153") << true << 129 << 0x6000 << false;
    }
    void valueAtTheEnd()
    {
        QFETCH(bool, master);
        QFETCH(int, dataType);
        QFETCH(int, writeAddr);
        QFETCH(bool, stored);
        VariableImage image(master);
        QString errors;
        QCOMPARE(NumberKinds::storeValue(image, "speed", quint16(writeAddr), dataType, -1, &errors), stored);
        QCOMPARE(errors, stored ? QString() : QString("speed: write address is more than Max value\n"));
        QCOMPARE(image.bytes().count('\xFF') > 0, stored);
    }

    // Parameter block and font messages, each a line of the error text.
    void complaints_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("errors");
        const QString number = "number_1:0x0010,2,0,0,10,10,24,%1,4,0,2,0,short,2,0x000000,mA,1,%2,speed,Disable,0xFFFF,1;";
        const QString png = "pngNumber_1:%1,0x0010,2,0,0,10,10,3,0,short,Left,,,1,temp,Disable,0xFFFF,1;";
        // 2 + 2 x 32758 + 16 = 65534 fits; with 32759 it reaches 65536
        QTest::newRow("number block fits") << number.arg(1).arg("0x7FF6") << QString();
        QTest::newRow("number block too far")
            << number.arg(1).arg("0x7FF7") << "speed: number parameterAddr + datas are more than Max value\n";
        // 2 x 32760 + 14 = 65534 fits; 2 x 32761 + 14 = 65536 doesn't
        QTest::newRow("pngNumber block fits") << png.arg("0x7FF8") << QString();
        QTest::newRow("pngNumber block too far")
            << png.arg("0x7FF9") << "temp: PngNumber parameterAddr + datas are more than Max value\n";
        // two fonts: ids 0 and 1
        QTest::newRow("font id at the count")
            << number.arg(2).arg("0xFFFF") << "speed: fontlib id is more than max value\n";
    }
    void complaints()
    {
        QFETCH(QString, line);
        QFETCH(QString, errors);
        Build b;
        QVERIFY(!b.write(line).isEmpty());
        QCOMPARE(b.errors, errors);
    }

    void linesReadAndWrittenBack_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("written");
        QTest::newRow("number") << kNumber << kNumber;
        QTest::newRow("pngNumber") << kPng << kPng;
        // a line of an earlier version gets every later field's default
        QTest::newRow("pngNumber, short line")
            << "pngNumber_4:0x0001;"
            << "pngNumber_4:0x0001,0x0000,2,0,0,0,0,4,0,short,Left,,,100,pngNumber_4,Disable,0xFFFF,1;";
    }
    void linesReadAndWrittenBack()
    {
        QFETCH(QString, line);
        QFETCH(QString, written);
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), written);
    }

    // What the designer does with a number: drop, rows, an edit.
    void designerFlow()
    {
        EditBuffer w = WidgetLine::createNew(WidgetKind::Number, 5, QRect(10, 20, 80, 30));
        quint32 next = 0x0040;
        QCOMPARE(WriteAddress::assign(w, next), 1); // writeAddr only; parameterAddr stays none
        QCOMPARE(WriteAddress::dropStep(WidgetKind::Number), 4);
        QCOMPARE(WidgetLine::write(w), QString("number_5:0x0040,2,10,20,80,30,32,0,0,0,4,0,short,0,0x000000,,,0xFFFF,"
                                               "number_5,Disable,0xFFFF,1;"));
        const QVector<TableRow> rows = WidgetLine::tableRows(w, 1);
        QCOMPARE(rows.size(), 20);
        QCOMPARE(rows[11], TableRow("对齐方式", "Left")); // the line holds 0

        QStringList cells;
        for (const TableRow &r : rows)
            cells << r.second;
        cells[11] = "Middle";
        cells[14] = "uchar_H8";
        cells[17] = "0x12AB34";
        QVERIFY(WidgetLine::applyEdit(w, cells, QSize(800, 480)));
        QCOMPARE(WidgetLine::write(w), QString("number_5:0x0040,2,10,20,80,30,32,0,0,1,4,0,uchar_H8,0,0x12AB34,,,"
                                               "0xFFFF,number_5,Disable,0xFFFF,1;"));

        // pngNumber: a last picture at or before the first is dropped
        EditBuffer p = WidgetLine::createNew(WidgetKind::PngNumber, 0, QRect(0, 0, 40, 20));
        QStringList pc;
        for (const TableRow &r : WidgetLine::tableRows(p, 0))
            pc << r.second;
        pc[12] = "0010_a.png";
        pc[13] = "0019_b.png";
        QVERIFY(WidgetLine::applyEdit(p, pc, QSize(800, 480)));
        QCOMPARE(p.text("lastIcon"), QString("0019_b.png"));
        pc[13] = "0010_c.png";
        QVERIFY(WidgetLine::applyEdit(p, pc, QSize(800, 480)));
        QCOMPARE(p.text("lastIcon"), QString("0019_b.png"));
    }
};

QTEST_GUILESS_MAIN(TestNumberKinds)
#include "tst_number_kinds.moc"
