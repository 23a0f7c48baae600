// The project check, the build's range complaints, "vantile-build --check", variable control.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "build/PageChecks.h"
#include "export/ProjectCheck.h"
#include "export/VariableControl.h"
#include "project/TextFiles.h"

using namespace core;

using Pages = QList<QStringList>;
Q_DECLARE_METATYPE(Pages)

namespace {

const QString kPageLine = "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);P;Disable;0;0;Disable;";

QString button(const QString &object, const QString &name, int x, int y, int w = 20, int h = 20)
{
    return QString("%1:%2,%3,%4,%5,0x0020,,,,%6,Disable,Disable,0x0000,0xFFFF,1;").arg(object).arg(x).arg(y).arg(w).arg(h).arg(name);
}

// A project "p" on 800 x 480 with named pages; a null page gets no file.
struct Project {
    QTemporaryDir dir;
    QString root = dir.path() + '/';
    ProjectSettings settings;
    QStringList list;

    Project(const QStringList &names, const Pages &pages)
    {
        settings.xsize = "800", settings.ysize = "480";
        for (int r = 0; r < names.size(); ++r) {
            list << "Page" + PageList::pageId(r) + ":RGBColor(0,0,0);" + names[r] + ";RGBColor(0,0,0);";
            if (r < pages.size())
                writeFile(root + PageChecks::pageFile(r, ".cfg"), TextFiles::encodePlain(pages[r]));
        }
    }
};

} // namespace

class TestProjectCheck : public QObject
{
    Q_OBJECT

private slots:
    void fileNames_data()
    {
        addColumns<QStringList, QString>("files", "report");
        QTest::newRow("bad icon and a repeated number")
            << QStringList{"Icon/abc.png", "Icon/0003_a.png", "Icon/0003_b.png", "Icon/0004_c.png"}
            << "Incorrect file naming!\nIcon Folder:\nabc.png\n\nFile name is repeated!\nIcon Folder:\n0003_a.png\n0003_b.png\n\n";
        QTest::newRow("empty Gif folder") << QStringList{"Gif/"} << "";
        // Fonts take two digits; other files and the build's own block are no fonts. Folders in report order.
        QTest::newRow("folders") << QStringList{"WavBin/1_BeepWav.bin", "Picture/home.png", "Picture/0001_a.jpg", "FontBin/00_AFont.bin",
                                                "FontBin/7_BFont.bin", "FontBin/LICENSE.txt", "FontBin/Font_all.bin"}
                                 << "Incorrect file naming!\nFontBin Folder:\n7_BFont.bin\n\nPicture Folder:\nhome.png\n\nWavBin Folder:\n1_BeepWav.bin\n\n";
        QTest::newRow("video numbers of any length") << QStringList{"Video/12_clip.mp4", "Video/12.avi", "Video/7_x.mp4"}
                                                     << "File name is repeated!\nVideo Folder:\n12.avi\n12_clip.mp4\n\n";
    }
    void fileNames()
    {
        QFETCH(QStringList, files);
        QTemporaryDir dir;
        for (const QString &f : files)
            f.endsWith('/') ? void(QDir(dir.path()).mkpath(f)) : writeFile(dir.path() + '/' + f, "x");
        QTEST(ProjectCheck::CheckFileNames(dir.path()), "report");
    }

    void widgetNames_data()
    {
        addColumns<Pages, int, QString, Pages>("pages", "bad", "text", "kept");
        const QString b0 = button("button_0", "b0", 0, 0), b0again = button("button_0", "other", 5, 5);
        QTest::newRow("invalid and repeated") << Pages{{kPageLine, "xyz_1:1,2;", b0, b0again, "ab:1;"}} << 2
                                              << "Incorrect widget name!\nPage0:\nInvalid widget name:xyz_1\n"
                                                 "Repeated widget name:button_0\nBad widget names: 2\n\n"
                                              << Pages{{kPageLine, b0, "ab:1;"}};
        // One object name on two pages, one `name` row on two widgets: all well.
        const Pages fine{{b0, button("button_1", "b0", 0, 0)}, {b0}};
        QTest::newRow("names that pass") << fine << 0 << "" << fine;
    }
    void widgetNames()
    {
        QFETCH(Pages, pages); QFETCH(int, bad); QFETCH(QString, text); QFETCH(Pages, kept);
        QString found;
        QCOMPARE(ProjectCheck::CheckWidgetNames(pages, &found), bad);
        QCOMPARE(found, text);
        QCOMPARE(pages, kept);
    }

    // The whole report: groups in order, the repeated line left out of the
    // range check; a faultless project leaves an empty file.
    void report()
    {
        Project p({"Home", "Setup"}, {{kPageLine, button("button_0", "in", 780, 460), button("button_1", "out", 790, 0),
                                       button("button_1", "again", 900, 0)},
                                      {"what:1;", button("button_0", "low", 5, 470, 10, 11)}});
        writeFile(p.root + "Icon/abc.png", "x");
        const ProjectCheck::Report r = ProjectCheck::run(p.root, p.list, p.settings);
        const QString expected = "Incorrect file naming!\nIcon Folder:\nabc.png\n\n"
                                 "Incorrect widget name!\nPage0:\nRepeated widget name:button_1\n"
                                 "Page1:\nInvalid widget name:what\nBad widget names: 2\n\n"
                                 "Out of page range!\nPage0,widget_Name:out, X:790 Y:0\nPage1,widget_Name:low, X:5 Y:470\n";
        QCOMPARE(r.text, expected);
        QCOMPARE(r.badNames, 2);
        QVERIFY(ProjectCheck::writeReport(p.root, r.text));
        QCOMPARE(readAll(p.root + ProjectCheck::kReportFile), expected.toUtf8());

        // Faultless but for a page file that is a folder: told in the log, the page counts as empty.
        Project clean({"Home", "Setup"}, {{kPageLine, button("button_0", "whole", 0, 0, 800, 480)}});
        QDir().mkpath(clean.root + "Plugin/Page0001.cfg");
        QStringList log;
        QVERIFY(ProjectCheck::run(clean.root, clean.list, clean.settings, [&log](const QString &l) { log << l; }).clean());
        QVERIFY(log.join('\n').contains("Can't open this file:" + clean.root + "Plugin/Page0001.cfg"));
    }

