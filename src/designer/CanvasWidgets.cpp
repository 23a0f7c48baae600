#include "designer/CanvasWidgets.h"

#include <QVariant>

#include "designer/MediaRenderers.h"
#include "designer/MenuRenderers.h"
#include "designer/PictureRenderers.h"
#include "designer/TextRenderers.h"
#include "designer/TimeRenderers.h"
#include "designer/WidgetLook.h"
#include "project/MediaFiles.h"
#include "widgets/WidgetLine.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPixmap>

namespace vantile {

namespace {

// The live label of a widget: a plain label that, while it shows no
// picture, carries its object name in a small tag.
class CanvasLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QLabel::paintEvent(event);
#if QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
        const bool picture = !pixmap(Qt::ReturnByValue).isNull();
#else
        const bool picture = pixmap() && !pixmap()->isNull();
#endif
        if (picture)
            return;
        QPainter p(this);
        WidgetLook::paintNameTag(p, contentsRect(), objectName());
    }
};

// Kinds whose picture is rendered from their fields rather than read from
// a file: the text and number kinds, and the kinds drawn from their
// pictures. `takesSize`: the widget takes the size of what it shows.
struct RendererEntry {
    WidgetKind kind;
    TextRenderers::Renderer render;
    bool takesSize;
};
constexpr RendererEntry kRenderers[] = {
    {WidgetKind::Label, TextRenderers::renderLabel, false},
    {WidgetKind::Statictext, TextRenderers::renderLabel, false},
    {WidgetKind::TextRoll, TextRenderers::renderTextRoll, false},
    {WidgetKind::Number, TextRenderers::renderNumber, false},
    {WidgetKind::PngNumber, TextRenderers::renderPngNumber, false},
    {WidgetKind::Icon, PictureRenderers::renderIcon, true},
    {WidgetKind::BitIcon, PictureRenderers::renderBitIcon, true},
    {WidgetKind::Gif, PictureRenderers::renderGif, true},
    {WidgetKind::VarAdj, PictureRenderers::renderVarButton, true},
    {WidgetKind::BatVar, PictureRenderers::renderVarButton, true},
    {WidgetKind::Slider, PictureRenderers::renderBar, false},
    {WidgetKind::Progress, PictureRenderers::renderBar, false},
    {WidgetKind::RProgress, PictureRenderers::renderRing, false},
    {WidgetKind::RTouch, PictureRenderers::renderRing, false},
    {WidgetKind::Needle, PictureRenderers::renderNeedle, false},
    {WidgetKind::SlMenu, MenuRenderers::renderSlMenu, false},
    {WidgetKind::SlideMenuPro, MenuRenderers::renderSlideMenuPro, false},
    {WidgetKind::Curve, MenuRenderers::renderCurve, false},
    {WidgetKind::RTC, TimeRenderers::renderRTC, true},
    {WidgetKind::Clock, TimeRenderers::renderClock, true},
    {WidgetKind::UITimer, TimeRenderers::renderTimer, true},
    {WidgetKind::QRCode, MediaRenderers::renderQrcode, false},
};

const RendererEntry *rendererOf(WidgetKind kind)
{
    for (const RendererEntry &e : kRenderers)
        if (e.kind == kind)
            return &e;
    return nullptr;
}

QImage zoomed(const QImage &image, float zoom)
{
    return image.scaled(int(image.width() * zoom), int(image.height() * zoom), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

} // namespace

namespace {
const char *const kOwnLook = "vantileOwnLook";
} // namespace

CanvasWidgets::CanvasWidgets(QLabel *canvas) : m_canvas(canvas) {}

QString CanvasWidgets::commonStyle(const QString &objectName)
{
    return WidgetLook::style(WidgetKinds::kindOfName(objectName));
}

void CanvasWidgets::setCommonLook(QLabel *label)
{
    if (!label)
        return;
    // the look the widget was given when it was built (its tint follows its size)
    const QVariant own = label->property(kOwnLook);
    label->setStyleSheet(own.isValid() ? own.toString() : commonStyle(label->objectName()));
}

CanvasWidgets::PictureField CanvasWidgets::pictureField(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::Button:
    case WidgetKind::PopBox:
        return {"unpressedIcon", "Icon/"};
    default:
        return {nullptr, nullptr};
    }
}

