// SPDX-License-Identifier: MIT
#include "log_file.h"

#include "base/system_error.h"
#include "base/wire_text.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

QString logDate(QDate date)
{
    return QLocale::c().toString(date, u"ddMMyy"_s);
}

std::optional<Fault> appendToLog(const QString &file, const QString &text)
{
    const QFileInfo info(file);
    if (info.exists() && !info.isFile() && !info.isDir())
        return systemFault(std::errc::not_supported); // a device or a pipe: opening it could wait for ever

    const QByteArray bytes = toAnsi(text);
    QFile log(file);
    clearSystemError();
    if (!log.open(QIODevice::Append | QIODevice::Unbuffered))
        return lastSystemError(log.errorString());
    const qint64 before = log.size();
    clearSystemError();
    if (log.write(bytes) != bytes.size()) {
        Fault fault = lastSystemError(log.errorString());
        log.resize(before); // or a part of the text would stand there that is said not to be written
        return fault;
    }
    return {};
}
