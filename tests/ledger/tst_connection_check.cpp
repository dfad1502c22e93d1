// SPDX-License-Identifier: MIT
#include "ledger/connection_check.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

namespace {

const QString tools = u"another administrator's tool may be using up the server's limit, or RCON is blocked"_s;
const QString end = u"\n250 total dvars\n"_s;

} // namespace

namespace QTest {

template <>
char *toString(const CheckStep &step)
{
    return toString(u"%1 / %2"_s.arg(step.result, step.advice));
}

} // namespace QTest

/// Each sentence of the connection check.
class ConnectionCheckTest final : public QObject {
    Q_OBJECT

private slots:
    void theFieldsAreLookedAtFirst()
    {
        const CheckStep empty{u"Server: the connection fields are not filled in"_s,
                              u"Type the server's name or address, its port and its RCON password."_s};
        QCOMPARE(fieldsStep({}, u"28960"_s, u"word"_s).value(), empty);
        QCOMPARE(fieldsStep(u"host"_s, u"28960"_s, {}).value(), empty);
        for (const QString &port : {u""_s, u"0"_s, u"65536"_s, u"-1"_s, u"abc"_s})
            QCOMPARE(fieldsStep(u"host"_s, port, u"word"_s).value(),
                     (CheckStep{u"Server: \"%1\" is no port"_s.arg(port),
                                u"A port is a number from 1 to 65535; most servers have 28960."_s}));
        QVERIFY(!fieldsStep(u"host"_s, u"1"_s, u"word"_s));
        QVERIFY(!fieldsStep(u"host"_s, u"65535"_s, u"word"_s));
    }

    void theNameIsLookedUp()
    {
        QCOMPARE(lookUpStep(u"game.example"_s, u"192.0.2.7"_s, 12),
                 (CheckStep{u"Name: game.example has the address 192.0.2.7, found in 12 ms"_s,
                            u"If this is not where the server runs, its name leads to an old place."_s}));
        QCOMPARE(lookUpStep(u"game.example"_s, {}, 90),
                 (CheckStep{u"Name: no address was found for game.example in 90 ms"_s,
                            u"Look at the spelling of the name, and whether this computer reaches the Internet."_s}));
        QCOMPARE(lookUpStep(u"192.0.2.7"_s, u"192.0.2.7"_s, 0),
                 (CheckStep{u"Name: 192.0.2.7 is an address, and nothing had to be looked up"_s,
                            u"If the server has moved, ask whoever runs it for the new address."_s}));
    }

    void thePublicQueryAnswersOrNot()
    {
        QCOMPARE(queryStep({.answeredAfter = 31}),
                 (CheckStep{u"Public query: answered in 31 ms"_s, u"The server runs and can be reached."_s}));
        QCOMPARE(queryStep({}),
                 (CheckStep{u"Public query: no answer"_s,
                            u"The server does not run, loads a map, has another port, or something on the way blocks "
                            "it."_s}));
        QCOMPARE(queryStep({.answeredAfter = {}, .couldBeSent = false}),
                 (CheckStep{u"Public query: it could not be sent"_s,
                            u"This computer has no way to the server: look at its network."_s}));
    }

