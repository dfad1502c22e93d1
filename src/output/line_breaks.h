// SPDX-License-Identifier: MIT
#pragma once

#include <QFontMetricsF>
#include <QHash>

#include <array>

/// Breaks texts into lines as a page does: behind a blank where there is one, else where the line is full. It adds up
/// the widths of single characters, which it remembers, because shaping a hundred thousand texts takes seconds.
class LineBreaks final {
public:
    explicit LineBreaks(const QFont &font);

    /// The part of `text` that the first line of this width takes, with the blanks or the line feed that end it.
    [[nodiscard]] QStringView firstLine(QStringView text, qreal width);
    /// How many lines `text` takes; an empty one takes one.
    [[nodiscard]] int count(QStringView text, qreal width);

private:
    [[nodiscard]] qreal advance(QStringView text, qsizetype at);

    QFontMetricsF metrics;
    std::array<qreal, 256> latin; ///< negative until asked for
    QHash<char32_t, qreal> others;
};
