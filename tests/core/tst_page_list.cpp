// The page list: reading and writing "PageNNNN:" lines, page colours, and
// the page picker of a new project that builds pages from a picture folder.

#include "project/PageList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

const QString kBlack = QStringLiteral("RGBColor(0,0,0)");

bool touch(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write("x", 1) == 1;
}

} // namespace

class TestPageList : public QObject
{
    Q_OBJECT
private slots:
    void parse_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("image"); // empty: a plain colour page
        QTest::addColumn<QString>("background");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("color");
        const auto row = [](const char *title, const QString &line, int id, const QString &image,
                            const QString &background, const QString &name, const QString &color) {
            QTest::newRow(title) << line << id << image << background << name << color;
        };
        const QString B = kBlack;
        row("blank page", "Page0000:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);", 0, "", B, B, B);
        row("colour page with a name", "Page0012:RGBColor(255,128,0);Settings;RGBColor(255,128,0);", 12, "",
            "RGBColor(255,128,0)", "Settings", "RGBColor(255,128,0)");
        row("picture page", "Page0002:0002_x.jpg;Home;RGBColor(10,20,30);", 2, "0002_x.jpg", B, "Home", "RGBColor(10,20,30)");
        row("picture in all three fields", "Page0005:0005.png;0005.png;0005.png;", 5, "0005.png", B, "0005.png", B);
        row("text before RGB dropped", "Page0003:oldRGBColor(1,2,3);x;RGBColor(4,5,6);", 3, "", "RGBColor(1,2,3)", "x",
            "RGBColor(4,5,6)");
        row("empty name: field1 stands in", "Page0004:bg.png;;;", 4, "bg.png", B, "bg.png", B);
        row("empty name of a colour page", "Page0006:RGBColor(9,9,9);;RGBColor(9,9,9);", 6, "", "RGBColor(9,9,9)",
            "RGBColor(9,9,9)", "RGBColor(9,9,9)");
        row("colour field without RGBColor", "Page0007:RGBColor(1,1,1);n;blue;", 7, "", "RGBColor(1,1,1)", "n", B);
        row("fields missing", "Page0008:pic.bmp", 8, "pic.bmp", B, "pic.bmp", B);
        row("unreadable id", "Pagexyz:RGBColor(0,0,0);a;RGBColor(0,0,0);", -1, "", B, "a", B);
        row("nothing before the colon", ":RGBColor(0,0,0);;;", -1, "", B, B, B);
        row("digits only after the colon", "Page:0001.png;;;", -1, "0001.png", B, "0001.png", B);
        row("Chinese name", QString::fromUtf8("Page0010:RGBColor(0,0,0);主页;RGBColor(0,0,0);"), 10, "", B,
            QString::fromUtf8("主页"), B);
    }
    void parse()
    {
        QFETCH(QString, line);
        QFETCH(int, id);
        QFETCH(QString, image);
        QFETCH(QString, background);
        QFETCH(QString, name);
        QFETCH(QString, color);
        const PageInfo p = PageInfo::parse(line);
        QCOMPARE(p.id, id);
        QCOMPARE(p.isColor, image.isEmpty());
        QCOMPARE(p.image, image);
        QCOMPARE(p.background, background);
        QCOMPARE(p.name, name);
        QCOMPARE(p.color, color);
    }

    void idWithoutColon()
    {
        // Without a ":" the id comes from the whole text.
        QCOMPARE(PageInfo::parse("Page0009").id, 9);
        QCOMPARE(PageInfo::parse("Page0011RGBColor;").id, 11);
        QCOMPARE(PageInfo::parse("Page").id, -1);
        QCOMPARE(PageInfo::parse(QString()).id, -1);
    }

    void toLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("expected");
        // with a picture: image, name, colour; without: colour, name, colour
        QTest::newRow("blank") << PageList::blankLine(3) << 3
                               << "Page0003:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);";
        QTest::newRow("picture") << "Page0001:a.png;Intro;RGBColor(1,2,3);" << 1
                                 << "Page0001:a.png;Intro;RGBColor(1,2,3);";
        QTest::newRow("picture without colour") << "Page0001:a.png;;;" << 1 << "Page0001:a.png;a.png;RGBColor(0,0,0);";
        QTest::newRow("colour page: field1 replaced by the colour")
            << "Page0000:RGBColor(5,5,5);Menu;RGBColor(7,7,7);" << 0 << "Page0000:RGBColor(7,7,7);Menu;RGBColor(7,7,7);";
        QTest::newRow("moved to another row") << "Page0009:b.jpg;B;RGBColor(0,0,0);" << 12
                                              << "Page0012:b.jpg;B;RGBColor(0,0,0);";
    }
    void toLine()
    {
        QFETCH(QString, line);
        QFETCH(int, row);
        QFETCH(QString, expected);
        QCOMPARE(PageInfo::parse(line).toLine(row), expected);
        // a written line reads back to the same line
        QCOMPARE(PageInfo::parse(expected).toLine(row), expected);
    }

    void linesOfNewPages()
    {
        QCOMPARE(PageList::pageId(0), QStringLiteral("0000"));
        QCOMPARE(PageList::pageId(42), QStringLiteral("0042"));
        QCOMPARE(PageList::pageId(9999), QStringLiteral("9999"));
        QCOMPARE(PageList::blankLine(3), QStringLiteral("Page0003:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);"));
        QCOMPARE(PageList::pictureLine(7, QStringLiteral("0007_menu.png")),
                 QStringLiteral("Page0007:0007_menu.png;0007_menu.png;0007_menu.png;"));
    }

    void pictureNumber_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("number");
        QTest::newRow("four digits, dot") << "0000.png" << 0;
        QTest::newRow("four digits, underscore") << "0002_x.jpg" << 2;
        QTest::newRow("four digits, letter") << "0012a.bmp" << 12;
        QTest::newRow("highest") << "9999.jpeg" << 9999;
        QTest::newRow("five digits") << "00031.png" << -1;
        QTest::newRow("three digits") << "123.png" << -1;
        QTest::newRow("letters") << "abc.png" << -1;
        QTest::newRow("digit later") << "a0001.png" << -1;
        QTest::newRow("other script digits") << QString::fromUtf8("١٢٣٤.png") << -1;
        QTest::newRow("four digits only") << "0001" << -1;
    }
    void pictureNumber()
    {
        QFETCH(QString, file);
        QFETCH(int, number);
        QCOMPARE(PageList::pictureNumber(file), number);
    }

    void pagesFromPictureFolder()
    {
        // 0000, 0002 (twice), 0005: pages 0..5, blank pages 1, 3 and 4.
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString pic = dir.filePath(QStringLiteral("Picture"));
        QVERIFY(QDir().mkpath(pic));
        for (const char *name : {"0000.png", "0002_x.jpg", "0002_y.png", "0005.bmp", "00031.png",
                                 "abc.png", "0004.txt", "0003", "readme.jpeg"})
            QVERIFY(touch(pic + QLatin1Char('/') + QLatin1String(name)));
        QVERIFY(QDir(pic).mkdir(QStringLiteral("0009.png"))); // a folder, not a picture

        const QStringList lines = PageList::linesFromPictureFolder(pic);
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines[0], QStringLiteral("Page0000:0000.png;0000.png;0000.png;"));
        QCOMPARE(lines[1], PageList::blankLine(1));
        // one of the two files of number 2, the same in all three fields
        QVERIFY2(lines[2] == QStringLiteral("Page0002:0002_x.jpg;0002_x.jpg;0002_x.jpg;")
                     || lines[2] == QStringLiteral("Page0002:0002_y.png;0002_y.png;0002_y.png;"),
                 qPrintable(lines[2]));
        QCOMPARE(lines[3], QStringLiteral("Page0003:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);"));
        QCOMPARE(lines[4], PageList::blankLine(4));
        QCOMPARE(lines[5], QStringLiteral("Page0005:0005.bmp;0005.bmp;0005.bmp;"));
        // each line reads as the page the user expects
        for (int row = 0; row < lines.size(); ++row) {
            const PageInfo p = PageInfo::parse(lines[row]);
            QCOMPARE(p.id, row);
            QCOMPARE(p.isColor, row == 1 || row == 3 || row == 4);
        }
    }

    void pictureFolderEdges()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QVERIFY(PageList::linesFromPictureFolder(dir.path()).isEmpty());
        QVERIFY(PageList::linesFromPictureFolder(dir.filePath(QStringLiteral("missing"))).isEmpty());
        // no page pictures among the files: no pages
        QVERIFY(touch(dir.filePath(QStringLiteral("logo.png"))));
        QVERIFY(touch(dir.filePath(QStringLiteral("12345.png"))));
        QVERIFY(PageList::linesFromPictureFolder(dir.path()).isEmpty());
        // one page
        QVERIFY(touch(dir.filePath(QStringLiteral("0000_start.jpeg"))));
        QCOMPARE(PageList::linesFromPictureFolder(dir.path()),
                 QStringList{QStringLiteral("Page0000:0000_start.jpeg;0000_start.jpeg;0000_start.jpeg;")});
    }

    void rgbColor_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVector<int>>("rgb");
        QTest::newRow("black") << kBlack << QVector<int>{0, 0, 0};
        QTest::newRow("colour") << "RGBColor(10,200,255)" << QVector<int>{10, 200, 255};
        QTest::newRow("blanks") << "RGBColor( 7 , 8 , 9 )" << QVector<int>{7, 8, 9};
        QTest::newRow("component missing") << "RGBColor(1,2)" << QVector<int>{1, 2, 0};
        QTest::newRow("unreadable component") << "RGBColor(1,x,3)" << QVector<int>{1, 0, 3};
        QTest::newRow("no parenthesis") << "red" << QVector<int>{0, 0, 0};
        QTest::newRow("empty") << QString() << QVector<int>{0, 0, 0};
    }
    void rgbColor()
    {
        QFETCH(QString, text);
        QFETCH(QVector<int>, rgb);
        const PageList::Rgb c = PageList::parseRgbColor(text);
        QCOMPARE((QVector<int>{c.r, c.g, c.b}), rgb);
    }

    void rgbColorTextRoundTrip()
    {
        QCOMPARE(PageList::rgbColorText(12, 0, 255), QStringLiteral("RGBColor(12,0,255)"));
        for (int v : {0, 1, 127, 254, 255}) {
            const PageList::Rgb c = PageList::parseRgbColor(PageList::rgbColorText(v, 255 - v, v / 2));
            QCOMPARE((QVector<int>{c.r, c.g, c.b}), (QVector<int>{v, 255 - v, v / 2}));
        }
    }
};

QTEST_GUILESS_MAIN(TestPageList)
#include "tst_page_list.moc"
