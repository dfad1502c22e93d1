// SPDX-License-Identifier: MIT
#include "server_choice.h"

#include "base/wire_text.h"
#include "rcon/request_size.h"
#include "wrong_usage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 usualPort = 28960;

/// `where` is how the complaint begins.
qint32 readPort(const QString &text, const QString &where = {})
{
    bool isNumber = false;
    const int port = text.toInt(&isNumber);
    if (!isNumber || port < 1 || port > 65535)
        throw WrongUsage(where + u"\"%1\" is no port: that is a number from 1 to 65535."_s.arg(text));
    return port;
}

bool isDigits(const QString &text)
{
    return std::ranges::all_of(text, [](QChar each) { return each >= u'0' && each <= u'9'; });
}

CliServer serverOf(const QList<SavedServer> &saved, qsizetype index)
{
    const SavedServer &row = saved.at(index);
    const QString host = trimBlanks(row.server);
    const QString port = trimBlanks(row.port);
    const QString place = u"Saved server %1, \"%2\", in molvark.ini in this folder"_s.arg(index + 1).arg(host);
    if (port.isEmpty())
        throw WrongUsage(place + u" has no port."_s);
    return {host, readPort(port, place + u": "_s), trimBlanks(row.password)};
}

/// The last colon before a port; -1 when no port is named. The colons of a bare IPv6 address are its own.
qsizetype colonBeforePort(const QString &text)
{
    if (text.startsWith(u'['))
        return text.indexOf(u':', text.indexOf(u']'));
    return text.count(u':') == 1 ? text.indexOf(u':') : -1;
}

} // namespace

CliServer readServer(const QString &text)
{
    const qsizetype colon = colonBeforePort(text);
    QString host = colon < 0 ? text : text.first(colon);
    if (host.startsWith(u'[')) {
        if (!host.endsWith(u']'))
            throw WrongUsage(u"\"%1\" is no server."_s.arg(text));
        host = host.sliced(1, host.size() - 2);
    }
    host = host.trimmed();
    if (host.isEmpty())
        throw WrongUsage(u"\"%1\" names no server."_s.arg(text));
    return {host, colon < 0 ? usualPort : readPort(text.sliced(colon + 1)), {}};
}

CliServer chooseServer(const QList<SavedServer> &saved, const QString &wanted)
{
    if (wanted.isEmpty()) {
        if (saved.size() != 1)
            throw WrongUsage(u"Name the server with --server or --saved."_s);
        return serverOf(saved, 0);
    }
    if (isDigits(wanted)) {
        const qsizetype number = wanted.toLongLong();
        if (number < 1 || number > saved.size())
            throw WrongUsage(
                u"There is no saved server %1; molvark.ini in this folder has %2."_s.arg(wanted).arg(saved.size()));
        return serverOf(saved, number - 1);
    }
    QList<qsizetype> called;
    for (qsizetype index = 0; index < saved.size(); ++index) {
        if (trimBlanks(saved.at(index).server).compare(wanted, Qt::CaseInsensitive) == 0)
            called.append(index);
    }
    if (called.isEmpty())
        throw WrongUsage(u"No saved server is called \"%1\" in molvark.ini in this folder."_s.arg(wanted));
    if (called.size() > 1)
        throw WrongUsage(
            u"%1 saved servers are called \"%2\": say which by its number."_s.arg(called.size()).arg(wanted));
    return serverOf(saved, called.first());
}

QString passwordIn(const QByteArray &file)
{
    QByteArray text = file;
    if (text.endsWith('\n'))
        text.chop(text.endsWith("\r\n") ? 2 : 1);
    return QString::fromUtf8(text);
}

QString knownPassword(const QString &environment, const QString &saved)
{
    const QString password = environment.trimmed();
    return password.isEmpty() ? saved.trimmed() : password;
}

// Servers split a request at its blanks, so those at the ends of a password are none of it for them either.
QString choosePassword(const std::optional<QByteArray> &file, const QString &environment, const QString &saved)
{
    const QString text = file ? passwordIn(*file) : knownPassword(environment, saved);
    QString password = text.trimmed();
    if (file && password.isEmpty())
        throw WrongUsage(u"The password file is empty."_s);
    if (password.isEmpty())
        throw WrongUsage(u"There is no RCON password: name a file with --password-file, set MOLVARK_RCON_PASSWORD, or "
                         "use a saved server that has one."_s);
    if (requestSize(u"x"_s, password) > longestRequest)
        throw WrongUsage(
            u"The password has %1 bytes, and a server does not read so many."_s.arg(toAnsi(password).size()));
    if (text.contains(u'\n') || text.contains(u'\r') || text.contains(QChar()))
        throw WrongUsage(u"The password has more than one line."_s);
    if (!isSendable(password))
        throw WrongUsage(u"The password has characters that a server cannot read."_s);
    return password;
}