    void theConsoleAnswersOrNot()
    {
        QCOMPARE(consoleStep({.answeredAfter = 40}, u"\"g_gametype\" is: \"tdm\"\n"_s, u"word"_s, true),
                 (CheckStep{u"Console: answered in 40 ms"_s, u"The RCON password is right."_s}));
        QCOMPARE(consoleStep({.answeredAfter = 40}, u"Unknown command \"g_gametype\"\n"_s, u"word"_s, true).advice,
                 u"The RCON password is right."_s);
        QCOMPARE(consoleStep({.answeredAfter = 40}, u"\n"_s, u"word"_s, false),
                 (CheckStep{u"Console: answered in 40 ms without a word"_s,
                            u"This does not tell whether the RCON password is right: send a command and see what it "
                            "does."_s}));
        QCOMPARE(
            consoleStep({.answeredAfter = 40}, u"Access denied for word\n"_s, u"word"_s, false),
            (CheckStep{u"Console: answered in 40 ms with \"Access denied for ****\""_s,
                       u"This is no answer to what was asked, and it could not be judged whether the RCON password "
                       "is right."_s}));
        const CheckStep silent = consoleStep({}, {}, u"word"_s, true);
        QCOMPARE(silent.result, u"Console: silent although the public query answers"_s);
        QCOMPARE(silent.advice, u"Try again later: "_s + tools + u'.');
        QCOMPARE(
            consoleStep({}, {}, u"word"_s, false),
            (CheckStep{u"Console: no answer"_s, u"Nothing comes from this server: see to the public query first."_s}));
        QCOMPARE(consoleStep({.answeredAfter = {}, .couldBeSent = false}, {}, u"word"_s, true).result,
                 u"Console: the command could not be sent"_s);
    }

