#include "ZNTDemoOptions.h"

#include <algorithm>
#include <utility>

using namespace znt::telnet;

namespace
{

using enum ZNTDemoOptionSide;

unsigned char verbOf(ZNTDemoOptionSide side, bool on)
{
    if (side == Game)
        return on ? WILL : WONT;
    return on ? DO : DONT;
}

} // namespace

std::size_t ZNTDemoOptions::rowOf(unsigned char code, ZNTDemoOptionSide side)
{
    const auto* found =
        std::find_if(znt::demo::options.begin(), znt::demo::options.end(),
                     [&](const ZNTDemoOption& option) { return option.code == code && option.side == side; });
    return static_cast<std::size_t>(found - znt::demo::options.begin());
}

void ZNTDemoOptions::offer(ZNTDemoOfferTime time)
{
    for (std::size_t row = 0; row < states.size(); ++row)
        if (znt::demo::options[row].offered == time)
            enable(row);
}

void ZNTDemoOptions::want(unsigned char code, bool on)
{
    const auto row = rowOf(code, Game);
    if (on)
        enable(row);
    else if (telnetIsSpoken)
        disable(row);
    else // a client that never answers gets no WONT, which it would take for the end of a prompt
        states[row] = State::WantYes;
}

bool ZNTDemoOptions::isOn(unsigned char code) const { return states[rowOf(code, Game)] == State::Yes; }

void ZNTDemoOptions::receive(unsigned char verb, unsigned char code)
{
    const auto side = verb == WILL || verb == WONT ? Client : Game;
    const bool isAgreement = verb == WILL || verb == DO;
    const auto row = rowOf(code, side);
    if (row == states.size()) {
        if (isAgreement)
            refuse(code, side);
        return;
    }
    const bool isFirstAnswer = side == Client && states[row] == State::WantYes && !telnetIsSpoken;
    telnetIsSpoken = telnetIsSpoken || isFirstAnswer;
    if (verb == Refusal)
        takeOddRefusal(row);
    else if (isAgreement)
        takeAgreement(row, verb);
    else
        takeDenial(row, verb);
    if (isFirstAnswer)
        offer(ZNTDemoOfferTime::OnceTelnetIsSpoken);
}

void ZNTDemoOptions::takeAgreement(std::size_t row, unsigned char verb)
{
    const auto& option = znt::demo::options[row];
    auto& state = states[row];
    switch (state) {
    case State::No:
        if (option.offered == ZNTDemoOfferTime::WhenNeeded)
            return refuse(option.code, option.side);
        state = State::Yes;
        send(row, true);
        break;
    case State::WantYes:
    case State::WantNoButYes:
        state = State::Yes;
        break;
    case State::WantYesButNo:
        state = State::WantNo;
        return send(row, false);
    case State::WantNo: // agreement in answer to a denial is an error of the client
        state = State::No;
        return;
    case State::Yes:
        return;
    }
    listener.onOptionSwitched(option, verb);
}

void ZNTDemoOptions::takeDenial(std::size_t row, unsigned char verb)
{
    auto& state = states[row];
    switch (state) {
    case State::Yes:
        state = State::No;
        send(row, false);
        listener.onOptionSwitched(znt::demo::options[row], verb);
        break;
    case State::WantNoButYes:
        state = State::WantYes;
        send(row, true);
        break;
    default:
        state = State::No;
        break;
    }
}

void ZNTDemoOptions::takeOddRefusal(std::size_t row)
{
    if (states[row] == State::No)
        return;
    if (std::exchange(states[row], State::WantYes) == State::Yes)
        listener.onOptionSwitched(znt::demo::options[row], Refusal);
}

void ZNTDemoOptions::refuse(unsigned char code, ZNTDemoOptionSide side)
{
    auto& count = refusals[static_cast<std::size_t>(side)][code];
    if (count >= mostRefusals)
        return;
    ++count;
    listener.sendCommand(verbOf(side, false), code);
}

void ZNTDemoOptions::send(std::size_t row, bool on)
{
    const auto& option = znt::demo::options[row];
    listener.sendCommand(verbOf(option.side, on), option.code);
}

void ZNTDemoOptions::enable(std::size_t row)
{
    auto& state = states[row];
    if (state == State::No) {
        state = State::WantYes;
        send(row, true);
    } else if (state == State::WantNo) {
        state = State::WantNoButYes;
    } else if (state == State::WantYesButNo) {
        state = State::WantYes;
    }
}

void ZNTDemoOptions::disable(std::size_t row)
{
    auto& state = states[row];
    if (state == State::Yes) {
        state = State::WantNo;
        send(row, false);
    } else if (state == State::WantYes) {
        state = State::WantYesButNo;
    } else if (state == State::WantNoButYes) {
        state = State::WantNo;
    }
}
