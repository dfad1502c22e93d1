// SPDX-License-Identifier: MIT
#include "book.h"

#include "book_fault.h"
#include "book_store.h"

#include <QDateTime>
#include <QDir>
#include <QThread>

#include <atomic>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto longestEnd = 3s; // that the program waits for the book when it ends

const QString bookName = u"molvark-players.db"_s;
std::atomic<int> editions = 0;

QString putAsideLine(const QString &aside)
{
    return u"molvark-players.db was broken, or no player book: it is kept as %1, and a new one was begun."_s.arg(aside);
}

} // namespace

/// Has the book open in its thread.
class BookWorker final : public QObject {
public:
    using Clock = std::chrono::steady_clock;
    using Reply = std::function<void()>;
    using Job = std::function<Reply(BookStore &)>;
    using Tell = std::function<void(const QString &trouble, int edition, const Reply &reply)>;

    void open(const QString &path_, int days_)
    {
        path = path_;
        days = days_;
        notice.clear();
        trouble.clear();
        (void)attempt([](BookStore &) -> Reply { return {}; });
    }

    /// Does it; `tell` gets what is wrong with the book since then, its edition, which is 0 when it is not open, and
    /// what is to be done afterwards, which is nothing when it has failed.
    void work(const Job &job, const Tell &tell)
    {
        const Reply reply = isLate() ? Reply() : attempt(job);
        tell(line(), edition, reply);
        // Behind what has been asked for meanwhile.
        QMetaObject::invokeMethod(
            this, [this] { moveLog(); }, Qt::QueuedConnection);
    }

    void close()
    {
        store.reset();
        edition = 0;
    }

    [[nodiscard]] QString line() const { return trouble.isEmpty() ? notice : trouble; }

    /// From another thread: what is not done by then is given up.
    void hurry(Clock::time_point end) { latest = end.time_since_epoch().count(); }

private:
    void moveLog()
    {
        try {
            if (store && !isLate())
                store->moveLog();
        } catch (const BookFault &) { // whoever writes next meets it
        }
    }

    [[nodiscard]] bool isLate() const { return Clock::now().time_since_epoch().count() > latest; }

    Reply attempt(const Job &job)
    {
        try {
            return attemptOnce(job);
        } catch (const BookFault &fault) {
            if (fault.kind() != BookFault::Broken || !store)
                return fail(fault);
        }
        // It broke while it was in use. What is there is looked at when it is opened, and put aside if it is broken.
        try {
            store.reset();
            openStore(true);
            return attemptOnce(job);
        } catch (const BookFault &fault) {
            return fail(fault);
        }
    }

    Reply attemptOnce(const Job &job)
    {
        if (store && !store->isThere()) {
            store->takeLeave();
            close();
        }
        const bool isNew = !store;
        if (isNew)
            openStore(false);
        const quint64 before = isNew ? 0 : store->commits();
        Reply reply = job(*store);
        if (store->commits() != before)
            trouble.clear();
        return reply;
    }

    void openStore(bool doubt)
    {
        const qint64 oldest = QDateTime::currentSecsSinceEpoch() - days * secondsOfDay;
        store = openBookStore(
            path, oldest, [this](qint64 waited) { return isPatient(waited); }, doubt);
        const bool isAnew = !store->putAside().isEmpty();
        if (isAnew)
            notice = putAsideLine(store->putAside());
        if (isAnew || edition == 0)
            edition = ++editions;
        store->setEdition(edition);
    }

    // Who waits behind a lock is not to wait for it again and again.
    [[nodiscard]] bool isPatient(qint64 waited) const
    {
        return !isLate() && (trouble.isEmpty() ? BookStore::fiveSeconds(waited) : waited < 250);
    }

    Reply fail(const BookFault &fault)
    {
        trouble = fault.line();
        if (!store)
            edition = 0; // nobody knows what will be there
        return {};
    }

    std::unique_ptr<BookStore> store;
    QString path;
    int days = 0;
    QString trouble; ///< that lasts until something has been written again
    QString notice;  ///< that lasts until it is closed
    int edition = 0; ///< of what is open
    std::atomic<Clock::rep> latest = Clock::time_point::max().time_since_epoch().count();
};

Book::Book(QObject *parent) : QObject(parent) {}

Book::~Book()
{
    end();
}

void Book::end()
{
    if (worker)
        worker->hurry(BookWorker::Clock::now() + longestEnd);
    opened = false;
    endThread();
}

void Book::open(int days)
{
    if (!thread) {
        thread = std::make_unique<QThread>();
        thread->setObjectName(u"book"_s);
        worker = std::make_unique<BookWorker>();
        worker->moveToThread(thread.get());
        thread->start();
    }
    opened = true;
    ++openings;
    known = 0;
    const QString path = QDir::current().absoluteFilePath(bookName);
    QMetaObject::invokeMethod(worker.get(), [worker = worker.get(), path, days] {
        worker->close();
        worker->open(path, days);
    });
    enqueue([](BookStore &) -> Reply { return {}; });
    setTrouble({});
    emit statechanged();
}

void Book::close()
{
    if (!opened)
        return;
    opened = false;
    ++openings;
    known = 0;
    // Once it is opened again there may be much to wait for before the thread could end.
    QMetaObject::invokeMethod(worker.get(), [this, worker = worker.get(), closing = openings] {
        worker->close();
        QMetaObject::invokeMethod(this, [this, closing] {
            if (closing == openings)
                endThread();
        });
    });
    setTrouble({});
    emit statechanged();
}

void Book::enqueue(const Job &job, const Reply &failed)
{
    if (!opened)
        return;
    QMetaObject::invokeMethod(worker.get(), [this, worker = worker.get(), job, failed, opening = openings] {
        worker->work(job, [this, opening, failed](const QString &trouble, int edition, const Reply &reply) {
            QMetaObject::invokeMethod(this, [this, opening, failed, trouble, edition, reply] {
                if (opening != openings)
                    return;
                const bool isAnew = known != 0 && edition != 0 && edition != known;
                if (edition != 0)
                    known = edition;
                setTrouble(trouble);
                if (isAnew)
                    emit begunanew();
                if (reply)
                    reply();
                else if (failed)
                    failed();
            });
        });
    });
}

void Book::requireEdition(const BookStore &store, int edition)
{
    if (store.edition() != edition)
        throw bookFault(BookFault::Exchanged, bookName);
}

void Book::setTrouble(const QString &trouble)
{
    if (line == trouble)
        return;
    line = trouble;
    emit statechanged();
}

void Book::endThread()
{
    if (!thread)
        return;
    // Behind everything that was asked for.
    QMetaObject::invokeMethod(worker.get(), [worker = worker.get(), thread = thread.get()] {
        worker->close();
        thread->quit();
    });
    thread->wait();
    worker.reset();
    thread.reset();
}
