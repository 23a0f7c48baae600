#include "designer/TimeRenderers.h"

#include "designer/PictureRenderers.h"
#include "widgets/LineGrammar.h"
#include "widgets/WordTables.h"

#include <QDir>
#include <QHash>
#include <QPainter>
#include <QVector>

#include <cmath>

namespace vantile {

namespace TimeRenderers {

namespace {

// No panel is this large; a rectangle or run above it is a damaged line.
constexpr int kMaxSide = 4096;
constexpr double kPi = 3.14159265358979323846;

// Places in a digit run after the ten digits.
constexpr int kMinus = 10, kPoint = 11, kColon = 12;

bool usableSize(const QSize &s)
{
    return s.width() > 0 && s.height() > 0 && s.width() <= kMaxSide && s.height() <= kMaxSide;
}

QImage transparentImage(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

using PictureRenderers::addProblem;

QImage picture(const EditBuffer &w, const char *key, const QString &projectDir, QString *problem)
{
    return PictureRenderers::widgetPicture(w, key, projectDir, problem);
}

QString twoDigits(quint32 v)
{
    return QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0'));
}

// The signs of `text` in the pictures of the widget's digit run, side by
// side, top-aligned; cells without a picture are as wide as the first
// picture shown.
QImage drawRun(const EditBuffer &w, const QString &text, const QString &projectDir, QString *problem)
{
    const int first = LineGrammar::iconNumber(w.text("firstIcon"));
    if (first < 0 || text.isEmpty())
        return QImage();
    const int last = LineGrammar::iconNumber(w.text("lastIcon"));
    QHash<int, QString> files; // run place -> file of Icon/
    for (const QString &name : QDir(projectDir + QStringLiteral("Icon")).entryList(QDir::Files, QDir::Name)) {
        const int place = LineGrammar::iconNumber(name) - first;
        if (place >= 0 && place <= kColon && !files.contains(place))
            files.insert(place, name);
    }

    QHash<int, QImage> pictures;
    QVector<QImage> cells; // a null image: an empty cell
    int cellWidth = 0;
    int height = 0;
    for (const QChar sign : text) {
        const int place = runOffset(sign);
        QImage shown;
        if (place >= 0 && (last <= first || first + place <= last)) {
            if (!pictures.contains(place)) {
                QString why;
                pictures.insert(place, PictureRenderers::iconPicture(projectDir, files.value(place), &why));
                addProblem(problem, w, why);
            }
            shown = pictures.value(place);
        }
        if (!shown.isNull()) {
            if (cellWidth == 0)
                cellWidth = shown.width();
            height = qMax(height, shown.height());
        }
        cells.append(shown);
    }
    if (height == 0)
        return QImage();
    int width = 0;
    for (const QImage &cell : cells)
        width += cell.isNull() ? cellWidth : cell.width();
    if (!usableSize(QSize(width, height)))
        return QImage();

    QImage image = transparentImage(QSize(width, height));
    QPainter p(&image);
    int x = 0;
    for (const QImage &cell : cells) {
        if (!cell.isNull())
            p.drawImage(x, 0, cell);
        x += cell.isNull() ? cellWidth : cell.width();
    }
    return image;
}

// A plain dial for a clock without a background picture: a ring and a
// mark at each hour.
void drawDial(QPainter &p, const QPointF &centre, double radius)
{
    if (radius <= 2)
        return;
    p.setPen(QPen(QColor(128, 128, 128), 1));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(centre, radius, radius);
    for (int hour = 0; hour < 12; ++hour) {
        const double a = hour * 30.0 * kPi / 180.0;
        const QPointF dir(std::sin(a), -std::cos(a));
        p.drawLine(centre + dir * (radius * 0.85), centre + dir * radius);
    }
}

// A hand: a bar of its width from its short end behind the centre to its
// long end, in its colour. The panel reads one byte of each size.
void drawHand(QPainter &p, const EditBuffer &w, const QByteArray &hand, double angle, const QPointF &centre)
{
    const int length = int(w.number((hand + "Hand_L").constData()) & 0xFF);
    const int back = int(w.number((hand + "Hand_S").constData()) & 0xFF);
    const int width = int(w.number((hand + "Hand_W").constData()) & 0xFF);
    if (width == 0 || length + back == 0)
        return;
    const QColor colour(QRgb(0xFF000000u | (quint32(w.number((hand + "HandColor").constData())) & 0xFFFFFFu)));
    const double a = angle * kPi / 180.0;
    const QPointF dir(std::sin(a), -std::cos(a));
    p.setPen(QPen(colour, width, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(centre - dir * back, centre + dir * length);
}

} // namespace

QDateTime previewMoment()
{
    return QDateTime(QDate(2026, 5, 28), QTime(10, 10, 30));
}

QString rtcText(int dateFormat, const QDateTime &moment)
{
    QString word = WordTables::dateFormat.wordOf(dateFormat);
    if (word.isEmpty())
        word = WordTables::dateFormat.wordOf(0);
    if (word == QLatin1String("Week"))
        return QString::number(moment.date().dayOfWeek() % 7);
    const QDate d = moment.date();
    const QTime t = moment.time();
    QString out;
    for (int i = 0; i < word.size(); ++i) {
        const QStringRef pair = word.midRef(i, 2);
        if (pair == QLatin1String("YY")) {
            out += twoDigits(quint32(d.year() % 100));
        } else if (pair == QLatin1String("DD")) {
            out += twoDigits(quint32(d.day()));
        } else if (pair == QLatin1String("HH")) {
            out += twoDigits(quint32(t.hour()));
        } else if (pair == QLatin1String("SS")) {
            out += twoDigits(quint32(t.second()));
        } else if (pair == QLatin1String("MM")) {
            const bool minute = (i > 0 && word.at(i - 1) == QLatin1Char(':'))
                                || (i + 2 < word.size() && word.at(i + 2) == QLatin1Char(':'));
            out += twoDigits(quint32(minute ? t.minute() : d.month()));
        } else {
            out += word.at(i);
            continue;
        }
        ++i; // the pair's second letter
    }
    return out;
}

QString timerText(int timerFormat, quint32 seconds)
{
    const quint32 h = seconds / 3600, m = seconds / 60 % 60, s = seconds % 60;
    switch (timerFormat) {
    case 1:
        return twoDigits(h) + QLatin1Char(':') + twoDigits(m) + QLatin1Char(':') + twoDigits(s);
    case 2:
        return twoDigits(h) + QLatin1Char(':') + twoDigits(m);
    case 3:
        return twoDigits(seconds / 60) + QLatin1Char(':') + twoDigits(s);
    case 4:
        return twoDigits(seconds);
    default:
        return QString();
    }
}

int runOffset(QChar sign)
{
    if (sign >= QLatin1Char('0') && sign <= QLatin1Char('9'))
        return sign.unicode() - '0';
    if (sign == QLatin1Char('-') || sign == QLatin1Char('/'))
        return kMinus;
    if (sign == QLatin1Char('.'))
        return kPoint;
    if (sign == QLatin1Char(':'))
        return kColon;
    return -1;
}

HandAngles handAngles(const QTime &time)
{
    HandAngles a;
    a.second = time.second() * 6.0;
    a.minute = time.minute() * 6.0 + time.second() * 0.1;
    a.hour = (time.hour() % 12) * 30.0 + time.minute() * 0.5 + time.second() / 120.0;
    return a;
}

QImage renderRTC(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const int format = WordTables::dateFormat.valueOf(widget.text("displayFormat"));
    return drawRun(widget, rtcText(format, previewMoment()), projectDir, problem);
}

QImage renderTimer(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const int format = WordTables::timerFormat.valueOf(widget.text("displayFormat"));
    return drawRun(widget, timerText(format, quint32(widget.number("presetAddr_value"))), projectDir, problem);
}

QImage renderClock(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const QImage background = picture(widget, "background", projectDir, problem);
    const QImage centreIcon = picture(widget, "centerIcon", projectDir, problem);
    const QSize size = background.isNull() ? QSize(widget.w(), widget.h()) : background.size();
    if (!usableSize(size))
        return QImage();
    QImage image = transparentImage(size);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(size.width() / 2.0, size.height() / 2.0);
    if (background.isNull())
        drawDial(p, centre, qMin(size.width(), size.height()) / 2.0 - 1);
    else
        p.drawImage(0, 0, background);
    const HandAngles a = handAngles(previewMoment().time());
    drawHand(p, widget, "hour", a.hour, centre);
    drawHand(p, widget, "minute", a.minute, centre);
    drawHand(p, widget, "second", a.second, centre);
    if (!centreIcon.isNull())
        p.drawImage(centre - QPointF(centreIcon.width() / 2.0, centreIcon.height() / 2.0), centreIcon);
    return image;
}

} // namespace TimeRenderers

} // namespace vantile
