#include "widgets/TimeKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace TimeKinds {

namespace {

using RecordFields::appendTopLeft;
using RecordFields::icon;
using RecordFields::keepIconRunOrdered;
using RecordFields::storeBlock;
using RecordFields::u16;
using RecordFields::wordValue;

using C = Codec;
using LineGrammar::iconNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

const char *const kDateWords[] = {"YY/MM/DD HH:MM:SS", "YY/MM/DD", "YY/MM", "MM/DD", "HH:MM:SS", "HH:MM",
                                  "MM:SS", "Week", "YY/MM/DD/HH:MM:SS", "YY/MM/DD/", "YY/MM/", "MM/DD/",
                                  nullptr};
const char *const kTimerWords[] = {"NULL", "HH:MM:SS", "HH:MM", "MM:SS", "SS", nullptr};
const char *const kControlWords[] = {"0:Pause the timer", "1:Start the timer", "2:Cancel the timer",
                                     "3:Show timer at pause state", nullptr};
const char *const kSignWords[] = {"+", "-", nullptr};

constexpr const char *kPairAddrZh = "操作变量地址";
constexpr const char *kPairValueZh = "    _赋值";

// clang-format off
const FieldDef kRTCFields[] = {
    //    key                 codec        row line default        Chinese label
    field("name",             C::Text,       0,  8, kObjectNameDefault, "控件名称"),
    field("X",                C::Decimal,    1,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,    2,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,    3,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,    4,  3, "0",            "高度").cut(NumWidth::S16),
    field("parameterAddr",    C::Hex16,      5,  4, "0xFFFF",       "参数地址"),
    field("firstIcon",        C::IconRef,    6,  5, "",             "首张图片"),
    field("lastIcon",         C::IconRef,    7,  6, "",             "末张图片"),
    field("displayFormat",    C::Word,       8,  7, "HH:MM:SS",     "显示形式").words(&WordTables::dateFormat)
                                                                     .editedBy(Editor::Menu, kDateWords),
    field("tail",             C::Hex16,     -1,  9, "0xFFFF"),
    field("lockState",        C::Decimal,   -1, 10, "1").cut(NumWidth::S16),
};

// Hand lengths and widths are kept whole in the line; the record takes
// their low byte.
#define VANTILE_HAND(hand, row, zh, colour)                                                          \
    field(hand "Hand_L", C::Decimal, row, (row) - 1, "0", zh "长端长度").cut(NumWidth::U16),             \
    field(hand "Hand_S", C::Decimal, (row) + 1, (row), "0", zh "短端长度").cut(NumWidth::U16),           \
    field(hand "Hand_W", C::Decimal, (row) + 2, (row) + 1, "0", zh "宽度").cut(NumWidth::U16),           \
    field(hand "HandColor", C::Hex24, (row) + 3, (row) + 2, colour, zh "颜色")

const FieldDef kClockFields[] = {
    //    key                 codec        row line default        Chinese label
    field("name",             C::Text,       0, 19, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,      1,  0, "0xFFFF",       "参数地址"),
    field("X",                C::Decimal,    2,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,    3,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,    4,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,    5,  4, "0",            "高度").cut(NumWidth::S16),
    VANTILE_HAND("hour",   6, "时针", "0x000000"),
    VANTILE_HAND("minute", 10, "分针", "0x000000"),
    VANTILE_HAND("second", 14, "秒针", "0xFF0000"),
    field("background",       C::IconRef,   18, 17, "",             "背景图"),
    field("centerIcon",       C::IconRef,   19, 18, "",             "时钟中心图标"),
    field("lockState",        C::Decimal,   -1, 20, "1").cut(NumWidth::S16),
};
#undef VANTILE_HAND

// The eight variables written when the timer runs out: rows 18 on, line
// fields 17 on. They name other widgets' variables, so they are no write
// addresses of the timer's own.
// A pair's two rows show only while its address is set.
#define VANTILE_TIMER_PAIR(n, row, pos)                                                                 \
    field("writeAddr" #n, C::Hex16, row, pos, "0xFFFF", kPairAddrZh).english("writeAddr")               \
        .shownWhileSetIn("writeAddr" #n),                                                               \
    field("writeAddr" #n "_value", C::Hex16, (row) + 1, (pos) + 1, "0xFFFF", kPairValueZh)               \
        .english("writeAddr_value").shownWhileSetIn("writeAddr" #n)

const FieldDef kUITimerFields[] = {
    //    key                 codec        row line default        Chinese label
    field("name",             C::Text,       0, 16, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,      1,  0, "0xFFFF",       "参数地址"),
    field("X",                C::Decimal,    2,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,    3,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,    4,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,    5,  4, "0",            "高度").cut(NumWidth::S16),
    field("presetAddr",       C::Hex16,      6,  5, "0xFFFF",       "预置值地址").address(),
    field("presetAddr_value", C::Decimal,    7,  6, "0",            "    _初始值").cut(NumWidth::U16),
    field("countAddr",        C::Hex16,      8,  7, "0xFFFF",       "计时值地址").address(),
    field("countAddr_value",  C::Decimal,    9,  8, "0",            "    _初始值").cut(NumWidth::U16),
    field("controlAddr",      C::Hex16,     10,  9, "0xFFFF",       "控制地址").address(),
    // the control code in the line, its word in the row
    field("controlAddr_value", C::WordNumber, 11, 10, "0",          "    _初始值").cut(NumWidth::U16)
                                                                     .words(&WordTables::timerControl)
                                                                     .editedBy(Editor::Menu, kControlWords),
    field("firstIcon",        C::IconRef,   12, 11, "",             "首张图片"),
    field("lastIcon",         C::IconRef,   13, 12, "",             "末张图片"),
    field("displayFormat",    C::Word,      14, 13, "HH:MM:SS",     "显示形式").words(&WordTables::timerFormat)
                                                                     .editedBy(Editor::Menu, kTimerWords),
    field("countMode",        C::Word,      15, 14, "+",            "计时方向").words(&WordTables::countDirection)
                                                                     .editedBy(Editor::Menu, kSignWords),
    field("globalCounting",   C::Switch,    16, 15, "Disable",      "全局计时"),
    // shown and edited, but the line has no place for it: a read widget has it off
    field("reportToHost",     C::Switch,    17, -1, "Disable",      "串口返回使能"),
    VANTILE_TIMER_PAIR(1, 18, 17),
    VANTILE_TIMER_PAIR(2, 20, 19),
    VANTILE_TIMER_PAIR(3, 22, 21),
    VANTILE_TIMER_PAIR(4, 24, 23),
    VANTILE_TIMER_PAIR(5, 26, 25),
    VANTILE_TIMER_PAIR(6, 28, 27),
    VANTILE_TIMER_PAIR(7, 30, 29),
    VANTILE_TIMER_PAIR(8, 32, 31),
    field("lockState",        C::Decimal,   -1, 33, "1").cut(NumWidth::S16),
};
#undef VANTILE_TIMER_PAIR
// clang-format on

// Bytes of the parameter blocks after the count byte: the record after
// byte 4, RTC without its tail; and where the RTC's tail stands.
constexpr int kRTCBlock = 9, kRTCTail = 14;
constexpr int kClockBlock = 26;
constexpr int kTimerBlock = 48;

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

// 16 bytes, `tail` at 14.
int emitRTC(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, bool vice)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::RTC), ctx.viceFlag, u16(b, "parameterAddr"), 0x0B, false);
    appendTopLeft(r, b, ctx);
    appendU16(r, icon(b, "firstIcon"));
    appendU16(r, icon(b, "lastIcon"));
    appendU8(r, quint8(wordValue(b, "displayFormat")));
    appendU16(r, b.tail());
    storeBlock(b, ctx, r, kRTCBlock);
    out.append(vice ? Records::tailToFront(r, kRTCTail) : r);
    return r.size();
}

int writeRTC(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emitRTC(out, b, ctx, false);
}

int writeViceRTC(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emitRTC(out, b, ctx, true);
}

// Long end, short end and width of a hand, one byte each, then its colour.
void appendHand(QByteArray &out, const EditBuffer &b, const QByteArray &hand, const RecordContext &ctx)
{
    for (const char *part : {"Hand_L", "Hand_S", "Hand_W"})
        appendU8(out, quint8(b.number((hand + part).constData()) & 0xFF));
    Records::appendColour3(out, quint32(b.number((hand + "HandColor").constData())), ctx.colour24);
}

// 31 bytes.
int writeClock(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::Clock), ctx.viceFlag, u16(b, "parameterAddr"), kClockBlock,
                                 false);
    appendTopLeft(r, b, ctx);
    appendU16(r, icon(b, "background"));
    appendHand(r, b, "hour", ctx);
    appendHand(r, b, "minute", ctx);
    appendHand(r, b, "second", ctx);
    appendU16(r, icon(b, "centerIcon"));
    storeBlock(b, ctx, r, kClockBlock);
    out.append(r);
    return r.size();
}

