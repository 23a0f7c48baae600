// The widget adjust dialog as the user meets it, for each of its eight
// kinds: a double click on the widget opens it on the widget's values and
// picture, numbers and the mouse move the rectangle together, OK writes
// the line with one history step, Cancel leaves everything, a lock holds.
//
// Every case: a 400 x 300 page, black, with one widget at 100,80, 120 x 60
// whose picture (Icon/0001_pic.png) is 120 x 60 of pure red. The preview
// fits the page into 720 x 450 at most twice: min(2, 720/400, 450/300) = 1.5.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "editors/DialogAdjust.h"

using namespace gui;
Q_DECLARE_METATYPE(vantile::WidgetKind)

class TestAdjustDialog : public QObject, public Fixture
{
    Q_OBJECT

    QString m_name;
    Dialog *m_d = nullptr;

    // The widget's line on page 0 (lock 2: locked), the window, and the
    // dialog opened by a double click on the widget on the canvas.
    void openOn(WidgetKind kind, const char *picture, int lock)
    {
        EditBuffer b = look::widget(kind, QRect(100, 80, 120, 60), {});
        if (*picture)
            b.setText(picture, "0001_pic.png");
        b.setLockState(lock);
        m_name = b.objectName();
        project(blankPages(1), {{WidgetLine::write(b)}});
        look::solid(root() + "Icon/0001_pic.png", QSize(120, 60), look::kRed);
        QVERIFY(openWindow());
        doubleClick(QPoint(130, 95));
        m_d = m_w->findChild<Dialog *>("Dialog");
        QVERIFY(m_d && m_d->isVisible());
    }
    void doubleClick(const QPoint &at) // as the system sends it: press, release, double click
    {
        click(at);
        QTest::mouseDClick(m_canvas, Qt::LeftButton, {}, at);
    }
    QLineEdit *edit(const char *name) { return m_d->findChild<QLineEdit *>(QLatin1String("lineEdit_") + name); }
    QString shown(const char *name) { return edit(name)->text(); }
    QString shownRect() { return QStringList({shown("X"), shown("Y"), shown("W"), shown("H")}).join(','); }
    void type(const char *name, const QString &text)
    {
        edit(name)->selectAll();
        QTest::keyClicks(edit(name), text);
        QTest::keyClick(edit(name), Qt::Key_Return);
    }
    void dragPreview(const QPoint &from, const QPoint &to)
    {
        QLabel *img = m_d->findChild<QLabel *>("label_Img");
        QTest::mousePress(img, Qt::LeftButton, {}, from);
        QMouseEvent e(QEvent::MouseMove, to, img->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(img, &e);
        QTest::mouseRelease(img, Qt::LeftButton, {}, to);
    }
    QStringList fields() const // after the colon of the widget's line
    {
        const QString line = m_w->currentPageLines().filter(QRegularExpression('^' + m_name + ':')).value(0);
        return line.section(':', 1).chopped(1).split(',');
    }
    void press(const char *button)
    {
        m_d->findChild<QPushButton *>(button)->click();
        QVERIFY(!m_d->isVisible());
        for (QWidget *mask : m_w->findChildren<QWidget *>("Background_mask"))
            QVERIFY(!mask->isVisible());
    }

    // The eight kinds: kind, its picture field, where X stands in its line (Y, W, H follow),
    // and lock 1 (free); with `locked` each once more with lock 2.
    void kinds_data(bool locked = false)
    {
        addColumns<WidgetKind, QString, int, int>("kind", "picture", "xAt", "lock");
        for (int lock = 1; lock <= (locked ? 2 : 1); ++lock) {
            const char *tag = lock == 2 ? " locked" : "";
            QTest::addRow("slider%s", tag) << WidgetKind::Slider << "background" << 0 << lock;
            // before X: progress writeAddr, parameterAddr; rProgress parameterAddr, writeAddr;
            // rtouch writeAddr; keypad writeAddr, byteLength; enkeyB, cnkeyB name, writeAddr, wordLength
            QTest::addRow("progress%s", tag) << WidgetKind::Progress << "background" << 2 << lock;
            QTest::addRow("rProgress%s", tag) << WidgetKind::RProgress << "background" << 2 << lock;
            QTest::addRow("rtouch%s", tag) << WidgetKind::RTouch << "background" << 1 << lock;
            QTest::addRow("keypad%s", tag) << WidgetKind::Keypad << "" << 2 << lock;
            QTest::addRow("enkeyB%s", tag) << WidgetKind::ENKeyB << "" << 3 << lock;
            QTest::addRow("cnkeyB%s", tag) << WidgetKind::CNKeyB << "" << 3 << lock;
            QTest::addRow("popbox%s", tag) << WidgetKind::PopBox << "unpressedIcon" << 0 << lock;
        }
    }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

#define KIND_ROW                                                                                                       \
    QFETCH(WidgetKind, kind);                                                                                          \
    QFETCH(QString, picture);                                                                                          \
    QFETCH(int, xAt);                                                                                                  \
    QFETCH(int, lock);                                                                                                 \
    openOn(kind, qPrintable(picture), lock);                                                                           \
    if (QTest::currentTestFailed())                                                                                    \
        return;                                                                                                        \
    const bool ring = kind == WidgetKind::RTouch || kind == WidgetKind::RProgress;                                     \
    Q_UNUSED(ring);                                                                                                    \
    Q_UNUSED(xAt);

    void opensOnTheWidget_data() { kinds_data(); }
    void opensOnTheWidget()
    {
        KIND_ROW
        QCOMPARE(shownRect(), QString("100,80,120,60"));
        QCOMPARE(!edit("CenX")->isHidden(), ring);
        if (ring) // the middle: 100 + 120/2, 80 + 60/2
            QCOMPARE(QStringList({shown("CenX"), shown("CenY")}), QStringList({"160", "110"}));
        // a quarter into the rectangle, (130, 95) on the page, is (195, 142) on the preview:
        // the red picture, or for a keyboard the black page under the rectangle's green tint
        const QRgb px = look::at(m_d->findChild<QLabel *>("label_Img")->pixmap(Qt::ReturnByValue).toImage(), 195, 142);
        QVERIFY2(picture.isEmpty() ? qRed(px) == 0 && qGreen(px) > 0 : px == look::kRed,
                 qPrintable(QString::number(px, 16)));
    }

    void editsMoveTheirPartners_data() { kinds_data(); }
    void editsMoveTheirPartners()
    {
        KIND_ROW
        type("X", "330"); // 330 + 120 leaves the 400 wide page: back to 400 - 120 = 280
        QCOMPARE(shown("X"), QString("280"));
        QCOMPARE(m_d->rectangle(), QRect(280, 80, 120, 60));
        type("Y", "abc"); // no digits: 0
        QCOMPARE(m_d->rectangle(), QRect(280, 0, 120, 60));
        if (!ring)
            return;
        QCOMPARE(shown("CenX"), QString("340")); // 280 + 60
        type("CenX", "200");                    // 200 - 120/2 = 140, the size stays
        type("CenY", "150");                    // 150 - 60/2 = 120
        QCOMPARE(m_d->rectangle(), QRect(140, 120, 120, 60));
        QCOMPARE(shownRect(), QString("140,120,120,60"));
    }

    void dragOnThePreview_data() { kinds_data(); }
    void dragOnThePreview()
    {
        KIND_ROW
        dragPreview(QPoint(195, 142), QPoint(225, 157)); // 30, 15 preview pixels are 20, 10 on the page
        QCOMPARE(m_d->rectangle(), QRect(120, 90, 120, 60));
        QCOMPARE(shownRect(), QString("120,90,120,60"));
        if (ring)
            QCOMPARE(shown("CenX"), QString("180"));
        // the corner: the rectangle is 180..359 x 135..224 on the preview; 30, 15 more make it
        // 140 x 70, but a pop-up box keeps its picture's size and moves instead
        dragPreview(QPoint(355, 220), QPoint(385, 235));
        QCOMPARE(m_d->rectangle(), kind == WidgetKind::PopBox ? QRect(140, 100, 120, 60) : QRect(120, 90, 140, 70));
        dragPreview(QPoint(5, 5), QPoint(60, 60)); // outside the rectangle: nothing moves
        QCOMPARE(m_d->rectangle().topLeft(), kind == WidgetKind::PopBox ? QPoint(140, 100) : QPoint(120, 90));
    }

    void applyWritesTheLine_data() { kinds_data(); }
    void applyWritesTheLine()
    {
        KIND_ROW
        const int step = m_w->history().step(0);
        type("X", "130");
        dragPreview(QPoint(240, 142), QPoint(270, 157)); // + 20, + 10: 150, 90
        press("pushButton");
        const QStringList f = fields();
        QCOMPARE(f.mid(xAt, 4), QStringList({"150", "90", "120", "60"}));
        if (kind == WidgetKind::Slider) // its touch area is the rectangle
            QCOMPARE(f.mid(4, 4), QStringList({"150", "90", "120", "60"}));
        QCOMPARE(m_w->history().step(0), step + 1);
        QCOMPARE(m_w->canvasWidgets()->find(m_name)->geometry(), QRect(150, 90, 120, 60));
        QCOMPARE(m_w->selectedName(), m_name);
    }

    // Cancel after an edit and a drag; a locked widget can't be typed into or dragged,
    // its OK writes nothing, and a text sent anyway changes nothing.
    void cancelOrLockChangesNothing_data() { kinds_data(true); }
    void cancelOrLockChangesNothing()
    {
        KIND_ROW
        const QStringList lines = m_w->currentPageLines();
        const int step = m_w->history().step(0);
        QCOMPARE(edit("X")->isReadOnly(), lock == 2);
        type("W", "90");
        dragPreview(QPoint(195, 142), QPoint(225, 157));
        QCOMPARE(m_d->rectangle() == QRect(100, 80, 120, 60), lock == 2);
        press(lock == 2 ? "pushButton" : "pushButton_Cancel");
        if (lock == 2)
            m_w->Update_from_Dialog(m_name + ":10,10,50,50");
        QCOMPARE(m_w->currentPageLines(), lines);
        QCOMPARE(m_w->history().step(0), step);
    }

    // A line the dialog can't read leaves it empty, and OK sends nothing; a button
    // is no kind of the dialog's, so a double click on it opens nothing.
    void badInput()
    {
        openOn(WidgetKind::Keypad, "", 1);
        if (QTest::currentTestFailed())
            return;
        QSignalSpy sent(m_d, &Dialog::Update_to_MainWindow);
        m_d->Update_from_MainWindow("Page0000:nothing;");
        m_d->Update_from_MainWindow(button(0, 1, 2, 30, 40));
        QCOMPARE(shown("X"), QString());
        press("pushButton");
        QCOMPARE(sent.count(), 0);
        project(blankPages(1), {{button(0, 100, 80, 120, 60)}});
        QVERIFY(openWindow());
        doubleClick(QPoint(130, 95));
        QVERIFY(!m_w->findChild<Dialog *>("Dialog"));
    }
};

QTEST_MAIN(TestAdjustDialog)
#include "tst_adjust_dialog.moc"
