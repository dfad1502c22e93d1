// SPDX-License-Identifier: MIT
#include "output/rcon_pane.h"
#include "window_test.h"

#include <QTextBlock>

using namespace Qt::StringLiterals;

class EndlessLineTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theHistoryIsTheTextAsItCame_data()
    {
        QTest::addColumn<QStringList>("pieces");
        const QString longLine(5000, u'x');
        QTest::newRow("a line longer than a block") << QStringList{longLine};
        QTest::newRow("with a line end behind it") << QStringList{longLine + u"\r\nnext\r\n"_s};
        QTest::newRow("in pieces") << QStringList{longLine, longLine, u"\r\n"_s, u"end"_s};
        QTest::newRow("a line end just where a block is full") << QStringList{QString(2000, u'x'), u"\r\n"_s, u"y"_s};
        for (int length = 1996; length <= 2004; ++length)
            QTest::addRow("%d characters and a line end", length)
                << QStringList{QString(length, u'x') + u"\r\n"_s + QString(length, u'y') + u"\r\nz"_s};
    }

    void theHistoryIsTheTextAsItCame()
    {
        QFETCH(QStringList, pieces);
        RconPane pane;
        for (const QString &piece : std::as_const(pieces))
            pane.append(piece);
        QCOMPARE(pane.text(), pieces.join(QString()));
    }

    void noBlockGrowsWithoutEnd()
    {
        RconPane pane;
        for (int count = 0; count < 100; ++count)
            pane.append(QString(1000, u'x'));
        for (QTextBlock block = pane.document()->begin(); block.isValid(); block = block.next())
            QVERIFY(block.length() <= 2100);
        QCOMPARE(pane.text(), QString(100'000, u'x'));
    }
};

WINDOW_TEST(EndlessLineTest)
#include "tst_endless_line.moc"
