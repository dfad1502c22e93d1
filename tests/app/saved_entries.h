// SPDX-License-Identifier: MIT
#pragma once

#include "program.h"

#include <QFile>
#include <QListWidget>
#include <QRegularExpression>

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

/// Takes all servers from the list and ends the run: as many are emptied in the settings file as were ever counted.
inline int emptiedAtTheEnd(Program &program)
{
    using namespace Qt::StringLiterals;
    for (QStringList rows = program.rows(u"lstservers"_s); !rows.isEmpty(); rows = program.rows(u"lstservers"_s)) {
        program.setText(u"comserver"_s, rows.first().section(u':', 0, 0));
        program.setText(u"comport"_s, rows.first().section(u':', 1));
        if (program.text(u"comport"_s).isEmpty())
            delete program.find<QListWidget>(u"lstservers"_s)->takeItem(0); // the menu needs a port
        program.trigger(u"removeserver"_s);
    }
    program.write(settingsFile, {}); // what is found there afterwards was written at the end
    program.window.close();
    static const QRegularExpression emptied(u"^server[0-9]+=\r?$"_s, QRegularExpression::MultilineOption);
    return static_cast<int>(QString::fromLatin1(program.file(settingsFile)).count(emptied));
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
