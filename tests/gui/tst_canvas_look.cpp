// The canvas look of the kinds: solid-coloured pictures and a tiny hand-drawn
// 8 x 8 font are written into the project, and the pixels of what a widget
// shows are checked against places worked out by hand, text cell by cell.
// The time kinds show 2026-05-28 (a Thursday) 10:10:30 on the canvas.

#include "GuiTestSupport.h"
#include "build/FontFile.h"
#include "designer/CanvasWidgets.h"
#include "designer/PictureRenderers.h"
#include "designer/TextRenderers.h"
#include "designer/TimeRenderers.h"
#include "designer/WidgetLook.h"
#include "widgets/LineGrammar.h"

using namespace gui;
using namespace gui::look;

namespace {

// The picture at place p of a run (digit, minus 10, point 11, colon 12).
QRgb placeColour(int p) { return qRgb(20 * p, 255 - 20 * p, 40); }

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
    h.family = family, h.style = style, h.tag = tag;
    h.width = width, h.height = height, h.firstCode = 0x20, h.lastCode = 0x7E;
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

class TestCanvasLook : public QObject, Fixture
{
    Q_OBJECT

    void solid(const QString &name, const QSize &size, QRgb colour) { look::solid(root() + "Icon/" + name, size, colour); }
    // Icon/: 0001 red 6 x 4, 0002 green 5 x 3, 0003 blue 40 x 10, 0004 a broken PNG.
    void pictures()
    {
        project({PageList::blankLine(0)});
        solid("0001_red.png", {6, 4}, kRed);
        solid("0002_green.png", {5, 3}, kGreen);
        solid("0003_blue.png", {40, 10}, kBlue);
        writeFile(root() + "Icon/0004_broken.png", QByteArray("\x89PNG\r\n\x1a\n garbage", 17));
    }
    // Icon/0020 ... 0032: a run of 4 x 6 pictures, place p in placeColour(p).
    void run()
    {
        project({PageList::blankLine(0)});
        for (int p = 0; p <= 12; ++p)
            solid(QString("%1_d.png").arg(20 + p, 4, 10, QLatin1Char('0')), {4, 6}, placeColour(p));
    }

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
            look::solid(root() + QString("Icon/000%1_d%1.png").arg(d), {4 + (d == 1 ? -1 : d == 2 ? 1 : 0), 6}, colours[d]);
        QVERIFY(openWindow());
    }
    QImage shown(const char *name) { return pictureOf(m_w->canvasWidgets()->find(QLatin1String(name))); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    // Opened from the page file: the label shows the picture and takes its
    // size, twice as large at zoom 2; a missing or broken one shows nothing.
    void pictureWidgets_data()
    {
        // an invalid size: no picture
        addColumns<int, QString, QString, QString, QSize, QRgb>("kind", "field", "file", "defaultId", "size", "colour");
        QTest::newRow("icon: first of the run") << int(WidgetKind::Icon) << "firstIcon" << "0001_red.png" << "" << QSize(6, 4) << kRed;
        QTest::newRow("icon: default id inside the run") << int(WidgetKind::Icon) << "firstIcon" << "0001_red.png" << "0002_green.png" << QSize(5, 3) << kGreen;
        QTest::newRow("icon: default id outside the run") << int(WidgetKind::Icon) << "firstIcon" << "0001_red.png" << "0003_blue.png" << QSize(6, 4) << kRed;
        QTest::newRow("bitIcon: off state") << int(WidgetKind::BitIcon) << "offStateIcon" << "0002_green.png" << "" << QSize(5, 3) << kGreen;
        QTest::newRow("varAdj: unpressed") << int(WidgetKind::VarAdj) << "unpressedIcon" << "0001_red.png" << "" << QSize(6, 4) << kRed;
        QTest::newRow("missing file") << int(WidgetKind::Icon) << "firstIcon" << "0009_gone.png" << "" << QSize() << kRed;
        QTest::newRow("broken file") << int(WidgetKind::BitIcon) << "offStateIcon" << "0004_broken.png" << "" << QSize() << kRed;
    }
    void pictureWidgets()
    {
        QFETCH(int, kind);
        QFETCH(QString, field);
        QFETCH(QString, file);
        QFETCH(QString, defaultId);
        QFETCH(QSize, size);
        pictures();
        const QByteArray key = field.toLatin1();
        QVector<QPair<const char *, QString>> texts{{key.constData(), file}};
        if (kind == int(WidgetKind::Icon))
            texts << QPair<const char *, QString>("lastIcon", "0002_green.png")
                  << QPair<const char *, QString>("defaultDisplayID", defaultId);
        const EditBuffer w = widget(WidgetKind(kind), {10, 10, 30, 30}, texts);
        writeFile(cfg(0), WidgetLine::write(w).toUtf8() + "\n");
        QVERIFY(openWindow());
        QLabel *label = m_w->canvasWidgets()->find(w.objectName());
        QVERIFY(label);
        const QImage shown = label->pixmap(Qt::ReturnByValue).toImage();
        QCOMPARE(shown.size(), size.isValid() ? size : QSize(0, 0));
        if (!size.isValid())
            return;
        QCOMPARE(label->size(), size);
        QTEST(at(shown, size.width() - 1, size.height() - 1), "colour");
        QString problem;
        m_w->canvasWidgets()->paint(label, w, 2.0f, root(), &problem);
        QCOMPARE(label->pixmap(Qt::ReturnByValue).size(), size * 2);
        QCOMPARE(label->geometry(), QRect(20, 20, size.width() * 2, size.height() * 2));
        QVERIFY(problem.isEmpty());
    }

    void brokenPictureIsNamed()
    {
        pictures();
        QString problem;
        const EditBuffer w = widget(WidgetKind::Icon, {0, 0, 8, 8}, {{"firstIcon", "0004_broken.png"}});
        QVERIFY(PictureRenderers::renderIcon(w, root(), &problem).isNull());
        QVERIFY2(problem.contains("icon_0") && problem.contains("Icon/0004_broken.png"), qPrintable(problem));
    }

    // A 40 x 10 progress bar: blue background, red bar (a 40 x 10 picture
    // painted red here) clipped to the share of the value along the direction.
    void progressShare_data()
    {
        addColumns<QString, QString, QRect>("direction", "value", "red");
        QTest::newRow("50 % left to right") << "L_to_R" << "50" << QRect(0, 0, 20, 10);
        QTest::newRow("50 % right to left") << "R_to_L" << "50" << QRect(20, 0, 20, 10);
        QTest::newRow("30 % bottom up: rows 7..9") << "D_to_U" << "30" << QRect(0, 7, 40, 3);
        QTest::newRow("30 % top down: rows 0..2") << "U_to_D" << "30" << QRect(0, 0, 40, 3);
        QTest::newRow("above the maximum: full") << "L_to_R" << "250" << QRect(0, 0, 40, 10);
        QTest::newRow("at the minimum: empty") << "L_to_R" << "0" << QRect();
    }
    void progressShare()
    {
        QFETCH(QString, direction);
        QFETCH(QString, value);
        QFETCH(QRect, red);
        pictures();
        solid("0005_bar.png", {40, 10}, kRed);
        // the bar point is a page position: a widget at (300, 200) with its bar there
        const QImage img = PictureRenderers::renderBar(
            widget(WidgetKind::Progress, {300, 200, 40, 10},
                   {{"background", "0003_blue.png"}, {"barIcon", "0005_bar.png"}, {"direction", direction},
                    {"defaultValue", value}, {"bar_X", "300"}, {"bar_Y", "200"}}),
            root(), nullptr);
        QCOMPARE(img.size(), QSize(40, 10));
        for (int y = 0; y < 10; ++y)
            for (int x = 0; x < 40; ++x)
                QCOMPARE(at(img, x, y), red.contains(x, y) ? kRed : kBlue);
    }

    // A 6-wide kite, L1 12 and L2 4, pivot (20, 20): a pixel left of its
    // axis (1, 10) is green, right of it (4, 10) is blue. Padded to 6 x 24
    // and turned by angle - 180 about its centre, placed at pivot - (half size).
    void needleAngle_data()
    {
        addColumns<QString, QPoint, QPoint, QPoint>("value", "green", "blue", "empty");
        // -90: (x, y) -> (y, 5 - x) in a 24 x 6 image at (8, 17); tip left
        QTest::newRow("90: points left") << "90" << QPoint(18, 21) << QPoint(18, 18) << QPoint(28, 21);
        // -180: (x, y) -> (5 - x, 23 - y) in a 6 x 24 image at (17, 8); tip down
        QTest::newRow("0 is the start: points down") << "0" << QPoint(21, 21) << QPoint(18, 21) << QPoint(21, 12);
        QTest::newRow("200 beyond 180 shows the start") << "200" << QPoint(21, 21) << QPoint(18, 21) << QPoint(21, 12);
    }
    void needleAngle()
    {
        QFETCH(QString, value);
        QFETCH(QPoint, green);
        QFETCH(QPoint, blue);
        QFETCH(QPoint, empty);
        pictures();
        const QImage img = PictureRenderers::renderNeedle(
            widget(WidgetKind::Needle, {0, 0, 40, 40},
                   {{"pivot_X", "20"}, {"pivot_Y", "20"}, {"startAngle", "0"}, {"finalAngle", "180"},
                    {"defaultValue", value}, {"needleType", "2Ddrawing"}, {"needle_W", "6"}, {"needle_L1", "12"},
                    {"needle_L2", "4"}, {"needle_C1", "0x00FF00"}, {"needle_C2", "0x0000FF"}}),
            root(), nullptr);
        QCOMPARE(img.size(), QSize(40, 40));
        QCOMPARE(at(img, green.x(), green.y()), kGreen);
        QCOMPARE(at(img, blue.x(), blue.y()), kBlue);
        QCOMPARE(qAlpha(at(img, empty.x(), empty.y())), 0);
    }

    // A ring from 0 (down) to 360 at half its range sweeps down, left, up:
    // the left half shows the foreground, the right half the background.
    void ringSweep()
    {
        pictures();
        solid("0006_bg.png", {40, 40}, kBlue);
        solid("0007_fg.png", {40, 40}, kRed);
        const QImage img = PictureRenderers::renderRing(
            widget(WidgetKind::RProgress, {0, 0, 40, 40},
                   {{"background", "0006_bg.png"}, {"foreground", "0007_fg.png"}, {"defaultValue", "50"}}),
            root(), nullptr);
        for (const QPoint &p : {QPoint(2, 2), QPoint(2, 37), QPoint(15, 30)})
            QCOMPARE(at(img, p.x(), p.y()), kRed);
        for (const QPoint &p : {QPoint(37, 2), QPoint(37, 37), QPoint(25, 10)})
            QCOMPARE(at(img, p.x(), p.y()), kBlue);
    }

    // Numbers on gauges, from digit pictures 0010-0019 (3 x 5, digit d in
    // green 20d). The widget stands at page (100, 50); rProgress and needle
    // points are page positions, rtouch's lie in the widget. "42" at the
    // widget's (10, 10): "4" covers x 10-12, "2" x 13-15; centred, the six
    // columns start at 10 - 3 = 7.
    void gaugeNumbers_data()
    {
        // fields: key=text; digit -1: nothing drawn there
        addColumns<int, QStringList, QPoint, int>("kind", "fields", "where", "digit");
        const QStringList ring = {"digitDisplayMode=IconNum", "firstIcon=0010_d.png", "lastIcon=0019_d.png",
                             "defaultValue=42", "integerDigit=2", "promptNum_X=110",
                             "promptNum_Y=60"};
        QTest::newRow("rProgress, first digit") << int(WidgetKind::RProgress) << ring << QPoint(10, 10) << 4;
        QTest::newRow("rProgress, second digit") << int(WidgetKind::RProgress) << ring << QPoint(15, 14) << 2;
        QTest::newRow("rProgress, centred") << int(WidgetKind::RProgress) << (ring + QStringList{"alignment=Middle"})
                                         << QPoint(7, 10) << 4;
        QTest::newRow("rProgress, no digits") << int(WidgetKind::RProgress)
                                           << (ring + QStringList{"digitDisplayMode=Null"})
                                           << QPoint(10, 10) << -1;
        QTest::newRow("rtouch, inside the widget")
            << int(WidgetKind::RTouch)
            << QStringList{"digitDisplayMode=IconNum", "firstIcon=0010_d.png", "lastIcon=0019_d.png",
                      "defaultValue=7", "integerDigit=1", "promptNum_x=4", "promptNum_y=6"}
            << QPoint(4, 6) << 7;
        const QStringList needle = {"showNumber=Enable", "showNumber_defaultNumber=9",
                               "showNumber_firstIcon=0010_d.png", "showNumber_lastIcon=0019_d.png",
                               "showNumber_promptNum_X=105", "showNumber_promptNum_Y=80",
                               "pivot_X=35", "pivot_Y=35"};
        QTest::newRow("needle number") << int(WidgetKind::Needle) << needle << QPoint(6, 33) << 9;
        QTest::newRow("needle without number") << int(WidgetKind::Needle)
                                               << (needle + QStringList{"showNumber=Disable"})
                                               << QPoint(6, 33) << -1;
    }
    void gaugeNumbers()
    {
        QFETCH(int, kind);
        QFETCH(QStringList, fields);
        QFETCH(QPoint, where);
        QFETCH(int, digit);
        project({PageList::blankLine(0)});
        for (int d = 0; d < 10; ++d)
            solid(QStringLiteral("00%1_d.png").arg(10 + d), {3, 5}, qRgb(0, 20 * d, 255));
        QList<QByteArray> keys;
        QVector<QPair<const char *, QString>> texts;
        for (const QString &f : fields)
            keys << f.section('=', 0, 0).toLatin1();
        for (int i = 0; i < fields.size(); ++i)
            texts.append({keys[i].constData(), fields[i].section('=', 1)});
        const EditBuffer b = widget(WidgetKind(kind), {100, 50, 70, 70}, texts);
        const QImage img = kind == int(WidgetKind::Needle) ? PictureRenderers::renderNeedle(b, root(), nullptr)
                                                            : PictureRenderers::renderRing(b, root(), nullptr);
        if (digit < 0) {
            QVERIFY(img.isNull() || qAlpha(at(img, where.x(), where.y())) == 0);
            return;
        }
        QVERIFY(!img.isNull());
        QCOMPARE(at(img, where.x(), where.y()), qRgb(0, 20 * digit, 255));
    }

    // RTC formats at the fixed moment; a timer's preset 3725 s is 1 h 2 min 5 s.
    void digits_data()
    {
        addColumns<int, QString, QString, QVector<int>>("kind", "format", "last", "places");
        const int rtc = int(WidgetKind::RTC), timer = int(WidgetKind::UITimer);
        QTest::newRow("10:10:30") << rtc << "HH:MM:SS" << "0032_d.png" << QVector<int>{1, 0, 12, 1, 0, 12, 3, 0};
        // the date's "/" shows the minus sign
        QTest::newRow("26/05/28") << rtc << "YY/MM/DD" << "0032_d.png" << QVector<int>{2, 6, 10, 0, 5, 10, 2, 8};
        QTest::newRow("minutes 10:30") << rtc << "MM:SS" << "0032_d.png" << QVector<int>{1, 0, 12, 3, 0};
        QTest::newRow("Thursday") << rtc << "Week" << "0032_d.png" << QVector<int>{4};
        QTest::newRow("a blank cell") << rtc << "YY/MM/DD HH:MM:SS" << "0032_d.png"
                                      << QVector<int>{2, 6, 10, 0, 5, 10, 2, 8, -1, 1, 0, 12, 1, 0, 12, 3, 0};
        QTest::newRow("a run of digits has no colon") << rtc << "HH:MM" << "0029_d.png" << QVector<int>{1, 0, -1, 1, 0};
        QTest::newRow("01:02:05") << timer << "HH:MM:SS" << "" << QVector<int>{0, 1, 12, 0, 2, 12, 0, 5};
        QTest::newRow("62:05") << timer << "MM:SS" << "" << QVector<int>{6, 2, 12, 0, 5};
        QTest::newRow("3725") << timer << "SS" << "" << QVector<int>{3, 7, 2, 5};
        QTest::newRow("NULL shows nothing") << timer << "NULL" << "" << QVector<int>{};
    }
    void digits()
    {
        QFETCH(int, kind);
        QFETCH(QString, format);
        QFETCH(QString, last);
        QFETCH(QVector<int>, places);
        run();
        EditBuffer w = widget(WidgetKind(kind), {0, 0, 10, 10},
                              {{"firstIcon", "0020_d.png"}, {"lastIcon", last}, {"displayFormat", format}});
        if (w.has("presetAddr_value"))
            w.setNumber("presetAddr_value", 3725);
        const QImage image = w.kind() == WidgetKind::RTC ? TimeRenderers::renderRTC(w, root(), nullptr)
                                                          : TimeRenderers::renderTimer(w, root(), nullptr);
        QCOMPARE(image.size(), places.isEmpty() ? QSize(0, 0) : QSize(4 * places.size(), 6));
        for (int i = 0; i < places.size(); ++i) { // cell i shows place p, or nothing for -1
            const QRgb px = at(image, 4 * i + 1, 2);
            if (places[i] < 0)
                QCOMPARE(qAlpha(px), 0);
            else
                QCOMPARE(px, placeColour(places[i]));
        }
    }

    // A 100 x 100 clock without a dial picture, centre (50, 50); at
    // 10:10:30 the second hand points down (180 degrees), the minute hand
    // to 63 degrees, the hour hand to 305.25 degrees (clockwise from twelve).
    void clockHands()
    {
        run();
        const EditBuffer w = widget(
            WidgetKind::Clock, {0, 0, 100, 100},
            {{"hourHand_L", "30"}, {"hourHand_S", "0"}, {"hourHand_W", "5"}, {"hourHandColor", "0x0000FF"},
             {"minuteHand_L", "40"}, {"minuteHand_S", "0"}, {"minuteHand_W", "5"}, {"minuteHandColor", "0x00FF00"},
             {"secondHand_L", "45"}, {"secondHand_S", "10"}, {"secondHand_W", "5"}, {"secondHandColor", "0xFF0000"}});
        const QImage img = TimeRenderers::renderClock(w, root(), nullptr);
        QCOMPARE(img.size(), QSize(100, 100));
        QCOMPARE(at(img, 50, 85), kRed);   // 35 below the centre
        QCOMPARE(at(img, 50, 45), kRed);   // its short end, 5 above
        // 30 out at 63 degrees: (50 + 30 sin 63, 50 - 30 cos 63) = (76.7, 36.4)
        QCOMPARE(at(img, 76, 36), kGreen);
        // 20 out at 305.25 degrees: (50 - 20 x 0.817, 50 - 20 x 0.577) = (33.7, 38.5)
        QCOMPARE(at(img, 33, 38), kBlue);
        QCOMPARE(qAlpha(at(img, 80, 80)), 0); // between the hands, inside the dial

        // a dial picture gives the size
        solid("0040_dial.png", {60, 40}, qRgb(90, 90, 90));
        EditBuffer dial = w;
        dial.setText("background", "0040_dial.png");
        QCOMPARE(TimeRenderers::renderClock(dial, root(), nullptr).size(), QSize(60, 40));
    }

    // On the page: an RTC takes the size of its digits; the keyboards,
    // which draw nothing of their own, keep their family's look and tag.
    void onTheCanvas()
    {
        run();
        writeFile(cfg(0), "RTC_0:10,10,50,50,0xFFFF,0020_d.png,0032_d.png,HH:MM,clock,0xFFFF,1;\n" // lines cut short
                          "keypad_0:0x0000,2,100,20,80,60;\nenkeyB_0:en,0x0000,16,200,20,80,60;\n"
                          "cnkeyB_0:cn,0x0000,16,300,20,80,60;\n");
        QVERIFY(openWindow());
        QLabel *rtc = m_w->canvasWidgets()->find("RTC_0");
        QVERIFY(rtc);
        QCOMPARE(rtc->size(), QSize(20, 6)); // "10:10" in five 4-wide cells

        for (const char *name : {"keypad_0", "enkeyB_0", "cnkeyB_0"}) {
            QLabel *label = m_w->canvasWidgets()->find(name);
            QVERIFY2(label && label->pixmap(Qt::ReturnByValue).isNull(), name); // so it carries its name tag
            const WidgetKind kind = WidgetKinds::kindOfName(name);
            QVERIFY(WidgetLook::family(kind) == WidgetLook::Family::Keyboard);
            QCOMPARE(label->styleSheet(), WidgetLook::style(kind));
        }
    }

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

QTEST_MAIN(TestCanvasLook)
#include "tst_canvas_look.moc"
