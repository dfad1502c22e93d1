// SPDX-License-Identifier: MIT
#include "program.h"
#include "rcon/known_words.h"
#include "weapons/weapon_table.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

/// The table of variables, and the controls that are bound to some.
class KnownVariablesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theVariablesOfThePagesAreKnown()
    {
        Program program;
        program.start();
        QStringList unknown;
        for (const Weapon &weapon : weapons())
            unknown.append(weapon.variable);
        int bound = 0;
        const QList<QWidget *> controls = program.window.findChildren<QWidget *>();
        for (const QWidget *control : controls) {
            const QString name = control->property("Tag").toString();
            if (name.isEmpty() ||
                control->objectName() == "cmdconnect"_L1) // that of the button is whether it is connected
                continue;
            ++bound;
            unknown.append(name);
        }
        QVERIFY(bound > 20);
        unknown.removeIf([](const QString &name) { return findKnown(knownVariables(), name); });
        QCOMPARE(unknown.join(u' '), QString());
    }
};

WINDOW_TEST(KnownVariablesTest)
#include "tst_known_variables.moc"
