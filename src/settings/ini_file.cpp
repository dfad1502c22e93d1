// SPDX-License-Identifier: MIT
#include "ini_file.h"

#include "base/system_error.h"

#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace {

constexpr qint64 largestFile = 64LL * 1024 * 1024;

/// Reads the whole file into `bytes`. A missing file is no fault and counts as empty.
std::optional<Fault> readBytes(const QString &path, QByteArray &bytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    if (info.isDir())
        return systemFault(std::errc::is_a_directory);
    if (!info.isFile())
        return systemFault(std::errc::not_supported); // Opening a device or a pipe could wait for ever.
    if (info.size() > largestFile)
        return systemFault(std::errc::file_too_large);

    QFile file(path);
    clearSystemError();
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    if (file.error() != QFile::NoError)
        return lastSystemError(file.errorString());
    return std::nullopt;
}

std::optional<Fault> replaceBytes(const QString &path, const QByteArray &bytes)
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

} // namespace

IniFile::IniFile(QString path) : inipath(std::move(path)) {}

IniText IniFile::contents() const
{
    QByteArray bytes;
    if (readBytes(inipath, bytes))
        return IniText();
    return IniText(bytes);
}

QString IniFile::read(const QString &section, const QString &key, int buffer) const
{
    return contents().value(section, key, buffer);
}

std::optional<Fault> IniFile::write(const QList<IniEntry> &entries)
{
    QByteArray bytes;
    if (std::optional<Fault> fault = readBytes(inipath, bytes))
        return fault;

    IniText text(bytes);
    for (const IniEntry &entry : entries)
        text.set(entry);
    return replaceBytes(inipath, text.bytes());
}

std::optional<Fault> IniFile::removeSection(const QString &section)
{
    QByteArray bytes;
    if (std::optional<Fault> fault = readBytes(inipath, bytes))
        return fault;

    IniText text(bytes);
    return text.removeSection(section) ? replaceBytes(inipath, text.bytes()) : std::nullopt;
}
