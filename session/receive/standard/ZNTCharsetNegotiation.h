#pragma once

#include "ZNTStringEncoding.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// A name that a server may use for an encoding, in capitals (IANA's registry of character sets).
struct ZNTCharsetName {
    std::string_view name;
    ZNTStringEncoding encoding;
    bool isOffered = false; ///< the client names it in its own request, in this order
};

inline constexpr std::array ZNTCharsetNames{
    ZNTCharsetName{"UTF-8", ZNTStringEncoding::Utf8, /*isOffered=*/true},
    ZNTCharsetName{"UTF8", ZNTStringEncoding::Utf8},
    ZNTCharsetName{"GB18030", ZNTStringEncoding::EucCn, /*isOffered=*/true},
    ZNTCharsetName{"GBK", ZNTStringEncoding::EucCn, /*isOffered=*/true},
    ZNTCharsetName{"GB2312", ZNTStringEncoding::EucCn, /*isOffered=*/true},
    ZNTCharsetName{"EUC-CN", ZNTStringEncoding::EucCn},
    ZNTCharsetName{"BIG5-HKSCS", ZNTStringEncoding::Big5Hkscs, /*isOffered=*/true},
    ZNTCharsetName{"BIG5", ZNTStringEncoding::Big5Hkscs, /*isOffered=*/true},
    // The encoding of single bytes shows each as the character of its value, which is ISO 8859-1.
    ZNTCharsetName{"ISO-8859-1", ZNTStringEncoding::Ascii, /*isOffered=*/true},
    ZNTCharsetName{"ISO8859-1", ZNTStringEncoding::Ascii},
    ZNTCharsetName{"ISO_8859-1", ZNTStringEncoding::Ascii},
    ZNTCharsetName{"LATIN1", ZNTStringEncoding::Ascii},
    ZNTCharsetName{"US-ASCII", ZNTStringEncoding::Ascii, /*isOffered=*/true},
    ZNTCharsetName{"ASCII", ZNTStringEncoding::Ascii},
};

/// Agrees with the server on the encoding of the text (CHARSET, RFC 2066). Either side may propose a list of
/// which the other chooses. UTF-8 is chosen if it is in the list, else the first that we have. Translation
/// tables are refused.
class ZNTCharsetNegotiation
{
public:
    static constexpr int mostAnswers = 1000; ///< to one connection, so that a server's loop ends

    /// Begins a new connection.
    void start() { *this = {}; }

    /// The client's own proposal. `only`: no other encoding may be agreed on; the player has named it.
    std::string request(std::optional<ZNTStringEncoding> only);

    struct Result {
        std::string reply;
        std::optional<ZNTStringEncoding> agreed; ///< of the text from now on
    };
    /// A subnegotiation of the option. If both sides have proposed, the server's proposal is answered and the
    /// server refuses ours (RFC 2066 decides so for a client).
    Result receive(std::string_view content, std::optional<ZNTStringEncoding> only);

private:
    Result answerRequest(std::string_view list, std::optional<ZNTStringEncoding> only);

    bool isRequestOut = false;
    int answers = 0;
};
