// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

/// Gives this process mounts of its own; true where the system permits it. To be called before the first thread.
inline bool takeMountsOfOnesOwn()
{
    const auto isWritten = [](const QString &name, const QByteArray &text) {
        QFile file(name);
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
    };
    if (geteuid() == 0) {
        if (unshare(CLONE_NEWNS) != 0)
            return false;
    } else {
        const QByteArray user = QByteArray::number(geteuid());
        const QByteArray group = QByteArray::number(getegid());
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 || !isWritten(QStringLiteral("/proc/self/setgroups"), "deny") ||
            !isWritten(QStringLiteral("/proc/self/uid_map"), user + ' ' + user + " 1") ||
            !isWritten(QStringLiteral("/proc/self/gid_map"), group + ' ' + group + " 1"))
            return false;
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// A small disk in the place of the current folder, until it is destroyed.
class SmallDisk final {
public:
    explicit SmallDisk(const QByteArray &size = "64k") : folder(QFile::encodeName(QDir::currentPath()))
    {
        const QByteArray options = "size=" + size + ",mode=0700";
        mounted = mount("none", folder.constData(), "tmpfs", 0, options.constData()) == 0;
        QDir::setCurrent(QFile::decodeName(folder)); // the folder under the disk is another one
    }
    ~SmallDisk()
    {
        if (mounted)
            umount2(folder.constData(), MNT_DETACH);
        QDir::setCurrent(QFile::decodeName(folder));
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    [[nodiscard]] bool isThere() const { return mounted; }

    /// Takes what room there is; false when there is still some.
    bool fill()
    {
        filler.setFileName(QStringLiteral("filler"));
        const QByteArray page(4096, 'x');
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return false;
        while (filler.write(page) == page.size()) {
        }
        filler.close();
        return filler.size() > 0;
    }
    /// Gives it back.
    bool free() { return filler.remove(); }

private:
    QByteArray folder;
    QFile filler;
    bool mounted = false;
};
