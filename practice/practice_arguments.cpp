// SPDX-License-Identifier: MIT
#include "practice_arguments.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

struct BadValue final : std::runtime_error {
    explicit BadValue(const QString &text) : std::runtime_error(text.toStdString()) {}
};

void declare(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Plays a Call of Duty 2 dedicated server, for practising remote administration and for tests."_s);
    parser.addOptions({
        {u"port"_s, u"UDP port to listen on; 0 takes any free one (28960)."_s, u"port"_s, u"28960"_s},
        {u"address"_s, u"Address of this machine to listen on (127.0.0.1)."_s, u"address"_s, u"127.0.0.1"_s},
        {u"password"_s, u"The rcon password (practice)."_s, u"password"_s, u"practice"_s},
        {u"players"_s, u"Players on the server, 0 to 64 (12)."_s, u"number"_s, u"12"_s},
        {u"seed"_s, u"Equal seeds give equal players and losses (1)."_s, u"number"_s, u"1"_s},
        {u"datagram-size"_s, u"Bytes of text in a reply datagram, 1 to 8000 (1000)."_s, u"bytes"_s, u"1000"_s},
        {u"loss"_s, u"Share of the datagrams that get lost each way, 0 to 100 (0)."_s, u"percent"_s, u"0"_s},
        {u"latency"_s, u"Milliseconds before a reply leaves, 0 to 60000 (0)."_s, u"ms"_s, u"0"_s},
        {u"map-load"_s, u"Milliseconds of silence while a map loads, 0 to 60000 (2000)."_s, u"ms"_s, u"2000"_s},
        {u"mod"_s, u"Run a mod; \"hob\" is the only one."_s, u"mod"_s},
        {u"reorder"_s, u"Let the datagrams of a reply overtake each other."_s},
        {u"silent"_s, u"Never answer."_s},
        {u"quirks"_s, u"Players with nasty names and odd table rows."_s},
        {{u"h"_s, u"help"_s}, u"Print this help."_s},
        {{u"v"_s, u"version"_s}, u"Print the version."_s},
    });
}

quint32 numberOf(const QCommandLineParser &parser, const QString &option, quint32 highest)
{
    bool isNumber = false;
    const QString text = parser.value(option);
    const quint32 number = text.toUInt(&isNumber);
    if (!isNumber || number > highest)
        throw BadValue(u"--%1 takes a whole number from 0 to %2, not \"%3\"."_s.arg(option).arg(highest).arg(text));
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
    const auto number = [&parser](const QString &option, quint32 highest) {
        return static_cast<int>(numberOf(parser, option, highest));
    };
    PracticeOptions options;
    options.password = parser.value(u"password"_s);
    options.players = number(u"players"_s, 64);
    options.seed = numberOf(parser, u"seed"_s, std::numeric_limits<quint32>::max());
    options.datagramSize = number(u"datagram-size"_s, 8000);
    options.lossPercent = number(u"loss"_s, 100);
    options.latencyMs = number(u"latency"_s, 60'000);
    options.mapLoadMs = number(u"map-load"_s, 60'000);
    options.mod = parser.value(u"mod"_s);
    options.reorder = parser.isSet(u"reorder"_s);
    options.silent = parser.isSet(u"silent"_s);
    options.quirks = parser.isSet(u"quirks"_s);
    if (options.datagramSize == 0)
        throw BadValue(u"--datagram-size takes at least 1."_s);
    if (!options.mod.isEmpty() && options.mod != "hob"_L1)
        throw BadValue(u"--mod takes \"hob\", not \"%1\"."_s.arg(options.mod));
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
        result.address = addressOf(parser);
        result.port = static_cast<quint16>(numberOf(parser, u"port"_s, 65'535));
    } catch (const BadValue &bad) {
        result.fault = QString::fromStdString(bad.what());
    }
    return result;
}
