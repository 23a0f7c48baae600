#include "build/FontFile.h"

#include "project/TextFiles.h"
#include "widgets/TextEncoding.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace vantile {

namespace FontFile {

namespace {

int le16(const QByteArray &b, int at)
{
    return int(quint8(b[at])) | int(quint8(b[at + 1])) << 8;
}

int clampByte(int v)
{
    return qBound(0, v, 255);
}

// The family name as UTF-8, cut at a character boundary to fit its bytes.
QByteArray familyBytes(const QString &family)
{
    QString name = family;
    QByteArray utf8 = name.toUtf8();
    while (utf8.size() > kFamilySize) {
        name.chop(1);
        utf8 = name.toUtf8();
    }
    return utf8;
}

} // namespace

int encodingOfTag(const QByteArray &tag)
{
    static const char *const kTags[] = {"GB", "GK", "BG", "UN", "AS", nullptr, "un", "GT", "TF", "SS"};
    for (int code = 0; code < 10; ++code)
        if (kTags[code] && tag == kTags[code])
            return code;
    return 5;
}

int bitsPerPixel(int depth)
{
    switch (depth) {
    case 1: return 2;
    case 2: return 4;
    case 3: return 8;
    case 4: return 16;
    default: return 1;
    }
}

bool hasAdvanceByte(int encoding)
{
    return encoding == 6 || encoding == 9;
}

bool hasFamily(int encoding)
{
    return encoding == 5 || encoding == 6 || encoding == 9;
}

QVector<int> codesOf(const QString &text, int encoding)
{
    QVector<int> codes;
    if (TextEncoding::isWide(encoding)) {
        for (const QChar c : text)
            codes << int(c.unicode());
        return codes;
    }
    const QByteArray bytes = TextEncoding::encode(text, encoding);
    for (int i = 0; i < bytes.size(); ++i) {
        const int lead = quint8(bytes[i]);
        if (lead < 0x80 || encoding == 4 || i + 1 == bytes.size())
            codes << lead;
        else
            codes << (lead << 8 | quint8(bytes[++i]));
    }
    return codes;
}

// --- the header ----------------------------------------------------------------

int Header::rowBytes() const
{
    return depth == 4 ? width * 2 : (width * bits() + 7) / 8;
}

int Header::recordBytes() const
{
    return height * rowBytes() + (hasAdvanceByte(encoding()) ? 1 : 0);
}

qint64 Header::recordCount() const
{
    return lastCode >= firstCode ? qint64(lastCode) - firstCode + 1 : 0;
}

qint64 Header::recordOffset(int code) const
{
    if (code < firstCode || code > lastCode)
        return -1;
    return kHeaderSize + qint64(code - firstCode) * recordBytes();
}

QString Header::damage() const
{
    if (width == 0 || height == 0)
        return QStringLiteral("the character size is %1 x %2").arg(width).arg(height);
    if (lastCode < firstCode)
        return QStringLiteral("the last code 0x%1 is below the first 0x%2")
            .arg(lastCode, 4, 16, QLatin1Char('0'))
            .arg(firstCode, 4, 16, QLatin1Char('0'));
    return QString();
}

bool Header::parse(const QByteArray &bytes, Header *header)
{
    if (bytes.size() < kHeaderSize)
        return false;
    Header h;
    h.tag = bytes.left(2);
    h.width = quint8(bytes[2]);
    h.height = quint8(bytes[3]);
    h.firstCode = le16(bytes, 4);
    h.lastCode = le16(bytes, 6);
    const int depth = quint8(bytes[8]);
    h.depth = depth <= 4 ? depth : 0;
    for (int i = 0; i < kAsciiCount; ++i)
        h.widths[i] = quint8(bytes[kWidthsAt + i]);
    if (hasFamily(h.encoding())) {
        QByteArray name = bytes.mid(kFamilyAt, kFamilySize);
        const int nul = name.indexOf('\0');
        if (nul >= 0)
            name.truncate(nul);
        h.family = QString::fromUtf8(name);
        h.style = quint8(bytes[kStyleAt]) & (Bold | Italic | Underline);
    }
    *header = h;
    return true;
}

QByteArray Header::bytes() const
{
    QByteArray b(kHeaderSize, '\0');
    b[0] = tag.size() > 0 ? tag[0] : '\0';
    b[1] = tag.size() > 1 ? tag[1] : '\0';
    b[2] = char(clampByte(width));
    b[3] = char(clampByte(height));
    b[4] = char(firstCode & 0xFF);
    b[5] = char((firstCode >> 8) & 0xFF);
    b[6] = char(lastCode & 0xFF);
    b[7] = char((lastCode >> 8) & 0xFF);
    b[8] = char(depth);
    if (hasFamily(encoding())) {
        const QByteArray name = familyBytes(family);
        b.replace(kFamilyAt, name.size(), name);
        b[kStyleAt] = char(style & (Bold | Italic | Underline));
    } else {
        for (int i = 0; i < kAsciiCount; ++i)
            b[kWidthsAt + i] = char(widths[i]);
    }
    return b;
}

HeaderRead readHeader(const QString &path)
{
    HeaderRead r;
    const QFileInfo info(path);
    // isFile() follows links: a link to a device or a pipe is no font
    if (!info.isFile()) {
        r.reason = info.exists() ? QStringLiteral("Not a regular file") : QStringLiteral("No such file");
        return r;
    }
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        r.reason = f.errorString();
        return r;
    }
    r.fileSize = f.size();
    if (r.fileSize < kMinFileSize) {
        r.status = HeaderRead::Short;
        return r;
    }
    const QByteArray head = f.read(kHeaderSize);
    if (!Header::parse(head, &r.header)) {
        r.reason = f.errorString();
        return r;
    }
    r.reason = r.header.damage();
    r.status = r.reason.isEmpty() ? HeaderRead::Ok : HeaderRead::Damaged;
    return r;
}

