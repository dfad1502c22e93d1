// SPDX-License-Identifier: MIT
#include "rcon/command_line.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

namespace {

QStringList texts(const QList<QStringView> &views)
{
    QStringList all;
    for (const QStringView view : views)
        all.append(view.toString());
    return all;
}

} // namespace

class CommandLineTest final : public QObject {
    Q_OBJECT

private slots:
    void aSemicolonPartsCommandsButNotInQuotes_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("commands");
        QTest::newRow("none") << QString() << QStringList();
        QTest::newRow("one") << u" say hello "_s << QStringList{u"say hello"_s};
        QTest::newRow("three") << u"say a; status ;map_rotate"_s
                               << QStringList{u"say a"_s, u"status"_s, u"map_rotate"_s};
        QTest::newRow("in quotes") << u"say \"a;status\";b"_s << QStringList{u"say \"a;status\""_s, u"b"_s};
        QTest::newRow("two lines") << u"say a\nstatus"_s << QStringList{u"say a"_s, u"status"_s};
        QTest::newRow("a quote without its end") << u"say \"a;b"_s << QStringList{u"say \"a;b"_s};
    }

    void aSemicolonPartsCommandsButNotInQuotes()
    {
        QFETCH(QString, line);
        QTEST(texts(commandsOf(line)), "commands");
    }

    void theFirstWordIsTheCommandHoweverItIsTyped_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("word");
        QTest::newRow("plain") << u"status"_s << u"status"_s;
        QTest::newRow("with more") << u"  unbanUser Bob"_s << u"unbanUser"_s;
        QTest::newRow("slash") << u"/status"_s << u"status"_s;
        QTest::newRow("backslash") << u"\\status"_s << u"status"_s;
        QTest::newRow("quotes") << u"\"status\" 1"_s << u"status"_s;
        QTest::newRow("quote right behind it") << u"say\"hi\""_s << u"say"_s;
        QTest::newRow("comment before it") << u"/* say */ status"_s << u"status"_s;
        QTest::newRow("nothing") << u"  "_s << QString();
    }

    void theFirstWordIsTheCommandHoweverItIsTyped()
    {
        QFETCH(QString, command);
        QTEST(commandWord(command).toString(), "word");
    }

    void aVariableStandsBehindWhatSetsIt_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("variable");
        QTest::newRow("by its name") << u"g_gametype tdm"_s << u"g_gametype"_s;
        QTest::newRow("set") << u"set g_gametype tdm"_s << u"g_gametype"_s;
        QTest::newRow("seta") << u"SETA g_gametype tdm"_s << u"g_gametype"_s;
        QTest::newRow("sets") << u"/sets g_gametype tdm"_s << u"g_gametype"_s;
        QTest::newRow("setu") << u"setu \"g_gametype\" tdm"_s << u"g_gametype"_s;
        QTest::newRow("no setter") << u"settle g_gametype"_s << u"settle"_s;
    }

    void aVariableStandsBehindWhatSetsIt()
    {
        QFETCH(QString, command);
        QFETCH(QString, variable);
        QStringView rest = command;
        QCOMPARE(takeVariable(rest).toString(), variable);
    }

    void theListOfPlayersIsAskedForInSeveralWays_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("isAsked");
        QTest::newRow("plain") << u"status"_s << true;
        QTest::newRow("capitals and a slash") << u"/STATUS"_s << true;
        QTest::newRow("in quotes, with more") << u"\"status\" 3"_s << true;
        QTest::newRow("behind another") << u"say hi;status"_s << true;
        QTest::newRow("said") << u"say \"ready;status\""_s << false;
        QTest::newRow("another word") << u"statusbar"_s << false;
        QTest::newRow("nothing") << QString() << false;
    }

    void theListOfPlayersIsAskedForInSeveralWays()
    {
        QFETCH(QString, line);
        QTEST(asksForStatus(line), "isAsked");
    }
};

GUILESS_TEST(CommandLineTest)
#include "tst_command_line.moc"
