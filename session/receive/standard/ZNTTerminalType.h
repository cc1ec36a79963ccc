#pragma once

#include <string>

/// What the client says of itself when the server asks for its terminal type (RFC 1091): its name, then what
/// its screen can do, then a bit for each thing it can do, as MUDs have agreed (MTTS,
/// https://tintin.mudhalla.net/protocols/mtts). The last is said twice, which ends the list; a further
/// question begins it anew.
class ZNTTerminalType
{
public:
    static constexpr int mostAnswers = 1000; ///< to one connection, so that a server's loop ends

    struct Abilities {
        bool fullColours = false; ///< 256 and 24-bit colours
        bool isUtf8 = false;
        bool hasScreenReader = false;
    };

    /// Begins a new connection.
    void start() { *this = {}; }
    /// The server may ask from now on. The list begins anew. Returns the answer to a question that came
    /// before, since several servers ask together with the DO, or even ahead of it.
    std::string agree(const Abilities& abilities);
    /// The answer to a question. Empty if the option is not agreed on.
    std::string ask(bool isAgreed, const Abilities& abilities);

private:
    std::string answer(const Abilities& abilities);

    int asked = 0;   ///< since the list began
    int answers = 0; ///< to this connection
    bool isAskedTooEarly = false;
};
