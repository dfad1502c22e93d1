// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QAction>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box question{u"Change settings?"_s,
                   u"Are you sure you want to set as Clan Base rules\r"
                   "Check popup rules to see what variables will change"_s,
                   BoxIcon::Information, BoxButtons::OkCancel};

const QList<QByteArray> rules{"scr_sd_roundlimit 10",
                              "scr_sd_roundlength 4",
                              "scr_sd_graceperiod 15",
                              "scr_sd_timelimit 0",
                              "setfriendlyfire 1", // one word
                              "scr_allow_vote 0",
                              "scr_drawfriend 1",
                              "sv_minPing 0",
                              "sv_maxPing 0",
                              "sv_pure 1",
                              "sv_cheats 0",
                              "g_allowVote 0",
                              "scr_killcam 0",
                              "scr_spectateenemy 0",
                              "scr_freelook 0",
                              "logfile 1"};
const QByteArray announcement = "say ^3Molvark ^5(1.0)> ^7Server Set for ^2Clan Base ^7Rules";
const QStringList note{u"Setting server to Clanbase rules....."_s};

bool setclanbase(const Program &program)
{
    return QMetaObject::invokeMethod(&program.window, "setclanbase");
}

} // namespace

/// The preset of the Clan Base league, which only other code can call.
class ClanBaseTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theRulesAreSentInOrderAndAnnounced()
    {
        SettingsTab tab;
        tab.server.game().dvars().set(u"scr_killcam"_s, u"1"_s);
        tab.startSecond();
        QVERIFY(setclanbase(tab.program));
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands(), rules + QList<QByteArray>{announcement});
        QCOMPARE(tab.messages(), note);
        QCOMPARE(tab.asked.constFirst().messages, note);
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        // A slot for the reply to each command, and no pause besides.
        const double lasted = tab.asked.constLast().seconds - tab.asked.constFirst().seconds;
        QVERIFY2(lasted > 15 && lasted < 17, qPrintable(QString::number(lasted)));
        QCOMPARE(tab.server.game().dvars().value(u"scr_sd_roundlimit"_s), u"10"_s);
        QCOMPARE(tab.server.game().dvars().value(u"scr_killcam"_s), u"0"_s);
        QCOMPARE(tab.server.game().dvars().value(u"scr_friendlyfire"_s), u"0"_s);
    }

    void cancelSendsNothing()
    {
        SettingsTab tab;
        tab.program.prompts.answers = {Answer::Cancel};
        QVERIFY(setclanbase(tab.program));
        QCOMPARE(tab.boxes(), QList<Box>{question});
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
    }

    void unconnectedEachCommandIsRefused()
    {
        Program program;
        program.start();
        QVERIFY(setclanbase(program));
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{question} + QList<Box>(17, notConnectedBox()));
        QCOMPARE(program.messages(), note);
    }

    void noControlAndNoMenuItemOffersIt()
    {
        Program program;
        program.start();
        for (const auto *button : program.window.findChildren<QAbstractButton *>())
            QVERIFY2(!button->text().contains(u"clan", Qt::CaseInsensitive), qPrintable(button->text()));
        for (const auto *item : program.window.findChildren<QAction *>())
            QVERIFY2(!item->text().contains(u"clan", Qt::CaseInsensitive), qPrintable(item->text()));
    }
};

WINDOW_TEST(ClanBaseTest)
#include "tst_clan_base.moc"
