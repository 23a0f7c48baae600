// The variable kinds varAdj, batVar, autoVar and encoder: records worked out
// by hand, lines read and written back, the old word comboButton, and the
// action list's own field order.

#include "CoreTestSupport.h"
#include "project/PageFile.h"
#include "project/TextFiles.h"
#include "widgets/VariableKinds.h"

using namespace core;

namespace {

// The record of a line on an 800 x 480 page (PW 480 at 90 degrees).
QByteArray record(const QString &line, int rotation = 0) { return RecordBuild(false, rotation).write(line); }

QString nulls(int n) { return QStringLiteral("NULL,").repeated(n).chopped(1); }
QString pairs(int n) { return QStringLiteral("0xFFFF,0xFFFF,").repeated(n).chopped(1); }

const char *const kVarAdj = "varAdj_0:10,20,30,40,0x1000,2,5,200,ushort,-,Stop,Repeat,0003_a.png,,va,Enable,Disable,0x0000,1;";
const char *const kBatVar = "batVar_2:0,0,100,50,,0001_p.png,Page0004,0x2000,0x0011;";
const char *const kAutoVar =
    "autoVar_0:0x0100,5,6,7,8,0x0200,300,0,1,2,3,4,0x0300,uchar,-5,1000,-,Enable,0x0400,0x0007;";

// Mode 4: single click to page 1 with report, pairs 1 and 8; double click
// in 8 x 50 ms, nothing else; long press after 30 x 50 ms to page 3 with
// report and pair 1.
QString mode4Entry()
{
    return QStringLiteral("4,Page0001,Enable,0x0100,0x0001,") + pairs(6) + QStringLiteral(",0x0108,0x0008,")
           + QStringLiteral(",8,Disable,") + pairs(8) + QStringLiteral(",Page0003,30,Enable,0x0300,0x0030,")
           + pairs(7) + QLatin1Char(';');
}

} // namespace

class TestVariableKinds : public QObject
{
    Q_OBJECT

private slots:
    void touchRecords_data()
    {
        addColumns<QString, int, bool, QByteArray>("line", "rotation", "vice", "expected");

        // varAdj: report on; X 10 Y 20 W 30 H 40; ushort 1, "-" 1, Stop 0,
        // step 2, max 200 before min 5, icon 3, no pressed icon, Repeat 1.
        const QByteArray varTail = hex("0010 01 01 00 0200 c800 0500 0300 ffff 01");
        QTest::newRow("varAdj") << kVarAdj << 0 << false << hex("03 c0 18 0a00 1400 2700 3b00") + varTail;
        // rotation 1: X' = 480 - 20 - 40 = 420 (0x1A4), Y' = 10, W' 40, H' 30
        QTest::newRow("varAdj rotated") << kVarAdj << 1 << false << hex("03 c0 18 a401 0a00 cb01 2700") + varTail;
        // a Vice page turns with the Vice picture (400 x 300: PW 300, X' 240)
        QTest::newRow("varAdj vice") << kVarAdj << 1 << true << hex("03 c1 18 f000 0a00 1701 2700") + varTail;
        // host control: 0xFFFF and the trigger value in place of X' and Y'
        QTest::newRow("varAdj host control")
            << QString(kVarAdj).replace("Disable,0x0000", "Enable,0x0031") << 0 << false
            << hex("03 c0 18 ffff 3100 2700 3b00") + varTail;

        // batVar: only the first pair set; the seven others stay 0xFFFF.
        const QByteArray batTail = hex("ffff 0100 0400 0020 1100") + ff(28) + hex("ffff");
        QTest::newRow("batVar") << kBatVar << 0 << false << hex("0b 80 30 0000 0000 6300 3100") + batTail;
        // rotation 1: X' = 480 - 0 - 50 = 430 (0x1AE), Y' 0, right 479, bottom 99
        QTest::newRow("batVar rotated") << kBatVar << 1 << false << hex("0b 80 30 ae01 0000 df01 6300") + batTail;
    }

