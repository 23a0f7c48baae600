#include "app/MainWindow.h"

#include <QApplication>
#include <QFont>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QFont font = app.font();
    font.setPointSize(12);
    font.setFamily(QStringLiteral("Microsoft YaHei"));
    QFont::insertSubstitutions(QStringLiteral("Microsoft YaHei"),
                               {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("WenQuanYi Micro Hei")});
    app.setFont(font);

    vantile::MainWindow *w = new vantile::MainWindow;
    w->show();
    // One optional argument: a .uiprj to open at start, as Open does.
    const QStringList args = app.arguments();
    if (args.size() > 1)
        w->openProjectFile(args.at(1));
    const int rc = app.exec();
    delete w;
    return rc;
}
