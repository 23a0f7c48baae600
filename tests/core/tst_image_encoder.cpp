// The image encoder: pixel packers against words worked out by hand, Nand
// row padding, the four rotations, the choice of format, the VC container
// (laid out by hand and decoded by an independent reader written here), the
// fallback BMP reader, and files that can't be read.

#include "build/ImageBmp.h"
#include "build/ImageEncoder.h"
#include "build/ImageZip.h"
#include "project/ProjectSettings.h"

#include <QBuffer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <initializer_list>
#include <vector>

using namespace vantile;

namespace {

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray b;
    for (int v : values)
        b.append(char(v));
    return b;
}

QImage argbImage(int w, int h, std::initializer_list<QRgb> pixels)
{
    QImage img(w, h, QImage::Format_ARGB32);
    auto it = pixels.begin();
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, *it++);
    return img;
}

// An opaque colour whose RGB565 word is exactly `w`.
QRgb colourOfWord(quint16 w)
{
    return qRgb((w >> 11) << 3, ((w >> 5) & 0x3F) << 2, (w & 0x1F) << 3);
}

QImage imageOfWords(int w, int h, const std::vector<quint16> &words)
{
    QImage img(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, colourOfWord(words[size_t(y * w + x)]));
    return img;
}

QByteArray leWords(const std::vector<quint16> &words)
{
    QByteArray b;
    for (quint16 w : words) {
        b.append(char(w & 0xFF));
        b.append(char(w >> 8));
    }
    return b;
}

quint32 le(const QByteArray &b, int at, int n)
{
    quint32 v = 0;
    for (int i = 0; i < n; ++i)
        v |= quint32(quint8(b[at + i])) << (8 * i);
    return v;
}

EncodeOptions plain()
{
    return EncodeOptions();
}

// ---- an independent reader of the VC container --------------------------

struct VcImage {
    QString fault; // empty when the container is sound
    int width = 0;
    int height = 0;
    int segments = 0;
    int format = 0;
    quint32 total = 0;
    std::vector<int> dataSizes;
    std::vector<int> flags;
    QByteArray words; // decoded, low byte first
};

VcImage decodeVc(const QByteArray &c)
{
    VcImage v;
    if (c.size() < 12 || c[0] != 'V' || c[1] != 'C') {
        v.fault = "no VC header";
        return v;
    }
    v.width = int(le(c, 2, 2));
    v.height = int(le(c, 4, 2));
    v.segments = quint8(c[6]);
    v.format = quint8(c[7]);
    v.total = le(c, 8, 4);
    if (v.segments < 1 || v.total > quint32(c.size()) || 12 + 516 * v.segments > int(v.total)) {
        v.fault = "bad counts";
        return v;
    }
    int pos = 12 + 516 * v.segments;
    for (int k = 0; k < v.segments; ++k) {
        const int h = 12 + 516 * k;
        const int size = int(le(c, h, 3));
        const int flag = quint8(c[h + 3]);
        v.dataSizes.push_back(size);
        v.flags.push_back(flag);
        auto paletteWord = [&](int index) { return le(c, h + 4 + 2 * index, 2); };
        const int end = pos + size;
        if (end > int(v.total) || (flag != 0 && flag != 1) || (flag == 1 && size % 2)) {
            v.fault = QString("segment %1 malformed").arg(k);
            return v;
        }
        for (; pos < end; pos += flag ? 2 : 1) {
            const int count = flag ? quint8(c[pos]) + 1 : 1;
            const quint32 w = paletteWord(quint8(c[flag ? pos + 1 : pos]));
            for (int i = 0; i < count; ++i) {
                v.words.append(char(w & 0xFF));
                v.words.append(char(w >> 8));
            }
        }
    }
    if (pos != int(v.total))
        v.fault = "data does not end at the stated size";
    return v;
}

// ---- BMP files made byte by byte -----------------------------------------

QByteArray makeBmp(int w, int h, int bpp, quint32 compression, int infoSize, const QByteArray &afterHeader,
                   const QByteArray &pixels, quint16 planes = 1)
{
    const int offset = 14 + infoSize + afterHeader.size();
    QByteArray b(14 + infoSize, '\0');
    auto put = [&](int at, quint32 v, int n) {
        for (int i = 0; i < n; ++i)
            b[at + i] = char(v >> (8 * i));
    };
    b[0] = 'B';
    b[1] = 'M';
    put(2, quint32(offset + pixels.size()), 4);
    put(10, quint32(offset), 4);
    put(14, quint32(infoSize), 4);
    put(18, quint32(w), 4);
    put(22, quint32(h), 4);
    put(26, planes, 2);
    put(28, quint32(bpp), 2);
    put(30, compression, 4);
    put(34, quint32(pixels.size()), 4);
    return b + afterHeader + pixels;
}

// 3 x 2, 24 bits, bottom-up. Top row red, green, blue; bottom row white,
// black, (0x12, 0x34, 0x56). Rows of 9 bytes padded to 12.
QByteArray bmp24(quint16 planes)
{
    const QByteArray bottom = bytesOf({0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x56, 0x34, 0x12, 0, 0, 0});
    const QByteArray top = bytesOf({0x00, 0x00, 0xFF, 0x00, 0xFF, 0x00, 0xFF, 0x00, 0x00, 0, 0, 0});
    return makeBmp(3, 2, 24, 0, 40, QByteArray(), bottom + top, planes);
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QImage qtReads(const QByteArray &bytes)
{
    return QImage::fromData(bytes).convertToFormat(QImage::Format_ARGB32);
}

// Pictures for the round trips: a smooth gradient, flat "interface" art.
QImage gradient(int w, int h)
{
    QImage img(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, qRgba(x * 255 / w, y * 255 / h, (x + y) % 256, 255));
    return img;
}

QImage flatArt(int w, int h)
{
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(qRgba(0x20, 0x30, 0x40, 255));
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            if (x > w / 4 && x < w / 2 && y > h / 4 && y < h / 2)
                img.setPixel(x, y, qRgba(0xF0, 0x80, 0x10, 255));
            if ((x / 7 + y / 5) % 9 == 0)
                img.setPixel(x, y, qRgba(0xFF, 0xFF, 0xFF, (x * 3) & 0xFF));
        }
    return img;
}

QImage noise(int w, int h, quint32 seed)
{
    QRandomGenerator gen(seed);
    QImage img(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, gen.generate() | 0xFF000000u);
    return img;
}

} // namespace

class TestImageEncoder : public QObject
{
    Q_OBJECT
private slots:
    void formatNames();
    void sixteenBitPackers();
    void softpngKeepsOpaqueBlackAwayFromTransparent();
    void twentyFourBitPackers();
    void wideFormatsAndEvenLengths();
    void choiceOfFormat();
    void perRowHookOnlyForWidePackers();
    void nandRowPadding();
    void rotationOfThreeByTwo_data();
    void rotationOfThreeByTwo();
    void rotationAcrossBands();
    void containerLaidOutByHand();
    void containerSegmentsAndRuns();
    void containerGiveUpRules();
    void containerRoundTrips();
    void jpgPassthrough();
    void needleEntry();
    void bmpFallbackReader();
    void bmpFallbackThroughEncoder();
    void unreadableFiles();
    void transparencyTest();
    void optionsFromSettings();
};

