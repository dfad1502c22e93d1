// SPDX-License-Identifier: MIT
#include "victim.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// A text as long as a reply can hold, without a blank in it.
QByteArrayList endlessWord()
{
    return QByteArrayList(500, QByteArray(8'000, 'x'));
}

/// Answers the command with these pieces, the header of a reply before each, and lets all of them arrive before the
/// program's clock goes on.
void answer(Victim &victim, const QByteArray &command, const QByteArrayList &pieces)
{
    victim.server.answers.insert(command, {});
    victim.server.beforeAnswer = [&victim, command, pieces](const QByteArray &asked) {
        if (asked != command)
            return;
        QTimer::singleShot(0, &victim.program.window, [&victim, pieces] {
            const QString &reply = victim.program.session.rconreply;
            for (const QByteArray &piece : pieces) {
                const qsizetype before = reply.size();
                victim.server.send(printDatagram(piece));
                QTRY_VERIFY(reply.size() > before);
            }
        });
    };
}

QByteArrayList around(const QByteArray &before, const QByteArray &behind)
{
    return QByteArrayList{before} + endlessWord() + QByteArrayList{behind};
}

/// Brings each tab to the front, as a person who looks for what the server has done.
void lookAtEveryTab(const Victim &victim)
{
    auto *tabs = victim.program.window.findChild<QTabWidget *>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        victim.program.window.grab();
    }
}

} // namespace

/// Texts that are longer than any game sends, and take longer to show than anybody waits.
class LongTextsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aRotationThatNoDatagramHoldsIsNone()
    {
        Victim victim;
        answer(victim, "dvarlist sv_maprotation", around("S sv_maprotation \"map ", "\"\n"));
        victim.connect();
        lookAtEveryTab(victim);
        QCOMPARE(victim.program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s)->toPlainText(),
                 u"Server did not give rotation."_s);
    }

    void theLongestRotationIsShown()
    {
        const QByteArray rotation = QByteArray("map mp_toujane ").repeated(65'507 / 15).trimmed();
        QByteArrayList pieces{"S sv_maprotation \""};
        for (qsizetype at = 0; at < rotation.size(); at += 1'000)
            pieces.append(rotation.mid(at, 1'000));
        Victim victim;
        answer(victim, "dvarlist sv_maprotation", pieces + QByteArrayList{"\"\n"});
        victim.connect();
        lookAtEveryTab(victim);
        QCOMPARE(victim.program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s)->toPlainText(),
                 QString::fromLatin1(rotation));
    }

    void namesThatNoFileHasAreNotListed_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("name");
        QTest::newRow("maps") << "dir maps/mp d3dbsp"_ba
                              << around("Directory of maps/mp d3dbsp\n--\n\n", ".d3dbsp\nmp_real.d3dbsp\n")
                              << u"lstmaps"_s << u"mp_real"_s;
        QTest::newRow("files") << "fdir *.cfg"_ba << around("--\n/", ".cfg\n/real.cfg\n") << u"lstcfgs"_s
                               << u"real.cfg"_s;
    }

    void namesThatNoFileHasAreNotListed()
    {
        QFETCH(const QByteArray, command);
        QFETCH(const QByteArrayList, pieces);
        QFETCH(const QString, list);
        QFETCH(const QString, name);
        Victim victim;
        answer(victim, command, pieces);
        victim.connect();
        victim.program.click(u"cmdpopmaps"_s);
        lookAtEveryTab(victim);
        QCOMPARE(victim.program.rows(list), QStringList{name});
    }

    void ofAnEndlessNameTheBeginningIsShown()
    {
        Victim victim;
        victim.connect();
        answer(victim, "getstatus", around("statusResponse\n\\sv_hostname\\x\n0 50 \"Bob", "\"\n"));
        victim.program.find<QAbstractButton>(u"chkplyq"_s)->setChecked(true);
        victim.program.click(u"cmdplypop"_s);
        lookAtEveryTab(victim);
        QCOMPARE(victim.names(), QStringList{u"Bob"_s + QString(997, u'x')});
    }

    void anEndlessValueIsShownAsFarAsItsFieldGoes()
    {
        Victim victim;
        victim.connect();
        answer(victim, "dvarlist sv_*", around("S sv_hostname \"", "\"\n"));
        victim.program.click(u"cmdservpop"_s);
        lookAtEveryTab(victim);
        const auto *field = victim.program.find<QLineEdit>(u"txtservername"_s);
        QCOMPARE(field->text(), QString(field->maxLength(), u'x'));
    }
};

WINDOW_TEST(LongTextsTest)
#include "tst_long_texts.moc"
