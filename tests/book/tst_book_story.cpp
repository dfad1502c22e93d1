// SPDX-License-Identifier: MIT
#include "book_hands.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

/// What the server's own log says of one player.
struct Logged {
    QStringList names;     ///< as the list shows them, the one he had last at the end
    QStringList addresses; ///< without their ports, likewise
    int visits = 0;
    qint64 lastSeen = 0;
    int sightings = 0;
    QStringList actions; ///< what was done to him: "kick", "ban", "temporary ban"
};

/// Puts `text` at the end of the list, from where it may have stood.
void putLast(QStringList &list, const QString &text)
{
    list.removeOne(text);
    list.append(text);
}

/// An evening on a practice server. People come and go, take other names and come back from other addresses; the log is
/// kept from what the server itself has, whenever the list of players is read.
class Evening final {
public:
    explicit Evening(quint32 seed) : random(seed), it(keepsBook, banningServer())
    {
        it.program.clock.set(QDateTime::currentDateTime().addDays(-1));
        it.server.setDatagramSize(8000); // or rows at the borders are taken for damaged
        for (int number = 0; number < 24; ++number) {
            Player player;
            player.guid = QString::number(700'000 + number);
            player.name = u"Player%1"_s.arg(number);
            player.address = addressOf(number, 0);
            player.qport = 1000 + number;
            people.append(player);
        }
    }

    void pass(int steps)
    {
        for (int step = 0; step < steps; ++step) {
            it.pass(60 * (1 + random.bounded(25))); // at times longer than a visit bears
            for (qsizetype number = 0; number < people.size(); ++number)
                live(people[number], static_cast<int>(number));
            it.populate();
            (void)it.program.prompts.takeBoxes(); // "No players on server"
            logList();
            if (step % 5 == 4)
                act();
        }
    }

    BookHands &hands() { return it; }
    [[nodiscard]] const QHash<QString, Logged> &log() const { return logged; }
    [[nodiscard]] int lists() const { return listCount; }

private:
    static PracticeOptions banningServer()
    {
        PracticeOptions options = desertedServer();
        options.guidBans = true;
        return options;
    }
    static QString addressOf(int number, int times) { return u"10.%1.0.%2:28960"_s.arg(times).arg(number + 1); }

    [[nodiscard]] bool chance(int oneIn) { return random.bounded(oneIn) == 0; }

    void live(Player &player, int number)
    {
        Players &present = it.server.game().players();
        const bool isHere =
            std::ranges::any_of(present.all(), [&](const Player &each) { return each.guid == player.guid; });
        if (isHere && chance(6)) {
            present.remove(player.slot);
        } else if (isHere && chance(8)) {
            player.name =
                u"^%1%2 %3"_s.arg(random.bounded(8)).arg(people.at(random.bounded(24)).name.left(9)).arg(number);
            present.rename(player.slot, player.name);
        } else if (!isHere && chance(4) && !it.server.game().bans().holdsForGood(player.guid, {})) {
            if (chance(3))
                player.address = addressOf(number, 1 + random.bounded(3));
            player.slot = 0;
            while (present.at(player.slot))
                ++player.slot;
            player.ping = 20 + random.bounded(200);
            present.put(player);
        }
    }

    // What the server has at this moment, and not what the program has read.
    void logList()
    {
        ++listCount;
        const qint64 now = it.program.clock.now().toSecsSinceEpoch();
        for (const Player &player : it.server.game().players().all()) {
            Logged &entry = logged[player.guid];
            constexpr qint64 longestAway = 1800;
            entry.visits += entry.sightings == 0 || now - entry.lastSeen >= longestAway ? 1 : 0;
            entry.lastSeen = now;
            ++entry.sightings;
            putLast(entry.names, player.name + u"^7"_s);
            putLast(entry.addresses, player.address.section(u':', 0, 0));
        }
    }

    void act()
    {
        if (it.view()->model()->rowCount() == 0)
            return;
        const int row = random.bounded(it.view()->model()->rowCount());
        const QString guid = it.grid().at(row).at(2);
        const auto [button, word] = QList<QPair<QString, QString>>{
            {u"cmdplykick"_s, u"kick"_s},
            {u"cmdplyban"_s, u"ban"_s},
            {u"cmdtempban"_s,
             u"temporary ban"_s}}.at(random.bounded(3));
        it.select(row);
        const qsizetype before = it.server.game().players().count();
        it.program.click(button);
        if (it.server.game().players().count() == before - 1)
            logged[guid].actions.prepend(word);
    }

    QRandomGenerator random;
    BookHands it;
    QList<Player> people;
    QHash<QString, Logged> logged;
    int listCount = 0;
};

/// The texts of a list in the window, without what stands behind them in brackets.
QStringList aliases(const BookHands &it, const char *list)
{
    QStringList texts;
    for (const QString &text : it.list(list))
        texts.append(text.section(u"  ("_s, 0, 0));
    return texts;
}

void checkPlayer(BookHands &it, const QString &guid, const Logged &log)
{
    it.type("txtbooksearch", guid);
    QTRY_COMPARE(it.tableColumn("tblbook", 1), QStringList{guid});
    const QStringList row = it.table("tblbook").first();
    QCOMPARE(row.at(0), log.names.constLast());
    QCOMPARE(row.at(2), QDateTime::fromSecsSinceEpoch(log.lastSeen).toString(u"yyyy-MM-dd HH:mm"_s));
    QCOMPARE(row.at(4), QString::number(log.visits));
    QCOMPARE(row.at(5), QString::number(log.names.size()));
    it.choosePlayer(row.at(0));
    QStringList names = log.names;
    QStringList addresses = log.addresses;
    std::ranges::reverse(names);
    std::ranges::reverse(addresses);
    QTRY_COMPARE(aliases(it, "lstbooknames"), names);
    QTRY_COMPARE(aliases(it, "lstbookaddresses"), addresses);
    QStringList actions;
    for (const QString &action : it.list("lstbookactions"))
        actions.append(action.mid(18).section(u" on "_s, 0, 0));
    QCOMPARE(actions, log.actions);
}

} // namespace

