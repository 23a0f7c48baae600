#pragma once
// What the designer last saw of each file it read or wrote: time and size.
// Before a save overwrites a file it asks whether the file changed on disk
// since then (another editor, a version control checkout), so that an
// outside change is never thrown away without asking.

#include <QDateTime>
#include <QHash>
#include <QString>

namespace vantile {

class FileStamps
{
public:
    // Notes the file as it is on disk now (after reading or writing it).
    void note(const QString &path);
    void forget(const QString &path);
    void clear() { m_stamps.clear(); }
    // True when the file was noted and is now different in time or size,
    // or has been replaced by something that is not a file. A file that
    // was never noted, or that is gone, has no change to lose.
    bool changedOnDisk(const QString &path) const;

private:
    struct Stamp {
        QDateTime modified;
        qint64 size = -1;
    };
    QHash<QString, Stamp> m_stamps;
};

} // namespace vantile
