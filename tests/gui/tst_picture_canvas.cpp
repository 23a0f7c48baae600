// The canvas look of the picture kinds: solid-coloured pictures are
// written into Icon/, and the pixels of what a widget shows are checked
// against places worked out by hand.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "designer/PictureRenderers.h"
#include "widgets/WidgetLine.h"

using namespace gui;

namespace {

constexpr QRgb kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;

EditBuffer widget(WidgetKind kind, const QRect &rect, const QVector<QPair<const char *, QString>> &texts)
{
    EditBuffer b = WidgetLine::createNew(kind, 0, rect);
    for (const auto &[key, text] : texts)
        b.setValue(b.definition()->indexOf(key), WidgetLine::readLineText(*b.definition()->find(key), text));
    return b;
}

QRgb at(const QImage &image, int x, int y) { return image.convertToFormat(QImage::Format_ARGB32).pixel(x, y); }

} // namespace

class TestPictureCanvas : public QObject, Fixture
{
    Q_OBJECT

    void solid(const QString &name, const QSize &size, QRgb colour)
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(colour);
        QVERIFY(image.save(root() + "Icon/" + name));
    }
    // Icon/: 0001 red 6 x 4, 0002 green 5 x 3, 0003 blue 40 x 10, 0004 a broken PNG.
    void pictures()
    {
        project({PageList::blankLine(0)});
        solid("0001_red.png", {6, 4}, kRed);
        solid("0002_green.png", {5, 3}, kGreen);
        solid("0003_blue.png", {40, 10}, kBlue);
        writeFile(root() + "Icon/0004_broken.png", QByteArray("\x89PNG\r\n\x1a\n garbage", 17));
    }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    // Opened from the page file: the label shows the picture and takes its
    // size, twice as large at zoom 2; a missing or broken one shows nothing.
    void pictureWidgets_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("defaultId");
        QTest::addColumn<QSize>("size"); // invalid: no picture
        QTest::addColumn<QRgb>("colour");
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
        QFETCH(QRgb, colour);
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
        QCOMPARE(at(shown, size.width() - 1, size.height() - 1), colour);
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
        QTest::addColumn<QString>("direction");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QRect>("red");
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
        QTest::addColumn<QString>("value");
        QTest::addColumn<QPoint>("green");
        QTest::addColumn<QPoint>("blue");
        QTest::addColumn<QPoint>("empty");
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
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("fields"); // key=text
        QTest::addColumn<QPoint>("where");
        QTest::addColumn<int>("digit"); // -1: nothing drawn there
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
};

QTEST_MAIN(TestPictureCanvas)
#include "tst_picture_canvas.moc"
