// SPDX-License-Identifier: MIT
#include "settings/ini_file.h"
#include "test_class.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>

#ifdef Q_OS_UNIX
#include "ordinary_user.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace {

const auto oldBytes = "; by hand\n[rcon]\nrcon1=secret\n"_ba;
const QList<IniEntry> newPassword{{u"rcon"_s, u"rcon1"_s, u"changed"_s}};

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read"_ba;
}

bool place(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// Checks that `fault` is the system's error `number`.
void verifyFault(const std::optional<Fault> &fault, int number)
{
    QVERIFY(fault.has_value());
    QCOMPARE(fault->number(), number);
    QCOMPARE(fault->description(), QString::fromStdString(std::generic_category().message(number)));
}

#ifdef Q_OS_UNIX
/// As long as it lives no file of this process can grow beyond `bytes`: a disk that is full.
class FullDisk final {
public:
    explicit FullDisk(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    void (*handler)(int);
    rlimit before{};
};

/// New files get all the permissions that their creator asks for.
class OpenHanded final {
public:
    OpenHanded() : before(umask(0)) {}
    ~OpenHanded() { umask(before); }
    Q_DISABLE_COPY_MOVE(OpenHanded)

private:
    mode_t before;
};

mode_t modeOf(const QString &path)
{
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}
#endif

} // namespace

class IniFileTest final : public QObject {
    Q_OBJECT

    [[nodiscard]] QStringList files() const
    {
        return QDir(folder->path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> folder;
    QString path;

private slots:
    void init();
    void cleanup() { folder.reset(); }

    void aMissingFileReadsAsEmpty();
    void otherFilesStandBesideIt();
    void everyReadingReadsTheFileAnew();
    void aGroupOfKeysIsWrittenAtOnce();
    void aWriteThatChangesNothingStillWrites();
    void anotherFolderHasAnotherFile();
    void anOddFileIsSurvived_data();
    void anOddFileIsSurvived();
    void aDirectoryInItsPlaceReadsAsEmptyAndStays();
    void aHugeFileReadsAsEmptyAndStays();
    void aFolderThatVanishedIsReported();
#ifdef Q_OS_UNIX
    void anUnreadableFileReadsAsEmptyAndStays();
    void aWriteProtectedFileStays();
    void aWriteProtectedFolderIsReported();
    void aPipeInItsPlaceIsNotWaitedFor();
    void aFullDiskLeavesTheOldFileWhole_data();
    void aFullDiskLeavesTheOldFileWhole();
    void aFullDiskLeavesNoNewFile();
    void aNewFileIsTheUsersAlone();
    void anOldFileKeepsItsPermissions_data();
    void anOldFileKeepsItsPermissions();
    void aLinkStaysALink();
#endif
};

void IniFileTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
    path = folder->filePath(u"molvark.ini"_s);
}

void IniFileTest::aMissingFileReadsAsEmpty()
{
    const IniFile file(path);
    QCOMPARE(file.path(), path);
    QCOMPARE(file.read(u"rcon"_s, u"rcon1"_s, 200), u""_s);
    QCOMPARE(file.contents().bytes(), ""_ba);
    QVERIFY(files().isEmpty());
}

void IniFileTest::otherFilesStandBesideIt()
{
    QCOMPARE(IniFile(path).beside(u"words.json"_s), folder->filePath(u"words.json"_s));
    QCOMPARE(IniFile(QDir::toNativeSeparators(path)).beside(u"words.json"_s), folder->filePath(u"words.json"_s));
}

void IniFileTest::everyReadingReadsTheFileAnew()
{
    const IniFile file(path);
    QVERIFY(place(path, oldBytes));
    QCOMPARE(file.read(u"rcon"_s, u"rcon1"_s, 200), u"secret"_s);
    QCOMPARE(file.read(u"rcon"_s, u"rcon1"_s, 5), u"secr"_s);
    QVERIFY(place(path, "[rcon]\nrcon1=by hand\n"));
    QCOMPARE(file.read(u"rcon"_s, u"rcon1"_s, 200), u"by hand"_s);
    QVERIFY(QFile::remove(path));
    QCOMPARE(file.read(u"rcon"_s, u"rcon1"_s, 200), u""_s);
}

void IniFileTest::aGroupOfKeysIsWrittenAtOnce()
{
    QVERIFY(place(path, oldBytes));
    QVERIFY(!IniFile(path).write({{u"rcon"_s, u"rcon1"_s, u" \u20AC "_s},
                                  {u"Remoteuser"_s, u"user"_s, u"Admin"_s},
                                  {u"rcon"_s, u"rcon2"_s, u""_s}}));
    QCOMPARE(bytesOf(path), "; by hand\n[rcon]\nrcon1=\" \x80 \"\r\nrcon2=\r\n[Remoteuser]\r\nuser=Admin\r\n"_ba);
    QCOMPARE(IniFile(path).read(u"rcon"_s, u"rcon1"_s, 200), u" \u20AC "_s);
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});
}

