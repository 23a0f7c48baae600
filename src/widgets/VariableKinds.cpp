#include "widgets/VariableKinds.h"
#include "widgets/RecordFields.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetLine.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace VariableKinds {

namespace {

using RecordFields::wordValue;

using C = Codec;
using LineGrammar::iconNumber;
using LineGrammar::pageNumber;
using LineGrammar::refField;
using Records::appendU16;
using Records::appendU8;

constexpr const char *kTriggerZh = "    _键码触发值";
constexpr const char *kTriggerEn = "    _triggerValue";
constexpr const char *kAddrZh = "操作变量地址";
constexpr const char *kValueZh = "    _赋值";

// The data types of a variable the variable kinds step or count.
const char *const kVariableTypeWords[] = {"char",  "short", "uchar", "ushort", "bit0",  "bit1",  "bit2",
                                          "bit3",  "bit4",  "bit5",  "bit6",   "bit7",  "bit8",  "bit9",
                                          "bit10", "bit11", "bit12", "bit13",  "bit14", "bit15", nullptr};
const char *const kSignWords[] = {"+", "-", nullptr};
const char *const kCycleWords[] = {"Loop", "Stop", nullptr};
const char *const kPressWords[] = {"Once", "Repeat", nullptr};

// Pair n of the eight (address, value) pairs, at a row and a line place.
#define VANTILE_PAIR(n, row, line)                                                                 \
    field("writeAddr" #n, C::Hex16, row, line, "0xFFFF", kAddrZh).english("writeAddr").address(), \
        field("writeAddr" #n "_value", C::Hex16, (row) + 1, (line) + 1, "0xFFFF", kValueZh)       \
            .english("writeAddr_value")
#define VANTILE_EIGHT_PAIRS(row, line)                                                             \
    VANTILE_PAIR(1, row, line), VANTILE_PAIR(2, (row) + 2, (line) + 2),                            \
        VANTILE_PAIR(3, (row) + 4, (line) + 4), VANTILE_PAIR(4, (row) + 6, (line) + 6),            \
        VANTILE_PAIR(5, (row) + 8, (line) + 8), VANTILE_PAIR(6, (row) + 10, (line) + 10),          \
        VANTILE_PAIR(7, (row) + 12, (line) + 12), VANTILE_PAIR(8, (row) + 14, (line) + 14)

// clang-format off
const FieldDef kVarAdjFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0, 14, kObjectNameDefault, "控件名称"),
    field("X",                         C::Decimal,  1,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  2,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  3,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  4,  3, "0",            "高度").cut(NumWidth::S16),
    field("writeAddr",                 C::Hex16,    5,  4, "0x0000",       "变量地址").address(),
    field("adjStep",                   C::Decimal,  6,  5, "1",            "步进").cut(NumWidth::U16),
    field("minValue",                  C::Decimal,  7,  6, "0",            "最小值").cut(NumWidth::U16),
    field("maxValue",                  C::Decimal,  8,  7, "100",          "最大值").cut(NumWidth::U16),
    field("dataType",                  C::Word,     9,  8, "short",        "数据类型").words(&WordTables::dataType)
                                                                          .editedBy(Editor::Menu, kVariableTypeWords),
    field("gradation",                 C::Word,    10,  9, "+",            "变量变化方向").words(&WordTables::stepSign)
                                                                          .editedBy(Editor::Menu, kSignWords),
    field("cyclicalCounting",          C::Word,    11, 10, "Loop",         "是否循环").words(&WordTables::cycle)
                                                                          .editedBy(Editor::Menu, kCycleWords),
    field("longPress",                 C::Word,    12, 11, "Once",         "长按").words(&WordTables::press)
                                                                          .editedBy(Editor::Menu, kPressWords),
    field("unpressedIcon",             C::IconRef, 13, 12, "",             "未按图标"),
    field("pressedIcon",               C::IconRef, 14, 13, "",             "按下图标"),
    field("reportToHost",              C::Switch,  15, 15, "Disable",      "串口返回使能"),
    field("hostControl",               C::Switch,  16, 16, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,   17, 17, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("lockState",                 C::Decimal, -1, 18, "1").cut(NumWidth::S16),
};

const FieldDef kBatVarFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0, 23, kObjectNameDefault, "控件名称"),
    field("X",                         C::Decimal,  1,  0, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  2,  1, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  3,  2, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  4,  3, "0",            "高度").cut(NumWidth::S16),
    field("unpressedIcon",             C::IconRef,  5,  4, "",             "未按图标"),
    field("pressedIcon",               C::IconRef,  6,  5, "",             "按下图标"),
    field("pageGoto",                  C::PageRef,  7,  6, "",             "跳转页面"),
    VANTILE_EIGHT_PAIRS(8, 7),
    field("reportToHost",              C::Switch,  24, 24, "Disable",      "串口返回使能"),
    field("hostControl",               C::Switch,  25, 25, "Disable",      "键码触发使能"),
    field("hostControl_triggerValue",  C::Hex16,   26, 26, "0x0000",       kTriggerZh).english(kTriggerEn),
    field("tail",                      C::Hex16,   -1, 27, "0xFFFF"),
    field("lockState",                 C::Decimal, -1, 28, "1").cut(NumWidth::S16),
};

