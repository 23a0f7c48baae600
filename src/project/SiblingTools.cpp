#include "project/SiblingTools.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace vantile {
namespace SiblingTools {

QStringList executables(const QString &dir)
{
#ifdef Q_OS_WIN
    return QDir(dir).entryList({QStringLiteral("*.exe")}, QDir::Files, QDir::Name);
#else
    QStringList names;
    for (const QFileInfo &info : QDir(dir).entryInfoList(QDir::Files | QDir::Executable, QDir::Name))
        names << info.fileName();
    return names;
#endif
}

QString find(const QString &dir, const QString &toolName)
{
    for (const QString &name : executables(dir))
        if (name.contains(toolName))
            return name;
    return QString();
}

bool isRunning(const QString &fileName)
{
#ifdef Q_OS_WIN
    QProcess list;
    list.start(QStringLiteral("tasklist"), {});
    list.waitForFinished(30000);
    return QString::fromLocal8Bit(list.readAllStandardOutput()).contains(fileName);
#else
    // each process's program: the first word of its command line
    for (const QString &pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!pid.at(0).isDigit())
            continue;
        QFile cmdline(QStringLiteral("/proc/") + pid + QStringLiteral("/cmdline"));
        if (!cmdline.open(QIODevice::ReadOnly))
            continue;
        const QByteArray argv0 = cmdline.read(4096).split('\0').value(0);
        if (QFileInfo(QString::fromLocal8Bit(argv0)).fileName() == fileName)
            return true;
    }
    return false;
#endif
}

QString start(const QString &dir, const QString &toolName)
{
    const QString file = find(dir, toolName);
    if (file.isEmpty() || isRunning(file))
        return QString();
    return QProcess::startDetached(dir + QLatin1Char('/') + file, {}) ? file : QString();
}

} // namespace SiblingTools
} // namespace vantile
