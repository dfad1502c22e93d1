// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "program.h"
#include "window_test.h"

#include <QDir>
#include <QFileInfo>
#include <QListWidget>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

const auto rconLog = u"molvark_rcon_050306.log"_s;
const auto messageLog = u"molvar_messages_050306.log"_s;

/// One of the two logs: how it is saved, and what names and words belong to it.
struct Kind {
    QString action;
    void (Output::*save)(bool autoaction) = nullptr;
    QString presetName;
    QString note;
    QString failure;

    [[nodiscard]] QString fileName() const { return presetName + u".log"_s; }
};

const Kind rcon{u"savercon"_s, &Output::savercon_Click, u"molvark_rcon_050306"_s, u"Saving RCON output..."_s,
                u"Rcon log not written"_s};
const Kind messages{u"savemessages"_s, &Output::savemessages_Click, u"molvar_messages_050306"_s,
                    u"Saving Message output..."_s, u"Message log not written"_s};

void addKinds()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("RCON pane") << rcon;
    QTest::newRow("message list") << messages;
}

void saveAutomatically(Program &program, const Kind &kind)
{
    (program.output.*kind.save)(true);
}

/// The program with a line in the pane and in the list, and the note of an earlier step.
class Filled final {
public:
    Filled()
    {
        program.start();
        program.output.addrcon(u"reply\r\n"_s);
        program.output.addmessage(u"Connected"_s);
        program.output.showprogress(u"earlier"_s, Progress::Replace);
    }

    Program program;
};

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

} // namespace

Q_DECLARE_METATYPE(Kind)

class SavingLogsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void anAutomaticSaveGoesToTheFilesOfTheDayInTheCurrentFolder()
    {
        Filled filled;
        filled.program.output.savercon_Click(true);
        filled.program.output.savemessages_Click(true);
        QCOMPARE(filesIn(QDir::currentPath()), QStringList({messageLog, rconLog}));
        QCOMPARE(filled.program.prompts.asked, QList<QStringList>());
    }

    void theNextDayHasFilesOfItsOwn()
    {
        Filled filled;
        filled.program.clock.set({QDate(2006, 11, 30), QTime(0, 0)});
        filled.program.output.savercon_Click(true);
        filled.program.output.savemessages_Click(true);
        QCOMPARE(filesIn(QDir::currentPath()),
                 QStringList({u"molvar_messages_301106.log"_s, u"molvark_rcon_301106.log"_s}));
    }

    void theWholePaneIsWrittenAndOneLineEnd()
    {
        Program program;
        program.output.addrcon(u"one\r\n\r\n  two  \r\n"_s);
        program.output.addrcon(u"three"_s);
        program.output.savercon_Click(true);
        QCOMPARE(program.file(rconLog), "one\r\n\r\n  two  \r\nthree\r\n"_ba);
    }

    void anEmptyPaneIsOneLineEnd()
    {
        Program program;
        program.output.savercon_Click(true);
        QCOMPARE(program.file(rconLog), "\r\n"_ba);
    }

    void eachMessageIsWrittenOnALineOfItsOwn()
    {
        Program program;
        program.output.addmessage(u"first"_s);
        program.output.addmessage(u"second"_s);
        program.output.addmessage(u"third"_s);
        program.output.savemessages_Click(true);
        const QStringList rows = program.rows(u"lstmessages"_s);
        QCOMPARE(rows.size(), 3);
        QCOMPARE(program.file(messageLog), (rows.join(u"\r\n"_s) + u"\r\n"_s).toLatin1());
        QCOMPARE(program.messages(), QStringList({u"first"_s, u"second"_s, u"third"_s}));
    }

    void anEmptyListIsAnEmptyFile()
    {
        Program program;
        program.output.savemessages_Click(true);
        QVERIFY(QFile::exists(messageLog));
        QCOMPARE(program.file(messageLog), QByteArray());
    }

    void aSecondSaveOnTheSameDayAppends_data() { addKinds(); }

    void aSecondSaveOnTheSameDayAppends()
    {
        QFETCH(Kind, kind);
        Filled filled;
        saveAutomatically(filled.program, kind);
        const QByteArray once = filled.program.file(kind.fileName());
        QVERIFY(once.size() > 5);
        saveAutomatically(filled.program, kind);
        QCOMPARE(filled.program.file(kind.fileName()), once + once);
    }

    void everyCharacterOfTheCodePageReachesTheLog()
    {
        QByteArray bytes;
        for (int byte = 0; byte < 256; ++byte)
            if (byte != '\r' && byte != '\n')
                bytes.append(static_cast<char>(byte));
        Program program;
        program.output.addrcon(fromAnsi(bytes));
        program.output.addmessage(fromAnsi(bytes));
        program.output.savercon_Click(true);
        program.output.savemessages_Click(true);
        QCOMPARE(program.file(rconLog).toHex(' '), (bytes + "\r\n").toHex(' '));
        QVERIFY(program.file(messageLog).endsWith(' ' + bytes + "\r\n"));
    }

    void aCharacterWithoutAByteIsAQuestionMarkInTheLog()
    {
        Program program;
        program.output.addrcon(u"\u20AC \u0142 \U0001F600"_s);
        program.output.savercon_Click(true);
        QCOMPARE(program.file(rconLog), "\x80 ? ?\r\n"_ba);
    }

    void aSaveByHandAsksForTheName_data() { addKinds(); }

    void aSaveByHandAsksForTheName()
    {
        QFETCH(Kind, kind);
        Filled filled;
        filled.program.trigger(kind.action);
        QCOMPARE(filled.program.prompts.asked, QList<QStringList>({{u"Save file as..."_s, u"log"_s, kind.presetName}}));
    }

    void theChosenNameIsUsedAsItIs_data() { addKinds(); }

    void theChosenNameIsUsedAsItIs()
    {
        QFETCH(Kind, kind);
        Filled filled;
        saveAutomatically(filled.program, kind);
        filled.program.prompts.lines = {QDir::currentPath() + u"/chosen"_s};
        filled.program.trigger(kind.action);
        QCOMPARE(filled.program.file(u"chosen"_s), filled.program.file(kind.fileName()));
        QCOMPARE(filesIn(QDir::currentPath()), QStringList({u"chosen"_s, kind.fileName()}));
    }

    void savesByHandUnderTheDefaultNameAndAutomaticOnesAccumulate_data() { addKinds(); }

    void savesByHandUnderTheDefaultNameAndAutomaticOnesAccumulate()
    {
        QFETCH(Kind, kind);
        Filled filled;
        saveAutomatically(filled.program, kind);
        const QByteArray once = filled.program.file(kind.fileName());
        filled.program.prompts.lines = {QDir::currentPath() + u'/' + kind.fileName()};
        filled.program.trigger(kind.action);
        QCOMPARE(filled.program.file(kind.fileName()), once + once);
        QCOMPARE(filesIn(QDir::currentPath()), QStringList(kind.fileName()));
    }

    void aCancelledDialogEndsTheSaveSilently_data() { addKinds(); }

    void aCancelledDialogEndsTheSaveSilently()
    {
        QFETCH(Kind, kind);
        Filled filled;
        filled.program.trigger(kind.action);
        QCOMPARE(filesIn(QDir::currentPath()), QStringList());
        QCOMPARE(filled.program.note(), u"earlier"_s);
        QVERIFY(filled.program.progress()->isVisible());
    }

    void aSaveByHandClosesTheProgressWindow_data() { addKinds(); }

    void aSaveByHandClosesTheProgressWindow()
    {
        QFETCH(Kind, kind);
        Filled filled;
        filled.program.prompts.lines = {QDir::currentPath() + u"/chosen.log"_s};
        filled.program.trigger(kind.action);
        QVERIFY(QFile::exists(u"chosen.log"_s));
        QCOMPARE(filled.program.note(), QString());
        QVERIFY(!filled.program.progress()->isVisible());
    }

    void anAutomaticSaveAddsItsNoteAndLeavesIt_data() { addKinds(); }

    void anAutomaticSaveAddsItsNoteAndLeavesIt()
    {
        QFETCH(Kind, kind);
        Filled filled;
        saveAutomatically(filled.program, kind);
        QCOMPARE(filled.program.note(), u"earlier\n"_s + kind.note);
        QVERIFY(filled.program.progress()->isVisible());
    }

    void theFirstAutomaticNoteBeginsWithALineEnd()
    {
        Program program;
        program.output.savercon_Click(true);
        program.output.savemessages_Click(true);
        QCOMPARE(program.note(), u"\nSaving RCON output...\nSaving Message output..."_s);
    }

