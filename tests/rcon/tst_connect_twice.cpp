// SPDX-License-Identifier: MIT
#include "two_servers.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

const QList<QByteArray> allCommands{"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"};
const Box missingField{u"Error..."_s, u"Please provide all fields, Server, Port and password"_s, BoxIcon::Exclamation,
                       BoxButtons::Ok};

/// A program that is not connected yet, with two servers; the first is silent.
struct Unconnected {
    Unconnected()
    {
        for (PracticeServer *server : {&first, &second}) {
            listening = server->listen() && listening;
            answerBriefly(*server);
        }
        first.setSilent(true);
        program.start();
        fill(first);
    }

    void fill(const PracticeServer &server, const QString &password = u"practice"_s) const
    {
        program.setText(u"comserver"_s, u"127.0.0.1"_s);
        program.setText(u"comport"_s, QString::number(server.port()));
        program.setText(u"txtPWD"_s, password);
    }
    /// Presses "Connect", and does `meanwhile` while the first server is asked whether the password is right.
    template <typename Meanwhile>
    void connectWith(const Meanwhile &meanwhile)
    {
        atRequest(first, "status", [this, meanwhile] { QTimer::singleShot(0, &first, meanwhile); });
        program.click(u"cmdconnect"_s);
    }
    [[nodiscard]] bool isConnected() const { return program.text(u"cmdconnect"_s) == u"Disconnect"; }
    [[nodiscard]] QStringList fields() const
    {
        return {program.text(u"comserver"_s), program.text(u"comport"_s), program.text(u"txtPWD"_s)};
    }

    PracticeServer first;
    PracticeServer second;
    bool listening = true;
    Program program{keepsOutput};
};

} // namespace

