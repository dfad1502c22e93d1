// SPDX-License-Identifier: MIT
#include "practice_arguments.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using Limits = PracticeOptions::Limits;

struct Switch {
    QString name;
    QString text;
    bool PracticeOptions::*field = nullptr;
};

const QList<Switch> &switches()
{
    static const QList<Switch> all{
        {u"reorder"_s, u"Let the datagrams of a reply overtake each other."_s, &PracticeOptions::reorder},
        {u"silent"_s, u"Never answer."_s, &PracticeOptions::silent},
        {u"quirks"_s, u"Players with nasty names and odd table rows."_s, &PracticeOptions::quirks},
        {u"late"_s, u"Reply three to five seconds late."_s, &PracticeOptions::late},
        {u"lose-at-border"_s,
         u"Cut replies after 1,294 characters, and lose the last one of each full datagram; --datagram-size then "
         "counts for nothing."_s,
         &PracticeOptions::loseAtBorder},
        {u"short-lines"_s, u"Read 1,023 bytes of a request line, the password included."_s,
         &PracticeOptions::shortLines},
        {u"percent-dots"_s, u"Read \"%\" in a request line as \".\"."_s, &PracticeOptions::percentDots},
        {u"comments"_s, u"End a command at \"//\" unless \":\" stands before it, and leave out \"/* */\"."_s,
         &PracticeOptions::comments},
        {u"plain-say"_s, u"Squeeze the blanks in what is said, inside quotes too."_s, &PracticeOptions::plainSay},
        {u"read-protected"_s, u"Do not show rcon_password."_s, &PracticeOptions::readProtected},
        {u"cmdlist"_s, u"Know the command \"cmdlist\"."_s, &PracticeOptions::cmdlist},
        {u"guid-bans"_s,
         u"Ban by GUID alone and know \"unbanUser\"; with --quirks one player has GUID 0 and cannot be banned."_s,
         &PracticeOptions::guidBans},
        {u"renames"_s, u"Let players take other names."_s, &PracticeOptions::renames},
    };
    return all;
}

struct BadValue final : std::runtime_error {
    explicit BadValue(const QString &text) : std::runtime_error(text.toStdString()) {}
};

QCommandLineOption option(const QString &name, const QString &text, const QString &value, const QString &usual)
{
    return {name, u"%1 (%2)."_s.arg(text, usual), value, usual};
}

QCommandLineOption option(const QString &name, const QString &text, const QString &value, Limits limits, int usual)
{
    const QString range = u", %1 to %2"_s.arg(limits.lowest).arg(limits.highest);
    return option(name, QString(text + range), value, QString::number(usual));
}

void declare(QCommandLineParser &parser)
{
    const PracticeArguments usual;
    const PracticeOptions &options = usual.options;
    parser.setApplicationDescription(
        u"Plays a Call of Duty 2 dedicated server, for practising remote administration and for tests."_s);
    parser.addOptions({
        option(u"port"_s, u"UDP port to listen on; 0 takes any free one"_s, u"port"_s, QString::number(usual.port)),
        option(u"address"_s, u"Address of this machine to listen on"_s, u"address"_s, usual.address.toString()),
        option(u"password"_s, u"The rcon password"_s, u"password"_s, options.password),
        option(u"players"_s, u"Players on the server"_s, u"number"_s, PracticeOptions::playerLimits, options.players),
        option(u"seed"_s, u"Equal seeds give equal players and losses"_s, u"number"_s, QString::number(options.seed)),
        option(u"datagram-size"_s, u"Bytes of text in a reply datagram"_s, u"bytes"_s,
               PracticeOptions::datagramSizeLimits, options.datagramSize),
        option(u"loss"_s, u"Share of the datagrams that get lost each way"_s, u"percent"_s,
               PracticeOptions::percentLimits, options.lossPercent),
        option(u"latency"_s, u"Milliseconds before a reply leaves"_s, u"ms"_s, PracticeOptions::delayLimits,
               options.latencyMs),
        option(u"map-load"_s, u"Milliseconds of silence while a map loads"_s, u"ms"_s, PracticeOptions::delayLimits,
               options.mapLoadMs),
        {u"rate"_s,
         u"Drop what comes too fast: \"500ms\" hears one rcon command in that time, \"burst\" ten requests and then "
         "one a second from each address."_s,
         u"rate"_s},
        option(u"head-lines"_s, u"Lines above the files that \"dir\" lists"_s, u"number"_s,
               PracticeOptions::headLineLimits, options.headLines),
        {u"mod"_s, u"Run a mod; \"%1\" is the only one."_s.arg(PracticeOptions::hobMod), u"mod"_s},
        option(u"refusal"_s, u"What a wrong password is told"_s, u"text"_s, options.refusal),
        {u"engine"_s,
         u"\"%1\" makes it as hard as servers of that engine: --rate 500ms, --refusal \"%2\", and all options "
         "from --lose-at-border to --renames."_s.arg(PracticeOptions::cod2Engine, PracticeOptions::cod2().refusal),
         u"engine"_s},
    });
    for (const Switch &one : switches())
        parser.addOption({one.name, one.text});
    parser.addOptions({
        {u"replay"_s, u"Answer like the server in a recording, whatever the password; the game stands still."_s,
         u"file"_s},
        {{u"h"_s, u"help"_s}, u"Print this help."_s},
        {{u"v"_s, u"version"_s}, u"Print the version."_s},
    });
}

