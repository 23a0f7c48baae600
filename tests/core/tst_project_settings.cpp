// The "[INFO]" settings file: the exact text written, the reader's filters,
// ranges and chip rules, the version gate and the canvas size.

#include "CoreTestSupport.h"
#include "project/ProjectSettings.h"

using namespace core;

namespace {

const QDateTime kStamp(QDate(2024, 3, 9), QTime(14, 5, 7));

ProjectSettings fresh() // fixed timestamp, so that two writes compare
{
    ProjectSettings s;
    s.compileDateTime = kStamp;
    return s;
}

ProjectSettings readText(const QByteArray &body, ProjectSettings s = fresh())
{
    s.readIni(QByteArray("[INFO]\n") + body, 1);
    return s;
}

QByteArray writtenLine(const ProjectSettings &s, const QByteArray &key)
{
    for (const QByteArray &l : s.toIni().split('\n'))
        if (l.startsWith(key))
            return l;
    return QByteArray("<no line for ") + key + '>';
}

// A project that differs from the defaults in nearly every field.
ProjectSettings populated(int chip)
{
    ProjectSettings s = fresh();
    s.applyChip(chip);
    using Text = std::pair<QString *, const char *>;
    for (const Text &t : {Text{&s.userId, "0x1A2B3C4D"}, {&s.userVer, "V1.07"}, {&s.startBytes, "0x5A,0xA5,0x10"},
                          {&s.devAddr, "0x7E"}, {&s.devNum, "12"}, {&s.xsize, "1024"}, {&s.ysize, "600"},
                          {&s.blon, "40"}, {&s.blsp, "10"}, {&s.kptm, "30"}, {&s.volume, "16"}, {&s.languageNum, "3"},
                          {&s.geData, "5"}, {&s.tft.vbpd, s.tftCleared ? "" : "23"}, {&s.tft.hspw, s.tftCleared ? "" : "48"}})
        *t.first = QString::fromLatin1(t.second);
    s.tft.pclk = false;
    s.tft.bgr = !s.tftCleared; // chip 6: the TFT fields stay cleared
    s.colorDepth = chip == 3 || chip == 5;
    if (chip == 3)
        s.setFlashTypeIndex(0);
    s.baudrate = 9;
    s.eoCheck = 2;
    s.rotate = 3;
    s.flashSize = 6;
    s.startPage = 2;
    s.needleDataType = 1;
    s.modbusMaster = s.noFeedBack = s.noCrc = true;
    s.autoBL = s.keyBeep = s.initVar = s.gbkCode = s.byteSwap = s.aRgbPng = s.compilationTimeFixed = true;
    s.pageImageZip = chip == 4 || chip >= 6;
    s.compileDateTime = QDateTime(QDate(2021, 12, 31), QTime(23, 59, 58));
    return s;
}

} // namespace

class TestProjectSettings : public QObject
{
    Q_OBJECT
private slots:
    void writtenText()
    {
        // Every key in its order, with or without the blank behind the
        // colon as the file has always carried it; BOM; line feeds only.
        const QByteArray expected =
            "\xEF\xBB\xBF[INFO]\n"
            "UserID: \nUserVer: \nSupplierID: 0x5E21B7C4\nSupplierVer: V3.20\n"
            "Baudrate: 4\nEOCheck: 0\nModbus: 0\nNoFeedBack: 0\nNoCRC: 0\n"
            "StartByte: 0x5A,0xA5\nDevAddr: 0x01\nDevNum: \nPanelType: 3\nXSIZE: \nYSIZE: \n"
            "VBPD: 20\nVFPD: 12\nVSPW: 3\nHBPD: 140\nHFPD: 160\nHSPW: 20\n"
            "PCLKRISING: 1\nHSYNCPolarity: 1\nVSYNCPolarity: 1\nDEPolarity: 1\nRGBSequence: 0\n"
            "ColorDepth: 0\nRotate: 0\n"
            "FlashType: 0\n" // combo index 1 (NorFlash) is written as 0
            "FlashSize: 3\nAutoBL: 0\nBLON:\nBLSP:\nKPTM:\nKeyBeep: 0\nInitVar: 0\n"
            "StartPage:0\nVolume:\nGBKCode: 0\nPIMGZip: 0\nNDLDType:0\nLanguageNum:\n"
            "ByteSwap: 0\nGeData:\naRGB_Png: 0\nCompilation_Time_Index: 0\n"
            "compileDateTime:2024-03-09 14:05:07\n";
        QCOMPARE(fresh().toIni(), expected);
        // chip 6 has no TFT timing: fields empty, checks off
        ProjectSettings s = fresh();
        s.applyChip(6);
        QVERIFY(s.toIni().contains("\nVBPD: \nVFPD: \nVSPW: \nHBPD: \nHFPD: \nHSPW: \nPCLKRISING: 0\nHSYNCPolarity: 0\n"
                                   "VSYNCPolarity: 0\nDEPolarity: 0\nRGBSequence: 0\n"));
    }

