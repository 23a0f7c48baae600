#pragma once
// Plain text files of a project: page files, the page list, small lists.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vantile {

namespace TextFiles {

// Writes through a temporary file and a rename: a crash or a full disk
// leaves the old file as it was. Returns false (and leaves it) on failure.
bool writeAtomically(const QString &path, const QByteArray &bytes, QString *error = nullptr);

// Decodes a whole file: UTF-8 (BOM dropped), or GBK when any UTF-8
// sequence is invalid.
QString decode(const QByteArray &bytes, bool *wasGbk = nullptr);

// The lines of a plain file's bytes: decoded as above, carriage returns
// dropped, no empty last line for the final line feed.
QStringList splitPlain(const QByteArray &bytes);

// The lines of a plain file. A missing file gives ok = false.
QStringList readLines(const QString &path, bool *ok = nullptr);

// Plain form: BOM, each line followed by a line feed.
QByteArray encodePlain(const QStringList &lines);

// Any line that does not start with one of the record prefixes is glued
// to the record before it, with no separator (keeps line breaks inside
// widget texts). The first line always opens a record.
QStringList glueRecords(const QStringList &physicalLines);
const QStringList &recordPrefixes();

} // namespace TextFiles

} // namespace vantile
