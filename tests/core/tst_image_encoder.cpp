// The image encoder: pixel packers against words worked out by hand, the VC
// container laid out by hand and read back by an independent reader, BMP files.

#include "CoreTestSupport.h"
#include "build/ImageBmp.h"
#include "build/ImageEncoder.h"

#include <vector>

using namespace core;

namespace {

QImage argbImage(int w, int h, std::initializer_list<QRgb> pixels)
{
    QImage img(w, h, QImage::Format_ARGB32);
    auto it = pixels.begin();
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, *it++);
    return img;
}

QImage row(std::initializer_list<QRgb> pixels) { return argbImage(int(pixels.size()), 1, pixels); }

QImage filled(int w, int h, QRgb colour)
{
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(colour);
    return img;
}

// An opaque picture whose RGB565 words are exactly `words`.
QImage imageOfWords(int w, int h, const std::vector<quint16> &words)
{
    QImage img(w, h, QImage::Format_ARGB32);
    for (int i = 0; i < w * h; ++i) {
        const quint16 v = words[size_t(i)];
        img.setPixel(i % w, i / w, qRgb((v >> 11) << 3, ((v >> 5) & 0x3F) << 2, (v & 0x1F) << 3));
    }
    return img;
}

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

// Options from words: "888" 24-bit colour, "swap", "nand", "r1".."r3", "chip5".
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
    auto fail = [&v](const QString &why) {
        v.fault = why;
        return v;
    };
    if (c.size() < 12 || !c.startsWith("VC"))
        return fail("no VC header");
    v.width = int(le(c, 2, 2));
    v.height = int(le(c, 4, 2));
    v.segments = quint8(c[6]);
    v.format = quint8(c[7]);
    v.total = le(c, 8, 4);
    if (v.segments < 1 || v.total > quint32(c.size()) || 12 + 516 * v.segments > int(v.total))
        return fail("bad counts");
    int pos = 12 + 516 * v.segments;
    for (int k = 0; k < v.segments; ++k) {
        const int h = 12 + 516 * k, size = int(le(c, h, 3)), flag = quint8(c[h + 3]), end = pos + size;
        v.dataSizes.push_back(size);
        v.flags.push_back(flag);
        if (end > int(v.total) || (flag != 0 && flag != 1) || (flag == 1 && size % 2))
            return fail(QString("segment %1 malformed").arg(k));
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

// `e` is a sound container of these segments holding `words`.
void verifyVc(const EncodedImage &e, const std::vector<quint16> &words, const std::vector<int> &sizes,
              const std::vector<int> &flags)
{
    const VcImage v = decodeVc(e.bytes);
    QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
    QCOMPARE(v.dataSizes, sizes);
    QCOMPARE(v.flags, flags);
    QCOMPARE(v.words, leWords(words));
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

// 3 x 2, 24 bits, bottom-up, planes 0 (which the image library refuses).
// Top row red, green, blue; bottom row white, black, (0x12, 0x34, 0x56).
// Rows of 9 bytes padded to 12.
const QByteArray kBmp24 = makeBmp(3, 2, 24, 0, 40, QByteArray(),
                                  hex("FFFFFF 000000 563412 000000" "0000FF 00FF00 FF0000 000000"), 0);

QByteArray patched(QByteArray b, int at, int value) { return b.replace(at, 1, QByteArray(1, char(value))); }

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
        for (const char *name : {"rgb565", " jpg", "RGB565zip", ""}) // exact names only
            QCOMPARE(ImageEncoder::nameToFormat(name), 32);
    }

    void packers_data()
    {
        addColumns<QImage, int, QString, QByteArray>("image", "format", "options", "bytes");

        // (0x12, 0x34, 0x56): 2 << 11 | 13 << 5 | 10 = 0x11AA. The swap is for format 0 alone.
        const QImage one = row({qRgb(0x12, 0x34, 0x56)});
        QTest::newRow("565 swapped") << one << 0 << "swap" << hex("11AA");
        QTest::newRow("565_zip not swapped") << one << 3 << "swap" << hex("AA11");
        // Top nibbles A R G B: 0xAB 0xCD 0xEF 0x12 -> 0xACE1; 0x10 0x0F 0xF0 0x8F -> 0x10F8.
        QTest::newRow("4444") << row({qRgba(0xCD, 0xEF, 0x12, 0xAB), qRgba(0x0F, 0xF0, 0x8F, 0x10)}) << 2 << ""
                              << hex("E1AC F810");
        // softpng lifts black and near black (7, 3, 7) off the transparent
        // key 0 to 0x0821; format 0 keeps 0. Alpha 127 is transparent, 128
        // keeps the colour: (0xFF, 0x80, 0x40) -> 0xFC08.
        const QImage edges = row({qRgb(0, 0, 0), qRgb(7, 3, 7), qRgba(0xFF, 0x80, 0x40, 127),
                                  qRgba(0xFF, 0x80, 0x40, 128), qRgba(0, 0, 0, 128)});
        QTest::newRow("softpng edges") << edges << 1 << "" << hex("2108 2108 0000 08FC 2108");
        QTest::newRow("565 edges") << edges << 0 << "" << hex("0000 0000 08FC 08FC 0000");

        // 24-bit panels: B, G, R; format 0 not rounded to even. softpng with
        // transparency: alpha below 128 -> 0, 0, 0, black -> 2, 2, 2; on an
        // opaque picture black stays 0, 0, 0. The zip codes stay plain and
        // uncompressed even when flat (9 bytes get a 0xFF).
        QTest::newRow("888") << one << 0 << "888" << hex("563412");
        QTest::newRow("888 softpng keyed")
            << row({qRgba(0xAA, 0xBB, 0xCC, 0x00), qRgba(0, 0, 0, 0xFF), qRgba(0x10, 0x20, 0x30, 0xFF),
                    qRgba(0, 0, 0, 0x80), qRgba(0x10, 0x20, 0x30, 0x7F)})
            << 1 << "888" << hex("000000 020202 302010 020202 000000");
        QTest::newRow("888 softpng opaque") << row({qRgb(0, 0, 0)}) << 1 << "888" << hex("000000");
        QTest::newRow("888 softpng_zip") << row({qRgba(0xAA, 0xBB, 0xCC, 0), qRgb(0, 0, 0), qRgb(1, 2, 3)}) << 4
                                         << "888" << hex("CCBBAA 000000 030201 FF");
        QTest::newRow("888 565_zip flat") << filled(300, 1, qRgb(1, 2, 3)) << 3 << "888" << hex("030201").repeated(300);

        // aRGB8565: RGB565 low, high, then alpha; (0xFF, 0, 0xFF) -> 0xF81F;
        // nine bytes get a 0xFF. aRGB8888: B, G, R, A.
        const QImage three = row({qRgba(0xFF, 0x00, 0xFF, 0x80), qRgba(0, 0, 0, 0), qRgb(0x12, 0x34, 0x56)});
        QTest::newRow("8565") << three << 8 << "" << hex("1FF880 000000 AA11FF FF");
        QTest::newRow("8888") << three << 6 << "" << hex("FF00FF80 00000000 563412FF");
        // An RGB32 picture is opaque whatever its unused top byte holds (here
        // 0, in a buffer of the caller's), read in place or turned.
        static const quint32 raw[2] = {0x00123456u, 0x00000000u};
        const QImage rgb32(reinterpret_cast<const uchar *>(raw), 2, 1, QImage::Format_RGB32);
        QTest::newRow("RGB32 8888") << rgb32 << 6 << "" << hex("563412FF 000000FF");
        QTest::newRow("RGB32 8888 turned") << rgb32 << 6 << "r2" << hex("000000FF 563412FF");

        // Nand: rows go to a multiple of 4 pixels with each packer's own pad
        // pixel; the width stays. Padding follows the turned width: 2 x 3
        // (1 2 / 3 4 / 5 6) turned clockwise is 5 3 1 / 6 4 2.
        const QImage rgb = row({qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF)});
        QTest::newRow("nand 565") << argbImage(3, 2, {qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF),
                                                      qRgb(0, 0, 0), qRgb(0x12, 0x34, 0x56), qRgb(0xFF, 0xFF, 0xFF)})
                                  << 0 << "nand" << hex("00F8 E007 1F00 FFFF 0000 AA11 FFFF FFFF");
        QTest::newRow("nand width 4") << filled(4, 1, qRgb(0, 0, 0)) << 0 << "nand" << QByteArray(8, '\0');
        QTest::newRow("nand 8888") << rgb << 6 << "nand" << hex("0000FFFF 00FF00FF FF0000FF FFFFFF00");
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
        QVERIFY(e.format == format && !e.compressed);
        QCOMPARE(QSize(e.width, e.height), o.rotation % 2 ? image.size().transposed() : image.size());
        QCOMPARE(e.bytes, bytes);
    }

    void choiceOfFormat()
    {
        const QImage opaque = filled(2, 2, qRgb(0xFF, 0, 0));
        QImage seeThrough = opaque;
        seeThrough.setPixel(1, 1, qRgba(0xFF, 0, 0, 0xE0));
        // Automatic (above 8, 9 included on the panel entry): aRGB4444 with
        // transparency, else RGB565. The last pixel -> 0xEF00.
        for (int r : {9, 32, 127}) {
            QCOMPARE(ImageEncoder::encode(opaque, r, opts()).format, 0);
            QCOMPARE(ImageEncoder::encode(seeThrough, r, opts()).format, 2);
        }
        QCOMPARE(ImageEncoder::encode(seeThrough, 32, opts()).bytes.right(2), hex("00EF"));
        // Chip 5 with 24-bit colour: aRGB8888 whatever was asked, even jpg.
        for (int r : {0, 1, 3, 7, 8, 32}) {
            const EncodedImage e = ImageEncoder::encode(opaque, r, opts("chip5 888"), QByteArray("file"));
            QCOMPARE(e.format, 6);
            QCOMPARE(e.bytes, hex("0000FFFF").repeated(4));
        }
        // Chip 5 with 16-bit colour, or another chip with 24-bit colour: as asked.
        QVERIFY(ImageEncoder::encode(opaque, 0, opts("chip5")).format == 0
                && ImageEncoder::encode(opaque, 8, opts("chip4 888")).bytes.size() == 12);
        // 7 without file bytes has nothing to copy.
        const EncodedImage noFile = ImageEncoder::encode(opaque, 7, opts());
        QVERIFY(noFile.format == 255 && noFile.bytes.isEmpty() && !noFile.error.isEmpty());
    }

    void rotation()
    {
        // Larger than one working band, read in place (RGB32) or converted in
        // bands (RGB888): the image library's own turns are the reference.
        QImage large(150, 70, QImage::Format_ARGB32);
        for (int y = 0; y < large.height(); ++y)
            for (int x = 0; x < large.width(); ++x)
                large.setPixel(x, y, qRgb(x, y, (x * 7 + y * 3) & 0xFF));
        for (QImage::Format format : {QImage::Format_RGB32, QImage::Format_RGB888}) {
            const QImage src = large.convertToFormat(format);
            for (int rotation = 0; rotation < 4; ++rotation) {
                const QImage reference = src.transformed(QTransform().rotate(90 * rotation));
                const EncodedImage e = ImageEncoder::encode(src, 6, opts(QString("r%1").arg(rotation)));
                QCOMPARE(QSize(e.width, e.height), reference.size());
                QCOMPARE(ImageEncoder::rotatedSize(src.size(), rotation), reference.size());
                QVERIFY(e.bytes == ImageEncoder::encode(reference, 6, opts()).bytes);
            }
        }
    }

    void containerLaidOutByHand()
    {
        // 60 x 1: 20 red, 10 green, 20 red, 10 blue in RGB565_zip. One
        // segment, palette F800, 07E0, 001F; runs (19,0) (9,1) (19,0) (9,2):
        // 8 bytes < 60 * 7 / 10: kept. Size 12 + 516 + 8 = 536 = 0x218.
        const auto words = runsOf({{0xF800, 20}, {0x07E0, 10}, {0xF800, 20}, {0x001F, 10}});
        const EncodedImage e = ImageEncoder::encode(imageOfWords(60, 1, words), 3, opts());
        QVERIFY(e.format == 3 && e.compressed);
        const QByteArray palette = hex("00F8 E007 1F00") + QByteArray(506, '\0');
        QCOMPARE(e.bytes, hex("5643 3C00 0100 01 03 18020000" "080000 01") + palette + hex("1300 0901 1300 0902"));
        // 300 x 1 of 0x1234: runs are cut at 256, (255, 0) then (43, 0); size 532 = 0x214.
        const std::vector<quint16> flat(300, 0x1234);
        QCOMPARE(ImageEncoder::encode(imageOfWords(300, 1, flat), 3, opts()).bytes,
                 hex("5643 2C01 0100 01 03 14020000" "040000 01 3412") + QByteArray(510, '\0') + hex("FF00 2B00"));
        // aRGB4444_zip compresses on a 24-bit panel too: (0x10, 0x44, 0xA0) -> 0xF14A.
        const EncodedImage z5 = ImageEncoder::encode(imageOfWords(300, 1, flat), 5, opts("888"));
        QVERIFY(z5.format == 5 && z5.compressed);
        QCOMPARE(decodeVc(z5.bytes).words, hex("4AF1").repeated(300));
    }

    void containerSegmentsAndRuns()
    {
        // 256 colours, then 1024 more of the last: the 256th fills the palette,
        // so segment 1 ends after 255 pixels (raw: coded would be 510 bytes);
        // segment 2 holds 1025 pixels in runs 4 x 256 + 1. Size 12 + 2 * 516 +
        // 255 + 10 = 1309, odd: the header says 1309, the length is 1310.
        std::vector<quint16> words;
        for (int i = 0; i < 256; ++i)
            words.push_back(quint16(i * 0x0101));
        words.insert(words.end(), 1024, quint16(0xFFFF));
        const EncodedImage s = ImageEncoder::encode(imageOfWords(256, 5, words), 3, opts());
        QCOMPARE(s.bytes.size(), 1310);
        QCOMPARE(quint8(s.bytes[1309]), quint8(0xFF));
        QCOMPARE(le(s.bytes, 8, 4), 1309u);
        QCOMPARE(le(s.bytes, 12 + 516 + 4, 4), 0xFFFFu); // the second palette: 0xFFFF, then 0
        QCOMPARE(s.bytes.mid(12 + 2 * 516 + 255, 10), hex("FF00 FF00 FF00 FF00 0000"));
        verifyVc(s, words, {255, 10}, {0, 1});

        // Runs that take exactly as many bytes as the pixels are stored raw:
        // 255 colours twice each (255 runs = 510 bytes), then 2001 pixels of one more (8 runs).
        std::vector<quint16> pairs;
        for (int i = 0; i < 255; ++i)
            pairs.insert(pairs.end(), 2, quint16(0x4000 + i));
        pairs.insert(pairs.end(), 2001, 0x7777);
        const EncodedImage t = ImageEncoder::encode(imageOfWords(93, 27, pairs), 3, opts());
        QCOMPARE(t.bytes.size(), 12 + 2 * 516 + 526);
        verifyVc(t, pairs, {510, 16}, {0, 1});
    }

    void containerGiveUpRules()
    {
        // The 7/10 rule: 20 pixels allow less than 14 data bytes. 15 A then
        // B A B A B: 6 runs, 12 bytes: kept. 14 A then B A B A B A: 14 bytes: given up.
        const quint16 A = 0x1111, B = 0x2222;
        const auto keep = runsOf({{A, 15}, {B, 1}, {A, 1}, {B, 1}, {A, 1}, {B, 1}});
        const auto drop = runsOf({{A, 14}, {B, 1}, {A, 1}, {B, 1}, {A, 1}, {B, 1}, {A, 1}});
        const EncodedImage kept = ImageEncoder::encode(imageOfWords(20, 1, keep), 3, opts());
        QVERIFY(kept.compressed);
        QCOMPARE(kept.bytes.size(), 12 + 516 + 12);
        const EncodedImage dropped = ImageEncoder::encode(imageOfWords(20, 1, drop), 3, opts());
        QVERIFY(!dropped.compressed && dropped.format == 3);
        QCOMPARE(dropped.bytes, leWords(drop));

        // At most 255 segments. Values cycling through 256 colours make a
        // segment every 255 pixels; then a long run of the last colour. 254
        // full segments and one pixel: 255 segments, kept (the last holds
        // 35230 pixels: 137 runs of 256 and one of 158). One segment more:
        // given up, although the data would still pay.
        auto cycling = [](int patterned) {
            std::vector<quint16> w;
            for (int i = 0; i < patterned; ++i)
                w.push_back(quint16(i % 256));
            w.insert(w.end(), size_t(100000 - patterned), w.back());
            return w;
        };
        const std::vector<quint16> fits = cycling(254 * 255 + 1);
        std::vector<int> sizes(254, 255), flags(254, 0);
        sizes.push_back(2 * 138);
        flags.push_back(1);
        verifyVc(ImageEncoder::encode(imageOfWords(1000, 100, fits), 3, opts()), fits, sizes, flags);
        const std::vector<quint16> over = cycling(255 * 255 + 1);
        const EncodedImage o = ImageEncoder::encode(imageOfWords(1000, 100, over), 3, opts());
        QVERIFY(!o.compressed && o.format == 3);
        QCOMPARE(o.bytes, leWords(over));
    }

    void containerRoundTrips()
    {
        // decode(encode(picture)) is the plain format's words, Nand pad words included.
        for (const QImage &img : {flatArt(123, 77), flatArt(640, 200)}) {
            for (const auto &[zip, plain] : {std::pair{3, 0}, std::pair{4, 1}, std::pair{5, 2}}) {
                for (const EncodeOptions &o : {opts(), opts("nand")}) {
                    const EncodedImage z = ImageEncoder::encode(img, zip, o);
                    const QByteArray words = ImageEncoder::encode(img, plain, o).bytes;
                    QVERIFY(z.format == zip && z.compressed);
                    const VcImage v = decodeVc(z.bytes);
                    QVERIFY2(v.fault.isEmpty(), qPrintable(v.fault));
                    QVERIFY(QSize(v.width, v.height) == img.size() && v.format == zip);
                    QCOMPARE(v.words, words);
                    QCOMPARE(z.bytes.size(), int(v.total + (v.total & 1)));
                    QVERIFY(z.bytes.size() < words.size());
                }
            }
        }
    }

    void jpgAndNeedleFiles()
    {
        QTemporaryDir dir;
        // jpg: one file of odd size, one of even size (a byte after the end
        // marker). The odd file gets one 0xFF; turning changes the size, not the bytes.
        const QByteArray jpeg = saved(filled(21, 13, qRgb(0x80, 0x40, 0x20)), "JPG");
        const QByteArray odd = jpeg.size() % 2 ? jpeg : jpeg + '\0', even = jpeg.size() % 2 ? jpeg + '\0' : jpeg;
        writeFile(dir.filePath("odd.jpg"), odd);
        writeFile(dir.filePath("even.jpg"), even);
        const EncodedImage e = ImageEncoder::encodeFile(dir.filePath("odd.jpg"), 7, opts());
        QVERIFY(e.format == 7 && QSize(e.width, e.height) == QSize(21, 13));
        QCOMPARE(e.bytes, odd + char(0xFF));
        const EncodedImage t = ImageEncoder::encodeFile(dir.filePath("even.jpg"), 7, opts("r3"));
        QVERIFY(t.bytes == even && QSize(t.width, t.height) == QSize(13, 21));

        // Needle frames are not turned; 7 packs as aRGB8565, 9 copies the file.
        const QString path = dir.filePath("0001_0_0.png");
        const QByteArray png = saved(argbImage(3, 2, {qRgba(0xFF, 0x00, 0xFF, 0x80), qRgba(0, 0, 0, 0),
                                                      qRgb(0x12, 0x34, 0x56), qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0),
                                                      qRgb(0, 0, 0xFF)}),
                                     "PNG");
        writeFile(path, png);
        const EncodedImage four = ImageEncoder::encodeNeedleFrame(path, 2, opts("r1"));
        QVERIFY(four.format == 2 && QSize(four.width, four.height) == QSize(3, 2));
        QCOMPARE(four.bytes, hex("0F8F 0000 35F1 00FF F0F0 0FF0"));
        const EncodedImage seven = ImageEncoder::encodeNeedleFrame(path, 7, opts("r1"));
        QCOMPARE(seven.format, 7);
        QCOMPARE(seven.bytes, hex("1FF880 000000 AA11FF 00F8FF E007FF 1F00FF"));
        const EncodedImage nine = ImageEncoder::encodeNeedleFrame(path, 9, opts("r1"));
        QVERIFY(nine.format == 9 && nine.bytes == png && nine.width == 3);
    }

    void bmpFallbackReader_data()
    {
        addColumns<QByteArray, QImage, bool>("file", "pixels", "libraryReads");
        // 24 bits, bottom-up, rows padded; with planes 0, which the image library refuses.
        const QImage px24 = argbImage(3, 2, {qRgb(0xFF, 0, 0), qRgb(0, 0xFF, 0), qRgb(0, 0, 0xFF),
                                             qRgb(0xFF, 0xFF, 0xFF), qRgb(0, 0, 0), qRgb(0x12, 0x34, 0x56)});
        const QByteArray planes1 = patched(kBmp24, 26, 1);
        QTest::newRow("24 bits") << planes1 << px24 << true;
        QTest::newRow("planes 0") << kBmp24 << px24 << false;
        // 8 bits, top-down (negative height), 3 palette entries B, G, R, 0.
        QTest::newRow("8 bits")
            << patched(makeBmp(2, -2, 8, 0, 40, hex("30201000 FFFFFF00 FF800000"), hex("01020000 00010000")), 46, 3)
            << argbImage(2, 2, {qRgb(0xFF, 0xFF, 0xFF), qRgb(0x00, 0x80, 0xFF), qRgb(0x10, 0x20, 0x30),
                                qRgb(0xFF, 0xFF, 0xFF)})
            << true;
        // 16 bits 5-6-5 by bit masks behind the header: 0x0821 -> (8, 4, 8).
        QTest::newRow("16 bits") << makeBmp(1, 1, 16, 3, 40, hex("00F80000 E0070000 1F000000"), hex("2108 0000"))
                                 << row({qRgb(0x08, 0x04, 0x08)}) << true;
        // 32 bits, a 124-byte header holding masks R, G, B and alpha.
        QTest::newRow("32 bits alpha") << makeBmp(2, 1, 32, 3, 124, QByteArray(), hex("78563412 EFCDAB00"))
                                              .replace(54, 16, hex("0000FF00 00FF0000 FF000000 000000FF"))
                                       << row({qRgba(0x34, 0x56, 0x78, 0x12), qRgba(0xAB, 0xCD, 0xEF, 0x00)})
                                       << true;
    }

    void bmpFallbackReader()
    {
        QFETCH(QByteArray, file);
        QFETCH(QImage, pixels);
        QFETCH(bool, libraryReads);
        QString why;
        const QImage mine = ImageBmp::decode(file, &why);
        QVERIFY2(!mine.isNull(), qPrintable(why));
        QCOMPARE(mine.convertToFormat(QImage::Format_ARGB32), pixels);
        // The image library reads the files it accepts to the same pixels.
        const QImage library = QImage::fromData(file).convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(library.isNull(), !libraryReads);
        if (libraryReads)
            QCOMPARE(library, pixels);
    }

    void unreadableFiles()
    {
        for (const auto &[what, file] : QList<QPair<const char *, QByteArray>>{
                 {"compressed", patched(kBmp24, 30, 1)}, {"4 bits", patched(kBmp24, 28, 4)},
                 {"width 0x7F000003", patched(kBmp24, 21, 0x7F)}, {"magic", patched(kBmp24, 0, 'X')}}) {
            QString why;
            QVERIFY2(ImageBmp::decode(file, &why).isNull() && !why.isEmpty(), what);
        }

        QTemporaryDir dir;
        auto expectUnreadable = [](const EncodedImage &e, const QString &what) {
            if (e.format != 255 || !e.bytes.isEmpty() || e.error.isEmpty() || e.isValid() || e.width || e.height)
                QFAIL(qPrintable(what));
        };
        expectUnreadable(ImageEncoder::encodeFile(dir.filePath("missing.png"), 0, opts()), "missing file");
        expectUnreadable(ImageEncoder::encode(QImage(), 0, opts()), "null picture");
        const QByteArray garbage = QByteArray("\x89PNG no picture after all ").repeated(80);
        const QByteArray png = saved(flatArt(30, 20), "PNG");
        for (const auto &[name, bytes] : {std::pair{"empty.jpg", QByteArray()}, std::pair{"garbage.png", garbage},
                                          std::pair{"garbage.bmp", garbage}, std::pair{"garbage.jpg", garbage},
                                          std::pair{"half.png", png.left(png.size() / 2)}}) {
            writeFile(dir.filePath(name), bytes);
            const int format = QString(name).endsWith("jpg") ? 7 : 32;
            expectUnreadable(ImageEncoder::encodeFile(dir.filePath(name), format, opts()), name);
        }
        // Every cut of a BMP that only the fallback reads fails. The whole
        // file reads, but only under a ".bmp" name.
        const QString cut = dir.filePath("cut.bmp");
        for (int n = 0; n < kBmp24.size(); ++n) {
            writeFile(cut, kBmp24.left(n));
            expectUnreadable(ImageEncoder::encodeFile(cut, 0, opts()), QString("bmp cut at %1").arg(n));
        }
        writeFile(cut, kBmp24);
        QVERIFY(QImage(cut).isNull()); // the library refuses it
        const EncodedImage e = ImageEncoder::encodeFile(cut, 6, opts());
        QVERIFY(e.format == 6 && QSize(e.width, e.height) == QSize(3, 2));
        QCOMPARE(e.bytes, hex("0000FFFF 00FF00FF FF0000FF FFFFFFFF 000000FF 563412FF"));
        writeFile(dir.filePath("bmp.png"), kBmp24);
        expectUnreadable(ImageEncoder::encodeFile(dir.filePath("bmp.png"), 6, opts()), "a BMP named .png");
    }

    void transparencyAndOptions()
    {
        QImage img = filled(50, 40, qRgb(1, 2, 3));
        QVERIFY(!ImageEncoder::hasTransparency(img) && !ImageEncoder::hasTransparency(QImage()));
        img.setPixel(49, 39, qRgba(1, 2, 3, 254));
        QVERIFY(ImageEncoder::hasTransparency(img));
        QVERIFY(ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_ARGB32_Premultiplied)));
        QVERIFY(!ImageEncoder::hasTransparency(img.convertToFormat(QImage::Format_RGB32)));
        // A palette picture with a see-through entry, unused and then used.
        QImage indexed(100, 100, QImage::Format_Indexed8);
        indexed.setColorTable({qRgb(0, 0, 0), qRgba(9, 9, 9, 0)});
        indexed.fill(0);
        QVERIFY(!ImageEncoder::hasTransparency(indexed));
        indexed.setPixel(5, 90, 1);
        QVERIFY(ImageEncoder::hasTransparency(indexed));

        // Options from settings: chip 10 counts as 8; Nand only on chips 3
        // and 4 with flash type 0.
        ProjectSettings s;
        s.panelType = 10; s.rotate = 3; s.colorDepth = 1; s.flashTypeIndex = 0; s.byteSwap = true;
        const EncodeOptions o = EncodeOptions::fromSettings(s);
        QVERIFY(o.controller == 8 && o.rotation == 3 && o.rgb888 && o.byteSwap && !o.nand);
        for (int chip : {3, 4, 5}) {
            for (int flash : {0, 1}) {
                s.panelType = chip;
                s.flashTypeIndex = flash;
                QCOMPARE(EncodeOptions::fromSettings(s).nand, chip != 5 && flash == 0);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestImageEncoder)
#include "tst_image_encoder.moc"
