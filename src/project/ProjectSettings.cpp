#include "project/ProjectSettings.h"

#include "project/TextFiles.h"

#include <QFile>
#include <QList>

#include <functional>

namespace vantile {

namespace {

using E = ChipEffect;
using F = FlashTypeRule;
using T = TftAction;

//                       byteSwap    pageZip     565    flashType      flashEn     rotate      tft
const ChipRule kChipRules[ProjectSettings::ChipCount] = {
    /* 0  VC210 */      {E::Enable,  E::Disable, true,  F::Blank,      E::Disable, E::Disable, T::Clear},
    /* 1  VC220C */     {E::Enable,  E::Disable, true,  F::Blank,      E::Disable, E::Disable, T::Clear},
    /* 2  VC220D */     {E::Enable,  E::Disable, true,  F::Blank,      E::Disable, E::Disable, T::Clear},
    /* 3  VC530 */      {E::Disable, E::Disable, false, F::Remembered, E::Enable,  E::Enable,  T::Restore},
    /* 4  VC540 */      {E::Disable, E::Enable,  false, F::Remembered, E::Disable, E::Enable,  T::Restore},
    /* 5  VC650 */      {E::Disable, E::Leave,   false, F::Leave,      E::Enable,  E::Leave,   T::Leave},
    /* 6  VC110A */     {E::Enable,  E::Enable,  false, F::Blank,      E::Disable, E::Enable,  T::Clear},
    /* 7  VC110B(MCU) */{E::Enable,  E::Enable,  false, F::Blank,      E::Disable, E::Enable,  T::Clear},
    /* 8  (RGB) */      {E::Disable, E::Enable,  false, F::Blank,      E::Disable, E::Enable,  T::Restore},
    /* 9  (QSPI) */     {E::Enable,  E::Enable,  false, F::Blank,      E::Disable, E::Enable,  T::Restore},
    /* 10 +PSRAM */     {E::Disable, E::Enable,  false, F::Blank,      E::Disable, E::Enable,  T::Restore},
};

// A decimal text field: the digits read as a number. A value without any
// digit leaves the field empty (its default), so an empty field survives a
// save and reopen instead of turning into "0".
QString digitsText(const QByteArray &raw)
{
    bool any = false;
    const qint64 v = IniValue::integer(raw, &any);
    return any ? QString::number(v) : QString();
}

// One key of the file: how it is written and how it is read.
struct Key {
    const char *name;                                   // as written, blank included
    std::function<QString(const ProjectSettings &)> write;
    std::function<void(ProjectSettings &, const QByteArray &raw)> read; // null: not read
};

QString b(bool v) { return v ? QStringLiteral("1") : QStringLiteral("0"); }
bool one(const QByteArray &raw) { return IniValue::integer(raw) == 1; }

int indexInRange(const QByteArray &raw, int max, int fallback)
{
    const qint64 v = IniValue::integer(raw);
    return v > max ? fallback : int(v);
}

const QList<Key> &keys()
{
    using S = ProjectSettings;
    static const QList<Key> list = {
        {"UserID: ", [](const S &s) { return s.userId; },
         [](S &s, const QByteArray &raw) {
             bool hasX = false;
             const quint32 v = IniValue::hexadecimal(raw, &hasX);
             s.userId = IniValue::text(raw).isEmpty()
                            ? QString()
                            : QStringLiteral("0x") + QString::number(v, 16).toUpper();
         }},
        {"UserVer: ", [](const S &s) { return s.userVer; },
         [](S &s, const QByteArray &raw) { s.userVer = IniValue::text(raw); }},
        {"SupplierID: ", [](const S &s) { return s.supplierId; }, nullptr},
        {"SupplierVer: ", [](const S &s) { return s.supplierVer; }, nullptr},
        {"Baudrate: ", [](const S &s) { return QString::number(s.baudrate); },
         [](S &s, const QByteArray &raw) { s.baudrate = indexInRange(raw, 9, 4); }},
        {"EOCheck: ", [](const S &s) { return QString::number(s.eoCheck); },
         [](S &s, const QByteArray &raw) { s.eoCheck = indexInRange(raw, 9, 0); }},
        {"Modbus: ", [](const S &s) { return b(s.modbusMaster); },
         [](S &s, const QByteArray &raw) { s.modbusMaster = one(raw); }},
        {"NoFeedBack: ", [](const S &s) { return b(s.noFeedBack); },
         [](S &s, const QByteArray &raw) { s.noFeedBack = one(raw); }},
        {"NoCRC: ", [](const S &s) { return b(s.noCrc); },
         [](S &s, const QByteArray &raw) { s.noCrc = one(raw); }},
        {"StartByte: ", [](const S &s) { return s.startBytes; },
         [](S &s, const QByteArray &raw) { s.startBytes = IniValue::text(raw); }},
        {"DevAddr: ", [](const S &s) { return s.devAddr; },
         [](S &s, const QByteArray &raw) {
             const quint32 v = IniValue::hexadecimal(raw);
             s.devAddr = QStringLiteral("0x") + QStringLiteral("%1").arg(v, 2, 16, QLatin1Char('0')).toUpper();
         }},
        {"DevNum: ", [](const S &s) { return s.devNum; },
         [](S &s, const QByteArray &raw) { s.devNum = digitsText(raw); }},
        {"PanelType: ", [](const S &s) { return QString::number(s.panelType); },
         [](S &s, const QByteArray &raw) { s.applyChip(indexInRange(raw, 10, 3)); }},
        {"XSIZE: ", [](const S &s) { return s.xsize; },
         [](S &s, const QByteArray &raw) { s.xsize = digitsText(raw); }},
        {"YSIZE: ", [](const S &s) { return s.ysize; },
         [](S &s, const QByteArray &raw) { s.ysize = digitsText(raw); }},
        {"VBPD: ", [](const S &s) { return s.tft.vbpd; },
         [](S &s, const QByteArray &raw) { s.tft.vbpd = digitsText(raw); }},
        {"VFPD: ", [](const S &s) { return s.tft.vfpd; },
         [](S &s, const QByteArray &raw) { s.tft.vfpd = digitsText(raw); }},
        {"VSPW: ", [](const S &s) { return s.tft.vspw; },
         [](S &s, const QByteArray &raw) { s.tft.vspw = digitsText(raw); }},
        {"HBPD: ", [](const S &s) { return s.tft.hbpd; },
         [](S &s, const QByteArray &raw) { s.tft.hbpd = digitsText(raw); }},
        {"HFPD: ", [](const S &s) { return s.tft.hfpd; },
         [](S &s, const QByteArray &raw) { s.tft.hfpd = digitsText(raw); }},
        {"HSPW: ", [](const S &s) { return s.tft.hspw; },
         [](S &s, const QByteArray &raw) { s.tft.hspw = digitsText(raw); }},
        {"PCLKRISING: ", [](const S &s) { return b(s.tft.pclk); },
         [](S &s, const QByteArray &raw) { s.tft.pclk = one(raw); }},
        {"HSYNCPolarity: ", [](const S &s) { return b(s.tft.hsync); },
         [](S &s, const QByteArray &raw) { s.tft.hsync = one(raw); }},
        {"VSYNCPolarity: ", [](const S &s) { return b(s.tft.vsync); },
         [](S &s, const QByteArray &raw) { s.tft.vsync = one(raw); }},
        {"DEPolarity: ", [](const S &s) { return b(s.tft.de); },
         [](S &s, const QByteArray &raw) { s.tft.de = one(raw); }},
        {"RGBSequence: ", [](const S &s) { return b(s.tft.bgr); },
         [](S &s, const QByteArray &raw) { s.tft.bgr = one(raw); }},
        {"ColorDepth: ", [](const S &s) { return QString::number(s.colorDepth); },
         [](S &s, const QByteArray &raw) {
             s.colorDepth = IniValue::integer(raw) != 0 ? 1 : 0;
             if (s.colorDepth == 1 && s.panelType != 3 && s.panelType != 5)
                 s.colorDepth = 0;
         }},
        {"Rotate: ", [](const S &s) { return QString::number(s.rotate); },
         [](S &s, const QByteArray &raw) { s.rotate = indexInRange(raw, 3, 0); }},
        {"FlashType: ", [](const S &s) { return QString::number(s.flashTypeFileValue()); },
         [](S &s, const QByteArray &raw) {
             if (s.panelType != 3)
                 return;
             const qint64 v = IniValue::integer(raw);
             s.setFlashTypeIndex(v == 1 ? 0 : v == 0 ? 1 : 2);
         }},
        {"FlashSize: ", [](const S &s) { return QString::number(s.flashSize); },
         [](S &s, const QByteArray &raw) { s.flashSize = indexInRange(raw, 8, 0); }},
        {"AutoBL: ", [](const S &s) { return b(s.autoBL); },
         [](S &s, const QByteArray &raw) { s.autoBL = one(raw); }},
        {"BLON:", [](const S &s) { return s.blon; },
         [](S &s, const QByteArray &raw) { s.blon = digitsText(raw); }},
        {"BLSP:", [](const S &s) { return s.blsp; },
         [](S &s, const QByteArray &raw) { s.blsp = digitsText(raw); }},
        {"KPTM:", [](const S &s) { return s.kptm; },
         [](S &s, const QByteArray &raw) { s.kptm = digitsText(raw); }},
        {"KeyBeep: ", [](const S &s) { return b(s.keyBeep); },
         [](S &s, const QByteArray &raw) { s.keyBeep = one(raw); }},
        {"InitVar: ", [](const S &s) { return b(s.initVar); },
         [](S &s, const QByteArray &raw) { s.initVar = one(raw); }},
        {"StartPage:", [](const S &s) { return QString::number(s.startPage); },
         nullptr /* needs the page count: read by readIni itself */},
        {"Volume:", [](const S &s) { return s.volume; },
         [](S &s, const QByteArray &raw) { s.volume = digitsText(raw); }},
        {"GBKCode: ", [](const S &s) { return b(s.gbkCode); },
         [](S &s, const QByteArray &raw) { s.gbkCode = one(raw); }},
        {"PIMGZip: ", [](const S &s) { return b(s.pageImageZip); },
         [](S &s, const QByteArray &raw) { s.pageImageZip = one(raw); }},
        {"NDLDType:", [](const S &s) { return QString::number(s.needleDataType); },
         [](S &s, const QByteArray &raw) {
             const qint64 v = IniValue::integer(raw);
             if (v <= 1)
                 s.needleDataType = int(v);
         }},
        {"LanguageNum:", [](const S &s) { return s.languageNum; },
         [](S &s, const QByteArray &raw) {
             bool any = false;
             const qint64 v = IniValue::integer(raw, &any);
             if (!any)
                 s.languageNum.clear();
             else if (v <= 32)
                 s.languageNum = QString::number(v);
         }},
        {"ByteSwap: ", [](const S &s) { return b(s.byteSwap); },
         [](S &s, const QByteArray &raw) { s.byteSwap = one(raw); }},
        {"GeData:", [](const S &s) { return s.geData; },
         [](S &s, const QByteArray &raw) { s.geData = digitsText(raw); }},
        {"aRGB_Png: ", [](const S &s) { return b(s.aRgbPng); },
         [](S &s, const QByteArray &raw) { s.aRgbPng = one(raw); }},
        {"Compilation_Time_Index: ", [](const S &s) { return b(s.compilationTimeFixed); },
         [](S &s, const QByteArray &raw) { s.compilationTimeFixed = one(raw); }},
        {"compileDateTime:",
         [](const S &s) { return s.compileDateTime.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")); },
         [](S &s, const QByteArray &raw) {
             const QString t = QString::fromUtf8(raw).trimmed();
             QDateTime dt = QDateTime::fromString(t, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
             if (!dt.isValid()) // the text filter drops the blank between date and time
                 dt = QDateTime::fromString(IniValue::text(raw), QStringLiteral("yyyy-MM-ddhh:mm:ss"));
             if (dt.isValid())
                 s.compileDateTime = dt;
         }},
    };
    return list;
}

// The line of the file that starts with the key (blanks before it ignored).
// The key is given as written; hand-written files may lack the blank behind
// the colon, so the search is for the key up to its colon and the written
// blank is skipped when it is there. Returns the offset of the value inside
// the line, or -1.
int findKey(const QList<QByteArray> &lines, const QByteArray &writtenKey, QByteArray *line)
{
    QByteArray key = writtenKey;
    while (key.endsWith(' '))
        key.chop(1);
    const bool blankBehind = key.size() != writtenKey.size();
    for (const QByteArray &l : lines) {
        int i = 0;
        while (i < l.size() && (l[i] == ' ' || l[i] == '\t'))
            ++i;
        if (l.mid(i, key.size()) == key) {
            *line = l;
            int at = i + key.size();
            if (blankBehind && at < l.size() && l[at] == ' ')
                ++at;
            return at;
        }
    }
    return -1;
}

} // namespace

const ChipRule &chipRule(int chipIndex)
{
    if (chipIndex < 0 || chipIndex >= ProjectSettings::ChipCount)
        chipIndex = 3;
    return kChipRules[chipIndex];
}

bool TftValues::operator==(const TftValues &o) const
{
    return hbpd == o.hbpd && hfpd == o.hfpd && hspw == o.hspw && vbpd == o.vbpd && vfpd == o.vfpd
           && vspw == o.vspw && pclk == o.pclk && hsync == o.hsync && vsync == o.vsync && de == o.de
           && bgr == o.bgr;
}

namespace IniValue {

QByteArray raw(const QByteArray &line, int keyEnd)
{
    QByteArray v = line.mid(keyEnd);
    while (v.endsWith('\r') || v.endsWith('\n'))
        v.chop(1);
    const int slash = v.indexOf('/');
    if (slash >= 0)
        v.truncate(slash);
    if (v.size() > 1023)
        v.truncate(1023);
    return v;
}

QString text(const QByteArray &raw)
{
    QByteArray kept;
    kept.reserve(raw.size());
    for (char c : raw)
        if (quint8(c) > 32 && quint8(c) < 0x80)
            kept.append(c);
    return QString::fromLatin1(kept);
}

qint64 integer(const QByteArray &raw, bool *any)
{
    qint64 v = 0;
    bool seen = false;
    for (char c : raw) {
        if (c >= '0' && c <= '9') {
            seen = true;
            if (v < (qint64(1) << 40)) // saturate: the fields never need more
                v = v * 10 + (c - '0');
        }
    }
    if (any)
        *any = seen;
    return v;
}

quint32 hexadecimal(const QByteArray &raw, bool *hasX)
{
    int x = -1;
    for (int i = 0; i < raw.size(); ++i)
        if (raw[i] == 'x' || raw[i] == 'X') {
            x = i;
            break;
        }
    if (hasX)
        *hasX = x >= 0;
    if (x < 0)
        return 0;
    quint32 v = 0;
    int n = 0;
    for (int i = x + 1; i < raw.size() && n < 8; ++i) {
        const char c = raw[i];
        int d = -1;
        if (c >= '0' && c <= '9')
            d = c - '0';
        else if (c >= 'a' && c <= 'f')
            d = c - 'a' + 10;
        else if (c >= 'A' && c <= 'F')
            d = c - 'A' + 10;
        if (d < 0)
            continue; // filtered out, as every byte not in the hexadecimal set
        v = (v << 4) | quint32(d);
        ++n;
    }
    return v;
}

} // namespace IniValue

QByteArray ProjectSettings::toIni() const
{
    QByteArray out("\xEF\xBB\xBF[INFO]\n");
    for (const Key &k : keys()) {
        out += k.name;
        out += k.write(*this).toUtf8();
        out += '\n';
    }
    return out;
}

ReadReport ProjectSettings::readIni(const QByteArray &bytes, int pageCount)
{
    QByteArray body = bytes;
    if (body.startsWith("\xEF\xBB\xBF"))
        body.remove(0, 3);
    const QList<QByteArray> lines = body.split('\n');

    ReadReport report;
    for (const Key &k : keys()) {
        const QByteArray key(k.name);
        QByteArray line;
        const int at = findKey(lines, key, &line);
        if (at < 0)
            continue;
        const QByteArray raw = IniValue::raw(line, at);
        if (k.read) {
            k.read(*this, raw);
        } else if (key == "StartPage:") {
            const qint64 v = IniValue::integer(raw);
            if (v > pageCount) {
                report.startPageOverflow = true;
                startPage = 0;
            } else {
                startPage = int(v);
            }
        }
    }
    if (!pageImageZipAllowed(panelType))
        pageImageZip = false;
    return report;
}

void ProjectSettings::stashTft()
{
    if (!tftCleared)
        tftMemory = tft;
}

void ProjectSettings::clearTft()
{
    stashTft();
    tft.hbpd.clear();
    tft.hfpd.clear();
    tft.hspw.clear();
    tft.vbpd.clear();
    tft.vfpd.clear();
    tft.vspw.clear();
    tft.pclk = tft.hsync = tft.vsync = tft.de = tft.bgr = false;
    tftCleared = true;
}

void ProjectSettings::restoreTft()
{
    stashTft();
    tft = tftMemory;
    tftCleared = false;
}

void ProjectSettings::applyChip(int chipIndex)
{
    if (chipIndex < 0 || chipIndex >= ChipCount)
        chipIndex = 3;
    panelType = chipIndex;
    byteSwap = false;
    const ChipRule &r = chipRule(chipIndex);
    if (r.pageImageZipEnabled == ChipEffect::Disable)
        pageImageZip = false;
    if (r.rgbIfForcedTo565)
        colorDepth = 0;
    switch (r.flashType) {
    case FlashTypeRule::Blank: flashTypeIndex = 2; break;
    case FlashTypeRule::Remembered: flashTypeIndex = flashTypeMemory[chipIndex]; break;
    case FlashTypeRule::Leave: break;
    }
    switch (r.tft) {
    case TftAction::Clear: clearTft(); break;
    case TftAction::Restore: restoreTft(); break;
    case TftAction::Leave: break;
    }
}

void ProjectSettings::setFlashTypeIndex(int index)
{
    flashTypeIndex = index;
    if (panelType == 3 || panelType == 4)
        flashTypeMemory[panelType] = index;
}

bool ProjectSettings::pageImageZipAllowed(int chipIndex)
{
    return chipIndex == 4 || (chipIndex >= 6 && chipIndex < ChipCount);
}

int ProjectSettings::flashTypeFileValue() const
{
    return flashTypeIndex == 0 ? 1 : flashTypeIndex == 1 ? 0 : 2;
}

int ProjectSettings::xSizeValue() const
{
    return int(IniValue::integer(xsize.toLatin1()));
}

int ProjectSettings::ySizeValue() const
{
    return int(IniValue::integer(ysize.toLatin1()));
}

QSize ProjectSettings::canvasSize() const
{
    const int x = xSizeValue();
    const int y = ySizeValue();
    if (rotate == 1 || rotate == 3)
        return QSize(y, x);
    return QSize(x, y);
}

VersionGate ProjectSettings::checkVersion(const QString &iniPath)
{
    VersionGate gate;
    QByteArray body;
    FileError error;
    if (TextFiles::readFile(iniPath, &body, &error) != TextFiles::ReadStatus::Ok) {
        gate.reason = error.reason;
        return gate;
    }
    gate.iniFound = true;
    if (body.startsWith("\xEF\xBB\xBF"))
        body.remove(0, 3);
    QByteArray line;
    const int at = findKey(body.split('\n'), "SupplierVer: ", &line);
    if (at >= 0) {
        gate.valueText = IniValue::text(IniValue::raw(line, at));
        QString n = gate.valueText;
        n.remove(QLatin1Char('V')).remove(QLatin1Char('.'));
        gate.number = int(IniValue::integer(n.toLatin1()));
    }
    gate.accepted = gate.number <= VersionLimit;
    return gate;
}

QString ProjectSettings::versionRefusedText(const QString &valueText, int languageIndex)
{
    // The limit is 320 while the text names V3.10: both stand as they are.
    if (languageIndex == 1)
        return QStringLiteral("此工程编译版本（") + valueText
               + QStringLiteral("）大于当前软件版本（V3.10），无法打开，请更换对应版本软件。");
    return QStringLiteral("The compiled version(") + valueText
           + QStringLiteral(") of this project is larger than the current software version(V3.10), "
                            "so it cannot be opened. Replace the software of the corresponding version.");
}

} // namespace vantile
