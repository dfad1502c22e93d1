// SPDX-License-Identifier: MIT
#include "victim.h"

using namespace Qt::StringLiterals;

namespace {

/// An answer to `command` in which all that can be shown is this word.
QList<QByteArray> forgedAnswer(const QByteArray &command, const QByteArray &word)
{
    if (command == "getstatus")
        return {plainDatagram("statusResponse\n\\g_gametype\\" + word + "\\mapname\\" + word + "\\x\\y\n1 2 \"" + word +
                              "\"\n")};
    if (command == "status")
        return {printDatagram("map: " + word + "\nnum score\n---\n  3 7 48 123456 " + word +
                              " 50 10.0.0.1:28960 1234 25000\n\n")};
    if (command.startsWith("fdir"))
        return {printDatagram("---\n/" + word + ".cfg\n")};
    if (command.startsWith("dir"))
        return {printDatagram("---\n/" + word + ".d3dbsp\n")};
    QByteArray listing;
    for (const char *name : {"sv_hostname", "scr_motd", "sv_maprotation", "sv_maxclients"})
        listing += QByteArray("S ") + name + " \"" + word + "\"\n";
    return {printDatagram(listing)};
}

bool isAnywhere(const QString &word)
{
    return !allTexts().filter(word).isEmpty();
}

} // namespace

Q_DECLARE_METATYPE(HostileServer::Sender)

/// Answers from somewhere else, and answers at the wrong time.
class StrangersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void onlyTheServerItselfIsListenedTo_data()
    {
        QTest::addColumn<HostileServer::Sender>("sender");
        QTest::addColumn<bool>("isListenedTo");
        QTest::newRow("the server itself") << HostileServer::Sender::Itself << true;
        QTest::newRow("another port") << HostileServer::Sender::AnotherPort << false;
        QTest::newRow("another address") << HostileServer::Sender::AnotherAddress << false;
    }

    // The forgery always comes first: where it is let in, it is what is read.
    void onlyTheServerItselfIsListenedTo()
    {
        QFETCH(HostileServer::Sender, sender);
        QFETCH(bool, isListenedTo);
        Victim victim(desertedGame(u"hob"_s));
        if (!victim.server.has(sender))
            QSKIP("this system has no address 127.0.0.2");
        victim.put(3, u"Ann"_s);
        victim.openHob();
        victim.server.beforeAnswer = [&](const QByteArray &command) {
            for (const QByteArray &datagram : forgedAnswer(command, "forged"))
                victim.server.send(datagram, sender);
        };
        victim.connect();
        QVERIFY(victim.isConnected());
        victim.populateAll();
        victim.program.prompts.takeBoxes(); // the server itself gave a word for a number
        QCOMPARE(isAnywhere(u"forged"_s), isListenedTo);
        if (!isListenedTo)
            QCOMPARE(victim.names(), QStringList{u"Ann"_s});
    }

    void aStrangerRefusesNoPassword_data() { onlyTheServerItselfIsListenedTo_data(); }

    void aStrangerRefusesNoPassword()
    {
        QFETCH(HostileServer::Sender, sender);
        QFETCH(bool, isListenedTo);
        Victim victim;
        if (!victim.server.has(sender))
            QSKIP("this system has no address 127.0.0.2");
        victim.server.beforeAnswer = [&](const QByteArray &) {
            victim.server.send(printDatagram("bad rconpassword.\n"), sender);
        };
        victim.connect();
        QCOMPARE(victim.isConnected(), !isListenedTo);
        QCOMPARE(victim.program.prompts.takeBoxes().size(), isListenedTo ? 1 : 0);
    }

    void aStrangersAnswerEndsNoWait()
    {
        Victim victim;
        victim.connect();
        victim.server.liar = [](const QByteArray &) { return QList<QByteArray>(); };
        victim.server.beforeAnswer = [&](const QByteArray &command) {
            victim.server.send(forgedAnswer(command, "forged").constFirst(), HostileServer::Sender::AnotherPort);
        };
        victim.server.commands.clear();
        victim.program.click(u"cmdstatus"_s);
        QCOMPARE(victim.server.commands, QList<QByteArray>(5, "Status"));
        QCOMPARE(victim.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QVERIFY(!isAnywhere(u"forged"_s));
    }

    void whatCameBeforeTheQuestionIsNoAnswer()
    {
        Victim victim(desertedGame(u"hob"_s));
        victim.put(3, u"Ann"_s);
        victim.openHob();
        victim.connect();
        victim.program.click(u"cmdCodOther_1"_s); // goes on gathering: or it would stand in the pane, where it belongs
        const Session &session = victim.program.session;
        for (const QByteArray command : {"getstatus", "status", "fdir", "dir", "dvarlist"}) {
            const qsizetype before = session.rconreply.size();
            victim.server.send(forgedAnswer(command, "premature").constFirst());
            QTRY_VERIFY(session.rconreply.size() > before);
        }
        QVERIFY(session.rconreply.contains(u"premature"));
        victim.populateAll();
        QCOMPARE(victim.names(), QStringList{u"Ann"_s});
        QCOMPARE(victim.program.text(u"txtservername"_s), victim.server.game.dvars().value(u"sv_hostname"_s));
        QVERIFY(!isAnywhere(u"premature"_s));
    }

    // The first listing is lost and comes when the second has been asked for: each value is still found by its name.
    void aLateReplyIsNotTakenForThatOfTheNextCommand()
    {
        Victim victim;
        victim.connect();
        GameServer &game = victim.server.game;
        game.dvars().set(u"scr_motd"_s, u"the message of the day"_s);
        victim.server.answers.insert("dvarlist sv_*", {});
        victim.server.beforeAnswer = [&](const QByteArray &command) {
            if (command != "dvarlist scr_*")
                return;
            for (const QByteArray &datagram : victim.server.honestAnswer("dvarlist sv_*"))
                victim.server.send(datagram);
        };
        victim.program.click(u"cmdservpop"_s);
        QCOMPARE(victim.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(victim.program.text(u"txtservername"_s), QString());
        QCOMPARE(victim.program.text(u"txtservermotd"_s), u"the message of the day"_s);
    }

    // The reply to the command before comes while the next one waits, and ends its wait with nothing of use.
    void aLateRotationIsNotTakenForFiles()
    {
        Victim victim;
        victim.server.answers.insert("dvarlist sv_maprotation", {});
        victim.server.answers.insert("fdir *.cfg", forgedAnswer("dvarlist sv_maprotation", "belated"));
        victim.connect();
        QCOMPARE(victim.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QVERIFY(victim.isConnected());
        QVERIFY(!isAnywhere(u"belated"_s));
    }
};

WINDOW_TEST(StrangersTest)
#include "tst_strangers.moc"
