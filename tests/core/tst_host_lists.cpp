// The lists for the host programmer: the variable lists' rows of every
// kind, the serial command rows with their frame, length and CRC, the
// address header, and the files as whole exports (rewritten, no mark).

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "export/HeaderExport.h"
#include "export/SerialCommands.h"
#include "export/VariableLists.h"
#include "project/AppPaths.h"
#include "project/TextFiles.h"
#include "widgets/KindExports.h"
#include "widgets/VariableKinds.h"

using namespace core;

namespace {

// CRC-16/MODBUS bit by bit: reflected 0xA001, start 0xFFFF, no final XOR.
quint16 slowModbus(const QByteArray &bytes)
{
    quint16 crc = 0xFFFF;
    for (char ch : bytes) {
        crc ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc & 1) ? quint16((crc >> 1) ^ 0xA001) : quint16(crc >> 1);
    }
    return crc;
}

// The CRC column of a frame body given as hex digits: low byte first.
QString crcText(const QString &body)
{
    const quint16 c = slowModbus(QByteArray::fromHex(body.toLatin1()));
    return QString::asprintf("%02X%02X", c & 0xFF, c >> 8);
}

// A new widget of a kind (slot 3) with fields set from "key=line text".
EditBuffer widget(const QString &kindWord, const QStringList &fields, int index = 3)
{
    EditBuffer b = WidgetLine::createNew(WidgetKinds::kindOfWord(kindWord), index, QRect(0, 0, 10, 10));
    for (const QString &kv : fields) {
        const QString key = kv.section('=', 0, 0);
        const int i = b.definition()->indexOf(key.toLatin1().constData());
        b.setValue(i, WidgetLine::readLineText(b.definition()->fields[i], kv.section('=', 1)));
    }
    return b;
}

QString lineOf(const QString &kindWord, const QStringList &fields, int index = 0)
{
    return WidgetLine::write(widget(kindWord, fields, index));
}

} // namespace

