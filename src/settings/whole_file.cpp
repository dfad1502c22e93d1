// SPDX-License-Identifier: MIT
#include "whole_file.h"

#include "base/system_error.h"

#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

std::optional<Fault> readWholeFile(const QString &path, qint64 largest, QByteArray &bytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    if (info.isDir())
        return systemFault(std::errc::is_a_directory);
    if (!info.isFile())
        return systemFault(std::errc::not_supported); // Opening a device or a pipe could wait for ever.
    if (info.size() > largest)
        return systemFault(std::errc::file_too_large);

    QFile file(path);
    clearSystemError();
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    if (file.error() != QFile::NoError)
        return lastSystemError(file.errorString());
    return std::nullopt;
}

std::optional<Fault> replaceWholeFile(const QString &path, const QByteArray &bytes)
{
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    clearSystemError();
    if (!file.open(QIODevice::WriteOnly))
        return lastSystemError(file.errorString());
    if (isNew)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);

    clearSystemError();
    if (file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        return lastSystemError(file.errorString());
    return std::nullopt;
}

QString asideName(const QString &path, int number)
{
    const QFileInfo info(path);
    return u"%1.broken-%2.%3"_s.arg(info.completeBaseName()).arg(number).arg(info.suffix());
}

QString putFileAside(const QString &path)
{
    constexpr int most = 1000;
    for (int number = 1; number <= most; ++number) {
        const QString aside = asideName(path, number);
        const QString there = QFileInfo(path).path() + u'/' + aside;
        if (!QFileInfo::exists(there))
            return QFile::rename(path, there) ? aside : QString();
    }
    return {};
}
