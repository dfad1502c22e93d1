// SPDX-License-Identifier: MIT
#include "practice/command_words.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class PracticeCommandWordsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void blanksAndQuotesCutALine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("nothing") << u""_s << QStringList();
        QTest::newRow("blanks only") << u"   "_s << QStringList();
        QTest::newRow("one word") << u"status"_s << QStringList{u"status"_s};
        QTest::newRow("runs of blanks") << u"  map   mp_decoy  "_s << QStringList{u"map"_s, u"mp_decoy"_s};
        QTest::newRow("tab and control character") << u"a\tb\x18"
                                                      u"c"_s
                                                   << QStringList{u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("a quote begins a word")
            << u"sv_hostname\"My server\""_s << QStringList{u"sv_hostname"_s, u"My server"_s};
        QTest::newRow("a quote ends a word") << u"\"a b\"c"_s << QStringList{u"a b"_s, u"c"_s};
        QTest::newRow("a switch") << u"scr_allow_mp40\"0\""_s << QStringList{u"scr_allow_mp40"_s, u"0"_s};
        QTest::newRow("an empty value") << u"g_password \"\""_s << QStringList{u"g_password"_s, QString()};
        QTest::newRow("two empty values") << u"\"\"\"\""_s << QStringList{QString(), QString()};
        QTest::newRow("an open quote lasts") << u"say \"to the end  "_s << QStringList{u"say"_s, u"to the end  "_s};
        QTest::newRow("a lone quote") << u"a \""_s << QStringList{u"a"_s, QString()};
        QTest::newRow("a blank in a name")
            << u"scr_hob_ riflePercentage\"50\""_s << QStringList{u"scr_hob_"_s, u"riflePercentage"_s, u"50"_s};
        QTest::newRow("a semicolon cuts nothing") << u"a;b ;c"_s << QStringList{u"a;b"_s, u";c"_s};
        QTest::newRow("only the first line") << u"say hi\nmap_rotate"_s << QStringList{u"say"_s, u"hi"_s};
        QTest::newRow("a quote closes with the line") << u"say \"hi\nthere\""_s << QStringList{u"say"_s, u"hi"_s};
    }
    void blanksAndQuotesCutALine()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, words);
        QCOMPARE(commandWords(line), words);
    }

    void wordsAreJoinedBySingleBlanks()
    {
        const QStringList words{u"tell"_s, u"3"_s, u"leave"_s, u"now"_s};
        QCOMPARE(joinedFrom(words, 2), u"leave now"_s);
        QCOMPARE(joinedFrom(words, 4), QString());
    }

    void passwordsAreNotShown_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("shown");
        QTest::newRow("join password") << u"g_password \"secret\""_s << u"g_password (not shown)"_s;
        QTest::newRow("without a blank") << u"G_PASSWORD\"secret\""_s << u"G_PASSWORD (not shown)"_s;
        QTest::newRow("with set") << u"set rcon_password secret"_s << u"set rcon_password (not shown)"_s;
        QTest::newRow("asked for") << u"g_password"_s << u"g_password"_s;
        QTest::newRow("anything else") << u"say  hello  all"_s << u"say  hello  all"_s;
        QTest::newRow("first line") << u"say a\nb"_s << u"say a"_s;
    }
    void passwordsAreNotShown()
    {
        QFETCH(QString, line);
        QFETCH(QString, shown);
        QCOMPARE(withoutSecrets(line), shown);
    }
};

GUILESS_TEST(PracticeCommandWordsTest)
#include "tst_practice_command_words.moc"
