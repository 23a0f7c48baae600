// Pages: switch, new, clone, clean, delete; loading a page file; the
// page line; history steps, undo / redo and auto-save.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "app/TableView.h"
#include "editors/DialogProjectSetting.h"
#include "designer/CanvasWidgets.h"
#include "build/ImageEncoder.h"
#include "project/MediaFiles.h"
#include "project/PageFile.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"
#include "widgets/WidgetLine.h"

#include <QContextMenuEvent>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextEdit>

namespace vantile {

namespace {
const char *const kBlack = "RGBColor(0,0,0)";

// The entries of the page table's menu: matched by their what's-this text,
// which is never translated.
struct PageMenuEntry {
    const char *whatsThis;
    const char *label;
};
const PageMenuEntry kPageMenu[] = {
    {"NewPage", QT_TRANSLATE_NOOP("vantile::MainWindow", "New page")},
    {"ClonePage", QT_TRANSLATE_NOOP("vantile::MainWindow", "Clone page")},
    {"CleanPage", QT_TRANSLATE_NOOP("vantile::MainWindow", "Clean page")},
    {"DeletePage", QT_TRANSLATE_NOOP("vantile::MainWindow", "Delete page")},
};
} // namespace

// --- tables --------------------------------------------------------------------

void MainWindow::fillWidgetTable()
{
    if (!m_wdgModel)
        return;
    m_wdgModel->removeRows(0, m_wdgModel->rowCount());
    if (!projectOpen())
        return;
    m_wdgModel->appendRow({new QStandardItem(QStringLiteral("Page")), new QStandardItem(m_pageAttr.name)});
    for (const QString &line : m_currentPageLines) {
        if (PageAttributes::isPageLine(line))
            continue;
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon <= 0)
            continue;
        EditBuffer widget;
        const bool described = WidgetLine::parse(line, widget) == ParseStatus::Ok;
        m_wdgModel->appendRow({new QStandardItem(line.left(colon)),
                               new QStandardItem(described ? widget.name() : QString())});
    }
    tableView_Wdg->setColumnWidth(0, m_wdgColumnWidth[0]);
    selectWidgetRow();
}

void MainWindow::selectWidgetRow()
{
    for (int r = 1; r < m_wdgModel->rowCount(); ++r) {
        if (m_wdgModel->index(r, 0).data().toString() == m_selectedName) {
            tableView_Wdg->selectRow(r);
            return;
        }
    }
    tableView_Wdg->selectRow(0);
}

void MainWindow::setPageNameCell(int row, const QString &name)
{
    if (QStandardItem *item = m_pageModel->item(row, 1))
        item->setText(name);
}

// --- the background -------------------------------------------------------------

QImage MainWindow::buildBackground(const PageInfo &page)
{
    QSize size = m_canvasSize;
    if (size.width() <= 0 || size.height() <= 0)
        size = QSize(800, 480);
    if (!page.image.isEmpty()) {
        QString why;
        const QString path = MediaFiles::pathIn(m_projectDir, QStringLiteral("Picture/"), page.image, &why);
        // the build's loader: the same size checks, and BMP files the library refuses
        const QImage img = path.isEmpty() ? QImage() : ImageEncoder::load(path, &why, nullptr, m_settings.canvasSize());
        if (!img.isNull())
            return img.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        log(QStringLiteral("Open fail:") + (path.isEmpty() ? page.image : path));
        if (!why.isEmpty())
            log(why);
        QImage black(size, QImage::Format_ARGB32_Premultiplied);
        black.fill(Qt::black);
        return black;
    }
    const PageList::Rgb c = PageList::parseRgbColor(page.background);
    QImage plain(size, QImage::Format_ARGB32_Premultiplied);
    plain.fill(QColor(c.r, c.g, c.b));
    return plain;
}

