// SPDX-License-Identifier: MIT
#include "known_passwords.h"

#include "rcon/shown_command.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

constexpr QChar asterisk(u'*');

QString asterisks(qsizetype count)
{
    return {count, asterisk};
}

/// Of each beginning of `password` how many characters of its end are a shorter beginning.
std::vector<std::size_t> overlapsOf(std::u16string_view password)
{
    std::vector<std::size_t> found(password.size(), 0);
    for (std::size_t at = 1, size = 0; at < password.size(); ++at) {
        while (size > 0 && password[at] != password[size])
            size = found[size - 1];
        size += password[at] == password[size] ? 1 : 0;
        found[at] = size;
    }
    return found;
}

std::u16string_view characters(QStringView text)
{
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

/// `original` is `text` as it was before anything was starred: passwords can overlap, also themselves. `shorter`: how
/// this one does.
void starAll(QString &text, QStringView original, QStringView password, const std::vector<std::size_t> &shorter)
{
    const qsizetype first = original.indexOf(password);
    if (first < 0)
        return;
    const std::u16string_view all = characters(original);
    const std::u16string_view wanted = characters(password);
    QChar *stars = text.data();
    std::size_t starred = static_cast<std::size_t>(first);
    for (std::size_t at = starred, size = 0; at < all.size(); ++at) {
        while (size > 0 && all[at] != wanted[size])
            size = shorter[size - 1];
        size += all[at] == wanted[size] ? 1 : 0;
        if (size < wanted.size())
            continue;
        const std::size_t begin = std::max(starred, at + 1 - size);
        starred = at + 1;
        std::fill(stars + begin, stars + starred, asterisk);
        size = shorter.back();
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
    overlaps.push_back(overlapsOf(characters(password)));
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
    for (qsizetype index = 0; index < passwords.size(); ++index)
        starAll(text, original, passwords.at(index), overlaps.at(static_cast<std::size_t>(index)));
}

void KnownPasswords::starNext(QString &before, QString &after, bool isLosing) const
{
    const QString tail = before;
    const QString original = after;
    const auto hide = [&](qsizetype left, qsizetype right) {
        starEnd(before, left);
        after.replace(0, right, asterisks(right));
    };
    for (qsizetype index = 0; index < passwords.size(); ++index) {
        const QString &password = passwords.at(index);
        const qsizetype length = password.size();
        starAll(after, original, password, overlaps.at(static_cast<std::size_t>(index)));
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
