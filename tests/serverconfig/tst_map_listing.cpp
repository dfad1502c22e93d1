// SPDX-License-Identifier: MIT
#include "serverconfig/map_listing.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString heading = u"Directory of maps/mp d3dbsp\n---------------\n\n"_s;

} // namespace

class MapListingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theNamesStandBehindTheHeadingBeforeTheExtension_data()
    {
        QTest::addColumn<QString>("listing");
        QTest::addColumn<QStringList>("names");
        const QStringList both{u"mp_a"_s, u"mp_b"_s};
        QTest::newRow("two maps") << heading + u"mp_a.d3dbsp\nmp_b.d3dbsp\n"_s << both;
        QTest::newRow("another letter case") << heading + u"mp_a.d3dbsp\nmp_b.D3DBSP\n"_s << both;
        QTest::newRow("mixed letters") << heading + u"mp_a.D3dBsp\nmp_b.d3DbSP\n"_s << both;
        QTest::newRow("no last line feed") << heading + u"mp_a.d3dbsp\nmp_b.d3dbsp"_s << both;
        QTest::newRow("capitals of a name stay") << heading + u"MP_Harbor.d3dbsp\n"_s << QStringList{u"MP_Harbor"_s};
        QTest::newRow("blanks of a name stay") << heading + u" mp_a b.d3dbsp\n"_s << QStringList{u" mp_a b"_s};
        QTest::newRow("lines without the extension")
            << heading + u"readme.txt\nmp_a.d3dbsp\n\nmp_x\nmp_b.d3dbsp\n2 files\n"_s << both;
        QTest::newRow("something behind the extension") << heading + u"mp_a.d3dbsp 1 KB\nmp_b.d3dbsp~\n"_s << both;
        QTest::newRow("the extension twice in a line") << heading + u"mp_a.d3dbsp.d3dbsp\nmp_b.d3dbsp\n"_s << both;
        QTest::newRow("the extension alone") << heading + u".d3dbsp\nmp_a.d3dbsp\n"_s << QStringList{u""_s, u"mp_a"_s};
        QTest::newRow("maps in the heading")
            << u"mp_x.d3dbsp\nmp_y.d3dbsp\nmp_z.d3dbsp\nmp_a.d3dbsp\nmp_b.d3dbsp\n"_s << both;
        QTest::newRow("no map") << heading << QStringList();
        QTest::newRow("no map, but lines") << heading + u"a.txt\nb.d3dbs\n"_s << QStringList();
        QTest::newRow("three line feeds") << u"\n\n\n"_s << QStringList();
    }

    void theNamesStandBehindTheHeadingBeforeTheExtension()
    {
        QFETCH(QString, listing);
        QFETCH(QStringList, names);
        const std::optional<QStringList> found = mapNames(listing);
        QVERIFY(found);
        QCOMPARE(*found, names);
    }

    void withFewerThanThreeLineFeedsThereIsNoListing_data()
    {
        QTest::addColumn<QString>("listing");
        QTest::newRow("nothing") << u""_s;
        QTest::newRow("a line that is not ended") << u"mp_a.d3dbsp"_s;
        QTest::newRow("one") << u"mp_a.d3dbsp\n"_s;
        QTest::newRow("two") << u"\n\nmp_a.d3dbsp"_s;
        QTest::newRow("carriage returns") << u"\r\r\rmp_a.d3dbsp\r"_s;
    }

    void withFewerThanThreeLineFeedsThereIsNoListing()
    {
        QFETCH(QString, listing);
        QVERIFY(!mapNames(listing));
    }

    // Wherever a listing is cut off, the scan ends, with the maps whose extension has come whole.
    void everyBeginningOfAListingGivesTheMapsThatItHoldsWhole()
    {
        const QList<std::pair<QString, QString>> lines{{u"mp_a.d3dbsp"_s, u"mp_a"_s},
                                                       {u"mp_long_name.D3DBSP"_s, u"mp_long_name"_s},
                                                       {u"no map"_s, {}},
                                                       {u"mp_b.d3dbsp"_s, u"mp_b"_s}};
        QString listing = heading;
        QList<std::pair<qsizetype, QString>> ends; // of each extension
        for (const auto &[line, name] : lines) {
            listing += line + u'\n';
            if (!name.isEmpty())
                ends.append({listing.size() - 1, name});
        }

        for (qsizetype length = 0; length <= listing.size(); ++length) {
            const std::optional<QStringList> found = mapNames(QStringView(listing).first(length));
            QCOMPARE(found.has_value(), length >= heading.size());
            QStringList wanted;
            for (const auto &[end, name] : ends) {
                if (end <= length)
                    wanted.append(name);
            }
            QCOMPARE(found.value_or(QStringList()), wanted);
        }
    }

    void aNameLongerThanAnyPathIsLeftOut()
    {
        const QString longest(4096, u'x');
        QCOMPARE(mapNames(heading + longest + u".d3dbsp\nx"_s + longest + u".d3dbsp\nmp_a.d3dbsp\n"_s),
                 QStringList({longest, u"mp_a"_s}));
    }

    void aVeryLongListingIsReadInOnePass()
    {
        QString listing = heading;
        QStringList wanted;
        for (int map = 0; map < 20'000; ++map) {
            wanted.append(u"mp_"_s + QString::number(map));
            listing += wanted.constLast() + u".d3dbsp\n"_s;
        }
        QCOMPARE(mapNames(listing).value_or(QStringList()), wanted);
    }
};

GUILESS_TEST(MapListingTest)
#include "tst_map_listing.moc"
