// The canvas driven by real mouse and key events on the offscreen
// platform: drawing a widget, the release outside the canvas, dragging to
// the edge, the resize corner, arrow keys; each checked in the page lines.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "designer/CanvasWidgets.h"
#include "project/AppPaths.h"
#include "project/PageList.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

} // namespace

class TestCanvas : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr;
    MainWindow *m_w = nullptr;
    QLabel *m_canvas = nullptr;

    QString root() const { return m_dir->path() + QLatin1Char('/'); }

    void open(const QStringList &page0)
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        writeFile(root() + QStringLiteral("p.uiprj"), TextFiles::encodePlain({PageList::blankLine(0)}));
        writeFile(root() + QStringLiteral("p.ini"), "[INFO]\nSupplierVer: V3.20\nXSIZE: 400\nYSIZE: 300\n");
        writeFile(root() + QStringLiteral("Plugin/Page0000.cfg"), TextFiles::encodePlain(page0));
        m_w = new MainWindow;
        m_w->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_w));
        QVERIFY(m_w->openProjectFile(root() + QStringLiteral("p.uiprj")));
        m_canvas = m_w->findChild<QLabel *>(QStringLiteral("label_Show"));
        QCOMPARE(m_canvas->pixmap()->size(), QSize(400, 300));
    }

    void press(const QPoint &p) { QTest::mousePress(m_canvas, Qt::LeftButton, {}, p); }
    void move(const QPoint &p)
    {
        QMouseEvent e(QEvent::MouseMove, p, m_canvas->mapToGlobal(p), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_canvas, &e);
    }
    void release(const QPoint &p) { QTest::mouseRelease(m_canvas, Qt::LeftButton, {}, p); }

    QString line(int i) const { return m_w->currentPageLines().value(i); }

