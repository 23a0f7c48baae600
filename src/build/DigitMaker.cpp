#include "build/DigitMaker.h"

#include "project/MediaFiles.h"
#include "project/TextFiles.h"

#include <QBuffer>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>

namespace vantile {
namespace DigitMaker {

namespace {

const char *const kSignWords[] = {"minus", "point", "colon"};
constexpr int kLastIconNumber = 9999;

Run failed(const QString &why)
{
    Run r;
    r.error = why;
    return r;
}

// Refuses a first number or a name that would not give Icon/ file names.
QString checkNaming(const Options &o, int count)
{
    if (o.first < 0 || o.first + count - 1 > kLastIconNumber)
        return QStringLiteral("the first number must be 0 to %1 for a run of %2 pictures, not %3")
            .arg(kLastIconNumber - count + 1)
            .arg(count)
            .arg(o.first);
    if (o.name.isEmpty() || !MediaFiles::isPlainName(fileName(o.first, o.name, 0)))
        return QStringLiteral("the name \"%1\" can't be part of a file name").arg(o.name);
    return QString();
}

QImage blankCell(const QSize &size, const Options &o)
{
    QImage cell(size, QImage::Format_ARGB32_Premultiplied);
    cell.fill(o.transparent ? QColor(Qt::transparent) : QColor(QRgb(0xFF000000u | o.background)));
    return cell;
}

// The icon number of a file name: four digits, then "_".
int numberOf(const QString &fileName)
{
    if (fileName.size() < 5 || fileName.at(4) != QLatin1Char('_'))
        return -1;
    bool ok = false;
    const int n = fileName.leftRef(4).toInt(&ok);
    return ok && fileName.at(0).isDigit() ? n : -1;
}

} // namespace

QString signs()
{
    return QStringLiteral("0123456789-.:");
}

QString fileName(int number, const QString &name, int index)
{
    const QString word = index < kDigits ? QString::number(index)
                                         : QLatin1String(kSignWords[qBound(0, index - kDigits, 2)]);
    return QStringLiteral("%1_%2%3.png").arg(number, 4, 10, QLatin1Char('0')).arg(name, word);
}

Run render(const Options &o)
{
    const QString run = signs();
    if (o.pixelSize < 4 || o.pixelSize > 255)
        return failed(QStringLiteral("size must be 4 to 255 pixels, not %1").arg(o.pixelSize));
    const QString naming = checkNaming(o, run.size());
    if (!naming.isEmpty())
        return failed(naming);
    bool installed = false;
    for (const QString &f : QFontDatabase().families())
        installed = installed || f.compare(o.family, Qt::CaseInsensitive) == 0;
    if (!installed)
        return failed(QStringLiteral("the font family \"%1\" is not installed").arg(o.family));

    QFont font(o.family);
    font.setPixelSize(o.pixelSize);
    font.setBold(o.bold);
    font.setStyleStrategy(QFont::PreferAntialias);
    const QFontMetrics fm(font);

    // One cell for all: the font's full height, and the widest sign (its
    // advance or its ink, whichever is wider).
    int width = 1;
    for (const QChar c : run)
        width = qMax(width, qMax(fm.horizontalAdvance(c), fm.boundingRect(c).width()));
    const QSize cell(width, qMax(1, fm.ascent() + fm.descent()));

    Run r;
    for (int i = 0; i < run.size(); ++i) {
        QImage image = blankCell(cell, o);
        {
            QPainter p(&image);
            p.setFont(font);
            p.setPen(QColor(QRgb(0xFF000000u | o.color)));
            // centred on its advance, so that digits of a tabular font
            // stand where they stand in text
            p.drawText((cell.width() - fm.horizontalAdvance(run[i])) / 2, fm.ascent(), QString(run[i]));
        }
        r.pictures.append({o.first + i, fileName(o.first + i, o.name, i),
                           image.convertToFormat(QImage::Format_ARGB32)});
    }
    return r;
}

Run cutStrip(const QImage &strip, const Options &o, int cells)
{
    if (cells < kDigits || cells > signs().size())
        return failed(QStringLiteral("a strip holds %1 to %2 cells, not %3").arg(kDigits).arg(signs().size()).arg(cells));
    const QString naming = checkNaming(o, cells);
    if (!naming.isEmpty())
        return failed(naming);
    if (strip.isNull())
        return failed(QStringLiteral("the strip is not a picture"));
    const bool across = strip.width() >= strip.height();
    const int length = across ? strip.width() : strip.height();
    if (length % cells != 0 || length < cells)
        return failed(QStringLiteral("a strip %1 pixels long can't be cut into %2 equal cells")
                          .arg(length)
                          .arg(cells));
    const int step = length / cells;
    const QSize cell = across ? QSize(step, strip.height()) : QSize(strip.width(), step);
    const QImage source = strip.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Run r;
    for (int i = 0; i < cells; ++i) {
        QImage image = blankCell(cell, o);
        {
            QPainter p(&image);
            p.drawImage(QPoint(0, 0), source, QRect(across ? QPoint(i * step, 0) : QPoint(0, i * step), cell));
        }
        r.pictures.append({o.first + i, fileName(o.first + i, o.name, i),
                           image.convertToFormat(QImage::Format_ARGB32)});
    }
    return r;
}

bool parseColor(const QString &text, QRgb *rgb)
{
    QString t = text.trimmed();
    if (t.startsWith(QLatin1Char('#')))
        t.remove(0, 1);
    else if (t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        t.remove(0, 2);
    if (t.size() != 6)
        return false;
    for (const QChar c : t)
        if (!QStringLiteral("0123456789abcdefABCDEF").contains(c))
            return false;
    *rgb = 0xFF000000u | t.toUInt(nullptr, 16);
    return true;
}

QByteArray pngBytes(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QImage sheet(const Run &run)
{
    const QSize cell = run.cellSize();
    if (cell.isEmpty())
        return QImage();
    QImage all(cell.width() * run.pictures.size(), cell.height(), QImage::Format_ARGB32_Premultiplied);
    all.fill(Qt::transparent);
    QPainter p(&all);
    for (int i = 0; i < run.pictures.size(); ++i)
        p.drawImage(i * cell.width(), 0, run.pictures[i].image);
    return all;
}

QStringList clashes(const Run &run, const QString &dir)
{
    if (run.pictures.isEmpty())
        return {};
    const int first = run.pictures.first().number, last = run.pictures.last().number;
    QStringList ours;
    for (const Picture &p : run.pictures)
        ours << p.fileName;
    QStringList found;
    for (const QString &f : QDir(dir).entryList(QDir::Files, QDir::Name)) {
        const int n = numberOf(f);
        if (n >= first && n <= last && !ours.contains(f))
            found << f;
    }
    return found;
}

bool write(const Run &run, const QString &dir, QString *error)
{
    if (!run.ok()) {
        if (error)
            *error = run.error.isEmpty() ? QStringLiteral("no pictures to write") : run.error;
        return false;
    }
    if (!QDir().mkpath(dir)) {
        if (error)
            *error = dir + QStringLiteral(": the folder can't be made");
        return false;
    }
    for (const Picture &p : run.pictures) {
        const QString path = QDir(dir).filePath(p.fileName);
        QString why;
        const QByteArray bytes = pngBytes(p.image);
        if (bytes.isEmpty() || !TextFiles::writeAtomically(path, bytes, &why)) {
            if (error)
                *error = path + QStringLiteral(": ") + (why.isEmpty() ? QStringLiteral("no PNG made") : why);
            return false;
        }
    }
    return true;
}

} // namespace DigitMaker
} // namespace vantile
