// SPDX-License-Identifier: MIT
#include "dvars.h"

#include "dvar_table.h"
#include "wildcard.h"

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
    const auto found = m_dvars.constFind(name.toLower());
    return found == m_dvars.constEnd() ? nullptr : &*found;
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
    const auto found = m_dvars.find(name.toLower());
    if (found == m_dvars.end())
        add({name, QString(), value, value});
    else
        found->value = value;
}

void Dvars::add(const Dvar &dvar)
{
    m_dvars.insert(dvar.name.toLower(), dvar);
}

void Dvars::remove(const QString &name)
{
    m_dvars.remove(name.toLower());
}

QString Dvars::assign(const QString &name, const QString &value)
{
    constexpr qsizetype mostDvars = 4096;
    const Dvar *dvar = find(name);
    if (dvar == nullptr && count() >= mostDvars)
        return u"Can't create dvar '%1': %2 dvars already exist\n"_s.arg(name, QString::number(mostDvars));
    if (dvar != nullptr && dvar->flags.contains(u'R'))
        return dvar->name + u" is read only.\n"_s;
    if (dvar != nullptr && dvar->flags.contains(u'I'))
        return dvar->name + u" is write protected.\n"_s;
    if (dvar != nullptr && !takes(*dvar, value))
        return u"'%1' is not a valid value for dvar '%2'\n"_s.arg(value, dvar->name) + domainLine(*dvar);
    set(name, value);
    return {};
}

QString Dvars::listing(QStringView pattern) const
{
    QString text;
    for (const Dvar &dvar : m_dvars) {
        if (pattern.isEmpty() || matchesWildcard(pattern, dvar.name))
            text += flagText(dvar) + u' ' + dvar.name + u" \""_s + dvar.value + u"\"\n"_s;
    }
    return text + u"\n%1 total dvars\n%1 dvar indexes\n"_s.arg(count());
}

QString Dvars::description(const Dvar &dvar)
{
    return u"\"%1\" is: \"%2^7\" default: \"%3^7\"\n"_s.arg(dvar.name, dvar.value, dvar.stock) + domainLine(dvar);
}

QList<Dvar> Dvars::serverInfo() const
{
    QList<Dvar> told;
    for (const Dvar &dvar : m_dvars) {
        if (dvar.flags.contains(u'S'))
            told.append(dvar);
    }
    return told;
}