const FieldDef kAutoVarFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0, 34, kObjectNameDefault, "控件名称"),
    field("parameterAddr",             C::Hex16,    1,  0, "0xFFFF",       "参数地址"),
    field("X",                         C::Decimal,  2,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  3,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  4,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  5,  4, "0",            "高度").cut(NumWidth::S16),
    field("presetAddr",                C::Hex16,    6,  5, "0x0000",       "变量地址").address(),
    field("presetAddr_value",          C::Decimal,  7,  6, "0",            "    _初始化值").cut(NumWidth::U16),
    field("loopCode",                  C::Decimal,  8,  7, "0",            "循环控制值").cut(NumWidth::U16),
    field("onceCode",                  C::Decimal,  9,  8, "1",            "单次执行值").cut(NumWidth::U16),
    field("stopCode",                  C::Decimal, 10,  9, "2",            "停止控制值").cut(NumWidth::U16),
    field("stepValue",                 C::Decimal, 11, 10, "1",            "步进").cut(NumWidth::U16),
    field("interval(10ms)",            C::Decimal, 12, 11, "1",            "步进间隔(10ms)").cut(NumWidth::U16),
    field("targetAddr",                C::Hex16,   13, 12, "0xFFFF",       "目标变量地址").address(),
    field("dataType",                  C::Word,    14, 13, "short",        "    _数据类型").words(&WordTables::dataType)
                                                                          .editedBy(Editor::Menu, kVariableTypeWords),
    // 64-bit values that may be negative: held as their text
    field("minValue",                  C::Text,    15, 14, "",             "最小值"),
    field("maxValue",                  C::Text,    16, 15, "",             "最大值"),
    field("gradation",                 C::Word,    17, 16, "+",            "自动变化模式").words(&WordTables::stepSign)
                                                                          .editedBy(Editor::Menu, kSignWords),
    field("reportToHost",              C::Switch,  18, 17, "Disable",      "串口反馈使能"),
    VANTILE_EIGHT_PAIRS(19, 18),
    field("lockState",                 C::Decimal, -1, 35, "1").cut(NumWidth::S16),
};

