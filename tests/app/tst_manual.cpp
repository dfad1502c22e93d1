// SPDX-License-Identifier: MIT
#include "app/manual.h"
#include "scripted_prompts.h"
#include "window_test.h"

#include <QDesktopServices>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

#ifdef MOLVARK_MANUAL_PAGE
const QString page = QStringLiteral(MOLVARK_MANUAL_PAGE);
#else
const QString page;
#endif

/// A folder in which files can be made.
class Disk final {
public:
    [[nodiscard]] QString path(const QString &name) const { return folder.path() + u'/' + name; }
    /// An empty file, with the folders above it.
    [[nodiscard]] bool put(const QString &name) const
    {
        const QString file = path(name);
        return QDir().mkpath(QFileInfo(file).path()) && QFile(file).open(QFile::WriteOnly);
    }

private:
    QTemporaryDir folder;
};

} // namespace

/// The manual is found and opened.
class ManualTest final : public QObject {
    Q_OBJECT

public slots:
    void takeAddress(const QUrl &url) { opened.append(url); }

private slots:
    void init()
    {
        failOnWarnings();
        opened.clear();
        QDesktopServices::setUrlHandler(u"file"_s, this, "takeAddress");
    }
    void cleanup() { QDesktopServices::unsetUrlHandler(u"file"_s); }

    void itIsOpenedWhereItLies_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("manual");
        QTest::newRow("unpacked") << u"Molvark 1.0 #2 (64%25)"_s << u"Molvark 1.0 #2 (64%25)/manual.html"_s;
        QTest::newRow("installed") << u"usr/bin"_s << u"usr/share/doc/molvark/manual.html"_s;
        QTest::newRow("built") << u"build/dev/src/app"_s << u"build/dev/docs/manual.html"_s;
    }

    void itIsOpenedWhereItLies()
    {
        QFETCH(QString, program);
        QFETCH(QString, manual);
        const Disk disk;
        QVERIFY(disk.put(program + u"/molvark"_s) && disk.put(manual));
        ScriptedPrompts prompts;
        showmanual(prompts, disk.path(program));
        QCOMPARE(opened, QList<QUrl>{QUrl::fromLocalFile(disk.path(manual))});
        QCOMPARE(prompts.takeBoxes(), QList<Box>());
    }

    void theOneBesideTheProgramIsTakenFirst()
    {
        const Disk disk;
        QVERIFY(disk.put(u"bin/manual.html"_s) && disk.put(u"share/doc/molvark/manual.html"_s));
        QCOMPARE(findManual(manualPlaces(disk.path(u"bin"_s))), disk.path(u"bin/manual.html"_s));
    }

    void aFolderOfThatNameIsNone()
    {
        const Disk disk;
        QVERIFY(disk.put(u"bin/manual.html/x"_s));
        QCOMPARE(findManual(manualPlaces(disk.path(u"bin"_s))), QString());
    }

    void aMissingOneIsToldWithItsPlaces()
    {
        const Disk disk;
        QVERIFY(disk.put(u"usr/bin/molvark"_s));
        ScriptedPrompts prompts;
        showmanual(prompts, disk.path(u"usr/bin"_s));
        QCOMPARE(opened, QList<QUrl>());
        const QString text = u"The manual is not there. It should be one of these files:\r"_s +
                             QDir::toNativeSeparators(disk.path(u"usr/bin/manual.html"_s)) + u'\r' +
                             QDir::toNativeSeparators(disk.path(u"usr/share/doc/molvark/manual.html"_s));
        QCOMPARE(prompts.takeBoxes(), QList<Box>{(Box{u"Manual"_s, text, BoxIcon::Information, BoxButtons::Ok})});
    }

    void thePageThatIsBuiltIsWhole()
    {
        if (page.isEmpty())
            QSKIP("built without the manual");
        QFile file(page);
        QVERIFY2(file.open(QFile::ReadOnly), qPrintable(page));
        const QString text = QString::fromUtf8(file.readAll());
        QVERIFY(text.contains(u"<title>Molvark - Manual</title>"));
        QVERIFY(text.contains(u"<table>"));
        static const QRegularExpression sources(u"(?:src|rel=\"stylesheet\" href)=\"([^\"]+)\""_s);
        int files = 0;
        for (const QRegularExpressionMatch &match : sources.globalMatch(text)) {
            QVERIFY2(QFile::exists(QFileInfo(page).path() + u'/' + match.captured(1)), qPrintable(match.captured(1)));
            ++files;
        }
        QVERIFY2(files > 10, "the pictures and the style sheet");
        static const QRegularExpression links(u"href=\"#([^\"]+)\""_s);
        int targets = 0;
        for (const QRegularExpressionMatch &match : links.globalMatch(text)) {
            QVERIFY2(text.contains(u"id=\"%1\""_s.arg(match.captured(1))), qPrintable(match.captured(1)));
            ++targets;
        }
        QVERIFY(targets > 20);
    }

private:
    QList<QUrl> opened;
};

WINDOW_TEST(ManualTest)
#include "tst_manual.moc"
