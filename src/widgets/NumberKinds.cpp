#include "widgets/NumberKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace NumberKinds {

namespace {

using RecordFields::keepIconRunOrdered;

using C = Codec;
using LineGrammar::iconNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

// The data types a number can show: no single bits.
const char *const kNumberTypeWords[] = {"char", "short",    "int",     "uchar",    "ushort",
                                        "uint", "longlong", "char_H8", "uchar_H8", nullptr};

// clang-format off
const FieldDef kNumberFields[] = {
    //    key                  codec          row line default        Chinese label
    field("name",              C::Text,         0, 18, kObjectNameDefault, "控件名称"),
    field("parameterAddr",     C::Hex16,        1, 17, "0xFFFF",       "参数地址"),
    field("writeAddr",         C::Hex16,        2,  0, "0x0000",       "变量地址").address(),
    field("byteLength",        C::Decimal,      3,  1, "2",            "数据长度(byte)").cut(NumWidth::U16),
    field("X",                 C::Decimal,      4,  2, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                 C::Decimal,      5,  3, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                 C::Decimal,      6,  4, "0",            "宽度").cut(NumWidth::S16),
    field("H",                 C::Decimal,      7,  5, "0",            "高度").cut(NumWidth::S16),
    field("fontWidth",         C::Decimal,      8,  6, "32",           "字体宽度").cut(NumWidth::U16),
    field("fontID",            C::FontRef,      9,  7, "0",            "字库ID").cut(NumWidth::U8),
    field("encoding",          C::WordNumber,  10,  8, "0",            "字库编码").cut(NumWidth::U8)
                                                                        .words(&WordTables::encoding),
    field("alignment",         C::WordNumber,  11,  9, "0",            "对齐方式").cut(NumWidth::U8)
                                                                        .words(&WordTables::alignment)
                                                                        .editedBy(Editor::Menu, kAlignmentWords),
    field("integerDigit",      C::Decimal,     12, 10, "4",            "数字整数位数").cut(NumWidth::U8),
    field("decimalDigit",      C::Decimal,     13, 11, "0",            "数字小数位数").cut(NumWidth::U8),
    field("dataType",          C::Word,        14, 12, "short",        "数据类型").words(&WordTables::dataType)
                                                                        .editedBy(Editor::Menu, kNumberTypeWords),
    field("unitSymbol",        C::Text,        15, 15, "",             "单位字符"),
    field("unitSymbol_length", C::Decimal,     16, 13, "0",            "单位字符长度").cut(NumWidth::U8),
    field("fontColor",         C::Hex24,       17, 14, "0x000000",     "字体颜色"),
    field("defaultNumber",     C::Text,        18, 16, "",             "初始数字"),
    field("leadingZero",       C::Switch,      19, 19, "Disable",      "前置补零"),
    field("tail",              C::Hex16,       -1, 20, "0xFFFF"),
    field("lockState",         C::Decimal,     -1, 21, "1").cut(NumWidth::S16),
};

const FieldDef kPngNumberFields[] = {
    //    key                  codec          row line default        Chinese label
    field("name",              C::Text,         0, 14, kObjectNameDefault, "控件名称"),
    field("parameterAddr",     C::Hex16,        1,  0, "0xFFFF",       "参数地址"),
    field("writeAddr",         C::Hex16,        2,  1, "0x0000",       "变量地址").address(),
    field("byteLength",        C::Decimal,      3,  2, "2",            "数据长度(byte)").cut(NumWidth::U16),
    field("X",                 C::Decimal,      4,  3, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                 C::Decimal,      5,  4, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                 C::Decimal,      6,  5, "0",            "宽度").cut(NumWidth::S16),
    field("H",                 C::Decimal,      7,  6, "0",            "高度").cut(NumWidth::S16),
    field("integerDigit",      C::Decimal,      8,  7, "4",            "数字整数位数").cut(NumWidth::U8),
    field("decimalDigit",      C::Decimal,      9,  8, "0",            "数字小数位数").cut(NumWidth::U8),
    field("dataType",          C::Word,        10,  9, "short",        "数据类型").words(&WordTables::dataType)
                                                                        .editedBy(Editor::Menu, kNumberTypeWords),
    field("alignment",         C::Word,        11, 10, "Left",         "对齐方式").words(&WordTables::alignment)
                                                                        .editedBy(Editor::Menu, kAlignmentWords),
    field("firstIcon",         C::IconRef,     12, 11, "",             "首张图片"),
    field("lastIcon",          C::IconRef,     13, 12, "",             "末张图片"),
    field("defaultNumber",     C::Text,        14, 13, "100",          "初始数字"),
    field("leadingZero",       C::Switch,      15, 15, "Disable",      "前置补零"),
    field("tail",              C::Hex16,       -1, 16, "0xFFFF"),
    field("lockState",         C::Decimal,     -1, 17, "1").cut(NumWidth::S16),
};
// clang-format on

// The record's fields after the parameter block's count: number U + 16
// bytes (all but `tail`), pngNumber 14.
constexpr int kPngBlockBytes = 14;
constexpr int kNumberBlockBase = 16;
// The length byte holds 7 bits: 18 + U stays below 128.
constexpr int kMaxUnitBytes = 127 - 18;

quint64 digitsOf(const QString &text)
{
    quint64 v = 0;
    for (QChar c : text) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            v = v * 10u + quint64(c.unicode() - '0');
    }
    return v;
}

