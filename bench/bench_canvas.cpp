// Canvas figures: switching to a page of 128 buttons with icon pictures,
// and one mouse-move step of a drag. Runs on the offscreen platform.
//
//   bench_canvas [rounds]

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "designer/CanvasWidgets.h"
#include "project/AppPaths.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"
#include "project/TextFiles.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace vantile;

namespace {

QString makeProject(const QString &root)
{
    QDir(root).mkpath(QStringLiteral("Plugin"));
    QDir(root).mkpath(QStringLiteral("Icon"));
    QDir(root).mkpath(QStringLiteral("Picture"));
    // sixteen icon pictures, 60 x 40, shared by the buttons
    for (int i = 0; i < 16; ++i) {
        QImage icon(60, 40, QImage::Format_ARGB32);
        icon.fill(QColor::fromHsv(i * 22, 200, 220));
        QPainter p(&icon);
        p.drawEllipse(5, 5, 50, 30);
        p.end();
        icon.save(root + QStringLiteral("/Icon/%1_b.png").arg(i + 1, 4, 10, QLatin1Char('0')));
    }
    QStringList buttons;
    for (int i = 0; i < 128; ++i) {
        const int x = 5 + (i % 16) * 63;
        const int y = 5 + (i / 16) * 70;
        buttons << QStringLiteral("button_%1:%2,%3,60,40,0x0020,%4_b.png,,,b%1,Disable,Disable,0x0000,0xFFFF,1;")
                       .arg(i)
                       .arg(x)
                       .arg(y)
                       .arg(i % 16 + 1, 4, 10, QLatin1Char('0'));
    }
    TextFiles::writeAtomically(root + QStringLiteral("/Plugin/Page0000.cfg"), TextFiles::encodePlain(buttons));
    TextFiles::writeAtomically(root + QStringLiteral("/Plugin/Page0001.cfg"), TextFiles::encodePlain({}));
    QImage page(1024, 600, QImage::Format_RGB32);
    page.fill(QColor(20, 40, 60));
    page.save(root + QStringLiteral("/Picture/0000_p.png"));
    TextFiles::writeAtomically(root + QStringLiteral("/b.uiprj"),
                               TextFiles::encodePlain({PageList::pictureLine(0, QStringLiteral("0000_p.png")),
                                                       PageList::blankLine(1)}));
    ProjectSettings s;
    s.xsize = QStringLiteral("1024");
    s.ysize = QStringLiteral("600");
    TextFiles::writeAtomically(root + QStringLiteral("/b.ini"), s.toIni());
    return root + QStringLiteral("/b.uiprj");
}

double median(QVector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.isEmpty() ? 0 : v[v.size() / 2];
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? qMax(1, atoi(argv[1])) : 20;
    QTemporaryDir appDir, dir;
    AppPaths::setAppDirOverride(appDir.path());
    Prompts::installResponder({});
    const QString uiprj = makeProject(dir.path());

    MainWindow w;
    w.resize(1600, 1000);
    w.show();
    if (!w.openProjectFile(uiprj)) {
        std::printf("could not open the generated project\n");
        return 1;
    }
    auto *pages = w.findChild<QTableView *>(QStringLiteral("tableView_Page"));
    auto *canvas = w.findChild<QLabel *>(QStringLiteral("label_Show"));

    // page switch: from the empty page to the page of 128 buttons
    QVector<double> switchMs;
    for (int r = 0; r < rounds; ++r) {
        w.on_tableView_Page_clicked(pages->model()->index(1, 0));
        QElapsedTimer t;
        t.start();
        w.on_tableView_Page_clicked(pages->model()->index(0, 0));
        app.processEvents();
        switchMs << t.nsecsElapsed() / 1e6;
    }
    const int widgets = w.canvasWidgets()->count();

    // one drag step: a mouse move while a button is held
    const QPoint start(10, 10);
    QMouseEvent press(QEvent::MouseButtonPress, start, canvas->mapToGlobal(start), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(canvas, &press);
    QVector<double> dragMs;
    for (int r = 0; r < rounds * 10; ++r) {
        const QPoint at(12 + r % 200, 12 + (r / 3) % 100);
        QMouseEvent move(QEvent::MouseMove, at, canvas->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QElapsedTimer t;
        t.start();
        QApplication::sendEvent(canvas, &move);
        app.processEvents();
        dragMs << t.nsecsElapsed() / 1e6;
    }
    QMouseEvent release(QEvent::MouseButtonRelease, start, canvas->mapToGlobal(start), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &release);

    const double sw = median(switchMs);
    const double dr = median(dragMs);
    std::printf("page of %d buttons with icons, 1024x600, %d rounds (median)\n", widgets, rounds);
    std::printf("page switch: %7.2f ms   target <= 100 ms -> %s\n", sw, sw <= 100 ? "met" : "NOT MET");
    std::printf("drag step:   %7.3f ms   target <= 16 ms  -> %s\n", dr, dr <= 16 ? "met" : "NOT MET");
    return 0;
}
