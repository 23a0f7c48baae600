// The kinds table and the one dispatch: a line of every kind is told
// apart, limits and their messages, the slot tables, and lines of kinds
// not described yet kept as they are.

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
    // One line of each of the 33 kinds: its kind and index, and the size of
    // its slot table with the texts for an index beyond it ("Error <load>
    // index:N" while loading, "New <over> id is over the maximum" on a drop).
    void lineOfEachKind_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<WidgetKind>("kind");
        QTest::addColumn<quint32>("index");
        QTest::addColumn<quint32>("maximum");
        QTest::addColumn<QString>("load"); // empty: no load message
        QTest::addColumn<QString>("over"); // empty: not checked here
        using K = WidgetKind;
        const auto row = [](const QString &line, K kind, quint32 index, quint32 maximum, const char *load,
                            const char *over = "") {
            QTest::newRow(qPrintable(line.left(line.indexOf(':')))) << line << kind << index << maximum
                                                                    << QString(load) << QString(over);
        };
        row(labelLine(3, 0), K::Label, 3, 512, "label");
        row(labelLine(4, 1), K::Statictext, 4, 512, "label", "Label");
        row("label_1:0x0100,20;", K::Label, 1, 512, "label"); // too short to hold the static mark
        row("number_12:0x0000,2,0,0,50,20;", K::Number, 12, 512, "Number");
        row("button_0:100,50,120,40,0x0020,,,,button_0,Disable,Disable,0x0000,0xFFFF,1;", K::Button, 0, 128,
            "button", "Button");
        row("icon_2:0xFFFF,0x0000,5,5,10,10;", K::Icon, 2, 128, "edit");
        row("bitIcon_2:0xFFFF,0x0000,5,5,10,10;", K::BitIcon, 2, 128, "edit");
        row("gif_31:0xFFFF,0;", K::Gif, 31, 32, "gif");
        row("varAdj_255:1,2;", K::VarAdj, 255, 256, "varAdj");
        row("slider_1:1,2;", K::Slider, 1, 32, "Slider");
        row("RTC_0:1;", K::RTC, 0, 16, "edit");
        row("qrcode_15:1;", K::QRCode, 15, 16, "edit");
        row("Clock_7:1;", K::Clock, 7, 8, "edit", "Clock");
        row("keypad_5:1;", K::Keypad, 5, 128, "edit");
        row("kbkey_199:5,6,40,30,0x0041,,kbkey_199,Disable,1;", K::KBKey, 199, 200, "KBKey", "KBkey");
        row("textroll_1:1;", K::TextRoll, 1, 32, "Textroll", "Textroll");
        row("pngNumber_9:1;", K::PngNumber, 9, 512, "edit");
        row("wav_0:1;", K::Wav, 0, 32, "edit");
        row("slmenu_0:1;", K::SlMenu, 0, 64, "SlMenu");
        row("slidemenuPro_0:1;", K::SlideMenuPro, 0, 1, "edit");
        row("rtouch_3:1;", K::RTouch, 3, 32, "RTouch");
        row("progress_1:1;", K::Progress, 1, 32, "Progress");
        row("rProgress_1:1;", K::RProgress, 1, 32, "RProg", "rProgress");
        row("enkeyB_0:1;", K::ENKeyB, 0, 128, "edit", "EN_KB");
        row("cnkeyB_0:1;", K::CNKeyB, 0, 128, "edit");
        row("batVar_4:1;", K::BatVar, 4, 128, "BatchVar");
        row("curve_11:1;", K::Curve, 11, 12, "edit");
        row("popbox_63:10,20,100,50;", K::PopBox, 63, 64, "PopBox", "PopBox");
        row("encoder_0:1;", K::Encoder, 0, 8, "Encoder");
        row("uitimer_2:1;", K::UITimer, 2, 8, "edit");
        row("camera_3:1;", K::Camera, 3, 4, "Camera", "camera");
        row("video_0:1;", K::Video, 0, 1, "Video");
        row("autoVar_6:1;", K::AutoVar, 6, 64, "AutoVar");
        // a needle beyond its table is not built and says nothing
        row("needle_15:1;", K::Needle, 15, 16, "", "needle");
    }
    void lineOfEachKind()
    {
        QFETCH(QString, line);
        QFETCH(WidgetKind, kind);
        QFETCH(quint32, index);
        QFETCH(quint32, maximum);
        QFETCH(QString, load);
        QFETCH(QString, over);
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

        // the last index of the table loads; one more gives the kind's text
        QVERIFY(WidgetKinds::indexFits(kind, maximum - 1));
        QCOMPARE(WidgetKinds::loadIndexError(kind, maximum - 1), QString());
        QVERIFY(!WidgetKinds::indexFits(kind, maximum));
        QCOMPARE(WidgetKinds::loadIndexError(kind, maximum),
                 load.isEmpty() ? QString() : QString("Error %1 index:%2").arg(load).arg(maximum));
        if (!over.isEmpty())
            QCOMPARE(WidgetKinds::overMaximumMessage(kind), "New " + over + " id is over the maximum");
    }

    // No object name of one kind can be taken for another: each kind's
    // names classify as that kind, whatever the index.
    void namesNeverClash()
    {
        for (WidgetKind k : WidgetKinds::all()) {
            const WidgetKind expected = WidgetKinds::info(k).slotOwner;
            for (quint32 index : {0u, 7u, 511u})
                QCOMPARE(WidgetKinds::kindOfName(WidgetKinds::objectName(k, index)), expected);
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

    void toolWordsAndKindWords_data()
    {
        QTest::addColumn<QString>("toolWord");
        QTest::addColumn<QString>("kindWord");
        QTest::addColumn<WidgetKind>("kind");
        QTest::newRow("Button") << "Button" << "button" << WidgetKind::Button;
        QTest::newRow("Statictext") << "Statictext" << "Statictext" << WidgetKind::Statictext;
        QTest::newRow("VarAdjust") << "VarAdjust" << "varAdj" << WidgetKind::VarAdj;
        QTest::newRow("SlideMenuPro") << "SlideMenuPro" << "slidemenuPro" << WidgetKind::SlideMenuPro;
        QTest::newRow("RingProgress") << "RingProgress" << "rProgress" << WidgetKind::RProgress;
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

    void indexFromNameDigits()
    {
        EditBuffer b;
        WidgetLine::parse("button_128:1,2,3,4;", b);
        QCOMPARE(b.index(), 128u);
        QCOMPARE(WidgetKinds::loadIndexError(b.kind(), b.index()), QString("Error button index:128"));
        QCOMPARE(WidgetKinds::overMaximumMessage(b.kind()), QString("New Button id is over the maximum"));
        // at most 8 digits are read
        WidgetLine::parse("button_123456789:1;", b);
        QCOMPARE(b.index(), 12345678u);
    }

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
        // One video per page.
        WidgetSlots<int> &video = page.of(WidgetKind::Video);
        video.put(0, &dummy);
        QCOMPARE(video.lowestFree(), -1);
        video.setSelected(0, true);
        QVERIFY(video.isSelected(0));
        page.clear();
        QCOMPARE(video.lowestFree(), 0);
        QVERIFY(!video.isSelected(0));
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
