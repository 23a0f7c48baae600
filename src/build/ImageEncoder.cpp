#include "build/ImageEncoder.h"
#include "project/MediaFiles.h"

#include "build/ImageBmp.h"
#include "build/ImageZip.h"
#include "project/ProjectSettings.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

#include <climits>
#include <cstring>
#include <vector>

namespace vantile {

namespace {

// Rows converted at a time for pictures not already held as 32-bit ARGB:
// the working copy stays at this many rows (or columns, when turned).
constexpr int kBandRows = 64;

enum class Entry { Panel, Needle };

enum class Packing {
    Rgb565,        // 0, 3: low byte first
    Rgb565Swapped, // 0 with the byte-swap flag: high byte first
    Key565,        // 1, 4: alpha below 128 gives 0, opaque 0 becomes 0x0821
    Argb4444,      // 2, 5
    Argb8565,      // 8: RGB565 low, high, alpha
    Argb8888,      // 6: B, G, R, A
    Bgr888,        // 24-bit panels: B, G, R
    KeyBgr888,     // 24-bit softpng of a picture with transparency
    Copy           // the file's bytes as they are
};

struct Plan {
    int format;
    Packing packing;
    bool zip;
};

bool isSixteenBit(Packing p)
{
    return p == Packing::Rgb565 || p == Packing::Rgb565Swapped || p == Packing::Key565 || p == Packing::Argb4444;
}

int bytesPerPixel(Packing p)
{
    switch (p) {
    case Packing::Argb8888:
        return 4;
    case Packing::Argb8565:
    case Packing::Bgr888:
    case Packing::KeyBgr888:
        return 3;
    default:
        return 2;
    }
}

// The bytes of one Nand pad pixel.
const uchar *padPixel(Packing p)
{
    static const uchar twoByte[] = {0xFF, 0xFF};
    static const uchar threeByte[] = {0xFF, 0xFF, 0xFF};
    static const uchar alpha8565[] = {0xFF, 0xFF, 0x00};
    static const uchar alpha8888[] = {0xFF, 0xFF, 0xFF, 0x00};
    switch (p) {
    case Packing::Argb8888:
        return alpha8888;
    case Packing::Argb8565:
        return alpha8565;
    case Packing::Bgr888:
    case Packing::KeyBgr888:
        return threeByte;
    default:
        return twoByte;
    }
}

// The choice of format. Requests from `autoFrom` up are automatic: 2 for a
// picture with transparency, else 0. `transparent` is only asked when the
// answer matters.
template<typename Probe>
Plan choose(int requested, const EncodeOptions &o, Entry entry, Probe transparent)
{
    const bool vc650Rgb888 = o.controller == 5 && o.rgb888;
    const int autoFrom = entry == Entry::Needle ? 10 : FormatZoomIn;
    int r = requested;
    if (r >= autoFrom || r < 0) {
        if (vc650Rgb888)
            return {FormatArgb8888, Packing::Argb8888, false};
        r = transparent() ? FormatArgb4444 : FormatRgb565;
    }
    if (r == FormatArgb8888 || vc650Rgb888)
        return {FormatArgb8888, Packing::Argb8888, false};
    if (r == FormatArgb8565)
        return {FormatArgb8565, Packing::Argb8565, false};
    if (r == FormatJpg)
        return entry == Entry::Needle ? Plan{FormatJpg, Packing::Argb8565, false} : Plan{FormatJpg, Packing::Copy, false};
    if (r == FormatZoomIn) // the needle entry only
        return {FormatZoomIn, Packing::Copy, false};

    // 0 to 5.
    if (o.rgb888 && r != FormatArgb4444 && r != FormatArgb4444Zip) {
        // The 24-bit packer: the zip codes stay, uncompressed.
        if (r == FormatSoftPng && transparent())
            return {r, Packing::KeyBgr888, false};
        return {r, Packing::Bgr888, false};
    }
    switch (r) {
    case FormatRgb565:
        return {r, o.byteSwap ? Packing::Rgb565Swapped : Packing::Rgb565, false};
    case FormatRgb565Zip:
        return {r, Packing::Rgb565, true};
    case FormatSoftPng:
        return {r, Packing::Key565, false};
    case FormatSoftPngZip:
        return {r, Packing::Key565, true};
    case FormatArgb4444:
        return {r, Packing::Argb4444, false};
    default:
        return {r, Packing::Argb4444, true};
    }
}

inline quint32 rgb565(quint32 p)
{
    return ((p >> 8) & 0xF800u) | ((p >> 5) & 0x07E0u) | ((p >> 3) & 0x001Fu);
}

// One scan line of ARGB32 values into the panel format.
void packRow(Packing packing, const QRgb *in, int width, uchar *out)
{
    switch (packing) {
    case Packing::Rgb565:
        for (int x = 0; x < width; ++x) {
            const quint32 w = rgb565(in[x]);
            out[2 * x] = uchar(w);
            out[2 * x + 1] = uchar(w >> 8);
        }
        break;
    case Packing::Rgb565Swapped:
        for (int x = 0; x < width; ++x) {
            const quint32 w = rgb565(in[x]);
            out[2 * x] = uchar(w >> 8);
            out[2 * x + 1] = uchar(w);
        }
        break;
    case Packing::Key565:
        for (int x = 0; x < width; ++x) {
            // Without branches: alpha of 128 and up is the top bit.
            const quint32 p = in[x];
            quint32 w = rgb565(p);
            w |= 0x0821u & (0u - quint32(w == 0));
            w &= 0u - (p >> 31);
            out[2 * x] = uchar(w);
            out[2 * x + 1] = uchar(w >> 8);
        }
        break;
    case Packing::Argb4444:
        for (int x = 0; x < width; ++x) {
            const quint32 p = in[x];
            const quint32 w = ((p >> 16) & 0xF000u) | ((p >> 12) & 0x0F00u) | ((p >> 8) & 0x00F0u) | ((p >> 4) & 0x000Fu);
            out[2 * x] = uchar(w);
            out[2 * x + 1] = uchar(w >> 8);
        }
        break;
    case Packing::Argb8565:
        for (int x = 0; x < width; ++x) {
            const quint32 p = in[x];
            const quint32 w = rgb565(p);
            out[3 * x] = uchar(w);
            out[3 * x + 1] = uchar(w >> 8);
            out[3 * x + 2] = uchar(p >> 24);
        }
        break;
    case Packing::Argb8888:
        for (int x = 0; x < width; ++x) {
            const quint32 p = in[x];
            out[4 * x] = uchar(p);
            out[4 * x + 1] = uchar(p >> 8);
            out[4 * x + 2] = uchar(p >> 16);
            out[4 * x + 3] = uchar(p >> 24);
        }
        break;
    case Packing::Bgr888:
        for (int x = 0; x < width; ++x) {
            const quint32 p = in[x];
            out[3 * x] = uchar(p);
            out[3 * x + 1] = uchar(p >> 8);
            out[3 * x + 2] = uchar(p >> 16);
        }
        break;
    case Packing::KeyBgr888:
        for (int x = 0; x < width; ++x) {
            const quint32 p = in[x];
            quint32 bgr = p & 0x00FFFFFFu;
            bgr |= 0x020202u & (0u - quint32(bgr == 0));
            bgr &= 0u - (p >> 31);
            out[3 * x] = uchar(bgr);
            out[3 * x + 1] = uchar(bgr >> 8);
            out[3 * x + 2] = uchar(bgr >> 16);
        }
        break;
    case Packing::Copy:
        break;
    }
}

bool directFormat(QImage::Format f)
{
    return f == QImage::Format_ARGB32 || f == QImage::Format_RGB32;
}

// Hands out the scan lines of the turned picture as ARGB32 values (alpha not
// premultiplied, 255 for pictures without alpha). A picture held as 32-bit
// ARGB or RGB is read in place; any other is converted a band of rows (or
// columns, when turned) at a time, so the working copy stays small.
//
// Turning, for a picture w wide and h high, output pixel (x', y'):
//   1 clockwise:          source (y', h - 1 - x')
//   2 half turn:          source (w - 1 - x', h - 1 - y')
//   3 counter-clockwise:  source (w - 1 - y', x')
class RowSource
{
public:
    RowSource(const QImage &image, int rotation)
        : m_src(image), m_rotation(rotation >= 0 && rotation <= 3 ? rotation : 0), m_w(image.width()),
          m_h(image.height()), m_direct(directFormat(image.format()))
    {
        const bool turned = m_rotation == 1 || m_rotation == 3;
        m_outW = turned ? m_h : m_w;
        m_outH = turned ? m_w : m_h;
        if (m_direct) {
            m_bits = m_src.constBits();
            m_bpl = m_src.bytesPerLine();
            m_opaque = m_src.format() == QImage::Format_RGB32 ? 0xFF000000u : 0u;
        }
        m_line.resize(size_t(m_outW));
    }

