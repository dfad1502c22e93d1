// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "completion_hands.h"
#include "two_servers.h"
#include "window_test.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString file = u"molvark-words.json"_s;

/// All that learning asks, in order.
QList<QByteArray> allQuestions()
{
    QList<QByteArray> questions;
    for (char letter = 'a'; letter <= 'z'; ++letter)
        questions.append(QByteArray("dvarlist ") + letter + '*');
    return questions << "cmdlist";
}

QString itemText(const Program &program)
{
    return program.find<QAction>(u"mlearn"_s)->text().remove(u'&');
}

bool isLearning(const Program &program)
{
    return itemText(program) == u"Stop learning"_s;
}

QString progressOf(const Program &program)
{
    const auto *label = program.find<QLabel>(u"lbllearn"_s);
    return label->isVisible() ? label->text() : QString();
}

/// The next 750 milliseconds have passed.
void tick(Program &program)
{
    program.clock.set(program.clock.now().addMSecs(750));
    QMetaObject::invokeMethod(program.find<QTimer>(u"tmrlearn"_s), "timeout");
}

void tickUntilOver(Program &program)
{
    for (int ticks = 0; isLearning(program); ++ticks) {
        QVERIFY2(ticks < 500, "it never ends");
        tick(program);
    }
}

void learnAll(Program &program)
{
    program.trigger(u"mlearn"_s);
    QVERIFY(isLearning(program));
    tickUntilOver(program);
}

QStringList textsOf(const QJsonValue &array)
{
    QStringList texts;
    for (const QJsonValue &each : array.toArray())
        texts.append(each.toString());
    return texts;
}

/// What the file has of the only server in it.
QStringList keptWords(const Program &program, const QString &kind)
{
    const QJsonArray servers = QJsonDocument::fromJson(program.file(file)).object().value("servers"_L1).toArray();
    return servers.size() == 1 ? textsOf(servers.at(0).toObject().value(kind)) : QStringList{u"not one server"_s};
}

/// The names of all variables of a server, as it says itself when it is asked for all of them.
QStringList variablesOf(PracticeServer &server)
{
    QStringList names;
    for (const QString &line : server.game().execute(u"dvarlist"_s).reply.split(u'\n')) {
        if (line.contains(u'"'))
            names.append(line.section(u'"', 0, 0).mid(8).trimmed());
    }
    return names;
}

const PracticeOptions modded = [] {
    PracticeOptions options;
    options.mod = PracticeOptions::hobMod;
    options.cmdlist = true;
    return options;
}();

} // namespace