quint8 alignmentByte(int alignment, bool leadingZero)
{
    return quint8((alignment & 0x7F) | (leadingZero ? 0x80 : 0));
}

int dataTypeOf(const EditBuffer &b)
{
    return WordTables::dataType.valueOf(b.text("dataType"));
}

// The parameter block and the initial value, both from the finished record.
void storeVariables(const EditBuffer &b, const RecordContext &ctx, const QByteArray &record, int blockBytes)
{
    if (!ctx.variables)
        return;
    const quint16 parameterAddr = quint16(b.number("parameterAddr"));
    ctx.variables->storeParameterBlock(b.name(), WidgetKinds::parameterWord(b.kind()), parameterAddr,
                                       quint8(blockBytes), record.mid(5, blockBytes), ctx.errorText);
    const qint64 value = defaultValue(b.text("defaultNumber"), int(b.number("decimalDigit")));
    storeValue(*ctx.variables, b.name(), quint16(b.number("writeAddr")), dataTypeOf(b), value, ctx.errorText);
}

// 23 + U bytes; `tail` at 21 + U.
QByteArray numberRecord(const EditBuffer &b, const RecordContext &ctx, int *tailOffset)
{
    const int fontId = int(b.number("fontID"));
    if ((!ctx.fonts || fontId >= ctx.fonts->count) && ctx.errorText)
        ctx.errorText->append(b.name() + QStringLiteral(": fontlib id is more than max value\n"));

    const int u = qMin(int(b.number("unitSymbol_length")), kMaxUnitBytes);
    QByteArray unit = b.text("unitSymbol").toLatin1().left(u);
    unit.append(QByteArray(u - unit.size(), '\0'));

    const int alignment = int(b.number("alignment"));
    const Point16 at = anchor(b.x(), b.y(), b.w(), alignment, ctx);
    QByteArray out;
    Records::appendDisplayHeader(out, WidgetKinds::info(WidgetKind::Number).type, ctx.viceFlag,
                                 quint16(b.number("parameterAddr")), quint8(18 + u), false);
    appendU16(out, quint16(b.number("writeAddr")));
    appendU16(out, at.x);
    appendU16(out, at.y);
    Records::appendColour3(out, quint32(b.number("fontColor")), ctx.colour24);
    appendU8(out, quint8(fontId));
    appendU8(out, quint8(b.number("fontWidth") & 0xFF));
    appendU8(out, alignmentByte(alignment, b.isOn("leadingZero")));
    appendU8(out, quint8(b.number("integerDigit")));
    appendU8(out, quint8(b.number("decimalDigit")));
    appendU8(out, quint8(dataTypeOf(b)));
    appendU8(out, quint8(u));
    out.append(unit);
    *tailOffset = out.size();
    appendU16(out, b.tail());
    return out;
}

// 21 bytes; `tail` at 19.
QByteArray pngNumberRecord(const EditBuffer &b, const RecordContext &ctx, int *tailOffset)
{
    const int alignment = WordTables::alignment.valueOf(b.text("alignment"));
    const Point16 at = anchor(b.x(), b.y(), b.w(), alignment, ctx);
    QByteArray out;
    Records::appendDisplayHeader(out, WidgetKinds::info(WidgetKind::PngNumber).type, ctx.viceFlag,
                                 quint16(b.number("parameterAddr")), 16, false);
    appendU16(out, quint16(b.number("writeAddr")));
    appendU8(out, quint8(dataTypeOf(b)));
    appendU16(out, at.x);
    appendU16(out, at.y);
    appendU8(out, quint8(b.number("integerDigit")));
    appendU8(out, quint8(b.number("decimalDigit")));
    appendU8(out, alignmentByte(alignment, b.isOn("leadingZero")));
    appendU16(out, refField(iconNumber(b.text("firstIcon"))));
    appendU16(out, refField(iconNumber(b.text("lastIcon"))));
    *tailOffset = out.size();
    appendU16(out, b.tail());
    return out;
}

// The Vice form has the same bytes with `tail` in front; both forms fill
// the variable image alike.
int emit(QByteArray &out, const EditBuffer &b, const RecordContext &ctx, bool vice)
{
    int tailOffset = 0;
    const bool png = b.kind() == WidgetKind::PngNumber;
    const QByteArray record = png ? pngNumberRecord(b, ctx, &tailOffset) : numberRecord(b, ctx, &tailOffset);
    storeVariables(b, ctx, record, png ? kPngBlockBytes : kNumberBlockBase + quint8(record.at(20)));
    out.append(vice ? Records::tailToFront(record, tailOffset) : record);
    return record.size();
}

