// SPDX-License-Identifier: MIT
#include "cli/arguments.h"
#include "cli/wrong_usage.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Word = CliArguments::Word;

CliArguments read(const QStringList &words)
{
    return readCliArguments(QStringList{u"molvark-cli"_s} + words, u"1.2.3"_s);
}

/// What is wrong with it; empty when nothing is.
QString complaint(const QStringList &words)
{
    try {
        (void)read(words);
        return {};
    } catch (const WrongUsage &wrong) {
        return wrong.text();
    }
}

} // namespace

class CliArgumentsTest final : public QObject {
    Q_OBJECT

private slots:
    void eachArgumentIsOneCommand()
    {
        const CliArguments arguments =
            read({u"--server"_s, u"a"_s, u"map_restart"_s, u"say good night"_s, u"status"_s});
        QCOMPARE(arguments.word, Word::Commands);
        QCOMPARE(arguments.commands, QStringList({u"map_restart"_s, u"say good night"_s, u"status"_s}));
        QCOMPARE(arguments.server, u"a"_s);
    }

    void theProgramsOwnWordsAreKnownInTheFirstPlaceOnly_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("word");
        QTest::addColumn<QStringList>("commands");
        const auto row = [](const QString &line, Word word, const QStringList &commands) {
            QTest::addRow("%s", qPrintable(line)) << line.split(u' ') << static_cast<int>(word) << commands;
        };
        row(u"status"_s, Word::Status, {u"status"_s});
        row(u"players"_s, Word::Players, {});
        row(u"query"_s, Word::Query, {});
        row(u"check"_s, Word::Check, {});
        row(u"watch 5"_s, Word::Watch, {});
        row(u"say hi  there --server x"_s, Word::Say, {u"say hi  there --server x"_s});
        row(u"say -5 minutes"_s, Word::Say, {u"say -5 minutes"_s});
        row(u"map_restart players"_s, Word::Commands, {u"map_restart"_s, u"players"_s});
        row(u"Players"_s, Word::Commands, {u"Players"_s});
        row(u"-- status"_s, Word::Status, {u"status"_s});
        row(u"-- --odd"_s, Word::Commands, {u"--odd"_s});
    }
    void theProgramsOwnWordsAreKnownInTheFirstPlaceOnly()
    {
        QFETCH(QStringList, words);
        const CliArguments arguments = read(words);
        QTEST(static_cast<int>(arguments.word), "word");
        QTEST(arguments.commands, "commands");
    }

    void everyOptionArrives()
    {
        const CliArguments arguments = read({u"players"_s, u"--saved=Three"_s, u"--password-file"_s, u"f"_s, u"--csv"_s,
                                             u"--timeout"_s, u"1.5"_s, u"--retries=4"_s});
        QCOMPARE(arguments.saved, u"Three"_s);
        QCOMPARE(*arguments.passwordFile, u"f"_s);
        QVERIFY(arguments.format == PlayersFormat::Csv);
        QCOMPARE(arguments.timeout.count(), 1500);
        QCOMPARE(arguments.copiesOfCommand(), 5);
        QCOMPARE(arguments.copiesOfQuestion(), 5);
        QVERIFY(read({u"players"_s, u"--json"_s}).format == PlayersFormat::Json);
        QCOMPARE(*read({u"--script"_s, u"file"_s}).script, u"file"_s);
        QCOMPARE(*read({u"-"_s}).script, u"-"_s);
        QCOMPARE(read({u"watch"_s, u"2.5"_s}).interval.count(), 2500);
    }

    void unlessToldACommandIsSentOnceAndAQuestionThreeTimes()
    {
        const CliArguments arguments = read({u"a"_s});
        QCOMPARE(arguments.copiesOfCommand(), 1);
        QCOMPARE(arguments.copiesOfQuestion(), 3);
        QCOMPARE(arguments.timeout.count(), 3000);
        QVERIFY(arguments.format == PlayersFormat::Table);
        QVERIFY(!arguments.script && !arguments.passwordFile);
    }

    void wrongUsageIsNamed_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("told");
        const auto row = [](const char *line, const char *told) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(told);
        };
        row("", "There is no command");
        row("--bogus x", "no option --bogus");
        row("-x", "no option -x");
        row("a --bogus", "no option --bogus");
        row("--server", "--server needs a value");
        row("--server= a", "--server needs a value");
        row("--json=1 players", "--json takes no value");
        row("--json --csv players", "exclude each other");
        row("--json status", "belong to players");
        row("--server a --saved 1 status", "exclude each other");
        row("--script f status", "not from both");
        row("a -", "stands alone");
        row("status now", "\"now\" is too much behind status");
        row("players a", "too much behind players");
        row("watch", "watch needs a number");
        row("watch 0", "from 1 to 86400, not \"0\"");
        row("watch soon", "not \"soon\"");
        row("watch nan", "not \"nan\"");
        row("watch 5 6", "too much behind watch");
        row("say", "say needs a text");
        row("--timeout 0 a", "from 0.1 to 3600, not \"0\"");
        row("--timeout inf a", "not \"inf\"");
        row("--retries -1 a", "from 0 to 100, not \"-1\"");
        row("--retries 1.5 a", "not \"1.5\"");
    }
    void wrongUsageIsNamed()
    {
        QFETCH(QString, line);
        QFETCH(QString, told);
        const QString text = complaint(line.isEmpty() ? QStringList() : line.split(u' '));
        QVERIFY2(text.contains(told), qPrintable(text));
    }

    void aPasswordInTheArgumentsIsNotTakenAndNotRepeated()
    {
        for (const QStringList &words :
             {QStringList{u"--password=hush"_s, u"status"_s}, QStringList{u"--password"_s, u"hush"_s, u"status"_s}}) {
            const QString text = complaint(words);
            QVERIFY2(text.contains(u"never an argument"_s) && !text.contains(u"hush"_s), qPrintable(text));
        }
        QVERIFY(!complaint({u"--secret=hush"_s, u"status"_s}).contains(u"hush"_s));
        for (const auto &word : {u"-phush"_s, u"-p=hush"_s, u"-Phush"_s, u"-p"_s, u"--rconpass=hush"_s,
                                 u"--PASSWORD=hush"_s, u"--rcon-password"_s, u"-rconpass"_s}) {
            const QString text = complaint({word, u"status"_s});
            QVERIFY2(text.contains(u"never an argument"_s) && !text.contains(u"hush"_s), qPrintable(word));
        }
    }

    void ofAShortOptionOnlyTheLetterIsRepeated()
    {
        for (const auto &word : {u"-xhush"_s, u"-hhush"_s, u"-x=hush"_s}) {
            const QString text = complaint({word, u"status"_s});
            QVERIFY2(text.startsWith(u"There is no option "_s + word.first(2)) && !text.contains(u"hush"_s),
                     qPrintable(text));
        }
    }

    void helpAndVersionAreNotices()
    {
        QVERIFY(read({u"--help"_s}).notice.startsWith(u"Usage: molvark-cli"_s));
        QCOMPARE(read({u"-h"_s}).notice, read({u"status"_s, u"--help"_s}).notice);
        QCOMPARE(read({u"--version"_s}).notice, u"molvark-cli 1.2.3\n"_s);
    }

    void helpNamesEverythingAndHasExamples()
    {
        const QString help = read({u"--help"_s}).notice;
        for (const char *text : {"--server HOST[:PORT]",
                                 "--saved N",
                                 "--saved NAME",
                                 "--password-file FILE",
                                 "MOLVARK_RCON_PASSWORD",
                                 "--script FILE",
                                 "--timeout SECONDS",
                                 "--retries N",
                                 "--json",
                                 "--csv",
                                 "status",
                                 "players",
                                 "query",
                                 "check",
                                 "watch SECONDS",
                                 "say TEXT",
                                 "sleep",
                                 "Examples:\n  molvark-cli --",
                                 "130 interrupted",
                                 "5 the server"})
            QVERIFY2(help.contains(QString::fromLatin1(text)), text);
        for (const QString &line : help.split(u'\n'))
            QVERIFY2(line.size() <= 80, qPrintable(line));
    }
};

GUILESS_TEST(CliArgumentsTest)
#include "tst_cli_arguments.moc"
