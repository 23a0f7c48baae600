// The widget line: lenient field readers, the "*Hex:" text form, colours,
// word tables, media and page numbers, and the operations derived from a
// kind's field description (parse, write, create, table rows, apply edit,
// store), checked on the button kinds.

#include "widgets/KindRegistry.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetLine.h"
#include "widgets/WordTables.h"

#include <QtTest>

using namespace vantile;

namespace {

// A lenient reader of one field, as a number.
using Reader = qint64 (*)(const QString &);

} // namespace

Q_DECLARE_METATYPE(vantile::WidgetKind)
Q_DECLARE_METATYPE(Reader)
Q_DECLARE_METATYPE(const vantile::WordTable *)

namespace {

const QString kButtonExample =
    "button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0,Disable,Disable,0x0000,0xFFFF,1;";
const QSize kPage(800, 480);

QStringList cellsOf(const EditBuffer &b)
{
    QStringList cells;
    for (const TableRow &r : WidgetLine::tableRows(b, 0))
        cells.append(r.second);
    return cells;
}

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
    // --- lenient readers --------------------------------------------------------

    void readers_data()
    {
        QTest::addColumn<Reader>("reader");
        QTest::addColumn<QString>("field");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<bool>("reference"); // also checked as a record field
        const auto row = [](const char *reader, const char *name, const QString &field, qint64 value) {
            static const QHash<QByteArray, Reader> readers = {
                {"hex", [](const QString &f) -> qint64 { return LineGrammar::readHex(f); }},
                {"hexOrNone", [](const QString &f) -> qint64 { return LineGrammar::readHexOrNone(f); }},
                {"decimal", [](const QString &f) -> qint64 { return LineGrammar::readDecimal(f); }},
                {"rgb", [](const QString &f) -> qint64 { return LineGrammar::readRgbColor(f); }},
                {"icon", [](const QString &f) -> qint64 { return LineGrammar::iconNumber(f); }},
                {"gif", [](const QString &f) -> qint64 { return LineGrammar::gifNumber(f); }},
                {"font", [](const QString &f) -> qint64 { return LineGrammar::fontNumber(f); }},
                {"page", [](const QString &f) -> qint64 { return LineGrammar::pageNumber(f); }}};
            const bool reference = QByteArrayList{"icon", "gif", "font", "page"}.contains(reader);
            QTest::addRow("%s: %s", reader, name) << readers.value(reader) << field << value << reference;
        };
        row("hex", "mixed case", "0xfffF", 0xFFFF);
        row("hex", "no x", "FFFF", 0);
        row("hex", "stops at slash", "0x12/34", 0x12);
        row("hex", "ends at x", "0x", 0);
        row("hex", "upper X", "0X7014", 0x7014);
        row("hex", "9 digits cut at 8", "0x123456789", 0x12345678);
        row("hex", "others skipped", "ab0x1g-2 ", 0x12);
        row("hex", "first x counts", "x1x2", 0x12);
        // without an x: no address
        row("hexOrNone", "no x", "FFFF", 0xFFFF);
        row("hexOrNone", "ends at x", "0x", 0);
        row("decimal", "sign dropped", "-12", 12);
        row("decimal", "letters skipped", "1a2", 12);
        row("decimal", "no digits", "abc", 0);
        row("decimal", "too long", "123456789012345678901234", 0);
        // media numbers: four digits (fonts two) before "_", else -1
        row("icon", "four digits", "0001_a.png", 1);
        row("icon", "no underscore", "0012.png", 12);
        row("icon", "five digits", "12345_a.png", -1);
        row("gif", "four digits", "0007_run.gif", 7);
        row("font", "two digits", "03_Font24.bin", 3);
        row("font", "one digit", "3_Font24.bin", -1);
        row("font", "three digits", "123_Font.bin", -1);
        row("page", "page entry", "Page0003", 3);
        row("page", "digits", "2", 2);
        row("page", "no digits", "Home", -1);
        // colours: opaque, missing components 0, above 255 cut
        row("rgb", "plain", "RGBColor(18,30,44)", 0xFF121E2C);
        row("rgb", "blanks", "RGBColor( 1, 2 ,3 )", 0xFF010203);
        row("rgb", "missing component", "RGBColor(255,128)", 0xFFFF8000);
        row("rgb", "above 255", "RGBColor(300,0,0)", 0xFFFF0000);
        row("rgb", "no RGBColor", "rgb(1,2,3)", 0xFF000000);
    }
    void readers()
    {
        QFETCH(Reader, reader);
        QFETCH(QString, field);
        QFETCH(qint64, value);
        QFETCH(bool, reference);
        QVERIFY(reader);
        QCOMPARE(reader(field), value);
        // a reference goes into a record as 0xFFFF when there is none
        if (reference)
            QCOMPARE(LineGrammar::refField(value), value < 0 ? quint16(0xFFFF) : quint16(value));
    }

