#include "widgets/ButtonKinds.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"

#include <iterator>

namespace vantile {

namespace ButtonKinds {

namespace {

using C = Codec;
using LineGrammar::iconNumber;
using LineGrammar::pageNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

constexpr const char *kTriggerZh = "    _键码触发值";
constexpr const char *kTriggerEn = "    _triggerValue";

// clang-format off
const FieldDef kButtonFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0,  8, kObjectNameDefault, "控件名称"),
    field("X",                         C::Decimal,  1,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  2,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  3,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  4,  3, "0",            "高度").cut(NumWidth::S16),
    field("returnValue",               C::Hex16,    5,  4, "0x0020",       "串口返回值").address(),
    field("unpressedIcon",             C::IconRef,  6,  5, "",             "未按图标"),
    field("pressedIcon",               C::IconRef,  7,  6, "",             "按下图标"),
    field("pageGoto",                  C::PageRef,  8,  7, "",             "跳转页面"),
    field("reportToHost",              C::Switch,   9,  9, "Disable",      "串口返回使能"),
    field("hostControl",               C::Switch,  10, 10, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,   11, 11, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("tail",                      C::Hex16,   -1, 12, "0xFFFF"),
    field("lockState",                 C::Decimal, -1, 13, "1").cut(NumWidth::S16),
};

const LabelEntry kButtonLabels[] = {
    {"overlay", "overlay", "叠加"},
};

// Earlier files wrote the dimming switch as "dim" / "normal".
const WordAlias kDimmingWords[] = {{"dim", "Enable"}, {"normal", "Disable"}, {nullptr, nullptr}};

const FieldDef kPopBoxFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0, 11, kObjectNameDefault, "控件名称"),
    field("X",                         C::Decimal,  1,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  2,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  3,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  4,  3, "0",            "高度").cut(NumWidth::S16),
    field("returnValue",               C::Hex16,    5,  4, "0x0000",       "串口返回值").address(),
    field("unpressedIcon",             C::IconRef,  6,  5, "",             "未按图标"),
    field("pressedIcon",               C::IconRef,  7,  6, "",             "按下图标"),
    field("pageGoto",                  C::PageRef,  8,  7, "",             "跳转页面"),
    field("box_X",                     C::Decimal,  9,  8, "0",            "弹窗X坐标").cut(NumWidth::S16),
    field("box_Y",                     C::Decimal, 10,  9, "0",            "弹窗Y坐标").cut(NumWidth::S16),
    field("dimming",                   C::Switch,  11, 10, "Disable",      "背景变暗使能").oldWords(kDimmingWords),
    field("reportToHost",              C::Switch,  12, 12, "Disable",      "串口返回使能"),
    field("clearLastPopupBox",         C::Switch,  13, 13, "Disable",      "清空弹窗内容"),
    field("hostControl",               C::Switch,  14, 14, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,   15, 15, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("backgroundPage",            C::PageRef, 16, 16, "",             "弹窗弹出背景页"),
    field("lockState",                 C::Decimal, -1, 17, "1").cut(NumWidth::S16),
};

const FieldDef kKBKeyFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0,  6, kObjectNameDefault, "控件名称"),
    field("X",                         C::Decimal,  1,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  2,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  3,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  4,  3, "0",            "高度").cut(NumWidth::S16),
    field("keyCode",                   C::Hex16,    5,  4, "0x0020",       "按键键码"),
    field("pressPage",                 C::PageRef,  6,  5, "",             "按下页面"),
    // A switch with no row, always "Disable" in a new key.
    field("reportToHost",              C::Switch,  -1,  7, "Disable"),
    field("lockState",                 C::Decimal, -1,  8, "1").cut(NumWidth::S16),
};
// clang-format on

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

