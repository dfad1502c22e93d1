// SPDX-License-Identifier: MIT
#pragma once

#include "test_class.h"

#include <QDir>
#include <QFile>

#include <cstdio>

/// Runs the target over every file of the folder that is the only argument.
template <void target(const QByteArray &)>
int replay(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s TARGET FOLDER\n", argv[0]);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "Cannot be read: %s\n", qPrintable(file.fileName()));
            return 1;
        }
        std::fprintf(stderr, "%s\n", qPrintable(name)); // the last one is what a broken promise is about
        target(file.readAll());
    }
    if (names.isEmpty())
        std::fprintf(stderr, "Nothing to replay in %s\n", argv[1]);
    return names.isEmpty() ? 1 : 0;
}
