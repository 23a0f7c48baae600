// Tool > Export variable: the two variable lists of the saved pages, without
// a build; nothing while no project is open.

#include "GuiTestSupport.h"

using namespace gui;

class TestExportVariable : public QObject, Fixture
{
    Q_OBJECT

private slots:
    void init()
    {
        useAppDir(m_appDir.path());
        begin();
    }
    void cleanup() { end(); }

    void exportVariable()
    {
        project(blankPages(2), {{button(0, 10, 10, 50, 20, 1, "go")}, {}});
        m_w = new MainWindow;
        const QString before = m_w->logView()->toPlainText();
        trigger("actionExport_variable");
        QCOMPARE(m_w->logView()->toPlainText(), before);
        QVERIFY(!QFileInfo::exists(root() + "TouchWidget.csv"));

        QVERIFY(openWindow());
        trigger("actionExport_variable");
        QVERIFY(m_w->logView()->toPlainText().endsWith("CSV files are ready!"));
        QCOMPARE(readAll(root() + "TouchWidget.csv"),
                 QByteArray("PageID,WidgetName,Name    ,WriteAddr,Length,\n0,button_0,go, , ,0x0020, \n"));
        QCOMPARE(readAll(root() + "DisplayWidget.csv"),
                 QByteArray("PageID,WidgetName,Name    ,WriteAddr,Length,ParameterAddr,Length\n"));
    }
};

QTEST_MAIN(TestExportVariable)
#include "tst_export_variable.moc"
