#include "export/HeaderExport.h"
#include "export/ExportPages.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFileInfo>

namespace vantile {

namespace HeaderExport {

QString headerPath(const BuildContext &ctx)
{
    const QStringList projects =
        QDir(ctx.projectDir).entryList({QStringLiteral("*.uiprj")}, QDir::Files, QDir::Name);
    const QString file = projects.isEmpty() ? QFileInfo(ctx.uiprjPath).fileName() : projects.first();
    const QString name = file.endsWith(QLatin1String(".uiprj")) ? file.chopped(6) : file;
    return ctx.path(QStringLiteral("UI_") + name + QStringLiteral(".h"));
}

void ExportHeader(BuildContext &ctx)
{
    if (ctx.pageLines.isEmpty()) {
        ctx.log(QStringLiteral("There aren't any page to bin!"));
        return;
    }
    QString text;
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        text += QStringLiteral("//PAGE:") + PageInfo::parse(ctx.pageLines[row]).name + QLatin1Char('\n');
        for (const EditBuffer &w : ExportPages::widgetsOf(ctx, row)) {
            const KindExports *x = ExportPages::exportsOf(w);
            if (!x->headerPrefix || !w.has(x->headerAddress))
                continue;
            text += QString::fromLatin1(x->headerPrefix) + QString::number(row) + QLatin1Char('_') + w.name()
                    + QStringLiteral("         ") + addressText(quint16(w.number(x->headerAddress)))
                    + QLatin1Char('\n');
        }
    }
    const QString path = headerPath(ctx);
    QString error;
    if (!TextFiles::writeAtomically(path, text.toUtf8(), &error))
        ctx.log(QStringLiteral("Fail to write ") + path + QStringLiteral(": ") + error);
}

} // namespace HeaderExport

} // namespace vantile
