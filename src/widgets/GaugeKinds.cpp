#include "widgets/GaugeKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/NumberKinds.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace GaugeKinds {

namespace {

using RecordFields::appendPoint;
using RecordFields::appendTopLeft;
using RecordFields::icon;
using RecordFields::keepRunOrdered;
using RecordFields::u16;
using RecordFields::wordValue;

using C = Codec;
using LineGrammar::iconNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

const char *const kDirectionWords[] = {"L_to_R", "R_to_L", "U_to_D", "D_to_U", nullptr};
const char *const kDigitSourceWords[] = {"Null", "FontNum", "IconNum", nullptr};
const char *const kNeedleStyleWords[] = {"2Ddrawing", "2Dsmooth", "PNGdrawing", "Animation", "Line", "Icon", nullptr};
const char *const kNeedleTypeWords[] = {"char", "short", "int", "uchar", "ushort", "uint", nullptr};

constexpr const char *kSnAddrZh = "    _变量地址";
constexpr const char *kSnNumberZh = "    _默认数值";
constexpr const char *kSnTypeZh = "    _数据类型";
constexpr const char *kSnXZh = "    _数字X坐标";
constexpr const char *kSnYZh = "    _数字Y坐标";
constexpr const char *kSnFirstZh = "    _首张图片";
constexpr const char *kSnLastZh = "    _末张图片";
constexpr const char *kSnAlignZh = "    _对齐方式";
constexpr const char *kSnZeroZh = "    _前置补零";
constexpr const char *kSnIntZh = "    _数字整数位数";
constexpr const char *kSnDecZh = "    _数字小数位数";

// clang-format off
const FieldDef kSliderFields[] = {
    //    key                  codec       row line default        Chinese label
    field("name",              C::Text,      0, 18, kObjectNameDefault, "控件名称"),
    field("writeAddr",         C::Hex16,     1,  8, "0x0000",       "变量地址").address(),
    field("X",                 C::Decimal,   2,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                 C::Decimal,   3,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                 C::Decimal,   4,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                 C::Decimal,   5,  3, "0",            "高度").cut(NumWidth::S16),
    field("touch_X",           C::Decimal,   6,  4, "5",            "触摸区域X坐标").cut(NumWidth::S16),
    field("touch_Y",           C::Decimal,   7,  5, "5",            "触摸区域Y坐标").cut(NumWidth::S16),
    field("touch_W",           C::Decimal,   8,  6, "0",            "触摸区域宽度").cut(NumWidth::S16),
    field("touch_H",           C::Decimal,   9,  7, "0",            "触摸区域高度").cut(NumWidth::S16),
    field("minValue",          C::Decimal,  10,  9, "0",            "最小值").cut(NumWidth::S16),
    field("maxValue",          C::Decimal,  11, 10, "100",          "最大值").cut(NumWidth::S16),
    field("defaultValue",      C::Decimal,  12, 11, "0",            "默认值").cut(NumWidth::S16),
    field("bar_X",             C::Decimal,  13, 12, "0",            "滑条前景图X坐标").cut(NumWidth::S16),
    field("bar_Y",             C::Decimal,  14, 13, "0",            "滑条前景图Y坐标").cut(NumWidth::S16),
    field("barIcon",           C::IconRef,  15, 14, "",             "滑条前景图"),
    field("slideButton",       C::IconRef,  16, 15, "",             "滑动按钮图标"),
    field("background",        C::IconRef,  17, 16, "",             "滑条背景图"),
    field("direction",         C::Word,     18, 17, "L_to_R",       "滑动方向").words(&WordTables::direction)
                                                                     .editedBy(Editor::Menu, kDirectionWords),
    field("reportToHost",      C::Switch,   19, 19, "Disable",      "串口返回使能"),
    field("tail",              C::Hex16,    -1, 20, "0xFFFF"),
    field("lockState",         C::Decimal,  -1, 21, "1").cut(NumWidth::S16),
};

const FieldDef kProgressFields[] = {
    //    key                  codec       row line default        Chinese label
    field("name",              C::Text,      0, 14, kObjectNameDefault, "控件名称"),
    field("parameterAddr",     C::Hex16,     1,  1, "0xFFFF",       "参数地址"),
    field("writeAddr",         C::Hex16,     2,  0, "0x0000",       "变量地址").address(),
    field("X",                 C::Decimal,   3,  2, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                 C::Decimal,   4,  3, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                 C::Decimal,   5,  4, "0",            "宽度").cut(NumWidth::S16),
    field("H",                 C::Decimal,   6,  5, "0",            "高度").cut(NumWidth::S16),
    field("bar_X",             C::Decimal,   7,  6, "0",            "进度条X坐标").cut(NumWidth::S16),
    field("bar_Y",             C::Decimal,   8,  7, "0",            "进度条Y坐标").cut(NumWidth::S16),
    field("direction",         C::Word,      9, 11, "L_to_R",       "进度条模式").words(&WordTables::direction)
                                                                     .editedBy(Editor::Menu, kDirectionWords),
    field("barIcon",           C::IconRef,  10, 12, "",             "进度条图片"),
    field("minValue",          C::Decimal,  11,  8, "0",            "最小值").cut(NumWidth::S16),
    field("maxValue",          C::Decimal,  12,  9, "100",          "最大值").cut(NumWidth::S16),
    field("defaultValue",      C::Decimal,  13, 10, "0",            "初始值").cut(NumWidth::S16),
    field("background",        C::IconRef,  14, 13, "",             "背景图片"),
    field("tail",              C::Hex16,    -1, 15, "0xFFFF"),
    field("lockState",         C::Decimal,  -1, 16, "1").cut(NumWidth::S16),
};

const FieldDef kRProgressFields[] = {
    //    key                  codec       row line default        Chinese label
    field("name",              C::Text,      0, 23, kObjectNameDefault, "控件名称"),
    field("parameterAddr",     C::Hex16,     1,  0, "0xFFFF",       "参数地址"),
    field("writeAddr",         C::Hex16,     2,  1, "0x0000",       "控制地址").address(),
    field("X",                 C::Decimal,   3,  2, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                 C::Decimal,   4,  3, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                 C::Decimal,   5,  4, "0",            "宽度").cut(NumWidth::S16),
    field("H",                 C::Decimal,   6,  5, "0",            "高度").cut(NumWidth::S16),
    field("background",        C::IconRef,   7,  6, "",             "背景图片"),
    field("foreground",        C::IconRef,   8,  7, "",             "前景图片"),
    field("minValue",          C::Decimal,   9,  8, "0",            "最小值").cut(NumWidth::S16),
    field("maxValue",          C::Decimal,  10,  9, "100",          "最大值").cut(NumWidth::S16),
    field("defaultValue",      C::Decimal,  11, 10, "0",            "初始值").cut(NumWidth::S16),
    field("startAngle",        C::Decimal,  12, 11, "0",            "开始角度").cut(NumWidth::U16),
    field("finalAngle",        C::Decimal,  13, 12, "360",          "结束角度").cut(NumWidth::U16),
    field("promptNum_X",       C::Decimal,  14, 13, "0",            "数字X坐标").cut(NumWidth::S16),
    field("promptNum_Y",       C::Decimal,  15, 14, "0",            "数字Y坐标").cut(NumWidth::S16),
    field("integerDigit",      C::Decimal,  16, 15, "3",            "数字整数位数").cut(NumWidth::U8),
    field("decimalDigit",      C::Decimal,  17, 16, "0",            "数字小数位数").cut(NumWidth::U8),
    field("alignment",         C::Word,     18, 17, "Left",         "数字对齐方式").words(&WordTables::alignment)
                                                                     .editedBy(Editor::Menu, kAlignmentWords),
    field("fontID",            C::FontRef,  19, 18, "0",            "字库ID").cut(NumWidth::U8),
    field("fontColor",         C::Hex24,    20, 19, "0x000000",     "数字颜色"),
    field("firstIcon",         C::IconRef,  21, 20, "",             "首张图片"),
    field("lastIcon",          C::IconRef,  22, 21, "",             "末张图片"),
    field("digitDisplayMode",  C::Word,     23, 22, "NULL",         "数字显示模式").words(&WordTables::digitSource)
                                                                     .editedBy(Editor::Menu, kDigitSourceWords),
    field("tail",              C::Hex16,    -1, 24, "0xFFFF"),
    field("lockState",         C::Decimal,  -1, 25, "1").cut(NumWidth::S16),
};

const FieldDef kRTouchFields[] = {
    //    key                  codec       row line default        Chinese label
    field("name",              C::Text,      0, 25, kObjectNameDefault, "控件名称"),
    field("writeAddr",         C::Hex16,     1,  0, "0x0000",       "变量地址").address(),
    field("X",                 C::Decimal,   2,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                 C::Decimal,   3,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                 C::Decimal,   4,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",                 C::Decimal,   5,  4, "0",            "高度").cut(NumWidth::S16),
    field("foreground",        C::IconRef,   6,  5, "",             "前景图"),
    field("background",        C::IconRef,   7,  6, "",             "背景图"),
    field("slideButton",       C::IconRef,   8,  7, "",             "滑动按钮图标"),
    field("slide_R",           C::Decimal,   9,  8, "50").cut(NumWidth::U16),
    field("touch_R",           C::Decimal,  10,  9, "50").cut(NumWidth::U16),
    field("minValue",          C::Decimal,  11, 10, "0",            "最小值").cut(NumWidth::S16),
    field("maxValue",          C::Decimal,  12, 11, "100",          "最大值").cut(NumWidth::S16),
    field("defaultValue",      C::Decimal,  13, 12, "0",            "默认值").cut(NumWidth::S16),
    field("startAngle",        C::Decimal,  14, 13, "0",            "滑动起始角度").cut(NumWidth::U16),
    field("finalAngle",        C::Decimal,  15, 14, "360",          "滑动终止角度").cut(NumWidth::U16),
    field("promptNum_x",       C::Decimal,  16, 15, "0",            "数字显示X坐标").cut(NumWidth::S16),
    field("promptNum_y",       C::Decimal,  17, 16, "0",            "数字显示Y坐标").cut(NumWidth::S16),
    field("integerDigit",      C::Decimal,  18, 17, "3",            "数字整数位数").cut(NumWidth::U8),
    field("decimalDigit",      C::Decimal,  19, 18, "0",            "数字小数位数").cut(NumWidth::U8),
    field("alignment",         C::Word,     20, 19, "Left",         "数字对齐方式").words(&WordTables::alignment)
                                                                     .editedBy(Editor::Menu, kAlignmentWords),
    field("fontID",            C::FontRef,  21, 20, "0",            "字库ID").cut(NumWidth::U8),
    field("fontColor",         C::Hex24,    22, 21, "0x000000",     "字体颜色"),
    field("firstIcon",         C::IconRef,  23, 22, "",             "首张图片"),
    field("lastIcon",          C::IconRef,  24, 23, "",             "末张图片"),
    field("digitDisplayMode",  C::Word,     25, 24, "NULL",         "数字显示模式").words(&WordTables::digitSource)
                                                                     .editedBy(Editor::Menu, kDigitSourceWords),
    field("reportToHost",      C::Switch,   26, 26, "Disable",      "串口返回使能"),
    field("touch",             C::SwitchBit,27, 27, "1",            "触控功能").english("Touch Ctrl"),
    field("tail",              C::Hex16,    -1, 28, "0xFFFF"),
    field("lockState",         C::Decimal,  -1, 29, "1").cut(NumWidth::S16),
};

const FieldDef kNeedleFields[] = {
    //    key                          codec          row line default     Chinese label
    field("name",                      C::Text,         0, 34, kObjectNameDefault, "控件名称"),
    field("parameterAddr",             C::Hex16,        1,  0, "0xFFFF",    "参数地址"),
    field("writeAddr",                 C::Hex16,        2,  1, "0x0000",    "变量地址").address(),
    field("X",                         C::Decimal,      3,  2, "0",         "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,      4,  3, "0",         "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,      5,  4, "0",         "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,      6,  5, "0",         "高度").cut(NumWidth::S16),
    field("background",                C::IconRef,      7,  6, "",          "背景图片"),
    field("pivot_X",                   C::Decimal,      8,  7, "0",         "旋转中心X坐标").cut(NumWidth::U16),
    field("pivot_Y",                   C::Decimal,      9,  8, "0",         "旋转中心Y坐标").cut(NumWidth::U16),
    field("startAngle",                C::Decimal,     10,  9, "0",         "开始角度").cut(NumWidth::U16),
    field("finalAngle",                C::Decimal,     11, 10, "180",       "结束角度").cut(NumWidth::U16),
    field("step",                      C::Decimal,     12, 11, "5",         "旋转步进(度)").cut(NumWidth::U16),
    field("defaultValue",              C::Decimal,     13, 12, "90",        "默认角度").cut(NumWidth::S16),
    field("swing",                     C::Switch,      14, 13, "Disable",   "动画效果"),
    field("pivotIcon",                 C::IconRef,     15, 14, "",          "中心点图片"),
    field("needleType",                C::Word,        16, 15, "2Ddrawing", "指针类型").words(&WordTables::needleStyle)
                                                                             .editedBy(Editor::Menu, kNeedleStyleWords),
    field("needle_W",                  C::Decimal,     17, 16, "0",         "指针宽度").cut(NumWidth::U16),
    field("needle_L1",                 C::Decimal,     18, 17, "0",         "指针长端长度").cut(NumWidth::U16),
    field("needle_C1",                 C::Hex24,       19, 18, "0x969696",  "右半部指针颜色"),
    field("needle_L2",                 C::Decimal,     20, 19, "0",         "指针短端长度").cut(NumWidth::U16),
    field("needle_C2",                 C::Hex24,       21, 20, "0xB4B4B4",  "左半部指针颜色"),
    field("needleIcon",                C::IconRef,     22, 21, "",          "指针图片"),
    field("showNumber",                C::Switch,      23, 22, "Disable",   "显示图片数字"),
    field("showNumber_numberAddr",     C::Hex16OrNone, 24, 23, "0xFFFF",    kSnAddrZh).address(),
    field("showNumber_defaultNumber",  C::Text,        25, 24, "0",         kSnNumberZh),
    field("showNumber_dataType",       C::Word,        26, 25, "short",     kSnTypeZh).words(&WordTables::dataType)
                                                                             .editedBy(Editor::Menu, kNeedleTypeWords),
    field("showNumber_promptNum_X",    C::Decimal,     27, 26, "0",         kSnXZh).cut(NumWidth::U16),
    field("showNumber_promptNum_Y",    C::Decimal,     28, 27, "0",         kSnYZh).cut(NumWidth::U16),
    field("showNumber_firstIcon",      C::IconRef,     29, 28, "",          kSnFirstZh),
    field("showNumber_lastIcon",       C::IconRef,     30, 29, "",          kSnLastZh),
    field("showNumber_alignment",      C::Word,        31, 30, "Left",      kSnAlignZh).words(&WordTables::alignment)
                                                                             .editedBy(Editor::Menu, kAlignmentWords),
    field("showNumber_leadingZero",    C::Switch,      32, 31, "Disable",   kSnZeroZh),
    field("showNumber_integerDigit",   C::Decimal,     33, 32, "0",         kSnIntZh).cut(NumWidth::U8),
    field("showNumber_decimalDigit",   C::Decimal,     34, 33, "0",         kSnDecZh).cut(NumWidth::U8),
    field("tail",                      C::Hex16,       -1, 35, "0xFFFF"),
    field("lockState",                 C::Decimal,     -1, 36, "1").cut(NumWidth::S16),
};
// clang-format on

// The parameter blocks: the record's bytes after the count byte. rProgress
// leaves its tail out; progress and needle take the whole rest.
constexpr int kProgressBlock = 19;
constexpr int kRProgressBlock = 34;
constexpr int kNeedleBlock = 59;
constexpr int kDigitsFromFont = 1; // digitDisplayMode FontNum

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

void checkFont(const EditBuffer &b, const RecordContext &ctx)
{
    if (wordValue(b, "digitDisplayMode") != kDigitsFromFont || !ctx.errorText)
        return;
    if (!ctx.fonts || int(b.number("fontID")) >= ctx.fonts->count)
        ctx.errorText->append(b.name() + QStringLiteral(": fontlib id is more than max value\n"));
}

// The default value, a word at the write address.
void storeDefault(const EditBuffer &b, const RecordContext &ctx)
{
    if (ctx.variables)
        ctx.variables->storeWord(b.name(), u16(b, "writeAddr"), quint16(b.number("defaultValue")), ctx.errorText);
}

// The ring's digits: integer and decimal places, alignment, font, colour,
// pictures and where the digits come from (rProgress and rtouch alike).
void appendRingDigits(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    appendU8(out, quint8(b.number("integerDigit")));
    appendU8(out, quint8(b.number("decimalDigit")));
    appendU8(out, quint8(wordValue(b, "alignment")));
    appendU8(out, quint8(b.number("fontID")));
    Records::appendColour3(out, quint32(b.number("fontColor")), ctx.colour24);
    appendU16(out, icon(b, "firstIcon"));
    appendU16(out, icon(b, "lastIcon"));
    appendU8(out, quint8(wordValue(b, "digitDisplayMode")));
}

// progress and needle test their block against the space by their own rule:
// the address plus the record's length must stay within it. A block whose
// first byte lies beyond the image is refused as well; one that runs over
// the end keeps what fits.
void storeOwnLimitBlock(const EditBuffer &b, const RecordContext &ctx, const QByteArray &record, int blockBytes)
{
    const quint16 at = u16(b, "parameterAddr");
    if (!ctx.variables || at == 0xFFFF)
        return;
    VariableImage &image = *ctx.variables;
    if (int(at) + record.size() > image.limit() || 2 * int(at) + 1 >= image.limit()) {
        if (ctx.errorText)
            ctx.errorText->append(
                VariableImage::parameterMessage(b.name(), WidgetKinds::parameterWord(b.kind())));
        return;
    }
    image.storeValue(b.name(), at, record.mid(4, 1 + blockBytes), nullptr);
}

// 32 bytes.
int writeSlider(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::Slider), b.isOn("reportToHost"), ctx.viceFlag, 0x1D);
    appendTopLeft(out, b, ctx);
    appendU16(out, icon(b, "background"));
    appendU16(out, u16(b, "writeAddr"));
    const Rect16 t = ctx.rotate(int(b.number("touch_X")), int(b.number("touch_Y")), int(b.number("touch_W")),
                                int(b.number("touch_H")));
    appendU16(out, t.x);
    appendU16(out, t.y);
    appendU16(out, t.right());
    appendU16(out, t.bottom());
    appendU16(out, icon(b, "slideButton"));
    appendU8(out, quint8(turnedDirection(wordValue(b, "direction"), ctx.rotation)));
    appendU16(out, u16(b, "maxValue"));
    appendU16(out, u16(b, "minValue"));
    appendPoint(out, int(b.number("bar_X")), int(b.number("bar_Y")), ctx);
    appendU16(out, icon(b, "barIcon"));
    storeDefault(b, ctx);
    return out.size() - start;
}

// 24 bytes. The direction stays as the page has it.
int writeProgress(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::Progress), ctx.viceFlag, u16(b, "parameterAddr"),
                                 kProgressBlock, false);
    appendU16(r, u16(b, "writeAddr"));
    appendTopLeft(r, b, ctx);
    appendU16(r, icon(b, "background"));
    appendU8(r, quint8(wordValue(b, "direction")));
    appendU16(r, u16(b, "maxValue"));
    appendU16(r, u16(b, "minValue"));
    appendPoint(r, int(b.number("bar_X")), int(b.number("bar_Y")), ctx);
    appendU16(r, icon(b, "barIcon"));
    storeOwnLimitBlock(b, ctx, r, kProgressBlock);
    storeDefault(b, ctx);
    out.append(r);
    return r.size();
}

