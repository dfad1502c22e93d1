// SPDX-License-Identifier: MIT
#include "masking.h"

#include "ledger/known_passwords.h"
#include "rcon/refusals.h"

#include <algorithm>

namespace {

constexpr qsizetype shortest = 4; // of less, what is left would be found by chance

KnownPasswords known(const QString &password)
{
    KnownPasswords passwords;
    passwords.add(password);
    return passwords;
}

qsizetype endOf(const QList<ReplyPiece> &pieces, qsizetype piece, const QString &text)
{
    return piece + 1 < pieces.size() ? pieces.at(piece + 1).begin : text.size();
}

} // namespace

QString maskedText(QString text, const QString &password)
{
    known(password).star(text);
    return text;
}

QString maskedReply(const QString &text, const QList<ReplyPiece> &pieces, const QString &password)
{
    if (password.isEmpty() || isUsualRefusal(text))
        return text;
    const KnownPasswords passwords = known(password);
    QString masked;
    bool mayLack = false; // a character of the password at the border
    for (qsizetype piece = 0; piece < pieces.size(); ++piece) {
        const qsizetype begin = pieces.at(piece).begin;
        QString added = text.sliced(begin, endOf(pieces, piece, text) - begin);
        QString tail = masked.last(std::min(masked.size(), password.size()));
        masked.chop(tail.size());
        passwords.starNext(tail, added, mayLack);
        mayLack = pieces.at(piece).mayLackLast && password.size() >= shortest;
        if (mayLack)
            passwords.starLosingEnd(added);
        masked += tail + added;
    }
    return masked;
}
