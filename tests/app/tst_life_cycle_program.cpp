// SPDX-License-Identifier: MIT
#include "started_program.h"
#include "test_class.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class LifeCycleProgramTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theProgramConnectsAsTheFolderThatItIsStartedInSays()
    {
        StartedProgram program;
        program.start(QStringLiteral(MOLVARK_PROGRAM));
        QCOMPARE(program.server.requests().first(), QByteArray(4, '\xFF') + "rcon practice status");
        QCOMPARE(program.process.state(), QProcess::Running);
        program.process.terminate();
        QVERIFY(program.process.waitForFinished());
    }

    void helpAndVersionNeedNoDisplay_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("said");
        QTest::newRow("--version") << u"--version"_s << uR"(\Amolvark 1\.)"_s;
        QTest::newRow("-v") << u"-v"_s << uR"(\Amolvark 1\.)"_s;
        QTest::newRow("--help") << u"--help"_s << uR"(\AUsage: \S*molvark\S* \[options\]\s)"_s;
        QTest::newRow("-h") << u"-h"_s << uR"(\AUsage: \S*molvark\S* \[options\]\s)"_s;
    }

    void helpAndVersionNeedNoDisplay()
    {
        QFETCH(QString, option);
        QFETCH(QString, said);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"no such platform"_s);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(MOLVARK_PROGRAM), {option});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 0);
        const QString output = QString::fromLocal8Bit(program.readAllStandardOutput());
        QVERIFY2(QRegularExpression(said).match(output).hasMatch(), qPrintable(output));
    }

    void anUnknownOptionIsAnErrorAlsoWithoutADisplay()
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"no such platform"_s);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(MOLVARK_PROGRAM), {u"--bogus"_s, u"--help"_s});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("unknown option --bogus"));
    }

    void anUnknownOptionIsAnError()
    {
        const QTemporaryDir folder;
        QProcess program;
        program.setWorkingDirectory(folder.path());
        program.start(QStringLiteral(MOLVARK_PROGRAM), {u"--port"_s});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("unknown option --port"));
        QVERIFY(QDir(folder.path()).isEmpty());
    }
};

GUILESS_TEST(LifeCycleProgramTest)
#include "tst_life_cycle_program.moc"
