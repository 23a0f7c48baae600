#include "widgets/IconKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace IconKinds {

namespace {

using RecordFields::keepIconRunOrdered;
using RecordFields::storeBlock;
using RecordFields::u16;

using C = Codec;
using LineGrammar::gifNumber;
using LineGrammar::iconNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

const char *const kRunModeWords[] = {"Run", "Stop", "Disappear", "RunOnce", nullptr};

constexpr const char *kPairAddrZh = "操作变量地址";
constexpr const char *kPairValueZh = "    _赋值";

// clang-format off
const FieldDef kIconFields[] = {
    //    key                 codec        row line default        Chinese label
    field("name",             C::Text,       0, 14, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,      1,  0, "0xFFFF",       "参数地址"),
    // a number without a row that new lines carry as 2
    field("reserved",         C::Decimal,   -1,  1, "2").cut(NumWidth::U16),
    field("writeAddr",        C::Hex16,      2,  2, "0x0000",       "变量地址").address(),
    field("byteLength",       C::Decimal,    3,  3, "2",            "数据长度(byte)").cut(NumWidth::U16),
    field("X",                C::Decimal,    4,  4, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,    5,  5, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,    6,  6, "0",            "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,    7,  7, "0",            "高度").cut(NumWidth::S16),
    field("firstIcon",        C::IconRef,    8,  8, "",             "首张图片"),
    field("lastIcon",         C::IconRef,    9,  9, "",             "末张图片"),
    field("dataFormat",       C::Word,      10, 10, "",             "图片取模格式").words(&WordTables::pictureFormat)
                                                                     .editedBy(Editor::PictureFormat),
    field("defaultDisplayID", C::Text,      11, 11, "",             "变量初始值"),
    field("minDisplayID",     C::Decimal,   12, 12, "0",            "首张图片映射值").cut(NumWidth::U16),
    field("maxDisplayID",     C::Decimal,   13, 13, "0",            "末张图片映射值").cut(NumWidth::U16),
    field("overlap",          C::Switch,    14, 15, "Disable",      "叠加使能"),
    field("tail",             C::Hex16,     -1, 16, "0xFFFF"),
    field("lockState",        C::Decimal,   -1, 17, "1").cut(NumWidth::S16),
};

const FieldDef kBitIconFields[] = {
    //    key                 codec        row line default        Chinese label
    field("name",             C::Text,       0, 10, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,      1,  0, "0xFFFF",       "参数地址"),
    field("writeAddr",        C::Hex16,      2,  1, "0x0000",       "变量地址").address(),
    field("bitIndex",         C::Decimal,    3,  2, "0",            "状态位选择").cut(NumWidth::U8),
    field("X",                C::Decimal,    4,  3, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,    5,  4, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,    6,  5, "0",            "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,    7,  6, "0",            "高度").cut(NumWidth::S16),
    field("offStateIcon",     C::IconRef,    8,  7, "",             "关状态图标"),
    field("onStateIcon",      C::IconRef,    9,  8, "",             "开状态图标"),
    field("overlap",          C::Switch,    10,  9, "Disable",      "叠加使能"),
    field("tail",             C::Hex16,     -1, 11, "0xFFFF"),
    field("lockState",        C::Decimal,   -1, 12, "1").cut(NumWidth::S16),
};

// The eight address/value pairs written when the animation ends: rows 16
// on, line fields 17 on. They name other widgets' variables, so they are
// no write addresses of the gif's own.
#define VANTILE_GIF_PAIR(n, row, pos)                                                                   \
    field("writeAddr" #n, C::Hex16, row, pos, "0xFFFF", kPairAddrZh).english("writeAddr"),              \
    field("writeAddr" #n "_value", C::Hex16, row + 1, pos + 1, "0xFFFF", kPairValueZh)                   \
        .english("writeAddr_value")

const FieldDef kGifFields[] = {
    //    key                 codec        row line default        Chinese label
    field("name",             C::Text,       0, 15, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,      1,  0, "0xFFFF",       "参数地址"),
    field("reserved",         C::Decimal,   -1,  1, "2").cut(NumWidth::U16),
    field("WriteAddr",        C::Hex16,      2,  2, "0x0000",       "变量地址").address(),
    field("byteLength",       C::Decimal,   -1,  3, "2").cut(NumWidth::U16),
    field("X",                C::Decimal,    3,  4, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,    4,  5, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,    5,  6, "0",            "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,    6,  7, "0",            "高度").cut(NumWidth::S16),
    field("playOnceCode",     C::Decimal,    7, 16, "11",           "单次播放值").cut(NumWidth::U16),
    field("startCode",        C::Decimal,    8,  8, "10",           "Gif启动值").cut(NumWidth::U16),
    field("stopCode",         C::Decimal,    9,  9, "100",          "Gif停止值").cut(NumWidth::U16),
    field("playAtStart",      C::SwitchBit, 10, 10, "0",            "暂停后重新播放"),
    field("interval(10ms)",   C::Decimal,   11, 11, "5",            "Gif帧间隔(10ms)").cut(NumWidth::U8),
    field("gifName",          C::GifRef,    12, 12, "",             "Gif文件"),
    field("dataFormat",       C::Word,      13, 13, "",             "图片取模格式").words(&WordTables::pictureFormat)
                                                                     .editedBy(Editor::PictureFormat),
    field("defaultStatus",    C::Word,      14, 14, "Run",          "初始状态").words(&WordTables::runMode)
                                                                     .editedBy(Editor::Menu, kRunModeWords),
    field("effects",          C::Switch,    15, 33, "Disable",      "叠加使能"),
    VANTILE_GIF_PAIR(1, 16, 17),
    VANTILE_GIF_PAIR(2, 18, 19),
    VANTILE_GIF_PAIR(3, 20, 21),
    VANTILE_GIF_PAIR(4, 22, 23),
    VANTILE_GIF_PAIR(5, 24, 25),
    VANTILE_GIF_PAIR(6, 26, 27),
    VANTILE_GIF_PAIR(7, 28, 29),
    VANTILE_GIF_PAIR(8, 30, 31),
    field("tail",             C::Hex16,     -1, 34, "0xFFFF"),
    field("lockState",        C::Decimal,   -1, 35, "1").cut(NumWidth::S16),
};
#undef VANTILE_GIF_PAIR
// clang-format on

const char *const kPairKeys[8][2] = {
    {"writeAddr1", "writeAddr1_value"}, {"writeAddr2", "writeAddr2_value"}, {"writeAddr3", "writeAddr3_value"},
    {"writeAddr4", "writeAddr4_value"}, {"writeAddr5", "writeAddr5_value"}, {"writeAddr6", "writeAddr6_value"},
    {"writeAddr7", "writeAddr7_value"}, {"writeAddr8", "writeAddr8_value"}};

// Bytes of the parameter block (the record after byte 4, without `tail`)
// and the offset of `tail` in the record.
constexpr int kIconBlock = 14, kIconTail = 19;
constexpr int kBitIconBlock = 12, kBitIconTail = 17;
constexpr int kGifBlock = 53;

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

// 21 bytes, `tail` at 19.
QByteArray iconRecord(const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    QByteArray out;
    Records::appendDisplayHeader(out, typeOf(WidgetKind::Icon), ctx.viceFlag, u16(b, "parameterAddr"), 16,
                                 b.isOn("overlap"));
    appendU16(out, u16(b, "writeAddr"));
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU16(out, refField(iconNumber(b.text("firstIcon"))));
    appendU16(out, refField(iconNumber(b.text("lastIcon"))));
    appendU16(out, u16(b, "minDisplayID"));
    appendU16(out, u16(b, "maxDisplayID"));
    appendU16(out, b.tail());
    return out;
}

// 19 bytes, `tail` at 17.
QByteArray bitIconRecord(const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    QByteArray out;
    Records::appendDisplayHeader(out, typeOf(WidgetKind::BitIcon), ctx.viceFlag, u16(b, "parameterAddr"),
                                 14, b.isOn("overlap"));
    appendU16(out, u16(b, "writeAddr"));
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU8(out, quint8(b.number("bitIndex")));
    appendU16(out, refField(iconNumber(b.text("offStateIcon"))));
    appendU16(out, refField(iconNumber(b.text("onStateIcon"))));
    appendU8(out, 0);
    appendU16(out, b.tail());
    return out;
}

// The icon's value first, then its parameter block; the Vice form moves
// `tail` to the front.
int emitIcon(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, bool vice)
{
    const QByteArray record = iconRecord(b, ctx);
    quint16 value = 0;
    if (ctx.variables && iconInitialValue(b, &value))
        ctx.variables->storeWord(b.name(), u16(b, "writeAddr"), value, ctx.errorText);
    storeBlock(b, ctx, record, kIconBlock);
    out.append(vice ? Records::tailToFront(record, kIconTail) : record);
    return record.size();
}

int emitBitIcon(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, bool vice)
{
    const QByteArray record = bitIconRecord(b, ctx);
    storeBlock(b, ctx, record, kBitIconBlock);
    out.append(vice ? Records::tailToFront(record, kBitIconTail) : record);
    return record.size();
}

int writeIcon(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emitIcon(out, b, ctx, false);
}

int writeViceIcon(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emitIcon(out, b, ctx, true);
}

int writeBitIcon(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emitBitIcon(out, b, ctx, false);
}

int writeViceBitIcon(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emitBitIcon(out, b, ctx, true);
}

// 60 bytes; the gif stands on no Vice page.
int writeGif(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    QByteArray rec;
    Records::appendDisplayHeader(rec, typeOf(WidgetKind::Gif), ctx.viceFlag, u16(b, "parameterAddr"), 55,
                                 b.isOn("effects"));
    appendU16(rec, u16(b, "WriteAddr"));
    appendU16(rec, r.x);
    appendU16(rec, r.y);
    appendU16(rec, r.right());
    appendU16(rec, r.bottom());
    appendU16(rec, refField(gifNumber(b.text("gifName"))));
    appendU8(rec, b.isOn("playAtStart") ? 1 : 0);
    appendU8(rec, quint8(b.number("interval(10ms)")));
    appendU16(rec, u16(b, "startCode"));
    appendU16(rec, u16(b, "stopCode"));
    appendU8(rec, quint8(WordTables::pictureFormat.valueOf(b.text("dataFormat"))));
    appendU16(rec, u16(b, "playOnceCode"));
    for (const auto &pair : kPairKeys) {
        appendU16(rec, u16(b, pair[0]));
        appendU16(rec, u16(b, pair[1]));
    }
    appendU16(rec, b.tail());

    if (ctx.variables)
        ctx.variables->storeWord(b.name(), u16(b, "WriteAddr"), gifInitialValue(b), ctx.errorText);
    storeBlock(b, ctx, rec, kGifBlock);
    out.append(rec);
    return rec.size();
}

} // namespace

bool iconInitialValue(const EditBuffer &b, quint16 *value)
{
    const QString text = b.text("defaultDisplayID");
    if (text.isEmpty())
        return false;
    if (text.indexOf(QLatin1Char('.'), 1) > 0) {
        const int first = iconNumber(b.text("firstIcon"));
        const int last = iconNumber(b.text("lastIcon"));
        const int d = iconNumber(text);
        if (d < first || d > last)
            *value = quint16(b.number("maxDisplayID") + 1);
        else
            *value = quint16(d - first + b.number("minDisplayID"));
    } else {
        *value = quint16(LineGrammar::readDecimal(text));
    }
    return true;
}

quint16 gifInitialValue(const EditBuffer &b)
{
    const quint16 start = u16(b, "startCode");
    const quint16 stop = u16(b, "stopCode");
    switch (WordTables::runMode.valueOf(b.text("defaultStatus"))) {
    case 0:
        return start;
    case 1:
        return stop;
    case 3:
        return u16(b, "playOnceCode");
    default:
        return quint16((int(start) + int(stop)) / 2);
    }
}

// --- host lists ------------------------------------------------------------------
// The three show pictures by a variable. A gif's variable is its run state:
// the host is sent the number of the initial state's word.
constexpr ListColumn kIconColumns[] = {addressColumn("writeAddr"), decimalColumn("byteLength"),
                                       addressColumn("parameterAddr"), fixedColumn("14")};
constexpr ListColumn kBitIconColumns[] = {addressColumn("writeAddr"), fixedColumn("12"),
                                          addressColumn("parameterAddr"), fixedColumn("12")};
constexpr ListColumn kGifColumns[] = {addressColumn("WriteAddr"), decimalColumn("byteLength"),
                                      addressColumn("parameterAddr"), fixedColumn("53")};
constexpr SerialRow kIconSerial[] = {{"writeAddr", "defaultDisplayID", ValueForm::Number, "short"}};
constexpr SerialRow kGifSerial[] = {{"WriteAddr", "defaultStatus", ValueForm::WordNumber, "short"}};

constexpr KindExports kIconExports = {ExportList::Display, kIconColumns, countOf(kIconColumns), nullptr,
                                      nullptr,             kIconSerial,  countOf(kIconSerial),
                                      "#define  _ICON_PAGE", "writeAddr"};
constexpr KindExports kBitIconExports = {ExportList::Display, kBitIconColumns, countOf(kBitIconColumns),
                                         nullptr,             nullptr,         nullptr,
                                         0,                   "#define  _BITICON_PAGE", "writeAddr"};
constexpr KindExports kGifExports = {ExportList::Display, kGifColumns, countOf(kGifColumns), nullptr,
                                     nullptr,             kGifSerial,  countOf(kGifSerial),
                                     "#define  _GIF_PAGE", "WriteAddr"};

const KindDef icon = {WidgetKind::Icon, kIconFields,   countOf(kIconFields), nullptr, 0,
                      writeIcon,        writeViceIcon, keepIconRunOrdered,   nullptr, nullptr,
                      &kIconExports};

const KindDef bitIcon = {WidgetKind::BitIcon, kBitIconFields,   countOf(kBitIconFields), nullptr, 0,
                         writeBitIcon,        writeViceBitIcon, nullptr,                 nullptr, nullptr,
                         &kBitIconExports};

const KindDef gif = {WidgetKind::Gif, kGifFields, countOf(kGifFields), nullptr, 0, writeGif, nullptr,
                     nullptr,          nullptr,    nullptr,             &kGifExports};

} // namespace IconKinds

} // namespace vantile
