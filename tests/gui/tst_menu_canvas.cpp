// The canvas look of the curve and the qrcode (its modules where the QR code
// generator puts them), the one video a page can hold, and a dragged
// slidemenuPro that keeps room on the canvas for its next item.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "designer/MediaRenderers.h"
#include "designer/MenuRenderers.h"

#include <qrcodegen.hpp>

using namespace gui;
using look::at;

namespace {

constexpr QRgb kBlack = 0xFF000000, kWhite = 0xFFFFFFFF;

EditBuffer qrcode(const QString &content, int steps, int w, int h)
{
    EditBuffer b;
    WidgetLine::parse(QString("qrcode_0:q,0xFFFF,0x0000,64,0,0,%1,%2,%3,%4,1;").arg(w).arg(h).arg(steps).arg(content), b);
    return b;
}

// 10,20 100 x 50; direction, frame size and gaps as given; page 1 shown.
QString menu(const QString &direction, int frameW, int frameH, int gapV, int gapH)
{
    return QStringLiteral("slidemenuPro_0:m,10,20,100,50,0x0000,0,Page0001,,%1,Disable,%2,%3,,,%4,%5,Disable,1;")
        .arg(direction).arg(frameW).arg(frameH).arg(gapV).arg(gapH);
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
        addColumns<QString, QPoint, QPoint>("line", "to", "expected");
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
        look::solid(root() + "Picture/0001_list.png", {80, 40}, qRgb(0, 128, 0));
        QVERIFY(openWindow());
        drag(QPoint(20, 30), to);
        EditBuffer moved;
        WidgetLine::parse(m_w->currentPageLines().value(0), moved);
        QCOMPARE(QPoint(moved.x(), moved.y()), expected);
        QCOMPARE(m_w->canvasWidgets()->find("slidemenuPro_0")->pos(), expected);
    }

    // "A" is a version 1 code, 21 modules, on 50 pixels: module i starts at
    // i x 50 / 21 truncated (0, 2, 4, 7, 9, 11, 14, 16, ...). The finder in
    // the corner is dark on modules 0-6 of row 0 (pixels 0-15), light on
    // module 7 (16-18); in row 1 module 1 (pixels 2-3) is light; its centre,
    // modules 2-4, is dark (module 2 of row 3: pixel 5, 7).
    void finderAtAnUnevenScale_data()
    {
        addColumns<QPoint, QRgb>("pixel", "colour");
        QTest::newRow("row 0, module 6") << QPoint(15, 1) << kBlack;
        QTest::newRow("row 0, module 7") << QPoint(16, 0) << kWhite;
        QTest::newRow("row 1, module 1") << QPoint(2, 2) << kWhite;
        QTest::newRow("centre") << QPoint(5, 7) << kBlack;
        QTest::newRow("beyond the side") << QPoint(55, 52) << kWhite;
    }
    void finderAtAnUnevenScale()
    {
        QFETCH(QPoint, pixel);
        const QImage image = MediaRenderers::renderQrcode(qrcode("A", 1, 60, 55), QString());
        QCOMPARE(image.size(), QSize(60, 55)); // the widget's rectangle, white beyond the code
        QTEST(at(image, pixel.x(), pixel.y()), "colour");
    }

    // Two steps of 50 for a 25-module code (version 2): 4 pixels a module,
    // each one dark exactly where the generator says.
    void everyModule()
    {
        const QString url = "https://www.example.com";
        const QImage image = MediaRenderers::renderQrcode(qrcode(url, 2, 100, 100), QString());
        const auto code = qrcodegen::QrCode::encodeText(url.toUtf8().constData(), qrcodegen::QrCode::Ecc::LOW);
        QCOMPARE(code.getSize(), 25);
        QCOMPARE(image.size(), QSize(100, 100));
        for (int y = 0; y < 25; ++y)
            for (int x = 0; x < 25; ++x)
                for (const QPoint corner : {QPoint(4 * x, 4 * y), QPoint(4 * x + 3, 4 * y + 3)})
                    QCOMPARE(at(image, corner.x(), corner.y()), code.getModule(x, y) ? kBlack : kWhite);
    }

    void tooLong()
    {
        // 3000 bytes are more than the largest code holds (2953)
        QString problem;
        QVERIFY(MediaRenderers::renderQrcode(qrcode(QString(3000, 'a'), 1, 50, 50), QString(), &problem).isNull());
        QCOMPARE(problem, QString("q: the content is too long for a QR code"));
    }

    // A page holds one video: its slot table has no room for a second,
    // and a line of a second is refused by its index.
    void oneVideoPerPage()
    {
        QLabel canvas;
        CanvasWidgets widgets(&canvas);
        QCOMPARE(widgets.load("video_0:v,0xFFFF,0,0,10,10;", 1.0f, QString()), QString());
        QCOMPARE(widgets.lowestFree(WidgetKind::Video), -1);
        QCOMPARE(widgets.load("video_1:v,0xFFFF,0,0,10,10;", 1.0f, QString()), QString("Error Video index:1"));
    }
};

QTEST_MAIN(TestMenuCanvas)
#include "tst_menu_canvas.moc"
