// SPDX-License-Identifier: MIT
#include "rcon/console_history.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class ConsoleHistoryTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyEntryButTheLastIsCompared_data()
    {
        QTest::addColumn<QStringList>("history");
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("taken");
        const QStringList three{u"status"_s, u"map_rotate"_s, u"serverinfo"_s};
        QTest::newRow("the first command") << QStringList() << u"status"_s << true;
        QTest::newRow("the only entry again") << QStringList{u"status"_s} << u"status"_s << true;
        QTest::newRow("a third time") << QStringList{u"status"_s, u"status"_s} << u"status"_s << false;
        QTest::newRow("a new one") << three << u"kick all"_s << true;
        QTest::newRow("the oldest") << three << u"status"_s << false;
        QTest::newRow("the last but one") << three << u"map_rotate"_s << false;
        QTest::newRow("the last") << three << u"serverinfo"_s << true;
        QTest::newRow("in another case") << three << u"Status"_s << true;
        QTest::newRow("with a blank behind") << three << u"status "_s << true;
        QTest::newRow("only its beginning") << three << u"map"_s << true;
    }

    void everyEntryButTheLastIsCompared()
    {
        QFETCH(QStringList, history);
        QFETCH(QString, command);
        QFETCH(bool, taken);
        QCOMPARE(historyTakes(history, command), taken);
    }
};

GUILESS_TEST(ConsoleHistoryTest)
#include "tst_console_history.moc"
