// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

class BookStore;
class BookWorker;
class QThread;

/// The player book as the window has it: what is asked of it is done in a thread of its own, one after the other, so
/// that a slow disk or a lock never holds the window up. Switched off there is neither thread nor database.
class Book final : public QObject {
    Q_OBJECT

public:
    explicit Book(QObject *parent = nullptr);
    ~Book() override; ///< ends it

    /// Opens the book in the current directory, keeping sightings of so many days.
    void open(int days);
    /// What was asked for is still done; nothing is waited for.
    void close();
    /// Closes it for good, and waits until what was asked for is done, a few seconds at most.
    void end();
    [[nodiscard]] bool isOpen() const { return opened; }

    /// Does `work` with the book in its thread; then `done` with what it returned, in the window's thread, unless
    /// `context` is gone or the book closed. What goes wrong is told by `statechanged`; then `failed` is called and
    /// `done` is not. Does nothing while it is closed. What is not done for a lock or a full disk is not done later.
    template <typename Work, typename Done>
    void ask(Work work, QObject *context, Done done, const std::function<void()> &failed = {});
    /// The same for work that goes by numbers which the book has given: when another has taken its place it fails.
    template <typename Work, typename Done>
    void askThis(Work work, QObject *context, Done done, const std::function<void()> &failed = {});
    template <typename Work>
    void tell(Work work);

    /// That of the book whose numbers the window has; 0 while it has none. See `BookStore`.
    [[nodiscard]] int edition() const { return known; }
    /// Throws when `store` is another one.
    static void requireEdition(const BookStore &store, int edition);

    /// One line for the status bar: what is wrong, or empty. It names the book.
    [[nodiscard]] QString trouble() const { return line; }

signals:
    /// It was opened or closed, something went wrong or is right again.
    void statechanged();
    /// Another file has taken the place of the one that was there: no number of a player, note or action holds any
    /// more.
    void begunanew();

private:
    /// What is to be done in the window's thread afterwards.
    using Reply = std::function<void()>;
    using Job = std::function<Reply(BookStore &)>;

    void enqueue(const Job &job, const Reply &failed = {});
    void setTrouble(const QString &trouble);
    void endThread();

    std::unique_ptr<QThread> thread;
    std::unique_ptr<BookWorker> worker;
    bool opened = false;
    int openings = 0;
    int known = 0; ///< edition
    QString line;
};

template <typename Work, typename Done>
void Book::ask(Work work, QObject *context, Done done, const std::function<void()> &failed)
{
    Reply unlessGone;
    if (failed)
        unlessGone = [failed, context = QPointer<QObject>(context)] {
            if (context)
                failed();
        };
    enqueue(
        [work = std::move(work), done = std::move(done),
         context = QPointer<QObject>(context)](BookStore &store) -> Reply {
            if constexpr (std::is_void_v<std::invoke_result_t<const Work &, BookStore &>>) {
                work(store);
                return [done, context] {
                    if (context)
                        done();
                };
            } else {
                return [done, context, result = work(store)] {
                    if (context)
                        done(result);
                };
            }
        },
        unlessGone);
}

template <typename Work, typename Done>
void Book::askThis(Work work, QObject *context, Done done, const std::function<void()> &failed)
{
    ask(
        [work = std::move(work), edition = known](BookStore &store) {
            requireEdition(store, edition);
            return work(store);
        },
        context, std::move(done), failed);
}

template <typename Work>
void Book::tell(Work work)
{
    enqueue([work = std::move(work)](BookStore &store) -> Reply {
        work(store);
        return {};
    });
}
