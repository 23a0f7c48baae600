#include "project/PageAttributes.h"
#include "widgets/LineGrammar.h"

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
    return quint16(LineGrammar::readHex(text) & 0xFFFF);
}

qint32 digits(const QString &text)
{
    return qint32(LineGrammar::readDecimal(text) & 0x7FFFFFFF);
}

QString hexText(quint16 v)
{
    return LineGrammar::hex16(v);
}

} // namespace

const QList<PageAttributes::Row> &PageAttributes::rows()
{
    static const QList<Row> list = {
        {"name", "页面名称", Editor::Text},
        {"X", "X坐标", Editor::ReadOnly},
        {"Y", "Y坐标", Editor::ReadOnly},
        {"W", "宽度", Editor::ReadOnly},
        {"H", "高度", Editor::ReadOnly},
        {"pageImage", "页面底图", Editor::PagePicture},
        {"pageColor", "页面底色", Editor::Color},
        {"leftPage", "向左滑动跳转页", Editor::PageRef},
        {"leftPage_returnValue", "    _返回值", Editor::Hex},
        {"rightPage", "向右滑动跳转页", Editor::PageRef},
        {"rightPage_returnValue", "    _返回值", Editor::Hex},
        {"topPage", "向上滑动跳转页", Editor::PageRef},
        {"topPage_returnValue", "    _返回值", Editor::Hex},
        {"bottomPage", "向下滑动跳转页", Editor::PageRef},
        {"bottomPage_returnValue", "    _返回值", Editor::Hex},
        {"slideEffect", "滑动区域使能", Editor::Switch},
        {"slideArea T-Y", "    _滑动区域顶端", Editor::Decimal},
        {"slideArea B-Y", "    _滑动区域底端", Editor::Decimal},
        {"reportToHost", "串口返回使能", Editor::Switch},
    };
    return list;
}

QStringList PageAttributes::values() const
{
    return {name,
            QString::number(x),
            QString::number(y),
            QString::number(w),
            QString::number(h),
            pageImage,
            pageColor,
            leftPage,
            hexText(leftReturn),
            rightPage,
            hexText(rightReturn),
            topPage,
            hexText(topReturn),
            bottomPage,
            hexText(bottomReturn),
            slideEffect,
            QString::number(slideAreaTop),
            QString::number(slideAreaBottom),
            reportToHost};
}

void PageAttributes::applyValues(const QStringList &v)
{
    if (v.size() < rows().size())
        return;
    name = v[0];
    pageImage = v[5];
    pageColor = v[6];
    leftPage = v[7];
    leftReturn = hex16(v[8]);
    rightPage = v[9];
    rightReturn = hex16(v[10]);
    topPage = v[11];
    topReturn = hex16(v[12]);
    bottomPage = v[13];
    bottomReturn = hex16(v[14]);
    slideEffect = v[15] == QLatin1String("Enable") ? v[15] : QStringLiteral("Disable");
    slideAreaTop = digits(v[16]);
    slideAreaBottom = digits(v[17]);
    reportToHost = v[18] == QLatin1String("Enable") ? v[18] : QStringLiteral("Disable");
}

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
