// SPDX-License-Identifier: MIT
#include "unban_command.h"

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
    QString word = name;
    word.removeIf([](QChar each) { return each.category() == QChar::Other_Control; });
    if (word.isEmpty() || word.contains(u'"'))
        return {};
    return u"unbanUser "_s + (needsQuotes(word) ? u'"' + word + u'"' : word);
}
