#include "widgets/LineGrammar.h"

#include <QVector>

namespace vantile {
namespace LineGrammar {

namespace {

const QString kHexMark = QStringLiteral("*Hex:");

int hexDigit(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    return -1;
}

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

// All ASCII digits of a text, at most `limit` of them (0: no limit).
QString digitsOf(const QString &text, int limit = 0)
{
    QString d;
    for (QChar c : text) {
        if (!isAsciiDigit(c))
            continue;
        d.append(c);
        if (limit > 0 && d.size() == limit)
            break;
    }
    return d;
}

} // namespace

Parts split(const QString &line)
{
    Parts p;
    const int colon = line.indexOf(QLatin1Char(':'));
    int end = line.indexOf(QLatin1Char(';'));
    if (colon < 0 || (end >= 0 && end < colon)) {
        p.objectName = end < 0 ? line : line.left(end);
        return p;
    }
    p.objectName = line.left(colon);
    if (end < 0)
        end = line.size();
    const QString body = line.mid(colon + 1, end - colon - 1);
    if (!body.isEmpty())
        p.fields = body.split(QLatin1Char(','));
    return p;
}

QString setField(const QString &line, int pos, const QString &text, const std::function<QString(int)> &fill)
{
    const int colon = line.indexOf(QLatin1Char(':'));
    const int semicolon = line.indexOf(QLatin1Char(';'));
    if (colon < 0 || pos < 0 || (semicolon >= 0 && semicolon < colon))
        return line;
    const int end = semicolon < 0 ? line.size() : semicolon;
    // the start of each field of the body; a body of nothing has no fields
    QVector<int> starts;
    if (end > colon + 1) {
        starts << colon + 1;
        for (int i = colon + 1; i < end; ++i)
            if (line[i] == QLatin1Char(','))
                starts << i + 1;
    }
    if (pos < starts.size()) {
        const int from = starts[pos];
        const int to = pos + 1 < starts.size() ? starts[pos + 1] - 1 : end;
        return line.left(from) + text + line.mid(to);
    }
    QString added;
    for (int i = starts.size(); i < pos; ++i)
        added += (i == 0 ? QString() : QStringLiteral(",")) + (fill ? fill(i) : QString());
    added += (pos == 0 ? QString() : QStringLiteral(",")) + text;
    return line.left(end) + added + line.mid(end);
}

QString join(const QString &objectName, const QStringList &fields)
{
    return objectName + QLatin1Char(':') + fields.join(QLatin1Char(',')) + QLatin1Char(';');
}

qint64 readDecimal(const QString &field)
{
    bool ok = false;
    const qint64 v = digitsOf(field).toLongLong(&ok);
    return ok ? v : 0;
}

quint32 readHex(const QString &field)
{
    int i = 0;
    while (i < field.size() && field[i] != QLatin1Char('x') && field[i] != QLatin1Char('X'))
        ++i;
    if (i >= field.size())
        return 0;
    quint32 v = 0;
    int count = 0;
    for (++i; i < field.size() && field[i] != QLatin1Char('/') && count < 8; ++i) {
        const int d = hexDigit(field[i]);
        if (d < 0)
            continue;
        v = (v << 4) | quint32(d);
        ++count;
    }
    return v;
}

quint32 readHexOrNone(const QString &field)
{
    if (!field.contains(QLatin1Char('x')) && !field.contains(QLatin1Char('X')))
        return 0xFFFF;
    return readHex(field);
}

QString hex16(quint32 value)
{
    return QStringLiteral("0x") + QStringLiteral("%1").arg(value & 0xFFFF, 4, 16, QLatin1Char('0')).toUpper();
}

QString hex24(quint32 value)
{
    return QStringLiteral("0x")
           + QStringLiteral("%1").arg(value & 0xFFFFFF, 6, 16, QLatin1Char('0')).toUpper();
}

bool isEnable(const QString &word)
{
    return word == QLatin1String("Enable");
}

QString switchWord(bool on)
{
    return on ? QStringLiteral("Enable") : QStringLiteral("Disable");
}

bool isHexText(const QString &field)
{
    return field.startsWith(kHexMark);
}

QString toHexText(const QString &text)
{
    return kHexMark + QString::fromLatin1(text.toUtf8().toHex().toUpper());
}

QString fromHexText(const QString &field)
{
    if (!isHexText(field))
        return field;
    QByteArray bytes;
    int high = -1;
    for (int i = kHexMark.size(); i < field.size(); ++i) {
        const int d = hexDigit(field[i]);
        if (d < 0)
            continue;
        if (high < 0) {
            high = d;
        } else {
            bytes.append(char((high << 4) | d));
            high = -1;
        }
    }
    return QString::fromUtf8(bytes);
}

QRgb readRgbColor(const QString &text)
{
    const int at = text.indexOf(QLatin1String("RGBColor"));
    if (at < 0)
        return qRgb(0, 0, 0);
    int from = text.indexOf(QLatin1Char('('), at);
    from = from < 0 ? at + 8 : from + 1;
    int to = text.indexOf(QLatin1Char(')'), from);
    if (to < 0)
        to = text.size();
    const QStringList parts = text.mid(from, to - from).split(QLatin1Char(','));
    int c[3] = {0, 0, 0};
    for (int i = 0; i < 3 && i < parts.size(); ++i)
        c[i] = int(qMin<qint64>(readDecimal(parts[i]), 255));
    return qRgb(c[0], c[1], c[2]);
}

QString rgbColorText(QRgb colour)
{
    return QStringLiteral("RGBColor(%1,%2,%3)").arg(qRed(colour)).arg(qGreen(colour)).arg(qBlue(colour));
}

quint32 indexOfName(const QString &objectName)
{
    return digitsOf(objectName, 8).toUInt();
}

int leadingNumber(const QString &name, int scanChars, int digits)
{
    QString d;
    for (int i = 0; i < name.size() && i < scanChars; ++i) {
        if (name[i] == QLatin1Char('_'))
            break;
        if (isAsciiDigit(name[i]))
            d.append(name[i]);
    }
    return d.size() == digits ? d.toInt() : -1;
}

int iconNumber(const QString &name)
{
    return leadingNumber(name, 5, 4);
}

int gifNumber(const QString &name)
{
    return leadingNumber(name, 5, 4);
}

int fontNumber(const QString &name)
{
    return leadingNumber(name, 3, 2);
}

int pageNumber(const QString &reference)
{
    const QString d = digitsOf(reference, 8);
    return d.isEmpty() ? -1 : d.toInt();
}

quint16 refField(qint64 number)
{
    return number < 0 ? quint16(0xFFFF) : quint16(number & 0xFFFF);
}

} // namespace LineGrammar
} // namespace vantile
