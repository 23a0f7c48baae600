// The demo project in examples/demo is consistent: its page list, its
// pictures, its page files and its settings read back as a designer needs,
// and it builds without complaints.
// Regenerate it with scripts/make-demo when one of these fails.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "project/TextFiles.h"

#include <QImage>
#include <QImageReader>

using namespace core;

namespace {

QString demoDir() { return QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo/"); }

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
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF") && bytes.endsWith('\n') && !bytes.contains('\r'));
        bool ok = false;
        m_lines = TextFiles::readLines(demoDir() + "demo.uiprj", &ok);
        QVERIFY(ok);
        for (const QString &l : m_lines)
            m_pages << PageInfo::parse(l);
        QVERIFY(m_pages.size() >= 4);
    }

    void pageLinesAndFiles()
    {
        // "PageNNNN:" from 0000 in order, three non-empty fields each ended by
        // ";", a name of its own (not the background standing in for it), the
        // line written back unchanged, and a page file with a byte order mark.
        const QRegularExpression form(
            QStringLiteral("^Page\\d{4}:[^;]+;[^;]+;RGBColor\\(\\d{1,3},\\d{1,3},\\d{1,3}\\);$"));
        int colourPages = 0;
        for (int i = 0; i < m_pages.size(); ++i) {
            const PageInfo &p = m_pages[i];
            QVERIFY2(form.match(m_lines[i]).hasMatch() && p.name != p.field1, qPrintable(m_lines[i]));
            QCOMPARE(p.id, i);
            QCOMPARE(p.toLine(i), m_lines[i]);
            QVERIFY(readAll(demoDir() + "Plugin/Page" + PageList::pageId(i) + ".cfg").startsWith("\xEF\xBB\xBF"));
            if (p.isColor) { // a plain colour page: the background is the page colour
                ++colourPages;
                QVERIFY(p.image.isEmpty() && p.background == p.field1 && p.color == p.background);
            }
        }
        QVERIFY(colourPages >= 1);
        // no page file without a page, and the nine folders
        QCOMPARE(QDir(demoDir() + "Plugin").entryList({"Page*.cfg"}, QDir::Files).size(), m_pages.size());
        for (const char *f : {"Picture", "FontBin", "Gif", "Icon", "Music", "Plugin", "Video", "WavBin", "MultiLanguage"})
            QVERIFY2(QFileInfo(demoDir() + f).isDir(), f);
    }

