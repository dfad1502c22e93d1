// SPDX-License-Identifier: MIT
#include "losing_lists.h"
#include "test_class.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QByteArray heading = "map: mp_carentan\nnum score ping guid name lastmsg address qport rate\n--- -----\n";

QByteArray line(int num, const QByteArray &guid, const QByteArray &name, const QByteArray &address = "10.0.0.1:28960",
                const QByteArray &ping = "50")
{
    return "  " + QByteArray::number(num) + "     0   " + ping + ' ' + guid + ' ' + name + "^7       50 " + address +
           "        1234 25000\n";
}

QByteArray whole(const QByteArrayList &lines)
{
    return heading + lines.join() + '\n';
}

/// The rows of a list that came in one datagram, or was cut there.
QList<StatusRow> rowsOf(const QByteArray &table, qsizetype cut = -1, bool lacksLast = false)
{
    GatheredReply reply({printDatagram(cut < 0 ? table : table.first(cut))});
    if (cut >= 0) {
        reply.pieces.first().mayLackLast = lacksLast;
        reply.pieces.append({reply.text.size(), false});
        reply.text += squeezeBlanks(fromAnsi(table.sliced(cut)));
    }
    const auto rows = wholeTable(reply.text, reply.pieces);
    if (!rows)
        failTest(u"the list is not whole"_s);
    return *rows;
}

const WantedPlayer ann{u"3"_s, u"111"_s, u"Ann^7"_s, u"10.0.0.1:28960"_s, u"Ann"_s, false, u"3"_s};
const WantedPlayer nobodysGuid{u"3"_s, u"0"_s, u"Ann^7"_s, u"10.0.0.1:28960"_s, u"Ann"_s, false, u"3"_s};

/// Somebody comes, goes, and sits down where another one sat.
void shuffle(GameServer &game, QRandomGenerator &random)
{
    for (int second = random.bounded(0, 20); second > 0; --second)
        game.tick();
    const QList<Player> before = game.players().all();
    for (int moves = random.bounded(0, 6); moves > 0; --moves) {
        Player player = before.at(random.bounded(before.size()));
        game.players().remove(player.slot);
        player.slot = random.bounded(64);
        game.players().put(player);
    }
}

bool isSame(const Player &one, const Player &other)
{
    return one.guid == other.guid && one.name == other.name && (one.guid != u"0" || one.address == other.address);
}

/// What became of all rows of all lists, each acted on when a newer list had been read.
struct Tally {
    int plainHitsOthers = 0; ///< a command to the slot that the row names
    int hits = 0;
    int offers = 0;
    int damaged = 0;
    int gone = 0;
    QStringList wrong;

    void add(const Sighting &sighting)
    {
        hits += sighting.kind == Sighting::There ? 1 : 0;
        offers += sighting.kind == Sighting::Elsewhere ? 1 : 0;
        damaged += sighting.kind == Sighting::Damaged ? 1 : 0;
        gone += sighting.kind == Sighting::Gone ? 1 : 0;
    }
};

void actOnAll(quint32 seed, Tally &tally)
{
    QRandomGenerator random(seed);
    GameServer game(losingServer(random.bounded(16, 65), seed));
    const QList<Player> seen = game.players().all();
    const GatheredReply first = losingList(game);
    const auto listed = wholeTable(first.text, first.pieces);
    if (!listed)
        failTest(u"list %1 is not whole"_s.arg(seed));
    for (const StatusRow &row : *listed) {
        const auto meant = std::ranges::find_if(
            seen, [&](const Player &player) { return player.guid == row.guid && listedName(player) == row.name; });
        const Player *inSlot = game.players().at(row.num.toInt());
        if (inSlot && meant != seen.end() && !isSame(*inSlot, *meant))
            ++tally.plainHitsOthers;
    }
    shuffle(game, random);
    const GatheredReply second = losingList(game);
    const auto newer = wholeTable(second.text, second.pieces);
    if (!newer)
        failTest(u"the newer list %1 is not whole"_s.arg(seed));
    for (const StatusRow &row : *listed) {
        const WantedPlayer wanted = wantedFrom(row);
        const Sighting sighting = lookFor(wanted, *newer);
        tally.add(sighting);
        if (sighting.kind != Sighting::There && sighting.kind != Sighting::Elsewhere)
            continue;
        const Player *hit = game.players().at(sighting.num.toInt());
        const bool isHe = hit && std::ranges::any_of(seen, [&](const Player &player) {
                              return player.guid == row.guid && listedName(player) == row.name && isSame(player, *hit);
                          });
        if (!isHe)
            tally.wrong.append(u"seed %1, slot %2: %3 meant"_s.arg(seed).arg(sighting.num, row.name));
    }
}

} // namespace

