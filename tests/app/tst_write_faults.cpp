// SPDX-License-Identifier: MIT
#include "ordinary_user.h"
#include "other_windows.h"
#include "saved_entries.h"
#include "small_disk.h"
#include "window_test.h"

#include "exchange_boxes.h"

#include "practice/practice_server.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

#include <cerrno>
#include <cstring>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const bool hasMountsOfItsOwn = takeMountsOfOnesOwn();

/// What is wrong with the folder of the program, once it has started.
enum class Trouble { FullDisk, ReadOnlyFile, ReadOnlyFolder, FolderGone };

void addTroubles(const QList<Trouble> &troubles)
{
    QTest::addColumn<Trouble>("trouble");
    QTest::addColumn<int>("error");
    const auto row = [&](const char *what, Trouble trouble, int error) {
        if (troubles.contains(trouble))
            QTest::newRow(what) << trouble << error;
    };
    row("the disk is full", Trouble::FullDisk, ENOSPC);
    row("the file is read-only", Trouble::ReadOnlyFile, EACCES);
    row("the folder is read-only", Trouble::ReadOnlyFolder, EACCES);
    row("the folder is gone", Trouble::FolderGone, ENOENT);
}

QString systemError(int number)
{
    return u"Error code %1 Descr: "_s.arg(number) + QString::fromLocal8Bit(strerror(number));
}

Box exclamation(const QString &title, const QString &text)
{
    return {title, text, BoxIcon::Exclamation, BoxButtons::Ok};
}

QStringList filesHere()
{
    return QDir::current().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// The running program in a folder that then gets into trouble.
struct Troubled final {
    Troubled()
    {
        if (hasMountsOfItsOwn)
            disk.emplace();
        program.write(settingsFile, twoServers);
        program.start();
    }
    ~Troubled()
    {
        user.reset();
        disk.reset();
    }

    /// False when this system does not let a test make such trouble.
    bool begin(Trouble trouble)
    {
        const QFile::Permissions readable = QFile::ReadOwner | QFile::ExeOwner;
        switch (trouble) {
        case Trouble::FullDisk:
            return disk && disk->isThere() && disk->fill();
        case Trouble::ReadOnlyFile:
            user.emplace(QDir::currentPath());
            return user->isOrdinary() && QFile::setPermissions(settingsFile, QFile::ReadOwner);
        case Trouble::ReadOnlyFolder:
            user.emplace(QDir::currentPath());
            return user->isOrdinary() && QFile::setPermissions(QDir::currentPath(), readable);
        case Trouble::FolderGone:
            disk.reset();
            return QDir(QDir::currentPath()).removeRecursively();
        }
        return false;
    }
    [[nodiscard]] QList<Box> boxes() { return program.prompts.takeBoxes(); }

    Program program{twoServers};
    std::optional<SmallDisk> disk;
    std::optional<OrdinaryUser> user;
};

#define BEGIN_TROUBLE(troubled)                                                                                        \
    do {                                                                                                               \
        QFETCH(const Trouble, trouble);                                                                                \
        if (!(troubled).begin(trouble))                                                                                \
            QSKIP("this system does not let a test make such trouble");                                                \
    } while (false)

} // namespace

Q_DECLARE_METATYPE(Trouble)

