#include "project/SealedFile.h"
#include "project/TextFiles.h"

#include <QFile>
#include <QtEndian>

namespace vantile {
namespace SealedFile {

namespace {

// Eight tables: entry [0] is the usual byte table; [k] advances a byte
// that lies k places further on, so eight bytes are folded at a time.
struct CrcTables {
    quint32 t[8][256];
    CrcTables()
    {
        for (quint32 i = 0; i < 256; ++i) {
            quint32 c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? (c >> 1) ^ 0xEDB88320u : c >> 1;
            t[0][i] = c;
        }
        for (int k = 1; k < 8; ++k)
            for (quint32 i = 0; i < 256; ++i)
                t[k][i] = (t[k - 1][i] >> 8) ^ t[0][t[k - 1][i] & 0xFF];
    }
};

const CrcTables &crcTables()
{
    static const CrcTables tables;
    return tables;
}

void putLe32(QByteArray &b, int at, quint32 v)
{
    qToLittleEndian<quint32>(v, reinterpret_cast<uchar *>(b.data() + at));
}

quint32 getLe32(const QByteArray &b, int at)
{
    return qFromLittleEndian<quint32>(reinterpret_cast<const uchar *>(b.constData() + at));
}

} // namespace

quint32 crc32(const QByteArray &bytes, quint32 crc)
{
    const auto &t = crcTables().t;
    const uchar *p = reinterpret_cast<const uchar *>(bytes.constData());
    qsizetype n = bytes.size();
    while (n >= 8) {
        const quint32 a = crc ^ (quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24);
        crc = t[7][a & 0xFF] ^ t[6][(a >> 8) & 0xFF] ^ t[5][(a >> 16) & 0xFF] ^ t[4][a >> 24] ^ t[3][p[4]]
              ^ t[2][p[5]] ^ t[1][p[6]] ^ t[0][p[7]];
        p += 8;
        n -= 8;
    }
    while (n-- > 0)
        crc = t[0][(crc ^ *p++) & 0xFF] ^ (crc >> 8);
    return crc;
}

QByteArray rotate(const QByteArray &text)
{
    const int n = text.size();
    QByteArray out(n, '\0');
    for (int i = 0; i < n; ++i) {
        const quint8 cur = quint8(text[i]);
        const quint8 next = quint8(text[(i + 1) % n]);
        out[i] = char(quint8(cur << 4) | (next >> 4));
    }
    return out;
}

QByteArray unrotate(const QByteArray &payload)
{
    const int n = payload.size();
    QByteArray out(n, '\0');
    for (int i = 0; i < n; ++i) {
        const quint8 prev = quint8(payload[(i + n - 1) % n]);
        const quint8 cur = quint8(payload[i]);
        out[i] = char(quint8(prev << 4) | (cur >> 4));
    }
    return out;
}

QByteArray seal(const QStringList &lines, quint32 supplierKey, quint32 *crcOut)
{
    QByteArray text;
    for (const QString &l : lines) {
        text += l.toUtf8();
        text += '\n';
    }
    const QByteArray payload = rotate(text);
    QByteArray file(16, '\0');
    file[0] = 'U';
    file[1] = 'I';
    putLe32(file, 2, kBuiltInKey);
    putLe32(file, 6, kFiller);
    putLe32(file, 10, supplierKey);
    file[14] = 0x0D;
    file[15] = 0x0A;
    file += payload;
    const quint32 crc = crc32(file);
    putLe32(file, 6, quint32(payload.size()));
    putLe32(file, 10, crc);
    if (crcOut)
        *crcOut = crc;
    return file;
}

Class classifyBytes(const QByteArray &bytesIn, quint32 supplierKey)
{
    if (bytesIn.size() <= 16)
        return Plain;
    QByteArray bytes = bytesIn;
    const quint32 stored = getLe32(bytes, 10);
    putLe32(bytes, 6, kFiller);
    putLe32(bytes, 10, supplierKey);
    if (crc32(bytes) == stored)
        return Sealed;
    return getLe32(bytes, 2) == kBuiltInKey ? Illegal : Plain;
}

Class classify(const QString &path, quint32 supplierKey)
{
    QByteArray bytes;
    if (TextFiles::readFile(path, &bytes) != TextFiles::ReadStatus::Ok)
        return Plain;
    return classifyBytes(bytes, supplierKey);
}

QStringList readSealed(const QByteArray &bytes, const LogSink &log)
{
    if (bytes.size() <= 18)
        return {};
    quint32 len = getLe32(bytes, 6);
    const quint32 avail = quint32(bytes.size() - 16);
    if (len > avail)
        len = avail;
    const QByteArray text = unrotate(bytes.mid(16, int(len)));
    logTo(log, QStringLiteral("ll = ") + QString::number(len));
    QStringList lines;
    QByteArray line;
    for (int i = 0; i < text.size(); ++i) {
        const signed char c = static_cast<signed char>(text[i]);
        if (c == '\n') {
            logTo(log, QStringLiteral("rdPos = ") + QString::number(i));
            lines << QString::fromLatin1(line);
            line.clear();
        } else if (c >= 0x20) {
            line += char(c);
        }
    }
    if (!line.isEmpty())
        lines << QString::fromLatin1(line);
    logTo(log, QString::fromLatin1(text));
    logTo(log, QStringLiteral("Split"));
    return lines;
}

bool writeLines(const QString &path, const QStringList &lines, quint32 supplierKey, const LogSink &log,
                FileError *error)
{
    QByteArray bytes;
    if (supplierKey == kBuiltInKey) {
        bytes = TextFiles::encodePlain(lines);
    } else {
        quint32 crc = 0;
        bytes = seal(lines, supplierKey, &crc);
        logTo(log, QStringLiteral("Save crc: 0x%1").arg(crc, 8, 16, QLatin1Char('0')));
    }
    QString reason;
    if (TextFiles::writeAtomically(path, bytes, &reason))
        return true;
    if (error)
        *error = {path, reason};
    return false;
}

QStringList readLines(const QString &path, quint32 supplierKey, Class *cls, bool *ok, const LogSink &log,
                      FileError *error)
{
    QByteArray bytes;
    const bool read = TextFiles::readFile(path, &bytes, error) == TextFiles::ReadStatus::Ok;
    if (ok)
        *ok = read;
    if (!read) {
        if (cls)
            *cls = Plain;
        return {};
    }
    const Class c = classifyBytes(bytes, supplierKey);
    if (cls)
        *cls = c;
    if (c == Illegal)
        return {};
    if (c == Sealed)
        return readSealed(bytes, log);
    return TextFiles::splitPlain(bytes);
}

} // namespace SealedFile
} // namespace vantile
