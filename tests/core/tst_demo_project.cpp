// The demo project in examples/demo is consistent: its page list, its
// pictures, its page files and its settings read back as a designer needs.
// Regenerate it with scripts/make-demo when one of these fails.

#include "project/PageList.h"
#include "project/ProjectSettings.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace vantile;

namespace {

QString demoDir()
{
    return QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo/");
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestDemoProject : public QObject
{
    Q_OBJECT

private:
    QStringList m_lines;
    QList<PageInfo> m_pages;

private slots:
    void initTestCase()
    {
        const QByteArray bytes = readAll(demoDir() + "demo.uiprj");
        QVERIFY2(!bytes.isEmpty(), "examples/demo/demo.uiprj is missing or empty");
        // UTF-8 with a byte order mark, lines ended by a bare line feed
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
        QVERIFY(bytes.endsWith('\n'));
        QVERIFY(!bytes.contains('\r'));
        bool wasGbk = true;
        TextFiles::decode(bytes, &wasGbk);
        QVERIFY(!wasGbk);
        bool ok = false;
        m_lines = TextFiles::readLines(demoDir() + "demo.uiprj", &ok);
        QVERIFY(ok);
        for (const QString &l : m_lines)
            m_pages << PageInfo::parse(l);
        QVERIFY(m_pages.size() >= 4);
    }

    void pageLines()
    {
        // "PageNNNN:" from 0000 in order, three non-empty fields each ended by
        // ";", a name of its own (not the background standing in for it), and
        // the line written back unchanged.
        const QRegularExpression form(
            QStringLiteral("^Page\\d{4}:[^;]+;[^;]+;RGBColor\\(\\d{1,3},\\d{1,3},\\d{1,3}\\);$"));
        int colourPages = 0;
        for (int i = 0; i < m_pages.size(); ++i) {
            const PageInfo &p = m_pages[i];
            QVERIFY2(form.match(m_lines[i]).hasMatch(), qPrintable(m_lines[i]));
            QCOMPARE(p.id, i);
            QVERIFY2(p.name != p.field1, qPrintable(m_lines[i]));
            QCOMPARE(p.toLine(i), m_lines[i]);
            if (p.isColor) {
                // a plain colour page: the background is the page colour
                ++colourPages;
                QVERIFY(p.image.isEmpty());
                QCOMPARE(p.background, p.field1);
                QCOMPARE(p.color, p.background);
            }
        }
        QVERIFY(colourPages >= 1);
    }

    void picturesExistFitThePanelAndBelongToTheirPage()
    {
        QSet<QString> used;
        for (int i = 0; i < m_pages.size(); ++i) {
            const PageInfo &p = m_pages[i];
            if (p.isColor)
                continue;
            used.insert(p.image);
            // four digits and "_": the number is the page's own
            QCOMPARE(PageList::pictureNumber(p.image), i);
            QCOMPARE(p.image.at(4), QLatin1Char('_'));
            const QString path = demoDir() + "Picture/" + p.image;
            QImage img;
            QVERIFY2(img.load(path), qPrintable(path));
            QCOMPARE(img.size(), QSize(800, 480));
            // a drawn picture, not a flat fill: sample a coarse grid for colours
            QSet<QRgb> colours;
            for (int y = 4; y < 480; y += 16)
                for (int x = 4; x < 800; x += 16)
                    colours.insert(img.pixel(x, y) & 0xFFFFFFu);
            QVERIFY2(colours.size() > 50, qPrintable(path));
        }
        QVERIFY(used.size() >= 3);
        // and no picture without a page
        for (const QString &f : QDir(demoDir() + "Picture").entryList(QDir::Files))
            QVERIFY2(used.contains(f), qPrintable("not on any page: Picture/" + f));
    }

    void foldersAndPageFiles()
    {
        for (const char *f :
             {"Picture", "FontBin", "Gif", "Icon", "Music", "Plugin", "Video", "WavBin", "MultiLanguage"})
            QVERIFY2(QFileInfo(demoDir() + f).isDir(), f);
        // one page file for each page, each UTF-8 with a byte order mark, and
        // no page file without a page
        for (int i = 0; i < m_pages.size(); ++i) {
            const QString cfg = demoDir() + "Plugin/Page" + PageList::pageId(i) + ".cfg";
            QVERIFY2(readAll(cfg).startsWith("\xEF\xBB\xBF"), qPrintable(cfg));
        }
        QCOMPARE(QDir(demoDir() + "Plugin").entryList({"Page*.cfg"}, QDir::Files).size(), m_pages.size());
    }

    void settings()
    {
        const QString ini = demoDir() + "demo.ini"; // beside demo.uiprj, same base name
        const VersionGate gate = ProjectSettings::checkVersion(ini);
        QVERIFY(gate.iniFound);
        QVERIFY(gate.accepted);

        const QByteArray bytes = readAll(ini);
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF[INFO]\n"));
        ProjectSettings s;
        s.xsize = QStringLiteral("1");
        s.ysize = QStringLiteral("1");
        QVERIFY(!s.readIni(bytes, m_pages.size()).startPageOverflow);
        QCOMPARE(s.canvasSize(), QSize(800, 480));
        QCOMPARE(s.panelType, 3);
        QVERIFY(s.startPage < m_pages.size());
        QCOMPARE(s.compileDateTime, QDateTime(QDate(2025, 1, 1), QTime(8, 0, 0)));
        // the file is in the form the designer writes: reading and writing
        // it again changes nothing
        QCOMPARE(s.toIni(), bytes);
    }
};

QTEST_MAIN(TestDemoProject)
#include "tst_demo_project.moc"