#ifdef Q_OS_UNIX
    void aFailedAutomaticSaveIsShown_data()
    {
        addKinds();
    }

    void aFailedAutomaticSaveIsShown()
    {
        QFETCH(Kind, kind);
        Filled filled;
        QVERIFY(QDir().mkdir(kind.fileName()));
        saveAutomatically(filled.program, kind);
        QCOMPARE(filled.program.prompts.takeBoxes(), QList<Box>({failure(kind, EISDIR)}));
        QCOMPARE(filled.program.note(), u"earlier\n"_s + kind.note);
    }

    void aFailedSaveByHandIsShownAndItsNoteStays_data()
    {
        addKinds();
    }

    void aFailedSaveByHandIsShownAndItsNoteStays()
    {
        QFETCH(Kind, kind);
        Filled filled;
        filled.program.prompts.lines = {QDir::currentPath()};
        QString noteMeanwhile;
        filled.program.prompts.whileOpen = [&] { noteMeanwhile = filled.program.note(); };
        filled.program.trigger(kind.action);
        QCOMPARE(filled.program.prompts.takeBoxes(), QList<Box>({failure(kind, EISDIR)}));
        QCOMPARE(noteMeanwhile, kind.note);
        QCOMPARE(filled.program.note(), kind.note);
        QVERIFY(filled.program.progress()->isVisible());
    }
#endif

private:
    static Box failure(const Kind &kind, int error)
    {
        return {u"Failed to Save"_s, u"Error writing file, err %1\r"_s.arg(error) + kind.failure, BoxIcon::Exclamation,
                BoxButtons::Ok};
    }
};

WINDOW_TEST(SavingLogsTest)
#include "tst_saving_logs.moc"
