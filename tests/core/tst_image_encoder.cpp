// The image encoder: pixel packers against words worked out by hand, Nand
// row padding, the four rotations, the choice of format, the VC container
// (laid out by hand and decoded by an independent reader written here), the
// fallback BMP reader, and files that can't be read.

#include "build/ImageBmp.h"
#include "build/ImageEncoder.h"
#include "project/ProjectSettings.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <initializer_list>
#include <utility>
#include <vector>

using namespace vantile;

namespace {

QByteArray hex(const char *spaced)
{
    return QByteArray::fromHex(QByteArray(spaced).replace(' ', ""));
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

// A picture one pixel high.
QImage row(std::initializer_list<QRgb> pixels)
{
    return argbImage(int(pixels.size()), 1, pixels);
}

QImage filled(int w, int h, QRgb colour)
{
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(colour);
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

// Words from (word, count) runs.
std::vector<quint16> runsOf(std::initializer_list<std::pair<quint16, int>> runs)
{
    std::vector<quint16> words;
    for (const auto &r : runs)
        words.insert(words.end(), size_t(r.second), r.first);
    return words;
}

QByteArray leWords(const std::vector<quint16> &words)
{
    QByteArray b;
    for (quint16 w : words)
        b.append(char(w & 0xFF)).append(char(w >> 8));
    return b;
}

quint32 le(const QByteArray &b, int at, int n)
{
    quint32 v = 0;
    for (int i = 0; i < n; ++i)
        v |= quint32(quint8(b[at + i])) << (8 * i);
    return v;
}

// Options from words: "888" 24-bit colour, "swap", "nand", "r1".."r3"
// rotation, "chip5" controller.
EncodeOptions opts(const QString &words = QString())
{
    EncodeOptions o;
    for (const QString &w : words.split(' ', Qt::SkipEmptyParts)) {
        o.rgb888 |= w == "888";
        o.byteSwap |= w == "swap";
        o.nand |= w == "nand";
        if (w.startsWith("chip"))
            o.controller = w.mid(4).toInt();
        else if (w.startsWith('r'))
            o.rotation = w.mid(1).toInt();
    }
    return o;
}

// ---- an independent reader of the VC container --------------------------

struct VcImage {
    QString fault; // empty when the container is sound
    int width = 0, height = 0, segments = 0, format = 0;
    quint32 total = 0;
    std::vector<int> dataSizes, flags;
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
        const int end = pos + size;
        if (end > int(v.total) || (flag != 0 && flag != 1) || (flag == 1 && size % 2)) {
            v.fault = QString("segment %1 malformed").arg(k);
            return v;
        }
        for (; pos < end; pos += flag ? 2 : 1) {
            const int count = flag ? quint8(c[pos]) + 1 : 1;
            const quint32 w = le(c, h + 4 + 2 * quint8(c[flag ? pos + 1 : pos]), 2);
            for (int i = 0; i < count; ++i)
                v.words.append(char(w & 0xFF)).append(char(w >> 8));
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
    const quint32 offset = quint32(14 + infoSize + afterHeader.size());
    QByteArray b;
    QDataStream d(&b, QIODevice::WriteOnly);
    d.setByteOrder(QDataStream::LittleEndian);
    d << quint8('B') << quint8('M') << quint32(offset + quint32(pixels.size())) << quint32(0) << offset
      << quint32(infoSize) << qint32(w) << qint32(h) << planes << quint16(bpp) << compression
      << quint32(pixels.size());
    b.append(QByteArray(14 + infoSize - b.size(), '\0'));
    return b + afterHeader + pixels;
}

// 3 x 2, 24 bits, bottom-up. Top row red, green, blue; bottom row white,
// black, (0x12, 0x34, 0x56). Rows of 9 bytes padded to 12.
QByteArray bmp24(quint16 planes)
{
    return makeBmp(3, 2, 24, 0, 40, QByteArray(),
                   hex("FFFFFF 000000 563412 000000" "0000FF 00FF00 FF0000 000000"), planes);
}

QImage bmp24Pixels()
{
    return argbImage(3, 2,
                     {qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF), qRgb(0xFF, 0xFF, 0xFF), qRgb(0, 0, 0),
                      qRgb(0x12, 0x34, 0x56)});
}

QByteArray patched(QByteArray b, int at, int value)
{
    b[at] = char(value);
    return b;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray saved(const QImage &img, const char *format)
{
    QByteArray bytes;
    QBuffer buf(&bytes);
    buf.open(QIODevice::WriteOnly);
    return img.save(&buf, format) ? bytes : QByteArray();
}

// Flat "interface" art for the round trips.
QImage flatArt(int w, int h)
{
    QImage img = filled(w, h, qRgba(0x20, 0x30, 0x40, 255));
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
    void formatNames()
    {
        const char *const codes[] = {"RGB565",       "softpng",  "aRGB4444", "RGB565_zip", "softpng_zip",
                                     "aRGB4444_zip", "aRGB8888", "jpg",      "aRGB8565",   "ZoomIN"};
        for (int code = 0; code < 10; ++code)
            QCOMPARE(ImageEncoder::nameToFormat(codes[code]), code);
        QCOMPARE(ImageEncoder::nameToFormat("RGB888"), 0);
        // Exact comparison: case, blanks and near misses are unknown names.
        for (const char *name : {"rgb565", "Softpng", " jpg", "jpg ", "JPG", "RGB565zip", "", "auto"})
            QCOMPARE(ImageEncoder::nameToFormat(name), 32);
    }

    // --- packers: the requested code is the stored one in every row ----------
    void packers_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<int>("format");
        QTest::addColumn<QString>("options");
        QTest::addColumn<QByteArray>("bytes");

        // (0x12, 0x34, 0x56): 0x12 >> 3 = 2, 0x34 >> 2 = 13, 0x56 >> 3 = 10
        // -> 2 << 11 | 13 << 5 | 10 = 0x1000 | 0x01A0 | 0x000A = 0x11AA.
        const QImage one = row({qRgb(0x12, 0x34, 0x56)});
        const QImage rgb = row({qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF)});
        QTest::newRow("565") << one << 0 << "" << hex("AA11");
        QTest::newRow("565 swapped") << one << 0 << "swap" << hex("11AA");
        // The swap is for format 0 alone (one pixel does not compress).
        QTest::newRow("softpng not swapped") << one << 1 << "swap" << hex("AA11");
        QTest::newRow("565_zip not swapped") << one << 3 << "swap" << hex("AA11");
        // Top nibbles: A 0xAB R 0xCD G 0xEF B 0x12 -> 0xACE1; A 0x10 R 0x0F G 0xF0 B 0x8F -> 0x10F8.
        QTest::newRow("4444") << row({qRgba(0xCD, 0xEF, 0x12, 0xAB), qRgba(0x0F, 0xF0, 0x8F, 0x10)}) << 2 << ""
                              << hex("E1AC F810");
        // Opaque black packs to word 0, the transparent key; softpng makes it
        // 0x0821 (one step up in red, green and blue), and so near black that
        // loses all bits (7, 3, 7). Format 0 keeps 0. Alpha 127 is transparent
        // (0 whatever the colour), 128 keeps the colour:
        // (0xFF, 0x80, 0x40) -> 31 << 11 | 32 << 5 | 8 = 0xFC08.
        const QImage edges = row({qRgb(0, 0, 0), qRgb(7, 3, 7), qRgba(0xFF, 0x80, 0x40, 127),
                                  qRgba(0xFF, 0x80, 0x40, 128), qRgba(0, 0, 0, 128)});
        QTest::newRow("softpng edges") << edges << 1 << "" << hex("2108 2108 0000 08FC 2108");
        QTest::newRow("565 edges") << edges << 0 << "" << hex("0000 0000 08FC 08FC 0000");

        // 24-bit panels: B, G, R; format 0 is not rounded to even. softpng
        // with transparency: alpha below 128 gives three zeros, opaque black
        // 2, 2, 2; on an opaque picture black stays 0, 0, 0.
        QTest::newRow("888") << row({qRgb(0x11, 0x22, 0x33)}) << 0 << "888" << hex("332211");
        QTest::newRow("888 softpng keyed")
            << row({qRgba(0xAA, 0xBB, 0xCC, 0x00), qRgba(0, 0, 0, 0xFF), qRgba(0x10, 0x20, 0x30, 0xFF),
                    qRgba(0, 0, 0, 0x80), qRgba(0x10, 0x20, 0x30, 0x7F)})
            << 1 << "888" << hex("000000 020202 302010 020202 000000");
        QTest::newRow("888 softpng opaque") << row({qRgb(0, 0, 0), qRgb(0x10, 0x20, 0x30)}) << 1 << "888"
                                            << hex("000000 302010");
        // The zip codes stay, uncompressed, plain B, G, R even where
        // transparent (9 bytes get a 0xFF for code 4); a flat picture too.
        QTest::newRow("888 softpng_zip") << row({qRgba(0xAA, 0xBB, 0xCC, 0), qRgb(0, 0, 0), qRgb(1, 2, 3)}) << 4
                                         << "888" << hex("CCBBAA 000000 030201 FF");
        QTest::newRow("888 565_zip flat") << filled(300, 1, qRgb(1, 2, 3)) << 3 << "888" << hex("030201").repeated(300);
        // aRGB4444 uses the 16-bit packer on a 24-bit panel too.
        QTest::newRow("888 4444") << row({qRgba(0xCD, 0xEF, 0x12, 0xAB)}) << 2 << "888" << hex("E1AC");

        // aRGB8565: low and high byte of RGB565, then alpha; (0xFF, 0, 0xFF)
        // -> 0xF81F. Nine bytes get a 0xFF, six stay. aRGB8888: B, G, R, A.
        const QImage three = row({qRgba(0xFF, 0x00, 0xFF, 0x80), qRgba(0, 0, 0, 0), qRgb(0x12, 0x34, 0x56)});
        QTest::newRow("8565 odd") << three << 8 << "" << hex("1FF880 000000 AA11FF FF");
        QTest::newRow("8565 even") << three.copy(0, 0, 2, 1) << 8 << "" << hex("1FF880 000000");
        QTest::newRow("8888") << three << 6 << "" << hex("FF00FF80 00000000 563412FF");
        // Held premultiplied: the same values where the alpha is 255 or 0.
        QTest::newRow("8888 premultiplied")
            << row({qRgb(0x12, 0x34, 0x56), qRgba(0, 0, 0, 0)}).convertToFormat(QImage::Format_ARGB32_Premultiplied)
            << 6 << "" << hex("563412FF 00000000");
        // An RGB32 picture is opaque whatever its unused top byte holds (here
        // 0, in a buffer of the caller's), read in place or turned.
        static const quint32 raw[2] = {0x00123456u, 0x00000000u};
        const QImage rgb32(reinterpret_cast<const uchar *>(raw), 2, 1, QImage::Format_RGB32);
        QTest::newRow("RGB32 8888") << rgb32 << 6 << "" << hex("563412FF 000000FF");
        QTest::newRow("RGB32 8888 turned") << rgb32 << 6 << "r2" << hex("000000FF 563412FF");
        QTest::newRow("RGB32 softpng") << rgb32 << 1 << "" << hex("AA11 2108");

        // Nand: rows go to a multiple of 4 pixels with pad pixels of each
        // packer's own; the width stays.
        const QImage six = argbImage(3, 2,
                                     {qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF), qRgb(0, 0, 0),
                                      qRgb(0x12, 0x34, 0x56), qRgb(0xFF, 0xFF, 0xFF)});
        QTest::newRow("nand 565") << six << 0 << "nand" << hex("00F8 E007 1F00 FFFF 0000 AA11 FFFF FFFF");
        QTest::newRow("nand width 4") << filled(4, 1, qRgb(0, 0, 0)) << 0 << "nand" << QByteArray(8, '\0');
        QTest::newRow("nand 8565") << rgb << 8 << "nand" << hex("00F8FF E007FF 1F00FF FFFF00");
        QTest::newRow("nand 8888") << rgb << 6 << "nand" << hex("0000FFFF 00FF00FF FF0000FF FFFFFF00");
        QTest::newRow("nand 888") << rgb << 0 << "nand 888" << hex("0000FF 00FF00 FF0000 FFFFFF");
        // Padding follows the turned width: 2 x 3 (1 2 / 3 4 / 5 6) turned
        // clockwise is 5 3 1 / 6 4 2.
        QTest::newRow("nand turned") << imageOfWords(2, 3, {1, 2, 3, 4, 5, 6}) << 0 << "nand r1"
                                     << hex("0500 0300 0100 FFFF 0600 0400 0200 FFFF");
    }

    void packers()
    {
        QFETCH(QImage, image);
        QFETCH(int, format);
        QFETCH(QString, options);
        QFETCH(QByteArray, bytes);
        const EncodeOptions o = opts(options);
        const EncodedImage e = ImageEncoder::encode(image, format, o);
        QCOMPARE(e.format, format);
        QCOMPARE(QSize(e.width, e.height), o.rotation % 2 ? image.size().transposed() : image.size());
        QCOMPARE(e.bytes, bytes);
        QVERIFY(!e.compressed);
    }

    void choiceOfFormat()
    {
        const QImage opaque = filled(2, 2, qRgb(0xFF, 0, 0));
        QImage seeThrough = opaque;
        seeThrough.setPixel(1, 1, qRgba(0xFF, 0, 0, 0xE0));

        // Automatic: anything above 8 but the needle entry's 9 (see below); a
        // picture with transparency gets aRGB4444, an opaque one RGB565.
        for (int r : {9, 10, 16, 32, 127}) {
            QCOMPARE(ImageEncoder::encode(opaque, r, opts()).format, 0);
            QCOMPARE(ImageEncoder::encode(seeThrough, r, opts()).format, 2);
        }
        // the last pixel 0xFF0000 with alpha 0xE0 -> 0xEF00 in aRGB4444
        QCOMPARE(ImageEncoder::encode(seeThrough, 32, opts()).bytes.right(2), hex("00EF"));

        // Chip 5 with 24-bit colour: aRGB8888 whatever was asked, even jpg.
        for (int r : {0, 1, 2, 3, 4, 5, 7, 8, 32}) {
            const EncodedImage e = ImageEncoder::encode(opaque, r, opts("chip5 888"), QByteArray("file"));
            QCOMPARE(e.format, 6);
            QCOMPARE(e.bytes, hex("0000FFFF").repeated(4));
        }
        // Chip 5 with 16-bit colour, or another chip with 24-bit colour: as asked.
        QCOMPARE(ImageEncoder::encode(opaque, 0, opts("chip5")).format, 0);
        QCOMPARE(ImageEncoder::encode(opaque, 0, opts("chip4 888")).bytes.size(), 12);
        QCOMPARE(ImageEncoder::encode(opaque, 6, opts("chip4 888")).format, 6);
        QCOMPARE(ImageEncoder::encode(opaque, 8, opts("chip4 888")).bytes.size(), 12);

        // 7 without file bytes has nothing to copy.
        const EncodedImage noFile = ImageEncoder::encode(opaque, 7, opts());
        QCOMPARE(noFile.format, 255);
        QVERIFY(noFile.bytes.isEmpty());
        QVERIFY(!noFile.error.isEmpty());
    }

    void perRowHookOnlyForWidePackers()
    {
        int calls = 0;
        EncodeOptions o;
        o.perRow = [&calls] { ++calls; };
        // 7 rows: aRGB8888, aRGB8565 and the 24-bit packer call once a row, 16-bit packers never
        for (const auto &[format, rgb888, rows] : {std::tuple{6, false, 7}, std::tuple{8, false, 7},
                                                   std::tuple{0, false, 0}, std::tuple{0, true, 7}}) {
            calls = 0;
            o.rgb888 = rgb888;
            ImageEncoder::encode(filled(5, 7, qRgb(1, 2, 3)), format, o);
            QCOMPARE(calls, rows);
        }
    }

    // --- rotation ---------------------------------------------------------------
    void rotation_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("ARGB32") << int(QImage::Format_ARGB32);
        QTest::newRow("RGB32") << int(QImage::Format_RGB32);
        QTest::newRow("premultiplied") << int(QImage::Format_ARGB32_Premultiplied);
        QTest::newRow("RGB888") << int(QImage::Format_RGB888);
        QTest::newRow("Indexed8") << int(QImage::Format_Indexed8);
    }

