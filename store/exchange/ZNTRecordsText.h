#pragma once

#include "ZNTRecords.h"
#include "ZNTResult.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Records as a text that people can read and edit.
///
/// The first line is "Zantor export 1". An entry starts with its kind in brackets, and each of its fields has
/// a line "NAME = VALUE". A value reaches to the end of its line, without the blanks around it, and nothing
/// in it has to be escaped, because patterns are full of backslashes. A value that starts with a quotation
/// mark ends with one and may hold \n, \r, \t, \", \\ and \uXXXX (a UTF-16 unit). A macro belongs to the
/// group above it. Empty lines and lines that start with "#" do not count. The last line is "[end]", so that
/// a file that was cut off is noticed. UTF-8; lines end with LF or CR LF.
namespace znt::exchange
{

/// What one file may hold, so that a foreign file cannot fill the memory or the store.
inline constexpr std::size_t mostBytes = std::size_t{16} << 20;
inline constexpr std::size_t mostEntries = 20'000;
inline constexpr std::int64_t highestPort = 65535;

/// Whether `text` begins as an exported file does, of whichever version.
bool isExported(std::string_view text);

/// Row keys are not written. Of several default games only the first is written as such, and a port that
/// cannot be is written as 0.
std::string textOfRecords(const ZNTRecords& records);

/// Reads all of `text`. The error's description is a sentence for the player that starts with the line; its
/// code is the number of the line. Linear in the text.
ZNTResult<ZNTRecords> recordsInText(std::string_view text);

} // namespace znt::exchange
