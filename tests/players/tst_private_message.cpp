// SPDX-License-Identifier: MIT
#include "player_grid.h"

#include "link.h"

using namespace Qt::StringLiterals;

namespace {

/// The tab with a list of one player in slot 3, under a name that the game leaves as it is.
struct OnePlayer {
    explicit OnePlayer(const QByteArray &name, bool removes = true)
    {
        tab.tickBox(u"chkremcol"_s, removes);
        tab.server.answer("status", {statusHeading + statusLine(name) + "\n"});
        tab.populate();
        tab.select(0);
        tab.server.forgetRequests();
        messages = tab.program.messages();
    }

    [[nodiscard]] QStringList newMessages() const { return tab.program.messages().mid(messages.size()); }

    PlayersTab tab;
    QStringList messages; ///< those from before
};

} // namespace

class PrivateMessageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theMessageIsToldToTheSelectedPlayer_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<bool>("removes");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("note");
        const auto row = [](const char *what, const QByteArray &name, bool removes, const QString &typed,
                            const QByteArray &command, const QString &note) {
            QTest::newRow(what) << name << removes << typed << command << note;
        };
        row("cleaned", "^1Bob", true, u"Leave now %P%!"_s, "tell 3 Leave now Bob!",
            u"Private message to [Bob]: Leave now Bob!"_s);
        row("as received", "^1Bob", false, u"Leave now %P%!"_s, "tell 3 Leave now ^1Bob!",
            u"Private message to [^1Bob]: Leave now ^1Bob!"_s);
        row("the preset", "Bob", true, u"You are on a last warning %P%"_s, "tell 3 You are on a last warning Bob",
            u"Private message to [Bob]: You are on a last warning Bob"_s);
        row("a small p", "Bob", true, u"%p% go"_s, "tell 3 Bob go", u"Private message to [Bob]: Bob go"_s);
        row("twice", "Bob", true, u"%p% and %P%"_s, "tell 3 Bob and %P%", u"Private message to [Bob]: Bob and %P%"_s);
        row("without", "Bob", true, u"100% p %"_s, "tell 3 100% p %", u"Private message to [Bob]: 100% p %"_s);
        row("in the name", "%P% x", true, u"a %P% b"_s, "tell 3 a %P% x b", u"Private message to [%P% x]: a %P% x b"_s);
        row("overlapping", "Bob", true, u"%P%P%"_s, "tell 3 BobP%", u"Private message to [Bob]: BobP%"_s);
        row("a letter that grows in upper case", "Bob", true, u"\u00DF\u00FC%P%!"_s,
            "tell 3 \xDF\xFC"
            "Bob!",
            u"Private message to [Bob]: \u00DF\u00FCBob!"_s);
        row("no name", "", true, u"hi %P%!"_s, "tell 3 hi !", u"Private message to []: hi !"_s);
        row("markup", "<i>Bob</i>", true, u"%P% <b>"_s, "tell 3 <i>Bob</i> <b>",
            u"Private message to [<i>Bob</i>]: <i>Bob</i> <b>"_s);
    }

    void theMessageIsToldToTheSelectedPlayer()
    {
        QFETCH(QByteArray, name);
        QFETCH(bool, removes);
        QFETCH(QString, typed);
        QFETCH(QByteArray, command);
        QFETCH(QString, note);
        OnePlayer on(name, removes);
        const QList<QStringList> grid = on.tab.grid();
        const QString pane = on.tab.program.pane();
        on.tab.program.prompts.lines = {typed};
        on.tab.program.click(u"cmdplymessage"_s);
        QCOMPARE(on.tab.server.requests(), QList<QByteArray>{request(command)});
        QCOMPARE(on.newMessages(), QStringList{note});
        QCOMPARE(on.tab.grid(), grid);
        QVERIFY(on.tab.program.pane().mid(pane.size()).contains(u">>RCON sent ["_s));
    }

    void theQuestionHasAPreset()
    {
        OnePlayer on("Bob");
        on.tab.program.click(u"cmdplymessage"_s);
        const QStringList question{u"Enter Message"_s,
                                   u"Enter message to send selected player\n( Note: Use %P% to auto full playername)"_s,
                                   u"You are on a last warning %P%"_s};
        QCOMPARE(on.tab.program.prompts.asked, QList<QStringList>{question});
    }

    void cancelSendsNothing()
    {
        OnePlayer on("Bob");
        on.tab.program.prompts.lines = {QString()};
        on.tab.program.click(u"cmdplymessage"_s);
        QVERIFY(on.tab.server.requests().isEmpty());
        QVERIFY(on.newMessages().isEmpty());
        QVERIFY(on.tab.program.prompts.takeBoxes().isEmpty());
    }

    void aNameIsCleanedWhenTheMessageIsSent()
    {
        OnePlayer on("^1Bob", false);
        on.tab.tickBox(u"chkremcol"_s);
        on.tab.program.prompts.lines = {u"%P%"_s};
        on.tab.program.click(u"cmdplymessage"_s);
        QCOMPARE(on.tab.server.commands(), QList<QByteArray>{"tell 3 Bob"});
        QCOMPARE(on.newMessages(), QStringList{u"Private message to [Bob]: Bob"_s});
    }

    void withoutASelectionNobodyIsAsked()
    {
        OnePlayer on("Bob");
        on.tab.populate();
        on.tab.server.forgetRequests();
        on.tab.program.click(u"cmdplymessage"_s);
        QCOMPARE(on.tab.program.prompts.takeBoxes(),
                 QList<Box>{information(u"No player"_s, u"Select a player from the list to send private to"_s)});
        QVERIFY(on.tab.program.prompts.asked.isEmpty());
        QVERIFY(on.tab.server.requests().isEmpty());
    }

    // Query Mode is looked at first, unlike with the other actions.
    void inQueryModeNobodyIsAsked()
    {
        OnePlayer on("Bob");
        on.tab.tickBox(u"chkplyq"_s);
        const Box refused =
            exclamation(u"Need Player ID"_s, u"Can only send message to an individual with the RCON access\n"
                                             "Populate players without Query Mode ticked"_s);
        on.tab.program.click(u"cmdplymessage"_s);
        QCOMPARE(on.tab.program.prompts.takeBoxes(), QList<Box>{refused});
        on.tab.populate();
        on.tab.program.prompts.takeBoxes();
        on.tab.server.forgetRequests();
        on.tab.program.click(u"cmdplymessage"_s);
        QCOMPARE(on.tab.program.prompts.takeBoxes(), QList<Box>{refused});
        QVERIFY(on.tab.program.prompts.asked.isEmpty());
        QVERIFY(on.tab.server.requests().isEmpty());
    }
};

WINDOW_TEST(PrivateMessageTest)
#include "tst_private_message.moc"
