// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box question{u"Send to Server?"_s, u"Only changed values will be sent.\rSend other settings to server?"_s,
                   BoxIcon::Information, BoxButtons::OkCancel};
const QString smoke = u"chkCodOther_0"_s;
const QString frag = u"chkCodOther_1"_s;
const QString sendButton = u"cmdCodOther_0"_s;
const QString populateButton = u"cmdCodOther_1"_s;
const QByteArray group = "dvarlist scr_allow_*";

/// What the two boxes show, such as "10", smoke first.
QString shown(const SettingsTab &tab)
{
    return tab.check(smoke)->value() + tab.check(frag)->value();
}

void setOnServer(SettingsTab &tab, const QString &smokes, const QString &frags)
{
    tab.server.game().dvars().set(u"scr_allow_smokegrenades"_s, smokes);
    tab.server.game().dvars().set(u"scr_allow_fraggrenades"_s, frags);
}

/// True when the reply to a command that is typed shows up in the pane.
bool consoleIsHeard(SettingsTab &tab)
{
    const qsizetype before = tab.program.pane().size();
    tab.server.answer("version", {"a practice server\n"});
    tab.program.find<QComboBox>(u"comdirect"_s)->setEditText(u"version"_s);
    tab.program.click(u"cmdsend"_s);
    (void)tab.commands(); // until the reply has come
    return tab.program.pane().mid(before).contains(u"a practice server\r\n");
}

} // namespace

class OtherPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theFormNamesTheGrenadesBesideTheirBoxes()
    {
        Program program;
        program.start();
        QCOMPARE(program.find<QGroupBox>(u"frmwep"_s)->title(), u"Other settings"_s);
        QCOMPARE(labelOf(program, smoke)->text(), u"Smoke Grenades"_s);
        QCOMPARE(labelOf(program, frag)->text(), u"Frag Grenades"_s);
        QCOMPARE(program.find<CheckBox>(smoke)->tag, u"scr_allow_smokegrenades"_s);
        QCOMPARE(program.find<CheckBox>(frag)->tag, u"scr_allow_fraggrenades"_s);
        QCOMPARE(program.text(smoke), u"Check1"_s);
        QCOMPARE(program.text(frag), u"Check1"_s);
        QCOMPARE(program.text(sendButton), u"Send current to server"_s);
        QCOMPARE(program.text(populateButton), u"Populate from server"_s);
        QVERIFY(!program.find<CheckBox>(smoke)->dataChanged() && !program.find<CheckBox>(frag)->dataChanged());
        const auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        QCOMPARE(tabs->tabText(8), u"COD2 other"_s);
        QVERIFY(tabs->widget(8)->isAncestorOf(program.find<QWidget>(smoke)));
    }

    void theCaptionsOfTheBoxesAreOutOfSight()
    {
        Program program;
        program.start();
        showTabOf(program, smoke);
        for (const QString &name : {smoke, frag}) {
            const auto *box = program.find<CheckBox>(name);
            QVERIFY(box->isVisible());
            QVERIFY2(box->width() < box->fontMetrics().horizontalAdvance(u"Check1"_s), "the caption would be seen");
        }
    }

    void populateReadsBothBoxes_data()
    {
        QTest::addColumn<QString>("states");
        for (const QString &states : {u"00"_s, u"01"_s, u"10"_s, u"11"_s})
            QTest::newRow(qPrintable(states)) << states;
    }

    void populateReadsBothBoxes()
    {
        QFETCH(QString, states);
        SettingsTab tab;
        setOnServer(tab, states.first(1), states.last(1));
        tab.program.click(smoke); // an edit that is lost
        tab.program.click(populateButton);
        QCOMPARE(tab.commands(), QList<QByteArray>{group});
        QCOMPARE(shown(tab), states);
        QVERIFY(!tab.check(smoke)->dataChanged() && !tab.check(frag)->dataChanged());
        QCOMPARE(tab.pane(), u""_s);
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(tab.boxes().isEmpty());
    }

    void whileItReadsTheProgramIsBusyAndSilent()
    {
        SettingsTab tab;
        tab.ticksMeanwhile = true;
        tab.startSecond();
        const double before = tab.program.clock.secondsSinceMidnight();
        tab.program.click(populateButton);
        QVERIFY2(tab.program.clock.secondsSinceMidnight() - before > 1.4, "the reply has a second more to come in");
        QCOMPARE(tab.asked.size(), 1);
        QVERIFY(!tab.refreshedMeanwhile);
        QCOMPARE(tab.pane(), u""_s);
        QCOMPARE(tab.asked.constFirst().note, u"\nReading variables from the server..."_s);
        QVERIFY(tab.program.progress()->isHidden());
        QCOMPARE(tab.program.note(), u""_s);
        QVERIFY2(!tab.showsReplies(), "this page leaves it so");
        tab.ticksMeanwhile = false;
        QVERIFY(tab.isRefreshing());
    }

    void aMissingOrEmptyVariableCountsAsZero_data()
    {
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QString>("states");
        QTest::newRow("no smoke") << QByteArray("scr_allow_fraggrenades \"1\"\n") << u"01"_s;
        QTest::newRow("no frag") << QByteArray("scr_allow_smokegrenades \"1\"\n") << u"10"_s;
        QTest::newRow("neither") << QByteArray("0 total dvars\n") << u"00"_s;
        QTest::newRow("empty values") << QByteArray("scr_allow_smokegrenades \"\"\nscr_allow_fraggrenades \"\"\n")
                                      << u"00"_s;
    }

    void aMissingOrEmptyVariableCountsAsZero()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QString, states);
        SettingsTab tab;
        tab.server.answer(group, {listing});
        tab.program.click(smoke);
        tab.program.click(frag);
        tab.program.click(populateButton);
        QCOMPARE(shown(tab), states);
        QVERIFY(!tab.check(smoke)->dataChanged() && !tab.check(frag)->dataChanged());
    }

    void aServerWithoutAnyAnswerClearsBoth()
    {
        SettingsTab tab;
        tab.server.setSilent(true);
        tab.program.click(smoke);
        tab.program.click(populateButton);
        QCOMPARE(tab.boxes(), QList<Box>{noResponseBox()});
        QCOMPARE(shown(tab), u"00"_s);
    }

    void everyNumberButZeroTicksItsBox()
    {
        SettingsTab tab;
        for (const QString &value : {u"2"_s, u"-1"_s, u"1.5"_s}) {
            setOnServer(tab, value, u"0"_s);
            tab.program.click(populateButton);
            QCOMPARE(shown(tab), u"10"_s);
            setOnServer(tab, u"0"_s, value);
            tab.program.click(populateButton);
            QCOMPARE(shown(tab), u"01"_s);
            QVERIFY(!tab.check(smoke)->dataChanged() && !tab.check(frag)->dataChanged());
        }
    }

    void aFaultEndsThePopulateAndKeepsWhatIsFilled_data()
    {
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QString>("states"); ///< before it 01
        const QByteArray good = "scr_allow_smokegrenades \"1\"\n";
        QTest::newRow("smoke is a word") << QByteArray("scr_allow_smokegrenades \"on\"\nscr_allow_fraggrenades \"0\"\n")
                                         << u"01"_s;
        QTest::newRow("frag is a word") << good + "scr_allow_fraggrenades \"x\"\n" << u"11"_s;
        QTest::newRow("frag is cut off") << good + "scr_allow_fraggrenades \"0" << u"11"_s;
        QTest::newRow("frag has no value") << good + "scr_allow_fraggrenades" << u"11"_s;
    }

    void aFaultEndsThePopulateAndKeepsWhatIsFilled()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QString, states);
        SettingsTab tab;
        tab.server.answer(group, {listing});
        tab.program.click(frag);
        tab.program.click(populateButton);
        QCOMPARE(shown(tab), states);
        QVERIFY(tab.check(frag)->dataChanged());
        QVERIFY(tab.program.progress()->isHidden());
        QVERIFY(!tab.showsReplies());
        QVERIFY(tab.isRefreshing());
        QVERIFY2(tab.boxes().isEmpty(), "the fault is not told");
    }

    void afterwardsTheConsoleIsSilentUntilSomebodyElseEndsThat_data()
    {
        QTest::addColumn<QStringList>("buttons");
        QTest::newRow("the populate of the Server tab") << QStringList{u"cmdservpop"_s};
        QTest::newRow("the populate of the maps") << QStringList{u"cmdpopmaps"_s};
        QTest::newRow("connecting anew") << QStringList{u"cmdconnect"_s, u"cmdconnect"_s};
    }

    void afterwardsTheConsoleIsSilentUntilSomebodyElseEndsThat()
    {
        QFETCH(QStringList, buttons);
        SettingsTab tab;
        QVERIFY(consoleIsHeard(tab));
        tab.program.click(populateButton);
        QVERIFY(!consoleIsHeard(tab));
        tab.program.click(sendButton); // a send ends nothing
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QVERIFY(!consoleIsHeard(tab));
        for (const QString &button : buttons)
            tab.program.click(button);
        QVERIFY(consoleIsHeard(tab));
    }

    void onlyWhatChangedIsSent_data()
    {
        QTest::addColumn<QStringList>("clicked");
        QTest::addColumn<QList<QByteArray>>("commands");
        const QByteArray smokeCommand = "scr_allow_smokegrenades\"0\"";
        const QByteArray fragCommand = "scr_allow_fraggrenades\"0\"";
        QTest::newRow("nothing") << QStringList() << QList<QByteArray>();
        QTest::newRow("smoke") << QStringList{smoke} << QList<QByteArray>{smokeCommand};
        QTest::newRow("frag") << QStringList{frag} << QList<QByteArray>{fragCommand};
        QTest::newRow("both") << QStringList{frag, smoke} << QList<QByteArray>{smokeCommand, fragCommand};
    }

    // The stock server allows both grenades.
    void onlyWhatChangedIsSent()
    {
        QFETCH(QStringList, clicked);
        QFETCH(QList<QByteArray>, commands);
        for (const Answer answer : {Answer::Ok, Answer::Cancel}) {
            SettingsTab tab;
            tab.program.click(populateButton);
            tab.forget();
            for (const QString &name : clicked)
                tab.program.click(name);
            tab.program.prompts.answers = {answer};
            tab.ticksMeanwhile = true;
            tab.program.click(sendButton);
            tab.ticksMeanwhile = false;
            QCOMPARE(tab.boxes(), QList<Box>{question});
            QCOMPARE(tab.commands(), commands);
            QCOMPARE(tab.echoed(), commands);
            QCOMPARE(tab.messages(), QStringList(commands.size(), u"Check1 updated."_s));
            QVERIFY(!tab.refreshedMeanwhile);
            QVERIFY(tab.isRefreshing());
            for (const auto &[box, variable] :
                 {std::pair(smoke, u"scr_allow_smokegrenades"_s), std::pair(frag, u"scr_allow_fraggrenades"_s)})
                QCOMPARE(tab.server.game().dvars().value(variable), clicked.contains(box) ? u"0"_s : u"1"_s);

            tab.forget();
            tab.program.click(sendButton);
            QCOMPARE(tab.boxes(), QList<Box>{question});
            QCOMPARE(tab.commands(), QList<QByteArray>());
        }
    }

    void aBoxThatIsTickedSendsOne()
    {
        SettingsTab tab;
        tab.program.click(frag);
        tab.program.click(sendButton);
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands(), QList<QByteArray>{"scr_allow_fraggrenades\"1\""});
    }

    void anEditDuringTheSendIsLeftForTheNext()
    {
        SettingsTab tab;
        tab.program.click(smoke);
        atRequest(tab.server, "scr_allow_smokegrenades\"1\"", [&] { tab.program.click(smoke); });
        tab.program.click(sendButton);
        QCOMPARE(tab.commands(), QList<QByteArray>{"scr_allow_smokegrenades\"1\""});
        tab.forget();
        tab.program.click(sendButton);
        QCOMPARE(tab.commands(), QList<QByteArray>{"scr_allow_smokegrenades\"0\""});
        QCOMPARE(tab.boxes(), QList<Box>(2, question));
    }

    void unconnectedPopulateSaysSoAndReadsNothing()
    {
        Program program;
        program.start();
        program.click(populateButton);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedYetBox()});
        QVERIFY(!program.session.rconcollect);
        QVERIFY(!program.session.rconbusy);
    }

    void unconnectedEachCommandIsRefused()
    {
        Program program;
        program.start();
        program.click(smoke);
        program.click(frag);
        program.click(sendButton);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>({question, notConnectedBox(), notConnectedBox()}));
        QCOMPARE(program.messages(), QStringList(2, u"Check1 updated."_s));
        PracticeServer server;
        listenOrFail(server);
        program.connectTo(server);
        QVERIFY(program.isRefreshingFrom(server));
    }
};

WINDOW_TEST(OtherPageTest)
#include "tst_other_page.moc"