    int width() const { return m_outW; }
    int height() const { return m_outH; }

    const QRgb *row(int y)
    {
        if (!m_direct && (y < m_bandFirst || y > m_bandLast))
            loadBand(y);
        QRgb *line = m_line.data();
        switch (m_rotation) {
        case 0: {
            const QRgb *s = pixelAt(0, y);
            if (!m_opaque)
                return s;
            for (int x = 0; x < m_outW; ++x)
                line[x] = s[x] | m_opaque;
            break;
        }
        case 2: {
            const QRgb *s = pixelAt(0, m_h - 1 - y);
            for (int x = 0; x < m_outW; ++x)
                line[x] = s[m_w - 1 - x] | m_opaque;
            break;
        }
        case 1: {
            const uchar *p = reinterpret_cast<const uchar *>(pixelAt(y, m_h - 1));
            for (int x = 0; x < m_outW; ++x, p -= m_bpl)
                line[x] = *reinterpret_cast<const QRgb *>(p) | m_opaque;
            break;
        }
        default: {
            const uchar *p = reinterpret_cast<const uchar *>(pixelAt(m_w - 1 - y, 0));
            for (int x = 0; x < m_outW; ++x, p += m_bpl)
                line[x] = *reinterpret_cast<const QRgb *>(p) | m_opaque;
            break;
        }
        }
        return line;
    }

private:
    const QRgb *pixelAt(int sx, int sy) const
    {
        return reinterpret_cast<const QRgb *>(m_bits + qptrdiff(sy - m_oy) * m_bpl) + (sx - m_ox);
    }

