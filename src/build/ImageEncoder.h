#pragma once
// The image encoder: turns a picture into the bytes the panel draws from
// flash. It turns the picture for the panel's rotation (the firmware never
// rotates), packs it in one of the panel pixel formats, pads rows for Nand
// flash and compresses the "zip" formats into the VC container (ImageZip.h).
// The picture, icon and gif blocks all call it.

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <functional>

namespace vantile {

class ProjectSettings;

// The format code stored beside every encoded image.
enum ImageFormat : int {
    FormatRgb565 = 0,       // "RGB565", "RGB888": opaque, 2 or 3 bytes
    FormatSoftPng = 1,      // "softpng": value 0 is transparent
    FormatArgb4444 = 2,     // "aRGB4444"
    FormatRgb565Zip = 3,    // "RGB565_zip"
    FormatSoftPngZip = 4,   // "softpng_zip"
    FormatArgb4444Zip = 5,  // "aRGB4444_zip"
    FormatArgb8888 = 6,     // "aRGB8888": B, G, R, A
    FormatJpg = 7,          // "jpg": the file's own bytes
    FormatArgb8565 = 8,     // "aRGB8565": RGB565 low, high, A
    FormatZoomIn = 9,       // "ZoomIN"
    FormatPlainColour = 16, // a plain colour background, no pixel data
    FormatUnknownName = 32, // a name not in the table
    FormatUnreadable = 255  // the image could not be read
};

// The build-wide inputs of the encoder.
struct EncodeOptions {
    int rotation = 0;      // 0 none, 1 clockwise, 2 half turn, 3 counter-clockwise
    bool rgb888 = false;   // the panel has 24-bit colour
    int controller = 0;    // chip index, 10 counted as 8
    bool nand = false;     // rows padded to a multiple of 4 pixels
    bool byteSwap = false; // format 0 words high byte first
    // Called once a row by the 24- and 32-bit packers (and aRGB8565), where
    // the designer lets its event loop run. The encoder keeps no state
    // between calls, so nothing breaks if an encoding starts from there.
    std::function<void()> perRow;

    // The flags as a build takes them from the project settings: chip 10
    // counts as 8; Nand only on chips 3 and 4 with flash type index 0.
    static EncodeOptions fromSettings(const ProjectSettings &settings);
};

// One encoded image. `bytes.size()` is the length that goes into the
// resource tables; for the codes 3, 4, 5, 7 and 8 it is always even (an odd
// length gets one 0xFF byte). Width and height are those after rotation,
// without Nand padding.
struct EncodedImage {
    int format = FormatUnreadable;
    int width = 0;
    int height = 0;
    QByteArray bytes;
    bool compressed = false; // the bytes are a VC container
    QString error;           // why the image could not be read

    bool isValid() const { return format != FormatUnreadable; }
    int length() const { return bytes.size(); }
};

namespace ImageEncoder {

// Exact comparison with the format names; "RGB565" and "RGB888" give 0,
// "ZoomIN" 9, and any name not in the table 32.
int nameToFormat(const QString &name);

// True as soon as one pixel's alpha is below 255.
bool hasTransparency(const QImage &image);

// Loads a picture file: the format is judged by the content; when the
// library refuses it, a ".bmp" file goes to the fallback BMP reader. Only
// regular files are read, and a picture whose declared size is refused
// (MediaFiles::sizeRefusal, with `panel` the panel's size when known) is
// not decoded. A null image on failure, with the reason in *error.
// *fileBytes receives the file.
QImage load(const QString &path, QString *error = nullptr, QByteArray *fileBytes = nullptr,
            const QSize &panel = QSize());

// The size of a picture after turning it for the panel.
QSize rotatedSize(const QSize &size, int rotation);

// Encodes a picture for the requested format code (a code from the table, a
// mode's low 7 bits, or anything above 9 for the automatic choice). The image
// is turned by options.rotation. Format 7 copies `fileBytes` unchanged; with
// no file bytes it has nothing to copy and fails.
EncodedImage encode(const QImage &image, int requestedFormat, const EncodeOptions &options,
                    const QByteArray &fileBytes = QByteArray());

// Loads and encodes a picture file. Format 255 and no bytes when it can't
// be read.
EncodedImage encodeFile(const QString &path, int requestedFormat, const EncodeOptions &options);

// The entry for needle frames, which are drawn for the panel already: no
// rotation; requested 7 packs as aRGB8565 and stores 7; requested 9 copies
// the file unchanged and stores 9. Otherwise as encodeFile.
EncodedImage encodeNeedleFrame(const QString &path, int requestedFormat, const EncodeOptions &options);

} // namespace ImageEncoder

} // namespace vantile
