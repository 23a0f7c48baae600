// Help > Check Project and Tool > Variable control: the project check
// leaves its report in Project-error-information.txt, the conversion
// rewrites the page files and their text copies in Variablecontrol/.

#include "app/MainWindow.h"

#include "app/Prompts.h"
#include "export/ProjectCheck.h"
#include "export/VariableControl.h"
#include "project/PageFile.h"

#include <QTextEdit>

namespace vantile {

void MainWindow::on_actionCheckProject_triggered()
{
    if (!projectOpen())
        return;
    // The open page is checked as it stands in the designer, saved or not;
    // the others as saved.
    const int openRow = m_currentPageRow;
    const ProjectCheck::Report report = ProjectCheck::run(
        m_projectDir, m_pageInfoList, m_settings, [this](const QString &line) { log(line); },
        [this, openRow](int row, QStringList *lines) {
            if (row != openRow)
                return false;
            *lines = m_currentPageLines;
            return true;
        });
    const QString file = m_projectDir + QLatin1String(ProjectCheck::kReportFile);
    QString reason;
    if (!ProjectCheck::writeReport(m_projectDir, report.text, &reason))
        log(QStringLiteral("Fail to create ") + file + QStringLiteral(" (") + reason + QLatin1Char(')'));
    if (report.clean()) {
        log(tr("Check Project: no problems found."));
        return;
    }
    for (const QString &line : report.text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        log(line);
    Prompts::message(this, QStringLiteral("Warning"),
                     tr("Check Project found problems: they are listed in the log and in %1.")
                         .arg(QLatin1String(ProjectCheck::kReportFile)),
                     file);
}

void MainWindow::on_actionVariable_control_triggered()
{
    // the conversion reads saved page files: the open page is saved first
    if (projectOpen() && !saveCurrentPage()) {
        log(tr("Variable control cancelled: the open page was not saved"));
        return;
    }
    const VariableControl::Result result = VariableControl::ExportVariableControl(
        m_uiprjPath, m_projectDir, m_settings, projectOpen() ? m_pageInfoList : QStringList(),
        [this](const QString &line) { log(line); },
        [this](const QString &title, const QString &text) { Prompts::message(this, title, text); });
    // What the conversion wrote is the session's own: no "changed on disk" later.
    for (const QString &path : result.written)
        m_fileStamps.note(path);
    if (!projectOpen())
        return;
    const QString cfg = pageFilePath(m_currentPageRow);
    if (result.written.contains(cfg) && !PageFile::sameContent(cfg, m_supplierKey, m_currentPageLines)) {
        clearLiveWidgets();
        loadPage(cfg);
    }
}

} // namespace vantile