void TestImageEncoder::formatNames()
{
    QCOMPARE(ImageEncoder::nameToFormat("RGB565"), 0);
    QCOMPARE(ImageEncoder::nameToFormat("RGB888"), 0);
    QCOMPARE(ImageEncoder::nameToFormat("softpng"), 1);
    QCOMPARE(ImageEncoder::nameToFormat("aRGB4444"), 2);
    QCOMPARE(ImageEncoder::nameToFormat("RGB565_zip"), 3);
    QCOMPARE(ImageEncoder::nameToFormat("softpng_zip"), 4);
    QCOMPARE(ImageEncoder::nameToFormat("aRGB4444_zip"), 5);
    QCOMPARE(ImageEncoder::nameToFormat("aRGB8888"), 6);
    QCOMPARE(ImageEncoder::nameToFormat("jpg"), 7);
    QCOMPARE(ImageEncoder::nameToFormat("aRGB8565"), 8);
    QCOMPARE(ImageEncoder::nameToFormat("ZoomIN"), 9);
    // Exact comparison: case, blanks and near misses are unknown names.
    for (const char *name : {"rgb565", "Softpng", " jpg", "jpg ", "JPG", "RGB565zip", "", "auto"})
        QCOMPARE(ImageEncoder::nameToFormat(name), 32);
}

void TestImageEncoder::sixteenBitPackers()
{
    // (0x12, 0x34, 0x56): 0x12 >> 3 = 2, 0x34 >> 2 = 13, 0x56 >> 3 = 10
    // -> 2 << 11 | 13 << 5 | 10 = 0x1000 | 0x01A0 | 0x000A = 0x11AA.
    const QImage one = argbImage(1, 1, {qRgba(0x12, 0x34, 0x56, 0xFF)});
    QCOMPARE(ImageEncoder::encode(one, 0, plain()).bytes, bytesOf({0xAA, 0x11}));

    EncodeOptions swap;
    swap.byteSwap = true;
    const EncodedImage swapped = ImageEncoder::encode(one, 0, swap);
    QCOMPARE(swapped.bytes, bytesOf({0x11, 0xAA}));
    QCOMPARE(swapped.format, 0);
    // The swap is for format 0 alone: softpng and the zip form stay low
    // byte first (one pixel does not compress, so 3 gives the plain word).
    QCOMPARE(ImageEncoder::encode(one, 1, swap).bytes, bytesOf({0xAA, 0x11}));
    const EncodedImage zip = ImageEncoder::encode(one, 3, swap);
    QCOMPARE(zip.bytes, bytesOf({0xAA, 0x11}));
    QCOMPARE(zip.format, 3);
    QVERIFY(!zip.compressed);

    // Red, green, blue extremes.
    const QImage rgb = argbImage(3, 1, {qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF)});
    QCOMPARE(ImageEncoder::encode(rgb, 0, plain()).bytes, bytesOf({0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00}));

    // aRGB4444 takes the top nibble of each: A 0xAB R 0xCD G 0xEF B 0x12 -> 0xACE1.
    const QImage nibbles = argbImage(2, 1, {qRgba(0xCD, 0xEF, 0x12, 0xAB), qRgba(0x0F, 0xF0, 0x8F, 0x10)});
    // second: A 0x1, R 0x0, G 0xF, B 0x8 -> 0x10F8
    const EncodedImage argb4444 = ImageEncoder::encode(nibbles, 2, plain());
    QCOMPARE(argb4444.bytes, bytesOf({0xE1, 0xAC, 0xF8, 0x10}));
    QCOMPARE(argb4444.format, 2);
    QCOMPARE(argb4444.width, 2);
    QCOMPARE(argb4444.height, 1);
}

void TestImageEncoder::softpngKeepsOpaqueBlackAwayFromTransparent()
{
    // Opaque black packs to word 0, which is the transparent key; it is
    // replaced by 0x0821 (one step up in each of red, green and blue).
    QImage black(4, 3, QImage::Format_ARGB32);
    black.fill(qRgba(0, 0, 0, 255));
    const EncodedImage e = ImageEncoder::encode(black, 1, plain());
    QCOMPARE(e.format, 1);
    QCOMPARE(e.bytes.size(), 24);
    for (int i = 0; i < 12; ++i)
        QCOMPARE(le(e.bytes, 2 * i, 2), 0x0821u);

    // Format 0 keeps the word 0 for black.
    QCOMPARE(ImageEncoder::encode(black, 0, plain()).bytes, QByteArray(24, '\0'));

    // Near black that loses all bits in RGB565 (7, 3, 7) is also 0x0821; the
    // alpha threshold: 127 is transparent (word 0 whatever the colour), 128
    // keeps the colour. (0xFF, 0x80, 0x40) -> 31 << 11 | 32 << 5 | 8 = 0xFC08.
    const QImage edge = argbImage(4, 1,
                                  {qRgba(7, 3, 7, 255), qRgba(0xFF, 0x80, 0x40, 127), qRgba(0xFF, 0x80, 0x40, 128),
                                   qRgba(0, 0, 0, 128)});
    QCOMPARE(ImageEncoder::encode(edge, 1, plain()).bytes, bytesOf({0x21, 0x08, 0x00, 0x00, 0x08, 0xFC, 0x21, 0x08}));
}

void TestImageEncoder::twentyFourBitPackers()
{
    EncodeOptions o;
    o.rgb888 = true;

    const QImage one = argbImage(1, 1, {qRgba(0x11, 0x22, 0x33, 0xFF)});
    const EncodedImage e0 = ImageEncoder::encode(one, 0, o);
    QCOMPARE(e0.bytes, bytesOf({0x33, 0x22, 0x11})); // B, G, R; format 0 is not rounded to even
    QCOMPARE(e0.format, 0);

    // softpng on a picture with transparency: alpha below 128 gives three
    // zeros, opaque black becomes 2, 2, 2.
    const QImage keyed = argbImage(5, 1,
                                   {qRgba(0xAA, 0xBB, 0xCC, 0x00), qRgba(0, 0, 0, 0xFF), qRgba(0x10, 0x20, 0x30, 0xFF),
                                    qRgba(0, 0, 0, 0x80), qRgba(0x10, 0x20, 0x30, 0x7F)});
    const EncodedImage e1 = ImageEncoder::encode(keyed, 1, o);
    QCOMPARE(e1.format, 1);
    QCOMPARE(e1.bytes, bytesOf({0, 0, 0, 2, 2, 2, 0x30, 0x20, 0x10, 2, 2, 2, 0, 0, 0}));

    // softpng on an opaque picture packs as format 0: black stays 0, 0, 0.
    const QImage opaque = argbImage(2, 1, {qRgba(0, 0, 0, 0xFF), qRgba(0x10, 0x20, 0x30, 0xFF)});
    QCOMPARE(ImageEncoder::encode(opaque, 1, o).bytes, bytesOf({0, 0, 0, 0x30, 0x20, 0x10}));

    // softpng_zip on 24 bits is plain B, G, R, transparent or not, not
    // compressed, code kept; 9 bytes rounded up to 10 for code 4.
    const QImage e4src = argbImage(3, 1, {qRgba(0xAA, 0xBB, 0xCC, 0x00), qRgba(0, 0, 0, 0xFF), qRgba(1, 2, 3, 0xFF)});
    const EncodedImage e4 = ImageEncoder::encode(e4src, 4, o);
    QCOMPARE(e4.format, 4);
    QVERIFY(!e4.compressed);
    QCOMPARE(e4.bytes.size(), 10);
    QCOMPARE(e4.bytes.left(9), bytesOf({0xCC, 0xBB, 0xAA, 0, 0, 0, 3, 2, 1}));

    // RGB565_zip on 24 bits: even a flat picture stays uncompressed.
    QImage flat(300, 1, QImage::Format_ARGB32);
    flat.fill(qRgba(1, 2, 3, 255));
    const EncodedImage e3 = ImageEncoder::encode(flat, 3, o);
    QCOMPARE(e3.format, 3);
    QVERIFY(!e3.compressed);
    QCOMPARE(e3.bytes.size(), 900);
    QCOMPARE(e3.bytes.left(3), bytesOf({3, 2, 1}));

    // aRGB4444 and its zip form use the 16-bit packer on a 24-bit panel too.
    QCOMPARE(ImageEncoder::encode(argbImage(1, 1, {qRgba(0xCD, 0xEF, 0x12, 0xAB)}), 2, o).bytes, bytesOf({0xE1, 0xAC}));
    const EncodedImage e5 = ImageEncoder::encode(flat, 5, o);
    QCOMPARE(e5.format, 5);
    QVERIFY(e5.compressed);
    QCOMPARE(decodeVc(e5.bytes).words.left(2), bytesOf({0x00, 0xF0})); // A 0xF, R 0, G 0, B 0
}

