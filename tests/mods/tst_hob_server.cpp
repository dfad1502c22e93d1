// SPDX-License-Identifier: MIT
#include "hob.h"

#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

const QStringList percentageBoxes{u"txtsniper"_s, u"txtsmg"_s, u"txtsup"_s, u"txtrifle"_s};
const QStringList percentageBars{u"vssniper"_s, u"vssmg"_s, u"vssup"_s, u"vsrifle"_s};

/// What the server holds, a line for each variable; a line that begins with `without` is left out.
QByteArray listing(const QByteArray &without = "(none)", const QByteArray &more = {})
{
    QByteArray text;
    for (const QByteArray &line :
         {QByteArray("announceSpawnCampers \"1\""), QByteArray("dropWeapon \"0\""),
          QByteArray("dynamicLimitBombs \"1\""), QByteArray("dynamicLimitFlags \"0\""),
          QByteArray("dynamicLimitWeapons \"1\""), QByteArray("enableSpawnProtection \"0\""),
          QByteArray("respawntime \"12\""), QByteArray("riflePercentage \"90\""), QByteArray("shellshock \"0\""),
          QByteArray("showObituary \"1\""), QByteArray("smgPercentage \"50\""), QByteArray("trip \"1\"")}) {
        if (!line.startsWith(without))
            text += "A       scr_hob_" + line + "\n";
    }
    return text + more + "\n900 total dvars\n";
}

QStringList ticked()
{
    QStringList names = switches();
    names.removeIf([](const QString &name) { return !Hob::box(name)->isChecked(); });
    return names;
}

QStringList changed()
{
    QStringList names;
    for (const QString &name : switches()) {
        if (Hob::box(name)->dataChanged())
            names.append(name);
    }
    for (const QString &name : percentageBoxes + QStringList{u"txtwave"_s}) {
        if (Hob::text(name)->dataChanged())
            names.append(name);
    }
    return names;
}

QStringList percentages()
{
    QStringList texts;
    for (qsizetype index = 0; index < percentageBoxes.size(); ++index)
        texts.append(Hob::text(percentageBoxes.at(index))->text() + u'/' +
                     QString::number(Hob::bar(percentageBars.at(index))->value()));
    return texts;
}

const QString nothing = u"0/0"_s;

} // namespace

