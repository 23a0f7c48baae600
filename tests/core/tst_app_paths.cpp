// Files beside the executable: where they lie, and the one-line hand-over
// files ("uiprj_path.ini", "currentbin_path.ini").

#include "project/AppPaths.h"

#include <QtTest>

using namespace vantile;

class TestAppPaths : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path() const { return m_dir.filePath(QStringLiteral("currentbin_path.ini")); }
    bool writeFile(const QString &p, const QByteArray &bytes) const
    {
        QFile f(p);
        return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
    }

private slots:
    void cleanup()
    {
        AppPaths::setAppDirOverride(QString());
        QFile::remove(path());
    }

    void filesLieInTheApplicationDirectory()
    {
        AppPaths::setAppDirOverride(QStringLiteral("/opt/vantile"));
        QCOMPARE(AppPaths::editorConfigPath(), QStringLiteral("/opt/vantile/editorConfig.ini"));
        QCOMPARE(AppPaths::uiprjPathFile(), QStringLiteral("/opt/vantile/uiprj_path.ini"));
        QCOMPARE(AppPaths::currentBinPathFile(), QStringLiteral("/opt/vantile/currentbin_path.ini"));
        AppPaths::setAppDirOverride(QString());
        QCOMPARE(AppPaths::appDir(), QCoreApplication::applicationDirPath());
    }

    void oneLineFileIsUtf8WithBom()
    {
        const QString project = QString::fromUtf8("/home/用户/工程 1/");
        QVERIFY(AppPaths::writeOneLine(path(), project));
        QFile f(path());
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("\xEF\xBB\xBF") + project.toUtf8());
        QCOMPARE(AppPaths::readOneLine(path()), project);
        QVERIFY(AppPaths::writeOneLine(path(), QStringLiteral("/b/"))); // rewritten after each open
        QCOMPARE(AppPaths::readOneLine(path()), QStringLiteral("/b/"));
    }

    void readingOneLine()
    {
        QCOMPARE(AppPaths::readOneLine(path()), QString()); // no file
        // without BOM, line end, only the first line, BOM only
        for (const auto &[bytes, line] : {std::pair<const char *, const char *>{"/p/", "/p/"}, {"\xEF\xBB\xBF/p/\r\n", "/p/"},
                                          {"/p/\n/q/\n", "/p/"}, {"\xEF\xBB\xBF", ""}}) {
            QVERIFY(writeFile(path(), bytes));
            QCOMPARE(AppPaths::readOneLine(path()), QString(line));
        }
    }

    void writeFailsBelowARegularFile()
    {
        QVERIFY(writeFile(m_dir.filePath(QStringLiteral("app")), "x"));
        QVERIFY(!AppPaths::writeOneLine(m_dir.filePath(QStringLiteral("app/uiprj_path.ini")), QStringLiteral("/p/")));
    }
};

QTEST_GUILESS_MAIN(TestAppPaths)
#include "tst_app_paths.moc"