    void rotation()
    {
        // Source, 3 wide and 2 high:   a b c
        //                              d e f
        // 1 (clockwise): 2 x 3   d a / e b / f c
        // 2 (half turn): 3 x 2   f e d / c b a
        // 3 (counter-clockwise): 2 x 3   c f / b e / a d
        QFETCH(int, format);
        const QRgb a = qRgb(0x10, 0x11, 0x12), b = qRgb(0x20, 0x21, 0x22), c = qRgb(0x30, 0x31, 0x32),
                   d = qRgb(0x40, 0x41, 0x42), e = qRgb(0x50, 0x51, 0x52), f = qRgb(0x60, 0x61, 0x62);
        const QImage abc = argbImage(3, 2, {a, b, c, d, e, f});
        const QImage src = format == QImage::Format_Indexed8
                               ? abc.convertToFormat(QImage::Format_Indexed8, {a, b, c, d, e, f})
                               : abc.convertToFormat(QImage::Format(format));
        QCOMPARE(int(src.format()), format);
        QCOMPARE(src.pixel(2, 1), f); // the colours survived the conversion
        auto bgra = [](std::initializer_list<QRgb> pixels) {
            QByteArray out;
            for (QRgb p : pixels)
                out.append(char(qBlue(p))).append(char(qGreen(p))).append(char(qRed(p))).append(char(0xFF));
            return out;
        };
        const QByteArray turned[] = {bgra({a, b, c, d, e, f}), bgra({d, a, e, b, f, c}), bgra({f, e, d, c, b, a}),
                                     bgra({c, f, b, e, a, d})};

        // Larger than one working band: the image library's own quarter
        // turns are the reference.
        QImage large(150, 70, QImage::Format_ARGB32);
        for (int y = 0; y < large.height(); ++y)
            for (int x = 0; x < large.width(); ++x)
                large.setPixel(x, y, qRgb(x, y, (x * 7 + y * 3) & 0xFF));
        large = large.convertToFormat(QImage::Format(format));

        for (int rotation = 0; rotation < 4; ++rotation) {
            const EncodeOptions o = opts(QString("r%1").arg(rotation));
            const QSize size = rotation % 2 ? QSize(2, 3) : QSize(3, 2);
            const EncodedImage enc = ImageEncoder::encode(src, 6, o);
            QCOMPARE(QSize(enc.width, enc.height), size);
            QCOMPARE(ImageEncoder::rotatedSize(src.size(), rotation), size);
            QCOMPARE(enc.bytes, turned[rotation]);

            const QImage reference = large.transformed(QTransform().rotate(90 * rotation));
            QCOMPARE(reference.size(), rotation % 2 ? QSize(70, 150) : QSize(150, 70));
            const EncodedImage big = ImageEncoder::encode(large, 6, o);
            QCOMPARE(QSize(big.width, big.height), reference.size());
            QVERIFY2(big.bytes == ImageEncoder::encode(reference, 6, opts()).bytes,
                     qPrintable(QString("rotation %1").arg(rotation)));
        }
    }

