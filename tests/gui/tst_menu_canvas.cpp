// The menu kinds and the curve on the canvas: the curve's frame and
// reference line, and a dragged slidemenuPro that keeps room on the canvas
// for its next item (a gap and a frame beyond it along its direction).

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "designer/MenuRenderers.h"
#include "widgets/WidgetLine.h"

using namespace gui;

namespace {

// 10,20 100 x 50; direction, frame size and gaps as given; page 1 shown.
QString menu(const QString &direction, int frameW, int frameH, int gapV, int gapH)
{
    return QStringLiteral("slidemenuPro_0:m,10,20,100,50,0x0000,0,Page0001,,%1,Disable,%2,%3,,,%4,%5,Disable,1;")
        .arg(direction)
        .arg(frameW)
        .arg(frameH)
        .arg(gapV)
        .arg(gapH);
}

} // namespace

class TestMenuCanvas : public QObject, Fixture
{
    Q_OBJECT
private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    // 200 x 60 at Y 40; the reference line on page row 70 is row 30 of the
    // picture; the frame in the line colour, the inside only tinted.
    void curveLook()
    {
        EditBuffer curve;
        QCOMPARE(WidgetLine::parse("curve_0:0xFFFF,10,40,200,60,70,0,0,0xFF0000,0,2,1,L_to_R,256,0,c,1;", curve),
                 ParseStatus::Ok);
        const QImage image = MenuRenderers::renderCurve(curve, root());
        QCOMPARE(image.size(), QSize(200, 60));
        const QRgb red = qRgb(255, 0, 0);
        QCOMPARE(image.pixel(0, 10), red);   // left edge
        QCOMPARE(image.pixel(199, 59), red); // last corner
        QCOMPARE(image.pixel(2, 30), red);   // the first dash of the reference line
        QVERIFY(image.pixel(2, 29) != red && image.pixel(100, 10) != red);
        // a reference line below the widget draws nothing across it
        curve.setNumber("y_ReferenceLine", 200);
        QVERIFY(MenuRenderers::renderCurve(curve, root()).pixel(2, 30) != red);

        // on the canvas the curve shows its picture at its own size
        project(blankPages(1), {{"curve_0:0xFFFF,10,40,200,60,70,0,0,0xFF0000,0,2,1,L_to_R,256,0,c,1;"}});
        QVERIFY(openWindow());
        QLabel *label = m_w->canvasWidgets()->find("curve_0");
        QVERIFY(label && label->pixmap() && !label->pixmap()->isNull());
        QCOMPARE(label->geometry(), QRect(10, 40, 200, 60));
    }

    // A drag to the far right or bottom of the 400 x 300 canvas (press at
    // 20,30, 10,10 inside the menu): the usual clamp gives left 300 or top
    // 250; a set direction holds the menu back by gap + frame.
    void slideMenuDrag_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("sideways: 400 - (100 + 10 + 60)") << menu("Horizontal", 60, 40, 5, 10) << QPoint(1000, 30)
                                                         << QPoint(230, 20);
        QTest::newRow("upright: 300 - (50 + 5 + 40)") << menu("Vertical", 60, 40, 5, 10) << QPoint(30, 1000)
                                                       << QPoint(20, 205);
        QTest::newRow("upright leaves the width alone") << menu("Vertical-Loop", 60, 40, 5, 10) << QPoint(1000, 30)
                                                         << QPoint(300, 20);
        // frame width 0: page 1's picture, 80 wide: 400 - (100 + 0 + 80)
        QTest::newRow("frame from the page's picture") << menu("Horizontal", 0, 0, 0, 0) << QPoint(1000, 30)
                                                        << QPoint(220, 20);
        // more than the canvas: held at 0
        QTest::newRow("too wide to keep") << menu("Horizontal", 300, 40, 5, 10) << QPoint(1000, 30) << QPoint(0, 20);
    }

    void slideMenuDrag()
    {
        QFETCH(QString, line);
        QFETCH(QPoint, to);
        QFETCH(QPoint, expected);
        project({PageList::blankLine(0), PageList::pictureLine(1, "0001_list.png")}, {{line}, {}});
        QImage list(80, 40, QImage::Format_RGB32);
        list.fill(Qt::darkGreen);
        QVERIFY(list.save(root() + "Picture/0001_list.png"));
        QVERIFY(openWindow());
        press(QPoint(20, 30));
        move(to);
        release(to);
        EditBuffer moved;
        WidgetLine::parse(m_w->currentPageLines().value(0), moved);
        QCOMPARE(QPoint(moved.x(), moved.y()), expected);
        QCOMPARE(m_w->canvasWidgets()->find("slidemenuPro_0")->pos(), expected);
    }
};

QTEST_MAIN(TestMenuCanvas)
#include "tst_menu_canvas.moc"
