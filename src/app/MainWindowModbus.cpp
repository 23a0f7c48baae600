// The Modbus command list of the project (Tool > Modbus) and its part in a
// build: before the build reads command.list, the list's unsaved rows are
// written to it.

#include "app/MainWindow.h"

#include "editors/DialogModbus.h"

#include <QDir>

namespace vantile {

DialogModbus *MainWindow::modbusDialog()
{
    if (!m_dialogModbus) {
        m_dialogModbus = new DialogModbus(this);
        connect(this, &MainWindow::SaveCommandList, m_dialogModbus, &DialogModbus::SaveCommandList_automatic);
        // Only the list of the project being built is saved: the dialog may
        // still show the list of a project opened before.
        buildDriver().setStep(BuildStep::SaveCommandList, [this](BuildContext &ctx) {
            if (m_dialogModbus && !m_dialogModbus->projectDir().isEmpty()
                && QDir(m_dialogModbus->projectDir()) == QDir(ctx.projectDir))
                emit SaveCommandList();
        });
    }
    return m_dialogModbus;
}

void MainWindow::on_actionModbus_triggered()
{
    if (!projectOpen())
        return;
    modbusDialog()->openFor(m_projectDir);
}

} // namespace vantile
