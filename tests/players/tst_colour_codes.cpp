// SPDX-License-Identifier: MIT
#include "base/colour_codes.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class ColourCodesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void onlyACaretAndADigitGo_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("stripped");
        const auto row = [](const char *title, const QString &name, const QString &stripped) {
            QTest::newRow(title) << name << stripped;
        };
        row("nothing", QString(), QString());
        row("a plain name", u"BandAid"_s, u"BandAid"_s);
        row("two colours", u"^1Big ^7Bob"_s, u"Big Bob"_s);
        row("a colour in the last place", u"Bob^7"_s, u"Bob"_s);
        row("colours alone", u"^1^2^3"_s, QString());
        row("a digit behind a colour", u"^11"_s, u"1"_s);
        row("a letter behind the caret", u"^aBob"_s, u"^aBob"_s);
        row("a blank behind the caret", u"^ 1"_s, u"^ 1"_s);
        row("a caret in the last place", u"Blue^"_s, u"Blue^"_s);
        row("a caret alone", u"^"_s, u"^"_s);
        row("two carets", u"^^"_s, u"^^"_s);
        row("two carets and a letter", u"^^double"_s, u"^^double"_s);
        row("two carets and a digit", u"^^1Bob"_s, u"^Bob"_s);
        row("a code that is left over by another", u"^^11Bob"_s, u"^1Bob"_s);
        row("a face", u"^_^"_s, u"^_^"_s);
        row("the character before zero", u"^/Bob"_s, u"^/Bob"_s);
        row("the character behind nine", u"^:Bob"_s, u"^:Bob"_s);
        row("a digit of another script", u"^\u0663Bob"_s, u"^\u0663Bob"_s);
        row("a raised digit", u"^\u00B9Bob"_s, u"^\u00B9Bob"_s);
        row("blanks at the ends stay", u" ^1Bob "_s, u" Bob "_s);
    }

    void onlyACaretAndADigitGo()
    {
        QFETCH(QString, name);
        QTEST(stripcolour(name), "stripped");
    }

    void allTenDigitsAreColours()
    {
        for (const QChar digit : u"0123456789"_s)
            QCOMPARE(stripcolour(u"a^"_s + digit + u'b'), u"ab"_s);
    }

    void noOtherCharacterIsAColour()
    {
        for (char16_t code = 0; code < 0x100; ++code) {
            const QString name = u"a^"_s + QChar(code) + u'b';
            if (code < u'0' || code > u'9')
                QCOMPARE(stripcolour(name), name);
        }
    }
};

GUILESS_TEST(ColourCodesTest)
#include "tst_colour_codes.moc"
