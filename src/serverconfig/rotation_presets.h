// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A rotation that is kept under a name. Two names that differ in capitals alone are the same.
struct RotationPreset {
    QString name;
    QString rotation;

    bool operator==(const RotationPreset &) const = default;
};

/// The presets in `file`, or in `fault` why it is none of ours. An empty file has none.
struct PresetList {
    QList<RotationPreset> presets;
    QString fault;

    /// -1 when there is none of that name.
    [[nodiscard]] qsizetype indexOf(const QString &name) const;
};
[[nodiscard]] PresetList presetsIn(const QByteArray &file);

/// The file of the presets. Like the settings it is read anew each time and replaced whole, but never when it is one
/// that cannot be read or is none of ours: whatever is in it stays.
class PresetFile final {
public:
    explicit PresetFile(QString path_);

    [[nodiscard]] QString path() const { return file; }
    [[nodiscard]] PresetList contents() const;
    /// Keeps `preset` in the place of the one of its name, or behind all others. What comes back says why it could not;
    /// empty when it is done.
    [[nodiscard]] QString put(const RotationPreset &preset) const;
    [[nodiscard]] QString remove(const QString &name) const;

private:
    [[nodiscard]] QString write(const QList<RotationPreset> &presets) const;

    QString file;
};
