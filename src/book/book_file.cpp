// SPDX-License-Identifier: MIT
#include "book_file.h"

#include "base/file_lock.h"
#include "book_fault.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// The head of an SQLite database: 100 bytes, numbers with their highest byte first.
constexpr qsizetype headSize = 100;
constexpr qsizetype versionAt = 60;
constexpr qsizetype applicationAt = 68;

constexpr auto logEnding = "-wal"_L1;
constexpr auto journalEnding = "-journal"_L1;
constexpr std::array companions{logEnding, "-shm"_L1, journalEnding};
constexpr QFile::Permissions ownersAlone = QFile::ReadOwner | QFile::WriteOwner;

quint32 numberAt(const QByteArray &head, qsizetype at)
{
    return qFromBigEndian<quint32>(head.constData() + at);
}

QByteArray headOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw bookFault(BookFault::Unusable, path, file.errorString());
    return file.read(headSize);
}

/// The first name of this form under which there is nothing.
QString freeName(const QString &path)
{
    const QFileInfo info(path);
    for (int number = 1;; ++number) {
        const QString name = u"%1.broken-%2.%3"_s.arg(info.completeBaseName()).arg(number).arg(info.suffix());
        QString free = info.dir().filePath(name);
        if (!QFileInfo::exists(free) &&
            std::ranges::none_of(companions, [&](QLatin1StringView each) { return QFileInfo::exists(free + each); }))
            return free;
    }
}

} // namespace

QString resolvedBookPath(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isSymLink())
        return info.absoluteFilePath();
    if (!info.exists())
        throw bookFault(BookFault::Unusable, path, u"It is a link to nothing."_s);
    return info.canonicalFilePath();
}

BookFileKind inspectBookFile(const QString &path, int version)
{
    const QFileInfo info(path);
    if (!info.exists())
        return BookFileKind::Missing;
    if (!info.isFile()) // opening a pipe could wait for ever
        throw bookFault(BookFault::Unusable, path, info.isDir() ? u"It is a folder."_s : u"It is no file."_s);
    if (!info.isWritable() || !QFileInfo(info.absolutePath()).isWritable())
        throw bookFault(BookFault::ReadOnly, path);
    if (info.size() == 0)
        return BookFileKind::Empty;

    const QByteArray head = headOf(path);
    if (head.size() < headSize || !head.startsWith("SQLite format 3") ||
        numberAt(head, applicationAt) != bookApplication)
        return BookFileKind::Foreign;
    return numberAt(head, versionAt) > static_cast<quint32>(version) ? BookFileKind::NewerBook : BookFileKind::Book;
}

void makeBookFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownersAlone)) {
        const bool isForbidden = !QFileInfo(QFileInfo(path).absolutePath()).isWritable();
        throw bookFault(isForbidden ? BookFault::ReadOnly : BookFault::Unusable, path, file.errorString());
    }
}

void protectBookFile(const QString &path)
{
    const auto protect = [](const QString &file) {
        const QFileInfo info(file);
        const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                                          QFile::WriteOther | QFile::ExeOther;
        if (info.isFile() && (info.permissions() & others))
            QFile::setPermissions(file, ownersAlone);
    };
    protect(path);
    for (const QLatin1StringView companion : companions)
        protect(path + companion);
}

QString putBookAside(const QString &path)
{
    if (isLockedByAnother(path))
        throw bookFault(BookFault::Locked, path);
    const QString aside = freeName(path);
    if (QFileInfo::exists(path) && !QFile::rename(path, aside))
        throw bookFault(BookFault::Unusable, path, u"It is broken, and cannot be renamed."_s);
    for (const QLatin1StringView companion : companions)
        if (QFileInfo::exists(path + companion) && !QFile::rename(path + companion, aside + companion))
            throw bookFault(BookFault::Unusable, path, u"It is broken, and its log cannot be renamed."_s);
    return QFileInfo(aside).fileName();
}

qint64 logSize(const QString &path)
{
    return QFileInfo(path + logEnding).size();
}

bool hasBookJournal(const QString &path)
{
    return QFileInfo(path + journalEnding).size() > 0;
}

QByteArrayList companionIdentities(const QString &path)
{
    QByteArrayList all;
    for (const QLatin1StringView companion : companions)
        all.append(fileIdentity(path + companion));
    return all;
}

void removeCompanions(const QString &path, const QByteArrayList &identities)
{
    const QByteArrayList now = companionIdentities(path);
    for (std::size_t at = 0; at < companions.size(); ++at) {
        const auto place = static_cast<qsizetype>(at);
        if (!now.at(place).isEmpty() && now.at(place) == identities.value(place))
            QFile::remove(path + companions.at(at));
    }
}
