#pragma once

#include <cstddef>
#include <string>

/// Game text as servers send it, made up: rooms with exits, fights, talk, prompts; SGR colours in most lines,
/// CR LF line ends, IAC GA after prompts where asked for. The same bytes for the same request in every run.
namespace znt::bench
{

enum class Prompts { WithGoAhead, Bare };

/// About `size` bytes, ending with a whole line.
std::string gameBytes(std::size_t size, Prompts prompts = Prompts::Bare);

/// The same text as the trigger pass sees it: decoded, without colours and telnet.
std::u16string plainGameText(std::size_t size);

} // namespace znt::bench
