#pragma once
// The bitmap font file (FontBin/NN_...Font....bin), in one place for the
// build, the canvas and our font maker.
//
//   0    2  encoding tag, two letters ("GB", "GK", "BG", "UN", "AS", "un",
//           "GT", "TF", "SS"; any other tag is encoding 5)
//   2    1  character width in pixels      3  1  character height
//   4    2  first code (little-endian)     6  2  last code
//   8    1  depth: 0..4 = 1, 2, 4, 8, 16 bits a pixel; any other value is 0
//   9   95  advance widths of the codes 0x20..0x7E (0: the full width)
//           Encodings 5, 6 and 9 keep instead, in bytes 9..72, the family
//           name of an outline font (UTF-8, NUL-padded) and in byte 73 its
//           style bits (bold, italic, underline).
//   104     one record for every code from the first to the last: "un" and
//           "SS" records begin with the advance width of the glyph; then the
//           rows top to bottom, each ceil(width x bits / 8) bytes with the
//           leftmost pixel in the most significant bits. 16-bit fonts hold
//           RGB565 pixels, low byte first.
//
// A file of fewer than 105 bytes is no font. Nothing here needs QtWidgets.

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QString>
#include <QVector>

namespace vantile {

namespace FontFile {

constexpr int kHeaderSize = 104;   // the records begin here
constexpr int kMinFileSize = 105;  // a shorter file is invalid
constexpr int kAsciiFirst = 0x20;
constexpr int kAsciiCount = 95;    // 0x20..0x7E
constexpr int kWidthsAt = 9;
constexpr int kFamilyAt = 9;
constexpr int kFamilySize = 64;
constexpr int kStyleAt = 73;
// A font file read whole (canvas, font maker) is refused above this size.
constexpr qint64 kMaxFileSize = qint64(256) << 20;

enum Style : int { Bold = 1, Italic = 2, Underline = 4 };

// The encoding code of a tag: "GB" 0, "GK" 1, "BG" 2, "UN" 3, "AS" 4,
// "un" 6, "GT" 7, "TF" 8, "SS" 9, anything else 5.
int encodingOfTag(const QByteArray &tag);
// Bits a pixel of a depth byte (a depth above 4 counts as 0).
int bitsPerPixel(int depth);
// "un" and "SS" fonts: each record leads with its advance width.
bool hasAdvanceByte(int encoding);
// Encodings 5, 6 and 9 name an outline font in the header.
bool hasFamily(int encoding);

// The character codes of a text in a font of this encoding: "AS" its
// bytes; "GB", "GK", "BG" (and 5, 7, 8) one code per byte below 0x80, else
// lead x 256 + trail of the character's two-byte form; 3, 6 and 9 the
// UTF-16 units. The same bytes the panel finds in variable memory.
QVector<int> codesOf(const QString &text, int encoding);

struct Header {
    QByteArray tag = QByteArrayLiteral("AS");
    int width = 0;
    int height = 0;
    int firstCode = 0;
    int lastCode = 0;
    int depth = 0;                      // 0..4
    quint8 widths[kAsciiCount] = {};    // encodings without a family name
    QString family;                     // encodings 5, 6, 9
    int style = 0;                      // Style bits, encodings 5, 6, 9

    int encoding() const { return encodingOfTag(tag); }
    int bits() const { return bitsPerPixel(depth); }
    int rowBytes() const;
    // Bytes of one record, the advance byte of "un" / "SS" included.
    int recordBytes() const;
    // Records from the first code to the last; 0 when the last is below.
    qint64 recordCount() const;
    // Header and every record.
    qint64 fileSize() const { return kHeaderSize + recordCount() * recordBytes(); }
    // Offset of the record of a code in the file, -1 outside the range.
    qint64 recordOffset(int code) const;
    // Why no glyph can be read from this header, or empty: a character of
    // no pixels, or a last code below the first.
    QString damage() const;

    // Reads the first kHeaderSize bytes; false when there are fewer.
    static bool parse(const QByteArray &bytes, Header *header);
    // The kHeaderSize bytes of the header.
    QByteArray bytes() const;
};

// What reading a font file's header found.
struct HeaderRead {
    enum Status { Ok, Unreadable, Short, Damaged };
    Status status = Unreadable;
    Header header;
    qint64 fileSize = 0;
    QString reason;   // for Unreadable and Damaged
    bool ok() const { return status == Ok; }
};

// The header of a font file on disk: a regular file of at least
// kMinFileSize bytes whose header is not damaged. Only the header is read.
HeaderRead readHeader(const QString &path);

// A whole font, for drawing its glyphs.
class Font
{
public:
    Font() = default;
    // False (and *reason) when the bytes are short or the header damaged.
    bool load(const QByteArray &bytes, QString *reason = nullptr);
    // Reads the file (a regular file of at most kMaxFileSize bytes) and loads it.
    bool open(const QString &path, QString *reason = nullptr);

    bool isValid() const { return m_valid; }
    const Header &header() const { return m_header; }

    // True when the code is in the font's range and its record is in the file.
    bool hasGlyph(int code) const;
    // The record of a code, advance byte included; empty without one.
    QByteArray record(int code) const;
    // Coverage 0..1 of the pixel at (x, y); 0 outside the cell or the font.
    // For 16-bit fonts: 1 for any pixel that is there.
    double coverage(int code, int x, int y) const;
    // The raw pixel value (0..2^bits - 1, or the RGB565 value at 16 bits).
    int pixel(int code, int x, int y) const;
    // Advance width in pixels: the record's byte for "un" / "SS"; else the
    // width table for 0x20..0x7E (0 there means the full width) and the
    // full width for any other code, also for codes outside the font.
    int advance(int code) const;

private:
    QByteArray m_bytes;
    Header m_header;
    bool m_valid = false;
};

// A line of text drawn with a bitmap font: the codes side by side, each
// advancing by its advance width, on a transparent image of the font's
// height; a pixel's coverage sets the alpha of `colour` (16-bit fonts draw
// their own colours). The canvas and the font maker's preview draw so.
QImage drawCodes(const Font &font, const QVector<int> &codes, QRgb colour);

// One glyph for the writer.
struct Glyph {
    QByteArray coverage;    // width x height bytes, rows top down, 0..255 (depths 0..3)
    QVector<quint16> rgb;   // width x height RGB565 pixels (depth 4)
    int advance = -1;       // pixels; -1 is the full width
};

// A whole font file: the header as given (for encodings without a family
// the advances of the glyphs 0x20..0x7E go into its width table) and a
// record for every code of its range; a code without a glyph is an empty
// cell of the full width. Coverage is rounded to the depth's levels.
QByteArray write(const Header &header, const QHash<int, Glyph> &glyphs);

} // namespace FontFile

} // namespace vantile
