// SPDX-License-Identifier: MIT
#include "file_lock.h"

#include <QFile>

#ifdef Q_OS_WIN
bool isLockedByAnother(const QString &)
{
    return false;
}
#else
#include <fcntl.h>

bool isLockedByAnother(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET; // from the beginning, however long
    return fcntl(file.handle(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}
#endif
