// The text kinds: label, its static form and textroll. Their lines, their
// records (bytes worked out by hand, little-endian), and what they leave in
// the variable image: parameter blocks, initial texts and the limit messages.

#include "widgets/KindRegistry.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
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

// writeAddr 0x0100, 20 words, 10,20 100x40, font 1, alignment Right,
// background on in 0x123456, font colour 0xFF8040, text "AB", parameters at
// 0x0200, password on, group 5. The 7 in Constant_Num is not the label's.
const char *const kLabel = "label_3:0x0100,20,10,20,100,40,16,16,1,1,2,1,0x123456,0xFF8040,*Hex:4142,"
                           "0x0200,lab,Enable,0,0,7,0x0005,1;";
// writeAddr 0x0300, 5,6 200x30, 32 words, font 0, green on blue, gap 64,
// interval 300, text "H", no parameter block.
const QString kRoll = "textroll_2:0x0300,5,6,200,30,32,24,24,0,3,0x00FF00,0x0000FF,64,300,%1,%2,*Hex:48,%3,"
                      "0xFFFF,tr,0,1;";

// Two fonts: id 0 wide (12 x 24, Unicode), id 1 GBK (24 x 32).
FontTable twoFonts()
{
    FontTable t;
    t.count = 2;
    t.width[0] = 12, t.height[0] = 24, t.encoding[0] = 3;
    t.width[1] = 24, t.height[1] = 32, t.encoding[1] = 1;
    return t;
}

struct Build {
    FontTable fonts = twoFonts();
    VariableImage image;
    QString errors;
    RecordContext ctx;
    explicit Build(bool master = false) : image(master)
    {
        ctx.pagePicture = ctx.vicePicture = ctx.panel = QSize(800, 480);
        ctx.fonts = &fonts;
        ctx.variables = &image;
        ctx.errorText = &errors;
    }
    QByteArray record(const QString &line, bool vice = false)
    {
        QByteArray out("\xAA", 1); // something already in the stream
        const int n = vice ? KindRegistry::writeViceRecord(out, line, ctx) : KindRegistry::writeRecord(out, line, ctx);
        return n == out.size() - 1 ? out.mid(1) : QByteArray("<count differs from bytes written>");
    }
    QByteArray at(int byte, int n) const { return image.bytes().mid(byte, n); }
};

// A label line with the fields these cases change.
QString labelLine(int writeAddr, int words, int font, const QString &text, int parameterAddr = 0xFFFF)
{
    return QStringLiteral("label_1:%1,%2,0,0,50,20,32,32,%3,0,0,0,0xD3D3D3,0x000000,%4,%5,lab,Disable,0,0,0,0xFFFF,1;")
        .arg(LineGrammar::hex16(quint32(writeAddr)))
        .arg(words)
        .arg(font)
        .arg(LineGrammar::toHexText(text), LineGrammar::hex16(quint32(parameterAddr)));
}

} // namespace

class TestTextKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("colour24");
        QTest::addColumn<bool>("vice");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("errors");
        // right 10 + 100 - 1 = 109 (6D), bottom 20 + 40 - 1 = 59 (3B); width,
        // height and encoding from the font table (24, 32, 1), not the line's
        // 16, 16; flags 3 (background, password); static 0 and no constant.
        QTest::newRow("label, 24-bit") << QString(kLabel) << true << false
                                       << hex("01 00 0002 1D  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02"
                                              "  563412 4080FF  03  0500  00 0000") << QString();
        // 0x123456 is 565 word 0x11AA, 0xFF8040 is 0xFC08, each with a zero byte
        QTest::newRow("label, 16-bit") << QString(kLabel) << false << false
                                       << hex("01 00 0002 1D  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02"
                                              "  AA1100 08FC00  03  0500  00 0000") << QString();
        // the Vice form: tail in front, then bytes 0 to 28 with the Vice flag set
        QTest::newRow("label, Vice") << QString(kLabel) << true << true
                                     << hex("0500  01 01 0002 1D  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02"
                                            "  563412 4080FF  03  00 0000") << QString();
        // a static text: mark 1 and its constant's number, 12
        QTest::newRow("Statictext")
            << "label_4:0xFFFF,20,0,0,50,20,32,32,1,1,0,0,0xD3D3D3,0x000000,*Hex:E4BDA0,0xFFFF,st,Disable,0,1,12,0xFFFF,1;"
            << true << false
            << hex("01 00 FFFF 1D  FFFF 1400  0000 0000 3100 1300  18 20 01 01 00  D3D3D3 000000  00  FFFF  01 0C00") << QString();
        // right 5 + 200 - 1 = 204 (CC), bottom 35 (23); font 0 is 12 x 24
        // wide; Middle 1, scrolling, interval 300 keeps its low byte 0x2C,
        // not transparent: 1
        QTest::newRow("textroll, 24-bit") << kRoll.arg("Middle", "Enable", "Disable") << true << false
                                          << hex("09 00 FFFF 1C  0003  0500 0600 CC00 2300  2000  00 0C 18 03  01 01"
                                                 "  00FF00 2C FF0000 4000 01") << QString();
        // T-Right places like Left (0); green is 565 0x07E0, blue 0x001F
        QTest::newRow("textroll, 16-bit") << kRoll.arg("T-Right", "Disable", "Enable") << false << false
                                          << hex("09 00 FFFF 1C  0003  0500 0600 CC00 2300  2000  00 0C 18 03  00 00"
                                                 "  E00700 2C 1F0000 4000 00") << QString();
        // font 2 of two: the message, width and height 0, encoding 5
        QTest::newRow("font beyond the table")
            << labelLine(0x10, 20, 2, "") << true << false
            << hex("01 00 FFFF 1D  1000 1400  0000 0000 3100 1300  00 00 02 05 00  D3D3D3 000000  00  FFFF  00 0000")
            << "lab: fontlib id is more than max value\n";
    }
    void records()
    {
        QFETCH(QString, line);
        QFETCH(bool, colour24);
        QFETCH(bool, vice);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, errors);
        Build b;
        b.ctx.colour24 = colour24;
        b.ctx.viceFlag = vice;
        QCOMPARE(b.record(line, vice).toHex(' '), bytes.toHex(' '));
        QCOMPARE(b.errors, errors);
    }

    // What a record leaves in the variable image: the parameter block (26 or
    // 28 and the record after byte 4) and the text at writeAddr.
    void variableImageOfRecords()
    {
        Build b;
        b.ctx.colour24 = true;
        b.record(kLabel);
        QCOMPARE(b.at(0x400, 28).toHex(' '), hex("1A  0001 1400  0A00 1400 6D00 3B00  18 20 01 01 02  563412 4080FF"
                                                 "  03  0500  00").toHex(' '));
        QCOMPARE(b.at(0x200, 3), hex("41 42 00")); // "AB" in GBK, the password's real text
        Build r;
        r.ctx.colour24 = true;
        r.record(kRoll.arg("Middle", "Enable", "Disable").replace("0xFFFF,tr", "0x0010,tr"));
        QCOMPARE(r.at(0x20, 29).toHex(' '), hex("1C  0003  0500 0600 CC00 2300  2000  00 0C 18 03  01 01"
                                                "  00FF00 2C FF0000 4000 01").toHex(' '));
        QCOMPARE(r.at(0x600, 3), hex("00 48 00")); // "H" as one unit, high byte first

        Build none; // no font table at all
        none.ctx.fonts = nullptr;
        QCOMPARE(none.record(labelLine(0x10, 20, 0, "")).mid(17, 4), hex("00 00 00 05"));
        QCOMPARE(none.errors, QString("lab: fontlib id is more than max value\n"));

        // a static text stores nothing, wherever its addresses point; nor does
        // the Vice form, written after the plain one
        const QString st = "label_4:0x7FFF,20,0,0,50,20,32,32,1,1,0,0,0xD3D3D3,0x000000,*Hex:41,0x0001,st,Disable,0,1,3,"
                           "0xFFFF,1;";
        for (const auto &[line, vice] : {std::pair<QString, bool>{st, false}, {labelLine(0x7FFF, 20, 9, "AB"), true}}) {
            Build n;
            n.record(line, vice);
            QCOMPARE(n.image.bytes(), QByteArray(65536, '\0'));
            QCOMPARE(n.errors, QString());
        }
    }

    // Initial texts and parameter blocks against the limit of the space.
    void variableLimits_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("master");
        QTest::addColumn<QByteArray>("stored"); // at 2 x writeAddr; empty: nothing stored
        QTest::addColumn<QString>("errors");
        const QString over = "lab: write address is more than Max value\n";
        QByteArray forty;
        for (int i = 0; i < 40; ++i)
            forty += hex("5B57"); // U+5B57, high byte first
        QTest::newRow("wide, 60 characters in 20 words: 40 units")
            << labelLine(0x10, 20, 0, QString(60, QChar(0x5B57))) << false << forty + '\0' << QString();
        QTest::newRow("GBK") << labelLine(0x10, 20, 1, QString::fromUtf8("中文A")) << false << hex("D6D0 CEC4 41 00")
                             << QString();
        QTest::newRow("font beyond the table: GBK") << labelLine(0x10, 20, 2, QString::fromUtf8("中")) << false
                                                   << hex("D6D0 00") << "lab: fontlib id is more than max value\n";
        QTest::newRow("GBK, cut to 2 x wordLength") << labelLine(0x10, 1, 1, QString::fromUtf8("中文")) << false
                                                    << hex("D6D0 00") << QString();
        // 2 x 0x7FFF + 1 byte = 65535 fits, + 2 bytes reaches 65536
        QTest::newRow("last byte of the space") << labelLine(0x7FFF, 20, 1, "A") << false << hex("41") << QString();
        QTest::newRow("past the space") << labelLine(0x7FFF, 20, 1, "AB") << false << QByteArray() << over;
        // (0x7FFF + 1 unit) x 2 = 65536
        QTest::newRow("wide, past the space") << labelLine(0x7FFF, 20, 0, "A") << false << QByteArray() << over;
        // master mode: 49152 bytes, 2 x 0x5FFF + 2 reaches them
        QTest::newRow("master, past") << labelLine(0x5FFF, 20, 1, "AB") << true << QByteArray() << over;
        QTest::newRow("textroll, past: its own message")
            << kRoll.arg("Left", "Enable", "Disable").replace("0x0300", "0x7FFF") << false << QByteArray()
            << "tr:  more than Max value\n";
        // a parameter block reaching the end, 2 x A + 26 (textroll 28) = 65536
        QTest::newRow("label's parameters past the space") << labelLine(0x10, 20, 1, "", 0x7FF3) << false
                                                           << QByteArray()
                                                           << "lab: label parameterAddr + datas are more than Max value\n";
        QTest::newRow("textroll's parameters past the space")
            << kRoll.arg("Left", "Enable", "Disable").replace("0xFFFF,tr", "0x7FF2,tr").replace("*Hex:48", "*Hex:")
            << false << QByteArray() << "tr: Textroll parameterAddr + datas are more than Max value\n";
    }
    void variableLimits()
    {
        QFETCH(QString, line);
        QFETCH(bool, master);
        QFETCH(QByteArray, stored);
        QFETCH(QString, errors);
        Build b(master);
        QCOMPARE(b.record(line).size(), line.startsWith("label") ? 34 : 33); // written all the same
        QCOMPARE(b.errors, errors);
        if (stored.isEmpty()) {
            QCOMPARE(b.image.bytes(), QByteArray(b.image.limit(), '\0'));
        } else {
            const int at = 2 * int(LineGrammar::readHex(LineGrammar::split(line).fields[0]));
            QCOMPARE(b.at(at, stored.size()).toHex(' '), stored.toHex(' '));
        }
    }

    // write(parse(line)) is the line, or its normal form.
    void lineRoundTrip_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("written");
        QTest::addColumn<int>("kind");
        const QString label = kLabel;
        const QString plain = QString(kLabel).replace(",0,0,7,", ",0,0,0,");
        QTest::newRow("label") << plain << plain << int(WidgetKind::Label);
        QTest::newRow("label, Constant_Num back to 0") << label << plain << int(WidgetKind::Label);
        QTest::newRow("label, a mark other than 1 is 0") << QString(plain).replace(",0,0,0,", ",0,2,0,") << plain
                                                         << int(WidgetKind::Label);
        QTest::newRow("label, password as a digit") << QString(plain).replace("Enable", "1") << plain
                                                    << int(WidgetKind::Label);
        const QString st = "label_4:0xFFFF,20,0,0,50,20,32,32,1,1,0,0,0xD3D3D3,0x000000,*Hex:612C3B62,0xFFFF,st,"
                           "Disable,0,1,12,0xFFFF,2;";
        QTest::newRow("Statictext keeps its constant") << st << st << int(WidgetKind::Statictext);
        const QString roll = kRoll.arg("B-Middle", "Enable", "Disable");
        QTest::newRow("textroll") << roll << roll << int(WidgetKind::TextRoll);
        // an earlier, shorter line: the rest at the defaults, the text the object name
        QTest::newRow("label, short") << "label_1:0x0100,20;"
                                      << "label_1:0x0100,20,0,0,0,0,32,32,0,0,0,0,0xD3D3D3,0x000000,"
                                         "*Hex:6C6162656C5F31,0xFFFF,label_1,Disable,0,0,0,0xFFFF,1;"
                                      << int(WidgetKind::Label);
        QTest::newRow("textroll, short") << "textroll_0:0x0001;"
                                         << "textroll_0:0x0001,0,0,0,0,32,24,24,0,0,0x000000,0x0000FF,64,50,Left,"
                                            "Enable,*Hex:74657874726F6C6C5F30,Disable,0xFFFF,textroll_0,0,1;"
                                         << int(WidgetKind::TextRoll);
    }
    void lineRoundTrip()
    {
        QFETCH(QString, line);
        QFETCH(QString, written);
        QFETCH(int, kind);
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
        QCOMPARE(int(b.kind()), kind);
        QCOMPARE(WidgetLine::write(b), written);
    }

    // The user's way: drop a label, a static text and a textroll, then edit
    // the label's rows.
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
        QCOMPARE(WidgetKinds::kindOfLine(lines[1]), WidgetKind::Statictext);
        QVERIFY(lines[2].startsWith("textroll_0:0x0024,10,10,100,30,32,"));

        // rows shown in Chinese; a word, a text with separators and a switch typed
        EditBuffer label;
        WidgetLine::parse(lines[0], label);
        QStringList cells;
        for (const TableRow &r : WidgetLine::tableRows(label, 1))
            cells << r.second;
        QCOMPARE(cells.size(), 19); // only the static text has row 19, its constant
        cells[12] = "B-Middle";
        cells[16] = "a,b;c";
        cells[17] = "Enable";
        QVERIFY(WidgetLine::applyEdit(label, cells, QSize(800, 480)));
        const QStringList f = LineGrammar::split(WidgetLine::write(label)).fields;
        QCOMPARE(QStringList({f.value(10), f.value(14), f.value(17)}),
                 QStringList({"7", "*Hex:612C623B63", "Enable"}));
    }
};

QTEST_GUILESS_MAIN(TestTextKinds)
#include "tst_text_kinds.moc"
