// SPDX-License-Identifier: MIT
#include "json_text.h"

using namespace Qt::StringLiterals;

QJsonDocument readJson(const QByteArray &text, QString &fault)
{
    QJsonParseError error{};
    QJsonDocument document = QJsonDocument::fromJson(text, &error);
    const bool isWhole = error.error == QJsonParseError::NoError;
    const qsizetype line = text.left(error.offset).count('\n') + 1;
    fault = isWhole ? QString() : u"line %1: %2"_s.arg(line).arg(error.errorString());
    return document;
}
