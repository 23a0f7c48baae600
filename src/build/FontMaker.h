#pragma once
// Our font maker's core: renders the glyphs of an installed font at a pixel
// size into a bitmap font file (FontFile), for any of the panel's
// encodings. The GlyphForge tool is its window and command line.

#include "build/FontFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vantile {

namespace FontMaker {

struct Options {
    QString family;            // an installed font family
    int pixelSize = 24;        // character height in pixels
    int depthBits = 1;         // 1, 2, 4 or 8
    QString encoding = QStringLiteral("ASCII"); // one of encodingNames()
    int firstCode = 0x20;
    int lastCode = 0x7E;
    bool bold = false;
};

// "ASCII", "GB2312", "GBK", "BIG5", "Unicode".
QStringList encodingNames();
// The font file's tag for an encoding name; empty for an unknown name.
QByteArray tagOf(const QString &encodingName);
// The character a code stands for in a font of this encoding code (the
// FontFile codes): "AS" a byte, the two-byte encodings a byte below 0x80 or
// lead x 256 + trail, the wide ones a UTF-16 unit. Empty when the code is
// no character there.
QString characterOf(int code, int encoding);
// The header's depth byte for 1, 2, 4 or 8 bits; -1 for any other.
int depthOf(int bits);

// Renders the font. Empty bytes and *error when an option is out of range
// (unknown encoding or depth, size outside 4..255, a range that is
// reversed, outside 0..0xFFFF, or above 65536 codes).
QByteArray make(const Options &options, QString *error = nullptr);

// "NN_<name>Font.bin", the name the build looks for in FontBin/.
QString fileName(int id, const QString &name);

} // namespace FontMaker

} // namespace vantile
