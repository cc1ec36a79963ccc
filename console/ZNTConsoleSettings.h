#pragma once

#include <string_view>

class ZNTConsoleClient;

/// The command /set of the terminal client: it shows and changes every row of the table of settings,
/// "listening", which stands for several of them, and "remember", which is whether they are kept for the next
/// start.
class ZNTConsoleSettings
{
public:
    /// `client` outlives this.
    explicit ZNTConsoleSettings(ZNTConsoleClient& client) : client(client) {}

    /// `words` is nothing, NAME, or NAME VALUE.
    void carryOut(std::u16string_view words);

private:
    void show(std::u16string_view name);
    void change(std::u16string_view name, std::u16string_view value);

    ZNTConsoleClient& client;
};
