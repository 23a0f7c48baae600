// The canvas: the Add actions, drawing a new widget, selecting, dragging
// and resizing with the mouse, the resize-corner cursor and arrow keys.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "app/TableView.h"
#include "designer/CanvasWidgets.h"
#include "designer/MenuRenderers.h"
#include "widgets/WidgetLine.h"
#include "widgets/WriteAddress.h"
#include "project/PageAttributes.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QStatusBar>
#include <QTableView>

namespace vantile {

namespace {

// The Add actions: the frame's name and text while drawing, the tool word
// that the make-widget step dispatches on, and the status text.
struct AddSpec {
    const char *action;
    const char *frameName;
    const char *frameText;
    const char *toolWord;
    const char *status;
};

const AddSpec kAddActions[] = {
    {"AddButton", "button", "button", "Button", "  Ready to make a new button"},
    {"AddNumber", "Number", "number", "Number", "  Ready to make a new number"},
    {"AddClcok", "Clock", "Clock", "Clock", "  Ready to make a new clock"},
    {"AddGif", "Gif", "gif", "Gif", "  Ready to make a new Gif"},
    {"AddSlider", "Slider", "slider", "Slider", "  Ready to make a new Slider"},
    {"AddpngNumber", "PngNumber", "pngNumber", "PngNumber", "  Ready to make a new pngNumber"},
    {"AddRTC", "RTC", "RTC", "RTC", "  Ready to make a new RTC"},
    {"AddQRCode", "QRCode", "qrcode", "QRCode", "  Ready to make a new QRCode"},
    {"AddProgress", "Progress", "progress", "Progress", "  Ready to make a new Progress"},
    {"AddWav", "Wav", "wav", "Wav", "  Ready to make a new Wav"},
    {"AddVarAdj", "VarAdjust", "varAdj", "VarAdjust", "  Ready to make a new VarAdjust"},
    {"AddKeypad", "Keypad", "keypad", "Keypad", "  Ready to make a new Keypad"},
    {"AddKBkey", "KBkey", "kbkey", "KBkey", "  Ready to make a new KBkey"},
    {"AddIcon", "Icon", "icon", "Icon", "  Ready to make a new Icon"},
    {"AddbitIcon", "BitIcon", "bitIcon", "BitIcon", "  Ready to make a new bitIcon"},
    {"AddRingTouch", "RingTouch", "rtouch", "RingTouch", "  Ready to make a new RingTouch"},
    {"AddRingProgress", "RingProgress", "rProgress", "RingProgress", "  Ready to make a new RingProgress"},
    {"AddLabel", "Label", "label", "Label", "  Ready to make a new Label"},
    {"AddLabel_2", "Statictext", "Statictext", "Statictext", "  Ready to make a new Static text"},
    {"AddTextRoll", "TextRoll", "textroll", "TextRoll", "  Ready to make a new TextRoll"},
    {"AddSlideMemu", "SlideMenu", "slmenu", "SlideMenu", "  Ready to make a new SlideMenu"},
    {"actionCrossPageMenu", "SlideMenuPro", "slidemenuPro", "SlideMenuPro", "  Ready to make a new slmenuPro"},
    {"AddEN_KeyBooard", "EN_KeyBoard", "enkeyB", "EN_KeyBoard", "  Ready to make a new EN_KeyBoard"},
    {"AddCN_KeyBoard", "CN_KeyBoard", "cnkeyB", "CN_KeyBoard", "  Ready to make a new CN_KeyBoard"},
    {"AddBatchVar", "BatchVar", "batVar", "BatchVar", "  Ready to make a new BatchVar"},
    {"AddCurve", "Curve", "curve", "Curve", "  Ready to make a new Curve"},
    {"AddPopupBox", "PopupBox", "popbox", "PopupBox", "  Ready to make a new PopupBox"},
    {"AddEncoder", "Encoder", "encoder", "Encoder", "  Ready to make a new Encoder"},
    {"AddUITimer", "UI_Timer", "uitimer", "UITimer", "  Ready to make a new UI_Timer"},
    {"actionAddCamera", "UI_Camera", "camera", "Camera", "  Ready to make a new UI_Camera"},
    {"actionAddVideo", "UI_Video", "video", "Video", "  Ready to make a new UI_Video"},
    {"actionAuto_Variable", "autoVar", "autoVar", "AutoVar", "  Ready to make a new autoVar"},
    {"actionNeedle", "needle", "needle", "Needle", "  Ready to make a new needle"},
};

// Objects of the window whose press deselects.
const char *const kOutsideNames[] = {"centralwidget", "tabWidget", "tab", "textEdit", "widget", "scrollArea",
                                     "qt_scrollarea_viewport", "scrollAreaWidgetContents", "widget_page",
                                     "tableView_Page", "widget_para", "tableView_Para", "tableView_Wdg",
                                     "toolBar", "statusbar"};

} // namespace

const char *MainWindow::addActionName(WidgetKind kind)
{
    for (const AddSpec &spec : kAddActions)
        if (WidgetKinds::kindOfToolWord(QLatin1String(spec.toolWord)) == kind)
            return spec.action;
    return "";
}

void MainWindow::connectAddActions()
{
    for (const AddSpec &spec : kAddActions) {
        QAction *a = m_actions.value(QLatin1String(spec.action));
        if (!a)
            continue;
        // the armed kind's button stays pressed until the tool ends
        a->setCheckable(true);
        connect(a, &QAction::triggered, this, [this, &spec, a]() {
            armTool(spec.frameName, spec.frameText, spec.toolWord, spec.status);
            a->setChecked(m_addMode);
        });
    }
}

void MainWindow::armTool(const char *frameName, const char *frameText, const char *toolWord, const char *status)
{
    if (!projectOpen())
        return;
    resetCanvasState();
    unmarkSelection();
    m_selectedName = QStringLiteral("label_Show");
    select_frame->setObjectName(QLatin1String(frameName));
    select_frame->setText(QLatin1String(frameText));
    m_addToolWord = QLatin1String(toolWord);
    m_addMode = true;
    m_drawing = false;
    m_statusReady->setText(QLatin1String(status));
    label_Show->setCursor(Qt::CrossCursor);
    m_hoverState = 3;
}

void MainWindow::resetCanvasState()
{
    Paste_area->hide();
    select_frame->hide();
    select_frame->setObjectName(QStringLiteral("null"));
    m_addMode = false;
    m_drawing = false;
    m_rubberActive = false;
    m_addToolWord.clear();
    for (const AddSpec &spec : kAddActions)
        if (QAction *a = m_actions.value(QLatin1String(spec.action)))
            a->setChecked(false);
    if (m_selectCount > 0) {
        m_selectCount = 0;
        m_canvasWidgets->clearMarks();
    }
    m_groupActive = false;
    m_bandMode = false;
    m_bandActive = false;
    m_bandTool = 0;
    label_Show->setCursor(Qt::ArrowCursor);
    m_hoverState = 0;
    m_statusReady->setText(m_languageIndex == 1 ? QStringLiteral("就绪 :") : QStringLiteral("  Ready :"));
}

void MainWindow::unmarkSelection()
{
    CanvasWidgets::setCommonLook(m_canvasWidgets->find(m_selectedName));
}

QPoint MainWindow::canvasPos(const QPoint &globalPos) const
{
    return globalPos - label_Show->mapToGlobal(QPoint(0, 0));
}

QSize MainWindow::canvasPixels() const
{
    return label_Show->pixmap() ? label_Show->pixmap()->size() : label_Show->size();
}

bool MainWindow::selectionLocked() const
{
    const QString key = m_selectedName + QLatin1Char(':');
    for (const QString &line : m_currentPageLines) {
        if (line.startsWith(key)) {
            EditBuffer w;
            return WidgetLine::parse(line, w) == ParseStatus::Ok && w.isLocked();
        }
    }
    return false;
}

void MainWindow::makeWidget(const QRect &canvasRect)
{
    const WidgetKind kind = WidgetKinds::kindOfToolWord(m_addToolWord);
    if (kind == WidgetKind::None || !EditBuffer(kind).hasSchema())
        return; // this kind's fields are not described yet: nothing is made
    const int index = m_canvasWidgets->lowestFree(kind);
    if (index < 0) {
        // The kind's table is full: nothing is made. The one video and the
        // one cross-page menu of a page refuse a second without a word.
        if (kind != WidgetKind::Video && kind != WidgetKind::SlideMenuPro) {
            const QString message = WidgetKinds::overMaximumMessage(kind);
            log(message);
            statusBar()->showMessage(message, 5000);
        }
        return;
    }
    const QRect panel(int(canvasRect.x() / m_zoomFactor), int(canvasRect.y() / m_zoomFactor),
                      int(canvasRect.width() / m_zoomFactor), int(canvasRect.height() / m_zoomFactor));
    EditBuffer widget = WidgetLine::createNew(kind, quint32(index), panel);
    if (const int step = WriteAddress::dropStep(kind)) {
        // a dropped widget takes the next free address, which moves on by the kind's step
        quint32 at = m_nextWriteAddress;
        WriteAddress::assign(widget, at);
        m_nextWriteAddress += quint32(step);
    }
    WidgetLine::storeLine(m_currentPageLines, widget);
    const QString line = WidgetLine::write(widget);
    m_canvasWidgets->load(line, m_zoomFactor, m_projectDir);
    for (const QString &l : m_currentPageLines)
        log(QStringLiteral("list:") + l);
    fillWidgetTable();
    unmarkSelection();
    selectByName(widget.objectName());
    takeStep(m_currentPageRow);
}

void MainWindow::storeLabelGeometry(QLabel *label, bool withSize)
{
    const QString key = label->objectName() + QLatin1Char(':');
    for (const QString &line : m_currentPageLines) {
        if (!line.startsWith(key))
            continue;
        EditBuffer w;
        if (WidgetLine::parse(line, w) != ParseStatus::Ok)
            return;
        w.setX(int(label->x() / m_zoomFactor));
        w.setY(int(label->y() / m_zoomFactor));
        if (withSize) {
            w.setW(int(label->width() / m_zoomFactor));
            w.setH(int(label->height() / m_zoomFactor));
        }
        WidgetLine::storeLine(m_currentPageLines, w);
        // a drawn text or number follows its new size (a picture keeps its own)
        if (withSize && !CanvasWidgets::pictureField(w.kind()).key)
            m_canvasWidgets->paint(label, w, m_zoomFactor, m_projectDir);
        if (label->objectName() == m_selectedName) {
            m_editBuffer = w;
            fillWidgetRows();
        }
        return;
    }
}

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    if (m_buildRunning || !projectOpen())
        return;
    if (event->button() == Qt::RightButton) {
        unmarkSelection();
        resetCanvasState();
        selectByName(QStringLiteral("label_Show"));
        return;
    }
    QWidget *child = childAt(mapFromGlobal(event->globalPos()));
    if (!child || child->objectName().isEmpty())
        return;
    const QString name = child->objectName();
    log(QStringLiteral("objNameStr: ") + name);
    const QPoint at = canvasPos(event->globalPos());
    if (m_addMode) {
        m_drawOrigin = at;
        m_drawing = true;
        select_frame->setStyleSheet(m_selectStyle);
        select_frame->setGeometry(QRect(at, QSize(25, 25)));
        return;
    }
    if (m_bandMode) {
        m_drawOrigin = at;
        m_bandActive = true;
        select_frame->setText(QString());
        select_frame->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 160, 0);border: 2px solid gray"));
        select_frame->setGeometry(QRect(at, QSize(25, 25)));
        return;
    }
    for (const char *outside : kOutsideNames) {
        if (name == QLatin1String(outside)) {
            unmarkSelection();
            selectByName(QStringLiteral("label_Show"));
            return;
        }
    }
    if (name == QLatin1String("label_Show")) {
        unmarkSelection();
        resetCanvasState();
        selectByName(QStringLiteral("label_Show"));
        m_rubberActive = true;
        m_drawOrigin = at;
        select_frame->setText(QString());
        select_frame->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 160, 0);border: 2px solid gray"));
        select_frame->setGeometry(QRect(at, QSize(25, 25)));
        return;
    }
    if (name == QLatin1String("select_frame")) {
        m_selectedName = name;
        m_moveRect = select_frame->geometry();
        m_pressOffset = at - m_moveRect.topLeft();
        m_resizeMode = false; // a group is dragged, never resized
        m_moved = false;
        m_dragging = true;
        return;
    }
    if (!m_canvasWidgets->find(name))
        return;
    QLabel *label = m_canvasWidgets->find(name);
    unmarkSelection();
    resetCanvasState();
    selectByName(name);
    m_moveRect = label->geometry();
    m_pressOffset = at - m_moveRect.topLeft();
    const int slackX = m_moveRect.x() + m_moveRect.width() - at.x();
    const int slackY = m_moveRect.y() + m_moveRect.height() - at.y();
    m_resizeMode = slackX < 10 && slackY < 10;
    m_resizeSlack = QPoint(slackX, slackY);
    m_moved = false;
    m_dragging = true;
}

void MainWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (m_buildRunning || !projectOpen())
        return;
    const QPoint at = canvasPos(event->globalPos());
    if (m_addMode) {
        if (!m_drawing)
            return;
        const QSize size(at.x() - m_drawOrigin.x(), at.y() - m_drawOrigin.y());
        if (size.width() > 0 && size.height() > 0) {
            select_frame->setGeometry(QRect(m_drawOrigin, at - QPoint(1, 1)));
            select_frame->show();
        } else {
            select_frame->hide();
        }
        return;
    }
    if (m_bandMode) {
        if (!m_bandActive)
            return;
        // only a drag down and to the right shows a band
        if (at.x() > m_drawOrigin.x() && at.y() > m_drawOrigin.y()) {
            select_frame->setGeometry(QRect(m_drawOrigin, at - QPoint(1, 1)));
            select_frame->show();
            select_frame->raise();
        } else {
            select_frame->hide();
        }
        return;
    }
    if (m_rubberActive) {
        const QRect band = QRect(m_drawOrigin, at).normalized();
        if (band.width() > 0 && band.height() > 0) {
            select_frame->setGeometry(band);
            select_frame->show();
            select_frame->raise();
        } else {
            select_frame->hide();
        }
        return;
    }
    if (!m_dragging || !(event->buttons() & Qt::LeftButton))
        return;
    if (m_selectedName == QLatin1String("select_frame")) {
        dragGroup(at);
        return;
    }
    QLabel *label = m_canvasWidgets->find(m_selectedName);
    if (!label || selectionLocked())
        return;
    const QSize canvas = canvasPixels();
    if (m_resizeMode) {
        int w = qMax(20, at.x() - label->x() + m_resizeSlack.x());
        int h = qMax(20, at.y() - label->y() + m_resizeSlack.y());
        w = qMin(w, canvas.width() - label->x());
        h = qMin(h, canvas.height() - label->y());
        label->resize(w, h);
        storeLabelGeometry(label, true);
    } else {
        int left = at.x() - m_pressOffset.x();
        int top = at.y() - m_pressOffset.y();
        if (left < 0)
            left = 0;
        if (top < 0)
            top = 0;
        if (left + label->width() > canvas.width())
            left = qMax(0, canvas.width() - label->width());
        if (top + label->height() > canvas.height())
            top = qMax(0, canvas.height() - label->height());
        // a slide menu keeps room for its next item along its direction
        if (m_editBuffer.objectName() == m_selectedName && m_editBuffer.kind() == WidgetKind::SlideMenuPro) {
            const QPoint held = MenuRenderers::clampDrag(m_editBuffer, m_projectDir, QPoint(left, top),
                                                         label->size(), canvas, m_zoomFactor);
            left = held.x();
            top = held.y();
        }
        label->move(left, top);
        storeLabelGeometry(label, false);
    }
    m_moved = true;
}

void MainWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_buildRunning || !projectOpen())
        return;
    const QPoint at = canvasPos(event->globalPos());
    if (m_addMode && m_drawing) {
        select_frame->hide();
        m_drawing = false;
        const QSize canvas = canvasPixels();
        if (at.y() >= canvas.height() || at.x() >= canvas.width()) {
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("The focus is out of the effective range"));
            return;
        }
        int w = at.x() - m_drawOrigin.x();
        int h = at.y() - m_drawOrigin.y();
        if (w > 0 && h > 0)
            makeWidget(QRect(m_drawOrigin, QSize(qMax(20, w), qMax(20, h))));
        return;
    }
    if (m_bandMode && m_bandActive) {
        select_frame->hide();
        m_bandActive = false;
        const QRect band(m_drawOrigin, QSize(at.x() - m_drawOrigin.x(), at.y() - m_drawOrigin.y()));
        if (band.width() > 0 && band.height() > 0)
            applyBand(band);
        takeStep(m_currentPageRow);
        return;
    }
    if (m_rubberActive) {
        m_rubberActive = false;
        const QRect band = QRect(m_drawOrigin, at).normalized();
        if (band.width() > 0 && band.height() > 0)
            collectBand(band);
        else
            select_frame->hide();
        return;
    }
    if (m_dragging) {
        m_dragging = false;
        if (m_moved) {
            m_moved = false;
            takeStep(m_currentPageRow);
        }
    }
}

