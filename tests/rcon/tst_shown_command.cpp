// SPDX-License-Identifier: MIT
#include "rcon/shown_command.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

class ShownCommandTest final : public QObject {
    Q_OBJECT

private slots:
    void noPasswordIsShown_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("hidden");
        QTest::addColumn<QString>("starred");
        const auto row = [](const char *command, const char *hidden, const char *starred) {
            QTest::newRow(command) << QString::fromLatin1(command) << QString::fromLatin1(hidden)
                                   << QString::fromLatin1(starred);
        };
        row("status", "status", "status");
        row("g_password letmein", "g_password", "g_password ***");
        row("g_password \"let me in\"", "g_password", "g_password ***");
        row("set g_password letmein", "set g_password", "set g_password ***");
        row("SETA Rcon_PassWord x", "SETA Rcon_PassWord", "SETA Rcon_PassWord ***");
        row("sets  sv_privatePassword  a b", "sets  sv_privatePassword", "sets  sv_privatePassword ***");
        row("set \"g_password\" x", "set \"g_password\"", "set \"g_password\" ***");
        row("g_password", "g_password", "g_password");
        row("g_password \"\"", "g_password", "g_password ***");
        row("set sv_hostname password", "set sv_hostname password", "set sv_hostname password");
        row("say hello; g_password x;status", "say hello;g_password;status", "say hello;g_password ***;status");
        row("say \"a;g_password x\"", "say \"a;g_password x\"", "say \"a;g_password x\"");
        row("say I know s3cret", "say I know ***", "say I know ***");
        row("/set g_password letmein", "/set g_password", "/set g_password ***");
        row("\\g_password letmein", "\\g_password", "\\g_password ***");
        row("setu g_password letmein", "setu g_password", "setu g_password ***");
        row("", "", "");
    }

    void noPasswordIsShown()
    {
        QFETCH(QString, command);
        QTEST(shownCommand(command, u"s3cret"_s, {}), "hidden");
        QTEST(shownCommand(command, u"s3cret"_s, u"***"_s), "starred");
        QCOMPARE(shownCommand(u"say ab;cd"_s, u"ab;cd"_s, {}), u"say ***"_s);
        QVERIFY(!shownCommand(command, {}, {}).contains(u"letmein"));
    }

    void anAsteriskStandsForEachCharacter_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("starred");
        const auto row = [](const char *command, const char *starred) {
            QTest::newRow(command) << QString::fromLatin1(command) << QString::fromLatin1(starred);
        };
        row("status", "status");
        row("g_password letmein", "g_password *******");
        row("g_password \"let me in\"  ", "g_password \"*********\"  ");
        row("g_password\"letmein\"", "g_password\"*******\"");
        row("set\"g_password\"letmein", "set\"g_password\"*******");
        row("  SETA  Rcon_PassWord\tx y", "  SETA  Rcon_PassWord\t***");
        row("sets sv_privatePassword a;b", "sets sv_privatePassword ***");
        row("say hello; g_password x;status", "say hello; g_password *;status");
        row("set g_password one\nset g_password two", "set g_password ***\nset g_password ***");
        row("g_password", "g_password");
        row("setx g_password x", "setx g_password x");
        row("/* */ g_password hunter2", "/* */ g_password *******");
        row("/*a*//*b*/set/**/g_password/*c*/hunter2", "/*a*//*b*/set/**/g_password************");
        row("/* a; */ g_password hunter2", "/* a; */ g_password *******");
        row("/* g_password hunter2", "/* g_password *******");
        row("say a /* b", "say a /* b");
        row("set sv_hostname s3cret", "set sv_hostname ******");
        row("say my s3cret, s3cret!", "say my ******, ******!");
        row("", "");
    }

    void anAsteriskStandsForEachCharacter()
    {
        QFETCH(QString, command);
        QTEST(starredCommand(command, u"s3cret"_s), "starred");
    }

    void aLineThatHoldsAPasswordIsFound_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("holds");
        const auto row = [](const char *command, bool holds) {
            QTest::newRow(command) << QString::fromLatin1(command) << holds;
        };
        row("g_password x", true);
        row("set sv_privatePassword \"x\"", true);
        row("RCON_PASSWORD", true);
        row("seta g_password\"x\"", true);
        row("exec a;g_password x", true);
        row("vstr g_password;status", true);
        row("say my s3cret", true);
        row("say no passwords here", false);
        row("set g_passwords x", false);
        row("status", false);
        row("", false);
    }

    void aLineThatHoldsAPasswordIsFound()
    {
        QFETCH(QString, command);
        QTEST(holdsPassword(command, u"s3cret"_s), "holds");
        QCOMPARE(holdsPassword(u"say my s3cret"_s, {}), false);
    }

    void aCommentHidesNoPassword()
    {
        for (const QString &comm : {u"/* */ g_password hunter2"_s, u"set g_password /* a b */ hunter2"_s,
                                    u"set/**/g_password/**/hunter2"_s, u"/* ; */ g_password hunter2"_s})
            QVERIFY2(passwordsSetBy(comm).contains(u"hunter2"), qPrintable(comm));
    }

    void thePasswordCanBePartOfTheWord()
    {
        QCOMPARE(starredCommand(u"g_password abc"_s, u"password"_s), u"g_******** ***"_s);
        QCOMPARE(starredCommand(u"status"_s, {}), u"status"_s);
    }
};

GUILESS_TEST(ShownCommandTest)
#include "tst_shown_command.moc"
