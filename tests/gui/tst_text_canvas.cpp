// The canvas look of the text and number kinds: a project with a tiny
// hand-drawn 8 x 8 font and three digit pictures is opened, and the
// widgets' pictures are read back cell by cell.

#include "GuiTestSupport.h"
#include "build/FontFile.h"
#include "designer/CanvasWidgets.h"
#include "designer/TextRenderers.h"
#include "widgets/LineGrammar.h"

using namespace gui;
using namespace gui::look;

namespace {

// The glyphs of the test font, rows top to bottom ("#" ink).
const QHash<QChar, QStringList> &glyphs()
{
    static const QString bar = "...##...", box = "..####..", o = "........", full = "########", side = "#......#";
    static const QHash<QChar, QStringList> g{
        {'I', {bar, bar, bar, bar, bar, bar, bar, bar}},
        {'*', {o, o, box, box, box, box, o, o}},
        {'0', {full, side, side, side, side, side, side, full}},
        {'1', QVector<QString>(8, "......#.").toList()},
        {'.', {o, o, o, o, o, o, bar, bar}},
        {'-', {o, o, o, full, full, o, o, o}},
        {'V', {side, side, side, side, ".#....#.", ".#....#.", "..#..#..", bar}}};
    return g;
}

// A font of codes 0x20..0x7E; the test glyphs are drawn into an 8 x 8 one.
QByteArray testFont(const char *tag, int width, int height, const QString &family = {}, int style = 0)
{
    FontFile::Header h;
    h.family = family;
    h.style = style;
    h.tag = tag;
    h.width = width;
    h.height = height;
    h.firstCode = 0x20;
    h.lastCode = 0x7E;
    QHash<int, FontFile::Glyph> out;
    for (auto it = glyphs().begin(); it != glyphs().end() && width == 8; ++it)
        for (QChar c : it.value().join(QString()))
            out[it.key().unicode()].coverage.append(c == '#' ? char(255) : char(0));
    return FontFile::write(h, out);
}

// The characters drawn in `count` 8 x 8 cells from (x, y): ink is a pixel
// of the colour; a cell that matches no glyph reads "?", an empty one " ".
QString readBack(const QImage &image, int x, int y, int count, QRgb colour)
{
    QString text;
    for (int i = 0; i < count; ++i) {
        QStringList rows;
        for (int r = 0; r < 8; ++r) {
            QString row;
            for (int c = 0; c < 8; ++c) {
                const QRgb p = image.pixel(x + 8 * i + c, y + r);
                row += qAlpha(p) > 200 && (p & 0xFFFFFF) == (colour & 0xFFFFFF) ? '#' : '.';
            }
            rows << row;
        }
        const QChar found = glyphs().key(rows, QChar('?'));
        text += rows.join(QString()).contains('#') ? found : QChar(' ');
    }
    return text;
}

QImage pictureOf(QLabel *label)
{
    return label ? label->pixmap(Qt::ReturnByValue).toImage().convertToFormat(QImage::Format_ARGB32) : QImage();
}

} // namespace

class TestTextCanvas : public QObject, Fixture
{
    Q_OBJECT

