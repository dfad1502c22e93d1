// SPDX-License-Identifier: MIT
#include "arguments.h"

#include "wrong_usage.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Word = CliArguments::Word;

constexpr QLatin1StringView help(R"(Usage: molvark-cli [OPTIONS] COMMAND...
       molvark-cli [OPTIONS] - | --script FILE
       molvark-cli [OPTIONS] status | players | query | check
       molvark-cli [OPTIONS] watch SECONDS | say TEXT

Sends remote console commands to a Call of Duty 2 server and prints its answers.
Each argument is one command, unless the first is one of these words:
  status               print the server's own table of players
  players              print who plays, as a table or with --json or --csv
  query                print the public status, which needs no password
  check                try out the way to the server, step by step
  watch SECONDS        print one JSON line that often, with time and players
  say TEXT             say something to everybody; all that follows is the text
  -                    read the commands from the standard input, one a line

The server:
  --server HOST[:PORT] its name or address; the port is 28960 unless named
  --saved N            the N-th saved server in molvark.ini in this folder
  --saved NAME         the one that is saved under this name or address
                       (Without either: the saved server, if there is only one.)
  --password-file FILE the RCON password stands in this file
                       (Otherwise: MOLVARK_RCON_PASSWORD in the environment,
                       else that of the saved server.)
What is sent:
  --script FILE        read the commands from a file, one a line; lines with
                       "#" first are comments, "sleep SECONDS" is a pause
  --timeout SECONDS    wait that long for the answer to each copy (3)
  --retries N          send so many further copies while no answer comes (0; 2
                       for status, players, query and check)
  --json, --csv        what players prints
  -h, --help           print this help
  -v, --version        print the version

Exit status: 0 done, 2 wrong usage, 3 no answer, 4 password refused,
5 the server said that it could not be done, 130 interrupted.

Examples:
  molvark-cli --server game.example.org --password-file ~/.rcon say Hello
  molvark-cli --saved 1 "g_gametype sd" map_restart
  molvark-cli --saved game.example.org players --json
  printf '%s\n' "say Good night" "sleep 10" killserver | molvark-cli --saved 1 -
  molvark-cli --server 192.0.2.7:28961 query
)");

struct OwnWord {
    QLatin1StringView name;
    Word word;
};

constexpr std::array<OwnWord, 6> ownWords{{{"status"_L1, Word::Status},
                                           {"players"_L1, Word::Players},
                                           {"query"_L1, Word::Query},
                                           {"check"_L1, Word::Check},
                                           {"watch"_L1, Word::Watch},
                                           {"say"_L1, Word::Say}}};

void choose(CliArguments &into, PlayersFormat format)
{
    if (into.format != PlayersFormat::Table && into.format != format)
        throw WrongUsage(u"--json and --csv exclude each other."_s);
    into.format = format;
}

int readRetries(const QString &text)
{
    constexpr int most = 100;
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 0 || number > most)
        throw WrongUsage(u"--retries takes a whole number from 0 to %1, not \"%2\"."_s.arg(most).arg(text));
    return number;
}

QString notEmpty(const QString &option, const QString &value)
{
    if (value.trimmed().isEmpty())
        throw WrongUsage(option + u" needs a value."_s);
    return value;
}

struct Option {
    QLatin1StringView name;
    bool hasValue;
    void (*take)(CliArguments &into, const QString &value);
};

const std::array<Option, 8> options{{
    {"--server"_L1, true, [](CliArguments &into, const QString &value) { into.server = value; }},
    {"--saved"_L1, true, [](CliArguments &into, const QString &value) { into.saved = value; }},
    {"--password-file"_L1, true, [](CliArguments &into, const QString &value) { into.passwordFile = value; }},
    {"--script"_L1, true, [](CliArguments &into, const QString &value) { into.script = value; }},
    {"--timeout"_L1, true,
     [](CliArguments &into, const QString &value) { into.timeout = readSeconds(u"--timeout"_s, value, 0.1, 3600); }},
    {"--retries"_L1, true, [](CliArguments &into, const QString &value) { into.retries = readRetries(value); }},
    {"--json"_L1, false, [](CliArguments &into, const QString &) { choose(into, PlayersFormat::Json); }},
    {"--csv"_L1, false, [](CliArguments &into, const QString &) { choose(into, PlayersFormat::Csv); }},
}};

/// "-pSECRET" is how other programs take a password.
bool asksForPassword(const QString &option)
{
    return option.startsWith("-p"_L1, Qt::CaseInsensitive) || option.contains("pass"_L1, Qt::CaseInsensitive);
}

