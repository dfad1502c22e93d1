// SPDX-License-Identifier: MIT
#include "serverconfig/dvar_reply.h"
#include "test_class.h"

#include "base/fault.h"
#include "base/wire_text.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// The rule word for word: both texts in capitals, then three searches. Nothing stands for the fault.
std::optional<QString> valueByTheRule(const QString &reply, const QString &name)
{
    const qsizetype found = reply.toUpper().indexOf(name.toUpper());
    if (found < 0)
        return u""_s;
    const qsizetype open = reply.indexOf(u'"', found);
    if (open < 0)
        return std::nullopt;
    const qsizetype close = reply.indexOf(u'"', open + 1);
    if (close < 0)
        return std::nullopt;
    return reply.mid(open + 1, close - open - 1);
}

std::optional<QString> valueOrFault(const QString &reply, const QString &name)
{
    try {
        return getdvar(reply, name);
    } catch (const Fault &) {
        return std::nullopt;
    }
}

} // namespace

class DvarReplyTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theValueIsTheFirstQuotedTextBehindTheName_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        const QString server = u"S R sv_hostname \"My server\"\nS R sv_maxclients \"32\"\n\n2 total dvars\n"_s;
        QTest::newRow("two words") << server << u"sv_hostname"_s << u"My server"_s;
        QTest::newRow("name in capitals") << server << u"SV_HOSTNAME"_s << u"My server"_s;
        QTest::newRow("reply in capitals")
            << u"SV_MAPROTATION \"map mp_Decoy\""_s << u"sv_maprotation"_s << u"map mp_Decoy"_s;
        QTest::newRow("a later line") << server << u"sv_maxclients"_s << u"32"_s;
        QTest::newRow("not there") << server << u"sv_pure"_s << u""_s;
        QTest::newRow("no reply") << u""_s << u"sv_pure"_s << u""_s;
        QTest::newRow("empty value") << u"S scr_motd \"\"\nS sv_pure \"1\"\n"_s << u"scr_motd"_s << u""_s;
        QTest::newRow("blanks of the value stay") << u"scr_motd \" hi \""_s << u"scr_motd"_s << u" hi "_s;
        QTest::newRow("quoted right behind the name") << u"scr_motd\"hi\""_s << u"scr_motd"_s << u"hi"_s;
    }

    void theValueIsTheFirstQuotedTextBehindTheName()
    {
        QFETCH(QString, reply);
        QFETCH(QString, name);
        QTEST(getdvar(reply, name), "expected");
    }

    void aLongerNameThatIsListedEarlierWins()
    {
        const QString reply = u"sv_maprotationcurrent \"map mp_a\"\nsv_maprotation \"map mp_b\"\n"_s;
        QCOMPARE(getdvar(reply, u"sv_maprotation"), u"map mp_a"_s);
        QCOMPARE(getdvar(u"my_sv_maprotation \"map mp_c\"\n"_s + reply, u"sv_maprotation"), u"map mp_c"_s);
    }

    void aNameInsideAnEarlierValueTakesWhatStandsBetweenTheQuotesBehindIt()
    {
        const QString reply = u"sv_hostname \"no sv_pure here\"\nS sv_pure \"1\"\n"_s;
        QCOMPARE(getdvar(reply, u"sv_pure"), u"\nS sv_pure "_s);
    }

    void aValueMayBeFoundOnAnotherLine()
    {
        QCOMPARE(getdvar(u"Unknown command \"sv_pure\"\nsays \"who\"\n", u"sv_pure"), u"\nsays "_s);
    }

    void withoutBothQuotesTheCallIsInvalid_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::newRow("no quote") << u"sv_maprotation is read only\n"_s;
        QTest::newRow("cut off in the value") << u"S sv_maprotation \"gametype tdm map mp_"_s;
        QTest::newRow("cut off behind the first quote") << u"S sv_maprotation \""_s;
        QTest::newRow("quotes only before the name") << u"sv_pure \"1\"\nsv_maprotation"_s;
    }

    void withoutBothQuotesTheCallIsInvalid()
    {
        QFETCH(QString, reply);
        try {
            const QString value = getdvar(reply, u"sv_maprotation");
            QFAIL(qPrintable(u"a value: "_s + value));
        } catch (const Fault &fault) {
            QCOMPARE(fault.number(), 5);
            QCOMPARE(fault.description(), u"Invalid procedure call or argument"_s);
        }
    }

    void theBlanksOfAGatheredReplyAreSingle()
    {
        const QString reply = squeezeBlanks(u"S   R   sv_hostname   \"My    server\"\n"_s);
        QCOMPARE(getdvar(reply, u"SV_HOSTNAME"), u"My server"_s);
    }

    // Blanks are squeezed in each datagram by itself: wherever a reply is cut, its values are the same.
    void aReplyInSeveralDatagramsIsReadAsOne()
    {
        const QString reply = u"S A     sv_hostname \"Our ^2server\"\n  A     sv_kickBanTime \"300\"\n"
                              "S A  L  sv_maxclients \"32\"\nS A     sv_maxPing \"\"\n\n4 total dvars\n"_s;
        for (qsizetype first = 0; first <= reply.size(); ++first) {
            for (qsizetype second = first; second <= reply.size(); ++second) {
                const QString gathered = squeezeBlanks(reply.first(first)) +
                                         squeezeBlanks(reply.sliced(first, second - first)) +
                                         squeezeBlanks(reply.sliced(second));
                QCOMPARE(getdvar(gathered, u"sv_hostname"), u"Our ^2server"_s);
                QCOMPARE(getdvar(gathered, u"sv_kickbantime"), u"300"_s);
                QCOMPARE(getdvar(gathered, u"sv_maxclients"), u"32"_s);
                QCOMPARE(getdvar(gathered, u"sv_maxping"), u""_s);
            }
        }
    }

    void anyReplyIsReadByTheRule()
    {
        QRandomGenerator random(4);
        const QString letters = u"aAbB_ \"\"\n"_s;
        const auto text = [&](int longest) {
            QString made;
            for (int rest = random.bounded(longest + 1); rest > 0; --rest)
                made += letters.at(random.bounded(static_cast<int>(letters.size())));
            return made;
        };
        int faults = 0;
        int values = 0;
        for (int round = 0; round < 20'000; ++round) {
            const QString reply = text(24);
            const QString name = u"a"_s + text(1);
            const std::optional<QString> wanted = valueByTheRule(reply, name);
            QVERIFY2(valueOrFault(reply, name) == wanted, qPrintable(name + u" in "_s + reply));
            faults += wanted ? 0 : 1;
            values += wanted && !wanted->isEmpty() ? 1 : 0;
        }
        QVERIFY2(faults > 1000 && values > 1000, "the texts were too tame to tell anything");
    }
};

GUILESS_TEST(DvarReplyTest)
#include "tst_dvar_reply.moc"