    // A project with the test font as 00 and a broken one as 03, the digit
    // pictures 0..2 (red 4, green 3, blue 5 pixels wide) and one page of `lines`.
    void open(const QList<EditBuffer> &widgets)
    {
        QStringList lines;
        for (const EditBuffer &w : widgets)
            lines << WidgetLine::write(w);
        project({PageList::blankLine(0)}, {lines});
        QDir(root()).mkpath("FontBin");
        writeFile(root() + "FontBin/00_TestFont8.bin", testFont("AS", 8, 8));
        writeFile(root() + "FontBin/01_WideFont.bin", testFont("UN", 16, 12));
        writeFile(root() + "FontBin/03_Broken.bin", QByteArray(60, '\x41'));
        const QRgb colours[] = {kRed, kGreen, kBlue};
        for (int d = 0; d < 3; ++d)
            solid(root() + QString("Icon/000%1_d%1.png").arg(d), {4 + (d == 1 ? -1 : d == 2 ? 1 : 0), 6}, colours[d]);
        QVERIFY(openWindow());
    }
    QImage shown(const char *name) { return pictureOf(m_w->canvasWidgets()->find(QLatin1String(name))); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    // Alignment classes, password stars, a text wider than W: the glyphs
    // read back from the label's picture, and no ink outside them.
    void labelText_data()
    {
        // alignment: its number
        addColumns<QString, QString, bool, int, QString>("alignment", "text", "password", "glyphX", "expected");
        QTest::newRow("Left") << "0" << "I0" << false << 0 << "I0";
        QTest::newRow("T-Middle: (40 - 16) / 2") << "4" << "I0" << false << 12 << "I0";
        QTest::newRow("B-Right: 40 - 16") << "8" << "I0" << false << 24 << "I0";
        QTest::newRow("password: a star a character") << "0" << "I0V" << true << 0 << "***";
        QTest::newRow("wider than W: right end kept") << "2" << "10I-01" << false << 0 << "0I-01";
    }
    void labelText()
    {
        QFETCH(QString, alignment);
        QFETCH(QString, text);
        QFETCH(bool, password);
        QFETCH(int, glyphX);
        QFETCH(QString, expected);
        open({widget(WidgetKind::Label, {10, 10, 40, 16},
                     {{"alignment", alignment}, {"defaultText", LineGrammar::toHexText(text)},
                      {"passwordMode", password ? "Enable" : "Disable"}, {"fontColor", "0xFF0000"},
                      {"backgroundColor", "1"}, {"background_Color", "0x0000FF"}})});
        const QImage img = shown("label_0");
        QCOMPARE(img.size(), QSize(40, 16));
        QCOMPARE(readBack(img, glyphX, 0, expected.size(), kRed), expected);
        const int end = glyphX + 8 * expected.size();
        for (int x = 0; x < 40; ++x)
            for (int y = 0; y < 16; ++y) {
                if (x >= glyphX && x < end && y < 8)
                    continue;
                // the background shows under the line and beside the text
                QCOMPARE(img.pixel(x, y), 0xFF0000FFu);
            }
        QVERIFY(!m_w->findChild<QTextEdit *>("textEdit")->toPlainText().contains("label_0"));
    }

    // "10" with one decimal and leading zeros in three places, unit "V"
    // of one byte; the second number's unit length is 0: the panel shows
    // no unit. A value a signed byte can't hold shows as the panel reads it.
    void numberDigitsAndUnit_data()
    {
        addColumns<QString, QString, QString, QString, QString>(
            "value", "dataType", "leadingZero", "unitLength", "expected");
        QTest::newRow("leading zeros, unit behind") << "10" << "short" << "Enable" << "1" << "010.0V";
        QTest::newRow("no zeros, unit length 0") << "10" << "short" << "Disable" << "0" << "10.0";
        QTest::newRow("signed") << "-1.1" << "short" << "Disable" << "1" << "-1.1V";
        QTest::newRow("char of 25.5: 255 reads as -1") << "25.5" << "char" << "Disable" << "0" << "-0.1";
    }
    void numberDigitsAndUnit()
    {
        QFETCH(QString, value);
        QFETCH(QString, dataType);
        QFETCH(QString, leadingZero);
        QFETCH(QString, unitLength);
        QFETCH(QString, expected);
        open({widget(WidgetKind::Number, {0, 0, 64, 8},
                     {{"defaultNumber", value}, {"integerDigit", "3"}, {"decimalDigit", "1"},
                      {"dataType", dataType}, {"leadingZero", leadingZero}, {"unitSymbol", "V"},
                      {"unitSymbol_length", unitLength}, {"fontColor", "0xFF0000"}})});
        QCOMPARE(readBack(shown("number_0"), 0, 0, 8, kRed), expected.leftJustified(8));
    }

    // Digits 1, 0, 2 of "102" from the pictures 0001, 0000, 0002 (3 + 4 + 5
    // pixels), right-aligned in 30: they start at 18.
    void pngNumberFromDigitPictures()
    {
        open({widget(WidgetKind::PngNumber, {0, 0, 30, 10},
                     {{"firstIcon", "0000_d0.png"}, {"lastIcon", "0002_d2.png"}, {"defaultNumber", "102"},
                      {"alignment", "Right"}})});
        const QImage img = shown("pngNumber_0");
        QCOMPARE(img.size(), QSize(30, 10));
        QString columns;
        for (int x = 0; x < 30; ++x) {
            const QRgb p = img.pixel(x, 2);
            columns += qAlpha(p) == 0       ? '.'
                       : p == 0xFFFF0000 ? 'r'
                       : p == 0xFF00FF00 ? 'g'
                       : p == 0xFF0000FF ? 'b'
                                         : '?';
        }
        QCOMPARE(columns, QString("..................gggrrrrbbbbb"));
        QCOMPARE(qAlpha(img.pixel(20, 7)), 0); // below the six rows of the pictures
    }

    // A Statictext shows entry Constant_Num of Constant_text.csv: its text follows the
    // entry when the page loads.
    void staticTextFromConstantTable()
    {
        EditBuffer st = widget(WidgetKind::Statictext, {0, 0, 24, 8},
                               {{"Constant_Num", "2"}, {"defaultText", LineGrammar::toHexText("00")},
                                {"fontColor", "0xFF0000"}}, 1);
        open({st});
        QCOMPARE(readBack(shown("label_1"), 0, 0, 3, kRed), QString("00 "));
        writeFile(root() + "Constant_text.csv",
                  TextFiles::encodePlain({"1,*Hex:30,0X000000,0", "2,*Hex:492D49,0X000000,0"}));
        trigger("actionLoad_default_cfg"); // the page loads again and takes the entry
        QCOMPARE(readBack(shown("label_1"), 0, 0, 3, kRed), QString("I-I"));
    }

    // Zoom re-renders at the truncated scaled size; a missing font keeps
    // the family look (no picture, no message), a broken one is logged.
    void zoomAndBadFonts()
    {
        open({widget(WidgetKind::Label, {10, 10, 40, 16}, {{"defaultText", "I"}, {"fontColor", "0xFF0000"}}),
              widget(WidgetKind::Label, {10, 40, 40, 16}, {{"defaultText", "I"}, {"fontID", "5"}}, 1),
              widget(WidgetKind::TextRoll, {10, 70, 40, 16}, {{"defaultText", "I"}, {"fontID", "3"}})});
        QVERIFY(shown("label_1").isNull() && shown("textroll_0").isNull());
        const QString log = m_w->findChild<QTextEdit *>("textEdit")->toPlainText();
        QVERIFY2(log.contains("textroll_0") && log.contains("03_Broken.bin") && !log.contains("label_1"),
                 qPrintable(log));
        for (int i = 0; i < 5; ++i)
            trigger("actionZoomin");
        const float z = m_w->zoomFactor();
        QVERIFY(qAbs(z - 2.0f) < 0.001f);
        const QImage img = shown("label_0");
        QCOMPARE(img.size(), QSize(int(40 * z), int(16 * z)));
        // the bar of "I" (columns 3, 4) now covers 6..9; its middle is solid
        QCOMPARE(img.pixel(7, 8) | 0xFF000000, kRed);
        QCOMPARE(qAlpha(img.pixel(2, 8)), 0);
    }

    // Picking a font file for fontID takes its encoding and size into the rows.
    void pickedFontSetsEncodingAndSize()
    {
        open({widget(WidgetKind::Label, {10, 10, 40, 16}, {{"defaultText", "I"}})});
        m_w->selectByName("label_0");
        m_answers.word = "01_WideFont.bin";
        m_w->on_tableView_Para_doubleClicked(table(*m_w, "tableView_Para")->model()->index(10, 1));
        QCOMPARE(cell(*m_w, "tableView_Para", 11), QString("Unicode"));
        QCOMPARE(cell(*m_w, "tableView_Para", 8), QString("16"));
        QCOMPARE(cell(*m_w, "tableView_Para", 9), QString("12"));
        EditBuffer stored;
        QCOMPARE(WidgetLine::parse(m_w->currentPageLines().value(0), stored), ParseStatus::Ok);
        QCOMPARE(stored.number("fontID"), 1);
        QCOMPARE(stored.number("encoding"), 3);
    }

    // Outline fonts (encoding 9) are drawn by the system at the character
    // height; the bold bit gives more ink.
    void outlineFontStyles()
    {
        QTemporaryDir dir;
        QDir(dir.path()).mkpath("FontBin");
        const QString projectDir = dir.path() + "/";
        const EditBuffer w =
            widget(WidgetKind::Label, {0, 0, 120, 30}, {{"defaultText", "Hello"}, {"fontColor", "0x00FF00"}});
        int ink[2] = {};
        for (int bold = 0; bold < 2; ++bold) {
            writeFile(projectDir + "FontBin/00_Outline.bin",
                      testFont("SS", 20, 20, "DejaVu Sans", bold ? FontFile::Bold : 0));
            const QImage img = TextRenderers::renderLabel(w, projectDir);
            QCOMPARE(img.size(), QSize(120, 30));
            for (int y = 0; y < 30; ++y)
                for (int x = 0; x < 120; ++x)
                    ink[bold] += qAlpha(img.pixel(x, y)) > 128 && qGreen(img.pixel(x, y)) > 128 ? 1 : 0;
            QVERIFY(qAlpha(img.pixel(119, 29)) == 0);
        }
        QVERIFY2(ink[0] > 50 && ink[1] > ink[0] * 11 / 10, qPrintable(QString("%1 %2").arg(ink[0]).arg(ink[1])));
    }
};

QTEST_MAIN(TestTextCanvas)
#include "tst_text_canvas.moc"