    void loadBand(int y)
    {
        const int last = qMin(y + kBandRows, m_outH) - 1;
        const int n = last - y + 1;
        QRect rect;
        switch (m_rotation) {
        case 0:
            rect = QRect(0, y, m_w, n);
            break;
        case 2:
            rect = QRect(0, m_h - 1 - last, m_w, n);
            break;
        case 1:
            rect = QRect(y, 0, n, m_h);
            break;
        default:
            rect = QRect(m_w - 1 - last, 0, n, m_h);
            break;
        }
        m_band = QImage(); // release the last band before making the next
        m_band = m_src.copy(rect).convertToFormat(QImage::Format_ARGB32);
        m_bits = m_band.constBits();
        m_bpl = m_band.bytesPerLine();
        m_ox = rect.x();
        m_oy = rect.y();
        m_bandFirst = y;
        m_bandLast = last;
    }

    const QImage &m_src;
    const int m_rotation;
    const int m_w;
    const int m_h;
    const bool m_direct;
    int m_outW = 0;
    int m_outH = 0;
    quint32 m_opaque = 0;
    const uchar *m_bits = nullptr;
    qsizetype m_bpl = 0;
    int m_ox = 0;
    int m_oy = 0;
    QImage m_band;
    int m_bandFirst = -1;
    int m_bandLast = -1;
    std::vector<QRgb> m_line;
};

bool evenLengthFormat(int format)
{
    return format == FormatRgb565Zip || format == FormatSoftPngZip || format == FormatArgb4444Zip
           || format == FormatJpg || format == FormatArgb8565;
}

EncodedImage failure(const QString &why)
{
    EncodedImage r;
    r.error = why;
    return r;
}

bool mayCopyFile(int requested, Entry entry)
{
    return requested == FormatJpg || (entry == Entry::Needle && requested == FormatZoomIn);
}

EncodedImage encodeImage(const QImage &image, int requested, const EncodeOptions &o, const QByteArray &fileBytes,
                         Entry entry)
{
    if (image.isNull())
        return failure(QStringLiteral("empty picture"));
    const int rotation = entry == Entry::Needle ? 0 : o.rotation;
    const QSize size = ImageEncoder::rotatedSize(image.size(), rotation);
    if (size.width() > 0xFFFF || size.height() > 0xFFFF)
        return failure(QStringLiteral("picture of %1 x %2 pixels is larger than 65535").arg(size.width()).arg(size.height()));

    const Plan plan = choose(requested, o, entry, [&] { return ImageEncoder::hasTransparency(image); });
    EncodedImage r;
    r.width = size.width();
    r.height = size.height();

    if (plan.packing == Packing::Copy) {
        if (fileBytes.isEmpty())
            return failure(QStringLiteral("format %1 copies the picture file, and there is none").arg(plan.format));
        r.bytes = fileBytes;
    } else {
        const int bpp = bytesPerPixel(plan.packing);
        const int width = size.width();
        const int paddedWidth = o.nand && width % 4 ? (width + 3) / 4 * 4 : width;
        const qint64 rowBytes = qint64(paddedWidth) * bpp;
        const qint64 total = rowBytes * size.height();
        if (total > INT_MAX - 1)
            return failure(QStringLiteral("picture of %1 x %2 pixels is too large to encode").arg(width).arg(size.height()));

        r.bytes = QByteArray(int(total), Qt::Uninitialized);
        uchar *out = reinterpret_cast<uchar *>(r.bytes.data());
        const uchar *pad = padPixel(plan.packing);
        const bool pump = o.perRow && !isSixteenBit(plan.packing);
        RowSource rows(image, rotation);
        for (int y = 0; y < size.height(); ++y, out += rowBytes) {
            packRow(plan.packing, rows.row(y), width, out);
            for (int x = width; x < paddedWidth; ++x)
                std::memcpy(out + qptrdiff(x) * bpp, pad, size_t(bpp));
            if (pump)
                o.perRow();
        }
        if (plan.zip) {
            QByteArray container = ImageZip::compress(reinterpret_cast<const uchar *>(r.bytes.constData()),
                                                      total / 2, width, size.height(), plan.format);
            if (!container.isEmpty()) {
                r.bytes = std::move(container);
                r.compressed = true;
            }
        }
    }
    r.format = plan.format;
    if (evenLengthFormat(r.format) && r.bytes.size() % 2)
        r.bytes.append(char(0xFF));
    return r;
}

EncodedImage encodePath(const QString &path, int requested, const EncodeOptions &o, Entry entry)
{
    QString error;
    QByteArray bytes;
    const QImage image = ImageEncoder::load(path, &error, &bytes);
    if (image.isNull())
        return failure(error);
    if (!mayCopyFile(requested, entry))
        bytes.clear();
    return encodeImage(image, requested, o, bytes, entry);
}

} // namespace

EncodeOptions EncodeOptions::fromSettings(const ProjectSettings &s)
{
    EncodeOptions o;
    o.controller = s.panelType == 10 ? 8 : s.panelType;
    o.rotation = s.rotate >= 0 && s.rotate <= 3 ? s.rotate : 0;
    o.rgb888 = s.colorDepth == 1;
    o.nand = (o.controller == 3 || o.controller == 4) && s.flashTypeIndex == 0;
    o.byteSwap = s.byteSwap;
    return o;
}

namespace ImageEncoder {

int nameToFormat(const QString &name)
{
    static const struct {
        const char *name;
        int code;
    } table[] = {
        {"RGB565", FormatRgb565},          {"RGB888", FormatRgb565},        {"softpng", FormatSoftPng},
        {"aRGB4444", FormatArgb4444},      {"RGB565_zip", FormatRgb565Zip}, {"softpng_zip", FormatSoftPngZip},
        {"aRGB4444_zip", FormatArgb4444Zip}, {"aRGB8888", FormatArgb8888},  {"jpg", FormatJpg},
        {"aRGB8565", FormatArgb8565},      {"ZoomIN", FormatZoomIn},
    };
    for (const auto &e : table)
        if (name == QLatin1String(e.name))
            return e.code;
    return FormatUnknownName;
}

bool hasTransparency(const QImage &image)
{
    if (image.isNull() || !image.hasAlphaChannel())
        return false;
    const int w = image.width();
    const int h = image.height();
    auto rowHasTransparency = [w](const QRgb *s) {
        quint32 all = 0xFFFFFFFFu;
        for (int x = 0; x < w; ++x)
            all &= s[x];
        return all < 0xFF000000u;
    };
    const QImage::Format f = image.format();
    if (f == QImage::Format_ARGB32 || f == QImage::Format_ARGB32_Premultiplied) {
        for (int y = 0; y < h; ++y)
            if (rowHasTransparency(reinterpret_cast<const QRgb *>(image.constScanLine(y))))
                return true;
        return false;
    }
    for (int y0 = 0; y0 < h; y0 += kBandRows) {
        const QImage band = image.copy(0, y0, w, qMin(kBandRows, h - y0)).convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < band.height(); ++y)
            if (rowHasTransparency(reinterpret_cast<const QRgb *>(band.constScanLine(y))))
                return true;
    }
    return false;
}

QImage load(const QString &path, QString *error, QByteArray *fileBytes, const QSize &panel)
{
    QByteArray bytes;
    QString readError;
    QImage image = MediaFiles::readPicture(path, panel, &readError, &bytes);
    // refused before decoding (not a file, too large, declared too big): no fallback
    const bool decodeFailed = image.isNull() && !bytes.isEmpty()
                              && MediaFiles::sizeRefusal(MediaFiles::declaredSize(bytes), panel).isEmpty();
    if (decodeFailed && ImageBmp::acceptsPath(path)) {
        QString bmpError;
        image = ImageBmp::decode(bytes, &bmpError);
        if (image.isNull())
            readError = QStringLiteral("%1: not a picture the loader knows, and as BMP: %2").arg(path, bmpError);
    }
    if (image.isNull()) {
        if (error)
            *error = readError;
        return QImage();
    }
    if (error)
        error->clear();
    if (fileBytes)
        *fileBytes = std::move(bytes);
    return image;
}

QSize rotatedSize(const QSize &size, int rotation)
{
    return rotation == 1 || rotation == 3 ? size.transposed() : size;
}

EncodedImage encode(const QImage &image, int requestedFormat, const EncodeOptions &options, const QByteArray &fileBytes)
{
    return encodeImage(image, requestedFormat, options, fileBytes, Entry::Panel);
}

EncodedImage encodeFile(const QString &path, int requestedFormat, const EncodeOptions &options)
{
    return encodePath(path, requestedFormat, options, Entry::Panel);
}

EncodedImage encodeNeedleFrame(const QString &path, int requestedFormat, const EncodeOptions &options)
{
    return encodePath(path, requestedFormat, options, Entry::Needle);
}

} // namespace ImageEncoder

} // namespace vantile
