// SPDX-License-Identifier: MIT
#include "connected_program.h"
#include "link.h"
#include "window_test.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

struct Line {
    qint64 us = 0;
    QString way;
    QByteArray data;
};

QList<Line> linesOf(const QByteArray &recording)
{
    QList<Line> lines;
    for (const QByteArray &text : recording.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(text).object();
        if (!text.isEmpty())
            lines.append({object.value("us"_L1).toInteger(-1), object.value("way"_L1).toString(),
                          QByteArray::fromBase64(object.value("data"_L1).toString().toLatin1())});
    }
    return lines;
}

const QString file = u"traffic.jsonl"_s;

void startRecording(ConnectedProgram &on)
{
    on.program.prompts.lines = {QDir::currentPath() + u'/' + file};
    on.program.trigger(u"mrecord"_s);
}

QString item(const ConnectedProgram &on)
{
    return on.program.find<QAction>(u"mrecord"_s)->text().remove(u'&');
}

bool isMarked(const ConnectedProgram &on)
{
    return on.program.find<QLabel>(u"lblrecord"_s)->isVisible();
}

} // namespace

/// Recording what goes over the line.
class RecorderTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theItemBeginsAndEndsIt()
    {
        ConnectedProgram on;
        QCOMPARE(item(on), u"Record traffic..."_s);
        QVERIFY(!isMarked(on));
        startRecording(on);
        QCOMPARE(on.program.prompts.asked.constLast(),
                 QStringList({u"Record traffic to..."_s, u"jsonl"_s, u"molvark_traffic_050306"_s}));
        QCOMPARE(item(on), u"Stop recording"_s);
        QVERIFY(isMarked(on));
        on.program.click(u"cmsserverinfo"_s);
        on.program.trigger(u"mrecord"_s);
        QCOMPARE(item(on), u"Record traffic..."_s);
        QVERIFY(!isMarked(on));
        const QByteArray recorded = on.program.file(file);
        QVERIFY(!recorded.isEmpty());
        on.program.click(u"cmdstatus"_s);
        QCOMPARE(on.program.file(file), recorded);
        QCOMPARE(on.program.prompts.asked.size(), 1);
    }

    void everyDatagramIsALine()
    {
        ConnectedProgram on;
        on.server.answer("Status", {"map: mp_decoy\n", "num score\n\n"});
        startRecording(on);
        on.program.click(u"cmdstatus"_s);
        const QList<Line> lines = linesOf(on.program.file(file));
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0).way, u"out"_s);
        QCOMPARE(lines.at(0).data, request("Status", "********"));
        QCOMPARE(lines.at(1).way, u"in"_s);
        QCOMPARE(lines.at(1).data, printed("map: mp_decoy\n"));
        QCOMPARE(lines.at(2).data, printed("num score\n\n"));
        QVERIFY(lines.at(0).us >= 0 && lines.at(0).us <= lines.at(1).us && lines.at(1).us <= lines.at(2).us);
    }

    void theCopiesLieThreeSecondsApart()
    {
        ConnectedProgram on;
        on.server.setSilent(true);
        startRecording(on);
        on.program.click(u"cmdstatus"_s);
        on.program.prompts.takeBoxes();
        const QList<Line> lines = linesOf(on.program.file(file));
        QCOMPARE(lines.size(), 5);
        for (qsizetype copy = 1; copy < lines.size(); ++copy) {
            const qint64 gap = lines.at(copy).us - lines.at(copy - 1).us;
            QVERIFY2(std::abs(gap - 3'000'000) <= 1'600'000, qPrintable(QString::number(gap)));
        }
    }

    // The process may end without clearing up when a name server does not answer.
    void itEndsWithTheRun()
    {
        ConnectedProgram on;
        startRecording(on);
        on.server.answer("Status", {"map: prac"}); // as the password begins
        on.program.click(u"cmdstatus"_s);
        const qsizetype before = linesOf(on.program.file(file)).size();
        on.program.window.close();
        const QList<Line> lines = linesOf(on.program.file(file));
        QCOMPARE(lines.size(), before + 1);
        QCOMPARE(lines.constLast().data, printed("map: prac"));
        QVERIFY(!isMarked(on));
    }

    void connectingIsRecordedToo()
    {
        ConnectedProgram on({.connects = false});
        startRecording(on);
        on.program.connectTo(on.server);
        QByteArrayList sent;
        for (const Line &line : linesOf(on.program.file(file))) {
            if (line.way == u"out")
                sent.append(line.data);
        }
        QCOMPARE(sent,
                 QByteArrayList({request("status", "********"), "\xFF\xFF\xFF\xFFgetstatus",
                                 request("dvarlist sv_maprotation", "********"), request("fdir *.cfg", "********")}));
    }

    void noPasswordIsInIt()
    {
        ConnectedProgram on;
        on.server.answer("rcon_password", {"\"rcon_password\" is: \"practice^7\"\n"});
        startRecording(on);
        for (const QString &line : {u"rcon_password"_s, u"set sv_privatePassword letmein"_s}) {
            on.program.setText(u"comdirect"_s, line);
            on.program.click(u"cmdsend"_s);
            const qsizetype wanted = line == u"rcon_password" ? 2 : 4;
            QTRY_COMPARE(linesOf(on.program.file(file)).size(), wanted);
        }
        const QList<Line> lines = linesOf(on.program.file(file));
        QCOMPARE(lines.at(1).data, printed("\"rcon_password\" is: \"********^7\"\n"));
        QCOMPARE(lines.at(2).data, request("set sv_privatePassword *******", "********"));
    }

    // It has been used before the recording began.
    void aFormerPasswordIsNotInItEither()
    {
        ConnectedProgram on;
        on.server.setPassword(u"otherword"_s);
        on.program.setText(u"txtPWD"_s, u"otherword"_s);
        on.server.answer("Status", {"practice, otherword\n"});
        startRecording(on);
        on.program.click(u"cmdstatus"_s);
        QCOMPARE(linesOf(on.program.file(file)).constLast().data, printed("********, *********\n"));
    }

    void aDatagramIsWholeHoweverLargeItIs()
    {
        ConnectedProgram on;
        on.server.answerRaw("Status", {printed(QByteArray(20'000, 'x'))});
        startRecording(on);
        on.program.click(u"cmdstatus"_s);
        QCOMPARE(on.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(linesOf(on.program.file(file)).at(1).data, printed(QByteArray(20'000, 'x')));
    }

    void noNameNoRecording()
    {
        const ConnectedProgram on;
        on.program.trigger(u"mrecord"_s);
        QCOMPARE(item(on), u"Record traffic..."_s);
        QVERIFY(!isMarked(on));
    }

    void aFileThatIsThereIsReplacedOnlyWhenThePersonSaysSo()
    {
        ConnectedProgram on;
        on.program.write(file, "mine");
        const Box question{u"Record traffic"_s,
                           u"This file is there already. Replace it?\r"_s + QDir::currentPath() + u'/' + file,
                           BoxIcon::Question, BoxButtons::YesNo};
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            on.program.prompts.answers = {answer};
            startRecording(on);
            QCOMPARE(on.program.prompts.takeBoxes(), QList<Box>{question});
            QCOMPARE(isMarked(on), answer == Answer::Yes);
            QCOMPARE(on.program.file(file) == "mine", answer == Answer::No);
        }
    }

    void aDeviceIsNoFile()
    {
        ConnectedProgram on;
        on.program.prompts.lines = {u"/dev/null"_s};
        on.program.trigger(u"mrecord"_s);
        const QList<Box> boxes = on.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().title, u"Failed to Save"_s);
        QVERIFY(!isMarked(on));
    }

    void aFileThatCannotBeWrittenIsToldAndNothingBegins()
    {
        ConnectedProgram on;
        on.program.prompts.lines = {QDir::currentPath() + u"/nowhere/traffic.jsonl"_s};
        on.program.trigger(u"mrecord"_s);
        const QList<Box> boxes = on.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().title, u"Failed to Save"_s);
        QVERIFY(!isMarked(on));
    }

    void theEndOfTheProgramKeepsWhatIsThere()
    {
        QTemporaryDir folder;
        const QString name = folder.filePath(file);
        {
            ConnectedProgram on;
            on.server.answer("Status", {"a map"}); // ends as the password begins
            on.program.prompts.lines = {name};
            on.program.trigger(u"mrecord"_s);
            on.program.click(u"cmdstatus"_s);
        }
        QFile recording(name);
        QVERIFY(recording.open(QIODevice::ReadOnly));
        const QList<Line> lines = linesOf(recording.readAll());
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(1).data, printed("a map"));
    }

    void whatIsSentIsTheSameWithAndWithoutIt()
    {
        ConnectedProgram on;
        on.program.click(u"cmdstatus"_s);
        const QList<QByteArray> without = on.server.requests();
        const QStringList lines = on.lines();
        on.forget();
        startRecording(on);
        on.program.click(u"cmdstatus"_s);
        QCOMPARE(on.server.requests(), without);
        QCOMPARE(on.lines(), lines);
    }
};

WINDOW_TEST(RecorderTest)
#include "tst_recorder.moc"