void MainWindow::collectBand(const QRect &band)
{
    // in panel pixels; a widget counts when it lies fully inside
    const QRect panel(QPoint(int(band.left() / m_zoomFactor), int(band.top() / m_zoomFactor)),
                      QPoint(int((band.left() + band.width()) / m_zoomFactor),
                             int((band.top() + band.height()) / m_zoomFactor)));
    m_selectCount = 0;
    m_canvasWidgets->clearMarks();
    QRect group;
    QString single;
    for (const QString &line : m_currentPageLines) {
        if (PageAttributes::isPageLine(line))
            continue;
        EditBuffer w;
        if (WidgetLine::parse(line, w) != ParseStatus::Ok)
            continue;
        if (w.x() < panel.left() || w.x() + w.w() > panel.right() || w.y() < panel.top()
            || w.y() + w.h() > panel.bottom())
            continue;
        QLabel *label = m_canvasWidgets->find(w.objectName());
        if (!label)
            continue;
        m_canvasWidgets->setMarked(w.objectName(), true);
        label->setStyleSheet(m_selectStyle);
        const QRect r(w.x(), w.y(), w.w(), w.h());
        group = m_selectCount == 0 ? r : group.united(r);
        single = w.objectName();
        ++m_selectCount;
    }
    if (m_selectCount < 1) {
        select_frame->hide();
        return;
    }
    m_groupActive = true;
    m_groupRect = group;
    select_frame->setGeometry(CanvasWidgets::scaled(group, m_zoomFactor));
    select_frame->setObjectName(QStringLiteral("select_frame"));
    select_frame->setStyleSheet(m_selectStyle);
    if (m_selectCount == 1) {
        select_frame->hide();
        selectByName(single);
        return;
    }
    select_frame->show();
    select_frame->raise();
    m_selectedName = QStringLiteral("select_frame");
}

