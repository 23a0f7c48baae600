// Help > Check Project and Tool > Variable control in the designer: the box
// when the check finds something, the report file, the open page converted.

#include "GuiTestSupport.h"

using namespace gui;

class TestCheckActions : public QObject, Fixture
{
    Q_OBJECT

private slots:
    void init()
    {
        useAppDir(m_appDir.path());
        begin();
    }
    void cleanup() { end(); }

    void checkAndConvert()
    {
        // Page 1 as saved leaves the 400 x 300 panel; the open page 0 is checked as it stands.
        project({"Page0000:RGBColor(0,0,0);Home;RGBColor(0,0,0);", PageList::blankLine(1)},
                {{"kbkey_0:10,20,30,40,0x31,,k0;"}, {button(0, 380, 10, 50, 20, 1, "wide")}});
        writeFile(root() + "Icon/abc.png", "x");
        QVERIFY(openWindow());
        trigger("actionCheckProject");
        QCOMPARE(prompts("message").size(), 1);
        const QString report = root() + "Project-error-information.txt";
        QCOMPARE(readAll(report), QByteArray("Incorrect file naming!\nIcon Folder:\nabc.png\n\n"
                                             "Out of page range!\nPage1,widget_Name:wide, X:380 Y:10\n"));

        trigger("actionVariable_control");
        QCOMPARE(prompts("message").last().title + ": " + lastPrompt(), QString("Note: The conversion is complete!"));
        QVERIFY(m_w->currentPageLines().contains("kbkey_0:10,20,30,40,0x0031,,k0,Disable,1;")); // the open page, new form
        trigger("actionSave_All"); // what the conversion wrote is the session's own: no question
        QVERIFY(prompts("question").isEmpty());

        QFile::remove(root() + "Icon/abc.png");
        writeFile(cfg(1), TextFiles::encodePlain({button(0, 350, 10, 50, 20)}));
        Prompts::recorded().clear();
        trigger("actionCheckProject");
        QVERIFY(prompts("message").isEmpty() && QFileInfo::exists(report) && readAll(report).isEmpty());
    }
};

QTEST_MAIN(TestCheckActions)
#include "tst_check_actions.moc"
