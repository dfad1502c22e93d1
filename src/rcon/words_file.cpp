// SPDX-License-Identifier: MIT
#include "words_file.h"

#include "request_size.h"
#include "server_listing.h"
#include "settings/json_text.h"
#include "settings/whole_file.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = 64LL * 1024 * 1024; // all that fits into the bounds below is smaller
constexpr qsizetype mostServers = 20;
constexpr qsizetype mostKeptLines = 500;

const auto historyKey = "history"_L1;
const auto serversKey = "servers"_L1;
const auto addressKey = "address"_L1;
const auto commandsKey = "commands"_L1;
const auto variablesKey = "variables"_L1;

bool isLine(const QString &text)
{
    return !text.isEmpty() && text.size() <= longestRequest && text.isValidUtf16() &&
           std::ranges::none_of(text, [](QChar each) { return each.category() == QChar::Other_Control; });
}

void addNew(QStringList &words, const QStringList &more, qsizetype room)
{
    QSet<QString> known;
    for (const QString &word : std::as_const(words))
        known.insert(word.toLower());
    for (const QString &word : more) {
        if (room <= 0)
            return;
        if (const QString key = word.toLower(); !known.contains(key)) {
            known.insert(key);
            words.append(word);
            --room;
        }
    }
}

QStringList wordsOf(const QJsonValue &array)
{
    QStringList words;
    for (const QJsonValue &each : array.toArray()) {
        if (const QString word = each.toString(); isWord(word))
            words.append(word);
    }
    return words;
}

QStringList linesOf(const QJsonValue &array)
{
    QStringList lines;
    for (const QJsonValue &each : array.toArray()) {
        if (const QString line = each.toString(); isLine(line))
            lines.append(line);
    }
    return lines.last(std::min(lines.size(), mostKeptLines));
}

bool isArrayOrMissing(const QJsonValue &value)
{
    return value.isArray() || value.isUndefined();
}

KeptWords faulty(QString &fault, const QString &text)
{
    fault = text;
    return {};
}

} // namespace

void ServerWords::add(const ServerWords &more)
{
    addNew(commands, more.commands, most - count());
    addNew(variables, more.variables, most - count());
}

ServerWords KeptWords::of(const QString &address) const
{
    const auto found = std::ranges::find(servers, address, &Server::address);
    return found == servers.cend() ? ServerWords() : found->words;
}

void KeptWords::put(const QString &address, const ServerWords &words)
{
    servers.removeIf([&address](const Server &server) { return server.address == address; });
    servers.append({address, words});
    if (servers.size() > mostServers)
        servers.removeFirst();
}

KeptWords wordsIn(const QByteArray &file, QString &fault)
{
    if (file.trimmed().isEmpty())
        return {};
    const QJsonDocument document = readJson(file, fault);
    if (!fault.isEmpty())
        return {};
    const QJsonObject object = document.object();
    if (!document.isObject() || !isArrayOrMissing(object[historyKey]) || !isArrayOrMissing(object[serversKey]))
        return faulty(fault, u"it holds no words"_s);
    KeptWords kept;
    kept.history = linesOf(object[historyKey]);
    for (const QJsonValue &server : object[serversKey].toArray()) {
        const QString address = server[addressKey].toString();
        if (!isLine(address))
            return faulty(fault, u"a server has no address"_s);
        ServerWords words;
        words.add({wordsOf(server[commandsKey]), wordsOf(server[variablesKey])});
        kept.put(address, words);
    }
    return kept;
}

QByteArray bytesOf(const KeptWords &words)
{
    QJsonArray servers;
    for (const KeptWords::Server &server : words.servers) {
        servers.append(QJsonObject{{addressKey, server.address},
                                   {commandsKey, QJsonArray::fromStringList(server.words.commands)},
                                   {variablesKey, QJsonArray::fromStringList(server.words.variables)}});
    }
    return QJsonDocument(QJsonObject{{historyKey, QJsonArray::fromStringList(words.history)}, {serversKey, servers}})
        .toJson();
}

WordsFile::WordsFile(QString path_) : file(std::move(path_)) {}

const KeptWords &WordsFile::words()
{
    if (!std::exchange(isRead, true))
        read();
    return kept;
}

void WordsFile::keepWords(const QString &address, const ServerWords &words)
{
    read();
    KeptWords changed = kept;
    changed.put(address, words);
    write(changed);
}

void WordsFile::addHistory(const QStringList &lines, const std::function<bool(const QString &)> &isSecret)
{
    read();
    QStringList history = kept.history;
    if (isSecret)
        history.removeIf(isSecret);
    std::ranges::copy_if(lines, std::back_inserter(history), isLine);
    changeHistory(history.last(std::min(history.size(), mostKeptLines)));
}

void WordsFile::forgetHistory()
{
    read();
    changeHistory({});
}

void WordsFile::changeHistory(const QStringList &history)
{
    if (history == kept.history)
        return;
    KeptWords changed = kept;
    changed.history = history;
    write(changed);
}

QStringList WordsFile::takeTold()
{
    return std::exchange(told, {});
}

// What is kept in this run alone stays, when the file is not to be touched.
void WordsFile::read()
{
    isRead = true;
    if (isLocked)
        return;
    QByteArray bytes;
    if (const std::optional<Fault> fault = readWholeFile(file, largestFile, bytes)) {
        isLocked = true;
        told.append(u"%1 cannot be read (%2). What is learned is not kept."_s.arg(QFileInfo(file).fileName(),
                                                                                  fault->description()));
        return;
    }
    QString fault;
    kept = wordsIn(bytes, fault);
    if (!fault.isEmpty())
        putAside(fault);
}

// Whatever it is, somebody may want it back.
void WordsFile::putAside(const QString &fault)
{
    const QString name = QFileInfo(file).fileName();
    const QString aside = putFileAside(file);
    isLocked = aside.isEmpty();
    told.append(isLocked
                    ? u"%1 is broken (%2). It is left as it is, and what is learned is not kept."_s.arg(name, fault)
                    : u"%1 is broken (%2). It is called %3 now, and a new one is begun."_s.arg(name, fault, aside));
}

void WordsFile::write(const KeptWords &changed)
{
    kept = changed;
    if (isLocked)
        return;
    if (const std::optional<Fault> fault = replaceWholeFile(file, bytesOf(changed)))
        told.append(u"%1 could not be written: %2"_s.arg(QFileInfo(file).fileName(), fault->description()));
}
