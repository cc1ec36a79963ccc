#include "ZNTOptionNegotiation.h"

#include "ZNTTelnetMessages.h"

using namespace znt::telnet;

void ZNTOptionNegotiation::setAccepted(ZNTOptionSwitch what, bool accepted)
{
    for (const auto& row : ZNTAcceptedOptions)
        if (row.when == what)
            isAccepted[static_cast<std::size_t>(row.side)][row.option] = accepted;
}

bool ZNTOptionNegotiation::receive(unsigned char verb, unsigned char option, std::string& replies)
{
    const Side side = verb == WILL || verb == WONT ? Side::Server : Side::Client;
    if (verb == WILL || verb == DO)
        return receiveOn(side, option, replies);
    receiveOff(side, option, replies);
    return false;
}

bool ZNTOptionNegotiation::receiveOn(Side side, unsigned char option, std::string& replies)
{
    auto& entry = states[static_cast<std::size_t>(side)][option];
    switch (entry.state) {
    case State::No:
        if (isAccepted[static_cast<std::size_t>(side)][option]) {
            entry.state = State::Yes;
            return answer(side, option, /*on=*/true, replies);
        }
        if (entry.refusals < mostRefusals) {
            ++entry.refusals;
            say(side, option, /*on=*/false, replies);
        }
        break;
    case State::Yes:
        break;
    case State::WantNo: // a refusal that is answered with an offer; RFC 1143 advises to take it so
        entry.state = entry.isQueued ? State::Yes : State::No;
        entry.isWanted = entry.isQueued;
        entry.isQueued = false;
        break;
    case State::WantYes:
        entry.state = State::Yes;
        break;
    }
    return false;
}

void ZNTOptionNegotiation::receiveOff(Side side, unsigned char option, std::string& replies)
{
    auto& entry = states[static_cast<std::size_t>(side)][option];
    switch (entry.state) {
    case State::No:
        break;
    case State::Yes:
        entry.state = State::No;
        answer(side, option, /*on=*/false, replies);
        break;
    case State::WantNo:
        entry.state = State::No;
        if (entry.isQueued)
            request(side, option, /*on=*/true, replies);
        break;
    case State::WantYes:
        entry.state = State::No;
        break;
    }
}

void ZNTOptionNegotiation::request(Side side, unsigned char option, bool on, std::string& replies)
{
    auto& entry = states[static_cast<std::size_t>(side)][option];
    switch (entry.state) {
    case State::No:
        entry.isQueued = false;
        if (on) {
            entry.state = State::WantYes;
            say(side, option, on, replies);
        }
        break;
    case State::WantNo:
        entry.isQueued = on;
        break;
    case State::Yes:
    case State::WantYes:
        // RFC 1143 would wait for the answer to a request before it is taken back. Many servers do what is
        // asked and never answer; they must be able to get the DONT.
        if (!on) {
            entry.state = State::WantNo;
            say(side, option, on, replies);
        }
        break;
    }
}

void ZNTOptionNegotiation::noteDone(Side side, unsigned char option, bool on, std::string& replies)
{
    auto& entry = states[static_cast<std::size_t>(side)][option];
    if (on && entry.isWanted)
        entry.state = State::Yes;
    else if (!on && entry.state == State::WantNo)
        receiveOff(side, option, replies);
}

bool ZNTOptionNegotiation::answer(Side side, unsigned char option, bool on, std::string& replies)
{
    auto& entry = states[static_cast<std::size_t>(side)][option];
    if (entry.answers >= mostAnswers)
        return false;
    ++entry.answers;
    say(side, option, on, replies);
    return true;
}

void ZNTOptionNegotiation::say(Side side, unsigned char option, bool on, std::string& replies)
{
    states[static_cast<std::size_t>(side)][option].isWanted = on;
    replies += side == Side::Server ? offer(on ? DO : DONT, option) : offer(on ? WILL : WONT, option);
}
