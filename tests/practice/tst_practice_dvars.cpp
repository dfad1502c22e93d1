// SPDX-License-Identifier: MIT
#include "practice/dvars.h"
#include "test_class.h"

#include "practice/wildcard.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

using Outcome = Assignment::Outcome;

class PracticeDvarsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theGameHasItsStockValues_data()
    {
        QTest::addColumn<QString>("value");
        const QList<std::pair<const char *, const char *>> stock{{"sv_hostname", "CoD2Host"},
                                                                 {"sv_maxclients", "20"},
                                                                 {"sv_maxPing", "0"},
                                                                 {"sv_minPing", "0"},
                                                                 {"sv_maxRate", "0"},
                                                                 {"sv_kickBanTime", "300"},
                                                                 {"sv_pure", "1"},
                                                                 {"sv_cheats", "0"},
                                                                 {"sv_mapRotation", ""},
                                                                 {"sv_mapRotationCurrent", ""},
                                                                 {"g_password", ""},
                                                                 {"g_gametype", "dm"},
                                                                 {"g_allowVote", "1"},
                                                                 {"logfile", "0"},
                                                                 {"cl_freelook", "1"},
                                                                 {"scr_freelook", "1"},
                                                                 {"scr_motd", ""},
                                                                 {"scr_killcam", "1"},
                                                                 {"scr_drawfriend", "1"},
                                                                 {"scr_friendlyfire", "0"},
                                                                 {"scr_teambalance", "0"},
                                                                 {"scr_spectateenemy", "1"},
                                                                 {"scr_allow_vote", "1"},
                                                                 {"scr_dm_scorelimit", "50"},
                                                                 {"scr_dm_timelimit", "30"},
                                                                 {"scr_tdm_scorelimit", "100"},
                                                                 {"scr_tdm_timelimit", "30"},
                                                                 {"scr_hq_scorelimit", "450"},
                                                                 {"scr_hq_timelimit", "30"},
                                                                 {"scr_ctf_scorelimit", "5"},
                                                                 {"scr_ctf_timelimit", "30"},
                                                                 {"scr_sd_timelimit", "0"},
                                                                 {"scr_sd_scorelimit", "10"},
                                                                 {"scr_sd_roundlimit", "0"},
                                                                 {"scr_sd_roundlength", "4"},
                                                                 {"scr_sd_graceperiod", "15"},
                                                                 {"scr_bel_scorelimit", "100"},
                                                                 {"scr_bel_timelimit", "30"},
                                                                 {"mapname", "mp_toujane"},
                                                                 {"gamename", "Call of Duty 2"},
                                                                 {"protocol", "118"},
                                                                 {"shortversion", "1.3"}};
        for (const auto &[name, value] : stock)
            QTest::newRow(name) << QString::fromLatin1(value);
        for (const char *weapon : {"enfieldsniper", "enfield",   "sten",      "bren",         "ppsh",         "nagant",
                                   "nagantsniper",  "greasegun", "m1carbine", "m1garand",     "thompson",     "bar",
                                   "springfield",   "mp40",      "mp44",      "kar98k",       "kar98ksniper", "svt40",
                                   "shotgun",       "g43",       "pps42",     "fraggrenades", "smokegrenades"})
            QTest::newRow(QByteArray(QByteArray("scr_allow_") + weapon).constData()) << u"1"_s;
    }
    void theGameHasItsStockValues()
    {
        QFETCH(QString, value);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        const Dvars dvars = Dvars::stock(false);
        const Dvar *dvar = dvars.find(name.toUpper());
        QVERIFY(dvar != nullptr);
        QCOMPARE(dvar->name, name);
        QCOMPARE(dvar->value, value);
        QCOMPARE(dvar->stock, value);
    }

    void theModAddsItsOwn()
    {
        const Dvars plain = Dvars::stock(false);
        const Dvars hob = Dvars::stock(true);
        for (const auto &name :
             {u"scr_hob_riflePercentage"_s, u"scr_hob_supportPercentage"_s, u"scr_hob_smgPercentage"_s,
              u"scr_hob_sniperPercentage"_s, u"scr_hob_respawntime"_s, u"scr_hob_enableSpawnProtection"_s,
              u"scr_hob_dynamicLimitBombs"_s, u"scr_hob_dynamicLimitFlags"_s, u"scr_hob_dynamicLimitWeapons"_s,
              u"scr_hob_shellshock"_s, u"scr_hob_dropWeapon"_s, u"scr_hob_trip"_s, u"scr_hob_showObituary"_s,
              u"scr_hob_announceSpawnCampers"_s}) {
            QVERIFY2(hob.find(name) != nullptr, qPrintable(name));
            QVERIFY2(plain.find(name) == nullptr, qPrintable(name));
        }
        QVERIFY(plain.count() > 300);
    }

    void aListingHasFlagsNameAndQuotedValue()
    {
        Dvars dvars;
        dvars.add({u"sv_hostname"_s, u"SA"_s, u"My server"_s, {}});
        dvars.add({u"g_gravity"_s, u"C"_s, u"800"_s, {}});
        dvars.add({u"SV_late"_s, u"URIL"_s, u""_s, {}});
        QCOMPARE(dvars.listing({}), u"      C g_gravity \"800\"\n"
                                    "S   A   sv_hostname \"My server\"\n"
                                    " URI L  SV_late \"\"\n"
                                    "\n3 total dvars\n3 dvar indexes\n"_s);
        QCOMPARE(dvars.listing(u"sv_h*"), u"S   A   sv_hostname \"My server\"\n\n3 total dvars\n3 dvar indexes\n"_s);
        QCOMPARE(dvars.listing(u"nothing*"), u"\n3 total dvars\n3 dvar indexes\n"_s);
    }

    void anAssignmentIsSilentWhenItSucceeds()
    {
        Dvars dvars = Dvars::stock(false);
        QCOMPARE(dvars.assign(u"SV_HOSTNAME"_s, u"My server"_s).reply, QString());
        QCOMPARE(dvars.value(u"sv_hostname"_s), u"My server"_s);
        QCOMPARE(dvars.find(u"sv_hostname"_s)->name, u"sv_hostname"_s);
        QCOMPARE(dvars.find(u"sv_hostname"_s)->stock, u"CoD2Host"_s);
        QCOMPARE(dvars.assign(u"my_own"_s, u"1"_s).reply, QString());
        QCOMPARE(dvars.value(u"MY_OWN"_s), u"1"_s);
    }

    void whatCannotBeAssignedIsTold_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("complaint");
        const QString slotDomain = u"  Domain is any integer from 1 to 64\n"_s;
        QTest::newRow("read only") << u"MapName"_s << u"mp_x"_s << u"mapname is read only.\n"_s;
        QTest::newRow("start only") << u"fs_game"_s << u"x"_s << u"fs_game is write protected.\n"_s;
        QTest::newRow("too high") << u"sv_maxclients"_s << u"65"_s
                                  << QString(u"'65' is not a valid value for dvar 'sv_maxclients'\n"_s + slotDomain);
        QTest::newRow("no number") << u"sv_maxclients"_s << u"many"_s
                                   << QString(u"'many' is not a valid value for dvar 'sv_maxclients'\n"_s + slotDomain);
    }
    void whatCannotBeAssignedIsTold()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, complaint);
        Dvars dvars = Dvars::stock(false);
        const QString before = dvars.value(name);
        const Assignment assignment = dvars.assign(name, value);
        QCOMPARE(assignment.outcome, Outcome::Refused);
        QCOMPARE(assignment.reply, complaint);
        dvars.takeUpLatched();
        QCOMPARE(dvars.value(name), before);
    }

    void aLatchedVariableKeepsItsValueUntilTheNextMap()
    {
        Dvars dvars = Dvars::stock(false);
        const Assignment assignment = dvars.assign(u"G_GameType"_s, u"sd"_s);
        QCOMPARE(assignment.outcome, Outcome::Latched);
        QCOMPARE(assignment.reply, u"g_gametype will be changed upon restarting.\n"_s);
        QCOMPARE(dvars.value(u"g_gametype"_s), u"dm"_s);
        QVERIFY(dvars.listing(u"g_gametype").startsWith(u"S    L  g_gametype \"dm\"\n"_s));
        QCOMPARE(Dvars::description(*dvars.find(u"g_gametype"_s)),
                 u"\"g_gametype\" is: \"dm^7\" default: \"dm^7\"\nlatched: \"sd^7\"\n  Domain is any text\n"_s);

        dvars.takeUpLatched();
        QCOMPARE(dvars.value(u"g_gametype"_s), u"sd"_s);
        QCOMPARE(Dvars::description(*dvars.find(u"g_gametype"_s)),
                 u"\"g_gametype\" is: \"sd^7\" default: \"dm^7\"\n  Domain is any text\n"_s);
    }

    void theLastLatchedValueCounts_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("taken");
        QTest::newRow("another one") << QStringList{u"sd"_s, u"ctf"_s} << u"ctf"_s;
        QTest::newRow("the present one again") << QStringList{u"sd"_s, u"dm"_s} << u"dm"_s;
        QTest::newRow("the same one twice") << QStringList{u"sd"_s, u"sd"_s} << u"sd"_s;
    }
    void theLastLatchedValueCounts()
    {
        QFETCH(QStringList, values);
        QFETCH(QString, taken);
        Dvars dvars = Dvars::stock(false);
        for (const QString &value : values) {
            const bool isPresent = value == dvars.value(u"g_gametype"_s);
            QCOMPARE(dvars.assign(u"g_gametype"_s, value).outcome, isPresent ? Outcome::Done : Outcome::Latched);
        }
        QCOMPARE(dvars.value(u"g_gametype"_s), u"dm"_s);
        dvars.takeUpLatched();
        QCOMPARE(dvars.value(u"g_gametype"_s), taken);
    }

    void theServerItselfSetsALatchedVariableAtOnce()
    {
        Dvars dvars = Dvars::stock(false);
        dvars.assign(u"g_gametype"_s, u"sd"_s);
        dvars.set(u"g_gametype"_s, u"hq"_s);
        QCOMPARE(dvars.value(u"g_gametype"_s), u"hq"_s);
        dvars.takeUpLatched();
        QCOMPARE(dvars.value(u"g_gametype"_s), u"hq"_s);
    }

    void newNamesComeToAnEnd()
    {
        Dvars dvars;
        for (int number = 0; number < 5000; ++number)
            dvars.assign(u"n%1"_s.arg(number), u"1"_s);
        QCOMPARE(dvars.count(), 4096);
        QCOMPARE(dvars.assign(u"n5000"_s, u"1"_s).reply, u"Can't create dvar 'n5000': 4096 dvars already exist\n"_s);
        QCOMPARE(dvars.assign(u"n0"_s, u"2"_s).outcome, Outcome::Done);
        QCOMPARE(dvars.value(u"n0"_s), u"2"_s);
    }

    void aWildcardDescribesWholeNames_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("matches");
        QTest::newRow("equal") << u"sv_pure"_s << u"sv_pure"_s << true;
        QTest::newRow("any case") << u"SV_maprotation"_s << u"sv_mapRotation"_s << true;
        QTest::newRow("no longer one") << u"sv_mapRotation"_s << u"sv_mapRotationCurrent"_s << false;
        QTest::newRow("no shorter one") << u"sv_pure1"_s << u"sv_pure"_s << false;
        QTest::newRow("star at the end") << u"sv_*"_s << u"sv_pure"_s << true;
        QTest::newRow("star for nothing") << u"sv_*"_s << u"sv_"_s << true;
        QTest::newRow("star elsewhere") << u"cl_free*"_s << u"cl_voice"_s << false;
        QTest::newRow("star in front") << u"*.cfg"_s << u"a.cfg.cfg"_s << true;
        QTest::newRow("two stars") << u"*ma*ra*"_s << u"sv_maxRate"_s << true;
        QTest::newRow("star goes back") << u"a*bc"_s << u"abbbc"_s << true;
        QTest::newRow("question mark") << u"sv_max?ate"_s << u"sv_maxRate"_s << true;
        QTest::newRow("question mark needs one") << u"sv_pure?"_s << u"sv_pure"_s << false;
        QTest::newRow("nothing") << u""_s << u""_s << true;
        QTest::newRow("nothing is not something") << u""_s << u"a"_s << false;
        QTest::newRow("stars only") << u"***"_s << u""_s << true;
    }
    void aWildcardDescribesWholeNames()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, name);
        QFETCH(bool, matches);
        QCOMPARE(matchesWildcard(pattern, name), matches);
    }
};

GUILESS_TEST(PracticeDvarsTest)
#include "tst_practice_dvars.moc"