void TestImageEncoder::wideFormatsAndEvenLengths()
{
    // aRGB8565: low and high byte of RGB565, then alpha. (0xFF, 0x00, 0xFF)
    // -> 0xF81F. Three pixels make 9 bytes: one 0xFF is added.
    const QImage img = argbImage(3, 1, {qRgba(0xFF, 0x00, 0xFF, 0x80), qRgba(0, 0, 0, 0), qRgba(0x12, 0x34, 0x56, 0xFF)});
    const EncodedImage e8 = ImageEncoder::encode(img, 8, plain());
    QCOMPARE(e8.format, 8);
    QCOMPARE(e8.bytes, bytesOf({0x1F, 0xF8, 0x80, 0x00, 0x00, 0x00, 0xAA, 0x11, 0xFF, 0xFF}));

    // Two pixels make 6 bytes: nothing added.
    QCOMPARE(ImageEncoder::encode(img.copy(0, 0, 2, 1), 8, plain()).bytes.size(), 6);

    // aRGB8888: B, G, R, A; never padded to even (always even anyway).
    const EncodedImage e6 = ImageEncoder::encode(img, 6, plain());
    QCOMPARE(e6.format, 6);
    QCOMPARE(e6.bytes, bytesOf({0xFF, 0x00, 0xFF, 0x80, 0, 0, 0, 0, 0x56, 0x34, 0x12, 0xFF}));

    // A picture held premultiplied gives the same (unpremultiplied) values
    // where the alpha is 255 or 0.
    const QImage pm = argbImage(2, 1, {qRgba(0x12, 0x34, 0x56, 0xFF), qRgba(0, 0, 0, 0)})
                          .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(ImageEncoder::encode(pm, 6, plain()).bytes, bytesOf({0x56, 0x34, 0x12, 0xFF, 0, 0, 0, 0}));

    // An RGB32 picture is opaque whatever its unused top byte holds (here 0,
    // in a buffer of the caller's); turned, so the value is copied.
    quint32 raw[2] = {0x00123456u, 0x00000000u};
    const QImage rgb32(reinterpret_cast<const uchar *>(raw), 2, 1, QImage::Format_RGB32);
    for (int rotation : {0, 2}) {
        EncodeOptions o;
        o.rotation = rotation;
        const QByteArray bgra = ImageEncoder::encode(rgb32, 6, o).bytes;
        QCOMPARE(quint8(bgra[3]), quint8(0xFF));
        QCOMPARE(quint8(bgra[7]), quint8(0xFF));
        QCOMPARE(ImageEncoder::encode(rgb32, 1, o).bytes.count(char(0x21)), 1); // black is 0x0821, not 0
    }
}

void TestImageEncoder::choiceOfFormat()
{
    QImage opaque(2, 2, QImage::Format_ARGB32);
    opaque.fill(qRgba(0xFF, 0, 0, 255));
    QImage seeThrough = opaque;
    seeThrough.setPixel(1, 1, qRgba(0xFF, 0, 0, 0xE0));

    // Automatic: anything above 8 but the needle entry's 9 (see below); a
    // picture with transparency gets aRGB4444, an opaque one RGB565.
    for (int r : {9, 10, 16, 32, 127}) {
        QCOMPARE(ImageEncoder::encode(opaque, r, plain()).format, 0);
        QCOMPARE(ImageEncoder::encode(seeThrough, r, plain()).format, 2);
    }
    // the last pixel 0xFF0000 with alpha 0xE0 -> 0xEF00 in aRGB4444
    QCOMPARE(ImageEncoder::encode(seeThrough, 32, plain()).bytes.right(2), bytesOf({0x00, 0xEF}));

    // Chip 5 with 24-bit colour: aRGB8888 whatever was asked, even jpg.
    EncodeOptions vc650;
    vc650.controller = 5;
    vc650.rgb888 = true;
    for (int r : {0, 1, 2, 3, 4, 5, 7, 8, 32}) {
        const EncodedImage e = ImageEncoder::encode(opaque, r, vc650, QByteArray("file"));
        QCOMPARE(e.format, 6);
        QCOMPARE(e.bytes.size(), 16);
        QCOMPARE(e.bytes.left(4), bytesOf({0, 0, 0xFF, 0xFF}));
    }
    // Chip 5 with 16-bit colour, or another chip with 24-bit colour: as asked.
    vc650.rgb888 = false;
    QCOMPARE(ImageEncoder::encode(opaque, 0, vc650).format, 0);
    EncodeOptions other;
    other.controller = 4;
    other.rgb888 = true;
    QCOMPARE(ImageEncoder::encode(opaque, 0, other).bytes.size(), 12);
    QCOMPARE(ImageEncoder::encode(opaque, 6, other).format, 6);
    QCOMPARE(ImageEncoder::encode(opaque, 8, other).bytes.size(), 12);

    // 7 without file bytes has nothing to copy.
    const EncodedImage noFile = ImageEncoder::encode(opaque, 7, plain());
    QCOMPARE(noFile.format, 255);
    QVERIFY(noFile.bytes.isEmpty());
    QVERIFY(!noFile.error.isEmpty());
}

void TestImageEncoder::perRowHookOnlyForWidePackers()
{
    QImage img(5, 7, QImage::Format_ARGB32);
    img.fill(qRgba(1, 2, 3, 255));
    int calls = 0;
    EncodeOptions o;
    o.perRow = [&calls] { ++calls; };
    for (int r : {6, 8}) {
        calls = 0;
        ImageEncoder::encode(img, r, o);
        QCOMPARE(calls, 7);
    }
    calls = 0;
    ImageEncoder::encode(img, 0, o);
    QCOMPARE(calls, 0);
    o.rgb888 = true;
    ImageEncoder::encode(img, 0, o);
    QCOMPARE(calls, 7);
}

