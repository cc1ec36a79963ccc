#include "ZNTManualTables.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

namespace
{

std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file)
        throw std::runtime_error(std::string("Cannot read ") + path + ".");
    return text.str();
}

/// The first line that differs, so that people see which row of which table it is.
std::string firstDifference(const std::string& page, const std::string& right)
{
    std::istringstream pageLines(page), rightLines(right);
    std::string has, should;
    while (has == should && std::getline(rightLines, should))
        if (!std::getline(pageLines, has))
            has.clear();
    return "  it has:         " + has + "\n  it should have: " + should + "\n";
}

} // namespace

/// zantor-manual --check FILE: says whether what is made in FILE is what the program's tables give.
/// zantor-manual --write FILE: writes it anew.
int main(int count, const char* const* arguments)
{
    const std::string_view what = count == 3 ? arguments[1] : "";
    if (what != "--check" && what != "--write") {
        std::cerr << "usage: zantor-manual --check|--write FILE\n";
        return 2;
    }
    try {
        const auto page = contentOf(arguments[2]);
        const auto right = znt::withTablesMade(page);
        if (page == right)
            return 0;
        if (what == "--check") {
            std::cerr << arguments[2]
                      << " differs from the program's tables; scripts/manual writes it anew.\n"
                      << firstDifference(page, right);
            return 1;
        }
        std::ofstream file(arguments[2], std::ios::binary);
        file << right << std::flush;
        return file ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << arguments[2] << ": " << error.what() << '\n';
        return 1;
    }
}