// The start values of the timer's three variables; an address beyond the
// variable memory (0xFFFF among them) simply gets none.
void storeTimerValues(const EditBuffer &b, const RecordContext &ctx)
{
    if (!ctx.variables)
        return;
    for (const char *key : {"presetAddr", "countAddr", "controlAddr"}) {
        const quint16 at = u16(b, key);
        if (2 * int(at) + 1 < ctx.variables->limit())
            ctx.variables->storeWord(b.name(), at, u16(b, (QByteArray(key) + "_value").constData()), nullptr);
    }
}

// 53 bytes.
int writeUITimer(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::UITimer), ctx.viceFlag, u16(b, "parameterAddr"),
                                 kTimerBlock, false);
    appendU16(r, u16(b, "presetAddr"));
    appendU16(r, u16(b, "countAddr"));
    appendU16(r, u16(b, "controlAddr"));
    appendTopLeft(r, b, ctx);
    appendU16(r, icon(b, "firstIcon"));
    appendU8(r, quint8(wordValue(b, "displayFormat")));
    appendU8(r, quint8(wordValue(b, "countMode")));
    appendU8(r, b.isOn("globalCounting") ? 1 : 0);
    appendU8(r, b.isOn("reportToHost") ? 1 : 0);
    for (int n = 1; n <= 8; ++n) {
        const QByteArray addr = "writeAddr" + QByteArray::number(n);
        appendU16(r, u16(b, addr.constData()));
        appendU16(r, u16(b, (addr + "_value").constData()));
    }
    storeTimerValues(b, ctx);
    storeBlock(b, ctx, r, kTimerBlock);
    out.append(r);
    return r.size();
}

