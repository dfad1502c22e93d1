// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

struct GetstatusRow;
struct Services;
struct StatusRow;

/// Reads who is on the server, row by row, by the status table or by the public query.
class PlayerReader final : public QObject {
    Q_OBJECT

public:
    PlayerReader(const Services &services_, QObject *parent) : QObject(parent), services(services_) {}

    /// Asks for the status table. `isTold`: boxes say what is wrong with it.
    void readStatus(bool isTold);
    /// Asks the public query. Throws what sending it throws, and InvalidCall when the answer is cut off.
    void readQuery();

signals:
    void statusrowread(const StatusRow &row);
    void queryrowread(const GetstatusRow &row);

private:
    const Services &services;
};
