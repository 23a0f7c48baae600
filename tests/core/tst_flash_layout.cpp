// The fixed front of the flash image (block directory, settings block with
// filler and checksum), the flash limit, the OTA block tail rule, Addr_Info.txt
// and the chunked CRC and stamp. Expected bytes are worked out by hand.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "build/OtaPlacement.h"

using namespace core;

namespace {

// Settings for the field-by-field check of the block, one line for each group
// of bytes there; what is not set keeps its default (the supplier key and
// version, VFPD, VSPW, HFPD, HSPW).
ProjectSettings knownSettings()
{
    ProjectSettings s;
    s.panelType = 5; s.colorDepth = 1; s.rotate = 2; s.autoBL = true; s.initVar = true;
    s.modbusMaster = true; s.noCrc = true; s.eoCheck = 2; s.baudrate = 7; s.startBytes = "0x12,0x34";
    s.flashSize = 4; s.flashTypeIndex = 0; s.tft.hsync = false; s.tft.de = false; s.tft.bgr = true;
    s.xsize = "1024"; s.ysize = "600"; s.tft.vbpd = "23"; s.tft.hbpd = "300";
    s.userId = "0x12345678"; s.userVer = "ABCDEFGHIJ";
    s.startPage = 258; s.geData = "7"; s.blon = "63"; s.blsp = "10"; s.kptm = "300"; s.volume = "20";
    s.devAddr = "0x1F"; s.languageNum = "3";
    return s;
}

const QDateTime kTime(QDate(2024, 3, 9), QTime(14, 5, 7));

} // namespace

class TestFlashLayout : public QObject
{
    Q_OBJECT
private slots:
    void directoryFieldsSitAtTheirOffsets()
    {
        using D = BlockDirectory;
        const QList<QPair<D::Field, int>> table = {
            {D::VariableImageAddress, 0x00}, {D::PageBlockAddress, 0x08}, {D::PageCount, 0x0C},
            {D::FontAddress, 0x10},          {D::FontCount, 0x14},        {D::WavAddress, 0x18},
            {D::WavCount, 0x1C},             {D::PictureAddress, 0x20},   {D::PictureCount, 0x24},
            {D::GifAddress, 0x28},           {D::GifCount, 0x2C},         {D::IconAddress, 0x30},
            {D::IconCount, 0x34},            {D::PinyinAddress, 0x40},    {D::PinyinSize, 0x44},
            {D::CommandTableAddress, 0x48},  {D::CommandTableSize, 0x4C}, {D::LanguageAddress, 0x50},
            {D::LanguageCount, 0x54},        {D::VicePageAddress, 0x58},  {D::VicePageCount, 0x5C},
            {D::StaticTextAddress, 0x60},    {D::StaticTextCount, 0x64},
        };
        // Field i holds A1 00 00 i, little-endian; 0x04, 0x38, 0x3C and 0x68
        // to 0x7F are unused and stay 0.
        D d;
        QByteArray expected(128, '\0');
        for (int i = 0; i < table.size(); ++i) {
            d.set(table[i].first, 0xA1000000u + quint32(i));
            expected.replace(table[i].second, 4, QByteArray(1, char(i)) + hex("0000 A1"));
        }
        QCOMPARE(d.bytes(), expected);
        QCOMPARE(D::fromBytes(expected).bytes(), expected);
        // A short buffer reads what it holds and leaves the rest 0.
        const D shortRead = D::fromBytes(hex("80010000 01"));
        QVERIFY(shortRead.value(D::VariableImageAddress) == 0x180 && shortRead.value(D::PageBlockAddress) == 0);
    }

