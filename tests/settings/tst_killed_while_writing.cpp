// SPDX-License-Identifier: MIT
#include "settings/ini_file.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// One of the two settings between which the writers go back and forth. They stand at both ends of a large file, so
/// that most of a writing is spent on the file itself, and differ in length.
QList<IniEntry> entries(bool isLong)
{
    const QString value = isLong ? u"a-host-with-a-long-name.example.org"_s : u"h"_s;
    return {{u"first"_s, u"server"_s, value}, {u"last"_s, u"server"_s, value}};
}

QByteArray fileOf(bool isLong)
{
    QByteArray foreign;
    for (int line = 0; line < 64; ++line)
        foreign += ';' + QByteArray(8190, 'x') + '\n';
    IniText text("[first]\r\nserver=\r\n" + foreign + "[last]\r\nserver=\r\n");
    for (const IniEntry &entry : entries(isLong))
        text.set(entry);
    return text.bytes();
}

bool writeCarefully(const QString &path, bool isLong)
{
    return !IniFile(path).write(entries(isLong));
}

/// Reads and changes the file likewise, but writes over it.
bool writeCarelessly(const QString &path, bool isLong)
{
    IniText text = IniFile(path).contents();
    for (const IniEntry &entry : entries(isLong))
        text.set(entry);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.bytes()) >= 0;
}

/// Writes the one and the other in turn for as long as it lives, and says so after each.
[[noreturn]] void writeForEver(bool (*write)(const QString &path, bool isLong), const QString &path)
{
    for (bool isLong = false;; isLong = !isLong) {
        if (!write(path, isLong))
            qFatal("cannot write");
        std::putchar('.');
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
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(longFile) == longFile.size());
    }

    void theFileIsAlwaysTheOldOrTheNewOneWhole()
    {
        int longs = 0;
        int shorts = 0;
        for (int kill = 0; kill < 100; ++kill) {
            killWriter(u"--write"_s);
            const QByteArray bytes = bytesOf(path);
            longs += bytes == longFile ? 1 : 0;
            shorts += bytes == shortFile ? 1 : 0;
        }
        QCOMPARE(longs + shorts, 100);
        QVERIFY2(longs > 0 && shorts > 0, "the writer was never killed at another moment");
    }

    // Or the test above could not fail.
    void aCarelessWriterIsFoundOut()
    {
        for (int kill = 0; kill < 1000; ++kill) {
            killWriter(u"--write-carelessly"_s);
            const QByteArray bytes = bytesOf(path);
            if (bytes != longFile && bytes != shortFile)
                return;
        }
        QFAIL("a writer that writes over the file was never killed in the middle of it");
    }

private:
    /// Starts a writer and kills it at any moment of a writing: it does not wait for the reader.
    void killWriter(const QString &how)
    {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {u"killed_while_writing"_s, how, path});
        QVERIFY(writer.waitForReadyRead());
        QElapsedTimer time;
        time.start();
        const qint64 before = writer.bytesAvailable();
        QVERIFY(writer.waitForReadyRead());
        const qint64 oneWriting = time.nsecsElapsed() / (writer.bytesAvailable() - before);

        const auto moment = static_cast<qint64>(random.generateDouble() * static_cast<double>(oneWriting));
        time.start();
        while (time.nsecsElapsed() < moment) {
        }
        writer.kill();
        QVERIFY(writer.waitForFinished());
        QCOMPARE(writer.exitStatus(), QProcess::CrashExit);
    }

    const QByteArray longFile = fileOf(true);
    const QByteArray shortFile = fileOf(false);
    QTemporaryDir folder;
    QString path = folder.filePath(u"molvark.ini"_s);
    QRandomGenerator random{7};
};

static int runOrWrite(int argc, char *argv[])
{
    const QString mode = QString::fromLocal8Bit(argc > 2 ? argv[1] : "");
    const QString path = QString::fromLocal8Bit(argc > 2 ? argv[2] : "");
    if (mode == u"--write")
        writeForEver(writeCarefully, path);
    if (mode == u"--write-carelessly")
        writeForEver(writeCarelessly, path);
    return runTests<QCoreApplication, KilledWhileWritingTest>(argc, argv);
}

static const TestClass testClass(__FILE__, runOrWrite);
#include "tst_killed_while_writing.moc"
