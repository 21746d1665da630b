// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <span>

class AppRuntime;

namespace Fuzz
{

/// Makes values of the bytes of one run, front to back. When the bytes are used up, every value is the
/// smallest of its kind: no input is too short.
class Input
{
public:
    Input(const std::uint8_t *bytes, std::size_t size)
        : m_bytes(bytes, size)
    {
    }

    [[nodiscard]] bool atEnd() const
    {
        return m_bytes.empty();
    }

    std::uint8_t byte();
    bool flag();

    /// From `low` to `high`, both included; they are at most 255 apart.
    int between(int low, int high);

    /// A position, length or index: mostly a small one on either side of 0, sometimes the largest or
    /// smallest.
    int position();

    /// Any whole number.
    int anyInt();

    QChar character();

    /// A text with what texts are broken by: NUL, separators, kana of both widths, halves of surrogate pairs.
    /// ASCII bytes stand for themselves: words that the engine finds reach the runtime as they are.
    QString text();

    /// Up to `most` texts, at least one.
    QStringList texts(int most);

    /// Up to `most` bytes of any value, of those that are left.
    QByteArray bytes(int most);

private:
    QChar wide(std::uint8_t code);

    std::span<const std::uint8_t> m_bytes;
};

/// The runtime that every run of a target uses: making one starts a child process.
AppRuntime &runtime();

/// Ends the run as a finding when the property does not hold.
void require(bool holds, const char *property);

/// The same for two values that have to be equal, which are printed when they are not.
void requireEqual(const QString &found, const QString &expected, const char *property);
void requireEqual(const QStringList &found, const QStringList &expected, const char *property);
void requireEqual(const QByteArray &found, const QByteArray &expected, const char *property);
void requireEqual(long long found, long long expected, const char *property);

} // namespace Fuzz

/// One run of a target, called by the engine; each target defines it in the file of its topic.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);
