// The Help menu's manual and About box, and the Tool menu's programs that
// are not installed.

#include "GuiTestSupport.h"
#include "editors/DialogAbout.h"

#include <QDesktopServices>

using namespace gui;

class TestHelpMenu : public QObject, Fixture
{
    Q_OBJECT

public slots:
    void opened(const QUrl &url) { m_opened << url.toLocalFile(); }

private:
    QStringList m_opened;

private slots:
    void initTestCase()
    {
        useAppDir(m_appDir.path());
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "opened");
    }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    void init()
    {
        begin();
        m_opened.clear();
        project({PageList::blankLine(0)});
        QVERIFY(openWindow());
    }
    void cleanup() { end(); }

    // Ours beside the program: the rendered manual first, else its text.
    void manualBesideTheProgram()
    {
        const QString md = m_appDir.path() + "/manual.md", html = m_appDir.path() + "/manual.html";
        writeFile(md, "# manual");
        trigger("actionDirections_for_use");
        writeFile(html, "<h1>manual</h1>");
        trigger("actionDirections_for_use");
        QCOMPARE(m_opened, (QStringList{md, html}));
        QFile::remove(md);
        QFile::remove(html);
    }

    void aboutShowsTitleVersionAndBuildTime()
    {
        trigger("actionAbout");
        auto *about = m_w->findChild<DialogAbout *>();
        QVERIFY(about && about->isVisible());
        QCOMPARE(about->windowTitle(), QStringLiteral("About"));
        QCOMPARE(about->findChild<QLabel *>("label_Title")->text(), QStringLiteral("Vantile V3.20A"));
        QVERIFY(about->findChild<QLabel *>("label_Version")->text().endsWith("V3.20A"));
        QVERIFY(about->findChild<QLabel *>("label_Built")->text().contains(MainWindow::buildDateTime()));
        QWidget *mask = m_w->findChild<QWidget *>("Background_mask");
        QVERIFY(mask && mask->isVisible()); // the window is dimmed behind the box
        about->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_w->findChild<DialogAbout *>());
        QVERIFY(!m_w->findChild<QWidget *>("Background_mask")); // and lit again
    }

    // A tool missing from the program's folder is disabled and says why;
    // once there (an executable whose name holds the tool's), it is enabled.
    void toolsNotInstalledAreDisabled()
    {
        QAction *font = m_w->action("actionFont_tool");
        QVERIFY(!font->isEnabled() && font->toolTip().contains("GlyphForge is not installed"));
        const QString exe = m_appDir.path() + "/GlyphForge-2.1";
        writeFile(exe, "#!/bin/sh\n");
        QFile::setPermissions(exe, QFile::permissions(exe) | QFileDevice::ExeOwner);
        m_w->updateToolActions();
        QVERIFY(font->isEnabled() && !m_w->action("actionToneForge")->isEnabled());
        QFile::remove(exe);
    }
};

QTEST_MAIN(TestHelpMenu)
#include "tst_help_menu.moc"
