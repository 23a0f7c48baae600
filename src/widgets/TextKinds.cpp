#include "widgets/TextKinds.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/Records.h"
#include "widgets/TextEncoding.h"
#include "widgets/VariableImage.h"
#include "widgets/WordTables.h"

#include <array>
#include <iterator>

namespace vantile {

namespace TextKinds {

namespace {

using C = Codec;
using Records::appendU16;
using Records::appendU8;

// A switch that some lines hold as a digit.
constexpr WordAlias kSwitchDigits[] = {{"1", "Enable"}, {"0", "Disable"}, {nullptr, nullptr}};

// clang-format off
constexpr FieldDef kLabelFields[] = {
    //    key                 codec          row line default       Chinese label
    field("name",             C::Text,         0, 16, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,        1, 15, "0xFFFF",     "参数地址"),
    field("writeAddr",        C::Hex16,        2,  0, "0x0000",     "变量地址").address(),
    field("wordLength",       C::Decimal,      3,  1, "20",         "数据长度(Word)").cut(NumWidth::U16),
    field("X",                C::Decimal,      4,  2, "0",          "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,      5,  3, "0",          "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,      6,  4, "0",          "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,      7,  5, "0",          "高度").cut(NumWidth::S16),
    field("fontWidth",        C::Decimal,      8,  6, "32",         "字体宽度").cut(NumWidth::U16),
    field("fontHeight",       C::Decimal,      9,  7, "32",         "字体高度").cut(NumWidth::U16),
    field("fontID",           C::FontRef,     10,  8, "0",          "字库ID"),
    field("encoding",         C::WordNumber,  11,  9, "0",          "字库编码").words(&WordTables::encoding),
    field("alignment",        C::WordNumber,  12, 10, "0",          "对齐方式").words(&WordTables::alignment)
                                                                   .editedBy(Editor::Menu, kAlignmentWords),
    field("backgroundColor",  C::SwitchBit,   13, 11, "0",          "背景色使能"),
    field("background_Color", C::Hex24,       14, 12, "0xD3D3D3",   "    _颜色").english("    _Color"),
    field("fontColor",        C::Hex24,       15, 13, "0x000000",   "字体颜色"),
    field("defaultText",      C::HexText,     16, 14, kObjectNameDefault, "初始字符串").editedBy(Editor::TextDialog),
    field("passwordMode",     C::Switch,      17, 17, "Disable",    "密码模式").oldWords(kSwitchDigits),
    field("multi-language",   C::SwitchBit,   18, 18, "0",          "多国语言"),
    // The static mark and the constant's number are the Statictext's; a
    // plain label always writes 0 for both.
    field("static",           C::Decimal,     -1, 19, "0").fixedToDefault(),
    field("Constant_Num",     C::Decimal,     -1, 20, "0",          "固定变量编号").cut(NumWidth::U16).fixedToDefault(),
    field("tail",             C::Hex16,       -1, 21, "0xFFFF"),
    field("lockState",        C::Decimal,     -1, 22, "1").cut(NumWidth::S16),
};

constexpr FieldDef kTextRollFields[] = {
    //    key                 codec          row line default       Chinese label
    field("name",             C::Text,         0, 19, kObjectNameDefault, "控件名称"),
    field("parameterAddr",    C::Hex16,        1, 18, "0xFFFF",     "参数地址"),
    field("writeAddr",        C::Hex16,        2,  0, "0x0000",     "变量地址").address(),
    field("X",                C::Decimal,      3,  1, "0",          "X坐标").cut(NumWidth::S16),
    field("Y",                C::Decimal,      4,  2, "0",          "Y坐标").cut(NumWidth::S16),
    field("W",                C::Decimal,      5,  3, "0",          "宽度").cut(NumWidth::S16),
    field("H",                C::Decimal,      6,  4, "0",          "高度").cut(NumWidth::S16),
    field("wordLength",       C::Decimal,      7,  5, "32",         "数据长度(Word)").cut(NumWidth::U16),
    field("fontWidth",        C::Decimal,      8,  6, "24",         "字体宽度").cut(NumWidth::U16),
    field("fontHeight",       C::Decimal,      9,  7, "24",         "字体高度").cut(NumWidth::U16),
    field("fontID",           C::FontRef,     10,  8, "0",          "字库ID"),
    field("encoding",         C::WordNumber,  11,  9, "0",          "字库编码").words(&WordTables::encoding),
    field("fontColor",        C::Hex24,       12, 10, "0x000000",   "字体颜色"),
    field("backgroundColor",  C::Hex24,       13, 11, "0x0000FF",   "背景色"),
    field("trailingSpace",    C::Decimal,     14, 12, "64",         "字符串首尾间隔").cut(NumWidth::U16),
    field("interval",         C::Decimal,     15, 13, "50",         "间隔(10ms)").cut(NumWidth::U16),
    field("alignment",        C::Word,        16, 14, "Left",       "对齐方式").words(&WordTables::alignment)
                                                                   .editedBy(Editor::Menu, kAlignmentWords),
    field("scrollMode",       C::Switch,      17, 15, "Enable",     "滚动使能"),
    field("defaultText",      C::HexText,     18, 16, kObjectNameDefault, "初始字符串").editedBy(Editor::TextDialog),
    field("transparency",     C::Switch,      19, 17, "Disable",    "背景透明使能"),
    field("multi-language",   C::SwitchBit,   20, 20, "0",          "多国语言"),
    field("lockState",        C::Decimal,     -1, 21, "1").cut(NumWidth::S16),
};
// clang-format on

constexpr bool sameKey(const char *a, const char *b)
{
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

// The Statictext is the label with its mark set: the constant's number
// gets its row, and the text comes from the constant table, not from a
// variable, so it takes no write address.
template <std::size_t N>
constexpr std::array<FieldDef, N> staticForm(const FieldDef (&label)[N])
{
    std::array<FieldDef, N> fields{};
    for (std::size_t i = 0; i < N; ++i) {
        FieldDef f = label[i];
        if (sameKey(f.key, "static")) {
            f.defaultText = "1";
        } else if (sameKey(f.key, "Constant_Num")) {
            f.row = 19;
            f.fixed = false;
            f.editor = Editor::ConstantText;
        } else if (sameKey(f.key, "writeAddr")) {
            f.defaultText = "0xFFFF";
            f.writeAddress = false;
        } else if (sameKey(f.key, "defaultText")) {
            f.defaultText = "";
        }
        fields[i] = f;
    }
    return fields;
}

constexpr std::array<FieldDef, std::size(kLabelFields)> kStaticFields = staticForm(kLabelFields);

// What the font table says of a widget's font. A font id the table doesn't
// reach gives width and height 0 and encoding 5, and, when asked, the
// complaint.
struct FontCell {
    quint8 width = 0;
    quint8 height = 0;
    quint8 encoding = 5;
};

void complain(const RecordContext &ctx, const QString &message)
{
    if (ctx.errorText)
        ctx.errorText->append(message + QLatin1Char('\n'));
}

FontCell fontOf(const EditBuffer &b, const RecordContext &ctx, bool report)
{
    const qint64 id = b.number("fontID");
    const int count = ctx.fonts ? qMin(ctx.fonts->count, int(FontTable::kMaxFonts)) : 0;
    if (id < 0 || id >= count) {
        if (report)
            complain(ctx, b.name() + QStringLiteral(": fontlib id is more than max value"));
        return {};
    }
    return {ctx.fonts->width[id], ctx.fonts->height[id], ctx.fonts->encoding[id]};
}

// The initial text at writeAddr: UTF-16 units for the wide encodings, GBK
// (or BIG5) bytes for the others. At most 2 x wordLength of them, units
// or bytes alike: the wide encodings count their units against the room
// in bytes, as the panel does. Nothing is stored when the text would
// reach the limit.
void storeInitialText(const EditBuffer &b, const RecordContext &ctx, int encoding, const QString &overMessage)
{
    if (!ctx.variables)
        return;
    const QString text = b.text("defaultText");
    const int room = 2 * int(b.number("wordLength"));
    QByteArray bytes = TextEncoding::encode(text, encoding);
    if (TextEncoding::isWide(encoding))
        bytes.truncate(2 * qMin(text.size(), room));
    else
        bytes.truncate(qMin(bytes.size(), room));
    const quint16 writeAddr = quint16(b.number("writeAddr"));
    if (2 * int(writeAddr) + bytes.size() >= ctx.variables->limit()) {
        complain(ctx, b.name() + overMessage);
        return;
    }
    ctx.variables->storeValue(b.name(), writeAddr, bytes, nullptr);
}

// The parameter block: a constant count, then the record after byte 4.
void storeParameters(const EditBuffer &b, const RecordContext &ctx, const QByteArray &record, quint8 count)
{
    if (!ctx.variables)
        return;
    ctx.variables->storeParameterBlock(b.name(), WidgetKinds::parameterWord(b.kind()),
                                       quint16(b.number("parameterAddr")), count, record.mid(5, count),
                                       ctx.errorText);
}

void appendRect(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    appendU16(out, r.x);
    appendU16(out, r.y);
    appendU16(out, r.right());
    appendU16(out, r.bottom());
}

// 34 bytes. The Vice form carries the same bytes with `tail` in front; it
// is written for a page whose widgets already went through the plain
// writer, so it leaves the variable image and the complaints alone.
QByteArray labelRecord(const EditBuffer &b, const RecordContext &ctx, bool vice)
{
    const bool isStatic = b.kind() == WidgetKind::Statictext;
    const FontCell font = fontOf(b, ctx, !vice);
    QByteArray r;
    Records::appendDisplayHeader(r, WidgetKinds::info(WidgetKind::Label).type, ctx.viceFlag,
                                 quint16(b.number("parameterAddr")), 29, false);
    appendU16(r, quint16(b.number("writeAddr")));
    appendU16(r, quint16(b.number("wordLength")));
    appendRect(r, b, ctx);
    appendU8(r, font.width);
    appendU8(r, font.height);
    appendU8(r, quint8(b.number("fontID")));
    appendU8(r, font.encoding);
    appendU8(r, quint8(b.number("alignment")));
    Records::appendColour3(r, quint32(b.number("background_Color")), ctx.colour24);
    Records::appendColour3(r, quint32(b.number("fontColor")), ctx.colour24);
    appendU8(r, quint8((b.isOn("backgroundColor") ? 0x01 : 0) | (b.isOn("passwordMode") ? 0x02 : 0)));
    appendU16(r, b.tail());
    appendU8(r, isStatic ? 1 : 0);
    appendU16(r, isStatic ? quint16(b.number("Constant_Num")) : quint16(0));

    if (!vice && !isStatic) {
        storeParameters(b, ctx, r, 26);
        storeInitialText(b, ctx, font.encoding, QStringLiteral(": write address is more than Max value"));
    }
    return r;
}

int writeLabel(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const QByteArray r = labelRecord(b, ctx, false);
    out.append(r);
    return r.size();
}

int writeViceLabel(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const QByteArray r = Records::tailToFront(labelRecord(b, ctx, true), kLabelTailOffset);
    out.append(r);
    return r.size();
}

// 33 bytes.
int writeTextRoll(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const FontCell font = fontOf(b, ctx, true);
    // Only the three plain words place a scrolling text; the rest is left.
    const int alignment = WordTables::alignment.valueOf(b.text("alignment"));
    QByteArray r;
    Records::appendDisplayHeader(r, WidgetKinds::info(WidgetKind::TextRoll).type, ctx.viceFlag,
                                 quint16(b.number("parameterAddr")), 28, false);
    appendU16(r, quint16(b.number("writeAddr")));
    appendRect(r, b, ctx);
    appendU16(r, quint16(b.number("wordLength")));
    appendU8(r, quint8(b.number("fontID")));
    appendU8(r, font.width);
    appendU8(r, font.height);
    appendU8(r, font.encoding);
    appendU8(r, quint8(alignment <= 2 ? alignment : 0));
    appendU8(r, b.isOn("scrollMode") ? 1 : 0);
    Records::appendColour3(r, quint32(b.number("fontColor")), ctx.colour24);
    appendU8(r, quint8(b.number("interval") & 0xFF));
    Records::appendColour3(r, quint32(b.number("backgroundColor")), ctx.colour24);
    appendU16(r, quint16(b.number("trailingSpace")));
    appendU8(r, b.isOn("transparency") ? 0 : 1);

    storeParameters(b, ctx, r, 28);
    storeInitialText(b, ctx, font.encoding, QStringLiteral(":  more than Max value"));
    out.append(r);
    return r.size();
}

// --- host lists ------------------------------------------------------------------
// A label shows a text of wordLength words at writeAddr; its record after
// byte 4 is 24 bytes here, the scrolling text's 28. A label that takes its
// text from the language table is no variable of the host's. The static
// text reads a constant and has no rows at all.
constexpr ListColumn kLabelColumns[] = {addressColumn("writeAddr"), decimalColumn("wordLength"),
                                        addressColumn("parameterAddr"), fixedColumn("24"),
                                        decimalColumn("encoding")};
constexpr ListColumn kTextRollColumns[] = {addressColumn("writeAddr"), decimalColumn("wordLength"),
                                           addressColumn("parameterAddr"), fixedColumn("28"),
                                           decimalColumn("encoding")};
constexpr SerialRow kTextSerial[] = {{"writeAddr", "defaultText", ValueForm::Text}};

constexpr KindExports kLabelExports = {ExportList::Display, kLabelColumns, countOf(kLabelColumns), nullptr,
                                       "multi-language",    kTextSerial,   countOf(kTextSerial),
                                       "#define  _LABEL_PAGE", "writeAddr"};
constexpr KindExports kTextRollExports = {ExportList::Display, kTextRollColumns, countOf(kTextRollColumns),
                                          nullptr,             nullptr,          kTextSerial,
                                          countOf(kTextSerial), "#define  _TEXTROLL_PAGE", "writeAddr"};

} // namespace

const KindDef label = {WidgetKind::Label, kLabelFields,   countOf(kLabelFields), nullptr, 0,
                       writeLabel,        writeViceLabel, nullptr,               nullptr, nullptr,
                       &kLabelExports};

const KindDef staticText = {WidgetKind::Statictext, kStaticFields.data(), int(kStaticFields.size()),
                            nullptr,                0,                    writeLabel,
                            writeViceLabel,         nullptr};

const KindDef textRoll = {WidgetKind::TextRoll, kTextRollFields, countOf(kTextRollFields), nullptr, 0,
                          writeTextRoll,        nullptr,         nullptr,                  nullptr, nullptr,
                          &kTextRollExports};

} // namespace TextKinds

} // namespace vantile
