// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "cpu_time.h"
#include "output/rcon_pane.h"
#include "program.h"
#include "shown_pane.h"
#include "window_test.h"

#include <QHash>
#include <QImage>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb yellow = qRgb(255, 255, 0);

/// How often each colour occurs in what the pane shows.
QHash<QRgb, int> coloursOf(RconPane &pane)
{
    QHash<QRgb, int> counts;
    const QImage picture = pane.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    return counts;
}

/// The processor time that it takes to append `text` three hundred times to a pane that holds `history`.
double costOfAppending(const QString &text, const QString &history)
{
    Pane shown;
    shown.append(history);
    return cpuTimeOf([&] {
        for (int time = 0; time < 300; ++time)
            shown.append(text);
    });
}

} // namespace

class RconPaneTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void textIsAppendedAsItStands()
    {
        Program program;
        program.output.addrcon(u"one\r\n"_s);
        program.output.addrcon(u"two, without a line end"_s);
        program.output.addrcon(u" and three\r\n\r\n  four  "_s);
        QCOMPARE(program.pane(), u"one\r\ntwo, without a line end and three\r\n\r\n  four  "_s);
    }

    void markupShowsAsTyped()
    {
        const auto markup = u"<b>Bob</b> <img src=\"map.png\"> &amp; <br>&lt;i&gt; <script>x</script>"_s;
        Program program;
        program.start();
        program.output.addrcon(markup);
        QCOMPARE(program.pane(), markup);
        QCOMPARE(program.output.pane().toPlainText(), markup);
        QCOMPARE(program.output.pane().document()->blockCount(), 1);
    }

    void markupDoesNotColourTheText()
    {
        Pane shown;
        shown.append(u"<font color=\"#ff0000\">MMMMM</font><h1>MMMMM</h1><hr>"_s);
        const QHash<QRgb, int> colours = coloursOf(shown.pane);
        QVERIFY(colours.contains(yellow));
        QVERIFY(!colours.contains(qRgb(255, 0, 0)));
    }

    void textIsYellowOnADarkGround()
    {
        Program program;
        program.start();
        RconPane &pane = program.output.pane();
        QVERIFY(!coloursOf(pane).contains(yellow));

        program.output.addrcon(u"MMMMMMMMMM\r\n"_s);
        program.output.addrcon(u"MMMMMMMMMM\r\n"_s);
        const QHash<QRgb, int> colours = coloursOf(pane);
        QVERIFY2(colours.value(yellow) > 20, qPrintable(u"%1 yellow pixels"_s.arg(colours.value(yellow))));
        const auto isLess = [&](QRgb one, QRgb other) { return colours.value(one) < colours.value(other); };
        const QList<QRgb> all = colours.keys();
        const QRgb ground = *std::ranges::max_element(all, isLess);
        QVERIFY2(qGray(ground) < 64, qPrintable(QColor(ground).name()));
    }

    void textThatComesBeforeThePaneIsSeenHasItsFont()
    {
        RconPane pane;
        QVERIFY(!pane.font().bold());
        pane.append(u"one\r\n"_s);
        QVERIFY(pane.font().bold());
        QCOMPARE(pane.font().pointSize(), 10);
    }

    void thePaneWaitsForTextInItsFont()
    {
        Program program;
        program.start();
        QTRY_VERIFY(program.output.pane().font().bold());
        QCOMPARE(program.output.pane().font().pointSize(), 10);
        QVERIFY(program.pane().isEmpty());
    }

    void textIsBoldAndTenPointsHigh()
    {
        Program program;
        program.start();
        program.output.addrcon(u"one\r\n"_s);
        program.output.addrcon(u"two\r\n"_s);
        for (const QFont &font : {program.output.pane().font(), program.output.pane().document()->defaultFont()}) {
            QCOMPARE(font.pointSize(), 10);
            QVERIFY(font.bold());
        }
    }

    void everyCharacterOfTheCodePageIsKept()
    {
        QByteArray bytes;
        for (int byte = 0; byte < 256; ++byte)
            if (byte != '\r' && byte != '\n')
                bytes.append(static_cast<char>(byte));
        RconPane pane;
        pane.append(fromAnsi(bytes) + u"\r\n"_s);
        QCOMPARE(toAnsi(pane.text()).toHex(' '), (bytes + "\r\n").toHex(' '));
    }

    void aNoBreakBlankIsNotABlank()
    {
        RconPane pane;
        pane.append(u"a\u00A0b c"_s);
        QCOMPARE(pane.text(), u"a\u00A0b c"_s);
    }

    void theWheelDoesNotChangeTheSizeOfTheText()
    {
        Pane shown;
        shown.append(lines(200));
        scrollUp(shown.pane, Qt::ControlModifier);
        QCOMPARE(shown.pane.font().pointSize(), 10);
    }

    void aPersonCannotTypeIntoThePane()
    {
        Pane shown;
        shown.append(u"one"_s);
        QTest::keyClicks(&shown.pane, u"two"_s);
        QTest::keyClick(&shown.pane, Qt::Key_Backspace);
        QCOMPARE(shown.pane.text(), u"one"_s);
    }

    void aLongHistoryMakesAppendingNoDearer()
    {
        const double atStart = costOfAppending(lines(1), lines(100));
        const double later = costOfAppending(lines(1), lines(20'000));
        QVERIFY2(later < 5 * atStart, qPrintable(u"%1 s and %2 s"_s.arg(later).arg(atStart)));
    }

    void aLongLineMakesAppendingToItNoDearer()
    {
        const QString word = u"word "_s;
        const double atStart = costOfAppending(word, word.repeated(100));
        const double later = costOfAppending(word, word.repeated(40'000));
        QVERIFY2(later < 8 * atStart, qPrintable(u"%1 s and %2 s"_s.arg(later).arg(atStart)));
    }
};

WINDOW_TEST(RconPaneTest)
#include "tst_rcon_pane.moc"
