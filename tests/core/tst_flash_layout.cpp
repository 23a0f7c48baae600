// The fixed front of the flash image: the block directory, the settings
// block with its filler and checksum, the flash size limit, the rounding and
// block tail rules of OTA mode, Addr_Info.txt, and the chunked CRC and stamp
// of the image file. Expected bytes are worked out from the layout tables.

#include "build/FlashLayout.h"
#include "build/MakeBin.h"
#include "build/OtaPlacement.h"
#include "project/ProjectSettings.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

// Bit by bit, without a table: reflected 0xEDB88320, start 0, no complement.
quint32 slowCrc(const QByteArray &data, quint32 crc = 0)
{
    for (char ch : data) {
        crc ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ ((crc & 1u) ? 0xEDB88320u : 0u);
    }
    return crc;
}

quint32 le32(const QByteArray &b, int at)
{
    return quint32(quint8(b[at])) | quint32(quint8(b[at + 1])) << 8 | quint32(quint8(b[at + 2])) << 16
           | quint32(quint8(b[at + 3])) << 24;
}

quint32 le16(const QByteArray &b, int at)
{
    return quint32(quint8(b[at])) | quint32(quint8(b[at + 1])) << 8;
}

quint8 u8(const QByteArray &b, int at)
{
    return quint8(b[at]);
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

// A settings object with every field of the block set to a known value.
ProjectSettings knownSettings()
{
    ProjectSettings s;
    s.panelType = 5;
    s.colorDepth = 1;
    s.rotate = 2;
    s.autoBL = true;
    s.keyBeep = false;
    s.initVar = true;
    s.modbusMaster = true;
    s.noFeedBack = false;
    s.noCrc = true;
    s.eoCheck = 2;
    s.baudrate = 7;
    s.startBytes = QStringLiteral("0x12,0x34");
    s.flashSize = 4;
    s.flashTypeIndex = 0; // Nand
    s.tft.pclk = true;
    s.tft.hsync = false;
    s.tft.vsync = true;
    s.tft.de = false;
    s.tft.bgr = true;
    s.xsize = QStringLiteral("1024");
    s.ysize = QStringLiteral("600");
    s.tft.vbpd = QStringLiteral("23");
    s.tft.vfpd = QStringLiteral("12");
    s.tft.vspw = QStringLiteral("3");
    s.tft.hbpd = QStringLiteral("300");
    s.tft.hfpd = QStringLiteral("160");
    s.tft.hspw = QStringLiteral("20");
    s.supplierId = QStringLiteral("0x5E21B7C4");
    s.supplierVer = QStringLiteral("V3.20");
    s.userId = QStringLiteral("0x12345678");
    s.userVer = QStringLiteral("ABCDEFGHIJ");
    s.startPage = 258;
    s.geData = QStringLiteral("7");
    s.blon = QStringLiteral("63");
    s.blsp = QStringLiteral("10");
    s.kptm = QStringLiteral("300");
    s.volume = QStringLiteral("20");
    s.devAddr = QStringLiteral("0x1F");
    s.languageNum = QStringLiteral("3");
    return s;
}

const QDateTime kTime(QDate(2024, 3, 9), QTime(14, 5, 7));

} // namespace