QRect CanvasWidgets::scaled(const QRect &panel, float zoom)
{
    const int left = int(panel.x() * zoom);
    const int top = int(panel.y() * zoom);
    const int right = left + int(panel.width() * zoom) - 1;
    const int bottom = top + int(panel.height() * zoom) - 1;
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

void CanvasWidgets::clear()
{
    for (WidgetKind k : WidgetKinds::all()) {
        WidgetSlots<QLabel> &table = m_slots.of(k);
        for (int i = 0; i < table.maximum(); ++i) {
            if (QLabel *l = table.at(quint32(i))) {
                l->close(); // deletes itself
                table.release(quint32(i));
            }
        }
    }
}

QLabel *CanvasWidgets::find(const QString &objectName) const
{
    const WidgetKind kind = WidgetKinds::kindOfName(objectName);
    if (kind == WidgetKind::None)
        return nullptr;
    EditBuffer probe;
    probe.setObjectName(objectName);
    QLabel *label = m_slots.of(kind).at(probe.index());
    // "label_Show" has the label prefix but is the canvas, not slot 0
    return label && label->objectName() == objectName ? label : nullptr;
}

int CanvasWidgets::lowestFree(WidgetKind kind) const
{
    if (kind == WidgetKind::None)
        return -1;
    return m_slots.of(WidgetKinds::info(kind).slotOwner).lowestFree();
}

void CanvasWidgets::setMarked(const QString &objectName, bool marked)
{
    const WidgetKind kind = WidgetKinds::kindOfName(objectName);
    if (kind == WidgetKind::None || !find(objectName))
        return;
    EditBuffer probe;
    probe.setObjectName(objectName);
    m_slots.of(kind).setSelected(probe.index(), marked);
}

bool CanvasWidgets::isMarked(const QString &objectName) const
{
    const WidgetKind kind = WidgetKinds::kindOfName(objectName);
    if (kind == WidgetKind::None || !find(objectName))
        return false;
    EditBuffer probe;
    probe.setObjectName(objectName);
    return m_slots.of(kind).isSelected(probe.index());
}

void CanvasWidgets::clearMarks()
{
    for (WidgetKind k : WidgetKinds::all()) {
        WidgetSlots<QLabel> &table = m_slots.of(k);
        for (int i = 0; i < table.maximum(); ++i) {
            if (table.isSelected(quint32(i))) {
                table.setSelected(quint32(i), false);
                setCommonLook(table.at(quint32(i)));
            }
        }
    }
}

int CanvasWidgets::count() const
{
    int n = 0;
    for (WidgetKind k : WidgetKinds::all())
        if (WidgetKinds::info(k).slotOwner == k)
            n += m_slots.of(k).count();
    return n;
}

QSize CanvasWidgets::paint(QLabel *label, const EditBuffer &widget, float zoom, const QString &projectDir,
                            QString *problem) const
{
    QRect r = scaled(widget.rect(), zoom);
    QSize pictureSize;
    const PictureField pf = pictureField(widget.kind());
    label->setPixmap(QPixmap());
    if (const RendererEntry *entry = rendererOf(widget.kind())) {
        // drawn at the widget's own size, which it keeps unless it takes the picture's
        const QImage image = entry->render(widget, projectDir, problem);
        if (!image.isNull() && zoom > 0) {
            const QImage s = zoomed(image, zoom);
            label->setPixmap(QPixmap::fromImage(s));
            if (entry->takesSize) {
                r.setSize(s.size());
                pictureSize = image.size();
            }
        }
    } else if (pf.key) {
        const QString file = widget.text(pf.key);
        if (!file.isEmpty()) {
            // the guarded reader: names stay in their folder, no giant pictures decoded
            const QString path = MediaFiles::pathIn(projectDir, QLatin1String(pf.folder), file);
            const QSize panel = zoom > 0 ? m_canvas->size() / zoom : QSize();
            const QImage img = path.isEmpty() ? QImage() : MediaFiles::readPicture(path, panel);
            if (img.width() > 0) {
                const QImage s = zoomed(img, zoom);
                label->setPixmap(QPixmap::fromImage(s));
                r.setSize(s.size());
                pictureSize = QSize(int(s.width() / zoom), int(s.height() / zoom));
            }
        }
    }
    label->setGeometry(r);
    return pictureSize;
}

QString CanvasWidgets::load(const QString &line, float zoom, const QString &projectDir)
{
    const WidgetKind kind = WidgetKinds::kindOfLine(line);
    if (kind == WidgetKind::None)
        return QString();
    EditBuffer widget;
    if (WidgetLine::parse(line, kind, widget) != ParseStatus::Ok)
        return QString(); // kept in the lines, shown once its kind is described
    const QString error = WidgetKinds::loadIndexError(kind, widget.index());
    const WidgetKind owner = WidgetKinds::info(kind).slotOwner;
    WidgetSlots<QLabel> &table = m_slots.of(owner);
    if (!error.isEmpty() || !table.inRange(widget.index()))
        return error;
    if (QLabel *old = table.at(widget.index()))
        old->close();
    auto *label = new CanvasLabel(m_canvas);
    label->setObjectName(widget.objectName());
    label->setFrameShape(QFrame::NoFrame);
    label->setFrameShadow(QFrame::Plain);
    label->setAutoFillBackground(true);
    label->setAttribute(Qt::WA_DeleteOnClose);
    label->setProperty(kOwnLook, WidgetLook::style(widget));
    label->setStyleSheet(WidgetLook::style(widget));
    QString problem;
    paint(label, widget, zoom, projectDir, &problem);
    label->show();
    table.put(widget.index(), label);
    return problem;
}

} // namespace vantile
