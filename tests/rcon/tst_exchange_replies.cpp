// SPDX-License-Identifier: MIT
#include "link.h"
#include "window_test.h"

#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

using Datagrams = QList<QByteArray>;

// The reply to one command that is answered by these datagrams.
QString replyTo(Link &link, const Datagrams &datagrams)
{
    link.server.answerRaw("ask", datagrams);
    link.exchange.sendinfo(u"ask"_s, true);
    return link.session.rconreply;
}

// Lets the event loop run until the reply holds so many characters.
bool gathered(const Link &link, qsizetype characters)
{
    return QTest::qWaitFor([&] { return link.session.rconreply.size() >= characters; });
}

} // namespace

/// What becomes of the datagrams that come in.
class ExchangeRepliesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void headerAndPrintAreRemovedAndLineFeedsExtended_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        QTest::addColumn<QString>("reply");
        const QByteArray head("\xFF\xFF\xFF\xFF");
        const QString headText = u"\u00FF\u00FF\u00FF\u00FF"_s;
        QTest::newRow("at the start") << head + "print\nab\ncd\n" << u"ab\r\ncd\r\n"_s;
        QTest::newRow("in the middle") << "ab" + head + "print\ncd" << u"abcd"_s;
        QTest::newRow("at the end") << "ab" + head + "print\n" << u"ab"_s;
        QTest::newRow("twice in a row") << head + "print\n" + head + "print\nab" << u"ab"_s;
        QTest::newRow("at start, middle and end") << head + "print\na" + head + "print\nb" + head + "print\n"
                                                  << u"ab"_s;
        QTest::newRow("nothing else") << head + "print\n" << QString();
        QTest::newRow("behind a fifth 255") << '\xFF' + head + "print\nab" << u"\u00FFab"_s;
        QTest::newRow("in capitals it stays") << head + "PRINT\nab" << headText + u"PRINT\r\nab"_s;
        QTest::newRow("with one capital it stays") << head + "Print\nab" << headText + u"Print\r\nab"_s;
        QTest::newRow("without line feed it stays") << head + "print ab" << headText + u"print ab"_s;
        QTest::newRow("with a carriage return it stays") << head + "print\r\nab" << headText + u"print\r\r\nab"_s;
        QTest::newRow("without header it stays") << QByteArray("print\nab") << u"print\r\nab"_s;
        QTest::newRow("with three 255 it stays") << head.first(3) + "print\nab" << headText.first(3) + u"print\r\nab"_s;
        QTest::newRow("another header stays") << head + "statusResponse\n\\a\\b\n"
                                              << headText + u"statusResponse\r\n\\a\\b\r\n"_s;
        QTest::newRow("a carriage return gets another") << QByteArray("ab\r\ncd\n\n") << u"ab\r\r\ncd\r\n\r\n"_s;
        QTest::newRow("blanks stay") << QByteArray("  a    b  ") << u"  a    b  "_s;
    }

    void headerAndPrintAreRemovedAndLineFeedsExtended()
    {
        QFETCH(QByteArray, datagram);
        QFETCH(QString, reply);
        Link link;
        QCOMPARE(replyTo(link, {datagram}), reply);
        QCOMPARE(link.server.requests().size(), 1);
    }

    void collectingSqueezesBlanksAndKeepsLineFeeds_data()
    {
        QTest::addColumn<Datagrams>("datagrams");
        QTest::addColumn<QString>("reply");
        QTest::newRow("four blanks") << Datagrams{printed("a    b\n")} << u"a b\n"_s;
        QTest::newRow("two, three and five") << Datagrams{printed("a  b   c     d")} << u"a b c d"_s;
        QTest::newRow("at the ends") << Datagrams{printed("   a   ")} << u" a "_s;
        QTest::newRow("around line feeds") << Datagrams{printed("a  \n  b\n\nc\n")} << u"a \n b\n\nc\n"_s;
        QTest::newRow("tabs stay") << Datagrams{printed("a\t\tb \t c")} << u"a\t\tb \t c"_s;
        QTest::newRow("carriage returns stay") << Datagrams{printed("a\r\nb")} << u"a\r\nb"_s;
        QTest::newRow("only blanks") << Datagrams{printed("      ")} << u" "_s;
        QTest::newRow("a removed header joins blanks") << Datagrams{"a " + printed(" b")} << u"a b"_s;
        QTest::newRow("two datagrams keep a blank each") << Datagrams{printed("a "), printed(" b")} << u"a  b"_s;
        QTest::newRow("squeezed in each datagram") << Datagrams{printed("a   "), printed("   b")} << u"a  b"_s;
    }

    void collectingSqueezesBlanksAndKeepsLineFeeds()
    {
        QFETCH(Datagrams, datagrams);
        QFETCH(QString, reply);
        Link link;
        link.session.rconcollect = true;
        QCOMPARE(replyTo(link, datagrams), reply);
        QCOMPARE(link.program.pane(), QString());
    }

    void aSplitReplyIsShownPieceByPiece()
    {
        Link link;
        QStringList stages;
        connect(link.program.find<QPlainTextEdit>(u"txtoutput"_s), &QPlainTextEdit::textChanged, this,
                [&] { stages.append(link.program.pane()); });
        QCOMPARE(replyTo(link, {printed("one\ntw"), printed("o\nthree"), printed("\n")}), u"one\r\ntwo\r\nthree\r\n"_s);
        QCOMPARE(stages, QStringList({u"one\r\ntw"_s, u"one\r\ntwo\r\nthree"_s, u"one\r\ntwo\r\nthree\r\n"_s}));
    }

    void aSplitReplyIsCollectedSilently()
    {
        Link link;
        link.session.rconcollect = true;
        QCOMPARE(replyTo(link, {printed("one\ntw"), printed("o\nthree"), printed("\n")}), u"one\ntwo\nthree\n"_s);
        QCOMPARE(link.program.pane(), QString());
    }

    void aPieceThatComesLateStillCounts()
    {
        Link link;
        QCOMPARE(replyTo(link, {printed("in time, ")}), u"in time, "_s);
        QVERIFY(link.server.sendRaw(printed("late\n")));
        QTRY_COMPARE(link.session.rconreply, u"in time, late\r\n"_s);
        QCOMPARE(link.program.pane(), u"in time, late\r\n"_s);
    }

    void anEmptyDatagramIsAReplyAndHidesNoOther()
    {
        Link link;
        QCOMPARE(replyTo(link, {""}), QString());
        QVERIFY(link.session.rconarrived);
        QCOMPARE(link.server.requests().size(), 1);
        QCOMPARE(replyTo(link, {"", printed("more")}), u"more"_s);
    }

    void all256BytesComeIn()
    {
        QByteArray bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes.append(static_cast<char>(byte));
        QString expected;
        for (char16_t code = 0; code < 256; ++code)
            expected.append(QChar(code));
        // The rest of the upper controls is not in use and comes in as it is.
        const QString upper =
            u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
            "\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178"_s;
        expected.replace(0x80, upper.size(), upper);

        Link link;
        link.session.rconcollect = true;
        QCOMPARE(replyTo(link, {bytes}), expected);
    }

    void aDatagramAsLargeAsTheBufferIsWhole()
    {
        Link link;
        link.session.rconcollect = true;
        QCOMPARE(replyTo(link, {QByteArray(8191, 'a') + 'z'}), QString(8191, u'a') + u'z');
    }

    void aLargerDatagramIsToldAndCut_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("by one byte") << 8193;
        QTest::newRow("by far") << 60000;
        QTest::newRow("the largest there is") << 65507;
    }

    void aLargerDatagramIsToldAndCut()
    {
        QFETCH(int, size);
        QByteArray datagram(size, '.');
        datagram.replace(0, 5, "first");
        datagram.replace(8188, 4, "last");
        Link link;
        link.session.rconcollect = true;
        QCOMPARE(replyTo(link, {datagram}), u"first"_s + QString(8183, u'.') + u"last"_s);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{truncatedBox()});
        QCOMPARE(link.server.requests().size(), 1);
    }

    void whatIsLeftOfALargerDatagramIsHandledLikeAnyOther()
    {
        Link link;
        QCOMPARE(replyTo(link, {printed("a\n" + QByteArray(9000, 'b'))}), u"a\r\n"_s + QString(8180, u'b'));
        QCOMPARE(link.program.pane(), link.session.rconreply);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{truncatedBox()});
    }

    void oneBoxTellsOfAllLargerDatagramsThatComeWhileItIsOpen()
    {
        Link link;
        link.session.rconcollect = true;
        link.program.prompts.whileOpen = [&] {
            QVERIFY(link.server.sendRaw(QByteArray(9000, 'b')));
            QVERIFY(link.server.sendRaw(QByteArray(9000, 'c')));
            QVERIFY(gathered(link, 2 * 8192));
        };
        const QString reply = replyTo(link, {QByteArray(9000, 'a')});
        QCOMPARE(reply, QString(8192, u'b') + QString(8192, u'c') + QString(8192, u'a'));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{truncatedBox()});

        link.program.prompts.whileOpen = nullptr;
        (void)replyTo(link, {QByteArray(9000, 'd')});
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{truncatedBox()});
    }
};

WINDOW_TEST(ExchangeRepliesTest)
#include "tst_exchange_replies.moc"
