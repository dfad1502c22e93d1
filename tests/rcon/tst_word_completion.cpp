// SPDX-License-Identifier: MIT
#include "rcon/word_completion.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

using Kind = Completion::Kind;
using Wanted = TypedWord::Wanted;

const QList<Completion> words{{u"map"_s, Kind::Command},          {u"map_rotate"_s, Kind::Command},
                              {u"status"_s, Kind::Command},       {u"mapname"_s, Kind::Variable},
                              {u"sv_hostname"_s, Kind::Variable}, {u"sv_mapRotation"_s, Kind::Variable}};

/// The texts that `line` can be completed to when the cursor stands at its end.
QStringList offered(const QString &line, const QStringList &history = {})
{
    QStringList texts;
    for (const Completion &each : completions(typedWord(line, line.size()), line, words, history))
        texts.append(each.text);
    return texts;
}

} // namespace

class WordCompletionTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theWordAtTheCursorIsFound_data()
    {
        QTest::addColumn<QString>("line"); // with a bar for the cursor
        QTest::addColumn<int>("wanted");
        QTest::addColumn<QString>("part"); // of the line, that is replaced
        QTest::addColumn<QString>("typed");
        const auto row = [](const char *line, Wanted wanted, const char *part, const char *typed) {
            QTest::newRow(line) << QString::fromLatin1(line) << static_cast<int>(wanted) << QString::fromLatin1(part)
                                << QString::fromLatin1(typed);
        };
        row("|", Wanted::CommandOrVariable, "", "");
        row("sta|", Wanted::CommandOrVariable, "sta", "sta");
        row("  sta|", Wanted::CommandOrVariable, "sta", "sta");
        row("st|atus", Wanted::CommandOrVariable, "status", "st");
        row("sv_h| x", Wanted::CommandOrVariable, "sv_h", "sv_h");
        row("set sv_h|", Wanted::Variable, "sv_h", "sv_h");
        row("SETA  sv_h|", Wanted::Variable, "sv_h", "sv_h");
        row("reset |", Wanted::Variable, "", "");
        row("toggle g_|dead", Wanted::Variable, "g_dead", "g_");
        row("set sv_hostname x|", Wanted::Line, "set sv_hostname x", "set sv_hostname x");
        row("say hello|", Wanted::Line, "say hello", "say hello");
        row("sv_hostname\"x|", Wanted::Line, "sv_hostname\"x", "sv_hostname\"x");
    }

    void theWordAtTheCursorIsFound()
    {
        QFETCH(QString, line);
        QFETCH(int, wanted);
        const qsizetype cursor = line.indexOf(u'|');
        line.remove(cursor, 1);
        const TypedWord word = typedWord(line, cursor);
        QCOMPARE(static_cast<int>(word.wanted), wanted);
        QTEST(line.sliced(word.begin, word.end - word.begin), "part");
        QTEST(word.typed, "typed");
    }

    void beginningsComeBeforeTheRestAndCommandsBeforeVariables()
    {
        QCOMPARE(offered(u"map"_s), QStringList({u"map"_s, u"map_rotate"_s, u"mapname"_s, u"sv_mapRotation"_s}));
        QCOMPARE(offered(u"MAP_"_s), QStringList{u"map_rotate"_s});
        QCOMPARE(offered(u"hostname"_s), QStringList{u"sv_hostname"_s});
        QCOMPARE(offered(u"nothing"_s), QStringList());
    }

    void behindTheSettersStandVariablesAlone()
    {
        QCOMPARE(offered(u"set map"_s), QStringList({u"mapname"_s, u"sv_mapRotation"_s}));
        QCOMPARE(offered(u"set sta"_s), QStringList());
        QCOMPARE(offered(u"say map"_s), QStringList());
    }

    void linesOfTheHistoryComeTheNewestFirst()
    {
        const QStringList history{u"map mp_decoy"_s, u"say map"_s, u"map mp_toujane"_s, u"map mp_decoy"_s, u"map"_s};
        QCOMPARE(offered(u"map"_s, history), QStringList({u"map"_s, u"map_rotate"_s, u"mapname"_s, u"map mp_decoy"_s,
                                                          u"map mp_toujane"_s, u"sv_mapRotation"_s}));
        QCOMPARE(offered(u"map mp_t"_s, history), QStringList{u"map mp_toujane"_s});
        QCOMPARE(offered(u"say map"_s, history), QStringList()); // it stands there already
        QCOMPARE(offered({}, {u"say hello"_s}).constFirst(), u"say hello"_s);
    }

    void noMoreThanTwentyLinesAreOffered()
    {
        QStringList history;
        for (int number = 0; number < 100; ++number)
            history.append(u"say %1"_s.arg(number));
        QCOMPARE(offered(u"say "_s, history).size(), 20);
        QCOMPARE(offered(u"say "_s, history).constFirst(), u"say 99"_s);
    }

    void wordsAreSortedAndStandOnce()
    {
        QList<Completion> all{{u"sv_b"_s, Kind::Variable},
                              {u"Sv_A"_s, Kind::Variable},
                              {u"zz"_s, Kind::Command},
                              {u"sv_a"_s, Kind::Variable},
                              {u"sv_a"_s, Kind::Command}};
        sortWords(all);
        const QList<Completion> expected{{u"sv_a"_s, Kind::Command},
                                         {u"zz"_s, Kind::Command},
                                         {u"Sv_A"_s, Kind::Variable},
                                         {u"sv_b"_s, Kind::Variable}};
        QCOMPARE(all, expected);
    }
};

GUILESS_TEST(WordCompletionTest)
#include "tst_word_completion.moc"
