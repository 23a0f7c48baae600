// Plain text files: decoding (UTF-8, or GBK for old files), the plain form
// with its byte order mark, gluing physical lines into records, atomic writes.

#include "CoreTestSupport.h"
#include "project/TextFiles.h"

using namespace core;

namespace {

const QByteArray kBom("\xEF\xBB\xBF");

QString fromGbk(const QByteArray &bytes)
{
    return QTextCodec::codecForName("GBK")->toUnicode(bytes);
}

} // namespace

class TestTextFiles : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const char *name) const { return m_dir->filePath(QLatin1String(name)); }

private slots:
    void initTestCase() { QVERIFY2(QTextCodec::codecForName("GBK"), "the GBK codec is needed for old project files"); }
    void init() { m_dir.reset(new QTemporaryDir); }

    void decode_data()
    {
        addColumns<QByteArray, QString, bool>("bytes", "text", "wasGbk");
        const QString text = QString::fromUtf8("Page:;RGBColor(0,0,0);主页;\nlabel0:标签;\n");
        QTest::newRow("UTF-8 with BOM") << kBom + text.toUtf8() << text << false;
        QTest::newRow("UTF-8 without BOM") << text.toUtf8() << text << false;
        QTest::newRow("BOM only") << kBom << QString() << false;
        // "主页" in GBK is D6 F7 D2 B3, not valid UTF-8
        QTest::newRow("old GBK page line") << QByteArray("Page:;RGBColor(0,0,0);\xD6\xF7\xD2\xB3;")
                                           << QString::fromUtf8("Page:;RGBColor(0,0,0);主页;") << true;
        // one line in GBK ("中文", D6 D0 CE C4) among UTF-8 ones: the whole file is GBK
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
        QFETCH(bool, wasGbk);
        bool gbk = !wasGbk;
        QTEST(TextFiles::decode(bytes, &gbk), "text");
        QCOMPARE(gbk, wasGbk);
    }

    void readLines_data()
    {
        addColumns<QByteArray, QStringList>("bytes", "lines");
        QTest::newRow("BOM, CR LF") << QByteArray(kBom + "Page:a;\r\nlabel0:b;\r\n") << QStringList{"Page:a;", "label0:b;"};
        QTest::newRow("no final line feed") << QByteArray("Page:a;\nlabel0:b;") << QStringList{"Page:a;", "label0:b;"};
        QTest::newRow("empty line kept inside") << QByteArray("label0:a\n\nb;\n") << QStringList{"label0:a", "", "b;"};
        QTest::newRow("BOM only") << kBom << QStringList();
    }
    void readLines()
    {
        QFETCH(QByteArray, bytes);
        writeFile(path("Page0000.cfg"), bytes);
        bool ok = false;
        QTEST(TextFiles::readLines(path("Page0000.cfg"), &ok), "lines");
        QVERIFY(ok && TextFiles::readLines(path("none.cfg"), &ok).isEmpty() && !ok);
    }

    void plainFormAndRoundTrip()
    {
        QCOMPARE(TextFiles::encodePlain({}), kBom);
        QCOMPARE(TextFiles::encodePlain({QString()}), QByteArray("\xEF\xBB\xBF\n"));
        QCOMPARE(TextFiles::encodePlain({QStringLiteral("Page:a;"), QString::fromUtf8("label0:中;")}),
                 QByteArray("\xEF\xBB\xBFPage:a;\nlabel0:\xE4\xB8\xAD;\n"));
        // a page: the same bytes once more; a text's line break glued back into one record
        const QStringList page = {
            QStringLiteral("Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);RGBColor(0,0,0);Disable;0;0;Disable;"),
            QString::fromUtf8("label0:第一行\n第二行,10,20,100,30;"), QStringLiteral("button0:ok,0,0,50,20;")};
        const QString file = path("Page0001.cfg");
        const QByteArray bytes = TextFiles::encodePlain(page);
        QVERIFY(TextFiles::writeAtomically(file, bytes));
        QCOMPARE(readAll(file), bytes);
        const QStringList physical = TextFiles::readLines(file);
        QCOMPARE(physical.size(), 4);
        QCOMPARE(TextFiles::encodePlain(physical), bytes);
        QCOMPARE(TextFiles::glueRecords(physical),
                 (QStringList{page[0], QString::fromUtf8("label0:第一行第二行,10,20,100,30;"), page[2]}));
    }

    // physical lines joined by line feeds -> records joined by "|"
    void glueRecords_data()
    {
        addColumns<QString, QString>("physical", "records");
        QTest::newRow("text with a line break") << "Page:a;\nlabel0:hello\nworld;\nbutton0:x;"
                                                << "Page:a;|label0:helloworld;|button0:x;";
        QTest::newRow("empty continuation line") << "label0:a\n\nb;" << "label0:ab;";
        QTest::newRow("Pagename opens a record by its prefix") << "Page:a;\nPagename;" << "Page:a;|Pagename;";
        QTest::newRow("continuation starting like a kind") << "label0:say\nicon here;" << "label0:say|icon here;";
        QTest::newRow("prefix is case sensitive") << "Page:a;\nLabel0:x;\nrtc0:y;\nRTC0:z;" << "Page:a;Label0:x;rtc0:y;|RTC0:z;";
        QTest::newRow("first line opens a record") << "hello\nworld\nlabel0:x;" << "helloworld|label0:x;";
        QTest::newRow("blank before a prefix glues") << "Page:a;\n label0:x;" << "Page:a; label0:x;";
        QTest::newRow("one empty line") << "" << "";
        // every word that opens a record: the page line, each kind, the merge line
        for (const QString &w : QStringList{"Page", "Mergerboundaryline"} + kindWords())
            QTest::addRow("%s opens a record", qPrintable(w)) << QString("Page:a;\nx\n%1_7:v;\ntail").arg(w)
                                                              << QString("Page:a;x|%1_7:v;tail").arg(w);
    }
    void glueRecords()
    {
        QFETCH(QString, physical);
        QTEST(TextFiles::glueRecords(physical.split('\n')).join('|'), "records");
    }

    void writeCreatesAndReplaces()
    {
        const QString file = path("demo.uiprj");
        QVERIFY(TextFiles::writeAtomically(file, "first version, longer\n"));
        QCOMPARE(readAll(file), QByteArray("first version, longer\n"));
        QVERIFY(TextFiles::writeAtomically(file, "second\n"));
        QCOMPARE(readAll(file), QByteArray("second\n"));
        QVERIFY(TextFiles::writeAtomically(file, QByteArray()));
        QCOMPARE(readAll(file), QByteArray());
        // no temporary file stays behind
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("demo.uiprj")});
    }

    void writeFailsWhereThePathIsTaken()
    {
        // below a regular file: refused with a reason, the file untouched
        const QString notADir = path("Plugin");
        writeFile(notADir, "old");
        QString error;
        QVERIFY(!TextFiles::writeAtomically(notADir + QStringLiteral("/Page0000.cfg"), "new", &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(readAll(notADir), QByteArray("old"));
        // onto a directory: refused, the directory stays
        QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("Picture")));
        QVERIFY(!TextFiles::writeAtomically(path("Picture"), "x") && QFileInfo(path("Picture")).isDir());
    }
};

QTEST_GUILESS_MAIN(TestTextFiles)
#include "tst_text_files.moc"
