// SPDX-License-Identifier: MIT
#include "datagrams.h"

#include <utility>

namespace {

const QByteArray header("\xFF\xFF\xFF\xFF");
constexpr qsizetype consoleLine = 1023;
constexpr qsizetype losingPiece = 1294;

QByteArray firstLine(const QByteArray &text)
{
    const qsizetype end = text.indexOf('\n');
    return end < 0 ? text : text.first(end);
}

// As the game's tokenizer treats them: a comment parts words, and one without an end reaches to the end of the line.
QByteArray withoutComments(const QByteArray &line)
{
    QByteArray kept;
    bool isQuoted = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        const QByteArrayView rest = QByteArrayView(line).sliced(at);
        if (!isQuoted && rest.startsWith("//") && !kept.endsWith(':'))
            return kept;
        if (!isQuoted && rest.startsWith("/*")) {
            const qsizetype end = line.indexOf("*/", at + 2);
            if (end < 0)
                return kept;
            kept += ' ';
            at = end + 1;
            continue;
        }
        isQuoted = isQuoted != (line.at(at) == '"');
        kept += line.at(at);
    }
    return kept;
}

QByteArray asRead(QByteArray line, const PracticeOptions &habits)
{
    if (habits.shortLines)
        line.truncate(consoleLine);
    if (habits.percentDots)
        line.replace('%', '.');
    return habits.comments ? withoutComments(line) : line;
}

} // namespace

Request readRequest(const QByteArray &datagram)
{
    if (!datagram.startsWith(header))
        return {};
    const QByteArray line = firstLine(datagram.sliced(header.size()));
    const qsizetype wordEnd = line.indexOf(' ');
    const QByteArray word = (wordEnd < 0 ? line : line.first(wordEnd)).toLower();
    const QByteArray rest = wordEnd < 0 ? QByteArray() : line.sliced(wordEnd + 1);
    if (word == "getstatus")
        return {Request::Kind::Status, {}, "getstatus"};
    if (word != "rcon")
        return {};
    const qsizetype passwordEnd = rest.indexOf(' ');
    if (passwordEnd < 0)
        return {Request::Kind::Rcon, rest, {}};
    return {Request::Kind::Rcon, rest.first(passwordEnd), rest.sliced(passwordEnd + 1).left(consoleLine)};
}

Request readRequest(const QByteArray &datagram, const PracticeOptions &habits)
{
    if (!datagram.startsWith(header))
        return {};
    return readRequest(header + asRead(firstLine(datagram.sliced(header.size())), habits));
}

QByteArray plainDatagram(const QByteArray &text)
{
    return header + text;
}

QByteArray printDatagram(const QByteArray &text)
{
    return plainDatagram("print\n" + text);
}

QList<QByteArray> printDatagrams(const QByteArray &text, qsizetype size)
{
    QList<QByteArray> datagrams{printDatagram(text.left(size))};
    for (qsizetype at = size; at < text.size(); at += size)
        datagrams.append(printDatagram(text.mid(at, size)));
    return datagrams;
}

QList<QByteArray> losingPrintDatagrams(const QByteArray &text)
{
    QList<QByteArray> datagrams = printDatagrams(text, losingPiece);
    for (QByteArray &datagram : datagrams)
        datagram.truncate(printDatagram({}).size() + losingPiece - 1);
    return datagrams;
}

QList<QByteArray> reordered(QList<QByteArray> datagrams)
{
    for (qsizetype second = 1; second < datagrams.size(); second += 2)
        datagrams.swapItemsAt(second - 1, second);
    return datagrams;
}
