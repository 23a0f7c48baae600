// The widget line: lenient field readers, the "*Hex:" form, and what the
// button kinds' field descriptions do (parse, write, create, rows, edit, store).

#include "CoreTestSupport.h"
#include "widgets/LineGrammar.h"

using namespace core;

namespace {

const QString kButtonExample =
    "button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0,Disable,Disable,0x0000,0xFFFF,1;";
const QSize kPage(800, 480);

EditBuffer parsed(const QString &line)
{
    EditBuffer b;
    WidgetLine::parse(line, b);
    return b;
}

} // namespace

class TestWidgetGrammar : public QObject
{
    Q_OBJECT
private slots:
    void readers()
    {
        using namespace LineGrammar;
        // hexadecimal: the digits behind the first x, others skipped, at most eight
        QCOMPARE(readHex("0XfffF"), 0xFFFFu);
        QCOMPARE(readHex("FFFF"), 0u);
        QCOMPARE(readHex("0x12/34"), 0x12u);
        QCOMPARE(readHex("0x123456789"), 0x12345678u);
        QCOMPARE(readHex("ab0x1g-2 "), 0x12u);
        QCOMPARE(readHexOrNone("FFFF"), 0xFFFFu); // without an x: no address
        // decimal: digits only, too many read as 0
        QCOMPARE(readDecimal("-1a2"), qint64(12));
        QCOMPARE(readDecimal("abc"), qint64(0));
        QCOMPARE(readDecimal("123456789012345678901234"), qint64(0));
        // media numbers: four digits (fonts two) before "_", else -1
        QCOMPARE(iconNumber("0001_a.png"), 1);
        QCOMPARE(iconNumber("0012.png"), 12);
        QCOMPARE(iconNumber("12345_a.png"), -1);
        QCOMPARE(gifNumber("0007_run.gif"), 7);
        QCOMPARE(fontNumber("03_Font24.bin"), 3);
        QCOMPARE(fontNumber("3_Font24.bin"), -1);
        QCOMPARE(pageNumber("Page0003"), 3);
        QCOMPARE(pageNumber("Home"), -1);
        // a reference goes into a record as 0xFFFF when there is none
        QCOMPARE(refField(-1), quint16(0xFFFF));
        QCOMPARE(refField(3), quint16(3));
        // colours: opaque, missing components 0, above 255 cut
        QCOMPARE(readRgbColor("RGBColor( 1, 2 ,3 )"), 0xFF010203u);
        QCOMPARE(readRgbColor("RGBColor(255,128)"), 0xFFFF8000u);
        QCOMPARE(readRgbColor("RGBColor(300,0,0)"), 0xFFFF0000u);
        QCOMPARE(readRgbColor("rgb(1,2,3)"), 0xFF000000u);
    }

    void writersAndHexText()
    {
        QCOMPARE(LineGrammar::hex16(0x20), QString("0x0020"));
        QCOMPARE(LineGrammar::hex16(0xabcde), QString("0xBCDE"));
        QCOMPARE(LineGrammar::hex24(0x12), QString("0x000012"));
        QCOMPARE(LineGrammar::rgbColorText(qRgb(18, 30, 44)), QString("RGBColor(18,30,44)"));
        QCOMPARE(LineGrammar::readRgbColor(LineGrammar::rgbColorText(qRgb(0, 200, 7))), qRgb(0, 200, 7));
        // "a" 61, "," 2C, "b" 62, ";" 3B, "c" 63, line feed 0A, "中" E4 B8 AD
        const QString text = QString::fromUtf8("a,b;c\n中");
        const QString encoded = LineGrammar::toHexText(text);
        QCOMPARE(encoded, QString("*Hex:612C623B630AE4B8AD"));
        QCOMPARE(LineGrammar::fromHexText(encoded), text);
        QCOMPARE(LineGrammar::fromHexText("*Hex:e4b8ad"), QString::fromUtf8("中"));
        QCOMPARE(LineGrammar::fromHexText(LineGrammar::toHexText(QString())), QString());
        // without the mark a field is taken as it stands
        QCOMPARE(LineGrammar::fromHexText("612C62"), QString("612C62"));
    }