void TestImageEncoder::nandRowPadding()
{
    // 3 x 2 in format 0 with the Nand flag: each row goes to 4 pixels with
    // 0xFF 0xFF, so 2 rows x 4 pixels x 2 bytes = 16 bytes; the width stays 3.
    const QImage img = argbImage(3, 2,
                                 {qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF), qRgb(0, 0, 0), qRgb(0x12, 0x34, 0x56),
                                  qRgb(0xFF, 0xFF, 0xFF)});
    EncodeOptions nand;
    nand.nand = true;
    const EncodedImage e = ImageEncoder::encode(img, 0, nand);
    QCOMPARE(e.width, 3);
    QCOMPARE(e.height, 2);
    QCOMPARE(e.bytes, bytesOf({0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00, 0xFF, 0xFF, 0x00, 0x00, 0xAA, 0x11, 0xFF, 0xFF,
                               0xFF, 0xFF}));
    QCOMPARE(ImageEncoder::encode(img, 0, plain()).bytes.size(), 12);

    // A width that is a multiple of 4 is not padded.
    QImage four(4, 1, QImage::Format_ARGB32);
    four.fill(qRgb(0, 0, 0));
    QCOMPARE(ImageEncoder::encode(four, 0, nand).bytes.size(), 8);

    // The pad pixels of the other packers.
    const QImage row = img.copy(0, 0, 3, 1);
    const EncodedImage e8 = ImageEncoder::encode(row, 8, nand);
    QCOMPARE(e8.bytes.size(), 12);
    QCOMPARE(e8.bytes.right(3), bytesOf({0xFF, 0xFF, 0x00}));
    const EncodedImage e6 = ImageEncoder::encode(row, 6, nand);
    QCOMPARE(e6.bytes.size(), 16);
    QCOMPARE(e6.bytes.right(4), bytesOf({0xFF, 0xFF, 0xFF, 0x00}));
    EncodeOptions nand24 = nand;
    nand24.rgb888 = true;
    const EncodedImage e24 = ImageEncoder::encode(row, 0, nand24);
    QCOMPARE(e24.bytes.size(), 12);
    QCOMPARE(e24.bytes.right(3), bytesOf({0xFF, 0xFF, 0xFF}));

    // Padding follows the turned width: 2 x 3 turned once is 3 wide.
    EncodeOptions turned = nand;
    turned.rotation = 1;
    const EncodedImage et = ImageEncoder::encode(img.copy(0, 0, 2, 3), 0, turned);
    QCOMPARE(et.width, 3);
    QCOMPARE(et.height, 2);
    QCOMPARE(et.bytes.size(), 16);
}

void TestImageEncoder::rotationOfThreeByTwo_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("ARGB32") << int(QImage::Format_ARGB32);
    QTest::newRow("RGB32") << int(QImage::Format_RGB32);
    QTest::newRow("premultiplied") << int(QImage::Format_ARGB32_Premultiplied);
    QTest::newRow("RGB888") << int(QImage::Format_RGB888);
    QTest::newRow("Indexed8") << int(QImage::Format_Indexed8);
}

void TestImageEncoder::rotationOfThreeByTwo()
{
    // Source, 3 wide and 2 high:   a b c
    //                              d e f
    // 1 (clockwise): 2 x 3   d a / e b / f c
    // 2 (half turn): 3 x 2   f e d / c b a
    // 3 (counter-clockwise): 2 x 3   c f / b e / a d
    QFETCH(int, format);
    const QRgb a = qRgb(0x10, 0x11, 0x12), b = qRgb(0x20, 0x21, 0x22), c = qRgb(0x30, 0x31, 0x32),
               d = qRgb(0x40, 0x41, 0x42), e = qRgb(0x50, 0x51, 0x52), f = qRgb(0x60, 0x61, 0x62);
    QImage src;
    if (format == QImage::Format_Indexed8) {
        src = QImage(3, 2, QImage::Format_Indexed8);
        src.setColorTable({a, b, c, d, e, f});
        for (int i = 0; i < 6; ++i)
            src.setPixel(i % 3, i / 3, uint(i));
    } else {
        src = argbImage(3, 2, {a, b, c, d, e, f}).convertToFormat(QImage::Format(format));
    }
    QCOMPARE(src.pixel(2, 1), f); // the colours survived the conversion

    auto bgra = [](std::initializer_list<QRgb> pixels) {
        QByteArray out;
        for (QRgb p : pixels)
            out += bytesOf({qBlue(p), qGreen(p), qRed(p), 0xFF});
        return out;
    };
    const struct {
        int rotation;
        int w;
        int h;
        QByteArray bytes;
    } cases[] = {
        {0, 3, 2, bgra({a, b, c, d, e, f})},
        {1, 2, 3, bgra({d, a, e, b, f, c})},
        {2, 3, 2, bgra({f, e, d, c, b, a})},
        {3, 2, 3, bgra({c, f, b, e, a, d})},
    };
    for (const auto &k : cases) {
        EncodeOptions o;
        o.rotation = k.rotation;
        const EncodedImage enc = ImageEncoder::encode(src, 6, o);
        QCOMPARE(enc.width, k.w);
        QCOMPARE(enc.height, k.h);
        QCOMPARE(enc.bytes, k.bytes);
        QCOMPARE(ImageEncoder::rotatedSize(src.size(), k.rotation), QSize(k.w, k.h));
    }
}

