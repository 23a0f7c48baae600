#pragma once
// Shared by the designer tests: project folders written on disk, the app
// folder with the interface texts, prompts answered without a window, and
// the user's gestures on a main window's canvas.

#include "../core/CoreTestSupport.h"
#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "project/AppPaths.h"
#include "project/TextFiles.h"

#include <QtTest>
#include <QtWidgets>

namespace gui {

using namespace vantile;

inline QString operator""_q(const char *s, size_t n) { return QString::fromUtf8(s, int(n)); }

using core::addColumns;
using core::readAll;
using core::writeFile; // its folder made first

inline QByteArray iniText(int xsize = 400, int ysize = 300)
{
    return QStringLiteral("[INFO]\nSupplierVer: V3.20\nXSIZE: %1\nYSIZE: %2\n").arg(xsize).arg(ysize).toUtf8();
}

// A button's page line; lock 1 is free, 2 locked.
inline QString button(int i, int x, int y, int w, int h, int lock = 1, const QString &name = QStringLiteral("b"))
{
    return QStringLiteral("button_%1:%2,%3,%4,%5,0x0020,,,,%6,Disable,Disable,0x0000,0xFFFF,%7;")
        .arg(i).arg(x).arg(y).arg(w).arg(h).arg(name).arg(lock);
}

inline QStringList blankPages(int n)
{
    QStringList lines;
    for (int r = 0; r < n; ++r)
        lines << PageList::blankLine(r);
    return lines;
}

// A project folder: p.uiprj listing `pageList`, p.ini, Plugin/PageNNNN.cfg
// with the lines of pages[r], and empty Picture and Icon folders.
inline QString writeProject(const QString &root, const QStringList &pageList, const QVector<QStringList> &pages = {},
                            const QByteArray &ini = iniText())
{
    const QString dir = QDir::cleanPath(root) + QLatin1Char('/');
    for (const char *d : {"Plugin", "Picture", "Icon"})
        QDir(dir).mkpath(QLatin1String(d));
    writeFile(dir + "p.uiprj", TextFiles::encodePlain(pageList));
    writeFile(dir + "p.ini", ini);
    for (int r = 0; r < pages.size(); ++r)
        writeFile(dir + "Plugin/Page" + PageList::pageId(r) + ".cfg", TextFiles::encodePlain(pages[r]));
    return dir + "p.uiprj";
}

inline void copyDemo(const QString &dst)
{
    const QString src = QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo");
    QDirIterator it(src, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString from = it.next(), to = dst + from.mid(src.size());
        QDir().mkpath(QFileInfo(to).path());
        QVERIFY2(QFile::copy(from, to), qPrintable(to));
    }
}

// The app folder (interface texts, user settings) moved to `dir`, holding
// fresh copies of the given translation files.
inline void useAppDir(const QString &dir, const QStringList &qms = {QStringLiteral("Translate_EN.qm")})
{
    AppPaths::setAppDirOverride(dir);
    for (const QString &qm : qms) {
        QFile::remove(dir + QLatin1Char('/') + qm);
        QVERIFY(QFile::copy(QStringLiteral(VANTILE_QM_DIR "/") + qm, dir + QLatin1Char('/') + qm));
    }
}

// Answers to the designer's prompts, set by the test before each flow.
struct Answers {
    QMessageBox::StandardButton answer = QMessageBox::NoButton; // NoButton: the first button
    QStringList files; // file dialogs in order; none left: cancelled
    QString word;      // pop-up menus; empty: dismissed
    QColor color;      // the colour dialog; invalid: cancelled
    QStringList menus; // the words of every menu shown, joined by "|"

