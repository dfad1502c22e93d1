// SPDX-License-Identifier: MIT
#include "settings_tab.h"

using namespace Qt::StringLiterals;

/// The join password on the "Server" tab.
class ServerPagePasswordTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void setSendsThePasswordAndRestartsTheMap()
    {
        SettingsTab tab;
        tab.program.setText(u"txtservpass"_s, u"let me in"_s);
        tab.startSecond();
        tab.program.click(u"cmdservsetpass"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"g_password \"let me in\"", "map_restart"}));
        QCOMPARE(tab.messages(), QStringList{u"Server password added"_s});
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        QCOMPARE(tab.server.game().dvars().value(u"g_password"_s), u"let me in"_s);
        QCOMPARE(tab.text(u"txtservpass"_s)->text(), u"let me in"_s);
        QVERIFY2(tab.smallestGap() > 3.4, "the slot of the reply and three seconds");
        QVERIFY2(tab.smallestGap() < 5, "no more than that");
        QCOMPARE(tab.asked.at(1).messages, QStringList{u"Server password added"_s});
        QVERIFY(tab.boxes().isEmpty());
    }

    void theRestartWaitsForNoReply()
    {
        SettingsTab tab;
        tab.server.answer("map_restart", {});
        tab.program.setText(u"txtservpass"_s, u"x"_s);
        tab.program.click(u"cmdservsetpass"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"g_password \"x\"", "map_restart"}));
        QVERIFY(tab.boxes().isEmpty());
        QVERIFY2(tab.showsReplies(), "the next command waits for its reply");
    }

    void thePasswordItselfIsWaitedFor()
    {
        SettingsTab tab;
        tab.server.answer("g_password \"x\"", {});
        tab.program.setText(u"txtservpass"_s, u"x"_s);
        tab.program.click(u"cmdservsetpass"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>(5, "g_password \"x\"") + QList<QByteArray>{"map_restart"});
        QCOMPARE(tab.boxes(), QList<Box>{noResponseBox()});
        QCOMPARE(tab.messages(), QStringList{u"Server password added"_s});
    }

    void withoutAPasswordSetSendsNothing()
    {
        SettingsTab tab;
        tab.program.click(u"cmdservsetpass"_s);
        QCOMPARE(tab.boxes(),
                 (QList<Box>{{u"No password given"_s, u"Use the Remove button to clear the server password"_s,
                              BoxIcon::Information, BoxButtons::Ok}}));
        QCOMPARE(tab.commands(), QList<QByteArray>());
        QCOMPARE(tab.messages(), QStringList());
    }

    void blanksAreAPassword()
    {
        SettingsTab tab;
        tab.program.setText(u"txtservpass"_s, u" "_s);
        tab.program.click(u"cmdservsetpass"_s);
        QCOMPARE(tab.commands(), (QList<QByteArray>{"g_password \" \"", "map_restart"}));
    }

    void removeAlwaysSendsTheEmptyPassword_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("nothing typed") << u""_s;
        QTest::newRow("a password typed") << u"secret"_s;
    }

    void removeAlwaysSendsTheEmptyPassword()
    {
        QFETCH(QString, typed);
        SettingsTab tab;
        tab.server.game().dvars().set(u"g_password"_s, u"secret"_s);
        tab.program.setText(u"txtservpass"_s, typed);
        tab.program.click(u"cmdservrempass"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{"g_password \"\""});
        QCOMPARE(tab.messages(), QStringList{u"Server password Removed"_s});
        QCOMPARE(tab.echoed(), QList<QByteArray>());
        QCOMPARE(tab.server.game().dvars().value(u"g_password"_s), u""_s);
        QVERIFY(tab.boxes().isEmpty());
    }

    void theRemovalIsWaitedFor()
    {
        SettingsTab tab;
        tab.server.answer("g_password \"\"", {});
        tab.program.click(u"cmdservrempass"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>(5, "g_password \"\""));
        QCOMPARE(tab.boxes(), QList<Box>{noResponseBox()});
    }

    void thePasswordIsNeitherReadNorSentWithTheRest()
    {
        SettingsTab tab;
        tab.server.game().dvars().set(u"g_password"_s, u"secret"_s);
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.text(u"txtservpass"_s)->text(), u""_s);
        tab.program.setText(u"txtservpass"_s, u"other"_s);
        tab.forget();
        tab.program.click(u"cmdservsetbasics"_s);
        QCOMPARE(tab.boxes().size(), 1);
        QCOMPARE(tab.commands(), QList<QByteArray>());
    }
};

WINDOW_TEST(ServerPagePasswordTest)
#include "tst_server_page_password.moc"
