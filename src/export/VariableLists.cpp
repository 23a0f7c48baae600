#include "export/VariableLists.h"
#include "export/ExportPages.h"
#include "project/TextFiles.h"
#include "widgets/WidgetLine.h"

namespace vantile {

namespace VariableLists {

const char *const kTouchHeader = "PageID,WidgetName,Name    ,WriteAddr,Length,\n";
const char *const kDisplayHeader = "PageID,WidgetName,Name    ,WriteAddr,Length,ParameterAddr,Length\n";

namespace {

// Data types of one or two bytes; the bits are bits of a 16-bit word.
bool isShortType(int code)
{
    switch (code) {
    case 0:   // uchar
    case 1:   // ushort
    case 4:   // uchar_H8
    case 128: // char
    case 129: // short
    case 132: // char_H8
        return true;
    default:
        return code >= 64 && code <= 79; // bit0 ... bit15
    }
}

// One column of a row; a field the kind doesn't have gives a blank.
QString column(const EditBuffer &w, const ListColumn &c)
{
    if (c.form == ColumnForm::Fixed)
        return QString::fromLatin1(c.key);
    if (c.form == ColumnForm::Blank || !c.key || !w.has(c.key))
        return QStringLiteral(" ");
    switch (c.form) {
    case ColumnForm::Address:
        return addressText(quint16(w.number(c.key)));
    case ColumnForm::Decimal:
        return QString::number(w.number(c.key) + c.add);
    case ColumnForm::TypeCode:
        return QStringLiteral("0x")
               + QStringLiteral("%1").arg(ExportPages::wordNumber(w, c.key) & 0xFF, 2, 16, QLatin1Char('0')).toUpper();
    case ColumnForm::TypeLength:
        return isShortType(ExportPages::wordNumber(w, c.key)) ? QStringLiteral("2") : QStringLiteral("4");
    case ColumnForm::Text: {
        const int i = w.definition()->indexOf(c.key);
        const QString text = WidgetLine::lineText(w.definition()->fields[i], w.value(i));
        return text.isEmpty() ? QStringLiteral(" ") : text;
    }
    default:
        return QStringLiteral(" ");
    }
}

// The whole file at once: a failed write leaves the last one and says why.
void write(BuildContext &ctx, const QString &name, const QString &text)
{
    QString error;
    const QString path = ctx.path(name);
    if (!TextFiles::writeAtomically(path, text.toUtf8(), &error))
        ctx.log(QStringLiteral("Fail to write ") + path + QStringLiteral(": ") + error);
}

} // namespace

QStringList rowsOf(const EditBuffer &w, int pageIndex)
{
    const KindExports *x = ExportPages::exportsOf(w);
    if (!x || x->list == ExportList::None || (x->noRowWhenOn && w.isOn(x->noRowWhenOn)))
        return {};
    QList<QStringList> columns;
    if (x->rows) {
        columns = x->rows(w);
    } else {
        QStringList one;
        for (int i = 0; i < x->columnCount; ++i)
            one << column(w, x->columns[i]);
        columns << one;
    }
    const QStringList lead = {QString::number(pageIndex), w.objectName(), w.name()};
    QStringList rows;
    for (const QStringList &c : columns)
        rows << (lead + c).join(QLatin1Char(',')) + QLatin1Char('\n');
    return rows;
}

void ExportVariableCsv(BuildContext &ctx)
{
    QString touch = QString::fromLatin1(kTouchHeader);
    QString display = QString::fromLatin1(kDisplayHeader);
    if (ctx.pageLines.isEmpty())
        ctx.log(QStringLiteral("There aren't any variable to bin!"));
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        for (const EditBuffer &w : ExportPages::widgetsOf(ctx, row))
            (ExportPages::exportsOf(w)->list == ExportList::Touch ? touch : display) += rowsOf(w, row).join(QString());
    }
    write(ctx, QStringLiteral("DisplayWidget.csv"), display);
    write(ctx, QStringLiteral("TouchWidget.csv"), touch);
}

} // namespace VariableLists

} // namespace vantile