    void uiMessageFieldsFromSettings()
    {
        const QByteArray b = UiMessageBlock::build(knownSettings(), kTime);
        QCOMPARE(b.size(), 256);
        // 2024 - 2023, March 9th, 14:05:07 = 50707 = 0x00C613 seconds.
        QCOMPARE(b.mid(0, 6), hex("01 03 09 13C600"));
        // chip 5, RGB 1, rotation 2; auto backlight + initialise variables;
        // master 0x01, no CRC 0x04, odd parity 0x18; baud 7; header 12 34;
        // 32MB index 4 with the Nand bit 7; PCLK 0x01, VSYNC 0x04, BGR 0x10.
        QCOMPARE(b.mid(6, 10), hex("05 01 02 05 1D 07 1234 84 15"));
        // 1024 x 600, VBPD 23, VFPD 12, VSPW 3, HBPD 300, HFPD 160, HSPW 20.
        QCOMPARE(b.mid(16, 16), hex("0004 5802 1700 0C00 0300 2C01 A000 1400"));
        // the supplier key 0x5E21B7C4 and "V3.20" padded with '0'; the user's.
        QCOMPARE(b.mid(32, 24), hex("C4B7215E") + "V3.20000" + hex("78563412") + "ABCDEFGH");
        // start page 258, GE 7, on 63, sleep 10, hold 300, volume 20 clipped
        // to 16, device 0x1F, 3 languages.
        QCOMPARE(b.mid(56, 10), hex("0201 07 3F 0A 2C01 10 1F 03"));
        QCOMPARE(b.mid(244), QByteArray(12, char(0xFF)));
    }

    void uiMessageSmallRules()
    {
        // One setting away from the defaults (16MB Nor, no flags) and the bytes it gives.
        using Set = void (*)(ProjectSettings &);
        const struct { const char *what; Set set; int offset; QByteArray bytes; } cases[] = {
            {"volume 16 stays", [](ProjectSettings &s) { s.volume = "16"; }, 63, hex("10")},
            {"device address low byte", [](ProjectSettings &s) { s.devAddr = "0x1234"; }, 64, hex("34")},
            {"user version short", [](ProjectSettings &s) { s.userVer = "V1"; }, 48, "V1000000"},
            {"user key without x", [](ProjectSettings &s) { s.userId = "1234"; }, 44, hex("00000000")},
            {"start page negative", [](ProjectSettings &s) { s.startPage = -1; }, 56, hex("0000")},
            {"parity even", [](ProjectSettings &s) { s.eoCheck = 1; }, 10, hex("08")},
            // The header is eight of 0-9, a-f, x (the third and fourth of each half
            // taken); fewer than eight give 0x5AA5 low byte first.
            {"header upper X", [](ProjectSettings &s) { s.startBytes = "0X7e,0Xe7"; }, 12, hex("7EE7")},
            {"header first eight", [](ProjectSettings &s) { s.startBytes = "0x01,0x02,0x03"; }, 12, hex("0102")},
            {"header blank", [](ProjectSettings &s) { s.startBytes = "0x5A 0xA5"; }, 12, hex("5AA5")},
            {"header seven", [](ProjectSettings &s) { s.startBytes = "0x5A,0xA"; }, 12, hex("A55A")},
        };
        for (const auto &k : cases) {
            ProjectSettings s;
            k.set(s);
            const QByteArray got = UiMessageBlock::build(s, kTime).mid(k.offset, k.bytes.size());
            QVERIFY2(got == k.bytes, qPrintable(QString("%1: %2").arg(k.what, QString(got.toHex(' ')))));
            if (k.offset == 12)
                QCOMPARE(UiMessageBlock::commandHeader(s.startBytes), k.bytes);
        }
        // Years count from 2023, earlier ones store 0; 23:59:59 = 86399 = 0x01517F.
        const QDateTime early(QDate(2022, 12, 31), QTime(23, 59, 59));
        QCOMPARE(UiMessageBlock::build(ProjectSettings(), early).left(6), hex("00 0C 1F 7F5101"));
    }

