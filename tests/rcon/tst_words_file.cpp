// SPDX-License-Identifier: MIT
#include "rcon/words_file.h"
#include "test_class.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QString address = u"10.0.0.1:28960"_s;

/// A folder with the file in it.
struct Disk {
    explicit Disk(const QByteArray &content = {})
    {
        if (!content.isNull())
            put(path, content);
    }

    static void put(const QString &name, const QByteArray &content)
    {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }
    [[nodiscard]] QString aside(int number) const
    {
        return folder.filePath(u"molvark-words.broken-%1.json"_s.arg(number));
    }
    [[nodiscard]] static QByteArray content(const QString &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"molvark-words.json"_s);
};

QStringList numbered(const QString &prefix, int count)
{
    QStringList words;
    for (int number = 0; number < count; ++number)
        words.append(prefix + QString::number(number));
    return words;
}

} // namespace

class WordsFileTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void whatIsKeptIsReadAgain()
    {
        const Disk disk;
        const ServerWords words{{u"status"_s}, {u"sv_x"_s, u"sv_y"_s}};
        {
            WordsFile file(disk.path);
            file.keepWords(address, words);
            file.addHistory({u"say hello"_s, u"status"_s});
            QCOMPARE(file.takeTold(), QStringList());
        }
        WordsFile file(disk.path);
        QCOMPARE(file.words().of(address), words);
        QCOMPARE(file.words().history, QStringList({u"say hello"_s, u"status"_s}));
        QCOMPARE(file.words().of(u"10.0.0.2:28960"_s), ServerWords());
        QCOMPARE(QFile::permissions(disk.path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void nothingToKeepMakesNoFile()
    {
        const Disk disk;
        WordsFile file(disk.path);
        file.addHistory({});
        QCOMPARE(disk.files(), QStringList());
    }

    void anotherProgramsWordsStay()
    {
        const Disk disk;
        WordsFile one(disk.path);
        WordsFile other(disk.path);
        (void)one.words();
        other.keepWords(address, {{}, {u"sv_x"_s}});
        one.addHistory({u"status"_s});
        QCOMPARE(WordsFile(disk.path).words().of(address).variables, QStringList{u"sv_x"_s});
    }

    void theLinesOfTwoProgramsAreAddedUp()
    {
        const Disk disk;
        WordsFile one(disk.path);
        one.addHistory({u"say before"_s});
        WordsFile other(disk.path);
        QCOMPARE(other.words().history, QStringList{u"say before"_s});
        one.addHistory({u"say one"_s});
        other.addHistory({u"say other"_s});
        QCOMPARE(WordsFile(disk.path).words().history, QStringList({u"say before"_s, u"say one"_s, u"say other"_s}));
        one.addHistory(numbered(u"say "_s, 498));
        const QStringList history = WordsFile(disk.path).words().history;
        QCOMPARE(history.size(), 500);
        QCOMPARE(history.first(3), QStringList({u"say one"_s, u"say other"_s, u"say 0"_s}));
        QCOMPARE(history.constLast(), u"say 497"_s);
    }

    void linesThatHaveBecomeSecretAreTakenOut()
    {
        const Disk disk;
        WordsFile file(disk.path);
        file.addHistory({u"say one"_s, u"say secret"_s});
        file.addHistory({u"say two"_s}, [](const QString &line) { return line.contains(u"secret"_s); });
        QCOMPARE(WordsFile(disk.path).words().history, QStringList({u"say one"_s, u"say two"_s}));
        file.forgetHistory();
        QCOMPARE(WordsFile(disk.path).words().history, QStringList());
    }

    void aBrokenFileIsPutAside_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("why");
        QTest::newRow("no JSON") << QByteArray("{\n\"history\": [\n") << u"line 3: unterminated array"_s;
        QTest::newRow("a list") << QByteArray("[1]") << u"it holds no words"_s;
        QTest::newRow("a history that is none") << QByteArray("{\"history\": 3}") << u"it holds no words"_s;
        QTest::newRow("servers that are none") << QByteArray("{\"servers\": {}}") << u"it holds no words"_s;
        QTest::newRow("no address") << QByteArray("{\"servers\": [{\"commands\": []}]}")
                                    << u"a server has no address"_s;
    }

    void aBrokenFileIsPutAside()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, why);
        const Disk disk(content);
        WordsFile file(disk.path);
        QCOMPARE(file.words(), KeptWords());
        QCOMPARE(file.takeTold(), QStringList{u"molvark-words.json is broken (%1). It is called "
                                              "molvark-words.broken-1.json now, and a new one is begun."_s.arg(why)});
        QCOMPARE(Disk::content(disk.aside(1)), content);
        file.keepWords(address, {{}, {u"sv_x"_s}});
        QCOMPARE(file.takeTold(), QStringList());
        QCOMPARE(WordsFile(disk.path).words().of(address).variables, QStringList{u"sv_x"_s});
        QCOMPARE(Disk::content(disk.aside(1)), content);
    }

    void aSecondBrokenFileReplacesNoFirst()
    {
        const Disk disk("second");
        Disk::put(disk.aside(1), "first");
        WordsFile file(disk.path);
        (void)file.words();
        QCOMPARE(Disk::content(disk.aside(1)), QByteArray("first"));
        QCOMPARE(Disk::content(disk.aside(2)), QByteArray("second"));
    }

    void oneThatBreaksWhileTheProgramRunsIsPutAsideBeforeItIsWritten()
    {
        const Disk disk;
        WordsFile file(disk.path);
        file.addHistory({u"status"_s});
        Disk::put(disk.path, "broken");
        file.addHistory({u"say hello"_s});
        QCOMPARE(file.takeTold().size(), 1);
        QCOMPARE(Disk::content(disk.aside(1)), QByteArray("broken"));
        QCOMPARE(WordsFile(disk.path).words().history, QStringList{u"say hello"_s});
    }

    void whatCannotBeReadIsLeftAlone()
    {
        const Disk disk;
        QVERIFY(QDir(disk.folder.path()).mkpath(u"molvark-words.json/x"_s));
        WordsFile file(disk.path);
        file.keepWords(address, {{}, {u"sv_x"_s}});
        const QStringList told = file.takeTold();
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().startsWith(u"molvark-words.json cannot be read ("), qPrintable(told.first()));
        QVERIFY2(told.first().endsWith(u"). What is learned is not kept."), qPrintable(told.first()));
        QCOMPARE(file.words().of(address).variables, QStringList{u"sv_x"_s}); // for this run
        file.keepWords(address, {{}, {u"sv_y"_s}});
        QCOMPARE(file.takeTold(), QStringList());
        QCOMPARE(disk.files(), QStringList{u"molvark-words.json"_s});
    }

    void aFolderThatCannotBeWrittenIsTold()
    {
        const Disk disk;
        WordsFile file(disk.folder.filePath(u"gone/molvark-words.json"_s));
        file.addHistory({u"status"_s});
        const QStringList told = file.takeTold();
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().startsWith(u"molvark-words.json could not be written: "), qPrintable(told.first()));
    }

    void whatIsBeyondTheBoundsIsLeftOut()
    {
        KeptWords kept;
        kept.history = numbered(u"say "_s, 600) + QStringList{QString(1024, u'x'), u"two\nlines"_s};
        for (const QString &server : numbered(u"server:"_s, 25))
            kept.put(server, {{}, {u"sv_x"_s}});
        QString fault;
        KeptWords read = wordsIn(bytesOf(kept), fault);
        QCOMPARE(fault, QString());
        QCOMPARE(read.history.size(), 500);
        QCOMPARE(read.history.constLast(), u"say 599"_s);
        QCOMPARE(read.servers.size(), 20);
        QCOMPARE(read.servers.constFirst().address, u"server:5"_s);

        ServerWords many;
        many.add({numbered(u"c"_s, 15'000), numbered(u"v"_s, 15'000)});
        QCOMPARE(many.commands.size(), 15'000);
        QCOMPARE(many.variables.size(), 5'000);
        read =
            wordsIn(bytesOf({{}, {{address, {{u"a;quit"_s, u"ok"_s}, {QString(65, u'x'), u"Ok"_s, u"oK"_s}}}}}), fault);
        QCOMPARE(read.of(address), (ServerWords{{u"ok"_s}, {u"Ok"_s}}));
    }
};

GUILESS_TEST(WordsFileTest)
#include "tst_words_file.moc"
