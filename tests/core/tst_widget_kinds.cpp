// The kinds table and the one dispatch: a line of every kind is told
// apart, limits and their messages, the slot tables, and lines of kinds
// not described yet kept as they are.

#include "project/TextFiles.h"
#include "widgets/KindRegistry.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WidgetLine.h"
#include "widgets/WidgetSlots.h"

#include <QtTest>

using namespace vantile;

Q_DECLARE_METATYPE(vantile::WidgetKind)

namespace {

// A label line with the static mark (field 19 after the colon) set as given.
QString labelLine(int index, int staticMark)
{
    return QStringLiteral("label_%1:0x0100,20,10,10,100,32,32,32,0,0,0,0,0xD3D3D3,0x000000,*Hex:41,"
                          "0xFFFF,label_%1,Disable,0,%2,0,0xFFFF,1;")
        .arg(index)
        .arg(staticMark);
}

} // namespace

class TestWidgetKinds : public QObject
{
    Q_OBJECT
private slots:
    // --- one line of each of the 33 kinds ---------------------------------------

    void lineOfEachKind_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<WidgetKind>("kind");
        QTest::addColumn<quint32>("index");

        using K = WidgetKind;
        QTest::newRow("label") << labelLine(3, 0) << K::Label << 3u;
        QTest::newRow("Statictext") << labelLine(4, 1) << K::Statictext << 4u;
        QTest::newRow("number") << "number_12:0x0000,2,0,0,50,20;" << K::Number << 12u;
        QTest::newRow("button") << "button_0:100,50,120,40,0x0020,,,,button_0,Disable,Disable,0x0000,0xFFFF,1;"
                                << K::Button << 0u;
        QTest::newRow("icon_2") << "icon_2:0xFFFF,0x0000,5,5,10,10;" << K::Icon << 2u;
        QTest::newRow("bitIcon_2") << "bitIcon_2:0xFFFF,0x0000,5,5,10,10;" << K::BitIcon << 2u;
        QTest::newRow("gif") << "gif_31:0xFFFF,0;" << K::Gif << 31u;
        QTest::newRow("varAdj") << "varAdj_255:1,2;" << K::VarAdj << 255u;
        QTest::newRow("slider") << "slider_1:1,2;" << K::Slider << 1u;
        QTest::newRow("RTC") << "RTC_0:1;" << K::RTC << 0u;
        QTest::newRow("qrcode") << "qrcode_15:1;" << K::QRCode << 15u;
        QTest::newRow("Clock") << "Clock_7:1;" << K::Clock << 7u;
        QTest::newRow("keypad") << "keypad_5:1;" << K::Keypad << 5u;
        QTest::newRow("kbkey") << "kbkey_199:5,6,40,30,0x0041,,kbkey_199,Disable,1;" << K::KBKey << 199u;
        QTest::newRow("textroll") << "textroll_1:1;" << K::TextRoll << 1u;
        QTest::newRow("pngNumber") << "pngNumber_9:1;" << K::PngNumber << 9u;
        QTest::newRow("wav") << "wav_0:1;" << K::Wav << 0u;
        QTest::newRow("slmenu_0") << "slmenu_0:1;" << K::SlMenu << 0u;
        QTest::newRow("slidemenuPro_0") << "slidemenuPro_0:1;" << K::SlideMenuPro << 0u;
        QTest::newRow("rtouch") << "rtouch_3:1;" << K::RTouch << 3u;
        QTest::newRow("progress_1") << "progress_1:1;" << K::Progress << 1u;
        QTest::newRow("rProgress_1") << "rProgress_1:1;" << K::RProgress << 1u;
        QTest::newRow("enkeyB") << "enkeyB_0:1;" << K::ENKeyB << 0u;
        QTest::newRow("cnkeyB") << "cnkeyB_0:1;" << K::CNKeyB << 0u;
        QTest::newRow("batVar") << "batVar_4:1;" << K::BatVar << 4u;
        QTest::newRow("curve") << "curve_11:1;" << K::Curve << 11u;
        QTest::newRow("popbox") << "popbox_63:10,20,100,50;" << K::PopBox << 63u;
        QTest::newRow("encoder") << "encoder_0:1;" << K::Encoder << 0u;
        QTest::newRow("uitimer") << "uitimer_2:1;" << K::UITimer << 2u;
        QTest::newRow("camera") << "camera_3:1;" << K::Camera << 3u;
        QTest::newRow("video") << "video_0:1;" << K::Video << 0u;
        QTest::newRow("autoVar") << "autoVar_6:1;" << K::AutoVar << 6u;
        QTest::newRow("needle") << "needle_15:1;" << K::Needle << 15u;
    }

    void lineOfEachKind()
    {
        QFETCH(QString, line);
        QFETCH(WidgetKind, kind);
        QFETCH(quint32, index);
        QCOMPARE(WidgetKinds::kindOfLine(line), kind);

        // Every line is read: described kinds fully, the others kept verbatim.
        EditBuffer b;
        const ParseStatus st = WidgetLine::parse(line, b);
        QCOMPARE(b.kind(), kind);
        QCOMPARE(b.index(), index);
        QCOMPARE(b.objectName(), line.left(line.indexOf(':')));
        if (KindRegistry::hasSchema(kind)) {
            QCOMPARE(st, ParseStatus::Ok);
        } else {
            QCOMPARE(st, ParseStatus::NoSchema);
            QCOMPARE(WidgetLine::write(b), line);
            QCOMPARE(KindRegistry::noSchemaMessage(kind),
                     "no schema for kind " + QString::fromLatin1(WidgetKinds::info(kind).word));
        }
    }

    void allKindsAreDispatched()
    {
        QCOMPARE(int(WidgetKinds::all().size()), 33);
        QSet<int> seen;
        for (WidgetKind k : WidgetKinds::dispatchOrder())
            seen.insert(kindIndex(k));
        QCOMPARE(seen.size(), 33);
    }

    // No object name of one kind can be taken for another: each kind's
    // names classify as that kind, whatever the index.
    void namesNeverClash()
    {
        for (WidgetKind k : WidgetKinds::all()) {
            const WidgetKind expected = WidgetKinds::info(k).slotOwner;
            for (quint32 index : {0u, 7u, 511u}) {
                const QString name = WidgetKinds::objectName(k, index);
                QCOMPARE(WidgetKinds::kindOfName(name), expected);
            }
        }
    }

    void notWidgets_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("page line") << "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);Home;Disable;0;0;Disable;";
        QTest::newRow("merge line") << "Mergerboundaryline;";
        QTest::newRow("empty") << "";
        QTest::newRow("word without underscore") << "label0:x;";
        QTest::newRow("longer word") << "buttons_1:1;";
        QTest::newRow("other case") << "Button_1:1;";
        QTest::newRow("bare word") << "icon:1;";
    }

    void notWidgets()
    {
        QFETCH(QString, line);
        QCOMPARE(WidgetKinds::kindOfLine(line), WidgetKind::None);
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(line, b), ParseStatus::NotAWidget);
    }

    // A label line too short to hold the static mark is a plain label.
    void shortLabelLineIsPlainLabel()
    {
        QCOMPARE(WidgetKinds::kindOfLine("label_1:0x0100,20;"), WidgetKind::Label);
        QCOMPARE(WidgetKinds::kindOfName("label_1"), WidgetKind::Label);
    }

    // The page files open a record with the same words the dispatch uses.
    void recordWordsMatchPageFileReader()
    {
        QStringList fromFiles = TextFiles::recordPrefixes();
        fromFiles.removeAll("Page");
        fromFiles.removeAll("Mergerboundaryline");
        QStringList words = WidgetKinds::kindWords();
        QCOMPARE(words.size(), 32);
        std::sort(fromFiles.begin(), fromFiles.end());
        std::sort(words.begin(), words.end());
        QCOMPARE(words, fromFiles);
    }

    void toolWordsAndKindWords_data()
    {
        QTest::addColumn<QString>("toolWord");
        QTest::addColumn<QString>("kindWord");
        QTest::addColumn<WidgetKind>("kind");
        QTest::newRow("Button") << "Button" << "button" << WidgetKind::Button;
        QTest::newRow("Statictext") << "Statictext" << "Statictext" << WidgetKind::Statictext;
        QTest::newRow("VarAdjust") << "VarAdjust" << "varAdj" << WidgetKind::VarAdj;
        QTest::newRow("SlideMenuPro") << "SlideMenuPro" << "slidemenuPro" << WidgetKind::SlideMenuPro;
        QTest::newRow("PopupBox") << "PopupBox" << "popbox" << WidgetKind::PopBox;
        QTest::newRow("KBkey") << "KBkey" << "kbkey" << WidgetKind::KBKey;
        QTest::newRow("RingProgress") << "RingProgress" << "rProgress" << WidgetKind::RProgress;
        QTest::newRow("EN_KeyBoard") << "EN_KeyBoard" << "enkeyB" << WidgetKind::ENKeyB;
    }

    void toolWordsAndKindWords()
    {
        QFETCH(QString, toolWord);
        QFETCH(QString, kindWord);
        QFETCH(WidgetKind, kind);
        QCOMPARE(WidgetKinds::kindOfToolWord(toolWord), kind);
        QCOMPARE(WidgetKinds::kindOfWord(kindWord), kind);
        QCOMPARE(WidgetKinds::kindOfToolWord(toolWord.toLower() + "x"), WidgetKind::None);
    }

    // --- limits -----------------------------------------------------------------

    // The last index of each table loads; one more gives the kind's text.
    void loadIndexLimits_data()
    {
        QTest::addColumn<WidgetKind>("kind");
        QTest::addColumn<quint32>("maximum");
        QTest::addColumn<QString>("error");
        using K = WidgetKind;
        QTest::newRow("button") << K::Button << 128u << "Error button index:128";
        QTest::newRow("label") << K::Label << 512u << "Error label index:512";
        QTest::newRow("Statictext") << K::Statictext << 512u << "Error label index:512";
        QTest::newRow("number") << K::Number << 512u << "Error Number index:512";
        QTest::newRow("varAdj") << K::VarAdj << 256u << "Error varAdj index:256";
        QTest::newRow("slider") << K::Slider << 32u << "Error Slider index:32";
        QTest::newRow("gif") << K::Gif << 32u << "Error gif index:32";
        QTest::newRow("popbox") << K::PopBox << 64u << "Error PopBox index:64";
        QTest::newRow("batVar") << K::BatVar << 128u << "Error BatchVar index:128";
        QTest::newRow("textroll") << K::TextRoll << 32u << "Error Textroll index:32";
        QTest::newRow("autoVar") << K::AutoVar << 64u << "Error AutoVar index:64";
        QTest::newRow("slmenu") << K::SlMenu << 64u << "Error SlMenu index:64";
        QTest::newRow("video") << K::Video << 1u << "Error Video index:1";
        QTest::newRow("camera") << K::Camera << 4u << "Error Camera index:4";
        QTest::newRow("encoder") << K::Encoder << 8u << "Error Encoder index:8";
        QTest::newRow("progress") << K::Progress << 32u << "Error Progress index:32";
        QTest::newRow("rProgress") << K::RProgress << 32u << "Error RProg index:32";
        QTest::newRow("rtouch") << K::RTouch << 32u << "Error RTouch index:32";
        QTest::newRow("kbkey") << K::KBKey << 200u << "Error KBKey index:200";
        QTest::newRow("icon") << K::Icon << 128u << "Error edit index:128";
        QTest::newRow("bitIcon") << K::BitIcon << 128u << "Error edit index:128";
        QTest::newRow("pngNumber") << K::PngNumber << 512u << "Error edit index:512";
        QTest::newRow("qrcode") << K::QRCode << 16u << "Error edit index:16";
        QTest::newRow("wav") << K::Wav << 32u << "Error edit index:32";
        QTest::newRow("RTC") << K::RTC << 16u << "Error edit index:16";
        QTest::newRow("Clock") << K::Clock << 8u << "Error edit index:8";
        QTest::newRow("keypad") << K::Keypad << 128u << "Error edit index:128";
        QTest::newRow("enkeyB") << K::ENKeyB << 128u << "Error edit index:128";
        QTest::newRow("cnkeyB") << K::CNKeyB << 128u << "Error edit index:128";
        QTest::newRow("curve") << K::Curve << 12u << "Error edit index:12";
        QTest::newRow("uitimer") << K::UITimer << 8u << "Error edit index:8";
        QTest::newRow("slidemenuPro") << K::SlideMenuPro << 1u << "Error edit index:1";
        // A needle beyond its table is not built and says nothing.
        QTest::newRow("needle") << K::Needle << 16u << "";
    }

    void loadIndexLimits()
    {
        QFETCH(WidgetKind, kind);
        QFETCH(quint32, maximum);
        QFETCH(QString, error);
        QVERIFY(WidgetKinds::indexFits(kind, maximum - 1));
        QCOMPARE(WidgetKinds::loadIndexError(kind, maximum - 1), QString());
        QVERIFY(!WidgetKinds::indexFits(kind, maximum));
        QCOMPARE(WidgetKinds::loadIndexError(kind, maximum), error);
    }

    void indexFromNameDigits()
    {
        EditBuffer b;
        WidgetLine::parse("button_128:1,2,3,4;", b);
        QCOMPARE(b.index(), 128u);
        QCOMPARE(WidgetKinds::loadIndexError(b.kind(), b.index()), QString("Error button index:128"));
        // at most 8 digits are read
        WidgetLine::parse("button_123456789:1;", b);
        QCOMPARE(b.index(), 12345678u);
    }

    void overMaximumMessages_data()
    {
        QTest::addColumn<WidgetKind>("kind");
        QTest::addColumn<QString>("message");
        using K = WidgetKind;
        QTest::newRow("button") << K::Button << "New Button id is over the maximum";
        QTest::newRow("Statictext") << K::Statictext << "New Label id is over the maximum";
        QTest::newRow("enkeyB") << K::ENKeyB << "New EN_KB id is over the maximum";
        QTest::newRow("popbox") << K::PopBox << "New PopBox id is over the maximum";
        QTest::newRow("kbkey") << K::KBKey << "New KBkey id is over the maximum";
        QTest::newRow("textroll") << K::TextRoll << "New Textroll id is over the maximum";
        QTest::newRow("rProgress") << K::RProgress << "New rProgress id is over the maximum";
        QTest::newRow("camera") << K::Camera << "New camera id is over the maximum";
        QTest::newRow("needle") << K::Needle << "New needle id is over the maximum";
        QTest::newRow("Clock") << K::Clock << "New Clock id is over the maximum";
    }

    void overMaximumMessages()
    {
        QFETCH(WidgetKind, kind);
        QFETCH(QString, message);
        QCOMPARE(WidgetKinds::overMaximumMessage(kind), message);
    }

    // --- slot tables ------------------------------------------------------------

    void slotTables()
    {
        PageSlots<int> page;
        int dummy = 0;
        WidgetSlots<int> &buttons = page.of(WidgetKind::Button);
        QCOMPARE(buttons.maximum(), 128);
        QCOMPARE(buttons.lowestFree(), 0);
        for (int i = 0; i < 128; ++i)
            QVERIFY(buttons.put(quint32(buttons.lowestFree()), &dummy));
        QCOMPARE(buttons.lowestFree(), -1); // full: a drop creates nothing
        QVERIFY(!buttons.put(128, &dummy));
        buttons.release(5);
        QCOMPARE(buttons.lowestFree(), 5); // a freed index is taken again
        QCOMPARE(buttons.count(), 127);

        // A static label takes its slot in the label table.
        QCOMPARE(&page.of(WidgetKind::Statictext), &page.of(WidgetKind::Label));
        QCOMPARE(page.of(WidgetKind::Label).maximum(), 512);
        // One video and one slidemenuPro per page.
        QCOMPARE(page.of(WidgetKind::Video).maximum(), 1);
        QCOMPARE(page.of(WidgetKind::SlideMenuPro).maximum(), 1);

        page.of(WidgetKind::Video).put(0, &dummy);
        QCOMPARE(page.of(WidgetKind::Video).lowestFree(), -1);
        page.of(WidgetKind::Video).setSelected(0, true);
        QVERIFY(page.of(WidgetKind::Video).isSelected(0));
        page.clear();
        QCOMPARE(page.of(WidgetKind::Video).lowestFree(), 0);
        QVERIFY(!page.of(WidgetKind::Video).isSelected(0));
        QCOMPARE(page.of(WidgetKind::None).maximum(), 0);
    }

    void captionsCarryBothLanguages()
    {
        QCOMPARE(WidgetKinds::caption(WidgetKind::Button), QString::fromUtf8("按键\nButton"));
        QCOMPARE(WidgetKinds::caption(WidgetKind::RProgress),
                 QString::fromUtf8("环形进度条\nCircular Progress Bar"));
        for (WidgetKind k : WidgetKinds::all())
            QCOMPARE(WidgetKinds::caption(k).count('\n'), 1);
    }
};

QTEST_GUILESS_MAIN(TestWidgetKinds)
#include "tst_widget_kinds.moc"
