// SPDX-License-Identifier: MIT
#include "file_lock.h"

#include <QFile>

#ifdef Q_OS_WIN
bool isLockedByAnother(const QString &)
{
    return false;
}

QByteArray fileIdentity(const QString &path)
{
    return QFile::exists(path) ? QByteArray("there") : QByteArray();
}
#else
#include <fcntl.h>
#include <sys/stat.h>

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

QByteArray fileIdentity(const QString &path)
{
    struct stat file {};
    if (stat(QFile::encodeName(path).constData(), &file) != 0)
        return {};
    return QByteArray::number(static_cast<quint64>(file.st_dev)) + ' ' +
           QByteArray::number(static_cast<quint64>(file.st_ino));
}
#endif
