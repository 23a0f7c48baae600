#include "project/PageAttributes.h"
#include "project/ProjectSettings.h"

namespace vantile {

namespace {

// Reads one field from pos up to one of the stop characters; pos moves past
// the stop. Returns false when the line has ended.
bool take(const QString &line, int &pos, const QString &stops, QString *out)
{
    if (pos > line.size() || pos < 0)
        return false;
    int end = pos;
    while (end < line.size() && !stops.contains(line[end]))
        ++end;
    if (end >= line.size() && pos >= line.size())
        return false;
    *out = line.mid(pos, end - pos);
    pos = end + 1;
    return true;
}

quint16 hex16(const QString &text)
{
    return quint16(IniValue::hexadecimal(text.toLatin1()) & 0xFFFF);
}

qint32 digits(const QString &text)
{
    return qint32(IniValue::integer(text.toLatin1()) & 0x7FFFFFFF);
}

QString hexText(quint16 v)
{
    return QStringLiteral("0x") + QStringLiteral("%1").arg(v, 4, 16, QLatin1Char('0')).toUpper();
}

} // namespace

void PageAttributes::parse(const QString &line)
{
    if (!isPageLine(line))
        return;
    int pos = 5;
    const QString comma = QStringLiteral(",;");
    const QString semi = QStringLiteral(";");
    QString f;
    auto text = [&](QString &dst, const QString &stops) {
        if (!take(line, pos, stops, &f))
            return false;
        if (!f.isEmpty())
            dst = f;
        return true;
    };
    auto ret = [&](quint16 &dst) {
        if (!take(line, pos, comma, &f))
            return false;
        dst = hex16(f);
        return true;
    };
    auto bound = [&](qint32 &dst) {
        if (!take(line, pos, semi, &f))
            return false;
        dst = digits(f);
        return true;
    };
    text(leftPage, comma) && ret(leftReturn) && text(rightPage, comma) && ret(rightReturn)
        && text(topPage, comma) && ret(topReturn) && text(bottomPage, comma) && ret(bottomReturn)
        && text(pageImage, semi) && text(pageColor, semi) && text(name, semi) && text(slideEffect, semi)
        && bound(slideAreaTop) && bound(slideAreaBottom) && text(reportToHost, semi);
}

QString PageAttributes::toLine() const
{
    const QChar c(QLatin1Char(',')), s(QLatin1Char(';'));
    return QStringLiteral("Page:") + leftPage + c + hexText(leftReturn) + c + rightPage + c + hexText(rightReturn)
           + c + topPage + c + hexText(topReturn) + c + bottomPage + c + hexText(bottomReturn) + c + pageImage + s
           + pageColor + s + name + s + slideEffect + s + QString::number(slideAreaTop) + s
           + QString::number(slideAreaBottom) + s + reportToHost + s;
}

} // namespace vantile
