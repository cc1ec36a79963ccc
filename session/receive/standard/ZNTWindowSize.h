#pragma once

#include <string>

/// Says how large the player's view is (NAWS, RFC 1073), in characters.
class ZNTWindowSize
{
public:
    /// Begins a new connection: the server does not know the size.
    void start() { sentColumns = sentRows = 0; }
    /// A size below 1 is not known yet; 80 by 24 stands in for it.
    void setSize(int newColumns, int newRows);
    /// The bytes that say the size; empty if the server knows it. To be asked while the option is agreed on.
    std::string report();

private:
    int columns = 80, rows = 24;
    int sentColumns = 0, sentRows = 0; ///< 0: nothing was sent
};
