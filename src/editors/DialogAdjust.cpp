#include "editors/DialogAdjust.h"

#include "designer/PictureRenderers.h"
#include "widgets/WidgetLine.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace vantile {

namespace {

// The preview fits the page into this area, and never shows it larger
// than twice the panel's pixels.
constexpr double kPreviewWidth = 720.0;
constexpr double kPreviewHeight = 450.0;
constexpr double kMaxZoom = 2.0;
// As on the canvas: the resize corner is the last 10 preview pixels, and a
// resize by mouse stops at 20 panel pixels.
constexpr int kCorner = 10;
constexpr int kMinSide = 20;

const QColor kFrame(0, 180, 0); // the canvas's frame colour

} // namespace

Dialog::Dialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Dialog"));
    label_Img = new QLabel(this);
    label_Img->setObjectName(QStringLiteral("label_Img"));
    label_Img->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label_Img->setMouseTracking(true);
    label_Img->installEventFilter(this);

    QLineEdit **edits[] = {&lineEdit_X, &lineEdit_Y, &lineEdit_W, &lineEdit_H, &lineEdit_CenX, &lineEdit_CenY};
    const char *names[] = {"lineEdit_X", "lineEdit_Y", "lineEdit_W", "lineEdit_H", "lineEdit_CenX", "lineEdit_CenY"};
    auto *numbers = new QGridLayout;
    for (int i = 0; i < 6; ++i) {
        *edits[i] = new QLineEdit(this);
        (*edits[i])->setObjectName(QLatin1String(names[i]));
        (*edits[i])->setMaximumWidth(80);
        m_labels[i] = new QLabel(this);
        m_labels[i]->setBuddy(*edits[i]);
        numbers->addWidget(m_labels[i], i, 0);
        numbers->addWidget(*edits[i], i, 1);
    }
    m_lockNote = new QLabel(this);
    m_lockNote->setWordWrap(true);
    m_lockNote->hide();
    numbers->addWidget(m_lockNote, 6, 0, 1, 2);
    numbers->setRowStretch(7, 1);

    pushButton = new QPushButton(this);
    pushButton->setObjectName(QStringLiteral("pushButton"));
    pushButton->setAutoDefault(false); // Return in a line edit takes the number, it doesn't close
    pushButton_Cancel = new QPushButton(this);
    pushButton_Cancel->setObjectName(QStringLiteral("pushButton_Cancel"));
    pushButton_Cancel->setAutoDefault(false);

    auto *grid = new QGridLayout(this);
    grid->addWidget(label_Img, 0, 0);
    grid->addLayout(numbers, 0, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(pushButton);
    buttons->addWidget(pushButton_Cancel);
    grid->addLayout(buttons, 1, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize); // the dialog follows the preview's size
    retranslate();
    QMetaObject::connectSlotsByName(this);
}

void Dialog::retranslate()
{
    setWindowTitle(tr("Widget adjustment"));
    const char *texts[] = {QT_TR_NOOP("X:"), QT_TR_NOOP("Y:"), QT_TR_NOOP("W:"), QT_TR_NOOP("H:"),
                           QT_TR_NOOP("Centre X:"), QT_TR_NOOP("Centre Y:")};
    for (int i = 0; i < 6; ++i)
        m_labels[i]->setText(tr(texts[i]));
    m_lockNote->setText(tr("The widget is locked: its rectangle can't be changed."));
    pushButton->setText(tr("OK"));
    pushButton_Cancel->setText(tr("Cancel"));
}

bool Dialog::knows(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::Slider:
    case WidgetKind::RTouch:
    case WidgetKind::RProgress:
    case WidgetKind::Progress:
    case WidgetKind::Keypad:
    case WidgetKind::ENKeyB:
    case WidgetKind::CNKeyB:
    case WidgetKind::PopBox:
        return true;
    default:
        return false;
    }
}

bool Dialog::isRing(WidgetKind kind)
{
    return kind == WidgetKind::RTouch || kind == WidgetKind::RProgress;
}