    void install(QMessageBox::StandardButton first = QMessageBox::NoButton)
    {
        *this = Answers(); // the responder below keeps pointing at this object
        answer = first;
        Prompts::Responder r;
        r.answer = [this](const PromptRecord &) { return answer; };
        r.file = [this](const PromptRecord &) { return files.isEmpty() ? QString() : files.takeFirst(); };
        r.word = [this](const QStringList &words) {
            menus << words.join(QLatin1Char('|'));
            return word;
        };
        r.color = [this](const QColor &) { return color; };
        Prompts::installResponder(r);
    }
};

inline QList<PromptRecord> prompts(const QString &kind)
{
    QList<PromptRecord> out;
    for (const PromptRecord &r : Prompts::recorded())
        if (r.kind == kind)
            out << r;
    return out;
}
inline bool wasTold(const QString &text)
{
    for (const PromptRecord &r : Prompts::recorded())
        if (r.text.contains(text))
            return true;
    return false;
}
inline QString lastPrompt() { return Prompts::recorded().isEmpty() ? QString() : Prompts::recorded().last().text; }

inline QTableView *table(const QWidget &w, const char *name) { return w.findChild<QTableView *>(QLatin1String(name)); }
inline QString cell(const QWidget &w, const char *tableName, int row, int col = 1)
{
    return table(w, tableName)->model()->index(row, col).data().toString();
}
inline QLabel *canvasOf(const QWidget &w) { return w.findChild<QLabel *>(QStringLiteral("label_Show")); }
inline void clickPage(MainWindow &w, int row) { w.on_tableView_Page_clicked(table(w, "tableView_Page")->model()->index(row, 0)); }

// Double-clicks a row of the parameter table, types into its inline editor
// and presses Return; the editor must be gone after.
inline void typeIntoPara(MainWindow &w, int row, const QString &text)
{
    QTableView *para = table(w, "tableView_Para");
    w.on_tableView_Para_doubleClicked(para->model()->index(row, 1));
    auto *editor = para->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // Return commits and closes through a queued call, then a deferred delete.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(para->viewport()->findChildren<QLineEdit *>().size(), 0);
}

// The canvas look: widgets with some fields set, and the pixels they show.
namespace look {

constexpr QRgb kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;

// A new widget of the kind with these fields set from their line texts.
inline EditBuffer widget(WidgetKind kind, const QRect &rect, const QVector<QPair<const char *, QString>> &texts,
                         quint32 index = 0)
{
    EditBuffer b = WidgetLine::createNew(kind, index, rect);
    for (const auto &[key, text] : texts)
        b.setValue(b.definition()->indexOf(key), WidgetLine::readLineText(*b.definition()->find(key), text));
    return b;
}

inline QRgb at(const QImage &image, int x, int y) { return image.convertToFormat(QImage::Format_ARGB32).pixel(x, y); }

using core::solid;

} // namespace look

// A test class derives from this (after QObject) for a project folder and a
// window of its own in each test function: begin() in init(), end() in cleanup().
class Fixture
{
protected:
    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr;
    MainWindow *m_w = nullptr;
    QLabel *m_canvas = nullptr;
    Answers m_answers;

    void begin(QMessageBox::StandardButton answer = QMessageBox::NoButton)
    {
        m_dir = new QTemporaryDir;
        m_answers.install(answer);
    }
    void end()
    {
        closeWindow();
        Prompts::removeResponder();
        delete m_dir;
        m_dir = nullptr;
    }
    QString root() const { return m_dir->path() + QLatin1Char('/'); }
    QString cfg(int row) const { return root() + "Plugin/Page" + PageList::pageId(row) + ".cfg"; }
    QString project(const QStringList &pageList, const QVector<QStringList> &pages = {}, const QByteArray &ini = iniText())
    {
        return writeProject(root(), pageList, pages, ini);
    }

    // Opens root()/p.uiprj (or `uiprj`) in a shown, active window of the given size.
    bool openWindow(const QString &uiprj = QString(), const QSize &size = QSize(1600, 1000))
    {
        closeWindow();
        m_w = new MainWindow;
        m_w->setWindowState(Qt::WindowNoState);
        m_w->resize(size);
        m_w->show();
        QApplication::setActiveWindow(m_w);
        if (!QTest::qWaitForWindowActive(m_w) || !m_w->openProjectFile(uiprj.isEmpty() ? root() + "p.uiprj" : uiprj))
            return false;
        m_canvas = canvasOf(*m_w);
        return true;
    }
    void closeWindow() // as a killed session: no close event
    {
        delete m_w;
        m_w = nullptr;
        m_canvas = nullptr;
    }

    void trigger(const char *action) { m_w->action(QLatin1String(action))->trigger(); }
    void press(const QPoint &p) { QTest::mousePress(m_canvas, Qt::LeftButton, {}, p); }
    void move(const QPoint &p, Qt::MouseButtons held = Qt::LeftButton)
    {
        QMouseEvent e(QEvent::MouseMove, p, m_canvas->mapToGlobal(p), Qt::NoButton, held, Qt::NoModifier);
        QApplication::sendEvent(m_canvas, &e);
    }
    void release(const QPoint &p) { QTest::mouseRelease(m_canvas, Qt::LeftButton, {}, p); }
    void click(const QPoint &p)
    {
        press(p);
        release(p);
    }
    // A press, one move and a release: a drag, a drawing or a band.
    void drag(const QPoint &from, const QPoint &to)
    {
        press(from);
        move(to);
        release(to);
    }
    // Draws a button with the Add action, then a right click on an empty
    // spot ends the tool.
    void drawButton(const QPoint &at, const QPoint &empty = QPoint(390, 290))
    {
        trigger("AddButton");
        press(at);
        release(at + QPoint(60, 30));
        QTest::mouseClick(m_canvas, Qt::RightButton, {}, empty);
    }
};

} // namespace gui