#define VANTILE_ITEM(n) field("item" #n, C::Entry, 5 + (n), 5 + (n), "NULL")
const FieldDef kEncoderFields[] = {
    //    key                          codec      row line default        Chinese label
    field("name",                      C::Text,     0,  5, kObjectNameDefault, "控件名称"),
    field("writeAddr",                 C::Hex16,    1,  0, "0xFFFF",       "变量地址").address(),
    field("X",                         C::Decimal,  2,  1, "0",            "X坐标").cut(NumWidth::S16),
    field("Y",                         C::Decimal,  3,  2, "0",            "Y坐标").cut(NumWidth::S16),
    field("W",                         C::Decimal,  4,  3, "0",            "宽度").cut(NumWidth::S16),
    field("H",                         C::Decimal,  5,  4, "0",            "高度").cut(NumWidth::S16),
    VANTILE_ITEM(1),  VANTILE_ITEM(2),  VANTILE_ITEM(3),  VANTILE_ITEM(4),
    VANTILE_ITEM(5),  VANTILE_ITEM(6),  VANTILE_ITEM(7),  VANTILE_ITEM(8),
    VANTILE_ITEM(9),  VANTILE_ITEM(10), VANTILE_ITEM(11), VANTILE_ITEM(12),
    VANTILE_ITEM(13), VANTILE_ITEM(14), VANTILE_ITEM(15), VANTILE_ITEM(16),
    field("lockState",                 C::Decimal, -1, 22, "1").cut(NumWidth::S16),
};
#undef VANTILE_ITEM
#undef VANTILE_EIGHT_PAIRS
#undef VANTILE_PAIR
// clang-format on

constexpr int kEncoderItems = 16;
constexpr int kFirstItemField = 6; // line place of item 1
constexpr int kPairs = 8;

quint8 typeOf(WidgetKind kind)
{
    return WidgetKinds::info(kind).type;
}

// Offsets 3 to 10 of varAdj and batVar: the touch area, or with host
// control 0xFFFF and the trigger value in place of its corner.
void appendTouchArea(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    const bool host = b.isOn("hostControl");
    appendU16(out, host ? quint16(0xFFFF) : r.x);
    appendU16(out, host ? quint16(b.number("hostControl_triggerValue")) : r.y);
    appendU16(out, r.right());
    appendU16(out, r.bottom());
}

// The eight (address, value) pairs of batVar and autoVar: 32 bytes.
void appendPairs(QByteArray &out, const EditBuffer &b)
{
    for (int n = 1; n <= kPairs; ++n) {
        const QByteArray addr = "writeAddr" + QByteArray::number(n);
        appendU16(out, quint16(b.number(addr.constData())));
        appendU16(out, quint16(b.number((addr + "_value").constData())));
    }
}

void appendU64BigEndian(QByteArray &out, quint64 v)
{
    for (int i = 7; i >= 0; --i)
        out.append(char((v >> (8 * i)) & 0xFF));
}

// A 64-bit decimal text: a leading "-" makes it negative, the digits count.
qint64 readSigned64(const QString &text)
{
    const quint64 v = quint64(LineGrammar::readDecimal(text));
    return text.trimmed().startsWith(QLatin1Char('-')) ? qint64(0u - v) : qint64(v);
}

// 27 bytes.
int writeVarAdj(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::VarAdj), b.isOn("reportToHost"), ctx.viceFlag, 24);
    appendTouchArea(out, b, ctx);
    appendU16(out, quint16(b.number("writeAddr")));
    appendU8(out, quint8(wordValue(b, "dataType")));
    appendU8(out, quint8(wordValue(b, "gradation")));
    appendU8(out, quint8(wordValue(b, "cyclicalCounting")));
    appendU16(out, quint16(b.number("adjStep")));
    // the upper limit comes first in this record
    appendU16(out, quint16(b.number("maxValue")));
    appendU16(out, quint16(b.number("minValue")));
    appendU16(out, refField(iconNumber(b.text("unpressedIcon"))));
    appendU16(out, refField(iconNumber(b.text("pressedIcon"))));
    appendU8(out, quint8(wordValue(b, "longPress")));
    return out.size() - start;
}

// 51 bytes.
int writeBatVar(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const int start = out.size();
    Records::appendTouchHeader(out, typeOf(WidgetKind::BatVar), b.isOn("reportToHost"), ctx.viceFlag, 48);
    appendTouchArea(out, b, ctx);
    appendU16(out, refField(iconNumber(b.text("unpressedIcon"))));
    appendU16(out, refField(iconNumber(b.text("pressedIcon"))));
    appendU16(out, refField(pageNumber(b.text("pageGoto"))));
    appendPairs(out, b);
    appendU16(out, b.tail());
    return out.size() - start;
}

