// Export variable: the two variable lists of the saved pages, as a build
// writes them, without building.

#include "app/MainWindow.h"

#include "build/BuildContext.h"
#include "export/VariableLists.h"

#include <QTextEdit>

namespace vantile {

void MainWindow::on_actionExport_variable_triggered()
{
    if (!projectOpen())
        return;
    BuildContext ctx;
    ctx.projectDir = m_projectDir;
    ctx.uiprjPath = m_uiprjPath;
    ctx.settings = m_settings;
    ctx.pageLines = m_pageInfoList;
    ctx.logSink = [this](const QString &line) { textEdit->append(line); };
    VariableLists::ExportVariableCsv(ctx);
    textEdit->append(QStringLiteral("CSV files are ready!"));
}

} // namespace vantile
