// SPDX-License-Identifier: MIT
#include "serverconfig/file_listing.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class FileListingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void linesThatBeginWithASlashGiveTheirNames_data()
    {
        QTest::addColumn<QString>("listing");
        QTest::addColumn<QStringList>("expected");
        const QString heading = u"---------------\n"_s;
        const QStringList both{u"server.cfg"_s, u"match.cfg"_s};
        QTest::newRow("two files") << heading + u"/server.cfg\n/match.cfg\n2 files listed\n"_s << both;
        QTest::newRow("nothing behind them") << heading + u"/server.cfg\n/match.cfg\n"_s << both;
        QTest::newRow("a line without a slash is skipped")
            << heading + u"/server.cfg\ndefault_mp.cfg\n/match.cfg\n"_s << both;
        QTest::newRow("the first of them is skipped") << heading + u"a.cfg\n/server.cfg\n/match.cfg\n"_s << both;
        QTest::newRow("the order is the server's")
            << heading + u"/z.cfg\n/a.cfg\n"_s << QStringList({u"z.cfg"_s, u"a.cfg"_s});
        QTest::newRow("any letter case") << heading + u"/Weekend_Fun.CFG\n/b.Cfg\n"_s
                                         << QStringList({u"Weekend_Fun.CFG"_s, u"b.Cfg"_s});
        QTest::newRow("what follows the extension is left out")
            << heading + u"/old.cfg.bak\n/b.cfg\n"_s << QStringList({u"old.cfg"_s, u"b.cfg"_s});
        QTest::newRow("blanks in a name") << heading + u"/my match.cfg\n"_s << QStringList{u"my match.cfg"_s};
        QTest::newRow("a folder in a name") << heading + u"/cfg/a.cfg\n"_s << QStringList{u"cfg/a.cfg"_s};
        QTest::newRow("a blank before the slash") << heading + u" /a.cfg\n/b.cfg\n"_s << QStringList{u"b.cfg"_s};
        QTest::newRow("no last line feed") << heading + u"/server.cfg\n/match.cfg"_s << both;
        QTest::newRow("the first line begins with a slash") << u"/server.cfg\n/match.cfg\n"_s << both;
        QTest::newRow("a file in the heading is skipped")
            << u"server.cfg\n/match.cfg\n"_s << QStringList{u"match.cfg"_s};
        QTest::newRow("one line, no line feed") << u"/server.cfg"_s << QStringList{u"server.cfg"_s};
        QTest::newRow("one line without a slash") << u"server.cfg"_s << QStringList();
        QTest::newRow("a heading only") << heading << QStringList();
        QTest::newRow("an empty listing") << heading + u"0 files listed\n"_s << QStringList();
        QTest::newRow("no reply") << u""_s << QStringList();
        QTest::newRow("only the extension") << heading + u".cfg\n/a.cfg\n"_s << QStringList{u"a.cfg"_s};
        QTest::newRow("only a slash and the extension") << heading + u"/.cfg\n"_s << QStringList{u".cfg"_s};
    }

    void linesThatBeginWithASlashGiveTheirNames()
    {
        QFETCH(QString, listing);
        QTEST(cfgFiles(listing), "expected");
    }

    void aLineWithoutTheExtensionRunsIntoTheNext()
    {
        // The extension is looked for in the whole rest of the reply, not in the line.
        QCOMPARE(cfgFiles(u"---\n/readme.txt\n/a.cfg\n/b.cfg\n"), QStringList({u"readme.txt\n/a.cfg"_s, u"b.cfg"_s}));
        QCOMPARE(cfgFiles(u"---\n\n/a.cfg\n/b.cfg\n"), QStringList{u"b.cfg"_s});
    }

    void aNameLongerThanAnyPathIsLeftOut()
    {
        const QString longest = QString(4092, u'x') + u".cfg"_s;
        QCOMPARE(cfgFiles(u"---\n/"_s + longest + u"\n/x"_s + longest + u"\n/a.cfg\n"_s),
                 QStringList({longest, u"a.cfg"_s}));
    }

    void aListingThatIsCutAnywhereIsReadToItsEnd()
    {
        const QString whole = u"---------------\n/server.cfg\ndefault_mp.cfg\n/match.cfg\n3 files listed\n"_s;
        const qsizetype first = whole.indexOf(u".cfg\nd") + 4;
        const qsizetype second = whole.indexOf(u"match.cfg") + 9;
        for (qsizetype cut = 0; cut <= whole.size(); ++cut) {
            const qsizetype expected = cut >= second ? 2 : cut >= first ? 1 : 0;
            QCOMPARE(cfgFiles(QStringView(whole).first(cut)).size(), expected);
        }
    }
};

GUILESS_TEST(FileListingTest)
#include "tst_file_listing.moc"