int writeRecord(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emit(out, b, ctx, false);
}

int writeViceRecord(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    return emit(out, b, ctx, true);
}

} // namespace

qint64 defaultValue(const QString &text, int decimalDigit)
{
    quint64 scale = 1;
    for (int i = 0; i < decimalDigit; ++i)
        scale *= 10u;

    const int dot = text.indexOf(QLatin1Char('.'), 1);
    if (dot < 0) {
        const bool negative = text.trimmed().startsWith(QLatin1Char('-'));
        const quint64 v = digitsOf(text) * scale;
        return qint64(negative ? 0u - v : v);
    }
    QString whole = text.left(dot).trimmed();
    const bool negative = whole.startsWith(QLatin1Char('-'));
    if (negative)
        whole.remove(0, 1);
    QString fraction;
    for (QChar c : text.mid(dot + 1)) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            fraction.append(c);
    }
    fraction = fraction.left(decimalDigit).leftJustified(decimalDigit, QLatin1Char('0'));
    const quint64 v = digitsOf(whole) * scale + digitsOf(fraction);
    return qint64(negative ? 0u - v : v);
}

bool storeValue(VariableImage &image, const QString &widgetName, quint16 writeAddr, int dataType,
                qint64 value, QString *errorText)
{
    // The width code: the low three bits once sign and bit marks are left
    // out. A single bit is shown from the word that holds it.
    const int code = (dataType & 0x40) ? 1 : (dataType & 0x3F) % 8;
    int bytes = 2;
    switch (code) {
    case 0:
    case 4:
        bytes = 1;
        break;
    case 2:
        bytes = 4;
        break;
    case 3:
        bytes = 8;
        break;
    default:
        break;
    }
    const int at = 2 * int(writeAddr);
    // A byte type tests its word; wider ones their last byte.
    if (at + qMax(bytes, 2) - 1 >= image.limit()) {
        if (errorText)
            errorText->append(VariableImage::writeAddressMessage(widgetName));
        return false;
    }
    QByteArray data;
    for (int i = bytes - 1; i >= 0; --i)
        data.append(char((quint64(value) >> (8 * i)) & 0xFF));
    // uchar: the low byte of the word, the high byte as it was.
    if (code == 0)
        data.prepend(image.bytes().at(at));
    return image.storeValue(widgetName, writeAddr, data, errorText);
}

Point16 anchor(int x, int y, int w, int alignment, const RecordContext &ctx)
{
    int ax = x;
    switch (alignment % 3) {
    case 1:
        ax = x + w / 2;
        break;
    case 2:
        ax = x + w;
        break;
    default:
        break;
    }
    const QSize e = Records::pictureExtents(ctx.rotation, ctx.rectPicture());
    return Records::rotatePoint(ctx.rotation, ax, y, e.width(), e.height());
}

namespace {

// --- host lists ------------------------------------------------------------------
// A number's record after byte 4 is 16 bytes and its unit symbol; a picture
// number's 14. Both give their data type code and send their initial
// number in that type.
constexpr ListColumn kNumberColumns[] = {addressColumn("writeAddr"), decimalColumn("byteLength"),
                                         addressColumn("parameterAddr"), decimalColumn("unitSymbol_length", 16),
                                         typeCodeColumn("dataType")};
constexpr ListColumn kPngNumberColumns[] = {addressColumn("writeAddr"), decimalColumn("byteLength"),
                                            addressColumn("parameterAddr"), fixedColumn("14"),
                                            typeCodeColumn("dataType")};
constexpr SerialRow kNumberSerial[] = {{"writeAddr", "defaultNumber", ValueForm::TypedNumber, "dataType"}};

constexpr KindExports kNumberExports = {ExportList::Display, kNumberColumns, countOf(kNumberColumns), nullptr,
                                        nullptr,             kNumberSerial,  countOf(kNumberSerial),
                                        "#define  _NUMBER_PAGE", "writeAddr"};
constexpr KindExports kPngNumberExports = {ExportList::Display, kPngNumberColumns, countOf(kPngNumberColumns),
                                           nullptr,             nullptr,           kNumberSerial,
                                           countOf(kNumberSerial), "#define  _PNGNUMBER_PAGE", "writeAddr"};

} // namespace

const KindDef number = {WidgetKind::Number, kNumberFields,   countOf(kNumberFields), nullptr, 0,
                         writeRecord,        writeViceRecord, nullptr,                nullptr, nullptr,
                         &kNumberExports};

const KindDef pngNumber = {WidgetKind::PngNumber, kPngNumberFields, countOf(kPngNumberFields), nullptr, 0,
                            writeRecord,           writeViceRecord,  keepIconRunOrdered,         nullptr, nullptr,
                            &kPngNumberExports};

} // namespace NumberKinds

} // namespace vantile