    void fillerAndChecksum()
    {
        // The filler 66..235 holds the low bytes of the CRC table, entry i
        // being the CRC of the one byte i: entry 0x80 is the polynomial
        // 0xEDB88320; entry 0xC0 is entry 0x80 xor entry 0x40 (0x76DC4190) = 0x9B64C2B0.
        QCOMPARE(Flash::crcTableEntry(0x80), 0xEDB88320u);
        const QByteArray b = UiMessageBlock::build(knownSettings(), kTime);
        QCOMPARE(quint8(b[0xC0]), quint8(0xB0));
        for (int i = 66; i < 236; ++i)
            QCOMPARE(quint8(b[i]), quint8(slowCrc(QByteArray(1, char(i))) & 0xFF));
        // Independently: bytes 0..243 with the key at 236 and the constant at 240.
        const quint32 sum = slowCrc(b.left(236) + hex("C4B7215E 521D3F6B"));
        QCOMPARE(le32(b, 240), sum);
        QCOMPARE(le32(b, 236), ~sum);
        QVERIFY(UiMessageBlock::checksumHolds(b, 0x5E21B7C4u) && !UiMessageBlock::checksumHolds(b, 0x5E21B7C5u));
        QVERIFY(!UiMessageBlock::checksumHolds(b.left(100), 0x5E21B7C4u));
        for (int at : {63, 236}) { // a setting, the complement
            QByteArray changed = b;
            changed[at] = char(changed[at] ^ 1);
            QVERIFY(!UiMessageBlock::checksumHolds(changed, 0x5E21B7C4u));
        }
        // The stamp bytes are not part of the sum.
        QByteArray stamped = b;
        stamped.replace(244, 12, QByteArray(12, '\x11'));
        QVERIFY(UiMessageBlock::checksumHolds(stamped, 0x5E21B7C4u));
    }

    void flashLimitAndRounding()
    {
        QVERIFY(!Flash::exceedsFlash(2097152, 0) && Flash::exceedsFlash(2097153, 0));
        QVERIFY(!Flash::exceedsFlash(536870912, 8) && Flash::exceedsFlash(536870913, 8));
        QCOMPARE(Flash::roundUp(0, 0x20000), qint64(0));
        QCOMPARE(Flash::roundUp(0x20000, 0x20000), qint64(0x20000));
        QCOMPARE(Flash::roundUp(0x20001, 0x20000), qint64(0x40000));
    }

    void blockTailRule()
    {
        // Unit 0x20000, flash 16 MB; the pad is what lies between the block's end and the next start.
        const struct {
            const char *what;
            qint64 end;
            const char *reserve, *previousReserve, *previousEnd;
            bool beforeKept, kept;
            qint64 next;
        } cases[] = {
            // 0x203E8 + 64 KB = 0x303E8 -> 0x40000
            {"first build", 0x203E8, "64", "", "", true, false, 0x40000},
            {"exactly at the end", 0x40000, "64", "64", "262144", true, true, 0x40000},
            {"previous end written in hex", 0x203E8, "64", "64", "0x40000", true, true, 0x40000},
            // round(0x40001 + 0x10000) = 0x60000
            {"one byte beyond", 0x40001, "64", "64", "262144", true, false, 0x60000},
            // recomputed even though the block fits: 0x201F4 + 32 KB -> 0x40000
            {"reserve changed", 0x201F4, "32", "64", "393216", true, false, 0x40000},
            {"block before moved", 0x201F4, "64", "64", "393216", false, false, 0x40000},
            {"no reserve: rounded up", 0x40000, "", "", "", true, false, 0x40000},
            // 0x20000 + 20000 MB is far beyond 16 MB: the reserve is not used, round(0x20001) = 0x40000
            {"reserve beyond the flash", 0x20001, "20480000", "20480000", "", true, false, 0x40000},
            // a previous end of 3 GB would pad beyond the flash: round(0x20001 + 64 KB) = 0x40000
            {"previous end beyond the flash", 0x20001, "64", "64", "3221225472", true, false, 0x40000},
        };
        for (const auto &k : cases) {
            const TailOutcome t =
                blockTail(k.end, k.reserve, k.previousReserve, k.previousEnd, k.beforeKept, 0x20000, 0x1000000);
            const QString got =
                QString("%1: kept %2, next %3, pad %4").arg(k.what).arg(t.kept).arg(t.endAddress).arg(t.pad);
            QVERIFY2(t.kept == k.kept && t.endAddress == k.next && t.pad == k.next - k.end, qPrintable(got));
        }
    }

