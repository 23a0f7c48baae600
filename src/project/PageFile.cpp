#include "project/PageFile.h"
#include "widgets/VariableKinds.h"

namespace vantile {
namespace PageFile {

Read read(const QString &path, quint32 supplierKey, const LogSink &log, Breaks breaks)
{
    Read r;
    QStringList physical = SealedFile::readLines(path, supplierKey, &r.form, &r.ok, log, &r.error);
    // lines of an earlier version (comboButton) are read in today's form; a step
    // that writes the file back (Keep) leaves them as they were written
    if (breaks == Breaks::Drop)
        for (QString &line : physical)
            line = VariableKinds::upgradeOldLine(line);
    const QString separator = breaks == Breaks::Keep ? QStringLiteral("\n") : QString();
    for (const QString &record : TextFiles::glueRecords(physical, separator))
        if (!record.trimmed().isEmpty())
            r.lines << record;
    return r;
}

bool sameContent(const QString &path, quint32 supplierKey, const QStringList &lines)
{
    const Read r = read(path, supplierKey);
    if (!r.ok || r.form == SealedFile::Illegal)
        return false;
    QStringList mine;
    for (const QString &l : lines)
        if (!l.trimmed().isEmpty())
            mine << l.simplified();
    if (mine.size() != r.lines.size())
        return false;
    for (int i = 0; i < mine.size(); ++i)
        if (r.lines[i].simplified() != mine[i])
            return false;
    return true;
}

} // namespace PageFile
} // namespace vantile
