#pragma once

#include <string>
#include <string_view>

/// Bytes for the other side (RFC 854, RFC 855).
namespace znt::telnet
{

/// Three bytes: IAC, `verb` (WILL, WONT, DO or DONT), `option`.
std::string offer(unsigned char verb, unsigned char option);
/// `content` between IAC SB `option` and IAC SE; each 255 in it is doubled.
std::string subnegotiation(unsigned char option, std::string_view content);
/// `data` with each 255 doubled, since a single one is IAC.
std::string doubledIac(std::string data);

} // namespace znt::telnet
