// SPDX-License-Identifier: MIT
#include "ini_file.h"

#include "whole_file.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace {

constexpr qint64 largestFile = 64LL * 1024 * 1024;

} // namespace

IniFile::IniFile(QString path) : inipath(std::move(path)) {}

QString IniFile::beside(const QString &name) const
{
    return QFileInfo(QDir::fromNativeSeparators(inipath)).dir().filePath(name);
}

IniText IniFile::contents() const
{
    QByteArray bytes;
    if (readWholeFile(inipath, largestFile, bytes))
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
    if (std::optional<Fault> fault = readWholeFile(inipath, largestFile, bytes))
        return fault;

    IniText text(bytes);
    for (const IniEntry &entry : entries)
        text.set(entry);
    return replaceWholeFile(inipath, text.bytes());
}

std::optional<Fault> IniFile::removeSection(const QString &section)
{
    QByteArray bytes;
    if (std::optional<Fault> fault = readWholeFile(inipath, largestFile, bytes))
        return fault;

    IniText text(bytes);
    return text.removeSection(section) ? replaceWholeFile(inipath, text.bytes()) : std::nullopt;
}
