#include "project/TextFiles.h"
#include "widgets/WidgetKinds.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>

namespace vantile {
namespace TextFiles {

bool writeAtomically(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile f(path);
    if (QFileInfo(path).isDir()) {
        if (error)
            *error = QStringLiteral("Is a directory");
        return false;
    }
    if (!f.open(QIODevice::WriteOnly)) {
        if (error)
            *error = f.errorString();
        return false;
    }
    if (f.write(bytes) != bytes.size()) {
        if (error)
            *error = f.errorString();
        f.cancelWriting();
        return false;
    }
    if (!f.commit()) {
        if (error)
            *error = f.errorString();
        return false;
    }
    return true;
}

bool isInterruptedWrite(const QString &fileName, const QString &projectName)
{
    static const QRegularExpression ours(QStringLiteral(
        "^(Page\\d{4}\\.(cfg|cfc|cfb\\d{1,2}|cfg\\.bak1?|csv)|LastPage\\.txt|backup\\.txt|Morvane_Flash\\.bin"
        "|Make_info\\.txt|Make_error_info\\.txt|Addr_Info\\.txt|TouchWidget\\.csv|DisplayWidget\\.csv"
        "|SerialPortCommands\\.csv|Constant_text\\.csv|command\\.list|TableHeader\\.txt)\\.[A-Za-z0-9]{6}$"));
    if (ours.match(fileName).hasMatch())
        return true;
    for (const char *suffix : {".uiprj.", ".ini."}) {
        const QString head = projectName + QLatin1String(suffix);
        if (!projectName.isEmpty() && fileName.size() == head.size() + 6 && fileName.startsWith(head)) {
            bool alnum = true;
            for (QChar c : fileName.mid(head.size()))
                alnum = alnum && c.unicode() < 128 && c.isLetterOrNumber();
            if (alnum)
                return true;
        }
    }
    return false;
}

QStringList removeInterruptedWrites(const QString &projectDir, const QString &projectName)
{
    QStringList removed;
    for (const char *sub : {"", "Plugin/", "MultiLanguage/"}) {
        QDir dir(projectDir + QLatin1String(sub));
        for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden)) {
            if (isInterruptedWrite(name, projectName) && dir.remove(name))
                removed << dir.filePath(name);
        }
    }
    return removed;
}

QString decode(const QByteArray &bytesIn, bool *wasGbk)
{
    QByteArray bytes = bytesIn;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    QTextCodec *utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state;
    const QString text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0) {
        if (wasGbk)
            *wasGbk = false;
        return text;
    }
    if (wasGbk)
        *wasGbk = true;
    QTextCodec *gbk = QTextCodec::codecForName("GBK");
    return gbk ? gbk->toUnicode(bytes) : QString::fromLatin1(bytes);
}

ReadStatus readFile(const QString &path, QByteArray *bytes, FileError *error, qint64 maxSize)
{
    auto fail = [&](ReadStatus status, const QString &reason) {
        if (error)
            *error = {path, reason};
        if (bytes)
            bytes->clear();
        return status;
    };
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists())
        return fail(ReadStatus::Missing, QStringLiteral("No such file"));
    // isFile() follows links: a link to a device or a pipe is not a file
    if (!info.isFile())
        return fail(ReadStatus::NotRegular, QStringLiteral("Not a regular file"));
    if (info.size() > maxSize)
        return fail(ReadStatus::TooLarge, QStringLiteral("File too large: %1 bytes, the limit is %2 MB")
                                              .arg(info.size())
                                              .arg(maxSize >> 20));
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return fail(ReadStatus::Unreadable, f.errorString());
    // read the size the file has (one byte more shows growth past the limit);
    // asking for the whole limit would have a buffer of that size made first
    QByteArray data = f.read(qMin(info.size(), maxSize) + 1);
    if (data.size() > maxSize)
        return fail(ReadStatus::TooLarge, QStringLiteral("File too large: the limit is %1 MB").arg(maxSize >> 20));
    if (f.error() != QFileDevice::NoError)
        return fail(ReadStatus::Unreadable, f.errorString());
    if (bytes)
        *bytes = data;
    return ReadStatus::Ok;
}

QStringList readLines(const QString &path, bool *ok, FileError *error)
{
    QByteArray bytes;
    const bool read = readFile(path, &bytes, error) == ReadStatus::Ok;
    if (ok)
        *ok = read;
    return read ? splitPlain(bytes) : QStringList();
}

QStringList splitPlain(const QByteArray &bytes)
{
    QString text = decode(bytes);
    text.remove(QLatin1Char('\r'));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QByteArray encodePlain(const QStringList &lines)
{
    QByteArray out("\xEF\xBB\xBF");
    for (const QString &l : lines) {
        out += l.toUtf8();
        out += '\n';
    }
    return out;
}

const QStringList &recordPrefixes()
{
    // the page line, every kind's word, and the line that joins merged pages
    static const QStringList prefixes = QStringList{QStringLiteral("Page")} + WidgetKinds::kindWords()
                                        + QStringList{QStringLiteral("Mergerboundaryline"),
                                                      QStringLiteral("comboButton")}; // batVar's old word
    return prefixes;
}

QStringList glueRecords(const QStringList &physicalLines, const QString &separator)
{
    QStringList records;
    for (int i = 0; i < physicalLines.size(); ++i) {
        const QString &l = physicalLines[i];
        bool opens = i == 0;
        for (const QString &p : recordPrefixes()) {
            if (opens)
                break;
            opens = l.startsWith(p);
        }
        if (opens || records.isEmpty())
            records.append(l);
        else
            records.last().append(separator + l);
    }
    return records;
}

} // namespace TextFiles
} // namespace vantile
