#pragma once
// The walk the host lists share: the widgets of one page, read from its
// saved page file and parsed by their kinds, with their kinds' export data.

#include "build/BuildContext.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindExports.h"

#include <QList>

namespace vantile {

namespace ExportPages {

// The widgets of the page in row `row` of the page list whose kinds give
// the host something, in the order of the file's lines. The page's own
// "Page:" line, lines of no known kind and kinds without export data give
// nothing. A page file that can't be read gives no widgets and "Can't open
// this file:" in the log.
QList<EditBuffer> widgetsOf(BuildContext &ctx, int row);

// The export data of a parsed widget's kind; never nullptr for the widgets
// widgetsOf returns.
const KindExports *exportsOf(const EditBuffer &widget);

// The number a word field stands for in its table (a data type code, a
// run state); 0 for a field without a table.
int wordNumber(const EditBuffer &widget, const char *key);

} // namespace ExportPages

} // namespace vantile
