// SPDX-License-Identifier: MIT
#include "prompts.h"

#include "fault.h"

#include <QObject>

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

void Prompts::refuse(const QString &text, const QString &title)
{
    ask({title, text, BoxIcon::Exclamation, BoxButtons::Ok});
}

void Prompts::inform(const QString &text, const QString &title)
{
    ask({title, text, BoxIcon::Information, BoxButtons::Ok});
}

void Prompts::showWriteFailure(const QString &what, const Fault &fault)
{
    refuse(u"Failed to write new "_s + what + u'\r' + numberAndDescription(fault), u"INI Write Fail"_s);
}

void Prompts::showFault(const Fault &fault)
{
    refuse(numberAndDescription(fault), u"Molvark"_s);
}
