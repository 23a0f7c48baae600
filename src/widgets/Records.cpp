#include "widgets/Records.h"

namespace vantile {

namespace Records {

void appendU8(QByteArray &out, quint8 v)
{
    out.append(char(v));
}

void appendU16(QByteArray &out, quint16 v)
{
    out.append(char(v & 0xFF));
    out.append(char(v >> 8));
}

quint8 touchFlags(bool reportToHost, bool viceFlag)
{
    return quint8(0x80 | (reportToHost ? 0x40 : 0) | (viceFlag ? 0x01 : 0));
}

void appendTouchHeader(QByteArray &out, quint8 type, bool reportToHost, bool viceFlag, quint8 length)
{
    appendU8(out, type);
    appendU8(out, touchFlags(reportToHost, viceFlag));
    appendU8(out, length);
}

void appendDisplayHeader(QByteArray &out, quint8 type, bool viceFlag, quint16 parameterAddr,
                         quint8 count, bool overlay)
{
    appendU8(out, type);
    appendU8(out, viceFlag ? 1 : 0);
    appendU16(out, parameterAddr);
    appendU8(out, quint8((count & 0x7F) | (overlay ? 0x80 : 0)));
}

QSize pictureExtents(int rotation, const QSize &picture)
{
    return rotation == 1 || rotation == 3 ? picture.transposed() : picture;
}

Rect16 rotate(int rotation, int x, int y, int w, int h, int pw, int ph)
{
    const auto u = [](int v) { return quint16(v & 0xFFFF); };
    switch (rotation) {
    case 1:
        return {u(pw - y - h), u(x), u(h), u(w)};
    case 2:
        return {u(pw - x - w), u(ph - y - h), u(w), u(h)};
    case 3:
        return {u(y), u(ph - x - w), u(h), u(w)};
    default:
        return {u(x), u(y), u(w), u(h)};
    }
}

Point16 rotatePoint(int rotation, int x, int y, int pw, int ph)
{
    const auto u = [](int v) { return quint16(v & 0xFFFF); };
    switch (rotation) {
    case 1:
        return {u(pw - y), u(x)};
    case 2:
        return {u(pw - x), u(ph - y)};
    case 3:
        return {u(y), u(ph - x)};
    default:
        return {u(x), u(y)};
    }
}

quint16 rgb565(quint32 rgb)
{
    const quint32 r = (rgb >> 16) & 0xFF;
    const quint32 g = (rgb >> 8) & 0xFF;
    const quint32 b = rgb & 0xFF;
    return quint16(((r >> 3) << 11) | ((g >> 2) << 5) | (b >> 3));
}

void appendColour3(QByteArray &out, quint32 rgb, bool colour24)
{
    if (colour24) {
        appendU8(out, quint8(rgb & 0xFF));
        appendU8(out, quint8((rgb >> 8) & 0xFF));
        appendU8(out, quint8((rgb >> 16) & 0xFF));
    } else {
        appendU16(out, rgb565(rgb));
        appendU8(out, 0);
    }
}

QByteArray tailToFront(const QByteArray &record, int tailOffset)
{
    if (tailOffset < 0 || tailOffset + 2 > record.size())
        return record;
    return record.mid(tailOffset, 2) + record.left(tailOffset) + record.mid(tailOffset + 2);
}

} // namespace Records

Rect16 RecordContext::rotate(int x, int y, int w, int h) const
{
    const QSize e = Records::pictureExtents(rotation, rectPicture());
    return Records::rotate(rotation, x, y, w, h, e.width(), e.height());
}

Rect16 RecordContext::rotateOnPanel(int x, int y, int w, int h) const
{
    return Records::rotate(rotation, x, y, w, h, panel.width(), panel.height());
}

} // namespace vantile
