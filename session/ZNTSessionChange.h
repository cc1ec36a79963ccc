#pragma once

/// What kind of thing has changed in a session. A front end looks again at what it shows of that kind, and at
/// nothing else.
enum class ZNTSessionChange {
    State,       ///< idle, connecting or connected; the way in which a connection ended
    Title,       ///< the game's name, host or port, as the session has filled them in
    Encoding,    ///< the string encoding
    Compression, ///< whether what comes is taken as compressed
    Typing,      ///< whether what is typed is hidden
    Sounds,      ///< whether sound tags are carried out
    Speech,      ///< speech on or off, its interruption, and whether anything can speak
    Walking,     ///< whether a speed walk or a recording is under way
    Recording    ///< whether commands are recorded, and the list of them
};
