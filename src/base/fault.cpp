// SPDX-License-Identifier: MIT
#include "fault.h"

using namespace Qt::StringLiterals;

namespace {

QString standardDescription(Fault::Number number)
{
    switch (number) {
    case Fault::InvalidCall:
        return u"Invalid procedure call or argument"_s;
    case Fault::Overflow:
        return u"Overflow"_s;
    case Fault::OutOfRange:
        return u"Subscript out of range"_s;
    case Fault::TypeMismatch:
        return u"Type mismatch"_s;
    case Fault::DatagramTooLarge:
        return u"Message too long"_s;
    case Fault::AddressNotAvailable:
        return u"Address or port not available"_s;
    case Fault::NotConnected:
        return u"Socket is not open"_s;
    case Fault::NoRoute:
        return u"No route to host"_s;
    case Fault::HostNotFound:
        return u"Host not found"_s;
    }
    return u"Unknown fault"_s;
}

} // namespace

Fault::Fault(Number number) : Fault(number, standardDescription(number)) {}
