#include "widgets/MediaKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace MediaKinds {

const char *const kDefaultContent = "https://www.example.com";
const char *const kSizeKey = "size(50pixels)";

namespace {

using RecordFields::u16;
using RecordFields::wordValue;

using C = Codec;
using Records::appendU16;
using Records::appendU8;

const char *const kVideoModeWords[] = {"Continue", "Pause", "Close", "SinglePlay", "RepeatPlay", nullptr};
const char *const kOnOffWords[] = {"ON", "OFF", nullptr};
const WordEntry kOnOffEntries[] = {{"ON", 1}, {"OFF", 0}};
const WordTable kOnOff = {kOnOffEntries, 2, 0};

constexpr const char *kPairAddrZh = "操作地址";
constexpr const char *kPairValueZh = "    _赋值";

// Pair n of the video's eight (address, value) pairs, at a row that is
// also its place in the line.
#define VANTILE_PAIR(n, at)                                                                           \
    field("writeAddr" #n, C::Hex16, at, at, "0xFFFF", kPairAddrZh).english("writeAddr").address(),   \
        field("writeAddr" #n "_value", C::Hex16, (at) + 1, (at) + 1, "0xFFFF", kPairValueZh)          \
            .english("writeAddr_value")

// The line holds the fields in the order of the rows, lockState last.
// clang-format off
const FieldDef kWavFields[] = {
    //    key              codec       row line default        Chinese label
    field("name",          C::Text,      0,  0, kObjectNameDefault, "控件名称"),
    field("X",             C::Decimal,   1,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",             C::Decimal,   2,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",             C::Decimal,   3,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",             C::Decimal,   4,  4, "0",            "高度").cut(NumWidth::S16),
    field("wavID",         C::Decimal,   5,  5, "0",            "音频ID").cut(NumWidth::U16),
    field("repeat",        C::Switch,    6,  6, "Disable",      "循环使能"),
    field("lockState",     C::Decimal,  -1,  7, "1").cut(NumWidth::S16),
    // A sound has no parameter block: no row, nothing in the line, always none.
    field("parameterAddr", C::Hex16,    -1, -1, "0xFFFF").fixedToDefault(),
};

const FieldDef kVideoFields[] = {
    //    key              codec       row line default        Chinese label
    field("name",          C::Text,      0,  0, kObjectNameDefault, "控件名称"),
    field("parameterAddr", C::Hex16,     1,  1, "0xFFFF",       "参数地址"),
    field("X",             C::Decimal,   2,  2, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",             C::Decimal,   3,  3, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",             C::Decimal,   4,  4, "0",            "宽度").cut(NumWidth::S16),
    field("H",             C::Decimal,   5,  5, "0",            "高度").cut(NumWidth::S16),
    field("videoID",       C::Decimal,   6,  6, "0",            "视频ID").cut(NumWidth::U16),
    field("progress",      C::Decimal,   7,  7, "0",            "进度").cut(NumWidth::U8),
    field("mode",          C::Word,      8,  8, "SinglePlay",   "播放模式").words(&WordTables::videoMode)
                                                                 .editedBy(Editor::Menu, kVideoModeWords),
    VANTILE_PAIR(1, 9),  VANTILE_PAIR(2, 11), VANTILE_PAIR(3, 13), VANTILE_PAIR(4, 15),
    VANTILE_PAIR(5, 17), VANTILE_PAIR(6, 19), VANTILE_PAIR(7, 21), VANTILE_PAIR(8, 23),
    field("lockState",     C::Decimal,  -1, 25, "1").cut(NumWidth::S16),
};

const FieldDef kCameraFields[] = {
    //    key              codec       row line default        Chinese label
    field("name",          C::Text,      0,  0, kObjectNameDefault, "控件名称"),
    field("parameterAddr", C::Hex16,     1,  1, "0xFFFF",       "参数地址"),
    field("writeAddr",     C::Hex16,     2,  2, "0x0000",       "变量地址").address(),
    field("X",             C::Decimal,   3,  3, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",             C::Decimal,   4,  4, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",             C::Decimal,   5,  5, "0",            "宽度").cut(NumWidth::S16),
    field("H",             C::Decimal,   6,  6, "0",            "高度").cut(NumWidth::S16),
    field("direction",     C::Decimal,   7,  7, "0",            "画面方向").cut(NumWidth::U8),
    field("system",        C::Decimal,   8,  8, "0",            "系统").cut(NumWidth::U8),
    field("channel",       C::Decimal,   9,  9, "1",            "通道数").cut(NumWidth::U8),
    // the picture's settings start in the middle of their range
    field("contrast",      C::Decimal,  10, 10, "128",          "反差").cut(NumWidth::U8),
    field("bright",        C::Decimal,  11, 11, "128",          "明亮度").cut(NumWidth::U8),
    field("saturation",    C::Decimal,  12, 12, "128",          "饱和度").cut(NumWidth::U8),
    field("hue",           C::Decimal,  13, 13, "0",            "色调").cut(NumWidth::U8),
    field("blueMode",      C::Decimal,  14, 14, "0",            "蓝色模式").cut(NumWidth::U8),
    field("defaultState",  C::Word,     15, 15, "OFF",          "默认状态").words(&kOnOff)
                                                                 .editedBy(Editor::Menu, kOnOffWords),
    field("lockState",     C::Decimal,  -1, 16, "1").cut(NumWidth::S16),
};

const FieldDef kQrcodeFields[] = {
    //    key              codec       row line default        Chinese label
    field("name",          C::Text,      0,  0, kObjectNameDefault, "控件名称"),
    field("parameterAddr", C::Hex16,     1,  1, "0xFFFF",       "参数地址"),
    field("writeAddr",     C::Hex16,     2,  2, "0x0000",       "变量地址").address(),
    field("byteLength",    C::Decimal,   3,  3, "64",           "数据长度(byte)").cut(NumWidth::U16),
    field("X",             C::Decimal,   4,  4, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",             C::Decimal,   5,  5, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",             C::Decimal,   6,  6, "0",            "宽度").cut(NumWidth::S16),
    field("H",             C::Decimal,   7,  7, "0",            "高度").cut(NumWidth::S16),
    field(kSizeKey,        C::Decimal,   8,  8, "1",            "尺寸x50px").cut(NumWidth::U8),
    field("content",       C::Text,      9,  9, kDefaultContent, "初始值"),
    field("lockState",     C::Decimal,  -1, 10, "1").cut(NumWidth::S16),
};
// clang-format on
#undef VANTILE_PAIR

// Bytes of the parameter blocks: the whole record after its count byte.
constexpr int kWavBlock = 2;
constexpr int kVideoBlock = 0x2C;
constexpr int kCameraBlock = 0x12;
constexpr int kQrcodeBlock = 9;
constexpr int kVideoPairs = 8;
constexpr quint16 kRepeatBit = 0x8000;

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

void appendRect(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU16(out, r.w);
    appendU16(out, r.h);
}

// The record's parameter block into variable memory, then the record out.
int finish(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, const QByteArray &record, int block)
{
    if (ctx.variables)
        ctx.variables->storeRecordBlock(b.name(), WidgetKinds::parameterWord(b.kind()), u16(b, "parameterAddr"),
                                        record, block, ctx.errorText);
    out.append(record);
    return record.size();
}

// 7 bytes: the sound's number, its top bit for a sound that repeats.
int writeWav(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::Wav), ctx.viceFlag, u16(b, "parameterAddr"), kWavBlock, false);
    appendU16(r, quint16((u16(b, "wavID") & ~kRepeatBit) | (b.isOn("repeat") ? kRepeatBit : 0)));
    return finish(out, b, ctx, r, kWavBlock);
}

// 49 bytes. The build reads the file's facts for its log; the record is
// written whatever they are.
int writeVideo(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    if (ctx.videoProbe)
        ctx.videoProbe(b.name(), u16(b, "videoID"));
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::Video), ctx.viceFlag, u16(b, "parameterAddr"), kVideoBlock,
                                 false);
    appendU16(r, u16(b, "videoID"));
    appendRect(r, b, ctx);
    appendU8(r, quint8(wordValue(b, "mode")));
    appendU8(r, quint8(b.number("progress")));
    for (int n = 1; n <= kVideoPairs; ++n) {
        const QByteArray key = "writeAddr" + QByteArray::number(n);
        appendU16(r, u16(b, key.constData()));
        appendU16(r, u16(b, (key + "_value").constData()));
    }
    return finish(out, b, ctx, r, kVideoBlock);
}