    // --- the VC container ---------------------------------------------------------
    void containerLaidOutByHand()
    {
        // 60 x 1: 20 red, 10 green, 20 red, 10 blue in RGB565_zip.
        // One segment, palette F800, 07E0, 001F; runs (19,0) (9,1) (19,0) (9,2):
        // 8 bytes, below the raw 60, and below 60 * 7 / 10 = 42: kept.
        // Size 12 + 516 + 8 = 536 = 0x218.
        const auto words = runsOf({{0xF800, 20}, {0x07E0, 10}, {0xF800, 20}, {0x001F, 10}});
        const EncodedImage e = ImageEncoder::encode(imageOfWords(60, 1, words), 3, opts());
        QCOMPARE(e.format, 3);
        QVERIFY(e.compressed);
        const QByteArray palette = hex("00F8 E007 1F00") + QByteArray(506, '\0');
        QCOMPARE(e.bytes, hex("5643 3C00 0100 01 03 18020000" "080000 01") + palette + hex("1300 0901 1300 0902"));
    }

    void containerSegmentsAndRuns()
    {
        // 300 equal pixels: runs are cut at 256, (255, i) then (43, i).
        const QImage flat = filled(300, 1, colourOfWord(0x1234));
        const EncodedImage e = ImageEncoder::encode(flat, 3, opts());
        QVERIFY(e.compressed);
        QCOMPARE(e.bytes.size(), 532);
        QCOMPARE(le(e.bytes, 8, 4), 532u);
        QCOMPARE(e.bytes.mid(12, 6), hex("040000 01 3412"));
        QCOMPARE(e.bytes.right(4), hex("FF00 2B00"));
        // aRGB4444_zip compresses on a 24-bit panel: the colour (0x10, 0x44,
        // 0xA0), opaque, is 0xF14A.
        const EncodedImage z5 = ImageEncoder::encode(flat, 5, opts("888"));
        QCOMPARE(z5.format, 5);
        QVERIFY(z5.compressed);
        QCOMPARE(decodeVc(z5.bytes).words, hex("4AF1").repeated(300));

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
        words.insert(words.end(), 1024, quint16(0xFFFF));
        const EncodedImage s = ImageEncoder::encode(imageOfWords(256, 5, words), 3, opts());
        QVERIFY(s.compressed);
        QCOMPARE(s.bytes.size(), 1310);
        QCOMPARE(quint8(s.bytes[1309]), quint8(0xFF));
        QCOMPARE(le(s.bytes, 8, 4), 1309u);
        for (int i = 0; i < 256; ++i)
            QCOMPARE(le(s.bytes, 16 + 2 * i, 2), quint32(i * 0x0101));
        QCOMPARE(le(s.bytes, 12 + 516 + 4, 4), 0xFFFFu); // second palette: 0xFFFF, then 0
        QCOMPARE(s.bytes.mid(12 + 2 * 516 + 255, 10), hex("FF00 FF00 FF00 FF00 0000"));
        const VcImage v = decodeVc(s.bytes);
        QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
        QCOMPARE(v.dataSizes, (std::vector<int>{255, 10}));
        QCOMPARE(v.flags, (std::vector<int>{0, 1}));
        QCOMPARE(v.words, leWords(words));

        // A segment whose runs take exactly as many bytes as its pixels is
        // stored raw: 255 colours twice each (510 pixels, 255 runs = 510 bytes),
        // then a 256th colour for 2001 pixels (8 runs). 2511 pixels, data
        // 510 + 16 = 526.
        std::vector<quint16> pairs;
        for (int i = 0; i < 255; ++i)
            pairs.insert(pairs.end(), 2, quint16(0x4000 + i));
        pairs.insert(pairs.end(), 2001, 0x7777);
        const EncodedImage t = ImageEncoder::encode(imageOfWords(93, 27, pairs), 3, opts());
        QVERIFY(t.compressed);
        QCOMPARE(t.bytes.size(), 12 + 2 * 516 + 526);
        const VcImage tv = decodeVc(t.bytes);
        QVERIFY2(tv.fault.isEmpty(), qPrintable(tv.fault));
        QCOMPARE(tv.dataSizes, (std::vector<int>{510, 16}));
        QCOMPARE(tv.flags, (std::vector<int>{0, 1}));
        QCOMPARE(tv.words, leWords(pairs));
    }

