// Plain text files of a project: decoding (UTF-8, or GBK for old files),
// the plain form with its byte order mark, gluing physical lines into
// records, and the atomic write.

#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

using namespace vantile;

namespace {

const QByteArray kBom("\xEF\xBB\xBF");

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

QString fromGbk(const QByteArray &bytes)
{
    return QTextCodec::codecForName("GBK")->toUnicode(bytes);
}

} // namespace

class TestTextFiles : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY2(QTextCodec::codecForName("GBK"), "the GBK codec is needed for old project files");
    }

    // --- decoding -------------------------------------------------------------

    void decode_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("wasGbk");
        const QString text = QString::fromUtf8("Page:;RGBColor(0,0,0);主页;\nlabel0:标签;\n");
        QTest::newRow("UTF-8 with BOM") << kBom + text.toUtf8() << text << false;
        QTest::newRow("UTF-8 without BOM") << text.toUtf8() << text << false;
        QTest::newRow("BOM only") << kBom << QString() << false;
        QTest::newRow("empty") << QByteArray() << QString() << false;
        // "主页" in GBK is D6 F7 D2 B3, not valid UTF-8
        QTest::newRow("old GBK page line") << QByteArray("Page:;RGBColor(0,0,0);\xD6\xF7\xD2\xB3;")
                                           << QString::fromUtf8("Page:;RGBColor(0,0,0);主页;") << true;
        // Valid UTF-8 Chinese lines and one line in GBK ("中文", D6 D0 CE C4):
        // the whole file is read as GBK, the UTF-8 lines do not come out as written.
        const QByteArray mixed = QString::fromUtf8("label0:标签;\n").toUtf8() + "label1:\xD6\xD0\xCE\xC4;\n"
                                 + QString::fromUtf8("button0:按钮;\n").toUtf8();
        QTest::newRow("one GBK line among UTF-8") << mixed << fromGbk(mixed) << true;
        for (const char *bytes : {"label0:abc\xE4\xB8", "label0:\x80\x41;", "label0:\xC4\x41\xC4\x42;"})
            QTest::addRow("invalid UTF-8 %s", QByteArray(bytes).toHex().constData())
                << QByteArray(bytes) << fromGbk(bytes) << true;
    }
    void decode()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QFETCH(bool, wasGbk);
        bool gbk = !wasGbk;
        const QString decoded = TextFiles::decode(bytes, &gbk);
        QCOMPARE(decoded, text);
        QCOMPARE(gbk, wasGbk);
        if (wasGbk) {
            QVERIFY(!decoded.contains(QString::fromUtf8("标签")));
            QVERIFY(!decoded.contains(QString::fromUtf8("按钮")));
        }
    }

    // --- lines ------------------------------------------------------------------

    void readLines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("BOM and line feeds") << QByteArray(kBom + "Page:a;\nlabel0:b;\n")
                                            << QStringList{"Page:a;", "label0:b;"};
        QTest::newRow("no final line feed") << QByteArray("Page:a;\nlabel0:b;") << QStringList{"Page:a;", "label0:b;"};
        QTest::newRow("carriage returns dropped") << QByteArray("Page:a;\r\nlabel0:b;\r\n")
                                                  << QStringList{"Page:a;", "label0:b;"};
        QTest::newRow("empty line kept inside") << QByteArray("label0:a\n\nb;\n") << QStringList{"label0:a", "", "b;"};
        QTest::newRow("empty file") << QByteArray() << QStringList();
        QTest::newRow("BOM only") << kBom << QStringList();
        QTest::newRow("GBK file") << QByteArray("label0:\xD6\xD0;\n") << QStringList{QString::fromUtf8("label0:中;")};
    }
    void readLines()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("Page0000.cfg"));
        QVERIFY(writeFile(path, bytes));
        bool ok = false;
        QCOMPARE(TextFiles::readLines(path, &ok), lines);
        QVERIFY(ok);
        QVERIFY(TextFiles::readLines(dir.filePath(QStringLiteral("none.cfg")), &ok).isEmpty());
        QVERIFY(!ok);
    }

    void encodePlain()
    {
        QCOMPARE(TextFiles::encodePlain({}), kBom);
        QCOMPARE(TextFiles::encodePlain({QStringLiteral("Page:a;"), QString::fromUtf8("label0:中;")}),
                 QByteArray("\xEF\xBB\xBFPage:a;\nlabel0:\xE4\xB8\xAD;\n"));
        QCOMPARE(TextFiles::encodePlain({QString()}), QByteArray("\xEF\xBB\xBF\n"));
    }

    void plainPageRoundTrip()
    {
        // A page written and read again gives the same bytes once more, and
        // a line break in a widget text (two physical lines) is glued back
        // into one record.
        const QStringList page = {
            QStringLiteral("Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);RGBColor(0,0,0);Disable;0;0;Disable;"),
            QString::fromUtf8("label0:第一行\n第二行,10,20,100,30;"), QStringLiteral("button0:ok,0,0,50,20;")};
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("Page0001.cfg"));
        const QByteArray bytes = TextFiles::encodePlain(page);
        QVERIFY(TextFiles::writeAtomically(path, bytes));
        QCOMPARE(readFile(path), bytes);
        const QStringList physical = TextFiles::readLines(path);
        QCOMPARE(physical.size(), 4);
        QCOMPARE(TextFiles::encodePlain(physical), bytes);
        QCOMPARE(TextFiles::glueRecords(physical),
                 (QStringList{page[0], QString::fromUtf8("label0:第一行第二行,10,20,100,30;"), page[2]}));
    }

    // --- records ------------------------------------------------------------------

    void glueRecords_data()
    {
        QTest::addColumn<QStringList>("physical");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("text with a line break") << QStringList{"Page:a;", "label0:hello", "world;", "button0:x;"}
                                                << QStringList{"Page:a;", "label0:helloworld;", "button0:x;"};
        QTest::newRow("several continuation lines") << QStringList{"Page:a;", "textroll0:one", "two", "three;"}
                                                    << QStringList{"Page:a;", "textroll0:onetwothree;"};
        QTest::newRow("empty continuation line") << QStringList{"label0:a", "", "b;"} << QStringList{"label0:ab;"};
        QTest::newRow("Pagename opens a record by its prefix")
            << QStringList{"Page:a;", "Pagename;"} << QStringList{"Page:a;", "Pagename;"};
        QTest::newRow("continuation starting like a kind opens a record")
            << QStringList{"label0:say", "icon here;"} << QStringList{"label0:say", "icon here;"};
        QTest::newRow("prefix test is case sensitive") << QStringList{"Page:a;", "Label0:x;", "rtc0:y;", "RTC0:z;"}
                                                      << QStringList{"Page:a;Label0:x;rtc0:y;", "RTC0:z;"};
        QTest::newRow("first line always opens a record")
            << QStringList{"hello", "world", "label0:x;"} << QStringList{"helloworld", "label0:x;"};
        QTest::newRow("blank before a prefix glues") << QStringList{"Page:a;", " label0:x;"}
                                                    << QStringList{"Page:a; label0:x;"};
        QTest::newRow("nothing") << QStringList() << QStringList();
        QTest::newRow("one empty line") << QStringList{QString()} << QStringList{QString()};
        // every word that opens a record: the page line, each kind, the merge line
        for (const char *w : {"Page", "label", "number", "button", "icon", "bitIcon", "gif", "varAdj", "slider",
                              "RTC", "uitimer", "qrcode", "Clock", "keypad", "kbkey", "textroll", "pngNumber",
                              "wav", "slmenu", "slidemenuPro", "rtouch", "progress", "rProgress", "enkeyB",
                              "cnkeyB", "batVar", "curve", "popbox", "encoder", "camera", "video", "autoVar",
                              "needle", "Mergerboundaryline"}) {
            const QString word = QString::fromLatin1(w);
            QTest::addRow("%s opens a record", w) << QStringList{"Page:a;", "x", word + "7:v;", "tail"}
                                                  << QStringList{"Page:a;x", word + "7:v;tail"};
        }
    }
    void glueRecords()
    {
        QFETCH(QStringList, physical);
        QFETCH(QStringList, records);
        QCOMPARE(TextFiles::glueRecords(physical), records);
    }

    // --- atomic write -----------------------------------------------------------

    void writeCreatesAndReplaces()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("demo.uiprj"));
        QVERIFY(TextFiles::writeAtomically(path, "first version, longer\n"));
        QCOMPARE(readFile(path), QByteArray("first version, longer\n"));
        QVERIFY(TextFiles::writeAtomically(path, "second\n"));
        QCOMPARE(readFile(path), QByteArray("second\n"));
        QVERIFY(TextFiles::writeAtomically(path, QByteArray()));
        QCOMPARE(readFile(path), QByteArray());
        // no temporary file stays behind
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("demo.uiprj")});
    }

    void writeFailsWhereThePathIsTaken()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        // below a regular file: refused with a reason, the file untouched
        const QString notADir = dir.filePath(QStringLiteral("Plugin"));
        QVERIFY(writeFile(notADir, "old"));
        QString error;
        QVERIFY(!TextFiles::writeAtomically(notADir + QStringLiteral("/Page0000.cfg"), "new", &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(readFile(notADir), QByteArray("old"));
        // onto a directory: refused, the directory stays
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("Picture")));
        QVERIFY(!TextFiles::writeAtomically(dir.filePath(QStringLiteral("Picture")), "x"));
        QVERIFY(QFileInfo(dir.filePath(QStringLiteral("Picture"))).isDir());
    }

    void writeIntoReadOnlyDirectoryKeepsOldFile()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString sub = dir.filePath(QStringLiteral("locked"));
        QVERIFY(QDir().mkpath(sub));
        const QString path = sub + QStringLiteral("/Page0000.cfg");
        QVERIFY(writeFile(path, "old lines\n"));
        QFile::Permissions keep = QFile::permissions(sub);
        QVERIFY(QFile::setPermissions(sub, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup
                                               | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther));
        // Where permissions do not bind (the super-user), nothing can be learnt here.
        QFile probe(sub + QStringLiteral("/probe"));
        if (probe.open(QIODevice::WriteOnly)) {
            probe.close();
            probe.remove();
            QFile::setPermissions(sub, keep);
            QSKIP("directory permissions do not stop this user from writing");
        }
        const bool written = TextFiles::writeAtomically(path, "new lines\n");
        QFile::setPermissions(sub, keep);
        QVERIFY(!written);
        QCOMPARE(readFile(path), QByteArray("old lines\n"));
        QCOMPARE(QDir(sub).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("Page0000.cfg")});
    }
};

QTEST_GUILESS_MAIN(TestTextFiles)
#include "tst_text_files.moc"