class TestHostLists : public QObject
{
    Q_OBJECT

private slots:
    // One row per kind, the columns after PageID,WidgetName,Name as the
    // kinds' tables give them; the widgets stand on page 2.
    void listRows_data()
    {
        // list: D display, T touch, "" none
        addColumns<QString, QStringList, QString, QString>("kind", "fields", "list", "row");
        const QString ffs = QString("0xFFFF,").repeated(12);
        // clang-format off
        QTest::newRow("label") << "label" << QStringList{"writeAddr=0x1234", "wordLength=10", "parameterAddr=0x0200", "encoding=6"} << "D" << "2,label_3,label_3,0x1234,10,0x0200,24,6\n";
        QTest::newRow("label multi-language") << "label" << QStringList{"multi-language=1"} << "D" << "";
        QTest::newRow("Statictext") << "Statictext" << QStringList{} << "" << "";
        // 16 + 3 unit characters; "int" is 130
        QTest::newRow("number") << "number" << QStringList{"writeAddr=0x0010", "byteLength=4", "parameterAddr=0x0300", "unitSymbol_length=3", "dataType=int"} << "D" << "2,number_3,number_3,0x0010,4,0x0300,19,0x82\n";
        QTest::newRow("name with comma") << "number" << QStringList{"name=a,b"} << "D" << "2,number_3,a,b,0x0000,2,0xFFFF,16,0x81\n";
        QTest::newRow("icon") << "icon" << QStringList{"writeAddr=0x0a0b", "parameterAddr=0x0100"} << "D" << "2,icon_3,icon_3,0x0A0B,2,0x0100,14\n";
        QTest::newRow("bitIcon") << "bitIcon" << QStringList{"writeAddr=0x00FF", "parameterAddr=0x1000"} << "D" << "2,bitIcon_3,bitIcon_3,0x00FF,12,0x1000,12\n";
        QTest::newRow("gif") << "gif" << QStringList{"WriteAddr=0x0020"} << "D" << "2,gif_3,gif_3,0x0020,2,0xFFFF,53\n";
        QTest::newRow("RTC") << "RTC" << QStringList{"parameterAddr=0x0040"} << "D" << "2,RTC_3,RTC_3, , ,0x0040,9\n";
        QTest::newRow("uitimer") << "uitimer" << QStringList{"countAddr=0x0002", "parameterAddr=0x0050", "presetAddr=0x0001", "controlAddr=0x0003"} << "D" << "2,uitimer_3,uitimer_3,0x0002,2,0x0050,48,0x0001,2,0x0003,2\n";
        QTest::newRow("qrcode") << "qrcode" << QStringList{"writeAddr=0x0100"} << "D" << "2,qrcode_3,qrcode_3,0x0100,64,0xFFFF,9\n";
        QTest::newRow("Clock") << "Clock" << QStringList{"parameterAddr=0x0060"} << "D" << "2,Clock_3,Clock_3, , ,0x0060,26\n";
        QTest::newRow("textroll") << "textroll" << QStringList{"writeAddr=0x0200", "parameterAddr=0x0070", "encoding=3"} << "D" << "2,textroll_3,textroll_3,0x0200,32,0x0070,28,3\n";
        // "bit5" is 69
        QTest::newRow("pngNumber") << "pngNumber" << QStringList{"writeAddr=0x0300", "parameterAddr=0x0080", "dataType=bit5"} << "D" << "2,pngNumber_3,pngNumber_3,0x0300,2,0x0080,14,0x45\n";
        QTest::newRow("wav") << "wav" << QStringList{} << "D" << "2,wav_3,wav_3, , ,0xFFFF,2\n";
        QTest::newRow("progress") << "progress" << QStringList{"writeAddr=0x0400", "parameterAddr=0x0090"} << "D" << "2,progress_3,progress_3,0x0400,2,0x0090,19\n";
        QTest::newRow("rProgress") << "rProgress" << QStringList{"writeAddr=0x0401", "parameterAddr=0x0091"} << "D" << "2,rProgress_3,rProgress_3,0x0401,2,0x0091,34\n";
        QTest::newRow("curve") << "curve" << QStringList{"parameterAddr=0x00A0"} << "D" << "2,curve_3,curve_3, , ,0x00A0,20\n";
        QTest::newRow("camera") << "camera" << QStringList{"writeAddr=0x0500", "parameterAddr=0x00B0"} << "D" << "2,camera_3,camera_3,0x0500,2,0x00B0,18\n";
        QTest::newRow("video") << "video" << QStringList{"parameterAddr=0x00C0"} << "D" << "2,video_3,video_3, , ,0x00C0,46\n";
        QTest::newRow("autoVar") << "autoVar" << QStringList{"presetAddr=0x0600", "parameterAddr=0x00D0"} << "D" << "2,autoVar_3,autoVar_3,0x0600,2,0x00D0,65\n";
        QTest::newRow("needle int") << "needle" << QStringList{"writeAddr=0x0700", "parameterAddr=0x00E0", "showNumber_numberAddr=0x0701", "showNumber_dataType=int"} << "D" << "2,needle_3,needle_3,0x0700,2,0x00E0,59,0x0701,4\n";
        QTest::newRow("needle uchar") << "needle" << QStringList{"showNumber_dataType=uchar"} << "D" << "2,needle_3,needle_3,0x0000,2,0xFFFF,59,0xFFFF,2\n";
        QTest::newRow("button") << "button" << QStringList{"returnValue=0x0005", "pageGoto=Page0001"} << "T" << "2,button_3,button_3, , ,0x0005,Page0001\n";
        QTest::newRow("button, no page") << "button" << QStringList{} << "T" << "2,button_3,button_3, , ,0x0020, \n";
        QTest::newRow("varAdj") << "varAdj" << QStringList{"writeAddr=0x0800", "dataType=uchar"} << "T" << "2,varAdj_3,varAdj_3,0x0800,2, , ,0x00\n";
        QTest::newRow("slider") << "slider" << QStringList{"writeAddr=0x0900"} << "T" << "2,slider_3,slider_3,0x0900,2, , \n";
        QTest::newRow("keypad") << "keypad" << QStringList{"writeAddr=0x0A00", "byteLength=4"} << "T" << "2,keypad_3,keypad_3,0x0A00,4, , \n";
        QTest::newRow("kbkey") << "kbkey" << QStringList{"keyCode=0x0031"} << "T" << "2,kbkey_3,kbkey_3, , ,0x0031, \n";
        QTest::newRow("slmenu") << "slmenu" << QStringList{"writeAddr=0x0B00"} << "T" << "2,slmenu_3,slmenu_3,0x0B00,2, , \n";
        QTest::newRow("rtouch") << "rtouch" << QStringList{"writeAddr=0x0C00"} << "T" << "2,rtouch_3,rtouch_3,0x0C00,2, , \n";
        QTest::newRow("enkeyB") << "enkeyB" << QStringList{"writeAddr=0x0D00"} << "T" << "2,enkeyB_3,enkeyB_3,0x0D00,16, , \n";
        QTest::newRow("cnkeyB") << "cnkeyB" << QStringList{"writeAddr=0x0E00", "wordLength=8"} << "T" << "2,cnkeyB_3,cnkeyB_3,0x0E00,8, , \n";
        QTest::newRow("batVar") << "batVar" << QStringList{"writeAddr1=0x0001", "writeAddr1_value=0x0002", "writeAddr8=0x0010", "writeAddr8_value=0x00FF"} << "T" << "2,batVar_3,batVar_3,0x0001,0x0002," + ffs + "0x0010,0x00FF, \n";
        QTest::newRow("popbox") << "popbox" << QStringList{} << "" << "";
        QTest::newRow("slidemenuPro") << "slidemenuPro" << QStringList{} << "" << "";
        // clang-format on
    }
    void listRows()
    {
        QFETCH(QString, kind);
        QFETCH(QStringList, fields);
        QFETCH(QString, list);
        const EditBuffer b = widget(kind, fields);
        QTEST(VariableLists::rowsOf(b, 2).join(QString()), "row");
        const KindExports *x = b.definition()->exports;
        QCOMPARE(x ? x->list : ExportList::None,
                 list == "D" ? ExportList::Display : list == "T" ? ExportList::Touch : ExportList::None);
    }

