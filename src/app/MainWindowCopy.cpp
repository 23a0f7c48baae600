// Copy, paste and clone work on the page lines: a copied widget is its
// line, kept across page switches; a paste reads it under a new name.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "designer/CanvasWidgets.h"
#include "project/PageFile.h"
#include "project/SealedFile.h"
#include "widgets/WidgetLine.h"
#include "widgets/WriteAddress.h"
#include "editors/DialogWdgVar.h"

#include <QLabel>

namespace vantile {

void MainWindow::on_actionWriteAddr_triggered()
{
    emit Update_to_DialogVarAddr(m_pasteAutoAddress ? 1 : 0);
    m_dialogWdgVar->setNextAddress(m_nextWriteAddress);
    showMasked(m_dialogWdgVar);
}

void MainWindow::WriteAddr_Update_from_Dialog(bool autoAddress, uint nextAddress)
{
    m_pasteAutoAddress = autoAddress;
    m_nextWriteAddress = nextAddress;
}

void MainWindow::scanWriteAddresses()
{
    m_nextWriteAddress = 0;
    for (int row = 0; row < m_pageInfoList.size(); ++row) {
        const QStringList lines = row == m_currentPageRow
                                      ? m_currentPageLines
                                      : PageFile::read(pageFileToLoad(row), m_supplierKey).lines;
        WriteAddress::scan(lines, m_nextWriteAddress);
    }
}

void MainWindow::on_actionWidget_Copy_triggered()
{
    if (!projectOpen())
        return;
    if (!m_groupActive) {
        Prompts::message(this, QStringLiteral("Message"), QStringLiteral("Please select the widgets"));
        return;
    }
    m_copySourceRow = m_currentPageRow;
    m_copyRect = m_groupRect;
    m_copyList.clear();
    for (const QString &line : m_currentPageLines) {
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon > 0 && m_canvasWidgets->isMarked(line.left(colon)))
            m_copyList << line;
    }
    m_canvasWidgets->clearMarks();
    m_selectCount = 0;
    select_frame->hide();
}

bool MainWindow::pasteLine(const QString &line, int dx, int dy, QString *newName)
{
    const WidgetKind kind = WidgetKinds::kindOfLine(line);
    EditBuffer w;
    if (kind == WidgetKind::None || WidgetLine::parse(line, kind, w) != ParseStatus::Ok)
        return false;
    const int index = m_canvasWidgets->lowestFree(kind);
    if (index < 0) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't paste") + w.objectName());
        log(WidgetKinds::overMaximumMessage(kind));
        return false;
    }
    const QString name = WidgetKinds::objectName(kind, quint32(index));
    w.setObjectName(name);
    w.setName(name);
    w.setX(w.x() + int(dx / m_zoomFactor));
    w.setY(w.y() + int(dy / m_zoomFactor));
    if (w.isLocked())
        w.setLockState(1); // a copy comes back unlocked
    if (m_pasteAutoAddress)
        WriteAddress::assign(w, m_nextWriteAddress);
    const QString text = WidgetLine::write(w);
    m_canvasWidgets->load(text, m_zoomFactor, m_projectDir);
    WidgetLine::storeLine(m_currentPageLines, w);
    m_canvasWidgets->setMarked(name, true);
    if (QLabel *label = m_canvasWidgets->find(name))
        label->setStyleSheet(m_selectStyle);
    ++m_selectCount;
    if (newName)
        *newName = name;
    return true;
}

void MainWindow::on_actionWidget_Paste_triggered()
{
    if (!projectOpen())
        return;
    if (m_currentPageRow == m_copySourceRow)
        m_copySourceRow = -1;
    m_canvasWidgets->clearMarks();
    m_selectCount = 0;
    if (m_copyList.isEmpty())
        return;
    unmarkSelection();
    m_selectedName = QStringLiteral("label_Show");
    const QSize page = pagePictureSize();
    if (m_copyRect.x() + m_copyRect.width() > page.width() || m_copyRect.y() + m_copyRect.height() > page.height()) {
        Prompts::message(this, QStringLiteral("Message"), QStringLiteral("Widget is outside of the editing area"));
        return;
    }
    QString last;
    int pasted = 0;
    for (const QString &line : m_copyList)
        pasted += pasteLine(line, 0, 0, &last) ? 1 : 0;
    fillWidgetTable();
    if (pasted > 1) {
        m_groupActive = true;
        m_groupRect = m_copyRect;
        select_frame->setGeometry(CanvasWidgets::scaled(m_copyRect, m_zoomFactor));
        select_frame->setObjectName(QStringLiteral("select_frame"));
        select_frame->setStyleSheet(m_selectStyle);
        select_frame->raise();
        select_frame->show();
        m_selectedName = QStringLiteral("select_frame");
    } else if (pasted == 1) {
        m_groupActive = true;
        m_groupRect = m_copyRect;
        selectByName(last);
    }
    if (pasted > 0)
        takeStep(m_currentPageRow);
}

void MainWindow::on_actionWidget_Clone_triggered()
{
    if (!projectOpen())
        return;
    if (m_selectedName.isEmpty()) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Please select one reference widget"));
        return;
    }
    if (m_selectedName.startsWith(QLatin1String("label_Show"))) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Please select one reference widget"));
        return;
    }
    const WidgetKind kind = WidgetKinds::kindOfName(m_selectedName);
    if (kind == WidgetKind::None) {
        Prompts::message(this, QStringLiteral("Warning"),
                         QStringLiteral("Only one reference widget is allowed.Please select one reference widget first"));
        return;
    }
    m_canvasWidgets->clearMarks();
    m_selectCount = 0;
    const QString key = m_selectedName + QLatin1Char(':');
    EditBuffer w;
    bool found = false;
    for (const QString &line : m_currentPageLines) {
        if (line.startsWith(key)) {
            found = WidgetLine::parse(line, w) == ParseStatus::Ok;
            break;
        }
    }
    if (!found)
        return;
    const int index = m_canvasWidgets->lowestFree(kind);
    if (index < 0) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't clone") + m_selectedName);
        return;
    }
    // the page in panel pixels: the canvas divided by the zoom
    const int pageW = int(canvasPixels().width() / m_zoomFactor);
    const int pageH = int(canvasPixels().height() / m_zoomFactor);
    const QString name = WidgetKinds::objectName(kind, quint32(index));
    w.setObjectName(name);
    w.setName(name);
    w.setX(w.x() + w.w() + 10 > pageW ? w.x() - 10 : w.x() + 10);
    w.setY(w.y() + w.h() + 10 > pageH ? w.y() - 10 : w.y() + 10);
    if (w.isLocked())
        w.setLockState(1);
    m_canvasWidgets->load(WidgetLine::write(w), m_zoomFactor, m_projectDir);
    WidgetLine::storeLine(m_currentPageLines, w);
    unmarkSelection();
    fillWidgetTable();
    selectByName(name);
    takeStep(m_currentPageRow);
}

} // namespace vantile