void MainWindow::showBackground()
{
    const int w = int(m_pageImage.width() * m_zoomFactor);
    const int h = int(m_pageImage.height() * m_zoomFactor);
    const QImage scaled = m_pageImage.scaled(w, h, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    label_Show->setPixmap(QPixmap::fromImage(scaled));
    label_Show->adjustSize();
}

// --- page files -----------------------------------------------------------------

QStringList MainWindow::readPageFile(const QString &path)
{
    const PageFile::Read page = PageFile::read(path, m_supplierKey, [this](const QString &l) { log(l); });
    log(QStringLiteral("cfg crc_ok = ") + QString::number(int(page.form)));
    if (page.form == SealedFile::Illegal) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("This is illegal uiprj"), path);
        return {};
    }
    if (!page.ok) {
        log(QStringLiteral("Can't open this file: ") + path);
        // a page that is there but can't be read (a device, a pipe, far too large) is told
        if (QFileInfo::exists(path))
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't open this file"),
                             page.error.detail());
        return {};
    }
    m_fileStamps.note(path);
    return page.lines;
}

bool MainWindow::writeLinesTo(const QString &path, const QStringList &lines)
{
    FileError error;
    if (!SealedFile::writeLines(path, lines, m_supplierKey, [this](const QString &l) { log(l); }, &error)) {
        reportWriteFailure(error);
        return false;
    }
    m_fileStamps.note(path);
    return true;
}

void MainWindow::reportWriteFailure(const FileError &error)
{
    Prompts::message(this, QStringLiteral("Message"), QStringLiteral("Fail to open this file"), error.detail());
    log(QStringLiteral("Fail to open this file: ") + error.path + QStringLiteral(" (") + error.reason
        + QLatin1Char(')'));
}

void MainWindow::resetPageAttributes()
{
    m_pageAttr = PageAttributes();
    m_pageAttr.name = m_currentPage.name;
    m_pageAttr.pageImage = m_currentPage.image;
    m_pageAttr.pageColor = m_currentPage.isColor ? m_currentPage.background : m_currentPage.color;
    m_pageAttr.w = m_pageImage.width();
    m_pageAttr.h = m_pageImage.height();
}

void MainWindow::loadPage(const QString &path)
{
    m_currentPageLines = readPageFile(path);
    // static texts show their entry of the static text table as it is now
    for (const QString &name : refreshStaticLines(m_currentPageLines))
        log(QStringLiteral("Static text refreshed: ") + name);
    resetPageAttributes();
    for (const QString &line : m_currentPageLines)
        if (PageAttributes::isPageLine(line))
            m_pageAttr.parse(line);
    loadWidgets();
    m_selectedName = QStringLiteral("label_Show");
    fillWidgetTable();
    fillPageRows();
}

QString MainWindow::pageFileToLoad(int row) const
{
    if (m_recoveryMode) {
        const QString recovered = m_history.recoveredPath(row);
        if (!recovered.isEmpty() && QFile::exists(recovered))
            return recovered;
    }
    return m_history.currentFile(row);
}

void MainWindow::clearLiveWidgets()
{
    select_frame->hide();
    Paste_area->hide();
    m_canvasWidgets->clear();
    m_selectedName = QStringLiteral("label_Show");
}

void MainWindow::updatePageLine()
{
    const QString line = m_pageAttr.toLine();
    bool replaced = false;
    for (QString &l : m_currentPageLines) {
        if (PageAttributes::isPageLine(l)) {
            l = line;
            replaced = true;
            break;
        }
    }
    if (replaced) {
        log(QStringLiteral("replace:") + line);
    } else {
        m_currentPageLines.prepend(line); // the page line always stands first
        log(QStringLiteral("append:") + line);
    }
    rebuildPageInfoLine();
}

void MainWindow::rebuildPageInfoLine()
{
    const int row = m_currentPageRow;
    if (row < 0 || row >= m_pageInfoList.size())
        return;
    const QChar s(QLatin1Char(';'));
    const QString head = QStringLiteral("Page") + PageList::pageId(row) + QLatin1Char(':');
    const QString text = m_pageAttr.pageImage.isEmpty()
                             ? head + m_pageAttr.pageColor + s + m_pageAttr.name + s + m_pageAttr.pageColor + s
                             : head + m_pageAttr.pageImage + s + m_pageAttr.name + s + m_pageAttr.pageColor + s;
    m_pageInfoList[row] = text;
    m_currentPage = PageInfo::parse(text);
    log(QStringLiteral("pageNo_Str:") + text);
    setPageNameCell(row, m_pageAttr.name);
}

