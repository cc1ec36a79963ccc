#pragma once

/// As long as one lives, its terminal gives whole lines and shows nothing of them. At most one lives at a
/// time.
///
/// The terminal shows what is typed again when the object goes, and at any other end of the program: by a
/// signal, or while it is stopped by Ctrl+Z. Only SIGKILL leaves it hidden. Nothing is changed while another
/// job has the terminal.
class ZNTHiddenTyping
{
public:
    /// `terminal` is a descriptor and stays the caller's.
    explicit ZNTHiddenTyping(int terminal);
    ~ZNTHiddenTyping();
    ZNTHiddenTyping(const ZNTHiddenTyping&) = delete;
    ZNTHiddenTyping& operator=(const ZNTHiddenTyping&) = delete;

    /// For an end of the program that runs no destructors. May be called at any time, on any thread, also in
    /// a signal handler.
    static void showBeforeEnd();
};
