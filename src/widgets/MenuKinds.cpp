#include "widgets/MenuKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace MenuKinds {

const char *const kSlideWords[] = {"Vertical-Loop", "Vertical", "Horizontal-Loop", "Horizontal", nullptr};

namespace {

using RecordFields::icon;
using RecordFields::u16;

using C = Codec;
using LineGrammar::iconNumber;
using LineGrammar::pageNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

// Both menus keep their fields in the line in the order of their rows,
// `lockState` last.
// clang-format off
const FieldDef kSlMenuFields[] = {
    //    key             codec       row line default        Chinese label
    field("name",         C::Text,      0,  0, kObjectNameDefault, "控件名称"),
    field("writeAddr",    C::Hex16,     1,  1, "0x0000",       "变量地址").address(),
    field("X",            C::Decimal,   2,  2, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",            C::Decimal,   3,  3, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",            C::Decimal,   4,  4, "0",            "宽度").cut(NumWidth::S16),
    field("H",            C::Decimal,   5,  5, "0",            "高度").cut(NumWidth::S16),
    field("L1",           C::Decimal,   6,  6, "0").cut(NumWidth::U16),
    field("L2",           C::Decimal,   7,  7, "0").cut(NumWidth::U16),
    field("direction",    C::Word,      8,  8, "Vertical-Loop", "滑动方向").words(&WordTables::slideDirection)
                                                                .editedBy(Editor::Menu, kSlideWords),
    field("foreground",   C::IconRef,   9,  9, "",             "前景图"),
    field("background",   C::IconRef,  10, 10, "",             "背景图"),
    field("minValue",     C::Decimal,  11, 11, "0",            "最小值").cut(NumWidth::U16),
    field("maxValue",     C::Decimal,  12, 12, "100",          "最大值").cut(NumWidth::U16),
    field("defaultValue", C::Decimal,  13, 13, "0",            "默认值").cut(NumWidth::U16),
    field("adjStep",      C::Decimal,  14, 14, "1",            "步进").cut(NumWidth::U16),
    field("reportToHost", C::Switch,   15, 15, "Disable",      "串口返回使能"),
    field("lockState",    C::Decimal,  -1, 16, "1").cut(NumWidth::S16),
};

// frameWidth and frameHeigth 0: the size of the scrolled page's picture.
const FieldDef kSlideMenuProFields[] = {
    //    key             codec       row line default        Chinese label
    field("name",         C::Text,      0,  0, kObjectNameDefault, "控件名称"),
    field("X",            C::Decimal,   1,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",            C::Decimal,   2,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",            C::Decimal,   3,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",            C::Decimal,   4,  4, "0",            "高度").cut(NumWidth::S16),
    field("writeAddr",    C::Hex16,     5,  5, "0x0000",       "变量地址").address(),
    field("ID",           C::Decimal,   6,  6, "0",            "编号").cut(NumWidth::U16),
    field("pageGoto",     C::PageRef,   7,  7, "",             "对应页面"),
    field("background",   C::IconRef,   8,  8, "",             "背景图"),
    field("direction",    C::Word,      9,  9, "Horizontal",   "滑动方向").words(&WordTables::slideDirection)
                                                                .editedBy(Editor::Menu, kSlideWords),
    field("stop",         C::Switch,   10, 10, "Disable",      "停止回正"),
    field("frameWidth",   C::Decimal,  11, 11, "0",            "单框宽度").cut(NumWidth::U16),
    field("frameHeigth",  C::Decimal,  12, 12, "0",            "单框高度").cut(NumWidth::U16),
    field("sIcon",        C::IconRef,  13, 13, "",             "松手状态图片"),
    field("eIcon",        C::IconRef,  14, 14, "",             "滑动状态图片"),
    field("Interval_V",   C::Decimal,  15, 15, "0",            "上下间隔像素").cut(NumWidth::U16),
    field("Interval_H",   C::Decimal,  16, 16, "0",            "左右间隔像素").cut(NumWidth::U16),
    field("reportToHost", C::Switch,   17, 17, "Disable",      "串口返回使能"),
    field("lockState",    C::Decimal,  -1, 18, "1").cut(NumWidth::S16),
};
// clang-format on

constexpr quint8 kSlMenuLength = 0x19;       // 28 bytes in all
constexpr quint8 kSlideMenuProLength = 0x1B; // 30 bytes in all

// Neither menu marks its record for a Vice page: byte 1 is 0x80 or 0xC0.
void appendHeader(QByteArray &out, WidgetKind kind, const EditBuffer &b, quint8 length)
{
    Records::appendTouchHeader(out, WidgetKinds::info(kind).type, b.isOn("reportToHost"), false, length);
}

// 28 bytes. The rectangle ends at X' + W' and Y' + H', with no minus 1.
int writeSlMenu(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    appendHeader(out, WidgetKind::SlMenu, b, kSlMenuLength);
    appendU16(out, u16(b, "writeAddr"));
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU16(out, quint16(r.x + r.w));
    appendU16(out, quint16(r.y + r.h));
    appendU16(out, u16(b, "L1"));
    appendU16(out, u16(b, "L2"));
    appendU8(out, directionByte(WidgetKind::SlMenu, b.text("direction"), ctx.rotation));
    appendU16(out, icon(b, "foreground"));
    appendU16(out, icon(b, "background"));
    appendU16(out, u16(b, "minValue"));
    appendU16(out, u16(b, "maxValue"));
    appendU16(out, u16(b, "adjStep"));
    if (ctx.variables)
        ctx.variables->storeWord(b.name(), u16(b, "writeAddr"), u16(b, "defaultValue"), ctx.errorText);
    return out.size() - start;
}

// 30 bytes. The rectangle ends at its last column and row, as a button's.
int writeSlideMenuPro(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    const int page = pageNumber(b.text("pageGoto"));
    QSize vice;
    if (page >= 0 && ctx.pagePictureSize)
        vice = ctx.pagePictureSize(page);
    const QSize frame = frameSize(b, vice.isValid() ? vice : QSize(0, 0));
    appendHeader(out, WidgetKind::SlideMenuPro, b, kSlideMenuProLength);
    appendU16(out, u16(b, "writeAddr"));
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU16(out, r.right());
    appendU16(out, r.bottom());
    appendU8(out, quint8(refField(page) & 0xFF));
    appendU16(out, icon(b, "background"));
    appendU8(out, directionByte(WidgetKind::SlideMenuPro, b.text("direction"), ctx.rotation));
    appendU8(out, b.isOn("stop") ? 1 : 0);
    appendU16(out, quint16(frame.width()));
    appendU16(out, quint16(frame.height()));
    appendU16(out, icon(b, "sIcon"));
    appendU16(out, icon(b, "eIcon"));
    appendU16(out, u16(b, "Interval_V"));
    appendU16(out, u16(b, "Interval_H"));
    return out.size() - start;
}

} // namespace

bool slidesHorizontally(const QString &word)
{
    return WordTables::slideDirection.valueOf(word) == 1;
}

quint8 directionByte(WidgetKind kind, const QString &word, int rotation)
{
    const bool loop = word == QLatin1String("Vertical-Loop") || word == QLatin1String("Horizontal-Loop");
    const bool sideways = slidesHorizontally(word) != (rotation == 1 || rotation == 3);
    const bool bit7 = kind == WidgetKind::SlideMenuPro ? loop : !loop;
    return quint8((bit7 ? 0x80 : 0) | (sideways ? 0x01 : 0));
}

QSize frameSize(const EditBuffer &menu, const QSize &vicePicture)
{
    const int w = int(menu.number("frameWidth"));
    const int h = int(menu.number("frameHeigth"));
    return QSize(w > 0 ? w : qMax(0, vicePicture.width()), h > 0 ? h : qMax(0, vicePicture.height()));
}

// --- host lists ------------------------------------------------------------------
// A slide menu writes the chosen frame's number at writeAddr; the cross-page
// menu has no variable and no rows.
constexpr ListColumn kSlMenuColumns[] = {addressColumn("writeAddr"), fixedColumn("2"), blankColumn(),
                                         blankColumn()};
constexpr KindExports kSlMenuExports = {ExportList::Touch, kSlMenuColumns, countOf(kSlMenuColumns), nullptr,
                                        nullptr,           nullptr,        0,
                                        "#define  _SLMENU_PAGE", "writeAddr"};

const KindDef slMenu = {WidgetKind::SlMenu, kSlMenuFields, countOf(kSlMenuFields), nullptr, 0,
                        writeSlMenu,        nullptr,       nullptr,                nullptr, nullptr,
                        &kSlMenuExports};

const KindDef slideMenuPro = {WidgetKind::SlideMenuPro, kSlideMenuProFields, countOf(kSlideMenuProFields),
                              nullptr,                  0,                   writeSlideMenuPro,
                              nullptr,                  nullptr};

} // namespace MenuKinds

} // namespace vantile
