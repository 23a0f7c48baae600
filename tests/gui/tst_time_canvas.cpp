// The canvas look of the time kinds at 2026-05-28 (a Thursday) 10:10:30:
// digits from a run of pictures each in its own colour, a clock's hands
// where the time puts them; and the keyboards' family look.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "designer/TimeRenderers.h"
#include "designer/WidgetLook.h"
#include "widgets/WidgetLine.h"

using namespace gui;

namespace {

constexpr QRgb kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;

// The picture at place p of a run (digit, minus 10, point 11, colon 12).
QRgb placeColour(int p) { return qRgb(20 * p, 255 - 20 * p, 40); }

EditBuffer widget(WidgetKind kind, const QRect &rect, const QVector<QPair<const char *, QString>> &texts)
{
    EditBuffer b = WidgetLine::createNew(kind, 0, rect);
    for (const auto &[key, text] : texts)
        b.setValue(b.definition()->indexOf(key), WidgetLine::readLineText(*b.definition()->find(key), text));
    return b;
}

QRgb at(const QImage &image, int x, int y) { return image.convertToFormat(QImage::Format_ARGB32).pixel(x, y); }

} // namespace

class TestTimeCanvas : public QObject, Fixture
{
    Q_OBJECT

    void solid(const QString &name, const QSize &size, QRgb colour)
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(colour);
        QVERIFY(image.save(root() + "Icon/" + name));
    }
    // Icon/0020 ... 0032: a run of 4 x 6 pictures, place p in placeColour(p).
    void run()
    {
        project({PageList::blankLine(0)});
        for (int p = 0; p <= 12; ++p)
            solid(QString("%1_d.png").arg(20 + p, 4, 10, QLatin1Char('0')), {4, 6}, placeColour(p));
    }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    // RTC formats at the fixed moment; a timer's preset 3725 s is 1 h 2 min 5 s.
    void digits_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("last");
        QTest::addColumn<QVector<int>>("places");
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
};

QTEST_MAIN(TestTimeCanvas)
#include "tst_time_canvas.moc"