PracticeOptions::Rate rateOf(const QCommandLineParser &parser)
{
    const QString text = parser.value(u"rate"_s);
    if (text == "500ms"_L1)
        return PracticeOptions::Rate::HalfSecond;
    if (text == "burst"_L1)
        return PracticeOptions::Rate::Burst;
    throw BadValue(u"--rate takes \"500ms\" or \"burst\", not \"%1\"."_s.arg(text));
}

quint32 numberOf(const QCommandLineParser &parser, const QString &option, quint32 lowest, quint32 highest)
{
    bool isNumber = false;
    const QString text = parser.value(option);
    const quint32 number = text.toUInt(&isNumber);
    if (!isNumber || number < lowest || number > highest)
        throw BadValue(u"--%1 takes a whole number from %2 to %3, not \"%4\"."_s.arg(option, QString::number(lowest),
                                                                                     QString::number(highest), text));
    return number;
}

QHostAddress addressOf(const QCommandLineParser &parser)
{
    const QString text = parser.value(u"address"_s);
    const QHostAddress address = text == "localhost"_L1 ? QHostAddress(QHostAddress::LocalHost) : QHostAddress(text);
    if (address.isNull())
        throw BadValue(u"--address takes a numeric address of this machine, not \"%1\"."_s.arg(text));
    return address;
}

PracticeOptions optionsOf(const QCommandLineParser &parser)
{
    const auto number = [&parser](const QString &option, Limits limits) {
        return static_cast<int>(
            numberOf(parser, option, static_cast<quint32>(limits.lowest), static_cast<quint32>(limits.highest)));
    };
    const QString engine = parser.value(u"engine"_s);
    if (parser.isSet(u"engine"_s) && engine != PracticeOptions::cod2Engine)
        throw BadValue(u"--engine takes \"%1\", not \"%2\"."_s.arg(PracticeOptions::cod2Engine, engine));
    PracticeOptions options = engine.isEmpty() ? PracticeOptions() : PracticeOptions::cod2();
    options.password = parser.value(u"password"_s);
    options.players = number(u"players"_s, PracticeOptions::playerLimits);
    options.seed = numberOf(parser, u"seed"_s, 0, std::numeric_limits<quint32>::max());
    options.datagramSize = number(u"datagram-size"_s, PracticeOptions::datagramSizeLimits);
    options.lossPercent = number(u"loss"_s, PracticeOptions::percentLimits);
    options.latencyMs = number(u"latency"_s, PracticeOptions::delayLimits);
    options.mapLoadMs = number(u"map-load"_s, PracticeOptions::delayLimits);
    if (parser.isSet(u"rate"_s))
        options.rate = rateOf(parser);
    if (parser.isSet(u"refusal"_s))
        options.refusal = parser.value(u"refusal"_s);
    for (const Switch &one : switches())
        options.*one.field = options.*one.field || parser.isSet(one.name);
    options.headLines = number(u"head-lines"_s, PracticeOptions::headLineLimits);
    options.mod = parser.value(u"mod"_s);
    if (!options.mod.isEmpty() && options.mod != PracticeOptions::hobMod)
        throw BadValue(u"--mod takes \"%1\", not \"%2\"."_s.arg(PracticeOptions::hobMod, options.mod));
    if (options.password.isEmpty() || options.password.contains(u' '))
        throw BadValue(u"--password takes one word: a blank ends the password in a request."_s);
    return options;
}

} // namespace

PracticeArguments readPracticeArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    declare(parser);
    PracticeArguments result;
    if (!parser.parse(arguments)) {
        result.fault = parser.errorText();
        return result;
    }
    if (parser.isSet(u"help"_s))
        result.notice = parser.helpText();
    else if (parser.isSet(u"version"_s))
        result.notice = u"%1 %2\n"_s.arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion());
    try {
        if (!parser.positionalArguments().isEmpty())
            throw BadValue(u"Unexpected argument \"%1\"."_s.arg(parser.positionalArguments().first()));
        result.options = optionsOf(parser);
        result.replay = parser.value(u"replay"_s);
        result.address = addressOf(parser);
        result.port = static_cast<quint16>(numberOf(parser, u"port"_s, 0, std::numeric_limits<quint16>::max()));
    } catch (const BadValue &bad) {
        result.fault = QString::fromStdString(bad.what());
    }
    return result;
}