    void picturesFitThePanelAndBelongToTheirPage()
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
            // a drawn picture of the panel's size, not a flat fill: many colours at 40 x 24 samples
            const QImage img(demoDir() + "Picture/" + p.image);
            QCOMPARE(img.size(), QSize(800, 480));
            const int colours = img.scaled(40, 24).convertToFormat(QImage::Format_Indexed8).colorCount();
            QVERIFY2(colours > 50, qPrintable(p.image));
        }
        QVERIFY(used.size() >= 3);
        for (const QString &f : QDir(demoDir() + "Picture").entryList(QDir::Files))
            QVERIFY2(used.contains(f), qPrintable("not on any page: Picture/" + f));
    }

    void settings()
    {
        const QString ini = demoDir() + "demo.ini"; // beside demo.uiprj, same base name
        const VersionGate gate = ProjectSettings::checkVersion(ini);
        QVERIFY(gate.iniFound && gate.accepted);

        const QByteArray bytes = readAll(ini);
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF[INFO]\n"));
        ProjectSettings s;
        s.xsize = s.ysize = QStringLiteral("1");
        QVERIFY(!s.readIni(bytes, m_pages.size()).startPageOverflow);
        QVERIFY(s.canvasSize() == QSize(800, 480) && s.panelType == 3 && s.startPage < m_pages.size());
        QCOMPARE(s.compileDateTime, QDateTime(QDate(2025, 1, 1), QTime(8, 0, 0)));
        QCOMPARE(s.languageNum, QStringLiteral("2"));
        // in the form the designer writes: reading and writing it changes nothing
        QCOMPARE(s.toIni(), bytes);
    }
    void widgetLinesComeFromTheModel()
    {
        // each line reads with its kind's fields and writes back as it stands; variables don't overlap
        QMultiMap<qint64, qint64> spans; // first word -> one past the last
        for (int i = 0; i < m_pages.size(); ++i) {
            const QString cfg = demoDir() + "Plugin/Page" + PageList::pageId(i) + ".cfg";
            for (const QString &line : TextFiles::readLines(cfg)) {
                EditBuffer b;
                const bool ok = WidgetLine::parse(line, b) == ParseStatus::Ok && WidgetLine::write(b) == line;
                QVERIFY2(ok, qPrintable(line));
                const char *key = b.has("WriteAddr") ? "WriteAddr" : "writeAddr"; // a gif's is capitalised
                const qint64 at = b.has(key) ? b.number(key) : 0xFFFF;
                if (at != 0xFFFF)
                    spans.insert(at, at + (b.has("wordLength") ? b.number("wordLength") : 1));
            }
        }
        QVERIFY(spans.size() >= 12 && spans.firstKey() >= 0x1000 && spans.lastKey() < 0x7000);
        for (auto it = spans.cbegin(), n = std::next(it); n != spans.cend(); it = n++) // or are one, shown twice
            QVERIFY2(it.value() <= n.key() || (it.key() == n.key() && it.value() == n.value()),
                     qPrintable(QString::number(it.key(), 16)));
    }

    void buildsWithoutComplaints()
    {
        QTemporaryDir tmp; // the build writes into the project
        for (QDirIterator it(demoDir(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); it.hasNext();) {
            const QString rel = QDir(demoDir()).relativeFilePath(it.next());
            QVERIFY(QDir(tmp.path()).mkpath(QFileInfo(rel).path()) && QFile::copy(it.filePath(), tmp.filePath(rel)));
        }
        const ProjectLoad load = loadProject(tmp.filePath("demo.uiprj"));
        QVERIFY2(load.ok, qPrintable(load.reason));
        MakeBin driver;
        installStandardBuild(driver);
        const BuildResult r = driver.run(load.input, {QDateTime(QDate(2026, 1, 1), QTime(0, 0))});
        QVERIFY(r.imageWritten && !r.overFlash);
        QVERIFY2(r.complaints().isEmpty(), qPrintable(r.complaints().join('\n')));
        // languages: a table of 2 x 8 bytes, 4 bytes and the text for each of HOME SETTINGS TREND STANDBY,
        // RUN HOURS, the 39-letter ticker; in Chinese (2 bytes a character) 4 titles of 2, then 4 and 11
        QCOMPARE(r.directory.value(BlockDirectory::FontCount), 3u);
        QCOMPARE(r.directory.value(BlockDirectory::StaticTextCount), 1u);
        // icons: 10 digits, the ring track and 3 rings, the bar's track and fill, the knob, the lamp off and on,
        // the clock's dial and cap, 13 glyphs of the header clock (0-9, minus, point, colon): 19 + 2 + 13
        QVERIFY(r.directory.value(BlockDirectory::IconCount) == 34u && r.directory.value(BlockDirectory::GifCount) == 1u);
        QImageReader gif(demoDir() + "Gif/0000_spinner.gif"); // 8 frames of 32 x 32, the head a dot further each:
        const QImage f0 = gif.read(), f1 = gif.read();        // at the top (16, 5), then 45 degrees on at (24, 8)
        QVERIFY(gif.imageCount() == 8 && f0.size() == QSize(32, 32) && f0.pixel(16, 16) == qRgb(18, 30, 44));
        QVERIFY(f0.pixel(16, 5) == 0xFF00C8F0 && f1.pixel(24, 8) == 0xFF00C8F0 && f0.pixel(24, 8) != 0xFF00C8F0);
        QCOMPARE(r.directory.value(BlockDirectory::LanguageCount), 16u + (8 + 12 + 9 + 11 + 13 + 43) + (32 + 12 + 26u));
    }
};

QTEST_MAIN(TestDemoProject)
#include "tst_demo_project.moc"