    void writers()
    {
        QCOMPARE(LineGrammar::hex16(0x20), QString("0x0020"));
        QCOMPARE(LineGrammar::hex16(0x7014), QString("0x7014"));
        QCOMPARE(LineGrammar::hex16(0xabcde), QString("0xBCDE"));
        QCOMPARE(LineGrammar::hex24(0xD3D3D3), QString("0xD3D3D3"));
        QCOMPARE(LineGrammar::hex24(0x12), QString("0x000012"));
        QCOMPARE(LineGrammar::rgbColorText(qRgb(18, 30, 44)), QString("RGBColor(18,30,44)"));
        QCOMPARE(LineGrammar::readRgbColor(LineGrammar::rgbColorText(qRgb(0, 200, 7))), qRgb(0, 200, 7));
    }

    void hexTextRoundTrip()
    {
        // "a" 61, "," 2C, "b" 62, ";" 3B, "c" 63, line feed 0A, "中" E4 B8 AD
        const QString text = QString::fromUtf8("a,b;c\n中");
        const QString encoded = LineGrammar::toHexText(text);
        QCOMPARE(encoded, QString("*Hex:612C623B630AE4B8AD"));
        QCOMPARE(LineGrammar::fromHexText(encoded), text);
        QCOMPARE(LineGrammar::fromHexText("*Hex:e4b8ad"), QString::fromUtf8("中"));
        QCOMPARE(LineGrammar::toHexText(QString()), QString("*Hex:"));
        QCOMPARE(LineGrammar::fromHexText("*Hex:"), QString());
        // without the mark a field is taken as it stands
        QCOMPARE(LineGrammar::fromHexText("612C62"), QString("612C62"));
        QCOMPARE(LineGrammar::fromHexText("Hex:41"), QString("Hex:41"));
    }

    // --- word tables --------------------------------------------------------------

    void wordTables_data()
    {
        QTest::addColumn<const WordTable *>("table");
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("value");
        const auto row = [](const WordTable &table, const char *word, int value) {
            QTest::addRow("%s", word) << &table << QString(word) << value;
        };
        // exact words only; a word not in a table gives that table's own default
        using namespace WordTables;
        row(dataType, "bit15", 79);
        row(dataType, "bit16", 1);
        row(dataType, "Bit5", 1);
        row(direction, "up", 0);
        row(slideDirection, "Vertical-Loop", 0);
        row(slideDirection, "Horizontal", 1);
        row(runMode, "Go", 2);
        row(pictureFormat, "ZoomIN", 9);
        row(pictureFormat, "png", 32);
        row(boolean, "true", 1);
        row(boolean, "True", 0);
    }
    void wordTables()
    {
        QFETCH(const WordTable *, table);
        QFETCH(QString, word);
        QFETCH(int, value);
        QCOMPARE(table->valueOf(word), value);
    }

