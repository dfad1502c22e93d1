// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The pages that the program opens. All stand under one reserved name until there are real ones.
namespace WebAddress {
inline constexpr QStringView site = u"https://molvark.example/";
inline constexpr QStringView forum = u"https://forum.molvark.example/";
inline constexpr QStringView hobMod = u"https://hob.molvark.example/";
} // namespace WebAddress

/// The mail addresses that the About window names. They stand under the same reserved name.
namespace ContactAddress {
inline constexpr QStringView authors = u"support@molvark.example";
inline constexpr QStringView donations = u"donations@molvark.example";
} // namespace ContactAddress

/// Opens the address with the system's default action. A page that cannot be opened is ignored.
void openurl(QStringView address);
