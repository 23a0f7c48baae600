#pragma once
// Our picture-digit maker's core: renders the digits of an installed font
// (or cuts a picture strip) into the run of equal pictures that a picture
// number, an RTC or a timer shows, named for the Icon/ folder. The
// SerialStamp tool is its window and command line.

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

namespace vantile {

namespace DigitMaker {

// The signs of a run, in picture order: the ten digits, then the minus
// sign and the point of a picture number (first + 10, first + 11), then
// the colon of a clock (first + 12).
QString signs();
constexpr int kDigits = 10;

struct Options {
    QString family;                 // an installed font family
    int pixelSize = 32;             // character height in pixels, 4..255
    bool bold = false;
    QRgb color = qRgb(0, 0, 0);     // the ink
    bool transparent = true;        // else filled with background
    QRgb background = qRgb(255, 255, 255);
    int first = 0;                  // icon number of the digit 0
    QString name = QStringLiteral("digit");
};

struct Picture {
    int number = 0;      // icon number
    QString fileName;    // NNNN_<name><sign word>.png
    QImage image;        // ARGB32, the run's cell size
};

struct Run {
    QVector<Picture> pictures;
    QString error;       // why there are none
    bool ok() const { return error.isEmpty() && !pictures.isEmpty(); }
    QSize cellSize() const { return pictures.isEmpty() ? QSize() : pictures.first().image.size(); }
};

// "NNNN_<name>0" ... "NNNN_<name>9", then "<name>minus", "<name>point",
// "<name>colon", each with ".png"; NNNN = number in four digits.
QString fileName(int number, const QString &name, int index);

// The whole run from a font. The error names the option out of range
// (size, first number, name) or the family that is not installed.
Run render(const Options &options);

// A picture strip of `cells` equal cells (10 to 13, in the order of
// signs()), side by side, or one above the other when the strip is
// taller than wide. The strip's own colours are kept; an opaque
// background is laid under it. Only first and name of options count,
// besides the background.
Run cutStrip(const QImage &strip, const Options &options, int cells = kDigits);

// "0xRRGGBB", "RRGGBB" or "#RRGGBB".
bool parseColor(const QString &text, QRgb *rgb);

// The PNG bytes of one picture.
QByteArray pngBytes(const QImage &image);

// All pictures of the run in one row, for a preview.
QImage sheet(const Run &run);

// Files in dir that carry one of the run's numbers under another name:
// the icon block would take either, so they should go.
QStringList clashes(const Run &run, const QString &dir);

// Writes each picture as dir/fileName (dir is made when missing).
// False with *error naming the file on the first failure.
bool write(const Run &run, const QString &dir, QString *error = nullptr);

} // namespace DigitMaker

} // namespace vantile
