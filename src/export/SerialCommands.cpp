#include "export/SerialCommands.h"
#include "export/ExportPages.h"
#include "project/TextFiles.h"
#include "widgets/WidgetLine.h"

#include <QTextCodec>

#include <array>

namespace vantile {

namespace SerialCommands {

const char *const kHeader = "Page,WidgetName,Name    ,Header,Length,Cmd,Addr,Data,CRC\n";

namespace {

// The two split tables of CRC-16/MODBUS: for index i the low byte and the
// high byte of the CRC of the single byte i, started from 0.
struct CrcTables {
    std::array<quint8, 256> first{};  // low bytes
    std::array<quint8, 256> second{}; // high bytes
};

constexpr CrcTables makeCrcTables()
{
    CrcTables t;
    for (int i = 0; i < 256; ++i) {
        quint16 c = quint16(i);
        for (int bit = 0; bit < 8; ++bit)
            c = (c & 1) ? quint16((c >> 1) ^ 0xA001) : quint16(c >> 1);
        t.first[i] = quint8(c & 0xFF);
        t.second[i] = quint8(c >> 8);
    }
    return t;
}

constexpr CrcTables kCrc = makeCrcTables();

int hexDigit(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    return -1;
}

QString hexDigits(quint64 value, int width)
{
    return QStringLiteral("%1").arg(value, width, 16, QLatin1Char('0')).toUpper().right(width);
}

// One element of a numeric value in the width of its type; a value the
// type can't hold gives 0 (char and uchar: "0000").
QString element(const QString &text, int type)
{
    bool ok = false;
    switch (type) {
    case 0: {
        const qint16 v = text.toShort(&ok);
        return ok && v >= -128 && v <= 127 ? hexDigits(quint8(v), 4) : QStringLiteral("0000");
    }
    case 2:
        return hexDigits(quint32(text.toInt()), 8);
    case 3: {
        const int v = text.toInt(&ok);
        return ok && v >= 0 && v <= 255 ? hexDigits(quint64(v), 4) : QStringLiteral("0000");
    }
    case 4:
        return hexDigits(text.toUShort(), 4);
    case 5:
        return hexDigits(text.toUInt(), 8);
    case 6:
        return hexDigits(quint64(text.toLongLong()), 16);
    default:
        return hexDigits(quint16(text.toShort()), 4);
    }
}

QByteArray encodeText(const QString &text, int mode)
{
    if (mode == 2) {
        QByteArray units;
        for (QChar c : text) {
            units.append(char(c.unicode() >> 8));
            units.append(char(c.unicode() & 0xFF));
        }
        return units;
    }
    if (mode == 3)
        return text.toUtf8();
    QTextCodec *codec = mode == 0 ? QTextCodec::codecForName("GB2312") : nullptr;
    if (!codec)
        codec = QTextCodec::codecForName("GBK");
    return codec ? codec->fromUnicode(text) : text.toLatin1();
}

QString addressDigits(const EditBuffer &w, const char *key)
{
    return hexDigits(quint16(w.number(key)), 4);
}

// The value of a row as the host would type it: a number's text, or the
// number a word stands for.
QString valueText(const EditBuffer &w, const SerialRow &r)
{
    if (r.form == ValueForm::WordNumber)
        return QString::number(ExportPages::wordNumber(w, r.valueKey));
    const int i = w.definition()->indexOf(r.valueKey);
    if (r.form == ValueForm::Text || r.form == ValueForm::Utf8Text || i < 0)
        return w.text(r.valueKey);
    return WidgetLine::lineText(w.definition()->fields[i], w.value(i));
}

struct SystemRow {
    const char *addr;
    const char *name;
};

// The panel's system variables, in address order; 7009, 700C and 7011 to
// 703E have no row.
constexpr SystemRow kSystemRows[] = {
    {"7000", "Switch Page"},    {"7001", "Brightness CTRL"}, {"7002", "Year"},
    {"7003", "Month"},          {"7004", "Day"},             {"7005", "Hour"},
    {"7006", "Minute"},         {"7007", "Second"},          {"7008", "Refresh time"},
    {"700A", "Play music"},     {"700B", "Volume CTRL"},     {"700D", "Open pop_window"},
    {"700E", "Auto-dimming"},   {"700F", "Dimming level"},   {"7010", "Time to enter sleep"},
    {"703F", "Multi-language"},
};

QStringList systemValues(const ProjectSettings &s, const QDateTime &time)
{
    const QDate d = time.date();
    const QTime t = time.time();
    return {QStringLiteral("0"),
            s.blon,
            QString::number(d.year()).mid(2),
            QString::number(d.month()),
            QString::number(d.day()),
            QString::number(t.hour()),
            QString::number(t.minute()),
            QString::number(t.second()),
            QStringLiteral("0"),
            QStringLiteral("0"),
            s.volume,
            QStringLiteral("0"),
            s.autoBL ? QStringLiteral("1") : QStringLiteral("0"),
            s.blsp,
            s.kptm,
            QStringLiteral("0")};
}

} // namespace

quint16 Crc16Modbus(const QString &hexText)
{
    quint8 low = 0xFF, high = 0xFF;
    for (int i = 0; i + 1 < hexText.size(); i += 2) {
        const int h = hexDigit(hexText[i]);
        const int l = hexDigit(hexText[i + 1]);
        const quint8 byte = l < 0 ? 0 : quint8((h < 0 ? 0 : h << 4) | l);
        const quint8 index = low ^ byte;
        low = high ^ kCrc.first[index];
        high = kCrc.second[index];
    }
    return quint16(high << 8 | low);
}

QString lengthText(int count)
{
    const QString text = QString::number(count, 16);
    return text.size() == 1 ? QLatin1Char('0') + text.toUpper() : text;
}

int elementType(const QString &word, int previous)
{
    static const struct {
        const char *word;
        int type;
    } kTypes[] = {{"char", 0},  {"char_H8", 0},  {"short", 1}, {"int", 2},     {"uchar", 3},
                  {"uchar_H8", 3}, {"ushort", 4}, {"uint", 5},  {"longlong", 6}};
    for (const auto &t : kTypes)
        if (word == QLatin1String(t.word))
            return t.type;
    return previous;
}

int textMode(int encoding)
{
    switch (encoding) {
    case 2: return 3;
    case 4: return 0;
    case 6: return 2;
    default: return encoding;
    }
}

QString MakeSerialCommandRow(const QString &page, const QString &name, const QString &widgetName,
                             const QString &value, const QString &addr, int isNumeric, int typeOrMode)
{
    const QString cmd = QStringLiteral("10");
    QString data;
    if (isNumeric) {
        for (const QString &part : value.split(QLatin1Char(','), Qt::SkipEmptyParts))
            data += element(part, typeOrMode);
    } else {
        const QByteArray bytes = encodeText(value, typeOrMode);
        data = QString::fromLatin1(bytes.toHex().toUpper());
        data += bytes.size() % 2 == 0 ? QStringLiteral("0000") : QStringLiteral("00");
    }
    QString framed = cmd + addr + data;
    framed.remove(QLatin1Char(' '));
    const quint16 crc = Crc16Modbus(framed);
    const QString crcText = hexDigits(crc & 0xFF, 2) + hexDigits(crc >> 8, 2);
    const int count = (framed + crcText).size() / 2;
    return QStringList{page, widgetName, name, QStringLiteral("5AA5"), lengthText(count), cmd, addr,
                       data, crcText}
               .join(QLatin1Char(','))
           + QLatin1Char('\n');
}

void ExportSerialCommands(BuildContext &ctx)
{
    const QString path = ctx.path(QStringLiteral("SerialPortCommands.csv"));
    QString text = QString::fromLatin1(kHeader);
    if (ctx.pageLines.isEmpty()) {
        ctx.log(QStringLiteral("There aren't any variable to bin!"));
    } else {
        // the element type lives across rows: a word of no type keeps the last one
        int type = 1;
        const QDateTime time = ctx.buildTime.isValid() ? ctx.buildTime : QDateTime::currentDateTime();
        const QStringList values = systemValues(ctx.settings, time);
        const QString dash = QStringLiteral("-");
        const QString system = QStringLiteral("SystemFunction");
        for (int i = 0; i < int(std::size(kSystemRows)); ++i)
            text += MakeSerialCommandRow(dash, QString::fromLatin1(kSystemRows[i].name), system, values[i],
                                         QString::fromLatin1(kSystemRows[i].addr), 1, type);
        for (int row = 0; row < ctx.pageLines.size(); ++row) {
            const QString page = QStringLiteral("Page") + QString::number(row);
            for (const EditBuffer &w : ExportPages::widgetsOf(ctx, row)) {
                const KindExports *x = ExportPages::exportsOf(w);
                for (int r = 0; r < x->serialRowCount; ++r) {
                    const SerialRow &s = x->serialRows[r];
                    const QString addr = addressDigits(w, s.addressKey);
                    if (s.skipWithoutAddress && addr == QLatin1String("FFFF"))
                        continue;
                    const QString name = s.rowName ? QString::fromLatin1(s.rowName) : w.name();
                    const QString value = valueText(w, s);
                    if (s.form == ValueForm::Text || s.form == ValueForm::Utf8Text) {
                        const int mode = s.form == ValueForm::Utf8Text ? 3 : textMode(int(w.number("encoding")));
                        text += MakeSerialCommandRow(page, name, w.objectName(), value, addr, 0, mode);
                        continue;
                    }
                    const bool byField = s.form == ValueForm::TypedNumber;
                    type = elementType(byField ? w.text(s.type) : QString::fromLatin1(s.type), type);
                    text += MakeSerialCommandRow(page, name, w.objectName(), value, addr, 1, type);
                }
            }
        }
    }
    QString error;
    if (!TextFiles::writeAtomically(path, text.toUtf8(), &error)) {
        ctx.log(QStringLiteral("Fail to write ") + path + QStringLiteral(": ") + error);
        return;
    }
    if (!ctx.pageLines.isEmpty())
        ctx.log(QStringLiteral("The serial port command was successfully generated!"));
}

} // namespace SerialCommands

} // namespace vantile
