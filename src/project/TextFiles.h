#pragma once
// Plain text files of a project: page files, the page list, small lists.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vantile {

// Why a file could not be read or written, for a message that names it.
struct FileError {
    QString path;
    QString reason; // the system's words, or ours ("not a regular file")
    bool isSet() const { return !path.isEmpty(); }
    // "<path>\n<reason>": the detail text of a box.
    QString detail() const { return reason.isEmpty() ? path : path + QLatin1Char('\n') + reason; }
};

namespace TextFiles {

// Page files, page lists, settings and the small lists beside them are
// never this large; anything above is refused rather than read.
constexpr qint64 kMaxTextFileSize = qint64(64) << 20;

enum class ReadStatus { Ok, Missing, NotRegular, TooLarge, Unreadable };

// Reads a whole project text file: only regular files (a device, a pipe or
// a link to one is refused before it is opened), at most maxSize bytes.
// On failure *error names the file and says why.
ReadStatus readFile(const QString &path, QByteArray *bytes, FileError *error = nullptr,
                    qint64 maxSize = kMaxTextFileSize);

// Writes through a temporary file and a rename: a crash or a full disk
// leaves the old file as it was. Returns false (and leaves it) on failure.
bool writeAtomically(const QString &path, const QByteArray &bytes, QString *error = nullptr);

// A save killed half-way (a crash, a kill, a power cut) leaves its
// temporary file beside the file it was to replace: "<name>.XXXXXX".
// True for such a leftover of one of the project's own files.
bool isInterruptedWrite(const QString &fileName, const QString &projectName);
// Removes those leftovers from the project folder, Plugin/ and
// MultiLanguage/; returns the paths removed.
QStringList removeInterruptedWrites(const QString &projectDir, const QString &projectName);

// Decodes a whole file: UTF-8 (BOM dropped), or GBK when any UTF-8
// sequence is invalid.
QString decode(const QByteArray &bytes, bool *wasGbk = nullptr);

// The lines of a plain file's bytes: decoded as above, carriage returns
// dropped, no empty last line for the final line feed.
QStringList splitPlain(const QByteArray &bytes);

// The lines of a plain file. A file that can't be read (see readFile)
// gives ok = false.
QStringList readLines(const QString &path, bool *ok = nullptr, FileError *error = nullptr);

// Plain form: BOM, each line followed by a line feed.
QByteArray encodePlain(const QStringList &lines);

// Any line that does not start with one of the record prefixes is glued
// to the record before it, with `separator` between (none by default: a
// widget text holding a line break loads as one record). The first line
// always opens a record.
QStringList glueRecords(const QStringList &physicalLines, const QString &separator = QString());
const QStringList &recordPrefixes();

} // namespace TextFiles

} // namespace vantile