void TestImageEncoder::rotationAcrossBands()
{
    // Larger than one working band, in a format that needs conversion and in
    // one read in place; compared with the turning rule pixel by pixel.
    const int w = 150, h = 70;
    QImage src(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            src.setPixel(x, y, qRgb(x, y, (x * 7 + y * 3) & 0xFF));
    for (QImage::Format fmt : {QImage::Format_ARGB32, QImage::Format_RGB888}) {
        const QImage img = src.convertToFormat(fmt);
        for (int rotation = 0; rotation < 4; ++rotation) {
            EncodeOptions o;
            o.rotation = rotation;
            const EncodedImage enc = ImageEncoder::encode(img, 6, o);
            const bool turned = rotation % 2;
            QCOMPARE(enc.width, turned ? h : w);
            QCOMPARE(enc.height, turned ? w : h);
            for (int y2 = 0; y2 < enc.height; ++y2)
                for (int x2 = 0; x2 < enc.width; ++x2) {
                    int sx = x2, sy = y2;
                    if (rotation == 1) {
                        sx = y2;
                        sy = h - 1 - x2;
                    } else if (rotation == 2) {
                        sx = w - 1 - x2;
                        sy = h - 1 - y2;
                    } else if (rotation == 3) {
                        sx = w - 1 - y2;
                        sy = x2;
                    }
                    const int at = 4 * (y2 * enc.width + x2);
                    if (quint8(enc.bytes[at + 2]) != sx || quint8(enc.bytes[at + 1]) != sy)
                        QFAIL(qPrintable(QString("format %1 rotation %2: pixel %3,%4 is not source %5,%6")
                                             .arg(int(fmt)).arg(rotation).arg(x2).arg(y2).arg(sx).arg(sy)));
                }
        }
    }
}

void TestImageEncoder::containerLaidOutByHand()
{
    // 60 x 1: 20 red, 10 green, 20 red, 10 blue in RGB565_zip.
    // One segment, palette F800, 07E0, 001F; runs (19,0) (9,1) (19,0) (9,2):
    // 8 bytes, below the raw 60, and below 60 * 7 / 10 = 42: kept.
    // Size 12 + 516 + 8 = 536 = 0x218.
    std::vector<quint16> words;
    for (int i = 0; i < 20; ++i)
        words.push_back(0xF800);
    for (int i = 0; i < 10; ++i)
        words.push_back(0x07E0);
    for (int i = 0; i < 20; ++i)
        words.push_back(0xF800);
    for (int i = 0; i < 10; ++i)
        words.push_back(0x001F);
    const EncodedImage e = ImageEncoder::encode(imageOfWords(60, 1, words), 3, plain());
    QCOMPARE(e.format, 3);
    QVERIFY(e.compressed);

    QByteArray expected = bytesOf({0x56, 0x43, 60, 0, 1, 0, 1, 3, 0x18, 0x02, 0x00, 0x00});
    expected += bytesOf({8, 0, 0, 1});
    QByteArray palette(512, '\0');
    palette.replace(0, 6, bytesOf({0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00}));
    expected += palette;
    expected += bytesOf({19, 0, 9, 1, 19, 0, 9, 2});
    QCOMPARE(e.bytes, expected);

    // softpng_zip: transparent and black become 0 and 0x0821 in the palette.
    QImage keyed(40, 1, QImage::Format_ARGB32);
    keyed.fill(qRgba(0, 0, 0, 0));
    for (int x = 30; x < 40; ++x)
        keyed.setPixel(x, 0, qRgba(0, 0, 0, 255));
    const EncodedImage k = ImageEncoder::encode(keyed, 4, plain());
    QVERIFY(k.compressed);
    QCOMPARE(k.bytes.size(), 12 + 516 + 4);
    QCOMPARE(quint8(k.bytes[7]), quint8(4));
    QCOMPARE(k.bytes.mid(16, 4), bytesOf({0x00, 0x00, 0x21, 0x08}));
    QCOMPARE(k.bytes.right(4), bytesOf({29, 0, 9, 1}));
}

void TestImageEncoder::containerSegmentsAndRuns()
{
    // 300 equal pixels: runs are cut at 256, (255, i) then (43, i).
    QImage flat(300, 1, QImage::Format_ARGB32);
    flat.fill(colourOfWord(0x1234));
    const EncodedImage e = ImageEncoder::encode(flat, 3, plain());
    QVERIFY(e.compressed);
    QCOMPARE(e.bytes.size(), 532);
    QCOMPARE(le(e.bytes, 8, 4), 532u);
    QCOMPARE(e.bytes.mid(12, 6), bytesOf({4, 0, 0, 1, 0x34, 0x12}));
    QCOMPARE(e.bytes.right(4), bytesOf({255, 0, 43, 0}));

    // 256 different colours in a row, then 1024 more of the last one: the
    // 256th colour fills the palette, so the first segment ends after 255
    // pixels (raw, 255 bytes: coded it would take 510) and keeps all 256
    // entries; the second segment starts with that colour and holds 1025
    // pixels: 4 runs of 256 and one of 1, 10 bytes. Data 265 < 1280 * 7 / 10.
    // Size 12 + 2 * 516 + 265 = 1309, odd: the header says 1309, the length
    // is 1310.
    std::vector<quint16> words;
    for (int i = 0; i < 256; ++i)
        words.push_back(quint16(i * 0x0101));
    for (int i = 0; i < 1024; ++i)
        words.push_back(quint16(255 * 0x0101));
    const EncodedImage s = ImageEncoder::encode(imageOfWords(256, 5, words), 3, plain());
    QVERIFY(s.compressed);
    QCOMPARE(s.bytes.size(), 1310);
    QCOMPARE(quint8(s.bytes[1309]), quint8(0xFF));
    QCOMPARE(le(s.bytes, 8, 4), 1309u);
    QCOMPARE(quint8(s.bytes[6]), quint8(2));
    QCOMPARE(le(s.bytes, 12, 3), 255u);
    QCOMPARE(quint8(s.bytes[15]), quint8(0));
    for (int i = 0; i < 256; ++i)
        QCOMPARE(le(s.bytes, 16 + 2 * i, 2), quint32(i * 0x0101));
    const int second = 12 + 516;
    QCOMPARE(le(s.bytes, second, 3), 10u);
    QCOMPARE(quint8(s.bytes[second + 3]), quint8(1));
    QCOMPARE(le(s.bytes, second + 4, 2), 0xFFFFu);
    QCOMPARE(le(s.bytes, second + 6, 2), 0u);
    const int data = 12 + 2 * 516;
    for (int i = 0; i < 255; ++i)
        QCOMPARE(quint8(s.bytes[data + i]), quint8(i));
    QCOMPARE(s.bytes.mid(data + 255, 10), bytesOf({255, 0, 255, 0, 255, 0, 255, 0, 0, 0}));

    const VcImage v = decodeVc(s.bytes);
    QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
    QCOMPARE(v.words, leWords(words));

    // A segment whose runs take exactly as many bytes as its pixels is
    // stored raw: 255 colours twice each (510 pixels, 255 runs = 510 bytes),
    // then a 256th colour for 2001 pixels (8 runs). 2511 pixels, data
    // 510 + 16 = 526.
    std::vector<quint16> pairs;
    for (int i = 0; i < 255; ++i) {
        pairs.push_back(quint16(0x4000 + i));
        pairs.push_back(quint16(0x4000 + i));
    }
    while (pairs.size() < 2511)
        pairs.push_back(0x7777);
    const EncodedImage t = ImageEncoder::encode(imageOfWords(93, 27, pairs), 3, plain());
    QVERIFY(t.compressed);
    const VcImage tv = decodeVc(t.bytes);
    QVERIFY2(tv.fault.isEmpty(), qPrintable(tv.fault));
    QCOMPARE(tv.dataSizes, (std::vector<int>{510, 16}));
    QCOMPARE(tv.flags, (std::vector<int>{0, 1}));
    QCOMPARE(t.bytes.size(), 12 + 2 * 516 + 526);
    QCOMPARE(tv.words, leWords(pairs));
}

void TestImageEncoder::containerGiveUpRules()
{
    // The 7/10 rule, compared with the pixel count: 20 pixels allow less
    // than 14 data bytes. 15 A then B A B A B: 6 runs, 12 bytes: kept.
    // 14 A then B A B A B A: 7 runs, 14 bytes: given up.
    const quint16 A = 0x1111, B = 0x2222;
    std::vector<quint16> keep(15, A), drop(14, A);
    for (quint16 w : {B, A, B, A, B})
        keep.push_back(w);
    for (quint16 w : {B, A, B, A, B, A})
        drop.push_back(w);
    const EncodedImage kept = ImageEncoder::encode(imageOfWords(20, 1, keep), 3, plain());
    QVERIFY(kept.compressed);
    QCOMPARE(kept.bytes.size(), 12 + 516 + 12);
    const EncodedImage dropped = ImageEncoder::encode(imageOfWords(20, 1, drop), 3, plain());
    QVERIFY(!dropped.compressed);
    QCOMPARE(dropped.format, 3);
    QCOMPARE(dropped.bytes, leWords(drop));

    // Noise gives up and keeps the requested code with the plain words,
    // low byte first: small (the 7/10 rule) and large (more than 255
    // segments).
    for (const QImage &img : {noise(64, 64, 7), noise(300, 300, 8)}) {
        const EncodedImage z = ImageEncoder::encode(img, 3, plain());
        QCOMPARE(z.format, 3);
        QVERIFY(!z.compressed);
        QCOMPARE(z.bytes.size(), img.width() * img.height() * 2);
        QCOMPARE(z.bytes, ImageEncoder::encode(img, 0, plain()).bytes);
        QVERIFY(z.bytes.left(2) != QByteArray("VC"));
        const EncodedImage z5 = ImageEncoder::encode(img, 5, plain());
        QCOMPARE(z5.format, 5);
        QCOMPARE(z5.bytes, ImageEncoder::encode(img, 2, plain()).bytes);
    }

    // The segment limit. Values cycling through 256 colours make a segment
    // every 255 pixels. 254 full segments and one pixel of the 255th, then a
    // long run of that pixel's colour: 255 segments, kept. With one segment
    // more the data would still pay, but compression is given up.
    auto cycling = [](int patterned, int total) {
        std::vector<quint16> w;
        for (int i = 0; i < patterned; ++i)
            w.push_back(quint16(i % 256));
        const quint16 last = w.back();
        while (int(w.size()) < total)
            w.push_back(last);
        return w;
    };
    const std::vector<quint16> fits = cycling(254 * 255 + 1, 100000);
    const EncodedImage f = ImageEncoder::encode(imageOfWords(1000, 100, fits), 3, plain());
    QVERIFY(f.compressed);
    const VcImage v = decodeVc(f.bytes);
    QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
    QCOMPARE(v.segments, 255);
    QCOMPARE(v.dataSizes.front(), 255);
    QCOMPARE(v.flags.front(), 0);
    // last segment: 1 + 35229 = 35230 pixels, 137 runs of 256 and one of 158
    QCOMPARE(v.dataSizes.back(), 2 * 138);
    QCOMPARE(v.flags.back(), 1);
    QCOMPARE(v.words, leWords(fits));

    const std::vector<quint16> over = cycling(255 * 255 + 1, 100000);
    const EncodedImage o = ImageEncoder::encode(imageOfWords(1000, 100, over), 3, plain());
    QVERIFY(!o.compressed);
    QCOMPARE(o.format, 3);
    QCOMPARE(o.bytes, leWords(over));
}

void TestImageEncoder::containerRoundTrips()
{
    // decode(encode(picture)) equals the packed words of the plain format.
    EncodeOptions nand;
    nand.nand = true;
    const struct {
        int zip;
        int plain;
    } pairs[] = {{3, 0}, {4, 1}, {5, 2}};
    for (const QImage &img : {gradient(200, 150), flatArt(123, 77), flatArt(640, 200)}) {
        for (const auto &p : pairs) {
            for (const EncodeOptions &o : {plain(), nand}) {
                const EncodedImage z = ImageEncoder::encode(img, p.zip, o);
                const QByteArray words = ImageEncoder::encode(img, p.plain, o).bytes;
                QCOMPARE(z.format, p.zip);
                if (!z.compressed) {
                    QCOMPARE(z.bytes, words);
                    continue;
                }
                const VcImage v = decodeVc(z.bytes);
                QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
                QCOMPARE(v.width, img.width());
                QCOMPARE(v.height, img.height());
                QCOMPARE(v.format, p.zip);
                QCOMPARE(v.words, words);
                QCOMPARE(z.bytes.size(), int(v.total + (v.total & 1)));
                QVERIFY(z.bytes.size() < words.size());
            }
        }
    }
    // The flat art compresses (otherwise the loop above proves little).
    QVERIFY(ImageEncoder::encode(flatArt(640, 200), 3, plain()).compressed);

    // Nand pad words are part of the compressed data: 5 x 40 flat, rows of
    // 5 colour words and three 0xFFFF; two runs a row, 160 bytes of 320.
    QImage narrow(5, 40, QImage::Format_ARGB32);
    narrow.fill(colourOfWord(0x0841));
    const EncodedImage z = ImageEncoder::encode(narrow, 3, nand);
    QVERIFY(z.compressed);
    const VcImage v = decodeVc(z.bytes);
    QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
    QCOMPARE(v.width, 5);
    QCOMPARE(v.dataSizes, std::vector<int>{160});
    QCOMPARE(v.words.size(), 8 * 40 * 2);
    QCOMPARE(v.words.left(16), bytesOf({0x41, 0x08, 0x41, 0x08, 0x41, 0x08, 0x41, 0x08, 0x41, 0x08, 0xFF, 0xFF, 0xFF,
                                        0xFF, 0xFF, 0xFF}));
}

void TestImageEncoder::jpgPassthrough()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QImage img(21, 13, QImage::Format_RGB32);
    img.fill(qRgb(0x80, 0x40, 0x20));
    QByteArray jpeg;
    {
        QBuffer buf(&jpeg);
        buf.open(QIODevice::WriteOnly);
        QVERIFY(img.save(&buf, "JPG"));
    }
    // One file of odd size, one of even size (a byte after the end marker).
    const QByteArray odd = jpeg.size() % 2 ? jpeg : jpeg + QByteArray(1, '\0');
    const QByteArray even = jpeg.size() % 2 ? jpeg + QByteArray(1, '\0') : jpeg;
    const QString oddPath = dir.filePath("odd.jpg"), evenPath = dir.filePath("even.jpg");
    QVERIFY(writeFile(oddPath, odd));
    QVERIFY(writeFile(evenPath, even));

    const EncodedImage e = ImageEncoder::encodeFile(oddPath, 7, plain());
    QCOMPARE(e.format, 7);
    QCOMPARE(e.width, 21);
    QCOMPARE(e.height, 13);
    QCOMPARE(e.bytes.size(), odd.size() + 1);
    QCOMPARE(e.bytes.left(odd.size()), odd);

    EncodeOptions turned;
    turned.rotation = 3;
    const EncodedImage t = ImageEncoder::encodeFile(evenPath, 7, turned);
    QCOMPARE(t.bytes, even);
    QCOMPARE(t.width, 13);
    QCOMPARE(t.height, 21);

    // The same file in another format is decoded and packed.
    const EncodedImage packed = ImageEncoder::encodeFile(evenPath, 0, plain());
    QCOMPARE(packed.format, 0);
    QCOMPARE(packed.bytes.size(), 21 * 13 * 2);
}

