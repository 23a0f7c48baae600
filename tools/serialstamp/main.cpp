// SerialStamp: our picture-digit maker. Renders the digits of an installed
// font (or cuts a picture strip) into the run of pictures a picture number
// or a clock shows: 0-9, minus, point, colon, named for a project's Icon/.
//
//   SerialStamp                      the window: pick a font and colours,
//                                    preview, write into a project's Icon/
//   SerialStamp --family F --size PX --color 0xRRGGBB [--background 0xRRGGBB]
//               --first N [--name digit] [--bold] --out DIR
//   SerialStamp --strip PICTURE [--cells 10] [--background 0xRRGGBB]
//               --first N [--name digit] --out DIR
//                                    the same without a window (exit 0
//                                    written, 2 wrong arguments, 3 not written)

#include "SerialStampWindow.h"

#include "build/DigitMaker.h"
#include "project/AppPaths.h"
#include "project/EditorConfig.h"
#include "project/MediaFiles.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTranslator>

#include <cstdio>

using namespace vantile;

namespace {

int fail(int code, const QString &reason)
{
    std::fputs(("SerialStamp: " + reason + '\n').toUtf8().constData(), stderr);
    return code;
}

int headless(const QStringList &args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Renders the digit pictures of a picture number or a clock."));
    parser.addHelpOption();
    const QCommandLineOption family(QStringLiteral("family"), QStringLiteral("Font family."), QStringLiteral("F"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Pixel size (4-255)."), QStringLiteral("PX"));
    const QCommandLineOption color(QStringLiteral("color"), QStringLiteral("Text colour, 0xRRGGBB."),
                                   QStringLiteral("RGB"));
    const QCommandLineOption background(QStringLiteral("background"),
                                        QStringLiteral("Background colour, 0xRRGGBB (transparent without)."),
                                        QStringLiteral("RGB"));
    const QCommandLineOption bold(QStringLiteral("bold"), QStringLiteral("Bold digits."));
    const QCommandLineOption strip(QStringLiteral("strip"),
                                   QStringLiteral("A picture of equal cells to cut instead of a font."),
                                   QStringLiteral("PICTURE"));
    const QCommandLineOption cells(QStringLiteral("cells"), QStringLiteral("Cells of the strip (10-13)."),
                                   QStringLiteral("N"), QStringLiteral("10"));
    const QCommandLineOption first(QStringLiteral("first"), QStringLiteral("Icon number of the digit 0."),
                                   QStringLiteral("N"));
    const QCommandLineOption name(QStringLiteral("name"), QStringLiteral("Name behind the number."),
                                  QStringLiteral("NAME"), QStringLiteral("digit"));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("The folder to write into."),
                                 QStringLiteral("DIR"));
    parser.addOptions({family, size, color, background, bold, strip, cells, first, name, out});
    if (!parser.parse(args))
        return fail(2, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(parser.helpText().toUtf8().constData(), stdout);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return fail(2, QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first()));

    DigitMaker::Options o;
    bool ok = false;
    o.first = parser.value(first).toInt(&ok);
    if (!ok || !parser.isSet(out))
        return fail(2, QStringLiteral("--first and --out are needed"));
    o.name = parser.value(name);
    if (parser.isSet(background)) {
        o.transparent = false;
        if (!DigitMaker::parseColor(parser.value(background), &o.background))
            return fail(2, QStringLiteral("--background wants 0xRRGGBB, not \"%1\"").arg(parser.value(background)));
    }

    DigitMaker::Run run;
    if (parser.isSet(strip)) {
        const int n = parser.value(cells).toInt(&ok);
        if (!ok)
            return fail(2, QStringLiteral("--cells wants a number"));
        QString error;
        const QImage picture = MediaFiles::readPicture(parser.value(strip), QSize(), &error);
        if (picture.isNull())
            return fail(2, parser.value(strip) + QStringLiteral(": ") + error);
        run = DigitMaker::cutStrip(picture, o, n);
    } else {
        o.family = parser.value(family);
        o.pixelSize = parser.value(size).toInt(&ok);
        if (o.family.isEmpty() || !ok || !parser.isSet(color))
            return fail(2, QStringLiteral("--family, --size and --color are needed (or --strip)"));
        if (!DigitMaker::parseColor(parser.value(color), &o.color))
            return fail(2, QStringLiteral("--color wants 0xRRGGBB, not \"%1\"").arg(parser.value(color)));
        o.bold = parser.isSet(bold);
        run = DigitMaker::render(o);
    }
    if (!run.ok())
        return fail(2, run.error);

    const QString dir = parser.value(out);
    for (const QString &other : DigitMaker::clashes(run, dir))
        std::fprintf(stderr, "SerialStamp: %s has a number of this run too; remove it\n", qPrintable(other));
    QString error;
    if (!DigitMaker::write(run, dir, &error))
        return fail(3, error);
    std::printf("%s: %d pictures of %d x %d pixels, %s to %s\n", qPrintable(dir), run.pictures.size(),
                run.cellSize().width(), run.cellSize().height(), qPrintable(run.pictures.first().fileName),
                qPrintable(run.pictures.last().fileName));
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1) {
        // any argument means no window; rendering needs fonts, not a screen
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        return headless(QGuiApplication::arguments());
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("SerialStamp"));
    // the window speaks the designer's language (its editorConfig.ini beside us)
    QTranslator translator;
    const bool chinese = EditorConfig::load(AppPaths::editorConfigPath()).languageIndex == 1;
    if (translator.load(AppPaths::appDir() + (chinese ? QStringLiteral("/Translate_CN.qm")
                                                      : QStringLiteral("/Translate_EN.qm"))))
        QApplication::installTranslator(&translator);
    SerialStampWindow window;
    window.show();
    return QApplication::exec();
}
