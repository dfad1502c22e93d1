// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QStringList>

class Prompts;

/// The files that may be the manual of a program that lies in `programFolder`, the first choice first: beside it, as in
/// an unpacked archive, where it is installed, and where it is built.
[[nodiscard]] QStringList manualPlaces(const QString &programFolder);

/// The first of the files that is there; empty when none is.
[[nodiscard]] QString findManual(const QStringList &places);

/// Opens the manual in the browser. Says in a box where it should be when it is not there.
void showmanual(Prompts &prompts, const QString &programFolder = QCoreApplication::applicationDirPath());
