// The number kinds: records worked out by hand, defaultNumber and how each
// data type stores it in the variable image, the limits, their lines.

#include "CoreTestSupport.h"
#include "widgets/NumberKinds.h"
#include "widgets/WriteAddress.h"

using namespace core;

namespace {

// Middle of X 100, W 51: 125 (7D). 12.3 with one decimal: 123 (7B).
const char *const kNumber = "number_3:0x1234,2,100,50,51,30,24,1,4,1,2,1,short,2,0xFF8040,mA,12.3,0x0100,speed,Enable,"
                            "0x0005,1;";
// Right: X + W = 130 (82). Icons 12 and 21.
const char *const kPng = "pngNumber_7:0x0200,0x0300,2,40,60,90,20,3,0,ushort,Right,0012_d0.png,0021_d9.png,100,temp,"
                         "Disable,0x0102,1;";

// Two fonts.
struct Build : RecordBuild {
    Build()
    {
        fonts.count = 2;
        ctx.fonts = &fonts;
    }
};

} // namespace

class TestNumberKinds : public QObject
{
    Q_OBJECT
private slots:
    void records()
    {
        const struct { QString line; int rotation; bool vice; const char *bytes; } cases[] = {
            // type 2, Vice 0, parameters 0x0100, 18 + 2; address; anchor 125, 50; FF8040 as
            // RGB565 FC08 and 0; font 1, width 24; Middle 1 with the leading-zero bit; 2 and
            // 1 digits; short 129; U 2, "mA"; tail 5
            {kNumber, 0, false, "02 00 0001 14  3412  7D00 3200  08FC00  01 18 81 02 01 81 02 6D41  0500"},
            // Vice page: flag 1 and tail first, everything else two bytes later
            {kNumber, 0, true, "0500  02 01 0001 14  3412  7D00 3200  08FC00  01 18 81 02 01 81 02 6D41"},
            // type 4, 16 bytes follow; ushort 1; anchor 130, 60; Right 2; icons 12, 21; tail 0x0102
            {kPng, 0, false, "04 00 0002 10  0003  01  8200 3C00  03 00 02  0C00 1500  0201"},
            // 90 degrees on 800 x 480: PW 480, X' = 480 - 60 = 420 (1A4), Y' = 130
            {kPng, 1, false, "04 00 0002 10  0003  01  A401 8200  03 00 02  0C00 1500  0201"},
            // garbage: "zz" has no "x" (0), "-7" keeps its digits, the unknown type is 1;
            // a unit shorter than U is padded with zeros
            {"number_1:zz,2,abc,-7,10,10,8,0,4,2,1,0,word?,3,0xFFFFFF,m,x,0xFFFF,n,Disable,0xFFFF,1;", 0, false,
             "02 00 FFFF 15  0000  0A00 0700  FFFF00  00 08 02 01 00 01 03 6D0000  FFFF"}};
        for (const auto &c : cases) {
            Build b;
            b.ctx.rotation = c.rotation;
            QCOMPARE((c.vice ? b.writeVice(c.line) : b.write(c.line)).toHex(' '), hex(c.bytes).toHex(' '));
            QCOMPARE(b.errors, QString());
        }
    }

    // The variable image after a record: the parameter block (count, then the
    // record from offset 5 without tail) and the initial value.
    void variablesOfARecord()
    {
        Build b;
        b.write(kNumber);
        // U + 16 = 18 (12) at 2 x 0x100
        QCOMPARE(b.at(0x200, 20).toHex(' '),
                 hex("12  3412 7D00 3200 08FC00 01 18 81 02 01 81 02 6D41  00").toHex(' '));
        QCOMPARE(b.at(0x2468, 2), hex("007B"));
        b.write(kPng);
        QCOMPARE(b.at(0x400, 16).toHex(' '), hex("0E  0003 01 8200 3C00 03 00 02 0C00 1500  00").toHex(' '));
        QCOMPARE(b.at(0x600, 2), hex("0064"));
    }

    void defaultValue()
    {
        const struct { const char *text; int decimals; qint64 value; } cases[] = {
            {"12.3", 2, 1230}, {"-1.5", 1, -15}, {".5", 1, 50}, {"3.14159", 2, 314}, {"-.5", 2, -50}, {"", 2, 0}};
        for (const auto &c : cases)
            QCOMPARE(QString("%1/%2 -> %3").arg(c.text).arg(c.decimals).arg(NumberKinds::defaultValue(c.text, c.decimals)),
                     QString("%1/%2 -> %3").arg(c.text).arg(c.decimals).arg(c.value));
    }

