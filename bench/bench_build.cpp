// Whole-build cost on a generated 100-page 1024 x 600 project: the time of
// the full build against the time of only decoding its pictures, and the
// peak memory of a build of 10 pages against one of 100 pages (and one of
// 200 pages, its pictures copies of the 100 under other names).
//
//   bench_build [repetitions, default 2]
//
// The project holds one distinct photo-like PNG per page (gradients with
// grain, so the files do not compress to nothing and no picture is reused
// by name), a few buttons per page and a 1024 x 600 settings file.
//
// Time: each phase runs `repetitions` times in this process and the best
// run counts. Decode-only loads every PNG with QImage, which any build has
// to do at least; the full build is loadProject + MakeBin with the
// standard builders and a fixed build time.
//
// Memory: peak RSS (VmHWM) cannot be reset, so each memory figure comes
// from a child process of this program that builds one project and prints
// its VmHWM before and after the build:
//
//   bench_build --child PATH/project.uiprj
//
// With VANTILE_BENCH_KEEP set in the environment the generated projects
// stay in the temporary directory for a closer look (a profiler run).

#include "BenchSupport.h"

#include "build/MakeBin.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtMath>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <vector>

using namespace vantile;
using namespace bench;

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 600;
constexpr int kPages = 100;
constexpr int kSmallPages = 10;
constexpr int kLargePages = 200;            // a third memory point, pictures copied from the 100
constexpr int kButtonsPerPage = 4;
constexpr int kPngQuality = 80;            // zlib level 1: fast to write; the grain keeps the files large
constexpr double kTargetRatio = 1.3;        // full build <= 1.3 x decode-only
constexpr double kMemoryTolerance = 1.25;   // 100-page peak within 25 % of 10-page peak

const QDateTime kBuildTime(QDate(2024, 1, 2), QTime(3, 4, 5));

// A photo-like picture: smooth colour fields that differ per page, with
// per-channel grain of +-4.
QImage photo(int page)
{
    QImage img(kWidth, kHeight, QImage::Format_RGB32);
    quint32 state = 0x9E3779B9u ^ quint32(page * 7919 + 1);
    auto next = [&state]() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    };
    const double fu = 2.0 + 0.07 * page, fv = 1.0 + 0.05 * (page % 13), phase = 0.37 * page;
    std::vector<double> su(kWidth), cu(kWidth);
    for (int x = 0; x < kWidth; ++x) {
        su[x] = qSin(fu * x / kWidth + phase);
        cu[x] = qCos(fu * x / kWidth + phase);
    }
    for (int y = 0; y < kHeight; ++y) {
        const double v = double(y) / kHeight;
        const double sv = qSin(fv * v * 3.0), cv = qCos(fv * v * 3.0);
        QRgb *row = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < kWidth; ++x) {
            const double u = double(x) / kWidth;
            const quint32 n = next();
            const int gr = int(n & 7) - 4, gg = int((n >> 3) & 7) - 4, gb = int((n >> 6) & 7) - 4;
            const double s = su[x] * cv + cu[x] * sv;   // sin(a + b)
            const double c = cu[x] * cv - su[x] * sv;   // cos(a + b)
            const int r = qBound(0, int(127.5 + 127.5 * s) + gr, 255);
            const int g = qBound(0, int(255.0 * v * (1.0 - 0.4 * u) + 20.0 * (page % 7)) % 256 + gg, 255);
            const int b = qBound(0, int(127.5 + 127.5 * c) + gb, 255);
            row[x] = qRgb(r, g, b);
        }
    }
    return img;
}

QString pictureName(int page)
{
    return PageList::pageId(page) + QStringLiteral("_photo.png");
}

