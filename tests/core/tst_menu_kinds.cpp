// The menu kinds: records worked out by hand (unrotated, at 90 degrees, on
// a Vice page, from a damaged line), the direction byte of every word in
// both rotation groups, slmenu's first value and its limit, lines read and
// written back.

#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetLine.h"

#include <QtTest>

using namespace vantile;

namespace {

QByteArray hex(const char *spaced) { return QByteArray::fromHex(spaced); } // blanks are skipped

// writeAddr 0x0120; 100,50 200 x 40; L1 10, L2 20; Vertical; icons 5, 6; 1 to 9, first 3, step 2.
const char *const kSlMenu = "slmenu_3:menu,0x0120,100,50,200,40,10,20,Vertical,0005_fg.png,0006_bg.png,1,9,3,2,"
                            "Enable,1;";
// 20,30 300 x 100; writeAddr 0x0200; shows page 1 (600 x 200); background 4; stop; frames
// from the page's picture; icons 8, 9; gaps 5 (V) and 6 (H).
const char *const kPro = "slidemenuPro_0:carousel,20,30,300,100,0x0200,7,Page0001,0004_bg.png,Horizontal-Loop,"
                         "Enable,0,0,0008_s.png,0009_e.png,5,6,Disable,1;";

QString withField(const QString &line, int pos, const QString &text)
{
    QStringList fields = line.section(':', 1).chopped(1).split(',');
    fields[pos] = text;
    return line.section(':', 0, 0) + ':' + fields.join(',') + ';';
}

// Page pictures 800 x 480, the Vice page's 400 x 300.
QByteArray write(const QString &line, int rotation, bool vice = false, VariableImage *image = nullptr,
                 QString *errors = nullptr)
{
    RecordContext ctx;
    ctx.pagePicture = ctx.panel = QSize(800, 480);
    ctx.vicePicture = QSize(400, 300);
    ctx.pagePictureSize = [](int page) { return page == 1 ? QSize(600, 200) : QSize(); };
    ctx.rotation = rotation;
    ctx.viceFlag = vice;
    ctx.variables = image;
    ctx.errorText = errors;
    QByteArray out;
    return KindRegistry::writeRecord(out, line, ctx) == out.size() ? out : QByteArray("<count>");
}

} // namespace

class TestMenuKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<bool>("vice");
        QTest::addColumn<QByteArray>("bytes");
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
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<int>("slMenuByte");
        QTest::addColumn<int>("proByte");
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
        QFETCH(int, slMenuByte);
        QFETCH(int, proByte);
        QCOMPARE(int(quint8(write(withField(kSlMenu, 8, word), rotation).at(17))), slMenuByte);
        QCOMPARE(int(quint8(write(withField(kPro, 9, word), rotation).at(16))), proByte);
    }

    // slmenu's first value 772 (0x0304) at its address, high byte first, while 2A + 1 is
    // inside: 0x7FFF gives 65535 (fits), 0x8000 65537 (refused); slidemenuPro stores nothing.
    void firstValueAndLines()
    {
        for (const char *address : {"0x7FFF", "0x8000"}) {
            VariableImage image;
            QString errors;
            write(withField(withField(kSlMenu, 1, address), 13, "772"), 0, false, &image, &errors);
            write(kPro, 0, false, &image, &errors);
            const bool fits = address == QLatin1String("0x7FFF");
            QByteArray expected(65536, '\0');
            if (fits)
                expected.replace(0xFFFE, 2, "\x03\x04");
            QVERIFY(image.bytes() == expected);
            QCOMPARE(errors, fits ? QString() : QString("menu: write address is more than Max value\n"));
        }
        for (const char *line : {kSlMenu, kPro}) {
            EditBuffer b;
            QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
            QCOMPARE(WidgetLine::write(b), QString(line));
        }
        QCOMPARE(WidgetKinds::loadIndexError(WidgetKind::SlideMenuPro, 1), QString("Error edit index:1"));
    }
};

QTEST_GUILESS_MAIN(TestMenuKinds)
#include "tst_menu_kinds.moc"
