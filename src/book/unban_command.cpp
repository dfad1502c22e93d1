// SPDX-License-Identifier: MIT
#include "unban_command.h"

#include "book_text.h"

using namespace Qt::StringLiterals;

namespace {

// A blank ends a word and a semicolon a command, and two slashes begin a comment.
bool needsQuotes(const QString &name)
{
    return name.contains(u' ') || name.contains(u';') || name.contains("//"_L1) || name.contains("/*"_L1);
}

} // namespace

QString unbanCommand(const QString &name)
{
    const QString clean = cleanName(name);
    if (clean.isEmpty() || clean.contains(u'"'))
        return {};
    return u"unbanUser "_s + (needsQuotes(clean) ? u'"' + clean + u'"' : clean);
}
