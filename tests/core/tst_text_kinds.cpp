// The text kinds label, its static form and textroll: lines, records worked
// out by hand (little-endian), and what they leave in the variable image.

#include "CoreTestSupport.h"
#include "widgets/LineGrammar.h"
#include "widgets/WriteAddress.h"

using namespace core;

namespace {

// writeAddr 0x0100, 20 words, 10,20 100x40, font 1, alignment Right,
// background on in 0x123456, font colour 0xFF8040, text "AB", parameters at
// 0x0200, password on, group 5. The 7 in Constant_Num is not the label's.
const char *const kLabel = "label_3:0x0100,20,10,20,100,40,16,16,1,1,2,1,0x123456,0xFF8040,*Hex:4142,"
                           "0x0200,lab,Enable,0,0,7,0x0005,1;";
// writeAddr 0x0300, 5,6 200x30, 32 words, font 0, green on blue, gap 64,
// interval 300, text "H", no parameter block.
const QString kRoll = "textroll_2:0x0300,5,6,200,30,32,24,24,0,3,0x00FF00,0x0000FF,64,300,%1,%2,*Hex:48,%3,"
                      "0xFFFF,tr,0,1;";

// A build on two fonts: id 0 wide (12 x 24, Unicode), id 1 GBK (24 x 32);
// a 24-bit panel.
struct Build : RecordBuild {
    Build()
    {
        fonts.count = 2;
        fonts.width[0] = 12, fonts.height[0] = 24, fonts.encoding[0] = 3;
        fonts.width[1] = 24, fonts.height[1] = 32, fonts.encoding[1] = 1;
        ctx.fonts = &fonts;
        ctx.colour24 = true;
    }
};

// A label line with the fields these cases change.
QString labelLine(int writeAddr, int words, int font, const QString &text, int parameterAddr = 0xFFFF)
{
    return QString("label_1:%1,%2,0,0,50,20,32,32,%3,0,0,0,0xD3D3D3,0x000000,%4,%5,lab,Disable,0,0,0,0xFFFF,1;")
        .arg(LineGrammar::hex16(quint32(writeAddr))).arg(words).arg(font)
        .arg(LineGrammar::toHexText(text), LineGrammar::hex16(quint32(parameterAddr)));
}

} // namespace

class TestTextKinds : public QObject
{
    Q_OBJECT
private slots:
    void records()
    {
        const struct { QString line; bool vice; const char *bytes; QString errors; } cases[] = {
            // right 10 + 100 - 1 = 109 (6D), bottom 20 + 40 - 1 = 59 (3B); width, height and
            // encoding from the font table (24, 32, 1), not the line's 16, 16; flags 3
            // (background, password); static 0 and no constant
            {kLabel, false, "01 00 0002 1D  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02  563412 4080FF  03  0500  00 0000",
             {}},
            // the Vice form: tail in front, then bytes 0 to 28 with the Vice flag set
            {kLabel, true, "0500  01 01 0002 1D  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02  563412 4080FF  03  00 0000",
             {}},
            // a static text: mark 1 and its constant's number, 12
            {"label_4:0xFFFF,20,0,0,50,20,32,32,1,1,0,0,0xD3D3D3,0x000000,*Hex:E4BDA0,0xFFFF,st,Disable,0,1,12,0xFFFF,1;",
             false, "01 00 FFFF 1D  FFFF 1400  0000 0000 3100 1300  18 20 01 01 00  D3D3D3 000000  00  FFFF  01 0C00",
             {}},
            // right 5 + 200 - 1 = 204 (CC), bottom 35 (23); font 0 is 12 x 24 wide; Middle 1,
            // scrolling, interval 300 keeps its low byte 0x2C, not transparent: 1
            {kRoll.arg("Middle", "Enable", "Disable"), false,
             "09 00 FFFF 1C  0003  0500 0600 CC00 2300  2000  00 0C 18 03  01 01  00FF00 2C FF0000 4000 01", {}},
            // font 2 of two: the message, width and height 0, encoding 5
            {labelLine(0x10, 20, 2, ""), false,
             "01 00 FFFF 1D  1000 1400  0000 0000 3100 1300  00 00 02 05 00  D3D3D3 000000  00  FFFF  00 0000",
             "lab: fontlib id is more than max value\n"}};
        for (const auto &c : cases) {
            Build b;
            QCOMPARE((c.vice ? b.writeVice(c.line) : b.write(c.line)).toHex(' '), hex(c.bytes).toHex(' '));
            QCOMPARE(b.errors, c.errors);
            if (c.vice) // the Vice form stores nothing
                QCOMPARE(b.image.bytes(), QByteArray(65536, '\0'));
        }
        // On a 16-bit panel the colours are RGB565 words and a zero byte:
        // 0x123456 -> (2 << 11) | (13 << 5) | 10 = 0x11AA, 0xFF8040 -> (31 << 11) | (32 << 5) | 8 = 0xFC08
        Build panel16;
        panel16.ctx.colour24 = false;
        QCOMPARE(panel16.write(kLabel).toHex(' '),
                 hex("01 00 0002 1D  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02  AA1100 08FC00  03  0500  00 0000")
                     .toHex(' '));
        // What the plain form leaves: the parameter block is the record from byte 4
        // behind its count (26 or 28); the text lies at writeAddr.
        Build b;
        b.write(kLabel);
        QCOMPARE(b.at(0x400, 28).toHex(' '),
                 hex("1A  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02  563412 4080FF  03  0500  00").toHex(' '));
        QCOMPARE(b.at(0x200, 3), hex("41 42 00")); // "AB" in GBK, the password's real text
        b.write(kRoll.arg("Middle", "Enable", "Disable").replace("0xFFFF,tr", "0x0010,tr"));
        QCOMPARE(b.at(0x20, 29).toHex(' '),
                 hex("1C  0003  0500 0600 CC00 2300  2000  00 0C 18 03  01 01  00FF00 2C FF0000 4000 01").toHex(' '));
        QCOMPARE(b.at(0x600, 3), hex("00 48 00")); // "H" as one unit, high byte first
    }