    void eachRefusalIsToldInItsWords_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("advice");
        const QString wrong = u"The password in the connection fields is not the server's: see rcon_password in its "
                              "configuration."_s;
        const QString unset = u"No RCON password is set on the server, so it takes no commands: whoever runs it has to "
                              "set rcon_password."_s;
        QTest::newRow("usual") << u"Bad rconpassword.\n"_s << wrong;
        QTest::newRow("invalid") << u"Invalid password.\n"_s << wrong;
        QTest::newRow("short") << u"Bad rcon"_s << wrong;
        QTest::newRow("none") << u"No rconpassword set on the server.\n"_s << unset;
        QTest::newRow("must set, in other words") << u"The server must set 'rcon_password' first.\n"_s << unset;
        QTest::newRow("must set") << u"The server must set 'rcon_password' for clients to use 'rcon'.\n"_s << unset;
        QTest::newRow("too short") << u"rcon_password must not be shorter than 8 characters.\n"_s
                                   << u"The server wants a longer RCON password: whoever runs it has to set one."_s;
    }

    void eachRefusalIsToldInItsWords()
    {
        QFETCH(QString, words);
        QFETCH(QString, advice);
        QVERIFY(refusesInAnyWording(words));
        const CheckStep step = consoleStep({.answeredAfter = 5}, words, u"geheim"_s, true);
        QCOMPARE(step.result, u"Console: refused with \""_s + words.trimmed() + u'"');
        QCOMPARE(step.advice, advice);
    }

    void noAnswerOfTheGameIsARefusal()
    {
        for (const QString &words : {u""_s, u"\"g_gametype\" is: \"tdm^7\"\n"_s, u"Unknown command \"g_gametype\"\n"_s})
            QVERIFY2(!refusesInAnyWording(words), qPrintable(words));
    }

    void aPasswordThatNeverFitsIsTold()
    {
        const QString advice =
            u"The password has a blank or a quote, and with these it never fits: servers split the line there."_s;
        for (const QString &password : {u"two words"_s, u"a\"b"_s})
            QCOMPARE(consoleStep({.answeredAfter = 5}, u"Bad rconpassword.\n"_s, password, true).advice, advice);
        QVERIFY(consoleStep({.answeredAfter = 5}, u"Bad rcon"_s, u"word"_s, true).advice != advice);
    }

    void thePasswordIsNotRepeated()
    {
        const CheckStep step =
            consoleStep({.answeredAfter = 5}, u"Bad rcon from 1.2.3.4: rcon geheim status"_s, u"geheim"_s, true);
        QCOMPARE(step.result, u"Console: refused with \"Bad rcon from 1.2.3.4: rcon ****** status\""_s);
        // Here asterisks would tell it, also when two copies are refused at once.
        for (const QString &password : {u"word"_s, u"password"_s, u"rcon"_s, u"Bad"_s}) {
            QCOMPARE(consoleStep({.answeredAfter = 5}, u"Bad rconpassword.\n"_s, password, true).result,
                     u"Console: refused with \"Bad rconpassword.\""_s);
            QCOMPARE(consoleStep({.answeredAfter = 5}, u"Bad rcon\nBad rcon\n"_s, password, true).result,
                     u"Console: refused with \"Bad rcon Bad rcon\""_s);
        }
    }

    void theLongReplyArrivesWholeOrNot_data()
    {
        QTest::addColumn<QList<qsizetype>>("sizes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("advice");
        const QString reliable = u"Lists and settings can be relied on."_s;
        QTest::newRow("none") << QList<qsizetype>{} << QString() << u"Long reply: it did not come"_s
                              << u"Short answers come and long ones do not: something on the way drops large "
                                 "datagrams, or the server was asked too often."_s;
        QTest::newRow("one") << QList<qsizetype>{512} << end
                             << u"Long reply: it came whole in one datagram of 512 bytes"_s
                             << u"What fits into one datagram arrives; whether several do cannot be told here."_s;
        QTest::newRow("empty")
            << QList<qsizetype>{10} << u"\n"_s << u"Long reply: it was empty"_s
            << u"The server took \"dvarlist\" and had nothing to say, so whether long replies arrive "
               "cannot be told."_s;
        QTest::newRow("several") << QList<qsizetype>{1010, 1010, 300} << end
                                 << u"Long reply: it came whole in 3 datagrams: 2 of 1010 bytes, 1 of 300 bytes"_s
                                 << reliable;
        QTest::newRow("cut") << QList<qsizetype>{1010, 1010} << u"S sv_a \"1\"\n"_s
                             << u"Long reply: its end is missing; it came in 2 datagrams: 2 of 1010 bytes"_s
                             << u"Datagrams get lost on the way: lists may lack rows, so read them twice before acting "
                                "on them."_s;
        QTest::newRow("unknown")
            << QList<qsizetype>{36} << u"Unknown command \"dvarlist\"\n"_s
            << u"Long reply: the server does not know \"dvarlist\""_s
            << u"The program reads settings by this command: on this server many of its boxes stay "
               "empty, and whether long replies arrive cannot be told."_s;
        QTest::newRow("losing") << QList<qsizetype>{1303, 1303, 300} << end
                                << u"Long reply: it came whole in 3 datagrams: 2 of 1303 bytes, 1 of 300 bytes"_s
                                << u"Servers that cut like this lose a character at each border: use \"Check and "
                                   "kick\" and its like for players."_s;
    }

    void theLongReplyArrivesWholeOrNot()
    {
        QFETCH(QList<qsizetype>, sizes);
        QFETCH(QString, text);
        QFETCH(QString, result);
        QFETCH(QString, advice);
        QCOMPARE(listingStep(sizes, text), (CheckStep{result, advice}));
    }

    void withoutAConsoleItIsNotAskedFor()
    {
        QCOMPARE(noListingStep(), (CheckStep{u"Long reply: not asked for"_s, u"This needs a console that answers."_s}));
    }

    void aReplyWithoutEndIsToldSo()
    {
        QCOMPARE(endlessStep({1010, 1010, 300}),
                 (CheckStep{u"Long reply: it had no end; it came in 3 datagrams: 2 of 1010 bytes, 1 of 300 bytes"_s,
                            u"No server says that much of its own accord: look for what else sends from its "
                            "address."_s}));
    }

    void theTextHasAllSteps()
    {
        QCOMPARE(checkText(u"Connection check"_s, {{u"One"_s, u"Do."_s}, {u"Two"_s, u"Do not."_s}}),
                 u"Connection check\n\nOne\n    Do.\n\nTwo\n    Do not.\n"_s);
    }
};

GUILESS_TEST(ConnectionCheckTest)
#include "tst_connection_check.moc"
