#pragma once
// What a kind gives the lists for the host programmer, described as data
// beside its fields: the row of the variable lists (TouchWidget.csv or
// DisplayWidget.csv), the rows of the serial command list and the line of
// the address header. The exporters (src/export) only read these tables.

#include <QList>
#include <QString>
#include <QStringList>

namespace vantile {

class EditBuffer;

// The list a kind's rows go to.
enum class ExportList : quint8 { None, Display, Touch };

// How one column of a list row is made.
enum class ColumnForm : quint8 {
    Address,    // "0x" + four upper-case hex digits of a numeric field
    Decimal,    // a numeric field in decimal, plus `add`
    Fixed,      // the fixed text `text` (record sizes, "2")
    Blank,      // an empty column: one blank
    TypeCode,   // "0x" + two hex digits: the data type code of a word field
    TypeLength, // "2" for a data type of one or two bytes, else "4"
    Text,       // a field's text as the line holds it (a page name)
};

struct ListColumn {
    ColumnForm form = ColumnForm::Blank;
    const char *key = nullptr;  // the field; the fixed text for Fixed
    int add = 0;                // Decimal: added to the number
};

constexpr ListColumn addressColumn(const char *key) { return {ColumnForm::Address, key, 0}; }
constexpr ListColumn decimalColumn(const char *key, int add = 0) { return {ColumnForm::Decimal, key, add}; }
constexpr ListColumn fixedColumn(const char *text) { return {ColumnForm::Fixed, text, 0}; }
constexpr ListColumn blankColumn() { return {ColumnForm::Blank, nullptr, 0}; }
constexpr ListColumn typeCodeColumn(const char *key) { return {ColumnForm::TypeCode, key, 0}; }
constexpr ListColumn typeLengthColumn(const char *key) { return {ColumnForm::TypeLength, key, 0}; }
constexpr ListColumn textColumn(const char *key) { return {ColumnForm::Text, key, 0}; }

// The columns after PageID, WidgetName and Name of each row of a kind whose
// rows are not one fixed set of columns (the encoder's by its entries).
using ListRows = QList<QStringList> (*)(const EditBuffer &widget);

// How the value of a serial command row is taken and encoded.
enum class ValueForm : quint8 {
    Number,       // a field's text as a number; element type from the data type word in `type`
    TypedNumber,  // the same, the element type from the word field named by `type`
    WordNumber,   // a word field turned into its number by its table; type word in `type`
    Text,         // a text; the text mode follows from the widget's `encoding`
    Utf8Text,     // a text, always sent as UTF-8
};

struct SerialRow {
    const char *addressKey;
    const char *valueKey;
    ValueForm form;
    const char *type = nullptr;     // a data type word, or the key of one (TypedNumber)
    const char *rowName = nullptr;  // the Name column; nullptr: the widget's name
    bool skipWithoutAddress = false;// no row when the address is 0xFFFF ("FFFF")
};

struct KindExports {
    ExportList list = ExportList::None;
    const ListColumn *columns = nullptr;
    int columnCount = 0;
    ListRows rows = nullptr;              // instead of `columns`
    const char *noRowWhenOn = nullptr;    // a switch that, when on, takes the widget off the list
    const SerialRow *serialRows = nullptr;
    int serialRowCount = 0;
    const char *headerPrefix = nullptr;   // "#define  _LABEL_PAGE"; nullptr: no header line
    const char *headerAddress = nullptr;  // the field the header line gives
};

// "0x" and four upper-case hexadecimal digits: an address column.
inline QString addressText(quint16 value)
{
    return QStringLiteral("0x") + QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0')).toUpper();
}

} // namespace vantile