// --- reading glyphs -----------------------------------------------------------------

bool Font::load(const QByteArray &bytes, QString *reason)
{
    auto fail = [&](const QString &why) {
        if (reason)
            *reason = why;
        *this = Font();
        return false;
    };
    if (bytes.size() < kMinFileSize)
        return fail(QStringLiteral("%1 bytes, a font file has at least %2").arg(bytes.size()).arg(kMinFileSize));
    Header h;
    Header::parse(bytes, &h);
    const QString damage = h.damage();
    if (!damage.isEmpty())
        return fail(damage);
    m_bytes = bytes;
    m_header = h;
    m_valid = true;
    return true;
}

bool Font::open(const QString &path, QString *reason)
{
    QByteArray bytes;
    FileError error;
    if (TextFiles::readFile(path, &bytes, &error, kMaxFileSize) != TextFiles::ReadStatus::Ok) {
        if (reason)
            *reason = error.reason;
        *this = Font();
        return false;
    }
    return load(bytes, reason);
}

bool Font::hasGlyph(int code) const
{
    const qint64 at = m_valid ? m_header.recordOffset(code) : -1;
    return at >= 0 && at + m_header.recordBytes() <= m_bytes.size();
}

QByteArray Font::record(int code) const
{
    return hasGlyph(code) ? m_bytes.mid(int(m_header.recordOffset(code)), m_header.recordBytes()) : QByteArray();
}

int Font::pixel(int code, int x, int y) const
{
    if (!hasGlyph(code) || x < 0 || y < 0 || x >= m_header.width || y >= m_header.height)
        return 0;
    qint64 row = m_header.recordOffset(code) + qint64(y) * m_header.rowBytes();
    if (hasAdvanceByte(m_header.encoding()))
        ++row;
    const char *p = m_bytes.constData() + row;
    const int bits = m_header.bits();
    if (bits == 16)
        return int(quint8(p[2 * x])) | int(quint8(p[2 * x + 1])) << 8;
    const int bit = x * bits;                // from the row's most significant bit
    const int byte = quint8(p[bit / 8]);
    const int shift = 8 - bits - bit % 8;
    return (byte >> shift) & ((1 << bits) - 1);
}