/// What the book says after an evening, against the log of the server.
class BookStoryTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theBookSaysWhatTheLogOfTheServerSays_data()
    {
        QTest::addColumn<int>("seed");
        QTest::newRow("one evening") << 1;
        QTest::newRow("another") << 2;
        QTest::newRow("a third") << 3;
    }

    void theBookSaysWhatTheLogOfTheServerSays()
    {
        QFETCH(int, seed);
        Evening evening(static_cast<quint32>(seed));
        evening.pass(40);
        QVERIFY(evening.log().size() > 15);
        BookHands &it = evening.hands();
        it.open();
        int sightings = 0;
        for (const Logged &log : evening.log())
            sightings += log.sightings;
        QTRY_VERIFY2(it.state().startsWith(u"%1 players, %2 sightings"_s.arg(evening.log().size()).arg(sightings)),
                     qPrintable(it.state()));
        for (const auto &[guid, log] : evening.log().asKeyValueRange()) {
            checkPlayer(it, guid, log);
            if (QTest::currentTestFailed())
                return;
        }
    }

    void itSaysTheSameAfterAnotherStart()
    {
        Evening evening(4);
        evening.pass(20);
        BookHands &it = evening.hands();
        it.open();
        QTRY_VERIFY(!it.players().isEmpty());
        const QList<QStringList> before = it.table("tblbook");
        QVERIFY(before.size() > 10);
        it.find<QAbstractButton>("chkbook")->click();
        QTRY_VERIFY(it.players().isEmpty());
        it.find<QAbstractButton>("chkbook")->click();
        QTRY_COMPARE(it.table("tblbook"), before);
    }
};

WINDOW_TEST(BookStoryTest)
#include "tst_book_story.moc"
