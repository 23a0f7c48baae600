// New, Open and Save All; the page table and the page background.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "editors/DialogProjectSetting.h"
#include "editors/LanguageTextEditor.h"
#include "project/AppPaths.h"
#include "project/PageFile.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryFile>
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
        return saveAll();
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
    QString reason;
    if (!TextFiles::writeAtomically(ini, m_settings.toIni(), &reason)) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Fail to create ") + ini,
                         FileError{ini, reason}.detail());
        log(QStringLiteral("Fail to create ") + ini + QStringLiteral(" (") + reason + QLatin1Char(')'));
        return false;
    }
    m_fileStamps.note(ini);
    return true;
}

bool MainWindow::confirmOverwrite(const QStringList &paths, QStringList *theirs)
{
    for (const QString &path : paths) {
        if (!m_fileStamps.changedOnDisk(path))
            continue;
        const auto answer = Prompts::question(
            this, QStringLiteral("Message"), tr("This file was changed outside the designer since it was read."),
            {QMessageBox::Save, QMessageBox::Discard, QMessageBox::Cancel},
            {tr("Keep mine"), tr("Take theirs"), tr("Cancel")}, QMessageBox::Warning, path);
        if (answer == QMessageBox::Discard)
            theirs->append(path);
        else if (answer != QMessageBox::Save)
            return false;
    }
    return true;
}

void MainWindow::on_actionSave_All_triggered()
{
    saveAll();
}

