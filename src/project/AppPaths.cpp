#include "project/AppPaths.h"
#include "project/TextFiles.h"

#include <QCoreApplication>

#include <QFile>

namespace vantile {
namespace AppPaths {

namespace {
QString &overrideDir()
{
    static QString dir;
    return dir;
}
} // namespace

QString appDir()
{
    if (!overrideDir().isEmpty())
        return overrideDir();
    return QCoreApplication::applicationDirPath();
}

void setAppDirOverride(const QString &dir)
{
    overrideDir() = dir;
}

QString editorConfigPath() { return appDir() + QStringLiteral("/editorConfig.ini"); }
QString uiprjPathFile() { return appDir() + QStringLiteral("/uiprj_path.ini"); }
QString currentBinPathFile() { return appDir() + QStringLiteral("/currentbin_path.ini"); }

QString readOneLine(const QString &path)
{
    QByteArray bytes;
    if (TextFiles::readFile(path, &bytes) != TextFiles::ReadStatus::Ok)
        return QString();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const int nl = bytes.indexOf('\n');
    if (nl >= 0)
        bytes.truncate(nl);
    return QString::fromUtf8(bytes).trimmed();
}

bool writeOneLine(const QString &path, const QString &text)
{
    return TextFiles::writeAtomically(path, QByteArray("\xEF\xBB\xBF") + text.toUtf8());
}

} // namespace AppPaths
} // namespace vantile
