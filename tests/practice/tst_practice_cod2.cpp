// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "practice/datagrams.h"
#include "practice/practice_arguments.h"
#include "practice/practice_server.h"
#include "practice_client.h"
#include "test_class.h"

#include <QRegularExpression>
#include <QSignalSpy>

#include <algorithm>
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray printHeader("\xFF\xFF\xFF\xFFprint\n");

/// A player for a slot of one's choice.
Player player(int slot, const QString &name, const QString &guid)
{
    Player player;
    player.slot = slot;
    player.name = name;
    player.guid = guid;
    player.address = u"10.0.0.7:28960"_s;
    return player;
}

PracticeOptions emptyCod2()
{
    PracticeOptions options = PracticeOptions::cod2();
    options.players = 0;
    return options;
}

QByteArray digits(qsizetype count)
{
    QByteArray text;
    for (qsizetype at = 0; at < count; ++at)
        text += static_cast<char>('0' + at % 10);
    return text;
}

qsizetype playersWithoutGuid(const PracticeOptions &options)
{
    return std::ranges::count(GameServer(options).players().all(), u"0"_s, &Player::guid);
}

} // namespace

class PracticeCod2Test final : public QObject {
    Q_OBJECT

    std::unique_ptr<PracticeServer> server;
    std::unique_ptr<PracticeClient> client;
    std::chrono::milliseconds now{};

    // A server whose time is `now`.
    void start(const PracticeOptions &options)
    {
        server = std::make_unique<PracticeServer>(options);
        QVERIFY2(server->listen(), qPrintable(server->errorString()));
        now = 0ms;
        server->setClock([this] { return now; });
        client = std::make_unique<PracticeClient>(server->port());
    }
    // The whole reply, after as much time as any limit wants.
    QByteArray replyTo(const QByteArray &command, const QByteArray &password = "practice")
    {
        now += 500ms;
        client->forget();
        client->rcon(command, password);
        return QTest::qWaitFor([this] { return client->count() > 0; }) ? client->text() : "no reply";
    }

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aFullDatagramLosesItsLastCharacter()
    {
        const QByteArray text = digits(2 * 1294 + 5);
        const QList<QByteArray> datagrams = losingPrintDatagrams(text);
        QCOMPARE(datagrams, QList<QByteArray>({printHeader + text.first(1293), printHeader + text.mid(1294, 1293),
                                               printHeader + text.last(5)}));
        QCOMPARE(datagrams.at(0).size(), 1303);
        QCOMPARE(datagrams.at(1).size(), 1303);
    }

    void aPieceThatIsNotFullLosesNothing()
    {
        QCOMPARE(losingPrintDatagrams(digits(1293)), QList<QByteArray>({printHeader + digits(1293)}));
        QCOMPARE(losingPrintDatagrams(digits(1294)), QList<QByteArray>({printHeader + digits(1293)}));
        QCOMPARE(losingPrintDatagrams({}), QList<QByteArray>({printHeader}));
    }

    void theListOfAFullServerLacksACharacterAtEachBorder()
    {
        PracticeOptions options = PracticeOptions::cod2();
        options.players = 40;
        start(options);
        QByteArray whole = toAnsi(server->game().execute(u"status"_s).reply);
        client->rcon("status");
        const qsizetype full = whole.size() / 1294;
        QVERIFY(full >= 2);
        QTRY_COMPARE(client->count(), full + 1);
        for (qsizetype border = full; border >= 1; --border)
            whole.remove(border * 1294 - 1, 1);
        QCOMPARE(client->text(), whole);
        QVERIFY(std::all_of(client->datagrams().begin(), client->datagrams().end() - 1,
                            [](const QByteArray &datagram) { return datagram.size() == 1303; }));
    }

    void aShortListIsWhole()
    {
        PracticeOptions options = PracticeOptions::cod2();
        options.players = 5;
        start(options);
        QCOMPARE(replyTo("status"), toAnsi(server->game().execute(u"status"_s).reply));
    }

