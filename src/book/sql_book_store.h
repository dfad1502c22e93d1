// SPDX-License-Identifier: MIT
#pragma once

#include "book_store.h"

#include <QByteArrayList>
#include <QElapsedTimer>

class BookDatabase;

/// The player book as an SQLite database.
class SqlBookStore final : public BookStore {
public:
    /// As `openBookStore` says.
    explicit SqlBookStore(const QString &path, qint64 oldest = 0, Patience patience = fiveSeconds, bool doubt = false);
    ~SqlBookStore() override;
    Q_DISABLE_COPY_MOVE(SqlBookStore)

    using BookStore::page;

    [[nodiscard]] QString putAside() const override { return aside; }
    [[nodiscard]] bool isThere() const override;
    void takeLeave() override;
    void moveLog() override;
    [[nodiscard]] quint64 commits() const override;

    QList<KnownPlayer> feed(const BookFeed &feed) override;

    [[nodiscard]] QList<BookPlayer> search(const QString &text, int from, int most) const override;
    [[nodiscard]] std::optional<qint64> find(const QString &guid, const QString &name,
                                             const QString &address) const override;
    [[nodiscard]] std::optional<BookPage> page(qint64 player, int mostAliases) const override;

    void setFlag(qint64 player, bool on) override;
    qint64 addNote(qint64 player, const QString &text, qint64 time) override;
    void changeNote(qint64 note, const QString &text, qint64 time) override;
    void deleteNote(qint64 note) override;
    void remove(qint64 player) override;
    void cleanUp() override;

    qint64 addAction(const BookAction &action) override;
    void setVerdict(qint64 action, const QString &verdict) override;
    void setReason(qint64 action, const QString &reason) override;

    [[nodiscard]] QStringList servers() const override;
    [[nodiscard]] QList<BookCount> counts(const QString &server, qint64 since) const override;

    [[nodiscard]] QList<BookBan> bans() const override;
    [[nodiscard]] QList<BookBan> liftedWith(const QString &server, const QString &name) const override;
    void lift(const QList<qint64> &actions) override;
    int importBans(const QList<BookBan> &bans, qint64 time) override;

    [[nodiscard]] BookSize size() const override;

private:
    void open(qint64 oldest);
    void openAsItIs(qint64 oldest);
    template <typename Work>
    void patiently(const Work &work) const;
    template <typename Work>
    void change(const Work &work);
    template <typename Work>
    void inTurn(bool isPatient, const Work &work) const;
    void cleanUp(bool isPatient);
    void tryCleanUp();
    void beginLog();

    QString path;
    bool isDoubtful;
    Patience patience;
    QString aside;
    std::unique_ptr<BookDatabase> database;
    QByteArray fileId;          ///< of its file
    QByteArrayList companions;  ///< identities of what belongs to it
    bool isUnclean = false;     ///< something of who was forgotten may be left in the file or its log
    bool isWrittenAnew = false; ///< ... but in the log alone
    QElapsedTimer sinceTried;   ///< to write it anew
    qint64 unmovedLog = 0;      ///< the size of the log when it could not be moved
};
