#include "project/PageList.h"

#include <QDir>
#include <QMap>

namespace vantile {

namespace PageList {

const char *const kBlackColor = "RGBColor(0,0,0)";

QString pageId(int row)
{
    return QStringLiteral("%1").arg(row, 4, 10, QLatin1Char('0'));
}

QString blankLine(int row)
{
    const QString c = QLatin1String(kBlackColor);
    return QStringLiteral("Page") + pageId(row) + QLatin1Char(':') + c + QLatin1Char(';') + c
           + QLatin1Char(';') + c + QLatin1Char(';');
}

QString pictureLine(int row, const QString &file)
{
    return QStringLiteral("Page") + pageId(row) + QLatin1Char(':') + file + QLatin1Char(';') + file
           + QLatin1Char(';') + file + QLatin1Char(';');
}

int pictureNumber(const QString &fileName)
{
    if (fileName.size() < 5)
        return -1;
    for (int i = 0; i < 4; ++i)
        if (!fileName[i].isDigit() || fileName[i].unicode() > '9')
            return -1;
    if (fileName[4].isDigit())
        return -1; // five digits or more: not a page picture
    return fileName.left(4).toInt();
}

QStringList linesFromPictureFolder(const QString &pictureDir)
{
    QDir dir(pictureDir);
    const QStringList files = dir.entryList({"*.jpeg", "*.jpg", "*.bmp", "*.png"}, QDir::Files,
                                            QDir::Name);
    QMap<int, QString> byNumber;
    for (const QString &f : files) {
        const int n = pictureNumber(f);
        if (n >= 0 && !byNumber.contains(n))
            byNumber.insert(n, f);
    }
    QStringList lines;
    if (byNumber.isEmpty())
        return lines;
    const int highest = byNumber.lastKey();
    for (int row = 0; row <= highest; ++row)
        lines << (byNumber.contains(row) ? pictureLine(row, byNumber[row]) : blankLine(row));
    return lines;
}

Rgb parseRgbColor(const QString &text)
{
    Rgb c;
    const int open = text.indexOf(QLatin1Char('('));
    const int close = text.indexOf(QLatin1Char(')'), open + 1);
    if (open < 0)
        return c;
    const QString inner = text.mid(open + 1, close < 0 ? -1 : close - open - 1);
    const QStringList parts = inner.split(QLatin1Char(','));
    int *dst[3] = {&c.r, &c.g, &c.b};
    for (int i = 0; i < 3 && i < parts.size(); ++i) {
        int v = 0;
        for (QChar ch : parts[i])
            if (ch >= QLatin1Char('0') && ch <= QLatin1Char('9'))
                v = qMin(v * 10 + (ch.unicode() - '0'), 100000);
        *dst[i] = qBound(0, v, 255);
    }
    return c;
}

QString rgbColorText(int r, int g, int b)
{
    return QStringLiteral("RGBColor(%1,%2,%3)").arg(r).arg(g).arg(b);
}

} // namespace PageList

PageInfo PageInfo::parse(const QString &line)
{
    PageInfo p;
    const int colon = line.indexOf(QLatin1Char(':'));
    const QString idText = colon < 0 ? line : line.left(colon);
    QString digits;
    for (QChar c : idText)
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digits += c;
    bool ok = false;
    const int id = digits.left(9).toInt(&ok);
    p.id = ok ? id : -1;

    const QString rest = colon < 0 ? QString() : line.mid(colon + 1);
    const QStringList f = rest.split(QLatin1Char(';'));
    p.field1 = f.value(0);
    const QString field2 = f.value(1);
    const QString field3 = f.value(2);

    const QString black = QLatin1String(PageList::kBlackColor);
    if (p.field1.contains(QLatin1String("RGBColor"))) {
        p.isColor = true;
        p.background = p.field1.mid(p.field1.indexOf(QLatin1String("RGB")));
    } else {
        p.isColor = false;
        p.image = p.field1;
        p.background = black;
    }
    p.name = field2.isEmpty() ? p.field1 : field2;
    if (field3.contains(QLatin1String("RGBColor")))
        p.color = field3.mid(field3.indexOf(QLatin1String("RGB")));
    else
        p.color = black;
    return p;
}

QString PageInfo::toLine(int row) const
{
    const QString head = QStringLiteral("Page") + PageList::pageId(row) + QLatin1Char(':');
    if (!image.isEmpty())
        return head + image + QLatin1Char(';') + name + QLatin1Char(';') + color + QLatin1Char(';');
    return head + color + QLatin1Char(';') + name + QLatin1Char(';') + color + QLatin1Char(';');
}

} // namespace vantile
