#pragma once
// Text as the panel stores it, by the encoding code of a font (the font
// header's tag: 0 GB2312, 1 GBK, 2 BIG5, 3 Unicode, 4 Ascii, 6 unicode,
// 9 Custom; 5, 7 and 8 other). Used for the initial texts in variable
// memory, the static text block and the language block.

#include <QByteArray>
#include <QString>

namespace vantile {

namespace TextEncoding {

// 3, 6 and 9: text goes to variable memory as 16-bit units.
bool isWide(int encoding);

// The bytes of a text for a font of this encoding: for the wide family
// UTF-16 units, each high byte first; for every other encoding the GBK
// bytes, which encoding 2 converts further to BIG5. Characters the target
// can't hold become the codec's substitute.
QByteArray encode(const QString &text, int encoding);

} // namespace TextEncoding

} // namespace vantile
