// The Help menu's manual and About box, and the state of the Tool menu's
// sibling programs.

#include "app/MainWindow.h"

#include "editors/DialogAbout.h"
#include "project/AppPaths.h"
#include "project/SiblingTools.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QUrl>

namespace vantile {

namespace {

// The Tool menu's sibling programs: action and the name looked for.
const char *const kSiblingTools[][2] = {
    {"actionUartDebug", "Vantile_Debugger"}, {"actionFont_tool", "GlyphForge"},
    {"actionImageNumber", "SerialStamp"},    {"actionToneForge", "ToneForge"},
    {"actionEmulator", "Vantile_Emulator"},
};

} // namespace

QString MainWindow::manualPath()
{
    // The manual as shipped beside a Windows installation, in the working
    // directory; else ours beside the executable, rendered when the build
    // had a converter, as text otherwise.
    const QString shipped = QDir::currentPath() + QStringLiteral("/Vantile_CH_V3.20.pdf");
    if (QFileInfo(shipped).isFile())
        return shipped;
    for (const char *name : {"manual.html", "manual.md"}) {
        const QString path = AppPaths::appDir() + QLatin1Char('/') + QLatin1String(name);
        if (QFileInfo(path).isFile())
            return path;
    }
    return shipped;
}

void MainWindow::on_actionDirections_for_use_triggered()
{
    // nothing is shown when the desktop can't open it
    QDesktopServices::openUrl(QUrl::fromLocalFile(manualPath()));
}

void MainWindow::on_actionAbout_triggered()
{
    // the title ends in the version: "Vantile V3.20A"
    const QString title = QLatin1String(kTitle);
    auto *about = new DialogAbout(title, title.section(QLatin1Char(' '), -1), buildDateTime(), this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    connect(about, &DialogAbout::Background_mask_Close_Signal_about, this, &MainWindow::Background_mask_Close);
    showMasked(about);
}

void MainWindow::updateToolActions()
{
    for (const auto &tool : kSiblingTools) {
        QAction *a = action(QLatin1String(tool[0]));
        if (!a)
            continue;
        const bool present = !SiblingTools::find(AppPaths::appDir(), QLatin1String(tool[1])).isEmpty();
        a->setEnabled(present);
        a->setToolTip(present ? a->text()
                              : tr("%1 is not installed beside the designer").arg(QLatin1String(tool[1])));
    }
}

} // namespace vantile
