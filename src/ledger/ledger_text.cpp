// SPDX-License-Identifier: MIT
#include "ledger_text.h"

using namespace Qt::StringLiterals;

QStringList ledgerHeaders()
{
    return {u"Time"_s, u"Command"_s, u"Copies"_s, u"First answer"_s, u"Datagrams"_s, u"Bytes"_s, u"Verdict"_s};
}

QString ledgerCell(const LedgerEntry &entry, LedgerColumn::Column column)
{
    switch (column) {
    case LedgerColumn::Time:
        return entry.time.toString(u"HH:mm:ss"_s);
    case LedgerColumn::Command:
        return entry.command;
    case LedgerColumn::Copies:
        return QString::number(entry.copies);
    case LedgerColumn::FirstAnswer:
        return entry.firstAnswer ? QString::number(entry.firstAnswer->count() / 1000) : QString();
    case LedgerColumn::Datagrams:
        return QString::number(entry.datagrams);
    case LedgerColumn::Bytes:
        return QString::number(entry.bytes);
    case LedgerColumn::Verdict:
    case LedgerColumn::Count:
        break;
    }
    return verdictWord(entry.verdict);
}

QString ledgerNote(const LedgerEntry &entry)
{
    switch (entry.verdict) {
    case Verdict::None:
        return u"No answer has come yet; it is waited for a little longer."_s;
    case Verdict::Acknowledged:
        return u"The server took the command and had nothing to say; nothing is left to be done."_s;
    case Verdict::Answered:
        return u"The server took the command; read in its answer what it did."_s;
    case Verdict::PasswordRefused:
        return u"The server refused the RCON password and did nothing; correct the password and connect again."_s;
    case Verdict::UnknownCommand:
        return u"The server does not know the command and did nothing; look at its spelling."_s;
    case Verdict::NoSuchPlayer:
        return u"Nobody was in this slot and nothing was done; read the list of players anew."_s;
    case Verdict::Usage:
        return u"The server did nothing but say how the command is used; complete it and send it again."_s;
    case Verdict::Silent:
        return u"No answer came, and it is not known whether the server did it; look at the server before you send it "
               "again, and leave half a second between two commands."_s;
    case Verdict::Late:
        return u"The answer came when it was not waited for any more; the server has got the command, so do not send "
               "it again."_s;
    case Verdict::Cut:
        return u"A datagram of the answer was larger than 8,192 bytes and its end is missing; ask for less at a time."_s;
    case Verdict::TooLong:
        return u"The server reads 1,023 bytes of a request, and so of this command only the part that follows; send "
               "a shorter one: "_s +
               entry.readPart.value_or(QString());
    case Verdict::Unreadable:
        return u"Some characters cannot be sent and went out as \"?\"; write the command without them."_s;
    }
    return {};
}

QStringList ledgerRecord(const LedgerEntry &entry)
{
    QStringList items{entry.time.toString(u"yyyy-MM-dd HH:mm:ss"_s)};
    for (int column = LedgerColumn::Command; column < LedgerColumn::Count; ++column)
        items.append(ledgerCell(entry, static_cast<LedgerColumn::Column>(column)));
    return items;
}
