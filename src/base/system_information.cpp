// SPDX-License-Identifier: MIT
#include "system_information.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

#include <QFileInfo>
#include <QProcess>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

QString registryValue(const QString &key, const QString &name)
{
    return QSettings(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\"_s + key, QSettings::NativeFormat)
        .value(name)
        .toString();
}

} // namespace

bool startSystemInformation()
{
    QString program = registryValue(u"Shared Tools\\MSINFO"_s, u"PATH"_s);
    if (program.isEmpty()) {
        const QString folder = registryValue(u"Shared Tools Location"_s, u"MSINFO"_s);
        program = folder + u"\\MSINFO32.EXE"_s;
        if (folder.isEmpty() || !QFileInfo::exists(program))
            return false;
    }
    QProcess::startDetached(program, {}); // no result is checked
    return true;
}

#else

bool startSystemInformation()
{
    return false;
}

#endif
