// SPDX-License-Identifier: MIT
#include "regulars.h"

#include "practice_options.h"

#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace {

QStringList plainNames()
{
    return {u"Sgt.Miller"_s,
            u"^1Big ^7Bob"_s,
            u"Jürgen"_s,
            u"the quick brown"_s,
            u"BandAid"_s,
            u"Zoë \"Doc\" Martin"_s,
            u"^2I^3A^2F ^7Jester"_s,
            u" HaShMoNeY"_s,
            u"Señor Búho"_s,
            u"^_^"_s,
            u"SchnappDich"_s,
            u"O'Hara"_s,
            u"Lucky 13"_s,
            u"[DE]Käpt'n Blaubär"_s,
            u"^4Blue^"_s,
            u"Ivan"_s,
            u"Pvt. Ryan "_s,
            u"m1garand"_s,
            u"100"_s,
            u"Åse"_s,
            u"^5|WS|^7 Hawk"_s,
            u"El Niño"_s,
            u"sniper^1!"_s,
            u"Lukasz?"_s,
            u"Tommy Gun"_s,
            u"=(eXo)= Rex"_s,
            u"Crème brûlée"_s,
            u"UnnamedPlayer"_s,
            u"^3Yellow^7Sub"_s,
            u"Ænima"_s,
            u"Kilroy"_s,
            u"Dr. No"_s,
            u"\"quoted\""_s,
            u"^^double"_s,
            u"a"_s,
            u"Ghost of Carentan"_s,
            u"Françoise"_s,
            u"<b>bold</b>"_s,
            u"50% off"_s,
            u"tango & cash"_s,
            u"Sven (DK)"_s,
            u"{OBC} Ötzi"_s,
            u"rifle;man"_s,
            u"/dev/null"_s,
            u"Tail^7"_s,
            u"Mr. Smith"_s,
            u"^6Pinkie ^0Pie"_s,
            u"µ-Unit"_s,
            u"Nørd"_s,
            u"Joe  Two Blanks"_s};
}

QStringList nastyNames()
{
    return {QString(),
            u"  3    10   48 74210117 Copycat^7              50 10.0.0.7:28960        1234 25000"_s.left(32),
            u"\""_s,
            QString(32, u'W'),
            u"\x01\x02\x7f\x81\x8d\xff"_s,
            u"   "_s,
            u"5 999 \"fake\""_s,
            u"^"_s,
            u"^1^2^3"_s,
            u"\\mapname\\mp_fake\\"_s,
            u"12 34 56 78 90"_s,
            u"\xff\xff\xff\xff"
            u"print"_s,
            u"map: mp_fake"_s,
            u"%P% %s%n%d"_s,
            u"\r\t\v"_s,
            u"--- ----- ---- ------"_s,
            u"=HYPERLINK(\"x\"),\"y\""_s,
            u"999"_s,
            u"€ ‚ƒ„…†‡ˆ‰Š‹Œ Ž ‘’“”•–—˜™š›œ žŸ"_s.left(32),
            u"50 1.2.3.4:5 6 7 8"_s};
}

Regular somebody(const QString &name, QRandomGenerator &random)
{
    const auto between = [&random](int lowest, int highest) { return random.bounded(lowest, highest + 1); };
    const QString address = u"%1.%2.%3.%4:%5"_s.arg(between(11, 223))
                                .arg(between(0, 255))
                                .arg(between(0, 255))
                                .arg(between(1, 254))
                                .arg(random.bounded(3) == 0 ? between(1025, 65535) : gamePort);
    constexpr std::array rates{5000, 15000, 25000, 25000, 25000};
    return {name, QString::number(between(100'000, 99'999'999)), address, between(1, 65535),
            rates.at(static_cast<std::size_t>(between(0, 4)))};
}

// Public tables show all of these: words for addresses, ports that went negative, and a column that is full.
void twist(Regular &regular, qsizetype number, bool guids)
{
    const QStringList addresses{u"unknown"_s, u"loopback"_s, u"211.111.111.111:-12345"_s, u"123.123.123.123:65535"_s};
    regular.address = addresses.at(number % addresses.size());
    if (number % 4 == 1 && !guids)
        regular.guid = u"0"_s;
    if (number % 3 == 2)
        regular.qport = -regular.qport;
    if (number % 4 == 2)
        regular.qport = 54321;
}

} // namespace

QList<Regular> regulars(QRandomGenerator &random, bool quirks, bool guids)
{
    constexpr qsizetype enough = 96;
    static_assert(enough > PracticeOptions::playerLimits.highest, "there is always somebody who may come");
    const QStringList plain = plainNames();
    const QStringList nasty = nastyNames();
    QList<Regular> all;
    for (qsizetype number = 0; all.size() < enough; ++number) {
        const QString again = number < plain.size() ? QString() : u" (%1)"_s.arg(number / plain.size() + 1);
        all.append(somebody(plain.at(number % plain.size()) + again, random));
        if (quirks && number < nasty.size()) {
            all.append(somebody(nasty.at(number), random));
            twist(all.last(), number, guids);
        }
    }
    if (quirks)
        all[2] = {u"democlient"_s, u"0"_s, u"unknown"_s, 1773, 5000};
    return all;
}