void TestImageEncoder::needleEntry()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("0001_0_0.png");
    const QImage img = argbImage(3, 2,
                                 {qRgba(0xFF, 0x00, 0xFF, 0x80), qRgba(0, 0, 0, 0), qRgba(0x12, 0x34, 0x56, 0xFF),
                                  qRgba(0xFF, 0, 0, 0xFF), qRgba(0, 0xFF, 0, 0xFF), qRgba(0, 0, 0xFF, 0xFF)});
    QVERIFY(img.save(path, "PNG"));
    QFile f(path);
    QVERIFY(f.open(QIODevice::ReadOnly));
    const QByteArray file = f.readAll();

    EncodeOptions o;
    o.rotation = 1; // not applied to needle frames
    const EncodedImage four = ImageEncoder::encodeNeedleFrame(path, 2, o);
    QCOMPARE(four.format, 2);
    QCOMPARE(four.width, 3);
    QCOMPARE(four.height, 2);
    // 0x80FF00FF -> 0x8F0F; 0 -> 0; 0xFF123456 -> 0xF135; red 0xFF00, green 0xF0F0, blue 0xF00F
    QCOMPARE(four.bytes, bytesOf({0x0F, 0x8F, 0, 0, 0x35, 0xF1, 0x00, 0xFF, 0xF0, 0xF0, 0x0F, 0xF0}));

    // 7 packs as aRGB8565 and stores 7: 6 pixels x 3 bytes, even already.
    const EncodedImage seven = ImageEncoder::encodeNeedleFrame(path, 7, o);
    QCOMPARE(seven.format, 7);
    QCOMPARE(seven.bytes.size(), 18);
    QCOMPARE(seven.bytes.left(6), bytesOf({0x1F, 0xF8, 0x80, 0, 0, 0}));
    // 9 copies the file and stores 9.
    const EncodedImage nine = ImageEncoder::encodeNeedleFrame(path, 9, o);
    QCOMPARE(nine.format, 9);
    QCOMPARE(nine.bytes, file);
    QCOMPARE(nine.width, 3);

    // The panel entry turns the same file, and 9 is automatic there.
    const EncodedImage panel = ImageEncoder::encodeFile(path, 9, o);
    QCOMPARE(panel.format, 2);
    QCOMPARE(panel.width, 2);
    QCOMPARE(panel.height, 3);
}

