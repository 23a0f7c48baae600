#include "project/PageHistory.h"

#include "project/PageFile.h"
#include "project/PageList.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace vantile {

void PageHistory::reset(const QString &projectDir, quint32 supplierKey)
{
    m_dir = projectDir;
    m_key = supplierKey;
    zeroAll();
}

QString PageHistory::cfgPath(int row) const
{
    return m_dir + QStringLiteral("Plugin/Page") + PageList::pageId(row) + QStringLiteral(".cfg");
}

QString PageHistory::stepPath(int row, int k) const
{
    return m_dir + QStringLiteral("Plugin/Page") + PageList::pageId(row) + QStringLiteral(".cfb")
           + QString::number(k);
}

int PageHistory::step(int row) const
{
    return row >= 0 && row < MaxPages ? m_steps[size_t(row)] : 0;
}

void PageHistory::setStep(int row, int k)
{
    if (row >= 0 && row < MaxPages)
        m_steps[size_t(row)] = quint8(k);
}

void PageHistory::zeroAll()
{
    m_steps.fill(0);
}

int PageHistory::highestStep(int row) const
{
    int highest = 0;
    for (int k = 1; k <= RingSize; ++k)
        if (QFile::exists(stepPath(row, k)))
            highest = k;
    return highest;
}

QString PageHistory::currentFile(int row) const
{
    const int k = step(row);
    if (k != 0 && k <= highestStep(row))
        return stepPath(row, k);
    return cfgPath(row);
}

bool PageHistory::sameContent(const QString &path, const QStringList &lines) const
{
    return PageFile::sameContent(path, m_key, lines);
}

PageHistory::StepResult PageHistory::takeStep(int row, const QStringList &lines, const LogSink &log)
{
    StepResult result;
    int k = step(row) + 1;
    if (k > RingSize)
        k = 1;
    setStep(row, k);
    const QString id = QStringLiteral("Page") + PageList::pageId(row);
    logTo(log, id + QStringLiteral("cfb NO.") + QString::number(k));
    const QString target = stepPath(row, k);
    const QString predecessor = stepPath(row, k - 1);
    QString holder = target; // the step file that holds the page's state now
    if (QFile::exists(predecessor) && sameContent(predecessor, lines)) {
        setStep(row, k - 1);
        holder = predecessor; // recovery must find a file that exists
    } else {
        result.stepWritten = SealedFile::writeLines(target, lines, m_key, log, &result.error);
    }
    FileError backupError;
    result.backupWritten = enterInBackup(holder, &backupError);
    if (!result.backupWritten && !result.error.isSet())
        result.error = backupError;
    return result;
}

QString PageHistory::undo(int row)
{
    int k = step(row);
    if (k == 0)
        k = highestStep(row);
    else
        --k;
    setStep(row, k);
    return k == 0 ? cfgPath(row) : stepPath(row, k);
}

QString PageHistory::redo(int row)
{
    const int highest = highestStep(row);
    int k = step(row);
    k = k < highest ? k + 1 : 0;
    setStep(row, k);
    return k == 0 ? cfgPath(row) : stepPath(row, k);
}

bool PageHistory::enterInBackup(const QString &stepFile, FileError *error)
{
    const int dot = stepFile.lastIndexOf(QLatin1Char('.'));
    const QString key = stepFile.mid(qMax(0, dot - 8), qMin(8, dot));
    QStringList entries;
    if (QFile::exists(backupFile())) {
        QByteArray bytes;
        if (TextFiles::readFile(backupFile(), &bytes, error) != TextFiles::ReadStatus::Ok)
            return false;
        entries = QString::fromUtf8(bytes).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    bool replaced = false;
    for (QString &e : entries) {
        // by the file name: a folder named like a page must not match
        if (QFileInfo(e.trimmed()).fileName().startsWith(key)) {
            e = stepFile;
            replaced = true;
            break;
        }
    }
    if (!replaced)
        entries << stepFile;
    QByteArray out;
    for (const QString &e : entries)
        out += e.toUtf8() + '\n';
    QString reason;
    if (TextFiles::writeAtomically(backupFile(), out, &reason))
        return true;
    if (error)
        *error = {backupFile(), reason};
    return false;
}

QString PageHistory::recoveredPath(int row) const
{
    QByteArray bytes;
    if (TextFiles::readFile(backupFile(), &bytes) != TextFiles::ReadStatus::Ok)
        return QString();
    const QString id = PageList::pageId(row);
    for (const QString &e : QString::fromUtf8(bytes).split(QLatin1Char('\n'))) {
        // the step file's name ends in "PageNNNN.cfbK": look at that part only
        const QString name = QFileInfo(e.trimmed()).fileName();
        if (name.contains(id))
            return e.simplified();
    }
    return QString();
}

QList<int> PageHistory::adoptRecoveredSteps(int pageCount)
{
    QList<int> adopted;
    for (int row = 0; row < qMin(pageCount, MaxPages); ++row) {
        const QString name = QFileInfo(recoveredPath(row)).fileName();
        const QString head = QStringLiteral("Page") + PageList::pageId(row) + QStringLiteral(".cfb");
        if (!name.startsWith(head))
            continue;
        bool isNumber = false;
        const int k = name.mid(head.size()).toInt(&isNumber);
        if (!isNumber || k < 1 || k > RingSize || !QFile::exists(stepPath(row, k)))
            continue;
        setStep(row, k);
        adopted << row;
    }
    return adopted;
}

void PageHistory::deleteStepFiles() const
{
    QDirIterator it(m_dir + QStringLiteral("Plugin"), QDir::Files);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString name = QFileInfo(path).fileName();
        if (name.indexOf(QLatin1String(".cfb")) >= 8)
            QFile::remove(path);
    }
}

void PageHistory::rotateBackups(int pageCount, const LogSink &log) const
{
    for (int row = 0; row < pageCount; ++row) {
        const QString cfg = cfgPath(row);
        const QStringList lines = PageFile::read(cfg, m_key).lines;
        if (lines.isEmpty())
            continue;
        const QString bak = cfg + QStringLiteral(".bak");
        const QString bak1 = cfg + QStringLiteral(".bak1");
        const bool hasBak = QFile::exists(bak);
        const bool hasBak1 = QFile::exists(bak1);
        QString target;
        if (!hasBak1) {
            target = bak1;
        } else if (!hasBak) {
            target = bak;
        } else {
            const QString fmt = QStringLiteral("yyyyMMddhhmmss");
            const qint64 t0 = QFileInfo(bak).lastModified().toString(fmt).toLongLong();
            const qint64 t1 = QFileInfo(bak1).lastModified().toString(fmt).toLongLong();
            target = t0 < t1 ? bak : bak1;
        }
        SealedFile::writeLines(target, lines, m_key, log);
    }
}

} // namespace vantile
