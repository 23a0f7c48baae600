#include "export/ExportPages.h"
#include "build/PageChecks.h"
#include "widgets/WidgetLine.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace ExportPages {

QList<EditBuffer> widgetsOf(BuildContext &ctx, int row)
{
    QList<EditBuffer> widgets;
    const QString path = ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfg")));
    for (const QString &line : PageChecks::readPage(path, PageChecks::pageKey(ctx.settings), &ctx)) {
        const WidgetKind kind = WidgetKinds::kindOfLine(line);
        if (kind == WidgetKind::None)
            continue;
        EditBuffer widget;
        if (WidgetLine::parse(line, kind, widget) != ParseStatus::Ok || !exportsOf(widget))
            continue;
        widgets.append(widget);
    }
    return widgets;
}

const KindExports *exportsOf(const EditBuffer &widget)
{
    return widget.definition() ? widget.definition()->exports : nullptr;
}

int wordNumber(const EditBuffer &widget, const char *key)
{
    const FieldDef *f = widget.definition() ? widget.definition()->find(key) : nullptr;
    return f && f->table ? f->table->valueOf(widget.text(key)) : 0;
}

} // namespace ExportPages

} // namespace vantile
