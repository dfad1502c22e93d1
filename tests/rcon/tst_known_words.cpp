// SPDX-License-Identifier: MIT
#include "practice/dvars.h"
#include "practice/game_server.h"
#include "rcon/known_words.h"
#include "test_class.h"

#include <QRegularExpression>

#include <array>

using namespace Qt::StringLiterals;

namespace {

QString textOf(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString domainOf(const Dvar &dvar)
{
    const bool isSwitch = dvar.range->lowest == 0 && dvar.range->highest == 1;
    return (isSwitch ? u"%1 or %2"_s : u"%1 to %2"_s).arg(dvar.range->lowest).arg(dvar.range->highest);
}

} // namespace

class KnownWordsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void eachStandsOnceInTheOrderOfTheNames()
    {
        for (const auto words : {knownCommands(), knownVariables()}) {
            QString before;
            for (const KnownWord &word : words) {
                const QString name = textOf(word.name);
                QVERIFY2(before.compare(name, Qt::CaseInsensitive) < 0, qPrintable(before + u' ' + name));
                before = name;
            }
        }
        QVERIFY(knownCommands().size() + knownVariables().size() >= 150);
    }

    void eachHasAMeaningOfOneShortLine()
    {
        for (const auto words : {knownCommands(), knownVariables()}) {
            for (const KnownWord &word : words) {
                const QString meaning = textOf(word.meaning);
                QVERIFY2(meaning.size() >= 10 && meaning.size() <= 90, qPrintable(meaning));
                QVERIFY2(!meaning.contains(u'\n') && !meaning.endsWith(u'.'), qPrintable(meaning));
            }
        }
    }

    void aWordIsFoundInAnyLetterCase()
    {
        QCOMPARE(textOf(findKnown(knownVariables(), u"SV_HOSTNAME")->name), u"sv_hostname"_s);
        QCOMPARE(textOf(findKnown(knownVariables(), u"g_teamname_axis")->name), u"g_TeamName_Axis"_s);
        QCOMPARE(textOf(findKnown(knownCommands(), u"CLIENTKICK")->name), u"clientkick"_s);
        QVERIFY(!findKnown(knownVariables(), u"clientkick"));
        QVERIFY(!findKnown(knownCommands(), u""));
        QVERIFY(!findKnown(knownVariables(), u"zzz"));
    }

    void defaultsAndDomainsAreThoseOfThePracticeServer()
    {
        const Dvars dvars = Dvars::stock(false);
        int compared = 0;
        for (const KnownWord &word : knownVariables()) {
            const Dvar *dvar = dvars.find(textOf(word.name));
            if (!dvar)
                continue;
            QCOMPARE(textOf(word.name), dvar->name);
            if (!word.stock.empty())
                QVERIFY2(textOf(word.stock) == dvar->stock, qPrintable(dvar->name + u": "_s + dvar->stock));
            if (!word.domain.empty() && dvar->range)
                QVERIFY2(textOf(word.domain) == domainOf(*dvar), qPrintable(dvar->name + u": "_s + domainOf(*dvar)));
            ++compared;
        }
        QVERIFY(compared > 100);
    }

    void theCommandsOfThePracticeServerAreKnown()
    {
        GameServer game(PracticeOptions::cod2());
        QStringList listed = game.execute(u"cmdlist"_s).reply.split(u'\n', Qt::SkipEmptyParts);
        QVERIFY(listed.takeLast().endsWith(u" commands"));
        QVERIFY(listed.contains(u"unbanUser"_s));
        for (const QString &name : std::as_const(listed))
            QVERIFY2(findKnown(knownCommands(), name), qPrintable(name));
    }
};

GUILESS_TEST(KnownWordsTest)
#include "tst_known_words.moc"