    void containerGiveUpRules()
    {
        // The 7/10 rule, compared with the pixel count: 20 pixels allow less
        // than 14 data bytes. 15 A then B A B A B: 6 runs, 12 bytes: kept.
        // 14 A then B A B A B A: 7 runs, 14 bytes: given up.
        const quint16 A = 0x1111, B = 0x2222;
        const auto keep = runsOf({{A, 15}, {B, 1}, {A, 1}, {B, 1}, {A, 1}, {B, 1}});
        const auto drop = runsOf({{A, 14}, {B, 1}, {A, 1}, {B, 1}, {A, 1}, {B, 1}, {A, 1}});
        const EncodedImage kept = ImageEncoder::encode(imageOfWords(20, 1, keep), 3, opts());
        QVERIFY(kept.compressed);
        QCOMPARE(kept.bytes.size(), 12 + 516 + 12);
        const EncodedImage dropped = ImageEncoder::encode(imageOfWords(20, 1, drop), 3, opts());
        QVERIFY(!dropped.compressed);
        QCOMPARE(dropped.format, 3);
        QCOMPARE(dropped.bytes, leWords(drop));

        // Noise gives up and keeps the requested code with the plain words:
        // small (the 7/10 rule) and large (more than 255 segments).
        for (const QImage &img : {noise(64, 64, 7), noise(300, 300, 8)}) {
            for (const auto &[zip, plain] : {std::pair{3, 0}, std::pair{5, 2}}) {
                const EncodedImage z = ImageEncoder::encode(img, zip, opts());
                QCOMPARE(z.format, zip);
                QVERIFY(!z.compressed);
                QCOMPARE(z.bytes, ImageEncoder::encode(img, plain, opts()).bytes);
            }
        }

        // The segment limit. Values cycling through 256 colours make a segment
        // every 255 pixels. 254 full segments and one pixel of the 255th, then a
        // long run of that pixel's colour: 255 segments, kept. With one segment
        // more the data would still pay, but compression is given up.
        auto cycling = [](int patterned) {
            std::vector<quint16> w;
            for (int i = 0; i < patterned; ++i)
                w.push_back(quint16(i % 256));
            w.insert(w.end(), size_t(100000 - patterned), w.back());
            return w;
        };
        const std::vector<quint16> fits = cycling(254 * 255 + 1);
        const EncodedImage f = ImageEncoder::encode(imageOfWords(1000, 100, fits), 3, opts());
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

        const std::vector<quint16> over = cycling(255 * 255 + 1);
        const EncodedImage o = ImageEncoder::encode(imageOfWords(1000, 100, over), 3, opts());
        QVERIFY(!o.compressed);
        QCOMPARE(o.format, 3);
        QCOMPARE(o.bytes, leWords(over));
    }