    void addrInfoTextAndRoundTrip()
    {
        OtaAddresses a;
        a.enabled = true;
        a[Material::Font] = {"131072", "262144", "1000", "64"};
        a[Material::Language] = {"262144", "262144", "", ""};
        a[Material::StaticText] = {"1", "2", "3", "4"};
        a.wavNum = "2";
        a.iconNum = "17";
        const QByteArray expected =
            "[INFO]\nisChecked:true\n"
            "Font_StartAddr:131072\nMultiLanguage_StartAddr:262144\nWAV_StartAddr:\nGIF_StartAddr:\n"
            "Image_StartAddr:\nIcon_StartAddr:\nText_StartAddr:1\n"
            "Font_EndAddr:262144\nMultiLanguage_EndAddr:262144\nWAV_EndAddr:\nGIF_EndAddr:\n"
            "Image_EndAddr:\nIcon_EndAddr:\nText_EndAddr:2\n"
            "Font_CurrentSize:1000\nMultiLanguage_CurrentSize:\nWAV_CurrentSize:\nGIF_CurrentSize:\n"
            "Image_CurrentSize:\nIcon_CurrentSize:\nText_CurrentSize:3\n"
            "Font_ReserveLength:64\nMultiLanguage_ReserveLength:\nWAV_ReserveLength:\nGIF_ReserveLength:\n"
            "Image_ReserveLength:\nIcon_ReserveLength:\nText_ReserveLength:4\n"
            "WAV_Num:2\nGIF_Num:\nImage_Num:\nIcon_Num:17\n";
        QCOMPARE(a.toText(), expected);
        QVERIFY(OtaAddresses::fromText(expected) == a);

        a.enabled = false;
        QVERIFY(a.toText().startsWith("[INFO]\nisChecked:false\n"));
        QTemporaryDir dir;
        QVERIFY(a.save(dir.filePath("Addr_Info.txt")));
        bool found = false;
        QVERIFY(OtaAddresses::load(dir.filePath("Addr_Info.txt"), &found) == a && found);
        QVERIFY(OtaAddresses::load(dir.filePath("none.txt"), &found) == OtaAddresses() && !found);

        // Damaged input: BOM, CRLF, keys out of order, unknown and broken lines.
        const OtaAddresses d = OtaAddresses::fromText("\xEF\xBB\xBF[INFO]\r\nIcon_EndAddr:655360\r\n"
                                                      "garbage without colon\r\n:no key\r\nisChecked:true\r\n"
                                                      "Unknown_StartAddr:99\r\nGIF_ReserveLength: 128 \r\n");
        QVERIFY(d.enabled && d[Material::Font].start.isEmpty());
        QCOMPARE(QStringList({d[Material::Icon].end, d[Material::Gif].reserveKb}), QStringList({"655360", "128"}));
        // Anything but "true" is off.
        QVERIFY(!OtaAddresses::fromText("isChecked:TRUE\n").enabled);
        QVERIFY(!OtaAddresses::fromText(QByteArray("\x00\xFF\x01", 3)).enabled);
    }

    void chunkedCrcAndStamp()
    {
        QTemporaryDir dir;
        const QString from = dir.filePath("a.tmp"), to = dir.filePath("a.bin");
        QByteArray data;
        for (int i = 0; i < 1009; ++i)
            data.append(char((i * 131 + 7) & 0xFF));
        writeFile(from, data);
        // Chunks of 7 bytes put the stamp at 0x174..0x17F across several.
        for (qint64 chunk : {qint64(1), qint64(7), qint64(0x175), qint64(Flash::kChunkSize)}) {
            bool ok = false;
            QCOMPARE(FlashFile::crc(from, chunk, &ok), slowCrc(data));
            QVERIFY(ok && FlashFile::stampCopy(from, to, 0x00010180u, 0xDEADBEEFu, chunk));
            QCOMPARE(readAll(to), data.left(0x174) + hex("80010100 EFBEADDE 10415221") + data.mid(0x180));
        }
        bool ok = true;
        FlashFile::crc(dir.filePath("missing.tmp"), 2, &ok);
        QVERIFY(!ok && !FlashFile::stampCopy(dir.filePath("missing.tmp"), dir.filePath("b.bin"), 1, 2));
        QVERIFY(!QFile::exists(dir.filePath("b.bin")));
    }
};

QTEST_GUILESS_MAIN(TestFlashLayout)
#include "tst_flash_layout.moc"
