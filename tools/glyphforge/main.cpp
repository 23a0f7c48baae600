// GlyphForge: our font maker. Renders an installed font at a pixel size into
// a bitmap font file that the designer, the build and the panel read.
//
//   GlyphForge                       the window: pick a font, preview, write
//                                    NN_<name>Font.bin into a project's FontBin/
//   GlyphForge --family F --size PX --encoding GB2312 --range 0x20-0x7E
//              [--depth 1] [--bold] --out PATH
//                                    the same without a window (exit 0 written,
//                                    2 wrong arguments, 3 not written)

#include "GlyphForgeWindow.h"

#include "build/FontMaker.h"
#include "project/AppPaths.h"
#include "project/EditorConfig.h"
#include "project/TextFiles.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTranslator>

#include <cstdio>
#include <memory>

using namespace vantile;

namespace {

int fail(int code, const QString &reason)
{
    std::fputs(("GlyphForge: " + reason + '\n').toUtf8().constData(), stderr);
    return code;
}

// "0x20-0x7E", "32-126", "0x4E00" (one code).
bool parseRange(const QString &text, int *first, int *last)
{
    const QStringList parts = text.split(QLatin1Char('-'));
    if (parts.isEmpty() || parts.size() > 2)
        return false;
    bool ok1 = false, ok2 = false;
    *first = parts[0].trimmed().toInt(&ok1, 0);
    *last = parts.value(1, parts[0]).trimmed().toInt(&ok2, 0);
    return ok1 && ok2;
}

int headless(const QStringList &args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Renders an installed font into a panel font file."));
    parser.addHelpOption();
    const QCommandLineOption family(QStringLiteral("family"), QStringLiteral("Font family."), QStringLiteral("F"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Pixel size (4-255)."), QStringLiteral("PX"));
    const QCommandLineOption encoding(QStringLiteral("encoding"),
                                      FontMaker::encodingNames().join(QStringLiteral(", ")), QStringLiteral("E"),
                                      QStringLiteral("ASCII"));
    const QCommandLineOption range(QStringLiteral("range"), QStringLiteral("Codes, e.g. 0x20-0x7E."),
                                   QStringLiteral("R"), QStringLiteral("0x20-0x7E"));
    const QCommandLineOption depth(QStringLiteral("depth"), QStringLiteral("Bits a pixel: 1, 2, 4 or 8."),
                                   QStringLiteral("B"), QStringLiteral("1"));
    const QCommandLineOption bold(QStringLiteral("bold"), QStringLiteral("Bold glyphs."));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("The font file to write."),
                                 QStringLiteral("PATH"));
    parser.addOptions({family, size, encoding, range, depth, bold, out});
    if (!parser.parse(args))
        return fail(2, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(parser.helpText().toUtf8().constData(), stdout);
        return 0;
    }
    FontMaker::Options o;
    o.family = parser.value(family);
    bool ok = false;
    o.pixelSize = parser.value(size).toInt(&ok);
    if (o.family.isEmpty() || !ok || !parser.isSet(out))
        return fail(2, QStringLiteral("--family, --size and --out are needed"));
    o.encoding = parser.value(encoding);
    o.depthBits = parser.value(depth).toInt();
    o.bold = parser.isSet(bold);
    if (!parseRange(parser.value(range), &o.firstCode, &o.lastCode))
        return fail(2, QStringLiteral("--range wants FIRST-LAST, e.g. 0x20-0x7E"));
    QString error;
    const QByteArray bytes = FontMaker::make(o, &error);
    if (bytes.isEmpty())
        return fail(2, error);
    if (!TextFiles::writeAtomically(parser.value(out), bytes, &error))
        return fail(3, parser.value(out) + QStringLiteral(": ") + error);
    std::printf("%s: %d bytes\n", qPrintable(parser.value(out)), bytes.size());
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    bool windowless = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray a(argv[i]);
        windowless = windowless || a.startsWith("--out") || a == "--help" || a == "-h";
    }
    if (windowless) {
        // rendering needs fonts, not a screen
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        return headless(QGuiApplication::arguments());
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("GlyphForge"));
    // the window speaks the designer's language (its editorConfig.ini beside us)
    QTranslator translator;
    const bool chinese = EditorConfig::load(AppPaths::editorConfigPath()).languageIndex == 1;
    if (translator.load(AppPaths::appDir() + (chinese ? QStringLiteral("/Translate_CN.qm")
                                                      : QStringLiteral("/Translate_EN.qm"))))
        QApplication::installTranslator(&translator);
    GlyphForgeWindow window;
    window.show();
    return QApplication::exec();
}
