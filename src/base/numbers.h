// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// True for what a person calls a number: blanks around it, a sign, decimals and an exponent are allowed.
[[nodiscard]] bool isNumeric(QStringView text);

/// The number that `text` is. Throws TypeMismatch when it is none.
[[nodiscard]] double toNumber(QStringView text);

/// The number that `text` is, rounded half to even, then held to 16 bits.
/// Throws TypeMismatch when it is no number, Overflow when it does not fit.
[[nodiscard]] qint16 toInteger16(QStringView text);

/// The same, held to 32 bits.
[[nodiscard]] qint32 toInteger32(QStringView text);

/// The digits at the start of `text`, blanks before them skipped, as a number from -32,768 to 32,767; 0 when there
/// are none. Throws Overflow beyond that range.
[[nodiscard]] qint16 leadingNumber(QStringView text);

/// `one` times `other`, held to 16 bits. Throws Overflow when it does not fit.
[[nodiscard]] qint16 product16(qint16 one, qint16 other);

/// The nearest whole number; a half goes to the even neighbour.
[[nodiscard]] double roundHalfToEven(double value);
