// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "rcon/read_values.h"
#include "rcon/server_listing.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

void readNames(const QString &reply, qsizetype border)
{
    const QStringList whole = listedVariables(reply, {});
    for (const QString &name : whole + listedCommands(reply, {}))
        require(isWord(name) && !name.contains(u'"') && !name.contains(u';'), "a name is one word");
    const QStringList damaged = listedVariables(reply, {{0, true}, {border, false}});
    require(damaged.size() + 1 >= whole.size(), "one border damages one line");
    (void)isWholeListing(reply);
}

void readValues(const QString &reply, qsizetype border, const QStringList &names)
{
    ReadValues whole;
    whole.take(reply, false, 1us);
    ReadValues parts;
    parts.take(reply.first(border), false, 1us);
    parts.take(reply.sliced(border), false, 1us);
    for (const QString &name : names) {
        const ReadValue *one = whole.find(name);
        const ReadValue *other = parts.find(name);
        require((one == nullptr) == (other == nullptr), "borders make no difference");
        require(!one || (one->value == other->value && one->domain == other->domain), "nor for what is read");
        require(!one || !name.endsWith("password"_L1, Qt::CaseInsensitive), "passwords are not kept");
    }
}

} // namespace

// The first byte says where the reply is parted, in parts of 256.
void fuzz(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const QString reply = fromAnsi(input.sliced(1));
    const qsizetype border = reply.size() * static_cast<uchar>(input.at(0)) / 256;
    readNames(reply, border);
    readValues(reply, border, listedVariables(reply, {}) + QStringList{u"sv_fps"_s, u"sv_hostname"_s});
}
