// Build and Clear project: the designer runs the same driver as the
// command-line build, with its log pane as the build log. The Tool menu
// starts the sibling programs.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "build/MakeBin.h"
#include "project/AppPaths.h"
#include "project/SiblingTools.h"

#include <QApplication>
#include <QTextEdit>
#include <QTimer>

namespace vantile {

MakeBin &MainWindow::buildDriver()
{
    if (!m_makeBin) {
        m_makeBin.reset(new MakeBin);
        installStandardBuild(*m_makeBin);
        m_makeBin->setLogSink([this](const QString &line) {
            textEdit->append(line);
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        });
        m_makeBin->setNotifier([this](const QString &title, const QString &text) {
            Prompts::message(this, title, text);
        });
    }
    return *m_makeBin;
}

void MainWindow::on_actionMake_bin_triggered()
{
    if (!projectOpen() || m_buildRunning)
        return;
    // the build reads saved page files: the open page is saved first
    if (!saveCurrentPage()) {
        textEdit->append(tr("Build cancelled: the open page was not saved"));
        return;
    }
    m_autoSaveTimer->stop();
    m_buildRunning = true;
    textEdit->clear();
    BuildInput input;
    input.uiprjPath = m_uiprjPath;
    input.projectDir = m_projectDir;
    input.settings = m_settings;
    input.pageLines = m_pageInfoList;
    m_lastBuild = buildDriver().run(input);
    m_buildRunning = false;
    m_autoSaveTimer->start(5000);
}

void MainWindow::on_actionClearPrj_triggered()
{
    if (!projectOpen())
        return;
    MakeBin::cleanProject(m_projectDir, [this](const QString &line) { textEdit->append(line); });
}

// --- the sibling tools -------------------------------------------------------------

void MainWindow::on_actionUartDebug_triggered()
{
    SiblingTools::start(AppPaths::appDir(), QStringLiteral("Vantile_Debugger"));
}

void MainWindow::on_actionFont_tool_triggered()
{
    SiblingTools::start(AppPaths::appDir(), QStringLiteral("GlyphForge"));
}

void MainWindow::on_actionImageNumber_triggered()
{
    SiblingTools::start(AppPaths::appDir(), QStringLiteral("SerialStamp"));
}

void MainWindow::on_actionToneForge_triggered()
{
    SiblingTools::start(AppPaths::appDir(), QStringLiteral("ToneForge"));
}

void MainWindow::on_actionEmulator_triggered()
{
    SiblingTools::start(AppPaths::appDir(), QStringLiteral("Vantile_Emulator"));
}

} // namespace vantile