class TestFlashLayout : public QObject
{
    Q_OBJECT
private slots:
    // --- the directory -----------------------------------------------------
    void directoryFieldsSitAtTheirOffsets()
    {
        // Offsets as the directory table lists them.
        const QList<QPair<BlockDirectory::Field, int>> table = {
            {BlockDirectory::VariableImageAddress, 0x00}, {BlockDirectory::PageBlockAddress, 0x08},
            {BlockDirectory::PageCount, 0x0C},            {BlockDirectory::FontAddress, 0x10},
            {BlockDirectory::FontCount, 0x14},            {BlockDirectory::WavAddress, 0x18},
            {BlockDirectory::WavCount, 0x1C},             {BlockDirectory::PictureAddress, 0x20},
            {BlockDirectory::PictureCount, 0x24},         {BlockDirectory::GifAddress, 0x28},
            {BlockDirectory::GifCount, 0x2C},             {BlockDirectory::IconAddress, 0x30},
            {BlockDirectory::IconCount, 0x34},            {BlockDirectory::PinyinAddress, 0x40},
            {BlockDirectory::PinyinSize, 0x44},           {BlockDirectory::CommandTableAddress, 0x48},
            {BlockDirectory::CommandTableSize, 0x4C},     {BlockDirectory::LanguageAddress, 0x50},
            {BlockDirectory::LanguageCount, 0x54},        {BlockDirectory::VicePageAddress, 0x58},
            {BlockDirectory::VicePageCount, 0x5C},        {BlockDirectory::StaticTextAddress, 0x60},
            {BlockDirectory::StaticTextCount, 0x64},
        };
        BlockDirectory d;
        QCOMPARE(d.bytes(), QByteArray(128, '\0'));
        for (int i = 0; i < table.size(); ++i)
            d.set(table[i].first, 0xA1000000u + quint32(i) * 0x10101u);
        const QByteArray b = d.bytes();
        QCOMPARE(b.size(), 128);
        QSet<int> used;
        for (int i = 0; i < table.size(); ++i) {
            const int at = table[i].second;
            QCOMPARE(le32(b, at), 0xA1000000u + quint32(i) * 0x10101u);
            used << at;
        }
        // 0x04, 0x38, 0x3C and 0x68 to 0x7F are unused and stay 0.
        for (int at = 0; at < 128; at += 4)
            if (!used.contains(at))
                QCOMPARE(le32(b, at), 0u);
        // Little-endian: 0x11223344 in the font count is 44 33 22 11 at 0x14.
        d.set(BlockDirectory::FontCount, 0x11223344u);
        QCOMPARE(d.bytes().mid(0x14, 4), QByteArray("\x44\x33\x22\x11", 4));
        // Round trip.
        const BlockDirectory back = BlockDirectory::fromBytes(d.bytes());
        QCOMPARE(back.bytes(), d.bytes());
        // A short buffer reads what it holds and leaves the rest 0.
        const BlockDirectory shortRead = BlockDirectory::fromBytes(QByteArray("\x80\x01\x00\x00\x01", 5));
        QCOMPARE(shortRead.value(BlockDirectory::VariableImageAddress), 0x180u);
        QCOMPARE(shortRead.value(BlockDirectory::PageBlockAddress), 0u);
    }

    void frontLayoutOfTheFourModes()
    {
        Flash::FrontLayout l;
        QCOMPARE(l.variableAddress(), 0x180u);
        QCOMPARE(l.variableSize(), 0x10000u);
        QCOMPARE(l.commandSize(), 0u);
        QCOMPARE(l.pageBlockAddress(), 0x10180u);
        QCOMPARE(l.alignUnit(), 128u * 1024u);
        l.gbkCode = true; // 0x180 + 0x11C50
        QCOMPARE(l.variableAddress(), 0x11DD0u);
        QCOMPARE(l.pageBlockAddress(), 0x21DD0u);
        QCOMPARE(l.alignUnit(), 256u * 1024u);
        l.modbusMaster = true;
        QCOMPARE(l.variableSize(), 0xC000u);
        QCOMPARE(l.commandSize(), 0x2000u);
        QCOMPARE(l.commandAddress(), 0x11DD0u + 0xC000u);
        QCOMPARE(l.pageBlockAddress(), 0x21DD0u); // the page block does not move in master mode
        l.gbkCode = false;
        QCOMPARE(l.commandAddress(), 0xC180u);
        QCOMPARE(l.pageBlockAddress(), 0x10180u);
    }