void TestImageEncoder::bmpFallbackReader()
{
    // 24 bits, bottom-up, rows padded to 4 bytes.
    const QImage i24 = ImageBmp::decode(bmp24(1));
    QCOMPARE(i24.size(), QSize(3, 2));
    QCOMPARE(i24.pixel(0, 0), qRgb(0xFF, 0, 0));
    QCOMPARE(i24.pixel(1, 0), qRgb(0, 0xFF, 0));
    QCOMPARE(i24.pixel(2, 0), qRgb(0, 0, 0xFF));
    QCOMPARE(i24.pixel(0, 1), qRgb(0xFF, 0xFF, 0xFF));
    QCOMPARE(i24.pixel(2, 1), qRgb(0x12, 0x34, 0x56));

    // 8 bits, top-down (negative height), 3 palette entries B, G, R, 0.
    const QByteArray pal = bytesOf({0x30, 0x20, 0x10, 0, 0xFF, 0xFF, 0xFF, 0, 0xFF, 0x80, 0x00, 0});
    QByteArray b8 = makeBmp(2, -2, 8, 0, 40, pal, bytesOf({1, 2, 0, 0, 0, 1, 0, 0}));
    b8[46] = 3; // colours used
    const QImage i8 = ImageBmp::decode(b8);
    QCOMPARE(i8.size(), QSize(2, 2));
    QCOMPARE(i8.pixel(0, 0), qRgb(0xFF, 0xFF, 0xFF));
    QCOMPARE(i8.pixel(1, 0), qRgb(0x00, 0x80, 0xFF));
    QCOMPARE(i8.pixel(0, 1), qRgb(0x10, 0x20, 0x30));

    // 16 bits 5-5-5: 0x7FFF -> 0xF8 each, 0x4210 -> 0x80 each (5 bits times 8).
    const QByteArray b555 = makeBmp(2, 1, 16, 0, 40, QByteArray(), bytesOf({0xFF, 0x7F, 0x10, 0x42}));
    const QImage i555 = ImageBmp::decode(b555);
    QCOMPARE(i555.pixel(0, 0), qRgb(0xF8, 0xF8, 0xF8));
    QCOMPARE(i555.pixel(1, 0), qRgb(0x80, 0x80, 0x80));

    // 16 bits 5-6-5 by bit masks behind the header; 0x0821 -> (8, 4, 8).
    const QByteArray masks = bytesOf({0x00, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0});
    const QByteArray b565 = makeBmp(3, 1, 16, 3, 40, masks, bytesOf({0x00, 0xF8, 0xE0, 0x07, 0x21, 0x08, 0, 0}));
    const QImage i565 = ImageBmp::decode(b565);
    QCOMPARE(i565.pixel(0, 0), qRgb(0xF8, 0, 0));
    QCOMPARE(i565.pixel(1, 0), qRgb(0, 0xFC, 0));
    QCOMPARE(i565.pixel(2, 0), qRgb(0x08, 0x04, 0x08));

    // 32 bits without masks: the fourth byte is not alpha.
    const QByteArray px32 = bytesOf({0x78, 0x56, 0x34, 0x12, 0xEF, 0xCD, 0xAB, 0x00});
    const QByteArray b32 = makeBmp(2, 1, 32, 0, 40, QByteArray(), px32);
    const QImage i32 = ImageBmp::decode(b32);
    QCOMPARE(i32.pixel(0, 0), qRgba(0x34, 0x56, 0x78, 0xFF));
    QCOMPARE(i32.pixel(1, 0), qRgba(0xAB, 0xCD, 0xEF, 0xFF));

    // 32 bits, 124-byte header with an alpha mask.
    QByteArray b32a = makeBmp(2, 1, 32, 3, 124, QByteArray(), px32);
    const quint32 fieldMasks[] = {0x00FF0000u, 0x0000FF00u, 0x000000FFu, 0xFF000000u};
    for (int m = 0; m < 4; ++m)
        for (int i = 0; i < 4; ++i)
            b32a[54 + 4 * m + i] = char(fieldMasks[m] >> (8 * i));
    const QImage i32a = ImageBmp::decode(b32a);
    QCOMPARE(i32a.pixel(0, 0), qRgba(0x34, 0x56, 0x78, 0x12));
    QCOMPARE(i32a.pixel(1, 0), qRgba(0xAB, 0xCD, 0xEF, 0x00));

    // The image library reads these valid files to the same pixels.
    for (const QByteArray &file : {bmp24(1), b8, b555, b565, b32, b32a}) {
        const QImage mine = ImageBmp::decode(file);
        const QImage library = qtReads(file);
        QCOMPARE(mine.size(), library.size());
        for (int y = 0; y < mine.height(); ++y)
            for (int x = 0; x < mine.width(); ++x)
                QCOMPARE(mine.pixel(x, y), library.pixel(x, y));
    }

    // Lenient where the library is strict: planes 0, an odd header size.
    QVERIFY(qtReads(bmp24(0)).isNull());
    QCOMPARE(ImageBmp::decode(bmp24(0)).pixel(2, 1), qRgb(0x12, 0x34, 0x56));
    QByteArray oddHeader = bmp24(1);
    oddHeader[14] = 41;
    QVERIFY(qtReads(oddHeader).isNull());
    QCOMPARE(ImageBmp::decode(oddHeader).pixel(0, 0), qRgb(0xFF, 0, 0));

    // Refusals, with a reason.
    QString why;
    QVERIFY(ImageBmp::decode(bmp24(0).left(54), &why).isNull());
    QVERIFY(!why.isEmpty());
    QVERIFY(ImageBmp::decode(bmp24(0).left(70), &why).isNull());
    QVERIFY(why.contains("truncated"));
    QByteArray rle = bmp24(0);
    rle[30] = 1;
    QVERIFY(ImageBmp::decode(rle, &why).isNull());
    QByteArray four = bmp24(0);
    four[28] = 4;
    QVERIFY(ImageBmp::decode(four, &why).isNull());
    QByteArray huge = bmp24(0);
    huge[21] = 0x7F; // width 0x7F000003
    QVERIFY(ImageBmp::decode(huge, &why).isNull());
    QByteArray magic = bmp24(1);
    magic[0] = 'X';
    QVERIFY(ImageBmp::decode(magic, &why).isNull());

    QVERIFY(ImageBmp::acceptsPath("/a/b/Page_01.bmp"));
    QVERIFY(ImageBmp::acceptsPath("x.BMP"));
    QVERIFY(!ImageBmp::acceptsPath("x.bmp.png"));
    QVERIFY(!ImageBmp::acceptsPath("bmp"));
}