    // A line read and written again: in its one form, the same once more.
    void linesAsWritten_data()
    {
        // an empty `written`: the line itself
        addColumns<QString, QString>("line", "written");
        const auto row = [](const char *name, const QString &line, const QString &written = QString()) {
            QTest::newRow(name) << line << written;
        };
        row("button example", kButtonExample);
        row("button all set",
            "button_12:0,479,800,1,0xABCD,0123_x.png,9999_y.png,Page0012,OK,Enable,Enable,0x00FF,0x0003,2;");
        row("popbox",
            "popbox_3:10,20,100,50,0x0005,0001_a.png,,Page0001,30,40,Enable,box,Enable,Disable,Enable,0x0010,Page0002,1;");
        row("kbkey, Chinese name", QString::fromUtf8("kbkey_7:5,6,40,30,0x0041,Page0003,确定,Enable,2;"));
        // read leniently: signs and letters dropped, "20" has no x, only
        // "Enable" is on
        row("normalised", "button_2:-5,5a0,0x10,40,20,,,,n,enable,Enable,7,0xfffF,x;",
            "button_2:5,50,10,40,0x0000,,,,n,Disable,Enable,0x0000,0xFFFF,0;");
        // short lines keep the defaults; cut before `name`, the name is the object name
        row("cut after name", "button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0;", kButtonExample);
        row("cut before name", "button_5:1,2;",
            "button_5:1,2,0,0,0x0020,,,,button_5,Disable,Disable,0x0000,0xFFFF,1;");
        row("reading stops at ;", "kbkey_0:1,2,3,4;0x0041,Page0001", "kbkey_0:1,2,3,4,0x0020,,kbkey_0,Disable,1;");
        // the old dimming words of a popbox
        const QString popbox = "popbox_0:10,20,100,50,0x0000,,,,0,0,%1,popbox_0,Disable,Disable,Disable,0x0000,,1;";
        row("dim", popbox.arg("dim"), popbox.arg("Enable"));
        row("other word", popbox.arg("dimmed"), popbox.arg("Disable"));
    }
    void linesAsWritten()
    {
        QFETCH(QString, line);
        QFETCH(QString, written);
        if (written.isEmpty())
            written = line;
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), written);
        EditBuffer again;
        WidgetLine::parse(written, again);
        QVERIFY(again == b);
    }

    void newWidgets()
    {
        const EditBuffer b = WidgetLine::createNew(WidgetKind::Button, 3, QRect(10, 20, 30, 40));
        QCOMPARE(b.index(), 3u);
        QCOMPARE(WidgetLine::write(b), QString("button_3:10,20,30,40,0x0020,,,,button_3,Disable,Disable,0x0000,0xFFFF,1;"));
        QCOMPARE(WidgetLine::write(WidgetLine::createNew(WidgetKind::PopBox, 1, QRect(10, 20, 30, 40))),
                 QString("popbox_1:10,20,30,40,0x0000,,,,0,0,Disable,popbox_1,Disable,Disable,Disable,0x0000,,1;"));
        QCOMPARE(WidgetLine::write(WidgetLine::createNew(WidgetKind::KBKey, 0, QRect(10, 20, 30, 40))),
                 QString("kbkey_0:10,20,30,40,0x0020,,kbkey_0,Disable,1;"));
        // every kind is described: a new widget of each has its name, rows and a line
        // that reads back as itself
        for (const WidgetKind kind : WidgetKinds::all()) {
            const EditBuffer made = WidgetLine::createNew(kind, 2, QRect(1, 2, 30, 40));
            QVERIFY2(made.hasSchema(), WidgetKinds::info(kind).word);
            QVERIFY(!WidgetLine::tableRows(made, 0).isEmpty());
            EditBuffer back;
            const QString line = WidgetLine::write(made);
            QCOMPARE(WidgetLine::parse(line, back), ParseStatus::Ok);
            QCOMPARE(WidgetLine::write(back), line);
            QCOMPARE(back.objectName(), WidgetKinds::objectName(kind, 2));
        }
    }

    void buttonRows()
    {
        // tail and lockState are in the line and in no row
        const EditBuffer b = parsed(kButtonExample);
        QCOMPARE(b.tail(), quint16(0xFFFF));
        QCOMPARE(b.lockState(), qint16(1));
        const QVector<TableRow> en = WidgetLine::tableRows(b, 0);
        const QVector<TableRow> zh = WidgetLine::tableRows(b, 1);
        QCOMPARE(cellsOf(b), QStringList({"button_0", "100", "50", "120", "40", "0x0020", "0001_a.png",
                                          "0002_b.png", "2", "Disable", "Disable", "0x0000"}));
        QCOMPARE(zh.size(), 12);
        QCOMPARE(en[11].first, QString("    _triggerValue"));
        QCOMPARE(zh[11].first, QString::fromUtf8("    _键码触发值"));

        // overlay stands in the label table and in no row
        const LabelTable labels = KindRegistry::definition(WidgetKind::Button)->labels();
        QCOMPARE(labels.value("overlay"), QStringList({"overlay", QString::fromUtf8("叠加")}));
        for (const TableRow &r : en)
            QVERIFY(r.first != "overlay");
    }

    void applyEditReadsCellsLikeALine()
    {
        EditBuffer b = parsed(kButtonExample);
        QStringList cells = cellsOf(b);
        cells[1] = "abc";     // X: no digits
        cells[5] = "12";      // hexadecimal row without "x"
        cells[0] = "a,b;c";   // separators can't stand in a line
        cells[9] = "Enable";
        cells[10] = "enable"; // not the exact word
        cells[11] = "0x1234";
        QVERIFY(WidgetLine::applyEdit(b, cells, kPage));
        QCOMPARE(b.name(), QString("abc"));
        // fields without a row (tail, lockState) keep their values
        QCOMPARE(WidgetLine::write(b),
                 QString("button_0:0,50,120,40,0x0000,0001_a.png,0002_b.png,2,abc,Enable,Disable,0x1234,0xFFFF,1;"));
    }

    void geometryClampedToThePage()
    {
        // X, Y, W, H typed on the 800 x 480 page, then as kept: at the edge
        // kept, past it moved back, larger than the page cut
        const int cases[][8] = {{680, 440, 120, 40, 680, 440, 120, 40}, {750, 20, 120, 40, 680, 20, 120, 40},
                                {30, 0, 900, 40, 0, 0, 800, 40}, {0, 5, 10, 500, 0, 0, 10, 480}};
        for (WidgetKind kind : {WidgetKind::Button, WidgetKind::PopBox, WidgetKind::KBKey}) {
            for (const int *c : cases) {
                EditBuffer b = WidgetLine::createNew(kind, 0, QRect(1, 1, 10, 10));
                QStringList cells = cellsOf(b);
                for (int i = 0; i < 4; ++i)
                    cells[1 + i] = QString::number(c[i]);
                QVERIFY(WidgetLine::applyEdit(b, cells, kPage));
                QCOMPARE(b.rect(), QRect(c[4], c[5], c[6], c[7]));
            }
        }
    }

    void kbkeySwitchWithoutRowSurvivesEdits()
    {
        EditBuffer b = parsed("kbkey_7:5,6,40,30,0x0041,Page0003,kbkey_7,Enable,1;");
        QCOMPARE(WidgetLine::tableRows(b, 0).size(), 7);
        QStringList cells = cellsOf(b);
        cells[5] = "0x0042";
        QVERIFY(WidgetLine::applyEdit(b, cells, kPage));
        QCOMPARE(WidgetLine::write(b), QString("kbkey_7:5,6,40,30,0x0042,Page0003,kbkey_7,Enable,1;"));
    }

    void storeLineReplacesTheWidgetsOwnLine()
    {
        QStringList lines = {"Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);p;Disable;0;0;Disable;",
                             "button_10:1,1,1,1;", "button_1:2,2,2,2;", "kbkey_1:3,3,3,3;"};
        EditBuffer b = parsed("button_1:2,2,2,2;");
        b.setX(9);
        QVERIFY(WidgetLine::storeLine(lines, b));
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[1], QString("button_10:1,1,1,1;"));
        QCOMPARE(lines[2], QString("button_1:9,2,2,2,0x0020,,,,button_1,Disable,Disable,0x0000,0xFFFF,1;"));

        const EditBuffer fresh = WidgetLine::createNew(WidgetKind::Button, 2, QRect(0, 0, 5, 5));
        QVERIFY(!WidgetLine::storeLine(lines, fresh));
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.last(), WidgetLine::write(fresh));
    }

    void valuesCutToTheirFields()
    {
        EditBuffer p = parsed("popbox_3:10,20,100,50;");
        QVERIFY(!p.hasTail());
        QCOMPARE(p.tail(), quint16(0xFFFF));
        p.setNumber("returnValue", 0x12345); // cut to 16 bits
        QCOMPARE(p.number("returnValue"), qint64(0x2345));
        p.setX(70000);                       // X is signed 16 bits
        QCOMPARE(p.x(), qint16(70000 - 65536));
        p.setNumber("dimming", 5);           // a switch holds 0 or 1
        QCOMPARE(p.number("dimming"), qint64(1));
        QVERIFY(!p.has("nothing"));
        QCOMPARE(p.number("nothing"), qint64(0));
    }
};

QTEST_GUILESS_MAIN(TestWidgetGrammar)
#include "tst_widget_grammar.moc"
