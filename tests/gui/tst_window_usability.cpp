// The window as a new user meets it, on a copy of the demo project at
// 1600 x 1000.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "editors/DialogWdgVar.h"
#include "widgets/WidgetLine.h"

using namespace gui;

namespace {

QString line(WidgetKind kind, quint32 index, const QRect &r, const QString &icon = QString())
{
    EditBuffer w = WidgetLine::createNew(kind, index, r);
    if (!icon.isEmpty())
        w.setText("unpressedIcon", icon);
    return WidgetLine::write(w);
}

// Light and dark pixels of an image: what makes a text readable on it.
void lightAndDark(const QImage &img, int *light, int *dark)
{
    *light = *dark = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) {
            const int g = qGray(img.pixel(x, y));
            *light += g > 200;
            *dark += g < 80;
        }
}

// Shown whole, not cut by a scroller or the window (for widgets without children).
bool fullyShown(QWidget *w)
{
    return w->isVisible() && w->visibleRegion().boundingRect() == w->rect();
}

} // namespace

class TestWindowUsability : public QObject, Fixture
{
    Q_OBJECT

    // The demo copied, its first page holding `lines`, opened in a
    // 1600 x 1000 window.
    void open(const QStringList &lines)
    {
        copyDemo(m_dir->path());
        look::solid(root() + "Icon/0001_grey.png", {40, 30}, qRgb(128, 128, 128));
        writeFile(cfg(0), TextFiles::encodePlain(lines));
        QVERIFY(openWindow(root() + "demo.uiprj"));
        QCOMPARE(m_w->size(), QSize(1600, 1000));
    }