// 23 bytes; the default state (1 on, 0 off) goes to the write address.
int writeCamera(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::Camera), ctx.viceFlag, u16(b, "parameterAddr"),
                                 kCameraBlock, false);
    appendU16(r, u16(b, "writeAddr"));
    appendRect(r, b, ctx);
    for (const char *key : {"direction", "system", "channel", "contrast", "bright", "saturation", "hue", "blueMode"})
        appendU8(r, quint8(b.number(key)));
    if (ctx.variables)
        ctx.variables->storeWord(b.name(), u16(b, "writeAddr"), quint16(wordValue(b, "defaultState")),
                                 ctx.errorText);
    return finish(out, b, ctx, r, kCameraBlock);
}

// The content at the write address. A room that starts inside variable
// memory but runs past its end is refused as a whole.
void storeContent(const EditBuffer &b, const RecordContext &ctx)
{
    if (!ctx.variables)
        return;
    VariableImage &image = *ctx.variables;
    const quint16 at = u16(b, "writeAddr");
    const int room = int(b.number("byteLength"));
    if (2 * int(at) + 1 < image.limit() && 2 * int(at) + room > image.limit()) {
        if (ctx.errorText)
            ctx.errorText->append(b.name() + QStringLiteral(":  more than Max value\n"));
        return;
    }
    image.storeValue(b.name(), at, qrContentBytes(b), ctx.errorText);
}

