#include "build/BuildContext.h"

namespace vantile {

QString blockFile(Block block)
{
    switch (block) {
    case Block::Page: return QStringLiteral("Plugin/Page_para_all.bin");
    case Block::VicePage: return QStringLiteral("Plugin/VicePage_para_all.bin");
    case Block::Font: return QStringLiteral("FontBin/Font_all.bin");
    case Block::Language: return QStringLiteral("MultiLanguage/MultiLanguage.bin");
    case Block::Wav: return QStringLiteral("WavBin/Wav_all.bin");
    case Block::Gif: return QStringLiteral("Gif/gif_all.bin");
    case Block::Picture: return QStringLiteral("Picture/picture_all.bin");
    case Block::Icon: return QStringLiteral("Icon/icon_all.bin");
    case Block::StaticText: return QStringLiteral("Plugin/Constant_para_all.bin");
    }
    return QString();
}

QString blockName(Block block)
{
    switch (block) {
    case Block::Page: return QStringLiteral("page");
    case Block::VicePage: return QStringLiteral("Vice page");
    case Block::Font: return QStringLiteral("Font");
    case Block::Language: return QStringLiteral("language");
    case Block::Wav: return QStringLiteral("Wav");
    case Block::Gif: return QStringLiteral("gif");
    case Block::Picture: return QStringLiteral("picture");
    case Block::Icon: return QStringLiteral("icon");
    case Block::StaticText: return QStringLiteral("static text");
    }
    return QString();
}

BuildFlags BuildFlags::of(const ProjectSettings &s)
{
    BuildFlags f;
    f.controller = s.panelType == 10 ? 8 : s.panelType;
    f.rotation = s.rotate;
    const bool turned = s.rotate == 1 || s.rotate == 3;
    f.logicalWidth = turned ? s.ySizeValue() : s.xSizeValue();
    f.logicalHeight = turned ? s.xSizeValue() : s.ySizeValue();
    f.rgb888 = s.colorDepth == 1;
    f.argb = s.aRgbPng;
    f.bgr = s.tft.bgr;
    f.nand = (f.controller == 3 || f.controller == 4) && s.flashTypeIndex == 0;
    f.byteSwap = s.byteSwap;
    return f;
}

void BuildContext::log(const QString &line)
{
    buildLog.append(line);
    logTo(logSink, line);
}

void BuildContext::complain(const QString &message)
{
    errorText.append(message);
    if (!message.endsWith(QLatin1Char('\n')))
        errorText.append(QLatin1Char('\n'));
    log(message.trimmed());
}

void BuildContext::complainOnce(const QString &message)
{
    if (told.contains(message))
        return;
    told.insert(message);
    complain(message);
}

void BuildContext::notify(const QString &title, const QString &text)
{
    if (notifier)
        notifier(title, text);
}

} // namespace vantile
