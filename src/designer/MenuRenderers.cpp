#include "designer/MenuRenderers.h"

#include "designer/PictureRenderers.h"
#include "project/MediaFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/MenuKinds.h"

#include <QDir>
#include <QImageReader>
#include <QPainter>

namespace vantile {

namespace MenuRenderers {

namespace {

// No panel is this large; a rectangle above it is a damaged line.
constexpr int kMaxSide = 4096;

// A frame outline is drawn for at most this many items.
constexpr int kMaxFrames = 64;

bool usableSize(const QSize &s)
{
    return s.width() > 0 && s.height() > 0 && s.width() <= kMaxSide && s.height() <= kMaxSide;
}

QImage transparentImage(const QSize &size)
{
    if (!usableSize(size))
        return QImage();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage picture(const EditBuffer &w, const char *key, const QString &projectDir, QString *problem)
{
    return PictureRenderers::widgetPicture(w, key, projectDir, problem);
}

// The file of Picture/ that belongs to a page; empty when there is none.
QString pagePicturePath(const QString &projectDir, int page)
{
    if (page < 0)
        return QString();
    const QStringList names = QDir(projectDir + QStringLiteral("Picture")).entryList(
        {QStringLiteral("*.png"), QStringLiteral("*.jpg"), QStringLiteral("*.jpeg"), QStringLiteral("*.bmp")},
        QDir::Files, QDir::Name);
    for (const QString &name : names)
        if (LineGrammar::iconNumber(name) == page)
            return MediaFiles::pathIn(projectDir, QStringLiteral("Picture/"), name);
    return QString();
}

int shownPage(const EditBuffer &menu)
{
    return LineGrammar::pageNumber(menu.text("pageGoto"));
}

} // namespace

QImage renderCurve(const EditBuffer &widget, const QString &, QString *)
{
    QImage image = transparentImage(QSize(widget.w(), widget.h()));
    if (image.isNull())
        return image;
    const QColor colour(QRgb(0xFF000000u | (quint32(widget.number("lineColor")) & 0xFFFFFFu)));
    QPainter p(&image);
    p.fillRect(image.rect(), QColor(0, 0, 0, 48));
    p.setPen(QPen(colour, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRect(0, 0, image.width() - 1, image.height() - 1));
    const int row = int(widget.number("y_ReferenceLine")) - widget.y();
    if (row >= 0 && row < image.height()) {
        QPen dashed(colour, 1);
        dashed.setDashPattern({4, 3});
        p.setPen(dashed);
        p.drawLine(0, row, image.width() - 1, row);
    }
    return image;
}

QImage renderSlMenu(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    const QImage background = picture(widget, "background", projectDir, problem);
    const QImage strip = picture(widget, "foreground", projectDir, problem);
    if (background.isNull() && strip.isNull())
        return QImage();
    const QSize own(widget.w(), widget.h());
    QImage image = transparentImage(usableSize(own) ? own : (background.isNull() ? strip.size() : background.size()));
    if (image.isNull())
        return image;
    QPainter p(&image);
    p.drawImage(0, 0, background);
    p.drawImage(0, 0, strip);
    return image;
}

QImage pagePicture(const QString &projectDir, int page)
{
    const QString path = pagePicturePath(projectDir, page);
    return path.isEmpty() ? QImage() : MediaFiles::readPicture(path, QSize());
}

QSize frameSize(const EditBuffer &menu, const QString &projectDir)
{
    QSize vice(0, 0);
    if (menu.number("frameWidth") <= 0 || menu.number("frameHeigth") <= 0) {
        const QString path = pagePicturePath(projectDir, shownPage(menu));
        const QSize declared = path.isEmpty() ? QSize() : QImageReader(path).size();
        if (declared.isValid())
            vice = declared;
    }
    return MenuKinds::frameSize(menu, vice);
}

QImage renderSlideMenuPro(const EditBuffer &widget, const QString &projectDir, QString *problem)
{
    QImage image = transparentImage(QSize(widget.w(), widget.h()));
    if (image.isNull())
        return image;
    const QImage background = picture(widget, "background", projectDir, problem);
    const QImage released = picture(widget, "sIcon", projectDir, problem);
    const QImage shown = pagePicture(projectDir, shownPage(widget));
    QPainter p(&image);
    p.drawImage(0, 0, background);
    p.drawImage(0, 0, shown);

    const QSize frame = frameSize(widget, projectDir);
    if (usableSize(frame)) {
        const bool sideways = MenuKinds::slidesHorizontally(widget.text("direction"));
        const QPoint step = sideways ? QPoint(frame.width() + int(widget.number("Interval_H")), 0)
                                     : QPoint(0, frame.height() + int(widget.number("Interval_V")));
        QPen dashed(QColor(255, 255, 255, 200), 1);
        dashed.setDashPattern({3, 3});
        p.setPen(dashed);
        p.setBrush(Qt::NoBrush);
        QPoint at(0, 0);
        for (int i = 0; i < kMaxFrames && image.rect().contains(at); ++i, at += step) {
            p.drawRect(QRect(at, frame - QSize(1, 1)));
            if (step.isNull())
                break;
        }
        if (!released.isNull())
            p.drawImage(QPoint((frame.width() - released.width()) / 2, (frame.height() - released.height()) / 2),
                        released);
    } else if (!released.isNull()) {
        p.drawImage(0, 0, released);
    }
    return image;
}

QPoint clampDrag(const EditBuffer &widget, const QString &projectDir, const QPoint &topLeft,
                 const QSize &labelSize, const QSize &canvas, float zoom)
{
    if (widget.kind() != WidgetKind::SlideMenuPro || widget.text("direction").isEmpty())
        return topLeft;
    const QSize frame = frameSize(widget, projectDir);
    QPoint at = topLeft;
    if (MenuKinds::slidesHorizontally(widget.text("direction"))) {
        const int reach = labelSize.width() + int((widget.number("Interval_H") + frame.width()) * zoom);
        if (at.x() + reach > canvas.width())
            at.setX(qMax(0, canvas.width() - reach));
    } else {
        const int reach = labelSize.height() + int((widget.number("Interval_V") + frame.height()) * zoom);
        if (at.y() + reach > canvas.height())
            at.setY(qMax(0, canvas.height() - reach));
    }
    return at;
}

} // namespace MenuRenderers

} // namespace vantile
