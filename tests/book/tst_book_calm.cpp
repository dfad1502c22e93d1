// SPDX-License-Identifier: MIT
#include "book/sql_book_store.h"
#include "book_hands.h"
#include "evening.h"
#include "ordinary_user.h"
#include "other_eye.h"
#include "small_disk.h"

#include <QCheckBox>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

const bool hasDisksOfItsOwn = takeMountsOfOnesOwn();
const QString bookFile = u"molvark-players.db"_s;

/// Asks again and again whether the window's thread answers.
class Pulse final {
public:
    Pulse()
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { beat(); });
        timer.start(10);
        sinceLast.start();
    }

    /// Milliseconds.
    [[nodiscard]] qint64 longestSilence()
    {
        beat();
        return longest;
    }

private:
    void beat() { longest = std::max(longest, sinceLast.restart()); }

    QTimer timer;
    QElapsedTimer sinceLast;
    qint64 longest = 0;
};

/// What is wrong with the book.
enum class Trouble { Locked, FullDisk, ReadOnly, Broken };

/// The window of the player book, with a book about which something is wrong from the moment that it is begun.
struct Troubled final : BookHands {
    Troubled() : BookHands(QByteArray{}) {}
    ~Troubled() { user.reset(); }

    /// False when this system does not let a test make such trouble.
    [[nodiscard]] bool begin(Trouble trouble)
    {
        if (trouble == Trouble::FullDisk) {
            if (!hasDisksOfItsOwn)
                return false;
            disk.emplace("2m");
            return disk->isThere();
        }
        {
            SqlBookStore store(bookFile);
            store.feed(::populate(program.clock.now().toSecsSinceEpoch(), {bob, alice}));
        }
        if (trouble == Trouble::Locked) {
            lock.emplace(bookFile);
            lock->ask("BEGIN IMMEDIATE");
        } else if (trouble == Trouble::Broken) {
            return writeBytes(bookFile, QByteArray(3'000'000, 'x'));
        } else {
            user.emplace(QDir::currentPath());
            return user->isOrdinary() && QFile::setPermissions(bookFile, QFile::ReadOwner);
        }
        return true;
    }

    std::optional<SmallDisk> disk;
    std::optional<OtherEye> lock;
    std::optional<OrdinaryUser> user;
};

} // namespace

Q_DECLARE_METATYPE(Trouble)

/// Whatever is wrong with the book, the window goes on.
class BookCalmTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theWindowAnswersWhateverIsWrong_data()
    {
        QTest::addColumn<Trouble>("trouble");
        QTest::addColumn<QString>("words");
        QTest::newRow("locked") << Trouble::Locked << u"is locked by another program"_s;
        QTest::newRow("full") << Trouble::FullDisk << u"the disk is full"_s;
        QTest::newRow("read-only") << Trouble::ReadOnly << u"is read-only"_s;
        QTest::newRow("broken") << Trouble::Broken << u"was broken"_s;
    }

    // A lock is waited for five seconds before it is told, and another program holds it to the end: had the window's
    // thread a share in that, it would not answer for as long. A slow machine takes much less.
    void theWindowAnswersWhateverIsWrong()
    {
        QFETCH(Trouble, trouble);
        QFETCH(QString, words);
        constexpr qint64 longest = 2500;
        Troubled it;
        it.open();
        if (!it.begin(trouble))
            QSKIP("this system does not let a test make such trouble");
        it.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        QElapsedTimer time;
        time.start();
        Pulse pulse;
        it.find<QCheckBox>("chkbook")->click();
        if (it.disk) {
            QTRY_COMPARE(it.state().section(u',', 0, 1), u"0 players, 0 sightings"_s);
            QVERIFY(it.disk->fill());
        }
        const auto isTold = [&] { return it.status("lblbook").contains(words); };
        int rounds = 0;
        do {
            it.populate();
            QCOMPARE(it.column(3), QStringList({u"Ann"_s, u"Ben"_s}));
            it.type("txtbooksearch", u"a"_s);
            it.type("txtbooksearch", {});
            for (const int page : {1, 2, 0})
                it.showPage(page);
            it.select(1);
            it.server.answer("clientkick 5", {"\n"});
            it.program.click(u"cmdplykick"_s);
            it.pass(60);
        } while (!QTest::qWaitFor(isTold, 50) && ++rounds < 1000 && !time.hasExpired(60'000));
        QVERIFY2(it.status("lblbook").contains(words), qPrintable(it.status("lblbook")));
        QVERIFY(it.status("lblbook").contains(u"molvark-players"));
        QCOMPARE(it.state(), it.status("lblbook"));
        it.populate();
        QVERIFY(it.program.prompts.takeBoxes().isEmpty());
        it.find<QCheckBox>("chkbook")->click();
        (void)it.program.prompts.takeBoxes(); // a full disk has no room for the settings either
        QVERIFY2(pulse.longestSilence() < longest, qPrintable(QString::number(pulse.longestSilence())));
        QCOMPARE(QDir::current().entryList({u"*broken*"_s}).isEmpty(), trouble != Trouble::Broken);
    }
};

WINDOW_TEST(BookCalmTest)
#include "tst_book_calm.moc"
