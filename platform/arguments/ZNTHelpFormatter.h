#pragma once

#include <CLI/CLI.hpp>

/// How `--help` lists what a program takes: names, values and sentences, without the terms of the library, in
/// lines for a terminal of 80 columns.
class ZNTHelpFormatter final : public CLI::Formatter
{
public:
    ZNTHelpFormatter();

    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
};
