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

Q_DECLARE_METATYPE(vantile::WidgetKind)

namespace {

const QString kButtonExample =
    "button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0,Disable,Disable,0x0000,0xFFFF,1;";

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

    void hexReaders_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<quint32>("hex");
        QTest::addColumn<quint32>("hexOrNone");
        QTest::newRow("mixed case") << "0xfffF" << 0xFFFFu << 0xFFFFu;
        QTest::newRow("no x") << "FFFF" << 0u << 0xFFFFu;
        QTest::newRow("digits only") << "12" << 0u << 0xFFFFu;
        QTest::newRow("empty") << "" << 0u << 0xFFFFu;
        QTest::newRow("stops at slash") << "0x12/34" << 0x12u << 0x12u;
        QTest::newRow("ends at x") << "0x" << 0u << 0u;
        QTest::newRow("slash right after x") << "0x/12" << 0u << 0u;
        QTest::newRow("upper X") << "0X7014" << 0x7014u << 0x7014u;
        QTest::newRow("9 digits cut at 8") << "0x123456789" << 0x12345678u << 0x12345678u;
        QTest::newRow("others skipped") << "ab0x1g-2 " << 0x12u << 0x12u;
        QTest::newRow("first x counts") << "x1x2" << 0x12u << 0x12u;
    }

    void hexReaders()
    {
        QFETCH(QString, field);
        QFETCH(quint32, hex);
        QFETCH(quint32, hexOrNone);
        QCOMPARE(LineGrammar::readHex(field), hex);
        QCOMPARE(LineGrammar::readHexOrNone(field), hexOrNone);
    }

    void decimalReader_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<qint64>("value");
        QTest::newRow("plain") << "120" << qint64(120);
        QTest::newRow("sign dropped") << "-12" << qint64(12);
        QTest::newRow("plus dropped") << "+7" << qint64(7);
        QTest::newRow("letters skipped") << "1a2" << qint64(12);
        QTest::newRow("no digits") << "abc" << qint64(0);
        QTest::newRow("empty") << "" << qint64(0);
        QTest::newRow("too long") << "123456789012345678901234" << qint64(0);
    }

    void decimalReader()
    {
        QFETCH(QString, field);
        QFETCH(qint64, value);
        QCOMPARE(LineGrammar::readDecimal(field), value);
    }

    void hexWriters()
    {
        QCOMPARE(LineGrammar::hex16(0x20), QString("0x0020"));
        QCOMPARE(LineGrammar::hex16(0x7014), QString("0x7014"));
        QCOMPARE(LineGrammar::hex16(0xabcde), QString("0xBCDE"));
        QCOMPARE(LineGrammar::hex24(0xD3D3D3), QString("0xD3D3D3"));
        QCOMPARE(LineGrammar::hex24(0x12), QString("0x000012"));
    }

    // --- "*Hex:" text -----------------------------------------------------------

    void hexTextRoundTrip()
    {
        // "a" 61, "," 2C, "b" 62, ";" 3B, "c" 63, line feed 0A, "中" E4 B8 AD
        const QString text = QString::fromUtf8("a,b;c\n中");
        const QString encoded = LineGrammar::toHexText(text);
        QCOMPARE(encoded, QString("*Hex:612C623B630AE4B8AD"));
        QCOMPARE(LineGrammar::fromHexText(encoded), text);
        QVERIFY(!encoded.contains(',') && !encoded.contains(';') && !encoded.contains('\n'));

        QCOMPARE(LineGrammar::fromHexText("*Hex:e4b8ad"), QString::fromUtf8("中"));
        QCOMPARE(LineGrammar::toHexText(QString()), QString("*Hex:"));
        QCOMPARE(LineGrammar::fromHexText("*Hex:"), QString());
        // without the mark a field is taken as it stands
        QCOMPARE(LineGrammar::fromHexText("612C62"), QString("612C62"));
        QCOMPARE(LineGrammar::fromHexText("Hex:41"), QString("Hex:41"));
    }

    // --- colours held as text -----------------------------------------------------

    void rgbColorText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint32>("rgba");
        QTest::newRow("plain") << "RGBColor(18,30,44)" << 0xFF121E2Cu;
        QTest::newRow("white") << "RGBColor(255,255,255)" << 0xFFFFFFFFu;
        QTest::newRow("blanks") << "RGBColor( 1, 2 ,3 )" << 0xFF010203u;
        QTest::newRow("missing component") << "RGBColor(255,128)" << 0xFFFF8000u;
        QTest::newRow("above 255") << "RGBColor(300,0,0)" << 0xFFFF0000u;
        QTest::newRow("no RGBColor") << "rgb(1,2,3)" << 0xFF000000u;
        QTest::newRow("empty") << "" << 0xFF000000u;
        QTest::newRow("file name") << "0001_a.png" << 0xFF000000u;
    }

    void rgbColorText()
    {
        QFETCH(QString, text);
        QFETCH(quint32, rgba);
        QCOMPARE(quint32(LineGrammar::readRgbColor(text)), rgba);
    }

    void rgbColorWritten()
    {
        QCOMPARE(LineGrammar::rgbColorText(qRgb(18, 30, 44)), QString("RGBColor(18,30,44)"));
        QCOMPARE(LineGrammar::readRgbColor(LineGrammar::rgbColorText(qRgb(0, 200, 7))), qRgb(0, 200, 7));
    }

    // --- word tables --------------------------------------------------------------

    void wordTables_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("value");
        QTest::newRow("bit5") << "dataType" << "bit5" << 69;
        QTest::newRow("bit0") << "dataType" << "bit0" << 64;
        QTest::newRow("bit15") << "dataType" << "bit15" << 79;
        QTest::newRow("bit16 unknown") << "dataType" << "bit16" << 1;
        QTest::newRow("Bit5 not exact") << "dataType" << "Bit5" << 1;
        QTest::newRow("unknown type") << "dataType" << "float" << 1;
        QTest::newRow("uchar") << "dataType" << "uchar" << 0;
        QTest::newRow("uchar_H8") << "dataType" << "uchar_H8" << 4;
        QTest::newRow("short") << "dataType" << "short" << 129;
        QTest::newRow("char_H8") << "dataType" << "char_H8" << 132;
        QTest::newRow("D_to_U") << "direction" << "D_to_U" << 3;
        QTest::newRow("direction unknown") << "direction" << "up" << 0;
        QTest::newRow("Vertical") << "slideDirection" << "Vertical" << 0;
        QTest::newRow("Vertical-Loop") << "slideDirection" << "Vertical-Loop" << 0;
        QTest::newRow("Horizontal") << "slideDirection" << "Horizontal" << 1;
        QTest::newRow("IconNum") << "digitSource" << "IconNum" << 2;
        QTest::newRow("Week") << "dateFormat" << "Week" << 7;
        QTest::newRow("MM/DD/") << "dateFormat" << "MM/DD/" << 11;
        QTest::newRow("SS") << "timerFormat" << "SS" << 4;
        QTest::newRow("RunOnce") << "runMode" << "RunOnce" << 3;
        QTest::newRow("run mode unknown") << "runMode" << "Go" << 2;
        QTest::newRow("RepeatPlay") << "videoMode" << "RepeatPlay" << 4;
        QTest::newRow("needle Icon") << "needleStyle" << "Icon" << 5;
        QTest::newRow("RGB888") << "pictureFormat" << "RGB888" << 0;
        QTest::newRow("aRGB8565") << "pictureFormat" << "aRGB8565" << 8;
        QTest::newRow("ZoomIN") << "pictureFormat" << "ZoomIN" << 9;
        QTest::newRow("format unknown") << "pictureFormat" << "png" << 32;
        QTest::newRow("true") << "boolean" << "true" << 1;
        QTest::newRow("True") << "boolean" << "True" << 0;
        QTest::newRow("B-Right") << "alignment" << "B-Right" << 8;
    }

    void wordTables()
    {
        QFETCH(QString, table);
        QFETCH(QString, word);
        QFETCH(int, value);
        const QHash<QString, const WordTable *> tables = {
            {"dataType", &WordTables::dataType},       {"direction", &WordTables::direction},
            {"slideDirection", &WordTables::slideDirection}, {"digitSource", &WordTables::digitSource},
            {"dateFormat", &WordTables::dateFormat},   {"timerFormat", &WordTables::timerFormat},
            {"runMode", &WordTables::runMode},         {"videoMode", &WordTables::videoMode},
            {"needleStyle", &WordTables::needleStyle}, {"pictureFormat", &WordTables::pictureFormat},
            {"boolean", &WordTables::boolean},         {"alignment", &WordTables::alignment}};
        QVERIFY(tables.contains(table));
        QCOMPARE(tables.value(table)->valueOf(word), value);
    }

    void encodingWords()
    {
        QCOMPARE(WordTables::encoding.wordOf(3), QString("Unicode"));
        QCOMPARE(WordTables::encoding.wordOf(6), QString("unicode"));
        QCOMPARE(WordTables::encoding.wordOf(9), QString("Custom"));
        for (int empty : {5, 7, 8})
            QCOMPARE(WordTables::encoding.wordOf(empty), QString());
    }

    // --- media and page numbers ---------------------------------------------------

    void referenceNumbers_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("number");
        QTest::newRow("icon") << "icon" << "0001_a.png" << 1;
        QTest::newRow("icon two digits") << "icon" << "12_a.png" << -1;
        QTest::newRow("icon no underscore") << "icon" << "0012.png" << 12;
        QTest::newRow("icon five digits") << "icon" << "12345_a.png" << -1;
        QTest::newRow("icon empty") << "icon" << "" << -1;
        QTest::newRow("gif") << "gif" << "0007_run.gif" << 7;
        QTest::newRow("gif short") << "gif" << "7_run.gif" << -1;
        QTest::newRow("font") << "font" << "03_Font24.bin" << 3;
        QTest::newRow("font one digit") << "font" << "3_Font24.bin" << -1;
        QTest::newRow("font three digits") << "font" << "123_Font.bin" << -1;
        QTest::newRow("page entry") << "page" << "Page0003" << 3;
        QTest::newRow("page digits") << "page" << "2" << 2;
        QTest::newRow("page empty") << "page" << "" << -1;
        QTest::newRow("page no digits") << "page" << "Home" << -1;
    }

    void referenceNumbers()
    {
        QFETCH(QString, rule);
        QFETCH(QString, name);
        QFETCH(int, number);
        int got = -2;
        if (rule == "icon")
            got = LineGrammar::iconNumber(name);
        else if (rule == "gif")
            got = LineGrammar::gifNumber(name);
        else if (rule == "font")
            got = LineGrammar::fontNumber(name);
        else
            got = LineGrammar::pageNumber(name);
        QCOMPARE(got, number);
        QCOMPARE(LineGrammar::refField(got), number < 0 ? quint16(0xFFFF) : quint16(number));
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

    // --- the button line ----------------------------------------------------------

    void buttonExampleLine()
    {
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(kButtonExample, b), ParseStatus::Ok);
        QCOMPARE(b.kind(), WidgetKind::Button);
        QCOMPARE(b.objectName(), QString("button_0"));
        QCOMPARE(b.index(), 0u);
        QCOMPARE(b.rect(), QRect(100, 50, 120, 40));
        QCOMPARE(b.number("returnValue"), qint64(0x20));
        QCOMPARE(b.text("unpressedIcon"), QString("0001_a.png"));
        QCOMPARE(b.text("pressedIcon"), QString("0002_b.png"));
        QCOMPARE(b.text("pageGoto"), QString("2"));
        QCOMPARE(b.name(), QString("button_0"));
        QVERIFY(!b.isOn("reportToHost"));
        QVERIFY(!b.isOn("hostControl"));
        QCOMPARE(b.number("hostControl_triggerValue"), qint64(0));
        QCOMPARE(b.tail(), quint16(0xFFFF));
        QCOMPARE(b.lockState(), qint16(1));
        QCOMPARE(WidgetLine::write(b), kButtonExample);
    }

    void roundTrips_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("button all set")
            << "button_12:0,479,800,1,0xABCD,0123_x.png,9999_y.png,Page0012,OK,Enable,Enable,0x00FF,0x0003,2;";
        QTest::newRow("popbox")
            << "popbox_3:10,20,100,50,0x0005,0001_a.png,,Page0001,30,40,Enable,box,Enable,Disable,Enable,0x0010,Page0002,1;";
        QTest::newRow("kbkey") << "kbkey_7:5,6,40,30,0x0041,Page0003,kbkey_7,Enable,2;";
        QTest::newRow("chinese name") << QString::fromUtf8("kbkey_1:5,6,40,30,0x0041,,确定,Disable,1;");
    }

    void roundTrips()
    {
        QFETCH(QString, line);
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), line);
        EditBuffer again;
        WidgetLine::parse(WidgetLine::write(b), again);
        QVERIFY(again == b);
    }

    // Fields are read leniently and written in their one form.
    void normalisedOnWrite()
    {
        const EditBuffer b = parsed("button_2:-5,5a0,0x10,40,20,,,,n,enable,Enable,7,0xfffF,x;");
        QCOMPARE(b.rect(), QRect(5, 50, 10, 40));
        QCOMPARE(b.number("returnValue"), qint64(0)); // "20": no x
        QVERIFY(!b.isOn("reportToHost"));              // only "Enable" is on
        QVERIFY(b.isOn("hostControl"));
        QCOMPARE(b.lockState(), qint16(0));
        QCOMPARE(WidgetLine::write(b),
                 QString("button_2:5,50,10,40,0x0000,,,,n,Disable,Enable,0x0000,0xFFFF,0;"));
    }

    void shortLinesKeepDefaults()
    {
        // cut after `name`: both switches "Disable", the rest at defaults
        const EditBuffer b = parsed("button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0;");
        const QVector<TableRow> rows = WidgetLine::tableRows(b, 0);
        QCOMPARE(rows.value(9).second, QString("Disable"));
        QCOMPARE(rows.value(10).second, QString("Disable"));
        QCOMPARE(rows.value(11).second, QString("0x0000"));
        QCOMPARE(b.tail(), quint16(0xFFFF));
        QCOMPARE(b.lockState(), qint16(1));
        QCOMPARE(WidgetLine::write(b), kButtonExample);

        // cut before `name`: the name is the object name
        const EditBuffer c = parsed("button_5:1,2;");
        QCOMPARE(c.name(), QString("button_5"));
        QCOMPARE(c.rect(), QRect(1, 2, 0, 0));
        QCOMPARE(c.number("returnValue"), qint64(0x20));
        QCOMPARE(WidgetLine::write(c), QString("button_5:1,2,0,0,0x0020,,,,button_5,Disable,Disable,0x0000,0xFFFF,1;"));

        // reading stops at ";"
        const EditBuffer d = parsed("kbkey_0:1,2,3,4;0x0041,Page0001");
        QCOMPARE(d.number("keyCode"), qint64(0x20));
        QCOMPARE(d.text("pressPage"), QString());
    }

    void oldDimmingWords_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("shown");
        QTest::newRow("dim") << "dim" << "Enable";
        QTest::newRow("normal") << "normal" << "Disable";
        QTest::newRow("Enable") << "Enable" << "Enable";
        QTest::newRow("other") << "dimmed" << "Disable";
    }

    void oldDimmingWords()
    {
        QFETCH(QString, word);
        QFETCH(QString, shown);
        const EditBuffer b =
            parsed("popbox_0:10,20,100,50,0x0000,,,,0,0," + word + ",popbox_0,Disable,Disable,Disable,0x0000,,1;");
        QCOMPARE(WidgetLine::tableRows(b, 0).value(11), TableRow("dimming", shown));
        QCOMPARE(WidgetLine::write(b).split(',').value(10), shown);
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
        QVERIFY(!WidgetLine::applyEdit(c, {"x"}, QSize(800, 480)));
    }

    // --- parameter rows -------------------------------------------------------------

    void buttonRows()
    {
        const EditBuffer b = parsed(kButtonExample);
        const QVector<TableRow> en = WidgetLine::tableRows(b, 0);
        const QVector<TableRow> zh = WidgetLine::tableRows(b, 1);
        QCOMPARE(en.size(), 12);
        QCOMPARE(zh.size(), 12);
        QCOMPARE(en[0], TableRow("name", "button_0"));
        QCOMPARE(zh[0], TableRow(QString::fromUtf8("控件名称"), "button_0"));
        QCOMPARE(zh[1], TableRow(QString::fromUtf8("X坐标"), "100"));
        QCOMPARE(zh[4], TableRow(QString::fromUtf8("高度"), "40"));
        QCOMPARE(en[5], TableRow("returnValue", "0x0020"));
        QCOMPARE(zh[6], TableRow(QString::fromUtf8("未按图标"), "0001_a.png"));
        QCOMPARE(zh[8], TableRow(QString::fromUtf8("跳转页面"), "2"));
        QCOMPARE(zh[10], TableRow(QString::fromUtf8("键码触发使能"), "Disable"));
        QCOMPARE(en[11], TableRow("    _triggerValue", "0x0000"));
        QCOMPARE(zh[11], TableRow(QString::fromUtf8("    _键码触发值"), "0x0000"));

        QCOMPARE(WidgetLine::headerLabels(0), QStringList({"Parameter", "Data"}));
        QCOMPARE(WidgetLine::headerLabels(1), QStringList({QString::fromUtf8("参数"), QString::fromUtf8("数据")}));

        // overlay stands in the label table and in no row
        const LabelTable labels = KindRegistry::definition(WidgetKind::Button)->labels();
        QCOMPARE(labels.value("overlay"), QStringList({"overlay", QString::fromUtf8("叠加")}));
        for (const TableRow &r : en)
            QVERIFY(r.first != "overlay");
    }

    void editorsOfTheRows()
    {
        const KindDef &button = *KindRegistry::definition(WidgetKind::Button);
        QCOMPARE(button.atRow(6)->editor, Editor::IconPicture);
        QCOMPARE(button.atRow(7)->editor, Editor::IconPicture);
        QCOMPARE(button.atRow(8)->editor, Editor::PageRef);
        QCOMPARE(button.atRow(9)->menuChoices(), QStringList({"Enable", "Disable"}));
        QCOMPARE(button.atRow(5)->editor, Editor::Inline);
        const KindDef &popbox = *KindRegistry::definition(WidgetKind::PopBox);
        for (int row : {11, 12, 13, 14})
            QCOMPARE(popbox.atRow(row)->editor, Editor::Menu);
        QCOMPARE(popbox.atRow(16)->editor, Editor::PageRef);
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
        QVERIFY(WidgetLine::applyEdit(b, cells, QSize(800, 480)));
        QCOMPARE(b.x(), qint16(0));
        QCOMPARE(b.number("returnValue"), qint64(0));
        QCOMPARE(b.name(), QString("abc"));
        QVERIFY(b.isOn("reportToHost"));
        QVERIFY(!b.isOn("hostControl"));
        QCOMPARE(b.number("hostControl_triggerValue"), qint64(0x1234));
        // fields without a row keep their values
        QCOMPARE(b.tail(), quint16(0xFFFF));
        QCOMPARE(b.lockState(), qint16(1));
        QCOMPARE(WidgetLine::write(b),
                 QString("button_0:0,50,120,40,0x0000,0001_a.png,0002_b.png,2,abc,Enable,Disable,0x1234,0xFFFF,1;"));
    }

    void lockedWidgetKeepsItsRectangle()
    {
        EditBuffer b = parsed("button_1:100,50,120,40,0x0020,,,,b,Disable,Disable,0x0000,0x0007,2;");
        QStringList cells = cellsOf(b);
        cells[1] = "5";
        cells[3] = "200";
        cells[0] = "renamed";
        QVERIFY(WidgetLine::applyEdit(b, cells, QSize(800, 480)));
        QCOMPARE(b.rect(), QRect(100, 50, 120, 40));
        QCOMPARE(b.name(), QString("renamed"));
        QCOMPARE(b.tail(), quint16(0x0007));
    }

    void geometryClampedToThePage_data()
    {
        QTest::addColumn<QString>("x");
        QTest::addColumn<QString>("y");
        QTest::addColumn<QString>("w");
        QTest::addColumn<QString>("h");
        QTest::addColumn<QRect>("result");
        QTest::newRow("inside") << "10" << "20" << "120" << "40" << QRect(10, 20, 120, 40);
        QTest::newRow("right edge") << "680" << "440" << "120" << "40" << QRect(680, 440, 120, 40);
        QTest::newRow("past the right") << "750" << "20" << "120" << "40" << QRect(680, 20, 120, 40);
        QTest::newRow("past the bottom") << "0" << "470" << "120" << "40" << QRect(0, 440, 120, 40);
        QTest::newRow("wider than the page") << "30" << "0" << "900" << "40" << QRect(0, 0, 800, 40);
        QTest::newRow("taller than the page") << "0" << "5" << "10" << "500" << QRect(0, 0, 10, 480);
    }

    void geometryClampedToThePage()
    {
        QFETCH(QString, x);
        QFETCH(QString, y);
        QFETCH(QString, w);
        QFETCH(QString, h);
        QFETCH(QRect, result);
        for (WidgetKind kind : {WidgetKind::Button, WidgetKind::PopBox, WidgetKind::KBKey}) {
            EditBuffer b = WidgetLine::createNew(kind, 0, QRect(1, 1, 10, 10));
            QStringList cells = cellsOf(b);
            cells[1] = x;
            cells[2] = y;
            cells[3] = w;
            cells[4] = h;
            QVERIFY(WidgetLine::applyEdit(b, cells, QSize(800, 480)));
            QCOMPARE(b.rect(), result);
        }
    }

    void kbkeySwitchWithoutRowSurvivesEdits()
    {
        EditBuffer b = parsed("kbkey_7:5,6,40,30,0x0041,Page0003,kbkey_7,Enable,1;");
        QCOMPARE(WidgetLine::tableRows(b, 0).size(), 7);
        QStringList cells = cellsOf(b);
        cells[5] = "0x0042";
        QVERIFY(WidgetLine::applyEdit(b, cells, QSize(800, 480)));
        QCOMPARE(WidgetLine::write(b), QString("kbkey_7:5,6,40,30,0x0042,Page0003,kbkey_7,Enable,1;"));
    }

    // --- store line -----------------------------------------------------------------

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

    void typedAccessors()
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
