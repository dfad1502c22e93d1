// SPDX-License-Identifier: MIT
#include "system_information.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

#include <QFileInfo>
#include <QProcess>
#include <QSettings>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// A text as it is, a number in hexadecimal behind "&h"; nothing when there is no such value.
std::optional<QString> registryValue(const QString &key, const QString &name)
{
    const QSettings settings(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\"_s + key, QSettings::NativeFormat);
    if (!settings.contains(name))
        return {};
    const QVariant value = settings.value(name);
    const bool isNumber = value.typeId() != QMetaType::QString && value.canConvert<qulonglong>();
    return isNumber ? u"&h"_s + QString::number(value.toULongLong(), 16).toUpper() : value.toString();
}

} // namespace

bool startSystemInformation()
{
    std::optional<QString> program = registryValue(u"Shared Tools\\MSINFO"_s, u"PATH"_s);
    if (!program) {
        const std::optional<QString> folder = registryValue(u"Shared Tools Location"_s, u"MSINFO"_s);
        program = folder.value_or(QString()) + u"\\MSINFO32.EXE"_s;
        if (!folder || !QFileInfo::exists(*program))
            return false;
    }
    QProcess::startDetached(*program, {}); // no result is checked
    return true;
}

#else

bool startSystemInformation()
{
    return false;
}

#endif
