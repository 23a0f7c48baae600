#pragma once
// What the build benchmarks share: printing figures, writing generated
// files, and measuring a run's peak memory in a child process (peak RSS
// can't be reset, so each memory figure comes from a fresh process that
// reports its VmHWM before and after the work as one "CHILD ..." line).

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <cstdarg>
#include <cstdio>

namespace bench {

inline void out(const char *format, ...) __attribute__((format(printf, 1, 2)));
inline void out(const char *format, ...)
{
    va_list args;
    va_start(args, format);
    std::vprintf(format, args);
    va_end(args);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

// Peak resident set size of this process in kB, -1 when not readable.
inline qint64 peakRssKb()
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return -1;
    for (const QByteArray &line : f.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    return -1;
}

// The child's report: "CHILD ok=1 ms=... <extra> hwm_before_kb=... hwm_after_kb=...".
inline void reportChild(bool ok, qint64 ms, qint64 before, const QString &extra = QString())
{
    out("CHILD ok=%d ms=%lld %shwm_before_kb=%lld hwm_after_kb=%lld", ok ? 1 : 0, ms,
        qPrintable(extra.isEmpty() ? QString() : extra + QLatin1Char(' ')), before, peakRssKb());
}

struct ChildFigures {
    bool ok = false;
    qint64 ms = 0, before = 0, after = 0;
};

// Runs this program again as "--child <argument>" and reads its report.
inline ChildFigures runChildProcess(const QString &argument)
{
    ChildFigures f;
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child"), argument});
    if (!p.waitForFinished(600000)) {
        out("child did not finish: %s", qPrintable(p.errorString()));
        return f;
    }
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    static const QRegularExpression re(
        QStringLiteral("CHILD ok=(\\d) ms=(\\d+) .*hwm_before_kb=(-?\\d+) hwm_after_kb=(-?\\d+)"));
    const QRegularExpressionMatch m = re.match(text);
    if (!m.hasMatch()) {
        out("child output not understood:\n%s", qPrintable(text));
        return f;
    }
    f.ok = m.captured(1) == QLatin1String("1") && p.exitCode() == 0;
    f.ms = m.captured(2).toLongLong();
    f.before = m.captured(3).toLongLong();
    f.after = m.captured(4).toLongLong();
    if (!f.ok)
        out("%s", qPrintable(text.trimmed()));
    return f;
}

} // namespace bench
