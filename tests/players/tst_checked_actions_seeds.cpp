// SPDX-License-Identifier: MIT
#include "checked_tab.h"
#include "losing_lists.h"
#include "server_table.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

struct Action {
    QString item;
    QByteArray command;
};

const QList<Action> actions{{u"Check and kick"_s, "clientkick "},
                            {u"Check and ban"_s, "banclient "},
                            {u"Check and temp ban"_s, "tempbanclient "},
                            {u"Check and message"_s, "tell "}};

/// What servers send besides, each in a datagram of its own.
QByteArray strayText(QRandomGenerator &random)
{
    static const QByteArrayList texts{
        "sv_cheats is off\n", "\"g_speed\" is:\"190^7\" default:\"190^7\"\n   Domain is any integer\n",
        "Server: sv_maprotation\n\"mp_x\" is:\"1\" 2 3 4 5 6 7 8 9\n 3 0 50 100\n", "broadcast: print \"x\n\"\n", "\n"};
    return texts.at(random.bounded(texts.size()));
}

/// A server that makes it as hard as it can, and what has been done to whom.
struct HardServer {
    HardServer(Checked &tab_, quint32 seed) : tab(tab_), random(seed)
    {
        QObject::connect(&tab.server, &PracticeServer::requested, &tab.server, [this] {
            if (!isHard)
                return;
            const QByteArray command = tab.server.commands().constLast();
            if (command == "status")
                composeList();
            else
                noteHit(command);
            if (random.bounded(6) == 0)
                tab.server.sendRaw(printDatagram(strayText(random)));
        });
    }

    /// Between the list that the person sees and the action.
    void liveOn()
    {
        for (int second = random.bounded(0, 12); second > 0; --second)
            tab.server.game().tick();
        const QList<Player> all = tab.server.game().players().all();
        const auto anyone = [&] { return all.at(random.bounded(all.size())); };
        for (int moves = random.bounded(0, 4); moves > 0 && !all.isEmpty(); --moves) {
            const Player one = anyone();
            const Player other = anyone();
            switch (random.bounded(3)) {
            case 0: // they take each other's names
                tab.server.game().players().rename(one.slot, other.name);
                tab.server.game().players().rename(other.slot, one.name);
                break;
            case 1:
                tab.server.game().players().rename(one.slot, u"^3Renamed %1"_s.arg(random.bounded(9)));
                break;
            default: // one sits down where the other was
                tab.server.game().players().remove(one.slot);
                Player moved = one;
                moved.slot = other.slot;
                tab.server.game().players().put(moved);
            }
        }
    }

    /// They would get into the list that the person reads.
    void awaitLateAnswers()
    {
        const Clock &clock = tab.program.clock;
        const QDateTime end = clock.now().addSecs(12);
        while (clock.now() < end)
            clock.rest(1);
    }

    /// A list that lacks its end, or a row's, is read by hand until the person has had enough.
    void makeReadable()
    {
        GameServer &game = tab.server.game();
        const auto isReadable = [&game] {
            const GatheredReply list = losingList(game);
            return list.text.endsWith("\n\n"_L1) && wholeTable(list.text, list.pieces);
        };
        while (!isReadable())
            game.players().remove(game.players().all().constLast().slot);
    }

    void composeList()
    {
        QList<QByteArray> list = losingPrintDatagrams(toAnsi(tab.server.game().execute(u"status"_s).reply));
        const int what = random.bounded(8);
        if (what < 2)
            list.insert(random.bounded(1, list.size() + 1), printDatagram(strayText(random)));
        else if (what == 2)
            list.removeAt(random.bounded(list.size()));
        else if (what == 3)
            list.prepend(plainDatagram("statusResponse\n\\sv_hostname\\x\n0 50 \"Ann\"\n"));
        tab.server.answerRaw("status", list);
    }

    [[nodiscard]] bool isWanted(const Player *player) const
    {
        if (!player || player->guid != wanted.guid)
            return false;
        const TableFields listed = tableFields(*player); // two full columns touch, and the name before them is cut
        return listed.name == wanted.name && (player->guid != u"0"_s || listed.address == wanted.address);
    }

    void noteHit(const QByteArray &command)
    {
        for (const Action &action : actions) {
            if (!command.startsWith(action.command))
                continue;
            const QByteArray rest = command.sliced(action.command.size());
            const Player *hit = tab.server.game().players().at(rest.split(' ').constFirst().toInt());
            ++commands;
            if (!isWanted(hit))
                wrong.append(QString::fromLatin1(command) + u": "_s +
                             (hit ? hit->guid + u' ' + hit->name + u' ' + hit->address : u"nobody"_s) + u" for "_s +
                             wanted.guid + u' ' + wanted.name + u' ' + wanted.address);
        }
    }

    Checked &tab;
    QRandomGenerator random;
    WantedPlayer wanted;
    int commands = 0;
    bool isHard = false; ///< not while the person reads the list
    QStringList wrong;
    QStringList silent;
};

} // namespace

/// The checked actions on servers as hard as they come: late, strict, with other answers in between, and with players
/// who come, go and take each other's names.
class CheckedActionsSeedsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void nobodyElseIsEverHit_data()
    {
        QTest::addColumn<bool>("isLate");
        QTest::addColumn<quint32>("first");
        QTest::newRow("at once") << false << 101U;
        QTest::newRow("late") << true << 201U;
    }

    void nobodyElseIsEverHit()
    {
        QFETCH(bool, isLate);
        QFETCH(quint32, first);
        constexpr quint32 seeds = 6;
        constexpr int rounds = 8;
        int commands = 0;
        int ended = 0;
        for (quint32 seed = first; seed < first + seeds; ++seed) {
            QRandomGenerator random(seed);
            PracticeOptions options = losingServer(random.bounded(16, 65), seed);
            options.quirks = seed % 2 == 0; // one without a GUID, and nasty names
            options.late = isLate;
            Checked tab(options);
            HardServer server(tab, seed);
            for (int round = 0; round < rounds; ++round) {
                server.isHard = false;
                server.makeReadable();
                server.awaitLateAnswers();
                tab.server.answerAsUsual("status");
                tab.program.prompts.lines = {u"Hello"_s};
                tab.populate();
                QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>());
                const int rows = tab.view()->model()->rowCount();
                if (rows == 0)
                    continue;
                const int row = random.bounded(rows);
                server.wanted = wantedAt(tab, row);
                server.liveOn();
                tab.answers.clear();
                server.isHard = true;
                tab.choose(row, actions.at(random.bounded(actions.size())).item);
                if (tab.program.prompts.takeBoxes().isEmpty() && tab.answers.isEmpty())
                    server.silent.append(u"seed %1, round %2"_s.arg(seed).arg(round));
                ++ended;
            }
            QVERIFY2(server.wrong.isEmpty(), qPrintable(u"seed %1: "_s.arg(seed) + server.wrong.join(u", ")));
            QVERIFY2(server.silent.isEmpty(), qPrintable(server.silent.join(u", ")));
            commands += server.commands;
        }
        QVERIFY2(commands * 4 >= ended, qPrintable(u"only %1 commands of %2"_s.arg(commands).arg(ended)));
    }

private:
    static WantedPlayer wantedAt(const Checked &tab, int row)
    {
        const auto *players = dynamic_cast<const PlayerTable *>(tab.view()->model());
        if (!players)
            failTest(u"the grid shows another model"_s);
        return players->wanted(row);
    }
};

WINDOW_TEST(CheckedActionsSeedsTest)
#include "tst_checked_actions_seeds.moc"
