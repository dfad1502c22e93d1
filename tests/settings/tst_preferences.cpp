// SPDX-License-Identifier: MIT
#include "settings/ini_text.h"
#include "settings/preferences.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

struct Expected {
    QString key;
    QString kind;
    int buffer;
    QString missing;
};

const QList<Expected> expectedKeys{
    {u"savercon"_s, u"Boolean"_s, 2, u"1"_s},      {u"savemessages"_s, u"Boolean"_s, 2, u"1"_s},
    {u"clearrconnew"_s, u"Boolean"_s, 2, u"1"_s},  {u"clearmessnew"_s, u"Boolean"_s, 2, u"1"_s},
    {u"removeid"_s, u"Boolean"_s, 2, u"1"_s},      {u"usequery"_s, u"Boolean"_s, 2, u"0"_s},
    {u"autoqplayer"_s, u"Boolean"_s, 2, u"0"_s},   {u"autoqplayerint"_s, u"number"_s, 2, u"10"_s},
    {u"autokick999"_s, u"Boolean"_s, 2, u"0"_s},   {u"autokick999int"_s, u"number"_s, 2, u"3"_s},
    {u"autoconnect"_s, u"Boolean"_s, 2, u"0"_s},   {u"autoconnectserv"_s, u"string"_s, 30, u""_s},
    {u"autoconnectport"_s, u"string"_s, 7, u""_s}, {u"autoconnectrcon"_s, u"string"_s, 20, u""_s},
    {u"automessage"_s, u"Boolean"_s, 2, u"0"_s},   {u"messageset"_s, u"number"_s, 2, u"1"_s},
    {u"messagetime"_s, u"number"_s, 2, u"3"_s},
};

/// All fields in the order of `expectedKeys`.
QStringList fields(const Preferences &all)
{
    const auto number = [](int value) { return QString::number(value); };
    return {number(all.savercon),    number(all.savemessages),   number(all.clearrconnew), number(all.clearmessnew),
            number(all.removeid),    number(all.usequery),       number(all.autoqplayer),  number(all.autoqplayerint),
            number(all.autokick999), number(all.autokick999int), number(all.autoconnect),  all.autoconnectserv,
            all.autoconnectport,     all.autoconnectrcon,        number(all.automessage),  number(all.messageset),
            number(all.messagetime)};
}

QStringList missingFields()
{
    QStringList texts;
    for (const Expected &expected : expectedKeys)
        texts += expected.missing;
    return texts;
}

Preferences loaded(const QByteArray &key, const QByteArray &stored)
{
    return loadPreferences(IniText("[options]\r\n" + key + '=' + stored + "\r\n"));
}

} // namespace

class PreferencesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aFileWithoutTheSectionYieldsTheDefaults_data();
    void aFileWithoutTheSectionYieldsTheDefaults();
    void aKeyReachesItsOwnFieldOnly_data();
    void aKeyReachesItsOwnFieldOnly();
    void aBooleanIsTrueUnlessItReadsAsZero_data();
    void aBooleanIsTrueUnlessItReadsAsZero();
    void aNumberIsItsFirstDigit_data();
    void aNumberIsItsFirstDigit();
    void aTextIsCutToItsBuffer_data();
    void aTextIsCutToItsBuffer();
    void theTableListsEveryKeyInOrder();
};

void PreferencesTest::aFileWithoutTheSectionYieldsTheDefaults_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("no file") << ""_ba;
    QTest::newRow("other sections") << "[servers]\r\nserver1=a\r\nsavercon=0\r\n[ports]\r\nport1=28960\r\n"_ba;
    QTest::newRow("empty section") << "[options]\r\n"_ba;

    QByteArray empty = "[options]\r\n"_ba;
    for (const Expected &expected : expectedKeys)
        empty += expected.key.toLatin1() + "=\r\n";
    QTest::newRow("empty values") << empty;
}

void PreferencesTest::aFileWithoutTheSectionYieldsTheDefaults()
{
    QFETCH(const QByteArray, file);
    QCOMPARE(fields(loadPreferences(IniText(file))), missingFields());
}

void PreferencesTest::aKeyReachesItsOwnFieldOnly_data()
{
    QTest::addColumn<qsizetype>("index");
    for (qsizetype index = 0; index < expectedKeys.size(); ++index)
        QTest::newRow(qPrintable(expectedKeys.at(index).key)) << index;
}