void MainWindow::dragGroup(const QPoint &at)
{
    const QSize canvas = canvasPixels();
    int left = qMax(0, at.x() - m_pressOffset.x());
    int top = qMax(0, at.y() - m_pressOffset.y());
    if (left + select_frame->width() > canvas.width())
        left = qMax(0, canvas.width() - select_frame->width());
    if (top + select_frame->height() > canvas.height())
        top = qMax(0, canvas.height() - select_frame->height());
    const QPoint delta = QPoint(left, top) - select_frame->pos();
    select_frame->move(left, top);
    moveMarked(delta);
    m_moved = true;
}

void MainWindow::moveMarked(const QPoint &delta)
{
    if (m_selectCount < 1 || delta.isNull())
        return;
    for (const QString &line : QStringList(m_currentPageLines)) {
        const int colon = line.indexOf(QLatin1Char(':'));
        const QString name = line.left(colon);
        if (colon <= 0 || !m_canvasWidgets->isMarked(name))
            continue;
        EditBuffer w;
        if (WidgetLine::parse(line, w) != ParseStatus::Ok || w.isLocked())
            continue;
        if (QLabel *label = m_canvasWidgets->find(name)) {
            label->move(label->pos() + delta);
            storeLabelGeometry(label, false);
        }
    }
}

void MainWindow::updateHoverCursor(const QPoint &at)
{
    // the resize corner: the last 9 pixels of the selected widget on both axes
    if (m_addMode || m_bandMode)
        return;
    QLabel *label = m_canvasWidgets->find(m_selectedName);
    int state = 0;
    if (label && label->geometry().contains(at)) {
        const QRect r = label->geometry();
        const bool corner = at.x() > r.x() + r.width() - 9 && at.y() > r.y() + r.height() - 9;
        state = corner ? 1 : 2;
    }
    if (state == m_hoverState)
        return; // the shape is set only when the state changes
    m_hoverState = state;
    label_Show->setCursor(state == 1 ? Qt::SizeFDiagCursor : Qt::ArrowCursor);
}

bool MainWindow::canvasKey(QKeyEvent *event)
{
    if (m_selectedName == QLatin1String("label_Show") || selectionLocked())
        return false;
    const bool group = m_selectedName == QLatin1String("select_frame");
    QLabel *label = group ? select_frame : m_canvasWidgets->find(m_selectedName);
    if (!label)
        return false;
    const QSize canvas = canvasPixels();
    QPoint pos = label->pos();
    switch (event->key()) {
    case Qt::Key_Up:
        if (pos.y() > 0)
            pos.ry() -= 1;
        break;
    case Qt::Key_Down:
        pos.ry() += 1;
        if (pos.y() + label->height() > canvas.height())
            pos.setY(qMax(0, canvas.height() - label->height()));
        break;
    case Qt::Key_Left:
        if (pos.x() > 0)
            pos.rx() -= 1;
        break;
    case Qt::Key_Right:
        pos.rx() += 1;
        if (pos.x() + label->width() > canvas.width())
            pos.setX(qMax(0, canvas.width() - label->width()));
        break;
    default:
        return false;
    }
    const QPoint delta = pos - label->pos();
    label->move(pos);
    if (group)
        moveMarked(delta);
    else
        storeLabelGeometry(label, false);
    takeStep(m_currentPageRow); // each arrow press is one step
    return true;
}

} // namespace vantile