    // Each form at word 0x10 (byte 0x20) of an image whose bytes there were AA.
    void storedForms()
    {
        const struct { int dataType; qint64 value; const char *bytes; } cases[] = {
            {129, -15, "FFF1 AAAA AAAA AAAA"}, {130, -15, "FFFF FFF1 AAAA AAAA"}, // short, int: two's complement
            {0, 0x1FF, "AAFF AAAA AAAA AAAA"}, {4, 0x5A, "5AAA AAAA AAAA AAAA"},   // uchar low byte, uchar_H8 high
            {131, 0x0102030405060708, "0102 0304 0506 0708"}, {69, 1, "0001 AAAA AAAA AAAA"}}; // longlong; bit5: a word
        for (const auto &c : cases) {
            VariableImage image;
            QString errors;
            QVERIFY(image.storeValue("n", 0x10, QByteArray(8, '\xAA'), &errors));
            QVERIFY(NumberKinds::storeValue(image, "n", 0x10, c.dataType, c.value, &errors));
            QCOMPARE(image.bytes().mid(0x1F, 10).toHex(' '), (hex("00") + hex(c.bytes) + hex("00")).toHex(' '));
            QCOMPARE(errors, QString());
        }
    }

    // The last byte of each form against the end: 65536, or 49152 in master
    // mode. A refused value leaves the image as it was.
    void valueAtTheEnd()
    {
        const struct { bool master; int dataType, writeAddr; bool stored; } cases[] = {
            {false, 131, 0x7FFC, true}, {false, 131, 0x7FFD, false}, // longlong to 65535, to 65537
            {false, 1, 0xFFFF, false}, {true, 129, 0x6000, false}};  // no address; master: short to 49153
        for (const auto &c : cases) {
            VariableImage image(c.master);
            QString errors;
            QCOMPARE(NumberKinds::storeValue(image, "speed", quint16(c.writeAddr), c.dataType, -1, &errors), c.stored);
            QCOMPARE(errors, c.stored ? QString() : QString("speed: write address is more than Max value\n"));
            QCOMPARE(image.bytes().count('\xFF') > 0, c.stored);
        }
    }

    void complaints()
    {
        const QString number = "number_1:0x0010,2,0,0,10,10,24,%1,4,0,2,0,short,2,0x000000,mA,1,%2,speed,Disable,0xFFFF,1;";
        const QString png = "pngNumber_1:%1,0x0010,2,0,0,10,10,3,0,short,Left,,,1,temp,Disable,0xFFFF,1;";
        const QString cases[][2] = {
            // 2 + 2 x 32758 + 16 = 65534 fits; with 32759 it reaches 65536
            {number.arg(1).arg("0x7FF6"), ""},
            {number.arg(1).arg("0x7FF7"), "speed: number parameterAddr + datas are more than Max value\n"},
            // 2 x 32761 + 14 = 65536
            {png.arg("0x7FF9"), "temp: PngNumber parameterAddr + datas are more than Max value\n"},
            {number.arg(2).arg("0xFFFF"), "speed: fontlib id is more than max value\n"}}; // ids 0 and 1
        for (const auto &c : cases) {
            Build b;
            QVERIFY(!b.write(c[0]).isEmpty());
            QCOMPARE(b.errors, c[1]);
        }
    }

    void linesAndTheDesigner()
    {
        // a line of an earlier version gets every later field's default
        const QString cases[][2] = {{kNumber, kNumber}, {kPng, kPng},
            {"pngNumber_4:0x0001;", "pngNumber_4:0x0001,0x0000,2,0,0,0,0,4,0,short,Left,,,100,pngNumber_4,Disable,0xFFFF,1;"}};
        for (const auto &c : cases)
            QCOMPARE(rewritten(c[0]), c[1]);
        // What the designer does with a number: drop, rows, an edit.
        EditBuffer w = WidgetLine::createNew(WidgetKind::Number, 5, QRect(10, 20, 80, 30));
        quint32 next = 0x0040;
        QCOMPARE(WriteAddress::assign(w, next), 1); // writeAddr only; parameterAddr stays none
        QCOMPARE(WriteAddress::dropStep(WidgetKind::Number), 4);
        QCOMPARE(WidgetLine::write(w), QString("number_5:0x0040,2,10,20,80,30,32,0,0,0,4,0,short,0,0x000000,,,0xFFFF,"
                                               "number_5,Disable,0xFFFF,1;"));
        QStringList cells = cellsOf(w, 1);
        QCOMPARE(WidgetLine::tableRows(w, 1).value(11), TableRow("对齐方式", "Left")); // the line holds 0
        cells[11] = "Middle";
        cells[14] = "uchar_H8";
        cells[17] = "0x12AB34";
        QVERIFY(WidgetLine::applyEdit(w, cells, QSize(800, 480)));
        QCOMPARE(WidgetLine::write(w), QString("number_5:0x0040,2,10,20,80,30,32,0,0,1,4,0,uchar_H8,0,0x12AB34,,,"
                                               "0xFFFF,number_5,Disable,0xFFFF,1;"));

        // pngNumber: a last picture at or before the first (the second edit) is dropped
        EditBuffer p = WidgetLine::createNew(WidgetKind::PngNumber, 0, QRect(0, 0, 40, 20));
        QStringList pc = cellsOf(p, 0);
        pc[12] = "0010_a.png";
        for (const char *last : {"0019_b.png", "0010_c.png"}) {
            pc[13] = last;
            QVERIFY(WidgetLine::applyEdit(p, pc, QSize(800, 480)));
            QCOMPARE(p.text("lastIcon"), QString("0019_b.png"));
        }
    }
};

QTEST_GUILESS_MAIN(TestNumberKinds)
#include "tst_number_kinds.moc"
