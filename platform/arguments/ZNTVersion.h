#pragma once

#include <string>

namespace znt
{

/// The program's version, as "1.2".
std::string version();

} // namespace znt
