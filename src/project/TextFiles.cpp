#include "project/TextFiles.h"
#include "widgets/WidgetKinds.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>

namespace vantile {
namespace TextFiles {

bool writeAtomically(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile f(path);
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

QStringList readLines(const QString &path, bool *ok)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        if (ok)
            *ok = false;
        return {};
    }
    if (ok)
        *ok = true;
    return splitPlain(f.readAll());
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
                                        + QStringList{QStringLiteral("Mergerboundaryline")};
    return prefixes;
}

QStringList glueRecords(const QStringList &physicalLines)
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
            records.last().append(l);
    }
    return records;
}

} // namespace TextFiles
} // namespace vantile
