// SPDX-License-Identifier: MIT
#include "book/command_watch.h"
#include "book/unban_command.h"
#include "test_class.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Which verdict belongs to which command, and how a ban is lifted by a name.
class CommandWatchTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        watch = {};
        seen.clear();
    }

    void theVerdictIsThatOfTheCommandThatWentOut()
    {
        expect(u"clientkick 5"_s, 0s);
        watch.sent(1, u"status"_s, 1s);
        watch.judged({1, u"answered"_s, true});
        QCOMPARE(seen, QStringList());
        watch.sent(2, u"clientkick 5"_s, 1s);
        watch.sent(2, u"clientkick 5"_s, 4s); // another copy
        watch.judged({2, u"silent"_s, false});
        watch.judged({2, u"late"_s, true});
        QCOMPARE(seen, QStringList({u"sent"_s, u"silent"_s, u"late"_s}));
    }

    void theSameCommandLaterIsAnother()
    {
        expect(u"clientkick 5"_s, 0s);
        watch.sent(1, u"clientkick 5"_s, 0s);
        watch.sent(2, u"clientkick 5"_s, 1s);
        watch.judged({2, u"answered"_s, true});
        QCOMPARE(seen, QStringList{u"sent"_s});
    }

    void oneThatNeverWentOutIsForgotten()
    {
        expect(u"clientkick 5"_s, 0s);
        watch.sent(1, u"clientkick 5"_s, 4s); // typed by hand
        watch.judged({1, u"answered"_s, true});
        QCOMPARE(seen, QStringList());
    }

    void oneThatWasGivenUpIsForgottenAtOnce()
    {
        expect(u"clientkick 5"_s, 0s);
        watch.giveUp(u"clientkick 5"_s);
        watch.sent(1, u"clientkick 5"_s, 0s); // typed by hand
        watch.judged({1, u"answered"_s, true});
        QCOMPARE(seen, QStringList());
        expect(u"clientkick 5"_s, 1s);
        watch.sent(2, u"clientkick 5"_s, 1s);
        watch.giveUp(u"clientkick 5"_s); // what has gone out is followed
        watch.judged({2, u"answered"_s, true});
        QCOMPARE(seen, QStringList({u"sent"_s, u"answered"_s}));
    }

    void aVerdictCanComeBeforeTheNewsOfTheSending()
    {
        expect(u"clientkick 5"_s, 0s);
        watch.judged({1, u"unreadable"_s, false});
        watch.sent(1, u"clientkick 5"_s, 0s);
        QCOMPARE(seen, QStringList({u"sent"_s, u"unreadable"_s}));
    }

    void twoMayListen()
    {
        expect(u"clientkick 5"_s, 0s);
        expect(u"clientkick 5"_s, 0s);
        watch.sent(1, u"clientkick 5"_s, 0s);
        watch.judged({1, u"answered"_s, true});
        QCOMPARE(seen, QStringList({u"sent"_s, u"sent"_s, u"answered"_s, u"answered"_s}));
    }

    void aNameIsPutIntoACommand_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("command");
        QTest::newRow("plain") << u"Ben"_s << u"unbanUser Ben"_s;
        QTest::newRow("what looks like a colour") << u"^1Ben"_s << u"unbanUser ^1Ben"_s;
        QTest::newRow("blank") << u"Bad Ben"_s << u"unbanUser \"Bad Ben\""_s;
        QTest::newRow("what would be a second command") << u"x;quit"_s << u"unbanUser \"x;quit\""_s;
        QTest::newRow("what would be a comment") << u"x//y"_s << u"unbanUser \"x//y\""_s;
        QTest::newRow("quotation mark") << u"B\"en"_s << QString();
        QTest::newRow("no name") << QString() << QString();
        QTest::newRow("line break") << u"x\nquit"_s << u"unbanUser xquit"_s;
    }

    void aNameIsPutIntoACommand()
    {
        QFETCH(QString, name);
        QFETCH(QString, command);
        QCOMPARE(unbanCommand(name), command);
    }

private:
    void expect(const QString &command, CommandWatch::Time now)
    {
        watch.expect(
            command, now,
            {[this] { seen.append(u"sent"_s); }, [this](const CommandVerdict &verdict) { seen.append(verdict.word); }});
    }

    CommandWatch watch;
    QStringList seen;
};

GUILESS_TEST(CommandWatchTest)
#include "tst_command_watch.moc"
