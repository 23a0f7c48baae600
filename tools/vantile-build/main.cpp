// vantile-build: builds a project into Morvane_Flash.bin without the designer.
//
//   vantile-build PATH/project.uiprj [--time "yyyy-MM-dd hh:mm:ss"] [--strict]
//   vantile-build --check PATH/project.uiprj
//
// Runs the same build as the designer's "Build project" and writes the same
// files. The build log goes to standard output as it is made. Exit codes:
// 0 the image was written; 1 the project could not be opened; 2 wrong
// arguments; 3 the image was not written; 4 with --strict, the build had
// complaints (Make_error_info.txt) or the image is larger than the flash.
// --time fixes the build's time, so two builds of one project give the
// same bytes.
//
// --check runs the designer's "Check Project" instead of a build: the
// report is printed and written to Project-error-information.txt. Exit
// codes: 0 nothing found; 1 something found, or the project could not be
// opened; 2 wrong arguments; 3 the report could not be written.

#include "build/MakeBin.h"
#include "export/ProjectCheck.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>
#include <exception>
#include <new>

using namespace vantile;

namespace {

void out(const QString &line)
{
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

int fail(int code, const QString &reason)
{
    std::fflush(stdout);
    std::fputs(("vantile-build: " + reason).toUtf8().constData(), stderr);
    std::fputc('\n', stderr);
    return code;
}

// The project check: the report on standard output and in its file.
int checkProject(const BuildInput &input)
{
    const ProjectCheck::Report report =
        ProjectCheck::run(input.projectDir, input.pageLines, input.settings, out);
    if (!report.clean())
        std::fputs(report.text.toUtf8().constData(), stdout);
    QString error;
    if (!ProjectCheck::writeReport(input.projectDir, report.text, &error))
        return fail(BuildExit::NoImage, QStringLiteral("Can't write ") + input.projectDir
                                            + QLatin1String(ProjectCheck::kReportFile) + QStringLiteral(": ") + error);
    std::fflush(stdout);
    constexpr int kFaultsFound = 1;
    return report.clean() ? BuildExit::Ok : kFaultsFound;
}

} // namespace

int run(int argc, char *argv[]);

int main(int argc, char *argv[])
{
    // Whatever goes wrong inside, a CI log gets one line and exit code 3.
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc &) {
        return fail(BuildExit::NoImage, QStringLiteral("the build stopped: out of memory"));
    } catch (const std::exception &e) {
        return fail(BuildExit::NoImage, QStringLiteral("the build stopped: ") + QString::fromLocal8Bit(e.what()));
    } catch (...) {
        return fail(BuildExit::NoImage, QStringLiteral("the build stopped: unknown error"));
    }
}

int run(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vantile-build"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Builds a Vantile project into Morvane_Flash.bin."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("project"), QStringLiteral("The project's .uiprj file."));
    const QCommandLineOption timeOption(QStringLiteral("time"),
                                        QStringLiteral("Build time \"yyyy-MM-dd hh:mm:ss\" instead of now."),
                                        QStringLiteral("time"));
    const QCommandLineOption strictOption(
        QStringLiteral("strict"), QStringLiteral("Fail when the build has complaints or does not fit the flash."));
    const QCommandLineOption checkOption(
        QStringLiteral("check"), QStringLiteral("Check the project instead of building it (Project-error-information.txt)."));
    parser.addOption(timeOption);
    parser.addOption(strictOption);
    parser.addOption(checkOption);
    if (!parser.parse(QCoreApplication::arguments()))
        return fail(BuildExit::Usage, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        out(parser.helpText());
        return BuildExit::Ok;
    }
    const QStringList args = parser.positionalArguments();
    if (args.size() != 1)
        return fail(BuildExit::Usage, QStringLiteral("usage: vantile-build PATH/project.uiprj "
                                                     "[--time \"yyyy-MM-dd hh:mm:ss\"] [--strict]\n"
                                                     "       vantile-build --check PATH/project.uiprj"));
    const bool check = parser.isSet(checkOption);
    if (check && (parser.isSet(timeOption) || parser.isSet(strictOption)))
        return fail(BuildExit::Usage, QStringLiteral("--check takes no --time or --strict"));

    BuildOptions options;
    if (parser.isSet(timeOption)) {
        options.fixedTime = QDateTime::fromString(parser.value(timeOption), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
        if (!options.fixedTime.isValid())
            return fail(BuildExit::Usage, QStringLiteral("--time wants \"yyyy-MM-dd hh:mm:ss\", not \"")
                                              + parser.value(timeOption) + QLatin1Char('"'));
    }

    const ProjectLoad load = loadProject(args.first());
    for (const QString &w : load.warnings)
        out(QStringLiteral("Warning: ") + w);
    if (!load.ok)
        return fail(BuildExit::CannotOpen, load.reason);
    if (check)
        return checkProject(load.input);

    MakeBin driver;
    installStandardBuild(driver);
    driver.setLogSink(out);
    driver.setNotifier([](const QString &title, const QString &text) { out(title + QStringLiteral(": ") + text); });
    const BuildResult result = driver.run(load.input, options);

    QString reason;
    const int code = BuildExit::forResult(result, parser.isSet(strictOption), &reason);
    return code == BuildExit::Ok ? code : fail(code, reason);
}
