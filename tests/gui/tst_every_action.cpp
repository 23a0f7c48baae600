// No dead entry: every action of the main window, triggered on the demo
// project, changes something the user can see (the page, the log, the
// status line, the title, a setting, a file), asks or tells something (a
// box, a file dialog, a dialog, the desktop opening a file), or is
// disabled, its tip saying why.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"

#include <QDesktopServices>
#include <QDirIterator>
#include <QStatusBar>
#include <QUrl>

using namespace gui;

class TestEveryAction : public QObject, Fixture
{
    Q_OBJECT

public slots:
    void opened(const QUrl &url) { m_opened << url.toString(); }

private:
    QStringList m_opened;

    // Everything an action may change, as one text.
    QString state() const
    {
        QStringList s;
        s << m_w->logView()->toPlainText() << m_w->statusBar()->currentMessage() << m_w->windowTitle()
          << m_w->currentPageLines().join('\n') << QString::number(m_w->addMode()) << QString::number(m_w->zoomFactor())
          << m_w->selectedName() << QString::number(m_w->currentPageRow()) << QString::number(m_w->languageIndex())
          << QString::number(m_w->toolBarTextIndex()) << QString::number(m_w->autoSaveIndex())
          << QString::number(m_w->canvasWidgets()->count()) << QString::number(m_w->history().step(m_w->currentPageRow()))
          << QString::number(m_w->isVisible()) << QString::number(Prompts::recorded().size()) << m_opened.join(' ')
          << QString::number(m_canvas ? int(m_canvas->cursor().shape()) : -1);
        for (QWidget *w : QApplication::topLevelWidgets())
            if (w != m_w && w->isVisible())
                s << QStringLiteral("window ") + w->metaObject()->className();
        for (QDirIterator it(root(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
            const QFileInfo f(it.next());
            s << f.filePath() + QString::number(f.size()) + f.lastModified().toString(Qt::ISODateWithMs);
        }
        return s.join('|');
    }

private slots:
    void initTestCase()
    {
        useAppDir(m_appDir.path());
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "opened");
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "opened");
    }
    void cleanupTestCase()
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    }
    void init() { begin(QMessageBox::Yes); }
    void cleanup() { end(); }

    void noActionIsDead()
    {
        copyDemo(m_dir->path());
        QFile::remove(root() + "backup.txt");
        QStringList names;
        {
            QVERIFY(openWindow(root() + "demo.uiprj"));
            for (QAction *a : m_w->findChildren<QAction *>())
                if (!a->objectName().isEmpty() && !a->isSeparator() && !a->menu() && !names.contains(a->objectName()))
                    names << a->objectName();
        }
        QVERIFY(names.size() > 60);
        QStringList dead;
        for (const QString &name : names) {
            m_answers.install(QMessageBox::Yes);
            m_opened.clear();
            closeWindow();
            // a fresh copy each time: an earlier action may have changed or cleared the project
            QVERIFY(QDir(root()).removeRecursively());
            copyDemo(m_dir->path());
            QFile::remove(root() + "backup.txt");
            QVERIFY(openWindow(root() + "demo.uiprj"));
            QCoreApplication::processEvents();
            // a widget is selected, so that the edit actions have something to act on
            m_w->selectByName(QStringLiteral("button_0"));
            QAction *a = m_w->action(name);
            if (!a)
                a = m_w->findChild<QAction *>(name);
            if (!a->isEnabled()) {
                if (a->toolTip().isEmpty() || a->toolTip() == a->text())
                    dead << name + QStringLiteral(" (disabled without a reason)");
                continue;
            }
            // an action that sets what is already set shows itself after its opposite
            const QHash<QString, QString> first = {{"actionOriginal", "actionZoomin"},
                                                   {"actionWidget_Paste", "actionWidget_Copy"},
                                                   {"actionUnlock", "actionLock"},
                                                   {"actionOpen", "actionClose"}};
            if (name == "actionWidget_Paste") {
                // copy a group first: a band around the four action tiles
                QTest::mousePress(m_canvas, Qt::LeftButton, {}, QPoint(10, 312));
                QMouseEvent move(QEvent::MouseMove, QPoint(795, 415), m_canvas->mapToGlobal(QPoint(795, 415)),
                                 Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(m_canvas, &move);
                QTest::mouseRelease(m_canvas, Qt::LeftButton, {}, QPoint(795, 415));
                QVERIFY(m_w->groupActive());
            }
            if (first.contains(name))
                m_w->action(first.value(name))->trigger();
            const QString before = state();
            a->trigger();
            QCoreApplication::processEvents();
            if (state() == before)
                dead << name;
            for (QWidget *w : QApplication::topLevelWidgets())
                if (w != m_w && w->isVisible())
                    w->close();
        }
        QVERIFY2(dead.isEmpty(), qPrintable(QStringLiteral("dead: ") + dead.join(", ")));
    }
};

QTEST_MAIN(TestEveryAction)
#include "tst_every_action.moc"