// Offsets 3 to 12 shared by button and popbox: the touch area (or, with
// host control, 0xFFFF and the trigger value), its far corner, the code.
// `lastPixel` is 1 for the button (right = X' + W' - 1) and 0 for the popbox.
void appendTouchArea(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, int lastPixel)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    const bool host = b.isOn("hostControl");
    appendU16(out, host ? quint16(0xFFFF) : r.x);
    appendU16(out, host ? quint16(b.number("hostControl_triggerValue")) : r.y);
    appendU16(out, quint16(r.x + r.w - lastPixel));
    appendU16(out, quint16(r.y + r.h - lastPixel));
    appendU16(out, quint16(b.number("returnValue")));
}

void appendPictures(QByteArray &out, const EditBuffer &b)
{
    appendU16(out, refField(iconNumber(b.text("unpressedIcon"))));
    appendU16(out, refField(iconNumber(b.text("pressedIcon"))));
    appendU16(out, refField(pageNumber(b.text("pageGoto"))));
}

// 21 bytes.
int writeButton(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::Button), b.isOn("reportToHost"), ctx.viceFlag, 18);
    appendTouchArea(out, b, ctx, 1);
    appendPictures(out, b);
    appendU16(out, b.tail());
    return out.size() - start;
}

// 24 bytes. The window's position turns with the panel's size and the
// size of the target page's picture (the panel's when there is no page).
int writePopBox(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::PopBox), b.isOn("reportToHost"), ctx.viceFlag, 21);
    appendTouchArea(out, b, ctx, 0);
    appendPictures(out, b);

    const int target = pageNumber(b.text("pageGoto"));
    QSize size;
    if (target >= 0 && ctx.pagePictureSize)
        size = ctx.pagePictureSize(target);
    if (size.isEmpty())
        size = ctx.panel;
    const Rect16 box = ctx.rotateOnPanel(int(b.number("box_X")), int(b.number("box_Y")), size.width(),
                                         size.height());
    appendU16(out, box.x);
    appendU16(out, box.y);
    appendU8(out, quint8((b.isOn("dimming") ? 0x01 : 0) | (b.isOn("clearLastPopupBox") ? 0x02 : 0)));
    return out.size() - start;
}

// 15 bytes.
int writeKBKey(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::KBKey), b.isOn("reportToHost"), ctx.viceFlag, 12);
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU16(out, r.right());
    appendU16(out, r.bottom());
    appendU16(out, quint16(b.number("keyCode")));
    appendU16(out, refField(pageNumber(b.text("pressPage"))));
    return out.size() - start;
}

// --- host lists ------------------------------------------------------------------
// A button sends its return value and may go to a page; a keyboard key
// sends its key code. Neither holds a variable of its own, so the length
// columns stay empty. A pop-up box gives no rows.
constexpr ListColumn kButtonColumns[] = {blankColumn(), blankColumn(), addressColumn("returnValue"),
                                         textColumn("pageGoto")};
constexpr ListColumn kKBKeyColumns[] = {blankColumn(), blankColumn(), addressColumn("keyCode"), blankColumn()};

constexpr KindExports kButtonExports = {ExportList::Touch, kButtonColumns, countOf(kButtonColumns)};
constexpr KindExports kKBKeyExports = {ExportList::Touch, kKBKeyColumns, countOf(kKBKeyColumns)};

} // namespace

const KindDef button = {WidgetKind::Button, kButtonFields, countOf(kButtonFields),
                         kButtonLabels,      countOf(kButtonLabels), writeButton,
                         nullptr,            nullptr,       nullptr,
                         nullptr,            &kButtonExports};

const KindDef popBox = {WidgetKind::PopBox, kPopBoxFields, countOf(kPopBoxFields), nullptr, 0,
                         writePopBox,        nullptr,       nullptr};

const KindDef kbKey = {WidgetKind::KBKey, kKBKeyFields, countOf(kKBKeyFields), nullptr, 0,
                        writeKBKey,        nullptr,      nullptr,               nullptr, nullptr,
                        &kKBKeyExports};

} // namespace ButtonKinds

} // namespace vantile
