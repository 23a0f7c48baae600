// Align and distribute: choose a reference widget, give the command, then
// drag a band over the widgets that are to follow it.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "designer/CanvasWidgets.h"
#include "widgets/WidgetLine.h"

#include <QLabel>

namespace vantile {

namespace {
enum BandTool { LeftAlign = 1, RightAlign, TopAlign, BottomAlign, WidthAlign, HeightAlign, ShapeAlign,
                Horizontal, Vertical };
}

void MainWindow::startBand(int tool)
{
    if (!projectOpen())
        return;
    if (tool <= ShapeAlign) {
        const bool widget = !m_selectedName.startsWith(QLatin1String("label_Show"))
                            && WidgetKinds::kindOfName(m_selectedName) != WidgetKind::None;
        if (!widget) {
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Please choose one reference widget first!"));
            return;
        }
        m_referenceRect = QRect();
        const QString key = m_selectedName + QLatin1Char(':');
        for (const QString &line : m_currentPageLines) {
            EditBuffer w;
            if (line.startsWith(key) && WidgetLine::parse(line, w) == ParseStatus::Ok) {
                m_referenceRect = w.rect();
                break;
            }
        }
        if (m_referenceRect.isNull())
            if (QLabel *label = m_canvasWidgets->find(m_selectedName))
                m_referenceRect = QRect(int(label->x() / m_zoomFactor), int(label->y() / m_zoomFactor),
                                        int(label->width() / m_zoomFactor), int(label->height() / m_zoomFactor));
    }
    m_bandMode = true;
    m_bandActive = false;
    m_bandTool = tool;
    label_Show->setCursor(Qt::PointingHandCursor);
    m_hoverState = 4;
}

void MainWindow::on_actionLeft_Align_triggered() { startBand(LeftAlign); }
void MainWindow::on_actionRight_Align_triggered() { startBand(RightAlign); }
void MainWindow::on_actionTop_Align_triggered() { startBand(TopAlign); }
void MainWindow::on_actionBottom_Align_triggered() { startBand(BottomAlign); }
void MainWindow::on_actionWidth_Align_triggered() { startBand(WidthAlign); }
void MainWindow::on_actionHeight_Align_triggered() { startBand(HeightAlign); }
void MainWindow::on_actionShape_Align_triggered() { startBand(ShapeAlign); }
void MainWindow::on_actionLevel_layout_triggered() { startBand(Horizontal); }
void MainWindow::on_actionVertical_layout_triggered() { startBand(Vertical); }

QRect MainWindow::bandInPanel(const QRect &band) const
{
    return QRect(QPoint(int(band.left() / m_zoomFactor), int(band.top() / m_zoomFactor)),
                 QPoint(int((band.left() + band.width()) / m_zoomFactor),
                        int((band.top() + band.height()) / m_zoomFactor)));
}

void MainWindow::placeWidget(EditBuffer &w)
{
    WidgetLine::storeLine(m_currentPageLines, w);
    if (QLabel *label = m_canvasWidgets->find(w.objectName()))
        m_canvasWidgets->paint(label, w, m_zoomFactor, m_projectDir);
    if (w.objectName() == m_selectedName) {
        m_editBuffer = w;
        fillWidgetRows();
    }
}

void MainWindow::applyBand(const QRect &band)
{
    const QRect p = bandInPanel(band);
    if (m_bandTool == Horizontal || m_bandTool == Vertical) {
        distribute(p, m_bandTool == Horizontal);
        return;
    }
    QRect ref = m_referenceRect;
    const QSize page = pagePictureSize();
    if (ref.x() < 0 || ref.x() > page.width())
        ref.moveLeft(0);
    if (ref.y() < 0 || ref.y() > page.height())
        ref.moveTop(0);
    for (const QString &line : QStringList(m_currentPageLines)) {
        EditBuffer w;
        if (WidgetLine::parse(line, w) != ParseStatus::Ok || w.isLocked())
            continue;
        // the top-left corner strictly inside the band; the size plays no part
        if (!(p.left() < w.x() && w.x() < p.right() && p.top() < w.y() && w.y() < p.bottom()))
            continue;
        int x = w.x(), y = w.y(), width = w.w(), height = w.h();
        switch (m_bandTool) {
        case LeftAlign: x = ref.x(); break;
        case RightAlign:
            x = ref.x() + ref.width() - width;
            if (x < 0 && ref.width() <= width)
                x = 0;
            break;
        case TopAlign: y = ref.y(); break;
        case BottomAlign:
            y = ref.y() + ref.height() - height;
            if (y < 0 && ref.height() <= height)
                y = 0;
            break;
        case WidthAlign: width = ref.width(); break;
        case HeightAlign: height = ref.height(); break;
        case ShapeAlign:
            width = ref.width();
            height = ref.height();
            break;
        default: break;
        }
        w.setRect(QRect(x, y, width, height));
        placeWidget(w);
    }
}

void MainWindow::distribute(const QRect &p, bool horizontal)
{
    QList<EditBuffer> inside;
    for (const QString &line : m_currentPageLines) {
        EditBuffer w;
        if (WidgetLine::parse(line, w) != ParseStatus::Ok)
            continue;
        if (p.left() < w.x() && w.x() < p.right() && p.top() < w.y() && w.y() < p.bottom())
            inside << w;
    }
    if (inside.size() < 3)
        return;
    auto pos = [horizontal](const EditBuffer &w) { return horizontal ? int(w.x()) : int(w.y()); };
    std::stable_sort(inside.begin(), inside.end(),
                     [&pos](const EditBuffer &a, const EditBuffer &b) { return pos(a) < pos(b); });
    const int n = inside.size();
    const int first = pos(inside.first());
    const int gap = (pos(inside.last()) - first) / (n - 1);
    for (int i = 1; i < n - 1; ++i) {
        EditBuffer &w = inside[i];
        if (w.isLocked())
            continue;
        if (horizontal)
            w.setX(first + gap * i);
        else
            w.setY(first + gap * i);
        placeWidget(w);
    }
}

} // namespace vantile
