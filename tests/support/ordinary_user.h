// SPDX-License-Identifier: MIT
#pragma once

#include <QDirIterator>
#include <QFile>

#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

/// As long as it lives a test that the superuser runs has the rights of an ordinary user, whose `folder` is: the
/// superuser could read and write everything.
class OrdinaryUser final {
public:
    explicit OrdinaryUser(const QString &folder) : wasSuperuser(geteuid() == 0)
    {
        if (!wasSuperuser)
            return;
        bool given = own(folder);
        for (QDirIterator files(folder, QDir::AllEntries | QDir::NoDotAndDotDot); files.hasNext();)
            given = own(files.next()) && given;
        if (given && setresgid(nobody, nobody, 0) == 0 && setresuid(nobody, nobody, 0) == 0)
            staySeen();
    }
    ~OrdinaryUser()
    {
        if (!wasSuperuser)
            return;
        if (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0)
            qFatal("the superuser's rights do not come back");
        staySeen();
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

    /// False where the rights could not be dropped.
    [[nodiscard]] bool isOrdinary() const { return geteuid() != 0; }

private:
    static constexpr uid_t nobody = 65534;

    // A process that changes its user cannot be looked into any more, not even by its own leak checker.
    static void staySeen()
    {
#ifdef Q_OS_LINUX
        prctl(PR_SET_DUMPABLE, 1);
#endif
    }
    static bool own(const QString &path)
    {
        return chown(QFile::encodeName(path).constData(), nobody, nobody) == 0;
    }

    bool wasSuperuser;
};
