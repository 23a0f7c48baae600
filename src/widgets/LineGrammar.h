#pragma once
// The text grammar of a widget line, "objectName:field,field,...,field;",
// and the readers of its fields. Readers never fail: what can't be read
// gives 0 (or the reader's stated default) and the line loads all the same.

#include <QRgb>
#include <QString>
#include <QStringList>

#include <functional>

namespace vantile {

namespace LineGrammar {

struct Parts {
    QString objectName; // text before the first ":"
    QStringList fields; // between ":" and the first ";"; empty when none
};

// Splits a line. Reading stops at the first ";" (or the end). A line
// without ":" is all object name and has no fields.
Parts split(const QString &line);
QString join(const QString &objectName, const QStringList &fields);
// The line with field `pos` (0 is the first after ":") replaced by `text`
// and every other character as it stands. A line that ends before `pos`
// is first given the missing fields, each from `fill(i)`. A line without
// fields (no ":" before the first ";") is returned unchanged.
QString setField(const QString &line, int pos, const QString &text,
                 const std::function<QString(int)> &fill = {});

// Decimal field: only the digits count; a sign or anything else is
// dropped. No digits, or more than fit in 64 bits, give 0.
qint64 readDecimal(const QString &field);

// Hexadecimal field: the text after the first "x" or "X" up to a "/" or
// the end; digits in either case, other characters skipped, the first 8
// digits count. No "x" gives 0, and so does a field that ends at the "x".
quint32 readHex(const QString &field);
// The same, except that a field without "x" gives 0xFFFF (no address).
quint32 readHexOrNone(const QString &field);

QString hex16(quint32 value); // "0x" + 4 upper-case digits
QString hex24(quint32 value); // "0x" + 6 upper-case digits

// Switch: only the exact word "Enable" is on.
bool isEnable(const QString &word);
QString switchWord(bool on);

// Text that may hold "," ";" or line breaks: "*Hex:" and two upper-case
// digits per UTF-8 byte. A field without the mark is taken as it stands.
bool isHexText(const QString &field);
QString toHexText(const QString &text);
QString fromHexText(const QString &field);

// "RGBColor(r,g,b)" with decimal components. A text without "RGBColor"
// reads as opaque black; a missing component reads as 0, and a component
// above 255 as 255.
QRgb readRgbColor(const QString &text);
QString rgbColorText(QRgb colour);

// The slot number of an object name: its digits, at most the first 8.
quint32 indexOfName(const QString &objectName);

// Number at the head of a media file name: the first scanChars characters
// are scanned, "_" ends the scan, digits are kept and other characters
// skipped; exactly `digits` digits give their value, anything else -1.
int leadingNumber(const QString &name, int scanChars, int digits);
int iconNumber(const QString &name); // "0012_on.png" -> 12
int gifNumber(const QString &name);  // gif files are numbered like icons
int fontNumber(const QString &name); // "03_Font24.bin" -> 3
// Page reference: the number formed by all its digits, at most 8 of them;
// -1 when it has none.
int pageNumber(const QString &reference);
// Record field of a reference number: 0xFFFF for a negative one.
quint16 refField(qint64 number);

} // namespace LineGrammar

} // namespace vantile