    void roundTripIsByteIdentical_data()
    {
        addColumns<int, bool>("chip", "defaults");
        QTest::newRow("defaults") << 3 << true;
        for (int chip : {0, 3, 4, 5, 6, 8, 10})
            QTest::addRow("populated chip %d", chip) << chip << false;
    }
    void roundTripIsByteIdentical()
    {
        QFETCH(int, chip);
        QFETCH(bool, defaults);
        const ProjectSettings source = defaults ? fresh() : populated(chip);
        const QByteArray first = source.toIni();

        ProjectSettings back = fresh();
        back.compileDateTime = QDateTime(QDate(2000, 1, 1), QTime(0, 0)); // must come from the file
        const ReadReport report = back.readIni(first, 5);
        QVERIFY(!report.startPageOverflow);
        QCOMPARE(back.toIni(), first);

        // the fields themselves, not only their texts
        QCOMPARE(back.flashTypeIndex, source.flashTypeIndex);
        QCOMPARE(back.colorDepth, source.colorDepth);
        QVERIFY(back.tft == source.tft);

        // as if written by hand: keys reversed, no blank behind a colon, CR LF, leading blanks
        QByteArray hand = "[INFO]\r\n";
        const QList<QByteArray> lines = first.split('\n');
        for (int i = lines.size() - 2; i > 0; --i) // between "[INFO]" and the final line feed
            hand += (i % 2 ? "  " : "") + QByteArray(lines[i]).replace(": ", ":") + "\r\n";
        back = fresh();
        back.readIni(hand, 5);
        QCOMPARE(back.toIni(), first);
    }

