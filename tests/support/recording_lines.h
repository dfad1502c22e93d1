// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>

/// The lines of a recording, for tests that make up their own.
namespace recording {

inline QByteArray line(std::chrono::microseconds time, const QString &way, const QByteArray &datagram)
{
    const QJsonObject object{{QStringLiteral("us"), static_cast<qint64>(time.count())},
                             {QStringLiteral("way"), way},
                             {QStringLiteral("data"), QString::fromLatin1(datagram.toBase64())}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

/// What the program sent.
inline QByteArray out(std::chrono::microseconds time, const QByteArray &datagram)
{
    return line(time, QStringLiteral("out"), datagram);
}

/// What came from the server.
inline QByteArray in(std::chrono::microseconds time, const QByteArray &datagram)
{
    return line(time, QStringLiteral("in"), datagram);
}

} // namespace recording
