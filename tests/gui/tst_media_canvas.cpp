// The media kinds on the canvas: the qrcode's modules where the QR code
// generator puts them, at the scale its size step gives, and the one video
// a page can hold.

#include "designer/CanvasWidgets.h"
#include "designer/MediaRenderers.h"
#include "widgets/WidgetLine.h"

#include <QLabel>
#include <QtTest>

#include <qrcodegen.hpp>

using namespace vantile;

namespace {

constexpr QRgb kBlack = 0xFF000000, kWhite = 0xFFFFFFFF;

EditBuffer qrcode(const QString &content, int steps, int w, int h)
{
    EditBuffer b;
    WidgetLine::parse(QString("qrcode_0:q,0xFFFF,0x0000,64,0,0,%1,%2,%3,%4,1;").arg(w).arg(h).arg(steps).arg(content), b);
    return b;
}

QRgb at(const QImage &image, int x, int y) { return image.convertToFormat(QImage::Format_ARGB32).pixel(x, y); }

} // namespace

class TestMediaCanvas : public QObject
{
    Q_OBJECT

private slots:
    // "A" is a version 1 code, 21 modules, on 50 pixels: module i starts at
    // i x 50 / 21 truncated (0, 2, 4, 7, 9, 11, 14, 16, ...). The finder in
    // the corner is dark on modules 0-6 of row 0 (pixels 0-15), light on
    // module 7 (16-18); in row 1 module 1 (pixels 2-3) is light; its centre,
    // modules 2-4, is dark (module 2 of row 3: pixel 5, 7).
    void finderAtAnUnevenScale_data()
    {
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<QRgb>("colour");
        QTest::newRow("row 0, module 6") << QPoint(15, 1) << kBlack;
        QTest::newRow("row 0, module 7") << QPoint(16, 0) << kWhite;
        QTest::newRow("row 1, module 1") << QPoint(2, 2) << kWhite;
        QTest::newRow("centre") << QPoint(5, 7) << kBlack;
        QTest::newRow("beyond the side") << QPoint(55, 52) << kWhite;
    }
    void finderAtAnUnevenScale()
    {
        QFETCH(QPoint, pixel);
        QFETCH(QRgb, colour);
        const QImage image = MediaRenderers::renderQrcode(qrcode("A", 1, 60, 55), QString());
        QCOMPARE(image.size(), QSize(60, 55)); // the widget's rectangle, white beyond the code
        QCOMPARE(at(image, pixel.x(), pixel.y()), colour);
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

QTEST_MAIN(TestMediaCanvas)
#include "tst_media_canvas.moc"
