// SPDX-License-Identifier: MIT
#include "getstatus_reply.h"

#include "base/fault.h"
#include "base/wire_text.h"

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

GetstatusReply::GetstatusReply(QString reply_) : reply(std::move(reply_)), lineFeed(reply.indexOf(u'\n'))
{
    if (lineFeed >= 0)
        lineFeed = reply.indexOf(u'\n', lineFeed + 1);
}

bool GetstatusReply::isEmpty() const
{
    return lineFeed >= 0 && lineFeed + 1 == reply.size();
}

std::optional<GetstatusRow> GetstatusReply::next()
{
    if (lineFeed < 0)
        return {};
    const qsizetype start = lineFeed + 1;
    const qsizetype afterScore = reply.indexOf(u' ', start);
    const qsizetype afterPing = afterScore < 0 ? -1 : reply.indexOf(u' ', afterScore + 1);
    if (afterPing < 0)
        return {};
    const qsizetype nameStart = afterPing + 2; // behind the blank and the opening quote
    if (nameStart >= std::numeric_limits<qint16>::max())
        throw Fault(Fault::Overflow);
    const qsizetype quote = reply.indexOf(u'"', nameStart);
    const qsizetype lineEnd = quote < 0 ? -1 : reply.indexOf(u'\n', quote);
    if (lineEnd < 0)
        return {};
    lineFeed = lineEnd;
    return GetstatusRow{trimBlanks(reply.sliced(start, afterScore - start)),
                        trimBlanks(reply.sliced(afterScore + 1, afterPing - afterScore - 1)),
                        trimBlanks(reply.sliced(nameStart, quote - nameStart))};
}