private slots:
    void initTestCase()
    {
        AppPaths::setAppDirOverride(m_appDir.path());
        QFile::copy(QStringLiteral(VANTILE_QM_DIR "/Translate_EN.qm"), m_appDir.path() + QStringLiteral("/Translate_EN.qm"));
    }

    void init()
    {
        m_dir = new QTemporaryDir;
        Prompts::installResponder({});
    }

    void cleanup()
    {
        delete m_w;
        m_w = nullptr;
        Prompts::removeResponder();
        delete m_dir;
    }

    void drawSmallRectangleMakesTwentyByTwenty()
    {
        open({});
        m_w->action(QStringLiteral("AddButton"))->trigger();
        QVERIFY(m_w->addMode());
        QCOMPARE(m_w->addToolWord(), QStringLiteral("Button"));
        press(QPoint(30, 40));
        move(QPoint(35, 45));
        release(QPoint(35, 45));
        QCOMPARE(line(0), QStringLiteral("button_0:30,40,20,20,0x0020,,,,button_0,Disable,Disable,0x0000,0xFFFF,1;"));
        QCOMPARE(m_w->canvasWidgets()->find(QStringLiteral("button_0"))->geometry(), QRect(30, 40, 20, 20));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));
        // add mode lasts: a second drawing makes button_1
        press(QPoint(100, 100));
        release(QPoint(160, 130));
        QCOMPARE(line(1), QStringLiteral("button_1:100,100,60,30,0x0020,,,,button_1,Disable,Disable,0x0000,0xFFFF,1;"));
        QVERIFY(m_w->history().step(0) >= 2);
    }

    void releaseBeyondTheCanvasMakesNothing()
    {
        open({});
        m_w->action(QStringLiteral("AddButton"))->trigger();
        press(QPoint(390, 290));
        release(QPoint(400, 295)); // x past the last column
        QVERIFY(m_w->currentPageLines().isEmpty());
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("The focus is out of the effective range"));
    }

    void kindWithoutSchemaMakesNothing()
    {
        open({});
        m_w->action(QStringLiteral("AddSlider"))->trigger();
        press(QPoint(10, 10));
        release(QPoint(60, 60));
        QVERIFY(m_w->currentPageLines().isEmpty());
    }

    void dragStopsAtTheRightEdge()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        press(QPoint(20, 15));
        move(QPoint(200, 15));
        move(QPoint(1000, 15));
        release(QPoint(1000, 15));
        // last column of the widget on the last column of the canvas: 350 + 50 = 400
        QCOMPARE(line(0), QStringLiteral("button_0:350,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;"));
        QCOMPARE(m_w->history().step(0), 1); // one step for the whole drag
    }

    void cornerPressResizesAtNineMovesAtTen()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        // 9 pixels from right and bottom edge (right edge at 60, bottom at 30)
        press(QPoint(51, 21));
        move(QPoint(71, 31));
        release(QPoint(71, 31));
        QCOMPARE(line(0), QStringLiteral("button_0:10,10,70,30,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;"));
        // exactly 10 from both edges (right edge now at 80, bottom at 40): a move
        press(QPoint(70, 30));
        move(QPoint(75, 35));
        release(QPoint(75, 35));
        QCOMPARE(line(0), QStringLiteral("button_0:15,15,70,30,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;"));
    }

    void resizeCornerCursor()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        press(QPoint(20, 15));
        release(QPoint(20, 15));
        auto hover = [this](const QPoint &p) {
            QMouseEvent e(QEvent::MouseMove, p, m_canvas->mapToGlobal(p), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(m_canvas, &e);
        };
        hover(QPoint(30, 20)); // inside
        QCOMPARE(m_w->hoverState(), 2);
        hover(QPoint(52, 22)); // the last 9 pixels on both axes
        QCOMPARE(m_w->hoverState(), 1);
        QCOMPARE(m_canvas->cursor().shape(), Qt::SizeFDiagCursor);
        hover(QPoint(100, 100)); // outside
        QCOMPARE(m_w->hoverState(), 0);
    }

    void lockedWidgetIsNotDragged()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,2;")});
        press(QPoint(20, 15));
        move(QPoint(100, 100));
        release(QPoint(100, 100));
        QCOMPARE(line(0), QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,2;"));
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QCOMPARE(line(0), QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,2;"));
    }

    void arrowKeysMoveOnePixelAndTakeAStepEach()
    {
        open({QStringLiteral("button_0:0,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        press(QPoint(5, 15));
        release(QPoint(5, 15));
        QTest::keyClick(m_canvas, Qt::Key_Left); // already at 0: stays
        QCOMPARE(line(0).left(14), QStringLiteral("button_0:0,10,"));
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QTest::keyClick(m_canvas, Qt::Key_Down);
        QCOMPARE(line(0).left(14), QStringLiteral("button_0:1,11,"));
        QCOMPARE(m_w->history().step(0), 3);
    }

    void rubberBandSelectsWholeWidgetsOnly()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_1:100,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_2:10,100,50,20,0x0020,,,,c,Disable,Disable,0x0000,0xFFFF,1;")});
        // a band that cuts through button_1 holds only button_0
        press(QPoint(5, 5));
        move(QPoint(120, 40));
        release(QPoint(120, 40));
        QCOMPARE(m_w->selectCount(), 1);
        QVERIFY(m_w->groupActive()); // one widget still makes a group
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));

        // a band from bottom right to top left around button_0 and button_2
        press(QPoint(70, 130));
        move(QPoint(5, 5));
        release(QPoint(5, 5));
        QCOMPARE(m_w->selectCount(), 2);
        QCOMPARE(m_w->selectedName(), QStringLiteral("select_frame"));
        auto *frame = m_w->findChild<QLabel *>(QStringLiteral("select_frame"));
        QVERIFY(frame && frame->isVisible());
        QCOMPARE(frame->geometry(), QRect(10, 10, 50, 110));

        // dragging the group moves both marked widgets by the same delta
        press(QPoint(20, 20));
        move(QPoint(25, 27));
        release(QPoint(25, 27));
        QCOMPARE(line(0).left(16), QStringLiteral("button_0:15,17,5"));
        QCOMPARE(line(1).left(17), QStringLiteral("button_1:100,10,5"));
        QCOMPARE(line(2).left(16), QStringLiteral("button_2:15,107,"));
        // an arrow key moves the group too
        QTest::keyClick(m_canvas, Qt::Key_Left);
        QCOMPARE(line(0).left(16), QStringLiteral("button_0:14,17,5"));
        QCOMPARE(line(2).left(16), QStringLiteral("button_2:14,107,"));
    }

    void zoomStepsAndLimits()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        auto *zoomLabel = m_w->findChild<QLabel *>(QStringLiteral("statusLabel_Zoom"));
        for (int i = 0; i < 11; ++i)
            m_w->action(QStringLiteral("actionZoomin"))->trigger();
        // 1.0 + ten steps of 0.2 passes 3.0 in float and stops there
        QVERIFY(m_w->zoomFactor() > 2.99f && m_w->zoomFactor() < 3.21f);
        const float top = m_w->zoomFactor();
        m_w->action(QStringLiteral("actionZoomin"))->trigger();
        QCOMPARE(m_w->zoomFactor(), top);
        QCOMPARE(zoomLabel->text(), QStringLiteral("UI Page: %1%  ").arg(int(100 * top)));
        // the widget is drawn at the scale, its line is unchanged
        QCOMPARE(m_w->canvasWidgets()->find(QStringLiteral("button_0"))->geometry().left(), int(10 * top));
        QCOMPARE(line(0), QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;"));
        m_w->action(QStringLiteral("actionOriginal"))->trigger();
        QCOMPARE(m_w->zoomFactor(), 1.0f);
        QCOMPARE(zoomLabel->text(), QStringLiteral("UI Page: 100%  "));
        for (int i = 0; i < 5; ++i)
            m_w->action(QStringLiteral("actionZoomout"))->trigger();
        // 1.0 -> 0.8 -> 0.6 (a little above in float) -> about 0.4, then no further
        QVERIFY(m_w->zoomFactor() > 0.39f && m_w->zoomFactor() < 0.61f);
        QVERIFY(m_w->zoomFactor() >= 0.39f);
    }

    void arrowAtTwoHundredPercentNeedsTwoPresses()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        for (int i = 0; i < 5; ++i)
            m_w->action(QStringLiteral("actionZoomin"))->trigger(); // about 2.0
        QVERIFY(qAbs(m_w->zoomFactor() - 2.0f) < 0.01f);
        press(QPoint(30, 30));
        release(QPoint(30, 30));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));
        // one canvas pixel a press; the stored X is the canvas left divided by the zoom, truncated
        const float z = m_w->zoomFactor();
        const int left0 = m_w->canvasWidgets()->find(QStringLiteral("button_0"))->x();
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QCOMPARE(line(0).mid(9, 3), QStringLiteral("10,")); // half a pixel: nothing stored yet
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QCOMPARE(line(0).mid(9, 3), QStringLiteral("%1,").arg(int((left0 + 3) / z)));
        QCOMPARE(line(0).mid(9, 3), QStringLiteral("11,"));
    }

    void lockAndDelete()
    {
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_1:100,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        press(QPoint(20, 15));
        release(QPoint(20, 15));
        m_w->action(QStringLiteral("actionLock"))->trigger();
        QCOMPARE(line(0), QStringLiteral("button_0:10,10,50,20,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,2;"));
        press(QPoint(20, 15));
        move(QPoint(80, 80));
        release(QPoint(80, 80));
        QCOMPARE(line(0).left(15), QStringLiteral("button_0:10,10,"));
        // a locked widget is still deleted
        m_w->action(QStringLiteral("actionDelete"))->trigger();
        QCOMPARE(m_w->currentPageLines().size(), 1);
        QVERIFY(line(0).startsWith(QStringLiteral("button_1:")));
        QVERIFY(!m_w->canvasWidgets()->find(QStringLiteral("button_0")));
        QCOMPARE(m_w->selectedName(), QStringLiteral("label_Show"));
        // the slot is free again: the next button takes index 0
        m_w->action(QStringLiteral("AddButton"))->trigger();
        press(QPoint(200, 200));
        release(QPoint(230, 230));
        QVERIFY(line(1).startsWith(QStringLiteral("button_0:200,200,30,30,")));
    }

    void alignWithABand()
    {
        open({QStringLiteral("button_0:10,10,100,20,0x0020,,,,ref,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_1:200,100,30,60,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_2:300,100,30,10,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        // no reference yet
        m_w->action(QStringLiteral("actionRight_Align"))->trigger();
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Please choose one reference widget first!"));
        press(QPoint(20, 15)); // button_0 is the reference: 100 wide at X 10
        release(QPoint(20, 15));
        m_w->action(QStringLiteral("actionRight_Align"))->trigger();
        press(QPoint(190, 90));
        move(QPoint(250, 200));
        release(QPoint(250, 200));
        // 10 + 100 - 30
        QVERIFY(line(1).startsWith(QStringLiteral("button_1:80,100,30,60,")));
        QVERIFY(line(2).startsWith(QStringLiteral("button_2:300,100,"))); // outside the band
        const int steps = m_w->history().step(0);

        // bottom align: reference 20 high at Y 10, widget 60 high: 10 + 20 - 60 < 0, and the
        // reference is not higher than the widget, so Y becomes 0
        m_w->action(QStringLiteral("actionBottom_Align"))->trigger();
        press(QPoint(70, 90));
        release(QPoint(120, 200));
        QVERIFY(line(1).startsWith(QStringLiteral("button_1:80,0,30,60,")));
        QCOMPARE(m_w->history().step(0), steps + 1);
    }

    void equidistanceNeedsThreeWidgets()
    {
        open({QStringLiteral("button_0:10,10,20,20,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_1:100,10,20,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_2:31,10,20,20,0x0020,,,,c,Disable,Disable,0x0000,0xFFFF,1;")});
        // two widgets in the band: nothing moves, a step is still taken
        m_w->action(QStringLiteral("actionLevel_layout"))->trigger();
        press(QPoint(5, 5));
        release(QPoint(60, 60));
        QVERIFY(line(2).startsWith(QStringLiteral("button_2:31,")));
        QCOMPARE(m_w->history().step(0), 1);
        // three: sorted by X 10, 31, 100; gap (100 - 10) / 2 = 45; the middle one goes to 55
        press(QPoint(5, 5));
        release(QPoint(200, 60));
        QVERIFY(line(0).startsWith(QStringLiteral("button_0:10,")));
        QVERIFY(line(1).startsWith(QStringLiteral("button_1:100,")));
        QVERIFY(line(2).startsWith(QStringLiteral("button_2:55,")));
    }

    void copyPasteAcrossPagesAndClone()
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        open({QStringLiteral("button_0:10,10,50,20,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,2;"),
              QStringLiteral("button_1:380,100,20,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")});
        m_w->action(QStringLiteral("actionWidget_Copy"))->trigger();
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Please select the widgets"));
        // a band around both, then copy
        m_w->resize(1600, 1000);
        press(QPoint(5, 5));
        release(QPoint(405 - 4, 125));
        QCOMPARE(m_w->selectCount(), 2);
        m_w->action(QStringLiteral("actionWidget_Copy"))->trigger();
        QCOMPARE(m_w->copyList().size(), 2);
        // paste on the same page: on top of the sources, new names, the lock undone
        m_w->action(QStringLiteral("actionWidget_Paste"))->trigger();
        QCOMPARE(m_w->currentPageLines().size(), 4);
        QCOMPARE(line(2), QStringLiteral("button_2:10,10,50,20,0x0020,,,,button_2,Disable,Disable,0x0000,0xFFFF,1;"));
        QCOMPARE(line(3), QStringLiteral("button_3:380,100,20,20,0x0020,,,,button_3,Disable,Disable,0x0000,0xFFFF,1;"));
        QCOMPARE(m_w->selectedName(), QStringLiteral("select_frame"));
        // the copy survives a page switch; a smaller page can't hold the copied area
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        QCOMPARE(m_w->currentPageRow(), 1);
        m_w->action(QStringLiteral("actionWidget_Paste"))->trigger();
        QCOMPARE(m_w->currentPageLines().size(), 2); // the page is 400 wide: 380 + 20 fits
        // the pasted group's frame lies on top; a right click leaves the group
        QTest::mousePress(m_canvas, Qt::RightButton, {}, QPoint(200, 250));
        // clone: 10 to the right and down, or 10 back at the page's edge
        m_w->selectByName(QStringLiteral("button_1")); // the pasted one at 380,100
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_1"));
        m_w->action(QStringLiteral("actionWidget_Clone"))->trigger();
        QCOMPARE(line(2), QStringLiteral("button_2:370,110,20,20,0x0020,,,,button_2,Disable,Disable,0x0000,0xFFFF,1;"));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_2"));
    }

    void pasteIntoAFullTableReportsOnce()
    {
        QStringList lines;
        for (int i = 0; i < 128; ++i)
            lines << QStringLiteral("button_%1:%2,%3,10,10,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")
                         .arg(i).arg(5 + 10 * (i % 30)).arg(5 + 10 * (i / 30));
        open(lines);
        m_w->resize(1600, 1000);
        press(QPoint(312, 62)); // from an empty spot over all the buttons
        release(QPoint(1, 1)); // (0, 0) would be the widget's centre to the test library
        QCOMPARE(m_w->selectCount(), 128);
        m_w->action(QStringLiteral("actionWidget_Copy"))->trigger();
        // a new page holding one button: room for 127 more
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        m_w->action(QStringLiteral("AddButton"))->trigger();
        press(QPoint(150, 150));
        release(QPoint(190, 190));
        QTest::mousePress(m_canvas, Qt::RightButton, {}, QPoint(5, 200));
        QCOMPARE(m_w->currentPageLines().size(), 1);
        Prompts::recorded().clear();
        m_w->action(QStringLiteral("actionWidget_Paste"))->trigger();
        QCOMPARE(m_w->currentPageLines().size(), 128);
        int reports = 0;
        for (const PromptRecord &r : Prompts::recorded())
            reports += r.text.startsWith(QStringLiteral("Can't paste")) ? 1 : 0;
        QCOMPARE(reports, 1);
    }

    void pasteOntoASmallerPageIsRefused()
    {
        QDir(root()).mkpath(QStringLiteral("Picture"));
        QImage small(200, 100, QImage::Format_RGB32);
        small.fill(Qt::gray);
        QVERIFY(small.save(root() + QStringLiteral("Picture/0001_small.png")));
        open({QStringLiteral("button_0:150,150,40,40,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,1;")});
        writeFile(root() + QStringLiteral("p.uiprj"),
                  TextFiles::encodePlain({PageList::blankLine(0), PageList::pictureLine(1, QStringLiteral("0001_small.png"))}));
        delete m_w;
        m_w = new MainWindow;
        m_w->resize(1600, 1000);
        m_w->show();
        QVERIFY(m_w->openProjectFile(root() + QStringLiteral("p.uiprj")));
        m_canvas = m_w->findChild<QLabel *>(QStringLiteral("label_Show"));
        press(QPoint(140, 140));
        release(QPoint(200, 200));
        QCOMPARE(m_w->selectCount(), 1);
        m_w->action(QStringLiteral("actionWidget_Copy"))->trigger();
        auto *pages = m_w->findChild<QTableView *>(QStringLiteral("tableView_Page"));
        m_w->on_tableView_Page_clicked(pages->model()->index(1, 0));
        QCOMPARE(m_canvas->pixmap()->size(), QSize(200, 100));
        m_w->action(QStringLiteral("actionWidget_Paste"))->trigger();
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Widget is outside of the editing area"));
        QVERIFY(m_w->currentPageLines().isEmpty());
    }

    void pasteTakesAutomaticAddresses()
    {
        open({QStringLiteral("button_0:10,10,20,20,0x0020,,,,a,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_1:40,10,20,20,0x7014,,,,b,Disable,Disable,0x0000,0xFFFF,1;"),
              QStringLiteral("button_2:70,10,20,20,0x0031,,,,c,Disable,Disable,0x0000,0xFFFF,1;")});
        // the scan at open: 0x0031 is the highest address below the system range
        QCOMPARE(m_w->nextWriteAddress(), quint32(0x32));
        m_w->resize(1600, 1000);
        press(QPoint(5, 5));
        release(QPoint(95, 35));
        QCOMPARE(m_w->selectCount(), 3);
        m_w->action(QStringLiteral("actionWidget_Copy"))->trigger();
        // the dialog: automatic addresses from 0x1000
        m_w->action(QStringLiteral("actionWriteAddr"))->trigger();
        auto *dialog = m_w->findChild<QDialog *>(QStringLiteral("DialogWdgVar"));
        QVERIFY(dialog && dialog->isVisible());
        dialog->findChild<QCheckBox *>(QStringLiteral("checkBox_AutoAddr"))->setChecked(true);
        dialog->findChild<QLineEdit *>(QStringLiteral("lineEdit"))->setText(QStringLiteral("0x1000"));
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("pushButton_OK")), Qt::LeftButton);
        QCOMPARE(m_w->nextWriteAddress(), quint32(0x1000));
        m_w->action(QStringLiteral("actionWidget_Paste"))->trigger();
        QCOMPARE(line(3).mid(21, 6), QStringLiteral("0x1000"));
        QCOMPARE(line(4).mid(21, 6), QStringLiteral("0x1001"));
        QCOMPARE(line(5).mid(21, 6), QStringLiteral("0x1002"));
        // with the check off a paste keeps the source's address
        m_w->action(QStringLiteral("actionWriteAddr"))->trigger();
        dialog->findChild<QCheckBox *>(QStringLiteral("checkBox_AutoAddr"))->setChecked(false);
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("pushButton_OK")), Qt::LeftButton);
        m_w->action(QStringLiteral("actionWidget_Paste"))->trigger();
        QCOMPARE(line(6).mid(21, 6), QStringLiteral("0x0020"));
    }

    void pageSwitchEndsAddMode()
    {
        open({});
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        m_w->action(QStringLiteral("AddButton"))->trigger();
        QVERIFY(m_w->addMode());
        auto *pages = m_w->findChild<QTableView *>(QStringLiteral("tableView_Page"));
        m_w->on_tableView_Page_clicked(pages->model()->index(0, 0));
        QVERIFY(!m_w->addMode());
    }

    void rightClickEndsAddMode()
    {
        open({});
        m_w->action(QStringLiteral("AddButton"))->trigger();
        QTest::mousePress(m_canvas, Qt::RightButton, {}, QPoint(5, 5));
        QVERIFY(!m_w->addMode());
        QCOMPARE(m_w->selectedName(), QStringLiteral("label_Show"));
    }
};

QTEST_MAIN(TestCanvas)
#include "tst_canvas.moc"
