// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(Answer)

class ClearQuestionsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void clearingThePaneIsAskedFor()
    {
        Program program;
        program.trigger(u"clearrcon"_s);
        QCOMPARE(program.prompts.takeBoxes(),
                 QList<Box>({{u"Clear"_s, u"Clear the RCON window?"_s, BoxIcon::Question, BoxButtons::YesNo}}));
    }

    void clearingTheMessagesIsAskedFor()
    {
        Program program;
        program.trigger(u"clearmessage"_s);
        QCOMPARE(program.prompts.takeBoxes(),
                 QList<Box>({{u"Clear"_s, u"Clear the message window?"_s, BoxIcon::Question, BoxButtons::YesNo}}));
    }

    void anyAnswerButNoClears_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<bool>("clears");
        QTest::newRow("yes") << Answer::Yes << true;
        QTest::newRow("no") << Answer::No << false;
        QTest::newRow("ok") << Answer::Ok << true;
        QTest::newRow("cancel") << Answer::Cancel << true;
    }

    void anyAnswerButNoClears()
    {
        QFETCH(Answer, answer);
        QFETCH(bool, clears);
        Program program;
        program.output.addrcon(u"reply\r\n"_s);
        program.output.addmessage(u"Connected"_s);

        program.prompts.answers = {answer};
        program.trigger(u"clearrcon"_s);
        QCOMPARE(program.pane(), clears ? QString() : u"reply\r\n"_s);
        QCOMPARE(program.messages(), QStringList(u"Connected"_s));

        program.prompts.answers = {answer};
        program.trigger(u"clearmessage"_s);
        QCOMPARE(program.messages(), clears ? QStringList() : QStringList(u"Connected"_s));
        QCOMPARE(program.pane(), clears ? QString() : u"reply\r\n"_s);
        QCOMPARE(program.prompts.takeBoxes().size(), 2);
    }

    void whatComesWhileTheQuestionIsOpenIsClearedToo()
    {
        Program program;
        program.prompts.whileOpen = [&] { program.output.addrcon(u"late reply\r\n"_s); };
        program.trigger(u"clearrcon"_s);
        QCOMPARE(program.pane(), QString());
        QCOMPARE(program.prompts.takeBoxes().size(), 1);
    }

    void savingDoesNotClear()
    {
        Program program;
        program.output.addrcon(u"reply\r\n"_s);
        program.output.addmessage(u"Connected"_s);
        program.output.savercon_Click(true);
        program.output.savemessages_Click(true);
        QCOMPARE(program.pane(), u"reply\r\n"_s);
        QCOMPARE(program.messages(), QStringList(u"Connected"_s));
    }
};

WINDOW_TEST(ClearQuestionsTest)
#include "tst_clear_questions.moc"
