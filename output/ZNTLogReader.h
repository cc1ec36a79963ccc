#pragma once

#include "ZNTResult.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Reads a log part by part, so that a large one holds nothing up. It reads what the file held when it was
/// opened; a log that is still written does not grow under the reader. Of a very large log the last part is
/// read.
class ZNTLogReader
{
public:
    static constexpr std::size_t partSize = std::size_t{256} << 10; ///< bytes
    static constexpr std::uintmax_t mostBytes = std::uintmax_t{128} << 20;

    /// A path is UTF-8. If the file cannot be opened, or is no regular one, the first part says so.
    explicit ZNTLogReader(const std::string& path, std::uintmax_t most = mostBytes);
    ~ZNTLogReader();
    ZNTLogReader(const ZNTLogReader&) = delete;
    ZNTLogReader& operator=(const ZNTLogReader&) = delete;

    /// The next part of the text. No character is cut in two; ill-formed bytes become U+FFFD. After a failure
    /// the reader is at its end.
    ZNTResult<std::u16string> nextPart();
    [[nodiscard]] bool isAtEnd() const { return isDone; }

    [[nodiscard]] std::uintmax_t bytesToRead() const { return total; }
    [[nodiscard]] std::uintmax_t bytesRead() const { return done; }
    /// How many bytes at the beginning are left out.
    [[nodiscard]] std::uintmax_t bytesLeftOut() const { return leftOut; }

private:
    [[nodiscard]] std::u16string wholeCharacters();
    ZNTResult<std::u16string> fail(int errorNumber);

    int file;
    int openingFailure = 0; ///< an errno
    std::uintmax_t total = 0, done = 0, leftOut = 0;
    bool isDone = false;
    std::string pending; ///< bytes that are not yet text: the start of a character
};
