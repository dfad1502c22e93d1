// SPDX-License-Identifier: MIT
#pragma once

#include "connecting.h"
#include "read_values.h"
#include "word_completion.h"
#include "words_file.h"

#include <QObject>

#include <functional>
#include <optional>

class Clock;
class ServerFields;
struct CameDatagram;

/// What the console line knows: the words of the game, those that the server has listed, and the values that were read
/// over this connection. It only looks on, and reads its file when somebody wants to complete something.
class ConsoleWords final : public QObject {
    Q_OBJECT

public:
    /// `path` is the file of the words.
    ConsoleWords(const ServerFields &fields_, const Clock &clock_, const QString &path, QObject *parent);

    /// The server that is connected, else the one that would be.
    [[nodiscard]] QString address() const;
    /// All that can be typed there, sorted.
    [[nodiscard]] const QList<Completion> &words();
    /// What `word` does, and of a variable in a second line the value that was last read, its default and its domain.
    [[nodiscard]] QString description(const Completion &word) const;

    /// Keeps the words that a server has listed; `isAll` when it has no others.
    void learn(const QString &server, const ServerWords &listed, bool isAll);
    [[nodiscard]] QStringList keptHistory();
    /// See `WordsFile::addHistory`.
    void addHistory(const QStringList &lines, const std::function<bool(const QString &)> &isSecret);
    void forgetHistory();

public slots:
    void takeDatagram(const CameDatagram &datagram);
    void beginReply();
    void takeState(Connecting::State state, const QString &address);

signals:
    /// Something has become of the file that the person should know.
    void told(const QString &line);

private:
    [[nodiscard]] QString valueLine(const QString &variable) const;
    void tell();

    const ServerFields &fields;
    const Clock &clock;
    WordsFile file;
    ReadValues values;
    QString connectedTo; ///< empty when not connected
    QList<Completion> sorted;
    std::optional<QString> sortedOf; ///< the server of which the words are sorted
};
