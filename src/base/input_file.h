// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdio>
#include <memory>

struct FileCloser final {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

/// Opens a file to be read as it is, by the C library: Qt's files go on opening and reading when a signal has come.
/// None when that fails; the system then says why.
[[nodiscard]] std::unique_ptr<std::FILE, FileCloser> openToRead(const QString &path);
