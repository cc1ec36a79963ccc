#pragma once

#include <string>

namespace znt
{

/// The program's version, as "1.2".
std::string version();
/// The address of the project's home page.
std::string homePage();

} // namespace znt
