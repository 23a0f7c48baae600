// Editing commands on the canvas: delete, lock and unlock, zoom.

#include "app/MainWindow.h"

#include "app/TableView.h"
#include "designer/CanvasWidgets.h"
#include "widgets/WidgetLine.h"

#include <QLabel>

namespace vantile {

QStringList MainWindow::actedOnNames() const
{
    // the marked widgets of a group, or the one reference widget
    QStringList names;
    for (const QString &line : m_currentPageLines) {
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon <= 0 || PageAttributes::isPageLine(line))
            continue;
        const QString name = line.left(colon);
        if (m_canvasWidgets->isMarked(name) || name == m_selectedName)
            names << name;
    }
    return names;
}

void MainWindow::on_actionDelete_triggered()
{
    if (!projectOpen() || m_currentPageLines.isEmpty())
        return;
    const QStringList names = actedOnNames();
    selectByName(QStringLiteral("label_Show"));
    for (const QString &name : names) {
        // a locked widget is deleted too: the lock only guards its geometry
        const QString key = name + QLatin1Char(':');
        for (int i = 0; i < m_currentPageLines.size(); ++i) {
            if (m_currentPageLines[i].startsWith(key)) {
                m_currentPageLines.removeAt(i);
                break;
            }
        }
        m_canvasWidgets->setMarked(name, false);
    }
    m_selectCount = 0;
    m_groupActive = false;
    select_frame->hide();
    loadWidgets();
    fillWidgetTable();
    takeStep(m_currentPageRow);
}

void MainWindow::applyLock(int state)
{
    if (!projectOpen())
        return;
    for (const QString &name : actedOnNames()) {
        const QString key = name + QLatin1Char(':');
        for (const QString &line : m_currentPageLines) {
            if (!line.startsWith(key))
                continue;
            EditBuffer w;
            if (WidgetLine::parse(line, w) == ParseStatus::Ok) {
                w.setLockState(state);
                WidgetLine::storeLine(m_currentPageLines, w);
                if (name == m_selectedName) {
                    m_editBuffer = w;
                    fillWidgetRows();
                }
            }
            break;
        }
    }
}

void MainWindow::on_actionLock_triggered()
{
    applyLock(2);
}

void MainWindow::on_actionUnlock_triggered()
{
    applyLock(1);
}

void MainWindow::setZoom(float zoom)
{
    if (!projectOpen())
        return;
    m_zoomFactor = zoom;
    statusBar_Switch_Language();
    const QString selected = m_selectedName;
    resetCanvasState();
    showBackground();
    // widgets are rebuilt from the lines at the new scale: the lines hold
    // panel pixels and never change with the zoom
    loadWidgets();
    if (selected != QLatin1String("select_frame"))
        selectByName(selected);
}

void MainWindow::on_actionZoomin_triggered()
{
    // the sum is made in double and stored as a float, so the steps drift a little
    if (m_zoomFactor < 3.0f)
        setZoom(float(double(m_zoomFactor) + 0.2));
}

void MainWindow::on_actionZoomout_triggered()
{
    if (m_zoomFactor > 0.6f)
        setZoom(float(double(m_zoomFactor) - 0.2));
}

void MainWindow::on_actionOriginal_triggered()
{
    setZoom(1.0f);
}

} // namespace vantile
