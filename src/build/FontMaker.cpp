#include "build/FontMaker.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTextCodec>

#include <cstring>

namespace vantile {
namespace FontMaker {

namespace {

struct EncodingName {
    const char *name;
    const char *tag;
};
const EncodingName kEncodings[] = {
    {"ASCII", "AS"}, {"GB2312", "GB"}, {"GBK", "GK"}, {"BIG5", "BG"}, {"Unicode", "UN"},
};

const char *codecOf(int encoding)
{
    switch (encoding) {
    case 0: return "GB2312";
    case 2: return "Big5";
    default: return "GBK";
    }
}

} // namespace

QStringList encodingNames()
{
    QStringList names;
    for (const EncodingName &e : kEncodings)
        names << QLatin1String(e.name);
    return names;
}

QByteArray tagOf(const QString &encodingName)
{
    for (const EncodingName &e : kEncodings)
        if (encodingName.compare(QLatin1String(e.name), Qt::CaseInsensitive) == 0)
            return QByteArray(e.tag);
    return QByteArray();
}

int depthOf(int bits)
{
    switch (bits) {
    case 1: return 0;
    case 2: return 1;
    case 4: return 2;
    case 8: return 3;
    default: return -1;
    }
}

QString characterOf(int code, int encoding)
{
    if (code < 0 || code > 0xFFFF)
        return QString();
    if (encoding == 3 || encoding == 6 || encoding == 9) {
        const QChar c{ushort(code)};
        return c.isSurrogate() || !c.isPrint() ? QString() : QString(c);
    }
    if (code < 0x80)
        return QChar(ushort(code)).isPrint() ? QString(QChar(ushort(code))) : QString();
    if (encoding == 4)
        return QString(); // an ASCII font holds single bytes only
    if (code < 0x100)
        return QString();
    // GB2312 is the area of both bytes 0xA1..0xFE (the codec would take GBK's too)
    const int lead = code >> 8, trail = code & 0xFF;
    if (encoding == 0 && (lead < 0xA1 || lead > 0xFE || trail < 0xA1 || trail > 0xFE))
        return QString();
    QTextCodec *codec = QTextCodec::codecForName(codecOf(encoding));
    if (!codec)
        return QString();
    const char bytes[2] = {char(code >> 8), char(code & 0xFF)};
    QTextCodec::ConverterState state(QTextCodec::ConvertInvalidToNull);
    const QString text = codec->toUnicode(bytes, 2, &state);
    if (state.invalidChars > 0 || state.remainingChars > 0 || text.size() != 1 || text[0].isNull()
        || text[0] == QChar::ReplacementCharacter)
        return QString();
    return text;
}

QString fileName(int id, const QString &name)
{
    return QStringLiteral("%1_%2Font.bin").arg(id, 2, 10, QLatin1Char('0')).arg(name);
}

QByteArray make(const Options &o, QString *error)
{
    auto fail = [error](const QString &why) {
        if (error)
            *error = why;
        return QByteArray();
    };
    FontFile::Header h;
    h.tag = tagOf(o.encoding);
    if (h.tag.isEmpty())
        return fail(QStringLiteral("unknown encoding \"%1\" (%2)").arg(o.encoding, encodingNames().join(", ")));
    h.depth = depthOf(o.depthBits);
    if (h.depth < 0)
        return fail(QStringLiteral("depth must be 1, 2, 4 or 8 bits, not %1").arg(o.depthBits));
    if (o.pixelSize < 4 || o.pixelSize > 255)
        return fail(QStringLiteral("size must be 4 to 255 pixels, not %1").arg(o.pixelSize));
    if (o.firstCode < 0 || o.lastCode > 0xFFFF || o.lastCode < o.firstCode)
        return fail(QStringLiteral("the code range 0x%1-0x%2 is not a range of 0x0000-0xFFFF")
                        .arg(o.firstCode, 0, 16)
                        .arg(o.lastCode, 0, 16));

    QFont font(o.family);
    font.setPixelSize(o.pixelSize);
    font.setBold(o.bold);
    // one bit a pixel wants hard edges; more bits keep the smoothing as coverage
    font.setStyleStrategy(o.depthBits == 1 ? QFont::NoAntialias : QFont::PreferAntialias);
    const QFontMetrics fm(font);
    const int encoding = FontFile::encodingOfTag(h.tag);

    // The cell: the character height, and the widest advance of the range
    // (at most 255) for the width.
    QHash<int, QString> chars;
    int width = 1;
    for (int code = o.firstCode; code <= o.lastCode; ++code) {
        const QString c = characterOf(code, encoding);
        if (c.isEmpty())
            continue;
        chars.insert(code, c);
        width = qMax(width, fm.horizontalAdvance(c));
    }
    h.width = qMin(width, 255);
    h.height = o.pixelSize;
    h.firstCode = o.firstCode;
    h.lastCode = o.lastCode;

    // the baseline: the ascent, pulled up when ascent + descent exceed the cell
    const int baseline = qMin(fm.ascent(), h.height - qMin(fm.descent(), h.height / 4));
    QHash<int, FontFile::Glyph> glyphs;
    QImage cell(h.width, h.height, QImage::Format_Grayscale8);
    for (auto it = chars.constBegin(); it != chars.constEnd(); ++it) {
        cell.fill(0);
        {
            QPainter p(&cell);
            p.setFont(font);
            p.setPen(Qt::white);
            p.drawText(0, baseline, it.value());
        }
        FontFile::Glyph g;
        g.coverage.resize(h.width * h.height);
        for (int y = 0; y < h.height; ++y)
            memcpy(g.coverage.data() + y * h.width, cell.constScanLine(y), size_t(h.width));
        g.advance = qBound(1, fm.horizontalAdvance(it.value()), h.width);
        glyphs.insert(it.key(), g);
    }
    if (error)
        error->clear();
    return FontFile::write(h, glyphs);
}

} // namespace FontMaker
} // namespace vantile
