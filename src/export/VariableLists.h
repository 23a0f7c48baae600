#pragma once
// The two variable lists for the host programmer, TouchWidget.csv for the
// widgets that take input and DisplayWidget.csv for those that show
// something: one row per widget (an encoder one per address it writes),
// "PageID,WidgetName,Name" and then the columns of its kind (KindExports.h).
// UTF-8 without a byte order mark, "\n" line ends, commas without quoting:
// a name holding a comma shifts the columns behind it. An empty column is
// one blank.

#include "build/BuildContext.h"
#include "widgets/EditBuffer.h"

#include <QString>
#include <QStringList>

namespace vantile {

namespace VariableLists {

extern const char *const kTouchHeader;   // "PageID,WidgetName,Name    ,WriteAddr,Length,\n"
extern const char *const kDisplayHeader; // "PageID,WidgetName,Name    ,WriteAddr,Length,ParameterAddr,Length\n"

// The rows of one widget on the page at list position `pageIndex`, each
// with its "\n"; none for a kind without rows or a label whose text comes
// from the language table.
QStringList rowsOf(const EditBuffer &widget, int pageIndex);

// Writes both files into the project, each whole: the header, then for
// each page in list order its rows in the order of its lines. With no
// pages both hold their header only and the log says "There aren't any
// variable to bin!".
void ExportVariableCsv(BuildContext &ctx);

} // namespace VariableLists

} // namespace vantile
