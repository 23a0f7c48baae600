#include "project/FileStamps.h"

#include <QFileInfo>

namespace vantile {

void FileStamps::note(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        m_stamps.remove(path);
        return;
    }
    m_stamps.insert(path, {info.lastModified(), info.size()});
}

void FileStamps::forget(const QString &path)
{
    m_stamps.remove(path);
}

bool FileStamps::changedOnDisk(const QString &path) const
{
    const auto it = m_stamps.constFind(path);
    if (it == m_stamps.constEnd())
        return false;
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    if (!info.isFile())
        return true;
    return info.lastModified() != it->modified || info.size() != it->size;
}

} // namespace vantile
