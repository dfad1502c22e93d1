// SPDX-License-Identifier: MIT
#include "messages/chat_colours.h"
#include "test_class.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QColor white(255, 255, 255);
const QColor yellow(255, 255, 0);
const QColor red(255, 0, 0);

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [dark, light] = std::minmax(luminance(one), luminance(other));
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

Q_DECLARE_METATYPE(QList<ChatRun>)

class ChatColoursTest final : public QObject {
    Q_OBJECT

private slots:
    void aLineIsSeenInItsColours_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QList<ChatRun>>("seen");
        QTest::newRow("nothing") << u""_s << QList<ChatRun>();
        QTest::newRow("no code") << u"hello"_s << QList<ChatRun>{{u"hello"_s, white}};
        QTest::newRow("one code") << u"^1hello"_s << QList<ChatRun>{{u"hello"_s, red}};
        QTest::newRow("in the middle") << u"a ^3b"_s << QList<ChatRun>{{u"a "_s, white}, {u"b"_s, yellow}};
        QTest::newRow("the last of several counts") << u"^1^2^3a"_s << QList<ChatRun>{{u"a"_s, yellow}};
        QTest::newRow("the same again") << u"^3a^3b"_s << QList<ChatRun>{{u"ab"_s, yellow}};
        QTest::newRow("only codes") << u"^1^2"_s << QList<ChatRun>();
        QTest::newRow("a caret alone") << u"a^b ^"_s << QList<ChatRun>{{u"a^b ^"_s, white}};
        QTest::newRow("two carets") << u"^^1a"_s << QList<ChatRun>{{u"^"_s, white}, {u"a"_s, red}};
        QTest::newRow("a digit of another script") << u"^\u0661a"_s << QList<ChatRun>{{u"^\u0661a"_s, white}};
        QTest::newRow("markup") << u"^1<b>x</b>&amp;"_s << QList<ChatRun>{{u"<b>x</b>&amp;"_s, red}};
        QTest::newRow("two digits") << u"^10"_s << QList<ChatRun>{{u"0"_s, red}};
    }

    void aLineIsSeenInItsColours()
    {
        QFETCH(QString, line);
        const QList<ChatRun> seen = chatRuns(line);
        QTEST(seen, "seen");
    }

    void eachCodeHasItsColour_data()
    {
        QTest::addColumn<int>("digit");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("black") << 0 << QColor(0, 0, 0);
        QTest::newRow("red") << 1 << red;
        QTest::newRow("green") << 2 << QColor(0, 192, 0);
        QTest::newRow("yellow") << 3 << yellow;
        QTest::newRow("blue") << 4 << QColor(0, 0, 255);
        QTest::newRow("cyan") << 5 << QColor(0, 255, 255);
        QTest::newRow("pink") << 6 << QColor(255, 128, 255);
        QTest::newRow("white") << 7 << white;
    }

    void eachCodeHasItsColour()
    {
        QFETCH(int, digit);
        QTEST(chatColour(digit), "colour");
    }

    void everyColourCanBeReadOnItsGround()
    {
        for (int digit = 0; digit <= 9; ++digit) {
            const QColor colour = chatColour(digit);
            QVERIFY2(contrast(colour, chatGround(colour)) >= 4.5, qPrintable(QString::number(digit)));
        }
        QVERIFY2(contrast(chatGround(white), Qt::black) < 1.5, "white stands on a dark ground");
        QVERIFY2(contrast(chatGround(chatColour(0)), Qt::black) > 10, "black stands on a light ground");
    }
};

GUILESS_TEST(ChatColoursTest)
#include "tst_chat_colours.moc"