// 14 bytes: the code's top left corner and its side in steps of 50 pixels.
int writeQrcode(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::QRCode), ctx.viceFlag, u16(b, "parameterAddr"),
                                 kQrcodeBlock, false);
    appendU16(r, u16(b, "writeAddr"));
    appendU16(r, u16(b, "byteLength"));
    const Rect16 rect = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    appendU16(r, rect.x);
    appendU16(r, rect.y);
    appendU8(r, quint8(b.number(kSizeKey)));
    storeContent(b, ctx);
    return finish(out, b, ctx, r, kQrcodeBlock);
}

// A dropped code takes the largest whole number of 50-pixel steps that the
// drawn rectangle holds (at least one) and becomes that square.
void qrcodeAtDrop(EditBuffer &b)
{
    const int steps = qMax(1, qMin(int(b.w()), int(b.h())) / kSizeStep);
    b.setNumber(kSizeKey, steps);
    b.setW(steps * kSizeStep);
    b.setH(steps * kSizeStep);
}

} // namespace

QByteArray qrContentBytes(const EditBuffer &b)
{
    const int room = qMax(0, int(b.number("byteLength")));
    QByteArray bytes = b.text("content").toUtf8();
    if (bytes.size() > room) {
        int cut = room;
        // a UTF-8 continuation byte (10xxxxxx) would leave half a character
        while (cut > 0 && (quint8(bytes[cut]) & 0xC0) == 0x80)
            --cut;
        bytes.truncate(cut);
    }
    bytes.append(QByteArray(room - bytes.size(), '\0'));
    return bytes;
}

// --- host lists ------------------------------------------------------------------
// A sound and a video are driven through their parameter blocks (2 and 46
// bytes after byte 4). A camera is switched by a word at writeAddr, 1 when
// it starts "ON"; a QR code shows the UTF-8 text at writeAddr.
constexpr ListColumn kWavColumns[] = {blankColumn(), blankColumn(), addressColumn("parameterAddr"),
                                      fixedColumn("2")};
constexpr ListColumn kVideoColumns[] = {blankColumn(), blankColumn(), addressColumn("parameterAddr"),
                                        fixedColumn("46")};
constexpr ListColumn kCameraColumns[] = {addressColumn("writeAddr"), fixedColumn("2"),
                                         addressColumn("parameterAddr"), fixedColumn("18")};
constexpr ListColumn kQrcodeColumns[] = {addressColumn("writeAddr"), decimalColumn("byteLength"),
                                         addressColumn("parameterAddr"), fixedColumn("9")};
constexpr SerialRow kCameraSerial[] = {{"writeAddr", "defaultState", ValueForm::WordNumber, "short"}};
constexpr SerialRow kQrcodeSerial[] = {{"writeAddr", "content", ValueForm::Utf8Text}};

constexpr KindExports kWavExports = {ExportList::Display, kWavColumns, countOf(kWavColumns)};
constexpr KindExports kVideoExports = {ExportList::Display, kVideoColumns, countOf(kVideoColumns)};
constexpr KindExports kCameraExports = {ExportList::Display, kCameraColumns, countOf(kCameraColumns), nullptr,
                                        nullptr,             kCameraSerial,  countOf(kCameraSerial)};
constexpr KindExports kQrcodeExports = {ExportList::Display, kQrcodeColumns, countOf(kQrcodeColumns), nullptr,
                                        nullptr,             kQrcodeSerial,  countOf(kQrcodeSerial),
                                        "#define  _QRCODE_PAGE", "writeAddr"};

// Fields in KindDef's order: kind, fields, labels, writers, apply rule,
// field splitter (none: plain commas), drop rule, host lists.
const KindDef wav = {WidgetKind::Wav, kWavFields, countOf(kWavFields), nullptr, 0,
                     writeWav,        nullptr,    nullptr,              nullptr, nullptr,
                     &kWavExports};

const KindDef video = {WidgetKind::Video, kVideoFields, countOf(kVideoFields), nullptr, 0,
                       writeVideo,        nullptr,      nullptr,                nullptr, nullptr,
                       &kVideoExports};

const KindDef camera = {WidgetKind::Camera, kCameraFields, countOf(kCameraFields), nullptr, 0,
                        writeCamera,        nullptr,       nullptr,                 nullptr, nullptr,
                        &kCameraExports};

const KindDef qrcode = {WidgetKind::QRCode, kQrcodeFields, countOf(kQrcodeFields), nullptr, 0,
                        writeQrcode,        nullptr,       nullptr,                 nullptr, qrcodeAtDrop,
                        &kQrcodeExports};

} // namespace MediaKinds

} // namespace vantile
