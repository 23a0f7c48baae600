#include "build/FlashLayout.h"

#include "project/ProjectSettings.h"
#include "project/SealedFile.h"

#include <QFile>
#include <QtEndian>

// The pinyin table is compiled into the core as a resource; a resource in
// a static library must be pulled in by name.
static void initPinyinResource()
{
    Q_INIT_RESOURCE(vantile_data);
}

namespace vantile {

namespace {

void putLe16(QByteArray &b, int at, quint32 v)
{
    qToLittleEndian<quint16>(quint16(v), reinterpret_cast<uchar *>(b.data() + at));
}

void putLe32(QByteArray &b, int at, quint32 v)
{
    qToLittleEndian<quint32>(v, reinterpret_cast<uchar *>(b.data() + at));
}

quint32 getLe32(const QByteArray &b, int at)
{
    return qFromLittleEndian<quint32>(reinterpret_cast<const uchar *>(b.constData() + at));
}

// A decimal text field of the settings dialog: its digits, 0 without any.
quint32 decimal(const QString &text)
{
    return quint32(IniValue::integer(text.toLatin1()));
}

// A hexadecimal field ("0x..."): the digits behind the first x, 0 without one.
quint32 hexadecimal(const QString &text)
{
    return IniValue::hexadecimal(text.toLatin1());
}

// A version text in 8 Latin-1 bytes: cut at 8, padded with "0".
QByteArray versionBytes(const QString &text)
{
    QByteArray b = text.toLatin1().left(8);
    while (b.size() < 8)
        b.append('0');
    return b;
}

} // namespace

namespace Flash {

FrontLayout FrontLayout::of(const ProjectSettings &settings)
{
    FrontLayout l;
    l.gbkCode = settings.gbkCode;
    l.modbusMaster = settings.modbusMaster;
    return l;
}

qint64 flashLimit(int flashSizeIndex)
{
    return (qint64(2) << qBound(0, flashSizeIndex, 8)) * 1024 * 1024;
}

bool exceedsFlash(qint64 imageSize, int flashSizeIndex)
{
    return imageSize > flashLimit(flashSizeIndex);
}

qint64 roundUp(qint64 n, qint64 unit)
{
    if (unit <= 0)
        return n;
    const qint64 rest = n % unit;
    return rest == 0 ? n : n + (unit - rest);
}

quint32 crcTableEntry(int index)
{
    // The table's entry i is the CRC of the single byte i.
    return SealedFile::crc32(QByteArray(1, char(index & 0xFF)));
}

QByteArray pinyinTable()
{
    initPinyinResource();
    QFile f(QStringLiteral(":/vantile/PinyinTable.bin"));
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray();
    return f.readAll();
}

} // namespace Flash

// --- BlockDirectory --------------------------------------------------------

void BlockDirectory::clear()
{
    for (quint32 &w : m_words)
        w = 0;
}

QByteArray BlockDirectory::bytes() const
{
    QByteArray b(int(Flash::kDirectorySize), '\0');
    for (int i = 0; i < int(Flash::kDirectorySize / 4); ++i)
        putLe32(b, 4 * i, m_words[i]);
    return b;
}

BlockDirectory BlockDirectory::fromBytes(const QByteArray &bytes)
{
    BlockDirectory d;
    for (int i = 0; i < int(Flash::kDirectorySize / 4) && 4 * i + 4 <= bytes.size(); ++i)
        d.m_words[i] = getLe32(bytes, 4 * i);
    return d;
}

// --- UiMessageBlock --------------------------------------------------------

namespace UiMessageBlock {

QByteArray commandHeader(const QString &startBytes)
{
    QByteArray kept;
    for (char c : startBytes.toUtf8()) {
        if (kept.size() == 8)
            break;
        if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f') || c == 'x' || c == 'X')
            kept.append(c);
    }
    QByteArray out(2, '\0');
    if (kept.size() == 8) {
        out[0] = char(kept.mid(2, 2).toUInt(nullptr, 16));
        out[1] = char(kept.mid(6, 2).toUInt(nullptr, 16));
    } else {
        // The 16-bit value 0x5AA5, low byte first.
        putLe16(out, 0, 0x5AA5);
    }
    return out;
}

quint32 supplierKey(const ProjectSettings &settings)
{
    return hexadecimal(settings.supplierId);
}

void seal(QByteArray &block, quint32 key)
{
    putLe32(block, NotChecksum, key);
    putLe32(block, Checksum, kChecksumConstant);
    const quint32 sum = SealedFile::crc32(block.left(ImageSize));
    putLe32(block, Checksum, sum);
    putLe32(block, NotChecksum, ~sum);
    for (int i = ImageSize; i < int(Flash::kUiMessageSize); ++i)
        block[i] = char(0xFF);
}

bool checksumHolds(const QByteArray &block, quint32 key)
{
    if (block.size() < ImageSize)
        return false;
    QByteArray copy = block.left(ImageSize);
    const quint32 stored = getLe32(copy, Checksum);
    if (getLe32(copy, NotChecksum) != ~stored)
        return false;
    putLe32(copy, NotChecksum, key);
    putLe32(copy, Checksum, kChecksumConstant);
    return SealedFile::crc32(copy) == stored;
}

QByteArray build(const ProjectSettings &s, const QDateTime &when)
{
    QByteArray b(int(Flash::kUiMessageSize), char(0xFF));

    const QDate d = when.date();
    const QTime t = when.time();
    b[BuildYear] = char(d.year() < 2023 ? 0 : d.year() - 2023);
    b[BuildMonth] = char(d.month());
    b[BuildDay] = char(d.day());
    const quint32 seconds = quint32(t.hour() * 3600 + t.minute() * 60 + t.second());
    b[BuildSeconds] = char(seconds & 0xFF);
    b[BuildSeconds + 1] = char((seconds >> 8) & 0xFF);
    b[BuildSeconds + 2] = char((seconds >> 16) & 0xFF);

    b[ChipType] = char(s.panelType);
    b[RgbInterface] = char(s.colorDepth);
    b[Rotation] = char(s.rotate);
    b[PowerFlags] = char((s.autoBL ? 0x01 : 0) | (s.keyBeep ? 0x02 : 0) | (s.initVar ? 0x04 : 0));
    quint8 serial = quint8((s.modbusMaster ? 0x01 : 0) | (s.noFeedBack ? 0x02 : 0) | (s.noCrc ? 0x04 : 0));
    if (s.eoCheck == 1)
        serial |= 0x08;
    else if (s.eoCheck == 2)
        serial |= 0x18;
    b[SerialFlags] = char(serial);
    b[Baudrate] = char(s.baudrate);
    const QByteArray header = commandHeader(s.startBytes);
    b[CommandHeader] = header[0];
    b[CommandHeader + 1] = header[1];
    b[FlashSize] = char((s.flashSize & 0x7F) | (s.flashTypeIndex == 0 ? 0x80 : 0));
    b[PolarityFlags] = char((s.tft.pclk ? 0x01 : 0) | (s.tft.hsync ? 0x02 : 0) | (s.tft.vsync ? 0x04 : 0)
                            | (s.tft.de ? 0x08 : 0) | (s.tft.bgr ? 0x10 : 0));

    putLe16(b, XSize, decimal(s.xsize));
    putLe16(b, YSize, decimal(s.ysize));
    putLe16(b, Vbpd, decimal(s.tft.vbpd));
    putLe16(b, Vfpd, decimal(s.tft.vfpd));
    putLe16(b, Vspw, decimal(s.tft.vspw));
    putLe16(b, Hbpd, decimal(s.tft.hbpd));
    putLe16(b, Hfpd, decimal(s.tft.hfpd));
    putLe16(b, Hspw, decimal(s.tft.hspw));

    putLe32(b, SupplierKey, hexadecimal(s.supplierId));
    b.replace(SupplierVersion, 8, versionBytes(s.supplierVer));
    putLe32(b, UserKey, hexadecimal(s.userId));
    b.replace(UserVersion, 8, versionBytes(s.userVer));

    putLe16(b, StartPage, quint32(qMax(0, s.startPage)));
    b[GeData] = char(decimal(s.geData));
    b[BacklightOn] = char(decimal(s.blon));
    b[BacklightSleep] = char(decimal(s.blsp));
    putLe16(b, BacklightHold, decimal(s.kptm));
    b[Volume] = char(qMin<quint32>(decimal(s.volume), 16));
    b[DeviceAddress] = char(hexadecimal(s.devAddr) & 0xFF);
    b[LanguageCount] = char(decimal(s.languageNum));

    for (int i = FillerStart; i < FillerEnd; ++i)
        b[i] = char(Flash::crcTableEntry(i) & 0xFF);

    seal(b, supplierKey(s));
    return b;
}

} // namespace UiMessageBlock

} // namespace vantile