bool MainWindow::saveAll()
{
    log(QStringLiteral("Save all"));
    if (!projectOpen())
        return true;
    // What would be written: the open page, the pages whose current state
    // is a step, the page list and the settings.
    struct PageWrite {
        int row;
        QStringList lines;
    };
    QList<PageWrite> pages;
    QStringList targets;
    for (int row = 0; row < m_pageInfoList.size(); ++row) {
        if (row == m_currentPageRow) {
            pages.append({row, m_currentPageLines});
            targets << pageFilePath(row);
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
        const PageFile::Read step = PageFile::read(stepFile, m_supplierKey);
        if (!step.ok || step.form == SealedFile::Illegal) {
            // never fold a step that can't be read over a good page
            log(QStringLiteral("Can't open this file: ") + stepFile);
            continue;
        }
        pages.append({row, step.lines});
        targets << pageFilePath(row);
    }
    const QString ini = iniPathFor(m_uiprjPath);
    targets << m_uiprjPath << ini;

    QStringList theirs;
    if (!confirmOverwrite(targets, &theirs)) {
        log(tr("Save all cancelled: nothing was written"));
        return false;
    }
    bool ok = true;
    for (const PageWrite &p : pages) {
        const QString cfg = pageFilePath(p.row);
        if (!theirs.contains(cfg)) {
            ok = writeLinesTo(cfg, p.lines) && ok;
            continue;
        }
        // The outside version stays and becomes the page's state.
        m_history.setStep(p.row, 0);
        if (p.row == m_currentPageRow) {
            clearLiveWidgets();
            loadPage(cfg);
        }
        log(tr("Kept the version on disk: %1").arg(cfg));
    }
    if (theirs.contains(m_uiprjPath) || theirs.contains(ini)) {
        reloadFromDisk(theirs.contains(m_uiprjPath), theirs.contains(ini));
    }
    if (!theirs.contains(m_uiprjPath))
        ok = writePageList() && ok;
    if (!theirs.contains(ini))
        ok = writeSettings() && ok;
    return ok;
}

void MainWindow::reloadFromDisk(bool pageList, bool settings)
{
    if (settings) {
        const QString ini = iniPathFor(m_uiprjPath);
        QByteArray bytes;
        FileError error;
        if (TextFiles::readFile(ini, &bytes, &error) == TextFiles::ReadStatus::Ok) {
            m_settings.readIni(bytes, m_pageInfoList.size());
            m_fileStamps.note(ini);
            m_dialogProjectSetting->loadFromSettings();
            m_icType = m_settings.panelType;
            readCanvasSize();
            log(tr("Kept the version on disk: %1").arg(ini));
        } else {
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't open this file"), error.detail());
        }
    }
    if (pageList) {
        QStringList lines;
        FileError error;
        bool read = false;
        for (const QString &line : SealedFile::readLines(m_uiprjPath, m_supplierKey, nullptr, &read, {}, &error))
            if (!line.trimmed().isEmpty() && PageInfo::parse(line).id >= 0)
                lines << line;
        if (!read || lines.isEmpty()) {
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't open this file"),
                             read ? m_uiprjPath : error.detail());
            return;
        }
        m_pageInfoList = lines;
        m_fileStamps.note(m_uiprjPath);
        fillPageTable();
        fillSPageCombo();
        log(tr("Kept the version on disk: %1").arg(m_uiprjPath));
    }
    // the open page shows what is now saved
    showPage(qBound(0, m_currentPageRow, m_pageInfoList.size() - 1));
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
    // The folder is made, and must take files, before anything of the
    // session changes: a New that can't write leaves the old project open.
    const QString folder = QFileInfo(path).absolutePath();
    QString why;
    if (!QDir().mkpath(folder)) {
        why = tr("The folder can't be created");
    } else {
        QTemporaryFile probe(withSlash(folder) + QStringLiteral("vantile-probe-XXXXXX"));
        if (!probe.open())
            why = probe.errorString();
    }
    if (!why.isEmpty()) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Fail to create ") + path,
                         FileError{folder, why}.detail());
        log(QStringLiteral("Fail to create ") + path + QStringLiteral(" (") + why + QLatin1Char(')'));
        return;
    }
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
    m_fileStamps.clear();
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
        if (QFileInfo::exists(ini))
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't open this file"),
                             FileError{ini, gate.reason}.detail());
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
    FileError readError;
    const QStringList rawLines = SealedFile::readLines(path, m_supplierKey, nullptr, &ok, {}, &readError);
    if (!ok) {
        log(QStringLiteral("Can't open this file: ") + path);
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Can't open this file"), readError.detail());
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

    // Leaving the project that was open: its backup.txt and its language editor go.
    if (projectOpen()) {
        const QString oldBackup = m_projectDir + QStringLiteral("backup.txt");
        if (QFile::exists(oldBackup))
            QFile::remove(oldBackup);
        if (m_languageTextEditor)
            m_languageTextEditor->hide();
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

    QByteArray iniBytes;
    if (TextFiles::readFile(ini, &iniBytes) == TextFiles::ReadStatus::Ok) {
        const ReadReport report = m_settings.readIni(iniBytes, m_pageInfoList.size());
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
    // Temporary files of saves that a crash or a kill cut short.
    for (const QString &left : TextFiles::removeInterruptedWrites(m_projectDir, QFileInfo(path).completeBaseName()))
        log(tr("Removed the leftover of an interrupted save: %1").arg(left));
    m_history.rotateBackups(m_pageInfoList.size(), [this](const QString &l) { log(l); });
    int startRow = 0;
    if (m_recoveryMode) {
        startRow = TextFiles::readLines(m_projectDir + QStringLiteral("Plugin/LastPage.txt")).value(0).trimmed().toInt();
        if (startRow < 0 || startRow >= m_pageInfoList.size())
            startRow = 0;
        // Recovered pages stand at their latest step: changed until saved.
        for (int row : m_history.adoptRecoveredSteps(m_pageInfoList.size()))
            log(QStringLiteral("Page") + PageList::pageId(row) + QStringLiteral(" restored from ")
                + m_history.stepPath(row, m_history.step(row)));
    } else {
        m_history.deleteStepFiles();
    }
    // What this session has seen of the files it may overwrite.
    m_fileStamps.clear();
    m_fileStamps.note(path);
    m_fileStamps.note(ini);
    for (int row = 0; row < m_pageInfoList.size(); ++row)
        m_fileStamps.note(pageFilePath(row));
    showPage(startRow);
    AppPaths::writeOneLine(AppPaths::uiprjPathFile(), m_projectDir);
    scanWriteAddresses();
    statusBar_Switch_Language();
    return true;
}

} // namespace vantile