/// Everything that the program writes, where it cannot be written.
class WriteFaultsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theServerListAtTheEnd_data() { allTroubles(); }

    void theServerListAtTheEnd()
    {
        QFETCH(int, error);
        Troubled troubled;
        addServer(troubled.program);
        BEGIN_TROUBLE(troubled);
        const QStringList files = filesHere();
        const QByteArray before = troubled.program.file(settingsFile);
        QVERIFY(troubled.program.window.close());
        QCOMPARE(troubled.boxes(), QList<Box>{exclamation(u"INI Write Fail"_s,
                                                          u"Failed to write new server list to INI file (Server)\r"_s +
                                                              systemError(error))});
        QCOMPARE(troubled.program.file(settingsFile), before);
        QCOMPARE(filesHere(), files); // no half of a file is left behind
    }

    void aPreference_data() { allTroubles(); }

    void aPreference()
    {
        QFETCH(int, error);
        Troubled troubled;
        BEGIN_TROUBLE(troubled);
        const QByteArray before = troubled.program.file(settingsFile);
        troubled.program.trigger(u"mpref"_s);
        QWidget *window = otherWindow(u"frmpref"_s);
        auto *box = window->findChild<QCheckBox *>(u"moptsr"_s);
        box->setChecked(!box->isChecked());
        window->findChild<QPushButton *>(u"cmdsave"_s)->click();
        QCOMPARE(
            troubled.boxes().constLast(),
            exclamation(u"INI Write Fail"_s, u"Failed to write new save rcon to INI file\r"_s + systemError(error)));
        QCOMPARE(troubled.program.file(settingsFile), before);
    }

    void theUserPrefix_data() { allTroubles(); }

    void theUserPrefix()
    {
        QFETCH(int, error);
        Troubled troubled;
        BEGIN_TROUBLE(troubled);
        const QByteArray before = troubled.program.file(settingsFile);
        auto *prefix = troubled.program.find<QLineEdit>(u"txtprefix"_s);
        showTab(troubled.program, prefix);
        prefix->setFocus();
        QTest::keyClicks(prefix, u"x"_s);
        troubled.program.find<QWidget>(u"txtPWD"_s)->setFocus();
        QCOMPARE(troubled.boxes(),
                 QList<Box>{exclamation(u"INI Write Fail"_s,
                                        u"Failed to write new user prefix to INI file\r"_s + systemError(error))});
        QCOMPARE(troubled.program.file(settingsFile), before);
    }

    void theLogs_data() { addTroubles({Trouble::FullDisk, Trouble::ReadOnlyFolder, Trouble::FolderGone}); }

    void theLogs()
    {
        QFETCH(int, error);
        Troubled troubled;
        troubled.program.output.addrcon(u"reply\r\n"_s);
        troubled.program.output.addmessage(u"Connected"_s);
        BEGIN_TROUBLE(troubled);
        troubled.program.output.savercon_Click(true);
        troubled.program.output.savemessages_Click(true);
        const QString start = u"Error writing file, err %1\r"_s.arg(error);
        QCOMPARE(troubled.boxes(),
                 QList<Box>({exclamation(u"Failed to Save"_s, start + u"Rcon log not written"_s),
                             exclamation(u"Failed to Save"_s, start + u"Message log not written"_s)}));
    }

    // The disk still has room for a part of the text, where the old one ends.
    void noPartOfALogIsLeftBehind()
    {
        Troubled troubled;
        const QByteArray old = "by hand\r\n";
        for (const QString &log : {rconLog, messageLog})
            troubled.program.write(log, old);
        if (!troubled.begin(Trouble::FullDisk))
            QSKIP("this system does not let a test mount a disk");
        troubled.program.output.addrcon(QString(9'000, u'r'));
        troubled.program.output.addmessage(QString(9'000, u'm'));
        troubled.program.output.savercon_Click(true);
        troubled.program.output.savemessages_Click(true);
        QCOMPARE(troubled.boxes().size(), 2);
        QCOMPARE(troubled.program.file(rconLog), old);
        QCOMPARE(troubled.program.file(messageLog), old);
    }

    void aRecordingEndsWithAMessageAndNothingElse()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Troubled troubled;
        Program &program = troubled.program;
        program.connectTo(server);
        const QString file = u"traffic.jsonl"_s;
        program.prompts.lines = {QDir::currentPath() + u'/' + file};
        program.trigger(u"mrecord"_s);
        program.click(u"cmsserverinfo"_s);
        if (!troubled.begin(Trouble::FullDisk))
            QSKIP("this system does not let a test mount a disk");
        const qsizetype told = program.messages().size();
        int clicks = 0;
        for (; program.find<QLabel>(u"lblrecord"_s)->isVisible() && clicks < 20; ++clicks)
            program.click(u"cmsserverinfo"_s);
        QVERIFY(!program.find<QLabel>(u"lblrecord"_s)->isVisible());
        QCOMPARE(program.find<QAction>(u"mrecord"_s)->text(), u"&Record traffic..."_s);
        QStringList lines = program.messages().mid(told);
        QCOMPARE(lines.removeAll(u"The recording has ended, err %1: %2"_s.arg(ENOSPC).arg(
                     QString::fromLocal8Bit(strerror(ENOSPC)))),
                 1);
        QCOMPARE(lines.size(), clicks); // as ever
        QVERIFY(program.isConnected());
        QVERIFY2(program.file(file).endsWith("}\n"), "no line breaks off");
    }

    void theListOfPlayers_data() { theLogs_data(); }

    void theListOfPlayers()
    {
        QFETCH(int, error);
        Troubled troubled;
        BEGIN_TROUBLE(troubled);
        troubled.program.click(u"cmdsavenames"_s);
        QCOMPARE(troubled.boxes().constLast(), exclamation(u"Molvark"_s, systemError(error)));
    }

    void whenThereIsRoomAgainEverythingIsSaved()
    {
        Troubled troubled;
        if (!troubled.begin(Trouble::FullDisk))
            QSKIP("this system does not let a test mount a disk");
        troubled.program.output.addmessage(u"Connected"_s);
        troubled.program.output.savercon_Click(true);
        QCOMPARE(troubled.boxes().size(), 1);
        QVERIFY(troubled.disk->free());
        addServer(troubled.program);
        QVERIFY(troubled.program.window.close());
        QCOMPARE(saved(troubled.program, 3), u"three 3 c"_s);
        QVERIFY(!troubled.program.file(rconLog).isEmpty());
        QVERIFY(!troubled.program.file(messageLog).isEmpty());
    }

    void aFileThatVanishedIsMadeAnew()
    {
        Program program(twoServers);
        program.start();
        QVERIFY(QFile::remove(settingsFile));
        addServer(program);
        QVERIFY(program.window.close());
        QCOMPARE(saved(program, 1), u"one 1 a"_s);
        QCOMPARE(saved(program, 3), u"three 3 c"_s);
    }

private:
    static void allTroubles()
    {
        addTroubles({Trouble::FullDisk, Trouble::ReadOnlyFile, Trouble::ReadOnlyFolder, Trouble::FolderGone});
    }
    static void showTab(const Program &program, const QWidget *widget)
    {
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        for (int page = 0; page < tabs->count(); ++page) {
            if (tabs->widget(page)->isAncestorOf(widget))
                tabs->setCurrentIndex(page);
        }
    }
};

WINDOW_TEST(WriteFaultsTest)
#include "tst_write_faults.moc"
