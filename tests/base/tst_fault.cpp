// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "base/system_error.h"
#include "test_class.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cerrno>

using namespace Qt::StringLiterals;

class FaultTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aKnownFaultHasItsNumberAndDescription_data()
    {
        QTest::addColumn<int>("known");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("description");
        const auto row = [](const char *name, Fault::Number known, int number, const QString &description) {
            QTest::newRow(name) << static_cast<int>(known) << number << description;
        };
        row("invalid call", Fault::InvalidCall, 5, u"Invalid procedure call or argument"_s);
        row("overflow", Fault::Overflow, 6, u"Overflow"_s);
        row("out of range", Fault::OutOfRange, 9, u"Subscript out of range"_s);
        row("type mismatch", Fault::TypeMismatch, 13, u"Type mismatch"_s);
    }

    void aKnownFaultHasItsNumberAndDescription()
    {
        QFETCH(int, known);
        const Fault fault(static_cast<Fault::Number>(known));
        QTEST(fault.number(), "number");
        QTEST(fault.description(), "description");
    }

    void theSocketFaultsHaveTheNumbersThatHandlersLookFor()
    {
        QCOMPARE(Fault(Fault::DatagramTooLarge).number(), 10040);
        QCOMPARE(Fault(Fault::NoRoute).number(), 10065);
    }

    void everyKnownFaultHasADescriptionOfItsOwn()
    {
        QStringList descriptions;
        for (const Fault::Number number :
             {Fault::InvalidCall, Fault::Overflow, Fault::OutOfRange, Fault::TypeMismatch, Fault::DatagramTooLarge,
              Fault::AddressNotAvailable, Fault::NotConnected, Fault::NoRoute, Fault::HostNotFound})
            descriptions.append(Fault(number).description());
        QVERIFY(!descriptions.contains(QString()));
        QCOMPARE(descriptions.removeDuplicates(), 0);
    }

    void aFaultOfAnotherNumberKeepsWhatItIsGiven()
    {
        const Fault fault(75, u"Path not found"_s);
        QCOMPARE(fault.number(), 75);
        QCOMPARE(fault.description(), u"Path not found"_s);
    }

    void aFaultIsAnException() { QVERIFY_THROWS_EXCEPTION(std::exception, throw Fault(Fault::Overflow)); }

#ifdef Q_OS_UNIX
    void theSystemErrorOfAFailedCallIsItsNumberAndText()
    {
        const QTemporaryDir folder;
        QFile file(folder.path() + u"/missing/file"_s);
        clearSystemError();
        QVERIFY(!file.open(QIODevice::WriteOnly));
        const Fault fault = lastSystemError(u"no error named"_s);
        QCOMPARE(fault.number(), ENOENT);
        QCOMPARE(fault.description(), QString::fromLocal8Bit(strerror(ENOENT)));
    }

    void withoutASystemErrorTheFallbackIsTheText()
    {
        errno = EACCES;
        clearSystemError();
        const Fault fault = lastSystemError(u"no error named"_s);
        QCOMPARE(fault.number(), 0);
        QCOMPARE(fault.description(), u"no error named"_s);
    }

    void theSystemsSocketErrorsGetTheNumbersOfWindowsSockets_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("number");
        QTest::newRow("no route to the network") << ENETUNREACH << 10065;
        QTest::newRow("no route to the host") << EHOSTUNREACH << 10065;
        QTest::newRow("datagram too large") << EMSGSIZE << 10040;
        QTest::newRow("any other is the system's own") << ECONNREFUSED << ECONNREFUSED;
    }

    void theSystemsSocketErrorsGetTheNumbersOfWindowsSockets()
    {
        QFETCH(int, error);
        errno = error;
        const int number = lastSocketError();
        QTEST(number, "number");
    }
#endif
};

GUILESS_TEST(FaultTest)
#include "tst_fault.moc"
