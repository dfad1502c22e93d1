// SPDX-License-Identifier: MIT
#include "practice/map_rotation.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class PracticeMapRotationTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aTurnTakesGameTypeAndMap()
    {
        const RotationTurn turn = takeTurn(u"gametype sd map mp_decoy gametype tdm map mp_toujane"_s);
        QCOMPARE(turn.gametype, u"sd"_s);
        QCOMPARE(turn.map, u"mp_decoy"_s);
        QCOMPARE(turn.rest, u"gametype tdm map mp_toujane"_s);
        QCOMPARE(turn.log, u"Setting g_gametype: sd.\nSetting map: mp_decoy.\n"_s);
    }

    void aTurnWithoutGameTypeKeepsIt()
    {
        const RotationTurn turn = takeTurn(u"map mp_decoy map mp_toujane"_s);
        QCOMPARE(turn.gametype, QString());
        QCOMPARE(turn.map, u"mp_decoy"_s);
        QCOMPARE(turn.rest, u"map mp_toujane"_s);
    }

    void theKeywordsMayBeCapitals()
    {
        const RotationTurn turn = takeTurn(u"GAMETYPE hq MAP mp_decoy"_s);
        QCOMPARE(turn.gametype, u"hq"_s);
        QCOMPARE(turn.map, u"mp_decoy"_s);
        QCOMPARE(turn.rest, QString());
    }

    void anUnknownWordIsToldAndSkipped()
    {
        const RotationTurn turn = takeTurn(u"xxx map mp_decoy"_s);
        QCOMPARE(turn.map, u"mp_decoy"_s);
        QCOMPARE(turn.log, u"Unknown keyword 'xxx' in sv_mapRotation.\nSetting map: mp_decoy.\n"_s);
    }

    void aRotationWithoutMapsIsUsedUp_data()
    {
        QTest::addColumn<QString>("rotation");
        QTest::newRow("empty") << QString();
        QTest::newRow("blanks") << u"   "_s;
        QTest::newRow("a keyword alone") << u"map"_s;
        QTest::newRow("a game type alone") << u"gametype dm"_s;
        QTest::newRow("nonsense") << u"one two three"_s;
    }
    void aRotationWithoutMapsIsUsedUp()
    {
        QFETCH(QString, rotation);
        const RotationTurn turn = takeTurn(rotation);
        QCOMPARE(turn.map, QString());
        QCOMPARE(turn.rest, QString());
    }
};

GUILESS_TEST(PracticeMapRotationTest)
#include "tst_practice_map_rotation.moc"
