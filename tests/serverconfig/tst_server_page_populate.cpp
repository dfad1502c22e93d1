// SPDX-License-Identifier: MIT
#include "practice/datagrams.h"
#include "settings_tab.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

const QList<QByteArray> threeGroups{"dvarlist sv_*", "dvarlist scr_*", "dvarlist cl_free*"};
const QStringList texts{u"txtservername"_s, u"txtmaxclients"_s, u"txtmaxping"_s,
                        u"txtmaxrate"_s,    u"txtbantime"_s,    u"txtservermotd"_s};
const QStringList switches{u"chkkillcam"_s,   u"chkteamicons"_s, u"chkteambal"_s,
                           u"chkspecenemy"_s, u"chkvoting"_s,    u"chkfreelook"_s};
const QByteArray serverGroup = "sv_hostname \"Ours\"\nsv_kickbantime \"60\"\nsv_maxclients \"24\"\n"
                               "sv_maxping \"250\"\nsv_maxrate \"9000\"\n";

/// The listing of these variables, names and values.
QByteArray listing(const QList<std::pair<QByteArray, QByteArray>> &variables)
{
    QByteArray text;
    for (const auto &[name, value] : variables)
        text += "      " + name + " \"" + value + "\"\n";
    return text + "\n" + QByteArray::number(variables.size()) + " total dvars\n";
}

QStringList shownTexts(const SettingsTab &tab)
{
    QStringList values;
    for (const QString &name : texts)
        values.append(tab.text(name)->text());
    return values;
}

/// The states of the switches, such as "101100".
QString shownSwitches(const SettingsTab &tab)
{
    QString states;
    for (const QString &name : switches)
        states += tab.check(name)->value();
    return states;
}

/// The modes that are chosen: one at most.
QString shownMode(const SettingsTab &tab)
{
    QString modes;
    for (int mode = 0; mode < 4; ++mode) {
        if (tab.program.find<QRadioButton>(u"optff_"_s + QString::number(mode))->isChecked())
            modes += QString::number(mode);
    }
    return modes;
}

/// The names of the controls whose mark is set.
QStringList marked(const SettingsTab &tab)
{
    QStringList names;
    for (const QString &name : texts) {
        if (tab.text(name)->dataChanged())
            names.append(name);
    }
    for (const QString &name : switches) {
        if (tab.check(name)->dataChanged())
            names.append(name);
    }
    return names;
}

void editEverything(const SettingsTab &tab)
{
    for (const QString &name : texts)
        tab.text(name)->setText(u"edited"_s);
    for (const QString &name : switches)
        tab.check(name)->click();
}

#define VERIFY_RESTING(tab)                                                                                            \
    do {                                                                                                               \
        QVERIFY(tab.program.progress()->isHidden());                                                                   \
        QCOMPARE(tab.program.note(), QString());                                                                       \
        QVERIFY(tab.showsReplies());                                                                                   \
        QVERIFY(tab.isRefreshing());                                                                                   \
    } while (false)

} // namespace

class ServerPagePopulateTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void populateReadsTheWholeTab()
    {
        SettingsTab tab;
        Dvars &dvars = tab.server.game().dvars();
        dvars.set(u"sv_hostname"_s, u"Our ^2snow server"_s);
        dvars.set(u"sv_maxclients"_s, u"24"_s);
        dvars.set(u"sv_maxPing"_s, u"250"_s);
        dvars.set(u"sv_maxRate"_s, u"9000"_s);
        dvars.set(u"sv_kickBanTime"_s, u"120"_s);
        dvars.set(u"scr_motd"_s, u"Mind the snipers, all of you"_s);
        dvars.set(u"scr_killcam"_s, u"1"_s);
        dvars.set(u"scr_drawfriend"_s, u"0"_s);
        dvars.set(u"scr_friendlyfire"_s, u"2"_s);
        dvars.set(u"scr_teambalance"_s, u"1"_s);
        dvars.set(u"scr_spectateenemy"_s, u"1"_s);
        dvars.set(u"scr_allow_vote"_s, u"0"_s);
        dvars.set(u"scr_freelook"_s, u"0"_s); // what the tool tip names, and does not count
        dvars.set(u"cl_freelook"_s, u"1"_s);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.commands(), threeGroups);
        QCOMPARE(shownTexts(tab), QStringList({u"Our ^2snow server"_s, u"24"_s, u"250"_s, u"9000"_s, u"120"_s,
                                               u"Mind the snipers, all of you"_s}));
        QCOMPARE(shownSwitches(tab), u"101101"_s);
        QCOMPARE(shownMode(tab), u"2"_s);
        QVERIFY(tab.program.find<QRadioButton>(u"optff_2"_s)->text() == u"Reflective");
        QCOMPARE(marked(tab), QStringList());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
    }

    void populateMarksEverythingUnchanged()
    {
        SettingsTab tab;
        editEverything(tab);
        QCOMPARE(marked(tab), texts + switches);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(marked(tab), QStringList());
    }

    void whileItReadsTheProgramIsBusyAndSilent()
    {
        SettingsTab tab;
        tab.ticksMeanwhile = true;
        tab.startSecond();
        tab.program.click(u"cmdservpop"_s);
        tab.ticksMeanwhile = false;
        QCOMPARE(tab.asked.size(), 3);
        for (const Asked &each : std::as_const(tab.asked))
            QCOMPARE(each.note, u"Reading variables from the server..."_s);
        QVERIFY(!tab.refreshedMeanwhile);
        QVERIFY2(tab.smallestGap() > 1.4, "each reply has a second more to come in");
        QCOMPARE(tab.pane(), u""_s);
        VERIFY_RESTING(tab);
    }

    void whatComesInTheSecondBehindTheReplyBelongsToIt()
    {
        SettingsTab tab;
        tab.server.answer("dvarlist sv_*", {serverGroup.first(16)});
        tab.startSecond();
        const double start = tab.program.clock.secondsSinceMidnight();
        asSoonAs(
            &tab.server, [&] { return tab.program.clock.secondsSinceMidnight() > start + 1.3; },
            [&] { tab.server.sendRaw(printDatagram(serverGroup.sliced(16))); });
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(shownTexts(tab).first(5), QStringList({u"Ours"_s, u"24"_s, u"250"_s, u"9000"_s, u"60"_s}));
        QVERIFY(tab.boxes().isEmpty());
    }

    void aMissingVariableEmptiesItsTextAndLeavesItsSwitch()
    {
        SettingsTab tab;
        const QByteArray nothing = "\n0 total dvars\n";
        for (const QByteArray &group : threeGroups)
            tab.server.answer(group, {nothing});
        editEverything(tab);
        tab.program.click(u"optff_3"_s);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.commands(), threeGroups);
        QCOMPARE(shownTexts(tab), QStringList(6, u""_s));
        QCOMPARE(shownSwitches(tab), u"111111"_s);
        QCOMPARE(shownMode(tab), u"3"_s);
        QCOMPARE(marked(tab), switches);
        VERIFY_RESTING(tab);
        QVERIFY(tab.boxes().isEmpty());
    }

    void anEmptyValueIsLikeAMissingOne()
    {
        SettingsTab tab;
        tab.server.answer("dvarlist sv_*", {listing({{"sv_hostname", ""}, {"sv_maxclients", "24"}})});
        tab.server.answer("dvarlist scr_*", {listing({{"scr_motd", ""},
                                                      {"scr_killcam", ""},
                                                      {"scr_friendlyfire", ""},
                                                      {"scr_teambalance", "0"},
                                                      {"scr_allow_vote", ""}})});
        editEverything(tab);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(shownTexts(tab), QStringList({u""_s, u"24"_s, u""_s, u""_s, u""_s, u""_s}));
        QCOMPARE(shownSwitches(tab), u"110111"_s); // the practice server's own "Free Look" is on
        QCOMPARE(shownMode(tab), u""_s);
        QCOMPARE(marked(tab), QStringList({u"chkkillcam"_s, u"chkteamicons"_s, u"chkspecenemy"_s, u"chkvoting"_s}));
    }

    void aServerWithoutAnyAnswerEmptiesTheTexts()
    {
        SettingsTab tab;
        tab.server.setSilent(true);
        editEverything(tab);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.boxes(), QList<Box>(3, noResponseBox()));
        QCOMPARE(shownTexts(tab), QStringList(6, u""_s));
        QCOMPARE(shownSwitches(tab), u"111111"_s);
        tab.server.setSilent(false);
        VERIFY_RESTING(tab);
    }

    void theModeIsAWholeNumber()
    {
        SettingsTab tab;
        for (const auto &[value, mode] :
             {std::pair("0", u"0"_s), std::pair("3", u"3"_s), std::pair(" 1 ", u"1"_s), std::pair("2.5", u"2"_s)}) {
            tab.server.answer("dvarlist scr_*", {listing({{"scr_friendlyfire", value}})});
            tab.program.click(u"cmdservpop"_s);
            QCOMPARE(shownMode(tab), mode);
        }
    }

    void everyNumberButZeroTicksItsBox()
    {
        SettingsTab tab;
        for (const QByteArray &value : {"2"_ba, "-1"_ba, "1.5"_ba}) {
            tab.server.answer("dvarlist scr_*", {listing({{"scr_killcam", value},
                                                          {"scr_drawfriend", "0"},
                                                          {"scr_teambalance", "0"},
                                                          {"scr_spectateenemy", value},
                                                          {"scr_allow_vote", "0"}})});
            tab.server.answer("dvarlist cl_free*", {listing({{"cl_freelook", value}})});
            tab.server.forgetRequests();
            tab.program.click(u"cmdservpop"_s);
            QCOMPARE(tab.commands(), threeGroups);
            QCOMPARE(shownSwitches(tab), u"100101"_s);
            QCOMPARE(marked(tab), QStringList());
        }
    }

    void aFaultEndsThePopulateAndKeepsWhatIsFilled_data()
    {
        QTest::addColumn<QByteArray>("scripts"); ///< the listing of the second group
        QTest::addColumn<QString>("states");     ///< before it, only the last one is off
        QTest::addColumn<QString>("mode");       ///< before it 1
        const auto row = [](const char *name, const QList<std::pair<QByteArray, QByteArray>> &changed,
                            const QString &states, const QString &mode) {
            QList<std::pair<QByteArray, QByteArray>> all{{"scr_motd", "Hello"},    {"scr_killcam", "0"},
                                                         {"scr_drawfriend", "0"},  {"scr_friendlyfire", "2"},
                                                         {"scr_teambalance", "0"}, {"scr_spectateenemy", "0"},
                                                         {"scr_allow_vote", "0"}};
            for (auto &each : all) {
                for (const auto &[name_, value] : changed)
                    each.second = each.first == name_ ? value : each.second;
            }
            QTest::newRow(name) << listing(all) << states << mode;
        };
        row("a switch that is a word", {{"scr_killcam", "on"}}, u"111110"_s, u"1"_s);
        row("a switch beyond 16 bits", {{"scr_killcam", "70000"}}, u"111110"_s, u"1"_s);
        row("a mode that is a word", {{"scr_friendlyfire", "off"}}, u"001110"_s, u"1"_s);
        row("mode 4", {{"scr_friendlyfire", "4"}}, u"001110"_s, u"1"_s);
        row("mode -1", {{"scr_friendlyfire", "-1"}}, u"001110"_s, u"1"_s);
        row("a switch behind the mode", {{"scr_teambalance", "x"}}, u"001110"_s, u"2"_s);
        row("the last switch", {{"scr_allow_vote", "x"}}, u"000010"_s, u"2"_s);
        QTest::newRow("a value without its end")
            << QByteArray("scr_motd \"Hello\"\nscr_killcam \"0\"\nscr_drawfriend \"") << u"011110"_s << u"1"_s;
        QTest::newRow("a name without a value")
            << QByteArray("scr_motd \"Hello\"\nscr_killcam") << u"111110"_s << u"1"_s;
    }

    void aFaultEndsThePopulateAndKeepsWhatIsFilled()
    {
        QFETCH(QByteArray, scripts);
        QFETCH(QString, states);
        QFETCH(QString, mode);
        SettingsTab tab;
        tab.server.answer("dvarlist sv_*", {serverGroup});
        tab.server.answer("dvarlist scr_*", {scripts});
        editEverything(tab);
        tab.program.click(u"chkfreelook"_s);
        tab.program.click(u"optff_1"_s);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.commands(), threeGroups.first(2));
        QCOMPARE(shownTexts(tab), QStringList({u"Ours"_s, u"24"_s, u"250"_s, u"9000"_s, u"60"_s, u"Hello"_s}));
        QCOMPARE(shownSwitches(tab), states);
        QCOMPARE(shownMode(tab), mode);
        VERIFY_RESTING(tab);
        QVERIFY2(tab.boxes().isEmpty(), "the fault is not told");
    }

    void aFaultInTheFirstGroupLeavesTheRestUnasked()
    {
        SettingsTab tab;
        tab.server.answer("dvarlist sv_*", {"sv_hostname \"Ours\"\nsv_maxclients \"24\"\nsv_maxping \"25"});
        editEverything(tab);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.commands(), threeGroups.first(1));
        QCOMPARE(shownTexts(tab), QStringList({u"Ours"_s, u"24"_s}) + QStringList(4, u"edited"_s));
        QCOMPARE(marked(tab), texts.sliced(2) + switches);
        VERIFY_RESTING(tab);
        QVERIFY(tab.boxes().isEmpty());

        tab.server.answerAsUsual("dvarlist sv_*");
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(marked(tab), QStringList());
    }

    void unconnectedItSaysSoAndReadsNothing()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.setText(u"txtservername"_s, u"edited"_s);
        program.prompts.whileOpen = [&] {
            QVERIFY(!program.session.rconbusy);
            QVERIFY(!program.session.rconcollect);
            QVERIFY(program.progress()->isHidden());
        };
        program.click(u"cmdservpop"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedYetBox()});
        QCOMPARE(program.text(u"txtservername"_s), u"edited"_s);
        QVERIFY(program.find<TextBox>(u"txtservername"_s)->dataChanged());
        QVERIFY(!program.session.rconbusy);
        QVERIFY(!program.session.rconcollect);
    }
};

WINDOW_TEST(ServerPagePopulateTest)
#include "tst_server_page_populate.moc"
