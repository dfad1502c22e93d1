// SPDX-License-Identifier: MIT
#include "wire_text.h"

#include <algorithm>
#include <array>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

#ifdef Q_OS_WIN
// The code page can be UTF-8: a person may have chosen that for the whole system.
bool everyCharacterHasBytes()
{
    return GetACP() == CP_UTF8;
}

// Without the letters that only resemble those that have no byte: among them are quotes and semicolons.
void appendBytes(QByteArray &bytes, QChar character)
{
    const wchar_t unit = character.unicode();
    std::array<char, 8> buffer{};
    const int size = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, &unit, 1, buffer.data(),
                                         static_cast<int>(buffer.size()), nullptr, nullptr);
    bytes.append(buffer.data(), size);
}
#else
bool everyCharacterHasBytes()
{
    return false;
}

// The bytes 0x80 to 0x9F; the undefined 81, 8D, 8F, 90 and 9D are the control characters of the same number, which is
// also what Windows makes of them. All other bytes are the character of the same number.
constexpr std::array<char16_t, 32> upperControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(QChar character)
{
    const char16_t code = character.unicode();
    const auto found = std::ranges::find(upperControls, code);
    if (found != upperControls.end())
        return static_cast<char>(0x80 + (found - upperControls.begin()));
    return code < 0x80 || (code >= 0xA0 && code <= 0xFF) ? static_cast<char>(code) : '?';
}

void appendBytes(QByteArray &bytes, QChar character)
{
    bytes.append(toByte(character));
}

QChar toCharacter(char byte)
{
    const auto code = static_cast<unsigned char>(byte);
    return code >= 0x80 && code < 0xA0 ? QChar(upperControls.at(code - 0x80U)) : QChar(char16_t{code});
}
#endif

} // namespace

QByteArray toAnsi(const QString &text)
{
    if (everyCharacterHasBytes())
        return text.toUtf8();
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        appendBytes(bytes, text.at(at));
        if (text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate())
            ++at; // one character in two units is one "?"
    }
    return bytes;
}

#ifdef Q_OS_WIN
QString fromAnsi(const QByteArray &bytes)
{
    // Not QString::fromLocal8Bit(), which loses a zero at the end.
    const int size = static_cast<int>(bytes.size());
    QString text(MultiByteToWideChar(CP_ACP, 0, bytes.constData(), size, nullptr, 0), Qt::Uninitialized);
    MultiByteToWideChar(CP_ACP, 0, bytes.constData(), size, reinterpret_cast<wchar_t *>(text.data()),
                        static_cast<int>(text.size()));
    return text;
}
#else
QString fromAnsi(const QByteArray &bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::ranges::transform(bytes, text.begin(), toCharacter);
    return text;
}
#endif

bool isSendable(const QString &text)
{
    return fromAnsi(toAnsi(text)) == text;
}

QString squeezeBlanks(const QString &text)
{
    QString squeezed = text;
    const auto isSecondBlank = [](QChar before, QChar after) { return before == u' ' && after == u' '; };
    squeezed.erase(std::unique(squeezed.begin(), squeezed.end(), isSecondBlank), squeezed.end());
    return squeezed;
}

QString trimBlanks(const QString &text)
{
    const auto isBlank = [](QChar character) { return character == u' '; };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return QString(first, last - first);
}
