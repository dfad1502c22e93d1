// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "scripted_prompts.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

/// The boxes whose wording several rooms share.
class PromptsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aRefusalHasTheExclamationIconAndOk()
    {
        ScriptedPrompts prompts;
        prompts.refuse(u"Please connect to a server first!"_s, u"Not connected"_s);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({{u"Not connected"_s, u"Please connect to a server first!"_s,
                                                   BoxIcon::Exclamation, BoxButtons::Ok}}));
    }

    void aNoticeHasTheInformationIconAndOk()
    {
        ScriptedPrompts prompts;
        prompts.inform(u"Value between 1 and 10 only please"_s, u"Invalid Entry"_s);
        QCOMPARE(prompts.takeBoxes(), QList<Box>({{u"Invalid Entry"_s, u"Value between 1 and 10 only please"_s,
                                                   BoxIcon::Information, BoxButtons::Ok}}));
    }

    void aFailedWriteToTheSettingsNamesWhatAndWhy()
    {
        ScriptedPrompts prompts;
        prompts.showWriteFailure(u"server list to INI file (Server)"_s, {13, u"Permission denied"_s});
        QCOMPARE(prompts.takeBoxes(), QList<Box>({{u"INI Write Fail"_s,
                                                   u"Failed to write new server list to INI file (Server)\r"
                                                   "Error code 13 Descr: Permission denied"_s,
                                                   BoxIcon::Exclamation, BoxButtons::Ok}}));
    }

    void anUntrappedFaultIsShownByNumberAndDescription()
    {
        ScriptedPrompts prompts;
        prompts.showFault(Fault(Fault::TypeMismatch));
        QCOMPARE(prompts.takeBoxes(), QList<Box>({{u"Molvark"_s, u"Error code 13 Descr: Type mismatch"_s,
                                                   BoxIcon::Exclamation, BoxButtons::Ok}}));
    }

    void aBoxClosedWithoutAChoiceGivesItsNegativeAnswer()
    {
        QCOMPARE(answerOfClosing(BoxButtons::Ok), Answer::Ok);
        QCOMPARE(answerOfClosing(BoxButtons::OkCancel), Answer::Cancel);
        QCOMPARE(answerOfClosing(BoxButtons::YesNo), Answer::No);
    }
};

GUILESS_TEST(PromptsTest)
#include "tst_prompts.moc"