/// What the window and the server tell each other.
class HobServerTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void populateReadsTheServer()
    {
        Hob hob;
        for (const QString &variable : {u"dropWeapon"_s, u"trip"_s, u"shellshock"_s})
            hob.server.game().dvars().set(u"scr_hob_"_s + variable, u"0"_s);
        hob.server.game().dvars().set(u"scr_hob_respawntime"_s, u"22"_s);
        for (const QString &bar : percentageBars)
            Hob::bar(bar)->setValue(70);
        const double before = hob.program.clock.secondsSinceMidnight();
        const QString pane = hob.program.pane();
        QString note;
        atRequest(hob.server, "dvarlist scr_hob_*", [&] { note = hob.program.note(); });
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(hob.server.requests(), QList<QByteArray>{QByteArray(4, '\xFF') + "rcon practice dvarlist scr_hob_*"});
        QVERIFY(hob.program.clock.secondsSinceMidnight() - before > 1.4);
        QCOMPARE(note, u"Heat of Battle MOD...\nReading variables from the server..."_s);
        QCOMPARE(hob.program.pane(), pane);
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), u"22"_s);
        QCOMPARE(ticked(), (QStringList{u"chkobi"_s, u"chkspawn"_s, u"chkannouncespawn"_s}));
        QVERIFY2(percentages() == QStringList(4, nothing), "their names are found in no reply");
        QCOMPARE(changed(), QStringList());
        QVERIFY(!hob.program.progress()->isVisible());
        QCOMPARE(hob.lines(), QStringList());
        QVERIFY2(!hob.showsReplies(), "goes on collecting");
    }

    void theRefreshGoesOnWhileItReads()
    {
        Hob hob;
        bool refreshed = false;
        atRequest(hob.server, "dvarlist scr_hob_*", [&] { refreshed = hob.isRefreshing(); });
        hob.click(u"cmdhobpop"_s);
        hob.program.prompts.takeBoxes();
        QVERIFY(refreshed);
    }

    void percentagesOfTheExactNamesAreShown_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("shown"); ///< box and bar
        QTest::newRow("a number") << QByteArray("45") << u"45/45"_s;
        QTest::newRow("100") << QByteArray("100") << u"100/100"_s;
        QTest::newRow("a fraction") << QByteArray("12.5") << u"12.5/12"_s;
        QTest::newRow("a word") << QByteArray("all") << nothing;
        QTest::newRow("nothing") << QByteArray() << nothing;
    }

    void percentagesOfTheExactNamesAreShown()
    {
        QFETCH(QByteArray, value);
        QFETCH(QString, shown);
        Hob hob;
        hob.server.answer("dvarlist scr_hob_*",
                          {listing("(none)", "A       scr_hob_ smgPercentage \"" + value + "\"\n")});
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(percentages(), (QStringList{nothing, shown, nothing, nothing}));
        QCOMPARE(changed(), QStringList());
        QVERIFY2(!Hob::hint().contains(u"should be"), "no mistake of the person's");
    }

    void withoutAConnectionBothWarn()
    {
        Hob hob(false);
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(hob.program.prompts.takeBoxes(), QList<Box>{notConnectedPageBox()});
        hob.click(u"cmdhobset"_s);
        QCOMPARE(hob.program.prompts.takeBoxes(), (QList<Box>{sendBox(), notConnectedPageBox()}));
        QVERIFY(!hob.program.session.rconcollect);
    }

    // In the order of reading: what is in front of the fault is filled, the rest stays.
    void aFaultySwitchEndsTheReading_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QByteArray word = listing();
        word.replace("shellshock \"0\"", "shellshock \"no\"");
        QByteArray empty = listing();
        empty.replace("shellshock \"0\"", "shellshock \"\"");
        QTest::newRow("missing") << listing("shellshock");
        QTest::newRow("a word") << word;
        QTest::newRow("empty") << empty;
    }

    void aFaultySwitchEndsTheReading()
    {
        QFETCH(QByteArray, reply);
        Hob hob;
        for (const QString &name : switches())
            Hob::box(name)->setChecked(name != u"chkobi" && name != u"chkshot");
        for (const QString &bar : percentageBars)
            Hob::bar(bar)->setValue(70);
        hob.server.answer("dvarlist scr_hob_*", {reply});
        hob.click(u"cmdhobpop"_s);
        QVERIFY(hob.program.prompts.takeBoxes().isEmpty());
        QVERIFY(!hob.program.progress()->isVisible());
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), u"12"_s);
        QCOMPARE(ticked(), (QStringList{u"chkobi"_s, u"chkshot"_s, u"chkshell"_s, u"chkdw"_s, u"chkdf"_s, u"chkdb"_s,
                                        u"chkspawn"_s, u"chkannouncespawn"_s}));
        QCOMPARE(percentages(), QStringList(4, u"70/70"_s));
        hob.server.answerAsUsual("dvarlist scr_hob_*");
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(percentages(), QStringList(4, nothing));
    }

    void everyNumberButZeroTicksItsBox()
    {
        Hob hob;
        for (const QByteArray &value : {"2"_ba, "-1"_ba, "1.5"_ba}) {
            QByteArray reply = listing();
            reply.replace("showObituary \"1\"", "showObituary \"" + value + '"');
            reply.replace("announceSpawnCampers \"1\"", "announceSpawnCampers \"" + value + '"');
            hob.server.answer("dvarlist scr_hob_*", {reply});
            hob.click(u"cmdhobpop"_s);
            QCOMPARE(ticked(), (QStringList{u"chkobi"_s, u"chkshot"_s, u"chkdw"_s, u"chkdb"_s, u"chkannouncespawn"_s}));
            QCOMPARE(changed(), QStringList());
        }
    }

    void aSilentServerLeavesTheWindowUsable()
    {
        Hob hob;
        hob.server.setSilent(true);
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(hob.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QVERIFY(!hob.program.progress()->isVisible());
        hob.server.setSilent(false);
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), u"15"_s);
    }

    void allThatChangedIsSentInOrder_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::newRow("OK") << Answer::Ok;
        QTest::newRow("Cancel sends all the same") << Answer::Cancel;
    }

    void allThatChangedIsSentInOrder()
    {
        QFETCH(Answer, answer);
        Hob hob;
        hob.click(u"cmdhobpop"_s);
        hob.program.click(u"cmdpopwep"_s); // ends the silence
        hob.program.prompts.takeBoxes();
        hob.forget();
        QVERIFY(hob.showsReplies());
        hob.forget();
        for (const QString &name : switches())
            Hob::box(name)->click();
        Hob::text(u"txtwave"_s)->setText(u"9"_s);
        for (qsizetype index = 0; index < percentageBoxes.size(); ++index)
            Hob::text(percentageBoxes.at(index))->setText(QString::number(11 * (index + 1)));
        QString note;
        atRequest(hob.server, "scr_hob_showObituary\"0\"", [&] { note = hob.program.note(); });
        hob.program.prompts.answers = {answer};
        const QString pane = hob.program.pane();
        hob.click(u"cmdhobset"_s);
        QCOMPARE(hob.program.prompts.takeBoxes(), QList<Box>{sendBox()});
        QCOMPARE(
            hob.server.commands(),
            (QList<QByteArray>{"scr_hob_showObituary\"0\"", "scr_hob_trip\"0\"", "scr_hob_respawntime\"9\"",
                               "scr_hob_dropWeapon\"0\"", "scr_hob_shellshock\"0\"", "scr_hob_dynamicLimitWeapons\"1\"",
                               "scr_hob_dynamicLimitFlags\"1\"", "scr_hob_dynamicLimitBombs\"1\"",
                               "scr_hob_enableSpawnProtection\"0\"", "scr_hob_announceSpawnCampers\"0\"",
                               "scr_hob_ sniperPercentage\"11\"", "scr_hob_ smgPercentage\"22\"",
                               "scr_hob_ supportPercentage\"33\"", "scr_hob_ riflePercentage\"44\""}));
        QCOMPARE(hob.lines(), (QStringList{u"Show Obituory changed."_s, u"Foot/Leg shot changed."_s,
                                           u"Wave respawn changed to [9]"_s, u"Drop weapon on arm/leg shot changed."_s,
                                           u"Shell Shock changed."_s, u"Dynamic Weapons changed."_s,
                                           u"Dynamic flags changed."_s, u"Dynamic bombs changed."_s,
                                           u"Spawn protection changed."_s, u"Annouce Spawn campers changed."_s,
                                           u"Sniper percentage changed."_s, u"Smg percentage changed."_s,
                                           u"Support percentage changed."_s, u"Rifle percentage changed."_s}));
        QCOMPARE(note, u"Heat of Battle MOD...\nSending variables to the server..."_s);
        QCOMPARE(changed(), QStringList());
        QVERIFY(!hob.program.progress()->isVisible());
        QCOMPARE(hob.program.pane().mid(pane.size()).count(u">>RCON sent ["_s), 14);
        QVERIFY(!hob.showsReplies());
    }

    void whatDidNotChangeIsNotSent()
    {
        Hob hob;
        hob.click(u"cmdhobpop"_s);
        hob.server.forgetRequests();
        hob.click(u"cmdhobset"_s);
        QVERIFY(hob.server.requests().isEmpty());
        Hob::box(u"chkdf"_s)->click();
        Hob::box(u"chkdf"_s)->click();
        hob.click(u"cmdhobset"_s);
        hob.click(u"cmdhobset"_s);
        QCOMPARE(hob.server.commands(), QList<QByteArray>{"scr_hob_dynamicLimitFlags\"0\""});
        QCOMPARE(hob.lines(), QStringList{u"Dynamic flags changed."_s});
        QCOMPARE(hob.program.prompts.takeBoxes(), QList<Box>(3, sendBox()));
    }

    void theGameTypeIsSetAndTheMapRestarted()
    {
        Hob hob;
        QStringList before;
        double since = hob.program.clock.secondsSinceMidnight();
        atRequest(hob.server, "map_restart", [&] {
            before = hob.lines();
            since = hob.program.clock.secondsSinceMidnight() - since;
        });
        const QString pane = hob.program.pane();
        hob.click(u"cmdsethob"_s);
        QTRY_COMPARE(hob.server.commands(), (QList<QByteArray>{"set g_gametype hob", "map_restart"}));
        QCOMPARE(before, QStringList{u"Mode changed to HOB"_s});
        QVERIFY(since > 0.9);
        QVERIFY(!hob.program.pane().mid(pane.size()).contains(u">>RCON sent"));
        QVERIFY(hob.program.prompts.takeBoxes().isEmpty());
        QVERIFY2(hob.showsReplies(), "the next command waits for its reply");
    }

    // The closed window's handler is still at work: the same window is shown again, and then a new one.
    void closedWhileItReadsItCanBeOpenedAgain()
    {
        Hob hob;
        atRequest(hob.server, "dvarlist scr_hob_*", [&] {
            hob.click(u"cmdexit"_s);
            hob.program.click(u"cmdhob"_s);
        });
        hob.click(u"cmdhobpop"_s);
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), u"15"_s);
        hob.click(u"cmdexit"_s);
        hob.program.click(u"cmdhob"_s);
        QCOMPARE(Hob::text(u"txtwave"_s)->text(), QString());
    }

    void closingTheProgramEndsAReading()
    {
        Hob hob;
        atRequest(hob.server, "dvarlist scr_hob_*", [&] { hob.program.window.close(); });
        auto *button = Hob::find<QAbstractButton>(u"cmdhobpop"_s);
        button->click();
        QVERIFY(hobWindows().isEmpty());
        QCOMPARE(hob.server.requests().size(), 1);
    }
};

WINDOW_TEST(HobServerTest)
#include "tst_hob_server.moc"