// 41 bytes; tail at 39.
int writeRProgress(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    checkFont(b, ctx);
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::RProgress), ctx.viceFlag, u16(b, "parameterAddr"), 0x24,
                                 false);
    appendU16(r, u16(b, "writeAddr"));
    appendTopLeft(r, b, ctx);
    appendU16(r, icon(b, "background"));
    appendU16(r, icon(b, "foreground"));
    appendU16(r, u16(b, "minValue"));
    appendU16(r, u16(b, "maxValue"));
    appendU16(r, u16(b, "startAngle"));
    appendU16(r, u16(b, "finalAngle"));
    appendPoint(r, int(b.number("promptNum_X")), int(b.number("promptNum_Y")), ctx);
    appendRingDigits(r, b, ctx);
    appendU16(r, b.tail());
    if (ctx.variables)
        ctx.variables->storeRecordBlock(b.name(), WidgetKinds::parameterWord(b.kind()), u16(b, "parameterAddr"), r,
                                        kRProgressBlock, ctx.errorText);
    storeDefault(b, ctx);
    out.append(r);
    return r.size();
}

// 45 bytes; the digits' place is relative to the widget.
int writeRTouch(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    checkFont(b, ctx);
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::RTouch), b.isOn("reportToHost"), ctx.viceFlag, 0x2A);
    appendU16(out, u16(b, "writeAddr"));
    appendTopLeft(out, b, ctx);
    appendU16(out, icon(b, "foreground"));
    appendU16(out, icon(b, "background"));
    appendU16(out, icon(b, "slideButton"));
    appendU16(out, u16(b, "slide_R"));
    appendU8(out, quint8(b.number("touch_R") & 0xFF));
    appendU16(out, u16(b, "minValue"));
    appendU16(out, u16(b, "maxValue"));
    appendU16(out, u16(b, "startAngle"));
    appendU16(out, u16(b, "finalAngle"));
    appendPoint(out, b.x() + int(b.number("promptNum_x")), b.y() + int(b.number("promptNum_y")), ctx);
    appendRingDigits(out, b, ctx);
    appendU8(out, b.isOn("touch") ? 1 : 0);
    appendU16(out, b.tail());
    storeDefault(b, ctx);
    return out.size() - start;
}

