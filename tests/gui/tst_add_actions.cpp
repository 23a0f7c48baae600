// Every Add action of the tool bar arms its kind, and a rectangle drawn on
// the canvas makes a widget of that kind: its line, named by the kind's
// prefix and the lowest free index, and a live label on the canvas.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "widgets/WidgetLine.h"

using namespace gui;

class TestAddActions : public QObject, Fixture
{
    Q_OBJECT

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    void addMakesItsKind_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("name"); // the object name of the first widget made
        const char *const rows[][2] = {
            {"AddButton", "button_0"},       {"AddNumber", "number_0"},       {"AddClcok", "Clock_0"},
            {"AddGif", "gif_0"},             {"AddSlider", "slider_0"},       {"AddpngNumber", "pngNumber_0"},
            {"AddRTC", "RTC_0"},             {"AddQRCode", "qrcode_0"},       {"AddProgress", "progress_0"},
            {"AddWav", "wav_0"},             {"AddVarAdj", "varAdj_0"},       {"AddKeypad", "keypad_0"},
            {"AddKBkey", "kbkey_0"},         {"AddIcon", "icon_0"},           {"AddbitIcon", "bitIcon_0"},
            {"AddRingTouch", "rtouch_0"},    {"AddRingProgress", "rProgress_0"}, {"AddLabel", "label_0"},
            {"AddLabel_2", "label_0"},       {"AddTextRoll", "textroll_0"},   {"AddSlideMemu", "slmenu_0"},
            {"actionCrossPageMenu", "slidemenuPro_0"}, {"AddEN_KeyBooard", "enkeyB_0"},
            {"AddCN_KeyBoard", "cnkeyB_0"},  {"AddBatchVar", "batVar_0"},     {"AddCurve", "curve_0"},
            {"AddPopupBox", "popbox_0"},     {"AddEncoder", "encoder_0"},     {"AddUITimer", "uitimer_0"},
            {"actionAddCamera", "camera_0"}, {"actionAddVideo", "video_0"},   {"actionAuto_Variable", "autoVar_0"},
            {"actionNeedle", "needle_0"},
        };
        for (const auto &r : rows)
            QTest::newRow(r[0]) << QString(r[0]) << QString(r[1]);
    }
    void addMakesItsKind()
    {
        QFETCH(QString, action);
        QFETCH(QString, name);
        project(QStringList{PageList::blankLine(0), PageList::blankLine(1)});
        QVERIFY(openWindow());
        QLabel *canvas = canvasOf(*m_w);
        trigger(qPrintable(action));
        QVERIFY(m_w->addMode());
        QVERIFY(m_w->action(action)->isChecked()); // its button stays pressed while armed
        QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(40, 40));
        QTest::mouseRelease(canvas, Qt::LeftButton, {}, QPoint(140, 120));
        const QStringList lines = m_w->currentPageLines();
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines[0].startsWith(name + ':'), qPrintable(lines[0]));
        QVERIFY(m_w->canvasWidgets()->find(name));
        QCOMPARE(m_w->selectedName(), name);
        // the line reads back as the kind the action names
        EditBuffer made;
        QCOMPARE(WidgetLine::parse(lines[0], made), ParseStatus::Ok);
        QCOMPARE(made.objectName(), name);
        // the tool lasts after a drop; a right click ends it and lets the button go
        QVERIFY(m_w->addMode() && m_w->action(action)->isChecked());
        QTest::mouseClick(canvas, Qt::RightButton, {}, QPoint(300, 250));
        QVERIFY(!m_w->addMode() && !m_w->action(action)->isChecked());
    }
};

QTEST_MAIN(TestAddActions)
#include "tst_add_actions.moc"
