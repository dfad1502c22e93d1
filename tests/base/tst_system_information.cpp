// SPDX-License-Identifier: MIT
#include "base/system_information.h"
#include "test_class.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr auto trace = "MOLVARK_TEST_TRACE"; // the file that the information tool leaves behind

/// What the registry names as the information tool: this program itself.
class Registry final {
public:
    Registry() { clear(); }
    ~Registry() { clear(); }
    Q_DISABLE_COPY_MOVE(Registry)

    void setProgram(const QString &path) { tool.setValue(u"PATH"_s, QDir::toNativeSeparators(path)); }
    void setFolder(const QString &path) { place.setValue(u"MSINFO"_s, QDir::toNativeSeparators(path)); }

private:
    void clear()
    {
        tool.remove(u"PATH"_s);
        place.remove(u"MSINFO"_s);
    }

    const QString root = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\"_s;
    QSettings tool{root + u"Shared Tools\\MSINFO"_s, QSettings::NativeFormat};
    QSettings place{root + u"Shared Tools Location"_s, QSettings::NativeFormat};
};

} // namespace

class SystemInformationTest final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!qEnvironmentVariableIsSet("MOLVARK_TEST_REGISTRY"))
            QSKIP("only in a registry that is thrown away afterwards");
    }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        qputenv(trace, sign().toLocal8Bit());
        QFile::remove(sign());
    }

    void withoutARegistryValueThereIsNone()
    {
        const Registry registry;
        QVERIFY(!startSystemInformation());
    }

    void theNamedProgramIsStarted()
    {
        Registry registry;
        registry.setProgram(QCoreApplication::applicationFilePath());
        registry.setFolder(folder.filePath(u"missing"_s));
        QVERIFY(startSystemInformation());
        QTRY_VERIFY(QFile::exists(sign()));
    }

    void otherwiseTheOneInTheNamedFolderIsStarted()
    {
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), folder.filePath(u"MSINFO32.EXE"_s)));
        Registry registry;
        registry.setFolder(folder.path());
        QVERIFY(startSystemInformation());
        QTRY_VERIFY(QFile::exists(sign()));
    }

    void aFolderWithoutTheProgramIsNone()
    {
        Registry registry;
        registry.setFolder(folder.filePath(u"missing"_s));
        QVERIFY(!startSystemInformation());
    }

private:
    [[nodiscard]] QString sign() const { return folder.filePath(u"started"_s); }

    QTemporaryDir folder;
};

// A main function of its own, as the information tool is started without a word; the first argument is the test's name.
int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsSet(trace))
        return QFile(qEnvironmentVariable(trace)).open(QIODevice::WriteOnly) ? EXIT_SUCCESS : EXIT_FAILURE;
    return runTests<QCoreApplication, SystemInformationTest>(argc - 1, argv + 1);
}
#include "tst_system_information.moc"
