// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box question{u"Send to Server?"_s, u"Only changed values will be sent.\rSend settings to server?"_s,
                   BoxIcon::Information, BoxButtons::OkCancel};

/// Types into every text and clicks every switch of the tab, from the bottom up.
void editEverything(const Program &program)
{
    for (const QString &name :
         {u"chkfreelook"_s, u"chkvoting"_s, u"chkspecenemy"_s, u"chkteambal"_s, u"chkteamicons"_s, u"chkkillcam"_s})
        program.click(name);
    for (const auto &[name, text] :
         std::initializer_list<std::pair<QString, QString>>{{u"txtbantime"_s, u"90"_s},
                                                            {u"txtmaxrate"_s, u"9000"_s},
                                                            {u"txtmaxping"_s, u"250"_s},
                                                            {u"txtmaxclients"_s, u"24"_s},
                                                            {u"txtservermotd"_s, u"Mind the snipers"_s},
                                                            {u"txtservername"_s, u"Our ^2server"_s}})
        program.setText(name, text);
}

const QList<QByteArray> everyCommand{"sv_hostname\"Our ^2server\"",
                                     "scr_motd\"Mind the snipers\"",
                                     "scr_killcam 1",
                                     "scr_drawfriend 1",
                                     "scr_allow_vote 1",
                                     "g_allowvote 1",
                                     "sv_maxclients 24",
                                     "sv_maxping 250",
                                     "sv_maxrate 9000",
                                     "cl_freelook 1",
                                     "scr_teambalance 1",
                                     "scr_spectateenemy 1",
                                     "sv_kickbantime 90"};

const QStringList everyConfirmation{u"Server name updated."_s,
                                    u"Server MOTD updated."_s,
                                    u"Kill cam updated"_s,
                                    u"Team Icons updated"_s,
                                    u"Voting updated"_s,
                                    u"Voting updated"_s,
                                    u"Maximum clients updated"_s,
                                    u"Maximum client Ping updated"_s,
                                    u"Maximum client Rate updated"_s,
                                    u"Free Look updated"_s,
                                    u"Team Balance updated"_s,
                                    u"Spectate Enemy updated"_s,
                                    u"Temporary ban time updated"_s};

void send(SettingsTab &tab)
{
    tab.program.click(u"cmdservsetbasics"_s);
    QCOMPARE(tab.boxes(), QList<Box>{question});
}

} // namespace

class ServerPageSendTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void everythingIsSentInTheFixedOrderAndConfirmed()
    {
        SettingsTab tab;
        editEverything(tab.program);
        send(tab);
        QCOMPARE(tab.commands(), everyCommand);
        QCOMPARE(tab.echoed(), everyCommand);
        QCOMPARE(tab.messages(), everyConfirmation);
        // Each is confirmed before the next one goes out.
        for (qsizetype number = 0; number < tab.asked.size(); ++number)
            QCOMPARE(tab.asked.at(number).messages, everyConfirmation.first(number));
    }

    void cancelSendsAllTheSame()
    {
        SettingsTab tab;
        editEverything(tab.program);
        tab.program.prompts.answers = {Answer::Cancel};
        send(tab);
        QCOMPARE(tab.commands(), everyCommand);
        QCOMPARE(tab.messages(), everyConfirmation);
    }

    void theProgramIsBusyMeanwhile()
    {
        SettingsTab tab;
        editEverything(tab.program);
        for (const QByteArray &command : everyCommand)
            tab.server.answer(command, {"heard"});
        bool refreshed = false;
        tab.program.prompts.whileOpen = [&] { refreshed = tab.isRefreshing(); };
        tab.ticksMeanwhile = true;
        send(tab);
        tab.ticksMeanwhile = false;
        QVERIFY2(refreshed, "the question comes first");
        QVERIFY(!tab.refreshedMeanwhile);
        QCOMPARE(tab.pane().count(u"heard"_s), everyCommand.size());
        QVERIFY(tab.isRefreshing());
    }

    void aSecondSendHasNothingLeft()
    {
        SettingsTab tab;
        editEverything(tab.program);
        send(tab);
        tab.forget();
        send(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
    }

    void anUntouchedTabSendsNothing()
    {
        SettingsTab tab;
        send(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
        tab.program.click(u"cmdservpop"_s);
        tab.forget();
        send(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QVERIFY(tab.isRefreshing());
    }

    void onlyWhatChangedIsSent_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("confirmation");
        const auto row = [](const char *control, const QByteArray &command, const QString &confirmation) {
            QTest::newRow(control) << command << confirmation;
        };
        row("txtservername", "sv_hostname\"x\"", u"Server name updated."_s);
        row("txtservermotd", "scr_motd\"x\"", u"Server MOTD updated."_s);
        row("txtmaxclients", "sv_maxclients x", u"Maximum clients updated"_s);
        row("txtmaxping", "sv_maxping x", u"Maximum client Ping updated"_s);
        row("txtmaxrate", "sv_maxrate x", u"Maximum client Rate updated"_s);
        row("txtbantime", "sv_kickbantime x", u"Temporary ban time updated"_s);
        row("chkkillcam", "scr_killcam 1", u"Kill cam updated"_s);
        row("chkteamicons", "scr_drawfriend 1", u"Team Icons updated"_s);
        row("chkfreelook", "cl_freelook 1", u"Free Look updated"_s);
        row("chkteambal", "scr_teambalance 1", u"Team Balance updated"_s);
        row("chkspecenemy", "scr_spectateenemy 1", u"Spectate Enemy updated"_s);
    }

    void onlyWhatChangedIsSent()
    {
        QFETCH(QByteArray, command);
        QFETCH(QString, confirmation);
        SettingsTab tab;
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        showTabOf(tab.program, name);
        auto *control = tab.program.find<QWidget>(name);
        control->setFocus();
        if (qobject_cast<CheckBox *>(control)) {
            QTest::keyClick(control, Qt::Key_Space);
        } else {
            QTest::keyClick(control, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(control, Qt::Key_X);
        }
        send(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>{command});
        QCOMPARE(tab.messages(), QStringList{confirmation});
    }

    void aSwitchThatIsSwitchedOffSendsZero()
    {
        SettingsTab tab;
        tab.program.click(u"cmdservpop"_s); // the stock server has the kill cam on
        tab.forget();
        tab.program.click(u"chkkillcam"_s);
        send(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>{"scr_killcam 0"});
    }

    void aTextGoesOutAsItIsTyped_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("clients");
        QTest::addColumn<QList<QByteArray>>("commands");
        QTest::newRow("empty") << u""_s << u""_s << QList<QByteArray>{"sv_hostname\"\"", "sv_maxclients "};
        QTest::newRow("blanks") << u"  a  b "_s << u" 24 "_s
                                << QList<QByteArray>{"sv_hostname\"  a  b \"", "sv_maxclients  24 "};
        QTest::newRow("no number") << u"7"_s << u"many"_s
                                   << QList<QByteArray>{"sv_hostname\"7\"", "sv_maxclients many"};
        QTest::newRow("quotes") << u"the \"best\""_s << u"\"24\""_s
                                << QList<QByteArray>{"sv_hostname\"the \"best\"\"", "sv_maxclients \"24\""};
    }

    void aTextGoesOutAsItIsTyped()
    {
        QFETCH(QString, name);
        QFETCH(QString, clients);
        QFETCH(QList<QByteArray>, commands);
        SettingsTab tab;
        for (const QString &box : {u"txtservername"_s, u"txtmaxclients"_s})
            tab.program.setText(box, u"before"_s);
        tab.program.setText(u"txtservername"_s, name);
        tab.program.setText(u"txtmaxclients"_s, clients);
        send(tab);
        QCOMPARE(tab.commands(), commands);
    }

    void votingIsSentTwiceASecondApart()
    {
        SettingsTab tab;
        tab.program.click(u"chkvoting"_s);
        tab.ticksMeanwhile = true;
        tab.startSecond();
        send(tab);
        tab.ticksMeanwhile = false;
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_allow_vote 1", "g_allowvote 1"}));
        QCOMPARE(tab.echoed(), (QList<QByteArray>{"scr_allow_vote 1", "g_allowvote 1"}));
        QCOMPARE(tab.messages(), QStringList(2, u"Voting updated"_s));
        QCOMPARE(tab.asked.at(1).messages, QStringList{u"Voting updated"_s});
        QVERIFY(!tab.refreshedMeanwhile);
        // The slot of the first reply and the pause behind it.
        QVERIFY(tab.smallestGap() > 1.4);
    }

    void theSecondVotingCommandReadsTheBoxAgain()
    {
        SettingsTab tab;
        tab.program.click(u"chkvoting"_s);
        atRequest(tab.server, "scr_allow_vote 1", [&] { tab.program.click(u"chkvoting"_s); });
        send(tab);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_allow_vote 1", "g_allowvote 0"}));
        QVERIFY(!tab.check(u"chkvoting"_s)->dataChanged());
    }

    void anEditDuringTheSendIsLeftForTheNext()
    {
        SettingsTab tab;
        tab.program.setText(u"txtservermotd"_s, u"first"_s);
        tab.program.click(u"chkvoting"_s);
        atRequest(tab.server, "scr_motd\"first\"", [&] { tab.program.setText(u"txtservermotd"_s, u"second"_s); });
        atRequest(tab.server, "g_allowvote 1", [&] { tab.program.click(u"chkvoting"_s); });
        send(tab);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_motd\"first\"", "scr_allow_vote 1", "g_allowvote 1"}));
        tab.forget();
        send(tab);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"scr_motd\"second\"", "scr_allow_vote 0", "g_allowvote 0"}));
    }

    void anEditOfAControlThatIsStillToComeGoesAlong()
    {
        SettingsTab tab;
        tab.program.setText(u"txtservername"_s, u"x"_s);
        atRequest(tab.server, "sv_hostname\"x\"", [&] { tab.program.setText(u"txtbantime"_s, u"90"_s); });
        send(tab);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"sv_hostname\"x\"", "sv_kickbantime 90"}));
    }

    void aServerThatDoesNotAnswerIsConfirmedAllTheSame()
    {
        SettingsTab tab;
        tab.server.answer("scr_motd\"x\"", {});
        tab.program.setText(u"txtservermotd"_s, u"x"_s);
        tab.program.click(u"cmdservsetbasics"_s);
        QCOMPARE(tab.boxes(), QList<Box>({question, noResponseBox()}));
        QCOMPARE(tab.messages(), QStringList{u"Server MOTD updated."_s});
        QVERIFY(!tab.text(u"txtservermotd"_s)->dataChanged());
    }

    void unconnectedEachCommandIsRefused()
    {
        Program program;
        program.start();
        program.setText(u"txtservermotd"_s, u"x"_s);
        program.click(u"chkvoting"_s);
        program.click(u"cmdservsetbasics"_s);
        QCOMPARE(program.prompts.takeBoxes(),
                 QList<Box>({question, notConnectedBox(), notConnectedBox(), notConnectedBox()}));
        QCOMPARE(program.messages(),
                 QStringList({u"Server MOTD updated."_s, u"Voting updated"_s, u"Voting updated"_s}));
        PracticeServer server;
        listenOrFail(server);
        program.connectTo(server);
        QVERIFY(program.isRefreshingFrom(server));
    }
};

WINDOW_TEST(ServerPageSendTest)
#include "tst_server_page_send.moc"
