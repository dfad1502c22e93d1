// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

/// What `players` prints.
enum class PlayersFormat { Table, Json, Csv };

/// What the program without a window was asked for on its command line.
struct CliArguments {
    using Time = std::chrono::milliseconds;

    /// The program's own words; anything else is commands for the server.
    enum class Word { Commands, Status, Players, Query, Check, Watch, Say };

    Word word = Word::Commands;
    QStringList commands;          ///< of `Commands`, `Status` and `Say`
    std::optional<QString> script; ///< the file that holds them instead; "-" is the standard input
    QString server;                ///< as it was typed; empty for a saved one
    QString saved;
    std::optional<QString> passwordFile;
    PlayersFormat format = PlayersFormat::Table;
    Time interval{}; ///< of `Watch`
    Time timeout{3000};
    std::optional<int> retries;
    QString notice; ///< a text to print instead of all this: the help or the version

    /// How often a question is sent that changes nothing on the server, and how often another command is.
    [[nodiscard]] int copiesOfQuestion() const { return 1 + retries.value_or(2); }
    [[nodiscard]] int copiesOfCommand() const { return 1 + retries.value_or(0); }
};

/// Reads `arguments`, of which the first is the program's name. Throws WrongUsage.
[[nodiscard]] CliArguments readCliArguments(const QStringList &arguments, const QString &version);

/// A number of seconds, which may have decimals. Throws WrongUsage when `text` is none or is not between these.
[[nodiscard]] CliArguments::Time readSeconds(const QString &what, const QString &text, double least, double most);
