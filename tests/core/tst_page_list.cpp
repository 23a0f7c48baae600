// The page list: "PageNNNN:" lines, page colours, and the pages a new
// project builds from a picture folder.

#include "CoreTestSupport.h"

using namespace core;

class TestPageList : public QObject
{
    Q_OBJECT
private slots:
    // "id|image|background|name|colour" (# black), the image empty on a colour page
    void parse_data()
    {
        addColumns<QString, QString>("line", "fields");
        const auto row = [](const char *title, const char *line, const char *fields) {
            QTest::newRow(title) << QString(line) << QString(fields).replace('#', "RGBColor(0,0,0)");
        };
        row("colour page with a name", "Page0012:RGBColor(255,128,0);Settings;RGBColor(255,128,0);",
            "12||RGBColor(255,128,0)|Settings|RGBColor(255,128,0)");
        row("picture page", "Page0002:0002_x.jpg;Home;RGBColor(10,20,30);", "2|0002_x.jpg|#|Home|RGBColor(10,20,30)");
        row("text before RGB dropped", "Page0003:oldRGBColor(1,2,3);x;RGBColor(4,5,6);",
            "3||RGBColor(1,2,3)|x|RGBColor(4,5,6)");
        row("empty name: field1 stands in", "Page0004:bg.png;;;", "4|bg.png|#|bg.png|#");
        row("colour field without RGBColor", "Page0007:RGBColor(1,1,1);n;blue;", "7||RGBColor(1,1,1)|n|#");
        row("fields missing", "Page0008:pic.bmp", "8|pic.bmp|#|pic.bmp|#");
        row("unreadable id", "Pagexyz:RGBColor(0,0,0);a;RGBColor(0,0,0);", "-1||#|a|#");
    }
    void parse()
    {
        QFETCH(QString, line);
        const PageInfo p = PageInfo::parse(line);
        QCOMPARE(p.isColor, p.image.isEmpty());
        QTEST(QStringList({QString::number(p.id), p.image, p.background, p.name, p.color}).join('|'), "fields");
    }

    void toLine_data()
    {
        addColumns<QString, int, QString>("line", "row", "expected");
        // with a picture: image, name, colour; without: colour, name, colour
        QTest::newRow("picture") << "Page0001:a.png;Intro;RGBColor(1,2,3);" << 1 << "Page0001:a.png;Intro;RGBColor(1,2,3);";
        QTest::newRow("picture without colour") << "Page0001:a.png;;;" << 1 << "Page0001:a.png;a.png;RGBColor(0,0,0);";
        QTest::newRow("colour page: field1 replaced by the colour")
            << "Page0000:RGBColor(5,5,5);Menu;RGBColor(7,7,7);" << 0 << "Page0000:RGBColor(7,7,7);Menu;RGBColor(7,7,7);";
        QTest::newRow("moved to another row") << "Page0009:b.jpg;B;RGBColor(0,0,0);" << 12 << "Page0012:b.jpg;B;RGBColor(0,0,0);";
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

    void idsAndLinesOfNewPages()
    {
        // without a ":" the id comes from the whole text
        QCOMPARE(PageInfo::parse("Page0009").id, 9);
        QCOMPARE(PageInfo::parse("Page0011RGBColor;").id, 11);
        QCOMPARE(PageInfo::parse("Page").id, -1);
        QCOMPARE(PageList::pageId(0), QStringLiteral("0000"));
        QCOMPARE(PageList::pageId(42), QStringLiteral("0042"));
        QCOMPARE(PageList::blankLine(3), QStringLiteral("Page0003:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);"));
        QCOMPARE(PageList::pictureLine(7, QStringLiteral("0007_menu.png")),
                 QStringLiteral("Page0007:0007_menu.png;0007_menu.png;0007_menu.png;"));
        QCOMPARE(PageList::rgbColorText(12, 0, 255), QStringLiteral("RGBColor(12,0,255)"));
    }

    void pictureNumber()
    {
        // four digits at the start, and more than the digits
        for (const auto &[file, number] : {std::pair<const char *, int>{"0000.png", 0}, {"0002_x.jpg", 2}, {"0012a.bmp", 12}})
            QCOMPARE(PageList::pictureNumber(file), number);
        for (const QString &none : {QStringLiteral("00031.png"), QStringLiteral("123.png"), QStringLiteral("a0001.png"),
                                    QString::fromUtf8("١٢٣٤.png"), QStringLiteral("0001")})
            QVERIFY2(PageList::pictureNumber(none) == -1, qPrintable(none));
    }

    void pagesFromPictureFolder()
    {
        QTemporaryDir dir;
        const QString pic = dir.filePath(QStringLiteral("Picture"));
        QVERIFY(PageList::linesFromPictureFolder(pic).isEmpty()); // no folder
        QVERIFY(QDir().mkpath(pic));
        for (const char *name : {"00031.png", "abc.png", "0004.txt", "0003", "readme.jpeg"})
            writeFile(pic + QLatin1Char('/') + QLatin1String(name), "x");
        QVERIFY(QDir(pic).mkdir(QStringLiteral("0009.png"))); // a folder, not a picture
        QVERIFY(PageList::linesFromPictureFolder(pic).isEmpty()); // no page pictures
        // 0000, 0002 (twice), 0005: pages 0..5, blank pages 1, 3 and 4
        for (const char *name : {"0000.png", "0002_x.jpg", "0002_y.png", "0005.bmp"})
            writeFile(pic + QLatin1Char('/') + QLatin1String(name), "x");
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

    void rgbColor()
    {
        // blanks allowed, a missing or unreadable component 0
        for (const auto &[text, rgb] : {std::pair<const char *, QVector<int>>{"RGBColor( 7 , 8 , 9 )", {7, 8, 9}},
                                        {"RGBColor(1,2)", {1, 2, 0}}, {"RGBColor(1,x,3)", {1, 0, 3}}, {"red", {0, 0, 0}}}) {
            const PageList::Rgb c = PageList::parseRgbColor(text);
            QCOMPARE((QVector<int>{c.r, c.g, c.b}), rgb);
        }
    }
};

QTEST_GUILESS_MAIN(TestPageList)
#include "tst_page_list.moc"
