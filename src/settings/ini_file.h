// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"
#include "ini_text.h"

#include <optional>

/// The settings file. Nothing of it is kept in memory: every reading reads the file anew, every writing replaces it
/// whole.
class IniFile {
public:
    explicit IniFile(QString path);

    [[nodiscard]] QString path() const { return inipath; }
    /// The path of a file of that name in the folder of the settings.
    [[nodiscard]] QString beside(const QString &name) const;

    /// The file as it is now; a file that is missing, cannot be read or is larger than 64 MiB reads as empty.
    [[nodiscard]] IniText contents() const;
    /// One value of contents(), for a reader with a buffer of `buffer` characters.
    [[nodiscard]] QString read(const QString &section, const QString &key, int buffer) const;

    /// Writes all entries in one replacement of the file. Nothing on success; else the system's error number and text,
    /// and the old file is left whole. A file that is there but cannot be read is not replaced. A new file is the
    /// user's alone, since it holds passwords; an old one keeps its permissions.
    [[nodiscard]] std::optional<Fault> write(const QList<IniEntry> &entries);

    /// Takes all sections of that name out, whole, likewise. A file without one is left alone.
    [[nodiscard]] std::optional<Fault> removeSection(const QString &section);

private:
    QString inipath;
};
