// SPDX-License-Identifier: MIT
#include "ledger/known_passwords.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

KnownPasswords knownTo(const QStringList &passwords)
{
    KnownPasswords known;
    for (const QString &password : passwords)
        known.add(password);
    return known;
}

} // namespace

/// Which passwords are hidden, and where.
class KnownPasswordsTest final : public QObject {
    Q_OBJECT

private slots:
    void aCommandMakesPasswordsKnown_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("passwords");
        const auto row = [](const char *command, const QStringList &passwords) {
            QTest::newRow(command) << QString::fromLatin1(command) << passwords;
        };
        row("rcon_password newword", {u"newword"_s});
        row("RCON_Password \"newword\"", {u"newword"_s});
        row("set rcon_password newword", {u"newword"_s});
        row("/sets rcon_password \"two words\"", {u"two words"_s});
        row("rcon_password many words", {u"many words"_s, u"many"_s});
        row("rcon_password abc", {u"abc"_s});
        row("rcon_password newword; say hello", {u"newword; say hello"_s, u"newword;"_s, u"newword"_s});
        row("say hello; rcon_password newword", {u"newword"_s});
        row("say hello\nrcon_password newword", {u"newword"_s});
        row("set g_password letmein", {u"letmein"_s});
        row("g_password war", {}); // half of all texts would be hidden
        row("rcon_password", {});
        row("rcon_password \"\"", {});
        row("say rcon_password newword", {});
        row("status", {});
    }

    void aCommandMakesPasswordsKnown()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, passwords);
        KnownPasswords known;
        QCOMPARE(known.addFrom(command), !passwords.isEmpty());
        QStringList found = known.all();
        found.sort();
        passwords.sort();
        QCOMPARE(found, passwords);
        QVERIFY(!known.addFrom(command));
    }

    void oneThatIsPartOfAnotherLeavesNothing()
    {
        for (const QStringList &passwords : {QStringList({u"practice"_s, u"practice2"_s, u"ice2x"_s}),
                                             QStringList({u"ice2x"_s, u"practice2"_s, u"practice"_s})}) {
            QString text = u"it is practice2x, practice and ice2x"_s;
            knownTo(passwords).star(text);
            QCOMPARE(text, u"it is **********, ******** and *****"_s);
        }
    }

    void oneThatOverlapsItselfLeavesNothing()
    {
        QString text = u"ababa, aba ab abab"_s;
        knownTo({u"aba"_s}).star(text);
        QCOMPARE(text, u"*****, *** ab ***b"_s);
        text = u"xaabaabaay"_s;
        knownTo({u"aabaa"_s}).star(text);
        QCOMPARE(text, u"x********y"_s);
    }

    void aBorderHidesNothing()
    {
        const KnownPasswords known = knownTo({u"former"_s, u"practice"_s});
        for (const QString &password : known.all()) {
            for (qsizetype size = 1; size < password.size(); ++size) {
                QString before = u"is "_s + password.first(size);
                QString after = password.sliced(size) + u", practice"_s;
                QVERIFY(known.mayGoOn(before));
                known.starNext(before, after, false);
                QCOMPARE(before, u"is "_s + QString(size, u'*'));
                QCOMPARE(after, QString(password.size() - size, u'*') + u", ********"_s);
            }
        }
    }

    void noEmptyPasswordIsKnown()
    {
        KnownPasswords known;
        QVERIFY(!known.add({}));
        QString text = u"text"_s;
        known.star(text);
        QCOMPARE(text, u"text"_s);
    }
};

GUILESS_TEST(KnownPasswordsTest)
#include "tst_known_passwords.moc"
