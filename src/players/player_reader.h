// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"

#include <QObject>

#include <functional>

class Reading;
struct GetstatusRow;
struct Services;
struct StatusRow;

/// Reads who is on the server, row by row, by the status table or by the public query.
class PlayerReader final : public QObject {
    Q_OBJECT

public:
    PlayerReader(const Services &services_, QObject *parent) : QObject(parent), services(services_) {}

    /// Asks for the status table. As long as `isTold` boxes say what is wrong with it. True when the server has
    /// answered with all of it.
    bool readStatus(const Reading &scope, BroughtBy by, const std::function<bool()> &isTold);
    /// Asks the public query. Throws what sending it throws, and Overflow when the answer is too long.
    /// True when the server has answered.
    bool readQuery(const Reading &scope, BroughtBy by);

signals:
    void statusrowread(const StatusRow &row);
    void queryrowread(const GetstatusRow &row);

private:
    const Services &services;
};