// Bytes of a value of the needle's number types: char/uchar 1, int/uint 4.
int valueBytes(int dataType)
{
    switch (dataType & 0x3F) {
    case 0:
    case 4:
        return 1;
    case 2:
        return 4;
    default:
        return 2;
    }
}

void complainNeedleAddress(const EditBuffer &b, const RecordContext &ctx, const char *key)
{
    if (ctx.errorText)
        ctx.errorText->append(b.name() + QLatin1Char(' ') + QLatin1String(key)
                              + QStringLiteral(":  more than Max value\n"));
}

void storeNeedleValues(const EditBuffer &b, const RecordContext &ctx)
{
    if (!ctx.variables)
        return;
    VariableImage &image = *ctx.variables;
    const quint16 writeAddr = u16(b, "writeAddr");
    if (2 * int(writeAddr) + 1 >= image.limit())
        complainNeedleAddress(b, ctx, "writeAddr");
    else
        image.storeWord(b.name(), writeAddr, quint16(b.number("defaultValue")), nullptr);

    const quint16 numberAddr = u16(b, "showNumber_numberAddr");
    if (numberAddr == 0xFFFF)
        return;
    const int type = wordValue(b, "showNumber_dataType");
    if (2 * int(numberAddr) + qMax(valueBytes(type), 2) - 1 >= image.limit()) {
        complainNeedleAddress(b, ctx, "showNumber_numberAddr");
        return;
    }
    const qint64 value = needleNumber(b.text("showNumber_defaultNumber"), int(b.number("showNumber_decimalDigit")));
    NumberKinds::storeValue(image, b.name(), numberAddr, type, value, ctx.errorText);
}

