#pragma once

#include <string_view>

class ZNTServerConnectController;

/// Speaks what the window shows only to those who look. It says nothing while speech is off.
class ZNTSpokenNews
{
public:
    /// The session outlives this.
    explicit ZNTSpokenNews(ZNTServerConnectController& session) : session(session) {}

    void say(std::u16string_view news);
    /// For what is done with or without a connection, and is worth little without: adds that there is none.
    void sayDone(std::u16string_view what);

private:
    ZNTServerConnectController& session;
};
