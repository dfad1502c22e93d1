// SPDX-License-Identifier: MIT
#include "exchange_boxes.h"
#include "rotation_hands.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray two = R"({"presets":[{"name":"War","rotation":"gametype sd map mp_decoy"},)"
                       R"({"name":"Peace","rotation":"map mp_toujane"}]})";
const QString file = u"molvark-rotations.json"_s;

Box replaceBox(const QString &name)
{
    return {u"Replace preset"_s, u"There is a preset of this name already. Replace it?\r"_s + name, BoxIcon::Question,
            BoxButtons::YesNo};
}

/// The person opens the list of presets and chooses one.
void choosePreset(const RotationHands &it, int row)
{
    auto *presets = it.find<QComboBox>(u"comrotpreset"_s);
    presets->setFocus();
    presets->setCurrentIndex(-1);
    for (int step = 0; step <= row; ++step)
        QTest::keyClick(presets, Qt::Key_Down);
}

QByteArray fileOf(const RotationHands &it)
{
    return it.on.program.file(file);
}

} // namespace

/// The rotations that are kept under a name, in the window in which they are put together.
class RotationWindowPresetsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aRotationIsSavedUnderItsName()
    {
        RotationHands it;
        QVERIFY(!QFile::exists(file));
        it.setText(u"comrotpreset"_s, u" Match "_s);
        it.click(u"cmdrotsave"_s);
        QCOMPARE(it.label(u"lblrotdone"_s), u"Saved as Match"_s);
        QCOMPARE(it.entries(u"comrotpreset"_s), QStringList{u"Match"_s});
        it.read(u"map mp_burgundy"_s);
        it.setText(u"comrotpreset"_s, u"Other"_s);
        it.click(u"cmdrotsave"_s);
        choosePreset(it, 0);
        QCOMPARE(it.lines(), QStringList({u"1 sd mp_decoy"_s, u"2 sd mp_toujane"_s}));
        choosePreset(it, 1);
        QCOMPARE(it.lines(), QStringList{u"1 (as it is) mp_burgundy"_s});
        it.click(u"cmdrotundo"_s);
        QCOMPARE(it.lines().size(), 2);
    }

    void presetsOfAnEarlierRunAreThere()
    {
        RotationHands it(telling("map mp_brecourt"), two);
        QCOMPARE(it.entries(u"comrotpreset"_s), QStringList({u"War"_s, u"Peace"_s}));
        QCOMPARE(it.text(u"comrotpreset"_s), QString());
        QCOMPARE(it.lines(), QStringList{u"1 (as it is) mp_brecourt"_s});
        choosePreset(it, 0);
        QCOMPARE(it.lines(), QStringList{u"1 sd mp_decoy"_s});
        QCOMPARE(fileOf(it), two);
    }

    void aPresetThatIsTooLongIsRefused()
    {
        const QByteArray rotation = QByteArray("map mp_decoy ").repeated(6000);
        RotationHands it(telling("map mp_brecourt"),
                         R"({"presets":[{"name":"War","rotation":")" + rotation + R"("}]})");
        choosePreset(it, 0);
        QCOMPARE(it.on.program.prompts.takeBoxes(),
                 (QList<Box>{{u"Map rotation"_s, u"This text is too long for a map rotation."_s, BoxIcon::Exclamation,
                              BoxButtons::Ok}}));
        QCOMPARE(it.lines(), QStringList{u"1 (as it is) mp_brecourt"_s});
    }

    void withoutANameNothingIsSaved()
    {
        RotationHands it;
        it.click(u"cmdrotsave"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(),
                 (QList<Box>{{u"Map rotation"_s, u"Type a name for the preset first"_s, BoxIcon::Information,
                              BoxButtons::Ok}}));
        QVERIFY(!QFile::exists(file));
    }

    void aPresetIsReplacedOnlyAfterAYes()
    {
        RotationHands it(telling("map mp_brecourt"), two);
        it.setText(u"comrotpreset"_s, u"war"_s);
        it.on.program.prompts.answers = {Answer::No};
        it.click(u"cmdrotsave"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{replaceBox(u"War"_s)});
        QCOMPARE(fileOf(it), two);
        it.on.program.prompts.answers = {Answer::Yes};
        it.click(u"cmdrotsave"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{replaceBox(u"War"_s)});
        QVERIFY(fileOf(it).contains("mp_brecourt") && !fileOf(it).contains("mp_decoy"));
        QCOMPARE(it.entries(u"comrotpreset"_s), QStringList({u"war"_s, u"Peace"_s}));
    }

    void aPresetIsDeletedOnlyAfterAYes()
    {
        RotationHands it(telling("map mp_brecourt"), two);
        QVERIFY(!it.button(u"cmdrotdelete"_s)->isEnabled());
        it.setText(u"comrotpreset"_s, u"Peace"_s);
        it.on.program.prompts.answers = {Answer::No, Answer::Yes};
        it.click(u"cmdrotdelete"_s);
        QCOMPARE(fileOf(it), two);
        it.click(u"cmdrotdelete"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes().size(), 2);
        QCOMPARE(it.entries(u"comrotpreset"_s), QStringList{u"War"_s});
        QVERIFY(!fileOf(it).contains("Peace"));
        QVERIFY(!it.button(u"cmdrotdelete"_s)->isEnabled());
        QCOMPARE(it.lines(), QStringList{u"1 (as it is) mp_brecourt"_s});
    }

    void whatAnotherRunHasSavedMeanwhileStays()
    {
        RotationHands it;
        it.on.program.write(file, two);
        it.setText(u"comrotpreset"_s, u"Match"_s);
        it.click(u"cmdrotsave"_s);
        QCOMPARE(it.entries(u"comrotpreset"_s), QStringList({u"War"_s, u"Peace"_s, u"Match"_s}));
    }

    void aBrokenFileIsToldAndNeverReplaced()
    {
        const QByteArray broken = "{\"presets\":\n[{\"name\":\"War\"";
        RotationHands it(telling("map mp_brecourt"), broken);
        const QString path = QDir::currentPath() + u'/' + file;
        const auto isTold = [&] {
            const QList<Box> boxes = it.on.program.prompts.takeBoxes();
            return boxes.size() == 1 && boxes.constFirst().icon == BoxIcon::Exclamation &&
                   boxes.constFirst().text.startsWith(u"The presets cannot be used: line 2: "_s) &&
                   boxes.constFirst().text.endsWith(u"\rThe file is left as it is:\r"_s + path);
        };
        QVERIFY(isTold());
        QCOMPARE(it.lines(), QStringList{u"1 (as it is) mp_brecourt"_s});
        it.setText(u"comrotpreset"_s, u"Match"_s);
        it.click(u"cmdrotsave"_s);
        QVERIFY(isTold());
        QCOMPARE(fileOf(it), broken);
        it.on.program.write(file, two);
        it.click(u"cmdrotsave"_s);
        QCOMPARE(it.entries(u"comrotpreset"_s).size(), 3);
    }
};

WINDOW_TEST(RotationWindowPresetsTest)
#include "tst_rotation_window_presets.moc"