// 70 bytes; its 65 bytes after the count are also its parameter block.
constexpr int kAutoVarBlock = 65;

int writeAutoVar(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const quint16 parameterAddr = quint16(b.number("parameterAddr"));
    QByteArray r;
    Records::appendDisplayHeader(r, typeOf(WidgetKind::AutoVar), ctx.viceFlag, parameterAddr, kAutoVarBlock,
                                 false);
    appendU16(r, quint16(b.number("targetAddr")));
    appendU8(r, quint8(wordValue(b, "dataType")));
    appendU16(r, quint16(b.number("presetAddr")));
    appendU16(r, quint16(b.number("loopCode")));
    appendU16(r, quint16(b.number("onceCode")));
    appendU16(r, quint16(b.number("stopCode")));
    appendU64BigEndian(r, quint64(readSigned64(b.text("minValue"))));
    appendU64BigEndian(r, quint64(readSigned64(b.text("maxValue"))));
    appendU16(r, quint16(b.number("stepValue")));
    appendU16(r, quint16(b.number("interval(10ms)")));
    appendPairs(r, b);
    appendU8(r, quint8(wordValue(b, "gradation")));
    appendU8(r, b.isOn("reportToHost") ? 1 : 0);

    if (ctx.variables) {
        ctx.variables->storeParameterBlock(b.name(), WidgetKinds::parameterWord(WidgetKind::AutoVar), parameterAddr,
                                           kAutoVarBlock, r.mid(5, kAutoVarBlock), ctx.errorText);
        const quint16 preset = quint16(b.number("presetAddr"));
        if (preset != 0xFFFF)
            ctx.variables->storeWord(b.name(), preset, quint16(b.number("presetAddr_value")), ctx.errorText);
    }
    out.append(r);
    return r.size();
}

// --- encoder entries ----------------------------------------------------------------

QStringList bodyOf(const QString &entry)
{
    return entry.section(QLatin1Char(';'), 0, 0).split(QLatin1Char(','));
}

// The fields of an entry of a mode, the missing ones at their defaults.
QStringList fieldsOf(int mode, const QString &entry)
{
    QStringList f = bodyOf(defaultEntry(mode));
    const QStringList given = bodyOf(entry);
    for (int i = 0; i < f.size() && i < given.size(); ++i)
        f[i] = given[i].trimmed();
    f[0] = QString::number(mode);
    return f;
}

QString joinEntry(const QStringList &fields)
{
    return fields.join(QLatin1Char(',')) + QLatin1Char(';');
}

// The fields of the mode 4 entry that the dialog shows, in its order:
// each group's page, time, report and its first pair.
const int kDialogMode4[] = {0, 1, 2, 3, 4, 19, 20, 21, 22, 23, 38, 39, 40, 41, 42};

// An address or a value of an entry: empty is none.
quint16 entryHex(const QString &field)
{
    return field.trimmed().isEmpty() ? quint16(0xFFFF) : quint16(LineGrammar::readHex(field));
}

void appendEntryPairs(QByteArray &out, const QStringList &f, int first)
{
    for (int i = 0; i < 2 * kPairs; ++i)
        appendU16(out, entryHex(f.value(first + i)));
}

quint16 entryNumber(const QString &field)
{
    return quint16(LineGrammar::readDecimal(field));
}

quint16 entryPage(const QString &field)
{
    return refField(pageNumber(field));
}