void Dialog::setPage(const QString &projectDir, const QImage &pagePicture)
{
    m_projectDir = projectDir;
    m_page = pagePicture;
    m_zoom = 1.0;
    m_backdrop = QPixmap();
    if (m_page.width() <= 0 || m_page.height() <= 0)
        return;
    m_zoom = std::min({kMaxZoom, kPreviewWidth / m_page.width(), kPreviewHeight / m_page.height()});
    m_backdrop = QPixmap::fromImage(m_page.scaled(int(m_page.width() * m_zoom), int(m_page.height() * m_zoom),
                                                  Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

void Dialog::Update_from_MainWindow(const QString &line)
{
    m_widget = EditBuffer();
    m_ownPicture = QImage();
    m_fixedSize = QSize();
    m_drag = Drag::None;
    EditBuffer parsed;
    if (WidgetLine::parse(line, parsed) == ParseStatus::Ok && knows(parsed.kind()))
        m_widget = parsed;
    const bool ring = isRing(m_widget.kind());
    for (int i = 4; i < 6; ++i)
        m_labels[i]->setVisible(ring);
    lineEdit_CenX->setVisible(ring);
    lineEdit_CenY->setVisible(ring);

    m_original = m_widget.hasSchema() ? m_widget.rect() : QRect();
    QRect start = m_original;
    if (m_widget.kind() == WidgetKind::PopBox) {
        // a pop-up box shows its picture and takes its size, as on the canvas
        m_ownPicture = PictureRenderers::iconPicture(m_projectDir, m_widget.text("unpressedIcon"));
        if (!m_ownPicture.isNull()) {
            m_fixedSize = m_ownPicture.size();
            start.setSize(m_fixedSize);
        }
    }
    const bool free = editable();
    for (QLineEdit *e : {lineEdit_X, lineEdit_Y, lineEdit_CenX, lineEdit_CenY})
        e->setReadOnly(!free);
    lineEdit_W->setReadOnly(!free || m_fixedSize.isValid());
    lineEdit_H->setReadOnly(!free || m_fixedSize.isValid());
    m_lockNote->setVisible(m_widget.hasSchema() && m_widget.isLocked());
    label_Img->setCursor(Qt::ArrowCursor);
    setRect(start);
}

bool Dialog::editable() const
{
    return m_widget.hasSchema() && !m_widget.isLocked();
}

int Dialog::readNumber(const QLineEdit *edit) const
{
    // the parameter table's reader: what isn't a digit is skipped
    const FieldDef *f = m_widget.definition() ? m_widget.definition()->find("X") : nullptr;
    return f ? int(WidgetLine::readLineText(*f, edit->text()).number) : 0;
}

// The limit the parameter table puts on an edit: the rectangle no larger
// than the page's picture, and moved back onto it.
QRect Dialog::clamped(QRect r) const
{
    if (m_fixedSize.isValid())
        r.setSize(m_fixedSize);
    const int pw = m_page.width();
    const int ph = m_page.height();
    if (pw > 0) {
        if (r.width() > pw)
            r.setWidth(pw);
        if (r.x() + r.width() > pw)
            r.moveLeft(pw - r.width());
    }
    if (ph > 0) {
        if (r.height() > ph)
            r.setHeight(ph);
        if (r.y() + r.height() > ph)
            r.moveTop(ph - r.height());
    }
    return r;
}

void Dialog::setRect(const QRect &r)
{
    m_rect = r;
    const bool any = m_widget.hasSchema();
    const auto show = [any](QLineEdit *e, int v) { e->setText(any ? QString::number(v) : QString()); };
    show(lineEdit_X, r.x());
    show(lineEdit_Y, r.y());
    show(lineEdit_W, r.width());
    show(lineEdit_H, r.height());
    // a ring's centre is its rectangle's middle
    show(lineEdit_CenX, r.x() + r.width() / 2);
    show(lineEdit_CenY, r.y() + r.height() / 2);
    paintPreview();
}

void Dialog::on_lineEdit_X_editingFinished()
{
    if (editable())
        setRect(clamped(m_rect.translated(readNumber(lineEdit_X) - m_rect.x(), 0)));
}

void Dialog::on_lineEdit_Y_editingFinished()
{
    if (editable())
        setRect(clamped(m_rect.translated(0, readNumber(lineEdit_Y) - m_rect.y())));
}

void Dialog::on_lineEdit_W_editingFinished()
{
    if (!editable())
        return;
    QRect r = m_rect;
    r.setWidth(readNumber(lineEdit_W));
    setRect(clamped(r));
}

void Dialog::on_lineEdit_H_editingFinished()
{
    if (!editable())
        return;
    QRect r = m_rect;
    r.setHeight(readNumber(lineEdit_H));
    setRect(clamped(r));
}

void Dialog::on_lineEdit_CenX_editingFinished()
{
    // the centre moves the rectangle; its size stays
    if (editable() && isRing(m_widget.kind()))
        setRect(clamped(m_rect.translated(readNumber(lineEdit_CenX) - m_rect.width() / 2 - m_rect.x(), 0)));
}

void Dialog::on_lineEdit_CenY_editingFinished()
{
    if (editable() && isRing(m_widget.kind()))
        setRect(clamped(m_rect.translated(0, readNumber(lineEdit_CenY) - m_rect.height() / 2 - m_rect.y())));
}

void Dialog::on_pushButton_clicked()
{
    // a number typed without Return counts too
    for (QLineEdit *e : {lineEdit_X, lineEdit_Y, lineEdit_W, lineEdit_H, lineEdit_CenX, lineEdit_CenY})
        if (e->isModified() && !e->isHidden()) {
            e->setModified(false);
            emit e->editingFinished();
        }
    if (editable() && m_rect != m_original)
        emit Update_to_MainWindow(QStringLiteral("%1:%2,%3,%4,%5")
                                      .arg(m_widget.objectName())
                                      .arg(m_rect.x())
                                      .arg(m_rect.y())
                                      .arg(m_rect.width())
                                      .arg(m_rect.height()));
    accept();
}

void Dialog::on_pushButton_Cancel_clicked()
{
    reject();
}

void Dialog::reject()
{
    m_drag = Drag::None;
    QDialog::reject();
    emit Background_mask_Close_Signal();
}

// --- the preview -----------------------------------------------------------------

QImage Dialog::widgetPicture() const
{
    // drawn by the canvas's own renderers, from the copy as it stands
    EditBuffer w = m_widget;
    w.setRect(m_rect);
    switch (w.kind()) {
    case WidgetKind::Slider:
        // its touch area goes with the rectangle (see MainWindow::Update_from_Dialog)
        w.setNumber("touch_X", m_rect.x());
        w.setNumber("touch_Y", m_rect.y());
        w.setNumber("touch_W", m_rect.width());
        w.setNumber("touch_H", m_rect.height());
        return PictureRenderers::renderBar(w, m_projectDir);
    case WidgetKind::Progress:
        return PictureRenderers::renderBar(w, m_projectDir);
    case WidgetKind::RProgress:
    case WidgetKind::RTouch:
        return PictureRenderers::renderRing(w, m_projectDir);
    case WidgetKind::PopBox:
        return m_ownPicture;
    default:
        return QImage(); // a keyboard is a touch area over the page's picture
    }
}

QRect Dialog::onPreview(const QRect &panel) const
{
    return QRect(int(panel.x() * m_zoom), int(panel.y() * m_zoom), int(panel.width() * m_zoom),
                 int(panel.height() * m_zoom));
}

void Dialog::paintPreview()
{
    QPixmap pix = m_backdrop;
    if (pix.isNull()) {
        // no page picture: a plain ground as large as the rectangle needs
        pix = QPixmap(std::max(m_rect.right() + 1, 100), std::max(m_rect.bottom() + 1, 100));
        pix.fill(Qt::darkGray);
    }
    if (m_widget.hasSchema()) {
        QPainter p(&pix);
        const QRect at = onPreview(m_rect);
        const QImage picture = widgetPicture();
        if (!picture.isNull())
            p.drawImage(QRectF(at.topLeft(), QSizeF(picture.size()) * m_zoom), picture);
        else if (!at.isEmpty())
            p.fillRect(at, QColor(kFrame.red(), kFrame.green(), kFrame.blue(), 60));
        if (!at.isEmpty()) {
            p.setPen(QPen(kFrame, 2));
            p.setBrush(Qt::NoBrush);
            p.drawRect(at.adjusted(1, 1, -1, -1));
        }
        if (isRing(m_widget.kind())) {
            const QPoint c = onPreview(QRect(m_rect.x() + m_rect.width() / 2, m_rect.y() + m_rect.height() / 2, 0, 0))
                                 .topLeft();
            p.setPen(QPen(kFrame, 1, Qt::DashLine));
            p.drawLine(c - QPoint(8, 0), c + QPoint(8, 0));
            p.drawLine(c - QPoint(0, 8), c + QPoint(0, 8));
        }
    }
    label_Img->setPixmap(pix);
    label_Img->setFixedSize(pix.size());
}

void Dialog::setCursorFor(const QPoint &at)
{
    const QRect r = onPreview(m_rect);
    if (!editable() || !r.contains(at))
        label_Img->setCursor(Qt::ArrowCursor);
    else if (!m_fixedSize.isValid() && r.right() - at.x() < kCorner && r.bottom() - at.y() < kCorner)
        label_Img->setCursor(Qt::SizeFDiagCursor);
    else
        label_Img->setCursor(Qt::SizeAllCursor);
}

bool Dialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != label_Img)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto *e = static_cast<QMouseEvent *>(event);
        const QRect r = onPreview(m_rect);
        if (e->button() != Qt::LeftButton || !editable() || !r.contains(e->pos()))
            return false;
        const bool corner = r.right() - e->pos().x() < kCorner && r.bottom() - e->pos().y() < kCorner;
        m_drag = corner && !m_fixedSize.isValid() ? Drag::Resize : Drag::Move;
        m_pressAt = e->pos();
        m_pressRect = m_rect;
        return true;
    }
    case QEvent::MouseMove: {
        auto *e = static_cast<QMouseEvent *>(event);
        if (m_drag == Drag::None) {
            setCursorFor(e->pos());
            return false;
        }
        // the mouse's way in panel pixels, truncated as the canvas does
        const int dx = int((e->pos().x() - m_pressAt.x()) / m_zoom);
        const int dy = int((e->pos().y() - m_pressAt.y()) / m_zoom);
        QRect r = m_pressRect;
        if (m_drag == Drag::Move) {
            r.translate(dx, dy);
            // kept on the page, as a drag on the canvas is
            if (m_page.width() > 0)
                r.moveLeft(std::max(0, std::min(r.x(), m_page.width() - r.width())));
            if (m_page.height() > 0)
                r.moveTop(std::max(0, std::min(r.y(), m_page.height() - r.height())));
        } else {
            // the corner stops at the page's edge; the place stays
            int w = std::max(kMinSide, m_pressRect.width() + dx);
            int h = std::max(kMinSide, m_pressRect.height() + dy);
            if (m_page.width() > 0)
                w = std::min(w, m_page.width() - r.x());
            if (m_page.height() > 0)
                h = std::min(h, m_page.height() - r.y());
            r.setSize(QSize(w, h));
        }
        if (r != m_rect)
            setRect(clamped(r));
        return true;
    }
    case QEvent::MouseButtonRelease:
        if (m_drag == Drag::None)
            return false;
        m_drag = Drag::None;
        return true;
    default:
        return false;
    }
}

} // namespace vantile
