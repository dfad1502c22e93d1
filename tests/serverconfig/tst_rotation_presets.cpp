// SPDX-License-Identifier: MIT
#include "serverconfig/rotation_presets.h"
#include "test_class.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

struct Folder {
    [[nodiscard]] QString path() const { return folder.filePath(u"molvark-rotations.json"_s); }
    [[nodiscard]] QByteArray bytes() const
    {
        QFile read(path());
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray("none");
    }
    void write(const QByteArray &bytes) const
    {
        QFile written(path());
        QVERIFY(written.open(QIODevice::WriteOnly) && written.write(bytes) == bytes.size());
    }

    QTemporaryDir folder;
    PresetFile file{path()};
};

} // namespace

class RotationPresetsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void presetsAreKeptUnderTheirNames()
    {
        const Folder it;
        QCOMPARE(it.file.contents().presets, {});
        QCOMPARE(it.file.put({u"War \u00e4"_s, u"map a"_s}), QString());
        QCOMPARE(it.file.put({u"Peace"_s, u"map \"b"_s}), QString());
        const PresetList list = PresetFile(it.path()).contents();
        QCOMPARE(list.fault, QString());
        QCOMPARE(list.presets, (QList<RotationPreset>{{u"War \u00e4"_s, u"map a"_s}, {u"Peace"_s, u"map \"b"_s}}));
    }

    void aNameStandsOnlyOnce()
    {
        const Folder it;
        QCOMPARE(it.file.put({u"war"_s, u"map a"_s}), QString());
        QCOMPARE(it.file.put({u"peace"_s, u"map b"_s}), QString());
        QCOMPARE(it.file.put({u"WAR"_s, u"map c"_s}), QString());
        QCOMPARE(it.file.contents().presets, (QList<RotationPreset>{{u"WAR"_s, u"map c"_s}, {u"peace"_s, u"map b"_s}}));
        QCOMPARE(it.file.remove(u"War"_s), QString());
        QCOMPARE(it.file.contents().presets, (QList<RotationPreset>{{u"peace"_s, u"map b"_s}}));
    }

    void aFileOfAnotherKindIsNeverReplaced_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char *name, const QByteArray &bytes, const QString &fault) {
            QTest::newRow(name) << bytes << fault;
        };
        row("cut off", "{\n\"presets\": [\n", u"line 3: "_s);
        row("no JSON", "[options]\r\nsavercon=0\r\n", u"line 1: "_s);
        row("another list", "[1,2]", u"it has no list \"presets\""_s);
        row("another object", R"({"words":[]})", u"it has no list \"presets\""_s);
        row("no rotation", R"({"presets":[{"name":"a","rotation":"map x"},{"name":"b"}]})",
            u"preset 2 has no name or no rotation"_s);
        row("no name", R"({"presets":[{"name":" ","rotation":"map x"}]})", u"preset 1 has no name or no rotation"_s);
        row("no preset", R"({"presets":[7]})", u"preset 1 has no name or no rotation"_s);
        row("a name twice", R"({"presets":[{"name":"a","rotation":""},{"name":"A","rotation":""}]})",
            u"two presets are called A"_s);
    }

    void aFileOfAnotherKindIsNeverReplaced()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, fault);
        const Folder it;
        it.write(bytes);
        QVERIFY2(it.file.contents().fault.startsWith(fault), qPrintable(it.file.contents().fault));
        QCOMPARE(it.file.contents().presets, {});
        QVERIFY(it.file.put({u"new"_s, u"map x"_s}).startsWith(fault));
        QVERIFY(it.file.remove(u"a"_s).startsWith(fault));
        QCOMPARE(it.bytes(), bytes);
    }

    void whatCannotBeReadOrWrittenIsTold()
    {
        const Folder it;
        QVERIFY(QDir(it.folder.path()).mkdir(u"molvark-rotations.json"_s));
        QVERIFY(!it.file.contents().fault.isEmpty());
        QVERIFY(!it.file.put({u"new"_s, u"map x"_s}).isEmpty());
        const PresetFile nowhere(it.folder.filePath(u"no/such/folder.json"_s));
        QCOMPARE(nowhere.contents().fault, QString());
        QVERIFY(!nowhere.put({u"new"_s, u"map x"_s}).isEmpty());
    }

    void whatCouldNotBeReadAgainIsNotKept()
    {
        const Folder it;
        QVERIFY(!it.file.put({u"long"_s, QString(65'508, u'x')}).isEmpty());
        QCOMPARE(it.bytes(), QByteArray("none"));
        const QString longest(65'507, u'x');
        for (int number = 0; number < 15; ++number)
            QCOMPARE(it.file.put({QString::number(number), longest}), QString());
        QVERIFY(!it.file.put({u"too many"_s, longest}).isEmpty());
        QCOMPARE(it.file.contents().fault, QString());
        QCOMPARE(it.file.contents().presets.size(), 15);
    }

    void anEmptyFileHasNone()
    {
        const Folder it;
        it.write("\n");
        QCOMPARE(it.file.contents().fault, QString());
        QCOMPARE(it.file.put({u"new"_s, u"map x"_s}), QString());
        QCOMPARE(it.file.contents().presets.size(), 1);
    }
};

GUILESS_TEST(RotationPresetsTest)
#include "tst_rotation_presets.moc"
