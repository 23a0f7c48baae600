// editorConfig.ini beside the executable: the first start, the values read
// as a switch, and what is written back.

#include "project/EditorConfig.h"

#include <QtTest>

using namespace vantile;

class TestEditorConfig : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path() const { return m_dir.filePath(QStringLiteral("editorConfig.ini")); }
    QByteArray readFile(const QString &p) const
    {
        QFile f(p);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    bool writeFile(const QString &p, const QByteArray &bytes) const
    {
        QFile f(p);
        return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
    }

private slots:
    void cleanup() { QFile::remove(path()); }

    // no file, or nothing of ours in it: English, text under the icons, auto-save off
    void firstStartIsAllZero()
    {
        for (const QByteArray &bytes : {QByteArray(), QByteArray("[other]\nLanguageIndex=1\n"),
                                        QByteArray("\x01\x02 not an ini file \xFF\n")}) {
            QVERIFY(bytes.isNull() || writeFile(path(), bytes));
            const EditorConfig c = EditorConfig::load(path());
            QVERIFY(c.lastLoadPath.isEmpty());
            QCOMPARE((QVector<int>{c.languageIndex, c.toolBarTextIndex, c.autoSaveIndex, c.headerFileIndex}),
                     QVector<int>(4, 0));
        }
    }

    void switchesReadAsOneOrZero()
    {
        for (const auto &[value, expected] : {std::pair<const char *, int>{"5", 1}, {"-1", 1}, {"0", 0}, {"yes", 0}}) {
            QVERIFY(writeFile(path(), QByteArray("[set]\nLanguageIndex=") + value + "\nToolBarTextIndex=" + value + '\n'));
            const EditorConfig c = EditorConfig::load(path());
            QCOMPARE(c.languageIndex, expected);
            QCOMPARE(c.toolBarTextIndex, expected);
        }
    }

    void savedAndLoadedAgain()
    {
        // keys under "[set]", a language index of 5 written back as 1, the path in UTF-8
        QVERIFY(writeFile(path(), "[set]\nLanguageIndex=5\nAuto_Save_index=1\nHeader_file_index=2\n"));
        EditorConfig c = EditorConfig::load(path());
        c.lastLoadPath = QString::fromUtf8("/home/用户/my projects/demo");
        c.headerFileIndex = 3;
        QVERIFY(c.save(path()));
        const QByteArray text = readFile(path());
        QVERIFY2(text.startsWith("[set]"), text.constData());
        for (const char *line : {"LanguageIndex=1\n", "ToolBarTextIndex=0\n", "Auto_Save_index=1\n",
                                 "Header_file_index=3\n"})
            QVERIFY2(text.contains(line), line);
        QVERIFY(text.contains(QString::fromUtf8("用户").toUtf8()));
        const EditorConfig back = EditorConfig::load(path());
        QCOMPARE(back.lastLoadPath, c.lastLoadPath);
        QCOMPARE(back.languageIndex, 1);
        QCOMPARE(back.autoSaveIndex, 1);
        QCOMPARE(back.headerFileIndex, 3);
    }

    void unwritableFile()
    {
        // the application directory is a file: saving fails, reading is a first start
        const QString notADir = m_dir.filePath(QStringLiteral("app"));
        QVERIFY(writeFile(notADir, "x"));
        EditorConfig c;
        c.languageIndex = 1;
        QVERIFY(!c.save(notADir + QStringLiteral("/editorConfig.ini")));
        QCOMPARE(EditorConfig::load(notADir + QStringLiteral("/editorConfig.ini")).languageIndex, 0);
        QCOMPARE(readFile(notADir), QByteArray("x"));
    }
};

QTEST_GUILESS_MAIN(TestEditorConfig)
#include "tst_editor_config.moc"