    // --- the settings block ------------------------------------------------
    void uiMessageFieldsFromSettings()
    {
        const QByteArray b = UiMessageBlock::build(knownSettings(), kTime);
        QCOMPARE(b.size(), 256);
        QCOMPARE(u8(b, 0), quint8(1));  // 2024 - 2023
        QCOMPARE(u8(b, 1), quint8(3));
        QCOMPARE(u8(b, 2), quint8(9));
        // 14:05:07 = 14*3600 + 5*60 + 7 = 50707 = 0x00C613
        QCOMPARE(b.mid(3, 3), QByteArray("\x13\xC6\x00", 3));
        QCOMPARE(u8(b, 6), quint8(5));
        QCOMPARE(u8(b, 7), quint8(1));
        QCOMPARE(u8(b, 8), quint8(2));
        QCOMPARE(u8(b, 9), quint8(0x05));  // auto backlight + initialise variables
        QCOMPARE(u8(b, 10), quint8(0x1D)); // master 0x01, no CRC 0x04, odd parity 0x18
        QCOMPARE(u8(b, 11), quint8(7));
        QCOMPARE(b.mid(12, 2), QByteArray("\x12\x34", 2));
        QCOMPARE(u8(b, 14), quint8(0x84)); // 32MB index 4, Nand bit 7
        QCOMPARE(u8(b, 15), quint8(0x15)); // PCLK 0x01, VSYNC 0x04, BGR 0x10
        QCOMPARE(le16(b, 16), 1024u);
        QCOMPARE(le16(b, 18), 600u);
        QCOMPARE(le16(b, 20), 23u);
        QCOMPARE(le16(b, 22), 12u);
        QCOMPARE(le16(b, 24), 3u);
        QCOMPARE(le16(b, 26), 300u);
        QCOMPARE(le16(b, 28), 160u);
        QCOMPARE(le16(b, 30), 20u);
        QCOMPARE(b.mid(32, 4), QByteArray("\xC4\xB7\x21\x5E", 4));
        QCOMPARE(b.mid(36, 8), QByteArray("V3.20000"));
        QCOMPARE(b.mid(44, 4), QByteArray("\x78\x56\x34\x12", 4));
        QCOMPARE(b.mid(48, 8), QByteArray("ABCDEFGH"));
        QCOMPARE(le16(b, 56), 258u);
        QCOMPARE(u8(b, 58), quint8(7));
        QCOMPARE(u8(b, 59), quint8(63));
        QCOMPARE(u8(b, 60), quint8(10));
        QCOMPARE(le16(b, 61), 300u);
        QCOMPARE(u8(b, 63), quint8(16)); // volume 20 clipped
        QCOMPARE(u8(b, 64), quint8(0x1F));
        QCOMPARE(u8(b, 65), quint8(3));
        QCOMPARE(b.mid(244), QByteArray(12, char(0xFF)));
    }

