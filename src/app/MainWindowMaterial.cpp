// File > "OTA Update Addr Setting" and Help > "File Timestamp": two small
// dialogs over the mask. The OTA addresses live in the project's
// Addr_Info.txt, which the dialog reads and writes itself; the timestamp
// lives in the project's settings and is written to the .ini at once, so
// that the command-line build stamps the same time as Build project.

#include "app/MainWindow.h"

#include "build/FlashLayout.h"
#include "editors/DialogTime.h"
#include "editors/Dialogmaterialaddr.h"

namespace vantile {

Dialogmaterialaddr *MainWindow::materialAddrDialog()
{
    auto *d = findChild<Dialogmaterialaddr *>(QStringLiteral("Dialogmaterialaddr"), Qt::FindDirectChildrenOnly);
    return d ? d : new Dialogmaterialaddr(this);
}

DialogTime *MainWindow::timeDialog()
{
    auto *d = findChild<DialogTime *>(QStringLiteral("DialogTime"), Qt::FindDirectChildrenOnly);
    if (!d) {
        d = new DialogTime(this);
        connect(d, &DialogTime::Time_Update_to_MainWindow, this, &MainWindow::Time_Update_from_Dialog);
        connect(d, &DialogTime::Background_mask_Close_Signal_list, this, &MainWindow::Background_mask_Close);
    }
    return d;
}

void MainWindow::on_actionAddr_Setting_triggered()
{
    if (!projectOpen())
        return;
    Dialogmaterialaddr *d = materialAddrDialog();
    d->retranslate();
    d->openFor(m_projectDir, Flash::FrontLayout::of(m_settings).alignUnit(), Flash::flashLimit(m_settings.flashSize));
    showMasked(d);
}

void MainWindow::on_actionFile_Timestamp_triggered()
{
    if (!projectOpen())
        return;
    DialogTime *d = timeDialog();
    d->retranslate();
    d->Time_Update_from_MainWindow(m_settings.compilationTimeFixed, m_settings.compileDateTime);
    showMasked(d);
}

void MainWindow::Time_Update_from_Dialog(bool fixed, const QDateTime &time)
{
    if (!projectOpen())
        return;
    auto store = [this, fixed, time] {
        m_settings.compilationTimeFixed = fixed;
        if (time.isValid())
            m_settings.compileDateTime = time;
    };
    store();
    const QString ini = iniPathFor(m_uiprjPath);
    QStringList theirs;
    if (!confirmOverwrite({ini}, &theirs)) {
        log(tr("The timestamp waits for Save All: %1 was not written").arg(ini));
        return;
    }
    if (!theirs.isEmpty()) { // their settings, with the timestamp just set
        reloadFromDisk(false, true);
        store();
    }
    if (writeSettings())
        log(fixed ? tr("Builds are stamped %1").arg(time.toString(QStringLiteral("yyyy/MM/dd hh:mm:ss")))
                  : tr("Builds are stamped with the present time"));
}

} // namespace vantile
