// SPDX-License-Identifier: MIT
#include "server_choice.h"

#include "base/wire_text.h"
#include "wrong_usage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 usualPort = 28960;

qint32 readPort(const QString &text)
{
    bool isNumber = false;
    const int port = text.toInt(&isNumber);
    if (!isNumber || port < 1 || port > 65535)
        throw WrongUsage(u"\"%1\" is no port: that is a number from 1 to 65535."_s.arg(text));
    return port;
}

bool isDigits(const QString &text)
{
    return std::ranges::all_of(text, [](QChar each) { return each >= u'0' && each <= u'9'; });
}

CliServer serverOf(const SavedServer &row)
{
    return {trimBlanks(row.server), readPort(trimBlanks(row.port)), trimBlanks(row.password)};
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
        return serverOf(saved.first());
    }
    if (isDigits(wanted)) {
        const qsizetype number = wanted.toLongLong();
        if (number < 1 || number > saved.size())
            throw WrongUsage(
                u"There is no saved server %1; molvark.ini in this folder has %2."_s.arg(wanted).arg(saved.size()));
        return serverOf(saved.at(number - 1));
    }
    QList<SavedServer> called;
    std::ranges::copy_if(saved, std::back_inserter(called), [&wanted](const SavedServer &row) {
        return trimBlanks(row.server).compare(wanted, Qt::CaseInsensitive) == 0;
    });
    if (called.isEmpty())
        throw WrongUsage(u"No saved server is called \"%1\" in molvark.ini in this folder."_s.arg(wanted));
    if (called.size() > 1)
        throw WrongUsage(
            u"%1 saved servers are called \"%2\": say which by its number."_s.arg(called.size()).arg(wanted));
    return serverOf(called.first());
}

QString passwordIn(const QByteArray &file)
{
    QByteArray text = file;
    if (text.endsWith('\n'))
        text.chop(text.endsWith("\r\n") ? 2 : 1);
    return QString::fromUtf8(text);
}

QString choosePassword(const std::optional<QByteArray> &file, const QString &environment, const QString &saved)
{
    if (file && passwordIn(*file).isEmpty())
        throw WrongUsage(u"The password file is empty."_s);
    const QString fileless = environment.isEmpty() ? saved : environment;
    QString password = file ? passwordIn(*file) : fileless;
    if (password.isEmpty())
        throw WrongUsage(u"There is no RCON password: name a file with --password-file, set MOLVARK_RCON_PASSWORD, or "
                         "use a saved server that has one."_s);
    if (password.contains(u'\n') || password.contains(u'\r') || password.contains(QChar()))
        throw WrongUsage(u"The password has more than one line."_s);
    if (toAnsi(password).count('?') > password.count(u'?'))
        throw WrongUsage(u"The password has characters that a server cannot read."_s);
    return password;
}
