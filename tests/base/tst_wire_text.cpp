// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "cpu_time.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The bytes 0x00 to 0xFF.
QByteArray allBytes()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(static_cast<char>(byte));
    return bytes;
}

/// The same as text, by the published table of Windows-1252. Its five holes are the control characters.
QString allCharacters()
{
    QString text;
    for (char16_t code = 0; code < 0x80; ++code)
        text.append(QChar(code));
    text += u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F"_s;
    text += u"\u0090‘’“”•–—˜™š›œ\u009DžŸ"_s;
    for (char16_t code = 0xA0; code < 0x100; ++code)
        text.append(QChar(code));
    return text;
}

} // namespace

class WireTextTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyByteComesIn() { QCOMPARE(fromAnsi(allBytes()), allCharacters()); }

    void everyCharacterOfTheCodePageGoesOut() { QCOMPARE(toAnsi(allCharacters()).toHex(' '), allBytes().toHex(' ')); }

    void aCharacterWithoutAByteGoesOutAsAQuestionMark_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *name, const QString &text, const QByteArray &bytes) {
            QTest::newRow(name) << text << bytes;
        };
        row("a polish letter", u"a\u0142b"_s, "a?b"_ba);
        row("a russian word", u"\u043C\u0438\u0440"_s, "???"_ba);
        row("a control character whose byte is the euro sign", u"\u0080"_s, "?"_ba);
        row("a control character whose byte is a Y", u"\u009F"_s, "?"_ba);
        row("a character beyond 16 bits", u"a\U0001F600b"_s, "a?b"_ba);
        row("two of them", u"\U0001F600\U0001F600"_s, "??"_ba);
        row("the first half of one, then a letter", QString(QChar(0xD83D)) + u'x', "?x"_ba);
        row("the second half of one", QString(QChar(0xDE00)) + u'x', "?x"_ba);
        row("the first half of one at the end", u'x' + QString(QChar(0xD83D)), "x?"_ba);
        row("two first halves", QString(2, QChar(0xD83D)), "??"_ba);
    }

    void aCharacterWithoutAByteGoesOutAsAQuestionMark()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(toAnsi(text), bytes);
    }

    void nothingStaysNothing()
    {
        QCOMPARE(toAnsi({}), QByteArray());
        QCOMPARE(fromAnsi({}), QString());
        QCOMPARE(squeezeBlanks({}), QString());
        QCOMPARE(trimBlanks({}), QString());
    }

    void runsOfBlanksAreSqueezedToOne_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("squeezed");
        const auto row = [](const char *name, const QString &text, const QString &squeezed) {
            QTest::newRow(name) << text << squeezed;
        };
        row("no blank", u"abc"_s, u"abc"_s);
        row("one blank", u"a b"_s, u"a b"_s);
        row("two blanks", u"a  b"_s, u"a b"_s);
        row("three, four and five", u"a   b    c     d"_s, u"a b c d"_s);
        row("at both ends", u"   a   "_s, u" a "_s);
        row("only blanks", u"     "_s, u" "_s);
        row("tabs stay", u"a\t\tb"_s, u"a\t\tb"_s);
        row("line ends stay", u"a\r\n\r\nb"_s, u"a\r\n\r\nb"_s);
        row("no-break blanks stay", u"a\u00A0\u00A0b"_s, u"a\u00A0\u00A0b"_s);
        row("blanks around a line feed", u"a  \n  b"_s, u"a \n b"_s);
        row("other doubled characters stay", u"aabbcc"_s, u"aabbcc"_s);
    }

    void runsOfBlanksAreSqueezedToOne()
    {
        QFETCH(QString, text);
        QFETCH(QString, squeezed);
        QCOMPARE(squeezeBlanks(text), squeezed);
    }

    void tenTimesAsManyBlanksCostTenTimesAsMuch()
    {
#ifdef Q_OS_WIN
        QSKIP("this system's clock of a program's work is too coarse");
#endif
        const auto squeeze = [](qsizetype blanks, int times) {
            const QString text = u'a' + QString(blanks, u' ') + u'b';
            return cpuTimeOf([=] {
                for (int time = 0; time < times; ++time)
                    QCOMPARE(squeezeBlanks(text), u"a b"_s);
            });
        };
        constexpr qsizetype megabyte = 1 << 20;
        const double pieces = squeeze(megabyte / 10, 10);
        const double whole = squeeze(megabyte, 1);
        QVERIFY2(whole < 5 * pieces, qPrintable(u"%1 s and %2 s"_s.arg(whole).arg(pieces)));
    }

    void aTextIsSendableWhenEachCharacterHasAByte()
    {
        QVERIFY(isSendable({}));
        QVERIFY(isSendable(u"Who? \u00E4\u20AC"_s));
        QVERIFY(!isSendable(u"\u017B\u00F3\u0142w"_s));
        QVERIFY(!isSendable(u"why? \U0001F600"_s));
    }

    void onlyBlanksAreTrimmed_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("trimmed");
        const auto row = [](const char *name, const QString &text, const QString &trimmed) {
            QTest::newRow(name) << text << trimmed;
        };
        row("both ends", u"  a b  "_s, u"a b"_s);
        row("the start", u"  a"_s, u"a"_s);
        row("the end", u"a  "_s, u"a"_s);
        row("inner blanks stay", u"a   b"_s, u"a   b"_s);
        row("only blanks", u"   "_s, QString());
        row("tabs stay", u" \ta\t "_s, u"\ta\t"_s);
        row("line ends stay", u" \r\na\r\n "_s, u"\r\na\r\n"_s);
        row("no-break blanks stay", u" \u00A0a\u00A0 "_s, u"\u00A0a\u00A0"_s);
        row("nothing to trim", u"abc"_s, u"abc"_s);
    }

    void onlyBlanksAreTrimmed()
    {
        QFETCH(QString, text);
        QFETCH(QString, trimmed);
        QCOMPARE(trimBlanks(text), trimmed);
    }
};

GUILESS_TEST(WireTextTest)
#include "tst_wire_text.moc"
