// The "[INFO]" settings file of a project: the exact text the writer emits,
// the reader's filters and range rules, the chip rules applied while
// reading, the version gate and the canvas size.

#include "project/ProjectSettings.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

const QDateTime kStamp(QDate(2024, 3, 9), QTime(14, 5, 7));

// A model with a fixed timestamp, so that two writes can be compared.
ProjectSettings fresh()
{
    ProjectSettings s;
    s.compileDateTime = kStamp;
    return s;
}

// Reads a settings text (the "[INFO]" line is added) into the model.
ProjectSettings readText(const QByteArray &body, ProjectSettings s = fresh())
{
    s.readIni(QByteArray("[INFO]\n") + body, 1);
    return s;
}

// The line of the written file that starts with the key, without its line feed.
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
    s.userId = QStringLiteral("0x1A2B3C4D");
    s.userVer = QStringLiteral("V1.07");
    s.baudrate = 9;
    s.eoCheck = 2;
    s.modbusMaster = s.noFeedBack = s.noCrc = true;
    s.startBytes = QStringLiteral("0x5A,0xA5,0x10");
    s.devAddr = QStringLiteral("0x7E");
    s.devNum = QStringLiteral("12");
    s.xsize = QStringLiteral("1024");
    s.ysize = QStringLiteral("600");
    if (!s.tftCleared) {
        s.tft.vbpd = QStringLiteral("23");
        s.tft.hspw = QStringLiteral("48");
        s.tft.pclk = false;
        s.tft.bgr = true;
    }
    if (chip == 3 || chip == 5)
        s.colorDepth = 1;
    s.rotate = 3;
    if (chip == 3)
        s.setFlashTypeIndex(0);
    s.flashSize = 6;
    s.autoBL = s.keyBeep = s.initVar = s.gbkCode = s.byteSwap = s.aRgbPng = s.compilationTimeFixed = true;
    s.blon = QStringLiteral("40");
    s.blsp = QStringLiteral("10");
    s.kptm = QStringLiteral("30");
    s.startPage = 2;
    s.volume = QStringLiteral("16");
    s.pageImageZip = chip == 4 || chip >= 6;
    s.needleDataType = 1;
    s.languageNum = QStringLiteral("3");
    s.geData = QStringLiteral("5");
    s.compileDateTime = QDateTime(QDate(2021, 12, 31), QTime(23, 59, 58));
    return s;
}

} // namespace

class TestProjectSettings : public QObject
{
    Q_OBJECT
private slots:
    // --- the writer and round trips ---------------------------------------------

