// The kinds table and the one dispatch: lines told apart by kind, the kind
// words, index limits and their messages, the slot tables.

#include "CoreTestSupport.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WidgetSlots.h"

using namespace core;

Q_DECLARE_METATYPE(vantile::WidgetKind)

class TestWidgetKinds : public QObject
{
    Q_OBJECT
private slots:
    // Lines told apart by their word (words that begin alike, odd cases, the
    // static mark) with their index; described kinds read fully, others verbatim.
    void lineOfEachKind_data()
    {
        addColumns<QString, WidgetKind, quint32>("line", "kind", "index");
        using K = WidgetKind;
        const auto row = [](const QString &line, K kind, quint32 index) {
            QTest::newRow(qPrintable(line.left(line.indexOf(':')))) << line << kind << index;
        };
        // the static mark is field 19 after the colon
        const QString label = "label_%1:0x0100,20,10,10,100,32,32,32,0,0,0,0,0xD3D3D3,0x000000,*Hex:41,0xFFFF,label_%1,"
                              "Disable,0,%2,0,0xFFFF,1;";
        row(label.arg(3).arg(0), K::Label, 3);
        row(label.arg(4).arg(1), K::Statictext, 4);
        row("label_1:0x0100,20;", K::Label, 1);
        row("number_12:0x0000,2,0,0,50,20;", K::Number, 12);
        row("button_0:100,50,120,40,0x0020,,,,button_0,Disable,Disable,0x0000,0xFFFF,1;", K::Button, 0);
        row("RTC_0:1;", K::RTC, 0);
        row("kbkey_199:5,6,40,30,0x0041,,kbkey_199,Disable,1;", K::KBKey, 199);
        row("pngNumber_9:1;", K::PngNumber, 9);
        row("slidemenuPro_0:1;", K::SlideMenuPro, 0);
        row("rProgress_1:1;", K::RProgress, 1);
        row("popbox_63:10,20,100,50;", K::PopBox, 63);
        row("needle_15:1;", K::Needle, 15);
    }
    void lineOfEachKind()
    {
        QFETCH(QString, line);
        QFETCH(WidgetKind, kind);
        QFETCH(quint32, index);
        QCOMPARE(WidgetKinds::kindOfLine(line), kind);
        EditBuffer b;
        const ParseStatus st = WidgetLine::parse(line, b);
        QCOMPARE(b.kind(), kind);
        QCOMPARE(b.index(), index);
        QCOMPARE(b.objectName(), line.left(line.indexOf(':')));
        QCOMPARE(st, KindRegistry::hasSchema(kind) ? ParseStatus::Ok : ParseStatus::NoSchema);
        if (st == ParseStatus::NoSchema)
            QCOMPARE(WidgetLine::write(b), line);
    }

    // Every kind's word as page files write it, and no object name of one kind
    // taken for another, whatever the index.
    void kindWordsAndNames()
    {
        QCOMPARE(int(WidgetKinds::all().size()), kindWords().size() + 1); // and Statictext, a marked label
        QCOMPARE(WidgetKinds::kindOfWord("Statictext"), WidgetKind::Statictext);
        for (const QString &w : kindWords())
            QCOMPARE(QString::fromLatin1(WidgetKinds::info(WidgetKinds::kindOfWord(w)).word), w);
        for (WidgetKind k : WidgetKinds::all())
            for (quint32 index : {0u, 7u, 511u})
                QCOMPARE(WidgetKinds::kindOfName(WidgetKinds::objectName(k, index)), WidgetKinds::info(k).slotOwner);
    }

    void notWidgets()
    {
        for (const char *line : {"Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);Home;Disable;0;0;Disable;",
                                 "Mergerboundaryline;", "", "label0:x;", "buttons_1:1;", "Button_1:1;", "icon:1;"}) {
            QCOMPARE(WidgetKinds::kindOfLine(line), WidgetKind::None);
            EditBuffer b;
            QCOMPARE(WidgetLine::parse(line, b), ParseStatus::NotAWidget);
        }
    }

    // Each Add action's word makes its kind (tst_add_actions, where the two
    // labels look alike by name); only the exact word does.
    void toolBox()
    {
        QCOMPARE(WidgetKinds::caption(WidgetKind::RProgress), QString::fromUtf8("环形进度条\nCircular Progress Bar"));
        QCOMPARE(WidgetKinds::kindOfToolWord("Statictext"), WidgetKind::Statictext);
        for (const char *tool : {"Button", "Statictext", "VarAdjust", "SlideMenuPro", "RingProgress"})
            QCOMPARE(WidgetKinds::kindOfToolWord(QString(tool).toLower() + "x"), WidgetKind::None);
    }

    void indexLimitsAndMessages()
    {
        EditBuffer b;
        WidgetLine::parse("button_128:1,2,3,4;", b);
        QCOMPARE(b.index(), 128u);
        QCOMPARE(WidgetKinds::loadIndexError(b.kind(), b.index()), QString("Error button index:128"));
        QVERIFY(WidgetKinds::indexFits(b.kind(), 127) && !WidgetKinds::indexFits(b.kind(), 128));
        QCOMPARE(WidgetKinds::overMaximumMessage(b.kind()), QString("New Button id is over the maximum"));
        QCOMPARE(WidgetKinds::overMaximumMessage(WidgetKind::RProgress), QString("New rProgress id is over the maximum"));
        // a needle beyond its table is not built and says nothing
        QVERIFY(!WidgetKinds::indexFits(WidgetKind::Needle, 16));
        QCOMPARE(WidgetKinds::loadIndexError(WidgetKind::Needle, 16), QString());
        QCOMPARE(WidgetKinds::loadIndexError(WidgetKind::KBKey, 200), QString("Error KBKey index:200"));
        QCOMPARE(KindRegistry::noSchemaMessage(WidgetKind::SlideMenuPro), QString("no schema for kind slidemenuPro"));
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

        // a static label takes its slot in the label table; one video per page
        QCOMPARE(&page.of(WidgetKind::Statictext), &page.of(WidgetKind::Label));
        WidgetSlots<int> &video = page.of(WidgetKind::Video);
        video.put(0, &dummy);
        QCOMPARE(video.lowestFree(), -1);
        video.setSelected(0, true);
        QVERIFY(video.isSelected(0));
        page.clear(); // frees and unmarks
        QCOMPARE(video.lowestFree(), 0);
        QVERIFY(!video.isSelected(0));
        QCOMPARE(page.of(WidgetKind::None).maximum(), 0);
    }
};

QTEST_GUILESS_MAIN(TestWidgetKinds)
#include "tst_widget_kinds.moc"
