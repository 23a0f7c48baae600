#include "widgets/WidgetKinds.h"
#include "widgets/LineGrammar.h"

namespace vantile {

namespace {

using K = WidgetKind;
constexpr RecordClass T = RecordClass::Touch;
constexpr RecordClass D = RecordClass::Display;

// clang-format off
const KindInfo kKinds[kWidgetKindCount] = {
//   kind             word            prefix          tool word       caption                                   max  slots           class type over word       load word   parameter word
    {K::Label,        "label",        "label",        "Label",        "字符串\nString Label",                   512, K::Label,       D,  1, "Label",        "label",    "label"},
    {K::Statictext,   "Statictext",   "label",        "Statictext",   "静态文本\nStatic Text",                  512, K::Label,       D,  1, "Label",        "label",    "label"},
    {K::Number,       "number",       "number",       "Number",       "字库数字\nText Number Display",          512, K::Number,      D,  2, "Number",       "Number",   "number"},
    {K::Button,       "button",       "button",       "Button",       "按键\nButton",                           128, K::Button,      T,  1, "Button",       "button",   nullptr},
    {K::Icon,         "icon",         "icon",         "Icon",         "小图标\nIcon",                           128, K::Icon,        D,  3, "Icon",         "edit",     "Icon"},
    {K::BitIcon,      "bitIcon",      "bitIcon",      "BitIcon",      "位元状态\nBit Status",                   128, K::BitIcon,     D, 15, "bitIcon",      "edit",     "bitIcon"},
    {K::Gif,          "gif",          "gif",          "Gif",          "动图\nGif",                               32, K::Gif,         D,  5, "Gif",          "gif",      "Gif"},
    {K::VarAdj,       "varAdj",       "varAdj",       "VarAdjust",    "变量调节\nVariable Button",              256, K::VarAdj,      T,  3, "varAdj",       "varAdj",   nullptr},
    {K::Slider,       "slider",       "slider",       "Slider",       "滑条\nSlider Bar",                        32, K::Slider,      T,  4, "Slider",       "Slider",   nullptr},
    {K::RTC,          "RTC",          "RTC",          "RTC",          "数字时钟\nDigital Clock",                 16, K::RTC,         D,  6, "RTC",          "edit",     "RTC"},
    {K::QRCode,       "qrcode",       "qrcode",       "QRCode",       "二维码\nQRCode",                          16, K::QRCode,      D,  7, "QRCode",       "edit",     "PRCode"},
    {K::Clock,        "Clock",        "Clock",        "Clock",        "模拟时钟\nAnalog Clock",                   8, K::Clock,       D,  8, "Clock",        "edit",     "Clock"},
    {K::Keypad,       "keypad",       "keypad",       "Keypad",       "数字键盘\nNumeric Keypad",               128, K::Keypad,      T,  2, "Keypad",       "edit",     nullptr},
    {K::KBKey,        "kbkey",        "kbkey",        "KBkey",        "键盘按键\nSingleKey",                    200, K::KBKey,       T,  5, "KBkey",        "KBKey",    nullptr},
    {K::TextRoll,     "textroll",     "textroll",     "TextRoll",     "滚动文字\nText Scroll",                   32, K::TextRoll,    D,  9, "Textroll",     "Textroll", "Textroll"},
    {K::PngNumber,    "pngNumber",    "pngNumber",    "PngNumber",    "图片数字\nGraphics Number Display",      512, K::PngNumber,   D,  4, "pngNumber",    "edit",     "PngNumber"},
    {K::Wav,          "wav",          "wav",          "Wav",          "音频播放\nAudio Play",                    32, K::Wav,         D, 10, "Wav",          "edit",     nullptr},
    {K::SlMenu,       "slmenu",       "slmenu",       "SlideMenu",    "滑动菜单\nSlide Menu",                    64, K::SlMenu,      T,  6, "SlMenu",       "SlMenu",   nullptr},
    {K::SlideMenuPro, "slidemenuPro", "slidemenuPro", "SlideMenuPro", "滑动选单\nCross-Page Menu",                1, K::SlideMenuPro,T, 15, "slidemenuPro", "edit",     nullptr},
    {K::RTouch,       "rtouch",       "rtouch",       "RingTouch",    "环形触摸\nCircular Touch",                32, K::RTouch,      T,  7, "RTouch",       "RTouch",   nullptr},
    {K::Progress,     "progress",     "progress",     "Progress",     "进度条\nProgress Bar",                    32, K::Progress,    D, 11, "Progress",     "Progress", "Progress"},
    {K::RProgress,    "rProgress",    "rProgress",    "RingProgress", "环形进度条\nCircular Progress Bar",       32, K::RProgress,   D, 12, "rProgress",    "RProg",    nullptr},
    {K::ENKeyB,       "enkeyB",       "enkeyB",       "EN_KeyBoard",  "英文键盘\nEN_KeyBoard",                  128, K::ENKeyB,      T,  9, "EN_KB",        "edit",     nullptr},
    {K::CNKeyB,       "cnkeyB",       "cnkeyB",       "CN_KeyBoard",  "中文键盘\nCN_KeyBoard",                  128, K::CNKeyB,      T, 10, "CN_KB",        "edit",     nullptr},
    {K::BatVar,       "batVar",       "batVar",       "BatchVar",     "多变量操作\nMulti-Variable Button",      128, K::BatVar,      T, 11, "batVar",       "BatchVar", nullptr},
    {K::Curve,        "curve",        "curve",        "Curve",        "曲线\nTrend Graph",                       12, K::Curve,       D, 13, "Curve",        "edit",     "Curve"},
    {K::PopBox,       "popbox",       "popbox",       "PopupBox",     "弹出窗体\nPopupBox",                      64, K::PopBox,      T,  8, "PopBox",       "PopBox",   nullptr},
    {K::Encoder,      "encoder",      "encoder",      "Encoder",      "编码器\nEncoder",                          8, K::Encoder,     D, 14, "Encoder",      "Encoder",  nullptr},
    {K::UITimer,      "uitimer",      "uitimer",      "UITimer",      "计时器\nTimer",                            8, K::UITimer,     D, 16, "UITimer",      "edit",     "UITimer"},
    {K::Camera,       "camera",       "camera",       "Camera",       "摄像头\nCamera",                           4, K::Camera,      D, 32, "camera",       "Camera",   "camera"},
    {K::Video,        "video",        "video",        "Video",        "VC650视频\nVC650 Video",                   1, K::Video,       D, 34, "Video",        "Video",    "video"},
    {K::AutoVar,      "autoVar",      "autoVar",      "AutoVar",      "自动变量\nAutomatic variable",            64, K::AutoVar,     D, 26, "autoVar",      "AutoVar",  nullptr},
    {K::Needle,       "needle",       "needle",       "Needle",       "指针\nNeedle",                            16, K::Needle,      D, 18, "needle",       nullptr,    "Needle"},
};
// clang-format on

// The order of tests. Every object name is its prefix, "_" and digits, and
// no prefix followed by "_" begins another kind's name, so a test on
// prefix + "_" can't take one kind for another (unlike a bare "icon",
// "progress" or "slmenu" test). The one shared prefix is "label": the
// static label is tested first and is told by its static mark.
const std::array<WidgetKind, kWidgetKindCount> kDispatchOrder = {
    K::Statictext, K::Label, K::Number, K::Button, K::Icon, K::BitIcon, K::Gif, K::VarAdj,
    K::Slider, K::RTC, K::UITimer, K::QRCode, K::Clock, K::Keypad, K::KBKey, K::TextRoll,
    K::PngNumber, K::Wav, K::SlMenu, K::SlideMenuPro, K::RTouch, K::Progress, K::RProgress,
    K::ENKeyB, K::CNKeyB, K::BatVar, K::Curve, K::PopBox, K::Encoder, K::Camera, K::Video,
    K::AutoVar, K::Needle};

// Position of the static mark in a label line (after the colon), and the
// value that makes the label a static text.
constexpr int kStaticMarkField = 19;

bool hasPrefix(const QString &name, const KindInfo &k)
{
    const QLatin1String prefix(k.prefix);
    return name.startsWith(prefix) && name.size() > prefix.size()
           && name.at(prefix.size()) == QLatin1Char('_');
}

} // namespace

namespace WidgetKinds {

const KindInfo &info(WidgetKind kind)
{
    static const KindInfo none = {K::None, "", "", "", "", 0, K::None, D, 0, "", nullptr, nullptr};
    const int i = kindIndex(kind);
    return i >= 0 && i < kWidgetKindCount ? kKinds[i] : none;
}

const std::array<WidgetKind, kWidgetKindCount> &all()
{
    static const std::array<WidgetKind, kWidgetKindCount> kinds = [] {
        std::array<WidgetKind, kWidgetKindCount> a{};
        for (int i = 0; i < kWidgetKindCount; ++i)
            a[i] = kKinds[i].kind;
        return a;
    }();
    return kinds;
}

const std::array<WidgetKind, kWidgetKindCount> &dispatchOrder()
{
    return kDispatchOrder;
}

QStringList kindWords()
{
    QStringList words;
    for (WidgetKind k : kDispatchOrder) {
        const QString p = QLatin1String(info(k).prefix);
        if (!words.contains(p))
            words.append(p);
    }
    return words;
}

WidgetKind kindOfName(const QString &objectName)
{
    for (WidgetKind k : kDispatchOrder) {
        if (k != K::Statictext && hasPrefix(objectName, info(k)))
            return k;
    }
    return K::None;
}

WidgetKind kindOfLine(const QString &line)
{
    for (WidgetKind k : kDispatchOrder) {
        if (!hasPrefix(line, info(k)))
            continue;
        if (k == K::Statictext) {
            const QStringList fields = LineGrammar::split(line).fields;
            if (fields.size() <= kStaticMarkField
                || LineGrammar::readDecimal(fields[kStaticMarkField]) != 1)
                continue;
        }
        return k;
    }
    return K::None;
}

WidgetKind kindOfToolWord(const QString &toolWord)
{
    for (const KindInfo &k : kKinds) {
        if (toolWord == QLatin1String(k.toolWord))
            return k.kind;
    }
    return K::None;
}

WidgetKind kindOfWord(const QString &word)
{
    for (const KindInfo &k : kKinds) {
        if (word == QLatin1String(k.word))
            return k.kind;
    }
    return K::None;
}

QString objectName(WidgetKind kind, quint32 index)
{
    return QLatin1String(info(kind).prefix) + QLatin1Char('_') + QString::number(index);
}

bool indexFits(WidgetKind kind, quint32 index)
{
    return index < quint32(info(kind).maximum);
}

QString loadIndexError(WidgetKind kind, quint32 index)
{
    const KindInfo &k = info(kind);
    if (indexFits(kind, index) || !k.loadWord)
        return QString();
    return QStringLiteral("Error %1 index:%2").arg(QLatin1String(k.loadWord)).arg(index);
}

QString caption(WidgetKind kind)
{
    return QString::fromUtf8(info(kind).caption);
}

QString overMaximumMessage(WidgetKind kind)
{
    return QStringLiteral("New %1 id is over the maximum").arg(QLatin1String(info(kind).overWord));
}

QString parameterWord(WidgetKind kind)
{
    const KindInfo &k = info(kind);
    return QLatin1String(k.parameterWord ? k.parameterWord : k.word);
}

} // namespace WidgetKinds

} // namespace vantile
