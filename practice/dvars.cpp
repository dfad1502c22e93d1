// SPDX-License-Identifier: MIT
#include "dvars.h"

#include "dvar_table.h"
#include "wildcard.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView flagColumns = u"SURIALC";

QString flagText(const Dvar &dvar)
{
    QString text;
    for (const QChar flag : flagColumns)
        text.append(dvar.flags.contains(flag) ? flag : QChar(u' '));
    return text;
}

QString domainLine(const Dvar &dvar)
{
    if (!dvar.range)
        return u"  Domain is any text\n"_s;
    return u"  Domain is any integer from %1 to %2\n"_s.arg(dvar.range->lowest).arg(dvar.range->highest);
}

bool takes(const Dvar &dvar, const QString &value)
{
    if (!dvar.range)
        return true;
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    return isNumber && number >= dvar.range->lowest && number <= dvar.range->highest;
}

QString complaintAboutNew(const QString &name, qsizetype count)
{
    constexpr qsizetype mostDvars = 4096;
    if (count < mostDvars)
        return {};
    return u"Can't create dvar '%1': %2 dvars already exist\n"_s.arg(name, QString::number(mostDvars));
}

QString complaintAbout(const Dvar &dvar, const QString &value)
{
    if (dvar.flags.contains(u'R'))
        return dvar.name + u" is read only.\n"_s;
    if (dvar.flags.contains(u'I'))
        return dvar.name + u" is write protected.\n"_s;
    if (!takes(dvar, value))
        return u"'%1' is not a valid value for dvar '%2'\n"_s.arg(value, dvar.name) + domainLine(dvar);
    return {};
}

} // namespace

Dvars Dvars::stock(bool hob)
{
    Dvars dvars;
    for (const Dvar &dvar : gameDvars())
        dvars.add(dvar);
    if (hob) {
        for (const Dvar &dvar : hobDvars())
            dvars.add(dvar);
    }
    return dvars;
}

const Dvar *Dvars::find(const QString &name) const
{
    const auto found = byName.constFind(name.toLower());
    return found == byName.constEnd() ? nullptr : &*found;
}

QString Dvars::value(const QString &name) const
{
    const Dvar *dvar = find(name);
    return dvar == nullptr ? QString() : dvar->value;
}

int Dvars::number(const QString &name) const
{
    return value(name).toInt();
}

void Dvars::set(const QString &name, const QString &value)
{
    const auto found = byName.find(name.toLower());
    if (found == byName.end()) {
        add({name, QString(), value, value});
        return;
    }
    found->value = value;
    found->latched.reset();
}

void Dvars::add(const Dvar &dvar)
{
    byName.insert(dvar.name.toLower(), dvar);
}

Assignment Dvars::assign(const QString &name, const QString &value)
{
    const auto dvar = byName.find(name.toLower());
    const QString complaint = dvar == byName.end() ? complaintAboutNew(name, count()) : complaintAbout(*dvar, value);
    if (!complaint.isEmpty())
        return {Assignment::Outcome::Refused, complaint};
    const bool waits = dvar != byName.end() && dvar->flags.contains(u'L') && dvar->value != value;
    if (!waits) {
        set(name, value);
        return {};
    }
    dvar->latched = value;
    return {Assignment::Outcome::Latched, dvar->name + u" will be changed upon restarting.\n"_s};
}

void Dvars::takeUpLatched()
{
    for (Dvar &dvar : byName) {
        if (dvar.latched)
            dvar.value = *std::exchange(dvar.latched, std::nullopt);
    }
}

QString Dvars::listing(QStringView pattern) const
{
    QString text;
    for (const Dvar &dvar : byName) {
        if (pattern.isEmpty() || matchesWildcard(pattern, dvar.name))
            text += flagText(dvar) + u' ' + dvar.name + u" \""_s + dvar.value + u"\"\n"_s;
    }
    return text + u"\n%1 total dvars\n%1 dvar indexes\n"_s.arg(count());
}

QString Dvars::description(const Dvar &dvar)
{
    QString text = u"\"%1\" is: \"%2^7\" default: \"%3^7\"\n"_s.arg(dvar.name, dvar.value, dvar.stock);
    if (dvar.latched)
        text += u"latched: \""_s + *dvar.latched + u"^7\"\n"_s;
    return text + domainLine(dvar);
}

QList<Dvar> Dvars::serverInfo() const
{
    QList<Dvar> told;
    for (const Dvar &dvar : byName) {
        if (dvar.flags.contains(u'S'))
            told.append(dvar);
    }
    return told;
}
