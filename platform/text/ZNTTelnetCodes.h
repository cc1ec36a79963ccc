#pragma once

/// Telnet's bytes (RFC 854, RFC 855, RFC 885) and the options that MUDs use. In decoded text each byte is the
/// character of its value.
namespace znt::telnet
{

inline constexpr unsigned char EOR = 239, SE = 240, GA = 249, SB = 250, WILL = 251, WONT = 252, DO = 253,
                               DONT = 254, IAC = 255;

/// The byte that is sent in place of DONT. Servers take IAC 25 for a command that they do not know.
inline constexpr unsigned char Refusal = 25;

/// Whether the byte after `command` is an option: true for SB, WILL, WONT, DO and DONT.
constexpr bool isFollowedByOption(unsigned char command) { return command >= SB && command <= DONT; }

namespace option
{

inline constexpr unsigned char Echo = 1, SuppressGoAhead = 3, TerminalType = 24, EndOfRecord = 25,
                               WindowSize = 31, Charset = 42, Msdp = 69, Mssp = 70, CompressionV1 = 85,
                               CompressionV2 = 86, Sound = 90, Mxp = 91, Zmp = 93, OwnChannel = 102,
                               Atcp = 200, Gmcp = 201;

} // namespace option

/// Codes within subnegotiations: of the terminal type (RFC 1091) and of the character set (RFC 2066).
namespace terminaltype
{
inline constexpr unsigned char Is = 0, Send = 1;
}
namespace charset
{
inline constexpr unsigned char Request = 1, Accepted = 2, Rejected = 3, TableIs = 4, TableRejected = 5;
}

} // namespace znt::telnet