    void uiMessageSmallRules_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("offset");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("volume 20 -> 16") << "volume" << "20" << 63 << QByteArray("\x10", 1);
        QTest::newRow("volume 16 stays") << "volume" << "16" << 63 << QByteArray("\x10", 1);
        QTest::newRow("volume 5") << "volume" << "5" << 63 << QByteArray("\x05", 1);
        QTest::newRow("volume empty") << "volume" << "" << 63 << QByteArray("\x00", 1);
        QTest::newRow("device address low byte") << "devAddr" << "0x1234" << 64 << QByteArray("\x34", 1);
        QTest::newRow("device address 0x01") << "devAddr" << "0x01" << 64 << QByteArray("\x01", 1);
        QTest::newRow("languages 1") << "languageNum" << "1" << 65 << QByteArray("\x01", 1);
        QTest::newRow("languages 32") << "languageNum" << "32" << 65 << QByteArray("\x20", 1);
        QTest::newRow("user version short") << "userVer" << "V1" << 48 << QByteArray("V1000000");
        QTest::newRow("user version empty") << "userVer" << "" << 48 << QByteArray("00000000");
        QTest::newRow("user key without x") << "userId" << "1234" << 44 << QByteArray(4, '\0');
        QTest::newRow("start page negative") << "startPage" << "-1" << 56 << QByteArray(2, '\0');
        QTest::newRow("parity even") << "eoCheck" << "1" << 10 << QByteArray("\x08", 1);
        QTest::newRow("parity none") << "eoCheck" << "0" << 10 << QByteArray("\x00", 1);
        QTest::newRow("flash Nor 16MB") << "flashTypeIndex" << "1" << 14 << QByteArray("\x03", 1);
        QTest::newRow("flash blank type") << "flashTypeIndex" << "2" << 14 << QByteArray("\x03", 1);
        QTest::newRow("flash Nand 16MB") << "flashTypeIndex" << "0" << 14 << QByteArray("\x83", 1);
    }

    void uiMessageSmallRules()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(int, offset);
        QFETCH(QByteArray, expected);
        ProjectSettings s; // defaults: 16MB, no flags
        if (field == "volume")
            s.volume = value;
        else if (field == "devAddr")
            s.devAddr = value;
        else if (field == "languageNum")
            s.languageNum = value;
        else if (field == "userVer")
            s.userVer = value;
        else if (field == "userId")
            s.userId = value;
        else if (field == "startPage")
            s.startPage = value.toInt();
        else if (field == "eoCheck")
            s.eoCheck = value.toInt();
        else if (field == "flashTypeIndex")
            s.flashTypeIndex = value.toInt();
        const QByteArray b = UiMessageBlock::build(s, kTime);
        QCOMPARE(b.mid(offset, expected.size()), expected);
    }

    void uiMessageBuildTime_data()
    {
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<QByteArray>("expected"); // bytes 0 to 5
        QTest::newRow("2022 stores 0") << QDateTime(QDate(2022, 12, 31), QTime(23, 59, 59))
                                       << QByteArray("\x00\x0C\x1F\x7F\x51\x01", 6); // 86399 = 0x01517F
        QTest::newRow("2023 is 0") << QDateTime(QDate(2023, 1, 2), QTime(0, 0, 0)) << QByteArray("\x00\x01\x02\x00\x00\x00", 6);
        QTest::newRow("2025 is 2") << QDateTime(QDate(2025, 6, 15), QTime(1, 0, 1))
                                   << QByteArray("\x02\x06\x0F\x11\x0E\x00", 6); // 3601 = 0x0E11
    }

    void uiMessageBuildTime()
    {
        QFETCH(QDateTime, when);
        QFETCH(QByteArray, expected);
        QCOMPARE(UiMessageBlock::build(ProjectSettings(), when).left(6), expected);
    }

    void commandHeader_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("default") << "0x5A,0xA5" << QByteArray("\x5A\xA5", 2);
        QTest::newRow("other bytes") << "0x12,0x34" << QByteArray("\x12\x34", 2);
        QTest::newRow("upper X, lower hex") << "0X7e,0Xe7" << QByteArray("\x7E\xE7", 2);
        QTest::newRow("only the first eight count") << "0x01,0x02,0x03" << QByteArray("\x01\x02", 2);
        QTest::newRow("others filtered") << "0x5A 0xA5" << QByteArray("\x5A\xA5", 2);
        // Fewer than eight: 0x5AA5 little-endian, A5 first.
        QTest::newRow("seven kept") << "0x5A,0xA" << QByteArray("\xA5\x5A", 2);
        QTest::newRow("empty") << "" << QByteArray("\xA5\x5A", 2);
        QTest::newRow("no prefix") << "5AA5" << QByteArray("\xA5\x5A", 2);
    }

    void commandHeader()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);
        QCOMPARE(UiMessageBlock::commandHeader(text), expected);
        ProjectSettings s;
        s.startBytes = text;
        QCOMPARE(UiMessageBlock::build(s, kTime).mid(12, 2), expected);
    }

    void fillerHoldsLowBytesOfTheCrcTable()
    {
        const QByteArray b = UiMessageBlock::build(ProjectSettings(), kTime);
        // Entry 0x80 of the table is the polynomial itself, 0xEDB88320;
        // entry 0xC0 is entry 0x80 xor entry 0x40 (0x76DC4190) = 0x9B64C2B0.
        QCOMPARE(u8(b, 0x80), quint8(0x20));
        QCOMPARE(u8(b, 0xC0), quint8(0xB0));
        QCOMPARE(Flash::crcTableEntry(0x80), 0xEDB88320u);
        QCOMPARE(Flash::crcTableEntry(1), 0x77073096u);
        for (int i = 66; i < 236; ++i)
            QCOMPARE(u8(b, i), quint8(slowCrc(QByteArray(1, char(i))) & 0xFF));
    }

    void checksumWithKeyAndConstant()
    {
        const ProjectSettings s = knownSettings();
        const QByteArray b = UiMessageBlock::build(s, kTime);
        // Independently: bytes 0..243 with the key at 236 and the constant at 240.
        QByteArray probe = b.left(244);
        probe.replace(236, 4, QByteArray("\xC4\xB7\x21\x5E", 4));
        probe.replace(240, 4, QByteArray("\x52\x1D\x3F\x6B", 4));
        const quint32 sum = slowCrc(probe);
        QCOMPARE(le32(b, 240), sum);
        QCOMPARE(le32(b, 236), ~sum);
        QVERIFY(UiMessageBlock::checksumHolds(b, 0x5E21B7C4u));
        QVERIFY(!UiMessageBlock::checksumHolds(b, 0x5E21B7C5u));
        QByteArray changed = b;
        changed[63] = char(15);
        QVERIFY(!UiMessageBlock::checksumHolds(changed, 0x5E21B7C4u));
        QByteArray badNot = b;
        badNot[236] = char(badNot[236] ^ 1);
        QVERIFY(!UiMessageBlock::checksumHolds(badNot, 0x5E21B7C4u));
        QVERIFY(!UiMessageBlock::checksumHolds(b.left(100), 0x5E21B7C4u));
        // The stamp bytes are not part of the sum.
        QByteArray stamped = b;
        stamped.replace(244, 12, QByteArray(12, '\x11'));
        QVERIFY(UiMessageBlock::checksumHolds(stamped, 0x5E21B7C4u));
    }

    // --- flash size ----------------------------------------------------------
    void flashLimitAndBoundary()
    {
        QCOMPARE(Flash::flashLimit(0), qint64(2) * 1024 * 1024);
        QCOMPARE(Flash::flashLimit(3), qint64(16) * 1024 * 1024);
        QCOMPARE(Flash::flashLimit(8), qint64(512) * 1024 * 1024);
        QVERIFY(!Flash::exceedsFlash(2097152, 0));
        QVERIFY(Flash::exceedsFlash(2097153, 0));
        QVERIFY(!Flash::exceedsFlash(536870912, 8));
        QVERIFY(Flash::exceedsFlash(536870913, 8));
    }

    // --- rounding and the block tail ---------------------------------------
    void roundingRule()
    {
        const qint64 unit = 128 * 1024;
        QCOMPARE(Flash::roundUp(0x10180, unit), qint64(0x20000));
        QCOMPARE(Flash::roundUp(0x20000, unit), qint64(0x20000));
        QCOMPARE(Flash::roundUp(0x20001, unit), qint64(0x40000));
        QCOMPARE(Flash::roundUp(0, unit), qint64(0));
        QCOMPARE(Flash::roundUp(0x21DD0, 256 * 1024), qint64(0x40000));
    }

    void blockTailRule()
    {
        const qint64 unit = 0x20000;
        // First build: no previous end. 0x20000 + 1000 + 64 KB = 0x303E8 -> 0x40000.
        TailOutcome t = blockTail(0x203E8, "64", "", "", true, unit);
        QCOMPARE(t.endAddress, qint64(0x40000));
        QCOMPARE(t.pad, qint64(0x40000 - 0x203E8));
        QVERIFY(!t.kept);
        // The block shrank, nothing else changed: the end stays, the pad grows.
        t = blockTail(0x201F4, "64", "64", "262144", true, unit);
        QVERIFY(t.kept);
        QCOMPARE(t.endAddress, qint64(0x40000));
        QCOMPARE(t.pad, qint64(0x40000 - 0x201F4));
        // Exactly at the previous end still fits.
        t = blockTail(0x40000, "64", "64", "262144", true, unit);
        QVERIFY(t.kept);
        QCOMPARE(t.pad, qint64(0));
        // One byte beyond: moves to round(0x40001 + 0x10000) = 0x60000.
        t = blockTail(0x40001, "64", "64", "262144", true, unit);
        QVERIFY(!t.kept);
        QCOMPARE(t.endAddress, qint64(0x60000));
        // A changed reserve recomputes even when the block fits: 0x201F4 + 32 KB -> 0x40000.
        t = blockTail(0x201F4, "32", "64", "393216", true, unit);
        QVERIFY(!t.kept);
        QCOMPARE(t.endAddress, qint64(0x40000));
        // The block before moved: recomputed.
        t = blockTail(0x201F4, "64", "64", "393216", false, unit);
        QVERIFY(!t.kept);
        QCOMPARE(t.endAddress, qint64(0x40000));
        // No reserve: the end is the block's end rounded up.
        t = blockTail(0x40000, "", "", "", true, unit);
        QCOMPARE(t.endAddress, qint64(0x40000));
        QCOMPARE(t.pad, qint64(0));
    }

    // --- Addr_Info.txt ------------------------------------------------------
    void addrInfoTextAndRoundTrip()
    {
        OtaAddresses a;
        a.enabled = true;
        a[Material::Font] = {"131072", "262144", "1000", "64"};
        a[Material::Language] = {"262144", "262144", "", ""};
        a[Material::StaticText] = {"1", "2", "3", "4"};
        a.wavNum = "2";
        a.iconNum = "17";
        const QByteArray expected = "[INFO]\n"
                                    "isChecked:true\n"
                                    "Font_StartAddr:131072\n"
                                    "MultiLanguage_StartAddr:262144\n"
                                    "WAV_StartAddr:\n"
                                    "GIF_StartAddr:\n"
                                    "Image_StartAddr:\n"
                                    "Icon_StartAddr:\n"
                                    "Text_StartAddr:1\n"
                                    "Font_EndAddr:262144\n"
                                    "MultiLanguage_EndAddr:262144\n"
                                    "WAV_EndAddr:\n"
                                    "GIF_EndAddr:\n"
                                    "Image_EndAddr:\n"
                                    "Icon_EndAddr:\n"
                                    "Text_EndAddr:2\n"
                                    "Font_CurrentSize:1000\n"
                                    "MultiLanguage_CurrentSize:\n"
                                    "WAV_CurrentSize:\n"
                                    "GIF_CurrentSize:\n"
                                    "Image_CurrentSize:\n"
                                    "Icon_CurrentSize:\n"
                                    "Text_CurrentSize:3\n"
                                    "Font_ReserveLength:64\n"
                                    "MultiLanguage_ReserveLength:\n"
                                    "WAV_ReserveLength:\n"
                                    "GIF_ReserveLength:\n"
                                    "Image_ReserveLength:\n"
                                    "Icon_ReserveLength:\n"
                                    "Text_ReserveLength:4\n"
                                    "WAV_Num:2\n"
                                    "GIF_Num:\n"
                                    "Image_Num:\n"
                                    "Icon_Num:17\n";
        QCOMPARE(a.toText(), expected);
        QVERIFY(OtaAddresses::fromText(expected) == a);

        a.enabled = false;
        QVERIFY(a.toText().startsWith("[INFO]\nisChecked:false\n"));
        QVERIFY(OtaAddresses::fromText(a.toText()) == a);

        QTemporaryDir dir;
        const QString path = dir.filePath("Addr_Info.txt");
        QVERIFY(a.save(path));
        bool found = false;
        QVERIFY(OtaAddresses::load(path, &found) == a);
        QVERIFY(found);
        const OtaAddresses missing = OtaAddresses::load(dir.filePath("none.txt"), &found);
        QVERIFY(!found);
        QVERIFY(!missing.enabled);
        QVERIFY(missing[Material::Font].start.isEmpty());
    }

    void addrInfoDamagedInput()
    {
        // BOM, CRLF, keys out of order, unknown and broken lines.
        const QByteArray text = "\xEF\xBB\xBF[INFO]\r\n"
                                "Icon_EndAddr:655360\r\n"
                                "garbage without colon\r\n"
                                ":no key\r\n"
                                "isChecked:true\r\n"
                                "Unknown_StartAddr:99\r\n"
                                "GIF_ReserveLength: 128 \r\n";
        const OtaAddresses a = OtaAddresses::fromText(text);
        QVERIFY(a.enabled);
        QCOMPARE(a[Material::Icon].end, QString("655360"));
        QCOMPARE(a[Material::Gif].reserveKb, QString("128"));
        QVERIFY(a[Material::Font].start.isEmpty());
        // Anything but "true" is off.
        QVERIFY(!OtaAddresses::fromText("isChecked:TRUE\n").enabled);
        QVERIFY(!OtaAddresses::fromText(QByteArray("\x00\xFF\x01", 3)).enabled);
    }

    // --- the image file in chunks ------------------------------------------
    void chunkedCrcMatchesBitwise()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("image.tmp");
        QByteArray data;
        for (int i = 0; i < 1009; ++i)
            data.append(char((i * 131 + 7) & 0xFF));
        QVERIFY(writeFile(path, data));
        const quint32 expected = slowCrc(data);
        for (qint64 chunk : {qint64(1), qint64(3), qint64(64), qint64(1009), qint64(Flash::kChunkSize)}) {
            bool ok = false;
            QCOMPARE(FlashFile::crc(path, chunk, &ok), expected);
            QVERIFY(ok);
        }
        // Three bytes 01 02 03 by the bitwise rule, and a file that is not there.
        QVERIFY(writeFile(path, QByteArray("\x01\x02\x03", 3)));
        QCOMPARE(FlashFile::crc(path, 2), slowCrc(QByteArray("\x01\x02\x03", 3)));
        bool ok = true;
        FlashFile::crc(dir.filePath("missing.tmp"), 2, &ok);
        QVERIFY(!ok);
    }

    void stampCopyWritesSizeCrcAndNot()
    {
        QTemporaryDir dir;
        const QString from = dir.filePath("a.tmp");
        const QString to = dir.filePath("a.bin");
        QByteArray data(0x200, '\0');
        for (int i = 0; i < data.size(); ++i)
            data[i] = char(i & 0xFF);
        QVERIFY(writeFile(from, data));
        // A chunk of 7 bytes puts the stamp across several chunks.
        for (qint64 chunk : {qint64(7), qint64(0x175), qint64(Flash::kChunkSize)}) {
            QVERIFY(FlashFile::stampCopy(from, to, 0x00010180u, 0xDEADBEEFu, chunk));
            const QByteArray out = readAll(to);
            QCOMPARE(out.size(), data.size());
            QCOMPARE(out.mid(0x174, 12), QByteArray("\x80\x01\x01\x00\xEF\xBE\xAD\xDE\x10\x41\x52\x21", 12));
            QCOMPARE(out.left(0x174), data.left(0x174));
            QCOMPARE(out.mid(0x180), data.mid(0x180));
        }
        QVERIFY(!FlashFile::stampCopy(dir.filePath("missing.tmp"), dir.filePath("b.bin"), 1, 2));
        QVERIFY(!QFile::exists(dir.filePath("b.bin")));
    }

    void appendAndPad()
    {
        QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath("part"), QByteArray("abcdefghij")));
        QFile out(dir.filePath("out"));
        QVERIFY(out.open(QIODevice::WriteOnly));
        QVERIFY(FlashFile::append(out, dir.filePath("part"), 3));
        QVERIFY(FlashFile::appendPad(out, 5, 2));
        QVERIFY(!FlashFile::append(out, dir.filePath("missing"), 3));
        QVERIFY(FlashFile::appendPad(out, 0, 2));
        out.close();
        QCOMPARE(readAll(dir.filePath("out")), QByteArray("abcdefghij") + QByteArray(5, char(0xFF)));
    }
};

QTEST_GUILESS_MAIN(TestFlashLayout)
#include "tst_flash_layout.moc"