void IniFileTest::aWriteThatChangesNothingStillWrites()
{
    QVERIFY(!IniFile(path).write({}));
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});

    QVERIFY(place(path, oldBytes));
    const QDateTime longAgo(QDate(2005, 11, 10), QTime(12, 0));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(longAgo, QFile::FileModificationTime));
    file.close();
    QVERIFY(!IniFile(path).write({}));
    QVERIFY(QFileInfo(path).lastModified() > longAgo);
    QCOMPARE(bytesOf(path), oldBytes);
}

void IniFileTest::anotherFolderHasAnotherFile()
{
    const QTemporaryDir other;
    QVERIFY(place(path, oldBytes));
    IniFile otherFile(other.filePath(u"molvark.ini"_s));
    QCOMPARE(otherFile.read(u"rcon"_s, u"rcon1"_s, 200), u""_s);
    QVERIFY(!otherFile.write(newPassword));
    QCOMPARE(otherFile.read(u"rcon"_s, u"rcon1"_s, 200), u"changed"_s);
    QCOMPARE(bytesOf(path), oldBytes);
}

void IniFileTest::anOddFileIsSurvived_data()
{
    const QByteArray megabyte(1'000'000, 'x');
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("empty") << ""_ba
                           << "[rcon]\r\nrcon1=changed\r\n"_ba;
    QTest::newRow("NUL bytes") << "\0\0[rcon]\n\0\n[rcon]\nrcon1=\0\n\0=\0"_ba
                               << "\0\0[rcon]\n\0\n[rcon]\nrcon1=changed\r\n\0=\0"_ba;
    QTest::newRow("NUL bytes only") << QByteArray(5'000, '\0')
                                    << QByteArray(5'000, '\0') + "\r\n[rcon]\r\nrcon1=changed\r\n";
    QTest::newRow("line of a megabyte") << megabyte + "\n[rcon]\nrcon1=" + megabyte + "\nrcon2=" + megabyte
                                        << megabyte + "\n[rcon]\nrcon1=changed\r\nrcon2=" + megabyte;
    QTest::newRow("no end at the end") << "[rcon]\r\nrcon0=a"_ba
                                       << "[rcon]\r\nrcon0=a\r\nrcon1=changed\r\n"_ba;
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF[rcon]\r\nrcon1=a\r\n"_ba
                                     << "\xEF\xBB\xBF[rcon]\r\nrcon1=changed\r\n"_ba;
    QTest::newRow("line feeds only") << "[a]\nb=c\n\n[rcon]\nrcon1=a\n"_ba
                                     << "[a]\nb=c\n\n[rcon]\nrcon1=changed\r\n"_ba;
}

void IniFileTest::anOddFileIsSurvived()
{
    QFETCH(const QByteArray, before);
    QVERIFY(place(path, before));
    QVERIFY(IniFile(path).contents().bytes() == before);
    QVERIFY(!IniFile(path).write(newPassword));
    QFETCH(const QByteArray, after);
    QVERIFY(bytesOf(path) == after);
    QCOMPARE(IniFile(path).read(u"rcon"_s, u"rcon1"_s, 200), u"changed"_s);
}

void IniFileTest::aDirectoryInItsPlaceReadsAsEmptyAndStays()
{
    QVERIFY(QDir().mkdir(path));
    QCOMPARE(IniFile(path).contents().bytes(), ""_ba);
    verifyFault(IniFile(path).write(newPassword), EISDIR);
    QVERIFY(QFileInfo(path).isDir());
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});
}

void IniFileTest::aHugeFileReadsAsEmptyAndStays()
{
    constexpr qint64 size = 64LL * 1024 * 1024 + 1;
    QVERIFY(place(path, oldBytes));
    QVERIFY(QFile::resize(path, size));
    QCOMPARE(IniFile(path).contents().bytes(), ""_ba);
    verifyFault(IniFile(path).write(newPassword), EFBIG);
    QCOMPARE(QFileInfo(path).size(), size);
}

void IniFileTest::aFolderThatVanishedIsReported()
{
    QVERIFY(folder->remove());
#ifdef Q_OS_WIN
    QCOMPARE(IniFile(path).write(newPassword).value().number(), 3); // the path is not found, for Windows
#else
    verifyFault(IniFile(path).write(newPassword), ENOENT);
#endif
    QCOMPARE(IniFile(path).contents().bytes(), ""_ba);
}