    // One row per address/value pair: mode 1 eight, mode 4 eight for each
    // of its three click groups; modes 2 and 3 one, at their writeAddr.
    void encoderRows()
    {
        QStringList four = VariableKinds::defaultEntry(4).chopped(1).split(',');
        four[3] = "0x0200", four[4] = "0x0002", four[22] = "0x0300", four[23] = "0x0003";
        const EditBuffer b = widget("encoder", {"item1=2,Disable,0x1234,0,100,1,+,Enable;", "item2=NULL",
                                                "item3=1,Disable,,0x0100,0x0001;", "item4=" + four.join(',') + ";"});
        const QStringList rows = VariableLists::rowsOf(b, 0);
        QCOMPARE(rows.size(), 1 + 8 + 24);
        QCOMPARE(rows[0], QString("0,encoder_3,encoder_3,0x1234,2, \n"));
        QCOMPARE(rows[1], QString("0,encoder_3,encoder_3,0x0100,2,0x0001, , \n"));
        QCOMPARE(rows[2], QString("0,encoder_3,encoder_3,0xFFFF,2,0xFFFF, , \n"));
        QCOMPARE(rows[9], QString("0,encoder_3,encoder_3,0x0200,2,0x0002, , \n"));
        QCOMPARE(rows[17], QString("0,encoder_3,encoder_3,0x0300,2,0x0003, , \n"));
    }

    void crc_data()
    {
        addColumns<QString, QByteArray>("hexText", "bytes");
        QTest::newRow("empty") << "" << QByteArray();
        QTest::newRow("check value") << "313233343536373839" << QByteArray("123456789");
        QTest::newRow("frame") << "10700000000A" << hex("10 70 00 00 00 0A");
        QTest::newRow("lower case") << "10ab" << hex("10 AB");
        QTest::newRow("bad low digit") << "1G02" << hex("00 02"); // the whole byte 0
        QTest::newRow("bad high digit") << "G102" << hex("01 02"); // only the high nibble
    }
    void crc()
    {
        QFETCH(QString, hexText);
        QFETCH(QByteArray, bytes);
        QCOMPARE(SerialCommands::Crc16Modbus(hexText), slowModbus(bytes));
        if (hexText.startsWith("3132"))
            QCOMPARE(SerialCommands::Crc16Modbus(hexText), quint16(0x4B37));
    }

