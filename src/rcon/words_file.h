// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

/// The words that a server has listed.
struct ServerWords {
    static constexpr qsizetype most = 20'000; ///< of both kinds together; what is beyond it is not taken

    QStringList commands;
    QStringList variables;

    bool operator==(const ServerWords &) const = default;

    [[nodiscard]] qsizetype count() const { return commands.size() + variables.size(); }
    /// Adds those of `more` that are new, without regard to letter case.
    void add(const ServerWords &more);
};

/// What is kept between runs: the lines of the console, the oldest first, and the words of each server.
struct KeptWords {
    struct Server {
        QString address; ///< HOST:PORT
        ServerWords words;

        bool operator==(const Server &) const = default;
    };

    QStringList history;
    QList<Server> servers; ///< the one that was listed last is the last

    bool operator==(const KeptWords &) const = default;

    [[nodiscard]] ServerWords of(const QString &address) const;
    void put(const QString &address, const ServerWords &words);
};

/// The content of the file; in `fault` why it is none of ours. What is in it beyond the bounds is left out.
[[nodiscard]] KeptWords wordsIn(const QByteArray &file, QString &fault);
[[nodiscard]] QByteArray bytesOf(const KeptWords &words);

/// The file of the words. It is read anew before each change and replaced whole. One that is none of ours is put aside
/// under another name, and one that cannot be read is left alone; both are told.
class WordsFile final {
public:
    explicit WordsFile(QString path_);

    [[nodiscard]] QString path() const { return file; }
    /// As it was when it was last read or changed; read when it is first asked for.
    [[nodiscard]] const KeptWords &words();
    void keepWords(const QString &address, const ServerWords &words);
    /// Adds the lines to those that are kept by now, perhaps by another program, and takes out what `isSecret`; the
    /// newest stay, as far as they fit. Without any the file is not made, and without a change not written.
    void addHistory(const QStringList &lines, const std::function<bool(const QString &)> &isSecret = {});
    void forgetHistory();

    /// What there is to tell the person, one line each; they are told once.
    [[nodiscard]] QStringList takeTold();

private:
    void read();
    void putAside(const QString &fault);
    void changeHistory(const QStringList &history);
    void write(const KeptWords &changed);

    QString file;
    KeptWords kept;
    bool isRead = false;
    bool isLocked = false; ///< nothing is written in this run
    QStringList told;
};
