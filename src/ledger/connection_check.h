// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

/// The variable that the console is asked for: its answer is short and tells nobody's secrets.
inline constexpr QLatin1StringView askedVariable("g_gametype");

/// What a step of the connection check has found out, and what to do about it: one sentence.
struct CheckStep {
    QString result;
    QString advice;

    bool operator==(const CheckStep &) const = default;
};

/// What came of a question; times in milliseconds.
struct Asked {
    std::optional<qint64> answeredAfter; ///< nothing when no answer came
    bool couldBeSent = true;
};

/// The fields that name the server; nothing when they can be used.
[[nodiscard]] std::optional<CheckStep> fieldsStep(const QString &server, const QString &port, const QString &password);
/// `address` is empty when none was found.
[[nodiscard]] CheckStep lookUpStep(const QString &server, const QString &address, qint64 milliseconds);
[[nodiscard]] CheckStep queryStep(const Asked &query);
/// `words` are the answer's. The password is not told, also where the server repeats it.
[[nodiscard]] CheckStep consoleStep(const Asked &console, const QString &words, const QString &password,
                                    bool isQueryAnswered);
/// The datagrams of the long reply: their sizes on the wire in the order of their coming, and the text of them all.
[[nodiscard]] CheckStep listingStep(const QList<qsizetype> &sizes, const QString &text);
/// Instead of that, when so much came that it was not waited for the end.
[[nodiscard]] CheckStep endlessStep(const QList<qsizetype> &sizes);
/// Instead of that, when the console does not answer.
[[nodiscard]] CheckStep noListingStep();

/// Whether these words are a refusal of the password, in any of the wordings that servers have for it.
[[nodiscard]] bool refusesInAnyWording(const QString &words);

/// All of it as plain text, below a line that says what was checked and when.
[[nodiscard]] QString checkText(const QString &heading, const QList<CheckStep> &steps);