/// What stands behind "=", or behind the letter of a short option, may be a password and is not repeated.
[[noreturn]] void refuse(const QString &option)
{
    if (asksForPassword(option))
        throw WrongUsage(u"A password is never an argument, because everybody on this machine can read those: name a "
                         "file with --password-file, or set MOLVARK_RCON_PASSWORD."_s);
    if (!option.startsWith("--"_L1) && option.size() > 2)
        throw WrongUsage(u"There is no option %1 with more behind it."_s.arg(option.first(2)));
    throw WrongUsage(u"There is no option %1."_s.arg(option));
}

/// Takes the option at `at`, and its value.
void takeOption(CliArguments &into, const QStringList &arguments, qsizetype &at)
{
    const QString &argument = arguments.at(at);
    const QString name = argument.section(u'=', 0, 0);
    const auto found = std::ranges::find(options, name, &Option::name);
    if (found == options.end())
        refuse(name);
    const bool hasValue = name.size() < argument.size();
    if (hasValue && !found->hasValue)
        throw WrongUsage(u"%1 takes no value."_s.arg(name));
    if (!hasValue && found->hasValue && ++at == arguments.size())
        throw WrongUsage(u"%1 needs a value."_s.arg(name));
    const QString value = hasValue ? argument.sliced(name.size() + 1) : arguments.at(at);
    found->take(into, found->hasValue ? notEmpty(name, value) : QString());
}

void takeNoMore(const QStringList &words, qsizetype count)
{
    if (words.size() > count)
        throw WrongUsage(u"\"%1\" is too much behind %2."_s.arg(words.at(count), words.first()));
}

void takeWords(CliArguments &into, const QStringList &words)
{
    const auto own = std::ranges::find(ownWords, words.first(), &OwnWord::name);
    if (own == ownWords.end()) {
        into.commands = words;
        return;
    }
    into.word = own->word;
    if (into.word == Word::Say) {
        const QString text = words.sliced(1).join(u' ');
        if (text.trimmed().isEmpty())
            throw WrongUsage(u"say needs a text."_s);
        into.commands = {u"say "_s + text};
    } else if (into.word == Word::Watch) {
        takeNoMore(words, 2);
        if (words.size() < 2)
            throw WrongUsage(u"watch needs a number of seconds."_s);
        into.interval = readSeconds(u"watch"_s, words.at(1), 1, 86400);
    } else {
        takeNoMore(words, 1);
        if (into.word == Word::Status)
            into.commands = words;
    }
}

void check(const CliArguments &arguments, const QStringList &words)
{
    if (!arguments.server.isEmpty() && !arguments.saved.isEmpty())
        throw WrongUsage(u"--server and --saved exclude each other."_s);
    if (arguments.script && !words.isEmpty())
        throw WrongUsage(u"The commands come from --script or from the command line, not from both."_s);
    if (!arguments.script && words.isEmpty())
        throw WrongUsage(u"There is no command."_s);
    if (words.size() > 1 && words.contains(u"-"_s) && arguments.word == Word::Commands)
        throw WrongUsage(u"\"-\", the standard input, stands alone."_s);
    if (arguments.format != PlayersFormat::Table && arguments.word != Word::Players)
        throw WrongUsage(u"--json and --csv belong to players."_s);
}

CliArguments noticeOf(const QString &text)
{
    CliArguments arguments;
    arguments.notice = text;
    return arguments;
}

} // namespace

CliArguments readCliArguments(const QStringList &arguments, const QString &version)
{
    CliArguments result;
    QStringList words;
    bool areOptionsOver = false;
    for (qsizetype at = 1; at < arguments.size(); ++at) {
        const QString &argument = arguments.at(at);
        const bool isText = !words.isEmpty() && words.first() == "say"_L1;
        if (isText || areOptionsOver || !argument.startsWith(u'-') || argument == "-"_L1) {
            words.append(argument);
        } else if (argument == "--"_L1) {
            areOptionsOver = true;
        } else if (argument == "-h"_L1 || argument == "--help"_L1) {
            return noticeOf(help);
        } else if (argument == "-v"_L1 || argument == "--version"_L1) {
            return noticeOf(u"molvark-cli %1\n"_s.arg(version));
        } else {
            takeOption(result, arguments, at);
        }
    }
    if (!words.isEmpty())
        takeWords(result, words);
    check(result, words);
    if (words == QStringList{u"-"_s})
        result.script = u"-"_s;
    return result;
}

CliArguments::Time readSeconds(const QString &what, const QString &text, double least, double most)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !(seconds >= least) || !(seconds <= most)) // also what is no number at all, as "nan" is
        throw WrongUsage(
            u"%1 takes a number of seconds from %2 to %3, not \"%4\"."_s.arg(what).arg(least).arg(most).arg(text));
    return CliArguments::Time(std::llround(seconds * 1000));
}