    void lengthText_data()
    {
        addColumns<int, QString>("count", "text");
        QTest::newRow("7") << 7 << "07";
        QTest::newRow("10") << 10 << "0A";
        QTest::newRow("26") << 26 << "1a";
        QTest::newRow("256") << 256 << "100";
    }
    void lengthText()
    {
        QFETCH(int, count);
        QTEST(SerialCommands::lengthText(count), "text");
    }

    // Data by hand; Length = 1 (cmd) + 2 (addr) + data + 2 (CRC).
    void commandRow_data()
    {
        addColumns<QString, int, int, QString, QString>("value", "isNumeric", "typeOrMode", "length", "data");
        QTest::newRow("short 1,2") << "1,2" << 1 << 1 << "09" << "00010002";
        QTest::newRow("char -1") << "-1" << 1 << 0 << "07" << "00FF";
        QTest::newRow("char 200") << "200" << 1 << 0 << "07" << "0000";
        QTest::newRow("int -2") << "-2" << 1 << 2 << "09" << "FFFFFFFE";
        QTest::newRow("uchar 300") << "300" << 1 << 3 << "07" << "0000";
        QTest::newRow("uchar 255") << "255" << 1 << 3 << "07" << "00FF";
        QTest::newRow("longlong") << "1" << 1 << 6 << "0D" << "0000000000000001";
        QTest::newRow("no value") << "" << 1 << 1 << "05" << "";
        QTest::newRow("GBK AB") << "AB" << 0 << 1 << "09" << "41420000";
        QTest::newRow("GBK ABC") << "ABC" << 0 << 1 << "09" << "41424300";
        QTest::newRow("GBK zhong") << QString::fromUtf8("中") << 0 << 1 << "09" << "D6D00000"; // 中 is D6 D0
        QTest::newRow("UTF-8 zhong") << QString::fromUtf8("中") << 0 << 3 << "09" << "E4B8AD00";
        QTest::newRow("UTF-16 A") << "A" << 0 << 2 << "09" << "00410000";
        QTest::newRow("empty text") << "" << 0 << 3 << "07" << "0000";
    }
    void commandRow()
    {
        QFETCH(QString, value);
        QFETCH(int, isNumeric);
        QFETCH(int, typeOrMode);
        QFETCH(QString, length);
        QFETCH(QString, data);
        QCOMPARE(SerialCommands::MakeSerialCommandRow("Page0", "n", "w_0", value, "1234", isNumeric, typeOrMode),
                 "Page0,w_0,n,5AA5," + length + ",10,1234," + data + "," + crcText("101234" + data) + "\n");
    }