// Writes an n-page project "bench" into dir; returns the .uiprj path, or
// an empty string when a file could not be written.
// Pictures are drawn, or copied from the first `sourcePages` pictures of
// pictureSource under this project's own names (so none is reused by name).
QString makeProject(const QString &dir, int pages, const QString &pictureSource = QString(), int sourcePages = 0)
{
    const QString root = dir + QLatin1Char('/');
    QByteArray list("\xEF\xBB\xBF");
    for (int i = 0; i < pages; ++i) {
        const QString line = QStringLiteral("Page") + PageList::pageId(i) + QLatin1Char(':')
            + pictureName(i) + QLatin1Char(';') + QStringLiteral("Page %1").arg(i) + QLatin1Char(';')
            + QLatin1String(PageList::kBlackColor) + QLatin1Char(';');
        list += line.toUtf8() + '\n';
    }
    if (!writeFile(root + QStringLiteral("bench.uiprj"), list))
        return QString();

    ProjectSettings s;
    s.xsize = QStringLiteral("1024");
    s.ysize = QStringLiteral("600");
    s.panelType = 3;
    s.flashSize = 8; // the largest flash: 100 full-screen pictures do not fit smaller ones
    s.volume = QStringLiteral("20");
    s.languageNum = QStringLiteral("1");
    if (!writeFile(root + QStringLiteral("bench.ini"), s.toIni()))
        return QString();

    for (int i = 0; i < pages; ++i) {
        QByteArray cfg("\xEF\xBB\xBF");
        for (int k = 0; k < kButtonsPerPage; ++k) {
            const int x = 40 + 240 * k, y = 480;
            cfg += QStringLiteral("button_%1:%2,%3,120,40,0x0020,,,,button_%1,Disable,Disable,0x0000,0xFFFF,1;\n")
                       .arg(k)
                       .arg(x)
                       .arg(y)
                       .toUtf8();
        }
        if (!writeFile(root + QStringLiteral("Plugin/Page") + PageList::pageId(i) + QStringLiteral(".cfg"), cfg))
            return QString();
    }

    QDir().mkpath(root + QStringLiteral("Picture"));
    for (int i = 0; i < pages; ++i) {
        const QString target = root + QStringLiteral("Picture/") + pictureName(i);
        if (!pictureSource.isEmpty()) {
            if (!QFile::copy(pictureSource + QStringLiteral("/Picture/") + pictureName(i % sourcePages), target))
                return QString();
        } else if (!photo(i).save(target, "PNG", kPngQuality)) {
            return QString();
        }
    }
    return root + QStringLiteral("bench.uiprj");
}

struct BuildRun {
    bool ok = false;
    QString problem;
    qint64 imageSize = 0;
    int complaints = 0;
};

BuildRun buildOnce(const QString &uiprj)
{
    BuildRun run;
    const ProjectLoad load = loadProject(uiprj);
    if (!load.ok) {
        run.problem = load.reason;
        return run;
    }
    MakeBin driver;
    installStandardBuild(driver);
    driver.setNotifier([](const QString &, const QString &) {});
    BuildOptions options;
    options.fixedTime = kBuildTime;
    const BuildResult result = driver.run(load.input, options);
    run.ok = result.imageWritten;
    run.imageSize = result.imageSize;
    run.complaints = result.complaints().size();
    if (!run.ok)
        run.problem = result.errorText.isEmpty() ? QStringLiteral("no image written") : result.errorText;
    return run;
}

// Decodes every picture of the project; returns the pixels decoded.
qint64 decodeAll(const QString &projectDir, int pages)
{
    qint64 pixels = 0;
    for (int i = 0; i < pages; ++i) {
        const QImage image(projectDir + QStringLiteral("/Picture/") + pictureName(i));
        pixels += qint64(image.width()) * image.height();
    }
    return pixels;
}