void TestImageEncoder::bmpFallbackThroughEncoder()
{
    QTemporaryDir dir;
    const QString bmpPath = dir.filePath("0003_strict.bmp");
    QVERIFY(writeFile(bmpPath, bmp24(0)));
    QImage probe;
    QVERIFY(!probe.load(bmpPath)); // the library refuses it

    const EncodedImage e = ImageEncoder::encodeFile(bmpPath, 6, plain());
    QCOMPARE(e.format, 6);
    QCOMPARE(e.width, 3);
    QCOMPARE(e.height, 2);
    QCOMPARE(e.bytes, bytesOf({0x00, 0x00, 0xFF, 0xFF, 0x00, 0xFF, 0x00, 0xFF, 0xFF, 0x00, 0x00, 0xFF,
                               0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0xFF, 0x56, 0x34, 0x12, 0xFF}));

    // The fallback is for ".bmp" names only.
    const QString pngPath = dir.filePath("0004_strict.png");
    QVERIFY(writeFile(pngPath, bmp24(0)));
    const EncodedImage refused = ImageEncoder::encodeFile(pngPath, 6, plain());
    QCOMPARE(refused.format, 255);
    QVERIFY(refused.bytes.isEmpty());
}

void TestImageEncoder::unreadableFiles()
{
    QTemporaryDir dir;
    auto expectUnreadable = [](const EncodedImage &e, const char *what) {
        if (e.format != 255 || !e.bytes.isEmpty() || e.error.isEmpty() || e.isValid() || e.width || e.height)
            QFAIL(what);
    };
    expectUnreadable(ImageEncoder::encodeFile(dir.filePath("missing.png"), 0, plain()), "missing file");
    const QString empty = dir.filePath("empty.png");
    QVERIFY(writeFile(empty, QByteArray()));
    expectUnreadable(ImageEncoder::encodeFile(empty, 7, plain()), "empty file");

    QRandomGenerator gen(99);
    QByteArray garbage(2000, '\0');
    for (char &c : garbage)
        c = char(gen.generate());
    for (const char *name : {"garbage.png", "garbage.bmp", "garbage.jpg"}) {
        QVERIFY(writeFile(dir.filePath(name), garbage));
        expectUnreadable(ImageEncoder::encodeFile(dir.filePath(name), 32, plain()), name);
    }

    // Every cut of a BMP that only the fallback reads fails; the whole file
    // reads.
    const QByteArray bmp = bmp24(0);
    const QString cut = dir.filePath("cut.bmp");
    for (int n = 0; n < bmp.size(); ++n) {
        QVERIFY(writeFile(cut, bmp.left(n)));
        expectUnreadable(ImageEncoder::encodeFile(cut, 0, plain()), qPrintable(QString("bmp cut at %1").arg(n)));
    }
    QVERIFY(writeFile(cut, bmp));
    QCOMPARE(ImageEncoder::encodeFile(cut, 0, plain()).bytes.size(), 12);

    // Cuts of a PNG: a clear failure or a whole picture, never anything else.
    QByteArray png;
    {
        QBuffer buf(&png);
        buf.open(QIODevice::WriteOnly);
        QVERIFY(flatArt(30, 20).save(&buf, "PNG"));
    }
    const QString cutPng = dir.filePath("cut.png");
    for (int n = 0; n < png.size(); n += 7) {
        QVERIFY(writeFile(cutPng, png.left(n)));
        const EncodedImage e = ImageEncoder::encodeFile(cutPng, 3, plain());
        if (e.isValid())
            QVERIFY(e.width == 30 && e.height == 20 && e.bytes.size() > 0);
        else
            expectUnreadable(e, qPrintable(QString("png cut at %1").arg(n)));
    }
    QVERIFY(writeFile(cutPng, png.left(png.size() / 2)));
    expectUnreadable(ImageEncoder::encodeFile(cutPng, 3, plain()), "half a png");

    // Encoding a null picture.
    expectUnreadable(ImageEncoder::encode(QImage(), 0, plain()), "null picture");
}

void TestImageEncoder::transparencyTest()
{
    QImage img(50, 40, QImage::Format_ARGB32);
    img.fill(qRgba(1, 2, 3, 255));
    QVERIFY(!ImageEncoder::hasTransparency(img));
    img.setPixel(49, 39, qRgba(1, 2, 3, 254));
    QVERIFY(ImageEncoder::hasTransparency(img));
    QVERIFY(ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_ARGB32_Premultiplied)));
    QVERIFY(ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_RGBA8888)));
    QVERIFY(!ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_RGB32)));

    // A palette picture with a see-through entry that is used; then unused.
    QImage indexed(100, 100, QImage::Format_Indexed8);
    indexed.setColorTable({qRgba(0, 0, 0, 255), qRgba(9, 9, 9, 0)});
    indexed.fill(0);
    QVERIFY(!ImageEncoder::hasTransparency(indexed));
    indexed.setPixel(5, 90, 1);
    QVERIFY(ImageEncoder::hasTransparency(indexed));
    QVERIFY(!ImageEncoder::hasTransparency(QImage()));
}

void TestImageEncoder::optionsFromSettings()
{
    ProjectSettings s;
    s.panelType = 10;
    s.rotate = 3;
    s.colorDepth = 1;
    s.flashTypeIndex = 0;
    s.byteSwap = true;
    EncodeOptions o = EncodeOptions::fromSettings(s);
    QCOMPARE(o.controller, 8);
    QCOMPARE(o.rotation, 3);
    QVERIFY(o.rgb888);
    QVERIFY(!o.nand); // Nand only on chips 3 and 4
    QVERIFY(o.byteSwap);

    for (int chip : {3, 4}) {
        s.panelType = chip;
        s.flashTypeIndex = 0;
        QVERIFY(EncodeOptions::fromSettings(s).nand);
        s.flashTypeIndex = 1;
        QVERIFY(!EncodeOptions::fromSettings(s).nand);
    }
    s.colorDepth = 0;
    QVERIFY(!EncodeOptions::fromSettings(s).rgb888);
}

QTEST_GUILESS_MAIN(TestImageEncoder)
#include "tst_image_encoder.moc"