    // A project of one page with one button: the header and the sixteen
    // system rows. A second export rewrites the file of a first one that
    // had more rows.
    void serialList()
    {
        BuildDir p;
        p.blankPages(1);
        p.ctx.buildTime = QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7));
        ProjectSettings &s = p.ctx.settings;
        s.blon = "100", s.volume = "64", s.blsp = "5", s.kptm = "300", s.autoBL = true;
        // the int number sets 8 digits, the bit3 number keeps them; the
        // needle without a number address has one row
        p.page(0, {lineOf("number", {"writeAddr=0x1000", "dataType=int", "defaultNumber=5"}),
                   lineOf("number", {"writeAddr=0x1001", "dataType=bit3", "defaultNumber=7"}, 1),
                   lineOf("label", {"writeAddr=0x1002", "encoding=1", "defaultText=*Hex:4142", "multi-language=1"}),
                   lineOf("needle", {"writeAddr=0x1003", "defaultValue=9"}),
                   lineOf("uitimer", {"presetAddr=0x2000", "countAddr=0x2001", "controlAddr=0x2002", "controlAddr_value=1"}),
                   lineOf("gif", {"WriteAddr=0x1004", "defaultStatus=Stop"}),
                   lineOf("camera", {"writeAddr=0x1005", "defaultState=ON"})});
        SerialCommands::ExportSerialCommands(p.ctx);
        QStringList rows = TextFiles::splitPlain(readAll(p.ctx.path("SerialPortCommands.csv")));
        QStringList widgetRows;
        for (const QString &r : rows.mid(17))
            widgetRows << r.section(',', 0, 2) + ':' + r.section(',', 6, 7);
        QCOMPARE(widgetRows, QStringList({"Page0,number_0,number_0:1000,00000005", "Page0,number_1,number_1:1001,00000007",
                                          "Page0,label_0,label_0:1002,41420000", "Page0,needle_0,needle_0:1003,0009",
                                          "Page0,uitimer_0,preset_Addr:2000,0000", "Page0,uitimer_0,calc_Addr:2001,0000",
                                          "Page0,uitimer_0,ctrl_Addr:2002,0001", "Page0,gif_0,gif_0:1004,0001",
                                          "Page0,camera_0,camera_0:1005,0001"}));

        p.page(0, {lineOf("button", {})});
        SerialCommands::ExportSerialCommands(p.ctx);
        const QByteArray file = readAll(p.ctx.path("SerialPortCommands.csv"));
        QVERIFY(file.startsWith(SerialCommands::kHeader)); // no byte order mark
        rows = TextFiles::splitPlain(file).mid(1);
        // Year: 2026 without "20"; Brightness, Volume, Dimming level and
        // sleep time from the settings; Auto-dimming checked.
        const char *const system[][3] = {
            {"7000", "Switch Page", "0000"}, {"7001", "Brightness CTRL", "0064"}, {"7002", "Year", "001A"},
            {"7003", "Month", "0003"}, {"7004", "Day", "0004"}, {"7005", "Hour", "0005"}, {"7006", "Minute", "0006"},
            {"7007", "Second", "0007"}, {"7008", "Refresh time", "0000"}, {"700A", "Play music", "0000"},
            {"700B", "Volume CTRL", "0040"}, {"700D", "Open pop_window", "0000"}, {"700E", "Auto-dimming", "0001"},
            {"700F", "Dimming level", "0005"}, {"7010", "Time to enter sleep", "012C"},
            {"703F", "Multi-language", "0000"}};
        QCOMPARE(rows.size(), 16);
        for (int i = 0; i < 16; ++i) {
            const QString body = QString("10") + system[i][0] + system[i][2];
            QCOMPARE(rows[i], QString("-,SystemFunction,%1,5AA5,07,10,%2,%3,%4")
                                  .arg(system[i][1], system[i][0], system[i][2], crcText(body)));
        }
        QVERIFY(p.ctx.buildLog.contains("The serial port command was successfully generated!"));
    }

    // Both lists: rows of a page in the order of its lines, display rows
    // and touch rows apart, PageID the list position; a page whose file is
    // missing gives none. A second export rewrites both files.
    void variableLists()
    {
        BuildDir p;
        p.blankPages(3);
        p.page(1, {lineOf("slider", {"writeAddr=0x0010"}), lineOf("progress", {"writeAddr=0x0011"}),
                   lineOf("button", {"returnValue=0x0001"})});
        p.page(2, {"Page:x;", lineOf("rtouch", {"writeAddr=0x0012"})});
        VariableLists::ExportVariableCsv(p.ctx);
        QCOMPARE(readAll(p.ctx.path("DisplayWidget.csv")),
                 QByteArray("PageID,WidgetName,Name    ,WriteAddr,Length,ParameterAddr,Length\n"
                            "1,progress_0,progress_0,0x0011,2,0xFFFF,19\n"));
        QCOMPARE(readAll(p.ctx.path("TouchWidget.csv")),
                 QByteArray("PageID,WidgetName,Name    ,WriteAddr,Length,\n"
                            "1,slider_0,slider_0,0x0010,2, , \n1,button_0,button_0, , ,0x0001, \n"
                            "2,rtouch_0,rtouch_0,0x0012,2, , \n"));
        QVERIFY(p.ctx.buildLog.contains("Can't open this file:" + p.ctx.path("Plugin/Page0000.cfg")));

        p.page(1, {lineOf("icon", {"writeAddr=0x0020"})});
        p.ctx.pageLines.removeLast();
        VariableLists::ExportVariableCsv(p.ctx);
        QCOMPARE(readAll(p.ctx.path("DisplayWidget.csv")),
                 QByteArray(VariableLists::kDisplayHeader) + "1,icon_0,icon_0,0x0020,2,0xFFFF,14\n");
        QCOMPARE(readAll(p.ctx.path("TouchWidget.csv")), QByteArray(VariableLists::kTouchHeader));
    }

    // Equal names on two pages differ by the page index; a page of no
    // addressed widgets has its comment line only.
    void header()
    {
        BuildDir p;
        p.ctx.pageLines = QStringList{"Page0000:RGBColor(0,0,0);Home;RGBColor(0,0,0);",
                                      "Page0001:RGBColor(0,0,0);Setup;RGBColor(0,0,0);",
                                      "Page0002:RGBColor(0,0,0);Empty;RGBColor(0,0,0);"};
        p.put("proj.uiprj", "");
        p.page(0, {lineOf("label", {"name=title", "writeAddr=0x1000"}), lineOf("button", {}),
                   lineOf("autoVar", {"presetAddr=0x0A0B"})});
        p.page(1, {lineOf("slider", {"name=title", "writeAddr=0x2000"})});
        p.page(2, {lineOf("button", {}), lineOf("RTC", {})});
        HeaderExport::ExportHeader(p.ctx);
        QCOMPARE(readAll(p.ctx.path("UI_proj.h")), QByteArray("//PAGE:Home\n"
                                                              "#define  _LABEL_PAGE0_title         0x1000\n"
                                                              "#define  _AUTOVAR_PAGE0_autoVar_0         0x0A0B\n"
                                                              "//PAGE:Setup\n"
                                                              "#define  _SLIDER_PAGE1_title         0x2000\n"
                                                              "//PAGE:Empty\n"));
    }

    // A build writes all four files; the command list's date is the build's.
    void build()
    {
        BuildDir p;
        AppPaths::setAppDirOverride(p.dir.path()); // currentbin_path.ini
        p.put("proj.uiprj", "");
        p.page(0, {lineOf("slider", {"writeAddr=0x0030"})});
        MakeBin driver;
        installStandardBuild(driver);
        BuildOptions options;
        options.fixedTime = QDateTime(QDate(2031, 12, 30), QTime(23, 59, 58));
        driver.run({p.ctx.path("proj.uiprj"), p.ctx.projectDir, ProjectSettings(), {PageList::blankLine(0)}}, options);
        const QStringList rows = TextFiles::splitPlain(readAll(p.ctx.path("SerialPortCommands.csv")));
        QCOMPARE(rows.value(3).section(',', 7, 7) + rows.value(17).section(',', 6, 7), QString("001F0030,0000"));
        QVERIFY(readAll(p.ctx.path("TouchWidget.csv")).endsWith("0,slider_0,slider_0,0x0030,2, , \n"));
        QVERIFY(readAll(p.ctx.path("UI_proj.h")).endsWith("#define  _SLIDER_PAGE0_slider_0         0x0030\n"));
    }

    // No pages: the lists and the command list hold their headers only,
    // no header file is written, and the log says why.
    void noPages()
    {
        BuildDir p;
        p.put("proj.uiprj", "");
        VariableLists::ExportVariableCsv(p.ctx);
        SerialCommands::ExportSerialCommands(p.ctx);
        HeaderExport::ExportHeader(p.ctx);
        QCOMPARE(readAll(p.ctx.path("TouchWidget.csv")), QByteArray(VariableLists::kTouchHeader));
        QCOMPARE(readAll(p.ctx.path("DisplayWidget.csv")), QByteArray(VariableLists::kDisplayHeader));
        QCOMPARE(readAll(p.ctx.path("SerialPortCommands.csv")), QByteArray(SerialCommands::kHeader));
        QVERIFY(!QFileInfo::exists(p.ctx.path("UI_proj.h")));
        QCOMPARE(p.ctx.buildLog, QStringList({"There aren't any variable to bin!", "There aren't any variable to bin!",
                                              "There aren't any page to bin!"}));
    }
};

QTEST_MAIN(TestHostLists)
#include "tst_host_lists.moc"