// 64 bytes.
int writeNeedle(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::Needle), ctx.viceFlag, u16(b, "parameterAddr"),
                                 kNeedleBlock, false);
    appendU16(r, u16(b, "writeAddr"));
    appendU16(r, icon(b, "background"));
    const Rect16 rect = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    appendU16(r, rect.x);
    appendU16(r, rect.y);
    appendU16(r, rect.w);
    appendU16(r, rect.h);
    const QSize panel = Records::pictureExtents(ctx.rotation, ctx.panel);
    const Point16 pivot = Records::rotatePoint(ctx.rotation, int(b.number("pivot_X")), int(b.number("pivot_Y")),
                                               panel.width(), panel.height());
    appendU16(r, pivot.x);
    appendU16(r, pivot.y);
    appendU16(r, u16(b, "startAngle"));
    appendU16(r, u16(b, "finalAngle"));
    appendU16(r, u16(b, "step"));
    appendU8(r, b.isOn("swing") ? 1 : 0);
    appendU16(r, icon(b, "pivotIcon"));
    appendU8(r, b.isOn("showNumber") ? 1 : 0);
    appendU16(r, u16(b, "showNumber_numberAddr"));
    appendU8(r, quint8(wordValue(b, "showNumber_dataType")));
    appendPoint(r, int(b.number("showNumber_promptNum_X")), int(b.number("showNumber_promptNum_Y")), ctx);
    appendU16(r, icon(b, "showNumber_firstIcon"));
    appendU16(r, icon(b, "showNumber_lastIcon"));
    appendU8(r, quint8((wordValue(b, "showNumber_alignment") & 0x7F) | (b.isOn("showNumber_leadingZero") ? 0x80 : 0)));
    appendU8(r, quint8(b.number("showNumber_integerDigit")));
    appendU8(r, quint8(b.number("showNumber_decimalDigit")));
    appendU8(r, quint8(wordValue(b, "needleType")));
    appendU16(r, u16(b, "needle_W"));
    appendU16(r, u16(b, "needle_L1"));
    Records::appendColour3(r, quint32(b.number("needle_C1")), ctx.colour24);
    appendU16(r, u16(b, "needle_L2"));
    Records::appendColour3(r, quint32(b.number("needle_C2")), ctx.colour24);
    // The place of the needle's frames in the animation step's table.
    const quint32 place = ctx.needleFrames ? ctx.needleFrames(b.text("needleIcon"), int(b.number("startAngle")),
                                                              int(b.number("finalAngle")), int(b.number("step")))
                                           : 0xFFFFFFFFu;
    appendU16(r, quint16(place & 0xFFFF));
    appendU16(r, quint16(place >> 16));
    appendU16(r, icon(b, "needleIcon"));
    storeOwnLimitBlock(b, ctx, r, kNeedleBlock);
    storeNeedleValues(b, ctx);
    out.append(r);
    return r.size();
}

