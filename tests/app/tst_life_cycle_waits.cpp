// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "base/dialog_prompts.h"
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// Stands still, so that no wait ends by itself.
class StoppedClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return {QDate(2006, 3, 5), QTime(12, 0)}; }
};

/// The program as a person has it, with real boxes, which connects at start and runs until its window is closed.
class Run final {
public:
    Run(const PracticeServer &server, const Clock &clock, const QByteArray &password = "practice")
        : before(QDir::currentPath()), parts(prompts, clock, folder.filePath(u"molvark.ini"_s))
    {
        QDir::setCurrent(folder.path());
        QFile settings(u"molvark.ini"_s);
        if (!settings.open(QIODevice::WriteOnly))
            failTest(u"the settings file cannot be prepared"_s);
        settings.write("[servers]\r\nserver1=one\r\n[options]\r\nautoconnect=1\r\nautoconnectserv=127.0.0.1\r\n"
                       "autoconnectport=" +
                       QByteArray::number(server.port()) + "\r\nautoconnectrcon=" + password + "\r\n");
        static_cast<Application *>(qApp)->setPrompts(&prompts);
        QObject::connect(&parts.window, &MainWindow::closed, qApp, &QApplication::quit);
    }

    ~Run()
    {
        static_cast<Application *>(qApp)->setPrompts(nullptr);
        QDir::setCurrent(before);
    }
    Q_DISABLE_COPY_MOVE(Run)

    void go()
    {
        parts.window.show();
        QTimer::singleShot(0, &parts.window, &MainWindow::Form_Load);
        QApplication::exec();
    }

    /// As the window's own button does, from the event loop.
    void closeSoon()
    {
        QTimer::singleShot(0, &parts.window, [this] {
            QFile::remove(u"molvark.ini"_s); // what is found there afterwards was written on closing
            sinceClosing.start();
            parts.window.close();
        });
    }

    void verifyEnded()
    {
        QVERIFY(sinceClosing.isValid());
        QVERIFY2(sinceClosing.elapsed() < 1000, "it took more than a second to end");
        QVERIFY(!parts.window.isVisible());
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(parts.ini.read(u"servers"_s, u"server1"_s, 200), u"one"_s);
        QVERIFY(QFile::exists(u"molvark_rcon_050306.log"_s));
        QVERIFY(QFile::exists(u"molvar_messages_050306.log"_s));
    }

    template <typename Object>
    [[nodiscard]] Object *find(const QString &name) const
    {
        return parts.window.findChild<Object *>(name);
    }

private:
    QTemporaryDir folder;
    QString before;
    DialogPrompts prompts;
    Composition parts;
    QElapsedTimer sinceClosing;
};

/// What the server has been sent; a last word sent behind it shows that nothing is on its way.
QList<QByteArray> allCommands(PracticeServer &server)
{
    const QByteArray last = "nothing more";
    QUdpSocket socket;
    socket.writeDatagram(QByteArray(4, '\xFF') + "rcon x " + last, QHostAddress::LocalHost, server.port());
    const auto hasCome = [&] { return !server.requests().isEmpty() && server.commands().constLast() == last; };
    if (!QTest::qWaitFor(hasCome))
        failTest(u"the server hears nothing"_s);
    return server.commands().first(server.commands().size() - 1);
}

} // namespace

class LifeCycleWaitsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void closingEndsAWait()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        const StoppedClock clock;
        Run run(server, clock);
        atRequest(server, "status", [&] { run.closeSoon(); });
        run.go();
        run.verifyEnded();
        QCOMPARE(allCommands(server), QList<QByteArray>{"status"});
    }

    void closingEndsAWaitInsideAWait()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        const StoppedClock clock;
        Run run(server, clock);
        QStringList ended;
        const auto click = [&](const QString &button) {
            QTimer::singleShot(0, &server, [&, button] {
                run.find<QPushButton>(button)->click();
                ended.append(button);
            });
        };
        atRequest(server, "status", [&] { click(u"cmdstatus"_s); });
        atRequest(server, "Status", [&] { click(u"cmsserverinfo"_s); });
        atRequest(server, "serverinfo", [&] { run.closeSoon(); });
        run.go();
        run.verifyEnded();
        QCOMPARE(ended, QStringList({u"cmsserverinfo"_s, u"cmdstatus"_s}));
        QCOMPARE(allCommands(server), QList<QByteArray>({"status", "Status", "serverinfo"}));
    }

    void closingEndsAWaitUnderABox()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        const StoppedClock clock;
        Run run(server, clock);
        atRequest(server, "status",
                  [&] { QTimer::singleShot(0, &server, [&] { run.find<QAction>(u"clearrcon"_s)->trigger(); }); });
        asSoonAs(
            &server, [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; },
            [&] { run.closeSoon(); });
        run.go();
        run.verifyEnded();
        QCOMPARE(allCommands(server), QList<QByteArray>{"status"});
    }

    void closingClosesTheBoxThatConnectingShows()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        const FastClock clock;
        Run run(server, clock, "guess");
        QString title;
        asSoonAs(
            &server, [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; },
            [&] {
                title = QApplication::activeModalWidget()->windowTitle();
                run.closeSoon();
            });
        run.go();
        run.verifyEnded();
        QCOMPARE(title, u"No connection"_s);
        QCOMPARE(allCommands(server), QList<QByteArray>{"status"});
    }

    void closingAtAnyStepOfConnectingSendsNothingMore_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<bool>("answered");
        for (const QByteArray command : {"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"}) {
            QTest::addRow("%s", command.constData()) << command << true;
            QTest::addRow("%s without an answer", command.constData()) << command << false;
        }
    }

    void closingAtAnyStepOfConnectingSendsNothingMore()
    {
        QFETCH(QByteArray, command);
        QFETCH(bool, answered);
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        if (!answered)
            server.answerRaw(command, {});
        const FastClock clock;
        Run run(server, clock);
        atRequest(server, command, [&] { run.closeSoon(); });
        run.go();
        run.verifyEnded();
        const QList<QByteArray> all{"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"};
        QCOMPARE(allCommands(server), all.first(all.indexOf(command) + 1));
    }

    void closingAProgramThatRestsEndsIt()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        const FastClock clock;
        Run run(server, clock);
        asSoonAs(
            &server,
            [&] {
                const auto *files = run.find<QWidget>(u"cmdcfgexec"_s);
                return files->isEnabled();
            },
            [&] { run.closeSoon(); });
        run.go();
        run.verifyEnded();
    }
};

WINDOW_TEST(LifeCycleWaitsTest)
#include "tst_life_cycle_waits.moc"
