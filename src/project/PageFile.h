#pragma once
// The one reader of page files: the saved page (.cfg), the history steps
// (.cfbK) and the merged pages of a build (.cfc). The designer, the history
// and every step of a build read pages through here, so that all of them
// see the same records.

#include "project/LogSink.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"

#include <QStringList>

namespace vantile {

namespace PageFile {

struct Read {
    QStringList lines;                       // one record per widget, the page line first
    SealedFile::Class form = SealedFile::Plain;
    bool ok = false;                         // false: the file could not be read (see error)
    FileError error;
};

// How a record that spans physical lines is glued.
enum class Breaks {
    Drop, // as the designer loads it: the pieces joined with nothing between
    Keep, // with a line feed between, so that writing the records back gives
          // the same physical lines (for a step that rewrites a page file)
};

// Reads a page file of either form. A physical line that does not open a
// record (a widget text holding a line break) is glued to the record
// before it; records left empty are dropped. An illegal sealed file reads
// as ok with no lines and form Illegal.
Read read(const QString &path, quint32 supplierKey, const LogSink &log = {}, Breaks breaks = Breaks::Drop);

// The lines of a page file compared with lines held in memory: the file is
// decoded as read above, and both sides are compared line by line with
// outer white space removed and inner runs reduced to one blank. The form
// and the encoding of the file (mark, sealed, GBK) play no part.
bool sameContent(const QString &path, quint32 supplierKey, const QStringList &lines);

} // namespace PageFile

} // namespace vantile