void ringIconRun(EditBuffer &b, const EditBuffer &before, const QSize &)
{
    keepRunOrdered(b, before, "firstIcon", "lastIcon");
}

void needleIconRun(EditBuffer &b, const EditBuffer &before, const QSize &)
{
    keepRunOrdered(b, before, "showNumber_firstIcon", "showNumber_lastIcon");
}

// The slider's touch area starts as the widget's size, 5 pixels in.
void sliderAtDrop(EditBuffer &b)
{
    b.setNumber("touch_W", b.w());
    b.setNumber("touch_H", b.h());
}

// The needle's pivot and shape follow the widget's size.
void needleAtDrop(EditBuffer &b)
{
    const int w = b.w();
    const int h = b.h();
    b.setNumber("pivot_X", w / 2);
    b.setNumber("pivot_Y", 3 * h / 4);
    b.setNumber("needle_W", w / 10);
    b.setNumber("needle_L1", ((3 * h) & ~3) / 5);
    b.setNumber("needle_L2", 3 * h / 20);
}

} // namespace

int turnedDirection(int direction, int rotation)
{
    // One quarter turn clockwise: right -> down -> left -> up -> right.
    static const int kQuarter[4] = {2, 3, 1, 0};
    int d = direction & 3;
    for (int i = 0; i < (rotation & 3); ++i)
        d = kQuarter[d];
    return d;
}