    void encodingWords()
    {
        QCOMPARE(WordTables::encoding.wordOf(3), QString("Unicode"));
        QCOMPARE(WordTables::encoding.wordOf(6), QString("unicode"));
        QCOMPARE(WordTables::encoding.wordOf(9), QString("Custom"));
        for (int empty : {5, 7, 8})
            QCOMPARE(WordTables::encoding.wordOf(empty), QString());
    }

    // --- field descriptions -------------------------------------------------------

    // The grammar's shape holds for each described kind: row 0 is `name`,
    // rows and line fields are numbered without gaps or doubles, the line
    // ends with lockState (tail just before it), every row has both labels.
    void describedKindsFollowTheGrammar_data()
    {
        QTest::addColumn<WidgetKind>("kind");
        for (WidgetKind k : WidgetKinds::all()) {
            if (KindRegistry::hasSchema(k))
                QTest::newRow(WidgetKinds::info(k).word) << k;
        }
        QVERIFY(KindRegistry::hasSchema(WidgetKind::Button));
        QVERIFY(KindRegistry::hasSchema(WidgetKind::PopBox));
        QVERIFY(KindRegistry::hasSchema(WidgetKind::KBKey));
    }
    void describedKindsFollowTheGrammar()
    {
        QFETCH(WidgetKind, kind);
        const KindDef &s = *KindRegistry::definition(kind);
        QCOMPARE(s.kind, kind);
        QSet<int> rows, lines;
        QSet<QString> keys;
        for (int i = 0; i < s.fieldCount; ++i) {
            const FieldDef &f = s.fields[i];
            QVERIFY2(!keys.contains(f.key), f.key);
            keys.insert(f.key);
            if (f.hasRow()) {
                QVERIFY2(!rows.contains(f.row), f.key);
                rows.insert(f.row);
                QVERIFY2(f.zh, f.key);
            }
            if (f.inLine()) {
                QVERIFY2(!lines.contains(f.linePos), f.key);
                lines.insert(f.linePos);
            }
        }
        QCOMPARE(rows.size(), s.rowCount());
        QCOMPARE(lines.size(), s.lineFieldCount());
        QCOMPARE(QString(s.atRow(0)->key), QString("name"));
        for (const char *k : {"X", "Y", "W", "H", "lockState"})
            QVERIFY2(s.find(k) && s.find(k)->inLine(), k);
        const int last = s.lineFieldCount() - 1;
        QCOMPARE(QString(s.atLine(last)->key), QString("lockState"));
        if (s.find("tail"))
            QCOMPARE(s.find("tail")->linePos, last - 1);
    }

    // --- lines ----------------------------------------------------------------------

    // A line read and written again: in its one form, the same once more.
    void linesAsWritten_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("written"); // empty: the line itself
        const auto row = [](const char *name, const QString &line, const QString &written = QString()) {
            QTest::newRow(name) << line << written;
        };
        row("button example", kButtonExample);
        row("button all set",
            "button_12:0,479,800,1,0xABCD,0123_x.png,9999_y.png,Page0012,OK,Enable,Enable,0x00FF,0x0003,2;");
        row("popbox",
            "popbox_3:10,20,100,50,0x0005,0001_a.png,,Page0001,30,40,Enable,box,Enable,Disable,Enable,0x0010,Page0002,1;");
        row("kbkey", "kbkey_7:5,6,40,30,0x0041,Page0003,kbkey_7,Enable,2;");
        row("chinese name", QString::fromUtf8("kbkey_1:5,6,40,30,0x0041,,确定,Disable,1;"));
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
        row("normal", popbox.arg("normal"), popbox.arg("Disable"));
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