    void containerRoundTrips()
    {
        // decode(encode(picture)) equals the packed words of the plain format,
        // Nand pad words included.
        for (const QImage &img : {flatArt(123, 77), flatArt(640, 200)}) {
            for (const auto &[zip, plain] : {std::pair{3, 0}, std::pair{4, 1}, std::pair{5, 2}}) {
                for (const EncodeOptions &o : {opts(), opts("nand")}) {
                    const EncodedImage z = ImageEncoder::encode(img, zip, o);
                    const QByteArray words = ImageEncoder::encode(img, plain, o).bytes;
                    QCOMPARE(z.format, zip);
                    QVERIFY(z.compressed);
                    const VcImage v = decodeVc(z.bytes);
                    QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
                    QCOMPARE(QSize(v.width, v.height), img.size());
                    QCOMPARE(v.format, zip);
                    QCOMPARE(v.words, words);
                    QCOMPARE(z.bytes.size(), int(v.total + (v.total & 1)));
                    QVERIFY(z.bytes.size() < words.size());
                }
            }
        }
    }

    // --- files --------------------------------------------------------------------
    void jpgPassthrough()
    {
        QTemporaryDir dir;
        const QByteArray jpeg = saved(filled(21, 13, qRgb(0x80, 0x40, 0x20)), "JPG");
        QVERIFY(!jpeg.isEmpty());
        // One file of odd size, one of even size (a byte after the end marker).
        const QByteArray odd = jpeg.size() % 2 ? jpeg : jpeg + '\0';
        const QByteArray even = jpeg.size() % 2 ? jpeg + '\0' : jpeg;
        QVERIFY(writeFile(dir.filePath("odd.jpg"), odd));
        QVERIFY(writeFile(dir.filePath("even.jpg"), even));

        // The odd file gets one 0xFF; turning changes the size, not the bytes.
        const EncodedImage e = ImageEncoder::encodeFile(dir.filePath("odd.jpg"), 7, opts());
        QCOMPARE(e.format, 7);
        QCOMPARE(QSize(e.width, e.height), QSize(21, 13));
        QCOMPARE(e.bytes, odd + char(0xFF));
        const EncodedImage t = ImageEncoder::encodeFile(dir.filePath("even.jpg"), 7, opts("r3"));
        QCOMPARE(t.bytes, even);
        QCOMPARE(QSize(t.width, t.height), QSize(13, 21));

        // The same file in another format is decoded and packed.
        const EncodedImage packed = ImageEncoder::encodeFile(dir.filePath("even.jpg"), 0, opts());
        QCOMPARE(packed.format, 0);
        QCOMPARE(packed.bytes.size(), 21 * 13 * 2);
    }