void PreferencesTest::aKeyReachesItsOwnFieldOnly()
{
    QFETCH(const qsizetype, index);
    const Expected &key = expectedKeys.at(index);
    const QString other = key.kind != u"Boolean" ? u"7"_s : key.missing == u"1" ? u"0"_s : u"1"_s;

    QStringList expected = missingFields();
    expected[index] = other;
    QCOMPARE(fields(loaded(key.key.toLatin1(), other.toLatin1())), expected);
}

void PreferencesTest::aBooleanIsTrueUnlessItReadsAsZero_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("savercon");
    QTest::newRow("0") << "0"_ba << false;
    QTest::newRow("1") << "1"_ba << true;
    QTest::newRow("no") << "no"_ba << true;
    QTest::newRow("False") << "False"_ba << true;
    QTest::newRow("blank") << " "_ba << true;
    QTest::newRow("zero in quotes") << R"("0")"_ba << false;
    QTest::newRow("only the first character is read") << "01"_ba << false;
    QTest::newRow("minus zero") << "-0"_ba << true;
}

void PreferencesTest::aBooleanIsTrueUnlessItReadsAsZero()
{
    QFETCH(const QByteArray, stored);
    QTEST(loaded("savercon", stored).savercon, "savercon");
    QFETCH(const bool, savercon);
    QCOMPARE(loaded("autoconnect", stored).autoconnect, savercon);
}

void PreferencesTest::aNumberIsItsFirstDigit_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("number");
    QTest::newRow("10") << "10"_ba << 1;
    QTest::newRow("7") << "7"_ba << 7;
    QTest::newRow("0") << "0"_ba << 0;
    QTest::newRow("word") << "often"_ba << 0;
    QTest::newRow("sign alone") << "-5"_ba << 0;
    QTest::newRow("blank") << " "_ba << 0;
    QTest::newRow("beyond 16 bits") << "99999999"_ba << 9;
}

void PreferencesTest::aNumberIsItsFirstDigit()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, number);
    QCOMPARE(loaded("autoqplayerint", stored).autoqplayerint, number);
    QCOMPARE(loaded("messageset", stored).messageset, number);
}

void PreferencesTest::aTextIsCutToItsBuffer_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<qsizetype>("field");
    QTest::addColumn<QString>("expected");
    QTest::newRow("password of 25") << "autoconnectrcon"_ba
                                    << "abcdefghijklmnopqrstuvwxy"_ba << qsizetype{13} << u"abcdefghijklmnopqrs"_s;
    QTest::newRow("password of 19") << "autoconnectrcon"_ba
                                    << "abcdefghijklmnopqrs"_ba << qsizetype{13} << u"abcdefghijklmnopqrs"_s;
    QTest::newRow("port of 7") << "autoconnectport"_ba
                               << "1234567"_ba << qsizetype{12} << u"123456"_s;
    QTest::newRow("server of 30") << "autoconnectserv"_ba
                                  << "cod2.a-rather-long.example.com"_ba << qsizetype{11}
                                  << u"cod2.a-rather-long.example.co"_s;
    QTest::newRow("blanks") << "autoconnectserv"_ba
                            << "  "_ba << qsizetype{11} << u"  "_s;
}

void PreferencesTest::aTextIsCutToItsBuffer()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, stored);
    QFETCH(const qsizetype, field);
    QTEST(fields(loaded(key, stored)).at(field), "expected");
}

void PreferencesTest::theTableListsEveryKeyInOrder()
{
    const QStringList kinds{u"Boolean"_s, u"number"_s, u"string"_s};
    QCOMPARE(preferenceSection, u"options"_s);
    QCOMPARE(static_cast<qsizetype>(preferenceKeys.size()), expectedKeys.size());
    for (qsizetype index = 0; index < expectedKeys.size(); ++index) {
        const PreferenceKey &key = preferenceKeys.at(static_cast<std::size_t>(index));
        const Expected &expected = expectedKeys.at(index);
        QCOMPARE(key.key, expected.key);
        QCOMPARE(key.buffer, expected.buffer);
        QCOMPARE(kinds.at(static_cast<qsizetype>(key.member.index())), expected.kind);
    }
}

GUILESS_TEST(PreferencesTest)
#include "tst_preferences.moc"
