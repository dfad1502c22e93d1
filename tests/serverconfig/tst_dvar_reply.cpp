// SPDX-License-Identifier: MIT
#include "serverconfig/dvar_reply.h"

#include "base/fault.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

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
};

QTEST_GUILESS_MAIN(DvarReplyTest)
#include "tst_dvar_reply.moc"
