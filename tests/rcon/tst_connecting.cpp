// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "bench.h"
#include "game_replies.h"
#include "practice/practice_server.h"
#include "rcon/connecting.h"
#include "rcon/server_link.h"
#include "rcon/services.h"
#include "settings/ini_file.h"
#include "window_test.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Connecting with all that it needs, and without the window.
struct Desk final {
    Desk()
    {
        for (PracticeServer *each : {&server, &other}) {
            listening = each->listen() && listening;
            answerBriefly(*each);
        }
        QObject::connect(&connecting, &Connecting::connected, [this] { steps.append(u"connected"_s); });
        QObject::connect(&connecting, &Connecting::rotationread, [this](const QString &listing) {
            steps.append(u"rotation "_s + listing.section(u'"', 1, 1));
        });
        QObject::connect(&connecting, &Connecting::cfgfilesread,
                         [this](const QString &listing) { steps.append(u"%1 files"_s.arg(listing.count(u".cfg"_s))); });
        QObject::connect(&connecting, &Connecting::surveyed, [this] { steps.append(u"surveyed"_s); });
        QObject::connect(&connecting, &Connecting::disconnected, [this] { steps.append(u"disconnected"_s); });
        bench.session.options.clearmessnew = false;
        bench.session.options.clearrconnew = false;
        bench.fields.set(u"127.0.0.1"_s, QString::number(server.port()), u"practice"_s);
    }

    [[nodiscard]] QStringList messages() const
    {
        QStringList lines;
        for (int row = 0; row < bench.lstmessages.count(); ++row)
            lines.append(bench.lstmessages.item(row)->text().section(u' ', 2));
        return lines;
    }

    PracticeServer server;
    PracticeServer other;
    bool listening = true;
    Bench bench;
    QTemporaryDir folder;
    IniFile ini{folder.filePath(u"molvark.ini"_s)};
    ServerLink link{bench.session.rconcollect, bench.session.rconbusy, bench.udpclient, bench.exchange};
    Services services{bench.session, bench.fields, link, bench.output, bench.prompts, ini, bench.clock};
    Connecting connecting{services};
    QStringList steps;
};

const QStringList allSteps{u"connected"_s, u"rotation gametype sd map mp_decoy"_s, u"2 files"_s, u"surveyed"_s};
const QList<QByteArray> allCommands{"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"};

} // namespace

/// The sequence of connecting, by itself.
class ConnectingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void eachStepIsSignalled()
    {
        Desk desk;
        QVERIFY(desk.listening);
        desk.connecting.toggle();
        QCOMPARE(desk.steps, allSteps);
        QCOMPARE(desk.server.commands(), allCommands);
        QCOMPARE(desk.messages(), QStringList{u"Connected to server "_s + desk.bench.fields.address()});

        desk.steps.clear();
        desk.connecting.toggle();
        QCOMPARE(desk.steps, QStringList{u"disconnected"_s});
        QCOMPARE(desk.bench.udpclient.State(), UDPClient::Closed);
    }

    void theFieldsAreTrimmedAndThoseItWasSentWithArePutBack()
    {
        Desk desk;
        const QString port = desk.bench.fields.port();
        desk.bench.fields.set(u"  127.0.0.1 "_s, u' ' + port, u" practice  "_s);
        atRequest(desk.server, "status", [&] {
            desk.bench.fields.setServer(u"elsewhere"_s);
            desk.bench.fields.setPort(u"1"_s);
        });
        desk.connecting.toggle();
        QCOMPARE(desk.bench.fields.address(), u"127.0.0.1:"_s + port);
        QCOMPARE(desk.bench.fields.password(), u"practice"_s);
    }

    void aPasswordThatIsRefusedConnectsNothing()
    {
        Desk desk;
        desk.server.answerAsUsual("status");
        desk.bench.fields.setPassword(u"guess"_s);
        desk.connecting.toggle();
        const Box refused{u"No connection"_s, u"Invalid Rcon password, no connection established"_s,
                          BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(desk.bench.prompts.takeBoxes(), QList<Box>{refused});
        QCOMPARE(desk.steps, QStringList());
        QCOMPARE(desk.bench.udpclient.State(), UDPClient::Closed);
    }

    void anEmptyFieldIsRefused()
    {
        Desk desk;
        desk.bench.fields.setPassword(u"  "_s);
        desk.connecting.toggle();
        QCOMPARE(desk.bench.prompts.takeBoxes().size(), 1);
        QCOMPARE(desk.server.requests().size(), 0);
        QCOMPARE(desk.steps, QStringList());
    }

    void startUpShowsNeitherNotesNorTheStatus()
    {
        Desk desk;
        bool collects = true;
        QObject::connect(&desk.server, &PracticeServer::requested, this,
                         [&] { collects = collects && desk.bench.session.rconcollect; });
        desk.connecting.connectAtStart();
        QCOMPARE(desk.steps, allSteps);
        QVERIFY(collects);
        QVERIFY(!desk.bench.session.rconcollect);
        QCOMPARE(desk.bench.pane(), u"Server running game mode [sd] on map [mp_carentan]"_s);
    }

    void whoGoesToAnotherServerMeanwhileHasDoneWithTheFirst_data()
    {
        QTest::addColumn<QByteArray>("command");
        for (const QByteArray &command : allCommands.sliced(1))
            QTest::newRow(command.constData()) << command;
    }

    void whoGoesToAnotherServerMeanwhileHasDoneWithTheFirst()
    {
        QFETCH(QByteArray, command);
        Desk desk;
        atRequest(desk.server, command, [&] {
            QTimer::singleShot(0, &desk.server, [&] {
                desk.connecting.toggle();
                desk.steps.clear();
                desk.bench.fields.setPort(QString::number(desk.other.port()));
                desk.connecting.toggle();
            });
        });
        desk.connecting.toggle();
        QCOMPARE(desk.steps, allSteps);
        QCOMPARE(desk.other.commands(), allCommands);
        QCOMPARE(desk.server.commands(), allCommands.first(allCommands.indexOf(command) + 1));
        QVERIFY(!desk.bench.session.rconcollect);
    }
};

WINDOW_TEST(ConnectingTest)
#include "tst_connecting.moc"
