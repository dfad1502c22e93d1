// SPDX-License-Identifier: MIT
#include "arguments.h"
#include "base/console.h"
#include "base/input_file.h"
#include "base/system_error.h"
#include "base/system_notices.h"
#include "check_errand.h"
#include "cli_output.h"
#include "players_errand.h"
#include "script_errand.h"
#include "settings/whole_file.h"
#include "wrong_usage.h"

#include <QCoreApplication>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Word = CliArguments::Word;

/// More than these is another kind of file, taken by mistake, or has no end.
struct FileKind {
    qsizetype largest; ///< in bytes
    QLatin1StringView complaint;
};

constexpr FileKind passwordFile{qsizetype{64} * 1024, "has more than 64 KiB, and a password is shorter."_L1};
constexpr FileKind scriptFile{qsizetype{4} * 1024 * 1024, "has more than 4 MB, which is too much for a script."_L1};
constexpr qint64 largestSettings = qint64{64} * 1024 * 1024;

void check(const QByteArray &bytes, const FileKind &kind, const QString &name)
{
    if (bytes.size() > kind.largest)
        throw WrongUsage(name + u' ' + kind.complaint);
}

/// Ends the reading of a file or of the standard input without a word.
struct Interrupted final {};

[[noreturn]] void refuseToRead(const QString &name)
{
    const Fault fault = lastSystemError(u"no reason is known"_s);
    if (SystemNotices::isInterrupted()) // that is the reason, of a pipe that nobody writes to
        throw Interrupted();
    throw WrongUsage(u"%1 cannot be read: %2"_s.arg(name, fault.description()));
}

QByteArray readAll(std::FILE *file, const FileKind &kind, const QString &name)
{
    QByteArray bytes; // a pipe has no size that could be looked at before
    std::array<char, 4096> part{};
    while (true) {
        clearSystemError();
        const std::size_t count = std::fread(part.data(), 1, part.size(), file);
        if (SystemNotices::isInterrupted())
            throw Interrupted();
        if (std::ferror(file) != 0)
            refuseToRead(name);
        bytes.append(part.data(), static_cast<qsizetype>(count));
        check(bytes, kind, name);
        if (count < part.size())
            return bytes;
    }
}

QByteArray standardInput()
{
    return readAll(stdin, scriptFile, u"The standard input"_s);
}

QByteArray contents(const QString &path, const FileKind &kind)
{
    clearSystemError();
    const auto file = openToRead(path);
    if (!file)
        refuseToRead(path);
    return readAll(file.get(), kind, path);
}

CliServer serverOf(const CliArguments &arguments)
{
    if (!arguments.server.isEmpty())
        return readServer(arguments.server);
    QByteArray settings;
    if (const std::optional<Fault> fault = readWholeFile(u"molvark.ini"_s, largestSettings, settings))
        throw WrongUsage(u"molvark.ini in this folder cannot be read: %1"_s.arg(fault->description()));
    return chooseServer(readSavedServers(IniText(settings)).servers, arguments.saved);
}

/// The public status needs none, but hides it where it is known.
QString passwordOf(const CliArguments &arguments, const CliServer &server)
{
    const QString environment = qEnvironmentVariable("MOLVARK_RCON_PASSWORD");
    if (arguments.word == Word::Query && !arguments.passwordFile)
        return knownPassword(environment, server.savedPassword);
    std::optional<QByteArray> file;
    if (arguments.passwordFile)
        file = contents(*arguments.passwordFile, passwordFile);
    return choosePassword(file, environment, server.savedPassword);
}

QList<ScriptStep> stepsOf(const CliArguments &arguments)
{
    if (arguments.word == Word::Query)
        return {{ScriptStep::Kind::Query, {}, {}}};
    if (!arguments.script)
        return stepsOf(arguments.commands);
    return readScript(
        QString::fromUtf8(*arguments.script == "-"_L1 ? standardInput() : contents(*arguments.script, scriptFile)));
}

std::unique_ptr<Errand> errandOf(const CliArguments &arguments, CliOutput &output)
{
    Asking asking;
    asking.server = serverOf(arguments);
    asking.timeout = arguments.timeout;
    asking.password = passwordOf(arguments, asking.server);
    asking.copies = arguments.copiesOfCommand();
    if (arguments.word == Word::Watch)
        return std::make_unique<WatchErrand>(output, asking, arguments.interval);
    if (arguments.word != Word::Players && arguments.word != Word::Check)
        return std::make_unique<ScriptErrand>(output, asking, stepsOf(arguments), arguments.copiesOfQuestion());
    asking.copies = arguments.copiesOfQuestion();
    if (arguments.word == Word::Check)
        return std::make_unique<CheckErrand>(output, asking);
    return std::make_unique<PlayersErrand>(output, asking, arguments.format);
}

int run(Errand &errand, SystemNotices &notices)
{
    QObject::connect(&notices, &SystemNotices::interrupted, &errand, &Errand::interrupt);
    QObject::connect(&notices, &SystemNotices::outputclosed, &errand, &Errand::outputClosed);
    notices.watchOutput();
    QObject::connect(&errand, &Errand::ended, qApp,
                     [](ExitStatus status) { QCoreApplication::exit(static_cast<int>(status)); });
    QMetaObject::invokeMethod(&errand, &Errand::begin, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

ExitStatus carryOut(const QStringList &words, CliOutput &output)
{
    SystemNotices notices;
    const CliArguments arguments = readCliArguments(words, QStringLiteral(MOLVARK_VERSION));
    if (!arguments.notice.isEmpty()) {
        output.print(arguments.notice);
        return ExitStatus::Done;
    }
    const std::unique_ptr<Errand> errand = errandOf(arguments, output);
    const int status = run(*errand, notices);
    // A name server that does not answer would hold the process for as long as it likes.
    if (errand->isLookingUp())
        std::_Exit(status);
    return static_cast<ExitStatus>(status);
}

void ignoreMessages(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int main(int argc, char *argv[])
{
    prepareStandardStreams();
    // Under cron there is no locale, and Qt would say on standard error each time that it takes one of its own.
    const QtMessageHandler handler = qInstallMessageHandler(ignoreMessages);
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(handler);

    CliOutput output;
    ExitStatus status = ExitStatus::Done;
    try {
        status = carryOut(QCoreApplication::arguments(), output);
    } catch (const WrongUsage &wrong) {
        output.note(wrong.text() + u" (--help says more.)"_s);
        status = ExitStatus::WrongUsage;
    } catch (const Interrupted &) {
        status = ExitStatus::Interrupted;
    }
    if (status == ExitStatus::Done && output.hasFailed())
        status = ExitStatus::WrongUsage;
    return static_cast<int>(status);
}