/// Who is he now? The rules by which a player is found again in a newer list.
class PlayerCheckTest final : public QObject {
    Q_OBJECT

private slots:
    void heIsLookedForByGuidAndName_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("num");
        QTest::newRow("there") << line(3, "111", "Ann") << int(Sighting::There) << u"3"_s;
        QTest::newRow("a new address") << line(3, "111", "Ann", "1.2.3.4:5") << int(Sighting::There) << u"3"_s;
        QTest::newRow("elsewhere") << line(7, "111", "Ann") + line(9, "222", "Ben") << int(Sighting::Elsewhere)
                                   << u"7"_s;
        QTest::newRow("another in his slot") << line(3, "222", "Ben") << int(Sighting::Gone) << QString();
        QTest::newRow("another of his name") << line(3, "222", "Ann") << int(Sighting::Gone) << QString();
        QTest::newRow("he has another name") << line(3, "111", "Anna") << int(Sighting::Gone) << QString();
        QTest::newRow("another letter case") << line(3, "111", "ann") << int(Sighting::Gone) << QString();
        QTest::newRow("another colour") << line(3, "111", "^1Ann") << int(Sighting::Gone) << QString();
        QTest::newRow("twice") << line(3, "111", "Ann") + line(9, "111", "Ann") << int(Sighting::Two) << QString();
        QTest::newRow("one is leaving") << line(3, "111", "Ann", "1.2.3.4:5", "ZMBI") + line(9, "111", "Ann")
                                        << int(Sighting::Elsewhere) << u"9"_s;
        QTest::newRow("he is leaving") << line(3, "111", "Ann", "1.2.3.4:5", "ZMBI") << int(Sighting::Gone)
                                       << QString();
    }

    void heIsLookedForByGuidAndName()
    {
        QFETCH(QByteArray, lines);
        const Sighting sighting = lookFor(ann, rowsOf(whole({lines})));
        QTEST(int(sighting.kind), "kind");
        QTEST(sighting.num, "num");
    }

    void withoutAGuidNameSlotAndAddressMustAgree_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<int>("kind");
        QTest::newRow("all agree") << line(3, "0", "Ann") << int(Sighting::There);
        QTest::newRow("another slot") << line(4, "0", "Ann") << int(Sighting::Gone);
        QTest::newRow("another address") << line(3, "0", "Ann", "10.0.0.2:28960") << int(Sighting::Gone);
        QTest::newRow("another name") << line(3, "0", "Anna") << int(Sighting::Gone);
        QTest::newRow("a guid by now") << line(3, "111", "Ann") << int(Sighting::Gone);
        QTest::newRow("he and a namesake") << line(2, "0", "Ann") + line(3, "0", "Ann") << int(Sighting::There);
        QTest::newRow("two namesakes") << line(2, "0", "Ann") + line(4, "0", "Ann") << int(Sighting::Two);
    }

    void withoutAGuidNameSlotAndAddressMustAgree()
    {
        QFETCH(QByteArray, lines);
        QTEST(int(lookFor(nobodysGuid, rowsOf(whole({lines}))).kind), "kind");
    }

    // The list is cut at each place of his row and around it, with and without the loss of a character.
    void aDamagedRowIsNeverActedOn_data()
    {
        QTest::addColumn<bool>("lacksLast");
        QTest::newRow("came in two datagrams") << false;
        QTest::newRow("a character is missing") << true;
    }

    void aDamagedRowIsNeverActedOn()
    {
        QFETCH(bool, lacksLast);
        const QByteArray table = whole({line(2, "222", "Ben"), line(3, "111", "Ann"), line(13, "333", "Cid")});
        const qsizetype begin = table.indexOf("  3 ");
        const qsizetype end = table.indexOf('\n', begin);
        for (qsizetype cut = begin; cut <= end; ++cut) {
            const QByteArray sent = lacksLast ? QByteArray(table).remove(cut, 1) : table;
            const bool isWhole = !lacksLast && cut == begin;
            const Sighting sighting = lookFor(ann, rowsOf(sent, cut, lacksLast));
            QVERIFY2(sighting.kind == (isWhole ? Sighting::There : Sighting::Damaged),
                     qPrintable(u"cut at %1: %2"_s.arg(cut - begin).arg(sighting.kind)));
        }
    }

    void theMarkSaysWhatMayHaveHappened()
    {
        const QByteArray table = whole({line(2, "222", "Ben"), line(3, "111", "Ann"), line(13, "333", "Cid")});
        const qsizetype begin = table.indexOf("  3 ");
        const auto marks = [&](qsizetype cut, bool lacksLast) {
            QList<int> damages;
            for (const StatusRow &row : rowsOf(table, cut, lacksLast))
                damages.append(int(row.damage));
            return damages;
        };
        const int none = int(RowDamage::None);
        QCOMPARE(marks(-1, false), QList<int>({none, none, none}));
        QCOMPARE(marks(begin, false), QList<int>({none, none, none}));
        QCOMPARE(marks(begin, true), QList<int>({none, int(RowDamage::LostCharacter), none}));
        QCOMPARE(marks(begin + 1, false), QList<int>({none, int(RowDamage::TwoDatagrams), none}));
        QCOMPARE(marks(begin - 1, false), QList<int>({int(RowDamage::TwoDatagrams), none, none}));
        QCOMPARE(marks(begin - 1, true), QList<int>({int(RowDamage::LostCharacter), none, none}));
    }

    void aRowThatMayBeHisIsNoProofThatHeHasLeft()
    {
        WantedPlayer damaged = ann;
        damaged.isDamaged = true;
        QCOMPARE(lookFor(damaged, rowsOf(whole({line(4, "222", "Ben")}))).kind, Sighting::Damaged);
        QCOMPARE(lookFor(damaged, rowsOf(whole({line(13, "111", "Ann")}))), (Sighting{Sighting::Elsewhere, u"13"_s}));
    }

    // A clean row is not taken for the only one of his when a damaged one may be his, too.
    void besideADamagedRowThatMayBeHisNothingIsCertain_data()
    {
        QTest::addColumn<QByteArray>("beside");
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("elsewhere"); // when another slot was his before
        const int damaged = int(Sighting::Damaged);
        QTest::newRow("his guid") << line(9, "111", "An") << damaged << damaged;
        QTest::newRow("his name") << line(9, "11", "Ann") << damaged << damaged;
        QTest::newRow("no blank behind his guid") << line(9, "111Ann", "Ann") << damaged << damaged;
        QTest::newRow("somebody else") << line(9, "222", "Ben") << int(Sighting::There) << int(Sighting::Elsewhere);
        QTest::newRow("a longer name") << line(9, "222", "JoAnn") << int(Sighting::There) << int(Sighting::Elsewhere);
        QTest::newRow("a longer guid") << line(9, "2111", "Ben") << int(Sighting::There) << int(Sighting::Elsewhere);
    }

    void besideADamagedRowThatMayBeHisNothingIsCertain()
    {
        QFETCH(QByteArray, beside);
        const QByteArray table = whole({line(3, "111", "Ann"), beside});
        const qsizetype cut = table.lastIndexOf("   1234");
        QTEST(int(lookFor(ann, rowsOf(table, cut)).kind), "kind");
        WantedPlayer moved = ann;
        moved.num = u"5"_s;
        QTEST(int(lookFor(moved, rowsOf(table, cut)).kind), "elsewhere");
    }

    void oneOfManyBesideADamagedNamesake()
    {
        const QByteArray table = whole({line(3, "0", "Ann"), line(9, "0", "Ann", "10.0.0.9:28960")});
        QCOMPARE(lookFor(nobodysGuid, rowsOf(table)).kind, Sighting::There);
        QCOMPARE(lookFor(nobodysGuid, rowsOf(table, table.lastIndexOf("   1234"))).kind, Sighting::Damaged);
    }

    void afterwardsHisGuidTells_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<int>("isThere"); // -1 when the list does not tell
        QTest::newRow("nobody") << QByteArray() << 0;
        QTest::newRow("he") << line(3, "111", "Ann") << 1;
        QTest::newRow("under another name") << line(3, "111", "Bob") << 1;
        QTest::newRow("in another slot") << line(9, "111", "Bob", "1.2.3.4:5") << 1;
        QTest::newRow("just leaving") << line(3, "111", "Ann", "1.2.3.4:5", "ZMBI") << 0;
        QTest::newRow("a namesake") << line(3, "222", "Ann") << 0;
        QTest::newRow("a row without a number") << line(3, "222", "Bob") + "   x" + line(9, "111", "Bob") << -1;
    }

    void afterwardsHisGuidTells()
    {
        QFETCH(QByteArray, lines);
        const std::optional<bool> isThere = isStillThere(ann, rowsOf(whole({lines})));
        QTEST(isThere ? int(*isThere) : -1, "isThere");
    }

    // His row is cut at each place, and a character is lost there: it is never said that he has gone.
    void afterwardsADamagedRowLeavesItOpen()
    {
        const QByteArray table = whole({line(2, "222", "Ben"), line(3, "1112", "Bob"), line(13, "333", "Cid")});
        WantedPlayer renamed = ann;
        renamed.guid = u"1112"_s;
        const qsizetype begin = table.indexOf("  3 ");
        const qsizetype end = table.indexOf('\n', begin);
        for (qsizetype cut = begin; cut <= end; ++cut)
            QVERIFY2(!isStillThere(renamed, rowsOf(QByteArray(table).remove(cut, 1), cut, true)),
                     qPrintable(QString::number(cut - begin)));
    }

    void afterwardsOneOfManyIsKnownByAll()
    {
        QCOMPARE(isStillThere(nobodysGuid, rowsOf(whole({line(3, "0", "Ann")}))), true);
        QCOMPARE(isStillThere(nobodysGuid, rowsOf(whole({line(3, "0", "Ben")}))), false);
        QCOMPARE(isStillThere(nobodysGuid, rowsOf(whole({line(2, "0", "Ann"), line(4, "0", "Ann")}))), false);
    }

    void onlyAWholeListIsRead()
    {
        const QByteArray table = whole({line(2, "222", "Ben"), line(3, "111", "Ann")});
        const auto isWhole = [](const QByteArray &text) {
            const GatheredReply reply({printDatagram(text)});
            return wholeTable(reply.text, reply.pieces).has_value();
        };
        QVERIFY(isWhole(table));
        QVERIFY(isWhole(heading + '\n')); // nobody is there
        for (qsizetype size = 0; size < table.size(); ++size)
            QVERIFY2(!isWhole(table.first(size)), qPrintable(QString::number(size)));
        QVERIFY(!isWhole("Invalid password.\n"));
        QVERIFY(!isWhole("say hello\n" + table));
        QVERIFY(!isWhole(whole({line(3, "111", "Ann"), line(2, "222", "Ben")}))); // a piece of an older one
    }

    // The empty line is what a full datagram loses when the list ends with it, or stands alone in the next.
    void aLostEmptyLineDoesNotMakeItUnreadable()
    {
        for (const qsizetype size : {qsizetype{1294}, qsizetype{1295}}) {
            QByteArrayList lines;
            while (whole(lines).size() + 160 < size)
                lines.append(line(static_cast<int>(lines.size()), "1000", "Somebody"));
            const QByteArray last = line(63, "111", "Ann");
            const qsizetype room = size - whole(lines).size() - last.size();
            lines.append(line(63, "111", QByteArray("Ann").leftJustified(3 + room, '.')));
            QCOMPARE(whole(lines).size(), size);
            const GatheredReply reply(losingPrintDatagrams(whole(lines)));
            const auto rows = wholeTable(reply.text, reply.pieces);
            QVERIFY(rows);
            QCOMPARE(rows->size(), lines.size());
            QCOMPARE(rows->last().damage == RowDamage::None, size == 1294);
        }
    }

    void inAThousandListsNobodyElseIsHit()
    {
        constexpr quint32 lists = 1000;
        Tally tally;
        for (quint32 seed = 1; seed <= lists; ++seed)
            actOnAll(seed, tally);
        QCOMPARE(tally.wrong, QStringList());
        QVERIFY2(tally.plainHitsOthers > 10, qPrintable(u"%1 lists endanger nobody"_s.arg(tally.plainHitsOthers)));
        QVERIFY2(tally.hits > 10'000 && tally.offers > 100 && tally.damaged > 500 && tally.gone > 100,
                 qPrintable(u"%1 hits, %2 offers, %3 damaged, %4 gone"_s.arg(tally.hits)
                                .arg(tally.offers)
                                .arg(tally.damaged)
                                .arg(tally.gone)));
    }

    // Of a datagram that is too large only the first part is taken; whole rows may be lost.
    void aListWithACutDatagramIsNone()
    {
        const QByteArray table = whole({line(2, "222", "Ben"), line(3, "111", "Ann"), line(4, "333", "Cid")});
        GatheredReply reply({printDatagram(table)});
        const qsizetype begin = reply.text.indexOf(u" 3 0 ");
        QVERIFY(begin > 0);
        reply.pieces.append({begin, false});
        QVERIFY(wholeTable(reply.text, reply.pieces));
        reply.pieces.first().isCut = true;
        QVERIFY(!wholeTable(reply.text, reply.pieces));
        StatusTable rows;
        QVERIFY(rows.skipHeading(reply.text));
        QCOMPARE(rows.next(reply.text, reply.pieces).damage, RowDamage::None);
        QCOMPARE(rows.next(reply.text, reply.pieces).damage, RowDamage::LostCharacter);
        QCOMPARE(rows.next(reply.text, reply.pieces).damage, RowDamage::None);
    }

    // Of a server whose datagrams lose nothing one is lost as a whole, and the next begins in the number of a slot.
    void aSlotAtTheBeginningOfADatagramIsNotSure()
    {
        QByteArrayList before;
        for (int num = 0; num < 4; ++num)
            before.append(line(num, QByteArray::number(700 + num), "Somebody"));
        const QString first = squeezeBlanks(fromAnsi(heading + before.join()));
        const QString rest = u"5 0 50 111 Ann^7 50 10.0.0.1:28960 1234 25000\n 17 0 50 222 Ben^7 50 10.0.0.2:28960 1 "
                             "25000\n\n"_s; // of " 15"
        const auto rows = wholeTable(first + rest, {{0, false}, {first.size(), false}});
        QVERIFY(rows);
        WantedPlayer wanted = ann;
        for (const QString &num : {u"15"_s, u"5"_s}) {
            wanted.num = num;
            const Sighting sighting = lookFor(wanted, *rows);
            QCOMPARE(sighting.kind, num == u"5" ? Sighting::There : Sighting::Elsewhere);
            QCOMPARE(sighting.num, u"5"_s);
            QVERIFY(!sighting.isSure);
        }
        wanted = nobodysGuid;
        wanted.guid = u"0"_s;
        wanted.num = u"5"_s;
        const auto without =
            wholeTable(first + QString(rest).replace(u"111"_s, u"0"_s), {{0, false}, {first.size(), false}});
        QVERIFY(without);
        QCOMPARE(lookFor(wanted, *without).kind, Sighting::There);
        QVERIFY(!lookFor(wanted, *without).isSure);
        const WantedPlayer ben{u"17"_s, u"222"_s, u"Ben^7"_s, u"10.0.0.2:28960"_s, u"Ben"_s, false, u"17"_s};
        QCOMPARE(lookFor(ben, *rows), (Sighting{Sighting::There, u"17"_s}));
    }

    void whoGoesOnUnderAnotherNameIsTold_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("newName");
        QTest::newRow("renamed") << line(3, "111", "Bob") << u"Bob^7"_s;
        QTest::newRow("and in another slot") << line(2, "222", "Ben") + line(9, "111", "Bob") << u"Bob^7"_s;
        QTest::newRow("leaving") << line(3, "111", "Bob", "1.2.3.4:5", "ZMBI") << QString();
        QTest::newRow("another guid") << line(3, "1112", "Bob") << QString();
    }

    void whoGoesOnUnderAnotherNameIsTold()
    {
        QFETCH(QByteArray, lines);
        const Sighting sighting = lookFor(ann, rowsOf(whole({lines})));
        QCOMPARE(sighting.kind, Sighting::Gone);
        QTEST(sighting.newName, "newName");
        QCOMPARE(sighting.newNum.isEmpty(), sighting.newName.isEmpty());
        QCOMPARE(lookFor(nobodysGuid, rowsOf(whole({line(3, "0", "Bob")}))), Sighting()); // that of many
    }

    // The last datagram is lost, and the one before it ends with a line feed.
    void anEndThatIsMissingIsOnlySupposed()
    {
        const QString first = squeezeBlanks(fromAnsi(heading + line(2, "222", "Ben")));
        QVERIFY(wholeTable(first, {{0, true}}));
        QVERIFY(isEndSupposed(first, {{0, true}}));
        QVERIFY(!isEndSupposed(first + u'\n', {{0, true}}));
        QVERIFY(!isEndSupposed(first, {{0, false}}));
        QVERIFY(!isEndSupposed({}, {}));
    }

    void aListWithAnotherAnswerInItIsNone()
    {
        const QString head = u"map: mp_x\nnum score ping guid name lastmsg address qport rate\n"
                             "--- ----- ---- ---- ---- ------- ------- ----- ----\n"
                             "1 0 50 111 Ann 0 1.2.3.4:28960 1 25000\n1"_s;
        const QString stray = u"sv_cheats is off\n"_s;
        const QString tail = u"3 0 50 333 Bob 0 1.2.3.5:28960 1 25000\n\n"_s; // of the player in slot 13
        QVERIFY(wholeTable(head + tail, {{0, true}, {head.size(), false}}));
        QVERIFY(
            !wholeTable(head + stray + tail, {{0, true}, {head.size(), false}, {head.size() + stray.size(), false}}));
    }
};

GUILESS_TEST(PlayerCheckTest)
#include "tst_player_check.moc"
