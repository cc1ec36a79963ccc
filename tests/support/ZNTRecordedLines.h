#pragma once

#include "ZNTSpeedWalking.h"
#include "ZNTTestPlatform.h"

#include <functional>
#include <string>
#include <vector>

/// The session as walks see it. `onLine` may answer a line, as the command line does.
struct ZNTRecordedLines final : ZNTLineSender {
    std::vector<std::u16string> lines;
    /// None is: a step passes through the command line like a typed line.
    bool isAnyMeantLiterally = false;
    bool isRoom = true;
    std::function<void(std::u16string_view)> onLine = [](auto) {};

    void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override
    {
        isAnyMeantLiterally |= ignoreSpecials;
        lines.emplace_back(line);
        onLine(line);
    }
    [[nodiscard]] bool hasRoom() const override { return isRoom; }
};

/// A speed walker on a machine of its own.
struct ZNTWalkMachine {
    VirtualRunLoop loop;
    ZNTRecordedLines sent;
    ZNTRecordedLog log;
    ZNTSpeedWalking walker{loop, sent, log};
};
