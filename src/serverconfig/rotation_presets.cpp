// SPDX-License-Identifier: MIT
#include "rotation_presets.h"

#include "rotation_text.h"
#include "settings/json_text.h"
#include "settings/whole_file.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = 1024 * 1024;
const auto presetsKey = "presets"_L1;
const auto nameKey = "name"_L1;
const auto rotationKey = "rotation"_L1;

QByteArray bytesOf(const QList<RotationPreset> &presets)
{
    QJsonArray all;
    for (const RotationPreset &preset : presets)
        all.append(QJsonObject{{nameKey, preset.name}, {rotationKey, preset.rotation}});
    return QJsonDocument(QJsonObject{{presetsKey, all}}).toJson();
}

} // namespace

qsizetype PresetList::indexOf(const QString &name) const
{
    const auto found = std::ranges::find_if(
        presets, [&name](const RotationPreset &preset) { return preset.name.compare(name, Qt::CaseInsensitive) == 0; });
    return found == presets.cend() ? -1 : found - presets.cbegin();
}

PresetList presetsIn(const QByteArray &file)
{
    PresetList list;
    if (file.trimmed().isEmpty())
        return list;
    const QJsonDocument document = readJson(file, list.fault);
    if (!list.fault.isEmpty())
        return list;
    const QJsonValue presets = document.object().value(presetsKey);
    if (!presets.isArray())
        return {{}, u"it has no list \"presets\""_s};
    QSet<QString> names; // a file has room for thousands
    for (const QJsonValue &each : presets.toArray()) {
        const QJsonValue name = each[nameKey];
        const QJsonValue rotation = each[rotationKey];
        if (name.toString().trimmed().isEmpty() || !rotation.isString())
            return {{}, u"preset %1 has no name or no rotation"_s.arg(list.presets.size() + 1)};
        if (names.contains(name.toString().toCaseFolded()))
            return {{}, u"two presets are called "_s + name.toString()};
        names.insert(name.toString().toCaseFolded());
        list.presets.append({name.toString(), rotation.toString()});
    }
    return list;
}

PresetFile::PresetFile(QString path_) : file(std::move(path_)) {}

PresetList PresetFile::contents() const
{
    QByteArray bytes;
    if (const std::optional<Fault> fault = readWholeFile(file, largestFile, bytes))
        return {{}, fault->description()};
    return presetsIn(bytes);
}

QString PresetFile::put(const RotationPreset &preset) const
{
    PresetList list = contents();
    if (!list.fault.isEmpty())
        return list.fault;
    if (preset.rotation.size() > longestRotation)
        return u"this rotation is too long for one"_s;
    if (const qsizetype index = list.indexOf(preset.name); index >= 0)
        list.presets[index] = preset;
    else
        list.presets.append(preset);
    return write(list.presets);
}

QString PresetFile::remove(const QString &name) const
{
    PresetList list = contents();
    if (!list.fault.isEmpty())
        return list.fault;
    if (const qsizetype index = list.indexOf(name); index >= 0)
        list.presets.removeAt(index);
    return write(list.presets);
}

QString PresetFile::write(const QList<RotationPreset> &presets) const
{
    const QByteArray bytes = bytesOf(presets);
    if (bytes.size() > largestFile)
        return u"there is no room for more"_s; // it could not be read again
    if (const std::optional<Fault> fault = replaceWholeFile(file, bytes))
        return fault->description();
    return {};
}
