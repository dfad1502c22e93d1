// SPDX-License-Identifier: MIT
#pragma once

#include <QDirIterator>
#include <QFile>
#include <QtTest>

#include <array>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

/// As long as it lives the test has the rights of an ordinary user, whose `folder` is, and no more: the superuser could
/// read and write everything, and so could whoever has a user namespace of his own.
class OrdinaryUser final {
public:
    explicit OrdinaryUser(const QString &folder) : wasSuperuser(geteuid() == 0)
    {
        if (!wasSuperuser) {
            usePrivileges(false);
            return;
        }
        bool given = own(folder);
        for (QDirIterator files(folder, QDir::AllEntries | QDir::NoDotAndDotDot); files.hasNext();)
            given = own(files.next()) && given;
        if (given && setresgid(nobody, nobody, 0) == 0 && setresuid(nobody, nobody, 0) == 0)
            staySeen();
    }
    ~OrdinaryUser()
    {
        if (!wasSuperuser) {
            usePrivileges(true);
            return;
        }
        if (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0)
            QTest::qFail("the superuser's rights do not come back", __FILE__, __LINE__);
        staySeen();
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

    /// False where the rights could not be dropped.
    [[nodiscard]] bool isOrdinary() const { return geteuid() != 0; }

private:
    static constexpr uid_t nobody = 65534;

    static bool own(const QString &path) { return chown(QFile::encodeName(path).constData(), nobody, nobody) == 0; }

    static void usePrivileges([[maybe_unused]] bool on)
    {
#ifdef Q_OS_LINUX
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> words{};
        syscall(SYS_capget, &header, words.data());
        for (__user_cap_data_struct &word : words)
            word.effective = on ? word.permitted : 0;
        syscall(SYS_capset, &header, words.data());
#endif
    }

    // A process that changes its user cannot be looked into any more, not even by its own leak checker.
    static void staySeen()
    {
#ifdef Q_OS_LINUX
        prctl(PR_SET_DUMPABLE, 1);
#endif
    }

    bool wasSuperuser;
};
