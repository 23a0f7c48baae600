#pragma once
// The shared parts of the binary widget records: the touch and display
// headers, rotation of rectangles and points, colours, and what a record
// writer is given about the page being built.

#include <QByteArray>
#include <QSize>
#include <QString>
#include <functional>

namespace vantile {

class VariableImage;

// A rectangle in 16-bit record arithmetic.
struct Rect16 {
    quint16 x = 0, y = 0, w = 0, h = 0;
    quint16 right() const { return quint16(x + w - 1); }  // last column
    quint16 bottom() const { return quint16(y + h - 1); } // last row
};

struct Point16 {
    quint16 x = 0, y = 0;
};

namespace Records {

void appendU8(QByteArray &out, quint8 v);
void appendU16(QByteArray &out, quint16 v); // little-endian

// Touch record: type, flags (0x80, +0x40 report to host, +0x01 Vice page),
// length of the rest.
quint8 touchFlags(bool reportToHost, bool viceFlag);
void appendTouchHeader(QByteArray &out, quint8 type, bool reportToHost, bool viceFlag, quint8 length);
// Display record: type, Vice flag, parameter address, count of the bytes
// that follow (bits 0-6) with the overlay switch in bit 7.
void appendDisplayHeader(QByteArray &out, quint8 type, bool viceFlag, quint16 parameterAddr,
                         quint8 count, bool overlay);

// PW and PH of a picture for a rotation setting (0-3): its width and
// height for 0 and 2, its height and width for 1 and 3.
QSize pictureExtents(int rotation, const QSize &picture);
// The rotation mapping, with PW and PH as given.
Rect16 rotate(int rotation, int x, int y, int w, int h, int pw, int ph);
Point16 rotatePoint(int rotation, int x, int y, int pw, int ph);

// 0x00RRGGBB to RGB565.
quint16 rgb565(quint32 rgb);
// A colour in three bytes: B, G, R on a 24-bit panel; otherwise the RGB565
// word, low byte first, and a zero byte.
void appendColour3(QByteArray &out, quint32 rgb, bool colour24);

// The Vice form of a display record: the 2 bytes of `tail` at tailOffset
// move to the front, everything before them two bytes later.
QByteArray tailToFront(const QByteArray &record, int tailOffset);

} // namespace Records

// The build's font table, filled by the font scan from the headers of the
// files in FontBin/: for each font id its character width and height and
// its encoding code. At the start of a scan every entry is 0, 0 and 5.
struct FontTable {
    static constexpr int kMaxFonts = 64;
    int count = 0; // F: highest font id + 1, at most 64; 0 without fonts
    quint8 width[kMaxFonts] = {};
    quint8 height[kMaxFonts] = {};
    quint8 encoding[kMaxFonts] = {5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5,
                                  5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5,
                                  5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5};
};

// What a record writer knows about the page being built.
struct RecordContext {
    int rotation = 0;     // the project's rotation setting, 0-3
    QSize pagePicture;    // the page's picture (a plain page: the canvas size)
    QSize vicePicture;    // the Vice page's picture, used while viceFlag is set
    bool viceFlag = false;
    QSize panel;          // the panel's width and height as set, in every rotation
    bool colour24 = false;
    // Picture size of a page by its number, from the page list; an invalid
    // size when there is no such page.
    std::function<QSize(int page)> pagePictureSize;
    VariableImage *variables = nullptr; // display kinds store initial values here
    const FontTable *fonts = nullptr;   // the build's font table; none: no fonts
    // The place of a needle's frames (the animation step's table): the
    // entry for its picture, start and final angle and step; 0xFFFFFFFF
    // when none matches. Unset: no frames were made.
    std::function<quint32(const QString &icon, int startAngle, int finalAngle, int step)> needleFrames;
    // Reads the facts of the file of Video/ that a video widget plays (by
    // its number) into the build log. Unset: nothing is read.
    std::function<void(const QString &widgetName, int videoId)> videoProbe;
    QString *errorText = nullptr;       // the build's collected complaints

    // The picture the page's rectangles rotate with.
    QSize rectPicture() const { return viceFlag ? vicePicture : pagePicture; }
    // A widget rectangle on the page (or the Vice page).
    Rect16 rotate(int x, int y, int w, int h) const;
    // A rectangle placed on the panel rather than on a page picture.
    Rect16 rotateOnPanel(int x, int y, int w, int h) const;
};

} // namespace vantile