    QLabel *widget(const char *name) const { return m_w->canvasWidgets()->find(QLatin1String(name)); }
    QString pageLine(int i) const { return m_w->currentPageLines().value(i); }
    void key(int k) { QTest::keyClick(m_w, Qt::Key(k), Qt::ControlModifier); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    void maskedDialogGivesTheWindowBack_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"escape", "close button", "hide", "ok"})
            QTest::newRow(how) << QString::fromLatin1(how);
    }
    void maskedDialogGivesTheWindowBack()
    {
        QFETCH(QString, how);
        open({line(WidgetKind::Button, 0, QRect(100, 100, 120, 60))});
        const QPoint onButton = m_canvas->mapTo(m_w, QPoint(160, 130));
        trigger("actionWriteAddr");
        auto *dialog = m_w->writeAddrDialog();
        QVERIFY(dialog->isVisible());
        QCOMPARE(m_w->childAt(onButton)->objectName(), QStringLiteral("Background_mask"));
        if (how == QLatin1String("escape"))
            QTest::keyClick(dialog, Qt::Key_Escape);
        else if (how == QLatin1String("close button"))
            dialog->close();
        else if (how == QLatin1String("hide"))
            dialog->hide();
        else
            QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("pushButton_OK")), Qt::LeftButton);
        QVERIFY(!dialog->isVisible());
        for (QWidget *mask : m_w->findChildren<QWidget *>(QStringLiteral("Background_mask")))
            QVERIFY(!mask->isVisible());
        // a click routed by the window lands on the canvas and selects the widget
        QTest::mouseClick(m_w->windowHandle(), Qt::LeftButton, {}, onButton);
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));
    }

    void editKeysWorkInBothToolBarModes_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::newRow("text under icons") << QStringLiteral("actionOpen");
        QTest::newRow("icons only") << QStringLiteral("actionClose");
    }
    void editKeysWorkInBothToolBarModes()
    {
        QFETCH(QString, mode);
        const QString original = line(WidgetKind::Button, 0, QRect(100, 100, 120, 60));
        open({original});
        m_w->action(mode)->trigger();
        m_canvas->setFocus(); // where a click on the page leaves it
        key(Qt::Key_I);
        QVERIFY(m_w->zoomFactor() > 1.1f);
        QCOMPARE(widget("button_0")->width(), int(120 * m_w->zoomFactor()));
        key(Qt::Key_U);
        key(Qt::Key_I);
        key(Qt::Key_Q);
        QCOMPARE(m_w->zoomFactor(), 1.0f);
        // a drag, then Ctrl+Z gives the line back and Ctrl+Y the move again
        drag(QPoint(130, 120), QPoint(230, 170));
        const QString moved = pageLine(0);
        QVERIFY(moved.startsWith(QLatin1String("button_0:200,150,120,60,")));
        key(Qt::Key_Z);
        QCOMPARE(pageLine(0), original);
        key(Qt::Key_Y);
        QCOMPARE(pageLine(0), moved);
        // a band round the widget, then Ctrl+C copies it
        drag(QPoint(150, 100), QPoint(400, 300));
        QVERIFY(m_w->groupActive());
        key(Qt::Key_C);
        QCOMPARE(m_w->copyList().size(), 1);
    }

    void kindsLookApartAndNamesShow()
    {
        open({line(WidgetKind::Button, 0, QRect(100, 100, 120, 60)),
              line(WidgetKind::KBKey, 0, QRect(300, 100, 120, 60)),
              line(WidgetKind::PopBox, 0, QRect(500, 100, 120, 60)),
              line(WidgetKind::Button, 1, QRect(100, 300, 40, 30), QStringLiteral("0001_grey.png"))});
        const QString button = widget("button_0")->styleSheet();
        const QString key = widget("kbkey_0")->styleSheet();
        QVERIFY(button != key);                                 // touch and keyboard families
        QCOMPARE(widget("popbox_0")->styleSheet(), button);     // one family, one look
        QCOMPARE(widget("button_1")->styleSheet(), button);

        // the name tag reads on black and on white; a widget with its picture has none
        for (QColor page : {QColor(Qt::black), QColor(Qt::white)}) {
            QImage img(120, 60, QImage::Format_RGB32);
            img.fill(page);
            widget("button_0")->render(&img);
            int light, dark;
            lightAndDark(img.copy(0, 0, 120, 14), &light, &dark);
            QVERIFY2(light > 10 && dark > 50, qPrintable(page.name()));
            lightAndDark(img.copy(0, 30, 120, 30), &light, &dark); // below the tag: the plain fill
            QVERIFY(page == Qt::black ? light == 0 : dark == 0);
            QImage pic(40, 30, QImage::Format_RGB32);
            pic.fill(page);
            widget("button_1")->render(&pic);
            lightAndDark(pic.copy(1, 1, 38, 12), &light, &dark);
            QCOMPARE(light + dark, 0);
        }
        // the tag is the object name: same size and kind, another name, other pixels
        QCOMPARE(widget("button_0")->grab().toImage() == widget("popbox_0")->grab().toImage(), false);

        // a band marks both, a click on the empty page clears the marks: each its own look again
        drag(QPoint(90, 90), QPoint(440, 170));
        QCOMPARE(m_w->selectCount(), 2);
        QCOMPARE(widget("button_0")->styleSheet(), widget("kbkey_0")->styleSheet());
        drag(QPoint(700, 400), QPoint(700, 400));
        QCOMPARE(widget("button_0")->styleSheet(), button);
        QCOMPARE(widget("kbkey_0")->styleSheet(), key);
        // the reference look moves on and the last one gets its family look back
        drag(QPoint(330, 120), QPoint(330, 120));
        QVERIFY(widget("kbkey_0")->styleSheet() != key);
        drag(QPoint(120, 120), QPoint(120, 120));
        QCOMPARE(widget("kbkey_0")->styleSheet(), key);
    }

    void everyKindAndToolWithinReach()
    {
        open({line(WidgetKind::Button, 0, QRect(100, 100, 120, 60))});
        m_w->ICType_Change(10); // the chip that has the video kind
        auto *palette = m_w->findChild<QDockWidget *>(QStringLiteral("dockWidget_Palette"));
        QVERIFY(palette && palette->isVisible());
        QSet<QString> armed;
        QSet<QAction *> addActions;
        for (QToolButton *b : palette->findChildren<QToolButton *>()) {
            if (!b->defaultAction() || !b->isVisibleTo(palette))
                continue;
            addActions << b->defaultAction();
            QVERIFY2(fullyShown(b), qPrintable(b->objectName()));
            QCOMPARE(m_w->action(b->defaultAction()->objectName()), b->defaultAction()); // the window's own action
            QTest::mouseClick(b, Qt::LeftButton);
            QVERIFY2(m_w->addMode(), qPrintable(b->objectName()));
            armed << m_w->addToolWord();
        }
        QSet<QString> all;
        for (WidgetKind k : WidgetKinds::all())
            all << QLatin1String(WidgetKinds::info(k).toolWord);
        QCOMPARE(all.size(), 33);
        QCOMPARE(armed, all);

        // Build and Save All one click away in both modes; no kind on the tool bar
        auto *toolBar = m_w->findChild<QToolBar *>(QStringLiteral("toolBar"));
        for (const char *mode : {"actionClose", "actionOpen"}) {
            m_w->action(QLatin1String(mode))->trigger();
            for (const char *name : {"actionMake_bin", "actionSave_All"})
                QTRY_VERIFY2(fullyShown(toolBar->widgetForAction(m_w->action(QLatin1String(name)))), name);
            for (QAction *a : toolBar->actions())
                QVERIFY2(!addActions.contains(a), qPrintable(a->objectName()));
        }
        // the frame of tool buttons (text mode) wraps: nothing lies beyond its right edge
        for (const char *name : {"toolButton_Lock", "toolButton_Unlock", "toolButton_Zoom_in", "toolButton_100"})
            QTRY_VERIFY2(fullyShown(m_w->findChild<QToolButton *>(QLatin1String(name))), name);

        // the parameter names show whole, for the page and for a widget
        auto *para = m_w->findChild<QTableView *>(QStringLiteral("tableView_Para"));
        for (const char *name : {"label_Show", "button_0"}) {
            m_w->selectByName(QLatin1String(name));
            QVERIFY(para->model()->rowCount() > 3);
            for (int r = 0; r < para->model()->rowCount(); ++r) {
                const QString label = para->model()->index(r, 0).data().toString();
                QVERIFY2(para->fontMetrics().horizontalAdvance(label) < para->columnWidth(0), qPrintable(label));
            }
        }
    }
};

QTEST_MAIN(TestWindowUsability)
#include "tst_window_usability.moc"
