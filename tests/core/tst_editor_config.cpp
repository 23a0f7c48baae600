// editorConfig.ini beside the executable: the first start, the values that
// are read as a switch, and what is written back.

#include "project/EditorConfig.h"

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

class TestEditorConfig : public QObject
{
    Q_OBJECT
private slots:
    // No file, or nothing of ours in it: English, text under the icons,
    // auto-save off.
    void firstStartIsAllZero_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // null: no file at all
        QTest::newRow("no file") << QByteArray();
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("other group") << QByteArray("[other]\nLanguageIndex=1\n");
        QTest::newRow("garbage") << QByteArray("\x01\x02 not an ini file \xFF\n");
    }
    void firstStartIsAllZero()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("editorConfig.ini"));
        if (!bytes.isNull())
            QVERIFY(writeFile(path, bytes));
        const EditorConfig c = EditorConfig::load(path);
        QVERIFY(c.lastLoadPath.isEmpty());
        QCOMPARE(c.languageIndex, 0);
        QCOMPARE(c.toolBarTextIndex, 0);
        QCOMPARE(c.autoSaveIndex, 0);
        QCOMPARE(c.headerFileIndex, 0);
    }

    void switchesReadAsOneOrZero_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("index");
        QTest::newRow("5") << QByteArray("5") << 1;
        QTest::newRow("1") << QByteArray("1") << 1;
        QTest::newRow("-1") << QByteArray("-1") << 1;
        QTest::newRow("0") << QByteArray("0") << 0;
        QTest::newRow("not a number") << QByteArray("yes") << 0;
    }
    void switchesReadAsOneOrZero()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, index);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("editorConfig.ini"));
        QVERIFY(writeFile(path, "[set]\nLanguageIndex=" + value + "\nToolBarTextIndex=" + value + "\n"));
        const EditorConfig c = EditorConfig::load(path);
        QCOMPARE(c.languageIndex, index);
        QCOMPARE(c.toolBarTextIndex, index);
    }

    void savedAndLoadedAgain()
    {
        // A language index of 5 is read as 1 and written back as 1; the
        // other values stand; keys under "[set]", the path in UTF-8.
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("editorConfig.ini"));
        QVERIFY(writeFile(path, "[set]\nLanguageIndex=5\nAuto_Save_index=1\nHeader_file_index=2\n"));
        EditorConfig c = EditorConfig::load(path);
        QCOMPARE(c.languageIndex, 1);
        c.lastLoadPath = QString::fromUtf8("/home/用户/my projects/demo");
        c.headerFileIndex = 3;
        QVERIFY(c.save(path));

        const QByteArray text = readFile(path);
        QVERIFY2(text.startsWith("[set]"), text.constData());
        for (const char *line : {"LanguageIndex=1\n", "ToolBarTextIndex=0\n", "Auto_Save_index=1\n",
                                 "Header_file_index=3\n"})
            QVERIFY2(text.contains(line), line);
        QVERIFY(!text.contains("LanguageIndex=5"));
        QVERIFY(text.contains(QString::fromUtf8("用户").toUtf8()));

        const EditorConfig back = EditorConfig::load(path);
        QCOMPARE(back.lastLoadPath, c.lastLoadPath);
        QCOMPARE(back.languageIndex, 1);
        QCOMPARE(back.toolBarTextIndex, 0);
        QCOMPARE(back.autoSaveIndex, 1);
        QCOMPARE(back.headerFileIndex, 3);
    }

    void unwritableFile()
    {
        // The application directory is not a directory: saving fails,
        // reading behaves as a first start.
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString notADir = dir.filePath(QStringLiteral("app"));
        QVERIFY(writeFile(notADir, "x"));
        const QString path = notADir + QStringLiteral("/editorConfig.ini");
        EditorConfig c;
        c.languageIndex = 1;
        QVERIFY(!c.save(path));
        QCOMPARE(EditorConfig::load(path).languageIndex, 0);
        QCOMPARE(readFile(notADir), QByteArray("x"));
    }
};

QTEST_GUILESS_MAIN(TestEditorConfig)
#include "tst_editor_config.moc"