    // A build runs the range check too; its findings go to the error text.
    void buildRangeComplaints()
    {
        BuildDir d;
        d.blankPages(2);
        d.ctx.settings.xsize = "800", d.ctx.settings.ysize = "480";
        d.page(1, {button("button_0", "wide", 700, 10, 101, 20)});
        PageChecks::preBuildChecks(d.ctx);
        QCOMPARE(d.ctx.errorText, QString("Out of page range!\nPage1,widget_Name:wide, X:700 Y:10\n"));
    }

    void toolCheck()
    {
        QTemporaryDir dir;
        QCOMPARE(QProcess::execute("cp", {"-r", VANTILE_SOURCE_DIR "/examples/demo/.", dir.path()}), 0);
        const QString uiprj = dir.path() + "/demo.uiprj", report = dir.path() + "/Project-error-information.txt";
        QByteArray out;
        auto runTool = [&out](const QStringList &args) {
            QProcess p;
            p.start(VANTILE_BUILD_TOOL, args);
            return p.waitForFinished(60000) ? (out = p.readAllStandardOutput(), p.exitCode()) : -1;
        };
        QCOMPARE(runTool({"--check", uiprj}), 0);
        QCOMPARE(out, QByteArray());
        QVERIFY(QFileInfo::exists(report) && readAll(report).isEmpty());

        writeFile(dir.path() + "/Icon/0005_dup.png", readAll(dir.path() + "/Icon/0005_digit5.png"));
        QCOMPARE(runTool({"--check", uiprj}), 1);
        const QByteArray expected = "File name is repeated!\nIcon Folder:\n0005_digit5.png\n0005_dup.png\n\n";
        QCOMPARE(out, expected);
        QCOMPARE(readAll(report), expected);
        QCOMPARE(runTool({"--check", "--strict", uiprj}), 2);

        // Variable control on pages already in today's form: byte for byte as they were.
        const ProjectLoad load = loadProject(uiprj);
        VariableControl::ExportVariableControl(uiprj, load.input.projectDir, load.input.settings, load.input.pageLines);
        for (int r = 0; r < load.input.pageLines.size(); ++r)
            QCOMPARE(readAll(load.input.projectDir + PageChecks::pageFile(r, ".cfg")),
                     readAll(VANTILE_SOURCE_DIR "/examples/demo/" + PageChecks::pageFile(r, ".cfg")));
    }

    // Kinds with variables are written anew; every other line, the page
    // line and a text over two physical lines stay; an unreadable page is
    // not rewritten.
    void variableControl()
    {
        const QString oldKey = "kbkey_0:10,20,30,40,0x31,,k0;", oldButton = "button_0:1,2,3,4,0x20;",
                      broken = "label_9:first half\nsecond half;";
        Project p({"Home", "Setup"}, {{kPageLine, oldKey, oldButton, broken, "xyz_0:1;"}});
        QDir().mkpath(p.root + "Plugin/Page0001.cfg");
        QStringList told;
        const Notifier notify = [&](const QString &t, const QString &m) { told << t + ": " + m; };
        VariableControl::ExportVariableControl(p.root + "p.uiprj", p.root, p.settings, p.list, {}, notify);
        const QStringList page0 = {kPageLine, "kbkey_0:10,20,30,40,0x0031,,k0,Disable,1;", oldButton, broken, "xyz_0:1;"};
        QCOMPARE(readAll(p.root + "Plugin/Page0000.cfg"), TextFiles::encodePlain(page0));
        QCOMPARE(readAll(p.root + "Variablecontrol/Page0000.txt"), TextFiles::encodePlain(QStringList{"//PAGE:Home"} + page0));
        QCOMPARE(readAll(p.root + "Variablecontrol/Page0001.txt"), TextFiles::encodePlain({"//PAGE:Setup"}));
        QVERIFY(readAll(p.root + "p.ini").contains("\nSupplierVer: V1.00\n"));
        QCOMPARE(told, QStringList{"Note: The conversion is complete!"});
        // A text copy that can't be written: the page file is still converted.
        QVERIFY(QDir(p.root + "Variablecontrol").removeRecursively());
        writeFile(p.root + "Variablecontrol", "in the way");
        QCOMPARE(VariableControl::ExportVariableControl(p.root + "p.uiprj", p.root, p.settings, p.list, {}, notify).status,
                 VariableControl::Result::SaveFailed);
        QCOMPARE(told.last(), QString("Warning: Save the file failed"));
        // No pages: the warning, and nothing is written.
        QCOMPARE(VariableControl::ExportVariableControl(p.root + "p.uiprj", p.root, p.settings, {}, {}, notify).written, QStringList());
        QCOMPARE(told.last(), QString("Warning: There aren't any page to bin!"));
    }
};

QTEST_GUILESS_MAIN(TestProjectCheck)
#include "tst_project_check.moc"