#ifdef Q_OS_UNIX
void IniFileTest::anUnreadableFileReadsAsEmptyAndStays()
{
    QVERIFY(place(path, oldBytes));
    const OrdinaryUser user(folder->path());
    if (!user.isOrdinary())
        QSKIP("The superuser reads every file");
    QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
    QCOMPARE(IniFile(path).contents().bytes(), ""_ba);
    verifyFault(IniFile(path).write(newPassword), EACCES);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    QCOMPARE(bytesOf(path), oldBytes);
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});
}

void IniFileTest::aWriteProtectedFileStays()
{
    QVERIFY(place(path, oldBytes));
    const OrdinaryUser user(folder->path());
    if (!user.isOrdinary())
        QSKIP("The superuser writes every file");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    verifyFault(IniFile(path).write(newPassword), EACCES);
    QCOMPARE(bytesOf(path), oldBytes);
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});
}

void IniFileTest::aWriteProtectedFolderIsReported()
{
    QVERIFY(place(path, oldBytes));
    const OrdinaryUser user(folder->path());
    if (!user.isOrdinary())
        QSKIP("The superuser writes into every folder");
    QVERIFY(QFile::setPermissions(folder->path(), QFile::ReadOwner | QFile::ExeOwner));
    const std::optional<Fault> fault = IniFile(path).write(newPassword);
    QVERIFY(QFile::setPermissions(folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    verifyFault(fault, EACCES);
    QCOMPARE(bytesOf(path), oldBytes);
}

void IniFileTest::aPipeInItsPlaceIsNotWaitedFor()
{
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QCOMPARE(IniFile(path).contents().bytes(), ""_ba);
    verifyFault(IniFile(path).write(newPassword), ENOTSUP);
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});
}

void IniFileTest::aFullDiskLeavesTheOldFileWhole_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("small file") << oldBytes;
    QTest::newRow("large file") << oldBytes + "rcon2=" + QByteArray(500'000, 'x');
}

void IniFileTest::aFullDiskLeavesTheOldFileWhole()
{
    QFETCH(const QByteArray, before);
    QVERIFY(place(path, before));
    std::optional<Fault> fault;
    {
        const FullDisk full(10);
        fault = IniFile(path).write(newPassword);
    }
    verifyFault(fault, EFBIG);
    QVERIFY(bytesOf(path) == before);
    QCOMPARE(files(), QStringList{u"molvark.ini"_s});

    QVERIFY(!IniFile(path).write(newPassword));
    QCOMPARE(IniFile(path).read(u"rcon"_s, u"rcon1"_s, 200), u"changed"_s);
}

void IniFileTest::aFullDiskLeavesNoNewFile()
{
    std::optional<Fault> fault;
    {
        const FullDisk full(10);
        fault = IniFile(path).write(newPassword);
    }
    verifyFault(fault, EFBIG);
    QVERIFY(files().isEmpty());
}

void IniFileTest::aNewFileIsTheUsersAlone()
{
    const OpenHanded openHanded;
    QVERIFY(!IniFile(path).write(newPassword));
    QCOMPARE(modeOf(path), mode_t{0600});
}

void IniFileTest::anOldFileKeepsItsPermissions_data()
{
    QTest::addColumn<mode_t>("mode");
    for (const mode_t mode : {0600U, 0640U, 0644U, 0660U, 0666U, 0700U})
        QTest::newRow(QByteArray::number(mode, 8).constData()) << mode;
}

void IniFileTest::anOldFileKeepsItsPermissions()
{
    QFETCH(const mode_t, mode);
    QVERIFY(place(path, oldBytes));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), mode), 0);
    QVERIFY(!IniFile(path).write(newPassword));
    QCOMPARE(IniFile(path).read(u"rcon"_s, u"rcon1"_s, 200), u"changed"_s);
    QCOMPARE(modeOf(path), mode);
}

void IniFileTest::aLinkStaysALink()
{
    const QString target = folder->filePath(u"kept elsewhere.ini"_s);
    QVERIFY(place(target, oldBytes));
    QVERIFY(QFile::link(target, path));
    QVERIFY(!IniFile(path).write(newPassword));
    QVERIFY(QFileInfo(path).isSymLink());
    QCOMPARE(bytesOf(target), "; by hand\n[rcon]\nrcon1=changed\r\n"_ba);
}
#endif

GUILESS_TEST(IniFileTest)
#include "tst_ini_file.moc"
