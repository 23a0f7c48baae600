// The canvas driven by real mouse and key events on the offscreen platform,
// each gesture checked in the page lines.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "widgets/WidgetLine.h"

using namespace gui;

class TestCanvas : public QObject, Fixture
{
    Q_OBJECT

    // A 400 x 300 project whose first page holds the given lines; more
    // page-list lines may follow the first page's.
    void open(const QStringList &page0, const QStringList &morePages = {})
    {
        project(QStringList{PageList::blankLine(0)} + morePages, {page0});
        QVERIFY(openWindow());
        QCOMPARE(m_canvas->pixmap()->size(), QSize(400, 300));
    }
    QString line(int i) const { return m_w->currentPageLines().value(i); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    void drawSmallRectangleMakesTwentyByTwenty()
    {
        open({});
        trigger("AddButton");
        QVERIFY(m_w->addMode());
        QCOMPARE(m_w->addToolWord(), QStringLiteral("Button"));
        drag(QPoint(30, 40), QPoint(35, 45));
        QCOMPARE(line(0), button(0, 30, 40, 20, 20, 1, "button_0"));
        QCOMPARE(m_w->canvasWidgets()->find(QStringLiteral("button_0"))->geometry(), QRect(30, 40, 20, 20));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));
        // add mode lasts: a second drawing makes button_1
        press(QPoint(100, 100));
        release(QPoint(160, 130));
        QCOMPARE(line(1), button(1, 100, 100, 60, 30, 1, "button_1"));
        QVERIFY(m_w->history().step(0) >= 2);
    }

    // A drop on a full table makes nothing; it says so, except for the one
    // video of a page, which refuses a second without a word.
    void fullTableSaysSo_data()
    {
        addColumns<int, QString, QString>("kind", "action", "message");
        QTest::newRow("eight encoders") << int(WidgetKind::Encoder) << "AddEncoder" << "New Encoder id is over the maximum";
        QTest::newRow("one video") << int(WidgetKind::Video) << "actionAddVideo" << "";
    }
    void fullTableSaysSo()
    {
        QFETCH(int, kind);
        QFETCH(QString, action);
        const WidgetKind k = WidgetKind(kind);
        QStringList lines;
        for (int i = 0; i < WidgetKinds::info(k).maximum; ++i)
            lines << WidgetLine::write(WidgetLine::createNew(k, quint32(i), QRect(10 + 20 * i, 10, 20, 20)));
        open(lines);
        trigger(qPrintable(action));
        drag(QPoint(100, 200), QPoint(150, 250));
        QCOMPARE(m_w->currentPageLines(), lines);
        QTEST(m_w->statusBar()->currentMessage(), "message");
        QCOMPARE(m_w->history().step(0), 0);
    }

    // A page switch and a right click end the armed tool.
    void armedToolEnds()
    {
        open({});
        trigger("AddButton");
        QVERIFY(m_w->addMode());
        QTest::mousePress(m_canvas, Qt::RightButton, {}, QPoint(5, 5));
        QVERIFY(!m_w->addMode());
        QCOMPARE(m_w->selectedName(), QStringLiteral("label_Show"));
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        trigger("AddButton");
        QVERIFY(m_w->addMode());
        clickPage(*m_w, 0);
        QVERIFY(!m_w->addMode());
    }

    // Gestures and commands on a page, written as steps: "p x,y" press,
    // "m x,y" move, "r x,y" release, "c x,y" click, "d x,y x,y" drag (press,
    // move, release), "k Left" (Right, Up, Down) an arrow key, "a name" an
    // action. Checked: the page's lines, the steps of page 0's history, and
    // the last message shown.
    void gestures_data()
    {
        using L = QStringList;
        // historySteps -1: not checked
        addColumns<L, QString, L, int, QString>("start", "steps", "end", "historySteps", "message");
        const QString b0 = button(0, 10, 10, 50, 20), locked = button(0, 10, 10, 50, 20, 2);
        QTest::newRow("release past the last column") << L() << "a AddButton; d 390,290 400,295"_q << L() << 0
                                                      << "The focus is out of the effective range"_q;
        // the widget's last column on the canvas's last column: 350 + 50 = 400; one step for the whole drag
        QTest::newRow("drag stops at the right edge") << L{b0} << "p 20,15; m 200,15; m 1000,15; r 1000,15"_q
                                                      << L{button(0, 350, 10, 50, 20)} << 1 << ""_q;
        // right edge at 60, bottom at 30: a press 9 pixels inside both resizes
        QTest::newRow("press 9 from the corner resizes") << L{b0} << "d 51,21 71,31"_q
                                                         << L{button(0, 10, 10, 70, 30)} << 1 << ""_q;
        // right edge at 80, bottom at 40: a press 10 inside both moves
        QTest::newRow("press 10 from the corner moves") << L{button(0, 10, 10, 70, 30)} << "d 70,30 75,35"_q
                                                        << L{button(0, 15, 15, 70, 30)} << 1 << ""_q;
        QTest::newRow("locked stays") << L{locked} << "d 20,15 100,100; k Right"_q << L{locked} << -1 << ""_q;
        QTest::newRow("Lock, then a drag") << L{b0} << "c 20,15; a actionLock; d 20,15 80,80"_q << L{locked} << -1
                                           << ""_q;
        // Left at X 0 stays, yet each key takes a step
        QTest::newRow("arrow keys") << L{button(0, 0, 10, 50, 20)} << "c 5,15; k Left; k Right; k Down"_q
                                    << L{button(0, 1, 11, 50, 20)} << 3 << ""_q;

        // Align with a band, to button_0 as the reference: 100 wide at X 10, 20 high at Y 10.
        const L three{button(0, 10, 10, 100, 20), button(1, 200, 100, 30, 60), button(2, 300, 100, 30, 10)};
        QTest::newRow("align without a reference") << three << "a actionRight_Align"_q << three << 0
                                                   << "Please choose one reference widget first!"_q;
        // right: 10 + 100 - 30 = 80; button_2 lies outside the band
        const QString right = "c 20,15; a actionRight_Align; d 190,90 250,200"_q;
        QTest::newRow("right align") << three << right << L{three[0], button(1, 80, 100, 30, 60), three[2]} << 1
                                     << ""_q;
        // bottom: 10 + 20 - 60 < 0, and the reference is not higher than the widget, so Y becomes 0
        QTest::newRow("then bottom align") << three << right + "; a actionBottom_Align; p 70,90; r 120,200"
                                           << L{three[0], button(1, 80, 0, 30, 60), three[2]} << 2 << ""_q;

        // Equidistance: two widgets in the band move nothing, yet take a step; three, sorted
        // by X 10, 31, 100, are spaced by (100 - 10) / 2 = 45: the middle one goes to 55.
        const L row{button(0, 10, 10, 20, 20), button(1, 100, 10, 20, 20), button(2, 31, 10, 20, 20)};
        const QString two = "a actionLevel_layout; p 5,5; r 60,60"_q;
        QTest::newRow("equidistance of two") << row << two << row << 1 << ""_q;
        QTest::newRow("equidistance of three") << row << two + "; p 5,5; r 200,60"
                                               << L{row[0], row[1], button(2, 55, 10, 20, 20)} << -1 << ""_q;
    }

    void gestures()
    {
        QFETCH(QStringList, start);
        QFETCH(QString, steps);
        QFETCH(int, historySteps);
        open(start);
        const QHash<QString, Qt::Key> keys{{"Left", Qt::Key_Left}, {"Right", Qt::Key_Right}, {"Up", Qt::Key_Up},
                                           {"Down", Qt::Key_Down}};
        auto point = [](const QString &xy) {
            return QPoint(xy.section(',', 0, 0).toInt(), xy.section(',', 1, 1).toInt());
        };
        for (const QString &step : steps.split(QStringLiteral("; "))) {
            const QString arg = step.mid(2);
            switch (step.at(0).toLatin1()) {
            case 'p': press(point(arg)); break;
            case 'm': move(point(arg)); break;
            case 'r': release(point(arg)); break;
            case 'c': click(point(arg)); break;
            case 'd': drag(point(arg.section(' ', 0, 0)), point(arg.section(' ', 1, 1))); break;
            case 'k': QTest::keyClick(m_canvas, keys.value(arg)); break;
            case 'a': trigger(qPrintable(arg)); break;
            }
        }
        QTEST(m_w->currentPageLines(), "end");
        if (historySteps >= 0)
            QCOMPARE(m_w->history().step(0), historySteps);
        QTEST(Prompts::recorded().isEmpty() ? QString() : Prompts::recorded().last().text, "message");
    }

    void resizeCornerCursor()
    {
        open({button(0, 10, 10, 50, 20)});
        click(QPoint(20, 15));
        move(QPoint(30, 20), Qt::NoButton); // inside
        QCOMPARE(m_w->hoverState(), 2);
        move(QPoint(52, 22), Qt::NoButton); // the last 9 pixels on both axes
        QCOMPARE(m_w->hoverState(), 1);
        QCOMPARE(m_canvas->cursor().shape(), Qt::SizeFDiagCursor);
        move(QPoint(100, 100), Qt::NoButton); // outside
        QCOMPARE(m_w->hoverState(), 0);
    }

    void rubberBandSelectsWholeWidgetsOnly()
    {
        open({button(0, 10, 10, 50, 20), button(1, 100, 10, 50, 20), button(2, 10, 100, 50, 20)});
        // a band that cuts through button_1 holds only button_0
        drag(QPoint(5, 5), QPoint(120, 40));
        QCOMPARE(m_w->selectCount(), 1);
        QVERIFY(m_w->groupActive()); // one widget still makes a group
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));

        // a band from bottom right to top left around button_0 and button_2
        drag(QPoint(70, 130), QPoint(5, 5));
        QCOMPARE(m_w->selectCount(), 2);
        QCOMPARE(m_w->selectedName(), QStringLiteral("select_frame"));
        auto *frame = m_w->findChild<QLabel *>(QStringLiteral("select_frame"));
        QVERIFY(frame && frame->isVisible());
        QCOMPARE(frame->geometry(), QRect(10, 10, 50, 110));

        // dragging the group moves both marked widgets by the same delta; an arrow key moves it too
        drag(QPoint(20, 20), QPoint(25, 27));
        QCOMPARE(m_w->currentPageLines(), (QStringList{button(0, 15, 17, 50, 20), button(1, 100, 10, 50, 20),
                                                       button(2, 15, 107, 50, 20)}));
        QTest::keyClick(m_canvas, Qt::Key_Left);
        QCOMPARE(m_w->currentPageLines(), (QStringList{button(0, 14, 17, 50, 20), button(1, 100, 10, 50, 20),
                                                       button(2, 14, 107, 50, 20)}));
    }

    void zoomStepsAndLimits()
    {
        open({button(0, 10, 10, 50, 20)});
        auto *zoomLabel = m_w->findChild<QLabel *>(QStringLiteral("statusLabel_Zoom"));
        // steps of 0.2 up to 3.0; the float sums drift a little above
        for (int i = 0; i < 11; ++i)
            trigger("actionZoomin");
        QVERIFY(qAbs(m_w->zoomFactor() - 3.0f) < 0.001f);
        QCOMPARE(zoomLabel->text(), QStringLiteral("UI Page: 300%  "));
        // the widget is drawn at the scale, its line is unchanged
        QCOMPARE(m_w->canvasWidgets()->find(QStringLiteral("button_0"))->geometry().left(), 30);
        QCOMPARE(line(0), button(0, 10, 10, 50, 20));
        trigger("actionOriginal");
        QCOMPARE(m_w->zoomFactor(), 1.0f);
        QCOMPARE(zoomLabel->text(), QStringLiteral("UI Page: 100%  "));
        for (int i = 0; i < 5; ++i)
            trigger("actionZoomout");
        const float bottom = m_w->zoomFactor();
        QVERIFY(bottom > 0.39f && bottom < 0.61f);
        trigger("actionZoomout");
        QCOMPARE(m_w->zoomFactor(), bottom);
    }

    void arrowAtTwoHundredPercentNeedsTwoPresses()
    {
        open({button(0, 10, 10, 50, 20)});
        for (int i = 0; i < 5; ++i)
            trigger("actionZoomin");
        QVERIFY(qAbs(m_w->zoomFactor() - 2.0f) < 0.01f);
        click(QPoint(30, 30));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));
        // one canvas pixel a press; the stored X is the canvas left (20 + presses) / 2, truncated
        auto storedX = [this] { return line(0).section(QLatin1Char(':'), 1).section(QLatin1Char(','), 0, 0); };
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QCOMPARE(storedX(), QStringLiteral("10")); // half a pixel: nothing stored yet
        // The Y the key did not touch must stay as well.
        QEXPECT_FAIL("", "the canvas top 20 is divided by the drifted zoom 2.0000002 and truncated to 9", Continue);
        QCOMPARE(line(0), button(0, 10, 10, 50, 20));
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QTest::keyClick(m_canvas, Qt::Key_Right);
        QCOMPARE(storedX(), QStringLiteral("11"));
    }

    // A locked widget is still deleted; its slot is free again.
    void deleteFreesTheSlot()
    {
        open({button(0, 10, 10, 50, 20, 2, "a"), button(1, 100, 10, 50, 20)});
        click(QPoint(20, 15));
        trigger("actionDelete");
        QCOMPARE(m_w->currentPageLines(), QStringList{button(1, 100, 10, 50, 20)});
        QVERIFY(!m_w->canvasWidgets()->find(QStringLiteral("button_0")));
        QCOMPARE(m_w->selectedName(), QStringLiteral("label_Show"));
        // the next button takes index 0
        trigger("AddButton");
        drag(QPoint(200, 200), QPoint(230, 230));
        QCOMPARE(line(1), button(0, 200, 200, 30, 30, 1, "button_0"));
    }

    void copyPasteAcrossPagesAndClone()
    {
        open({button(0, 10, 10, 50, 20, 2, "a"), button(1, 380, 100, 20, 20)});
        trigger("actionWidget_Copy");
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Please select the widgets"));
        // a band around both, then copy
        press(QPoint(5, 5));
        release(QPoint(405 - 4, 125));
        QCOMPARE(m_w->selectCount(), 2);
        trigger("actionWidget_Copy");
        QCOMPARE(m_w->copyList().size(), 2);
        // paste on the same page: on top of the sources, new names, the lock undone
        trigger("actionWidget_Paste");
        QCOMPARE(m_w->currentPageLines().mid(2),
                 (QStringList{button(2, 10, 10, 50, 20, 1, "button_2"), button(3, 380, 100, 20, 20, 1, "button_3")}));
        QCOMPARE(m_w->selectedName(), QStringLiteral("select_frame"));
        // the copy survives a page switch
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        QCOMPARE(m_w->currentPageRow(), 1);
        trigger("actionWidget_Paste");
        QCOMPARE(m_w->currentPageLines().size(), 2); // the page is 400 wide: 380 + 20 fits
        // the pasted group's frame lies on top; a right click leaves the group
        QTest::mousePress(m_canvas, Qt::RightButton, {}, QPoint(200, 250));
        // clone: 10 to the right and down, or 10 back at the page's edge
        m_w->selectByName(QStringLiteral("button_1")); // the pasted one at 380,100
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_1"));
        trigger("actionWidget_Clone");
        QCOMPARE(line(2), button(2, 370, 110, 20, 20, 1, "button_2"));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_2"));
    }

    void pasteIntoAFullTableReportsOnce()
    {
        QStringList lines;
        for (int i = 0; i < 128; ++i)
            lines << button(i, 5 + 10 * (i % 30), 5 + 10 * (i / 30), 10, 10);
        open(lines);
        press(QPoint(312, 62)); // from an empty spot over all the buttons
        release(QPoint(1, 1)); // (0, 0) would be the widget's centre to the test library
        QCOMPARE(m_w->selectCount(), 128);
        trigger("actionWidget_Copy");
        // a new page holding one button: room for 127 more
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        drawButton(QPoint(150, 150));
        QCOMPARE(m_w->currentPageLines().size(), 1);
        Prompts::recorded().clear();
        trigger("actionWidget_Paste");
        QCOMPARE(m_w->currentPageLines().size(), 128);
        int reports = 0;
        for (const PromptRecord &r : Prompts::recorded())
            reports += r.text.startsWith(QStringLiteral("Can't paste")) ? 1 : 0;
        QCOMPARE(reports, 1);
    }

    // A copied area larger than the target page is refused, not pasted past its edge.
    void pasteOntoASmallerPageIsRefused()
    {
        look::solid(root() + "Picture/0001_small.png", {200, 100}, qRgb(160, 160, 164));
        open({button(0, 150, 150, 40, 40)}, {PageList::pictureLine(1, QStringLiteral("0001_small.png"))});
        press(QPoint(140, 140));
        release(QPoint(200, 200));
        QCOMPARE(m_w->selectCount(), 1);
        trigger("actionWidget_Copy");
        clickPage(*m_w, 1);
        QCOMPARE(m_canvas->pixmap()->size(), QSize(200, 100));
        trigger("actionWidget_Paste");
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Widget is outside of the editing area"));
        QVERIFY(m_w->currentPageLines().isEmpty());
    }

    void pasteTakesAutomaticAddresses()
    {
        open({button(0, 10, 10, 20, 20), button(1, 40, 10, 20, 20).replace("0x0020", "0x7014"),
              button(2, 70, 10, 20, 20).replace("0x0020", "0x0031")});
        // the scan at open: 0x0031 is the highest address below the system range
        QCOMPARE(m_w->nextWriteAddress(), quint32(0x32));
        press(QPoint(5, 5));
        release(QPoint(95, 35));
        QCOMPARE(m_w->selectCount(), 3);
        trigger("actionWidget_Copy");
        // the dialog: automatic addresses from 0x1000
        trigger("actionWriteAddr");
        auto *dialog = m_w->findChild<QDialog *>(QStringLiteral("DialogWdgVar"));
        QVERIFY(dialog && dialog->isVisible());
        dialog->findChild<QCheckBox *>(QStringLiteral("checkBox_AutoAddr"))->setChecked(true);
        dialog->findChild<QLineEdit *>(QStringLiteral("lineEdit"))->setText(QStringLiteral("0x1000"));
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("pushButton_OK")), Qt::LeftButton);
        QCOMPARE(m_w->nextWriteAddress(), quint32(0x1000));
        trigger("actionWidget_Paste");
        QCOMPARE((QStringList{line(3).mid(21, 6), line(4).mid(21, 6), line(5).mid(21, 6)}),
                 (QStringList{"0x1000", "0x1001", "0x1002"}));
        // with the check off a paste keeps the source's address
        trigger("actionWriteAddr");
        dialog->findChild<QCheckBox *>(QStringLiteral("checkBox_AutoAddr"))->setChecked(false);
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("pushButton_OK")), Qt::LeftButton);
        trigger("actionWidget_Paste");
        QCOMPARE(line(6).mid(21, 6), QStringLiteral("0x0020"));
    }
};

QTEST_MAIN(TestCanvas)
#include "tst_canvas.moc"
