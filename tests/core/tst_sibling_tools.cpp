// The Tool menu's programs: found by a part of their name among the
// executables beside the designer, started once, never twice.

#include "project/SiblingTools.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

class TestSiblingTools : public QObject
{
    Q_OBJECT

    static void place(const QString &dir, const QString &name, bool executable)
    {
        QVERIFY(QFile::copy(QStringLiteral("/bin/true"), dir + QLatin1Char('/') + name));
        if (!executable)
            QFile::setPermissions(dir + QLatin1Char('/') + name, QFile::ReadOwner | QFile::WriteOwner);
    }

private slots:
    void findsByPartOfTheName()
    {
        QTemporaryDir dir;
        place(dir.path(), QStringLiteral("GlyphForge-1.2"), true);
        place(dir.path(), QStringLiteral("AGlyphForge.txt"), false); // not executable
        QCOMPARE(SiblingTools::find(dir.path(), QStringLiteral("GlyphForge")), QStringLiteral("GlyphForge-1.2"));
        QCOMPARE(SiblingTools::find(dir.path(), QStringLiteral("ToneForge")), QString());
        QCOMPARE(SiblingTools::start(dir.path(), QStringLiteral("ToneForge")), QString()); // missing: nothing
        QCOMPARE(SiblingTools::start(dir.path(), QStringLiteral("Glyph")), QStringLiteral("GlyphForge-1.2"));
    }

    void aRunningToolIsNotStartedAgain()
    {
        // this test program runs: a tool of the same file name counts as running
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QVERIFY(SiblingTools::isRunning(self));
        QVERIFY(!SiblingTools::isRunning(QStringLiteral("no-such-tool-here")));
        QTemporaryDir dir;
        place(dir.path(), self, true);
        QCOMPARE(SiblingTools::start(dir.path(), self.left(8)), QString());
    }
};

QTEST_GUILESS_MAIN(TestSiblingTools)
#include "tst_sibling_tools.moc"