    void needleEntry()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("0001_0_0.png");
        const QImage picture = argbImage(3, 2,
                                         {qRgba(0xFF, 0x00, 0xFF, 0x80), qRgba(0, 0, 0, 0), qRgb(0x12, 0x34, 0x56),
                                          qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF)});
        const QByteArray file = saved(picture, "PNG");
        QVERIFY(writeFile(path, file));

        const EncodeOptions o = opts("r1"); // not applied to needle frames
        const EncodedImage four = ImageEncoder::encodeNeedleFrame(path, 2, o);
        QCOMPARE(four.format, 2);
        QCOMPARE(QSize(four.width, four.height), QSize(3, 2));
        // 0x80FF00FF -> 0x8F0F; 0 -> 0; 0xFF123456 -> 0xF135; red 0xFF00, green 0xF0F0, blue 0xF00F
        QCOMPARE(four.bytes, hex("0F8F 0000 35F1 00FF F0F0 0FF0"));
        // 7 packs as aRGB8565 and stores 7: 6 pixels x 3 bytes, even already.
        const EncodedImage seven = ImageEncoder::encodeNeedleFrame(path, 7, o);
        QCOMPARE(seven.format, 7);
        QCOMPARE(seven.bytes, hex("1FF880 000000 AA11FF 00F8FF E007FF 1F00FF"));
        // 9 copies the file and stores 9.
        const EncodedImage nine = ImageEncoder::encodeNeedleFrame(path, 9, o);
        QCOMPARE(nine.format, 9);
        QCOMPARE(nine.bytes, file);
        QCOMPARE(nine.width, 3);

        // The panel entry turns the same file, and 9 is automatic there.
        const EncodedImage panel = ImageEncoder::encodeFile(path, 9, o);
        QCOMPARE(panel.format, 2);
        QCOMPARE(QSize(panel.width, panel.height), QSize(2, 3));
    }

    void bmpFallbackReader_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QImage>("pixels");
        QTest::addColumn<bool>("libraryReads");

        // 24 bits, bottom-up, rows padded to 4 bytes.
        QTest::newRow("24 bits") << bmp24(1) << bmp24Pixels() << true;
        // 8 bits, top-down (negative height), 3 palette entries B, G, R, 0.
        const QByteArray pal = hex("30201000 FFFFFF00 FF800000");
        QTest::newRow("8 bits") << patched(makeBmp(2, -2, 8, 0, 40, pal, hex("01020000 00010000")), 46, 3)
                                << argbImage(2, 2, {qRgb(0xFF, 0xFF, 0xFF), qRgb(0x00, 0x80, 0xFF),
                                                    qRgb(0x10, 0x20, 0x30), qRgb(0xFF, 0xFF, 0xFF)})
                                << true;
        // 16 bits 5-5-5: 0x7FFF -> 0xF8 each, 0x4210 -> 0x80 each (5 bits times 8).
        QTest::newRow("16 bits 555") << makeBmp(2, 1, 16, 0, 40, QByteArray(), hex("FF7F 1042"))
                                     << row({qRgb(0xF8, 0xF8, 0xF8), qRgb(0x80, 0x80, 0x80)}) << true;
        // 16 bits 5-6-5 by bit masks behind the header; 0x0821 -> (8, 4, 8).
        QTest::newRow("16 bits 565") << makeBmp(3, 1, 16, 3, 40, hex("00F80000 E0070000 1F000000"),
                                                hex("00F8 E007 2108 0000"))
                                     << row({qRgb(0xF8, 0, 0), qRgb(0, 0xFC, 0), qRgb(0x08, 0x04, 0x08)}) << true;
        // 32 bits without masks: the fourth byte is not alpha.
        const QByteArray px32 = hex("78563412 EFCDAB00");
        QTest::newRow("32 bits") << makeBmp(2, 1, 32, 0, 40, QByteArray(), px32)
                                 << row({qRgb(0x34, 0x56, 0x78), qRgb(0xAB, 0xCD, 0xEF)}) << true;
        // 32 bits, 124-byte header with masks R, G, B and alpha.
        QByteArray b32a = makeBmp(2, 1, 32, 3, 124, QByteArray(), px32);
        b32a.replace(54, 16, hex("0000FF00 00FF0000 FF000000 000000FF"));
        QTest::newRow("32 bits alpha") << b32a << row({qRgba(0x34, 0x56, 0x78, 0x12), qRgba(0xAB, 0xCD, 0xEF, 0x00)})
                                       << true;
        // Lenient where the library is strict: planes 0, an odd header size.
        QTest::newRow("planes 0") << bmp24(0) << bmp24Pixels() << false;
        QTest::newRow("header of 41") << patched(bmp24(1), 14, 41) << bmp24Pixels() << false;
    }

    void bmpFallbackReader()
    {
        QFETCH(QByteArray, file);
        QFETCH(QImage, pixels);
        QFETCH(bool, libraryReads);
        QString why;
        const QImage mine = ImageBmp::decode(file, &why);
        QVERIFY2(!mine.isNull(), qPrintable(why));
        QCOMPARE(mine.size(), pixels.size());
        for (int y = 0; y < mine.height(); ++y)
            for (int x = 0; x < mine.width(); ++x)
                QCOMPARE(mine.pixel(x, y), pixels.pixel(x, y));
        // The image library reads the files it accepts to the same pixels.
        const QImage library = QImage::fromData(file).convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(library.isNull(), !libraryReads);
        if (libraryReads)
            QCOMPARE(library, mine.convertToFormat(QImage::Format_ARGB32));
    }

    void bmpRefusals()
    {
        const QByteArray bmp = bmp24(0);
        const QList<QPair<const char *, QByteArray>> bad = {
            {"header only", bmp.left(54)},         {"truncated", bmp.left(70)},
            {"compressed", patched(bmp, 30, 1)},   {"4 bits", patched(bmp, 28, 4)},
            {"width 0x7F000003", patched(bmp, 21, 0x7F)}, {"magic", patched(bmp, 0, 'X')},
        };
        for (const auto &b : bad) {
            QString why;
            QVERIFY2(ImageBmp::decode(b.second, &why).isNull(), b.first);
            QVERIFY2(!why.isEmpty(), b.first);
        }
        QString why;
        ImageBmp::decode(bmp.left(70), &why);
        QVERIFY(why.contains("truncated"));

        QVERIFY(ImageBmp::acceptsPath("/a/b/Page_01.bmp"));
        QVERIFY(ImageBmp::acceptsPath("x.BMP"));
        QVERIFY(!ImageBmp::acceptsPath("x.bmp.png"));
        QVERIFY(!ImageBmp::acceptsPath("bmp"));
    }

    void unreadableFiles()
    {
        QTemporaryDir dir;
        auto expectUnreadable = [](const EncodedImage &e, const QString &what) {
            if (e.format != 255 || !e.bytes.isEmpty() || e.error.isEmpty() || e.isValid() || e.width || e.height)
                QFAIL(qPrintable(what));
        };
        expectUnreadable(ImageEncoder::encodeFile(dir.filePath("missing.png"), 0, opts()), "missing file");
        const QString empty = dir.filePath("empty.png");
        QVERIFY(writeFile(empty, QByteArray()));
        expectUnreadable(ImageEncoder::encodeFile(empty, 7, opts()), "empty file");
        expectUnreadable(ImageEncoder::encode(QImage(), 0, opts()), "null picture");

        QRandomGenerator gen(99);
        QByteArray garbage(2000, '\0');
        for (char &c : garbage)
            c = char(gen.generate());
        for (const char *name : {"garbage.png", "garbage.bmp", "garbage.jpg"}) {
            QVERIFY(writeFile(dir.filePath(name), garbage));
            expectUnreadable(ImageEncoder::encodeFile(dir.filePath(name), 32, opts()), name);
        }

        // Every cut of a BMP that only the fallback reads fails. The whole
        // file reads, but only under a ".bmp" name.
        const QByteArray bmp = bmp24(0);
        const QString cut = dir.filePath("cut.bmp");
        for (int n = 0; n < bmp.size(); ++n) {
            QVERIFY(writeFile(cut, bmp.left(n)));
            expectUnreadable(ImageEncoder::encodeFile(cut, 0, opts()), QString("bmp cut at %1").arg(n));
        }
        QVERIFY(writeFile(cut, bmp));
        QImage probe;
        QVERIFY(!probe.load(cut)); // the library refuses it
        const EncodedImage e = ImageEncoder::encodeFile(cut, 6, opts());
        QCOMPARE(e.format, 6);
        QCOMPARE(QSize(e.width, e.height), QSize(3, 2));
        QCOMPARE(e.bytes, hex("0000FFFF 00FF00FF FF0000FF FFFFFFFF 000000FF 563412FF"));
        QVERIFY(writeFile(dir.filePath("bmp.png"), bmp));
        expectUnreadable(ImageEncoder::encodeFile(dir.filePath("bmp.png"), 6, opts()), "a BMP named .png");

        // Cuts of a PNG: a clear failure or a whole picture, never anything else.
        const QByteArray png = saved(flatArt(30, 20), "PNG");
        const QString cutPng = dir.filePath("cut.png");
        for (int n = 0; n < png.size(); n += 7) {
            QVERIFY(writeFile(cutPng, png.left(n)));
            const EncodedImage e = ImageEncoder::encodeFile(cutPng, 3, opts());
            if (e.isValid())
                QVERIFY(e.width == 30 && e.height == 20 && e.bytes.size() > 0);
            else
                expectUnreadable(e, QString("png cut at %1").arg(n));
        }
        QVERIFY(writeFile(cutPng, png.left(png.size() / 2)));
        expectUnreadable(ImageEncoder::encodeFile(cutPng, 3, opts()), "half a png");
    }

    // --- inputs of the choice -------------------------------------------------
    void transparencyTest()
    {
        QImage img = filled(50, 40, qRgb(1, 2, 3));
        QVERIFY(!ImageEncoder::hasTransparency(img));
        img.setPixel(49, 39, qRgba(1, 2, 3, 254));
        QVERIFY(ImageEncoder::hasTransparency(img));
        QVERIFY(ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_ARGB32_Premultiplied)));
        QVERIFY(ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_RGBA8888)));
        QVERIFY(!ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_RGB32)));
        QVERIFY(!ImageEncoder::hasTransparency(QImage()));
        // A palette picture with a see-through entry, unused and then used.
        QImage indexed(100, 100, QImage::Format_Indexed8);
        indexed.setColorTable({qRgb(0, 0, 0), qRgba(9, 9, 9, 0)});
        indexed.fill(0);
        QVERIFY(!ImageEncoder::hasTransparency(indexed));
        indexed.setPixel(5, 90, 1);
        QVERIFY(ImageEncoder::hasTransparency(indexed));
    }

    void optionsFromSettings()
    {
        // Chip 10 counts as 8; Nand only on chips 3 and 4 with flash type 0.
        ProjectSettings s;
        s.panelType = 10;
        s.rotate = 3;
        s.colorDepth = 1;
        s.flashTypeIndex = 0;
        s.byteSwap = true;
        const EncodeOptions o = EncodeOptions::fromSettings(s);
        QVERIFY(o.controller == 8 && o.rotation == 3 && o.rgb888 && o.byteSwap && !o.nand);
        for (int chip : {3, 4, 5}) {
            s.panelType = chip;
            s.flashTypeIndex = 0;
            QCOMPARE(EncodeOptions::fromSettings(s).nand, chip != 5);
            s.flashTypeIndex = 1;
            QVERIFY(!EncodeOptions::fromSettings(s).nand);
        }
    }
};

QTEST_GUILESS_MAIN(TestImageEncoder)
#include "tst_image_encoder.moc"
