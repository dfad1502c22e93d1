// SPDX-License-Identifier: MIT
#include "book_fault.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

BookFault bookFault(BookFault::Kind kind, const QString &path, const QString &reason)
{
    const QString book = u"The player book (%1)"_s.arg(QFileInfo(path).fileName());
    switch (kind) {
    case BookFault::Locked:
        return {kind, book + u" is locked by another program."_s};
    case BookFault::ReadOnly:
        return {kind, book + u" is read-only, or its folder is."_s};
    case BookFault::Full:
        return {kind, book + u" cannot be written: the disk is full."_s};
    case BookFault::Newer:
        return {kind, book + u" was made by a newer version of this program."_s};
    case BookFault::Broken:
        return {kind, book + u" is broken."_s};
    case BookFault::Exchanged:
        return {kind, book + u" is another one now: what was to be changed in the old one has not been."_s};
    case BookFault::Unusable:
        break;
    }
    return {kind, book + u" cannot be used: "_s + reason.simplified()};
}
