// Files beside the executable: where they lie, the one-line hand-over files
// ("uiprj_path.ini", "currentbin_path.ini"), editorConfig.ini, and the Tool
// menu's programs, found by a part of their name and started once.

#include "CoreTestSupport.h"
#include "project/AppPaths.h"
#include "project/EditorConfig.h"
#include "project/SiblingTools.h"

using namespace core;

class TestAppPaths : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path() const { return m_dir.filePath(QStringLiteral("currentbin_path.ini")); }
    QString config() const { return m_dir.filePath(QStringLiteral("editorConfig.ini")); }
    static void place(const QString &dir, const QString &name, bool executable)
    {
        QVERIFY(QFile::copy(QStringLiteral("/bin/true"), dir + QLatin1Char('/') + name));
        if (!executable)
            QFile::setPermissions(dir + QLatin1Char('/') + name, QFile::ReadOwner | QFile::WriteOwner);
    }

private slots:
    void cleanup()
    {
        AppPaths::setAppDirOverride(QString());
        QFile::remove(path());
        QFile::remove(config());
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
        QCOMPARE(readAll(path()), QByteArray("\xEF\xBB\xBF") + project.toUtf8());
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
            writeFile(path(), bytes);
            QCOMPARE(AppPaths::readOneLine(path()), QString(line));
        }
    }

    // The application directory is a file: the one-line file and the settings
    // can't be saved, and the settings read as a first start.
    void nothingWrittenBelowARegularFile()
    {
        const QString notADir = m_dir.filePath(QStringLiteral("app"));
        writeFile(notADir, "x");
        QVERIFY(!AppPaths::writeOneLine(notADir + QStringLiteral("/uiprj_path.ini"), QStringLiteral("/p/")));
        EditorConfig c;
        c.languageIndex = 1;
        QVERIFY(!c.save(notADir + QStringLiteral("/editorConfig.ini")));
        QCOMPARE(EditorConfig::load(notADir + QStringLiteral("/editorConfig.ini")).languageIndex, 0);
        QCOMPARE(readAll(notADir), QByteArray("x"));
    }

    // No file, or nothing of ours in it: English, text under the icons, auto-save off.
    void configFirstStartIsAllZero()
    {
        for (const QByteArray &bytes : {QByteArray(), QByteArray("[other]\nLanguageIndex=1\n"),
                                        QByteArray("\x01\x02 not an ini file \xFF\n")}) {
            if (!bytes.isNull())
                writeFile(config(), bytes);
            const EditorConfig c = EditorConfig::load(config());
            QVERIFY(c.lastLoadPath.isEmpty());
            QCOMPARE((QVector<int>{c.languageIndex, c.toolBarTextIndex, c.autoSaveIndex, c.headerFileIndex}),
                     QVector<int>(4, 0));
        }
    }

    void configSwitchesReadAsOneOrZero()
    {
        for (const auto &[value, expected] : {std::pair<const char *, int>{"5", 1}, {"-1", 1}, {"0", 0}, {"yes", 0}}) {
            writeFile(config(), QByteArray("[set]\nLanguageIndex=") + value + "\nToolBarTextIndex=" + value + '\n');
            const EditorConfig c = EditorConfig::load(config());
            QCOMPARE(c.languageIndex, expected);
            QCOMPARE(c.toolBarTextIndex, expected);
        }
    }

    void configSavedAndLoadedAgain()
    {
        // keys under "[set]", a language index of 5 written back as 1, the path in UTF-8
        writeFile(config(), "[set]\nLanguageIndex=5\nAuto_Save_index=1\nHeader_file_index=2\n");
        EditorConfig c = EditorConfig::load(config());
        c.lastLoadPath = QString::fromUtf8("/home/用户/my projects/demo");
        c.headerFileIndex = 3;
        QVERIFY(c.save(config()));
        const QByteArray text = readAll(config());
        QVERIFY2(text.startsWith("[set]"), text.constData());
        for (const char *line : {"LanguageIndex=1\n", "ToolBarTextIndex=0\n", "Auto_Save_index=1\n",
                                 "Header_file_index=3\n"})
            QVERIFY2(text.contains(line), line);
        QVERIFY(text.contains(QString::fromUtf8("用户").toUtf8()));
        const EditorConfig back = EditorConfig::load(config());
        QCOMPARE(back.lastLoadPath, c.lastLoadPath);
        QCOMPARE((QVector<int>{back.languageIndex, back.autoSaveIndex, back.headerFileIndex}), (QVector<int>{1, 1, 3}));
    }

    void toolsFoundByPartOfTheName()
    {
        QTemporaryDir dir;
        place(dir.path(), QStringLiteral("GlyphForge-1.2"), true);
        place(dir.path(), QStringLiteral("AGlyphForge.txt"), false); // not executable
        QCOMPARE(SiblingTools::find(dir.path(), QStringLiteral("GlyphForge")), QStringLiteral("GlyphForge-1.2"));
        QCOMPARE(SiblingTools::find(dir.path(), QStringLiteral("ToneForge")), QString());
        QCOMPARE(SiblingTools::start(dir.path(), QStringLiteral("ToneForge")), QString()); // missing: nothing
        QCOMPARE(SiblingTools::start(dir.path(), QStringLiteral("Glyph")), QStringLiteral("GlyphForge-1.2"));
    }

    void aRunningToolIsNotStartedAgain()
    {
        // this test program runs: a tool of the same file name counts as running
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QVERIFY(SiblingTools::isRunning(self) && !SiblingTools::isRunning(QStringLiteral("no-such-tool-here")));
        QTemporaryDir dir;
        place(dir.path(), self, true);
        QCOMPARE(SiblingTools::start(dir.path(), self.left(8)), QString());
    }
};

QTEST_GUILESS_MAIN(TestAppPaths)
#include "tst_app_paths.moc"
