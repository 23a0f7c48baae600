// Files beside the executable: where they lie, and the one-line hand-over
// files ("uiprj_path.ini", "currentbin_path.ini").

#include "project/AppPaths.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestAppPaths : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { AppPaths::setAppDirOverride(QString()); }

    void filesLieInTheApplicationDirectory()
    {
        QCOMPARE(AppPaths::appDir(), QCoreApplication::applicationDirPath());
        AppPaths::setAppDirOverride(QStringLiteral("/opt/vantile"));
        QCOMPARE(AppPaths::appDir(), QStringLiteral("/opt/vantile"));
        QCOMPARE(AppPaths::editorConfigPath(), QStringLiteral("/opt/vantile/editorConfig.ini"));
        QCOMPARE(AppPaths::uiprjPathFile(), QStringLiteral("/opt/vantile/uiprj_path.ini"));
        QCOMPARE(AppPaths::currentBinPathFile(), QStringLiteral("/opt/vantile/currentbin_path.ini"));
        AppPaths::setAppDirOverride(QString());
        QCOMPARE(AppPaths::appDir(), QCoreApplication::applicationDirPath());
    }

    void oneLineFileIsUtf8WithBom()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        AppPaths::setAppDirOverride(dir.path());
        const QString project = QString::fromUtf8("/home/用户/工程 1/");
        QVERIFY(AppPaths::writeOneLine(AppPaths::uiprjPathFile(), project));
        QCOMPARE(readFile(AppPaths::uiprjPathFile()), QByteArray("\xEF\xBB\xBF") + project.toUtf8());
        QCOMPARE(AppPaths::readOneLine(AppPaths::uiprjPathFile()), project);

        // rewritten after each open
        QVERIFY(AppPaths::writeOneLine(AppPaths::uiprjPathFile(), QStringLiteral("/b/")));
        QCOMPARE(AppPaths::readOneLine(AppPaths::uiprjPathFile()), QStringLiteral("/b/"));
    }

    void readingOneLine_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // null: no file
        QTest::addColumn<QString>("line");
        QTest::newRow("no file") << QByteArray() << QString();
        QTest::newRow("without BOM") << QByteArray("/p/") << QStringLiteral("/p/");
        QTest::newRow("line end") << QByteArray("\xEF\xBB\xBF/p/\r\n") << QStringLiteral("/p/");
        QTest::newRow("only the first line") << QByteArray("/p/\n/q/\n") << QStringLiteral("/p/");
        QTest::newRow("empty file") << QByteArray("") << QString();
        QTest::newRow("BOM only") << QByteArray("\xEF\xBB\xBF") << QString();
    }
    void readingOneLine()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, line);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("currentbin_path.ini"));
        if (!bytes.isNull())
            QVERIFY(writeFile(path, bytes));
        QCOMPARE(AppPaths::readOneLine(path), line);
    }

    void writeFailsBelowARegularFile()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QVERIFY(writeFile(dir.filePath(QStringLiteral("app")), "x"));
        QVERIFY(!AppPaths::writeOneLine(dir.filePath(QStringLiteral("app/uiprj_path.ini")), QStringLiteral("/p/")));
    }
};

QTEST_GUILESS_MAIN(TestAppPaths)
#include "tst_app_paths.moc"