// --- switching ----------------------------------------------------------------------

void MainWindow::showPage(int row)
{
    if (row < 0 || row >= m_pageInfoList.size())
        return;
    m_currentPageRow = row;
    m_currentPage = PageInfo::parse(m_pageInfoList[row]);
    log(QStringLiteral("New Page: ") + m_currentPage.image);
    log(QStringLiteral("New Page pageColorStr: ") + m_currentPage.color);
    m_pageImage = buildBackground(m_currentPage);
    clearLiveWidgets();
    const QString file = pageFileToLoad(row);
    log(QStringLiteral("cfg name: ") + file);
    log(QStringLiteral("Page W,H: ") + QString::number(m_pageImage.width()) + QLatin1Char(',')
        + QString::number(m_pageImage.height()));
    showBackground();
    loadPage(file);
    tableView_Page->selectRow(row);
}

void MainWindow::switchPage(int row)
{
    if (!projectOpen() || row < 0 || row >= m_pageInfoList.size())
        return;
    resetCanvasState(); // a page switch ends any tool
    clearLiveWidgets();
    textEdit->clear();
    log(QStringLiteral("Page_View_ID: ") + QString::number(m_currentPageRow) + QStringLiteral(", row: ")
        + QString::number(row));
    if (row == m_currentPageRow)
        return;
    if (m_pageDirty == 1) {
        m_pageDirty = 0;
        takeStep(m_currentPageRow);
    }
    m_currentPageLines.clear();
    log(QStringLiteral("New Page page_id_str: ") + PageList::pageId(row));
    showPage(row);
}

void MainWindow::on_tableView_Page_clicked(const QModelIndex &index)
{
    if (!projectOpen() || !index.isValid())
        return;
    switchPage(index.row());
    label_Show->setFocus();
    TextFiles::writeAtomically(m_projectDir + QStringLiteral("Plugin/LastPage.txt"),
                               QByteArray::number(m_currentPageRow));
}

void MainWindow::on_tableView_Page_doubleClicked(const QModelIndex &)
{
    clearLiveWidgets();
}

// --- page operations -------------------------------------------------------------------

bool MainWindow::takeStep(int row)
{
    if (row < 0)
        return false;
    const PageHistory::StepResult r = m_history.takeStep(row, m_currentPageLines, [this](const QString &l) { log(l); });
    if (r.ok()) {
        if (m_autoSaveFailing) {
            m_autoSaveFailing = false;
            statusBar()->clearMessage();
            log(tr("History steps are written again; crash recovery is on."));
        }
        return true;
    }
    log(QStringLiteral("Fail to open this file: ") + r.error.path + QStringLiteral(" (") + r.error.reason
        + QLatin1Char(')'));
    // Said once, not at every auto-save or every step; the status bar keeps it.
    if (m_autoSaveFailing)
        return false;
    m_autoSaveFailing = true;
    QString detail = r.error.detail();
    if (!r.backupWritten)
        detail += QLatin1Char('\n') + tr("Crash recovery is off: backup.txt cannot be written.");
    if (!r.stepWritten)
        detail += QLatin1Char('\n') + tr("Auto-save and undo steps are not kept until the folder can be written.");
    statusBar()->showMessage(r.backupWritten ? tr("History steps can't be written: %1").arg(r.error.path)
                                             : tr("Auto-save fails and crash recovery is off: %1 can't be written")
                                                   .arg(r.error.path));
    Prompts::message(this, QStringLiteral("Message"), QStringLiteral("Fail to open this file"), detail);
    return false;
}

void MainWindow::appendPageRow(int row, const QString &name)
{
    m_pageModel->appendRow({new QStandardItem(PageList::pageId(row)), new QStandardItem(name)});
}

