#pragma once
// UI_<name>.h: the variable addresses of the project's widgets as C
// definitions for the host programmer. For each page in list order a line
// "//PAGE:" and the page's name, then one line for each widget of a kind
// with an address of its own, in the order of the page file:
//   #define  _LABEL_PAGE0_title         0x1000
// (the kind's prefix, the page's position in the list, "_", the widget's
// name, nine blanks, its address). UTF-8 without a byte order mark, "\n"
// line ends, rewritten whole by every build.

#include "build/BuildContext.h"

#include <QString>

namespace vantile {

namespace HeaderExport {

// "UI_" + the name of the first "*.uiprj" of the project directory (by
// name), ".uiprj" taken off, + ".h"; the build's own project when the
// directory holds none.
QString headerPath(const BuildContext &ctx);

// Writes the header. With no pages nothing is written and the log says
// "There aren't any page to bin!".
void ExportHeader(BuildContext &ctx);

} // namespace HeaderExport

} // namespace vantile
