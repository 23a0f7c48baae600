#pragma once
// The fixed front of the flash image and the rules that place its blocks.
//
//   0x0000  BlockDirectory   128 bytes: where the panel finds every block
//   0x0080  UiMessageBlock   256 bytes: the panel's start-up settings
//   0x0180  PinyinTable      0x11C50 bytes, only with "With GBKCode"
//   A       VariableImage    0x10000 bytes, or 0xC000 in Modbus master mode
//   A+C000  command area     0x2000 bytes, master mode only
//   A+10000 page block, then the other blocks
//
// A is 0x180, or 0x11DD0 with "With GBKCode". In master mode the bytes
// from A + 0xE000 up to the page block are 0xFF. All values in the front
// are little-endian.

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace vantile {

class ProjectSettings;

namespace Flash {

constexpr quint32 kDirectorySize = 128;
constexpr quint32 kUiMessageAddress = 0x80;
constexpr quint32 kUiMessageSize = 256;
constexpr quint32 kPinyinAddress = 0x180;
constexpr quint32 kPinyinSize = 0x11C50;
constexpr quint32 kVariablesPlain = 0x180;   // A without the pinyin table
constexpr quint32 kVariablesWithGbk = 0x11DD0; // A with it
constexpr quint32 kVariableSpace = 0x10000;
constexpr quint32 kMasterVariableSpace = 0xC000;
constexpr quint32 kCommandAreaSize = 0x2000;
constexpr quint32 kPageBlockDistance = 0x10000; // page block at A + this, in every mode
constexpr quint32 kAlignWithGbk = 256 * 1024;
constexpr quint32 kAlignPlain = 128 * 1024;

// Where the copy to Morvane_Flash.bin stamps the image.
constexpr quint32 kImageSizeAt = 0x174;
constexpr quint32 kImageCrcAt = 0x178;
constexpr quint32 kImageNotCrcAt = 0x17C;

// The largest piece of an image file ever held in memory.
constexpr qint64 kChunkSize = 32000000;

// Bytes the panel expects in the fixed front for one setting of the options.
struct FrontLayout {
    bool gbkCode = false;
    bool modbusMaster = false;

    static FrontLayout of(const ProjectSettings &settings);

    quint32 variableAddress() const { return gbkCode ? kVariablesWithGbk : kVariablesPlain; } // A
    quint32 variableSize() const { return modbusMaster ? kMasterVariableSpace : kVariableSpace; }
    quint32 commandSize() const { return modbusMaster ? kCommandAreaSize : 0; }
    quint32 commandAddress() const { return variableAddress() + kMasterVariableSpace; }
    quint32 pageBlockAddress() const { return variableAddress() + kPageBlockDistance; }
    quint32 alignUnit() const { return gbkCode ? kAlignWithGbk : kAlignPlain; }
};

// Flash size of a comboBox_FlhSize index: 2^(index + 1) MiB (2 MB .. 512 MB).
qint64 flashLimit(int flashSizeIndex);
// True when an image of this size does not fit: one byte over, not equal.
bool exceedsFlash(qint64 imageSize, int flashSizeIndex);

// n rounded up to a multiple of unit (n itself when it is one).
qint64 roundUp(qint64 n, qint64 unit);

// The 256-entry table of the reflected CRC-32 polynomial 0xEDB88320.
quint32 crcTableEntry(int index);

// The pinyin table that goes to 0x180 with "With GBKCode": the data file
// compiled in as ":/vantile/PinyinTable.bin". Empty when this program was
// built without it.
QByteArray pinyinTable();

} // namespace Flash

// The 32 directory words at the start of the image.
class BlockDirectory
{
public:
    enum Field : int {
        VariableImageAddress = 0x00,
        PageBlockAddress = 0x08,
        PageCount = 0x0C,
        FontAddress = 0x10,
        FontCount = 0x14,
        WavAddress = 0x18,
        WavCount = 0x1C,
        PictureAddress = 0x20,
        PictureCount = 0x24,
        GifAddress = 0x28,
        GifCount = 0x2C,
        IconAddress = 0x30,
        IconCount = 0x34,
        PinyinAddress = 0x40,
        PinyinSize = 0x44,
        CommandTableAddress = 0x48,
        CommandTableSize = 0x4C,
        LanguageAddress = 0x50,
        LanguageCount = 0x54,
        VicePageAddress = 0x58,
        VicePageCount = 0x5C,
        StaticTextAddress = 0x60,
        StaticTextCount = 0x64,
    };

    quint32 value(Field field) const { return m_words[field / 4]; }
    void set(Field field, quint32 value) { m_words[field / 4] = value; }
    void clear();

    QByteArray bytes() const; // 128 bytes, little-endian words
    static BlockDirectory fromBytes(const QByteArray &bytes);

private:
    quint32 m_words[Flash::kDirectorySize / 4] = {};
};

// The 256-byte settings block at 0x80.
namespace UiMessageBlock {

enum Offset : int {
    BuildYear = 0,       // year - 2023, 0 for earlier years
    BuildMonth = 1,
    BuildDay = 2,
    BuildSeconds = 3,    // 3 bytes: seconds of the day
    ChipType = 6,
    RgbInterface = 7,
    Rotation = 8,
    PowerFlags = 9,      // bit 0 auto backlight, bit 1 key beep, bit 2 initialise variables
    SerialFlags = 10,    // bit 0 master, 1 no reply, 2 no CRC, 3/4 parity
    Baudrate = 11,
    CommandHeader = 12,  // 2 bytes
    FlashSize = 14,      // bit 7: Nand flash
    PolarityFlags = 15,  // bit 0 PCLK, 1 HSYNC, 2 VSYNC, 3 DE, 4 BGR
    XSize = 16,
    YSize = 18,
    Vbpd = 20,
    Vfpd = 22,
    Vspw = 24,
    Hbpd = 26,
    Hfpd = 28,
    Hspw = 30,
    SupplierKey = 32,    // 4 bytes
    SupplierVersion = 36,// 8 characters
    UserKey = 44,        // 4 bytes
    UserVersion = 48,    // 8 characters
    StartPage = 56,      // 2 bytes
    GeData = 58,
    BacklightOn = 59,
    BacklightSleep = 60,
    BacklightHold = 61,  // 2 bytes
    Volume = 63,
    DeviceAddress = 64,
    LanguageCount = 65,
    FillerStart = 66,    // up to 235: low bytes of the CRC table entries of the same index
    FillerEnd = 236,
    NotChecksum = 236,
    Checksum = 240,
    ImageSize = 244,
    ImageCrc = 248,
    ImageNotCrc = 252,
};

constexpr quint32 kChecksumConstant = 0x6B3F1D52u;

// The whole block for these settings and this build time, sealed with the
// settings' supplier key. Bytes 244 to 255 are 0xFF (stamped later).
QByteArray build(const ProjectSettings &settings, const QDateTime &buildTime);

// The two header bytes from the lineEdit_StartBytes text: the 2nd/3rd and
// 6th/7th of the first eight hex-ish characters, or A5 5A when fewer.
QByteArray commandHeader(const QString &startBytes);

// The supplier key the checksum is taken with (lineEdit_VC_KEY).
quint32 supplierKey(const ProjectSettings &settings);

// Writes the checksum into bytes 236..243 and 0xFF into 244..255.
void seal(QByteArray &block, quint32 supplierKey);
// True when bytes 236..243 hold the checksum for this key.
bool checksumHolds(const QByteArray &block, quint32 supplierKey);

} // namespace UiMessageBlock

} // namespace vantile
