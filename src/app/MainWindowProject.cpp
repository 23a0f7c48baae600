// New, Open and Save All; the page table and the page background.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "editors/DialogProjectSetting.h"
#include "project/AppPaths.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextEdit>

namespace vantile {

namespace {
const char *const kProjectDirs[] = {"Picture", "FontBin", "Gif", "Icon", "Music",
                                    "Plugin", "Video", "WavBin", "MultiLanguage"};

QString withSlash(const QString &dir)
{
    return dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/');
}

bool createEmptyFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly);
}
} // namespace

void MainWindow::log(const QString &line)
{
    textEdit->append(line);
}

QString MainWindow::iniPathFor(const QString &uiprjPath) const
{
    QString ini = uiprjPath;
    if (ini.endsWith(QLatin1String(".uiprj")))
        ini.chop(6);
    return ini + QStringLiteral(".ini");
}

QString MainWindow::pageFilePath(int row) const
{
    return m_projectDir + QStringLiteral("Plugin/Page") + PageList::pageId(row) + QStringLiteral(".cfg");
}

bool MainWindow::askSaveBeforeLeaving()
{
    if (!projectOpen())
        return true;
    const auto answer = Prompts::question(this, QStringLiteral("Message"), QStringLiteral("Save the current uiprj?"),
                                          {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
    if (answer == QMessageBox::Cancel || answer == QMessageBox::NoButton)
        return false;
    if (answer == QMessageBox::Yes)
        on_actionSave_All_triggered();
    return true;
}

void MainWindow::resetEditingState()
{
    m_history.reset(m_projectDir, m_supplierKey);
    select_frame->hide();
    Paste_area->hide();
    m_currentPageLines.clear();
    m_pageDirty = 0;
}

void MainWindow::readCanvasSize()
{
    m_canvasSize = m_settings.canvasSize();
}

// --- tables ------------------------------------------------------------------

void MainWindow::fillPageTable()
{
    m_pageModel->removeRows(0, m_pageModel->rowCount());
    for (int row = 0; row < m_pageInfoList.size(); ++row) {
        const PageInfo p = PageInfo::parse(m_pageInfoList[row]);
        auto *id = new QStandardItem(PageList::pageId(p.id < 0 ? row : p.id));
        auto *name = new QStandardItem(p.name);
        m_pageModel->appendRow({id, name});
    }
    tableView_Page->setColumnWidth(0, m_pageListColumnWidth[0]);
}

void MainWindow::fillSPageCombo()
{
    QStringList items;
    for (int row = 0; row < m_pageInfoList.size(); ++row)
        items << QStringLiteral("Page") + PageList::pageId(row);
    m_dialogProjectSetting->setPageItems(items);
}

// --- writing -------------------------------------------------------------------

bool MainWindow::writePageList()
{
    if (m_uiprjPath.isEmpty()) {
        log(QStringLiteral("Open fail:") + m_uiprjPath);
        return false;
    }
    return writeLinesTo(m_uiprjPath, m_pageInfoList);
}

bool MainWindow::writeSettings()
{
    const QString ini = iniPathFor(m_uiprjPath);
    if (!TextFiles::writeAtomically(ini, m_settings.toIni())) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Fail to create ") + ini);
        log(QStringLiteral("Fail to create ") + ini);
        return false;
    }
    return true;
}

void MainWindow::on_actionSave_All_triggered()
{
    log(QStringLiteral("Save all"));
    if (!projectOpen())
        return;
    for (int row = 0; row < m_pageInfoList.size(); ++row) {
        if (row == m_currentPageRow) {
            writeLinesTo(pageFilePath(row), m_currentPageLines);
            continue;
        }
        // Other pages fold their current step into the .cfg.
        const int k = m_history.step(row);
        if (k == 0)
            continue;
        const QString stepFile = m_history.stepPath(row, k);
        if (!QFile::exists(stepFile)) {
            log(QStringLiteral("Page") + PageList::pageId(row) + QStringLiteral(".cfb isn't exists"));
            continue;
        }
        writeLinesTo(pageFilePath(row), SealedFile::readLines(stepFile, m_supplierKey));
    }
    writePageList();
    writeSettings();
}

// --- settings dialog -------------------------------------------------------------

void MainWindow::on_actionProject_Setting_triggered()
{
    m_dialogProjectSetting->loadFromSettings();
    m_dialogProjectSetting->storeResolution();
    m_dialogProjectSetting->show();
    m_dialogProjectSetting->setWindowState(
        (m_dialogProjectSetting->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    m_dialogProjectSetting->raise();
    m_dialogProjectSetting->activateWindow();
}

// --- New ---------------------------------------------------------------------------

void MainWindow::on_actionNew_project_triggered()
{
    log(QStringLiteral("make new"));
    if (!askSaveBeforeLeaving())
        return;
    const QString path = Prompts::saveFile(this, QStringLiteral("Save uiprj files"), m_projectDir,
                                           QStringLiteral("file(*.uiprj)"));
    if (!path.contains(QLatin1String("uiprj")))
        return;
    m_newProjectPath = path;
    m_dialogProjectSetting->setNewProjectMode(true);
    m_dialogProjectSetting->loadFromSettings();
    m_dialogProjectSetting->storeResolution();
    m_newProjectPending = true;
    m_dialogProjectSetting->show();
    m_dialogProjectSetting->raise();
}

void MainWindow::New_Projectsetting()
{
    if (!m_newProjectPending)
        return;
    m_newProjectPending = false;
    m_dialogProjectSetting->setNewProjectMode(false);
    m_recoveryMode = false;

    const QString path = m_newProjectPath;
    if (projectOpen()) {
        const QString oldBackup = m_projectDir + QStringLiteral("backup.txt");
        if (QFile::exists(oldBackup))
            QFile::remove(oldBackup);
    }
    m_projectDir = withSlash(QFileInfo(path).absolutePath());
    QDir dir(m_projectDir);
    for (const char *d : kProjectDirs)
        if (!dir.exists(QLatin1String(d)))
            dir.mkdir(QLatin1String(d));

    // The page picker: a picture folder gives a page per four-digit number.
    readCanvasSize();
    const QString image = Prompts::openFile(this, QStringLiteral("Select Image files"),
                                            m_projectDir + QStringLiteral("//Picture"),
                                            QStringLiteral("file(*.jpg *jpgbin *jpeg *bmp *.png)"));
    QStringList lines;
    if (!image.isEmpty()) {
        const QString imageDir = withSlash(QFileInfo(image).absolutePath());
        lines = PageList::linesFromPictureFolder(imageDir);
        const QString projectPictures = m_projectDir + QStringLiteral("Picture/");
        if (QDir(imageDir) != QDir(projectPictures)) {
            // Pictures from elsewhere are copied in, so that the project stays whole.
            for (const QString &line : lines) {
                const PageInfo p = PageInfo::parse(line);
                if (!p.image.isEmpty() && !QFile::exists(projectPictures + p.image))
                    QFile::copy(imageDir + p.image, projectPictures + p.image);
            }
        }
    }
    if (lines.isEmpty()) {
        lines << PageList::blankLine(0);
        if (m_canvasSize.width() <= 0 || m_canvasSize.height() <= 0) {
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("TFT_XSIZE or TFT_YSIZE is zero!"));
            m_settings.xsize = QStringLiteral("800");
            m_settings.ysize = QStringLiteral("480");
            readCanvasSize();
        }
    }
    m_pageInfoList = lines;

    resetEditingState();
    m_zoomFactor = 1.0f;
    for (int row = 0; row < m_pageInfoList.size(); ++row)
        if (!QFile::exists(pageFilePath(row)))
            createEmptyFile(pageFilePath(row));
    fillPageTable();
    fillSPageCombo();
    showPage(0);

    m_uiprjPath = path;
    setWindowTitle(QLatin1String(kTitle) + QStringLiteral("   uiprj name: ") + path);
    writePageList();
    writeSettings();
    statusBar_Switch_Language();
    scanWriteAddresses();
    createEmptyFile(m_projectDir + QStringLiteral("backup.txt"));
}

// --- Open --------------------------------------------------------------------------

void MainWindow::on_actionInput_uiprj_triggered()
{
    log(QStringLiteral("input"));
    if (!askSaveBeforeLeaving())
        return;
    QString start = AppPaths::readOneLine(AppPaths::uiprjPathFile());
    if (start.isEmpty())
        start = AppPaths::appDir();
    const QString path =
        Prompts::openFile(this, QStringLiteral("Select uiprj files"), start, QStringLiteral("file(*.uiprj)"));
    if (path.isEmpty())
        return;
    openProjectFile(path);
}

bool MainWindow::openProjectFile(const QString &pathIn)
{
    const QString path = QFileInfo(pathIn).absoluteFilePath();
    m_supplierKey = IniValue::hexadecimal(m_settings.supplierId.toLatin1());

    // The version gate reads the settings before anything else.
    const QString ini = iniPathFor(path);
    const VersionGate gate = ProjectSettings::checkVersion(ini);
    if (!gate.iniFound) {
        log(QStringLiteral("Can't open this file: ") + ini);
        return false;
    }
    if (!gate.accepted) {
        Prompts::message(this, QStringLiteral("Warning"),
                         ProjectSettings::versionRefusedText(gate.valueText, m_languageIndex));
        return false;
    }

    // The page list may be sealed with this project's key.
    const SealedFile::Class cls = SealedFile::classify(path, m_supplierKey);
    log(QStringLiteral("crc_ok = ") + QString::number(int(cls)));
    if (cls == SealedFile::Illegal) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("This is illegal uiprj"));
        return false;
    }
    bool ok = false;
    const QStringList rawLines = SealedFile::readLines(path, m_supplierKey, nullptr, &ok);
    if (!ok) {
        log(QStringLiteral("Can't open this file: ") + path);
        return false;
    }
    QStringList lines;
    for (const QString &line : rawLines) {
        if (line.trimmed().isEmpty())
            continue;
        const PageInfo p = PageInfo::parse(line);
        if (p.id < 0) {
            Prompts::message(this, QStringLiteral("Warning"),
                             QStringLiteral("from :") + QString::number(p.id) + QStringLiteral("Error page ID ")
                                 + path);
            continue;
        }
        lines << line;
    }
    if (lines.isEmpty()) {
        log(QStringLiteral("This is a null uiprj"));
        log(QStringLiteral("Open fail:") + path);
        return false;
    }

    // Leaving the project that was open.
    if (projectOpen()) {
        const QString oldBackup = m_projectDir + QStringLiteral("backup.txt");
        if (QFile::exists(oldBackup))
            QFile::remove(oldBackup);
    }
    const QString dir = withSlash(QFileInfo(path).absolutePath());
    m_recoveryMode = false;
    if (QFile::exists(dir + QStringLiteral("backup.txt"))) {
        // backup.txt outlives a session only when it did not end normally
        m_recoveryMode = Prompts::question(this, QStringLiteral("Message"),
                                           QStringLiteral("Last abnormal exit, need to restore the last state?    "),
                                           {QMessageBox::Yes, QMessageBox::No})
                         == QMessageBox::Yes;
    } else {
        createEmptyFile(dir + QStringLiteral("backup.txt"));
    }

    m_pageInfoList = lines;
    m_uiprjPath = path;
    m_projectDir = dir;
    resetEditingState();
    setWindowTitle(QLatin1String(kTitle) + QStringLiteral("   uiprj name: ") + path);
    log(QStringLiteral("Load uiprj .... page number is ") + QString::number(m_pageInfoList.size()));

    QDir(m_projectDir).mkpath(QStringLiteral("Plugin"));
    for (int row = 0; row < m_pageInfoList.size(); ++row)
        if (!QFile::exists(pageFilePath(row)))
            createEmptyFile(pageFilePath(row));
    fillPageTable();
    fillSPageCombo();

    QFile iniFile(ini);
    if (iniFile.open(QIODevice::ReadOnly)) {
        const ReadReport report = m_settings.readIni(iniFile.readAll(), m_pageInfoList.size());
        if (report.startPageOverflow)
            Prompts::message(this, QStringLiteral("Warning"),
                             QStringLiteral("Start page from uiprj ini file is over than the max page id"));
    }
    m_dialogProjectSetting->loadFromSettings();
    fillSPageCombo();
    m_icType = m_settings.panelType;

    readCanvasSize();
    if (!QDir(m_projectDir).exists(QStringLiteral("MultiLanguage")))
        QDir(m_projectDir).mkdir(QStringLiteral("MultiLanguage"));
    m_languageCount = qMax(1, m_settings.languageNum.toInt());
    m_history.rotateBackups(m_pageInfoList.size(), [this](const QString &l) { log(l); });
    int startRow = 0;
    if (m_recoveryMode) {
        startRow = TextFiles::readLines(m_projectDir + QStringLiteral("Plugin/LastPage.txt")).value(0).trimmed().toInt();
        if (startRow < 0 || startRow >= m_pageInfoList.size())
            startRow = 0;
    } else {
        m_history.deleteStepFiles();
    }
    showPage(startRow);
    AppPaths::writeOneLine(AppPaths::uiprjPathFile(), m_projectDir);
    scanWriteAddresses();
    statusBar_Switch_Language();
    return true;
}

} // namespace vantile
