// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "serverconfig/dvar_reply.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestName = 64;

qsizetype firstPlace(const QString &reply, const QString &name)
{
    const auto sameLetter = [](QChar one, QChar other) { return one.toCaseFolded() == other.toCaseFolded(); };
    const auto found = std::search(reply.begin(), reply.end(), name.begin(), name.end(), sameLetter);
    return found == reply.end() && !name.isEmpty() ? -1 : found - reply.begin();
}

void read(const QString &reply, const QString &name)
{
    const qsizetype place = firstPlace(reply, name);
    const QString rest = reply.sliced(std::max<qsizetype>(place, 0));
    if (place < 0)
        require(getdvar(reply, name).isEmpty(), "a name that does not occur has no value");
    else if (rest.count(u'"') < 2)
        require(faultOf([&] { (void)getdvar(reply, name); }) == Fault::InvalidCall, "quotes that are not closed");
    else
        require(getdvar(reply, name) == rest.section(u'"', 1, 1), "the value is the first text in quotes");
}

} // namespace

// The first line is the name of the variable, the rest the reply.
void fuzz(const QByteArray &input)
{
    const QString text = fromAnsi(input);
    const QString name = text.section(u'\n', 0, 0).left(longestName);
    const QString reply = text.section(u'\n', 1);
    read(reply, name);
    read(reply, u"sv_maprotation"_s);
    read(reply, u"g_gametype"_s);
}