/// What a second click on "Connect" does while the first attempt goes on.
class ConnectTwiceTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void withTheSameFieldsItDoesNothing()
    {
        Unconnected at;
        QVERIFY(at.listening);
        at.connectWith([&] {
            at.program.click(u"cmdconnect"_s);
            at.program.setText(u"comserver"_s, u"  127.0.0.1 "_s); // blanks at the ends make no other server
            at.program.click(u"cmdconnect"_s);
            at.first.setSilent(false);
        });
        QVERIFY(at.isConnected());
        QCOMPARE(at.first.commands(), QList<QByteArray>{"status"} + allCommands);
        QCOMPARE(at.program.messages().size(), 1);
        QVERIFY(at.program.prompts.takeBoxes().isEmpty());
    }

    void withAnEmptyFieldItIsRefusedAndTheAttemptGoesOn()
    {
        Unconnected at;
        at.connectWith([&] {
            at.program.setText(u"comport"_s, u""_s);
            at.program.click(u"cmdconnect"_s);
            at.first.setSilent(false);
        });
        QCOMPARE(at.program.prompts.takeBoxes(), QList<Box>{missingField});
        QVERIFY(at.isConnected());
        QCOMPARE(at.fields().at(1), QString::number(at.first.port()));
    }

    void withAnotherServerItGivesTheFirstAttemptUp()
    {
        Unconnected at;
        at.connectWith([&] {
            at.fill(at.second);
            at.program.click(u"cmdconnect"_s);
        });
        QVERIFY(at.isConnected());
        QVERIFY(at.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(at.first.commands(), QList<QByteArray>{"status"});
        QCOMPARE(at.second.commands(), allCommands);
        QCOMPARE(at.program.messages(), QStringList{u"Connected to server 127.0.0.1:%1"_s.arg(at.second.port())});
        QVERIFY(!at.program.progress()->isVisible());
        QVERIFY(at.program.showsRepliesOf(at.second));
    }

    // Each server gets only the password that was typed for it.
    void theWrongServerNeverGetsTheNewPassword()
    {
        Unconnected at;
        at.connectWith([&] {
            at.fill(at.second, u"other"_s);
            at.program.click(u"cmdconnect"_s);
        });
        QCOMPARE(at.program.prompts.takeBoxes().size(), 1); // that server refuses it
        QVERIFY(!at.second.requests().isEmpty());
        for (const QByteArray &request : at.first.requests())
            QVERIFY(!request.contains("other"));
        for (const QByteArray &request : at.second.requests())
            QVERIFY(!request.contains("practice"));
    }

    void withAnotherPasswordItBeginsAnew()
    {
        Unconnected at;
        at.program.setText(u"txtPWD"_s, u"guess"_s);
        at.connectWith([&] {
            at.first.setSilent(false);
            at.program.setText(u"txtPWD"_s, u"practice"_s);
            at.program.click(u"cmdconnect"_s);
        });
        QVERIFY(at.isConnected());
        QVERIFY(at.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(at.first.commands(), QList<QByteArray>{"status"} + allCommands);
        QCOMPARE(at.fields().at(2), u"practice"_s);
    }

    void aPortThatIsNoNumberGivesTheFirstAttemptUpToo()
    {
        Unconnected at;
        at.connectWith([&] {
            at.program.setText(u"comport"_s, u"abc"_s);
            at.program.click(u"cmdconnect"_s);
            at.first.setSilent(false);
        });
        const Box mismatch{u"Molvark"_s, u"Error code 13 Descr: Type mismatch"_s, BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(at.program.prompts.takeBoxes(), QList<Box>{mismatch});
        QVERIFY(!at.isConnected());
        QCOMPARE(at.first.commands(), QList<QByteArray>{"status"});
        at.fill(at.first);
        at.program.click(u"cmdconnect"_s);
        QVERIFY(at.isConnected());
    }

    void aNameThatIsLookedUpIsGivenUpToo()
    {
        Unconnected at;
        at.program.setText(u"comserver"_s, u"nobody.invalid"_s);
        QTimer::singleShot(0, &at.first, [&] {
            at.fill(at.second);
            at.program.click(u"cmdconnect"_s);
        });
        at.program.click(u"cmdconnect"_s);
        QVERIFY(at.isConnected());
        QVERIFY(at.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(at.second.commands(), allCommands);
        QVERIFY(at.first.commands().isEmpty());
        QCOMPARE(at.fields().at(1), QString::number(at.second.port()));
    }

    // "Save current server Info" then saves what is connected.
    void theFieldsAreThoseThatTheAttemptLastSentWith()
    {
        Unconnected at;
        at.program.setText(u"txtPWD"_s, u"guess"_s);
        at.connectWith([&] {
            at.program.setText(u"txtPWD"_s, u"practice"_s); // goes out with the next copy
            atRequest(at.first, "status", [&] {
                at.first.setSilent(false);
                at.fill(at.second, u"too late"_s);
            });
        });
        QVERIFY(at.isConnected());
        QCOMPARE(at.fields(), QStringList({u"127.0.0.1"_s, QString::number(at.first.port()), u"practice"_s}));
        at.program.trigger(u"Saveserver"_s);
        QCOMPARE(at.program.rows(u"lstrcon"_s), QStringList{u"practice"_s});
        QCOMPARE(at.program.rows(u"lstservers"_s), QStringList{u"127.0.0.1:%1"_s.arg(at.first.port())});
    }

    // That wait never ends; the next day one connects all the same.
    void anAttemptStuckAtMidnightDoesNotKeepTheNextDaysOut()
    {
        Unconnected at;
        at.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(23, 59, 59, 800)));
        bool wasConnected = false;
        asSoonAs(
            &at.first, [&] { return at.program.clock.now() > QDateTime(QDate(2006, 3, 6), QTime(0, 0, 30)); },
            [&] {
                at.first.setSilent(false);
                at.program.click(u"cmdconnect"_s);
                wasConnected = at.isConnected();
                at.program.window.close();
            });
        at.program.click(u"cmdconnect"_s);
        QVERIFY(wasConnected);
        QVERIFY(at.program.prompts.takeBoxes().isEmpty());
    }
};

WINDOW_TEST(ConnectTwiceTest)
#include "tst_connect_twice.moc"
