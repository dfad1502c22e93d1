// SPDX-License-Identifier: MIT
#include "cli_output.h"

#include "base/console.h"
#include "base/system_error.h"

#include <cstdio>

using namespace Qt::StringLiterals;

bool CliOutput::print(const QString &text)
{
    if (state != State::Open)
        return false;
    const QByteArray bytes = text.toUtf8();
    clearSystemError();
    const bool isWritten = std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout) ==
                           static_cast<std::size_t>(bytes.size());
    if (isWritten && std::fflush(stdout) == 0) // whoever reads along through a pipe wants it now
        return true;
    state = isOutputClosed() ? State::Closed : State::Failed;
    if (state == State::Failed)
        note(u"The output cannot be written: "_s + lastSystemError(u"no reason is known"_s).description());
    return false;
}

bool CliOutput::printReply(const QString &text)
{
    return text.isEmpty() || print(text.endsWith(u'\n') ? text : text + u'\n');
}

void CliOutput::note(const QString &text)
{
    std::fputs(u"molvark-cli: %1\n"_s.arg(text).toUtf8().constData(), stderr);
    std::fflush(stderr);
}