    // A lost digit is what makes a kick hit somebody else.
    void someListsLoseADigitOfASlot()
    {
        int wrong = 0;
        for (quint32 seed = 1; seed <= 150; ++seed) {
            PracticeOptions options = PracticeOptions::cod2();
            options.players = 16;
            options.seed = seed;
            const QByteArray whole = toAnsi(GameServer(options).execute(u"status"_s).reply);
            for (qsizetype lost = 1293; lost < whole.size(); lost += 1294) {
                const qsizetype column = lost - (whole.lastIndexOf('\n', lost - 1) + 1);
                wrong += column < 3 && whole.at(lost) != ' ' ? 1 : 0;
            }
        }
        QVERIFY2(wrong > 0, "no list of 150 loses a digit of a slot");
    }

    void oneCommandPassesInHalfASecond()
    {
        start(PracticeOptions::cod2());
        client->rcon("say a");
        client->rcon("say b");
        QTRY_COMPARE(server->requests().size(), 2);
        QTRY_COMPARE(client->count(), 1);
        now = 500ms;
        client->rcon("say c");
        QTRY_COMPARE(client->count(), 2);
    }

    void aWrongPasswordIsRefusedInTheWordsAskedFor_data()
    {
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const QString &refusal, const QByteArray &text) {
            QTest::newRow(qPrintable(refusal)) << refusal << text;
        };
        row(u"Bad rconpassword."_s, "Bad rconpassword.\n");
        row(u"Invalid password."_s, "Invalid password.\n");
        row(u"Bad rcon"_s, "Bad rcon");
        row(u"No rconpassword set on the server."_s, "No rconpassword set on the server.\n");
        row(u"The server must set 'rcon_password' for clients to use 'rcon'."_s,
            "The server must set 'rcon_password' for clients to use 'rcon'.\n");
    }
    void aWrongPasswordIsRefusedInTheWordsAskedFor()
    {
        QFETCH(QString, refusal);
        QFETCH(QByteArray, text);
        PracticeOptions options;
        options.refusal = refusal;
        start(options);
        QCOMPARE(replyTo("status", "wrong"), text);
    }

    void thisEngineCallsAWrongPasswordInvalid()
    {
        start(PracticeOptions::cod2());
        QCOMPARE(replyTo("status", "wrong"), "Invalid password.\n");
    }

    void aRequestLineIsReadTheEnginesWay_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<QByteArray>("command");
        const auto row = [](const char *name, const QByteArray &line, const QByteArray &password,
                            const QByteArray &command) { QTest::newRow(name) << line << password << command; };
        row("nothing special", "rcon pw say  \"a  b\" ", "pw", "say  \"a  b\" ");
        row("the last byte that is read", "rcon pw " + QByteArray(1015, 'x'), "pw", QByteArray(1015, 'x'));
        row("the first that is not", "rcon pw " + QByteArray(1016, 'x'), "pw", QByteArray(1015, 'x'));
        row("the password counts", "rcon " + QByteArray(1000, 'p') + " say abcdefghijklmnop", QByteArray(1000, 'p'),
            "say abcdefghijklm");
        row("a percent sign", "rcon p%w say 50% off", "p.w", "say 50. off");
        row("a comment", "rcon pw say a // b", "pw", "say a ");
        row("without a blank", "rcon pw say a//b", "pw", "say a");
        row("an address is none", "rcon pw set x http://a.b/c", "pw", "set x http://a.b/c");
        row("a third slash", "rcon pw set x file:///c", "pw", "set x file:/");
        row("in quotes it is text", "rcon pw say \"a // b /* c */\" // d", "pw", "say \"a // b /* c */\" ");
        row("an open quote", "rcon pw say \"a // b", "pw", "say \"a // b");
        row("a comment with an end", "rcon pw say a /* b */ c", "pw", "say a   c");
        row("parts words", "rcon pw say a/* b */c", "pw", "say a c");
        row("a comment without an end", "rcon pw say a /* b", "pw", "say a ");
        row("a pattern of files", "rcon pw dir maps/*", "pw", "dir maps");
        row("only the first line", "rcon pw say a\n/* b", "pw", "say a");
    }
    void aRequestLineIsReadTheEnginesWay()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, password);
        QFETCH(QByteArray, command);
        const Request request = readRequest("\xFF\xFF\xFF\xFF" + line, PracticeOptions::cod2());
        QCOMPARE(request.kind, Request::Kind::Rcon);
        QCOMPARE(request.password, password);
        QCOMPARE(request.command, command);
        QCOMPARE(readRequest("\xFF\xFF\xFF\xFF" + line, PracticeOptions()).command,
                 readRequest("\xFF\xFF\xFF\xFF" + line).command);
    }

    void aLongValueIsCutInsideItsQuotes()
    {
        start(PracticeOptions::cod2());
        replyTo("set long \"" + QByteArray(2000, 'x') + '"');
        const qsizetype read = 1023 - qstrlen("rcon practice set long \"");
        QCOMPARE(server->game().dvars().value(u"long"_s), QString(read, u'x'));
    }

    void aPasswordWithAPercentSignNeverMatches()
    {
        start(PracticeOptions::cod2());
        server->setPassword(u"50%"_s);
        QCOMPARE(replyTo("status", "50%"), "Invalid password.\n");
    }

    void whatAProgramSentIsKeptAsItCame()
    {
        start(PracticeOptions::cod2());
        server->answer("say 50% // off", {"prepared"});
        QCOMPARE(replyTo("say 50% // off"), "prepared");
        QCOMPARE(server->commands(), QList<QByteArray>({"say 50% // off"}));
    }

    void aCommandIsAnsweredInTheEnginesWords_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("reply");
        const auto row = [](const QString &line, const QString &reply) {
            QTest::newRow(qPrintable(line)) << line << reply;
        };
        row(u"rcon_password"_s, u"rcon_password is read protected\n"_s);
        row(u"RCON_Password"_s, u"rcon_password is read protected\n"_s);
        row(u"rcon_password new"_s, u""_s);
        row(u"g_allowvote"_s, u"\"g_allowVote\" is: \"1^7\" default: \"1^7\"\n  Domain is any integer from 0 to 1\n"_s);
        row(u"sv_hostname"_s, u"\"sv_hostname\" is: \"CoD2Host^7\" default: \"CoD2Host^7\"\n  Domain is any text\n"_s);
        row(u"cmdlist un*"_s, u"unbanUser\n1 commands\n"_s);
        row(u"CMDLIST *ban*"_s, u"banClient\ntempBanClient\nunbanUser\n3 commands\n"_s);
        row(u"banclient 3"_s, u"3:^1Bob banned\n"_s);
        row(u"banclient 4"_s, u"Can't ban user, GUID is 0\n"_s);
        row(u"tempbanclient 4"_s, u"Can't ban user, GUID is 0\n"_s);
        row(u"clientkick 4"_s, u"4:Lan kicked\n"_s);
        row(u"banclient 5"_s, u"This user (815) is already banned\n"_s);
        row(u"banclient 9"_s, u"Client 9 is not active\n"_s);
        row(u"banclient"_s, u"Usage: banclient <client number>\n"_s);
        row(u"unbanuser"_s, u"Usage: unbanuser <client name>\n"_s);
        row(u"unbanUser Two Words"_s, u"Usage: unbanUser <client name>\n"_s);
        row(u"unbanUser Nobody"_s, u"no banned user has name Nobody\n"_s);
        row(u"unbanUser old"_s, u"unbanned 1 user(s) named old\n"_s);
    }
    void aCommandIsAnsweredInTheEnginesWords()
    {
        QFETCH(QString, line);
        QFETCH(QString, reply);
        GameServer game(emptyCod2());
        game.players().put(player(3, u"^1Bob"_s, u"4711"_s));
        game.players().put(player(4, u"Lan"_s, u"0"_s));
        game.players().put(player(5, u"Back"_s, u"815"_s));
        game.bans().add(u"815"_s, {}, u"Old"_s);
        QCOMPARE(game.execute(line).reply, reply);
    }

    void theKindServerKnowsNothingOfIt_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("reply");
        QTest::newRow("cmdlist") << u"cmdlist"_s << u"Unknown command \"cmdlist\"\n"_s;
        QTest::newRow("unbanUser") << u"unbanUser Bob"_s << u"Unknown command \"unbanUser\"\n"_s;
        QTest::newRow("a ban without a GUID") << u"banclient 4"_s << u"4:Lan banned\n"_s;
        QTest::newRow("the password")
            << u"rcon_password"_s << u"\"rcon_password\" is: \"practice^7\" default: \"^7\"\n  Domain is any text\n"_s;
    }
    void theKindServerKnowsNothingOfIt()
    {
        QFETCH(QString, line);
        QFETCH(QString, reply);
        GameServer game;
        game.players().put(player(4, u"Lan"_s, u"0"_s));
        QCOMPARE(game.execute(line).reply, reply);
    }

    void aValueThatWaitsForAMapIsTold()
    {
        GameServer game(emptyCod2());
        QCOMPARE(game.execute(u"g_gametype sd"_s).reply, u"g_gametype will be changed upon restarting.\n"_s);
        QCOMPARE(game.execute(u"g_gametype"_s).reply, u"\"g_gametype\" is: \"tdm^7\" default: \"dm^7\"\n"
                                                      "latched: \"sd^7\"\n  Domain is any text\n"_s);
    }

    void theCommandsAreListedWithTheirNumber()
    {
        GameServer game(emptyCod2());
        QStringList lines = game.execute(u"cmdlist"_s).reply.split(u'\n');
        QCOMPARE(lines.takeLast(), QString());
        const QString total = lines.takeLast();
        QCOMPARE(total, u"%1 commands"_s.arg(lines.size()));
        for (const QString &line : lines)
            QVERIFY2(!game.execute(line).reply.startsWith(u"Unknown"_s), qPrintable(line));
        for (const auto &name : {u"status"_s, u"clientkick"_s, u"map_rotate"_s, u"unbanUser"_s})
            QVERIFY2(lines.contains(name), qPrintable(name));
    }

    void whatIsSaidLosesQuotesAndBlanks_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("engine");
        QTest::addColumn<QString>("kind");
        QTest::newRow("say") << u"say  \"two  blanks\"   and \" more \""_s << u"say to all: two blanks and more"_s
                             << u"say to all: two  blanks and  more "_s;
        QTest::newRow("tell") << u"tell 3 \"a  b\""_s << u"say to Bob: a b"_s << u"say to Bob: a  b"_s;
    }
    void whatIsSaidLosesQuotesAndBlanks()
    {
        QFETCH(QString, line);
        QFETCH(QString, engine);
        QFETCH(QString, kind);
        GameServer harsh(emptyCod2());
        GameServer usual;
        for (GameServer *game : {&harsh, &usual})
            game->players().put(player(3, u"Bob"_s, u"4711"_s));
        QCOMPARE(harsh.execute(line).event, engine);
        QCOMPARE(usual.execute(line).event, kind);
    }

    void aNameLiftsAllItsBans()
    {
        GameServer game(emptyCod2());
        game.players().put(player(0, u"^1Big ^7Bob"_s, u"11"_s));
        game.players().put(player(1, u"Big ^4Bob"_s, u"22"_s));
        game.players().put(player(2, u"Bob"_s, u"33"_s));
        game.players().put(player(3, u"Big Bob"_s, u"44"_s));
        for (const auto &line : {u"banclient 0"_s, u"banclient 1"_s, u"banclient 2"_s, u"tempbanclient 3"_s})
            game.execute(line);
        QCOMPARE(game.bans().count(), 4);
        QCOMPARE(game.execute(u"unbanUser \"big bob\""_s).reply, u"unbanned 2 user(s) named big bob\n"_s);
        QVERIFY(!game.bans().holds(u"11"_s, {}, 1));
        QVERIFY(!game.bans().holds(u"22"_s, {}, 1));
        QVERIFY(game.bans().holds(u"33"_s, {}, 1));
        QVERIFY(game.bans().holds(u"44"_s, {}, 1)); // for a while only, and so on no list
        QCOMPARE(game.execute(u"unbanUser \"big bob\""_s).reply, u"no banned user has name big bob\n"_s);
    }

    void whoeverCannotBeBannedStays()
    {
        GameServer game(emptyCod2());
        game.players().put(player(4, u"Lan"_s, u"0"_s));
        game.players().put(player(5, u"Back"_s, u"815"_s));
        game.bans().add(u"815"_s, {}, u"Old"_s);
        game.execute(u"banclient 4"_s);
        game.execute(u"tempbanclient 4"_s);
        game.execute(u"banclient 5"_s);
        QCOMPARE(game.players().count(), 2);
        QCOMPARE(game.bans().count(), 1);
    }

    void onePlayerHasNoGuid_data()
    {
        QTest::addColumn<int>("players");
        for (const int players : {3, 16, 64})
            QTest::addRow("%d players", players) << players;
    }
    void onePlayerHasNoGuid()
    {
        QFETCH(int, players);
        PracticeOptions options = PracticeOptions::cod2();
        options.players = players;
        QCOMPARE(playersWithoutGuid(options), 0);
        options.quirks = true;
        QCOMPARE(playersWithoutGuid(options), 1);
    }

    void playersTakeOtherNames()
    {
        PracticeOptions options = PracticeOptions::cod2();
        options.seed = 3;
        GameServer game(options);
        QStringList events;
        for (int second = 0; second < 2000; ++second) {
            events += game.tick();
            QSet<QString> guids;
            for (const Player &one : game.players().all()) {
                QVERIFY(one.name.size() <= 31);
                guids.insert(one.guid);
            }
            QCOMPARE(guids.size(), game.players().count()); // nobody is there twice under two names
        }
        QVERIFY(events.filter(u" is now called "_s).size() > 20);
    }

    void nobodyTakesAnotherNameUnlessTold()
    {
        GameServer game;
        QStringList events;
        for (int second = 0; second < 2000; ++second)
            events += game.tick();
        QVERIFY(events.filter(u" is now called "_s).isEmpty());
    }

    void aTestCanRenameSomebody()
    {
        GameServer game(emptyCod2());
        game.players().put(player(3, u"Bob"_s, u"4711"_s));
        game.players().rename(3, u"Rob"_s);
        game.players().rename(4, u"nobody"_s);
        QCOMPARE(game.players().at(3)->name, u"Rob"_s);
        QVERIFY(game.execute(u"status"_s).reply.contains(u" Rob^7 "_s));
    }

    void aLateReplyComesAfterThreeToFiveSeconds()
    {
        PracticeOptions options;
        options.late = true;
        start(options);
        QSet<qint64> times;
        for (int turn = 1; turn <= 20; ++turn) {
            const auto asked = now;
            client->rcon("set turn " + QByteArray::number(turn));
            QTRY_COMPARE(server->game().dvars().number(u"turn"_s), turn); // done at once, told later
            now = asked + 2999ms;
            QCoreApplication::processEvents();
            QCOMPARE(client->count(), turn - 1);
            while (client->count() < turn && now <= asked + 5000ms) {
                now += 1ms;
                QCoreApplication::processEvents();
            }
            QTRY_COMPARE(client->count(), turn);
            times.insert((now - asked).count());
        }
        QVERIFY(*std::ranges::max_element(times) <= 5001);
        QVERIFY(times.size() > 10);
    }

    void thePublicStatusIsLateToo()
    {
        PracticeOptions options;
        options.late = true;
        start(options);
        client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(server->requests().size(), 1);
        now = 2999ms;
        QCoreApplication::processEvents();
        QCOMPARE(client->count(), 0);
        now = 5000ms;
        QTRY_COMPARE(client->count(), 1);
    }

    void aClosedServerIsLateForNobody()
    {
        PracticeOptions options;
        options.late = true;
        start(options);
        QSignalSpy happened(server.get(), &PracticeServer::happened);
        client->rcon("say hello");
        QTRY_COMPARE(happened.size(), 2);
        const quint16 port = server->port();
        server->close();
        QVERIFY(server->listen(QHostAddress::LocalHost, port));
        now = 10s;
        client->rcon("say hello");
        QTRY_COMPARE(server->requests().size(), 2);
        now = 20s;
        QTRY_COMPARE(client->count(), 1);
    }

    void aSystemsClockMakesItLateToo()
    {
        Departures departures;
        QList<int> left;
        departures.add(20ms, [&left] { left.append(2); });
        departures.add(1ms, [&left] { left.append(1); });
        departures.add(20ms, [&left] { left.append(3); });
        QTRY_COMPARE(left, QList<int>({1, 2, 3}));
    }

    void theEngineSwitchesOnAllButTheLateness()
    {
        const PracticeArguments arguments = readPracticeArguments({u"p"_s, u"--engine"_s, u"cod2"_s});
        QCOMPARE(arguments.fault, QString());
        const PracticeOptions &options = arguments.options;
        QCOMPARE(options.rate, PracticeOptions::Rate::HalfSecond);
        QCOMPARE(options.refusal, u"Invalid password."_s);
        QVERIFY(options.loseAtBorder && options.shortLines && options.percentDots && options.comments);
        QVERIFY(options.plainSay && options.readProtected && options.cmdlist && options.guidBans && options.renames);
        QVERIFY(!options.late && !options.quirks && !options.reorder && !options.silent);
        QCOMPARE(options.players, 12);
    }

    void eachIsAnOptionOfItsOwn()
    {
        const QList<std::pair<QString, bool PracticeOptions::*>> all{
            {u"--lose-at-border"_s, &PracticeOptions::loseAtBorder},
            {u"--short-lines"_s, &PracticeOptions::shortLines},
            {u"--percent-dots"_s, &PracticeOptions::percentDots},
            {u"--comments"_s, &PracticeOptions::comments},
            {u"--plain-say"_s, &PracticeOptions::plainSay},
            {u"--read-protected"_s, &PracticeOptions::readProtected},
            {u"--cmdlist"_s, &PracticeOptions::cmdlist},
            {u"--guid-bans"_s, &PracticeOptions::guidBans},
            {u"--renames"_s, &PracticeOptions::renames},
            {u"--late"_s, &PracticeOptions::late}};
        for (const auto &[option, field] : all) {
            const PracticeOptions options = readPracticeArguments({u"p"_s, option}).options;
            for (const auto &[other, otherField] : all)
                QCOMPARE(options.*otherField, otherField == field);
        }
    }

    void whatIsAskedForByNameCounts()
    {
        const PracticeArguments arguments = readPracticeArguments(
            {u"p"_s, u"--refusal"_s, u"Bad rcon"_s, u"--engine"_s, u"cod2"_s, u"--rate"_s, u"burst"_s, u"--late"_s});
        QCOMPARE(arguments.fault, QString());
        QCOMPARE(arguments.options.rate, PracticeOptions::Rate::Burst);
        QCOMPARE(arguments.options.refusal, u"Bad rcon"_s);
        QVERIFY(arguments.options.late && arguments.options.loseAtBorder);
    }

    void anotherEngineIsRefused()
    {
        QCOMPARE(readPracticeArguments({u"p"_s, u"--engine"_s, u"cod4"_s}).fault,
                 u"--engine takes \"cod2\", not \"cod4\"."_s);
        QCOMPARE(readPracticeArguments({u"p"_s, u"--engine"_s, u""_s}).fault, u"--engine takes \"cod2\", not \"\"."_s);
    }
};

GUILESS_TEST(PracticeCod2Test)
#include "tst_practice_cod2.moc"