    // file text -> the line written back
    void readingRules_data()
    {
        addColumns<QByteArray, QByteArray>("input", "expected");
        const auto row = [](const char *name, const QByteArray &input, const QByteArray &expected) {
            QTest::newRow(name) << input << expected;
        };
        // index ranges (the round trips carry the upper ends)
        row("Baudrate 10 -> 115200", "Baudrate: 10", "Baudrate: 4");
        row("PanelType 11 -> 3", "PanelType: 11", "PanelType: 3");
        row("FlashSize 9 -> 0, not the default 3", "FlashSize: 9", "FlashSize: 0");
        row("FlashSize 8 kept", "FlashSize: 8", "FlashSize: 8");
        // checks: only 1 checks
        row("Modbus 2 unchecks", "Modbus: 2", "Modbus: 0");
        row("KeyBeep ' 1 ' checks", "KeyBeep:  1 ", "KeyBeep: 1");
        // hexadecimal: digits behind the first x, DevAddr written with two digits
        row("DevAddr 0Xa -> 0x0A", "DevAddr: 0Xa", "DevAddr: 0x0A");
        row("DevAddr without x reads 0", "DevAddr: 15", "DevAddr: 0x00");
        row("DevAddr junk filtered", "DevAddr: 0x 1g2", "DevAddr: 0x12");
        // UserID: upper case hexadecimal, at most eight digits ("0x55" before)
        row("UserID cut, upper case", "UserID: 0xab123456789", "UserID: 0xAB123456");
        row("UserID without x reads 0", "UserID: 1234", "UserID: 0x0");
        row("UserID empty clears", "UserID: ", "UserID: ");
        // decimal text: digits only
        row("XSIZE digits only", "XSIZE: 8a0 0px", "XSIZE: 800");
        // text: bytes above 32 and below 0x80
        row("StartByte comment", "StartByte: 0x5A,0xA5 // header", "StartByte: 0x5A,0xA5");
        row("UserVer blanks and high bytes dropped", "UserVer: V 1.0\t2\xC3\xA9x", "UserVer: V1.02x");
        // the timestamp: an unreadable one keeps the one stored
        row("compileDateTime, blank", "compileDateTime: 2019-11-30 23:00:01", "compileDateTime:2019-11-30 23:00:01");
        row("compileDateTime unreadable", "compileDateTime:yesterday", "compileDateTime:2024-03-09 14:05:07");
        // never read from the file
        row("SupplierVer not read", "SupplierVer: V3.00", "SupplierVer: V3.20");
        // values out of range leave the field (1 and "4" before)
        row("NDLDType 2 ignored", "NDLDType:2", "NDLDType:1");
        row("LanguageNum 33 ignored", "LanguageNum:33", "LanguageNum:4");
        row("LanguageNum 32 taken", "LanguageNum:32", "LanguageNum:32");
        row("missing keys leave their fields", "XSIZE: 1", "LanguageNum:4");

        // chip rules, whatever the key order: RGB888 only on chips 3 and 5
        row("chip 6 back to RGB565", "PanelType: 6\nColorDepth: 1", "ColorDepth: 0");
        row("any non-zero is RGB888", "PanelType: 3\nColorDepth: 7", "ColorDepth: 1");
        row("chip after depth in file", "ColorDepth: 1\nPanelType: 6", "ColorDepth: 0");
        // the flash type is read at chip 3 only; chip 4 keeps its remembered one
        row("chip 3, key first", "FlashType: 2\nPanelType: 3", "FlashType: 2");
        row("chip 4 ignores file", "PanelType: 4\nFlashType: 2", "FlashType: 0");
        row("chip 6 blank", "PanelType: 6\nFlashType: 1", "FlashType: 2");
        // page image compression exists on chips 4 and 6 to 10; the zip key first
        for (int chip = 0; chip < ProjectSettings::ChipCount; ++chip)
            QTest::addRow("PIMGZip on chip %d", chip)
                << "PIMGZip: 1\nPanelType: " + QByteArray::number(chip)
                << QByteArray(chip == 4 || chip >= 6 ? "PIMGZip: 1" : "PIMGZip: 0");
    }
    void readingRules()
    {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, expected);
        ProjectSettings before = fresh();
        before.userId = QStringLiteral("0x55");
        before.needleDataType = 1;
        before.languageNum = QStringLiteral("4");
        const ProjectSettings s = readText(input + '\n', before);
        QCOMPARE(writtenLine(s, expected.left(expected.indexOf(':') + 1)), expected);
    }

    void valueLimitedTo1023Characters()
    {
        const auto userVer = [](const QByteArray &value) { return readText("UserVer: " + value + '\n').userVer; };
        QCOMPARE(userVer(QByteArray(1024, 'a')), QString(1023, QLatin1Char('a')));
        // blanks count towards the limit though the text filter drops them
        QCOMPARE(userVer(QByteArray(3, ' ') + QByteArray(1021, 'a')), QString(1020, QLatin1Char('a')));
        // a slash after the limit does not matter, one before it cuts
        QCOMPARE(userVer(QByteArray(1030, 'b') + "/c"), QString(1023, QLatin1Char('b')));
        QCOMPARE(userVer(QByteArray(10, 'b') + "/" + QByteArray(1100, 'a')), QString(10, QLatin1Char('b')));
    }

    // (the other effects of a chip change: tst_project_setting_dialog)
    void flashTypeRememberedForChips3And4()
    {
        ProjectSettings s = fresh();
        s.applyChip(3);
        s.setFlashTypeIndex(0);
        s.applyChip(4);
        QCOMPARE(s.flashTypeIndex, 1); // chip 4 starts at 1
        s.setFlashTypeIndex(2);
        s.applyChip(6);
        QCOMPARE(s.flashTypeIndex, 2);
        s.applyChip(3);
        QCOMPARE(s.flashTypeIndex, 0);
        s.applyChip(4);
        QCOMPARE(s.flashTypeIndex, 2);
    }

    void startPageAgainstPageCount()
    {
        // three pages: 2 is taken, 4 overflows to 0 (1 was held before)
        for (int value : {2, 4}) {
            ProjectSettings s = fresh();
            s.startPage = 1;
            const ReadReport r = s.readIni("[INFO]\nStartPage:" + QByteArray::number(value) + '\n', 3);
            QCOMPARE(r.startPageOverflow, value == 4);
            QCOMPARE(s.startPage, value == 4 ? 0 : 2);
        }
    }

    void canvasSizeFollowsRotation()
    {
        // X wide and Y high; rotations 1 and 3 stand the canvas upright
        const QSize sizes[] = {{800, 480}, {480, 800}, {800, 480}, {480, 800}};
        for (int r = 0; r < 4; ++r)
            QCOMPARE(readText("XSIZE: 800\nYSIZE: 480\nRotate: " + QByteArray::number(r) + '\n').canvasSize(),
                     sizes[r]);
    }

    void versionGate()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("demo.ini"));
        const VersionGate none = ProjectSettings::checkVersion(path);
        QVERIFY(!none.iniFound && !none.accepted && none.number == 0);
        const auto gate = [&](const QByteArray &ini) {
            QFile f(path);
            if (!f.open(QIODevice::WriteOnly) || f.write(ini) != ini.size())
                return QStringLiteral("<not written>");
            f.close();
            const VersionGate g = ProjectSettings::checkVersion(path);
            return QStringLiteral("%1 %2 %3").arg(g.iniFound && g.accepted ? "opens" : "refused", g.valueText).arg(g.number);
        };
        QCOMPARE(gate("[INFO]\nSupplierVer: V3.21\n"), QStringLiteral("refused V3.21 321"));
        QCOMPARE(gate("[INFO]\nSupplierVer: V1.00\n"), QStringLiteral("opens V1.00 100")); // of the export
        QCOMPARE(gate("[INFO]\nBaudrate: 4\nSupplierVer:V4.00\n"), QStringLiteral("refused V4.00 400"));
        QCOMPARE(gate("[INFO]\nSupplierVer: V3.20 / was V3.30\n"), QStringLiteral("opens V3.20 320"));
        QCOMPARE(gate(fresh().toIni()), QStringLiteral("opens V3.20 320"));
    }
};

QTEST_GUILESS_MAIN(TestProjectSettings)
#include "tst_project_settings.moc"
