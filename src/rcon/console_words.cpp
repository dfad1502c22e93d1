// SPDX-License-Identifier: MIT
#include "console_words.h"

#include "base/clock.h"
#include "base/short_text.h"
#include "command_line.h"
#include "known_words.h"
#include "reply_piece.h"
#include "server_fields.h"
#include "traffic.h"
#include "udp_client.h"

#include <QLatin1StringView>

using namespace Qt::StringLiterals;

namespace {

QString textOf(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

void addTo(QList<Completion> &all, const QStringList &words, Completion::Kind kind)
{
    for (const QString &word : words)
        all.append({word, kind});
}

void addTo(QList<Completion> &all, std::span<const KnownWord> words, Completion::Kind kind)
{
    for (const KnownWord &word : words)
        all.append({textOf(word.name), kind});
}

} // namespace

ConsoleWords::ConsoleWords(const ServerFields &fields_, const Clock &clock_, const QString &path, QObject *parent)
    : QObject(parent), fields(fields_), clock(clock_), file(path)
{
}

QString ConsoleWords::address() const
{
    return connectedTo.isEmpty() ? fields.address() : connectedTo;
}

const QList<Completion> &ConsoleWords::words()
{
    const QString server = address();
    if (sortedOf == server)
        return sorted;
    const ServerWords listed = file.words().of(server);
    tell();
    sorted.clear();
    addTo(sorted, listed.commands, Completion::Kind::Command); // first, because these are as the server spells them
    addTo(sorted, knownCommands(), Completion::Kind::Command);
    addTo(sorted, listed.variables, Completion::Kind::Variable);
    addTo(sorted, knownVariables(), Completion::Kind::Variable);
    sortWords(sorted);
    sortedOf = server;
    return sorted;
}

QString ConsoleWords::description(const Completion &word) const
{
    const bool isVariable = word.kind == Completion::Kind::Variable;
    if (word.kind == Completion::Kind::Line)
        return u"Sent before"_s;
    const KnownWord *known = findKnown(isVariable ? knownVariables() : knownCommands(), word.text);
    const QString kind = isVariable ? u"Variable"_s : u"Command"_s;
    const QString meaning = known ? kind + u": "_s + textOf(known->meaning) : kind + u" that this server has listed"_s;
    return isVariable ? meaning + u'\n' + valueLine(word.text) : meaning;
}

QString ConsoleWords::valueLine(const QString &variable) const
{
    const KnownWord *known = findKnown(knownVariables(), variable);
    const ReadValue *read = values.find(variable);
    QStringList parts{u"Not read yet"_s};
    if (isPasswordVariable(variable)) {
        parts.first() = u"Its value is not shown"_s;
    } else if (read) {
        const auto age = std::chrono::duration_cast<std::chrono::milliseconds>(clock.elapsed() - read->at);
        const QTime at = clock.now().addMSecs(-age.count()).time();
        parts.first() = u"%1, read %2"_s.arg(quotedText(read->value), at.toString(u"HH:mm"));
    }
    if (read && !read->stock.isNull())
        parts.append(u"default "_s + quotedText(read->stock));
    else if (known && !known->stock.empty())
        parts.append(u"default "_s + quotedText(textOf(known->stock)));
    if (read && !read->domain.isNull())
        parts.append(shortText(read->domain));
    else if (known && !known->domain.empty())
        parts.append(textOf(known->domain));
    return parts.join(u", ");
}

void ConsoleWords::learn(const QString &server, const ServerWords &listed, bool isAll)
{
    ServerWords all = listed;
    if (!isAll)
        all.add(file.words().of(server));
    file.keepWords(server, all);
    sortedOf.reset();
    tell();
}

QStringList ConsoleWords::keptHistory()
{
    const QStringList lines = file.words().history;
    tell();
    return lines;
}

void ConsoleWords::addHistory(const QStringList &lines, const std::function<bool(const QString &)> &isSecret)
{
    file.addHistory(lines, isSecret);
    tell();
}

void ConsoleWords::forgetHistory()
{
    file.forgetHistory();
    tell();
}

void ConsoleWords::tell()
{
    for (const QString &line : file.takeTold())
        emit told(line);
}

void ConsoleWords::takeDatagram(const CameDatagram &datagram)
{
    const bool mayLackLast = datagram.size == ReplyPiece::losingSize || datagram.size > UDPClient::bufferSize;
    values.take(datagram.text, mayLackLast, clock.elapsed());
}

void ConsoleWords::beginReply()
{
    values.beginReply();
}

void ConsoleWords::takeState(Connecting::State state, const QString &address)
{
    const QString now = state == Connecting::State::Connected ? address : QString();
    if (now != connectedTo)
        values.forget();
    connectedTo = now;
}
