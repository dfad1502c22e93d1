// SPDX-License-Identifier: MIT
#include "test_class.h"
#include "weapon_rows.h"
#include "weapons/weapon_table.h"

#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

class WeaponTableTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyWeaponHasItsTexts_data()
    {
        QTest::addColumn<QString>("box");
        for (const WeaponRow &row : weaponRows())
            QTest::newRow(qPrintable(row.caption)) << row.box;
    }

    void everyWeaponHasItsTexts()
    {
        QFETCH(QString, box);
        const QStringList groups{u"British"_s, u"Russian"_s, u"Allies"_s, u"German"_s, u"Others"_s};
        const WeaponRow row = weaponRow(box);
        qsizetype found = 0;
        for (const Weapon &weapon : weapons()) {
            if (weapon.box != box)
                continue;
            ++found;
            QCOMPARE(groups.at(static_cast<qsizetype>(weapon.group)), row.group);
            QCOMPARE(weapon.variable, row.variable);
            QCOMPARE(weapon.caption, row.caption);
            QCOMPARE(weapon.confirmation, row.confirmation);
            QCOMPARE(weapon.toolTip, row.toolTip);
        }
        QCOMPARE(found, 1);
    }

    void theTableIsInTheOrderOfReading()
    {
        QStringList boxes;
        for (const Weapon &weapon : weapons())
            boxes.append(weapon.box);
        QCOMPARE(boxes, readingOrder());
        QCOMPARE(boxes.size(), 21);
    }

    void noVariableOccursTwice()
    {
        QSet<QString> variables;
        for (const Weapon &weapon : weapons())
            variables.insert(weapon.variable);
        QCOMPARE(variables.size(), 21);
        QVERIFY2(!variables.contains(u"scr_allow_nagantscoped"_s), "only a tool tip says so");
    }

    // The shotgun goes before the PPS 42 here, and behind it when all are read or sent.
    void riflesOnlyAllowsThreeInItsOwnOrder()
    {
        const QStringList order =
            u"chkm1a1carbine chkm1garand chkthompson chkbar chkspringfield chkgreasegun chkppsh chknagant "
            "chknagantsniper chkenfield chkenfieldsniper chksten chkbren chkmp40 chkmp44 chkkar98k "
            "chkkar98ksniper chkg43 chkshotgun chkpps42 chksvt40"_s.split(u' ');
        QStringList boxes;
        QStringList allowed;
        for (const WeaponSetting &setting : riflesOnly()) {
            boxes.append(setting.box);
            if (setting.allowed)
                allowed.append(setting.box);
        }
        QCOMPARE(boxes, order);
        QCOMPARE(allowed, (QStringList{u"chknagant"_s, u"chkenfield"_s, u"chkkar98k"_s}));
    }
};

GUILESS_TEST(WeaponTableTest)
#include "tst_weapon_table.moc"
