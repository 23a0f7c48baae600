#include "widgets/CurveKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace CurveKinds {

namespace {

using RecordFields::u16;

using C = Codec;
using Records::appendU16;
using Records::appendU8;

const char *const kDirectionWords[] = {"L_to_R", "R_to_L", "U_to_D", "D_to_U", nullptr};

constexpr const char *kReferenceValueLabel = "    _referenceValue";

// clang-format off
const FieldDef kCurveFields[] = {
    //    key                               codec       row line default     Chinese label
    field("name",                           C::Text,      0, 15, kObjectNameDefault, "控件名称"),
    field("parameterAddr",                  C::Hex16,     1,  0, "0xFFFF",    "参数地址"),
    field("X",                              C::Decimal,   2,  1, "0",         "X坐标").cut(NumWidth::S16),
    field("Y",                              C::Decimal,   3,  2, "0",         "Y坐标").cut(NumWidth::S16),
    field("W",                              C::Decimal,   4,  3, "0",         "宽度").cut(NumWidth::S16),
    field("H",                              C::Decimal,   5,  4, "0",         "高度").cut(NumWidth::S16),
    field("y_ReferenceLine",                C::Decimal,   6,  5, "0").cut(NumWidth::U16),
    field("y_ReferenceLine_referenceValue", C::Decimal,   7,  6, "0",         kReferenceValueLabel)
                                                                              .english(kReferenceValueLabel)
                                                                              .cut(NumWidth::U16),
    // worked out from H, maxData and minData whenever they change
    field("scale",                          C::Decimal,  -1,  7, "0").cut(NumWidth::U16),
    field("lineColor",                      C::Hex24,     8,  8, "0x00FF00",  "曲线颜色"),
    field("channel",                        C::Decimal,   9,  9, "0",         "曲线通道").cut(NumWidth::U16),
    field("x_Spacing(Pixels)",              C::Text,     10, 10, "2",         "描点间隔(Pixels)"),
    field("lineWidth",                      C::Decimal,  11, 11, "1",         "线宽").cut(NumWidth::U8),
    field("direction",                      C::Word,     12, 12, "L_to_R",    "描点方向").words(&WordTables::direction)
                                                                              .editedBy(Editor::Menu, kDirectionWords),
    field("maxData",                        C::Text,     13, 13, "256",       "最大值"),
    field("minData",                        C::Text,     14, 14, "0",         "最小值"),
    field("lockState",                      C::Decimal,  -1, 16, "1").cut(NumWidth::S16),
};
// clang-format on

// The parameter block: the 20 bytes after the count byte.
constexpr int kCurveBlock = 20;

quint16 scaleOf(const EditBuffer &b)
{
    return scale(b.h(), dataValue(b.text("maxData")), dataValue(b.text("minData")));
}

// 25 bytes. A line whose range is empty (only a damaged file has one)
// keeps the scale it holds.
int writeCurve(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    const bool emptyRange = dataValue(b.text("maxData")) == dataValue(b.text("minData"));
    const bool leftToRight = b.text("direction") == QLatin1String("L_to_R");
    QByteArray rec;
    Records::appendDisplayHeader(rec, WidgetKinds::info(WidgetKind::Curve).type, ctx.viceFlag,
                                 u16(b, "parameterAddr"), kCurveBlock, false);
    appendU16(rec, r.x);
    appendU16(rec, r.y);
    appendU16(rec, r.right());
    appendU16(rec, r.bottom());
    appendU16(rec, u16(b, "y_ReferenceLine"));
    appendU16(rec, u16(b, "y_ReferenceLine_referenceValue"));
    appendU16(rec, emptyRange ? u16(b, "scale") : scaleOf(b));
    Records::appendColour3(rec, quint32(b.number("lineColor")), ctx.colour24);
    appendU8(rec, quint8(quint8(b.number("channel")) | (leftToRight ? 0x80 : 0)));
    appendU8(rec, quint8(LineGrammar::readDecimal(b.text("x_Spacing(Pixels)"))));
    appendU8(rec, quint8(b.number("lineWidth")));
    if (ctx.variables)
        ctx.variables->storeRecordBlock(b.name(), WidgetKinds::parameterWord(WidgetKind::Curve),
                                        u16(b, "parameterAddr"), rec, kCurveBlock, ctx.errorText);
    out.append(rec);
    return rec.size();
}

// An edit that makes the range empty is taken back: the scale would divide
// by zero. Then the scale follows the height and the range.
void keepRangeAndScale(EditBuffer &b, const EditBuffer &before, const QSize &)
{
    if (dataValue(b.text("maxData")) == dataValue(b.text("minData"))) {
        b.setText("maxData", before.text("maxData"));
        b.setText("minData", before.text("minData"));
    }
    b.setNumber("scale", scaleOf(b));
}

// A new curve: the reference line on its bottom row, the scale for its height.
void fitNewCurve(EditBuffer &b)
{
    b.setNumber("y_ReferenceLine", qMax(0, b.y() + b.h() - 1));
    b.setNumber("scale", scaleOf(b));
}

} // namespace

qint64 dataValue(const QString &text)
{
    const QString t = text.trimmed();
    const qint64 digits = LineGrammar::readDecimal(t.section(QLatin1Char('.'), 0, 0));
    return t.startsWith(QLatin1Char('-')) ? -digits : digits;
}

quint16 scale(int height, qint64 maxData, qint64 minData)
{
    const qint64 range = maxData - minData;
    if (range == 0)
        return 0;
    const quint16 t = quint16((qint64(height) * 2560 / range) & 0xFFFF);
    return quint16(t / 10 + (t % 10 > 5 ? 1 : 0));
}

// A curve is fed through its channel, not a variable: only its parameter
// block (20 bytes after byte 4) is listed for the host.
constexpr ListColumn kCurveColumns[] = {blankColumn(), blankColumn(), addressColumn("parameterAddr"),
                                        fixedColumn("20")};
constexpr KindExports kCurveExports = {ExportList::Display, kCurveColumns, countOf(kCurveColumns)};

const KindDef curve = {WidgetKind::Curve, kCurveFields, countOf(kCurveFields), nullptr, 0,
                       writeCurve,        nullptr,      keepRangeAndScale,    nullptr,   fitNewCurve,
                       &kCurveExports};

} // namespace CurveKinds

} // namespace vantile
