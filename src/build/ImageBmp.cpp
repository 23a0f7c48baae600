#include "build/ImageBmp.h"

#include <QFileInfo>

#include <algorithm>

namespace vantile {

namespace ImageBmp {

namespace {

enum Compression : quint32 { BiRgb = 0, BiBitfields = 3, BiAlphaBitfields = 6 };

quint32 le16(const uchar *p) { return quint32(p[0]) | quint32(p[1]) << 8; }
quint32 le32(const uchar *p)
{
    return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
}

// One colour channel behind a bit mask, widened to 8 bits the way the
// image library does it: multiplied up by shifting, no bit replication.
struct Channel {
    quint32 mask = 0;
    int shift = 0;
    int bits = 0;

    explicit Channel(quint32 m = 0) : mask(m)
    {
        if (!mask)
            return;
        while (!((mask >> shift) & 1u))
            ++shift;
        while (bits < 32 - shift && ((mask >> (shift + bits)) & 1u))
            ++bits;
    }
    quint32 value(quint32 pixel) const
    {
        const quint32 v = (pixel & mask) >> shift;
        return bits >= 8 ? (v >> (bits - 8)) & 0xFFu : v << (8 - bits);
    }
};

QImage fail(QString *error, const QString &why)
{
    if (error)
        *error = why;
    return QImage();
}

} // namespace

bool acceptsPath(const QString &path)
{
    return QFileInfo(path).fileName().endsWith(QLatin1String(".bmp"), Qt::CaseInsensitive);
}

QImage decode(const QByteArray &bytes, QString *error)
{
    const qint64 size = bytes.size();
    if (size <= kHeaderSize)
        return fail(error, QStringLiteral("BMP file shorter than its header"));
    const uchar *file = reinterpret_cast<const uchar *>(bytes.constData());
    if (file[0] != 'B' || file[1] != 'M')
        return fail(error, QStringLiteral("no BMP signature"));

    const quint32 dataOffset = le32(file + 10);
    const quint32 infoSize = le32(file + 14);
    const qint32 width = qint32(le32(file + 18));
    const qint32 rawHeight = qint32(le32(file + 22));
    const int bpp = int(le16(file + 28));
    const quint32 compression = le32(file + 30);
    const quint32 coloursUsed = le32(file + 46);

    if (infoSize < 40 || infoSize > quint32(size))
        return fail(error, QStringLiteral("unsupported BMP header size %1").arg(infoSize));
    if (bpp != 8 && bpp != 16 && bpp != 24 && bpp != 32)
        return fail(error, QStringLiteral("unsupported BMP depth of %1 bits").arg(bpp));
    if (compression != BiRgb && compression != BiBitfields && compression != BiAlphaBitfields)
        return fail(error, QStringLiteral("compressed BMP (method %1)").arg(compression));
    if (width <= 0 || width > 65535 || rawHeight == 0 || rawHeight < -65535 || rawHeight > 65535)
        return fail(error, QStringLiteral("BMP size %1 x %2 out of range").arg(width).arg(rawHeight));
    const bool topDown = rawHeight < 0;
    const int height = topDown ? -rawHeight : rawHeight;

    // Bit masks: in the header from 52 bytes on, else just behind it.
    const bool masked = compression != BiRgb && (bpp == 16 || bpp == 32);
    const int maskBytes = compression == BiAlphaBitfields ? 16 : 12;
    const qint64 masksEnd = 14 + qint64(infoSize) + (masked && infoSize < 40 + quint32(maskBytes) ? maskBytes : 0);
    if (masksEnd > size)
        return fail(error, QStringLiteral("BMP bit masks missing"));
    Channel red, green, blue, alpha;
    if (masked) {
        red = Channel(le32(file + 54));
        green = Channel(le32(file + 58));
        blue = Channel(le32(file + 62));
        if (infoSize >= 56 || compression == BiAlphaBitfields) {
            alpha = Channel(le32(file + 66));
        }
    } else if (bpp == 16) {
        red = Channel(0x7C00u);
        green = Channel(0x03E0u);
        blue = Channel(0x001Fu);
    } else {
        red = Channel(0x00FF0000u);
        green = Channel(0x0000FF00u);
        blue = Channel(0x000000FFu);
    }

    // Palette of an 8-bit file: B, G, R, reserved.
    QRgb palette[256];
    std::fill(palette, palette + 256, qRgb(0, 0, 0));
    qint64 paletteBytes = 0;
    if (bpp == 8) {
        const quint32 entries = coloursUsed == 0 || coloursUsed > 256 ? 256 : coloursUsed;
        const qint64 at = 14 + qint64(infoSize);
        const qint64 available = qMax<qint64>(0, (size - at) / 4);
        const qint64 n = qMin<qint64>(entries, available);
        for (qint64 i = 0; i < n; ++i) {
            const uchar *e = file + at + 4 * i;
            palette[i] = qRgb(e[2], e[1], e[0]);
        }
        paletteBytes = 4 * qint64(entries);
    }

    const qint64 stride = ((qint64(width) * bpp + 31) / 32) * 4;
    const qint64 need = stride * height;
    qint64 offset = dataOffset;
    if (offset < kHeaderSize || offset + need > size) {
        // A wrong offset field: take the pixels right behind header and palette.
        offset = masksEnd + paletteBytes;
    }
    if (offset + need > size)
        return fail(error, QStringLiteral("BMP pixel data truncated (%1 of %2 bytes)")
                               .arg(qMax<qint64>(0, size - offset))
                               .arg(need));

    QImage image(width, height, QImage::Format_ARGB32);
    if (image.isNull())
        return fail(error, QStringLiteral("no memory for a %1 x %2 image").arg(width).arg(height));

    const bool hasAlpha = alpha.mask != 0;
    for (int row = 0; row < height; ++row) {
        const uchar *src = file + offset + stride * (topDown ? row : height - 1 - row);
        QRgb *dst = reinterpret_cast<QRgb *>(image.scanLine(row));
        switch (bpp) {
        case 8:
            for (int x = 0; x < width; ++x)
                dst[x] = palette[src[x]];
            break;
        case 24:
            for (int x = 0; x < width; ++x, src += 3)
                dst[x] = qRgb(src[2], src[1], src[0]);
            break;
        case 16:
        case 32: {
            const int step = bpp / 8;
            for (int x = 0; x < width; ++x, src += step) {
                const quint32 p = step == 2 ? le16(src) : le32(src);
                dst[x] = qRgba(int(red.value(p)), int(green.value(p)), int(blue.value(p)),
                               hasAlpha ? int(alpha.value(p)) : 255);
            }
            break;
        }
        }
    }
    if (error)
        error->clear();
    return image;
}

} // namespace ImageBmp

} // namespace vantile