// One block of the encoder record; nothing for an empty entry.
void appendEntryBlock(QByteArray &out, const QString &entry)
{
    const int mode = entryMode(entry);
    if (mode == 0)
        return;
    const QStringList f = fieldsOf(mode, entry);
    const auto on = [&](int i) { return LineGrammar::isEnable(f.value(i).trimmed()); };
    switch (mode) {
    case 1:
        appendU8(out, quint8(1 | (on(1) ? 0x80 : 0)));
        appendU8(out, 34);
        appendU16(out, entryPage(f[2]));
        appendEntryPairs(out, f, 3);
        break;
    case 2:
    case 3:
        appendU8(out, quint8(mode | (on(1) ? 0x80 : 0)));
        appendU8(out, mode == 2 ? 10 : 8);
        appendU16(out, entryHex(f[2]));
        appendU16(out, entryNumber(f[4])); // the upper limit first
        appendU16(out, entryNumber(f[3]));
        appendU16(out, entryNumber(f[5]));
        if (mode == 2) {
            appendU8(out, f[6] == QLatin1String("+") ? 1 : 0);
            appendU8(out, on(7) ? 1 : 0);
        }
        break;
    case 4:
        appendU8(out, quint8(4 | (on(2) ? 0x80 : 0) | (on(21) ? 0x40 : 0) | (on(40) ? 0x20 : 0)));
        appendU8(out, 104);
        appendU16(out, entryPage(f[1]));
        appendEntryPairs(out, f, 3);
        appendU8(out, quint8(entryNumber(f[20])));
        appendU16(out, entryPage(f[19]));
        appendEntryPairs(out, f, 22);
        appendU8(out, quint8(entryNumber(f[39])));
        appendU16(out, entryPage(f[38]));
        appendEntryPairs(out, f, 41);
        break;
    default:
        break;
    }
}

// 8 bytes and a block per action.
int writeEncoder(QByteArray &out, const EditBuffer &b, const RecordContext &)
{
    const int start = out.size();
    appendU8(out, typeOf(WidgetKind::Encoder));
    appendU8(out, 0);
    appendU16(out, 0xFFFF);
    appendU16(out, 24);
    appendU16(out, quint16(b.number("writeAddr")));
    for (int n = 1; n <= kEncoderItems; ++n)
        appendEntryBlock(out, b.text(("item" + QByteArray::number(n)).constData()));
    return out.size() - start;
}

} // namespace

QString defaultEntry(int mode)
{
    QStringList pairs;
    for (int i = 0; i < kPairs; ++i)
        pairs << QStringLiteral("0xFFFF,0xFFFF");
    const QString eight = pairs.join(QLatin1Char(','));
    switch (mode) {
    case 1: return QStringLiteral("1,Disable,,") + eight + QLatin1Char(';');
    case 2: return QStringLiteral("2,Disable,0xFFFF,0,100,1,+,Enable;");
    case 3: return QStringLiteral("3,Disable,0xFFFF,0,100,1;");
    case 4:
        // a double click within 10 x 50 ms, a long press after 20 x 50 ms
        return QStringLiteral("4,,Disable,") + eight + QStringLiteral(",,10,Disable,") + eight
               + QStringLiteral(",,20,Disable,") + eight + QLatin1Char(';');
    default: return QString();
    }
}

int entryMode(const QString &entry)
{
    bool ok = false;
    const int mode = bodyOf(entry).value(0).trimmed().toInt(&ok);
    return ok && mode >= 1 && mode <= 4 ? mode : 0;
}

QString toDialogEntry(const QString &lineEntry)
{
    const int mode = entryMode(lineEntry);
    if (mode == 0)
        return QStringLiteral("NULL");
    QStringList f = fieldsOf(mode, lineEntry);
    if (mode == 2 || mode == 3) {
        f.append(f.takeAt(1));
    } else if (mode == 4) {
        QStringList shown;
        for (int i : kDialogMode4)
            shown << f[i];
        f = shown;
    }
    return joinEntry(f);
}