qint64 needleNumber(const QString &text, int decimalDigit)
{
    quint64 digits = 0;
    int fraction = -1; // digits after the point; -1 before a point
    for (QChar c : text) {
        if (c == QLatin1Char('.') && fraction < 0) {
            fraction = 0;
        } else if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            digits = digits * 10u + quint64(c.unicode() - '0');
            if (fraction >= 0)
                ++fraction;
        }
    }
    for (int i = qMax(fraction, 0); i < decimalDigit; ++i)
        digits *= 10u;
    const bool negative = text.trimmed().startsWith(QLatin1Char('-'));
    return qint64(negative ? 0u - digits : digits);
}

// --- host lists ------------------------------------------------------------------
// Each holds one 16-bit value at writeAddr and starts it at defaultValue.
// The display kinds add their parameter block (19, 34 and 59 bytes after
// byte 4); a needle with its picture number also names the number's
// address and its width in bytes, and sends the number's initial value in
// the number's type when that address is set.
constexpr ListColumn kTouchValueColumns[] = {addressColumn("writeAddr"), fixedColumn("2"), blankColumn(),
                                             blankColumn()};
constexpr ListColumn kProgressColumns[] = {addressColumn("writeAddr"), fixedColumn("2"),
                                           addressColumn("parameterAddr"), fixedColumn("19")};
