// SPDX-License-Identifier: MIT
#include "cli/arguments.h"
#include "test_class.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QString completion = QStringLiteral(QT_TESTCASE_SOURCEDIR) + u"/../packaging/molvark-cli.bash-completion"_s;

/// What bash offers for the last of these words, in a folder of that name.
QStringList offered(const QStringList &words, const QString &folder = {})
{
    QProcess bash;
    if (!folder.isEmpty())
        bash.setWorkingDirectory(folder);
    const QString script = u"source \"$1\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _molvark_cli; "
                           "printf '%s\\n' \"${COMPREPLY[@]}\""_s;
    bash.start(u"bash"_s, QStringList{u"-c"_s, script, u"bash"_s, completion, u"molvark-cli"_s} + words);
    if (!bash.waitForFinished() || bash.exitCode() != 0)
        failTest(QString::fromUtf8(bash.readAllStandardError()));
    return QString::fromUtf8(bash.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

/// The options that a text names.
QSet<QString> optionsIn(QString text)
{
    static const QRegularExpression option(u"(?<![\\w-])--[a-z]+(-[a-z]+)*"_s);
    QSet<QString> found;
    for (auto all = option.globalMatch(text.replace(u"\\-"_s, u"-"_s)); all.hasNext();)
        found.insert(all.next().captured());
    return found;
}

QString contentsOf(const QString &name)
{
    QFile file(QStringLiteral(QT_TESTCASE_SOURCEDIR) + u"/../packaging/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        failTest(name);
    return QString::fromUtf8(file.readAll());
}

} // namespace

/// What the shell, the man page and the help know of the program without a window.
class CliShellTest final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(u"bash"_s).isEmpty())
            QSKIP("no bash here");
    }

    void helpManPageAndCompletionNameTheSameOptions()
    {
        const QSet<QString> options = optionsIn(readCliArguments({u"molvark-cli"_s, u"--help"_s}, {}).notice);
        QVERIFY(options.contains(u"--password-file"_s) && options.size() == 10);
        QCOMPARE(optionsIn(contentsOf(u"molvark-cli.1"_s)), options);
        QStringList known = offered({u"players"_s, u"--"_s});
        QCOMPARE(QSet<QString>(known.cbegin(), known.cend()), options);
    }

    void theProgramsWordsAreOffered()
    {
        const QStringList words{u"status"_s, u"players"_s, u"query"_s, u"check"_s, u"watch"_s, u"say"_s};
        QCOMPARE(offered({u""_s}), words);
        QCOMPARE(offered({u"--timeout"_s, u"3"_s, u""_s}), words);
        QCOMPARE(offered({u"--server"_s, u"a"_s, u"s"_s}), QStringList({u"status"_s, u"say"_s}));
        QCOMPARE(offered({u"--server"_s, u"a"_s, u":"_s, u"28960"_s, u"s"_s}), QStringList({u"status"_s, u"say"_s}));
        QCOMPARE(offered({u"--server"_s, u"="_s, u"a"_s, u":"_s, u"1"_s, u"s"_s}),
                 QStringList({u"status"_s, u"say"_s}));
        QCOMPARE(offered({u"map_restart"_s, u""_s}), QStringList());
        QCOMPARE(offered({u"say"_s, u"--"_s}), QStringList());
        QVERIFY(!offered({u"status"_s, u"--"_s}).contains(u"--json"_s));
    }

    void filesAndSavedServersAreOffered()
    {
        const QTemporaryDir folder;
        for (const auto &[name, contents] :
             {std::pair{u"evening.txt"_s, QByteArray()},
              std::pair{u"molvark.ini"_s,
                        QByteArray("[options]\r\nserver1=no\r\n[Servers]\r\nserver1=game.example.org\r\n"
                                   "SERVER2 = \"192.0.2.7\"\r\n[ports]\r\nport1=28960\r\n"
                                   "[rcon]\r\nrcon1=hush\r\n")}}) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
        }
        QCOMPARE(offered({u"--script"_s, u"ev"_s}, folder.path()), QStringList{u"evening.txt"_s});
        QCOMPARE(offered({u"--password-file"_s, u"mol"_s}, folder.path()), QStringList{u"molvark.ini"_s});
        QCOMPARE(offered({u"--saved"_s, u""_s}, folder.path()), QStringList({u"game.example.org"_s, u"192.0.2.7"_s}));
        QCOMPARE(offered({u"--server"_s, u""_s}, folder.path()), QStringList());
        // Bash makes three words of "--script=ev".
        QCOMPARE(offered({u"--script"_s, u"="_s, u"ev"_s}, folder.path()), QStringList{u"evening.txt"_s});
        QCOMPARE(offered({u"--password-file"_s, u"="_s}, folder.path()),
                 QStringList({u"evening.txt"_s, u"molvark.ini"_s}));
        QCOMPARE(offered({u"--saved"_s, u"="_s}, folder.path()), QStringList({u"game.example.org"_s, u"192.0.2.7"_s}));
        QCOMPARE(offered({u"--saved"_s, u"="_s, u"g"_s}, folder.path()), QStringList{u"game.example.org"_s});
        QCOMPARE(offered({u"--timeout"_s, u"="_s}, folder.path()), QStringList());
        QCOMPARE(offered({u"--saved"_s, u"="_s, u"1"_s, u"s"_s}, folder.path()), QStringList({u"status"_s, u"say"_s}));
    }

    void theNameOfASavedServerIsNotCarriedOut()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"molvark.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[servers]\r\nserver1=\"$(touch${IFS}pwned)\"\r\nserver2=`touch${IFS}pwned`\r\n"
                   "server3=*.ini\r\nserver4=game;touch\r\n");
        file.close();
        QCOMPARE(offered({u"--saved"_s, u""_s}, folder.path()),
                 QStringList({u"\\$\\(touch\\$\\{IFS\\}pwned\\)"_s, u"\\`touch\\$\\{IFS\\}pwned\\`"_s, u"\\*.ini"_s,
                              u"game\\;touch"_s}));
        QCOMPARE(offered({u"--saved"_s, u"g"_s}, folder.path()), QStringList{u"game\\;touch"_s});
        QCOMPARE(offered({u"--saved"_s, u"[g]"_s}, folder.path()), QStringList());
        QCOMPARE(offered({u"--saved"_s, u"*"_s}, folder.path()), QStringList{u"\\*.ini"_s});
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"molvark.ini"_s});
    }
};

GUILESS_TEST(CliShellTest)
#include "tst_cli_shell.moc"
