// SPDX-License-Identifier: MIT
#include "known_passwords.h"

#include "rcon/shown_command.h"

#include <QList>

#include <algorithm>

namespace {

constexpr QChar asterisk(u'*');

QString asterisks(qsizetype count)
{
    return {count, asterisk};
}

/// Of each beginning of `password` how many characters of its end are a shorter beginning.
QList<qsizetype> overlaps(QStringView password)
{
    QList<qsizetype> found(password.size(), 0);
    for (qsizetype at = 1, size = 0; at < password.size(); ++at) {
        while (size > 0 && password.at(at) != password.at(size))
            size = found.at(size - 1);
        size += password.at(at) == password.at(size) ? 1 : 0;
        found[at] = size;
    }
    return found;
}

/// `original` is `text` as it was before anything was starred: passwords can overlap, also themselves.
void starAll(QString &text, QStringView original, QStringView password)
{
    const qsizetype first = original.indexOf(password);
    if (first < 0)
        return;
    const QList<qsizetype> shorter = overlaps(password);
    qsizetype starred = first;
    for (qsizetype at = first, size = 0; at < original.size(); ++at) {
        while (size > 0 && original.at(at) != password.at(size))
            size = shorter.at(size - 1);
        size += original.at(at) == password.at(size) ? 1 : 0;
        if (size < password.size())
            continue;
        const qsizetype begin = std::max(starred, at + 1 - size);
        starred = at + 1;
        std::fill(text.begin() + begin, text.begin() + starred, asterisk);
        size = shorter.constLast();
    }
}

void starEnd(QString &text, qsizetype size)
{
    text.replace(text.size() - size, size, asterisks(size));
}

/// Whether `password` stands across the border between the two texts, `size` characters of it before, and `lost` of
/// those behind them nowhere.
bool isParted(QStringView before, QStringView after, QStringView password, qsizetype size, qsizetype lost)
{
    return before.endsWith(password.first(size)) && after.startsWith(password.sliced(size + lost));
}

} // namespace

bool KnownPasswords::add(const QString &password)
{
    if (password.isEmpty() || passwords.contains(password))
        return false;
    passwords.append(password);
    return true;
}

bool KnownPasswords::addFrom(const QString &comm)
{
    bool isNew = false;
    for (const QString &password : passwordsSetBy(comm))
        isNew = add(password) || isNew;
    return isNew;
}

qsizetype KnownPasswords::longest() const
{
    const auto found = std::ranges::max_element(passwords, {}, &QString::size);
    return found == passwords.end() ? 0 : found->size();
}

void KnownPasswords::star(QString &text) const
{
    const QString original = text;
    for (const QString &password : passwords)
        starAll(text, original, password);
}

void KnownPasswords::starNext(QString &before, QString &after, bool isLosing) const
{
    const QString tail = before;
    const QString original = after;
    const auto hide = [&](qsizetype left, qsizetype right) {
        starEnd(before, left);
        after.replace(0, right, asterisks(right));
    };
    for (const QString &password : passwords) {
        const qsizetype length = password.size();
        starAll(after, original, password);
        const qsizetype most = std::min(length - 1, tail.size()); // of it that can stand before
        for (qsizetype size = 1; size <= most; ++size) {
            if (isParted(tail, original, password, size, 0))
                hide(size, length - size);
        }
        for (qsizetype size = 0; isLosing && size <= std::min(most, length - 2); ++size) {
            if (isParted(tail, original, password, size, 1))
                hide(size, length - size - 1);
        }
        // Its last character was not lost after all, as `starLosingEnd` took it to be.
        if (isLosing && length > 1 && isParted(tail, original, asterisks(length - 1) + password.back(), length - 1, 0))
            hide(0, 1);
    }
}

void KnownPasswords::starLosingEnd(QString &text) const
{
    const QString original = text;
    for (const QString &password : passwords) {
        if (password.size() > 1 && original.endsWith(QStringView(password).chopped(1)))
            starEnd(text, password.size() - 1);
    }
}

bool KnownPasswords::mayGoOn(QStringView text) const
{
    return std::ranges::any_of(passwords, [text](QStringView password) {
        for (qsizetype size = 1; size < password.size(); ++size) {
            if (text.endsWith(password.first(size)))
                return true;
        }
        return false;
    });
}
