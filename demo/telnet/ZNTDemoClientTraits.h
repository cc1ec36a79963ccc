#pragma once

#include "ZNTDemoScreen.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Learns from subnegotiations what a client can show: its window's width (RFC 1073), its colours (RFC 1091,
/// with the answers that MUD clients agreed on as MTTS), and whether it reads UTF-8 (RFC 2066).
class ZNTDemoClientTraits
{
public:
    /// `isUnicode`: the game's text travels in UTF-8 from the start.
    explicit ZNTDemoClientTraits(bool isUnicode) { shown.hasEveryCharacter = isUnicode; }

    [[nodiscard]] const ZNTDemoScreen& screen() const { return shown; }

    /// What to send when the client has agreed to answer.
    std::string askForTerminalType();
    std::string askForUnicode();
    /// Takes the content of one subnegotiation, without telnet's doubled 255; answers what to send. Contents
    /// that make no sense change nothing.
    std::string receive(unsigned char option, std::string_view content);

private:
    std::string nextTerminalTypeQuestion();
    std::string receiveTerminalType(std::string_view content);
    void takeTerminalType(std::string_view name);
    void receiveWindowSize(std::string_view content);
    std::string receiveCharset(std::string_view content);
    std::string answerToCharsets(std::string_view list);

    ZNTDemoScreen shown;
    std::string lastTerminalType;
    int terminalTypeQuestions = 0;
    bool isAskedForTerminalType = false;
    bool isAskedForUnicode = false;
    int charsetAnswers = 0;
};
