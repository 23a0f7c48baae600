// The widget adjust dialog: opened on the selected widget of a kind it
// knows, from the canvas by a double click on the widget. What it sends
// back goes through the parameter table's own apply step: the page's clamp,
// the lock, the canvas repaint and one history step.

#include "app/MainWindow.h"

#include "editors/DialogAdjust.h"
#include "widgets/WidgetLine.h"

#include <QLabel>
#include <QMouseEvent>
#include <QStandardItemModel>

namespace vantile {

Dialog *MainWindow::adjustDialog()
{
    auto *d = findChild<Dialog *>(QStringLiteral("Dialog"), Qt::FindDirectChildrenOnly);
    if (!d) {
        d = new Dialog(this);
        connect(this, &MainWindow::Update_to_Dialog, d, &Dialog::Update_from_MainWindow);
        connect(d, &Dialog::Update_to_MainWindow, this, &MainWindow::Update_from_Dialog);
        connect(d, &Dialog::Background_mask_Close_Signal, this, &MainWindow::Background_mask_Close);
    }
    return d;
}

void MainWindow::openWidgetAdjust()
{
    if (!projectOpen() || m_buildRunning || !Dialog::knows(WidgetKinds::kindOfName(m_selectedName)))
        return;
    // the page's line is the truth, whatever the table holds
    const QString key = m_selectedName + QLatin1Char(':');
    for (const QString &line : m_currentPageLines) {
        if (!line.startsWith(key))
            continue;
        Dialog *d = adjustDialog();
        d->retranslate();
        d->setPage(m_projectDir, m_pageImage);
        emit Update_to_Dialog(line);
        showMasked(d);
        return;
    }
}

bool MainWindow::adjustFromCanvas(QMouseEvent *event)
{
    // the press before the double click has selected the widget under it
    if (event->button() != Qt::LeftButton || m_addMode || m_bandMode)
        return false;
    QWidget *child = label_Show->childAt(event->pos());
    if (!child || child->objectName() != m_selectedName || !Dialog::knows(WidgetKinds::kindOfName(m_selectedName)))
        return false;
    openWidgetAdjust();
    return true;
}

void MainWindow::Update_from_Dialog(const QString &text)
{
    // "objectName:X,Y,W,H"
    const int colon = text.indexOf(QLatin1Char(':'));
    if (!projectOpen() || colon <= 0)
        return;
    const QString name = text.left(colon);
    selectByName(name); // the table from the line, as it stands now
    const KindDef *def = m_editBuffer.definition();
    if (m_selectedName != name || !def || m_editBuffer.isLocked())
        return; // a locked widget keeps its rectangle: nothing to apply, no step
    const QStringList v = text.mid(colon + 1).split(QLatin1Char(','));
    const auto setCell = [this, def](const char *key, const QString &value) {
        const FieldDef *f = def->find(key);
        if (f && f->hasRow())
            m_paraModel->setData(m_paraModel->index(f->row, 1), value.trimmed());
    };
    // a slider's touch area is the rectangle set in the dialog
    const bool slider = m_editBuffer.kind() == WidgetKind::Slider;
    const char *const keys[] = {"X", "Y", "W", "H"};
    const char *const touch[] = {"touch_X", "touch_Y", "touch_W", "touch_H"};
    for (int i = 0; i < 4 && i < v.size(); ++i) {
        setCell(keys[i], v[i]);
        if (slider)
            setCell(touch[i], v[i]);
    }
    applyWidgetRows();
}

} // namespace vantile
