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

// Reads a settings text (the "[INFO]" line is added) into a fresh model.
ProjectSettings readText(const QByteArray &body, int pageCount = 1, ReadReport *report = nullptr)
{
    ProjectSettings s = fresh();
    const ReadReport r = s.readIni(QByteArray("[INFO]\n") + body, pageCount);
    if (report)
        *report = r;
    return s;
}

// The line of the written file that starts with the key, without its line feed.
QByteArray writtenLine(const ProjectSettings &s, const QByteArray &key)
{
    const QList<QByteArray> lines = s.toIni().split('\n');
    for (const QByteArray &l : lines)
        if (l.startsWith(key))
            return l;
    return QByteArray("<no line for ") + key + '>';
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
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
    s.modbusMaster = true;
    s.noFeedBack = true;
    s.noCrc = true;
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
    s.autoBL = true;
    s.blon = QStringLiteral("40");
    s.blsp = QStringLiteral("10");
    s.kptm = QStringLiteral("30");
    s.keyBeep = true;
    s.initVar = true;
    s.startPage = 2;
    s.volume = QStringLiteral("16");
    s.gbkCode = true;
    s.pageImageZip = chip == 4 || chip >= 6;
    s.needleDataType = 1;
    s.languageNum = QStringLiteral("3");
    s.byteSwap = true;
    s.geData = QStringLiteral("5");
    s.aRgbPng = true;
    s.compilationTimeFixed = true;
    s.compileDateTime = QDateTime(QDate(2021, 12, 31), QTime(23, 59, 58));
    return s;
}

} // namespace

class TestProjectSettings : public QObject
{
    Q_OBJECT
private slots:
    // --- the writer ---------------------------------------------------------

    void defaultFileIsExactText()
    {
        // Every key in its order, with or without the blank behind the
        // colon as the file has always carried it; BOM; line feeds only.
        const QByteArray expected =
            "\xEF\xBB\xBF[INFO]\n"
            "UserID: \n"
            "UserVer: \n"
            "SupplierID: 0x5E21B7C4\n"
            "SupplierVer: V3.20\n"
            "Baudrate: 4\n"
            "EOCheck: 0\n"
            "Modbus: 0\n"
            "NoFeedBack: 0\n"
            "NoCRC: 0\n"
            "StartByte: 0x5A,0xA5\n"
            "DevAddr: 0x01\n"
            "DevNum: \n"
            "PanelType: 3\n"
            "XSIZE: \n"
            "YSIZE: \n"
            "VBPD: 20\n"
            "VFPD: 12\n"
            "VSPW: 3\n"
            "HBPD: 140\n"
            "HFPD: 160\n"
            "HSPW: 20\n"
            "PCLKRISING: 1\n"
            "HSYNCPolarity: 1\n"
            "VSYNCPolarity: 1\n"
            "DEPolarity: 1\n"
            "RGBSequence: 0\n"
            "ColorDepth: 0\n"
            "Rotate: 0\n"
            "FlashType: 0\n" // combo index 1 (NorFlash) is written as 0
            "FlashSize: 3\n"
            "AutoBL: 0\n"
            "BLON:\n"
            "BLSP:\n"
            "KPTM:\n"
            "KeyBeep: 0\n"
            "InitVar: 0\n"
            "StartPage:0\n"
            "Volume:\n"
            "GBKCode: 0\n"
            "PIMGZip: 0\n"
            "NDLDType:0\n"
            "LanguageNum:\n"
            "ByteSwap: 0\n"
            "GeData:\n"
            "aRGB_Png: 0\n"
            "Compilation_Time_Index: 0\n"
            "compileDateTime:2024-03-09 14:05:07\n";
        QCOMPARE(fresh().toIni(), expected);
    }

