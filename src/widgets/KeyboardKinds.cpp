#include "widgets/KeyboardKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace KeyboardKinds {

namespace {

using RecordFields::u16;
using RecordFields::wordValue;

using C = Codec;
using LineGrammar::pageNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

constexpr const char *kTriggerZh = "    _键码触发值";
constexpr const char *kTriggerEn = "    _triggerValue";

// The menus of the keyboard rows.
const char *const kNumberTypeWords[] = {"char", "short", "int", "uchar", "ushort", "uint",
                                        "longlong", "char_H8", "uchar_H8", nullptr};
const char *const kCursorWords[] = {"Black", "White", nullptr};
const char *const kModeWords[] = {"New", "Modify", nullptr};
const char *const kShowWords[] = {"Normal", "Star", nullptr};
const char *const kTrueFalseWords[] = {"true", "false", nullptr};
const char *const kSideWords[] = {"Left", "Right", nullptr};

// The Chinese keyboard's rows are keyed by their Chinese labels.
constexpr const char *kTextFont = "显示文本字库";
constexpr const char *kTextWidth = "文字宽度";
constexpr const char *kTextHeight = "文字高度";
constexpr const char *kPinyinFont = "拼音文本字库";
constexpr const char *kPinyinWidth = "拼音字母宽度";
constexpr const char *kPinyinHeight = "拼音字母高度";
constexpr const char *kCursor = "光标颜色";
constexpr const char *kInputColour = "输入文字颜色";
constexpr const char *kInputX = "输入文字坐标X";
constexpr const char *kInputY = "输入文字坐标Y";
constexpr const char *kPromptColour = "提示文字颜色";
constexpr const char *kPinyinX = "拼音提示坐标X";
constexpr const char *kPinyinY = "拼音提示坐标Y";
constexpr const char *kHanziX = "汉字提示坐标X";
constexpr const char *kHanziY = "汉字提示坐标Y";
constexpr const char *kKeyboardX = "键盘坐标X";
constexpr const char *kKeyboardY = "键盘坐标Y";
constexpr const char *kMode = "显示模式";
constexpr const char *kSpacing = "文字间距pixel";

// A Chinese-keyed row: key and Chinese label are the same text.
constexpr FieldDef cnField(const char *key, Codec codec, int row, const char *def, const char *en)
{
    return field(key, codec, row, row, def, key).english(en);
}

// clang-format off
const FieldDef kKeypadFields[] = {
    //    key                          codec        row line default        Chinese label
    field("name",                      C::Text,       0, 23, kObjectNameDefault, "控件名称"),
    field("writeAddr",                 C::Hex16,      1,  0, "0x0000",       "变量地址").address(),
    field("byteLength",                C::Decimal,    2,  1, "2",            "数据长度(byte)").cut(NumWidth::U16),
    field("X",                         C::Decimal,    3,  2, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,    4,  3, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,    5,  4, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,    6,  5, "0",            "高度").cut(NumWidth::S16),
    field("kpad_X",                    C::Decimal,    7,  6, "0",            "键盘弹出X坐标").cut(NumWidth::S16),
    field("kpad_Y",                    C::Decimal,    8,  7, "0",            "键盘弹出Y坐标").cut(NumWidth::S16),
    field("input_X",                   C::Decimal,    9,  8, "0",            "数字输入框X坐标").cut(NumWidth::S16),
    field("input_Y",                   C::Decimal,   10,  9, "0",            "数字输入框Y坐标").cut(NumWidth::S16),
    field("input_Max",                 C::Decimal,   11, 10, "9999",         "输入最大值").cut(NumWidth::U32),
    field("input_Min",                 C::Decimal,   12, 11, "0",            "输入最小值").cut(NumWidth::U32),
    field("integerDigit",              C::Decimal,   13, 12, "4",            "数字整数位数").cut(NumWidth::U8),
    field("decimalDigit",              C::Decimal,   14, 13, "0",            "数字小数位数").cut(NumWidth::U8),
    field("fontWidth",                 C::Decimal,   15, 14, "12",           "数字字体宽度").cut(NumWidth::U8),
    field("inputLimit",                C::Word,      16, 15, "false",        "输入限制开关").words(&WordTables::boolean)
                                                                            .editedBy(Editor::Menu, kTrueFalseWords),
    field("alignment",                 C::Word,      17, 16, "Left",         "对齐方式").words(&WordTables::keyAlignment)
                                                                            .editedBy(Editor::Menu, kSideWords),
    field("cursorColor",               C::Word,      18, 17, "Black",        "光标颜色").words(&WordTables::keyCursor)
                                                                            .editedBy(Editor::Menu, kCursorWords),
    field("fontID",                    C::FontRef,   19, 18, "0",            "字库ID").cut(NumWidth::U8),
    field("dataType",                  C::Word,      20, 19, "short",        "数据类型").words(&WordTables::dataType)
                                                                            .editedBy(Editor::Menu, kNumberTypeWords),
    field("pageID",                    C::PageRef,   21, 20, "",             "键盘页ID"),
    // a text the line carries without a row; new lines leave it empty
    field("reserved",                  C::Text,      -1, 21, ""),
    field("fontColor",                 C::Hex24,     22, 22, "0x000000",     "字体颜色"),
    field("reportToHost",              C::Switch,    23, 24, "Disable",      "串口返回使能"),
    field("backgroundPage",            C::PageRef,   24, 25, "",             "背景页ID"),
    field("hostControl",               C::Switch,    25, 26, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,     26, 27, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("lockState",                 C::Decimal,   -1, 28, "1").cut(NumWidth::S16),
};

// The line keeps the rows' order, lockState last.
const FieldDef kENKeyBFields[] = {
    //    key                          codec        row line default        Chinese label
    field("name",                      C::Text,       0,  0, kObjectNameDefault, "控件名称"),
    field("writeAddr",                 C::Hex16,      1,  1, "0x0000",       "变量地址").address(),
    field("wordLength",                C::Decimal,    2,  2, "16",           "数据长度(word)").cut(NumWidth::U16),
    field("X",                         C::Decimal,    3,  3, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,    4,  4, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,    5,  5, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,    6,  6, "0",            "高度").cut(NumWidth::S16),
    field("fontID",                    C::FontRef,    7,  7, "0",            "字库ID").cut(NumWidth::U8),
    field("fontWidth",                 C::Decimal,    8,  8, "12",           "字体宽度").cut(NumWidth::U8),
    field("fontHeight",                C::Decimal,    9,  9, "24",           "字体高度").cut(NumWidth::U8),
    field("cursorColor",               C::Word,      10, 10, "Black",        "光标颜色").words(&WordTables::keyCursor)
                                                                            .editedBy(Editor::Menu, kCursorWords),
    field("fontColor",                 C::Hex24,     11, 11, "0x000000",     "字体颜色"),
    field("entryBox_X",                C::Decimal,   12, 12, "0",            "输入框X坐标").cut(NumWidth::S16),
    field("entryBox_Y",                C::Decimal,   13, 13, "0",            "输入框Y坐标").cut(NumWidth::S16),
    field("pageID",                    C::PageRef,   14, 14, "",             "键盘页ID"),
    field("keyboard_X",                C::Decimal,   15, 15, "0",            "键盘弹出X坐标").cut(NumWidth::S16),
    field("keyboard_Y",                C::Decimal,   16, 16, "0",            "键盘弹出Y坐标").cut(NumWidth::S16),
    field("inputMode",                 C::Word,      17, 17, "New",          "输入模式").words(&WordTables::keyInputMode)
                                                                            .editedBy(Editor::Menu, kModeWords),
    field("displayFormat",             C::Word,      18, 18, "Normal",       "显示形式").words(&WordTables::keyDisplay)
                                                                            .editedBy(Editor::Menu, kShowWords),
    field("reportToHost",              C::Switch,    19, 19, "Disable",      "串口返回使能"),
    field("backgroundPage",            C::PageRef,   20, 20, "",             "背景页ID"),
    field("hostControl",               C::Switch,    21, 21, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,     22, 22, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("lockState",                 C::Decimal,   -1, 23, "1").cut(NumWidth::S16),
};

// The line keeps the rows' order, lockState last.
const FieldDef kCNKeyBFields[] = {
    //    key                          codec        row line default        Chinese label
    field("name",                      C::Text,       0,  0, kObjectNameDefault, "控件名称"),
    field("writeAddr",                 C::Hex16,      1,  1, "0x0000",       "变量地址").address(),
    field("wordLength",                C::Decimal,    2,  2, "16",           "数据长度(word)").cut(NumWidth::U16),
    field("X",                         C::Decimal,    3,  3, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,    4,  4, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,    5,  5, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,    6,  6, "0",            "高度").cut(NumWidth::S16),
    //     key             codec        row default     English label
    cnField(kTextFont,     C::FontRef,    7, "0",        "textFontID").cut(NumWidth::U8),
    cnField(kTextWidth,    C::Decimal,    8, "24",       "textWidth").cut(NumWidth::U8),
    cnField(kTextHeight,   C::Decimal,    9, "24",       "textHeight").cut(NumWidth::U8),
    cnField(kPinyinFont,   C::FontRef,   10, "0",        "pinyinFontID").cut(NumWidth::U8),
    cnField(kPinyinWidth,  C::Decimal,   11, "12",       "pinyinWidth").cut(NumWidth::U8),
    cnField(kPinyinHeight, C::Decimal,   12, "24",       "pinyinHeight").cut(NumWidth::U8),
    cnField(kCursor,       C::Word,      13, "Black",    "cursorColor").words(&WordTables::keyCursor)
                                                                      .editedBy(Editor::Menu, kCursorWords),
    cnField(kInputColour,  C::Hex24,     14, "0x000000", "inputColor"),
    cnField(kInputX,       C::Decimal,   15, "0",        "input_X").cut(NumWidth::S16),
    cnField(kInputY,       C::Decimal,   16, "0",        "input_Y").cut(NumWidth::S16),
    cnField(kPromptColour, C::Hex24,     17, "0x0000FF", "promptColor"),
    cnField(kPinyinX,      C::Decimal,   18, "0",        "pinyinPrompt_X").cut(NumWidth::S16),
    cnField(kPinyinY,      C::Decimal,   19, "0",        "pinyinPrompt_Y").cut(NumWidth::S16),
    cnField(kHanziX,       C::Decimal,   20, "0",        "hanziPrompt_X").cut(NumWidth::S16),
    cnField(kHanziY,       C::Decimal,   21, "0",        "hanziPrompt_Y").cut(NumWidth::S16),
    field("pageID",                    C::PageRef,   22, 22, "",             "键盘页ID"),
    cnField(kKeyboardX,    C::Decimal,   23, "0",        "keyboard_X").cut(NumWidth::S16),
    cnField(kKeyboardY,    C::Decimal,   24, "0",        "keyboard_Y").cut(NumWidth::S16),
    cnField(kMode,         C::Word,      25, "New",      "inputMode").words(&WordTables::keyInputMode)
                                                                      .editedBy(Editor::Menu, kModeWords),
    cnField(kSpacing,      C::Decimal,   26, "2",        "spacing(pixel)").cut(NumWidth::U8),
    field("reportToHost",              C::Switch,    27, 27, "Disable",      "串口返回使能"),
    field("backgroundPage",            C::PageRef,   28, 28, "",             "背景页ID"),
    field("hostControl",               C::Switch,    29, 29, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,     30, 30, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("lockState",                 C::Decimal,   -1, 31, "1").cut(NumWidth::S16),
};
// clang-format on

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

quint8 u8(const EditBuffer &b, const char *key)
{
    return quint8(b.number(key));
}

void appendU32(QByteArray &out, quint32 v)
{
    appendU16(out, quint16(v & 0xFFFF));
    appendU16(out, quint16(v >> 16));
}

// Header and offsets 3 to 12, alike in the three kinds: the touch area (or,
// with host control, 0xFFFF and the trigger value in place of its corner),
// its far corner and the variable.
void appendHead(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, quint8 length)
{
    Records::appendTouchHeader(out, typeOf(b.kind()), b.isOn("reportToHost"), ctx.viceFlag, length);
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    const bool host = b.isOn("hostControl");
    appendU16(out, host ? quint16(0xFFFF) : r.x);
    appendU16(out, host ? u16(b, "hostControl_triggerValue") : r.y);
    appendU16(out, r.right());
    appendU16(out, r.bottom());
    appendU16(out, u16(b, "writeAddr"));
}

// The picture of the keyboard page, as designed.
QSize keyboardPicture(const EditBuffer &b, const RecordContext &ctx)
{
    const int page = pageNumber(b.text("pageID"));
    QSize size;
    if (page >= 0 && ctx.pagePictureSize)
        size = ctx.pagePictureSize(page);
    return size.isEmpty() ? ctx.rectPicture() : size;
}

// A point of the keyboard page.
void appendKeyboardPoint(QByteArray &out, const EditBuffer &b, const char *xKey, const char *yKey,
                         const RecordContext &ctx)
{
    const QSize e = Records::pictureExtents(ctx.rotation, keyboardPicture(b, ctx));
    const Point16 p =
        Records::rotatePoint(ctx.rotation, int(b.number(xKey)), int(b.number(yKey)), e.width(), e.height());
    appendU16(out, p.x);
    appendU16(out, p.y);
}

// Where the keyboard page pops up: its picture laid on the panel at X, Y.
void appendKeyboardWindow(QByteArray &out, const EditBuffer &b, const char *xKey, const char *yKey,
                          const RecordContext &ctx)
{
    const QSize size = keyboardPicture(b, ctx);
    const Rect16 w = ctx.rotateOnPanel(int(b.number(xKey)), int(b.number(yKey)), size.width(), size.height());
    appendU16(out, w.x);
    appendU16(out, w.y);
}

void appendColour(QByteArray &out, const EditBuffer &b, const char *key, const RecordContext &ctx)
{
    Records::appendColour3(out, quint32(b.number(key)), ctx.colour24);
}

quint16 keyboardPage(const EditBuffer &b)
{
    return refField(pageNumber(b.text("pageID")));
}

// 42 bytes.
int writeKeypad(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    appendHead(out, b, ctx, 0x27);
    appendU8(out, quint8(wordValue(b, "dataType")));
    appendU8(out, u8(b, "integerDigit"));
    appendU8(out, u8(b, "decimalDigit"));
    appendKeyboardWindow(out, b, "kpad_X", "kpad_Y", ctx);
    appendKeyboardPoint(out, b, "input_X", "input_Y", ctx);
    appendU8(out, u8(b, "fontID"));
    appendU8(out, u8(b, "fontWidth"));
    appendU8(out, quint8(wordValue(b, "cursorColor")));
    appendU16(out, keyboardPage(b));
    appendU8(out, quint8(wordValue(b, "inputLimit")));
    appendU32(out, quint32(b.number("input_Max")));
    appendU32(out, quint32(b.number("input_Min")));
    appendU8(out, quint8(wordValue(b, "alignment")));
    appendColour(out, b, "fontColor", ctx);
    return out.size() - start;
}

// 34 bytes.
int writeENKeyB(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    appendHead(out, b, ctx, 0x1F);
    appendU16(out, u16(b, "wordLength"));
    appendU8(out, quint8(wordValue(b, "inputMode")));
    appendU8(out, u8(b, "fontID"));
    appendU8(out, u8(b, "fontWidth"));
    appendU8(out, u8(b, "fontHeight"));
    appendU8(out, quint8(wordValue(b, "cursorColor")));
    appendColour(out, b, "fontColor", ctx);
    appendKeyboardPoint(out, b, "entryBox_X", "entryBox_Y", ctx);
    appendU16(out, keyboardPage(b));
    appendKeyboardWindow(out, b, "keyboard_X", "keyboard_Y", ctx);
    appendU8(out, quint8(wordValue(b, "displayFormat")));
    return out.size() - start;
}

// 48 bytes.
int writeCNKeyB(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    appendHead(out, b, ctx, 0x2D);
    appendU16(out, u16(b, "wordLength"));
    appendU8(out, quint8(wordValue(b, kMode)));
    appendU8(out, u8(b, kTextFont));
    appendU8(out, u8(b, kTextWidth));
    appendU8(out, u8(b, kTextHeight));
    appendU8(out, u8(b, kPinyinFont));
    appendU8(out, u8(b, kPinyinWidth));
    appendU8(out, u8(b, kPinyinHeight));
    appendU8(out, quint8(wordValue(b, kCursor)));
    appendColour(out, b, kInputColour, ctx);
    appendKeyboardPoint(out, b, kInputX, kInputY, ctx);
    appendColour(out, b, kPromptColour, ctx);
    appendKeyboardPoint(out, b, kPinyinX, kPinyinY, ctx);
    appendKeyboardPoint(out, b, kHanziX, kHanziY, ctx);
    appendU8(out, u8(b, kSpacing));
    appendU16(out, keyboardPage(b));
    appendKeyboardWindow(out, b, kKeyboardX, kKeyboardY, ctx);
    return out.size() - start;
}

// --- host lists ------------------------------------------------------------------
// A keyboard writes what was typed at writeAddr: the keypad a number of
// byteLength bytes, the text keyboards wordLength words.
constexpr ListColumn kKeypadColumns[] = {addressColumn("writeAddr"), decimalColumn("byteLength"), blankColumn(),
                                         blankColumn()};
constexpr ListColumn kTextKeyboardColumns[] = {addressColumn("writeAddr"), decimalColumn("wordLength"),
                                               blankColumn(), blankColumn()};

constexpr KindExports kKeypadExports = {ExportList::Touch, kKeypadColumns, countOf(kKeypadColumns), nullptr,
                                        nullptr,           nullptr,        0,
                                        "#define  _KEYPAD_PAGE", "writeAddr"};
constexpr KindExports kENKeyBExports = {ExportList::Touch, kTextKeyboardColumns, countOf(kTextKeyboardColumns),
                                        nullptr,           nullptr,              nullptr,
                                        0,                 "#define  _ENKEYBOARD_PAGE", "writeAddr"};
constexpr KindExports kCNKeyBExports = {ExportList::Touch, kTextKeyboardColumns, countOf(kTextKeyboardColumns),
                                        nullptr,           nullptr,              nullptr,
                                        0,                 "#define  _CNKEYBOARD_PAGE", "writeAddr"};

} // namespace

// Fields in KindDef's order: kind, fields, labels, writers, apply rule,
// field splitter (none: plain commas), drop rule, host lists.
const KindDef keypad = {WidgetKind::Keypad, kKeypadFields, countOf(kKeypadFields), nullptr, 0,
                        writeKeypad,        nullptr,       nullptr,                nullptr, nullptr,
                        &kKeypadExports};

const KindDef enkeyB = {WidgetKind::ENKeyB, kENKeyBFields, countOf(kENKeyBFields), nullptr, 0,
                        writeENKeyB,        nullptr,       nullptr,                nullptr, nullptr,
                        &kENKeyBExports};

const KindDef cnkeyB = {WidgetKind::CNKeyB, kCNKeyBFields, countOf(kCNKeyBFields), nullptr, 0,
                        writeCNKeyB,        nullptr,       nullptr,                nullptr, nullptr,
                        &kCNKeyBExports};

} // namespace KeyboardKinds

} // namespace vantile