void MainWindow::NewPage()
{
    if (!projectOpen())
        return;
    const int r = m_pageModel->rowCount();
    appendPageRow(r, PageList::pageId(r) + QLatin1Char('_') + QLatin1String(kBlack));
    if (m_currentPageRow < PageHistory::MaxPages)
        takeStep(m_currentPageRow);
    m_currentPageLines.clear();
    clearLiveWidgets();
    m_currentPageRow = r;
    m_pageInfoList << PageList::blankLine(r);
    m_currentPage = PageInfo::parse(m_pageInfoList.last());
    m_pageImage = buildBackground(m_currentPage);
    showBackground();
    const QString cfg = pageFilePath(r);
    if (!QFile::exists(cfg)) {
        QFile f(cfg);
        f.open(QIODevice::WriteOnly);
        resetPageAttributes();
        fillWidgetTable();
        fillPageRows();
    } else {
        loadPage(cfg); // a leftover of a deleted page comes back
    }
    fillSPageCombo();
    tableView_Page->selectRow(r);
}

void MainWindow::ClonePage()
{
    if (!projectOpen())
        return;
    const int source = m_currentPageRow;
    takeStep(source);
    const PageInfo src = PageInfo::parse(m_pageInfoList[source]);
    m_pageImage = buildBackground(src);
    const int r = m_pageModel->rowCount();
    appendPageRow(r, src.name);
    clearLiveWidgets();
    QString line = m_pageInfoList[source];
    line = QStringLiteral("Page") + PageList::pageId(r) + line.mid(line.indexOf(QLatin1Char(':')));
    m_pageInfoList << line;

    // The target's old files. The backup names here lack the dot before
    // "cfg" and so miss the rotating backups; leftovers are accepted.
    const QString base = m_projectDir + QStringLiteral("Plugin/Page") + PageList::pageId(r);
    QFile::remove(base + QStringLiteral(".cfg"));
    QFile::remove(base + QStringLiteral("cfg.bak"));
    QFile::remove(base + QStringLiteral("cfg.bak1"));
    for (int k = 1; k <= PageHistory::RingSize; ++k)
        QFile::remove(m_history.stepPath(r, k));
    m_history.setStep(r, 0);

    writeLinesTo(pageFilePath(r), m_currentPageLines);
    const QString ml = m_projectDir + QStringLiteral("MultiLanguage/Page");
    QFile::remove(ml + PageList::pageId(r) + QStringLiteral(".csv"));
    QFile::copy(ml + PageList::pageId(source) + QStringLiteral(".csv"), ml + PageList::pageId(r) + QStringLiteral(".csv"));
    m_currentPageRow = r;
    m_currentPage = PageInfo::parse(line);
    showBackground();
    loadPage(pageFilePath(r));
    fillSPageCombo();
    tableView_Page->selectRow(r);
    log(QStringLiteral("Clone Page_View_ID: ") + QString::number(r));
}

void MainWindow::blankCurrentPage()
{
    clearLiveWidgets();
    m_currentPageLines.clear();
    m_pageAttr = PageAttributes();
    m_pageAttr.name = QLatin1String(kBlack);
    m_pageAttr.pageImage.clear();
    m_pageAttr.pageColor = QLatin1String(kBlack);
    m_pageImage = QImage(m_canvasSize.isEmpty() ? QSize(800, 480) : m_canvasSize,
                         QImage::Format_ARGB32_Premultiplied);
    m_pageImage.fill(Qt::black);
    m_pageAttr.w = m_pageImage.width();
    m_pageAttr.h = m_pageImage.height();
    fillWidgetTable();
    fillPageRows();
    writeLinesTo(pageFilePath(m_currentPageRow), m_currentPageLines);
}

void MainWindow::CleanPage()
{
    if (!projectOpen())
        return;
    if (Prompts::question(this, QStringLiteral("Message"), tr("Do you want to clean the page?"),
                          {QMessageBox::Yes, QMessageBox::No})
        != QMessageBox::Yes)
        return;
    blankCurrentPage();
    showBackground();
    rebuildPageInfoLine();
    m_pageDirty = 1;
}