constexpr ListColumn kRProgressColumns[] = {addressColumn("writeAddr"), fixedColumn("2"),
                                            addressColumn("parameterAddr"), fixedColumn("34")};
constexpr ListColumn kNeedleColumns[] = {addressColumn("writeAddr"),
                                         fixedColumn("2"),
                                         addressColumn("parameterAddr"),
                                         fixedColumn("59"),
                                         addressColumn("showNumber_numberAddr"),
                                         typeLengthColumn("showNumber_dataType")};
constexpr SerialRow kValueSerial[] = {{"writeAddr", "defaultValue", ValueForm::Number, "short"}};
constexpr SerialRow kNeedleSerial[] = {
    {"writeAddr", "defaultValue", ValueForm::Number, "short"},
    {"showNumber_numberAddr", "showNumber_defaultNumber", ValueForm::TypedNumber, "showNumber_dataType", nullptr, true},
};

constexpr KindExports kSliderExports = {ExportList::Touch, kTouchValueColumns, countOf(kTouchValueColumns),
                                        nullptr,           nullptr,            kValueSerial,
                                        countOf(kValueSerial), "#define  _SLIDER_PAGE", "writeAddr"};
constexpr KindExports kProgressExports = {ExportList::Display, kProgressColumns, countOf(kProgressColumns),
                                          nullptr,             nullptr,          kValueSerial,
                                          countOf(kValueSerial), "#define  _PROGRESS_PAGE", "writeAddr"};