    void defaultFileIsExactText()
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
    }

    void roundTripIsByteIdentical_data()
    {
        QTest::addColumn<int>("chip");
        QTest::addColumn<bool>("defaults");
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

        // and the fields themselves, not only their texts
        QCOMPARE(back.panelType, source.panelType);
        QCOMPARE(back.flashTypeIndex, source.flashTypeIndex);
        QCOMPARE(back.colorDepth, source.colorDepth);
        QCOMPARE(back.pageImageZip, source.pageImageZip);
        QCOMPARE(back.startPage, source.startPage);
        QCOMPARE(back.compileDateTime, source.compileDateTime);
        QVERIFY(back.tft == source.tft);
    }

    void keysInAnyOrderWithoutBlanks()
    {
        // A hand-written file: keys reversed, no blank behind any colon,
        // carriage returns, leading blanks: it reads as the written one.
        const QByteArray written = populated(3).toIni();
        QList<QByteArray> lines = written.mid(3).split('\n');
        lines.removeAll(QByteArray());
        QCOMPARE(lines.takeFirst(), QByteArray("[INFO]"));
        QByteArray hand = "[INFO]\r\n";
        for (int i = lines.size() - 1; i >= 0; --i)
            hand += (i % 2 ? "  " : "") + QByteArray(lines[i]).replace(": ", ":") + "\r\n";
        QVERIFY(!hand.contains(": "));

        ProjectSettings back = fresh();
        back.readIni(hand, 5);
        QCOMPARE(back.toIni(), written);
    }

    // --- reading rules: file text -> the line written back ----------------------

    void readingRules_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const QByteArray &input, const QByteArray &expected) {
            QTest::newRow(name) << input << expected;
        };
        // index ranges (the round trips carry Baudrate 9, PanelType 10, Rotate 3)
        row("Baudrate 10 -> 115200", "Baudrate: 10", "Baudrate: 4");
        row("EOCheck 10 -> 0", "EOCheck: 10", "EOCheck: 0");
        row("PanelType 11 -> 3", "PanelType: 11", "PanelType: 3");
        row("Rotate 4 -> 0", "Rotate: 4", "Rotate: 0");
        row("FlashSize 9 -> 0, not the default 3", "FlashSize: 9", "FlashSize: 0");
        row("FlashSize 8 kept", "FlashSize: 8", "FlashSize: 8");
        // checks: only 1 checks
        row("Modbus 2 unchecks", "Modbus: 2", "Modbus: 0");
        row("PCLKRISING 11 unchecks", "PCLKRISING: 11", "PCLKRISING: 0");
        row("KeyBeep ' 1 ' checks", "KeyBeep:  1 ", "KeyBeep: 1");
        row("GBKCode no blank", "GBKCode:1", "GBKCode: 1");
        row("GBKCode 2 unchecks", "GBKCode: 2", "GBKCode: 0");
        // hexadecimal: digits behind the first x, DevAddr written with two digits
        row("DevAddr 0x5 -> 0x05", "DevAddr: 0x5", "DevAddr: 0x05");
        row("DevAddr 0Xab -> 0xAB", "DevAddr: 0Xab", "DevAddr: 0xAB");
        row("DevAddr without x reads 0", "DevAddr: 15", "DevAddr: 0x00");
        row("DevAddr junk filtered", "DevAddr: 0x 1g2", "DevAddr: 0x12");
        row("DevAddr comment", "DevAddr: 0x1F/0x33", "DevAddr: 0x1F");
        // UserID: hexadecimal written back upper case, at most eight digits;
        // the model held "0x55" before
        row("UserID with x", "UserID: 0xab12", "UserID: 0xAB12");
        row("UserID upper X, eight digits", "UserID: 0X1A2B3C4D", "UserID: 0x1A2B3C4D");
        row("UserID more than eight digits", "UserID: 0x123456789", "UserID: 0x12345678");
        row("UserID without x reads 0", "UserID: 1234", "UserID: 0x0");
        row("UserID empty clears", "UserID: ", "UserID: ");
        // decimal text: digits only
        row("XSIZE digits only", "XSIZE: 8a0 0px", "XSIZE: 800");
        row("Volume only a comment", "Volume:/ 16", "Volume:");
        // text: bytes above 32 and below 0x80
        row("StartByte comment", "StartByte: 0x5A,0xA5 // header", "StartByte: 0x5A,0xA5");
        row("UserVer blanks dropped", "UserVer: V 1.0\t2", "UserVer: V1.02");
        row("UserVer high bytes dropped", "UserVer: V1\xC3\xA9x", "UserVer: V1x");
        // the timestamp, with or without a blank behind the colon; an
        // unreadable one keeps the one stored
        row("compileDateTime blank behind colon", "compileDateTime: 2019-11-30 23:00:01",
            "compileDateTime:2019-11-30 23:00:01");
        row("compileDateTime unreadable", "compileDateTime:yesterday", "compileDateTime:2024-03-09 14:05:07");
        // never read from the file
        row("SupplierID not read", "SupplierID: 0x12345678", "SupplierID: 0x5E21B7C4");
        row("SupplierVer not read", "SupplierVer: V3.00", "SupplierVer: V3.20");
        // values out of range leave the field (1 and "4" before)
        row("NDLDType 2 ignored", "NDLDType:2", "NDLDType:1");
        row("NDLDType 0 taken", "NDLDType:0", "NDLDType:0");
        row("LanguageNum 33 ignored", "LanguageNum:33", "LanguageNum:4");
        row("LanguageNum 32 taken", "LanguageNum:32", "LanguageNum:32");

        // chip rules: RGB888 only on chips 3 and 5, whatever the key order
        row("chip 3 keeps RGB888", "PanelType: 3\nColorDepth: 1", "ColorDepth: 1");
        row("chip 5 keeps RGB888", "PanelType: 5\nColorDepth: 1", "ColorDepth: 1");
        row("chip 6 back to RGB565", "PanelType: 6\nColorDepth: 1", "ColorDepth: 0");
        row("chip 4 back to RGB565", "PanelType: 4\nColorDepth: 1", "ColorDepth: 0");
        row("chip 0 back to RGB565", "PanelType: 0\nColorDepth: 1", "ColorDepth: 0");
        row("any non-zero is RGB888", "PanelType: 3\nColorDepth: 7", "ColorDepth: 1");
        row("chip after depth in file", "ColorDepth: 1\nPanelType: 6", "ColorDepth: 0");
        // the flash type is read at chip 3 only (file 1 Nand, 0 Nor, 2 blank)
        row("chip 3, 2 -> blank", "PanelType: 3\nFlashType: 2", "FlashType: 2");
        row("chip 3, 1 -> NandFlash", "PanelType: 3\nFlashType: 1", "FlashType: 1");
        row("chip 3, 0 -> NorFlash", "PanelType: 3\nFlashType: 0", "FlashType: 0");
        row("chip 3, key first", "FlashType: 2\nPanelType: 3", "FlashType: 2");
        // chip 4: the remembered value (starts at NorFlash), the file is not applied
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
        // fields a file may leave alone hold values other than the defaults
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
        const QString a1023(1023, QLatin1Char('a'));
        QCOMPARE(userVer(QByteArray(1023, 'a')), a1023);
        QCOMPARE(userVer(QByteArray(1024, 'a')), a1023);
        // blanks count towards the limit though the text filter drops them
        QCOMPARE(userVer(QByteArray(3, ' ') + QByteArray(1021, 'a')), QString(1020, QLatin1Char('a')));
        // a slash after the limit does not matter, one before it cuts
        QCOMPARE(userVer(QByteArray(1030, 'b') + "/c"), QString(1023, QLatin1Char('b')));
        QCOMPARE(userVer(QByteArray(10, 'b') + "/" + QByteArray(1100, 'a')), QString(10, QLatin1Char('b')));
    }

    void missingKeyLeavesField()
    {
        ProjectSettings s = fresh();
        s.xsize = QStringLiteral("1280");
        s.baudrate = 7;
        s.gbkCode = true;
        s.languageNum = QStringLiteral("6");
        s.readIni("[INFO]\nYSIZE: 720\n", 1);
        QCOMPARE(s.xsize, QStringLiteral("1280"));
        QCOMPARE(s.ysize, QStringLiteral("720"));
        QCOMPARE(s.baudrate, 7);
        QVERIFY(s.gbkCode);
        QCOMPARE(s.languageNum, QStringLiteral("6"));
        QCOMPARE(s.compileDateTime, kStamp);
    }

    // --- chip changes -------------------------------------------------------------

    void clearedTftFieldsOfChip6()
    {
        // Chip 6 has no TFT timing: the fields are empty and the checks off,
        // and that is what is written and read again.
        ProjectSettings s = fresh();
        s.applyChip(6);
        const QByteArray ini = s.toIni();
        QVERIFY(ini.contains("\nVBPD: \nVFPD: \nVSPW: \nHBPD: \nHFPD: \nHSPW: \n"));
        QVERIFY(ini.contains("\nPCLKRISING: 0\nHSYNCPolarity: 0\nVSYNCPolarity: 0\nDEPolarity: 0\nRGBSequence: 0\n"));
        ProjectSettings back = fresh();
        back.readIni(ini, 1);
        QVERIFY(back.tftCleared);
        QCOMPARE(back.toIni(), ini);
    }

    // (what a chip change does to the other fields is checked through the
    // settings dialog, tst_project_setting_dialog)
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

    // --- start page and canvas -----------------------------------------------------

    void startPageAgainstPageCount_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("startPage");
        QTest::addColumn<bool>("overflow");
        // three pages
        QTest::newRow("within") << 2 << 2 << false;
        QTest::newRow("one above the count") << 4 << 0 << true;
    }
    void startPageAgainstPageCount()
    {
        QFETCH(int, value);
        QFETCH(int, startPage);
        QFETCH(bool, overflow);
        ProjectSettings s = fresh();
        s.startPage = 1; // from the project opened before
        const ReadReport r = s.readIni("[INFO]\nStartPage:" + QByteArray::number(value) + '\n', 3);
        QCOMPARE(r.startPageOverflow, overflow);
        QCOMPARE(s.startPage, startPage);
    }

    void canvasSizeFollowsRotation()
    {
        // X wide and Y high; rotations 1 and 3 stand the canvas upright
        const QSize sizes[] = {{800, 480}, {480, 800}, {800, 480}, {480, 800}};
        for (int r = 0; r < 4; ++r)
            QCOMPARE(readText("XSIZE: 800\nYSIZE: 480\nRotate: " + QByteArray::number(r) + '\n').canvasSize(),
                     sizes[r]);
    }

    // --- the version gate -----------------------------------------------------

    void versionGate_data()
    {
        QTest::addColumn<QByteArray>("ini"); // null: there is no file
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("valueText");
        QTest::addColumn<int>("number");
        QTest::newRow("V3.20 opens") << QByteArray("[INFO]\nSupplierVer: V3.20\n") << true << "V3.20" << 320;
        QTest::newRow("V3.21 refused") << QByteArray("[INFO]\nSupplierVer: V3.21\n") << false << "V3.21" << 321;
        QTest::newRow("V1.00 of the export") << QByteArray("[INFO]\nSupplierVer: V1.00\n") << true << "V1.00" << 100;
        QTest::newRow("no blank, later key")
            << QByteArray("[INFO]\nBaudrate: 4\nSupplierVer:V4.00\n") << false << "V4.00" << 400;
        QTest::newRow("comment") << QByteArray("[INFO]\nSupplierVer: V3.20 / was V3.30\n") << true << "V3.20" << 320;
        QTest::newRow("written file") << fresh().toIni() << true << "V3.20" << 320;
        QTest::newRow("no file") << QByteArray() << false << QString() << 0;
    }
    void versionGate()
    {
        QFETCH(QByteArray, ini);
        QFETCH(bool, accepted);
        QFETCH(QString, valueText);
        QFETCH(int, number);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("demo.ini"));
        if (!ini.isNull()) {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly) && f.write(ini) == ini.size());
        }
        const VersionGate gate = ProjectSettings::checkVersion(path);
        QCOMPARE(gate.iniFound, !ini.isNull());
        QCOMPARE(gate.accepted, accepted);
        QCOMPARE(gate.valueText, valueText);
        QCOMPARE(gate.number, number);
    }

    void versionRefusalNamesV310InBothLanguages()
    {
        // The gate compares with 320 while the text names V3.10.
        QCOMPARE(ProjectSettings::versionRefusedText(QStringLiteral("V3.21"), 0),
                 QStringLiteral("The compiled version(V3.21) of this project is larger than the current "
                                "software version(V3.10), so it cannot be opened. Replace the software of "
                                "the corresponding version."));
        QCOMPARE(ProjectSettings::versionRefusedText(QStringLiteral("V3.21"), 1),
                 QString::fromUtf8("此工程编译版本（V3.21）大于当前软件版本（V3.10），无法打开，请更换对应版本软件。"));
    }
};

QTEST_GUILESS_MAIN(TestProjectSettings)
#include "tst_project_settings.moc"
