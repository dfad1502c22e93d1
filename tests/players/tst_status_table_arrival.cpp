// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "practice/players.h"
#include "practice/status_table.h"
#include "status_rows.h"
#include "test_class.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// An address that fills its column up touches the port behind it.
bool touchesPort(const Player &player)
{
    return player.address.size() >= 22 && QString::number(player.qport).size() >= 5;
}

/// What must be read of a player, taken from himself and not from his row.
QString expectedOf(const Player &player)
{
    QStringList name = (player.name + u"^7"_s).split(u' ', Qt::SkipEmptyParts);
    QString address = player.address;
    QString qport = QString::number(player.qport);
    if (touchesPort(player)) { // then all before it counts one place further
        qport.prepend(address);
        address = QString::number(player.lastmsg);
        name.removeLast();
    }
    QString ping = QString::number(player.ping);
    if (player.state != Player::State::Playing)
        ping = player.state == Player::State::Connecting ? u"CNCT"_s : u"ZMBI"_s;
    return QStringList{
        QString::number(player.slot), QString::number(player.score), ping, player.guid, name.join(u' '), address, qport,
        QString::number(player.rate)}
        .join(u'|');
}

QStringList expectedOf(const QList<Player> &players)
{
    QStringList rows;
    for (const Player &player : players)
        rows.append(expectedOf(player));
    return rows;
}

/// The table as it arrives in datagrams with `size` bytes of it each.
QString arrivedIn(const QByteArray &bytes, qsizetype size)
{
    QString reply;
    for (qsizetype at = 0; at < bytes.size(); at += size)
        reply += squeezeBlanks(fromAnsi(bytes.mid(at, size)));
    return reply;
}

QString arrived(const QList<Player> &players)
{
    return squeezeBlanks(fromAnsi(toAnsi(statusTable(u"mp_villa"_s, players))));
}

QList<Player> crowd()
{
    return Players(64, 1, true).all();
}

} // namespace

class StatusTableArrivalTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theCrowdHasAllThatIsOdd();
    void theRowsAreThoseOfThePlayersAtEveryDatagramSize();
    void twoHundredPlayersWithLongNamesAreRead();
    void aGrowingReplyIsReadRowByRow();
    void aReplyCutAnywhereIsReadToItsEndLater();
};

void StatusTableArrivalTest::theCrowdHasAllThatIsOdd()
{
    const QList<Player> players = crowd();
    const auto has = [&players](const auto &odd) { return std::ranges::any_of(players, odd); };
    QCOMPARE(players.size(), 64);
    QVERIFY(has(touchesPort));
    QVERIFY(has([](const Player &player) { return player.name.isEmpty(); }));
    QVERIFY(has([](const Player &player) { return player.name.contains(u"  "_s); }));
    QVERIFY(has([](const Player &player) { return player.score < 0; }));
    QVERIFY(has([](const Player &player) { return player.state == Player::State::Connecting; }));
    QVERIFY(has([](const Player &player) { return player.state == Player::State::Leaving; }));
}

void StatusTableArrivalTest::theRowsAreThoseOfThePlayersAtEveryDatagramSize()
{
    const QList<Player> players = crowd();
    const QStringList expected = expectedOf(players);
    const QByteArray bytes = toAnsi(statusTable(u"mp_villa"_s, players));
    for (qsizetype size = 1; size <= bytes.size(); ++size) {
        const QStringList rows = rowsIn(arrivedIn(bytes, size));
        if (rows != expected)
            qInfo("with datagrams of %lld bytes:", static_cast<long long>(size));
        QCOMPARE(rows, expected);
    }
}

void StatusTableArrivalTest::twoHundredPlayersWithLongNamesAreRead()
{
    QList<Player> players;
    for (int number = 0; number < 200; ++number) {
        Player player;
        player.slot = number; // with three digits a row begins in the first column
        player.score = number - 100;
        player.guid = QString::number(10'000'000 + number);
        player.name = u"^1%1 "_s.arg(number).leftJustified(32, u'W');
        player.address = u"211.111.111.%1:28960"_s.arg(number);
        player.qport = 65'535 - number;
        players.append(player);
    }
    const QByteArray bytes = toAnsi(statusTable(u"mp_villa"_s, players));
    QVERIFY(bytes.size() < 32'767);
    for (const qsizetype size : {bytes.size(), qsizetype{1000}, qsizetype{40}, qsizetype{1}})
        QCOMPARE(rowsIn(arrivedIn(bytes, size)), expectedOf(players));
}

void StatusTableArrivalTest::aGrowingReplyIsReadRowByRow()
{
    const QList<Player> players = crowd();
    const QStringList expected = expectedOf(players);
    const QString whole = arrived(players);
    const qsizetype firstRow = whole.indexOf(u"-----\n "_s) + 6;
    StatusTable table;
    QStringList rows;
    QVERIFY(table.skipHeading(whole.first(firstRow + 4)));
    for (qsizetype length = firstRow + 4; length < whole.size(); ++length) {
        const QString part = whole.first(length);
        QCOMPARE(readOn(table, part, rows), 5);
        QCOMPARE(rows, expected.first(part.count(u'\n') - 3));
    }
    QCOMPARE(rows.size(), players.size()); // only the line feed of the empty line was missing yet
    QCOMPARE(readOn(table, whole, rows), 0);
    QCOMPARE(rows, expected);
}

void StatusTableArrivalTest::aReplyCutAnywhereIsReadToItsEndLater()
{
    const QList<Player> players = crowd();
    const QStringList expected = expectedOf(players);
    const QString whole = arrived(players);
    int cuts = 0;
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QString part = whole.first(length);
        StatusTable table;
        QStringList rows;
        if (!table.skipHeading(part))
            continue;
        QCOMPARE(readOn(table, part, rows), 5);
        QCOMPARE(readOn(table, part, rows), 5);
        QCOMPARE(readOn(table, whole, rows), 0);
        QCOMPARE(rows, expected);
        ++cuts;
    }
    QVERIFY(cuts > 3000);
}

GUILESS_TEST(StatusTableArrivalTest)
#include "tst_status_table_arrival.moc"