constexpr KindExports kRProgressExports = {ExportList::Display, kRProgressColumns, countOf(kRProgressColumns),
                                           nullptr,             nullptr,           kValueSerial,
                                           countOf(kValueSerial), "#define  _RPROGRESS_PAGE", "writeAddr"};
constexpr KindExports kRTouchExports = {ExportList::Touch, kTouchValueColumns, countOf(kTouchValueColumns),
                                        nullptr,           nullptr,            kValueSerial,
                                        countOf(kValueSerial), "#define  _RTOUCH_PAGE", "writeAddr"};
constexpr KindExports kNeedleExports = {ExportList::Display, kNeedleColumns, countOf(kNeedleColumns), nullptr,
                                        nullptr,             kNeedleSerial,  countOf(kNeedleSerial),
                                        "#define  _NEEDLE_PAGE", "writeAddr"};

// Fields in KindDef's order: kind, fields, labels, writers, apply rule,
// field splitter (none: plain commas), drop rule, host lists.
const KindDef slider = {WidgetKind::Slider, kSliderFields, countOf(kSliderFields), nullptr, 0,
                        writeSlider,        nullptr,       nullptr,                nullptr, sliderAtDrop,
                        &kSliderExports};

const KindDef progress = {WidgetKind::Progress, kProgressFields, countOf(kProgressFields), nullptr, 0,
                          writeProgress,        nullptr,         nullptr,                  nullptr, nullptr,
                          &kProgressExports};

const KindDef rProgress = {WidgetKind::RProgress, kRProgressFields, countOf(kRProgressFields), nullptr, 0,
                           writeRProgress,        nullptr,          ringIconRun,               nullptr, nullptr,
                           &kRProgressExports};

const KindDef rTouch = {WidgetKind::RTouch, kRTouchFields, countOf(kRTouchFields), nullptr, 0,
                        writeRTouch,        nullptr,       ringIconRun,            nullptr, nullptr,
                        &kRTouchExports};

const KindDef needle = {WidgetKind::Needle, kNeedleFields, countOf(kNeedleFields), nullptr, 0,
                        writeNeedle,        nullptr,       needleIconRun,          nullptr, needleAtDrop,
                        &kNeedleExports};

} // namespace GaugeKinds

} // namespace vantile