    // Initial texts and parameter blocks against the end of the space.
    void variableLimits()
    {
        const QString over = "lab: write address is more than Max value\n";
        const struct { QString line; QByteArray stored; QString errors; } cases[] = { // at 2 x writeAddr, nothing else
            // 60 wide characters in 20 words: 40 units of U+5B57, high byte first
            {labelLine(0x10, 20, 0, QString(60, QChar(0x5B57))), hex("5B57").repeated(40) + '\0', {}},
            // 2 x 0x7FFF + 1 byte = 65535 fits, + 2 bytes reaches 65536; a wide unit is 2 bytes
            {labelLine(0x7FFF, 20, 1, "A"), hex("41"), {}},
            {labelLine(0x7FFF, 20, 1, "AB"), {}, over},
            {labelLine(0x7FFF, 20, 0, "A"), {}, over},
            // a parameter block reaching the end, 2 x A + 26 (textroll 28) = 65536
            {labelLine(0x10, 20, 1, "", 0x7FF3), {}, "lab: label parameterAddr + datas are more than Max value\n"},
            {kRoll.arg("Left", "Enable", "Disable").replace("0xFFFF,tr", "0x7FF2,tr").replace("*Hex:48", "*Hex:"), {},
             "tr: Textroll parameterAddr + datas are more than Max value\n"},
            // a static text stores nothing, wherever its addresses point
            {"label_4:0x7FFF,20,0,0,50,20,32,32,1,1,0,0,0xD3D3D3,0x000000,*Hex:41,0x0001,st,Disable,0,1,3,0xFFFF,1;", {}, {}}};
        for (const auto &c : cases) {
            Build b;
            QCOMPARE(b.write(c.line).size(), c.line.startsWith("label") ? 34 : 33); // written all the same
            QCOMPARE(b.errors, c.errors);
            QByteArray want(b.image.limit(), '\0');
            want.replace(2 * int(LineGrammar::readHex(LineGrammar::split(c.line).fields[0])), c.stored.size(), c.stored);
            QCOMPARE(b.image.bytes(), want);
        }
    }

    // write(parse(line)) is the line, or its normal form.
    void lineRoundTrip()
    {
        const QString plain = QString(kLabel).replace(",0,0,7,", ",0,0,0,");
        const QString st = "label_4:0xFFFF,20,0,0,50,20,32,32,1,1,0,0,0xD3D3D3,0x000000,*Hex:612C3B62,0xFFFF,st,"
                           "Disable,0,1,12,0xFFFF,2;";
        const QString roll = kRoll.arg("B-Middle", "Enable", "Disable");
        const QString cases[][2] = {
            {kLabel, plain}, // Constant_Num back to 0
            {st, st}, // the static text keeps its constant
            {roll, roll},
            // an earlier, shorter line: the rest at the defaults, the text the object name
            {"label_1:0x0100,20;", "label_1:0x0100,20,0,0,0,0,32,32,0,0,0,0,0xD3D3D3,0x000000,*Hex:6C6162656C5F31,0xFFFF,"
                                   "label_1,Disable,0,0,0,0xFFFF,1;"}};
        for (const auto &c : cases)
            QCOMPARE(rewritten(c[0]), c[1]);
    }

    // The user's way: drop a label, a static text and a textroll, then edit the label's rows.
    void dropAndEdit()
    {
        quint32 next = 0x10;
        QStringList lines;
        for (const WidgetKind k : {WidgetKind::Label, WidgetKind::Statictext, WidgetKind::TextRoll}) {
            EditBuffer w = WidgetLine::createNew(k, 0, QRect(10, 10, 100, 30));
            quint32 at = next;
            if (const int step = WriteAddress::dropStep(k)) {
                WriteAddress::assign(w, at);
                next += quint32(step);
            }
            lines << WidgetLine::write(w);
        }
        QCOMPARE(next, 0x10u + 20 + 32);
        QVERIFY(lines[0].startsWith("label_0:0x0010,20,10,10,100,30,"));
        QVERIFY(lines[1].startsWith("label_0:0xFFFF,20,")); // the static text takes no address
        QCOMPARE(LineGrammar::split(lines[1]).fields.value(16), QStringLiteral("Statictext_0")); // its own name
        QVERIFY(lines[2].startsWith("textroll_0:0x0024,10,10,100,30,32,"));

        // rows shown in Chinese; a word, a text with separators and a switch typed
        EditBuffer label;
        WidgetLine::parse(lines[0], label);
        QStringList cells = cellsOf(label, 1);
        QCOMPARE(cells.size(), 19); // only the static text has row 19, its constant
        cells[12] = "B-Middle";
        cells[16] = "a,b;c";
        cells[17] = "Enable";
        QVERIFY(WidgetLine::applyEdit(label, cells, QSize(800, 480)));
        const QStringList f = LineGrammar::split(WidgetLine::write(label)).fields;
        QCOMPARE(QStringList({f.value(10), f.value(14), f.value(17)}), QStringList({"7", "*Hex:612C623B63", "Enable"}));
    }
};

QTEST_GUILESS_MAIN(TestTextKinds)
#include "tst_text_kinds.moc"
