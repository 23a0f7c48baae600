#pragma once
// The fallback BMP reader. It is used when the image library refuses a
// ".bmp" file, which happens with files from some panel tools: header
// fields the library is strict about (planes, header size, bit masks) are
// read leniently here. Uncompressed 8-, 16-, 24- and 32-bit files only.

#include <QByteArray>
#include <QImage>
#include <QString>

namespace vantile {

namespace ImageBmp {

// The 14-byte file header plus the 40-byte information header.
constexpr int kHeaderSize = 54;

// True for a path the fallback reader may take: the name ends in ".bmp".
bool acceptsPath(const QString &path);

// Decodes the bytes of a BMP file into an ARGB32 image, with the same pixel
// values as the image library gives for the files it reads: 16-bit channels
// are widened by shifting (5 bits x 8, 6 bits x 4), 32-bit pixels are opaque
// unless the header carries an alpha mask. A null image on failure, with
// the reason in *error.
QImage decode(const QByteArray &bytes, QString *error = nullptr);

} // namespace ImageBmp

} // namespace vantile
