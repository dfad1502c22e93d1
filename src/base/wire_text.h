// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// Text as 8-bit characters, as it goes on the wire and into files: the system's ANSI code page on Windows,
/// Windows-1252 elsewhere. A character without a byte becomes "?".
[[nodiscard]] QByteArray toAnsi(const QString &text);

/// The text that `bytes` are in the same code page. Every byte value becomes a character of its own in Windows-1252,
/// also the five that the code page leaves undefined.
[[nodiscard]] QString fromAnsi(const QByteArray &bytes);

/// Whether every character has a byte.
[[nodiscard]] bool isSendable(const QString &text);

/// How the text of a datagram becomes bytes, and bytes become text; by itself as above.
struct CodePage final {
    std::function<QByteArray(const QString &)> toBytes = toAnsi;
    std::function<QString(const QByteArray &)> toText = fromAnsi;
};

/// `text` with every run of blanks (character 32) squeezed to one, in one pass.
[[nodiscard]] QString squeezeBlanks(const QString &text);

/// `text` without the blanks (character 32) at its two ends; other white space stays.
[[nodiscard]] QString trimBlanks(const QString &text);
