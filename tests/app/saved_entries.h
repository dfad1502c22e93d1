// SPDX-License-Identifier: MIT
#pragma once

#include "program.h"

#include <QFile>

inline const QByteArray twoServers = "[servers]\r\nserver1=one\r\nserver2=two\r\n[ports]\r\nport1=1\r\nport2=2\r\n"
                                     "[rcon]\r\nrcon1=a\r\nrcon2=b\r\n";
inline const QString settingsFile = QStringLiteral("molvark.ini");
inline const QString rconLog = QStringLiteral("molvark_rcon_050306.log");
inline const QString messageLog = QStringLiteral("molvar_messages_050306.log");

/// Server, port and password with this number in the settings file, and "-" for a key that is missing.
inline QString saved(const Program &program, int number)
{
    using namespace Qt::StringLiterals;
    const IniText ini(program.file(settingsFile));
    const auto entry = [&](const QString &section, const QString &key) {
        const QByteArray line = "\n" + key.toLatin1() + QByteArray::number(number) + "=";
        const bool there = program.file(settingsFile).contains(line);
        return there ? ini.value(section, key + QString::number(number), 200) : u"-"_s;
    };
    return entry(u"servers"_s, u"server"_s) + u' ' + entry(u"ports"_s, u"port"_s) + u' ' + entry(u"rcon"_s, u"rcon"_s);
}

/// One row in the list that has not been saved yet.
inline void addServer(const Program &program)
{
    using namespace Qt::StringLiterals;
    program.setText(u"comserver"_s, u"three"_s);
    program.setText(u"comport"_s, u"3"_s);
    program.setText(u"txtPWD"_s, u"c"_s);
    program.trigger(u"Saveserver"_s);
}
