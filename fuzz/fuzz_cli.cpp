// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "cli/exit_status.h"
#include "cli/masking.h"
#include "cli/player_text.h"
#include "cli/script.h"
#include "cli/wrong_usage.h"
#include "fuzz.h"
#include "players/player_check.h"
#include "rcon/refusals.h"
#include "rcon/request_size.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

/// The fields of comma-separated records as RFC 4180 has them.
QList<QStringList> recordsIn(const QString &csv)
{
    QList<QStringList> records{{QString()}};
    bool isQuoted = false;
    for (qsizetype at = 0; at < csv.size(); ++at) {
        const QChar each = csv.at(at);
        QString &field = records.last().last();
        if (each == u'"' && isQuoted && csv.sliced(at + 1).startsWith(u'"'))
            field += csv.at(++at);
        else if (each == u'"')
            isQuoted = !isQuoted;
        else if (each == u',' && !isQuoted)
            records.last().append(QString());
        else if (!isQuoted && csv.sliced(at).startsWith("\r\n"_L1)) {
            records.append({QString()});
            ++at;
        } else {
            field += each;
        }
    }
    records.removeLast();
    return records;
}

void readPlayers(const QString &reply, const QString &password)
{
    const QList<ReplyPiece> pieces{{0, false}};
    const std::optional<QList<StatusRow>> players = wholeTable(reply, pieces);
    if (!players)
        return;
    const QJsonDocument json = QJsonDocument::fromJson(playersJson(*players, {}).toUtf8());
    require(json.isArray() && json.array().size() == players->size(), "the list is JSON");
    const QList<QStringList> records = recordsIn(playersCsv(*players, {}));
    require(records.size() == players->size() + 1, "each player has a record");
    for (qsizetype row = 0; row < players->size(); ++row) {
        require(records.at(row + 1).size() == 8, "a record has eight fields");
        require(records.at(row + 1).at(4) == players->at(row).name, "a name comes back from CSV as it was");
        require(json[static_cast<int>(row)][u"name"_s].toString() == players->at(row).name, "and from JSON");
    }
    const QString table = playersTable(*players, password);
    require(table.count(u'\n') == players->size() + 1, "each player has a line");
}

void readLines(const QString &text)
{
    try {
        for (const ScriptStep &step : readScript(text)) {
            require(step.kind == ScriptStep::Kind::Sleep || toAnsi(step.command).size() <= longestRequest,
                    "what is too long is not sent");
            require(!step.command.startsWith(u'#') && !step.command.contains(u'\n'), "a command is a line");
        }
    } catch (const WrongUsage &wrong) {
        require(wrong.text().startsWith("Line "_L1), "the line is named");
    }
}

} // namespace

// The first byte says where a password ends, which stands before the rest.
void fuzz(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const qsizetype size = std::min<qsizetype>(static_cast<uchar>(input.at(0)) % 16, input.size() - 1);
    const QString password = fromAnsi(input.sliced(1, size));
    const QString rest = fromAnsi(input.sliced(1 + size));
    const QString masked = maskedReply(rest, {{0, true}, {rest.size() / 2, false}}, password);
    require(masked.size() == rest.size(), "asterisks keep the place");
    const bool mayBeSeen = password.isEmpty() || password.contains(u'*') || isUsualRefusal(rest);
    require(mayBeSeen || !masked.contains(password), "no password");
    const ExitStatus status = statusOfReply(u"status", rest);
    require(status != ExitStatus::Interrupted && status != ExitStatus::NoAnswer, "an answer is an answer");
    readPlayers(rest, password);
    readLines(rest);
}