QString fromDialogEntry(const QString &dialogEntry, const QString &previous)
{
    const int mode = entryMode(dialogEntry);
    if (mode == 0)
        return QStringLiteral("NULL");
    QStringList d = bodyOf(dialogEntry);
    if (mode == 2 || mode == 3) {
        // the dialog's last field is the report switch
        if (d.size() > 1)
            d.insert(1, d.takeLast());
        return joinEntry(fieldsOf(mode, joinEntry(d)));
    }
    if (mode == 4) {
        QStringList f = fieldsOf(4, entryMode(previous) == 4 ? previous : QString());
        for (int k = 0; k < d.size() && k < int(sizeof kDialogMode4 / sizeof kDialogMode4[0]); ++k)
            f[kDialogMode4[k]] = d[k].trimmed();
        return joinEntry(f);
    }
    return joinEntry(fieldsOf(mode, dialogEntry));
}

QStringList splitEncoderLine(const QString &line)
{
    QStringList fields;
    const int n = line.size();
    int i = line.indexOf(QLatin1Char(':'));
    if (i < 0)
        return fields;
    ++i;
    // writeAddr, X, Y, W, H, name
    for (int f = 0; f < kFirstItemField; ++f) {
        int j = i;
        while (j < n && line[j] != QLatin1Char(',') && line[j] != QLatin1Char(';'))
            ++j;
        fields << line.mid(i, j - i);
        if (j >= n || line[j] == QLatin1Char(';'))
            return fields; // a line of an earlier version ends here
        i = j + 1;
    }
    // the entries, then lockState: the last field, one number before the line's last ";"
    QString lockState;
    while (i < n && fields.size() < kFirstItemField + kEncoderItems) {
        if (line[i] == QLatin1Char(',')) {
            fields << QStringLiteral("NULL"); // an empty entry is no entry
            ++i;
            continue;
        }
        const int semi = line.indexOf(QLatin1Char(';'), i);
        const QString upToSemi = line.mid(i, (semi < 0 ? n : semi) - i);
        if (upToSemi.startsWith(QLatin1String("NULL"))) {
            fields << QStringLiteral("NULL");
            i += 4;
        } else if (semi < 0 || (!upToSemi.contains(QLatin1Char(',')) && line.indexOf(QLatin1Char(';'), semi + 1) < 0)) {
            lockState = upToSemi;
            i = n;
            break;
        } else {
            fields << upToSemi + QLatin1Char(';');
            i = semi + 1;
        }
        if (i < n && line[i] == QLatin1Char(','))
            ++i;
    }
    if (i < n) {
        const int semi = line.indexOf(QLatin1Char(';'), i);
        lockState = line.mid(i, (semi < 0 ? n : semi) - i);
    }
    while (fields.size() < kFirstItemField + kEncoderItems)
        fields << QStringLiteral("NULL");
    if (!lockState.isEmpty())
        fields << lockState;
    return fields;
}

QString upgradeOldLine(const QString &line)
{
    static const QLatin1String oldPrefix("comboButton_");
    const int colon = line.indexOf(QLatin1Char(':'));
    if (!line.startsWith(oldPrefix) || colon < 0)
        return line;
    const QString oldName = line.left(colon);
    const QString newName = QStringLiteral("batVar_") + oldName.mid(oldPrefix.size());
    EditBuffer b;
    WidgetLine::parse(newName + line.mid(colon), WidgetKind::BatVar, b);
    if (b.name() == oldName)
        b.setName(newName);
    return WidgetLine::write(b);
}

// --- host lists ------------------------------------------------------------------

