// SPDX-License-Identifier: MIT
#include "prompts.h"

#include "fault.h"

#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString numberAndDescription(const Fault &fault)
{
    return u"Error code %1 Descr: "_s.arg(fault.number()) + fault.description();
}

} // namespace

Answer answerOfClosing(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::OkCancel:
        return Answer::Cancel;
    case BoxButtons::YesNo:
        return Answer::No;
    case BoxButtons::Ok:
        break;
    }
    return Answer::Ok;
}

Answer Prompts::ask(const Box &box)
{
    open.append(box);
    const auto closed = qScopeGuard([this] { open.removeLast(); });
    return showBox(box);
}

QString Prompts::askText(const QString &prompt, const QString &title, const QString &preset, const BelowLine &below)
{
    open.append({.title = title, .text = {}});
    const auto closed = qScopeGuard([this] { open.removeLast(); });
    return showTextQuestion(prompt, title, preset, below);
}

QString Prompts::askFileName(const QString &title, const QString &preset, const QString &suffix)
{
    open.append({.title = title, .text = {}});
    const auto closed = qScopeGuard([this] { open.removeLast(); });
    return showFileQuestion(title, preset, suffix);
}

QString Prompts::askFileToRead(const QString &title, const QString &filter)
{
    open.append({.title = title, .text = {}});
    const auto closed = qScopeGuard([this] { open.removeLast(); });
    return showReadQuestion(title, filter);
}

void Prompts::notify(const Box &box, BroughtBy by)
{
    const auto isLike = [&box](const Box &other) { return other.title == box.title; };
    if (by == BroughtBy::Person || std::ranges::none_of(open, isLike))
        ask(box);
}

void Prompts::refuse(const QString &text, const QString &title, BroughtBy by)
{
    notify({title, text, BoxIcon::Exclamation, BoxButtons::Ok}, by);
}

void Prompts::inform(const QString &text, const QString &title, BroughtBy by)
{
    notify({title, text, BoxIcon::Information, BoxButtons::Ok}, by);
}

void Prompts::showWriteFailure(const QString &what, const Fault &fault)
{
    refuse(u"Failed to write new "_s + what + u'\r' + numberAndDescription(fault), u"INI Write Fail"_s);
}

void Prompts::showFault(const Fault &fault, BroughtBy by)
{
    refuse(numberAndDescription(fault), u"Molvark"_s, by);
}