int runChild(const QString &uiprj)
{
    const qint64 before = peakRssKb();
    QElapsedTimer timer;
    timer.start();
    const BuildRun run = buildOnce(uiprj);
    const qint64 ms = timer.elapsed();
    reportChild(run.ok, ms, before,
                QStringLiteral("image=%1 complaints=%2").arg(run.imageSize).arg(run.complaints));
    if (!run.ok)
        out("CHILD problem: %s", qPrintable(run.problem.left(300)));
    return run.ok ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() == 3 && args.at(1) == QLatin1String("--child"))
        return runChild(args.at(2));

    const int reps = args.size() > 1 ? qMax(1, args.at(1).toInt()) : 2;

    QTemporaryDir tmp;
    if (!tmp.isValid()) {
        out("cannot make a temporary directory");
        return 1;
    }
    if (qEnvironmentVariableIsSet("VANTILE_BENCH_KEEP")) {
        tmp.setAutoRemove(false);
        out("keeping the generated projects in %s", qPrintable(tmp.path()));
    }
    const QString bigDir = tmp.path() + QStringLiteral("/p100");
    const QString smallDir = tmp.path() + QStringLiteral("/p10");
    const QString largeDir = tmp.path() + QStringLiteral("/p200");

    out("bench_build: %d pages of %dx%d, one distinct PNG per page, %d buttons per page", kPages, kWidth,
        kHeight, kButtonsPerPage);

    QElapsedTimer timer;
    timer.start();
    const QString bigProject = makeProject(bigDir, kPages);
    const QString smallProject = bigProject.isEmpty() ? QString() : makeProject(smallDir, kSmallPages, bigDir, kPages);
    const QString largeProject = smallProject.isEmpty() ? QString() : makeProject(largeDir, kLargePages, bigDir, kPages);
    if (bigProject.isEmpty() || smallProject.isEmpty() || largeProject.isEmpty()) {
        out("cannot write the generated project under %s", qPrintable(tmp.path()));
        return 1;
    }
    qint64 pngBytes = 0;
    for (int i = 0; i < kPages; ++i)
        pngBytes += QFileInfo(bigDir + QStringLiteral("/Picture/") + pictureName(i)).size();
    out("generated in %.2f s; PNGs %.1f MB (%.2f bytes/pixel)", timer.elapsed() / 1000.0, pngBytes / 1e6,
        double(pngBytes) / (double(kPages) * kWidth * kHeight));

    // --- time -------------------------------------------------------------
    double bestDecode = 1e300, bestBuild = 1e300;
    qint64 imageSize = 0;
    for (int r = 0; r < reps; ++r) {
        timer.restart();
        const qint64 pixels = decodeAll(bigDir, kPages);
        const double decodeS = timer.nsecsElapsed() / 1e9;
        if (pixels != qint64(kPages) * kWidth * kHeight) {
            out("decode-only: a picture could not be read (%lld pixels)", pixels);
            return 1;
        }
        timer.restart();
        const BuildRun run = buildOnce(bigProject);
        const double buildS = timer.nsecsElapsed() / 1e9;
        if (!run.ok) {
            out("full build failed: %s", qPrintable(run.problem.left(500)));
            return 1;
        }
        if (run.complaints)
            out("note: the build reported %d complaint(s)", run.complaints);
        imageSize = run.imageSize;
        out("run %d: decode-only %.3f s, full build %.3f s", r + 1, decodeS, buildS);
        bestDecode = std::min(bestDecode, decodeS);
        bestBuild = std::min(bestBuild, buildS);
    }
    const double ratio = bestBuild / bestDecode;
    out("");
    out("decode-only (QImage, %d PNGs):   %.3f s  (%.1f ms/page)", kPages, bestDecode, 1000.0 * bestDecode / kPages);
    out("full build (MakeBin, %d pages):  %.3f s  (%.1f ms/page), image %.1f MB", kPages, bestBuild,
        1000.0 * bestBuild / kPages, imageSize / 1e6);
    out("ratio full/decode:               %.2fx   target: full build <= %.1fx decode-only -> %s", ratio,
        kTargetRatio, ratio <= kTargetRatio ? "met" : "NOT MET");

    // --- memory -----------------------------------------------------------
    const ChildFigures small = runChildProcess(smallProject);
    const ChildFigures big = runChildProcess(bigProject);
    const ChildFigures large = runChildProcess(largeProject);
    out("");
    if (!small.ok || !big.ok || !large.ok) {
        out("peak memory: a child build failed");
        return 1;
    }
    out("peak RSS, %3d pages: %7.1f MB  (%.1f MB before the build; build %.2f s)", kSmallPages, small.after / 1024.0,
        small.before / 1024.0, small.ms / 1000.0);
    out("peak RSS, %3d pages: %7.1f MB  (%.1f MB before the build; build %.2f s)", kPages, big.after / 1024.0,
        big.before / 1024.0, big.ms / 1000.0);
    out("peak RSS, %3d pages: %7.1f MB  (%.1f MB before the build; build %.2f s)", kLargePages,
        large.after / 1024.0, large.before / 1024.0, large.ms / 1000.0);
    const double growth = double(big.after) / double(small.after);
    out("peak 100 / 10 pages:  %.2fx    target: peak memory independent of the number of pages "
        "(within %.0f %%) -> %s",
        growth, (kMemoryTolerance - 1.0) * 100.0, growth <= kMemoryTolerance ? "met" : "NOT MET");
    out("peak 200 / 100 pages: %.2fx", double(large.after) / double(big.after));
    return 0;
}