namespace {

// The encoder's rows: one for each address its actions write. Modes 1 and
// 4 write eight address/value pairs (mode 4 eight for each of its single
// click, double click and long press); modes 2 and 3 step the variable at
// their own writeAddr.
QList<QStringList> encoderListRows(const EditBuffer &b)
{
    const QString blank = QStringLiteral(" ");
    const QString two = QStringLiteral("2");
    const int firstPair[] = {3, 22, 41}; // in a mode 4 entry; mode 1 has only the first
    QList<QStringList> rows;
    for (int n = 1; n <= kEncoderItems; ++n) {
        const QString entry = b.text(("item" + QByteArray::number(n)).constData());
        const int mode = entryMode(entry);
        if (mode == 0)
            continue;
        const QStringList f = fieldsOf(mode, entry);
        if (mode == 2 || mode == 3) {
            rows.append({addressText(entryHex(f[2])), two, blank});
            continue;
        }
        for (int g = 0; g < (mode == 4 ? 3 : 1); ++g) {
            for (int i = 0; i < kPairs; ++i) {
                const int at = firstPair[g] + 2 * i;
                rows.append({addressText(entryHex(f.value(at))), two, addressText(entryHex(f.value(at + 1))),
                             blank, blank});
            }
        }
    }
    return rows;
}

// The batch button names its eight pairs in one row.
#define VANTILE_PAIR_COLUMNS(n) addressColumn("writeAddr" #n), addressColumn("writeAddr" #n "_value")
constexpr ListColumn kBatVarColumns[] = {
    VANTILE_PAIR_COLUMNS(1), VANTILE_PAIR_COLUMNS(2), VANTILE_PAIR_COLUMNS(3), VANTILE_PAIR_COLUMNS(4),
    VANTILE_PAIR_COLUMNS(5), VANTILE_PAIR_COLUMNS(6), VANTILE_PAIR_COLUMNS(7), VANTILE_PAIR_COLUMNS(8),
    blankColumn()};
#undef VANTILE_PAIR_COLUMNS
constexpr ListColumn kVarAdjColumns[] = {addressColumn("writeAddr"), fixedColumn("2"), blankColumn(),
                                         blankColumn(), typeCodeColumn("dataType")};
// An auto variable counts at presetAddr, its parameter block 65 bytes long.
constexpr ListColumn kAutoVarColumns[] = {addressColumn("presetAddr"), fixedColumn("2"),
                                          addressColumn("parameterAddr"), fixedColumn("65")};
constexpr SerialRow kAutoVarSerial[] = {{"presetAddr", "presetAddr_value", ValueForm::Number, "short"}};

constexpr KindExports kVarAdjExports = {ExportList::Touch, kVarAdjColumns, countOf(kVarAdjColumns), nullptr,
                                        nullptr,           nullptr,        0,
                                        "#define  _VARADJ_PAGE", "writeAddr"};
constexpr KindExports kBatVarExports = {ExportList::Touch, kBatVarColumns, countOf(kBatVarColumns)};
constexpr KindExports kAutoVarExports = {ExportList::Display, kAutoVarColumns, countOf(kAutoVarColumns), nullptr,
                                         nullptr,             kAutoVarSerial,  countOf(kAutoVarSerial),
                                         "#define  _AUTOVAR_PAGE", "presetAddr"};
const KindExports kEncoderExports = {ExportList::Touch, nullptr, 0, encoderListRows, nullptr, nullptr, 0,
                                     "#define  _ENCODER_PAGE", "writeAddr"};

} // namespace

const KindDef varAdj = {WidgetKind::VarAdj, kVarAdjFields, countOf(kVarAdjFields), nullptr, 0,
                         writeVarAdj,        nullptr,       nullptr,                nullptr, nullptr,
                         &kVarAdjExports};

const KindDef batVar = {WidgetKind::BatVar, kBatVarFields, countOf(kBatVarFields), nullptr, 0,
                         writeBatVar,        nullptr,       nullptr,                nullptr, nullptr,
                         &kBatVarExports};

const KindDef autoVar = {WidgetKind::AutoVar, kAutoVarFields, countOf(kAutoVarFields), nullptr, 0,
                          writeAutoVar,        nullptr,        nullptr,                 nullptr, nullptr,
                          &kAutoVarExports};

const KindDef encoder = {WidgetKind::Encoder, kEncoderFields, countOf(kEncoderFields), nullptr, 0,
                          writeEncoder,        nullptr,        nullptr,                 splitEncoderLine, nullptr,
                          &kEncoderExports};

} // namespace VariableKinds

} // namespace vantile
