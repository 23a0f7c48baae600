#pragma once
// The kinds that show a numeric variable: number (digits drawn with a font)
// and pngNumber (one picture of Icon/ per digit). Both are display records
// that hold an anchor point instead of a rectangle, and both put their
// initial value into the variable image in the form their data type asks.

#include "widgets/FieldSchema.h"
#include "widgets/Records.h"

namespace vantile {

class VariableImage;

namespace NumberKinds {

extern const KindDef number;
extern const KindDef pngNumber;

// The value of `defaultNumber` with `decimalDigit` digits behind the point:
// "12.3" with 2 gives 1230, "-1.5" with 1 gives -15. A text whose only "."
// is its first character counts as having none (".5" with 1 gives 50).
// Non-digits are skipped; the arithmetic wraps at 64 bits.
qint64 defaultValue(const QString &text, int decimalDigit);

// Stores a value at word address `writeAddr` in the form of a data type
// value (0 uchar, 1 ushort, 2 uint, 3 longlong, 4 uchar_H8, +128 signed,
// 64 + n bit n), high byte first, in two's complement at the type's width.
// A value that would pass the image's end is refused with the write-address
// message in errorText.
bool storeValue(VariableImage &image, const QString &widgetName, quint16 writeAddr, int dataType,
                qint64 value, QString *errorText);

// The anchor point of the record: X, X + W / 2 or X + W by the alignment's
// column (left, middle, right), Y as it is, turned with the page's picture.
Point16 anchor(int x, int y, int w, int alignment, const RecordContext &ctx);

} // namespace NumberKinds

} // namespace vantile