/// "Learn from this server" in the menu "Tools".
class LearningTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theItemIsForAServerThatIsConnected()
    {
        ConnectedProgram it({.connects = false});
        const auto *item = it.program.find<QAction>(u"mlearn"_s);
        QVERIFY(!item->isEnabled());
        QCOMPARE(itemText(it.program), u"Learn from this server"_s);
        it.program.connectTo(it.server);
        QVERIFY(item->isEnabled());
        it.program.click(u"cmdconnect"_s);
        QVERIFY(!item->isEnabled());
    }

    void allLettersAndThenTheCommandsAreAskedFor()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        QList<qint64> times;
        connect(&it.server, &PracticeServer::requested, this,
                [&] { times.append(it.program.clock.now().toMSecsSinceEpoch()); });
        learnAll(it.program);
        QCOMPARE(it.server.commands(), allQuestions());
        for (qsizetype question = 1; question < times.size(); ++question)
            QVERIFY2(times.at(question) - times.at(question - 1) >= 740, qPrintable(QString::number(question)));
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
        QVERIFY(keptWords(it.program, u"variables"_s).contains(u"scr_hob_trip"_s));
        QVERIFY(keptWords(it.program, u"commands"_s).contains(u"banClient"_s));
        const qsizetype count =
            keptWords(it.program, u"variables"_s).size() + keptWords(it.program, u"commands"_s).size();
        QCOMPARE(it.lines(),
                 QStringList{u"Learned %1 words from server 127.0.0.1:%2"_s.arg(count).arg(it.server.port())});
        QVERIFY(!it.program.pane().contains(u"scr_hob_trip"));
        QVERIFY(it.showsReplies());
    }

    void theConsoleLineKnowsTheWords()
    {
        QByteArray kept;
        quint16 port = 0;
        {
            ConnectedProgram it({.practice = modded, .prepare = {}});
            typeWord(it.program, u"scr_hob_tr"_s);
            QCOMPARE(offeredWords(it.program), QStringList());
            learnAll(it.program);
            typeWord(it.program, u"scr_hob_tr"_s);
            QCOMPARE(offeredWords(it.program), QStringList{u"scr_hob_trip"_s});
            QVERIFY2(describedWord(it.program).startsWith(u"Variable that this server has listed\n\"1\", read "),
                     qPrintable(describedWord(it.program)));
            kept = it.program.file(file);
            port = it.server.port();
        }
        Program later;
        later.write(file, kept);
        later.start();
        typeWord(later, u"scr_hob_tr"_s);
        QCOMPARE(offeredWords(later), QStringList()); // it is no word of any other server
        later.setText(u"comserver"_s, u"127.0.0.1"_s);
        later.setText(u"comport"_s, QString::number(port));
        typeWord(later, u"scr_hob_tr"_s);
        QCOMPARE(offeredWords(later), QStringList{u"scr_hob_trip"_s});
        QVERIFY(describedWord(later).endsWith(u"\nNot read yet"));
    }

    void theStatusBarSaysHowFarItIs()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        QCOMPARE(progressOf(it.program), QString());
        it.program.trigger(u"mlearn"_s);
        QCOMPARE(progressOf(it.program), u"Learning: dvarlist a* (1 of 27), 0 words"_s);
        while (!it.server.commands().contains("dvarlist a*"))
            tick(it.program);
        const qsizetype some = variablesOf(it.server).filter(QRegularExpression(u"^[aA]"_s)).size();
        QCOMPARE(progressOf(it.program), u"Learning: dvarlist b* (2 of 27), %1 words"_s.arg(some));
        tickUntilOver(it.program);
        QCOMPARE(progressOf(it.program), QString());
    }

    void stoppingKeepsWhatHasBeenLearned()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        while (!it.server.commands().contains("dvarlist b*"))
            tick(it.program);
        it.program.trigger(u"mlearn"_s);
        QVERIFY(!isLearning(it.program));
        QCOMPARE(progressOf(it.program), QString());
        tick(it.program);
        QCOMPARE(it.server.commands(), allQuestions().first(2));
        const QStringList kept = keptWords(it.program, u"variables"_s);
        QCOMPARE(kept, variablesOf(it.server).filter(QRegularExpression(u"^[abAB]"_s)));
        QCOMPARE(it.lines(),
                 QStringList{
                     u"Learning stopped: %1 words from server 127.0.0.1:%2"_s.arg(kept.size()).arg(it.server.port())});
    }

    void stoppingWhileAnAnswerIsAwaitedAsksNoMore()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        atRequest(it.server, "dvarlist c*", [&] { it.program.trigger(u"mlearn"_s); });
        for (int ticks = 0; ticks < 20; ++ticks)
            tick(it.program);
        QCOMPARE(it.server.commands(), allQuestions().first(3));
        learnAll(it.program); // and it can be begun again
        QCOMPARE(it.server.commands().mid(3), allQuestions());
    }

    void disconnectingEndsIt()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        atRequest(it.server, "dvarlist b*", [&] { it.program.click(u"cmdconnect"_s); });
        for (int ticks = 0; ticks < 20; ++ticks)
            tick(it.program);
        QVERIFY(!isLearning(it.program));
        QCOMPARE(it.server.commands(), allQuestions().first(2));
    }

    void goingOverToAnotherServerMixesNothing()
    {
        TwoServers it;
        it.first.answer("dvarlist a*", {"A       only_first \"1\"\n\n1 total dvars\n"});
        it.program.trigger(u"mlearn"_s);
        it.leaveAt("dvarlist b*");
        for (int ticks = 0; ticks < 20; ++ticks)
            tick(it.program);
        QVERIFY(!isLearning(it.program));
        QCOMPARE(keptWords(it.program, u"variables"_s), QStringList{u"only_first"_s});
        QVERIFY(it.program.file(file).contains("127.0.0.1:" + QByteArray::number(it.first.port())));
        QVERIFY(!it.second.commands().contains("dvarlist c*"));
    }

    void aSilentServerBringsNoBox()
    {
        ConnectedProgram it;
        it.server.setSilent(true);
        learnAll(it.program);
        QCOMPARE(it.server.commands(), QList<QByteArray>({"dvarlist a*", "dvarlist a*", "dvarlist a*", "dvarlist b*",
                                                          "dvarlist b*", "dvarlist b*"}));
        QCOMPARE(it.lines(),
                 QStringList{u"The server does not answer, learning stopped: 0 words from server 127.0.0.1:%1, "
                             "2 of 27 questions without a whole answer"_s.arg(it.server.port())});
        QVERIFY(it.program.file(file).isEmpty());
    }

    void aRefusedPasswordEndsIt_data()
    {
        QTest::addColumn<PracticeOptions>("practice");
        QTest::newRow("Bad rconpassword.") << PracticeOptions();
        QTest::newRow("Invalid password.") << PracticeOptions::cod2();
    }
    void aRefusedPasswordEndsIt()
    {
        QFETCH(PracticeOptions, practice);
        ConnectedProgram it({.practice = practice});
        it.server.setPassword(u"another"_s);
        learnAll(it.program);
        QCOMPARE(it.server.commands().size(), 1);
        QVERIFY(it.lines().value(0).startsWith(u"The server refuses the password, learning stopped: 0 words"));
    }

    void whatComesTornIsAskedForAgain()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.server.answer("dvarlist q*", {"A       q_one \"1\"\n"}); // its end is lost each time
        learnAll(it.program);
        QCOMPARE(it.server.commands().count("dvarlist q*"), 3);
        QVERIFY(keptWords(it.program, u"variables"_s).contains(u"q_one"_s));
        QVERIFY2(it.lines().constLast().endsWith(u", 1 of 27 questions without a whole answer"),
                 qPrintable(it.lines().constLast()));
    }

    void aWholeListingReplacesTheOneBeforeAndATornOneAddsToIt()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.server.answer("dvarlist q*", {"A       q_one \"1\"\n\n1 total dvars\n"});
        learnAll(it.program);
        it.server.answer("dvarlist q*", {"A       q_two \"1\"\n"});
        learnAll(it.program);
        QStringList kept = keptWords(it.program, u"variables"_s);
        QVERIFY(kept.contains(u"q_one"_s) && kept.contains(u"q_two"_s));
        it.server.answer("dvarlist q*", {"A       q_two \"1\"\n\n1 total dvars\n"});
        learnAll(it.program);
        kept = keptWords(it.program, u"variables"_s);
        QVERIFY(!kept.contains(u"q_one"_s) && kept.contains(u"q_two"_s));
    }

    void aServerWithoutCmdlistIsLearnedAllTheSame()
    {
        ConnectedProgram it({.prepare = {}});
        learnAll(it.program);
        QCOMPARE(it.server.commands(), allQuestions());
        QCOMPARE(keptWords(it.program, u"commands"_s), QStringList());
        QVERIFY(it.lines().constLast().startsWith(u"Learned "));
    }

    void aServerThatLosesCharactersTeachesNoFalseWords()
    {
        ConnectedProgram it({.practice = PracticeOptions::cod2(), .prepare = {}});
        learnAll(it.program);
        const QStringList real = variablesOf(it.server);
        const QStringList kept = keptWords(it.program, u"variables"_s);
        QVERIFY(kept.size() > real.size() * 9 / 10);
        for (const QString &name : kept)
            QVERIFY2(real.contains(name), qPrintable(name));
        QVERIFY(keptWords(it.program, u"commands"_s).contains(u"unbanUser"_s));
    }

    void whileAPageIsReadNothingIsAsked()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}, .tab = 0});
        it.program.trigger(u"mlearn"_s);
        QStringList told;
        const auto tickInTheWait = [&] {
            tick(it.program);
            told.append(progressOf(it.program));
        };
        connect(&it.server, &PracticeServer::requested, this, [&] {
            // In the page's waits, also in those in which no answer is awaited any more.
            QTimer::singleShot(0, &it.server, tickInTheWait);
        });
        it.program.click(u"cmdservpop"_s);
        disconnect(&it.server, nullptr, this, nullptr);
        QVERIFY(told.size() > 1);
        QCOMPARE(told.count(u"Learning: waiting for its turn (1 of 27), 0 words"_s), told.size());
        QVERIFY(!it.server.commands().contains("dvarlist a*"));
        QCOMPARE(it.program.text(u"txtservername"_s), u"CoD2Host"_s);
        tickUntilOver(it.program);
        QCOMPARE(it.server.commands().last(27), allQuestions());
        QVERIFY(it.lines().constLast().startsWith(u"Learned "));
    }

    void aListOfMapsThatFailedHoldsNothingUp()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.server.answer("dir maps/mp d3dbsp", {"Directory of"});
        it.program.click(u"cmdpopmaps"_s);
        QCOMPARE(it.program.prompts.takeBoxes().size(), 1);
        QVERIFY(it.program.session.rconbusy); // the page leaves the two timers held off
        learnAll(it.program);
        QCOMPARE(it.server.commands().last(27), allQuestions());
    }

    void aListOfPlayersEveryFiveSecondsLeavesTimeForIt()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        for (int ticks = 1; isLearning(it.program); ++ticks) {
            QVERIFY2(ticks < 500, "it never ends");
            tick(it.program);
            if (ticks % 5 == 0) // a list takes the rest of the five seconds
                QMetaObject::invokeMethod(it.program.find<QTimer>(u"tmrplayer"_s), "timeout");
        }
        QVERIFY(it.server.commands().count("status") > 3);
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
    }

    void theAnswerToAConsoleLineBetweenTwoQuestionsIsShown()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        while (!it.server.commands().contains("dvarlist c*"))
            tick(it.program);
        const qsizetype before = it.server.commands().size();
        sendLine(it.program, u"sv_fps"_s);
        tick(it.program); // less than a second and a half later
        QTRY_VERIFY(it.program.pane().contains(u"\"sv_fps\" is:"));
        QCOMPARE(it.server.commands().size(), before + 1);
        tickUntilOver(it.program);
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
    }

    void aPageThatIsReadMeanwhileGoesFirst()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}, .tab = 0});
        it.program.trigger(u"mlearn"_s);
        atRequest(it.server, "dvarlist f*",
                  [&] { QTimer::singleShot(0, &it.server, [&] { it.program.click(u"cmdservpop"_s); }); });
        tickUntilOver(it.program);
        QCOMPARE(it.program.text(u"txtservername"_s), u"CoD2Host"_s);
        const QList<QByteArray> commands = it.server.commands();
        QCOMPARE(commands.count("dvarlist f*"), 2); // the page has taken the first answer away
        QVERIFY(commands.lastIndexOf("dvarlist f*") > commands.indexOf("dvarlist sv_*"));
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
    }

    void aConsoleLineMeanwhileIsSentAndShown()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        atRequest(it.server, "dvarlist f*",
                  [&] { QTimer::singleShot(0, &it.server, [&] { sendLine(it.program, u"sv_fps"_s); }); });
        while (!it.server.commands().contains("sv_fps")) {
            tick(it.program);
            QApplication::processEvents();
        }
        QTRY_VERIFY(it.program.pane().contains(u"\"sv_fps\" is:"));
        tickUntilOver(it.program);
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
    }

    void theAnswersToTheButtonsMeanwhileAreShown()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.server.answer("Status", {"map: mp_decoy\n\n"});
        it.program.trigger(u"mlearn"_s);
        atRequest(it.server, "dvarlist f*",
                  [&] { QTimer::singleShot(0, &it.server, [&] { it.program.click(u"cmdstatus"_s); }); });
        tickUntilOver(it.program);
        QVERIFY(it.program.pane().contains(u"map: mp_decoy\r\n"));
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
    }

    void whileABoxIsOpenNothingIsAsked()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.prompts.whileOpen = [&] {
            it.program.trigger(u"mlearn"_s);
            for (int ticks = 0; ticks < 10; ++ticks)
                tick(it.program);
        };
        it.program.services.prompts.inform(u"text"_s, u"title"_s);
        it.program.prompts.takeBoxes();
        QCOMPARE(it.server.commands(), QList<QByteArray>());
        tickUntilOver(it.program);
        QCOMPARE(it.server.commands(), allQuestions());
    }

    void closingTheWindowEndsIt()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        atRequest(it.server, "dvarlist c*", [&] { it.program.window.close(); });
        for (int ticks = 0; ticks < 20; ++ticks)
            tick(it.program);
        QCOMPARE(it.server.commands(), allQuestions().first(3));
        const QStringList kept = keptWords(it.program, u"variables"_s); // what was learned by then
        QCOMPARE(kept, variablesOf(it.server).filter(QRegularExpression(u"^[abAB]"_s)));
    }

    void whileAnotherWaitsNothingIsAsked()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.trigger(u"mlearn"_s);
        bool hasCome = false;
        atRequest(it.server, "serverinfo", [&] {
            hasCome = true;
            it.program.clock.set(it.program.clock.now().addSecs(2)); // its answer is not waited for any more
            tick(it.program);
        });
        it.program.click(u"cmsserverinfo"_s);
        QVERIFY(hasCome);
        QVERIFY(!it.server.commands().contains("dvarlist a*"));
        tickUntilOver(it.program);
        QVERIFY(it.server.commands().contains("dvarlist a*"));
    }

    void aLongAnswerBringsNoBox()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.server.answer("dvarlist q*", {QByteArray(9000, 'x')});
        learnAll(it.program);
        QCOMPARE(it.program.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(it.server.commands().count("dvarlist q*"), 3);
    }

    void aBrokenFileIsPutAside()
    {
        ConnectedProgram it({.practice = modded, .prepare = {}});
        it.program.write(file, "[broken");
        learnAll(it.program);
        QCOMPARE(it.program.file(u"molvark-words.broken-1.json"_s), QByteArray("[broken"));
        QCOMPARE(keptWords(it.program, u"variables"_s), variablesOf(it.server));
        QVERIFY(it.lines().value(0).contains(u"molvark-words.json is broken"));
    }
};

WINDOW_TEST(LearningTest)
#include "tst_learning.moc"
