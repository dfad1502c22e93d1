// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

/// The document in the text of a file; in `fault` at which line it is broken and how, or nothing.
[[nodiscard]] QJsonDocument readJson(const QByteArray &text, QString &fault);