    void touchRecords()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(QByteArray, expected);
        RecordBuild b(false, rotation);
        b.ctx.viceFlag = vice;
        QCOMPARE(b.write(line).toHex(' '), expected.toHex(' '));
    }

    void autoVarRecordAndVariables()
    {
        // no rectangle in this record: the rotation changes nothing
        const QByteArray expected =
            hex("1a 00 0001 41 0003 00 0002 0000 0100 0200 fffffffffffffffb 00000000000003e8 0300 0400 0004 0700")
            + ff(28) + hex("01 01");
        for (int rotation : {0, 1}) {
            RecordBuild b(false, rotation);
            const QByteArray r = b.write(kAutoVar);
            QCOMPARE(r.toHex(' '), expected.toHex(' '));
            // the parameter block at 2 x 0x100: count 65 and the 65 bytes after it
            QCOMPARE(b.at(0x200, 66), r.mid(4, 66));
            // presetAddr_value 300 at 0x200, high byte first
            QCOMPARE(b.at(0x400, 2), hex("012c"));
            QVERIFY(b.errors.isEmpty());
        }

        // 2 x 0x7FE0 + 65 reaches 65536: refused with the message
        RecordBuild b;
        b.write(QString(kAutoVar).replace("0x0100", "0x7FE0"));
        QVERIFY2(b.errors.contains("parameterAddr + datas are more than Max value"), qPrintable(b.errors));
        QCOMPARE(b.image.bytes().at(0xFFC0), char(0));
    }

    void encoderModes_data()
    {
        addColumns<QString, QByteArray>("entry", "block");

        QTest::newRow("no action") << "NULL" << QByteArray();
        QTest::newRow("mode 1") << "1,Enable,Page0002,0x0100,0x0001;"
                                << hex("81 22 0200 0001 0100") + ff(28);
        // max 50 before min 5, step 2, "+" 1, loop off 0
        QTest::newRow("mode 2") << "2,Enable,0x1234,5,50,2,+,Disable;" << hex("82 0a 3412 3200 0500 0200 01 00");
        QTest::newRow("mode 3") << "3,Disable,0x0010,0,10,1;" << hex("03 08 1000 0a00 0000 0100");
        // report bits 7 (single) and 5 (long press): 0xA4; 104 bytes follow
        QTest::newRow("mode 4") << mode4Entry()
                                << hex("a4 68 0100 0001 0100") + ff(24) + hex("0801 0800") + hex("08 ffff") + ff(32)
                                       + hex("1e 0300 0003 3000") + ff(28);
    }

    void encoderModes()
    {
        QFETCH(QString, entry);
        QFETCH(QByteArray, block);
        const QByteArray header = hex("0e 00 ffff 1800 0005");
        const QString line = "encoder_0:0x0500,1,2,3,4,enc," + entry + "," + nulls(15) + ",1;";
        for (int rotation : {0, 1})
            QCOMPARE(record(line, rotation).toHex(' '), (header + block).toHex(' '));
        if (!block.isEmpty())
            QCOMPARE(block.size(), 2 + int(quint8(block.at(1))));
    }

    void stepSignWords_data()
    {
        // varAdjByte at offset 14 (autoVar's at 68 the same); encoderByte in mode 2, 1 for "+"
        addColumns<QString, int, int>("word", "varAdjByte", "encoderByte");
        QTest::newRow("+") << "+" << 0 << 1;
        QTest::newRow("-") << "-" << 1 << 0;
        QTest::newRow("other") << "up" << 1 << 0;
    }

    void stepSignWords()
    {
        QFETCH(QString, word);
        QFETCH(int, varAdjByte);
        const QByteArray v = record(QString(kVarAdj).replace(",-,", "," + word + ","));
        QCOMPARE(int(quint8(v.at(14))), varAdjByte);
        const QByteArray a = record(QString(kAutoVar).replace(",-,", "," + word + ","));
        QCOMPARE(int(quint8(a.at(68))), varAdjByte);
        const QByteArray e = record("encoder_0:0x0500,1,2,3,4,enc,2,Enable,0x1234,5,50,2," + word + ",Disable;,NULL,1;");
        QTEST(int(quint8(e.at(8 + 10))), "encoderByte");
    }

    void linesRoundTrip_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("varAdj") << kVarAdj;
        QTest::newRow("batVar") << "batVar_1:1,2,3,4,0001_a.png,0002_b.png,Page0003,0x0100,0x0001," + pairs(7)
                                       + ",b,Enable,Enable,0x0020,0x0003,2;";
        QTest::newRow("autoVar") << "autoVar_3:0xFFFF,1,2,3,4,0x0010,7,0,1,2,1,10,0xFFFF,short,-9000000000,"
                                    "9000000000,+,Disable," + pairs(8) + ",auto,1;";
        QTest::newRow("encoder") << "encoder_7:0x0020,1,2,3,4,e,3,Disable,0x0010,0,10,1;," + nulls(14) + ","
                                        + mode4Entry() + ",2;";
    }

    void linesRoundTrip()
    {
        QFETCH(QString, line);
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), line);
        // an edit through the table's rows changes nothing that wasn't typed
        QVERIFY(WidgetLine::applyEdit(b, cellsOf(b), QSize(800, 480)));
        QCOMPARE(WidgetLine::write(b), line);
    }

    void encoderLineForms()
    {
        // entries written without "," after their ";", and fewer than sixteen:
        // read alike, written back padded with NULL
        const QString written = "encoder_0:0x0001,1,2,3,4,e,3,Disable,0x0010,0,10,1;,NULL,2,Enable,0x0020,0,9,1,-,Loop;,"
                                + nulls(13) + ",2;";
        for (const QString &line : {QString("encoder_0:0x0001,1,2,3,4,e,3,Disable,0x0010,0,10,1;NULL,"
                                            "2,Enable,0x0020,0,9,1,-,Loop;2;"),
                                    written}) {
            EditBuffer b;
            WidgetLine::parse(line, b);
            QCOMPARE(b.text("item3"), QString("2,Enable,0x0020,0,9,1,-,Loop;"));
            QCOMPARE(b.lockState(), qint16(2));
            QCOMPARE(WidgetLine::write(b), written);
        }
        // a line of an earlier version that ends at its name
        EditBuffer old;
        WidgetLine::parse("encoder_2:0x0001,1,2,3,4,e;", old);
        QCOMPARE(WidgetLine::write(old), "encoder_2:0x0001,1,2,3,4,e," + nulls(16) + ",1;");
    }

    void comboButtonIsReadAsBatVar()
    {
        const QString expected = "batVar_3:10,20,30,40,0001_a.png,0002_b.png,Page0001,0x0100,0x0005," + pairs(7)
                                 + ",batVar_3,Disable,Disable,0x0000,0xFFFF,1;";
        const QString old = "comboButton_3:10,20,30,40,0001_a.png,0002_b.png,Page0001,0x0100,0x0005;";
        QCOMPARE(VariableKinds::upgradeOldLine(old), expected);

        // as a page file is read
        QTemporaryDir dir;
        const QString path = dir.path() + "/Page0000.cfg";
        QVERIFY(TextFiles::writeAtomically(path, TextFiles::encodePlain({"Page:x;", old, kVarAdj})));
        const PageFile::Read read = PageFile::read(path, 0);
        QCOMPARE(read.lines, QStringList({"Page:x;", expected, kVarAdj}));
    }

    void dialogOrder()
    {
        using namespace VariableKinds;
        // modes 2 and 3: the dialog keeps the report switch last
        QCOMPARE(toDialogEntry("2,Enable,0x1234,5,50,2,+,Disable;"), QString("2,0x1234,5,50,2,+,Disable,Enable;"));
        QCOMPARE(fromDialogEntry("3,0x0010,0,10,1,Enable;", "NULL"), QString("3,Enable,0x0010,0,10,1;"));
        // mode 4: the dialog shows each group's first pair; the others are kept
        QCOMPARE(toDialogEntry(mode4Entry()),
                 QString("4,Page0001,Enable,0x0100,0x0001,,8,Disable,0xFFFF,0xFFFF,Page0003,30,Enable,0x0300,0x0030;"));
        const QString edited = fromDialogEntry(
            "4,Page0002,Enable,0x0100,0x0001,,8,Disable,0xFFFF,0xFFFF,Page0003,30,Enable,0x0300,0x0030;", mode4Entry());
        QCOMPARE(edited, QString(mode4Entry()).replace("Page0001", "Page0002"));
        // a mode 4 entry made in the dialog from nothing has eight pairs a group
        QCOMPARE(fromDialogEntry(
                     "4,,Disable,0xFFFF,0xFFFF,,10,Disable,0xFFFF,0xFFFF,,20,Disable,0xFFFF,0xFFFF;", "NULL"),
                 defaultEntry(4));
        QCOMPARE(defaultEntry(4).count(','), 56);
    }
};

QTEST_GUILESS_MAIN(TestVariableKinds)
#include "tst_variable_kinds.moc"