    void newWidgets_data()
    {
        QTest::addColumn<WidgetKind>("kind");
        QTest::addColumn<quint32>("index");
        QTest::addColumn<QString>("line");
        QTest::newRow("button") << WidgetKind::Button << 3u
                                << "button_3:10,20,30,40,0x0020,,,,button_3,Disable,Disable,0x0000,0xFFFF,1;";
        QTest::newRow("popbox") << WidgetKind::PopBox << 1u
                                << "popbox_1:10,20,30,40,0x0000,,,,0,0,Disable,popbox_1,Disable,Disable,Disable,0x0000,,1;";
        QTest::newRow("kbkey") << WidgetKind::KBKey << 0u << "kbkey_0:10,20,30,40,0x0020,,kbkey_0,Disable,1;";
    }
    void newWidgets()
    {
        QFETCH(WidgetKind, kind);
        QFETCH(quint32, index);
        QFETCH(QString, line);
        const EditBuffer b = WidgetLine::createNew(kind, index, QRect(10, 20, 30, 40));
        QCOMPARE(b.index(), index);
        QCOMPARE(WidgetLine::write(b), line);
    }

    void newWidgetOfUndescribedKind()
    {
        const EditBuffer b = WidgetLine::createNew(WidgetKind::Slider, 2, QRect(1, 2, 3, 4));
        QVERIFY(!b.hasSchema());
        QCOMPARE(b.objectName(), QString("slider_2"));
        QVERIFY(WidgetLine::tableRows(b, 0).isEmpty());
        EditBuffer c = b;
        QVERIFY(!WidgetLine::applyEdit(c, {"x"}, kPage));
    }

    // --- parameter rows -------------------------------------------------------------

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
        QCOMPARE(en[0].first, QString("name"));
        QCOMPARE(zh[0].first, QString::fromUtf8("控件名称"));
        QCOMPARE(en[11].first, QString("    _triggerValue"));
        QCOMPARE(zh[11].first, QString::fromUtf8("    _键码触发值"));

        QCOMPARE(WidgetLine::headerLabels(0), QStringList({"Parameter", "Data"}));
        QCOMPARE(WidgetLine::headerLabels(1), QStringList({QString::fromUtf8("参数"), QString::fromUtf8("数据")}));

        // overlay stands in the label table and in no row
        const LabelTable labels = KindRegistry::definition(WidgetKind::Button)->labels();
        QCOMPARE(labels.value("overlay"), QStringList({"overlay", QString::fromUtf8("叠加")}));
        for (const TableRow &r : en)
            QVERIFY(r.first != "overlay");
    }

    // --- apply edit -----------------------------------------------------------------

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

    void geometryClampedToThePage_data()
    {
        QTest::addColumn<QStringList>("xywh");
        QTest::addColumn<QRect>("result");
        // the page is 800 x 480
        QTest::newRow("inside") << QStringList{"10", "20", "120", "40"} << QRect(10, 20, 120, 40);
        QTest::newRow("right edge") << QStringList{"680", "440", "120", "40"} << QRect(680, 440, 120, 40);
        QTest::newRow("past the right") << QStringList{"750", "20", "120", "40"} << QRect(680, 20, 120, 40);
        QTest::newRow("past the bottom") << QStringList{"0", "470", "120", "40"} << QRect(0, 440, 120, 40);
        QTest::newRow("wider than the page") << QStringList{"30", "0", "900", "40"} << QRect(0, 0, 800, 40);
        QTest::newRow("taller than the page") << QStringList{"0", "5", "10", "500"} << QRect(0, 0, 10, 480);
    }
    void geometryClampedToThePage()
    {
        QFETCH(QStringList, xywh);
        QFETCH(QRect, result);
        for (WidgetKind kind : {WidgetKind::Button, WidgetKind::PopBox, WidgetKind::KBKey}) {
            EditBuffer b = WidgetLine::createNew(kind, 0, QRect(1, 1, 10, 10));
            QStringList cells = cellsOf(b);
            for (int i = 0; i < 4; ++i)
                cells[1 + i] = xywh[i];
            QVERIFY(WidgetLine::applyEdit(b, cells, kPage));
            QCOMPARE(b.rect(), result);
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

    // --- store line and field widths ------------------------------------------------

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
