// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "base/numbers.h"
#include "test_class.h"

#include <QRegularExpression>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// The number of the fault that `convert` throws; 0 when it throws none.
template <typename Convert>
int faultOf(const Convert &convert)
{
    try {
        (void)convert();
        return 0;
    } catch (const Fault &fault) {
        return fault.number();
    }
}

} // namespace

class NumbersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void isNumericKnowsANumber_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text : {u"0"_s, u"28960"_s, u"007"_s, u"+5"_s, u"-5"_s, u"2.5"_s, u".5"_s, u"5."_s,
                                    u"-.5"_s, u"1e3"_s, u"1E+3"_s, u"2.5e-1"_s, u"   12"_s, u"12   "_s, u"  -1.5  "_s})
            QTest::newRow(qPrintable(u"'%1'"_s.arg(text))) << text;
    }

    void isNumericKnowsANumber()
    {
        QFETCH(QString, text);
        QVERIFY(isNumeric(text));
    }

    void isNumericRefusesWhatIsNone_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << QString();
        QTest::newRow("a tab before") << u"\t12"_s;
        QTest::newRow("a line feed behind") << u"12\n"_s;
        QTest::newRow("a no-break blank before") << u"\u00A012"_s;
        QTest::newRow("arabic digits") << u"\u0661\u0662"_s;
        for (const QString &text :
             {u" "_s, u"+"_s, u"-"_s, u"."_s, u"e5"_s, u"1e"_s, u"1e+"_s, u"12abc"_s, u"abc"_s, u"1 2"_s, u"--1"_s,
              u"1.2.3"_s, u"nan"_s, u"inf"_s, u"infinity"_s, u"0x10"_s, u"1;"_s})
            QTest::newRow(qPrintable(u"'%1'"_s.arg(text))) << text;
    }

    void isNumericRefusesWhatIsNone()
    {
        QFETCH(QString, text);
        QVERIFY(!isNumeric(text));
        QCOMPARE(faultOf([&] { return toInteger32(text); }), 13);
        QCOMPARE(faultOf([&] { return toInteger16(text); }), 13);
    }

    void aHalfIsRoundedToTheEvenNeighbour_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("whole");
        const auto row = [](const char *text, int whole) { QTest::newRow(text) << QString::fromLatin1(text) << whole; };
        row("0.5", 0);
        row("1.5", 2);
        row("2.5", 2);
        row("3.5", 4);
        row("-0.5", 0);
        row("-1.5", -2);
        row("-2.5", -2);
        row("2.4999", 2);
        row("2.5001", 3);
        row("-2.5001", -3);
        row("2147483646.5", 2147483646);
    }

    void aHalfIsRoundedToTheEvenNeighbour()
    {
        QFETCH(QString, text);
        QFETCH(int, whole);
        QCOMPARE(toInteger32(text), whole);
        QCOMPARE(roundHalfToEven(text.toDouble()), static_cast<double>(whole));
    }

    void everyWayToWriteANumberIsConverted_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        const auto row = [](const char *text, int number) {
            QTest::newRow(text) << QString::fromLatin1(text) << number;
        };
        row("28960", 28960);
        row("  28960  ", 28960);
        row("+5", 5);
        row("-5", -5);
        row("007", 7);
        row("5.", 5);
        row("1e3", 1000);
        row("1.25E+2", 125);
        row("2000e-3", 2);
        row("2147483647", 2147483647);
        row("-2147483648", std::numeric_limits<int>::min());
    }

    void everyWayToWriteANumberIsConverted()
    {
        QFETCH(QString, text);
        QFETCH(int, number);
        QCOMPARE(toInteger32(text), number);
    }

    void aNumberBeyond32BitsOverflows_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text : {u"2147483648"_s, u"-2147483649"_s, u"2147483647.5"_s, u"1e10"_s, u"-1e10"_s})
            QTest::newRow(qPrintable(text)) << text;
        QTest::newRow("beyond a floating-point number") << u"1e400"_s;
        QTest::newRow("below a floating-point number") << u"-1e400"_s;
        QTest::newRow("four hundred digits") << QString(400, u'9');
    }

    void aNumberBeyond32BitsOverflows()
    {
        QFETCH(QString, text);
        QCOMPARE(faultOf([&] { return toInteger32(text); }), 6);
    }

    void theRangeIsThatOfTheRoundedNumber()
    {
        QCOMPARE(toInteger32(u"2147483647.4"), 2147483647);
        QCOMPARE(toInteger32(u"-2147483648.5"), std::numeric_limits<int>::min());
    }

    void sixteenBitsAreFilledAfterRounding_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        const auto row = [](const char *text, int number) {
            QTest::newRow(text) << QString::fromLatin1(text) << number;
        };
        row("0", 0);
        row("-0.5", 0);
        row("0.5", 0);
        row("1.5", 2);
        row("12.5", 12);
        row("13.5", 14);
        row("1440.5", 1440);
        row("1440.6", 1441);
        row("1441.5", 1442);
        row(" 1.44e3 ", 1440);
        row("32767", 32767);
        row("32767.4999", 32767);
        row("32766.5", 32766);
        row("-32768", -32768);
        row("-32768.5", -32768);
    }

    void sixteenBitsAreFilledAfterRounding()
    {
        QFETCH(QString, text);
        QFETCH(int, number);
        QCOMPARE(static_cast<int>(toInteger16(text)), number);
    }

    void aNumberBeyond16BitsOverflows_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text : {u"32767.5"_s, u"32768"_s, u"-32768.5001"_s, u"-32769"_s, u"65536"_s, u"1e400"_s})
            QTest::newRow(qPrintable(text)) << text;
    }

    void aNumberBeyond16BitsOverflows()
    {
        QFETCH(QString, text);
        QCOMPARE(faultOf([&] { return toInteger16(text); }), 6);
    }

    void leadingNumberReadsTheDigitsAtTheStart_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        const auto row = [](const char *name, const QString &text, int number) {
            QTest::newRow(name) << text << number;
        };
        row("digits", u"12"_s, 12);
        row("digits and letters", u"12abc"_s, 12);
        row("blanks before", u"   7"_s, 7);
        row("a tab before", u"\t7"_s, 0);
        row("a no-break blank before", u"\u00A07"_s, 0);
        row("a sign", u"-5x"_s, -5);
        row("a plus", u"+3"_s, 3);
        row("decimals are left out", u"3.9"_s, 3);
        row("an exponent is left out", u"1e3"_s, 1);
        row("zeros before", u"007"_s, 7);
        row("the first of two numbers", u"1 2"_s, 1);
        row("nothing", QString(), 0);
        row("letters", u"abc"_s, 0);
        row("letters before digits", u"a12"_s, 0);
        row("a sign alone", u"-"_s, 0);
        row("a sign away from its digits", u"- 5"_s, 0);
        row("other digits", u"\u0661"_s, 0);
        row("the greatest", u"32767"_s, 32767);
        row("the least", u"-32768"_s, -32768);
    }

    void leadingNumberReadsTheDigitsAtTheStart()
    {
        QFETCH(QString, text);
        QFETCH(int, number);
        QCOMPARE(static_cast<int>(leadingNumber(text)), number);
    }

    void leadingNumberOverflowsBeyond16Bits_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text : {u"32768"_s, u"-32769"_s, u"99999 of them"_s})
            QTest::newRow(qPrintable(text)) << text;
        QTest::newRow("four hundred digits") << QString(400, u'9');
    }

    void leadingNumberOverflowsBeyond16Bits()
    {
        QFETCH(QString, text);
        QCOMPARE(faultOf([&] { return leadingNumber(text); }), 6);
    }

    void aProductIsHeldTo16Bits_data()
    {
        QTest::addColumn<qint16>("one");
        QTest::addColumn<qint16>("other");
        QTest::addColumn<int>("product");
        const auto row = [](qint16 one, qint16 other, int product) {
            QTest::newRow(qPrintable(u"%1 by %2"_s.arg(one).arg(other))) << one << other << product;
        };
        row(0, 0, 0);
        row(5, 1000, 5000);
        row(32, 1000, 32000);
        row(-32, 1000, -32000);
        row(181, 181, 32761);
        row(-181, -181, 32761);
        row(1, 32767, 32767);
        row(-1, 32767, -32767);
        row(1, -32768, -32768);
        row(-32, 1024, -32768);
        row(0, -32768, 0);
    }

    void aProductIsHeldTo16Bits()
    {
        QFETCH(qint16, one);
        QFETCH(qint16, other);
        QFETCH(int, product);
        QCOMPARE(static_cast<int>(product16(one, other)), product);
        QCOMPARE(static_cast<int>(product16(other, one)), product);
    }

    void aProductOverflowsBeyond16Bits_data()
    {
        QTest::addColumn<qint16>("one");
        QTest::addColumn<qint16>("other");
        const auto row = [](qint16 one, qint16 other) {
            QTest::newRow(qPrintable(u"%1 by %2"_s.arg(one).arg(other))) << one << other;
        };
        row(33, 1000);
        row(40, 1000);
        row(-33, 1000);
        row(182, 181);
        row(32, 1024);
        row(-1, -32768);
        row(2, 16384);
        row(32767, 32767);
        row(-32768, -32768);
        row(-32768, 32767);
    }

    void aProductOverflowsBeyond16Bits()
    {
        QFETCH(qint16, one);
        QFETCH(qint16, other);
        QCOMPARE(faultOf([&] { return product16(one, other); }), 6);
        QCOMPARE(faultOf([&] { return product16(other, one); }), 6);
    }
};

GUILESS_TEST(NumbersTest)
#include "tst_numbers.moc"
