#pragma once
// The operations every kind shares, derived from its field description:
// parse a line, write a line, create at a drop, fill the parameter rows,
// apply an edit of the rows, store the line in the page's lines.

#include "widgets/EditBuffer.h"

#include <QPair>
#include <QSize>
#include <QStringList>
#include <QVector>
#include <functional>

namespace vantile {

enum class ParseStatus {
    Ok,
    NoSchema,   // a known kind whose fields aren't described yet; kept verbatim
    NotAWidget, // "Page:", the merge line, anything that isn't a widget
};

// (label, value text) of one parameter row.
using TableRow = QPair<QString, QString>;

// What the rows need from the project to show some values.
struct RowContext {
    // The file of FontBin/ for a font id; empty when there is none.
    std::function<QString(int fontId)> fontFileName;
};

namespace WidgetLine {

// Reads a line of any kind. Fields the line doesn't reach keep their
// defaults; the index comes from the object name. With NoSchema the buffer
// holds the kind, the object name, the index and the raw line.
ParseStatus parse(const QString &line, EditBuffer &out);
// The same with the kind already known (a static label parsed as a label).
ParseStatus parse(const QString &line, WidgetKind kind, EditBuffer &out);

// The line of a buffer; a buffer without schema gives its raw line.
QString write(const EditBuffer &widget);

// The text of one field as the line holds it.
QString lineText(const FieldDef &f, const FieldValue &v);
// The value of one field read from its line text.
FieldValue readLineText(const FieldDef &f, const QString &text);

// A new widget: object name prefix + index, `name` the same, the kind's
// defaults, and the drop rectangle in panel pixels.
EditBuffer createNew(WidgetKind kind, quint32 index, const QRect &dropRect);

// Headers of the parameter table: labels of Parameter and Data.
QStringList headerLabels(int language);
// One row per parameter in row order; row 0 is `name`. Empty without schema.
QVector<TableRow> tableRows(const EditBuffer &widget, int language, const RowContext &ctx = {});
// Whether a row of the table shows: false for a row whose address field
// (a timer's write pair) holds 0xFFFF. Hidden rows keep their cells.
bool rowShown(const EditBuffer &widget, int row);
// The value text of one row.
QString rowText(const FieldDef &f, const FieldValue &v, const RowContext &ctx = {});

// Applies an edit: `cells` are column 1 of the rows in row order. Each cell
// is put into the line form of its field (fields without a row keep their
// value), the line is read back as a line is, a locked widget (lockState 2)
// gets its X, Y, W, H back, and the geometry is clamped to the page's
// picture: W and H at most its size, X + W and Y + H within it. Last comes
// the kind's own rule. Returns false for a buffer without schema.
bool applyEdit(EditBuffer &widget, const QStringList &cells, const QSize &pagePicture);

// Replaces the first line that begins with the object name and ":", or
// appends the line when there is none. Returns true when it replaced.
bool storeLine(QStringList &pageLines, const EditBuffer &widget);

} // namespace WidgetLine

} // namespace vantile