    void flashTypeFileValue_data()
    {
        QTest::addColumn<int>("comboIndex");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("NandFlash") << 0 << QByteArray("FlashType: 1");
        QTest::newRow("NorFlash") << 1 << QByteArray("FlashType: 0");
        QTest::newRow("blank third state") << 2 << QByteArray("FlashType: 2");
    }
    void flashTypeFileValue()
    {
        QFETCH(int, comboIndex);
        QFETCH(QByteArray, line);
        ProjectSettings s = fresh();
        s.flashTypeIndex = comboIndex;
        QCOMPARE(writtenLine(s, "FlashType:"), line);
    }

    // --- round trips --------------------------------------------------------

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
        const QByteArray info = lines.takeFirst();
        QCOMPARE(info, QByteArray("[INFO]"));
        QByteArray hand = "[INFO]\r\n";
        for (int i = lines.size() - 1; i >= 0; --i) {
            QByteArray l = lines[i];
            l.replace(": ", ":");
            hand += (i % 2 ? "  " : "") + l + "\r\n";
        }
        QVERIFY(!hand.contains(": "));

        ProjectSettings back = fresh();
        back.readIni(hand, 5);
        QCOMPARE(back.toIni(), written);
    }

    // --- reading rules, one key at a time -------------------------------------

    void readingRules_data()
    {
        // File text -> the line written back for that key.
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("expected");

        // index ranges
        QTest::newRow("Baudrate 10 -> 115200") << QByteArray("Baudrate: 10") << QByteArray("Baudrate:") << QByteArray("Baudrate: 4");
        QTest::newRow("Baudrate 9 kept") << QByteArray("Baudrate: 9") << QByteArray("Baudrate:") << QByteArray("Baudrate: 9");
        QTest::newRow("Baudrate 0 kept") << QByteArray("Baudrate: 0") << QByteArray("Baudrate:") << QByteArray("Baudrate: 0");
        QTest::newRow("EOCheck 10 -> 0") << QByteArray("EOCheck: 10") << QByteArray("EOCheck:") << QByteArray("EOCheck: 0");
        QTest::newRow("EOCheck 2") << QByteArray("EOCheck: 2") << QByteArray("EOCheck:") << QByteArray("EOCheck: 2");
        QTest::newRow("PanelType 11 -> 3") << QByteArray("PanelType: 11") << QByteArray("PanelType:") << QByteArray("PanelType: 3");
        QTest::newRow("PanelType 10 kept") << QByteArray("PanelType: 10") << QByteArray("PanelType:") << QByteArray("PanelType: 10");
        QTest::newRow("Rotate 4 -> 0") << QByteArray("Rotate: 4") << QByteArray("Rotate:") << QByteArray("Rotate: 0");
        QTest::newRow("Rotate 3 kept") << QByteArray("Rotate: 3") << QByteArray("Rotate:") << QByteArray("Rotate: 3");
        QTest::newRow("FlashSize 9 -> 0, not the default 3") << QByteArray("FlashSize: 9") << QByteArray("FlashSize:") << QByteArray("FlashSize: 0");
        QTest::newRow("FlashSize 8 kept") << QByteArray("FlashSize: 8") << QByteArray("FlashSize:") << QByteArray("FlashSize: 8");
        QTest::newRow("NDLDType 1") << QByteArray("NDLDType:1") << QByteArray("NDLDType:") << QByteArray("NDLDType:1");

        // checks: only 1 checks
        QTest::newRow("Modbus 1") << QByteArray("Modbus: 1") << QByteArray("Modbus:") << QByteArray("Modbus: 1");
        QTest::newRow("Modbus 2 unchecks") << QByteArray("Modbus: 2") << QByteArray("Modbus:") << QByteArray("Modbus: 0");
        QTest::newRow("PCLKRISING 11 unchecks") << QByteArray("PCLKRISING: 11") << QByteArray("PCLKRISING:") << QByteArray("PCLKRISING: 0");
        QTest::newRow("KeyBeep ' 1 ' checks") << QByteArray("KeyBeep:  1 ") << QByteArray("KeyBeep:") << QByteArray("KeyBeep: 1");

        // hexadecimal: digits behind the first x, DevAddr written with two digits
        QTest::newRow("DevAddr 0x5 -> 0x05") << QByteArray("DevAddr: 0x5") << QByteArray("DevAddr:") << QByteArray("DevAddr: 0x05");
        QTest::newRow("DevAddr 0Xab -> 0xAB") << QByteArray("DevAddr: 0Xab") << QByteArray("DevAddr:") << QByteArray("DevAddr: 0xAB");
        QTest::newRow("DevAddr without x reads 0") << QByteArray("DevAddr: 15") << QByteArray("DevAddr:") << QByteArray("DevAddr: 0x00");
        QTest::newRow("DevAddr junk filtered") << QByteArray("DevAddr: 0x 1g2") << QByteArray("DevAddr:") << QByteArray("DevAddr: 0x12");
        QTest::newRow("DevAddr comment") << QByteArray("DevAddr: 0x1F/0x33") << QByteArray("DevAddr:") << QByteArray("DevAddr: 0x1F");

        // decimal text: digits only
        QTest::newRow("XSIZE digits only") << QByteArray("XSIZE: 8a0 0px") << QByteArray("XSIZE:") << QByteArray("XSIZE: 800");
        QTest::newRow("XSIZE comment cut") << QByteArray("XSIZE: 800/1024") << QByteArray("XSIZE:") << QByteArray("XSIZE: 800");
        QTest::newRow("XSIZE empty stays empty") << QByteArray("XSIZE: ") << QByteArray("XSIZE:") << QByteArray("XSIZE: ");
        QTest::newRow("Volume only a comment") << QByteArray("Volume:/ 16") << QByteArray("Volume:") << QByteArray("Volume:");
        QTest::newRow("BLON no blank") << QByteArray("BLON:63") << QByteArray("BLON:") << QByteArray("BLON:63");

        // text: bytes above 32 and below 0x80
        QTest::newRow("StartByte comment") << QByteArray("StartByte: 0x5A,0xA5 // header") << QByteArray("StartByte:") << QByteArray("StartByte: 0x5A,0xA5");
        QTest::newRow("UserVer blanks dropped") << QByteArray("UserVer: V 1.0\t2") << QByteArray("UserVer:") << QByteArray("UserVer: V1.02");
        QTest::newRow("UserVer high bytes dropped") << QByteArray("UserVer: V1\xC3\xA9x") << QByteArray("UserVer:") << QByteArray("UserVer: V1x");

        // never read from the file
        QTest::newRow("SupplierID not read") << QByteArray("SupplierID: 0x12345678") << QByteArray("SupplierID:") << QByteArray("SupplierID: 0x5E21B7C4");
        QTest::newRow("SupplierVer not read") << QByteArray("SupplierVer: V3.00") << QByteArray("SupplierVer:") << QByteArray("SupplierVer: V3.20");
    }
    void readingRules()
    {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, expected);
        const ProjectSettings s = readText(input + '\n');
        QCOMPARE(writtenLine(s, key), expected);
    }

    void baudrateIndexNamesTheRate()
    {
        static const char *const rates[] = {"9600",   "19200",  "38400",  "57600",  "115200",
                                            "230400", "256000", "460800", "921600", "1382400"};
        QCOMPARE(rates[readText("Baudrate: 10\n").baudrate], "115200");
        QCOMPARE(rates[readText("Baudrate: 9\n").baudrate], "1382400");
    }

    void valueLimitedTo1023Characters()
    {
        const QByteArray longValue(1100, 'a');
        QCOMPARE(readText("UserVer: " + longValue + '\n').userVer, QString(1023, QLatin1Char('a')));
        QCOMPARE(readText("UserVer: " + QByteArray(1024, 'a') + '\n').userVer, QString(1023, QLatin1Char('a')));
        QCOMPARE(readText("UserVer: " + QByteArray(1023, 'a') + '\n').userVer, QString(1023, QLatin1Char('a')));
        // blanks count towards the limit though the text filter drops them
        QCOMPARE(readText("UserVer: " + QByteArray(3, ' ') + QByteArray(1021, 'a') + '\n').userVer,
                 QString(1020, QLatin1Char('a')));
        // a slash after the limit does not matter, one before it cuts
        QCOMPARE(readText("UserVer: " + QByteArray(1030, 'b') + "/c\n").userVer,
                 QString(1023, QLatin1Char('b')));
        QCOMPARE(readText("UserVer: " + QByteArray(10, 'b') + "/" + longValue + '\n').userVer,
                 QString(10, QLatin1Char('b')));
    }

    void userIdReadsAsHexadecimal_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<quint32>("value");
        QTest::newRow("with x") << QByteArray("0xab12") << quint32(0xAB12);
        QTest::newRow("upper X, eight digits") << QByteArray("0X1A2B3C4D") << quint32(0x1A2B3C4D);
        QTest::newRow("more than eight digits") << QByteArray("0x123456789") << quint32(0x12345678);
        QTest::newRow("no x reads 0") << QByteArray("1234") << quint32(0);
    }
    void userIdReadsAsHexadecimal()
    {
        QFETCH(QByteArray, input);
        QFETCH(quint32, value);
        const ProjectSettings s = readText("UserID: " + input + '\n');
        bool hasX = false;
        QCOMPARE(IniValue::hexadecimal(s.userId.toLatin1(), &hasX), value);
        QVERIFY(hasX);
        // and it stays that value through another write and read
        ProjectSettings again = fresh();
        again.readIni(s.toIni(), 1);
        QCOMPARE(again.userId, s.userId);
    }

    void emptyUserIdStaysEmpty()
    {
        ProjectSettings s = fresh();
        s.userId = QStringLiteral("0x55");
        s.readIni("[INFO]\nUserID: \n", 1);
        QVERIFY(s.userId.isEmpty());
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

    void languageNumAbove32IsIgnored_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("33 ignored") << QByteArray("33") << QStringLiteral("4");
        QTest::newRow("1000 ignored") << QByteArray("1000") << QStringLiteral("4");
        QTest::newRow("32 taken") << QByteArray("32") << QStringLiteral("32");
        QTest::newRow("1 taken") << QByteArray("1") << QStringLiteral("1");
    }
    void languageNumAbove32IsIgnored()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, expected);
        ProjectSettings s = fresh();
        s.languageNum = QStringLiteral("4");
        s.readIni("[INFO]\nLanguageNum:" + input + '\n', 1);
        QCOMPARE(s.languageNum, expected);
    }

    void needleTypeAbove1IsIgnored()
    {
        ProjectSettings s = fresh();
        s.needleDataType = 1;
        s.readIni("[INFO]\nNDLDType:2\n", 1);
        QCOMPARE(s.needleDataType, 1);
        s.readIni("[INFO]\nNDLDType:0\n", 1);
        QCOMPARE(s.needleDataType, 0);
    }

    void gbkCodeSetsCharacterTableBound_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("bound");
        QTest::newRow("1") << QByteArray("GBKCode: 1") << 0x100;
        QTest::newRow("0") << QByteArray("GBKCode: 0") << 0x80;
        QTest::newRow("2 is not checked") << QByteArray("GBKCode: 2") << 0x80;
        QTest::newRow("no blank") << QByteArray("GBKCode:1") << 0x100;
    }
    void gbkCodeSetsCharacterTableBound()
    {
        QFETCH(QByteArray, input);
        QFETCH(int, bound);
        QCOMPARE(readText(input + '\n').charTableBound(), bound);
    }

    // --- chip rules while reading --------------------------------------------

    void colorDepthFollowsChip_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("colorDepth");
        QTest::newRow("chip 3 keeps RGB888") << QByteArray("PanelType: 3\nColorDepth: 1") << 1;
        QTest::newRow("chip 5 keeps RGB888") << QByteArray("PanelType: 5\nColorDepth: 1") << 1;
        QTest::newRow("chip 6 back to RGB565") << QByteArray("PanelType: 6\nColorDepth: 1") << 0;
        QTest::newRow("chip 4 back to RGB565") << QByteArray("PanelType: 4\nColorDepth: 1") << 0;
        QTest::newRow("chip 0 back to RGB565") << QByteArray("PanelType: 0\nColorDepth: 1") << 0;
        QTest::newRow("any non-zero is RGB888") << QByteArray("PanelType: 3\nColorDepth: 7") << 1;
        QTest::newRow("chip after depth in file") << QByteArray("ColorDepth: 1\nPanelType: 6") << 0;
        QTest::newRow("chip 5 after depth in file") << QByteArray("ColorDepth: 1\nPanelType: 5") << 1;
    }
    void colorDepthFollowsChip()
    {
        QFETCH(QByteArray, input);
        QFETCH(int, colorDepth);
        const ProjectSettings s = readText(input + '\n');
        QCOMPARE(s.colorDepth, colorDepth);
        QCOMPARE(writtenLine(s, "ColorDepth:"), QByteArray("ColorDepth: ") + QByteArray::number(colorDepth));
    }

    void flashTypeOnlyAtChip3_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("comboIndex");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("chip 3, 2 -> blank") << QByteArray("PanelType: 3\nFlashType: 2") << 2 << QByteArray("FlashType: 2");
        QTest::newRow("chip 3, 1 -> NandFlash") << QByteArray("PanelType: 3\nFlashType: 1") << 0 << QByteArray("FlashType: 1");
        QTest::newRow("chip 3, 0 -> NorFlash") << QByteArray("PanelType: 3\nFlashType: 0") << 1 << QByteArray("FlashType: 0");
        QTest::newRow("chip 3, key first") << QByteArray("FlashType: 2\nPanelType: 3") << 2 << QByteArray("FlashType: 2");
        // chip 4: the remembered value (starts at 1), the file is not applied
        QTest::newRow("chip 4 ignores file") << QByteArray("PanelType: 4\nFlashType: 2") << 1 << QByteArray("FlashType: 0");
        // other chips: blank
        QTest::newRow("chip 6 blank") << QByteArray("PanelType: 6\nFlashType: 1") << 2 << QByteArray("FlashType: 2");
        QTest::newRow("chip 0 blank") << QByteArray("PanelType: 0\nFlashType: 0") << 2 << QByteArray("FlashType: 2");
    }
    void flashTypeOnlyAtChip3()
    {
        QFETCH(QByteArray, input);
        QFETCH(int, comboIndex);
        QFETCH(QByteArray, line);
        const ProjectSettings s = readText(input + '\n');
        QCOMPARE(s.flashTypeIndex, comboIndex);
        QCOMPARE(writtenLine(s, "FlashType:"), line);
    }

    void pageImageZipPerChip_data()
    {
        QTest::addColumn<int>("chip");
        QTest::addColumn<bool>("kept");
        for (int chip = 0; chip < ProjectSettings::ChipCount; ++chip)
            QTest::addRow("chip %d", chip) << chip << (chip == 4 || chip >= 6);
    }
    void pageImageZipPerChip()
    {
        QFETCH(int, chip);
        QFETCH(bool, kept);
        // the zip key comes first in this file, the chip last
        const ProjectSettings s =
            readText("PIMGZip: 1\nPanelType: " + QByteArray::number(chip) + '\n');
        QCOMPARE(s.panelType, chip);
        QCOMPARE(s.pageImageZip, kept);
        QCOMPARE(writtenLine(s, "PIMGZip:"), QByteArray(kept ? "PIMGZip: 1" : "PIMGZip: 0"));
    }

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

    void tftMemoryFollowsChipChanges()
    {
        // The user edits the timing on chip 3, moves to a chip without TFT
        // fields and back: the edits come back.
        ProjectSettings s = fresh();
        s.tft.hbpd = QStringLiteral("99");
        s.tft.de = false;
        s.applyChip(6);
        QVERIFY(s.tft.hbpd.isEmpty());
        QVERIFY(!s.tft.pclk);
        s.applyChip(0); // cleared again: the memory must not take the empty fields
        s.applyChip(3);
        QCOMPARE(s.tft.hbpd, QStringLiteral("99"));
        QCOMPARE(s.tft.hfpd, QStringLiteral("160"));
        QVERIFY(!s.tft.de);
        QVERIFY(s.tft.pclk);
        QVERIFY(!s.tftCleared);
    }

    void flashTypeRememberedPerChip()
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

    void chipChangeResetsDependentValues()
    {
        ProjectSettings s = fresh();
        s.colorDepth = 1;
        s.byteSwap = true;
        s.pageImageZip = true;
        s.applyChip(5);
        QCOMPARE(s.colorDepth, 1);
        QVERIFY(!s.byteSwap);      // always unchecked first
        QVERIFY(s.pageImageZip);   // chip 5 leaves it
        s.applyChip(1);
        QCOMPARE(s.colorDepth, 0); // chips 0 to 2 force RGB565
        QVERIFY(!s.pageImageZip);
        QCOMPARE(s.flashTypeIndex, 2);
    }

    // --- start page -----------------------------------------------------------

    void startPageAgainstPageCount_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("pages");
        QTest::addColumn<int>("startPage");
        QTest::addColumn<bool>("overflow");
        QTest::newRow("within") << 2 << 3 << 2 << false;
        QTest::newRow("first") << 0 << 3 << 0 << false;
        QTest::newRow("above the count") << 5 << 3 << 0 << true;
        QTest::newRow("one above the count") << 4 << 3 << 0 << true;
    }
    void startPageAgainstPageCount()
    {
        QFETCH(int, value);
        QFETCH(int, pages);
        QFETCH(int, startPage);
        QFETCH(bool, overflow);
        ProjectSettings s = fresh();
        s.startPage = 1; // from the project opened before
        const ReadReport r = s.readIni("[INFO]\nStartPage:" + QByteArray::number(value) + '\n', pages);
        QCOMPARE(r.startPageOverflow, overflow);
        QCOMPARE(s.startPage, startPage);
    }

    // --- timestamp ------------------------------------------------------------

    void compileDateTimeParsed_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QDateTime>("expected");
        QTest::newRow("as written") << QByteArray("compileDateTime:2023-05-06 07:08:09")
                                    << QDateTime(QDate(2023, 5, 6), QTime(7, 8, 9));
        QTest::newRow("blank behind colon") << QByteArray("compileDateTime: 2019-11-30 23:00:01")
                                            << QDateTime(QDate(2019, 11, 30), QTime(23, 0, 1));
        QTest::newRow("unreadable keeps stored") << QByteArray("compileDateTime:yesterday") << kStamp;
        QTest::newRow("absent keeps stored") << QByteArray("Rotate: 1") << kStamp;
    }
    void compileDateTimeParsed()
    {
        QFETCH(QByteArray, input);
        QFETCH(QDateTime, expected);
        QCOMPARE(readText(input + '\n').compileDateTime, expected);
    }

    // --- canvas ---------------------------------------------------------------

    void canvasSizeFollowsRotation_data()
    {
        QTest::addColumn<int>("rotate");
        QTest::addColumn<QSize>("size");
        QTest::newRow("0 degree") << 0 << QSize(800, 480);
        QTest::newRow("90 degree") << 1 << QSize(480, 800);
        QTest::newRow("180 degree") << 2 << QSize(800, 480);
        QTest::newRow("270 degree") << 3 << QSize(480, 800);
    }
    void canvasSizeFollowsRotation()
    {
        QFETCH(int, rotate);
        QFETCH(QSize, size);
        const ProjectSettings s = readText("XSIZE: 800\nYSIZE: 480\nRotate: " + QByteArray::number(rotate) + '\n');
        QCOMPARE(s.canvasSize(), size);
    }

    // --- the version gate -----------------------------------------------------

    void versionGate_data()
    {
        QTest::addColumn<QByteArray>("ini");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("valueText");
        QTest::addColumn<int>("number");
        QTest::newRow("V3.20 opens") << QByteArray("[INFO]\nSupplierVer: V3.20\n") << true << QStringLiteral("V3.20") << 320;
        QTest::newRow("V3.21 refused") << QByteArray("[INFO]\nSupplierVer: V3.21\n") << false << QStringLiteral("V3.21") << 321;
        QTest::newRow("V3.10 opens") << QByteArray("[INFO]\nSupplierVer: V3.10\n") << true << QStringLiteral("V3.10") << 310;
        QTest::newRow("V1.00 of the export") << QByteArray("[INFO]\nSupplierVer: V1.00\n") << true << QStringLiteral("V1.00") << 100;
        QTest::newRow("no blank, later key") << QByteArray("[INFO]\nBaudrate: 4\nSupplierVer:V4.00\n") << false << QStringLiteral("V4.00") << 400;
        QTest::newRow("comment") << QByteArray("[INFO]\nSupplierVer: V3.20 / was V3.30\n") << true << QStringLiteral("V3.20") << 320;
        QTest::newRow("written file") << fresh().toIni() << true << QStringLiteral("V3.20") << 320;
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
        QVERIFY(writeFile(path, ini));
        const VersionGate gate = ProjectSettings::checkVersion(path);
        QVERIFY(gate.iniFound);
        QCOMPARE(gate.accepted, accepted);
        QCOMPARE(gate.valueText, valueText);
        QCOMPARE(gate.number, number);
    }

    void versionGateWithoutIni()
    {
        QTemporaryDir dir;
        const VersionGate gate = ProjectSettings::checkVersion(dir.filePath(QStringLiteral("missing.ini")));
        QVERIFY(!gate.iniFound);
        QVERIFY(!gate.accepted);
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

    // --- value filters on their own -------------------------------------------

    void filters_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("integer");
        QTest::addColumn<quint32>("hex");
        QTest::newRow("plain number") << QByteArray(" 42") << QStringLiteral("42") << qint64(42) << quint32(0);
        QTest::newRow("hex text") << QByteArray(" 0x1f") << QStringLiteral("0x1f") << qint64(1) << quint32(0x1F);
        QTest::newRow("high bytes and blanks") << QByteArray("\xE4\xB8\xAD 0X2a ") << QStringLiteral("0X2a") << qint64(2) << quint32(0x2A);
        QTest::newRow("nothing") << QByteArray("  ") << QString() << qint64(0) << quint32(0);
    }
    void filters()
    {
        QFETCH(QByteArray, raw);
        QFETCH(QString, text);
        QFETCH(qint64, integer);
        QFETCH(quint32, hex);
        QCOMPARE(IniValue::text(raw), text);
        QCOMPARE(IniValue::integer(raw), integer);
        QCOMPARE(IniValue::hexadecimal(raw), hex);
    }

    void rawCutsCommentAndLineEnd()
    {
        const QByteArray line("Volume: 12 / loud\r\n");
        QCOMPARE(IniValue::raw(line, 7), QByteArray(" 12 "));
        QCOMPARE(IniValue::raw("GeData:7\r", 7), QByteArray("7"));
    }
};

QTEST_GUILESS_MAIN(TestProjectSettings)
#include "tst_project_settings.moc"
