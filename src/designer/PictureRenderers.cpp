#include "designer/PictureRenderers.h"

#include "build/ImageEncoder.h"
#include "designer/TextRenderers.h"
#include "project/MediaFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/GaugeKinds.h"
#include "widgets/WordTables.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QTransform>

#include <cmath>

namespace vantile {

namespace PictureRenderers {

namespace {

// No panel is this large; a rectangle or shape above it is a damaged line.
constexpr int kMaxSide = 4096;

constexpr double kPi = 3.14159265358979323846;

enum NeedleStyle { Drawing2D = 0, Smooth2D = 1, PngDrawing = 2, Animation = 3, LineStyle = 4, IconStyle = 5 };

bool usableSize(const QSize &s) { return s.width() > 0 && s.height() > 0 && s.width() <= kMaxSide && s.height() <= kMaxSide; }

QImage transparentImage(const QSize &size)
{
    if (!usableSize(size))
        return QImage();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QColor colourOf(qint64 rgb) { return QColor(QRgb(0xFF000000u | (quint32(rgb) & 0xFFFFFFu))); }

QImage picture(const EditBuffer &w, const char *key, const QString &projectDir, QString *problem)
{
    return widgetPicture(w, key, projectDir, problem);
}

// The widget's own size, or `fallback` when the line holds none.
QSize canvasSize(const EditBuffer &w, const QSize &fallback)
{
    const QSize own(w.w(), w.h());
    return usableSize(own) ? own : fallback;
}

QPointF pointAt(const QPointF &centre, double radius, double degrees)
{
    const double a = degrees * kPi / 180.0;
    return centre + QPointF(-std::sin(a) * radius, std::cos(a) * radius);
}

// The picture of a widget that shows just one picture: that picture.
QImage onePicture(const EditBuffer &w, const char *key, const QString &projectDir, QString *problem)
{
    const QImage image = picture(w, key, projectDir, problem);
    return image.isNull() ? QImage() : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The two-coloured kite of the drawn needle styles, long end up.
QImage kiteShape(const EditBuffer &w, bool smooth)
{
    const int nw = int(w.number("needle_W"));
    const int l1 = int(w.number("needle_L1"));
    const int l2 = int(w.number("needle_L2"));
    QImage shape = transparentImage(QSize(nw, l1 + l2));
    if (shape.isNull())
        return shape;
    const int half = nw / 2;
    const int bottom = l1 + l2 - 1;
    QPainter p(&shape);
    p.setRenderHint(QPainter::Antialiasing, smooth);
    const QColor c1 = colourOf(w.number("needle_C1"));
    const QColor c2 = colourOf(w.number("needle_C2"));
    p.setPen(QPen(c1, 1));
    p.setBrush(c1);
    p.drawPolygon(QPolygon({QPoint(half, 0), QPoint(0, l1), QPoint(half, bottom)}));
    p.setPen(QPen(c2, 1));
    p.setBrush(c2);
    p.drawPolygon(QPolygon({QPoint(half + 1, 0), QPoint(nw - 1, l1), QPoint(half + 1, bottom)}));
    return shape;
}

// One line of the needle's length in the first colour.
QImage lineShape(const EditBuffer &w)
{
    const int nw = qMax(1, int(w.number("needle_W")));
    const int length = int(w.number("needle_L1") + w.number("needle_L2"));
    QImage shape = transparentImage(QSize(nw, length));
    if (shape.isNull())
        return shape;
    QPainter p(&shape);
    p.setPen(QPen(colourOf(w.number("needle_C1")), 1));
    p.drawLine(nw / 2, 0, nw / 2, length - 1);
    return shape;
}

} // namespace

QImage iconPicture(const QString &projectDir, const QString &name, QString *problem)
{
    if (name.isEmpty())
        return QImage();
    QString error;
    const QString path = MediaFiles::pathIn(projectDir, QStringLiteral("Icon/"), name, &error);
    if (path.isEmpty()) {
        if (problem)
            *problem = error;
        return QImage();
    }
    if (!QFileInfo(path).exists())
        return QImage(); // not there yet: nothing to draw, nothing wrong
    QImage image = MediaFiles::readPicture(path, QSize(), &error);
    if (image.isNull()) {
        // the project's own reader knows the BMP forms the image library refuses
        QString second;
        image = ImageEncoder::load(path, &second);
        if (image.isNull() && problem)
            *problem = QStringLiteral("Icon/") + name + QStringLiteral(" can't be read: ") + error;
    }
    return image;
}

double shareOf(qint64 value, qint64 minimum, qint64 maximum)
{
    if (maximum <= minimum)
        return 0.0;
    return qBound(0.0, double(value - minimum) / double(maximum - minimum), 1.0);
}

QRect filledPart(const QSize &size, double share, int direction)
{
    const int across = int(size.width() * share);
    const int down = int(size.height() * share);
    switch (direction) {
    case 1:
        return QRect(size.width() - across, 0, across, size.height());
    case 2:
        return QRect(0, 0, size.width(), down);
    case 3:
        return QRect(0, size.height() - down, size.width(), down);
    default:
        return QRect(0, 0, across, size.height());
    }
}

int needleAngle(int defaultValue, int startAngle, int finalAngle)
{
    return defaultValue > startAngle && defaultValue < finalAngle ? defaultValue : startAngle;
}

QPolygonF sweepClip(const QPointF &centre, double reach, double fromAngle, double toAngle)
{
    QPolygonF clip;
    clip << centre << pointAt(centre, reach, fromAngle);
    const double step = toAngle >= fromAngle ? 45.0 : -45.0;
    double mark = step > 0 ? std::floor(fromAngle / 45.0) * 45.0 + 45.0 : std::ceil(fromAngle / 45.0) * 45.0 - 45.0;
    // two turns at most: beyond that the ring is full anyway
    for (int i = 0; i < 16 && (step > 0 ? mark < toAngle : mark > toAngle); ++i, mark += step)
        clip << pointAt(centre, reach, mark);
    clip << pointAt(centre, reach, toAngle);
    return clip;
}

QImage renderIcon(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    // the default display id shows its own picture when it names one of the run
    const QString shown = widget.text("defaultDisplayID");
    if (shown.indexOf(QLatin1Char('.'), 1) > 0) {
        const int n = LineGrammar::iconNumber(shown);
        if (n >= LineGrammar::iconNumber(widget.text("firstIcon")) && n <= LineGrammar::iconNumber(widget.text("lastIcon"))) {
            const QImage image = onePicture(widget, "defaultDisplayID", projectDir, problem);
            if (!image.isNull())
                return image;
        }
    }
    return onePicture(widget, "firstIcon", projectDir, problem);
}

QImage renderBitIcon(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    return onePicture(widget, "offStateIcon", projectDir, problem);
}

QImage renderVarButton(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    // autoVar and encoder carry no picture: they keep the family look
    if (!widget.definition() || !widget.definition()->find("unpressedIcon"))
        return QImage();
    return onePicture(widget, "unpressedIcon", projectDir, problem);
}

QImage renderGif(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const QString name = widget.text("gifName");
    if (name.isEmpty())
        return QImage();
    QString error;
    const QString path = MediaFiles::pathIn(projectDir, QStringLiteral("Gif/"), name, &error);
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists()) {
        addProblem(problem, widget, error);
        return QImage();
    }
    const QString file = QStringLiteral("Gif/") + name;
    QFile gif(path);
    if (!info.isFile() || info.size() > MediaFiles::kMaxPictureFileSize || !gif.open(QIODevice::ReadOnly)) {
        addProblem(problem, widget, file + QStringLiteral(" can't be read"));
        return QImage();
    }
    QByteArray bytes = gif.readAll();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QString refusal = MediaFiles::sizeRefusal(reader.size(), QSize());
    if (!refusal.isEmpty()) {
        addProblem(problem, widget, file + QStringLiteral(": ") + refusal);
        return QImage();
    }
    const QImage frame = reader.read(); // the first frame
    if (frame.isNull()) {
        addProblem(problem, widget, file + QStringLiteral(" can't be read: ") + reader.errorString());
        return QImage();
    }
    return frame.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage renderBar(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const QImage background = picture(widget, "background", projectDir, problem);
    const QImage bar = picture(widget, "barIcon", projectDir, problem);
    const bool slider = widget.kind() == WidgetKind::Slider;
    const QImage button = slider ? picture(widget, "slideButton", projectDir, problem) : QImage();
    if (background.isNull() && bar.isNull() && button.isNull())
        return QImage();
    QImage image = transparentImage(canvasSize(widget, background.size()));
    if (image.isNull())
        return image;
    QPainter p(&image);
    p.drawImage(0, 0, background);
    // the bar point and the touch area are page positions, as the record holds them
    const QPoint origin(widget.x(), widget.y());
    const QPoint at = QPoint(int(widget.number("bar_X")), int(widget.number("bar_Y"))) - origin;
    const QSize barSize = bar.isNull() ? image.size() : bar.size();
    const int direction = WordTables::direction.valueOf(widget.text("direction"));
    const QRect filled =
        filledPart(barSize, shareOf(widget.number("defaultValue"), widget.number("minValue"), widget.number("maxValue")),
                   direction)
            .translated(at);
    if (!bar.isNull() && !filled.isEmpty()) {
        p.save();
        p.setClipRect(filled);
        p.drawImage(at, bar);
        p.restore();
    }
    if (!slider)
        return image;
    if (!button.isNull()) {
        // centred on the moving end of the filled part
        QPoint end;
        switch (direction) {
        case 1:
            end = QPoint(filled.left(), filled.center().y());
            break;
        case 2:
            end = QPoint(filled.center().x(), filled.top() + filled.height());
            break;
        case 3:
            end = QPoint(filled.center().x(), filled.top());
            break;
        default:
            end = QPoint(filled.left() + filled.width(), filled.center().y());
            break;
        }
        p.drawImage(end - QPoint(button.width() / 2, button.height() / 2), button);
    }
    p.setPen(QPen(QColor(255, 0, 0), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRect(QPoint(int(widget.number("touch_X")), int(widget.number("touch_Y"))) - origin,
                     QSize(int(widget.number("touch_W")) - 1, int(widget.number("touch_H")) - 1)));
    return image;
}

namespace {

// A number's picture placed by its alignment: its left edge on the point,
// its middle for the centred words, its right edge for the right ones.
void drawNumberAt(QPainter &p, const QImage &number, const QPoint &at, int alignment)
{
    if (number.isNull())
        return;
    const int cls = TextRenderers::alignmentClass(alignment);
    const int left = cls == 1 ? at.x() - number.width() / 2 : cls == 2 ? at.x() - number.width() : at.x();
    p.drawImage(left, at.y(), number);
}

// The value of a ring in its digits (font or pictures, by digitDisplayMode),
// or null when the ring shows none.
QImage ringNumber(const EditBuffer &w, const QString &projectDir, QString *problem)
{
    const int source = WordTables::digitSource.valueOf(w.text("digitDisplayMode"));
    if (source != 1 && source != 2)
        return QImage();
    const QString text = TextRenderers::numberText(w.number("defaultValue"), int(w.number("integerDigit")),
                                                   int(w.number("decimalDigit")), false);
    if (source == 1)
        return TextRenderers::fontRun(text, int(w.number("fontID")),
                                      QColor(QRgb(0xFF000000u | (quint32(w.number("fontColor")) & 0xFFFFFFu))),
                                      projectDir, w.objectName(), problem);
    return TextRenderers::digitRun(text, LineGrammar::iconNumber(w.text("firstIcon")),
                                   LineGrammar::iconNumber(w.text("lastIcon")), projectDir, w.objectName(), problem);
}

} // namespace

QImage renderRing(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const QImage background = picture(widget, "background", projectDir, problem);
    const QImage foreground = picture(widget, "foreground", projectDir, problem);
    const bool touch = widget.kind() == WidgetKind::RTouch;
    const QImage button = touch ? picture(widget, "slideButton", projectDir, problem) : QImage();
    const QImage number = ringNumber(widget, projectDir, problem);
    if (background.isNull() && foreground.isNull() && button.isNull() && number.isNull())
        return QImage();
    QImage image = transparentImage(canvasSize(widget, background.isNull() ? foreground.size() : background.size()));
    if (image.isNull())
        return image;
    const QPointF centre(image.width() / 2.0, image.height() / 2.0);
    const double start = double(widget.number("startAngle"));
    const double share = shareOf(widget.number("defaultValue"), widget.number("minValue"), widget.number("maxValue"));
    const double angle = start + share * (double(widget.number("finalAngle")) - start);
    QPainter p(&image);
    p.drawImage(0, 0, background);
    if (!foreground.isNull() && share > 0) {
        const double reach = std::hypot(double(image.width()), double(image.height())) + 2.0;
        p.save();
        p.setClipRegion(QRegion(sweepClip(centre, reach, start, angle).toPolygon()));
        p.drawImage(0, 0, foreground);
        p.restore();
    }
    if (!button.isNull()) {
        const QPointF on = pointAt(centre, double(widget.number("slide_R")), angle);
        p.drawImage(on - QPointF(button.width() / 2.0, button.height() / 2.0), button);
    }
    // rtouch keeps its number point inside the widget, rProgress on the page
    const QPoint at = touch ? QPoint(int(widget.number("promptNum_x")), int(widget.number("promptNum_y")))
                            : QPoint(int(widget.number("promptNum_X")) - widget.x(),
                                     int(widget.number("promptNum_Y")) - widget.y());
    drawNumberAt(p, number, at, WordTables::alignment.valueOf(widget.text("alignment")));
    return image;
}

QImage renderNeedle(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const QImage background = picture(widget, "background", projectDir, problem);
    const QImage pivotIcon = picture(widget, "pivotIcon", projectDir, problem);
    const QImage needleIcon = picture(widget, "needleIcon", projectDir, problem);
    QImage image = transparentImage(background.isNull() ? QSize(widget.w(), widget.h()) : background.size());
    if (image.isNull())
        return image;
    QPainter p(&image);
    p.drawImage(0, 0, background);

    // its number in pictures, at a point of the page
    if (widget.isOn("showNumber")) {
        const int decimals = int(widget.number("showNumber_decimalDigit"));
        const QString text = TextRenderers::numberText(
            GaugeKinds::needleNumber(widget.text("showNumber_defaultNumber"), decimals),
            int(widget.number("showNumber_integerDigit")), decimals, widget.isOn("showNumber_leadingZero"));
        const QImage number = TextRenderers::digitRun(text, LineGrammar::iconNumber(widget.text("showNumber_firstIcon")),
                                                      LineGrammar::iconNumber(widget.text("showNumber_lastIcon")),
                                                      projectDir, widget.objectName(), problem);
        drawNumberAt(p, number,
                     QPoint(int(widget.number("showNumber_promptNum_X")) - widget.x(),
                            int(widget.number("showNumber_promptNum_Y")) - widget.y()),
                     WordTables::alignment.valueOf(widget.text("showNumber_alignment")));
    }

    const int style = WordTables::needleStyle.valueOf(widget.text("needleType"));
    QImage shape;
    if (style == Drawing2D || style == Smooth2D)
        shape = kiteShape(widget, style == Smooth2D);
    else if (style == LineStyle)
        shape = lineShape(widget);
    else
        shape = needleIcon;

    // the pivot lies needle_L1 below the tip: pad the shape so that it is the centre
    const int l1 = int(widget.number("needle_L1"));
    const QPoint pivot(int(widget.number("pivot_X")), int(widget.number("pivot_Y")));
    QImage padded = shape.isNull() ? QImage() : transparentImage(QSize(shape.width(), 2 * l1));
    if (!padded.isNull()) {
        {
            QPainter pad(&padded);
            pad.drawImage(0, 0, shape);
        }
        const int angle = needleAngle(int(widget.number("defaultValue")), int(widget.number("startAngle")),
                                      int(widget.number("finalAngle")));
        const QImage turned = padded.transformed(QTransform().rotate(angle - 180), Qt::SmoothTransformation);
        p.drawImage(pivot - QPoint(turned.width() / 2, turned.height() / 2), turned);
    }

    QPen cross(QColor(255, 0, 0), 1);
    cross.setDashPattern({3, 4});
    p.setPen(cross);
    p.drawLine(0, pivot.y(), image.width() - 1, pivot.y());
    p.drawLine(pivot.x(), 0, pivot.x(), image.height() - 1);

    if (pivotIcon.width() > 0)
        p.drawImage(pivot - QPoint(pivotIcon.width() / 2, pivotIcon.height() / 2), pivotIcon);
    return image;
}

void addProblem(QString *problem, const EditBuffer &w, const QString &why)
{
    if (!problem || why.isEmpty())
        return;
    if (!problem->isEmpty())
        *problem += QStringLiteral("; ");
    *problem += w.objectName() + QStringLiteral(": ") + why;
}

QImage widgetPicture(const EditBuffer &w, const char *key, const QString &projectDir, QString *problem)
{
    QString why;
    const QImage image = iconPicture(projectDir, w.text(key), &why);
    addProblem(problem, w, why);
    return image;
}

} // namespace PictureRenderers

} // namespace vantile