void MainWindow::DeletePage()
{
    const int row = m_currentPageRow;
    if (!projectOpen() || row == 0 || row != m_pageInfoList.size() - 1)
        return;
    if (Prompts::question(this, QStringLiteral("Message"), tr("Do you want to delete the page?"),
                          {QMessageBox::Yes, QMessageBox::No})
        != QMessageBox::Yes)
        return;
    blankCurrentPage(); // the emptied .cfg stays on disk
    m_pageInfoList.removeLast();
    fillSPageCombo();
    fillPageTable();
    m_history.setStep(row, 0);
    m_pageDirty = 0;
    log(QStringLiteral("Clone Page_View_ID: ") + QString::number(row - 1));
    showPage(row - 1);
}

QMenu *MainWindow::buildPageMenu(int row)
{
    auto *menu = new QMenu(this);
    for (const PageMenuEntry &e : kPageMenu) {
        const bool isDelete = QLatin1String(e.whatsThis) == QLatin1String("DeletePage");
        if (isDelete && (row == 0 || row != m_pageInfoList.size() - 1))
            continue;
        QAction *a = menu->addAction(tr(e.label));
        a->setWhatsThis(QLatin1String(e.whatsThis));
    }
    return menu;
}

void MainWindow::runPageMenuEntry(const QString &whatsThis)
{
    if (whatsThis == QLatin1String("NewPage"))
        NewPage();
    else if (whatsThis == QLatin1String("ClonePage"))
        ClonePage();
    else if (whatsThis == QLatin1String("CleanPage"))
        CleanPage();
    else if (whatsThis == QLatin1String("DeletePage"))
        DeletePage();
}

void MainWindow::pageContextMenu(const QPoint &viewportPos, const QPoint &globalPos)
{
    if (!projectOpen())
        return;
    const QModelIndex index = tableView_Page->indexAt(viewportPos);
    if (index.isValid())
        on_tableView_Page_clicked(index);
    QMenu *menu = buildPageMenu(m_currentPageRow);
    if (QAction *chosen = menu->exec(globalPos))
        runPageMenuEntry(chosen->whatsThis());
    menu->deleteLater();
}

// --- saving and history -------------------------------------------------------------------

void MainWindow::on_actionSave_current_pgae_triggered()
{
    saveCurrentPage();
}

bool MainWindow::saveCurrentPage()
{
    if (!projectOpen())
        return false;
    const QString cfg = pageFilePath(m_currentPageRow);
    QStringList theirs;
    if (!confirmOverwrite({cfg}, &theirs))
        return false;
    if (theirs.isEmpty())
        return writeLinesTo(cfg, m_currentPageLines);
    m_history.setStep(m_currentPageRow, 0);
    clearLiveWidgets();
    loadPage(cfg);
    log(tr("Kept the version on disk: %1").arg(cfg));
    return true;
}

void MainWindow::on_actionLoad_default_cfg_triggered()
{
    if (!projectOpen())
        return;
    clearLiveWidgets();
    const QString cfg = pageFilePath(m_currentPageRow);
    log(cfg);
    loadPage(cfg);
}

void MainWindow::loadStep(const QString &path)
{
    if (select_frame->isVisible()) {
        select_frame->hide();
        select_frame->setObjectName(QStringLiteral("null"));
    }
    if (!QFile::exists(path)) {
        log(QStringLiteral("Open fail: ") + path);
        return;
    }
    m_history.enterInBackup(path);
    clearLiveWidgets();
    loadPage(path);
}

void MainWindow::on_actionLastPageDesign_triggered()
{
    if (projectOpen())
        loadStep(m_history.undo(m_currentPageRow));
}

void MainWindow::on_actionLoad_next_cfb_triggered()
{
    if (projectOpen())
        loadStep(m_history.redo(m_currentPageRow));
}

void MainWindow::Auto_save()
{
    if (m_currentPageRow < 0 || m_autoSaveIndex != 1)
        return;
    const QString current = m_history.currentFile(m_currentPageRow);
    if (m_history.sameContent(current, m_currentPageLines))
        return;
    takeStep(m_currentPageRow);
    textEdit->setTextColor(Qt::blue);
    textEdit->append(QStringLiteral("Auto Save ")
                     + QDateTime::currentDateTime().toString(QStringLiteral("yyyy/MM/dd hh:mm:ss")));
    textEdit->setTextColor(Qt::black);
}

} // namespace vantile
