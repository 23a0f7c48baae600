#pragma once
// The two storage forms of a page file or page list: plain text, or the
// sealed form (16-byte header, payload rotated by four bits, keyed CRC).

#include "project/LogSink.h"
#include "project/TextFiles.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vantile {

namespace SealedFile {

constexpr quint32 kBuiltInKey = 0x5E21B7C4u;
constexpr quint32 kFiller = 0x6B3F1D52u;

// CRC-32, reflected polynomial 0xEDB88320, initial value 0, no final complement.
quint32 crc32(const QByteArray &bytes, quint32 crc = 0);

// The payload for a text, and back.
QByteArray rotate(const QByteArray &text);
QByteArray unrotate(const QByteArray &payload);

// The whole sealed file for these lines (each line ended by a line feed).
QByteArray seal(const QStringList &lines, quint32 supplierKey, quint32 *crcOut = nullptr);

enum Class { Plain = 0, Sealed = 1, Illegal = 2 };
// 0: no file, unreadable or 16 bytes or fewer, or not sealed with our header;
// 1: the CRC holds for this key; 2: our header but the CRC fails.
Class classify(const QString &path, quint32 supplierKey);
Class classifyBytes(const QByteArray &bytes, quint32 supplierKey);

// The lines of a sealed file. Bytes below 0x20 taken as signed are left
// out, which drops carriage returns and every byte from 0x80 up.
QStringList readSealed(const QByteArray &bytes, const LogSink &log = {});

// Writes lines in the form the key asks for: plain with the built-in key,
// sealed with any other. Atomic; false when the file can't be written.
bool writeLines(const QString &path, const QStringList &lines, quint32 supplierKey, const LogSink &log = {},
                FileError *error = nullptr);

// Reads a file of either form (classifying first). Illegal gives no lines
// and *cls == Illegal; a file that can't be read (missing, not a regular
// file, too large: TextFiles::readFile) gives *ok == false and *error.
QStringList readLines(const QString &path, quint32 supplierKey, Class *cls = nullptr, bool *ok = nullptr,
                      const LogSink &log = {}, FileError *error = nullptr);

} // namespace SealedFile

} // namespace vantile
