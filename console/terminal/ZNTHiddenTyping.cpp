#include "ZNTHiddenTyping.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <termios.h>
#include <unistd.h>

namespace
{

/// Global, because a signal handler has no argument for an object.
struct {
    int terminal;
    tcflag_t before; ///< of `hidingFlags`, as they were
    volatile std::sig_atomic_t isInForce;
} hiddenTyping{};

constexpr tcflag_t hidingFlags = ICANON | ECHO;

/// Calls nothing but what POSIX allows in a signal handler (signal-safety(7)).
void setFlags(tcflag_t wanted)
{
    const int errorBefore = errno;
    const auto owner = ::tcgetpgrp(hiddenTyping.terminal); // -1 if the terminal has no jobs
    termios modes{};
    if ((owner <= 0 || owner == ::getpgrp()) && ::tcgetattr(hiddenTyping.terminal, &modes) == 0) {
        modes.c_lflag = (modes.c_lflag & ~hidingFlags) | wanted;
        ::tcsetattr(hiddenTyping.terminal, TCSANOW, &modes);
    }
    errno = errorBefore;
}

void hideTyping()
{
    if (hiddenTyping.isInForce)
        setFlags(ICANON);
}

void endShown(int number);
void stopShown(int number);
void goOnHidden(int) { hideTyping(); }

struct SignalRow {
    int number;
    void (*handler)(int);
};
/// The signals that end a program by default, and those of job control.
constexpr std::array signalRows{
    SignalRow{SIGHUP, endShown},  SignalRow{SIGINT, endShown},   SignalRow{SIGQUIT, endShown},
    SignalRow{SIGTERM, endShown}, SignalRow{SIGABRT, endShown},  SignalRow{SIGSEGV, endShown},
    SignalRow{SIGBUS, endShown},  SignalRow{SIGFPE, endShown},   SignalRow{SIGILL, endShown},
    SignalRow{SIGTRAP, endShown}, SignalRow{SIGSYS, endShown},   SignalRow{SIGALRM, endShown},
    SignalRow{SIGUSR1, endShown}, SignalRow{SIGUSR2, endShown},  SignalRow{SIGXCPU, endShown},
    SignalRow{SIGXFSZ, endShown}, SignalRow{SIGTSTP, stopShown}, SignalRow{SIGCONT, goOnHidden},
};
std::array<struct sigaction, signalRows.size()> actionsBefore;

void endShown(int number)
{
    ZNTHiddenTyping::showBeforeEnd();
    for (std::size_t at = 0; at < signalRows.size(); ++at)
        if (signalRows[at].number == number)
            ::sigaction(number, &actionsBefore[at], nullptr);
    ::raise(number); // it arrives when this handler returns
}

/// Stops the program as if there were no handler. It goes on inside this function; SIGCONT hides again.
void stopShown(int number)
{
    ZNTHiddenTyping::showBeforeEnd();
    struct sigaction byDefault {
    }, ours{};
    byDefault.sa_handler = SIG_DFL;
    ::sigaction(number, &byDefault, &ours);
    ::raise(number);
    sigset_t stop, before;
    ::sigemptyset(&stop);
    ::sigaddset(&stop, number);
    ::pthread_sigmask(SIG_UNBLOCK, &stop, &before);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ::sigaction(number, &ours, nullptr);
    hideTyping(); // if nobody can continue a stopped program, the system does not stop it, and there is no
                  // SIGCONT
}

} // namespace

ZNTHiddenTyping::ZNTHiddenTyping(int terminal)
{
    termios modes{};
    ::tcgetattr(terminal, &modes);
    hiddenTyping.terminal = terminal;
    hiddenTyping.before = modes.c_lflag & hidingFlags;
    for (std::size_t at = 0; at < signalRows.size(); ++at) {
        struct sigaction action {
        };
        action.sa_handler = signalRows[at].handler;
        action.sa_flags = SA_RESTART;
        ::sigaction(signalRows[at].number, nullptr, &actionsBefore[at]);
        if (actionsBefore[at].sa_handler != SIG_IGN) // as nohup does
            ::sigaction(signalRows[at].number, &action, nullptr);
    }
    hiddenTyping.isInForce = 1;
    hideTyping();
}

ZNTHiddenTyping::~ZNTHiddenTyping()
{
    showBeforeEnd();
    hiddenTyping.isInForce = 0;
    for (std::size_t at = 0; at < signalRows.size(); ++at)
        ::sigaction(signalRows[at].number, &actionsBefore[at], nullptr);
}

void ZNTHiddenTyping::showBeforeEnd()
{
    if (hiddenTyping.isInForce)
        setFlags(hiddenTyping.before);
}