double Font::coverage(int code, int x, int y) const
{
    const int bits = m_header.bits();
    if (bits == 16) // colour pixels cover their cell
        return hasGlyph(code) && x >= 0 && y >= 0 && x < m_header.width && y < m_header.height ? 1.0 : 0.0;
    return double(pixel(code, x, y)) / double((1 << bits) - 1);
}

int Font::advance(int code) const
{
    if (hasAdvanceByte(m_header.encoding()))
        return hasGlyph(code) ? quint8(m_bytes[int(m_header.recordOffset(code))]) : m_header.width;
    if (code >= kAsciiFirst && code < kAsciiFirst + kAsciiCount && !hasFamily(m_header.encoding())) {
        const int w = m_header.widths[code - kAsciiFirst];
        return w == 0 ? m_header.width : w;
    }
    return m_header.width;
}

// --- writing --------------------------------------------------------------------------

QByteArray write(const Header &headerIn, const QHash<int, Glyph> &glyphs)
{
    Header header = headerIn;
    const int encoding = header.encoding();
    const bool advanceByte = hasAdvanceByte(encoding);
    if (!hasFamily(encoding)) {
        for (auto it = glyphs.constBegin(); it != glyphs.constEnd(); ++it) {
            const int code = it.key();
            if (code >= kAsciiFirst && code < kAsciiFirst + kAsciiCount && it->advance >= 0)
                header.widths[code - kAsciiFirst] = quint8(clampByte(it->advance));
        }
    }

    const int w = header.width, h = header.height, bits = header.bits();
    const int rowBytes = header.rowBytes();
    const int levels = (1 << qMin(bits, 8)) - 1;
    QByteArray out = header.bytes();
    out.reserve(int(header.fileSize()));
    for (qint64 code = header.firstCode; code <= header.lastCode; ++code) {
        QByteArray record(header.recordBytes(), '\0');
        const auto it = glyphs.constFind(int(code));
        const Glyph *g = it == glyphs.constEnd() ? nullptr : &it.value();
        int at = 0;
        if (advanceByte) {
            record[0] = char(clampByte(g && g->advance >= 0 ? g->advance : w));
            at = 1;
        }
        for (int y = 0; g && y < h; ++y) {
            char *row = record.data() + at + y * rowBytes;
            for (int x = 0; x < w; ++x) {
                const int i = y * w + x;
                if (bits == 16) {
                    const quint16 v = i < g->rgb.size() ? g->rgb[i] : 0;
                    row[2 * x] = char(v & 0xFF);
                    row[2 * x + 1] = char(v >> 8);
                    continue;
                }
                const int c = i < g->coverage.size() ? quint8(g->coverage[i]) : 0;
                const int v = int(std::lround(c * levels / 255.0));
                const int bit = x * bits;
                row[bit / 8] = char(quint8(row[bit / 8]) | (v << (8 - bits - bit % 8)));
            }
        }
        out += record;
    }
    return out;
}

QImage drawCodes(const Font &font, const QVector<int> &codes, QRgb colour)
{
    if (!font.isValid())
        return QImage();
    const Header &h = font.header();
    int width = 0;
    for (int code : codes)
        width += font.advance(code);
    QImage image(qMax(1, width), qMax(1, h.height), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    int left = 0;
    for (int code : codes) {
        const int advance = font.advance(code);
        if (font.hasGlyph(code)) {
            for (int y = 0; y < h.height; ++y) {
                auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
                for (int x = 0; x < qMin(advance, h.width) && left + x < image.width(); ++x) {
                    if (h.depth == 4) {
                        const int v = font.pixel(code, x, y);
                        if (v)
                            row[left + x] = qRgb((v >> 11) << 3, ((v >> 5) & 0x3F) << 2, (v & 0x1F) << 3);
                        continue;
                    }
                    const int alpha = int(font.coverage(code, x, y) * 255 + 0.5);
                    if (alpha > 0)
                        row[left + x] = qRgba(qRed(colour), qGreen(colour), qBlue(colour), alpha);
                }
            }
        }
        left += advance;
    }
    return image;
}

} // namespace FontFile

} // namespace vantile
