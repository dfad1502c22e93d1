// SPDX-License-Identifier: MIT
#include "victim.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype largestDatagram = 65'507; // bytes, of what UDP can carry
constexpr qsizetype largestRead = 8'192;      // bytes of a datagram, the others are dropped

QByteArray randomBytes(qsizetype size)
{
    QRandomGenerator random(7);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

QByteArray everyByte()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(static_cast<char>(byte));
    return bytes;
}

/// As a field shows it.
QString inOneLine(QString text)
{
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

/// The text of these datagrams as the program gathers it.
QString gathered(const QList<QByteArray> &datagrams)
{
    const QString header = fromAnsi(printDatagram({}));
    QString all;
    for (const QByteArray &datagram : datagrams)
        all += squeezeBlanks(fromAnsi(datagram.first(std::min(datagram.size(), largestRead))).remove(header));
    return all;
}

} // namespace

/// A server whose answers are no answers at all.
class BrokenRepliesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theProgramSurvivesEveryReply_data()
    {
        QTest::addColumn<QList<QByteArray>>("reply");
        const auto row = [](const char *what, const QByteArray &datagram, int times = 3) {
            QTest::newRow(what) << QList<QByteArray>(times, datagram);
        };
        row("empty datagrams", {});
        row("headers alone", plainDatagram({}));
        row("half a header", plainDatagram({}).first(2));
        row("a header without print", plainDatagram("nonsense\n1 2 3\n"));
        row("print without text", printDatagram({}));
        row("headers upon headers", printDatagram({}).repeated(700));
        row("every byte", printDatagram(everyByte()));
        row("random bytes", printDatagram(randomBytes(8'000)));
        row("random bytes without a header", randomBytes(8'000));
        row("zeros", printDatagram(QByteArray(5'000, '\0')));
        row("the largest datagram", printDatagram(QByteArray(largestDatagram - 10, 'x')));
        row("the largest datagram of random bytes", randomBytes(largestDatagram));
        row("quotes", printDatagram(QByteArray(8'000, '"')));
        row("blanks", printDatagram(QByteArray(8'000, ' ')));
        row("line feeds", printDatagram(QByteArray(8'000, '\n')));
        row("carets", printDatagram(QByteArray(8'000, '^')));
        row("backslashes", printDatagram(QByteArray(8'000, '\\')));
        row("rows of blanks", printDatagram(QByteArray(" \n").repeated(4'000)));
        row("names of variables without values", printDatagram("sv_hostname sv_maxping scr_motd sv_maprotation"));
        row("values without an end", printDatagram("sv_hostname \"a\nsv_maprotation \"b\nscr_motd \"c"));
        row("numbers beyond all bounds",
            printDatagram(QByteArray("sv_maxping sv_maxrate sv_maxclients scr_killcam scr_allow_bar \"") +
                          QByteArray(2'000, '9') + "\"\n"));
    }

    void theProgramSurvivesEveryReply()
    {
        QFETCH(const QList<QByteArray>, reply);
        Victim victim(desertedGame(u"hob"_s));
        victim.put(3, u"Ann"_s);
        victim.openHob();
        victim.connect();
        // A list that is asked for by hand is tried again with each box, until the person has had enough.
        int boxes = 0;
        victim.program.prompts.whileOpen = [&] {
            if (++boxes % 3 == 0 && victim.isConnected())
                victim.connect();
        };
        const QStringList before = fieldTexts();
        victim.server.liar = [&](const QByteArray &) { return reply; };
        victim.populateAll();
        QVERIFY(boxes > 0);
        QVERIFY(!victim.program.progress()->isVisible());

        const QString sent = inOneLine(gathered(reply));
        const QStringList messages = victim.program.rows(u"lstmessages"_s);
        for (const QString &text : fieldTexts())
            QVERIFY2(before.contains(text) || messages.contains(text) || sent.contains(inOneLine(text)),
                     qPrintable(text));

        victim.server.liar = nullptr;
        victim.program.prompts.whileOpen = nullptr;
        victim.program.prompts.takeBoxes();
        if (!victim.isConnected())
            victim.connect();
        victim.populateAll();
        QCOMPARE(victim.names(), QStringList{u"Ann"_s});
        QCOMPARE(victim.program.text(u"txtservername"_s), victim.server.game.dvars().value(u"sv_hostname"_s));
        victim.server.commands.clear();
        QMetaObject::invokeMethod(victim.program.find<QTimer>(u"tmrplayer"_s), "timeout");
        QVERIFY2(!victim.server.commands.isEmpty(), "the refresh is held off");
    }

    void nothingIsShownOfDatagramsWithoutText()
    {
        Victim victim(desertedGame(u"hob"_s));
        victim.put(3, u"Ann"_s);
        victim.openHob();
        victim.connect();
        victim.program.find<QAbstractButton>(u"chkplyq"_s)->setChecked(false);
        victim.server.liar = [](const QByteArray &) { return QList<QByteArray>{{}, printDatagram({})}; };
        for (const QString &button : {u"cmdservpop"_s, u"cmdplypop"_s})
            victim.program.click(button);
        QCOMPARE(victim.program.text(u"txtservername"_s), QString());
        QCOMPARE(victim.program.prompts.takeBoxes(),
                 (QList<Box>{{u"No players"_s, u"No players on server"_s, BoxIcon::Information, BoxButtons::Ok}}));
        QCOMPARE(victim.names(), QStringList());
    }
};

WINDOW_TEST(BrokenRepliesTest)
#include "tst_broken_replies.moc"
