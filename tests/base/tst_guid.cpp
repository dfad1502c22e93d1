// SPDX-License-Identifier: MIT
#include "base/guid.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

class GuidTest final : public QObject {
    Q_OBJECT

private slots:
    void whatItIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isNumber");
        QTest::addColumn<bool>("isOfMany");
        QTest::addColumn<QString>("plain");
        const auto row = [](const QString &text, bool isNumber, bool isOfMany, const QString &plain) {
            QTest::newRow(qPrintable(u'"' + text + u'"')) << text << isNumber << isOfMany << plain;
        };
        row(u"1001"_s, true, false, u"1001"_s);
        row(u"-1001"_s, true, false, u"-1001"_s);
        row(u"12345678901234567890"_s, true, false, u"12345678901234567890"_s);
        row(u"0"_s, true, true, u"0"_s);
        row(u"000"_s, true, true, u"0"_s);
        row(u"-0"_s, true, true, u"0"_s);
        row(u""_s, false, true, u"0"_s);
        row(u" 7 "_s, false, false, u"7"_s);
        row(u"12a"_s, false, false, u"12a"_s);
        row(u"٣"_s, false, false, u"٣"_s);
    }

    void whatItIs()
    {
        QFETCH(QString, text);
        QTEST(isGuid(text), "isNumber");
        QTEST(isNobodysGuid(text), "isOfMany");
        QTEST(plainGuid(text), "plain");
    }
};

GUILESS_TEST(GuidTest)
#include "tst_guid.moc"