// A dropped clock's hands fit its dial: with r half the shorter side, the
// hour hand reaches r/2, the minute hand 3r/4, the second hand 9r/10,
// each with a tail of r/8 behind the centre.
void clockAtDrop(EditBuffer &b)
{
    const int r = qBound(0, qMin(int(b.w()), int(b.h())) / 2, 255);
    const int tail = r / 8;
    const struct {
        const char *length, *back, *width;
        int reach, thickness;
    } hands[] = {{"hourHand_L", "hourHand_S", "hourHand_W", r / 2, qMax(2, r / 12)},
                 {"minuteHand_L", "minuteHand_S", "minuteHand_W", 3 * r / 4, qMax(2, r / 20)},
                 {"secondHand_L", "secondHand_S", "secondHand_W", 9 * r / 10, 1}};
    for (const auto &h : hands) {
        b.setNumber(h.length, h.reach);
        b.setNumber(h.back, tail);
        b.setNumber(h.width, h.thickness);
    }
}

// --- host lists ------------------------------------------------------------------
// The clocks read the panel's own time: no variable, only their parameter
// blocks (9 and 26 bytes after byte 4). A timer has three variables (the
// count, its preset and its control word) and sends the initial value of
// each under a name of its own.
constexpr ListColumn kRTCColumns[] = {blankColumn(), blankColumn(), addressColumn("parameterAddr"),
                                      fixedColumn("9")};
constexpr ListColumn kClockColumns[] = {blankColumn(), blankColumn(), addressColumn("parameterAddr"),
                                        fixedColumn("26")};
constexpr ListColumn kUITimerColumns[] = {addressColumn("countAddr"),   fixedColumn("2"),
                                          addressColumn("parameterAddr"), fixedColumn("48"),
                                          addressColumn("presetAddr"),  fixedColumn("2"),
                                          addressColumn("controlAddr"), fixedColumn("2")};
constexpr SerialRow kUITimerSerial[] = {
    {"presetAddr", "presetAddr_value", ValueForm::Number, "short", "preset_Addr"},
    {"countAddr", "countAddr_value", ValueForm::Number, "short", "calc_Addr"},
    {"controlAddr", "controlAddr_value", ValueForm::Number, "short", "ctrl_Addr"},
};

constexpr KindExports kRTCExports = {ExportList::Display, kRTCColumns, countOf(kRTCColumns)};
constexpr KindExports kClockExports = {ExportList::Display, kClockColumns, countOf(kClockColumns)};
constexpr KindExports kUITimerExports = {ExportList::Display, kUITimerColumns, countOf(kUITimerColumns), nullptr,
                                         nullptr,             kUITimerSerial,  countOf(kUITimerSerial)};

} // namespace

// Fields in KindDef's order: kind, fields, labels, writers, apply rule,
// field splitter (none: plain commas), drop rule, host lists.
const KindDef rtc = {WidgetKind::RTC, kRTCFields, countOf(kRTCFields), nullptr, 0,
                     writeRTC,        writeViceRTC, keepIconRunOrdered, nullptr, nullptr,
                     &kRTCExports};

const KindDef analogClock = {WidgetKind::Clock, kClockFields, countOf(kClockFields), nullptr, 0,
                             writeClock,        nullptr,      nullptr,               nullptr, clockAtDrop,
                             &kClockExports};

const KindDef uitimer = {WidgetKind::UITimer, kUITimerFields, countOf(kUITimerFields), nullptr, 0,
                         writeUITimer,        nullptr,        keepIconRunOrdered,     nullptr, nullptr,
                         &kUITimerExports};

} // namespace TimeKinds

} // namespace vantile
