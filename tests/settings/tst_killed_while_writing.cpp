// SPDX-License-Identifier: MIT
#include "settings/ini_file.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// One of the two settings between which the writer goes back and forth; they differ in length and in each line.
QList<IniEntry> entries(bool isLong)
{
    QList<IniEntry> all;
    for (int number = 1; number <= 200; ++number)
        all.append({u"servers"_s, u"server%1"_s.arg(number),
                    isLong ? u"a-host-with-a-long-name-%1.example.org"_s.arg(number) : u"h%1"_s.arg(number)});
    return all;
}

QByteArray fileOf(bool isLong)
{
    IniText text;
    for (const IniEntry &entry : entries(isLong))
        text.set(entry);
    return text.bytes();
}

/// Writes the one and the other in turn for as long as it lives, and says so after each.
[[noreturn]] void writeForEver(const QString &path)
{
    IniFile file(path);
    for (bool isLong = false;; isLong = !isLong) {
        if (file.write(entries(isLong)))
            qFatal("cannot write");
        std::putchar(isLong ? 'l' : 's');
        std::fflush(stdout);
    }
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read"_ba;
}

} // namespace

class KilledWhileWritingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theFileIsAlwaysTheOldOrTheNewOneWhole()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"molvark.ini"_s);
        const QByteArray longFile = fileOf(true);
        const QByteArray shortFile = fileOf(false);
        QRandomGenerator random(7);
        int longs = 0;
        int shorts = 0;
        for (int kill = 0; kill < 100; ++kill) {
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(), {u"--write"_s, path});
            // At some moment of some write: the writer does not wait for the reader.
            const qint64 writes = random.bounded(1, 20);
            while (writer.bytesAvailable() < writes)
                QVERIFY(writer.waitForReadyRead());
            for (volatile int spin = random.bounded(200'000); spin > 0;)
                spin = spin - 1;
            writer.kill();
            QVERIFY(writer.waitForFinished());
            QCOMPARE(writer.exitStatus(), QProcess::CrashExit);

            const QByteArray bytes = bytesOf(path);
            QVERIFY2(bytes == longFile || bytes == shortFile, bytes.constData());
            ++(bytes == longFile ? longs : shorts);
        }
        QVERIFY2(longs > 0 && shorts > 0, "the writer was never killed at another moment");
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--write")
        writeForEver(arguments.value(2));
    KilledWhileWritingTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_killed_while_writing.moc"
