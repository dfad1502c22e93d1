// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "players/player_csv.h"
#include "test_class.h"

#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

class PlayerCsvTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void everyItemStandsInQuotes_data()
    {
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("the header")
            << QStringList{u"Date/Time"_s, u"Server IP:Port"_s, u"Player IP"_s, u"Player GUID"_s, u"Player Name"_s}
            << QByteArray("\"Date/Time\",\"Server IP:Port\",\"Player IP\",\"Player GUID\",\"Player Name\"\r\n");
        QTest::newRow("five items") << QStringList{u"05-Mar-2006 21:07"_s, u"10.0.0.1:28960"_s, u"11.11.11.11:524"_s,
                                                   u"63281996"_s, u"BandAid"_s}
                                    << QByteArray("\"05-Mar-2006 21:07\",\"10.0.0.1:28960\",\"11.11.11.11:524\","
                                                  "\"63281996\",\"BandAid\"\r\n");
        QTest::newRow("three items") << QStringList{u"05-Mar-2006 21:07"_s, u"10.0.0.1:28960"_s, u"BandAid"_s}
                                     << QByteArray("\"05-Mar-2006 21:07\",\"10.0.0.1:28960\",\"BandAid\"\r\n");
        QTest::newRow("a comma in a name")
            << QStringList{u"a"_s, u"Big, Bob"_s} << QByteArray("\"a\",\"Big, Bob\"\r\n");
        QTest::newRow("double quotes in a name")
            << QStringList{u"a"_s, u"Big \"Bob\""_s} << QByteArray("\"a\",\"Big \"Bob\"\"\r\n");
        QTest::newRow("quotes and a comma") << QStringList{u"\",\""_s, u"b"_s} << QByteArray("\"\",\"\",\"b\"\r\n");
        QTest::newRow("empty items") << QStringList{QString(), u""_s, QString()} << QByteArray("\"\",\"\",\"\"\r\n");
        QTest::newRow("blanks at the ends") << QStringList{u" Bob "_s} << QByteArray("\" Bob \"\r\n");
        QTest::newRow("letters beyond ASCII")
            << QStringList{u"J\u00FCrgen"_s, u"\u20AC"_s} << QByteArray("\"J\xFCrgen\",\"\x80\"\r\n");
        QTest::newRow("a formula") << QStringList{u"=HYPERLINK(\"x\"),\"y\""_s}
                                   << QByteArray("\"=HYPERLINK(\"x\"),\"y\"\"\r\n");
        QTest::newRow("place markers") << QStringList{u"%1 %2"_s, u"%P%"_s} << QByteArray("\"%1 %2\",\"%P%\"\r\n");
    }

    void everyItemStandsInQuotes()
    {
        QFETCH(QStringList, items);
        QTEST(toAnsi(csvLine(items)), "bytes");
    }

    void aMomentHasTwoDigitsAndAnEnglishMonth_data()
    {
        QTest::addColumn<QDateTime>("time");
        QTest::addColumn<QString>("text");
        const QStringList months{u"Jan"_s, u"Feb"_s, u"Mar"_s, u"Apr"_s, u"May"_s, u"Jun"_s,
                                 u"Jul"_s, u"Aug"_s, u"Sep"_s, u"Oct"_s, u"Nov"_s, u"Dec"_s};
        for (int month = 1; month <= 12; ++month) {
            const QString &name = months.at(month - 1);
            QTest::newRow(qPrintable(name)) << QDate(2006, month, 5).startOfDay() << u"05-"_s + name + u"-2006 00:00"_s;
        }
        const auto row = [](const char *title, QDate date, QTime time, const QString &text) {
            QTest::newRow(title) << QDateTime(date, time) << text;
        };
        row("the evening", {2006, 3, 5}, {21, 7}, u"05-Mar-2006 21:07"_s);
        row("the minute is not rounded up", {2005, 12, 31}, {23, 59, 59, 999}, u"31-Dec-2005 23:59"_s);
        row("noon", {2024, 2, 29}, {12, 0}, u"29-Feb-2024 12:00"_s);
        row("half past noon", {2024, 2, 29}, {12, 30}, u"29-Feb-2024 12:30"_s);
    }

    void aMomentHasTwoDigitsAndAnEnglishMonth()
    {
        QFETCH(QDateTime, time);
        for (const QLocale::Language language : {QLocale::C, QLocale::German, QLocale::Arabic, QLocale::Japanese}) {
            QLocale::setDefault(language);
            QTEST(csvTime(time), "text");
        }
    }
};

GUILESS_TEST(PlayerCsvTest)
#include "tst_player_csv.moc"
