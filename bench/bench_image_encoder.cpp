// Encoder throughput for each pixel format on generated 1024 x 600 pictures
// (a photo-like gradient, flat interface art, noise), in MPixel/s on one
// core, printed beside the target for RGB565 packing.
//
//   bench_image_encoder [seconds per case, default 0.3]

#include "build/ImageEncoder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtMath>

#include <cstdio>
#include <vector>

using namespace vantile;

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 600;
constexpr double kTargetRgb565 = 300.0; // MPixel/s

QImage photo()
{
    // Smooth two-dimensional colour gradients with a little grain, opaque,
    // held as RGB32 as a decoded JPEG would be.
    QImage img(kWidth, kHeight, QImage::Format_RGB32);
    QRandomGenerator gen(1);
    for (int y = 0; y < kHeight; ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < kWidth; ++x) {
            const double u = double(x) / kWidth, v = double(y) / kHeight;
            const int grain = int(gen.bounded(5)) - 2;
            const int r = qBound(0, int(255 * (0.5 + 0.5 * qSin(3.0 * u + 1.3 * v))) + grain, 255);
            const int g = qBound(0, int(255 * v * (1.0 - 0.4 * u)) + grain, 255);
            const int b = qBound(0, int(255 * (0.5 + 0.5 * qCos(5.0 * v - 2.0 * u))) + grain, 255);
            row[x] = qRgb(r, g, b);
        }
    }
    return img;
}

QImage interfaceArt()
{
    // A flat background, panels, buttons with soft (alpha) edges, and rows
    // of text-like strokes; ARGB32 as a decoded PNG with alpha would be.
    QImage img(kWidth, kHeight, QImage::Format_ARGB32);
    img.fill(qRgba(0x1E, 0x2A, 0x38, 0xFF));
    auto box = [&](int x0, int y0, int w, int h, QRgb c) {
        for (int y = y0; y < y0 + h && y < kHeight; ++y)
            for (int x = x0; x < x0 + w && x < kWidth; ++x)
                img.setPixel(x, y, c);
    };
    box(0, 0, kWidth, 60, qRgba(0x30, 0x60, 0xA0, 0xFF));
    for (int i = 0; i < 6; ++i) {
        const int x0 = 40 + (i % 3) * 320, y0 = 100 + (i / 3) * 240;
        box(x0, y0, 280, 200, qRgba(0xF0, 0xF0, 0xF0, 0xFF));
        box(x0 + 20, y0 + 140, 240, 40, qRgba(0xE0, 0x70, 0x20, 0xFF));
        for (int k = 0; k < 240; ++k) // soft edge under the button
            img.setPixel(x0 + 20 + k, y0 + 180, qRgba(0, 0, 0, 0x40));
        for (int line = 0; line < 5; ++line)
            for (int x = x0 + 20; x < x0 + 250; ++x)
                if ((x / 3) % 4 != 0)
                    box(x, y0 + 20 + line * 22, 1, 10, qRgba(0x20, 0x20, 0x20, 0xFF));
    }
    return img;
}

QImage noise()
{
    QImage img(kWidth, kHeight, QImage::Format_ARGB32);
    QRandomGenerator gen(2);
    for (int y = 0; y < kHeight; ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < kWidth; ++x)
            row[x] = gen.generate();
    }
    return img;
}

struct Case {
    const char *name;
    int format;
    EncodeOptions options;
    QImage::Format source; // Format_Invalid: the picture as generated
};

struct Figure {
    double mpixels = 0;
    int bytes = 0;
    bool compressed = false;
};

Figure measure(const QImage &img, const Case &c, double seconds)
{
    const double pixels = double(img.width()) * img.height();
    Figure f;
    double best = 1e30;
    QElapsedTimer total;
    total.start();
    do {
        QElapsedTimer t;
        t.start();
        const EncodedImage e = ImageEncoder::encode(img, c.format, c.options);
        const double ns = double(t.nsecsElapsed());
        best = qMin(best, ns);
        f.bytes = e.length();
        f.compressed = e.compressed;
    } while (total.elapsed() < seconds * 1000);
    f.mpixels = pixels / (best / 1e9) / 1e6;
    return f;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const double seconds = argc > 1 ? qMax(0.05, QString(argv[1]).toDouble()) : 0.3;

    const QImage pictures[] = {photo(), interfaceArt(), noise()};
    const char *pictureNames[] = {"photo", "interface", "noise"};

    EncodeOptions o;
    EncodeOptions swap;
    swap.byteSwap = true;
    EncodeOptions turned;
    turned.rotation = 1;
    EncodeOptions nand;
    nand.nand = true;
    EncodeOptions rgb888;
    rgb888.rgb888 = true;
    const std::vector<Case> cases = {
        {"RGB565 (0)", 0, o, QImage::Format_Invalid},
        {"RGB565 byte swap", 0, swap, QImage::Format_Invalid},
        {"RGB565 turned 90", 0, turned, QImage::Format_Invalid},
        {"RGB565 from RGB888", 0, o, QImage::Format_RGB888},
        {"softpng (1)", 1, o, QImage::Format_Invalid},
        {"aRGB4444 (2)", 2, o, QImage::Format_Invalid},
        {"RGB565_zip (3)", 3, o, QImage::Format_Invalid},
        {"softpng_zip (4)", 4, o, QImage::Format_Invalid},
        {"aRGB4444_zip (5)", 5, o, QImage::Format_Invalid},
        {"aRGB8888 (6)", 6, o, QImage::Format_Invalid},
        {"aRGB8565 (8)", 8, o, QImage::Format_Invalid},
        {"24-bit (0, RGB888)", 0, rgb888, QImage::Format_Invalid},
        {"24-bit softpng (1)", 1, rgb888, QImage::Format_Invalid},
        {"RGB565_zip Nand", 3, nand, QImage::Format_Invalid},
    };

    std::printf("Image encoder throughput, %d x %d pictures (%.3f MPixel), best run, one core\n", kWidth, kHeight,
                kWidth * kHeight / 1e6);
    std::printf("%-22s", "format");
    for (const char *n : pictureNames)
        std::printf(" %14s", n);
    std::printf("   (MPixel/s; output bytes, z = VC container)\n");

    double worstRgb565 = 1e30;
    for (const Case &c : cases) {
        std::printf("%-22s", c.name);
        QString sizes;
        for (int i = 0; i < 3; ++i) {
            const QImage img = c.source == QImage::Format_Invalid ? pictures[i] : pictures[i].convertToFormat(c.source);
            const Figure f = measure(img, c, seconds);
            std::printf(" %14.1f", f.mpixels);
            sizes += QString(" %1%2").arg(f.bytes).arg(f.compressed ? "z" : "");
            if (c.format == 0 && !c.options.rgb888 && !c.options.byteSwap && c.options.rotation == 0
                && c.source == QImage::Format_Invalid)
                worstRgb565 = qMin(worstRgb565, f.mpixels);
        }
        std::printf("  %s\n", qPrintable(sizes));
    }
    std::printf("\nTarget: RGB565 packing >= %.0f MPixel/s on one core; measured (slowest picture) %.1f MPixel/s: %s\n",
                kTargetRgb565, worstRgb565, worstRgb565 >= kTargetRgb565 ? "met" : "NOT MET");
    return 0;
}
